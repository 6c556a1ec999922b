// How a foreign file is laid out: the settings of the last import or export, and those saved under
// a name. Plain profiles serve text files with separators, files of fixed records and directories;
// dBase tables have a mapping of 31 columns instead. Both lie in slots of 628 bytes in the
// parameter file (transfer/parameter_file.h), where the byte at 24 tells them apart.
//
// plain slot
//   0    24   name, OEM, at most 23 characters and a zero
//   24   i16  file type
//   26   u8   position of the field separator in its list, 27 its text: 8 characters and a zero
//   36   u8   position of the card separator in its list, 37 its text
//   46   i16  offset of the first card in a file of fixed records
//   48   i16  card size there
//   50   124  31 pairs of i16: position and size of card field n in a fixed record
//   174  62   31 i16: rank of card field n in a delimited line, 0 for none
//   236  392  zero
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>

#include "base/bytes.h"
#include "base/text.h"
#include "storage/card_record.h"
#include "transfer/transfer.h"

namespace carnetel {

inline constexpr size_t kProfileSlotSize = 628;
inline constexpr size_t kProfileNameSize = 24;
using ProfileSlot = std::array<std::byte, kProfileSlotSize>;

// Where a card field lies in a fixed record.
struct FixedPlace {
  int16_t position = 0;
  int16_t size = 0;
  friend bool operator==(const FixedPlace&, const FixedPlace&) = default;
};

class TransferProfile {
 public:
  static constexpr size_t kSize = 236;
  static constexpr size_t kMaxName = 23;
  static constexpr size_t kMaxSeparator = 8;

  // The profile as the program starts with it: quoted fields and CR LF. Profiles are saved from it.
  TransferProfile();
  // What a newly made parameter file holds: the same with ";" and "CRLF".
  static TransferProfile OfNewInstallation();

  // The profile in a slot.
  static TransferProfile Load(ByteView slot);
  // Writes all 628 bytes.
  void Store(ByteSpan slot) const;

  [[nodiscard]] ByteView bytes() const { return bytes_; }
  ByteSpan bytes() { return bytes_; }

  [[nodiscard]] OemText name() const { return OemText(Text(kNameOffset, kMaxName)); }
  void set_name(const OemText& name) { SetText(kNameOffset, kMaxName, name.bytes()); }
  [[nodiscard]] int16_t type() const { return Int16(kTypeOffset); }
  void set_type(TransferFileType type) { SetInt16(kTypeOffset, static_cast<int16_t>(type)); }

  // In the notation of transfer/separator.h, cut at 8 characters.
  [[nodiscard]] std::string field_separator() const {
    return Text(kFieldSeparatorOffset, kMaxSeparator);
  }
  void set_field_separator(std::string_view text) {
    SetText(kFieldSeparatorOffset, kMaxSeparator, text);
  }
  [[nodiscard]] std::string card_separator() const {
    return Text(kCardSeparatorOffset, kMaxSeparator);
  }
  void set_card_separator(std::string_view text) {
    SetText(kCardSeparatorOffset, kMaxSeparator, text);
  }
  // Positions in the lists of the structure form.
  [[nodiscard]] uint8_t field_separator_row() const { return LoadU8(bytes_, 26); }
  void set_field_separator_row(uint8_t row) { StoreU8(bytes_, 26, row); }
  [[nodiscard]] uint8_t card_separator_row() const { return LoadU8(bytes_, 36); }
  void set_card_separator_row(uint8_t row) { StoreU8(bytes_, 36, row); }

  [[nodiscard]] int16_t first_card_offset() const { return Int16(46); }
  void set_first_card_offset(int16_t offset) { SetInt16(46, offset); }
  [[nodiscard]] int16_t card_size() const { return Int16(48); }
  void set_card_size(int16_t size) { SetInt16(48, size); }
  [[nodiscard]] FixedPlace place(int field) const {
    return {Int16(PlaceOffset(field)), Int16(PlaceOffset(field) + 2)};
  }
  void set_place(int field, FixedPlace place);

  // Place of a field in a delimited line, from 1; 0 when it takes no part.
  [[nodiscard]] int16_t rank(int field) const { return Int16(RankOffset(field)); }
  void set_rank(int field, int16_t rank) { SetInt16(RankOffset(field), rank); }
  void ClearRanks();

  friend bool operator==(const TransferProfile&, const TransferProfile&) = default;

 private:
  static constexpr size_t kNameOffset = 0;
  static constexpr size_t kTypeOffset = 24;
  static constexpr size_t kFieldSeparatorOffset = 27;
  static constexpr size_t kCardSeparatorOffset = 37;
  static constexpr size_t PlaceOffset(int field) { return 50 + 4 * static_cast<size_t>(field); }
  static constexpr size_t RankOffset(int field) { return 174 + 2 * static_cast<size_t>(field); }

  [[nodiscard]] std::string Text(size_t offset, size_t limit) const {
    return CopyFieldText(bytes().subspan(offset), limit);
  }
  // Cut at `limit`, with a zero behind.
  void SetText(size_t offset, size_t limit, std::string_view text) {
    StorePadded(bytes_, offset, limit + 1, text.substr(0, limit));
  }
  [[nodiscard]] int16_t Int16(size_t offset) const {
    return static_cast<int16_t>(LoadLe16(bytes_, offset));
  }
  void SetInt16(size_t offset, int16_t value) {
    StoreLe16(bytes_, offset, static_cast<uint16_t>(value));
  }

  std::array<std::byte, kSize> bytes_{};
};

}  // namespace carnetel
