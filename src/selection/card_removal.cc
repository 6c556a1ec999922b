#include "selection/card_removal.h"

#include <algorithm>
#include <unordered_set>

#include "base/code_page.h"
#include "storage/card_dispatch.h"
#include "storage/card_key.h"

namespace carnetel {
namespace {

CardRemoval DeleteEach(Directory& directory, std::vector<uint32_t> offsets) {
  CardRemoval removal;
  CardRecord card;
  for (size_t i = 0; i < offsets.size() && !removal.stopped; ++i) {
    const uint32_t offset = offsets[i];
    uint32_t moved_from = 0;
    if (!directory.TestCardLock(offset)) {
      ++removal.held;
      continue;
    }
    removal.failed = !directory.main().ReadCard(offset, card);
    if (removal.failed) break;
    removal.stopped = directory.progress().Step(DeletionLabel(card, directory.key_field()));
    if (!DeleteCard(directory, offset, &moved_from)) {
      // The last card, which would go into the freed place, is under another seat's hands.
      removal.failed = !directory.lock_refused();
      if (removal.failed) break;
      ++removal.held;
      continue;
    }
    ++removal.deleted;
    // The card that was the last one lies in the freed place now.
    std::ranges::replace(offsets.begin() + static_cast<std::ptrdiff_t>(i) + 1, offsets.end(),
                         moved_from, offset);
  }
  return removal;
}

CardRemoval DeleteTogether(Directory& directory, std::vector<uint32_t> offsets) {
  const Directory::Batch batch(directory);
  if (!batch) return {.held = static_cast<uint32_t>(offsets.size())};
  directory.progress().Open(ProgressForm::kDelete, static_cast<uint32_t>(offsets.size()));
  const CardRemoval removal = DeleteEach(directory, std::move(offsets));
  directory.progress().Close();
  return removal;
}

}  // namespace

std::string DeletionLabel(const CardRecord& card, int key_field) {
  const int field = card.FieldEmpty(key_field) ? OtherKeyField(key_field) : key_field;
  return Utf8FromOem(card.FieldText(field));
}

CardRemoval DeleteCards(Directory& directory, const std::vector<uint32_t>& offsets) {
  std::vector<uint32_t> targets;
  std::unordered_set<uint32_t> named;
  for (const uint32_t offset : offsets) {
    if (named.insert(offset).second) targets.push_back(offset);
  }
  if (targets.size() > 1) return DeleteTogether(directory, std::move(targets));
  return DeleteEach(directory, std::move(targets));
}

std::vector<uint32_t> MarkedCards(const Directory& directory) {
  std::vector<uint32_t> offsets;
  const AddressFile& address = directory.address();
  for (uint32_t row = 0; row < address.entry_count(); ++row) {
    const EntrySlot entry = address.Entry(row);
    if (entry.bit(directory.selection_bit())) offsets.push_back(entry.card_offset());
  }
  return offsets;
}

CardRemoval DeleteMarkedCards(Directory& directory) {
  // Before that, other seats may have moved cards.
  const ChangeScope change(directory);
  const std::vector<uint32_t> marked = MarkedCards(directory);
  if (!change) return {.held = static_cast<uint32_t>(marked.size())};
  return DeleteCards(directory, marked);
}

}  // namespace carnetel
