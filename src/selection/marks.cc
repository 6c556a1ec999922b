#include "selection/marks.h"

namespace carnetel {

bool ChangeMark(Directory& directory, uint32_t row, bool marked) {
  AddressFile& address = directory.address();
  if (row >= address.entry_count()) return false;
  EntrySlot entry = address.Entry(row);
  if (entry.bit(directory.selection_bit()) == marked) return false;
  entry.set_bit(directory.selection_bit(), marked);
  address.SetEntry(row, entry);
  directory.set_marked_count(directory.marked_count() + (marked ? 1 : -1));
  directory.set_selection_dirty();
  return true;
}

bool SetMark(Directory& directory, uint32_t row, bool marked) {
  const bool changed = ChangeMark(directory, row, marked);
  if (changed) directory.Commit();
  return changed;
}

void SetAllMarks(Directory& directory, bool marked) {
  for (uint32_t row = 0; row < directory.address().entry_count(); ++row) {
    ChangeMark(directory, row, marked);
  }
  directory.set_marked_count(CountMarks(directory));
  directory.Commit();
}

}  // namespace carnetel
