// The one door to the cards of an open directory. Every operation keeps the main file, both indexes
// and the address file in step. Cards are OEM text; they are handed over in the buffers of the
// directory's CardContext. Answers: 0 or above for success, negative for failure.
//
// The main file is always dense: a delete moves the last card into the freed place. So one other
// card changes its offset with every delete, and nothing outside the stores may keep an offset
// across one. Within an operation the main file is brought up to date first and in an order that
// loses no card wherever a crash cuts it short; a count that no family has stands in the address
// file while a crash would leave the derived files wrong unseen.
#pragma once

#include "storage/directory.h"

namespace carnetel {

class CardDispatch {
 public:
  explicit CardDispatch(Directory& directory) : directory_(directory) {}

  // Adds the current card at the end of the main file, marked or not. `*entry_position` becomes the
  // position of its entry. -1 when the directory is full or the card could not be written: then
  // nothing has changed.
  int Add(bool marked, uint32_t* entry_position);

  // Finds the next card that matches the example in the current buffer; see IndexWalk::WalkIndex.
  int Find(WalkDirection direction, uint32_t* card_offset);

  // Writes the current card over the one at `card_offset`, whose entry is `entry_row`, and renews
  // the entry's number flags. Keys are not touched: only for changes that leave fields 0 and 10 as
  // they were. Negative when the card could not be written; 1 when its key was not found in the
  // active index, which leaves the flags as they were.
  int Rewrite(uint32_t card_offset, uint32_t entry_row);

  // Deletes the card at `*card_offset`, whose image is in the reference buffer. `*card_offset`
  // becomes the former offset of the last card, which now lies in the freed place. The answer can
  // be -1 although the card is gone (a slot out of reach): the removal shows in `last_removed`.
  int Delete(uint32_t* card_offset);

 private:
  int WriteCard(uint32_t card_offset, IndexMode mode, int64_t* kept);

  Directory& directory_;
};

enum class ChangeResult {
  kRewritten,   // in place
  kMoved,       // deleted and added under its new key, marks and groups kept
  kNotPossible  // nothing was changed
};

struct ChangedCard {
  ChangeResult result = ChangeResult::kNotPossible;
  uint32_t card_offset = 0;
};

// Deletes the card at `card_offset` and keeps the count of marked cards right. True when the card
// is gone; `*moved_from` is the former offset of the card that now lies in its place.
bool DeleteCard(Directory& directory, uint32_t card_offset, uint32_t* moved_from);

// Puts `card` in the place of the one at `card_offset`: in place when neither key field changes,
// otherwise as a card deleted and a card added, which takes over mark bits and number flags.
[[nodiscard]] ChangedCard ChangeCard(Directory& directory, uint32_t card_offset,
                                     const CardRecord& card);

}  // namespace carnetel
