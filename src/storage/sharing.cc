// What an open directory does when several seats share it: one change at a time, each on top of
// what the others have changed, and a card that one seat edits left alone by the others.
#include <algorithm>
#include <thread>
#include <unordered_map>

#include "storage/directory.h"

namespace carnetel {
namespace {

// Far behind the last byte that a card can have, within what every network file system can lock.
constexpr uint64_t kChangeLockOffset = 0x7FFFFF00;

using SlotsByOffset = std::unordered_map<uint32_t, const IndexSlot*>;

SlotsByOffset ByOffset(const std::vector<IndexSlot>& slots) {
  SlotsByOffset found;
  found.reserve(slots.size());
  for (const IndexSlot& slot : slots) found.emplace(slot.card_offset, &slot);
  return found;
}

bool SameSlot(const IndexSlot& a, const IndexSlot& b) {
  return a.card_offset == b.card_offset && SameKey(a.key, b.key);
}

// Whether the same card lies at the same place, as far as its key can tell.
bool Holds(const SlotsByOffset& slots, const IndexSlot& slot) {
  const auto there = slots.find(slot.card_offset);
  return there != slots.end() && SameKey(there->second->key, slot.key);
}

std::vector<IndexSlot> UsedSlots(const KeyIndex& index) {
  std::vector<IndexSlot> slots;
  index.ForEachUsed([&slots](const IndexSlot& slot) { slots.push_back(slot); });
  return slots;
}

}  // namespace

bool Directory::BeginChange(ChangeStart start) {
  if (!is_shared()) return true;
  if (change_depth_ == 0) {
    change_lock_ = HoldChanges(services_.files, paths_.Main(), options_.lock_wait);
    lock_refused_ = change_lock_ == nullptr;
    if (lock_refused_) return false;
    change_begun_ = std::chrono::steady_clock::now();
    if (open_ && start == ChangeStart::kFollows && !FollowOtherSeats()) {
      change_lock_.reset();
      return false;
    }
  }
  ++change_depth_;
  return true;
}

void Directory::EndChange() {
  if (change_depth_ == 0 || --change_depth_ > 0) return;
  // An index that could not be written is made anew by who finds the note.
  const bool indexed = !index(1).write_failed() && !index(2).write_failed();
  if (main_.is_open() && indexed) main_.ClearNote();
  change_lock_.reset();
}

Directory::Turn Directory::LetOthersIn() {
  // Only between two cards of a batch: nothing is half done then.
  if (!is_shared() || !in_batch_ || change_depth_ != 1 || main_.has_guard()) return Turn::kKept;
  if (std::chrono::steady_clock::now() - change_begun_ < options_.longest_turn) return Turn::kKept;
  EndBatch();
  EndChange();
  // Who waits looks every few milliseconds.
  std::this_thread::sleep_for(2 * kLockRetry);
  if (!BeginChange()) return Turn::kLost;
  BeginBatch();
  return Turn::kAgain;
}

std::unique_ptr<RangeLock> HoldChanges(FileSystem& files, const std::string& main_file,
                                       std::chrono::milliseconds wait) {
  return WaitForRange(files, main_file, kChangeLockOffset, 1, wait);
}

bool SharingWorks(FileSystem& files, const std::string& shared_dir) {
  const std::string path = shared_dir + "ZOZO.$$$";
  if (files.Open(path, OpenMode::kCreateOrOpen) == nullptr) return false;
  const bool locked = files.LockRange(path, 1, 1) != nullptr;
  files.Remove(path);
  return locked;
}

bool Directory::LockCard(uint32_t card_offset) {
  if (!is_shared()) return true;
  if (card_lock_ != nullptr && locked_card_ == card_offset) return true;
  card_lock_ = services_.files.LockRange(paths_.Main(), card_offset, kCardSize);
  locked_card_ = card_offset;
  return card_lock_ != nullptr;
}

void Directory::UnlockCard() {
  card_lock_.reset();
}

bool Directory::TestCardLock(uint32_t card_offset) {
  if (!is_shared()) return true;
  const bool own = card_lock_ != nullptr && locked_card_ == card_offset;
  lock_refused_ =
      !own && services_.files.LockRange(paths_.Main(), card_offset, kCardSize) == nullptr;
  return !lock_refused_;
}

bool Directory::ChangedByOthers() {
  if (!is_shared() || !open_) return false;
  return changed_by_others_ || main_.ReadStamp() != address_.header().stamp();
}

bool Directory::SettleChange(const ChangeNote& note) {
  main_.Settle(note);
  if (!BuildKeyIndex(1) || !BuildKeyIndex(2)) return false;
  main_.RenewStamp();
  main_.ClearNote();
  return true;
}

bool Directory::SettleAnyChange() {
  const std::optional<ChangeNote> note = main_.NoteOnDisk();
  return !note || (main_.ReadHeader() && SettleChange(*note));
}

bool Directory::ReadStoresAgain() {
  const int64_t count = main_.count();
  if (!SettleAnyChange() || !main_.ReadHeader() || !TakeIndexes(false)) return false;
  count_by_others_ += main_.count() - count;
  // Other seats hold the indexes as they were.
  const bool mended = index(1).was_written() || index(2).was_written();
  if (is_shared() && mended) main_.RenewStamp();
  return true;
}

bool Directory::FollowOtherSeats() {
  if (!main_.NoteOnDisk() && main_.IsAsKnown()) return true;
  changed_by_others_ = true;
  const std::vector<IndexSlot> former = UsedSlots(active_index());
  if (!ReadStoresAgain()) return false;
  FollowIndex(former);
  return true;
}

// A card that lies where it lay under the key it had is the same one. One that was moved into the
// place of a deleted card has the key of one that is not at its former place any more.
void Directory::FollowIndex(const std::vector<IndexSlot>& former) {
  const std::vector<IndexSlot> present = UsedSlots(active_index());
  const bool same_order = std::ranges::equal(former, present, SameSlot);
  if (same_order && address_.CheckAddressFile(active_index(), main_.count())) return;
  const SlotsByOffset former_slots = ByOffset(former);
  const SlotsByOffset present_slots = ByOffset(present);
  std::unordered_map<uint32_t, EntrySlot> former_entries;
  for (const EntrySlot& entry : address_.Entries()) {
    former_entries.emplace(entry.card_offset(), entry);
  }
  std::unordered_multimap<std::string, uint32_t> moved;
  for (const IndexSlot& slot : former) {
    if (!Holds(present_slots, slot)) {
      moved.emplace(std::string(KeyView(slot.key)), slot.card_offset);
    }
  }
  std::vector<EntrySlot> entries;
  for (const IndexSlot& slot : present) {
    uint32_t known_at = 0;
    if (Holds(former_slots, slot)) {
      known_at = slot.card_offset;
    } else if (const auto from = moved.find(std::string(KeyView(slot.key))); from != moved.end()) {
      known_at = from->second;
      moved.erase(from);
    }
    const auto entry = former_entries.find(known_at);
    entries.push_back(entry != former_entries.end() ? entry->second : EntryOfNewCard(slot));
    entries.back().set_card_offset(slot.card_offset);
  }
  address_.TakeEntries(entries, active_index());
  marked_count_ = CountMarks(*this);
  address_.Flush();
}

EntrySlot Directory::EntryOfNewCard(const IndexSlot& slot) {
  EntrySlot entry;
  entry.set_bit(kWholeFileBit, true);
  CardRecord card;
  if (main_.ReadCard(slot.card_offset, card)) entry.set_number_flags(NumberFlagsOf(card));
  return entry;
}

}  // namespace carnetel
