#include <algorithm>

#include "base/code_page.h"
#include "transfer/delimited.h"
#include "transfer/delimited_line.h"
#include "transfer/import_run.h"
#include "transfer/line_reader.h"

namespace carnetel {
namespace {

constexpr int kNoAccess = 43;
constexpr int kReadError = 95;

struct LineCount {
  uint32_t with_text = 0;  // of those that a run takes
  uint32_t left_out = 0;
};

LineCount CountLines(LineReader& lines) {
  LineCount count;
  for (uint32_t number = 0; lines.Next(); ++number) {
    if (number >= kMaxImportedLines) {
      ++count.left_out;
    } else if (!lines.empty()) {
      ++count.with_text;
    }
  }
  return count;
}

TransferOutcome ImportLines(Directory& directory, ReadableFile& source,
                            const TransferProfile& profile, CharacterSet charset) {
  const uint64_t size = source.Size();
  if (size == 0) return TransferOutcome::SilentFailure();
  DelimitedLine format(profile);
  const size_t longest = static_cast<size_t>(std::min<uint64_t>(size, kMaxLineSize));
  LineReader first_pass(source, format.card_separator(), longest);
  const LineCount count = CountLines(first_pass);
  LineReader lines(source, format.card_separator(), longest);
  uint32_t number = 0;
  TransferOutcome outcome = ImportCards(directory, count.with_text, [&](CardRecord& card) {
    while (number < kMaxImportedLines && lines.Next()) {
      ++number;
      if (lines.too_long()) continue;
      card.Clear();
      if (!format.Read(lines.line(), card)) continue;
      if (charset == CharacterSet::kAnsi) CharToOemBuff(card.bytes());
      return true;
    }
    return false;
  });
  outcome.lines_left_out = count.left_out;
  return outcome;
}

}  // namespace

TransferOutcome ImportDelimited(const DirectoryServices& services, const TransferProfile& profile,
                                const ImportRequest& request) {
  const std::unique_ptr<File> source = services.files.Open(request.source, OpenMode::kRead);
  if (source == nullptr) return FailedImport(kReadError, request.source);
  const std::unique_ptr<Directory> directory = OpenDestination(services, request);
  if (directory == nullptr) {
    return FailedImport(kNoAccess, FamilyPaths(services.files, request.destination.path).Main());
  }
  const TransferOutcome outcome = ImportLines(*directory, *source, profile, request.charset);
  directory->CloseDirectory();
  return outcome;
}

}  // namespace carnetel
