// The scans that mark the cards a criteria set lets through: one over the whole file, narrowed by
// the letter table when the set's first row is about the company, and one over the members of the
// displayed group. The cards are read in file order, in large blocks, each of them once; marks,
// count and progress then follow the order of the rows.
#pragma once

#include "selection/criteria_set.h"
#include "storage/directory.h"

namespace carnetel {

// Entries to look at, as positions in the address file; `end` may lie in front of `start`.
struct ScanRange {
  int64_t start = 0;
  int64_t end = 0;
};

// What the first row of a set leaves of the file. "<" and ">" cut by whole letters: they never look
// at cards of the value's own letter. The letter behind '9' is '3'. Wanted, both.
[[nodiscard]] ScanRange NarrowedRange(const AddressFile& address, const CriteriaRows& rows);

// Marks the cards that pass; without `add` the former marks go first. The user may stop it: a card
// that had just passed then is in the count and not in the file. Returns the offset of the first
// card that passed, 0 when none did.
uint32_t ScanAddressFile(Directory& directory, const CriteriaRows& rows, bool add);

// The same for the members of the displayed group; it cannot be stopped. `list_rows` is the total
// of the progress display, none is shown without it.
void ScanGroupMembers(Directory& directory, const CriteriaRows& rows, bool add,
                      std::optional<uint32_t> list_rows);

// One or the other, by what is displayed.
void RunSelection(Directory& directory, const CriteriaRows& rows, bool add, bool group_displayed,
                  uint32_t list_rows);

// Takes every mark of the displayed group away.
void ClearAllMarks(Directory& directory);

}  // namespace carnetel
