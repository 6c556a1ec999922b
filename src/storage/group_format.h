// The format of the group file (`.GRP`): a header and rows of 80 bytes, row 0 being the whole file.
//
//   header 92   u32 176: where row 0 lies
//          96   u16 number of rows, row 0 among them
//          98   u16 row size, 80
//          100  64  path of the address file that the groups belong to, zero padded
//
//   row    0    32  name, OEM, zero padded
//          32   16  name of a file that goes when the groups go
//          48   24  name of the criteria set active when the row was written, ANSI
//          72   1   slot: the mark bit of the group's members, an even number from 2 to 88
//          73   u16 saved current row of the list
//          75   u16 saved top row of the list
//          77   1   display mode: 0 members only, 1 the whole file with the members flagged
//          78   2   unused
#pragma once

#include "base/bytes.h"
#include "base/text.h"

namespace carnetel {

inline constexpr size_t kGroupHeaderSize = 176;
inline constexpr size_t kGroupRowSize = 80;
inline constexpr size_t kGroupCountOffset = 96;
inline constexpr size_t kGroupRowSizeOffset = 98;
inline constexpr size_t kGroupNameSize = 32;
inline constexpr size_t kGroupFileNameOffset = 32;
inline constexpr size_t kGroupFileNameSize = 16;
inline constexpr size_t kGroupSlotOffset = 72;
inline constexpr size_t kGroupModeOffset = 77;

}  // namespace carnetel
