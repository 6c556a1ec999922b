#include "storage/recovery.h"

#include "base/code_page.h"
#include "storage/card_dispatch.h"

namespace carnetel {
namespace {

// A card that was cut short counts when at least its company and address are there.
constexpr uint64_t kLeastOfCard = 128;

uint64_t CardsToRecover(uint64_t size) {
  return size < kLeastOfCard ? 0 : (size - kLeastOfCard) / kCardSize;
}

}  // namespace

Recovery RecoverCards(Directory& directory, const std::string& path) {
  Recovery recovery;
  const std::unique_ptr<File> file = directory.files().Open(path, OpenMode::kRead);
  if (file == nullptr) return recovery;
  recovery.read = true;
  const uint64_t count = CardsToRecover(file->Size());
  const int64_t before = directory.own_count();
  ProgressBox& progress = directory.progress();
  progress.Open(ProgressForm::kTransfer, static_cast<uint32_t>(count));
  {
    const Directory::Batch batch(directory);
    recovery.failed = !batch;
    for (uint64_t n = 1; n <= count && !recovery.stopped && !recovery.failed; ++n) {
      CardRecord& card = directory.context().current;
      card.Clear();
      if (file->Read(kCardSize * n, card.bytes()) == 0) break;
      recovery.stopped = progress.Step(Utf8FromOem(card.FieldText(kSte1)));
      uint32_t position = 0;
      recovery.failed = CardDispatch(directory).Add(true, &position) < 0;
      if (!recovery.failed) ++recovery.added;
    }
  }
  // A write that fails when the batch ends takes cards with it that were added before.
  const auto added = static_cast<uint32_t>(directory.own_count() - before);
  recovery.failed = recovery.failed || added < recovery.added;
  recovery.added = added;
  directory.CloseListView();
  progress.Close();
  return recovery;
}

}  // namespace carnetel
