#include "transfer/card_writer.h"

#include <algorithm>

namespace carnetel {
namespace {

constexpr int kExportTitle = 104;
constexpr int kWriteError = 94;
constexpr int kReadError = 95;
constexpr size_t kBlockSize = 64 * 1024;

void WriteCards(Directory& source, uint32_t marked, const std::string& destination,
                CardWriter& writer, const AppendCard& append, TransferOutcome* outcome) {
  const AddressFile& address = source.address();
  const uint32_t rows = std::min<uint32_t>(address.header().count(), address.entry_count());
  uint32_t seen = 0;
  for (uint32_t row = 0; row < rows && seen < marked; ++row) {
    const EntrySlot entry = address.Entry(row);
    if (!entry.bit(source.selection_bit())) continue;
    ++seen;
    CardRecord card;
    if (!source.main().ReadCard(entry.card_offset(), card)) {
      return FailExport(outcome, kReadError, source.paths().Main());
    }
    append(card, writer.block());
    if (!writer.EndCard()) return FailExport(outcome, kWriteError, destination);
    outcome->aborted = source.progress().Step();
    if (outcome->aborted) return;
  }
}

}  // namespace

bool CardWriter::EndCard() {
  ++waiting_;
  return block_.size() < kBlockSize || Flush();
}

bool CardWriter::Flush() {
  if (!block_.empty() && !file_.Write(end_, AsBytes(block_))) {
    failed_ = true;
    return false;
  }
  end_ += block_.size();
  block_.clear();
  written_ += waiting_;
  waiting_ = 0;
  return true;
}

void FailExport(TransferOutcome* outcome, int text_id, const std::string& path) {
  outcome->result = -1;
  outcome->message = FormatText(text_id, path);
  outcome->title_id = kExportTitle;
}

void WriteMarkedCards(Directory& source, const std::string& destination, CardWriter& writer,
                      const AppendCard& append, TransferOutcome* outcome) {
  const auto marked = static_cast<uint32_t>(std::max(source.marked_count(), 0));
  source.progress().Open(ProgressForm::kTransfer, marked);
  WriteCards(source, marked, destination, writer, append, outcome);
  if (!writer.failed() && !writer.Flush()) FailExport(outcome, kWriteError, destination);
  outcome->cards = writer.written();
  source.progress().Close();
}

}  // namespace carnetel
