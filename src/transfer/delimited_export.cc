#include <algorithm>

#include "base/code_page.h"
#include "transfer/delimited.h"
#include "transfer/delimited_line.h"
#include "transfer/export_run.h"

namespace carnetel {
namespace {

// The conversion ends at the first zero byte, so with NUL as field separator it reaches the first
// field alone.
void ConvertLine(std::string& block, size_t start) {
  const size_t end = std::min(block.find('\0', start), block.size());
  OemToCharBuff(std::as_writable_bytes(std::span(block).subspan(start, end - start)));
}

}  // namespace

TransferOutcome ExportDelimited(Directory& source, const TransferProfile& profile,
                                const ExportRequest& request) {
  if (source.marked_count() <= 0) return TransferOutcome::SilentFailure();
  FileSystem& files = source.files();
  if (request.replace && files.Exists(request.destination)) files.Remove(request.destination);
  const std::unique_ptr<File> file = files.Open(request.destination, OpenMode::kCreateOrOpen);
  if (file == nullptr) {
    TransferOutcome outcome;
    outcome.not_opened = true;
    return outcome;
  }
  const DelimitedLine format(profile);
  const auto append = [&](const CardRecord& card, std::string& block) {
    const size_t start = block.size();
    format.Append(card, block);
    if (request.charset == CharacterSet::kAnsi) ConvertLine(block, start);
  };
  return ExportMarkedCards(source, {*file, request.destination, file->Size()}, append);
}

}  // namespace carnetel
