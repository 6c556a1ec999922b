// Card marks: one bit of the displayed group's pair in each entry of the address file. Marks reach
// the disk with each operation; the count in memory waits for the list view to close.
#pragma once

#include "storage/directory.h"

namespace carnetel {

// Marks or unmarks the card at a row of the whole file, from 0, and counts it; the caller commits.
// True when the mark changed.
bool ChangeMark(Directory& directory, uint32_t row, bool marked);

// The same, on the disk when it returns.
bool SetMark(Directory& directory, uint32_t row, bool marked);

// Marks or unmarks every card.
void SetAllMarks(Directory& directory, bool marked);

}  // namespace carnetel
