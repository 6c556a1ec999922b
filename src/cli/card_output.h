// Cards on standard output: as rows of the list, whole, or as JSON objects.
#pragma once

#include <string>

#include "cli/cli_session.h"
#include "cli/json_form.h"
#include "selection/group_file.h"
#include "shell/card_rows.h"

namespace carnetel {

// A text of a file as a terminal may show it: control bytes of foreign files become blanks.
[[nodiscard]] std::string Shown(std::string text);

// "3 fiches", "1 fiche".
[[nodiscard]] std::string CardCount(int64_t count);

// How many cards are marked, as the commands that change marks answer.
void PrintMarkedCount(CliSession& session, int32_t count);

// Prints cards of the open directory. Made for one command: it reads the groups once.
class CardPrinter {
 public:
  CardPrinter(CliSession& session, Directory& directory);

  // One line: row, mark and label; with --json the whole card.
  void PrintRow(const CardRow& row);
  // All fields, one a line; with --json as PrintRow. Cards are parted by a blank line.
  void PrintCard(const CardRow& row);
  // The row number alone; with --json as PrintRow. What `add` and `edit` answer.
  void PrintNumber(const CardRow& row);

 private:
  [[nodiscard]] CardView View(const CardRow& row) const;
  [[nodiscard]] std::string Label(const CardRow& row) const;
  [[nodiscard]] bool IsMarked(const CardRow& row) const;

  CliSession& session_;
  Directory& directory_;
  LabelStyles styles_;
  std::vector<GroupRecord> groups_;
  size_t number_width_;
  bool first_ = true;
};

// The row of the card at `offset`, with its card read; nothing when no entry holds it. `from` is a
// row to begin the search at.
[[nodiscard]] std::optional<CardRow> LoadRow(Directory& directory, uint32_t offset,
                                             uint32_t from = 0);

}  // namespace carnetel
