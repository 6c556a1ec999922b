#include <algorithm>

#include "base/code_page.h"
#include "base/path.h"
#include "transfer/dbase.h"
#include "transfer/dbase_format.h"

namespace carnetel {
namespace {

constexpr int kAttention = 80;
constexpr int kImportTitle = 92;
constexpr int kFirstColumnName = 127;
constexpr int kExportName = 156;
constexpr int kNoSource = 157;
constexpr int kNotDbase = 159;
constexpr int kIsDbase3 = 193;
constexpr int kIsDbase4 = 194;

// A descriptor is there when the header is long enough for this much of it.
constexpr uint32_t kNeededForFirst = 35;

using Columns = std::array<DbaseColumn, kFieldCount>;
using Result = DbaseHeaderOutcome::Result;

DbaseHeaderOutcome Unreadable(int text_id) {
  return {Result::kUnreadable, std::string(LoadText(text_id)), kImportTitle};
}

std::string FileNameOf(const std::string& path) {
  const PathPieces pieces = PathSplit(path);
  return pieces.name + pieces.extension;
}

// False when other files can have the same stored name.
bool IsStoredWhole(const std::string& path) {
  const OemConversion name = OemFromUtf8(FileNameOf(path));
  return name.refused.empty() && name.text.size() <= DbaseMapping::kMaxFileName;
}

// The columns that a table describes; the types it gives them are of no use here.
Columns ReadColumns(ReadableFile& file, const DbaseHeader& header) {
  Columns columns;
  uint32_t offset = kFirstColumnOffset;
  uint32_t needed = kNeededForFirst;
  uint64_t position = DbaseHeader::kSize;
  for (DbaseColumn& column : columns) {
    DbaseDescriptor descriptor;
    if (header.header_length() < needed) break;
    if (file.Read(position, descriptor.bytes()) < DbaseDescriptor::kSize) break;
    column.name = OemText(CopyFieldText(descriptor.name(), DbaseDescriptor::kNameSize));
    column.length = descriptor.length();
    column.offset = offset;
    offset += column.length;
    needed += DbaseDescriptor::kSize;
    position += DbaseDescriptor::kSize;
  }
  return columns;
}

bool SameColumns(const Columns& a, const Columns& b) {
  return std::ranges::equal(a, b, [](const DbaseColumn& x, const DbaseColumn& y) {
    return x.name == y.name && x.length == y.length && x.offset == y.offset;
  });
}

// A name that was cut may be that of another table: then the columns decide.
bool KeepsMapping(FileSystem& files, const DbaseMapping& stored, const std::string& path) {
  if (stored.file_name != StoredDbaseName(path)) return false;
  if (IsStoredWhole(path)) return true;
  const std::unique_ptr<File> file = files.Open(path, OpenMode::kRead);
  DbaseHeader header;
  return file != nullptr && file->Read(0, header.bytes()) == DbaseHeader::kSize &&
         SameColumns(stored.columns, ReadColumns(*file, header));
}

// False when the user does not go on with a table of another version than was chosen.
bool AgreesToVersion(const DbaseHeader& header, MessageForm& messages, TransferFileType* type) {
  const bool is_4 = header.version() == kDbase4Version;
  const TransferFileType found = is_4 ? TransferFileType::kDbase4 : TransferFileType::kDbase3;
  if (found == *type) return true;
  const MessageButton answer =
      messages.ShowMessage(MessageStyle::kOkCancel, kAttention, is_4 ? kIsDbase4 : kIsDbase3);
  if (answer != MessageButton::kOk) return false;
  *type = found;
  return true;
}

}  // namespace

size_t DbaseColumnCount(const DbaseMapping& mapping) {
  const auto end = std::ranges::find_if(mapping.columns, [](const DbaseColumn& column) {
    return column.offset == 0 && column.length == 0;
  });
  return static_cast<size_t>(end - mapping.columns.begin());
}

OemText StoredDbaseName(const std::string& path) {
  return OemText(OemFromUtf8Lossy(FileNameOf(path)).bytes().substr(0, DbaseMapping::kMaxFileName));
}

DbaseMapping ReadStoredMapping(ParameterFile& parameters, TransferFileType type,
                               TransferDirection direction) {
  const auto read = ParameterFile::Access::kRead;
  if (parameters.AccessParameterFile(read, type, direction) < 0) return {};
  return parameters.mapping(direction);
}

// Fields that no table takes have a name and a length as well; only the notes have no name.
DbaseMapping DefaultExportMapping() {
  DbaseMapping mapping;
  mapping.name = OemText(std::string(LoadText(kExportName)));
  mapping.kind = kDbaseExportKind;
  mapping.direction = TransferDirection::kExport;
  for (int field = kSte1; field <= kNotes; ++field) {
    DbaseColumn& column = mapping.columns[static_cast<size_t>(field)];
    if (field != kNotes) column.name = OemText(std::string(LoadText(kFirstColumnName + field)));
    column.length = static_cast<uint8_t>(kFieldTable[field].size);
  }
  uint32_t offset = 0;
  for (const int field : kDelimitedFields) {
    mapping.columns[static_cast<size_t>(field)].offset = offset;
    offset += kFieldTable[field].size;
  }
  return mapping;
}

DbaseHeaderOutcome ReadDbaseHeader(FileSystem& files, ParameterFile& parameters,
                                   MessageForm& messages, const std::string& path,
                                   TransferFileType* type) {
  DbaseMapping& mapping = parameters.mapping(TransferDirection::kImport);
  mapping.columns = {};
  const bool stored = parameters.AccessParameterFile(ParameterFile::Access::kRead, *type,
                                                     TransferDirection::kImport) == 0;
  if (stored && KeepsMapping(files, mapping, path)) return {};
  if (!FileExists(files, path)) return Unreadable(kNoSource);
  const std::unique_ptr<File> file = files.Open(path, OpenMode::kRead);
  DbaseHeader header;
  const bool read = file != nullptr && file->Read(0, header.bytes()) == DbaseHeader::kSize;
  if (!read || !header.IsTable()) return Unreadable(kNotDbase);
  if (!AgreesToVersion(header, messages, type)) return {Result::kDeclined, {}, 0};
  parameters.header().set_last_type(*type);
  mapping.columns = ReadColumns(*file, header);
  return {};
}

}  // namespace carnetel
