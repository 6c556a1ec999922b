// What the controls of a card form hold, and the way from a card to them and back, for forms that
// show one card at a time and are emptied by the next.
#pragma once

#include <array>
#include <map>
#include <string>

#include "shell/form_fields.h"
#include "storage/card_record.h"

namespace carnetel {

// UTF-8; lines of the notes end in CR LF.
struct FormTexts {
  std::map<int, std::string> fields;  // by control
  std::array<std::string, kReferenceCount> references;

  [[nodiscard]] size_t CountFilled() const;
};

[[nodiscard]] FormTexts TextsOfCard(const CardRecord& card);

// The card that was shown with what the user made of it. Texts that were not changed keep the bytes
// of the card, whatever the screen could show of them.
[[nodiscard]] CardRecord CardOfTexts(const CardRecord& shown, const FormTexts& typed);

}  // namespace carnetel
