#include "tests/storage/literal_index.h"

namespace carnetel {
namespace {

int LowerBoundOf(int letter) {
  return 506 * (letter >= 'A' ? letter - 'A' : letter - '0');
}

int PositionOf(int page, int slot) {
  return page + 2 + 14 * slot;
}

int Lower(std::byte byte) {
  const int value = std::to_integer<int>(byte);
  return value >= 'A' && value <= 'Z' ? value + 32 : value;
}

}  // namespace

int LiteralIndex::Compare(int slot_position, const IndexKey& key) const {
  for (size_t i = 0; i < 10; ++i) {
    const int ours = Lower(bytes_[static_cast<size_t>(slot_position) + i]);
    const int theirs = Lower(static_cast<std::byte>(key[i]));
    if (ours != theirs) return ours - theirs;
    if (ours == 0) return 0;
  }
  return 0;
}

void LiteralIndex::MoveBytes(int from, int to, int count) {
  const FileBytes copy(bytes_.begin() + from, bytes_.begin() + from + count);
  if (to + count > static_cast<int>(bytes_.size())) bytes_.resize(static_cast<size_t>(to + count));
  std::ranges::copy(copy, bytes_.begin() + to);
}

void LiteralIndex::PutSlot(int position, const IndexKey& key, uint32_t card_offset) {
  StorePadded(bytes_, static_cast<size_t>(position), 10, KeyView(key));
  StoreLe32(bytes_, static_cast<size_t>(position) + 10, card_offset);
}

void LiteralIndex::ClearSlot(int position) {
  std::fill_n(bytes_.begin() + position, 14, std::byte{0});
}

void LiteralIndex::ClearStraySlots(uint32_t main_size) {
  for (int page = 0; WholePageAt(page); page += 506) {
    for (int slot = 0; slot < 36; ++slot) {
      const int position = PositionOf(page, slot);
      const uint32_t card = CardAt(position);
      if (SignedAt(position) < '0' && card >= 768) ClearSlot(position);
      if (SignedAt(position) >= '0' && (card < 768 || card >= main_size)) ClearSlot(position);
    }
  }
}

int LiteralIndex::EndOfChain(int letter) const {
  int end = LowerBoundOf(letter) + 506;
  while (WholePageAt(end)) {
    const int page_letter = SignedAt(end);
    if (page_letter > letter) break;
    if (page_letter == letter && SignedAt(PositionOf(end, 0)) == 0) break;
    end += 506;
  }
  return end;
}

LiteralIndex::Found LiteralIndex::Search(const IndexKey& key, IndexMode mode) const {
  const int letter = static_cast<signed char>(key[0]);
  uint32_t previous = 0;
  for (int page = LowerBoundOf(letter); WholePageAt(page); page += 506) {
    const int page_letter = SignedAt(page);
    for (int slot = 0; slot < 36; ++slot) {
      const int position = PositionOf(page, slot);
      const int first = SignedAt(position);
      const int here = page == LowerBoundOf(letter) && slot == 0 ? -2 : slot;
      if (first == 0 && page_letter == letter) return {here, page, slot, previous};
      if (first == letter) {
        const int order = Compare(position, key);
        if (order == 0 && mode == IndexMode::kRepoint) return {slot, page, slot, previous};
        if (mode == IndexMode::kRemove) return {slot, page, slot, previous};
        if (order > 0) return {here, page, slot, previous};
      }
      if (first > letter || page_letter > letter) return {-3, page, slot, previous};
      previous = CardAt(position);
    }
  }
  return {};
}

IndexUpdate LiteralIndex::UpdateIndex(const IndexKey& key, uint32_t card_offset,
                                      uint32_t old_offset, IndexMode mode) {
  IndexKey filed = key;
  if (key[0] == 0) return {-1, 0};
  if (static_cast<signed char>(key[0]) < '0') filed[0] = '0';
  const Found found = Search(filed, mode);
  if (found.result == -1) return {-1, 0};
  if (mode == IndexMode::kInsert) return Insert(filed, card_offset, found);
  if (mode == IndexMode::kRepoint) return Repoint(filed[0], card_offset, old_offset, found);
  if (mode == IndexMode::kRemove) return Remove(card_offset, found);
  return {found.result, found.previous};
}

IndexUpdate LiteralIndex::Insert(const IndexKey& key, uint32_t card_offset, const Found& found) {
  const int letter = static_cast<signed char>(key[0]);
  const int into = PositionOf(found.page, found.slot);
  if (found.result != -3 && SignedAt(into) == 0 && SignedAt(found.page) == letter) {
    PutSlot(into, key, card_offset);
    return {0, found.previous};
  }
  const int last_page = EndOfChain(letter) - 506;
  if (SignedAt(PositionOf(last_page, 35)) != 0) {
    return InsertWithNewPage(key, card_offset, found, last_page);
  }
  uint32_t previous = found.previous;
  Shift(key, card_offset, into, PositionOf(last_page, 34), &previous);
  return {0, previous};
}

IndexUpdate LiteralIndex::InsertWithNewPage(const IndexKey& key, uint32_t card_offset,
                                            const Found& found, int last_page) {
  const int into = PositionOf(found.page, found.slot);
  const int new_page = last_page + 506;
  const int size = static_cast<int>(bytes_.size());
  if (new_page >= size) {
    // The last chain: a copy of its last page goes behind it; the shift then stands one page in
    // front of that page, where every place behind is left alone and every other is out of step.
    const int shift_start = last_page - 506;
    if (shift_start <= into - 14) MoveBytes(last_page, new_page, 506);
    return {0, found.previous};
  }
  for (int page = size - 506; page >= new_page; page -= 506) MoveBytes(page, page + 506, 506);
  std::fill_n(bytes_.begin() + new_page, 506, std::byte{0});
  bytes_[static_cast<size_t>(new_page)] = static_cast<std::byte>(key[0]);
  if (into == new_page + 2) {
    PutSlot(into, key, card_offset);
    return {0, CardAt(PositionOf(last_page, 33))};
  }
  MoveBytes(PositionOf(last_page, 35), new_page + 2, 14);
  if (into == PositionOf(last_page, 35)) {
    PutSlot(into, key, card_offset);
    return {0, CardAt(PositionOf(last_page, 34))};
  }
  uint32_t previous = found.previous;
  Shift(key, card_offset, into, PositionOf(last_page, 34), &previous);
  return {0, previous};
}

void LiteralIndex::Shift(const IndexKey& key, uint32_t card_offset, int into, int from,
                         uint32_t* previous) {
  int to = from + 14;
  int counter = 1;
  while (from > into - 14) {
    MoveBytes(from, to, 14);
    if (from == into) {
      PutSlot(into, key, card_offset);
      return;
    }
    to = from;
    from -= 14;
    if (++counter == 36) {
      from -= 2;
      counter = 0;
      if (from < 0 || SignedAt(from) != static_cast<signed char>(key[0])) *previous = 0;
      if (from < 0) return;
    }
  }
}

IndexUpdate LiteralIndex::Repoint(int letter, uint32_t card_offset, uint32_t old_offset,
                                  const Found& found) {
  if (old_offset == 0) return {found.result, found.previous};
  int slot = found.slot;
  for (int page = found.page; WholePageAt(page) && SignedAt(page) == letter; page += 506) {
    for (; slot < 36; ++slot) {
      const int position = PositionOf(page, slot);
      if (CardAt(position) != old_offset) continue;
      StoreLe32(bytes_, static_cast<size_t>(position) + 10, card_offset);
      return {found.result, found.previous};
    }
    slot = 0;
  }
  return {-1, 0};
}

IndexUpdate LiteralIndex::Remove(uint32_t card_offset, const Found& found) {
  int slot = std::max(found.result, 0);
  while (slot < 36 && CardAt(PositionOf(found.page, slot)) != card_offset) ++slot;
  if (slot == 36) return {-1, 0};
  for (int page = found.page;; page += 506, slot = 0) {
    for (; slot < 35; ++slot) MoveBytes(PositionOf(page, slot + 1), PositionOf(page, slot), 14);
    ClearSlot(PositionOf(page, 35));
    if (SignedAt(PositionOf(page, 34)) == 0) return {0, found.previous};
    const int next = page + 506;
    if (!WholePageAt(next) || SignedAt(next) != SignedAt(page)) return {0, found.previous};
    MoveBytes(PositionOf(next, 0), PositionOf(page, 35), 14);
  }
}

}  // namespace carnetel
