#include "transfer/export_run.h"

#include <algorithm>

namespace carnetel {
namespace {

constexpr int kExportTitle = 104;
constexpr int kWriteError = 94;
constexpr int kReadError = 95;
constexpr size_t kBlockSize = 64 * 1024;

class CardWriter {
 public:
  CardWriter(const ExportTarget& target, const AppendCard& append)
      : target_(target), append_(append), position_(target.position) {}

  // False when a block could not be written.
  bool Add(const CardRecord& card) {
    append_(card, block_);
    ++waiting_;
    return block_.size() < kBlockSize || Flush();
  }

  bool Flush() {
    if (!block_.empty() && !target_.file.Write(position_, AsBytes(block_))) {
      // The start of a record would put all out of place that are added behind it later.
      if (target_.file.Size() > position_) target_.file.Truncate(position_);
      return false;
    }
    position_ += block_.size();
    block_.clear();
    written_ += waiting_;
    waiting_ = 0;
    return true;
  }

  [[nodiscard]] bool HasRoom() const { return written_ + waiting_ < target_.room; }
  [[nodiscard]] uint32_t written() const { return written_; }

 private:
  const ExportTarget& target_;
  const AppendCard& append_;
  uint64_t position_;
  std::string block_;
  uint32_t waiting_ = 0;
  uint32_t written_ = 0;
};

void WriteCards(Directory& source, const ExportTarget& target, CardWriter& writer,
                TransferOutcome* outcome) {
  const AddressFile& address = source.address();
  const uint32_t rows = std::min<uint32_t>(address.header().count(), address.entry_count());
  int32_t left = source.marked_count();
  for (uint32_t row = 0; row < rows && left > 0; ++row) {
    const EntrySlot entry = address.Entry(row);
    if (!entry.bit(source.selection_bit())) continue;
    --left;
    outcome->directory_full = !writer.HasRoom();
    if (outcome->directory_full) return TellFailedExport(kWriteError, target.path, outcome);
    CardRecord card;
    if (!source.main().ReadCard(entry.card_offset(), card)) {
      return TellFailedExport(kReadError, source.paths().Main(), outcome);
    }
    if (!writer.Add(card)) return TellFailedExport(kWriteError, target.path, outcome);
    outcome->aborted = source.progress().Step();
    if (outcome->aborted) return;
  }
}

}  // namespace

TransferOutcome FailedExport(int text_id, const std::string& path) {
  TransferOutcome outcome;
  TellFailedExport(text_id, path, &outcome);
  return outcome;
}

void TellFailedExport(int text_id, const std::string& path, TransferOutcome* outcome) {
  outcome->result = -1;
  outcome->message = FormatText(text_id, path);
  outcome->title_id = kExportTitle;
}

TransferOutcome ExportMarkedCards(Directory& source, const ExportTarget& target,
                                  const AppendCard& append) {
  TransferOutcome outcome;
  CardWriter writer(target, append);
  source.progress().Open(ProgressForm::kTransfer, static_cast<uint32_t>(source.marked_count()));
  WriteCards(source, target, writer, &outcome);
  const bool write_failed = target.file.write_failed();
  if (!write_failed && !writer.Flush()) TellFailedExport(kWriteError, target.path, &outcome);
  outcome.cards = writer.written();
  source.progress().Close();
  return outcome;
}

}  // namespace carnetel
