#include "shell/card_list.h"

#include "base/code_page.h"
#include "base/format_text.h"
#include "selection/marks.h"
#include "storage/card_dispatch.h"

namespace carnetel {

void CardList::Clear() {
  items_.clear();
  mirror_.Clear();
  not_loaded_count_ = offered_rows_ = 0;
  first_marked_row_ = -1;
  current_row_ = top_row_ = 0;
  observer_.ListRefilled();
}

int32_t CardList::marked_count() const {
  return directory_ == nullptr ? 0 : directory_->marked_count();
}

namespace {

// Row numbers are signed and of 16 bits: with more entries than they reach, the last one turns
// negative and the list that goes to it comes up empty. Such a file comes from elsewhere only, and
// it has to stay so.
uint32_t EndOfRows(uint32_t entry_count) {
  const auto rows = static_cast<int16_t>(entry_count);
  return EntryPosition(rows < 0 ? 0 : static_cast<uint32_t>(rows));
}

}  // namespace

void CardList::ListRefill(const LetterRange& range) {
  range_ = range;
  const int current = current_row_;
  const int top = top_row_;
  items_.clear();
  mirror_.Clear();
  not_loaded_count_ = offered_rows_ = 0;
  first_marked_row_ = -1;
  if (directory_ == nullptr) {
    Clear();
    return;
  }
  directory_->set_marked_count(0);
  const AddressFile& address = directory_->address();
  const uint32_t end = EndOfRows(address.entry_count());
  // A group's members are scattered over the file, so its scan covers all of it.
  const bool whole = group_.row != 0;
  const uint32_t start = whole ? EntryPosition(0) : address.letters().Start(range.first);
  const uint32_t stop = whole || range.end == 0 ? end : address.letters().Start(range.end);
  WalkEntries(start, stop);
  directory_->Commit();
  if (restore_position_) {
    restore_position_ = false;
    RestoreSavedRows();
  } else {
    RestoreRows(current, top);
  }
  observer_.ListRefilled();
}

// The walk begins at the first entry even if the tab's first one comes later, since the mirror has
// to hold every entry in front of the tab's end.
void CardList::WalkEntries(uint32_t start, uint32_t stop) {
  AddressFile& address = directory_->address();
  CardRecord card;
  const uint32_t end = std::min(stop, EntryPosition(address.entry_count()));
  for (uint32_t position = EntryPosition(0); position < end; position += kEntrySize) {
    const uint32_t row = EntryRow(position);
    EntrySlot entry = address.Entry(row);
    mirror_.Append(entry.card_offset());
    if (position < start) continue;
    if (!number_filter_ && directory_->group_bit() == kWholeFileBit && !entry.bit(kWholeFileBit)) {
      entry.set_bit(kWholeFileBit, true);
      address.SetEntry(row, entry);
    }
    if (Lists(entry, card)) OfferRow(entry);
  }
}

bool CardList::Lists(const EntrySlot& entry, CardRecord& card) const {
  const bool member = entry.bit(directory_->group_bit());
  if (number_filter_) return member && (entry.number_flags() & *number_filter_) != 0;
  if (!member && !group_.whole_file) return false;
  // A card that cannot be read shows as the one before it.
  (void)directory_->main().ReadCard(entry.card_offset(), card);
  return ShowsCard(card, directory_->key_field(), range_);
}

void CardList::OfferRow(const EntrySlot& entry) {
  const bool marked = entry.bit(directory_->selection_bit());
  if (row_count() < capacity_) {
    const auto offset = static_cast<int32_t>(entry.card_offset());
    items_.push_back(marked ? offset : -offset);
  } else {
    ++not_loaded_count_;
  }
  if (marked) {
    directory_->set_marked_count(directory_->marked_count() + 1);
    if (first_marked_row_ < 0) first_marked_row_ = offered_rows_;
  }
  ++offered_rows_;
}

// The address file keeps rows of the whole file's list; among cards with a number the current one
// is looked for.
void CardList::RestoreSavedRows() {
  const AddressFile& address = directory_->address();
  const auto current = static_cast<int16_t>(address.header().current_row());
  const auto top = static_cast<int16_t>(address.header().top_row());
  if (!number_filter_) {
    RestoreRows(current, top);
    return;
  }
  const bool exists = current >= 0 && static_cast<uint32_t>(current) < address.entry_count();
  const int row =
      exists ? RowOfCard(address.Entry(static_cast<uint32_t>(current)).card_offset()) : -1;
  RestoreRows(row, row);
}

void CardList::RestoreRows(int current, int top) {
  const int last = std::max(0, row_count() - 1);
  current_row_ = std::clamp(current, 0, last);
  top_row_ = std::clamp(top, 0, last);
}

void CardList::GoToRows(int current, int top) {
  RestoreRows(current, top);
  observer_.ListRefilled();
}

std::vector<uint32_t> CardList::MarkedCards() const {
  std::vector<uint32_t> offsets;
  for (int row = 0; row < row_count(); ++row) {
    if (IsMarked(row)) offsets.push_back(CardOffset(row));
  }
  return offsets;
}

bool CardList::IsMember(int row) const {
  if (directory_ == nullptr || !HasRow(row)) return false;
  const int32_t found = mirror_.Find(CardOffset(row));
  const auto entry = static_cast<uint32_t>(found);
  const AddressFile& address = directory_->address();
  // The list may be painted while the file is made anew and has fewer entries than the last refill.
  return found >= 0 && entry < address.entry_count() &&
         address.Entry(entry).bit(directory_->group_bit());
}

std::string CardList::Label(int row) const {
  CardRecord card;
  if (directory_ == nullptr || !HasRow(row) || !directory_->main().ReadCard(CardOffset(row), card))
    return {};
  return Utf8FromOem(ListLabelOf(card, styles_));
}

std::string CardList::PositionText() const {
  return FormatText(196, current_row_ + 1, row_count() + not_loaded_count_);
}

void CardList::SetCurrentRow(int row) {
  if (!HasRow(row) || row == current_row_) return;
  current_row_ = row;
  observer_.CurrentRowChanged();
}

uint32_t CardList::current_card() const {
  return HasRow(current_row_) ? CardOffset(current_row_) : 0;
}

int CardList::RowOfCard(uint32_t card_offset) const {
  const auto offset = static_cast<int32_t>(card_offset);
  const auto same = [offset](int32_t item) { return item == offset || item == -offset; };
  const auto found = std::ranges::find_if(items_, same);
  return found == items_.end() ? -1 : static_cast<int>(found - items_.begin());
}

int CardList::FindCardRow(uint32_t card_offset) {
  const int row = RowOfCard(card_offset);
  if (row >= 0) SetCurrentRow(row);
  return row;
}

bool CardList::InvertMark(int row) {
  if (directory_ == nullptr || !HasRow(row)) return false;
  const int32_t found = mirror_.Find(CardOffset(row));
  if (found < 0) return false;
  const auto entry_row = static_cast<uint32_t>(found);
  const EntrySlot entry = directory_->address().Entry(entry_row);
  ChangeMark(*directory_, entry_row, !entry.bit(directory_->selection_bit()));
  items_[static_cast<size_t>(row)] = -Item(row);
  observer_.RowRepainted(row);
  return true;
}

bool CardList::ToggleMark(int row) {
  const bool inverted = InvertMark(row);
  if (!inverted) return false;
  directory_->Commit();
  observer_.MarksChanged();
  return true;
}

void CardList::ToggleSpan(int from, int to) {
  for (int row = std::min(from, to); row <= std::max(from, to); ++row) InvertMark(row);
  if (directory_ != nullptr) directory_->Commit();
  observer_.MarksChanged();
}

void CardList::ToggleAndMove(int step) {
  if (!ToggleMark(current_row_)) return;
  SetCurrentRow(current_row_ + step);
}

void CardList::DeselectListed() {
  if (directory_ == nullptr) return;
  for (int row = 0; row < row_count(); ++row) {
    if (IsMarked(row)) InvertMark(row);
  }
  directory_->set_selection_dirty();
  directory_->Commit();
  observer_.MarksChanged();
}

bool CardList::JumpToLetter(char letter) {
  if (directory_ == nullptr || row_count() == 0) return false;
  const bool again = typed_letter_ == letter;
  typed_letter_ = letter;
  CardRecord example;
  example.SetField(directory_->key_field(), OemText(std::string(1, letter)));
  WalkDirection direction = again ? WalkDirection::kNext : WalkDirection::kFirst;
  for (;; direction = WalkDirection::kNext) {
    directory_->context().current = example;
    uint32_t card_offset = 0;
    if (CardDispatch(*directory_).Find(direction, &card_offset) != 0) return false;
    if (FindCardRow(card_offset) >= 0) return true;
  }
}

void CardList::StorePosition() {
  // A group keeps its own position; that of the whole file stands in the address file.
  if (directory_ == nullptr || group_.row != 0) return;
  AddressHeader& header = directory_->address().header();
  if (!number_filter_) {
    header.set_top_row(static_cast<uint16_t>(top_row_));
    header.set_current_row(static_cast<uint16_t>(current_row_));
  } else if (HasRow(current_row_)) {
    const auto row = static_cast<uint16_t>(EntryOfCard(current_card()));
    header.set_top_row(row);
    header.set_current_row(row);
  }
}

}  // namespace carnetel
