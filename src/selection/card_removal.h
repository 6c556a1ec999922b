// Deleting cards: one, several that somebody named, or all that are marked. Each delete moves the
// last card of the file into the freed place, so the targets still to come are kept right here.
#pragma once

#include <string>
#include <vector>

#include "storage/directory.h"

namespace carnetel {

// What a card is called when it is about to be deleted: its key field, in UTF-8.
[[nodiscard]] std::string DeletionLabel(const CardRecord& card, int key_field);

struct CardRemoval {
  uint32_t deleted = 0;
  uint32_t held = 0;     // cards that other seats edit: they were left
  bool failed = false;   // a card could not be deleted; those after it were left
  bool stopped = false;  // the user wanted to stop
};

// Deletes the cards at `offsets`, in this order; one named twice is deleted once. More than one are
// written together at the end, with a progress display.
CardRemoval DeleteCards(Directory& directory, const std::vector<uint32_t>& offsets);

// Offsets of the marked cards, in the order of the rows.
[[nodiscard]] std::vector<uint32_t> MarkedCards(const Directory& directory);

// Deletes every marked card, in the order of the rows.
CardRemoval DeleteMarkedCards(Directory& directory);

}  // namespace carnetel
