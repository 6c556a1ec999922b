#include "transfer/saved_profiles.h"

#include <limits>

#include "base/code_page.h"

namespace carnetel {
namespace {

SavedKind KindOfByte(uint8_t kind) {
  if (kind == kDbaseImportKind) return SavedKind::kDbaseImport;
  return kind == kDbaseExportKind ? SavedKind::kDbaseExport : SavedKind::kPlain;
}

TransferDirection DirectionOf(SavedKind kind) {
  return kind == SavedKind::kDbaseImport ? TransferDirection::kImport : TransferDirection::kExport;
}

OemText StoredName(const std::string& name) {
  return OemText(OemFromUtf8Lossy(name).bytes().substr(0, TransferProfile::kMaxName));
}

}  // namespace

uint64_t SavedProfiles::OffsetOf(size_t number) {
  return parameters_.header().saved_profile_offset(static_cast<uint32_t>(number));
}

size_t SavedProfiles::CountIn(File& file) {
  const uint64_t size = file.Size();
  const uint64_t first = OffsetOf(0);
  if (size < first + kProfileNameSize) return 0;
  return static_cast<size_t>((size - first - kProfileNameSize) / kProfileSlotSize + 1);
}

std::unique_ptr<File> SavedProfiles::OpenWith(size_t number, OpenMode mode) {
  std::unique_ptr<File> file = parameters_.Open(mode);
  if (file != nullptr && number >= CountIn(*file)) file.reset();
  return file;
}

ProfileSlot SavedProfiles::WorkingSlot(const std::string& name) {
  ProfileSlot slot;
  if (!IsDbase(static_cast<TransferFileType>(parameters_.header().last_type()))) {
    TransferProfile profile = parameters_.profile();
    profile.set_name(StoredName(name));
    profile.Store(slot);
    return slot;
  }
  DbaseMapping mapping = parameters_.mapping(direction_);
  const bool imports = direction_ == TransferDirection::kImport;
  mapping.name = StoredName(name);
  mapping.kind = imports ? kDbaseImportKind : kDbaseExportKind;
  mapping.direction = direction_;
  mapping.Store(slot);
  return slot;
}

std::vector<std::string> SavedProfiles::Names() {
  std::vector<std::string> names;
  const std::unique_ptr<File> file = parameters_.Open(OpenMode::kRead);
  const size_t count = file == nullptr ? 0 : CountIn(*file);
  for (size_t number = 0; number < count; ++number) {
    std::array<std::byte, kProfileNameSize> name{};
    if (file->Read(OffsetOf(number), name) < name.size()) break;
    names.push_back(Utf8FromOem(OemText(CopyFieldText(name, TransferProfile::kMaxName))));
  }
  return names;
}

std::optional<SavedKind> SavedProfiles::KindOf(size_t number) {
  const std::unique_ptr<File> file = OpenWith(number, OpenMode::kRead);
  std::array<std::byte, 1> kind{};
  if (file == nullptr || file->Read(OffsetOf(number) + kSlotKindOffset, kind) == 0) return {};
  return KindOfByte(LoadU8(kind, 0));
}

bool SavedProfiles::CanLoad(size_t number) {
  const std::optional<SavedKind> kind = KindOf(number);
  return kind && (*kind == SavedKind::kPlain || DirectionOf(*kind) == direction_);
}

bool SavedProfiles::Load(size_t number) {
  const std::optional<SavedKind> kind = KindOf(number);
  const std::unique_ptr<File> file = OpenWith(number, OpenMode::kReadWrite);
  if (!kind || file == nullptr) return false;
  const bool plain = *kind == SavedKind::kPlain;
  ProfileSlot slot{};
  const size_t needed = plain ? TransferProfile::kSize : slot.size();
  if (file->Read(OffsetOf(number), slot) < needed) return false;
  ParameterHeader& header = parameters_.header();
  uint64_t working = header.last_format_offset();
  if (plain) {
    parameters_.profile() = TransferProfile::Load(slot);
    parameters_.profile().Store(slot);
    header.set_last_type(static_cast<TransferFileType>(parameters_.profile().type()));
  } else {
    const TransferDirection direction = DirectionOf(*kind);
    parameters_.mapping(direction) = DbaseMapping::Load(slot);
    header.set_last_type(TransferFileType::kDbase3);
    working = header.mapping_offset(direction);
  }
  return file->Write(working, slot) && parameters_.WriteHeader(*file);
}

bool SavedProfiles::Add(const std::string& name) {
  const std::unique_ptr<File> file = parameters_.Open(OpenMode::kReadWrite);
  if (file == nullptr) return false;
  ParameterHeader& header = parameters_.header();
  if (header.slot_count() < std::numeric_limits<int16_t>::max()) {
    header.set_slot_count(static_cast<int16_t>(header.slot_count() + 1));
  }
  const uint64_t offset = OffsetOf(CountIn(*file));
  return parameters_.WriteHeader(*file) && file->Write(offset, WorkingSlot(name));
}

bool SavedProfiles::Replace(size_t number, const std::string& name) {
  const std::unique_ptr<File> file = OpenWith(number, OpenMode::kReadWrite);
  return file != nullptr && file->Write(OffsetOf(number), WorkingSlot(name));
}

bool SavedProfiles::Rename(size_t number, const std::string& name) {
  const std::unique_ptr<File> file = OpenWith(number, OpenMode::kReadWrite);
  std::array<std::byte, TransferProfile::kMaxName> bytes;
  StorePadded(bytes, 0, bytes.size(), StoredName(name).bytes());
  return file != nullptr && file->Write(OffsetOf(number), bytes);
}

bool SavedProfiles::Delete(size_t number) {
  const std::unique_ptr<File> file = OpenWith(number, OpenMode::kReadWrite);
  if (file == nullptr) return false;
  const uint64_t start = OffsetOf(number);
  const uint64_t next = start + kProfileSlotSize;
  const uint64_t size = file->Size();
  std::vector<std::byte> rest(size > next ? static_cast<size_t>(size - next) : 0);
  if (file->Read(next, rest) < rest.size()) return false;
  const bool moved = rest.empty() || file->Write(start, rest);
  return moved && file->Truncate(start + rest.size());
}

}  // namespace carnetel
