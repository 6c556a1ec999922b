// What the chooser of correspondents leaves to the program that started it: one record a card,
// appended to that program's file, or the blocks of a Viafax job. Nothing of a card changes.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "link/number_kind.h"
#include "storage/card_key.h"
#include "storage/directory.h"

namespace carnetel {

// What the chooser lists, in its order, and the row that the user is on.
struct ChooserRows {
  std::vector<int32_t> items;  // offset of the card, negative when it is not marked
  int current = -1;            // -1 for none
};

// The members of the displayed group that have such a number by their entries, in the order of the
// address file, none of them current.
[[nodiscard]] ChooserRows ListChooserRows(const Directory& directory, NumberKind kind);

struct ExtractRequest {
  std::string file;  // is made when missing, and never emptied
  NumberKind kind = NumberKind::kFax;
  LabelStyles styles;
  bool long_records = false;
  // A Viafax job instead of records.
  bool viafax = false;
  int viafax_option = 0;
  std::string user_name;  // of the Viafax sender, UTF-8
};

enum class ExtractScope { kCard, kSelection, kGroup };

struct ExtractOutcome {
  enum class Result {
    kDone,
    kNoRow,     // nothing to extract, nothing was written
    kNoNumber,  // of the one card: nothing was written, but the file is there
    kNoFile,    // it cannot be opened, or is one of the directory's own
  };
  Result result = Result::kDone;
  // What the caller is told: 1 for a card, 2 for several, the number of cards of a Viafax job.
  int32_t answer = 0;
  uint32_t cards = 0;  // that went out
  // Nobody waits for it: the answer is the same. The file is as it was, as far as the disk allows.
  bool write_failed = false;
};

// The selection is what the address file marks, as far as it is among the rows, and ends after as
// many as the rows have marks; the group is every row. A card without a number is passed over in
// records, while a Viafax job takes it.
[[nodiscard]] ExtractOutcome ChooserExtract(Directory& directory, const ExtractRequest& request,
                                            ExtractScope scope, const ChooserRows& rows);

}  // namespace carnetel
