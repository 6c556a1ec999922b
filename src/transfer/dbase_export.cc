#include <algorithm>
#include <chrono>

#include "base/code_page.h"
#include "transfer/dbase.h"
#include "transfer/dbase_format.h"
#include "transfer/export_run.h"
#include "transfer/field_text.h"

namespace carnetel {
namespace {

constexpr int kWriteError = 94;
constexpr int kReadError = 95;
constexpr int kNotDbase = 159;

// Lengths that stand in a new table until the first run with a marked card ends.
constexpr uint16_t kFirstHeaderLength = 801;
constexpr uint16_t kFirstRecordLength = 768;

// Of a longer record the rest stays OEM.
constexpr size_t kConvertedSize = 768;

struct OutputColumn {
  int field = 0;
  const DbaseColumn* row = nullptr;
};

// The columns of a table. The notes are never one of them, even if their row has a name.
std::vector<OutputColumn> OutputColumns(const DbaseMapping& mapping) {
  std::vector<OutputColumn> columns;
  for (const int field : kDbaseFields) {
    const DbaseColumn& row = mapping.columns[static_cast<size_t>(field)];
    if (!row.name.empty() && row.length != 0) columns.push_back({field, &row});
  }
  return columns;
}

char TypeLetter(DbaseType type) {
  switch (type) {
    case DbaseType::kNumber:
      return 'N';
    case DbaseType::kDate:
      return 'D';
    case DbaseType::kCharacter:
      break;
  }
  return 'C';
}

void SetToday(Clock& clock, DbaseHeader& header) {
  using std::chrono::days, std::chrono::seconds;
  const std::chrono::sys_seconds now{seconds(clock.LocalNow())};
  const std::chrono::year_month_day date(std::chrono::floor<days>(now));
  const int year = static_cast<int>(date.year());
  header.set_date(static_cast<uint8_t>(year - (year < 2000 ? 1900 : 2000)),
                  static_cast<uint8_t>(static_cast<unsigned>(date.month())),
                  static_cast<uint8_t>(static_cast<unsigned>(date.day())));
}

// Writes a header without records and leaves in `header` what stands in it at the end of the run.
bool WriteNewTable(File& file, const std::vector<OutputColumn>& columns, TransferFileType type,
                   Clock& clock, DbaseHeader& header) {
  header.set_version(type == TransferFileType::kDbase4 ? kDbase4Version : kDbase3Version);
  SetToday(clock, header);
  header.set_header_length(kFirstHeaderLength);
  header.set_record_length(kFirstRecordLength);
  std::string image(AsChars(header.bytes()));
  size_t record_length = 0;
  for (const OutputColumn& column : columns) {
    DbaseDescriptor descriptor;
    descriptor.set_name(column.row->name.bytes());
    descriptor.set_type(TypeLetter(column.row->type));
    descriptor.set_offset(record_length);
    descriptor.set_length(column.row->length);
    image += AsChars(descriptor.bytes());
    record_length += column.row->length;
  }
  header.set_header_length(image.size());
  header.set_record_length(record_length);
  image += static_cast<char>(kDescriptorsEnd);
  return file.Write(0, AsBytes(image));
}

// A record of `length` bytes; what its columns have beyond that is cut off.
std::string RecordOf(const CardRecord& card, const std::vector<OutputColumn>& columns,
                     size_t length) {
  std::string record(length, ' ');
  size_t position = 0;
  for (const OutputColumn& column : columns) {
    if (position >= length) break;
    const std::string_view text = WrittenText(card, column.field).substr(0, column.row->length);
    const std::string_view fitting = text.substr(0, length - position);
    record.replace(position, fitting.size(), fitting);
    position += column.row->length;
  }
  return record;
}

TransferOutcome WriteRecords(Directory& source, File& file,
                             const std::vector<OutputColumn>& columns, const ExportRequest& request,
                             DbaseHeader header) {
  const auto append = [&](const CardRecord& card, std::string& block) {
    std::string record = RecordOf(card, columns, header.record_length());
    if (request.charset == CharacterSet::kAnsi) {
      const auto bytes = std::as_writable_bytes(std::span(record));
      OemToCharBuff(bytes.first(std::min(bytes.size(), kConvertedSize)));
    }
    block += record;
  };
  TransferOutcome outcome =
      ExportMarkedCards(source, {file, request.destination, file.Size()}, append);
  header.set_record_count(header.record_count() + outcome.cards);
  if (file.Write(0, header.bytes())) return outcome;
  TellFailedExport(kWriteError, request.destination, &outcome);
  outcome.cards = 0;  // records that the header does not count are not there
  return outcome;
}

}  // namespace

TransferOutcome ExportDbase(Directory& source, const DbaseMapping& mapping, TransferFileType type,
                            const ExportRequest& request) {
  const auto fail = [&](int text_id) { return FailedExport(text_id, request.destination); };
  if (mapping.kind < kDbaseImportKind) return fail(kNotDbase);
  FileSystem& files = source.files();
  if (request.replace && files.Exists(request.destination)) files.Remove(request.destination);
  const bool exists = files.Exists(request.destination);
  const std::unique_ptr<File> file =
      files.Open(request.destination, exists ? OpenMode::kReadWrite : OpenMode::kCreateOrOpen);
  if (file == nullptr) return fail(kReadError);
  const std::vector<OutputColumn> columns = OutputColumns(mapping);
  DbaseHeader header;
  if (exists) {
    if (file->Read(0, header.bytes()) < DbaseHeader::kSize) return fail(kReadError);
  } else if (!WriteNewTable(*file, columns, type, source.clock(), header)) {
    return fail(kWriteError);
  }
  if (source.marked_count() <= 0) return TransferOutcome::SilentFailure();
  return WriteRecords(source, *file, columns, request, header);
}

}  // namespace carnetel
