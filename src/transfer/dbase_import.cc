#include <algorithm>

#include "base/code_page.h"
#include "storage/card_dispatch.h"
#include "transfer/dbase.h"
#include "transfer/dbase_format.h"
#include "transfer/field_text.h"

namespace carnetel {
namespace {

constexpr int kNoAccess = 43;
constexpr int kImportTitle = 92;
constexpr int kWriteError = 94;
constexpr int kHeldByOther = 177;
constexpr int kReadError = 95;
constexpr int kNotDbase = 159;

// Of a column no more is read, whatever its length.
constexpr size_t kWorkSize = 80;
// Of a number no more is looked at.
constexpr size_t kNumberSize = 41;

TransferOutcome Failed(int text_id, const std::string& path = {}) {
  TransferOutcome outcome;
  outcome.result = -1;
  outcome.message = FormatText(text_id, path);
  outcome.title_id = kImportTitle;
  return outcome;
}

// The first character of a key is compared as a signed byte: an accented letter counts as below the
// digits. Directories in use were sorted under it.
char KeyStart(char first) {
  const char capital = first >= 'a' && first <= 'z' ? static_cast<char>(first - 0x20) : first;
  const auto value = static_cast<signed char>(capital);
  if (value < '0') return 'A';
  return value > 'Z' ? 'Z' : capital;
}

void CleanKey(std::string& text, int field, int key_field) {
  text.resize(std::min<size_t>(text.size(), kFieldTable[field].size));
  text.erase(0, text.find_first_not_of(' '));
  if (field != key_field) return;
  if (text.empty()) text = "A";
  text[0] = KeyStart(text[0]);
}

// Wider than the cleaning of other imports, on purpose: lower case counts, and the Minitel number
// is a number like the others.
bool IsNumber(int field) {
  return field >= kTel1 && field <= kModem;
}

char DialledForm(char c) {
  if (c == '.' || c == ';') return ':';
  const bool dialled_letter = (c >= 'a' && c <= 'd') || c == 'w';
  return dialled_letter ? static_cast<char>(c - 0x20) : c;
}

void CleanNumber(std::string& text) {
  text.resize(std::min(text.size(), kNumberSize));
  std::ranges::transform(text, text.begin(), DialledForm);
  std::erase_if(text, [](char c) { return kDialled.find(c) == std::string_view::npos; });
}

// The records of a table, read in blocks. Column offsets come from the stored mapping and record
// positions from the table, so a text may lie anywhere, behind the end of the file too.
class TableReader {
 public:
  TableReader(ReadableFile& file, const DbaseHeader& header)
      : file_(file), header_(header), block_(kBlockSize) {}

  // Records that begin within the file, at most as many as the header counts. A record without
  // length has nothing to read.
  [[nodiscard]] uint32_t RecordCount() {
    const uint64_t size = file_.Size();
    const uint64_t length = header_.record_length();
    if (length == 0 || size <= header_.header_length()) return 0;
    const uint64_t begun = (size - header_.header_length() + length - 1) / length;
    return static_cast<uint32_t>(std::min<uint64_t>(begun, header_.record_count()));
  }

  // The text of a column without the blanks behind it.
  [[nodiscard]] std::string Text(uint32_t record, const DbaseColumn& column) {
    std::array<std::byte, kWorkSize> work{};
    const uint64_t start = header_.header_length() + uint64_t{record} * header_.record_length();
    const ByteSpan wanted = ByteSpan(work).first(std::min<size_t>(column.length, kWorkSize));
    Read(start, column.offset, wanted);
    std::string text = CopyFieldText(work, kWorkSize);
    CutTrailingBlanks(text);
    return text;
  }

 private:
  static constexpr size_t kBlockSize = 64 * 1024;

  void Read(uint64_t record_start, uint64_t offset, ByteSpan into) {
    const uint64_t position = record_start + offset;
    if (position < block_start_ || position + into.size() > block_start_ + filled_) {
      if (offset + into.size() > kBlockSize) {
        (void)file_.Read(position, into);
        return;
      }
      block_start_ = record_start;
      filled_ = file_.Read(record_start, block_);
    }
    const size_t from = static_cast<size_t>(position - block_start_);
    const ByteView held = ByteView(block_).first(filled_).subspan(std::min(from, filled_));
    std::ranges::copy(held.first(std::min(held.size(), into.size())), into.begin());
  }

