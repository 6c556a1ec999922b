// A card as the fields of its form show it.
#pragma once

#include "desktop/form/card_panel.h"
#include "storage/card_record.h"

namespace carnetel::desktop {

// Fills every field of the form; a card without the long postal code shows the short one.
void ShowCard(CardPanel& panel, const CardRecord& card);

}  // namespace carnetel::desktop
