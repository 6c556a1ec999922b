// The list of the main window without its window: which cards it shows, in which order, which are
// marked, and what keys and clicks do to them. A row is one signed number, the card's offset in the
// main file, positive when the card is marked and negative when it is not; the text of a row is
// made when it is drawn. A refill reads each shown card once, for its key.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "shell/card_rows.h"
#include "shell/offset_mirror.h"
#include "storage/card_key.h"
#include "storage/directory.h"

namespace carnetel {

// Which cards the displayed group lets through.
struct DisplayedGroup {
  int row = 0;              // in the group picker; 0 is the whole file
  bool whole_file = false;  // every card, the members with a flag
};

class CardList {
 public:
  // Told when the rows, the current row or the marks are other ones.
  class Observer {
   public:
    virtual ~Observer() = default;
    virtual void ListRefilled() = 0;
    virtual void CurrentRowChanged() = 0;
    virtual void RowRepainted(int row) = 0;
    virtual void MarksChanged() = 0;
  };

  // `capacity`: rows that the list takes; more are refused and counted.
  CardList(Observer& observer, int capacity) : observer_(observer), capacity_(capacity) {}

  // The directory whose cards are shown; none leaves the list empty. Rows stay until the next
  // refill, without texts and marks that can be changed.
  void SetDirectory(Directory* directory) { directory_ = directory; }
  void SetLabelStyles(const LabelStyles& styles) { styles_ = styles; }
  [[nodiscard]] const LetterRange& letter_range() const { return range_; }
  [[nodiscard]] DisplayedGroup displayed_group() const { return group_; }
  // Which cards the next refill lets through; the bit pair is the directory's.
  void SetDisplayedGroup(DisplayedGroup group) { group_ = group; }
  // From now on a refill takes the members of the displayed group that have this flag in their
  // entry (0: none has), whatever their letter. That is the list of the chooser.
  void SetNumberFilter(uint8_t entry_flag) { number_filter_ = entry_flag; }
  // The next refill applies the top row and the current row that the address file has kept.
  void RestorePositionAtNextRefill() { restore_position_ = true; }
  // Goes to these rows, as far as there are such.
  void GoToRows(int current, int top);

  // Fills the list anew from the address file.
  void ListRefill(const LetterRange& range);
  void ListRefill() { ListRefill(range_); }
  // Empties the list, for a window without a directory.
  void Clear();

  // A card's offset a row, negative when it is not marked.
  [[nodiscard]] const std::vector<int32_t>& items() const { return items_; }
  [[nodiscard]] int row_count() const { return static_cast<int>(items_.size()); }
  [[nodiscard]] int not_loaded_count() const { return not_loaded_count_; }
  [[nodiscard]] int first_marked_row() const { return first_marked_row_; }
  [[nodiscard]] int32_t marked_count() const;
  [[nodiscard]] bool IsMarked(int row) const { return Item(row) > 0; }
  [[nodiscard]] bool IsMember(int row) const;
  [[nodiscard]] uint32_t CardOffset(int row) const {
    const int32_t item = Item(row);
    return static_cast<uint32_t>(item < 0 ? -item : item);
  }
  // The row's text, UTF-8.
  [[nodiscard]] std::string Label(int row) const;
  // "%d / %d": the current row from 1, and all rows, those without place in the list among them.
  [[nodiscard]] std::string PositionText() const;

  [[nodiscard]] int current_row() const { return current_row_; }
  void SetCurrentRow(int row);
  [[nodiscard]] int top_row() const { return top_row_; }
  void SetTopRow(int row) { top_row_ = row; }
  // Offset of the current row's card; 0 when the list is empty.
  [[nodiscard]] uint32_t current_card() const;
  // The row of a card in the list, -1 when it is not shown; made current when it is.
  int FindCardRow(uint32_t card_offset);
  [[nodiscard]] int RowOfCard(uint32_t card_offset) const;
  // The entry of a card in the address file, OffsetMirror::kNone when the refill did not pass it.
  [[nodiscard]] int32_t EntryOfCard(uint32_t card_offset) const {
    return mirror_.Find(card_offset);
  }

  // Offsets of the marked rows, in their order.
  [[nodiscard]] std::vector<uint32_t> MarkedCards() const;
  // Inverts the mark of a row; false when its entry cannot be found.
  bool ToggleMark(int row);
  // Inverts the mark of every row between the two, both included.
  void ToggleSpan(int from, int to);
  // Marks or unmarks the current row and goes one row on (1) or back (-1), as far as there is one.
  void ToggleAndMove(int step);
  // Unmarks every row of the list; cards that it does not show keep their marks.
  void DeselectListed();
  // Goes to the next shown card whose key begins with the character ('0' to '9', 'A' to 'Z'): the
  // first one, or the following one when the same character comes again. False when there is none.
  bool JumpToLetter(char letter);
  // A click on the list: the next letter starts from the first card again.
  void ForgetTypedLetter() { typed_letter_ = 0; }

  // The rows that the address file keeps until the next opening.
  void StorePosition();

 private:
  [[nodiscard]] int32_t Item(int row) const { return items_[static_cast<size_t>(row)]; }
  [[nodiscard]] bool HasRow(int row) const { return row >= 0 && row < row_count(); }
  void OfferRow(const EntrySlot& entry);
  [[nodiscard]] bool Lists(const EntrySlot& entry, CardRecord& card) const;
  void RestoreSavedRows();
  void WalkEntries(uint32_t start, uint32_t stop);
  void RestoreRows(int current, int top);
  bool InvertMark(int row);

  Observer& observer_;
  int capacity_;
  Directory* directory_ = nullptr;
  LabelStyles styles_;
  LetterRange range_;
  DisplayedGroup group_;
  std::vector<int32_t> items_;
  OffsetMirror mirror_;
  int not_loaded_count_ = 0;
  int offered_rows_ = 0;
  int first_marked_row_ = -1;
  int current_row_ = 0;
  int top_row_ = 0;
  bool restore_position_ = false;
  std::optional<uint8_t> number_filter_;
  char typed_letter_ = 0;
};

}  // namespace carnetel
