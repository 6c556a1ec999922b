#include <algorithm>

#include "base/code_page.h"
#include "storage/card_dispatch.h"
#include "transfer/delimited.h"
#include "transfer/delimited_line.h"
#include "transfer/line_reader.h"

namespace carnetel {
namespace {

constexpr int kImportTitle = 92;
constexpr int kNoAccess = 43;
constexpr int kWriteError = 94;
constexpr int kReadError = 95;

TransferOutcome Failed(int text_id, const std::string& path) {
  TransferOutcome outcome;
  outcome.result = -1;
  outcome.message = FormatText(text_id, path);
  outcome.title_id = kImportTitle;
  return outcome;
}

// An empty source fails without a word.
TransferOutcome Silent() {
  TransferOutcome outcome;
  outcome.result = -1;
  return outcome;
}

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

enum class PassEnd { kDone, kAborted, kFailed };

// Adds the cards of all lines. No test looks whether the key field received anything: such a card
// is added as it stands and filed under its other key field.
PassEnd AddCards(Directory& directory, LineReader& lines, DelimitedLine& format,
                 CharacterSet charset) {
  const Directory::Batch batch(directory);
  CardDispatch dispatch(directory);
  CardRecord& card = directory.context().current;
  for (uint32_t number = 0; number < kMaxImportedLines && lines.Next(); ++number) {
    if (lines.too_long()) continue;
    card.Clear();
    if (!format.Read(lines.line(), card)) continue;
    if (charset == CharacterSet::kAnsi) CharToOemBuff(card.bytes());
    uint32_t entry_position = 0;
    if (dispatch.Add(false, &entry_position) < 0) return PassEnd::kFailed;
    if (directory.progress().Step()) return PassEnd::kAborted;
  }
  return PassEnd::kDone;
}

TransferOutcome ImportLines(Directory& directory, ReadableFile& source,
                            const TransferProfile& profile, CharacterSet charset) {
  const uint64_t size = source.Size();
  if (size == 0) return Silent();
  DelimitedLine format(profile);
  const size_t longest = static_cast<size_t>(std::min<uint64_t>(size, kMaxLineSize));
  LineReader first_pass(source, format.card_separator(), longest);
  const LineCount count = CountLines(first_pass);
  const uint32_t before = directory.main().count();
  directory.progress().Open(ProgressForm::kTransfer, count.with_text);
  LineReader second_pass(source, format.card_separator(), longest);
  const PassEnd end = AddCards(directory, second_pass, format, charset);
  TransferOutcome outcome;
  // A write that fails when the batch ends takes cards with it that were added before.
  if (end == PassEnd::kFailed || directory.write_failed()) {
    outcome = Failed(kWriteError, directory.paths().Main());
    outcome.directory_full = end == PassEnd::kFailed && directory.main().count() >= kMaxCards;
  }
  outcome.cards = directory.main().count() - before;
  outcome.aborted = end == PassEnd::kAborted;
  outcome.lines_left_out = count.left_out;
  directory.progress().Close();
  return outcome;
}

}  // namespace

TransferOutcome ImportDelimited(const DirectoryServices& services, const TransferProfile& profile,
                                const ImportRequest& request) {
  const std::unique_ptr<File> source = services.files.Open(request.source, OpenMode::kRead);
  if (source == nullptr) return Failed(kReadError, request.source);
  const DirectoryOptions& destination = request.destination;
  if (request.replace) {
    DeleteDirectoryFiles(services.files, destination.path, destination.shared_dir);
  }
  Directory directory(services, destination);
  const OpenResult opened = directory.OpenDirectory();
  if (opened != OpenResult::kOpened && opened != OpenResult::kCreated) {
    return Failed(kNoAccess, directory.paths().Main());
  }
  const TransferOutcome outcome = ImportLines(directory, *source, profile, request.charset);
  directory.CloseDirectory();
  return outcome;
}

}  // namespace carnetel
