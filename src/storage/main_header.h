// The header of a directory's main file. Its block is as large as a card (768 bytes), of which only
// the first 108 bytes are ever read back; the image of those lives as long as the directory is
// open. A header is judged by its version text alone: magic and constants are written, not tested.
//
//   0    32  banner "CARNETEL DROV SOFTW. VER 05.00", zero padded
//   32   2   CR LF
//   34   42  description, OEM, at most 41 characters and a zero
//   76   4   00 0D 0A 1A
//   80   u32 magic 17213910
//   84   u32 256
//   88   u32 96: where the card count lies; the stamp lies 6 behind it
//   92   u32 768: where the first card lies
//   96   u16 card count
//   98   u16 card size, 768
//   100  u16 field count, 31
//   102  u32 change stamp: modification time of this file after the last add or delete
//   106  u16 owner seat, 0 for a public directory
//   108  20  zero
//   128  20  note of a change under way with seats (storage/change_note.h), zero at rest
//   148  12  zero
//   160  248 field table, for other readers
//   408  360 zero
#pragma once

#include <array>
#include <optional>
#include <string>

#include "storage/card_record.h"

namespace carnetel {

// Found in the first bytes of every store of a family.
inline constexpr uint32_t kStoreMagic = 17213910;
inline constexpr std::string_view kMainVersion = "05.00";
inline constexpr size_t kVersionSize = 5;
inline constexpr size_t kDescriptionSize = 42;

class MainHeader {
 public:
  static constexpr size_t kSize = 108;
  static constexpr size_t kDescriptionOffset = 34;
  static constexpr size_t kMagicOffset = 80;
  static constexpr size_t kCountPositionOffset = 88;
  static constexpr size_t kCountOffset = 96;
  static constexpr size_t kFieldCountOffset = 100;
  static constexpr size_t kStampOffset = 102;
  static constexpr size_t kOwnerOffset = 106;
  static constexpr size_t kFieldTableOffset = 160;

  // The image that a new file starts from: banner, constants, a description that the creation
  // clears, a field count still to be set.
  static MainHeader Template();

  [[nodiscard]] ByteView bytes() const { return bytes_; }
  ByteSpan bytes() { return bytes_; }

  // The version text: the 5 bytes that follow "VER" and a blank; nothing when there is none.
  [[nodiscard]] std::optional<std::string> Version() const;
  // Writes the current version at the end of the banner, whatever its length.
  void SetVersionInBanner();
  // Turns the image into that of an empty directory of the current version without a description;
  // banner, owner and all else stay.
  void BecomeEmpty();
  // The whole header block of a new file: the image, the field table, zeros.
  [[nodiscard]] CardRecord Block() const;

  [[nodiscard]] OemText description() const {
    return OemText(CopyFieldText(bytes().subspan(kDescriptionOffset), kDescriptionSize));
  }
  // Cut at 41 bytes.
  void set_description(const OemText& text);

  [[nodiscard]] uint32_t magic() const { return LoadLe32(bytes_, kMagicOffset); }
  // Where the count lies in the file: told by the file itself. The stamp lies 6 bytes behind.
  [[nodiscard]] uint32_t count_position() const { return LoadLe32(bytes_, kCountPositionOffset); }
  [[nodiscard]] uint16_t card_count() const { return LoadLe16(bytes_, kCountOffset); }
  void set_card_count(uint16_t count) { StoreLe16(bytes_, kCountOffset, count); }
  [[nodiscard]] uint16_t field_count() const { return LoadLe16(bytes_, kFieldCountOffset); }
  void set_field_count(uint16_t count) { StoreLe16(bytes_, kFieldCountOffset, count); }
  [[nodiscard]] uint32_t stamp() const { return LoadLe32(bytes_, kStampOffset); }
  void set_stamp(uint32_t stamp) { StoreLe32(bytes_, kStampOffset, stamp); }
  [[nodiscard]] uint16_t owner() const { return LoadLe16(bytes_, kOwnerOffset); }
  void set_owner(uint16_t seat) { StoreLe16(bytes_, kOwnerOffset, seat); }

 private:
  std::array<std::byte, kSize> bytes_{};
};

}  // namespace carnetel
