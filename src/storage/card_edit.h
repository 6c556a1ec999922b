// What saving from a form does to a card before it reaches the stores. The window's form and the
// terminal tool share it, so that both leave the same bytes.
#pragma once

#include "storage/card_record.h"

namespace carnetel {

// Removes the leading characters of the two key fields that no key may start with, blanks among
// them. True when that took anything away.
bool StripKeyFields(CardRecord& card);

// Every card needs a company or a surname; either is enough, whatever index is active.
[[nodiscard]] bool HasKeyField(const CardRecord& card);

// Sets the long postal code and the first five characters of it as the short one, so that a code
// that was erased does not come back from the short field.
void SetPostalCode(CardRecord& card, const OemText& code);

// Copies what no form shows from the old card: the fields without a control and the reserved bytes.
void CarryHiddenFields(CardRecord& card, const CardRecord& old);

}  // namespace carnetel
