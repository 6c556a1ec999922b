#include "selection/selection_scan.h"

#include <algorithm>
#include <functional>

#include "selection/card_test.h"

namespace carnetel {
namespace {

// Cards read at once: 48 KB.
constexpr size_t kCardsPerRead = 64;
constexpr int64_t kFirstEntry = static_cast<int64_t>(kAddressEntriesOffset);

// Which cards pass, by their place in the main file. Blocks without a wanted card are not read.
class PassedCards {
 public:
  PassedCards(Directory& directory, const CriteriaRows& rows)
      : main_(directory.main()), rows_(rows), passed_(main_.count()), wanted_(main_.count()) {}

  void Want(uint32_t card_offset) {
    if (main_.HoldsCard(card_offset)) wanted_[Place(card_offset)] = true;
  }

  void Test() {
    std::vector<CardRecord> cards(kCardsPerRead);
    const bool all = PassesAll(rows_);
    for (size_t first = 0; first < wanted_.size(); first += kCardsPerRead) {
      const size_t end = std::min(first + kCardsPerRead, wanted_.size());
      const auto begin = wanted_.begin() + static_cast<std::ptrdiff_t>(first);
      const auto stop = wanted_.begin() + static_cast<std::ptrdiff_t>(end);
      if (std::find(begin, stop, true) == stop) continue;
      const size_t read = main_.ReadCards(Offset(first), std::span(cards).first(end - first));
      for (size_t i = 0; i < read; ++i) {
        if (wanted_[first + i]) passed_[first + i] = all || TestCard(rows_, cards[i]);
      }
    }
  }

  [[nodiscard]] bool Passed(uint32_t card_offset) const {
    return main_.HoldsCard(card_offset) && passed_[Place(card_offset)];
  }

 private:
  static size_t Place(uint32_t card_offset) { return card_offset / kCardSize - 1; }
  static uint32_t Offset(size_t place) { return static_cast<uint32_t>((place + 1) * kCardSize); }

