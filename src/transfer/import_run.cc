#include "transfer/import_run.h"

#include "storage/card_dispatch.h"

namespace carnetel {
namespace {

constexpr int kImportTitle = 92;
constexpr int kWriteError = 94;
constexpr int kHeldByOther = 177;

enum class PassEnd { kDone, kAborted, kFailed };

// No test looks whether the key field received anything: such a card is added as it stands and
// filed under its other key field.
PassEnd AddCards(Directory& directory, const NextCard& next) {
  const Directory::Batch batch(directory);
  if (!batch) return PassEnd::kFailed;
  CardDispatch dispatch(directory);
  CardRecord& card = directory.context().current;
  card.Clear();
  while (next(card)) {
    uint32_t entry_position = 0;
    if (dispatch.Add(false, &entry_position) < 0) return PassEnd::kFailed;
    if (directory.progress().Step()) return PassEnd::kAborted;
  }
  return PassEnd::kDone;
}

}  // namespace

TransferOutcome FailedImport(int text_id, const std::string& path) {
  TransferOutcome outcome;
  outcome.result = -1;
  outcome.message = FormatText(text_id, path);
  outcome.title_id = kImportTitle;
  return outcome;
}

std::unique_ptr<Directory> OpenDestination(const DirectoryServices& services,
                                           const ImportRequest& request) {
  const DirectoryOptions& options = request.destination;
  if (request.replace) DeleteDirectoryFiles(services.files, options.path, options.shared_dir);
  auto directory = std::make_unique<Directory>(services, options);
  if (!IsOpen(directory->OpenDirectory())) return nullptr;
  return directory;
}

TransferOutcome ImportCards(Directory& destination, uint32_t total, const NextCard& next) {
  const int64_t before = destination.own_count();
  destination.progress().Open(ProgressForm::kTransfer, total);
  const PassEnd end = AddCards(destination, next);
  TransferOutcome outcome;
  // A write that fails when the batch ends takes cards with it that were added before.
  if (end == PassEnd::kFailed || destination.write_failed()) {
    const bool held = destination.lock_refused();
    outcome = FailedImport(held ? kHeldByOther : kWriteError, destination.paths().Main());
    outcome.directory_full = end == PassEnd::kFailed && destination.main().count() >= kMaxCards;
  }
  outcome.cards = static_cast<uint32_t>(destination.own_count() - before);
  outcome.aborted = end == PassEnd::kAborted;
  destination.progress().Close();
  return outcome;
}

}  // namespace carnetel
