#include "storage/card_dispatch.h"

#include <optional>

namespace carnetel {
namespace {

constexpr int KeyFieldOf(int index_number) {
  return index_number == 1 ? kSte1 : kNom;
}

}  // namespace

int CardDispatch::WriteCard(uint32_t card_offset, IndexMode mode, int64_t* kept) {
  DirectoryFile& main = directory_.main();
  const CardRecord& card = directory_.context().current;
  CardRecord written = card;
  written.set_write_time(static_cast<uint32_t>(directory_.clock().Now()));
  if (!main.WriteCard(card_offset, written)) return -1;
  main.TakeStamp();
  if (mode == IndexMode::kInsert) main.SetCount(main.count() + 1);
  for (int number = 1; number <= 2; ++number) {
    const IndexKey key = IndexKeyOf(card, KeyFieldOf(number));
    const IndexUpdate update = directory_.index(number).UpdateIndex(key, card_offset, 0, mode);
    if (number != directory_.active_index_number()) continue;
    const int64_t offset = mode == IndexMode::kInsert ? update.previous : card_offset;
    *kept = update.result < 0 ? update.result : offset;
  }
  return 0;
}

int CardDispatch::Add(bool marked, uint32_t* entry_position) {
  DirectoryFile& main = directory_.main();
  if (directory_.LetOthersIn() == Directory::Turn::kLost) return -1;
  const ChangeScope change(directory_);
  if (!change || main.count() >= kMaxCards) return -1;
  main.Note(main.has_guard() ? ChangeKind::kReplaced : ChangeKind::kAdd, 0, main.count());
  const uint32_t card_offset = main.end_offset();
  const CardRecord& card = directory_.context().current;
  int64_t previous = 0;
  if (WriteCard(card_offset, IndexMode::kInsert, &previous) < 0) {
    main.Finish();
    return -1;
  }
  EntrySlot entry;
  entry.set_card_offset(card_offset);
  entry.set_bit(directory_.group_bit(), true);
  entry.set_bit(kWholeFileBit, true);
  entry.set_number_flags(NumberFlagsOf(card));
  if (marked) {
    entry.set_bit(directory_.selection_bit(), true);
    directory_.set_marked_count(directory_.marked_count() + 1);
  }
  AddressFile& address = directory_.address();
  address.header().set_stamp(main.header().stamp());
  const uint32_t row = address.InsertEntry(LetterOf(card, directory_.key_field()), entry, previous);
  directory_.last_inserted() = {false, static_cast<int16_t>(row), card_offset};
  *entry_position = EntryPosition(row);
  directory_.Commit();
  return 0;
}

int CardDispatch::Find(WalkDirection direction, uint32_t* card_offset) {
  CardContext& context = directory_.context();
  directory_.walk().SetSearchKey(SearchKeyOf(context.current, directory_.key_field()));
  return directory_.walk().WalkIndex(directory_.active_index(), directory_.main(),
                                     directory_.key_field(), context, card_offset, direction);
}

int CardDispatch::Rewrite(uint32_t card_offset, uint32_t entry_row) {
  DirectoryFile& main = directory_.main();
  const ChangeScope change(directory_);
  if (!change) return -1;
  main.Note(ChangeKind::kGuard, 0, main.count());
  // A copy behind the last card, until the card itself is written whole.
  const DirectoryFile::GuardCopy guard(main, directory_.context().current);
  int64_t kept = 0;
  if (!guard.written()) return -1;
  main.Note(ChangeKind::kRewrite, card_offset, main.count());
  if (WriteCard(card_offset, IndexMode::kRepoint, &kept) < 0) return -1;
  AddressFile& address = directory_.address();
  if (kept < 0 || entry_row >= address.entry_count()) {
    directory_.Commit();
    return 1;
  }
  EntrySlot entry = address.Entry(entry_row);
  entry.set_number_flags(NumberFlagsOf(directory_.context().current));
  entry.set_bit(directory_.group_bit(), true);
  if (directory_.group_bit() != kWholeFileBit) entry.set_bit(kWholeFileBit, true);
  if (entry != address.Entry(entry_row)) {
    // A batch cuts the guard copy off before the flags are on the disk.
    address.MarkChanging();
    address.SetEntry(entry_row, entry);
  }
  directory_.Commit();
  return 0;
}

int CardDispatch::Delete(uint32_t* card_offset) {
  DirectoryFile& main = directory_.main();
  const ChangeScope change(directory_);
  if (!change) return -1;
  const uint32_t deleted = *card_offset;
  const uint32_t last = main.end_offset() - static_cast<uint32_t>(kCardSize);
  const CardRecord old = directory_.context().reference;
  CardRecord& moved = directory_.context().reference;
  if (!main.HoldsCard(deleted) || !main.ReadCard(last, moved)) return -1;
  // The last card changes its place, which somebody who edits it must not find out.
  if (deleted != last && !directory_.TestCardLock(last)) return -1;
  main.Note(main.has_guard() ? ChangeKind::kReplace : ChangeKind::kDelete, deleted,
            main.count() - 1);
  AddressFile& address = directory_.address();
  address.MarkChanging();
  if (!main.WriteCard(deleted, moved)) return -1;
  main.TakeStamp();
  main.SetCount(main.count() - 1);
  int result = 0;
  for (int number = 1; number <= 2; ++number) {
    const IndexKey key = IndexKeyOf(old, KeyFieldOf(number));
    result = directory_.index(number).UpdateIndex(key, deleted, 0, IndexMode::kRemove).result;
  }
  for (int number = 1; number <= 2 && deleted != last; ++number) {
    const IndexKey key = IndexKeyOf(moved, KeyFieldOf(number));
    result = directory_.index(number).UpdateIndex(key, deleted, last, IndexMode::kRepoint).result;
  }
  address.header().set_stamp(main.header().stamp());
  address.RemoveEntry(deleted, last, LetterOf(old, directory_.key_field()),
                      LetterOf(moved, directory_.key_field()), directory_.selection_bit(),
                      &directory_.last_removed(), &directory_.last_inserted());
  *card_offset = last;
  directory_.Commit();
  // The removal from the address file answers 1 whatever happened there.
  return result | 1;
}

bool DeleteCard(Directory& directory, uint32_t card_offset, uint32_t* moved_from) {
  const ChangeScope change(directory);
  if (!change) return false;
  CardContext& context = directory.context();
  if (!directory.main().ReadCard(card_offset, context.reference)) return false;
  directory.last_removed() = {};
  directory.last_inserted() = {};
  uint32_t position = card_offset;
  const uint32_t count = directory.main().count();
  CardDispatch(directory).Delete(&position);
  // An entry that lies out of place stays although its card is gone: the main file tells.
  if (directory.main().count() == count) return false;
  *moved_from = position;
  const bool was_marked = directory.last_removed().marked;
  if (was_marked) directory.set_marked_count(std::max(0, directory.marked_count() - 1));
  return true;
}

ChangedCard ChangeCard(Directory& directory, uint32_t card_offset, const CardRecord& card) {
  const ChangeScope change(directory);
  CardContext& context = directory.context();
  CardRecord old;
  if (!change || !directory.main().ReadCard(card_offset, old)) return {};
  AddressFile& address = directory.address();
  const uint32_t row = address.FindRow(card_offset);
  if (old.SameField(card, kNom) && old.SameField(card, kSte1)) {
    context.current = card;
    const int result = CardDispatch(directory).Rewrite(card_offset, row);
    return result < 0 ? ChangedCard{} : ChangedCard{ChangeResult::kRewritten, card_offset};
  }
  std::optional<EntrySlot> marks;
  if (row < address.entry_count()) marks = address.Entry(row);
  directory.main().Note(ChangeKind::kGuard, 0, directory.main().count());
  // The new card lies behind the last one until the old one's place is settled.
  DirectoryFile::GuardCopy guard(directory.main(), card);
  uint32_t moved_from = 0;
  if (!guard.written() || !DeleteCard(directory, card_offset, &moved_from)) return {};
  context.current = card;
  uint32_t position = 0;
  if (CardDispatch(directory).Add(false, &position) < 0) {
    guard.Keep();
    return {};
  }
  if (marks) {
    EntrySlot entry = address.Entry(EntryRow(position));
    entry.TakeMarks(*marks);
    address.SetEntry(EntryRow(position), entry);
    const int32_t marked = marks->bit(directory.selection_bit()) ? 1 : 0;
    directory.set_marked_count(directory.marked_count() + marked);
    directory.Commit();
  }
  return {ChangeResult::kMoved, directory.last_inserted().card_offset};
}

}  // namespace carnetel
