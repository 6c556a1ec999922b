// The format of the criteria file (`.CRT`): a header and fixed records, the first of which is the
// working set and the others the saved sets. Their number is told by the size alone.
//
//   header 0    31  banner "CARNETEL DROV SOFTW. VER 05.00", zero ended
//          32   3   CR LF NUL
//          77   2   CR LF
//          79   1   1Ah, or 0 in the file that is made with a directory
//          80   u32 magic 17213910
//          84   u32 00020033h
//          88   u32 96
//          92   u32 128: where record 0 lies
//          96   u16 rows a record, 6
//          98   u16 size of the name, 23
//          100  u16 active set number, 0 for the working set
//          102  26  zero
//
//   record 0    23  name, OEM, zero padded, no terminator when it fills the field
//          23   144 six rows of 24: u16 field code, ASCII digit of the comparator, 21 bytes value
#pragma once

#include <array>

#include "base/bytes.h"

namespace carnetel {

inline constexpr size_t kCriteriaHeaderSize = 128;
inline constexpr size_t kCriteriaNameSize = 23;
inline constexpr size_t kCriteriaRowCount = 6;
inline constexpr size_t kCriteriaRowSize = 24;
inline constexpr size_t kCriteriaRecordSize =
    kCriteriaNameSize + kCriteriaRowCount * kCriteriaRowSize;

// The whole file that comes with a new directory: header and an empty working set.
[[nodiscard]] std::array<std::byte, kCriteriaHeaderSize + kCriteriaRecordSize>
DefaultCriteriaFile();

}  // namespace carnetel
