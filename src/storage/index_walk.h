// Walking the active index from card to card, in key order, over the cards that match an example:
// what find by example and the letter jump step through. With a search key the walk stays in the
// chain of the key's letter, from the first key that is not below it; without one it covers the
// whole index. A change of direction goes on from the last card found, which is not found again.
#pragma once

#include <string>

#include "storage/directory_file.h"
#include "storage/key_index.h"

namespace carnetel {

enum class WalkDirection { kFirst = 0, kNext = 1, kPrevious = 2 };

// True when the reference card of `context` has everything that its current card, the example, asks
// for: every non-empty field of the example occurs in that field of the card, without regard to the
// case of ASCII letters; with `prefix_mode` the key field must also start with it. An empty long
// postal code of the card is its short one.
[[nodiscard]] bool MatchesExample(CardContext& context, int key_field, bool prefix_mode);

class IndexWalk {
 public:
  // The key of the searches to come; empty for a walk over everything.
  void SetSearchKey(std::string key) { search_key_ = std::move(key); }

  // Steps to the next card that matches the example in `context.current`. Found: 0, the card is in
  // `context.current` and its offset in `*card_offset`. None: -1, and the card at `*card_offset`,
  // when that is one, is in `context.current`.
  int WalkIndex(const KeyIndex& index, DirectoryFile& main, int key_field, CardContext& context,
                uint32_t* card_offset, WalkDirection direction);

 private:
  struct Stand {
    size_t page = 0;
    size_t slot = 0;
  };
  struct Search {
    const KeyIndex& index;
    DirectoryFile& main;
    CardContext& context;
    int key_field;
  };

  [[nodiscard]] bool Keyed() const { return !search_key_.empty(); }
  [[nodiscard]] unsigned char Letter() const;
  // The search key as the index files it.
  [[nodiscard]] IndexKey PlacedKey() const;
  // Where a walk forward starts, at or before the first slot that it can stop at.
  [[nodiscard]] Stand Start(const KeyIndex& index) const;
  bool StepForward(const Search& search, uint32_t* found);
  bool StepBackward(const Search& search, uint32_t* found);
  // Moves the stand to the first slot from it on that can hold the search key; false when its chain
  // has none.
  [[nodiscard]] bool SeekKey(const KeyIndex& index);
  // The slot in front of `stand`; false at the start of the index or of the letter's chain.
  [[nodiscard]] bool StepBack(const KeyIndex& index, Stand* stand) const;
  [[nodiscard]] static bool Matches(const Search& search, uint32_t card_offset, bool* readable);

  std::string search_key_;
  Stand next_;   // where a walk forward goes on
  Stand found_;  // the last card found
  bool any_found_ = false;
  WalkDirection last_direction_ = WalkDirection::kFirst;
};

}  // namespace carnetel
