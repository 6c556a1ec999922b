// Layouts of fixed records for tests.
#pragma once

#include <initializer_list>
#include <utility>

#include "transfer/transfer_profile.h"

namespace carnetel {

using Places = std::initializer_list<std::pair<int, FixedPlace>>;

// Records of `card_size` from `first_card` on, with these fields and no others.
inline TransferProfile FixedLayout(int16_t first_card, int16_t card_size, Places places) {
  TransferProfile profile;
  profile.set_first_card_offset(first_card);
  profile.set_card_size(card_size);
  for (int field = 0; field < kFieldCount; ++field) profile.set_place(field, {});
  for (const auto& [field, place] : places) profile.set_place(field, place);
  return profile;
}

}  // namespace carnetel
