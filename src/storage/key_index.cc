#include "storage/key_index.h"

#include <cstring>

namespace carnetel {
namespace {

constexpr size_t kLastSlot = kSlotsPerPage - 1;

}  // namespace

bool KeyIndex::CheckKeyIndex(uint32_t card_end, bool counts_differ) {
  was_written_ = false;
  file_ = files_->Open(path_, OpenMode::kReadWrite);
  const bool loaded = file_ != nullptr && image_.Load(*file_);
  if (!loaded || !IsWhole() || counts_differ) {
    file_.reset();
    image_.Clear();
    files_->Remove(path_);
    return false;
  }
  for (size_t page = 0; HasPage(page); page += kIndexPageSize) {
    for (size_t slot = 0; slot < kSlotsPerPage; ++slot) {
      const uint32_t offset = SlotOffset(page, slot);
      const bool filed = !Above('0', SlotLetter(page, slot));
      const bool names_card = offset >= kCardSize && offset < card_end;
      const bool stray = filed ? !names_card : offset >= kCardSize;
      if (stray) StoreSlot(page, slot, {});
    }
  }
  Flush();
  in_order_ = IsInOrder();
  return true;
}

bool KeyIndex::IsWhole() const {
  return page_count() >= kIndexLetters.size() && image_.size() % kIndexPageSize == 0;
}

bool KeyIndex::CreateEmpty() {
  file_ = files_->Open(path_, OpenMode::kCreateOrEmpty);
  if (file_ == nullptr) return false;
  image_.Clear();
  for (const char letter : kIndexLetters) {
    std::array<std::byte, kIndexPageSize> page{};
    page[0] = static_cast<std::byte>(letter);
    image_.Append(page);
  }
  in_order_ = true;
  return true;
}

void KeyIndex::Flush(FlushTo to) {
  if (file_ == nullptr || !image_.dirty()) return;
  image_.Flush(*file_);
  was_written_ = true;
  if (to == FlushTo::kDisk) file_->Sync();
}

void KeyIndex::StoreSlot(size_t page, size_t slot, const IndexSlot& entry) {
  entry.Store(image_.Change(SlotPosition(page, slot), kIndexSlotSize));
}

void KeyIndex::MoveSlotsDown(size_t page, size_t first, size_t last) {
  const size_t size = kIndexSlotSize * (last - first + 1);
  const ByteSpan area = image_.Change(SlotPosition(page, first), size + kIndexSlotSize);
  std::memmove(area.data() + kIndexSlotSize, area.data(), size);
}

IndexUpdate KeyIndex::UpdateIndex(const IndexKey& key, uint32_t card_offset, uint32_t old_offset,
                                  IndexMode mode) {
  IndexSlot entry{key, card_offset};
  const unsigned char letter = FiledLetter(static_cast<unsigned char>(key[0]));
  // A key that folds to nothing has no place.
  if (letter == 0 || file_ == nullptr) return {};
  entry.key[0] = static_cast<char>(letter);
  const Place place = in_order_ ? FindByHalves(entry.key, mode) : FindByScan(entry.key, mode);
  if (place.result == -1) return {};
  switch (mode) {
    case IndexMode::kInsert:
      return Insert(entry, place);
    case IndexMode::kRepoint:
      return Repoint(letter, place, card_offset, old_offset);
    case IndexMode::kRemove:
      return RemoveSlot(place, card_offset);
    case IndexMode::kSearch:
      break;
  }
  return {place.result, place.previous};
}

IndexUpdate KeyIndex::Insert(const IndexSlot& entry, const Place& place) {
  const auto letter = static_cast<unsigned char>(entry.key[0]);
  if (place.result != -3 && SlotLetter(place.page, place.slot) == 0 &&
      PageLetter(place.page) == letter) {
    StoreSlot(place.page, place.slot, entry);
    return {0, place.previous};
  }
  const size_t chain = in_order_ ? FirstPageNotBelow(letter) : 0;
  // A letter between '9' and 'A' has no page of its own and goes into a neighbour's.
  if (kIndexLetters.find(static_cast<char>(letter)) == std::string_view::npos) in_order_ = false;
  const size_t last_page = EndOfChain(letter, chain) - kIndexPageSize;
  if (SlotLetter(last_page, kLastSlot) != 0) {
    return InsertIntoFullChain(entry, place, last_page);
  }
  IndexUpdate update{0, place.previous};
  ShiftAndStore(entry, place, last_page, &update.previous);
  return update;
}

IndexUpdate KeyIndex::InsertIntoFullChain(const IndexSlot& entry, const Place& place,
                                          size_t last_page) {
  const size_t new_page = last_page + kIndexPageSize;
  if (!HasPage(new_page)) return InsertIntoFullLastChain(place, last_page);
  const auto letter = static_cast<unsigned char>(entry.key[0]);
  image_.InsertGap(new_page, kIndexPageSize);
  std::ranges::fill(image_.Change(new_page, kIndexPageSize), std::byte{0});
  image_.Change(new_page, 1)[0] = static_cast<std::byte>(letter);
  if (place.page == new_page && place.slot == 0) {
    StoreSlot(new_page, 0, entry);
    // Two slots in front of the true neighbour, and kept that way: the address file gets the entry
    // slightly out of place until its next rebuild.
    return {0, SlotOffset(last_page, kLastSlot - 2)};
  }
  StoreSlot(new_page, 0, SlotAt(last_page, kLastSlot));
  if (place.page == last_page && place.slot == kLastSlot) {
    StoreSlot(last_page, kLastSlot, entry);
    return {0, SlotOffset(last_page, kLastSlot - 1)};
  }
  IndexUpdate update{0, place.previous};
  ShiftAndStore(entry, place, last_page, &update.previous);
  return update;
}

// The chain at the very end of the file, which is that of Z, takes no key in its middle once its
// last page is full: a copy of that page is appended, the key is not written and the answer is 0.
// For a place before the second slot of the page in front the shift would run out of step with the
// slots, so there the file stays as it was. The next opening heals both.
IndexUpdate KeyIndex::InsertIntoFullLastChain(const Place& place, size_t last_page) {
  const size_t position = SlotPosition(place.page, place.slot);
  const bool out_of_step = position + kIndexPageSize < last_page + kIndexSlotSize;
  if (out_of_step) return {0, place.previous};
  const ByteView last = image_.At(last_page, kIndexPageSize);
  image_.Append(std::vector<std::byte>(last.begin(), last.end()));
  in_order_ = false;
  return {0, place.previous};
}

// Frees the slot at `place` by moving everything from there to the end of the chain one slot down.
// The last slot of `last_page` is free, or already copied away.
void KeyIndex::ShiftAndStore(const IndexSlot& entry, const Place& place, size_t last_page,
                             uint32_t* previous) {
  // A place behind the chain has nothing to shift and is not written.
  if (place.page > last_page) return;
  size_t page = last_page;
  for (; page > place.page; page -= kIndexPageSize) {
    MoveSlotsDown(page, 0, kLastSlot - 1);
    const size_t before = page - kIndexPageSize;
    if (SlotLetter(before, kLastSlot) != static_cast<unsigned char>(entry.key[0])) *previous = 0;
    StoreSlot(page, 0, SlotAt(before, kLastSlot));
  }
  if (place.slot < kLastSlot) MoveSlotsDown(page, place.slot, kLastSlot - 1);
  StoreSlot(page, place.slot, entry);
}

IndexUpdate KeyIndex::Repoint(unsigned char letter, const Place& place, uint32_t card_offset,
                              uint32_t old_offset) {
  // A card rewritten in place leaves the index as it is.
  if (old_offset == 0) return {place.result, place.previous};
  size_t slot = place.slot;
  for (size_t page = place.page; HasPage(page) && PageLetter(page) == letter;
       page += kIndexPageSize) {
    for (; slot < kSlotsPerPage; ++slot) {
      if (SlotOffset(page, slot) != old_offset) continue;
      IndexSlot entry = SlotAt(page, slot);
      entry.card_offset = card_offset;
      StoreSlot(page, slot, entry);
      return {static_cast<int>(slot), place.previous};
    }
    slot = 0;
  }
  return {};
}

IndexUpdate KeyIndex::RemoveSlot(const Place& place, uint32_t card_offset) {
  // Where the search met no slot of the letter, the whole page is looked through.
  size_t slot = place.result < 0 ? 0 : place.slot;
  while (slot < kSlotsPerPage && SlotOffset(place.page, slot) != card_offset) ++slot;
  // The search for the card ends with the page, even when the next one holds it.
  if (slot == kSlotsPerPage) return {};
  CloseGap(place.page, slot);
  return {0, place.previous};
}

// Closes the slots of a chain up over a freed one, pulling one slot up from each following page.
void KeyIndex::CloseGap(size_t page, size_t slot) {
  const unsigned char letter = PageLetter(page);
  for (;; page += kIndexPageSize, slot = 0) {
    const size_t position = SlotPosition(page, slot);
    const size_t moved = kIndexSlotSize * (kLastSlot - slot);
    const ByteSpan area = image_.Change(position, moved + kIndexSlotSize);
    std::memmove(area.data(), area.data() + kIndexSlotSize, moved);
    StoreSlot(page, kLastSlot, {});
    if (SlotLetter(page, kLastSlot - 1) == 0) return;
    const size_t next = page + kIndexPageSize;
    if (!HasPage(next) || PageLetter(next) != letter) return;
    StoreSlot(page, kLastSlot, SlotAt(next, 0));
  }
}

}  // namespace carnetel
