// Saving the cards of a main file that does not open (no version, a foreign header) into a
// directory that does.
#pragma once

#include <string>

#include "storage/directory.h"

namespace carnetel {

struct Recovery {
  uint32_t added = 0;
  bool read = false;     // the file could be opened
  bool stopped = false;  // by the user
  bool failed = false;   // a card could not be added: the directory is full, or the disk
};

// Adds every card of the file at `path`, as many as its size tells, marked, to the open directory.
// What had been added when it stopped stays. The file itself is not changed.
Recovery RecoverCards(Directory& directory, const std::string& path);

}  // namespace carnetel
