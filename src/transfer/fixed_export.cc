#include "base/code_page.h"
#include "transfer/export_run.h"
#include "transfer/fixed.h"
#include "transfer/fixed_record.h"

namespace carnetel {
namespace {

constexpr int kWriteError = 94;

}  // namespace

TransferOutcome ExportFixed(Directory& source, const TransferProfile& profile,
                            const ExportRequest& request) {
  const FixedRecord format(profile);
  TransferOutcome outcome = TransferOutcome::SilentFailure();
  if (source.marked_count() <= 0 || format.size() == 0) return outcome;
  FileSystem& files = source.files();
  const bool exists = files.Exists(request.destination);
  if (request.replace && exists) files.Remove(request.destination);
  // What could not be removed may still let itself be emptied.
  const bool begins = request.replace || !exists;
  const OpenMode mode = begins ? OpenMode::kCreateOrEmpty : OpenMode::kCreateOrOpen;
  const std::unique_ptr<File> file = files.Open(request.destination, mode);
  outcome.not_opened = file == nullptr;
  if (file == nullptr) return outcome;
  if (begins && !file->Truncate(format.first())) {
    return FailedExport(kWriteError, request.destination);
  }
  const auto append = [&](const CardRecord& card, std::string& block) {
    const size_t start = block.size();
    format.Append(card, block);
    const ByteSpan record = std::as_writable_bytes(std::span(block).subspan(start));
    if (request.charset == CharacterSet::kAnsi) OemToCharBuff(record);
  };
  return ExportMarkedCards(source, {*file, request.destination, file->Size()}, append);
}

}  // namespace carnetel
