// What an open directory does when several seats share it: one change at a time, each on top of
// what the others have changed, and a card that one seat edits left alone by the others.
#include <algorithm>
#include <unordered_map>

#include "storage/directory.h"

namespace carnetel {
namespace {

// Far behind the last byte that a card can have, within what every network file system can lock.
constexpr uint64_t kChangeLockOffset = 0x7FFFFF00;
// No batch keeps the other seats waiting for longer.
constexpr std::chrono::milliseconds kLongestTurn{500};

using SlotsByOffset = std::unordered_map<uint32_t, const IndexSlot*>;

SlotsByOffset ByOffset(const std::vector<IndexSlot>& slots) {
  SlotsByOffset found;
  found.reserve(slots.size());
  for (const IndexSlot& slot : slots) found.emplace(slot.card_offset, &slot);
  return found;
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
    change_lock_ =
        WaitForRange(services_.files, paths_.Main(), kChangeLockOffset, 1, options_.lock_wait);
    lock_refused_ = change_lock_ == nullptr;
    if (lock_refused_) return false;
    change_begun_ = std::chrono::steady_clock::now();
    const bool bare = start == ChangeStart::kBare;
    if (open_ && !(bare ? SettleAnyChange() : FollowOtherSeats())) {
      change_lock_.reset();
      return false;
    }
  }
  ++change_depth_;
  return true;
}

void Directory::EndChange() {
  if (change_depth_ == 0 || --change_depth_ > 0) return;
  if (main_.is_open()) main_.ClearNote();
  change_lock_.reset();
}

void Directory::LetOthersIn() {
  // Only between two cards of a batch: nothing is half done then.
  if (!is_shared() || !in_batch_ || change_depth_ != 1 || main_.has_guard()) return;
  if (std::chrono::steady_clock::now() - change_begun_ < kLongestTurn) return;
  EndBatch();
  EndChange();
  if (BeginChange()) BeginBatch();
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

bool Directory::FollowOtherSeats() {
  if (!main_.NoteOnDisk() && main_.IsAsKnown()) return true;
  changed_by_others_ = true;
  const std::vector<IndexSlot> former = UsedSlots(active_index());
  if (!SettleAnyChange() || !ReadStoresAgain()) return false;
  FollowIndex(former);
  return true;
}

// A card that lies where it lay under the key it had is the same one. One that was moved into the
// place of a deleted card has the key of one that is not at its former place any more.
void Directory::FollowIndex(const std::vector<IndexSlot>& former) {
  if (address_.CheckAddressFile(active_index(), main_.count())) return;
  const SlotsByOffset former_slots = ByOffset(former);
  std::unordered_map<uint32_t, EntrySlot> former_entries;
  for (const EntrySlot& entry : address_.Entries()) {
    former_entries.emplace(entry.card_offset(), entry);
  }
  std::unordered_multimap<std::string, uint32_t> moved;
  for (const IndexSlot& slot : former) {
    if (slot.card_offset >= main_.end_offset()) {
      moved.emplace(std::string(KeyView(slot.key)), slot.card_offset);
    }
  }
  std::vector<EntrySlot> entries;
  active_index().ForEachUsed([&](const IndexSlot& slot) {
    const auto same = former_slots.find(slot.card_offset);
    uint32_t known_at = 0;
    if (same != former_slots.end() && SameKey(same->second->key, slot.key)) {
      known_at = slot.card_offset;
    } else if (const auto from = moved.find(std::string(KeyView(slot.key))); from != moved.end()) {
      known_at = from->second;
      moved.erase(from);
    }
    const auto entry = former_entries.find(known_at);
    entries.push_back(entry != former_entries.end() ? entry->second : EntryOfNewCard(slot));
    entries.back().set_card_offset(slot.card_offset);
  });
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
