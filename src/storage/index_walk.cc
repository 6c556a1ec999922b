#include "storage/index_walk.h"

namespace carnetel {

bool MatchesExample(CardContext& context, int key_field, bool prefix_mode) {
  for (int field = 0; field < kFieldCount; ++field) {
    std::string wanted = context.current.FieldText(field).bytes();
    if (wanted.empty()) continue;
    const bool short_code = field == kPostalCode && context.reference.FieldEmpty(field);
    std::string text = context.reference.FieldText(short_code ? kShortPostalCode : field).bytes();
    UpperCaseRun(wanted, kFieldTable[field].size);
    UpperCaseRun(text, kFieldTable[field].size);
    if (field == key_field) {
      const size_t compared = prefix_mode ? wanted.size() : kFieldTable[field].size;
      if (CompareKey(text, wanted, compared) != 0) return false;
    }
    if (text.find(wanted) == std::string::npos) return false;
  }
  return true;
}

unsigned char IndexWalk::Letter() const {
  return FiledLetter(static_cast<unsigned char>(search_key_[0]));
}

IndexKey IndexWalk::PlacedKey() const {
  IndexKey key{};
  std::copy_n(search_key_.begin(), std::min(search_key_.size(), kKeySize), key.begin());
  key[0] = static_cast<char>(Letter());
  return key;
}

IndexWalk::Stand IndexWalk::Start(const KeyIndex& index) const {
  if (!Keyed()) return {};
  const SlotPlace place = index.LowerBound(PlacedKey());
  return {place.page, place.slot};
}

int IndexWalk::WalkIndex(const KeyIndex& index, DirectoryFile& main, int key_field,
                         CardContext& context, uint32_t* card_offset, WalkDirection direction) {
  const Search search{index, main, context, key_field};
  if (direction == WalkDirection::kFirst) {
    next_ = Start(index);
    any_found_ = false;
  } else if (direction == WalkDirection::kNext && last_direction_ == WalkDirection::kPrevious &&
             any_found_) {
    next_ = {found_.page, found_.slot + 1};
  }
  last_direction_ = direction;
  uint32_t found = 0;
  const bool stepped = direction == WalkDirection::kPrevious ? StepBackward(search, &found)
                                                             : StepForward(search, &found);
  if (stepped) {
    any_found_ = true;
    *card_offset = found;
    context.current = context.reference;
    return 0;
  }
  if (*card_offset >= kCardSize) (void)main.ReadCard(*card_offset, context.current);
  return -1;
}

bool IndexWalk::Matches(const Search& search, uint32_t card_offset, bool* readable) {
  *readable = search.main.ReadCard(card_offset, search.context.reference);
  return *readable && MatchesExample(search.context, search.key_field, true);
}

bool IndexWalk::SeekKey(const KeyIndex& index) {
  const IndexKey key = PlacedKey();
  for (; index.HasPage(next_.page); next_ = {next_.page + kIndexPageSize, 0}) {
    const auto first = static_cast<signed char>(index.SlotAt(next_.page, 0).key[0]);
    const auto letter = static_cast<signed char>(Letter());
    if (first < letter) continue;
    if (first > letter) return false;
    for (; next_.slot < kSlotsPerPage; ++next_.slot) {
      const IndexSlot slot = index.SlotAt(next_.page, next_.slot);
      if (slot.key[0] == 0) return true;
      if (static_cast<signed char>(slot.key[0]) >= letter &&
          CompareKey(KeyView(slot.key), KeyView(key), kKeySize) >= 0) {
        return true;
      }
    }
  }
  return false;
}

bool IndexWalk::StepForward(const Search& search, uint32_t* found) {
  while (Keyed() ? SeekKey(search.index) : search.index.HasPage(next_.page)) {
    for (; next_.slot < kSlotsPerPage; ++next_.slot) {
      const IndexSlot slot = search.index.SlotAt(next_.page, next_.slot);
      // A hole ends a walk by key; a walk over everything steps over it.
      if (Keyed() && slot.card_offset == 0) return false;
      if (!slot.used()) continue;
      bool readable = true;
      if (Matches(search, slot.card_offset, &readable)) {
        found_ = next_;
        *found = slot.card_offset;
        ++next_.slot;
        return true;
      }
      if (!readable) return false;
    }
    const size_t next_page = next_.page + kIndexPageSize;
    // At the end the walk stays behind the last slot.
    if (!search.index.HasPage(next_page)) return false;
    next_ = {next_page, 0};
  }
  return false;
}

bool IndexWalk::StepBack(const KeyIndex& index, Stand* stand) const {
  if (stand->slot > 0) {
    --stand->slot;
    return true;
  }
  if (stand->page < kIndexPageSize) return false;
  const Stand before{stand->page - kIndexPageSize, kSlotsPerPage - 1};
  if (Keyed()) {
    const char first = index.SlotAt(before.page, before.slot).key[0];
    if (first == 0 || static_cast<signed char>(first) < static_cast<signed char>(Letter())) {
      return false;
    }
  }
  *stand = before;
  return true;
}

bool IndexWalk::StepBackward(const Search& search, uint32_t* found) {
  Stand stand = found_;
  if (!any_found_) return false;
  while (StepBack(search.index, &stand)) {
    const IndexSlot slot = search.index.SlotAt(stand.page, stand.slot);
    if (Keyed() && slot.card_offset == 0) return false;
    if (!slot.used()) continue;
    bool readable = true;
    if (Matches(search, slot.card_offset, &readable)) {
      found_ = stand;
      *found = slot.card_offset;
      return true;
    }
    if (!readable) return false;
  }
  return false;
}

}  // namespace carnetel
