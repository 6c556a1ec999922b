// One open directory: its main file, its two indexes, its address file and the state that lives as
// long as they are open. The open sequence heals: every derived file that fails a check is made
// anew from the main file without asking, with the losses that follow from it (marks, groups).
//
// Everything a caller may do to cards goes through CardDispatch (storage/card_dispatch.h). Several
// directories, or several seats on one, can be open in a process at once.
#pragma once

#include <array>
#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "base/messages.h"
#include "platform/clock.h"
#include "storage/address_file.h"
#include "storage/directory_file.h"
#include "storage/family_files.h"
#include "storage/index_walk.h"
#include "storage/key_index.h"

namespace carnetel {

enum class OpenResult {
  kOpened = 0,
  kCreated = 1,
  kNoStore = -1,       // a store could not be opened, or the main file has no version
  kOlderVersion = -2,  // the main file is of an older version
};

[[nodiscard]] constexpr bool IsOpen(OpenResult result) {
  return result == OpenResult::kOpened || result == OpenResult::kCreated;
}

enum class AddressMode {
  kNormal = 0,
  kKeepDependents = 9,  // an address file made anew leaves groups, criteria and layouts alone
};

struct DirectoryOptions {
  // The main file, with or without its extension.
  std::string path;
  // Folder of a seat's own files, with a trailing separator; empty without seats.
  std::string shared_dir;
  // The field that names cards for display and search: kSte1 or kNom. Any value above kSte1 makes
  // the second index the active one.
  int key_field = kSte1;
  // Whether a missing main file is made; without it that is kNoStore.
  bool may_create = true;
  // With seats: how long a change waits for another seat's to end.
  std::chrono::milliseconds lock_wait{5000};
  // With seats: no batch keeps the others waiting for longer.
  std::chrono::milliseconds longest_turn{500};
};

// The services of the surroundings that a directory works with.
struct DirectoryServices {
  FileSystem& files;
  Clock& clock;
  ProgressBox& progress;
};

class Directory {
 public:
  Directory(const DirectoryServices& services, DirectoryOptions options);
  ~Directory();
  Directory(const Directory&) = delete;
  Directory& operator=(const Directory&) = delete;

  // Opens or makes all stores. On a negative result everything is closed. `silent` leaves out the
  // progress display of an address file made anew.
  OpenResult OpenDirectory(AddressMode mode = AddressMode::kNormal, bool silent = false);
  // Writes header and counter of the address file: what the list needs from one run to the next.
  void CloseListView();
  // The same, then closes all stores; a directory whose marks changed gets a new file time, so that
  // other seats see it.
  void CloseDirectory();
  [[nodiscard]] bool is_open() const { return open_; }

  [[nodiscard]] const FamilyPaths& paths() const { return paths_; }
  [[nodiscard]] FileSystem& files() const { return services_.files; }
  [[nodiscard]] Clock& clock() const { return services_.clock; }
  [[nodiscard]] ProgressBox& progress() const { return services_.progress; }

  DirectoryFile& main() { return main_; }
  [[nodiscard]] const DirectoryFile& main() const { return main_; }
  // Number 1 files cards by company, number 2 by surname.
  KeyIndex& index(int number) { return indexes_[static_cast<size_t>(number - 1)]; }
  KeyIndex& active_index() { return index(active_index_number()); }
  [[nodiscard]] int active_index_number() const { return options_.key_field <= kSte1 ? 1 : 2; }
  [[nodiscard]] int key_field() const { return options_.key_field; }
  // Makes another index the active one; the address file still has the order of the former one
  // (storage/address_reorder.h brings it along).
  void set_key_field(int key_field) { options_.key_field = key_field; }
  AddressFile& address() { return address_; }
  [[nodiscard]] const AddressFile& address() const { return address_; }
  CardContext& context() { return context_; }
  IndexWalk& walk() { return walk_; }

  // The bit pair of the group that is displayed, the whole file's at first; with another one the
  // count of its marks is that of the header.
  void set_group_bit(uint8_t bit);
  [[nodiscard]] uint8_t group_bit() const { return group_bit_; }
  [[nodiscard]] uint8_t selection_bit() const { return static_cast<uint8_t>(group_bit_ + 1); }
  [[nodiscard]] int32_t marked_count() const { return marked_count_; }
  void set_marked_count(int32_t count) { marked_count_ = count; }
  void set_selection_dirty() { selection_dirty_ = true; }

  EntryChange& last_inserted() { return last_inserted_; }
  EntryChange& last_removed() { return last_removed_; }

  // Takes the main file and both indexes as they are on the disk, where another seat may have
  // changed them or left a change half-way. The address file stays as it was
  // (storage/address_reorder.h brings it along). False when a store cannot be read.
  bool ReadStoresAgain();

  // Makes the address file anew from the active index, without marks; with kNormal the groups,
  // criteria and layouts go, and the criteria come back as those of a new directory. False when it
  // cannot be created.
  bool RebuildAddressFile(AddressMode mode, bool silent);

  // True when any write to a store has failed since it was opened.
  [[nodiscard]] bool write_failed() const;

  // While one is alive, changes gather in memory and reach the disk together when it ends: cards
  // first, then everything derived. For imports and other long runs of one kind of change.
  class Batch {
   public:
    explicit Batch(Directory& directory);
    ~Batch();
    Batch(const Batch&) = delete;
    Batch& operator=(const Batch&) = delete;
    // False when another seat was at it: every change in the batch is refused.
    [[nodiscard]] explicit operator bool() const { return begun_; }

   private:
    Directory& directory_;
    bool begun_;
  };

