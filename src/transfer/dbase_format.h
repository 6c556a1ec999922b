// A dBase III or IV table: a header of 32 bytes, a descriptor of 32 bytes for each column, the byte
// 0Dh, then records of one size. All integers are little-endian; these values are on disk.
//
//   header     0   u8   03h dBase III, 43h dBase IV; tables with a memo file have other values
//              1   3    year, month and day of the last change, one byte each
//              4   u32  count of records
//              8   u16  header length: where the first record lies
//              10  u16  record length
//              12  20   zero
//   descriptor 0   11   name, at most 10 characters, zero padded
//              11  u8   type: C, N or D
//              12  u32  offset in the record, in tables of ours; readers take no notice of it
//              16  u8   length
//              17  u8   decimals: 0
//              18  14   zero
//
// Elsewhere a record begins with a mark of deletion and its first column is at 1. Tables written
// here have no mark, and their header length leaves out the 0Dh, so that to a reader the byte in
// front of each record is the mark. Nor do they end in 1Ah. Both ways come out the same for the
// columns, and tables in use depend on it.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>

#include "base/bytes.h"

namespace carnetel {

inline constexpr uint8_t kDbase3Version = 0x03;
inline constexpr uint8_t kDbase4Version = 0x43;
inline constexpr std::byte kDescriptorsEnd{0x0D};

// Where columns begin behind the mark of deletion.
inline constexpr uint32_t kFirstColumnOffset = 1;

class DbaseHeader {
 public:
  static constexpr size_t kSize = 32;

  [[nodiscard]] ByteView bytes() const { return bytes_; }
  ByteSpan bytes() { return bytes_; }

  [[nodiscard]] uint8_t version() const { return LoadU8(bytes_, 0); }
  void set_version(uint8_t version) { StoreU8(bytes_, 0, version); }
  [[nodiscard]] bool IsTable() const {
    return version() == kDbase3Version || version() == kDbase4Version;
  }
  void set_date(uint8_t year, uint8_t month, uint8_t day) {
    StoreU8(bytes_, 1, year);
    StoreU8(bytes_, 2, month);
    StoreU8(bytes_, 3, day);
  }
  [[nodiscard]] uint32_t record_count() const { return LoadLe32(bytes_, 4); }
  void set_record_count(uint32_t count) { StoreLe32(bytes_, 4, count); }
  [[nodiscard]] uint16_t header_length() const { return LoadLe16(bytes_, 8); }
  void set_header_length(size_t length) { StoreLe16(bytes_, 8, static_cast<uint16_t>(length)); }
  [[nodiscard]] uint16_t record_length() const { return LoadLe16(bytes_, 10); }
  void set_record_length(size_t length) { StoreLe16(bytes_, 10, static_cast<uint16_t>(length)); }

 private:
  std::array<std::byte, kSize> bytes_{};
};

class DbaseDescriptor {
 public:
  static constexpr size_t kSize = 32;
  static constexpr size_t kNameSize = 11;
  static constexpr size_t kMaxName = 10;

  [[nodiscard]] ByteView bytes() const { return bytes_; }
  ByteSpan bytes() { return bytes_; }

  [[nodiscard]] ByteView name() const { return bytes().first(kNameSize); }
  void set_name(std::string_view name) {
    StorePadded(bytes_, 0, kNameSize, name.substr(0, kMaxName));
  }
  void set_type(char letter) { StoreU8(bytes_, 11, static_cast<uint8_t>(letter)); }
  void set_offset(size_t offset) { StoreLe32(bytes_, 12, static_cast<uint32_t>(offset)); }
  [[nodiscard]] uint8_t length() const { return LoadU8(bytes_, 16); }
  void set_length(uint8_t length) { StoreU8(bytes_, 16, length); }

 private:
  std::array<std::byte, kSize> bytes_{};
};

}  // namespace carnetel
