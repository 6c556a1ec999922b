// Taking cards out of the displayed group. The cards themselves stay.
#pragma once

#include <cstdint>
#include <span>

#include "storage/directory.h"

namespace carnetel {

// Clears the mark and the group bit of a card's entry and counts the mark down, on the disk too.
// False when no entry holds that card.
bool ClearEntryBits(Directory& directory, uint32_t card_offset);

// Does so for these cards, the marked rows of the list in their order, telling each one's name,
// until no mark is left or the user stops. Returns how many left the group.
uint32_t RemoveMarkedFromGroup(Directory& directory, std::span<const uint32_t> card_offsets);

}  // namespace carnetel
