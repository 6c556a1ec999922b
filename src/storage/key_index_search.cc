// Finding the place of a key in an index: by going over every slot, as an index with holes, copies
// or foreign bytes needs it, and by halves in one that is in order. Both answer alike.
#include "storage/key_index.h"

namespace carnetel {
namespace {

unsigned char LetterNumber(size_t chain) {
  return static_cast<unsigned char>(kIndexLetters[chain]);
}

// The first page and slot of a letter's search answer -2, so that callers can tell them.
int ResultOfSlot(size_t page, size_t slot, unsigned char letter) {
  return page == FirstPage(letter) && slot == 0 ? -2 : static_cast<int>(slot);
}

}  // namespace

KeyIndex::Place KeyIndex::FindByScan(const IndexKey& key, IndexMode mode) const {
  const auto letter = static_cast<unsigned char>(key[0]);
  uint32_t previous = 0;
  for (size_t page = FirstPage(letter); HasPage(page); page += kIndexPageSize) {
    for (size_t slot = 0; slot < kSlotsPerPage; ++slot) {
      const unsigned char first = SlotLetter(page, slot);
      if (first == 0 && PageLetter(page) == letter) {
        return {ResultOfSlot(page, slot, letter), page, slot, previous};
      }
      if (first == letter) {
        const int order = CompareKey(SlotKey(page, slot), KeyView(key), kKeySize);
        const bool exact =
            mode == IndexMode::kRemove || (order == 0 && mode == IndexMode::kRepoint);
        if (exact) return {static_cast<int>(slot), page, slot, previous};
        if (order > 0) return {ResultOfSlot(page, slot, letter), page, slot, previous};
      }
      if (Above(first, letter) || Above(PageLetter(page), letter)) {
        return {-3, page, slot, previous};
      }
      previous = SlotOffset(page, slot);
    }
  }
  return {};
}

KeyIndex::Place KeyIndex::FindByHalves(const IndexKey& key, IndexMode mode) const {
  const auto letter = static_cast<unsigned char>(key[0]);
  const size_t chain = FirstPageNotBelow(letter);
  if (!HasPage(chain) || PageLetter(chain) != letter) return FindByScan(key, mode);
  size_t used = 0;
  if (SlotLetter(chain, 0) != 0) {
    const size_t last_page = EndOfChain(letter, chain) - kIndexPageSize;
    used = (last_page - chain) / kIndexPageSize * kSlotsPerPage;
    for (size_t slot = 0; slot < kSlotsPerPage && SlotLetter(last_page, slot) != 0; ++slot) ++used;
  }
  return PlaceInChain(key, chain, used, mode);
}

SlotPlace KeyIndex::LowerBound(const IndexKey& key) const {
  const SlotPlace start{FirstPage(static_cast<unsigned char>(key[0])), 0};
  if (!in_order_) return start;
  const Place place = FindByHalves(key, IndexMode::kRepoint);
  return place.result == -1 ? start : SlotPlace{place.page, place.slot};
}

// `used` slots from the start of the chain are filled, with ascending keys.
KeyIndex::Place KeyIndex::PlaceInChain(const IndexKey& key, size_t chain, size_t used,
                                       IndexMode mode) const {
  const auto letter = static_cast<unsigned char>(key[0]);
  const auto page_of = [chain](size_t i) { return chain + i / kSlotsPerPage * kIndexPageSize; };
  const auto key_at = [&](size_t i) { return SlotKey(page_of(i), i % kSlotsPerPage); };
  // A key to insert goes behind its equals; to re-point, the first of them counts.
  const int low_enough = mode == IndexMode::kRepoint ? -1 : 0;
  size_t at = 0;
  for (size_t count = mode == IndexMode::kRemove ? 0 : used; count > 0;) {
    const size_t half = count / 2;
    const bool before = CompareKey(key_at(at + half), KeyView(key), kKeySize) <= low_enough;
    if (before) at += half + 1;
    count = before ? count - half - 1 : half;
  }
  Place place{0, page_of(at), at % kSlotsPerPage, 0};
  if (at > 0) {
    place.previous = SlotOffset(page_of(at - 1), (at - 1) % kSlotsPerPage);
  } else if (chain > FirstPage(letter)) {
    place.previous = SlotOffset(chain - kIndexPageSize, kSlotsPerPage - 1);
  }
  if (!HasPage(place.page)) return {};
  const bool exact =
      at < used &&
      (mode == IndexMode::kRemove ||
       (mode == IndexMode::kRepoint && CompareKey(key_at(at), KeyView(key), kKeySize) == 0));
  if (exact) {
    place.result = static_cast<int>(place.slot);
  } else if (PageLetter(place.page) == letter) {
    place.result = ResultOfSlot(place.page, place.slot, letter);
  } else {
    place.result = -3;
  }
  return place;
}

template <class Predicate>
size_t KeyIndex::FirstPageThat(Predicate holds, size_t from) const {
  size_t low = from;
  for (size_t count = page_count() - std::min(from, page_count()); count > 0;) {
    const size_t half = count / 2;
    const bool before = !holds((low + half) * kIndexPageSize);
    if (before) low += half + 1;
    count = before ? count - half - 1 : half;
  }
  return low * kIndexPageSize;
}

size_t KeyIndex::EndOfChain(unsigned char letter, size_t from) const {
  const auto ends_chain = [&](size_t page) {
    return Above(PageLetter(page), letter) ||
           (PageLetter(page) == letter && SlotLetter(page, 0) == 0);
  };
  size_t page = std::max(FirstPage(letter) + kIndexPageSize, from);
  if (in_order_) return FirstPageThat(ends_chain, page / kIndexPageSize);
  while (HasPage(page) && !ends_chain(page)) page += kIndexPageSize;
  return page;
}

size_t KeyIndex::FirstPageNotBelow(unsigned char letter) const {
  return FirstPageThat([&](size_t page) { return !Above(letter, PageLetter(page)); }, 0);
}

bool KeyIndex::IsInOrder() const {
  size_t chains = 0;
  for (size_t page = 0; HasPage(page); page += kIndexPageSize) {
    const unsigned char letter = PageLetter(page);
    const bool chained = page > 0 && PageLetter(page - kIndexPageSize) == letter;
    if (!chained) {
      const size_t chain = chains++;
      if (chain >= kIndexLetters.size() || PageLetter(page) != LetterNumber(chain)) return false;
    }
    // The slot in front, as far as it is one of this chain.
    std::string_view before = chained ? SlotKey(page - kIndexPageSize, kSlotsPerPage - 1) : "";
    bool ended = chained && before[0] == 0;
    for (size_t slot = 0; slot < kSlotsPerPage; ++slot) {
      const unsigned char first = SlotLetter(page, slot);
      if (first == 0) {
        ended = true;
        continue;
      }
      const std::string_view key = SlotKey(page, slot);
      if (ended || first != letter) return false;
      if (!before.empty() && CompareKey(before, key, kKeySize) > 0) return false;
      before = key;
    }
  }
  return image_.size() % kIndexPageSize == 0 && chains == kIndexLetters.size();
}

}  // namespace carnetel
