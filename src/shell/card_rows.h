// The rows of the card list: which cards a letter tab shows, in the order of the address file. The
// rule looks at the first byte of the listed key field as a signed number, so a card whose key
// begins below '0' or with an accented letter is in no view at all, not even in "A à Z".
#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include "storage/directory.h"

namespace carnetel {

// A tab: keys from `first` on when `end` is 0, else those that begin with `first`.
struct LetterRange {
  unsigned char first = '0';
  unsigned char end = 0;

  friend bool operator==(const LetterRange&, const LetterRange&) = default;
};

// "A à Z".
inline constexpr LetterRange kAllLetters = {'0', 0};

// The tab of a letter or digit, in either case; none for other characters. That of Z has no end: it
// shows every key from 'Z' upward.
[[nodiscard]] std::optional<LetterRange> LetterRangeOf(char letter);

[[nodiscard]] bool ShowsCard(const CardRecord& card, int key_field, const LetterRange& range);

struct CardRow {
  uint32_t row = 0;  // in the whole file, from 0
  EntrySlot entry;
  CardRecord card;
};

// Calls `visit` for each row that the tab shows, until it answers false. Returns how many cards on
// the way it does not show; for kAllLetters these are the cards that no view shows.
uint32_t VisitCardRows(Directory& directory, const LetterRange& range,
                       const std::function<bool(const CardRow&)>& visit);

}  // namespace carnetel
