// One card: a block of exactly 768 bytes in the main file and in memory alike. Its 31 fields are
// fixed areas of OEM text, ended by a zero byte when shorter than their size and by nothing when
// they fill it; numbers are text. There is no length prefix, no deleted flag and no record number:
// a card is known by its byte offset in the main file.
//
//   0    31 fields, one behind the other (kFieldSizes)
//   731  33 reserved bytes, zero in a new card, carried along otherwise
//   764  u32 time of the last write, seconds since 1970-01-01 UTC; nothing reads it back
#pragma once

#include <array>
#include <cstdint>

#include "base/bytes.h"
#include "base/text.h"

namespace carnetel {

inline constexpr size_t kCardSize = 768;
inline constexpr int kFieldCount = 31;
// Offsets and counts of cards are told by signed 16-bit numbers in the files.
inline constexpr uint32_t kMaxCards = 32767;

// Field numbers that the code names; the others are reached only by loops over the table.
enum Field : int {
  kSte1 = 0,
  kSte2 = 1,
  kAdr1 = 2,
  kAdr2 = 3,
  kAdr3 = 4,
  kShortPostalCode = 5,
  kVille = 6,
  kPays = 7,
  kQualite = 8,
  kPrenom = 9,
  kNom = 10,
  kSparePerson = 11,
  kRef1 = 12,
  kRef6 = 17,
  kTel1 = 18,
  kTel2 = 19,
  kMtel = 20,
  kServiceType = 21,
  kFax = 22,
  kNinit = 23,
  kModem = 24,
  kPostalCode = 25,
  kNotes = 26,
  kSpare27 = 27,
  kSpare30 = 30,
};

inline constexpr std::array<uint16_t, kFieldCount> kFieldSizes = {
    32, 32, 32, 32, 32, 5, 32, 32, 24, 24, 32, 16, 24, 24, 24, 24,
    24, 24, 24, 24, 21, 4, 21, 12, 21, 14, 64, 21, 12, 12, 12};

// One row of the field table, as four signed 16-bit words in this order in the main file's header.
struct FieldEntry {
  uint16_t offset = 0;
  uint16_t size = 0;
  // Rows that belong together on one control: 6 for the references, 1 otherwise.
  uint16_t group_count = 1;
};

inline constexpr size_t kFieldEntrySize = 8;
inline constexpr size_t kFieldTableSize = kFieldEntrySize * kFieldCount;

class FieldTable {
 public:
  constexpr FieldTable() {
    uint16_t offset = 0;
    for (size_t i = 0; i < rows_.size(); ++i) {
      rows_[i] = {offset, kFieldSizes[i], static_cast<uint16_t>(i == kRef1 ? 6 : 1)};
      offset = static_cast<uint16_t>(offset + kFieldSizes[i]);
    }
  }
  [[nodiscard]] constexpr const FieldEntry& operator[](int field) const {
    return rows_[static_cast<size_t>(field)];
  }
  // Writes the 248 bytes of the table as the main file's header holds them.
  void Store(ByteSpan bytes) const;

 private:
  std::array<FieldEntry, kFieldCount> rows_{};
};

inline constexpr FieldTable kFieldTable;

class CardRecord {
 public:
  static constexpr size_t kWriteTimeOffset = 764;

  [[nodiscard]] ByteView bytes() const { return bytes_; }
  ByteSpan bytes() { return bytes_; }
  void Clear() { bytes_.fill(std::byte{0}); }

  // The area of a field, all of its bytes.
  [[nodiscard]] ByteView FieldBytes(int field) const {
    return bytes().subspan(kFieldTable[field].offset, kFieldTable[field].size);
  }
  [[nodiscard]] OemText FieldText(int field) const {
    return OemText(CopyFieldText(FieldBytes(field), kFieldTable[field].size));
  }
  [[nodiscard]] bool FieldEmpty(int field) const {
    return bytes_[kFieldTable[field].offset] == std::byte{0};
  }
  // Stores a text cut at the field's size, zero filled behind.
  void SetField(int field, const OemText& text) {
    StorePadded(bytes_, kFieldTable[field].offset, kFieldTable[field].size, text.bytes());
  }
  void CopyFieldFrom(const CardRecord& other, int field);
  [[nodiscard]] bool SameField(const CardRecord& other, int field) const;

  [[nodiscard]] uint32_t write_time() const { return LoadLe32(bytes_, kWriteTimeOffset); }
  void set_write_time(uint32_t seconds) { StoreLe32(bytes_, kWriteTimeOffset, seconds); }

  friend bool operator==(const CardRecord&, const CardRecord&) = default;

 private:
  std::array<std::byte, kCardSize> bytes_{};
};

// The three card buffers of an open directory.
struct CardContext {
  CardRecord current;    // the card to add or rewrite, or the example to search for
  CardRecord reference;  // scratch for a search, the old image for a delete
  CardRecord edit;       // what a form has collected
};

// Which numbers a card has, as the flag byte of its entry in the address file tells it.
inline constexpr uint8_t kHasTel1 = 0x80;
inline constexpr uint8_t kHasMinitel = 0x40;
inline constexpr uint8_t kHasModem = 0x20;
inline constexpr uint8_t kHasFax = 0x10;
[[nodiscard]] uint8_t NumberFlagsOf(const CardRecord& card);

}  // namespace carnetel
