// The parameter file of transfers (`.TRS`), one per installation: what the last import or export
// used, and profiles saved under names. It is opened for each access and closed at once, without a
// lock. This object also holds the live state that all transfers of a run share: the profile, the
// dBase mapping of each direction and the header.
//
//   header 0    42  magic "CARNETEL (C) DROV SOFTWARE 1994", zero padded
//          42   50  version text, OEM, zero padded
//          92   i16 count of slots, at least 1; never lowered, and nothing reads it
//          94   u16 slot size, 628
//          96   u16 offset of the last-format slot, 128
//          98   u32 offset of the working dBase import mapping, 756
//          102  u32 offset of the working dBase export mapping, 1384
//          106  u8  file type of the last transfer or loaded profile
//          107  u8  direction of the last transfer command
//          108  20  zero
//   then slots of 628 bytes: the three above and, from 2012 on, the saved profiles
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>

#include "platform/file_system.h"
#include "transfer/dbase_mapping.h"
#include "transfer/transfer_profile.h"

namespace carnetel {

class ParameterHeader {
 public:
  static constexpr size_t kSize = 128;

  // As a transfer command starts: texts and offsets as given above, everything else 0.
  ParameterHeader();

  [[nodiscard]] ByteView bytes() const { return bytes_; }
  ByteSpan bytes() { return bytes_; }

  [[nodiscard]] int16_t slot_count() const { return static_cast<int16_t>(LoadLe16(bytes_, 92)); }
  void set_slot_count(int16_t count) { StoreLe16(bytes_, 92, static_cast<uint16_t>(count)); }
  [[nodiscard]] uint16_t last_format_offset() const { return LoadLe16(bytes_, 96); }
  [[nodiscard]] uint32_t mapping_offset(TransferDirection direction) const {
    return LoadLe32(bytes_, direction == TransferDirection::kImport ? 98 : 102);
  }
  // Where saved profile `number`, from 0, lies.
  [[nodiscard]] uint64_t saved_profile_offset(uint32_t number) const {
    return uint64_t{last_format_offset()} + 3 * kProfileSlotSize +
           uint64_t{number} * kProfileSlotSize;
  }
  [[nodiscard]] uint8_t last_type() const { return LoadU8(bytes_, 106); }
  void set_last_type(TransferFileType type) { StoreU8(bytes_, 106, static_cast<uint8_t>(type)); }
  [[nodiscard]] uint8_t direction() const { return LoadU8(bytes_, 107); }
  void set_direction(TransferDirection way) { StoreU8(bytes_, 107, static_cast<uint8_t>(way)); }

 private:
  std::array<std::byte, kSize> bytes_{};
};

class ParameterFile {
 public:
  // `path` is where the file lies or is to lie, such as "…/CARNETEL.TRS"; nothing is opened yet.
  ParameterFile(FileSystem& files, std::string path) : files_(files), path_(std::move(path)) {}

  [[nodiscard]] const std::string& path() const { return path_; }
  ParameterHeader& header() { return header_; }
  TransferProfile& profile() { return profile_; }
  DbaseMapping& mapping(TransferDirection direction) {
    return mappings_[static_cast<size_t>(direction)];
  }

  // What a transfer command begins with: takes header and last format from the file, which is made
  // when it is missing, gives the profile the type of the last transfer and notes the direction. A
  // file that cannot be made or written leaves the profile of a new installation to work with.
  void StartTransfer(TransferDirection direction);

  enum class Access { kRead, kWrite };
  // Reads or writes the header and, by `type`, the last format (from and to `profile`) or the
  // working dBase mapping of `direction`. 0, or -1 when the file is missing or too short, or when
  // no mapping was stored; the profile and the mapping are then as before. Failed writes are not
  // told, by design.
  int AccessParameterFile(Access access, TransferFileType type, TransferDirection direction);

  // For the slots behind the working ones (transfer/saved_profiles.h): the file, null when it
  // cannot be opened, and its header from the live one, with a count of at least 1.
  [[nodiscard]] std::unique_ptr<File> Open(OpenMode mode);
  bool WriteHeader(File& file);

 private:
  int Read(TransferFileType type, TransferDirection direction);
  int Write(TransferFileType type, TransferDirection direction);
  void Create();

  FileSystem& files_;
  std::string path_;
  ParameterHeader header_;
  TransferProfile profile_;
  std::array<DbaseMapping, 2> mappings_;
};

}  // namespace carnetel
