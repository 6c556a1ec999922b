// The format of the group file (`.GRP`): a header and rows of 80 bytes, row 0 being the whole file.
//
//   header 0    32  banner "CARNETEL (C) DROV SOFTWARE 1992", zero ended
//          32   2   CR LF
//          34   43  "Fichier carnetel d'adresses ver 04.10", zero padded
//          77   3   CR LF 1Ah
//          80   u32 magic 17213910
//          84   u32 256: where row 1 lies
//          92   u32 176: where row 0 lies
//          96   u16 number of rows, row 0 among them
//          98   u16 row size, 80
//          100  64  path of the address file that the groups belong to, OEM, zero padded
//          164  12  zero
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

#include <array>
#include <string>

#include "base/bytes.h"
#include "base/text.h"

namespace carnetel {

inline constexpr size_t kGroupHeaderSize = 176;
inline constexpr size_t kGroupRowSize = 80;
inline constexpr size_t kGroupCountOffset = 96;
inline constexpr size_t kGroupRowSizeOffset = 98;
inline constexpr size_t kGroupPathOffset = 100;
inline constexpr size_t kGroupPathSize = 64;
inline constexpr size_t kGroupNameSize = 32;
inline constexpr size_t kGroupFileNameOffset = 32;
inline constexpr size_t kGroupFileNameSize = 16;
inline constexpr size_t kGroupSetNameOffset = 48;
inline constexpr size_t kGroupSetNameSize = 24;
inline constexpr size_t kGroupSlotOffset = 72;
inline constexpr size_t kGroupModeOffset = 77;

inline constexpr uint8_t kFirstGroupSlot = 2;
inline constexpr uint8_t kLastGroupSlot = 88;
inline constexpr size_t kMostGroups = (kLastGroupSlot - kFirstGroupSlot) / 2 + 1;

inline constexpr uint8_t kMembersOnly = 0;
inline constexpr uint8_t kWholeFileFlagged = 1;

class GroupRecord {
 public:
  [[nodiscard]] ByteView bytes() const { return bytes_; }
  ByteSpan bytes() { return bytes_; }

  [[nodiscard]] OemText name() const { return OemText(CopyFieldText(bytes(), kGroupNameSize)); }
  void set_name(const OemText& name) { StorePadded(bytes_, 0, kGroupNameSize, name.bytes()); }
  void set_file_name(const OemText& name) {
    StorePadded(bytes_, kGroupFileNameOffset, kGroupFileNameSize, name.bytes());
  }
  [[nodiscard]] AnsiText set_name_shown() const {
    return AnsiText(CopyFieldText(bytes().subspan(kGroupSetNameOffset), kGroupSetNameSize));
  }
  void set_set_name(const AnsiText& name) {
    StorePadded(bytes_, kGroupSetNameOffset, kGroupSetNameSize, name.bytes());
  }
  [[nodiscard]] uint8_t slot() const { return LoadU8(bytes_, kGroupSlotOffset); }
  void set_slot(uint8_t slot) { StoreU8(bytes_, kGroupSlotOffset, slot); }
  // False for a row that names no bit pair: it can come from elsewhere only.
  [[nodiscard]] bool HasSlot() const {
    return slot() >= kFirstGroupSlot && slot() <= kLastGroupSlot && slot() % 2 == 0;
  }
  [[nodiscard]] uint16_t current_row() const { return LoadLe16(bytes_, 73); }
  [[nodiscard]] uint16_t top_row() const { return LoadLe16(bytes_, 75); }
  void set_rows(uint16_t current, uint16_t top) {
    StoreLe16(bytes_, 73, current);
    StoreLe16(bytes_, 75, top);
  }
  [[nodiscard]] uint8_t mode() const { return LoadU8(bytes_, kGroupModeOffset); }
  void set_mode(uint8_t mode) { StoreU8(bytes_, kGroupModeOffset, mode); }

 private:
  std::array<std::byte, kGroupRowSize> bytes_{};
};

// The header of a new file for the groups of this address file.
[[nodiscard]] std::array<std::byte, kGroupHeaderSize> NewGroupHeader(const OemText& address_path);

// Row 0 of a new file: the whole file, under the name of its address file.
[[nodiscard]] GroupRecord WholeFileRow(const OemText& address_file_name);

}  // namespace carnetel
