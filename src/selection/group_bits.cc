#include "selection/group_bits.h"

namespace carnetel {
namespace {

constexpr int kMarkBytes = 11;

// A member that leaves loses another bit besides: the mask that was meant for the slot's selection
// is applied to the mark byte of the slot's number. For slots 2, 4 and 6 that is the selection bit
// of slots 18, 36 and 54; for all others there is none. It has to stay.
void ClearStrayBit(EntrySlot* entry, uint8_t slot) {
  const int mask = slot < 8 ? (1 << (slot + 1)) & 0xFF : 0;
  if (mask == 0 || slot >= kMarkBytes) return;
  for (int bit = 0; bit < 8; ++bit) {
    if ((mask & (1 << bit)) != 0) entry->set_bit(static_cast<uint8_t>(slot * 8 + bit), false);
  }
}

}  // namespace

void ApplyGroupBits(Directory& directory, uint8_t slot, GroupOperation operation) {
  AddressFile& address = directory.address();
  const bool joins = operation != GroupOperation::kDelete;
  const bool leaves = operation == GroupOperation::kReplace || operation == GroupOperation::kDelete;
  for (uint32_t row = 0; row < address.entry_count(); ++row) {
    EntrySlot entry = address.Entry(row);
    if (static_cast<int32_t>(entry.card_offset()) < 0) break;
    if (joins && entry.bit(directory.selection_bit())) {
      entry.set_bit(slot, true);
    } else if (leaves && entry.bit(slot)) {
      entry.set_bit(slot, false);
      ClearStrayBit(&entry, slot);
    } else {
      continue;
    }
    address.SetEntry(row, entry);
  }
  directory.Commit();
}

}  // namespace carnetel