  ReadableFile& file_;
  DbaseHeader header_;
  std::vector<std::byte> block_;
  uint64_t block_start_ = 0;
  size_t filled_ = 0;
};

// The column a field is mapped to; null when there is none.
const DbaseColumn* ColumnOf(const DbaseMapping& mapping, int field) {
  const int map = mapping.columns[static_cast<size_t>(field)].map;
  if (map < 0 || map >= kFieldCount) return nullptr;
  const DbaseColumn& column = mapping.columns[static_cast<size_t>(map)];
  return column.offset == 0 && column.length == 0 ? nullptr : &column;
}

// Calls `visit(text)` for every field of a record that has a column.
template <class Visit>
void ForEachTextOf(TableReader& table, uint32_t record, const DbaseMapping& mapping, int key_field,
                   Visit visit) {
  for (const int field : kDbaseFields) {
    const DbaseColumn* column = ColumnOf(mapping, field);
    if (column == nullptr) continue;
    DbaseText text{record, field, table.Text(record, *column), {}};
    text.taken = text.read;
    if (field == kSte1 || field == kNom) {
      CleanKey(text.taken, field, key_field);
    } else if (IsNumber(field)) {
      CleanNumber(text.taken);
    }
    text.taken = text.taken.substr(0, column->length);
    visit(text);
  }
}

void ReadCard(TableReader& table, uint32_t record, const DbaseMapping& mapping, int key_field,
              CardRecord& card) {
  card.Clear();
  ForEachTextOf(table, record, mapping, key_field,
                [&card](const DbaseText& text) { card.SetField(text.field, OemText(text.taken)); });
}

enum class PassEnd { kDone, kAborted, kNotAdded };

PassEnd AddCards(Directory& directory, TableReader& table, const DbaseMapping& mapping,
                 CharacterSet charset) {
  const Directory::Batch batch(directory);
  if (!batch) return PassEnd::kNotAdded;
  CardDispatch dispatch(directory);
  CardRecord& card = directory.context().current;
  const int key_field = directory.active_index_number() == 1 ? kSte1 : kNom;
  const uint32_t count = table.RecordCount();
  for (uint32_t record = 0; record < count; ++record) {
    ReadCard(table, record, mapping, key_field, card);
    if (charset == CharacterSet::kAnsi) CharToOemBuff(card.bytes());
    const bool has_label = !card.FieldEmpty(kSte1) || !card.FieldEmpty(kNom);
    uint32_t entry_position = 0;
    if (has_label && dispatch.Add(false, &entry_position) < 0) return PassEnd::kNotAdded;
    if (directory.progress().Step()) return PassEnd::kAborted;
  }
  return PassEnd::kDone;
}

TransferOutcome ImportRecords(Directory& directory, ReadableFile& source, const DbaseHeader& header,
                              const DbaseMapping& mapping, CharacterSet charset) {
  TableReader table(source, header);
  const int64_t before = directory.own_count();
  directory.progress().Open(ProgressForm::kTransfer, header.record_count());
  const PassEnd end = AddCards(directory, table, mapping, charset);
  TransferOutcome outcome;
  if (directory.write_failed()) {
    outcome = Failed(kWriteError, directory.paths().Main());
  } else if (end == PassEnd::kNotAdded && directory.lock_refused()) {
    outcome = Failed(kHeldByOther, directory.paths().Main());
  } else {
    outcome.directory_full = end == PassEnd::kNotAdded && directory.main().count() >= kMaxCards;
  }
  outcome.cards = static_cast<uint32_t>(directory.own_count() - before);
  outcome.aborted = end == PassEnd::kAborted;
  directory.progress().Close();
  return outcome;
}

}  // namespace

bool ForEachDbaseText(ReadableFile& table, const DbaseMapping& mapping, int key_field,
                      const std::function<void(const DbaseText& text)>& visit) {
  DbaseHeader header;
  if (table.Read(0, header.bytes()) < DbaseHeader::kSize || !header.IsTable()) return false;
  TableReader reader(table, header);
  const uint32_t count = reader.RecordCount();
  for (uint32_t record = 0; record < count; ++record) {
    ForEachTextOf(reader, record, mapping, key_field, visit);
  }
  return true;
}

TransferOutcome ImportDbase(const DirectoryServices& services, const DbaseMapping& mapping,
                            const ImportRequest& request) {
  if (mapping.kind < kDbaseImportKind) return Failed(kNotDbase);
  const std::unique_ptr<File> source = services.files.Open(request.source, OpenMode::kRead);
  if (source == nullptr) return Failed(kReadError, request.source);
  DbaseHeader header;
  const bool read = source->Read(0, header.bytes()) == DbaseHeader::kSize;
  if (!read || !header.IsTable()) return Failed(kNotDbase);
  const DirectoryOptions& destination = request.destination;
  if (request.replace) {
    DeleteDirectoryFiles(services.files, destination.path, destination.shared_dir);
  }
  Directory directory(services, destination);
  if (!IsOpen(directory.OpenDirectory())) return Failed(kNoAccess, directory.paths().Main());
  const TransferOutcome outcome =
      ImportRecords(directory, *source, header, mapping, request.charset);
  directory.CloseDirectory();
  return outcome;
}

}  // namespace carnetel
