// The rules of the form in which a user lays out the lines of a delimited file: the two separators
// and for each line of the form the rank of its field. Inputs hold text as a user types it. What is
// confirmed becomes the last format of the parameter file; the ranks of fields that have no line
// stay, those of the notes among them.
//
// A rank input takes two digits; a stored rank that has more stays until edited.
#pragma once

#include <array>
#include <string>
#include <string_view>
#include <vector>

#include "base/messages.h"
#include "base/text.h"
#include "transfer/number_input.h"
#include "transfer/parameter_file.h"
#include "transfer/structure_lines.h"

namespace carnetel {

enum class SeparatorKind { kField = 0, kCard = 1 };

// What the list of a separator proposes, in its order.
[[nodiscard]] std::vector<std::string> SeparatorProposals(SeparatorKind kind);

class RankForm {
 public:
  // Stands for a separator that is none of its list.
  static constexpr uint8_t kNoRow = 0xFF;

  RankForm(ParameterFile& parameters, MessageForm& messages, TransferDirection direction);

  [[nodiscard]] TransferDirection direction() const { return direction_; }
  [[nodiscard]] std::string_view title() const { return StructureTitle(direction_); }
  // What a line is called, one of kStructureLines; that of the references by the one it shows.
  [[nodiscard]] std::string_view label(int line) const { return StructureLabel(FieldOf(line)); }

  [[nodiscard]] const std::string& rank_text(int line) const { return Rank(line).text(); }
  // The user changed a rank to `text`; what the input takes of that, rank_text() tells.
  void TypeRank(int line, std::string_view text) { Rank(line).Type(text); }
  // The user leaves a rank: an empty one becomes 0, that of the company is never 0 but 1.
  void LeaveRank(int line);

  // Which of the six references the one line shows, from 0.
  [[nodiscard]] int reference() const { return reference_; }
  void SelectReference(int reference) { reference_ = reference; }

  // UTF-8, as are the texts below.
  [[nodiscard]] std::string separator_text(SeparatorKind kind) const;
  // The user changed a separator to `text`, of which the first 8 characters count, or chose one.
  void TypeSeparator(SeparatorKind kind, std::string_view text);
  // The user leaves a separator: codes are shown as characters where there are such.
  void LeaveSeparator(SeparatorKind kind);
  // The row of the list that has this text; kNoRow when there is none.
  [[nodiscard]] uint8_t separator_row(SeparatorKind kind) const;

  // Stores and writes the layout. False, and the form stays, when the company has no rank: then the
  // focus goes to that.
  [[nodiscard]] bool Confirm();

 private:
  // The card field behind a line, with the reference shown for that of the references.
  [[nodiscard]] int FieldOf(int line) const {
    return line == kReferenceLine ? kRef1 + reference_ : line;
  }
  [[nodiscard]] const NumberInput& Rank(int line) const {
    return ranks_[static_cast<size_t>(FieldOf(line))];
  }
  NumberInput& Rank(int line) { return ranks_[static_cast<size_t>(FieldOf(line))]; }
  [[nodiscard]] const AnsiText& Separator(SeparatorKind kind) const {
    return separators_[static_cast<size_t>(kind)];
  }
  AnsiText& Separator(SeparatorKind kind) { return separators_[static_cast<size_t>(kind)]; }
  void Store();

  ParameterFile& parameters_;
  MessageForm& messages_;
  TransferDirection direction_;
  std::array<NumberInput, kFieldCount> ranks_;
  std::array<AnsiText, 2> separators_;
  int reference_ = 0;
};

}  // namespace carnetel