  // ---- several seats on one directory; without seats all of these are nothing and succeed ----

  [[nodiscard]] bool is_shared() const { return !options_.shared_dir.empty(); }
  // Every change of a store lies between these two, which may be nested: no two seats change at one
  // time, and what others have changed since is taken over first. False when another seat did not
  // end its change in time, or a store could not be read: nothing may be changed then.
  // kBare leaves taking over to the caller.
  enum class ChangeStart { kFollows, kBare };
  [[nodiscard]] bool BeginChange(ChangeStart start = ChangeStart::kFollows);
  void EndChange();
  // The last change was refused because another seat was at it.
  [[nodiscard]] bool lock_refused() const { return lock_refused_; }
  // In a batch that takes long, ends what was begun and begins anew, so that other seats get their
  // turn.
  enum class Turn {
    kKept,   // the batch goes on as it was
    kAgain,  // others may have changed something: no row and no offset of a card is good any more
    kLost,   // another seat does not end its change, or a store cannot be read: nothing may change
  };
  Turn LetOthersIn();
  // Cards of this directory but for what other seats have added and deleted since it was opened:
  // differences of it tell what this seat has done.
  [[nodiscard]] int64_t own_count() const { return int64_t{main_.count()} - count_by_others_; }

  // The card that this seat is editing: one at most. True when it is held now or was before.
  bool LockCard(uint32_t card_offset);
  void UnlockCard();
  [[nodiscard]] bool holds_card_lock() const { return card_lock_ != nullptr; }
  // True when no other seat edits the card.
  [[nodiscard]] bool TestCardLock(uint32_t card_offset);

  // Whether another seat has changed the directory since the address file was made or refreshed.
  [[nodiscard]] bool ChangedByOthers();
  // A refresh has taken the changes of other seats over.
  void TookChangesOver() { changed_by_others_ = false; }

  // Ends one change: main file, indexes, address file, in this order. Nothing in a batch.
  void Commit();

 private:
  // `is_new`: there was no main file when the opening began.
  OpenResult OpenStores(AddressMode mode, bool silent, bool is_new);
  OpenResult OpenMainFile(bool is_new);
  OpenResult CloseAfter(OpenResult result);
  bool OpenIndexes();
  // Brings a change to its end that somebody left half-way, and makes the indexes anew.
  bool SettleChange(const ChangeNote& note);
  bool SettleAnyChange();
  // Takes over what other seats have changed: main file, indexes, and the entries of the address
  // file, which keep their marks as far as their cards can be told to be the same.
  bool FollowOtherSeats();
  void FollowIndex(const std::vector<IndexSlot>& former);
  [[nodiscard]] EntrySlot EntryOfNewCard(const IndexSlot& slot);
  void BeginBatch();
  void EndBatch();
  // Loads both indexes; one that is missing or not whole, and with `counts_differ` any, is made
  // anew.
  bool TakeIndexes(bool counts_differ);
  bool BuildKeyIndex(int number);
  // Takes the slots out of an index that a delete could not reach: those of a card that has a
  // second slot, under a key that is not its own.
  void DropStaleSlots(int number);
  bool OpenAddressFile(AddressMode mode, bool silent);
  // Number flags of every card, by its place in the main file.
  [[nodiscard]] std::vector<uint8_t> CollectNumberFlags();
  void CreateMissingCriteria();

  // Calls `visit(offset, card)` for every card of the main file, in file order.
  template <class Visit>
  void ForEachCard(Visit visit);

  DirectoryServices services_;
  DirectoryOptions options_;
  FamilyPaths paths_;
  DirectoryFile main_;
  std::array<KeyIndex, 2> indexes_;
  AddressFile address_;
  CardContext context_;
  IndexWalk walk_;
  uint8_t group_bit_ = kWholeFileBit;
  int32_t marked_count_ = 0;
  bool selection_dirty_ = false;
  bool open_ = false;
  bool in_batch_ = false;
  int change_depth_ = 0;
  std::unique_ptr<RangeLock> change_lock_;
  std::chrono::steady_clock::time_point change_begun_;
  bool lock_refused_ = false;
  bool changed_by_others_ = false;
  int64_t count_by_others_ = 0;
  std::unique_ptr<RangeLock> card_lock_;
  uint32_t locked_card_ = 0;
  EntryChange last_inserted_;
  EntryChange last_removed_;
};

// One change, or several that belong together; false when it cannot begin (see BeginChange).
class ChangeScope {
 public:
  explicit ChangeScope(Directory& directory,
                       Directory::ChangeStart start = Directory::ChangeStart::kFollows)
      : directory_(directory), begun_(directory.BeginChange(start)) {}
  ~ChangeScope() {
    if (begun_) directory_.EndChange();
  }
  ChangeScope(const ChangeScope&) = delete;
  ChangeScope& operator=(const ChangeScope&) = delete;
  [[nodiscard]] explicit operator bool() const { return begun_; }

 private:
  Directory& directory_;
  bool begun_;
};

// Whether files in a seat's folder can be locked at all, tried with a file made and removed there.
[[nodiscard]] bool SharingWorks(FileSystem& files, const std::string& shared_dir);

// Keeps every seat from changing the directory of a main file that is not open here, for as long as
// the lock lives; null when a change under way did not end within `wait`.
[[nodiscard]] std::unique_ptr<RangeLock> HoldChanges(FileSystem& files,
                                                     const std::string& main_file,
                                                     std::chrono::milliseconds wait);

// Counts the marks of the displayed group's entries, whatever the counter says.
[[nodiscard]] int32_t CountMarks(const Directory& directory);

}  // namespace carnetel