  DirectoryFile& main_;
  const CriteriaRows& rows_;
  std::vector<bool> passed_;
  std::vector<bool> wanted_;
};

// The letter that narrows: that of the value, a capital; '0' for an empty value.
unsigned char NarrowingLetter(const CriteriaRows& rows) {
  const std::string value = rows.ValueText(0);
  if (value.empty()) return '0';
  const auto first = static_cast<unsigned char>(value.front());
  if (first >= 'a' && first <= 'z') return static_cast<unsigned char>(first - 0x20);
  return static_cast<signed char>(first) > 'Z' ? FoldByte(first) : first;
}

bool HasRow(unsigned char letter) {
  return LetterTable::LetterRow(letter) >= 0;
}

// Where the entries of a letter start; `otherwise` for a letter without a row.
int64_t LetterStart(const AddressFile& address, unsigned char letter, int64_t otherwise) {
  return HasRow(letter) ? int64_t{address.letters().Start(letter)} : otherwise;
}

void Count(Directory& directory, const EntrySlot& before) {
  if (!before.bit(directory.selection_bit())) {
    directory.set_marked_count(directory.marked_count() + 1);
  }
}

void Mark(Directory& directory, uint32_t row, EntrySlot entry) {
  entry.set_bit(directory.selection_bit(), true);
  directory.address().SetEntry(row, entry);
}

void StartScan(Directory& directory, bool add) {
  if (!add && directory.marked_count() != 0) ClearAllMarks(directory);
}

// The display counts the cards found from nothing, those of an adding scan too.
void OpenProgress(Directory& directory, uint32_t units) {
  directory.progress().Open(ProgressForm::kSelection, units);
  directory.set_marked_count(0);
}

bool Step(Directory& directory) {
  return directory.progress().Step(std::to_string(directory.marked_count()));
}

}  // namespace

ScanRange NarrowedRange(const AddressFile& address, const CriteriaRows& rows) {
  const int64_t total_end = EntryPosition(address.entry_count());
  const ScanRange whole = {kFirstEntry, total_end};
  const char comparator = rows.ComparatorOf(0);
  const bool narrows = rows.FieldCode(0) == kSte1 + 1 && comparator >= '0' && comparator <= '5';
  if (PassesAll(rows) || !narrows) return whole;
  const unsigned char letter = NarrowingLetter(rows);
  const auto next = static_cast<unsigned char>(letter + 1);
  const int64_t at = LetterStart(address, letter, kFirstEntry);
  // A letter without a row ends with the file, that in front of '0' too; so does 'Z'.
  const int64_t behind = HasRow(letter) ? LetterStart(address, next, total_end) : total_end;
  const int64_t first = LetterStart(address, '0', kFirstEntry);
  switch (static_cast<Comparator>(comparator)) {
    case Comparator::kEqual:
      return {at, behind};
    case Comparator::kDifferent:
      return {std::max(kFirstEntry, first), total_end};
    case Comparator::kLowerOrEqual:
      return {std::max(kFirstEntry, first), std::min(total_end, behind)};
    case Comparator::kGreaterOrEqual:
      return {std::max(kFirstEntry, at), total_end};
    case Comparator::kLower:
      return {std::max(kFirstEntry, first), std::min(total_end, at)};
    case Comparator::kGreater:
      return {std::max(kFirstEntry, behind), total_end};
    case Comparator::kContains:
      break;
  }
  return whole;
}

uint32_t ScanAddressFile(Directory& directory, const CriteriaRows& rows, bool add) {
  StartScan(directory, add);
  AddressFile& address = directory.address();
  const ScanRange range = NarrowedRange(address, rows);
  const uint32_t first = EntryRow(static_cast<uint32_t>(range.start));
  const uint32_t range_end =
      std::min(EntryRow(static_cast<uint32_t>(range.end)), address.entry_count());
  const uint32_t end = std::max(first, range_end);
  PassedCards cards(directory, rows);
  for (uint32_t row = first; row < end; ++row) cards.Want(address.CardOffsetAt(row));
  cards.Test();
  OpenProgress(directory, end - first);
  uint32_t first_passed = 0;
  for (uint32_t row = first; row < end; ++row) {
    const EntrySlot entry = address.Entry(row);
    const bool passed = cards.Passed(entry.card_offset());
    if (passed) Count(directory, entry);
    if (passed && first_passed == 0) first_passed = entry.card_offset();
    if (Step(directory)) break;
    if (passed) Mark(directory, row, entry);
  }
  directory.Commit();
  directory.progress().Close();
  return first_passed;
}

void ScanGroupMembers(Directory& directory, const CriteriaRows& rows, bool add,
                      std::optional<uint32_t> list_rows) {
  StartScan(directory, add);
  AddressFile& address = directory.address();
  uint32_t end = 0;
  const auto is_card = [&address](uint32_t row) {
    return static_cast<int32_t>(address.CardOffsetAt(row)) > 0;
  };
  while (end < address.entry_count() && is_card(end)) ++end;
  PassedCards cards(directory, rows);
  for (uint32_t row = 0; row < end; ++row) {
    if (address.Entry(row).bit(directory.group_bit())) cards.Want(address.CardOffsetAt(row));
  }
  cards.Test();
  if (list_rows) OpenProgress(directory, *list_rows);
  for (uint32_t row = 0; row < end; ++row) {
    const EntrySlot entry = address.Entry(row);
    if (entry.bit(directory.group_bit()) && cards.Passed(entry.card_offset())) {
      Count(directory, entry);
      Mark(directory, row, entry);
    }
    if (list_rows) (void)Step(directory);
  }
  directory.Commit();
  if (list_rows) directory.progress().Close();
}

void RunSelection(Directory& directory, const CriteriaRows& rows, bool add, bool group_displayed,
                  uint32_t list_rows) {
  if (group_displayed) {
    ScanGroupMembers(directory, rows, add, list_rows);
  } else {
    ScanAddressFile(directory, rows, add);
  }
}

void ClearAllMarks(Directory& directory) {
  AddressFile& address = directory.address();
  for (uint32_t row = 0; row < address.entry_count(); ++row) {
    EntrySlot entry = address.Entry(row);
    if (!entry.bit(directory.selection_bit())) continue;
    entry.set_bit(directory.selection_bit(), false);
    address.SetEntry(row, entry);
  }
  directory.set_marked_count(0);
}

}  // namespace carnetel
