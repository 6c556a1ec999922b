#include <algorithm>

#include "base/code_page.h"
#include "transfer/delimited.h"
#include "transfer/delimited_line.h"

namespace carnetel {
namespace {

constexpr int kExportTitle = 104;
constexpr int kWriteError = 94;
constexpr int kReadError = 95;
constexpr size_t kBlockSize = 64 * 1024;

void Fail(TransferOutcome* outcome, int text_id, const std::string& path) {
  outcome->result = -1;
  outcome->message = FormatText(text_id, path);
  outcome->title_id = kExportTitle;
}

// Lines gather in a block; only what reached the file counts.
class LineWriter {
 public:
  LineWriter(File& file, const TransferProfile& profile, CharacterSet charset)
      : file_(file), format_(profile), charset_(charset), position_(file.Size()) {}

  // False when a block could not be written.
  bool Add(const CardRecord& card) {
    const size_t start = block_.size();
    format_.Append(card, block_);
    if (charset_ == CharacterSet::kAnsi) ConvertLine(start);
    ++waiting_;
    return block_.size() < kBlockSize || Flush();
  }

  bool Flush() {
    if (!block_.empty() && !file_.Write(position_, AsBytes(block_))) return false;
    position_ += block_.size();
    block_.clear();
    written_ += waiting_;
    waiting_ = 0;
    return true;
  }

  [[nodiscard]] uint32_t written() const { return written_; }

 private:
  // The conversion ends at the first zero byte, so with NUL as field separator it reaches the first
  // field alone.
  void ConvertLine(size_t start) {
    const size_t end = std::min(block_.find('\0', start), block_.size());
    OemToCharBuff(std::as_writable_bytes(std::span(block_).subspan(start, end - start)));
  }

  File& file_;
  DelimitedLine format_;
  CharacterSet charset_;
  uint64_t position_;
  std::string block_;
  uint32_t waiting_ = 0;
  uint32_t written_ = 0;
};

// Writes the marked cards, at most `marked` of them.
void WriteCards(Directory& source, uint32_t marked, const ExportRequest& request, LineWriter& lines,
                TransferOutcome* outcome) {
  const AddressFile& address = source.address();
  const uint32_t rows = std::min<uint32_t>(address.header().count(), address.entry_count());
  uint32_t seen = 0;
  for (uint32_t row = 0; row < rows && seen < marked; ++row) {
    const EntrySlot entry = address.Entry(row);
    if (!entry.bit(source.selection_bit())) continue;
    ++seen;
    CardRecord card;
    if (!source.main().ReadCard(entry.card_offset(), card)) {
      return Fail(outcome, kReadError, source.paths().Main());
    }
    if (!lines.Add(card)) return Fail(outcome, kWriteError, request.destination);
    outcome->aborted = source.progress().Step();
    if (outcome->aborted) return;
  }
}

}  // namespace

TransferOutcome ExportDelimited(Directory& source, const TransferProfile& profile,
                                const ExportRequest& request) {
  TransferOutcome outcome;
  if (source.marked_count() <= 0) {
    outcome.result = -1;
    return outcome;
  }
  const auto marked = static_cast<uint32_t>(source.marked_count());
  FileSystem& files = source.files();
  if (request.replace && files.Exists(request.destination)) files.Remove(request.destination);
  const std::unique_ptr<File> file = files.Open(request.destination, OpenMode::kCreateOrOpen);
  outcome.not_opened = file == nullptr;
  if (file == nullptr) return outcome;
  LineWriter lines(*file, profile, request.charset);
  source.progress().Open(ProgressForm::kTransfer, marked);
  WriteCards(source, marked, request, lines, &outcome);
  const bool write_failed = outcome.result < 0 && file->write_failed();
  if (!write_failed && !lines.Flush()) Fail(&outcome, kWriteError, request.destination);
  outcome.cards = lines.written();
  source.progress().Close();
  return outcome;
}

}  // namespace carnetel
