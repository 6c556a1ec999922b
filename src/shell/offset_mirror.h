// The one map from a card's offset in the main file back to its entry: the offsets of all entries
// passed by the last refill of the list, in file order, unfiltered.
#pragma once

#include <cstdint>
#include <vector>

#include "storage/card_record.h"

namespace carnetel {

class OffsetMirror {
 public:
  static constexpr int32_t kNone = -1;

  void Clear() {
    rows_.clear();
    size_ = 0;
  }
  void Append(uint32_t card_offset) {
    const size_t card = card_offset / kCardSize;
    if (rows_.size() <= card) rows_.resize(card + 1, kNone);
    // The first entry of an offset counts, as a search from the start would find it.
    if (rows_[card] == kNone) rows_[card] = size_;
    ++size_;
  }
  // Number of the entry that holds the card, kNone when none was passed.
  [[nodiscard]] int32_t Find(uint32_t card_offset) const {
    const size_t card = card_offset / kCardSize;
    return card < rows_.size() ? rows_[card] : kNone;
  }
  [[nodiscard]] int32_t size() const { return size_; }

 private:
  // By the card's place in the main file; its offset stands for nothing else.
  std::vector<int32_t> rows_;
  int32_t size_ = 0;
};

}  // namespace carnetel
