#include "selection/group_file.h"

#include "base/code_page.h"
#include "base/path.h"
#include "selection/fixed_record.h"
#include "selection/group_bits.h"

namespace carnetel {
namespace {

uint64_t RowPosition(size_t row) {
  return kGroupHeaderSize + uint64_t{kGroupRowSize} * row;
}

// The lowest slot that no row of a group has; nothing when all are taken.
std::optional<uint8_t> FreeSlot(std::span<const GroupRecord> rows) {
  for (uint8_t slot = kFirstGroupSlot; slot <= kLastGroupSlot; slot += 2) {
    const auto has = [slot](const GroupRecord& row) { return row.slot() == slot; };
    if (std::ranges::none_of(rows, has)) return slot;
  }
  return {};
}

}  // namespace

GroupFile::GroupFile(Directory& directory)
    : directory_(directory), path_(directory.paths().Of(".GRP")) {}

OemText GroupFile::AddressPath() const {
  return OemFromUtf8Lossy(directory_.files().Canonical(directory_.address().path()));
}

// Both sides are what the file can hold of a path, so that a long one equals itself.
bool GroupFile::Belongs(ByteView header) const {
  if (LoadLe16(header, kGroupRowSizeOffset) != kGroupRowSize) return false;
  if (static_cast<int16_t>(LoadLe16(header, kGroupCountOffset)) < 1) return false;
  const std::string kept = CopyFieldText(header.subspan(kGroupPathOffset), kGroupPathSize);
  const std::string path = AddressPath().bytes().substr(0, kGroupPathSize);
  return CompareKey(kept, path, kGroupPathSize) == 0;
}

bool GroupFile::Check() {
  FileSystem& files = directory_.files();
  // With row 0: without it no group could ever be made.
  std::array<std::byte, kGroupHeaderSize + kGroupRowSize> header{};
  {
    const std::unique_ptr<File> file = files.Open(path_, OpenMode::kRead);
    const bool whole = file != nullptr && file->Read(0, header) == header.size();
    if (whole && Belongs(header)) return false;
  }
  const std::unique_ptr<File> file = files.Open(path_, OpenMode::kCreateOrEmpty);
  if (file == nullptr) return false;
  const PathPieces pieces = PathSplit(directory_.address().path());
  file->Write(0, NewGroupHeader(AddressPath()));
  file->Write(RowPosition(0),
              WholeFileRow(OemFromUtf8Lossy(pieces.name + pieces.extension)).bytes());
  return true;
}

std::vector<GroupRecord> GroupFile::Rows() {
  std::vector<GroupRecord> rows;
  const std::unique_ptr<File> file = directory_.files().Open(path_, OpenMode::kRead);
  std::array<std::byte, kGroupHeaderSize> header{};
  if (file == nullptr || file->Read(0, header) < header.size()) return rows;
  const auto count = static_cast<int16_t>(LoadLe16(header, kGroupCountOffset));
  for (int row = 0; row < count; ++row) {
    GroupRecord record;
    const uint64_t position = RowPosition(static_cast<size_t>(row));
    if (file->Read(position, record.bytes()) < kGroupRowSize) break;
    rows.push_back(record);
  }
  return rows;
}

std::vector<GroupRecord> GroupFile::Groups() {
  std::vector<GroupRecord> groups = Rows();
  if (!groups.empty()) groups.erase(groups.begin());
  std::erase_if(groups, [](const GroupRecord& row) { return !row.HasSlot(); });
  return groups;
}

std::optional<GroupRecord> GroupFile::ReadRow(size_t row) {
  const std::vector<GroupRecord> rows = Rows();
  if (row >= rows.size()) return {};
  return rows[row];
}

bool GroupFile::WriteRow(size_t row, const GroupRecord& record) {
  const std::unique_ptr<File> file = directory_.files().Open(path_, OpenMode::kReadWrite);
  return file != nullptr && file->Write(RowPosition(row), record.bytes());
}

bool GroupFile::WriteCount(size_t count) {
  const std::unique_ptr<File> file = directory_.files().Open(path_, OpenMode::kReadWrite);
  if (file == nullptr) return false;
  std::array<std::byte, 2> value;
  StoreLe16(value, 0, static_cast<uint16_t>(count));
  return file->Write(kGroupCountOffset, value);
}

bool GroupFile::CreateGroup(const Description& description, const AnsiText& set_name,
                            size_t displayed) {
  const std::vector<GroupRecord> rows = Rows();
  if (rows.empty()) return false;
  const std::optional<uint8_t> slot = FreeSlot(std::span(rows).subspan(1));
  if (!slot) return false;
  GroupRecord record = rows[std::min(displayed, rows.size() - 1)];
  record.set_name(description.name);
  record.set_mode(description.mode);
  record.set_slot(*slot);
  record.set_rows(0, 0);
  record.set_set_name(set_name);
  if (!WriteCount(rows.size() + 1) || !WriteRow(rows.size(), record)) return false;
  ApplyGroupBits(directory_, *slot, GroupOperation::kCreate);
  return true;
}

bool GroupFile::Describe(size_t row, const Description& description, const AnsiText& set_name) {
  std::optional<GroupRecord> record = ReadRow(row);
  if (!record) return false;
  record->set_name(description.name);
  record->set_mode(description.mode);
  record->set_set_name(set_name);
  return WriteRow(row, *record);
}

bool GroupFile::ReplaceGroup(size_t row, const Description& description, const AnsiText& set_name) {
  if (!Describe(row, description, set_name)) return false;
  const std::optional<GroupRecord> record = ReadRow(row);
  if (record && record->HasSlot()) {
    ApplyGroupBits(directory_, record->slot(), GroupOperation::kReplace);
  }
  return true;
}

bool GroupFile::RenameGroup(size_t row, const Description& description, const AnsiText& set_name) {
  return Describe(row, description, set_name);
}

bool GroupFile::MergeGroup(size_t row) {
  const std::optional<GroupRecord> record = ReadRow(row);
  if (!record) return false;
  if (record->HasSlot()) ApplyGroupBits(directory_, record->slot(), GroupOperation::kMerge);
  return true;
}

bool GroupFile::DeleteGroup(size_t row) {
  const std::vector<GroupRecord> rows = Rows();
  if (row == 0 || row >= rows.size() || !WriteCount(rows.size() - 1)) return false;
  const RecordDeletion deletion =
      DeleteFixedRecord(directory_.files(), path_, RowPosition(1), kGroupRowSize, row - 1);
  if (deletion == RecordDeletion::kNotOpened) return false;
  // A write that failed has cut the row off, and those behind it.
  if (rows[row].HasSlot()) ApplyGroupBits(directory_, rows[row].slot(), GroupOperation::kDelete);
  return deletion == RecordDeletion::kDeleted;
}

}  // namespace carnetel
