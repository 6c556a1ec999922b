#include "selection/criteria_file.h"

#include <utility>

#include "base/code_page.h"
#include "base/string_table.h"
#include "selection/fixed_record.h"

namespace carnetel {
namespace {

constexpr int kWorkingSetName = 45;
constexpr size_t kEndOfTextOffset = 79;
constexpr uint8_t kEndOfText = 0x1A;
constexpr size_t kRowCountOffset = 96;
constexpr size_t kNameSizeOffset = 98;
constexpr size_t kActiveSetOffset = 100;

OemText WorkingSetName() {
  return OemFromUtf8Lossy(LoadText(kWorkingSetName));
}

// A header that tells of records too small for their parts is none. Both sizes are signed.
bool FitsItsParts(ByteView header) {
  const auto size_at = [header](size_t offset) {
    return static_cast<int16_t>(LoadLe16(header, offset));
  };
  return size_at(kNameSizeOffset) >= static_cast<int>(kCriteriaNameSize) &&
         size_at(kRowCountOffset) >= static_cast<int>(kCriteriaRowCount);
}

}  // namespace

CriteriaFile::CriteriaFile(FileSystem& files, std::string path)
    : files_(files), path_(std::move(path)), header_{}, name_(WorkingSetName()) {
  const auto fresh = DefaultCriteriaFile();
  std::ranges::copy(ByteView(fresh).first(header_.size()), header_.begin());
  // The file that comes with a new directory has a zero there.
  StoreU8(header_, kEndOfTextOffset, kEndOfText);
}

int16_t CriteriaFile::active_set() const {
  return static_cast<int16_t>(LoadLe16(header_, kActiveSetOffset));
}

void CriteriaFile::set_active_set(int16_t number) {
  StoreLe16(header_, kActiveSetOffset, static_cast<uint16_t>(number));
  active_set_known_ = true;
}

size_t CriteriaFile::name_size() const {
  return LoadLe16(header_, kNameSizeOffset);
}

size_t CriteriaFile::record_size() const {
  return name_size() + size_t{LoadLe16(header_, kRowCountOffset)} * kCriteriaRowSize;
}

uint64_t CriteriaFile::RecordPosition(size_t number) const {
  return kCriteriaHeaderSize + uint64_t{record_size()} * number;
}

std::unique_ptr<File> CriteriaFile::OpenRead() {
  std::unique_ptr<File> file = files_.Open(path_, OpenMode::kReadWrite);
  if (file == nullptr) return nullptr;
  std::array<std::byte, kCriteriaHeaderSize> read{};
  if (file->Read(0, read) < read.size()) return nullptr;
  if (!FitsItsParts(read)) return nullptr;
  const int16_t shown = active_set();
  header_ = read;
  // What the list shows is the user's choice of this run until it is written, or read on purpose.
  if (active_set_known_) set_active_set(shown);
  active_set_known_ = true;
  return file;
}

bool CriteriaFile::ReadCriteriaHeader() {
  active_set_known_ = false;
  return OpenRead() != nullptr;
}

bool CriteriaFile::WriteHeader() {
  const std::unique_ptr<File> file = files_.Open(path_, OpenMode::kReadWrite);
  return file != nullptr && file->Write(0, header_);
}

std::vector<OemText> CriteriaFile::ListCriteriaSets(bool with_working_set) {
  std::vector<OemText> names;
  const std::unique_ptr<File> file = OpenRead();
  if (file == nullptr) {
    CreateCriteriaFile();
    return names;
  }
  const size_t count = (file->Size() - kCriteriaHeaderSize) / record_size();
  for (size_t number = with_working_set ? 0 : 1; number < count; ++number) {
    std::array<std::byte, kCriteriaNameSize> name{};
    if (file->Read(RecordPosition(number), name) < name.size()) break;
    names.emplace_back(CopyFieldText(ByteView(name), name.size()));
  }
  return names;
}

bool CriteriaFile::LoadCriteriaSet(size_t number) {
  const std::unique_ptr<File> file = OpenRead();
  std::vector<std::byte> record(record_size());
  if (file == nullptr || file->Read(RecordPosition(number), record) < record.size()) {
    CreateCriteriaFile();
    return false;
  }
  name_ = OemText(CopyFieldText(ByteView(record), kCriteriaNameSize));
  std::ranges::copy(ByteView(record).subspan(name_size(), CriteriaRows::kSize),
                    rows_.bytes().begin());
  return rows_.FieldCode(0) != 0;
}

std::vector<std::byte> CriteriaFile::Record(const OemText& name) const {
  std::vector<std::byte> record(record_size());
  StorePadded(record, 0, name_size(), std::string_view(name.bytes()).substr(0, kCriteriaNameSize));
  std::ranges::copy(rows_.bytes(), record.begin() + static_cast<std::ptrdiff_t>(name_size()));
  return record;
}

bool CriteriaFile::AddCriteriaSet(const OemText& name) {
  const std::unique_ptr<File> file = OpenRead();
  if (file == nullptr) return false;
  // Behind the last whole record: a piece of one has no place in the list.
  const uint64_t count = (file->Size() - kCriteriaHeaderSize) / record_size();
  return file->Write(RecordPosition(count), Record(name)) && file->Write(0, header_);
}

bool CriteriaFile::ReplaceCriteriaSet(size_t number, const OemText& name, bool name_only) {
  const std::unique_ptr<File> file = OpenRead();
  if (file == nullptr) return false;
  const std::vector<std::byte> record = Record(name);
  const size_t size = name_only ? name_size() : record.size();
  return file->Write(RecordPosition(number), ByteView(record).first(size));
}

bool CriteriaFile::DeleteCriteriaSet(size_t number) {
  if (OpenRead() == nullptr) return false;
  return DeleteFixedRecord(files_, path_, kCriteriaHeaderSize, record_size(), number) ==
         RecordDeletion::kDeleted;
}

bool CriteriaFile::StoreWorkingSet() {
  name_ = WorkingSetName();
  return ReplaceCriteriaSet(0, name_, false) || CreateCriteriaFile();
}

bool CriteriaFile::CreateCriteriaFile() {
  name_ = WorkingSetName();
  const std::unique_ptr<File> file = files_.Open(path_, OpenMode::kCreateOrOpen);
  if (file == nullptr) return false;
  const std::vector<std::byte> record = Record(name_);
  return file->Write(0, header_) && file->Write(kCriteriaHeaderSize, record);
}

}  // namespace carnetel
