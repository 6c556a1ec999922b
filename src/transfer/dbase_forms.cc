#include "transfer/dbase_forms.h"

#include <utility>

#include "base/code_page.h"

namespace carnetel {
namespace {

constexpr int kImportName = 155;
constexpr int kExportName = 156;

constexpr auto kImport = TransferDirection::kImport;
constexpr auto kExport = TransferDirection::kExport;

// A 0 was no column in mappings of old, and still shows as none, except for the company: there it
// is the first column.
bool MeansFirstColumn(int field) {
  return field == kSte1;
}

}  // namespace

DbaseImportForm::DbaseImportForm(ParameterFile& parameters, std::string source,
                                 TransferFileType type)
    : parameters_(parameters), source_(std::move(source)), type_(type) {
  Fill();
}

std::vector<std::string> DbaseImportForm::Entries() const {
  const DbaseMapping& table = parameters_.mapping(kImport);
  std::vector<std::string> entries;
  for (size_t column = 0; column < DbaseColumnCount(table); ++column) {
    entries.push_back(Utf8FromOem(table.columns[column].name));
  }
  entries.emplace_back();
  return entries;
}

int DbaseImportForm::LastEntry() const {
  return static_cast<int>(DbaseColumnCount(parameters_.mapping(kImport)));
}

void DbaseImportForm::SetPosition(int field, int position) {
  const bool in_list = position >= 0 && position < LastEntry();
  positions_[static_cast<size_t>(field)] = in_list ? position : LastEntry();
}

void DbaseImportForm::Fill() {
  for (const int field : kDbaseFields) {
    const int map = mapping().columns[static_cast<size_t>(field)].map;
    SetPosition(field, map == 0 && !MeansFirstColumn(field) ? LastEntry() : map);
  }
}

bool DbaseImportForm::TakePrevious() {
  const auto read = ParameterFile::Access::kRead;
  if (parameters_.AccessParameterFile(read, type_, kImport) < 0) return false;
  Fill();
  return true;
}

void DbaseImportForm::Confirm() {
  for (const int field : kDbaseFields) {
    mapping().columns[static_cast<size_t>(field)].map = static_cast<int8_t>(position(field));
  }
  mapping().name = OemText(std::string(LoadText(kImportName)));
  mapping().kind = kDbaseImportKind;
  mapping().file_name = StoredDbaseName(source_);
  mapping().direction = kImport;
  (void)parameters_.AccessParameterFile(ParameterFile::Access::kWrite, type_, kImport);
}

DbaseExportForm::DbaseExportForm(ParameterFile& parameters, TransferFileType type)
    : parameters_(parameters), type_(type) {
  const DbaseMapping stored = ReadStoredMapping(parameters, type, kExport);
  const bool any = stored.kind >= kDbaseImportKind;
  columns_ = any ? stored.columns : DefaultExportMapping().columns;
}

std::string DbaseExportForm::name(int field) const {
  return Utf8FromOem(row(field).name);
}

void DbaseExportForm::SetName(int field, const std::string& utf8) {
  row(field).name = OemText(OemFromUtf8Lossy(utf8).bytes().substr(0, kMaxName));
}

int DbaseExportForm::type(int field) const {
  const auto position = static_cast<int>(row(field).type);
  const bool in_list = position >= 0 && position < static_cast<int>(kTypeTexts.size());
  return in_list ? position : 0;
}

void DbaseExportForm::SetType(int field, int position) {
  row(field).type = static_cast<DbaseType>(position);
}

void DbaseExportForm::Confirm() {
  DbaseMapping& mapping = parameters_.mapping(kExport);
  for (const int field : kDbaseFields) {
    row(field).type = static_cast<DbaseType>(type(field));
  }
  mapping.columns = columns_;
  mapping.name = OemText(std::string(LoadText(kExportName)));
  mapping.kind = kDbaseExportKind;
  mapping.direction = kExport;
  (void)parameters_.AccessParameterFile(ParameterFile::Access::kWrite, type_, kExport);
}

}  // namespace carnetel
