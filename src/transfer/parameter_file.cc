#include "transfer/parameter_file.h"

#include <algorithm>

namespace carnetel {
namespace {

constexpr uint16_t kLastFormatOffset = 128;
constexpr uint32_t kImportMappingOffset = 756;
constexpr uint32_t kExportMappingOffset = 1384;

}  // namespace

ParameterHeader::ParameterHeader() {
  StorePadded(bytes_, 0, 42, "CARNETEL (C) DROV SOFTWARE 1994");
  StorePadded(bytes_, 42, 50, "Fichier de param\x8Atres V.4.00 ");
  StoreLe16(bytes_, 94, kProfileSlotSize);
  StoreLe16(bytes_, 96, kLastFormatOffset);
  StoreLe32(bytes_, 98, kImportMappingOffset);
  StoreLe32(bytes_, 102, kExportMappingOffset);
}

void ParameterFile::StartTransfer(TransferDirection direction) {
  header_ = ParameterHeader();
  const auto plain = TransferFileType::kDelimited;
  if (AccessParameterFile(Access::kRead, plain, direction) < 0) Create();
  profile_.set_type(static_cast<TransferFileType>(header_.last_type()));
  header_.set_direction(direction);
}

int ParameterFile::AccessParameterFile(Access access, TransferFileType type,
                                       TransferDirection direction) {
  return access == Access::kRead ? Read(type, direction) : Write(type, direction);
}

int ParameterFile::Read(TransferFileType type, TransferDirection direction) {
  const std::unique_ptr<File> file = Open(OpenMode::kRead);
  ParameterHeader header;
  if (file == nullptr || file->Read(0, header.bytes()) < ParameterHeader::kSize) return -1;
  if (!IsDbase(type)) {
    TransferProfile profile;
    const size_t read = file->Read(header.last_format_offset(), profile.bytes());
    if (read < TransferProfile::kSize) return -1;
    header_ = header;
    profile_ = profile;
    return 0;
  }
  header_ = header;
  header_.set_last_type(type);
  ProfileSlot slot;
  const size_t read = file->Read(header.mapping_offset(direction), slot);
  if (read < slot.size() || LoadU8(slot, kSlotKindOffset) < kDbaseImportKind) return -1;
  mapping(direction) = DbaseMapping::Load(slot);
  return 0;
}

int ParameterFile::Write(TransferFileType type, TransferDirection direction) {
  const std::unique_ptr<File> file = Open(OpenMode::kCreateOrOpen);
  if (file == nullptr) return -1;
  WriteHeader(*file);
  ProfileSlot slot;
  if (!IsDbase(type)) {
    profile_.Store(slot);
    file->Write(header_.last_format_offset(), slot);
    return 0;
  }
  mapping(direction).Store(slot);
  file->Write(header_.mapping_offset(direction), slot);
  return 0;
}

std::unique_ptr<File> ParameterFile::Open(OpenMode mode) {
  return files_.Open(FindAnyCase(files_, path_), mode);
}

bool ParameterFile::WriteHeader(File& file) {
  header_.set_slot_count(std::max<int16_t>(header_.slot_count(), 1));
  return file.Write(0, header_.bytes());
}

void ParameterFile::Create() {
  header_ = ParameterHeader();
  profile_ = TransferProfile::OfNewInstallation();
  mappings_ = {};
  (void)Write(TransferFileType::kDbase3, TransferDirection::kImport);
  (void)Write(TransferFileType::kDbase3, TransferDirection::kExport);
  (void)Write(TransferFileType::kDelimited, TransferDirection::kImport);
}

}  // namespace carnetel
