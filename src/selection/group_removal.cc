#include "selection/group_removal.h"

#include <algorithm>

#include "selection/card_removal.h"

namespace carnetel {
namespace {

bool ClearBits(Directory& directory, uint32_t card_offset) {
  AddressFile& address = directory.address();
  const uint32_t row = address.FindRow(card_offset);
  if (row == address.entry_count()) return false;
  EntrySlot entry = address.Entry(row);
  if (entry.bit(directory.selection_bit())) {
    directory.set_marked_count(std::max(0, directory.marked_count() - 1));
    directory.set_selection_dirty();
  }
  entry.set_bit(directory.selection_bit(), false);
  entry.set_bit(directory.group_bit(), false);
  address.SetEntry(row, entry);
  return true;
}

}  // namespace

bool ClearEntryBits(Directory& directory, uint32_t card_offset) {
  if (!ClearBits(directory, card_offset)) return false;
  directory.CloseListView();
  return true;
}

uint32_t RemoveMarkedFromGroup(Directory& directory, std::span<const uint32_t> card_offsets) {
  ProgressBox& progress = directory.progress();
  progress.Open(ProgressForm::kDelete, static_cast<uint32_t>(directory.marked_count()));
  uint32_t removed = 0;
  bool stopped = false;
  CardRecord card;
  for (size_t i = 0; i < card_offsets.size() && !stopped && directory.marked_count() > 0; ++i) {
    if (!directory.main().ReadCard(card_offsets[i], card)) continue;
    // The card that was announced still leaves when the user stops the walk at it.
    stopped = progress.Step(DeletionLabel(card, directory.key_field()));
    if (ClearBits(directory, card_offsets[i])) ++removed;
  }
  directory.CloseListView();
  progress.Close();
  return removed;
}

}  // namespace carnetel
