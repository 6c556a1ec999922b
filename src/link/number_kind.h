// The kinds of numbers that the chooser offers: it lists the cards that have such a number and
// hands that one on. A run has one kind, which its caller names by a byte.
#pragma once

#include <cstdint>

#include "storage/card_record.h"

namespace carnetel {

enum class NumberKind : uint8_t { kFax = 1, kModem = 2, kMinitel = 4, kTel1 = 8, kTel2 = 16 };

// Every byte that names no other kind is the fax.
[[nodiscard]] NumberKind NumberKindOf(uint8_t byte);

struct NumberKindInfo {
  int field;
  int title_id;        // of its column, in the string table
  uint8_t entry_flag;  // in the entries of the address file
};
// The second telephone has no flag of its own: its entry flag is 0, which no entry has, so a
// chooser for it stays empty, by design.
[[nodiscard]] NumberKindInfo InfoOf(NumberKind kind);

}  // namespace carnetel
