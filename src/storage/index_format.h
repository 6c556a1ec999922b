// The format of a key index (`.I01` by company, `.I02` by surname): a plain sequence of pages of
// 506 bytes without a header, sorted by letter, one chain of pages a letter. A new index has 36
// pages, '0' to '9' and 'A' to 'Z': 18,216 bytes; a full one about 900.
//
//   page   0   1   letter
//          1   1   zero
//          2   504 36 slots
//   slot   0   10  key, zero ended when shorter; a first byte of 0 marks an empty slot
//          10  u32 offset of the card in the main file; 0 in an empty slot
#pragma once

#include "storage/card_key.h"

namespace carnetel {

inline constexpr size_t kIndexPageSize = 506;
inline constexpr size_t kSlotsPerPage = 36;
inline constexpr size_t kIndexSlotSize = 14;
inline constexpr size_t kFirstSlotInPage = 2;
inline constexpr size_t kSlotCardOffset = 10;
inline constexpr std::string_view kIndexLetters = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";

static_assert(kFirstSlotInPage + kSlotsPerPage * kIndexSlotSize == kIndexPageSize);

// Position of a slot from its page's position.
constexpr size_t SlotPosition(size_t page, size_t slot) {
  return page + kFirstSlotInPage + kIndexSlotSize * slot;
}

// Where the search for a letter starts: exact for digits in an index without overflow pages, a
// lower bound for every other letter, since the letters lie at least ten pages further on.
constexpr size_t FirstPage(unsigned char letter) {
  return kIndexPageSize * static_cast<size_t>(letter >= 'A' ? letter - 'A' : letter - '0');
}

// Letters are compared as signed bytes throughout.
constexpr bool Above(unsigned char a, unsigned char b) {
  return static_cast<signed char>(a) > static_cast<signed char>(b);
}

// One slot, out of an index.
struct IndexSlot {
  IndexKey key{};
  uint32_t card_offset = 0;

  [[nodiscard]] bool used() const { return key[0] != 0 && card_offset != 0; }
  static IndexSlot Load(ByteView bytes) {
    IndexSlot slot;
    const std::string_view key = AsChars(bytes.first(kKeySize));
    std::copy(key.begin(), key.end(), slot.key.begin());
    slot.card_offset = LoadLe32(bytes, kSlotCardOffset);
    return slot;
  }
  void Store(ByteSpan bytes) const {
    StorePadded(bytes, 0, kKeySize, KeyView(key));
    StoreLe32(bytes, kSlotCardOffset, card_offset);
  }
};

}  // namespace carnetel
