// The format of the address file (`.ADR`): a flat copy of the active index with one 16-byte entry
// a card, in key order.
//
//   header 0    32  banner "CARNETEL (c) DROV SOFTWARE 1992", zero padded
//          32   2   CR LF
//          34   42  "Fichier carnetel d'adresses ver 04.10"
//          76   4   00 0D 0A 1A
//          80   u32 magic 17213910
//          84   u32 256
//          88   u32 128: where the counters lie
//          92   u32 320: where the entries lie
//          96   u16 entry count
//          98   u16 entry size, 16
//          100  u16 saved top row of the whole-file list
//          102  u16 saved current row of it
//          104  u32 the main file's change stamp at the last write
//          108  20  zero
//   128    192 96 counters of 16 bits: the counter of mark bit b is at 128 + 2 x b
//   320    16 x n entries
//
//   entry  0   u32 offset of the card in the main file
//          4   11  mark bits: bit n is byte n / 8, mask 1 << (n mod 8); bit 0 is set in every entry
//          15  1   number flags in the high four bits; the bit pair of group slot 88 in the low
//          ones
#pragma once

#include <array>
#include <optional>
#include <string>

#include "storage/main_header.h"

namespace carnetel {

inline constexpr std::string_view kAddressVersion = "04.10";
inline constexpr size_t kAddressCountersOffset = 128;
inline constexpr size_t kAddressCountersSize = 192;
inline constexpr size_t kAddressEntriesOffset = 320;
inline constexpr size_t kEntrySize = 16;
// Bit 0 of the whole file, and the bit of its selection.
inline constexpr uint8_t kWholeFileBit = 0;

class AddressHeader {
 public:
  static constexpr size_t kSize = 128;
  static constexpr size_t kTextOffset = 34;
  static constexpr size_t kCountOffset = 96;
  // No family has as many cards: on disk while an operation runs that a crash could leave half
  // done, so that the next opening builds everything derived anew.
  static constexpr uint16_t kCountWhileChanging = 0xFFFF;

  static AddressHeader Template();

  [[nodiscard]] ByteView bytes() const { return bytes_; }
  ByteSpan bytes() { return bytes_; }
  // The 5 bytes that follow "ver" and a blank, from the text on; nothing when there is none.
  [[nodiscard]] std::optional<std::string> Version() const;

  [[nodiscard]] uint16_t count() const { return LoadLe16(bytes_, kCountOffset); }
  void set_count(uint16_t count) { StoreLe16(bytes_, kCountOffset, count); }
  [[nodiscard]] uint16_t top_row() const { return LoadLe16(bytes_, 100); }
  void set_top_row(uint16_t row) { StoreLe16(bytes_, 100, row); }
  [[nodiscard]] uint16_t current_row() const { return LoadLe16(bytes_, 102); }
  void set_current_row(uint16_t row) { StoreLe16(bytes_, 102, row); }
  [[nodiscard]] uint32_t stamp() const { return LoadLe32(bytes_, 104); }
  void set_stamp(uint32_t stamp) { StoreLe32(bytes_, 104, stamp); }

 private:
  std::array<std::byte, kSize> bytes_{};
};

class EntrySlot {
 public:
  static constexpr size_t kMarksOffset = 4;
  static constexpr size_t kFlagsOffset = 15;

  EntrySlot() = default;
  explicit EntrySlot(ByteView bytes) { std::ranges::copy(bytes.first(kEntrySize), bytes_.begin()); }

  [[nodiscard]] ByteView bytes() const { return bytes_; }
  [[nodiscard]] uint32_t card_offset() const { return LoadLe32(bytes_, 0); }
  void set_card_offset(uint32_t offset) { StoreLe32(bytes_, 0, offset); }
  [[nodiscard]] bool bit(uint8_t number) const {
    return (LoadU8(bytes_, kMarksOffset + number / 8) & (1 << (number % 8))) != 0;
  }
  void set_bit(uint8_t number, bool on);
  [[nodiscard]] uint8_t number_flags() const { return LoadU8(bytes_, kFlagsOffset) & 0xF0; }
  // Replaces the flags; the low four bits of the byte are mark bits and stay.
  void set_number_flags(uint8_t flags);
  // Takes over everything but the card offset: mark bits and flags.
  void TakeMarks(const EntrySlot& other);

  friend bool operator==(const EntrySlot&, const EntrySlot&) = default;

 private:
  std::array<std::byte, kEntrySize> bytes_{};
};

// Position of an entry by its row in the whole-file list, and back.
constexpr uint32_t EntryPosition(uint32_t row) {
  return static_cast<uint32_t>(kEntrySize * row + kAddressEntriesOffset);
}
constexpr uint32_t EntryRow(uint32_t position) {
  return (position - static_cast<uint32_t>(kAddressEntriesOffset)) /
         static_cast<uint32_t>(kEntrySize);
}

}  // namespace carnetel
