#include "storage/directory.h"

#include "base/code_page.h"
#include "storage/criteria_format.h"

namespace carnetel {
namespace {

// Cards read at once in a pass over the whole file: 48 KB.
constexpr size_t kCardsPerRead = 64;

constexpr std::array<std::string_view, 2> kIndexExtensions = {".I01", ".I02"};

}  // namespace

Directory::Directory(const DirectoryServices& services, DirectoryOptions options)
    : services_(services),
      options_(std::move(options)),
      paths_(services.files, options_.path, options_.shared_dir),
      indexes_{KeyIndex(services.files, paths_.Of(kIndexExtensions[0])),
               KeyIndex(services.files, paths_.Of(kIndexExtensions[1]))},
      address_(services.files, paths_.Of(".ADR")) {}

Directory::~Directory() {
  if (open_) CloseDirectory();
}

template <class Visit>
void Directory::ForEachCard(Visit visit) {
  std::vector<CardRecord> cards(kCardsPerRead);
  uint32_t offset = kCardSize;
  while (const size_t count = main_.ReadCards(offset, cards)) {
    for (size_t i = 0; i < count; ++i) {
      visit(offset, cards[i]);
      offset += static_cast<uint32_t>(kCardSize);
    }
  }
}

OpenResult Directory::OpenDirectory(AddressMode mode, bool silent) {
  FileSystem& files = services_.files;
  const bool is_new = !files.Exists(paths_.Main());
  if (is_new && !options_.may_create) return OpenResult::kNoStore;
  // There is nothing to lock before the file is there; who gets the lock first fills it.
  if (is_new && is_shared() && files.Open(paths_.Main(), OpenMode::kCreateOrOpen) == nullptr) {
    return OpenResult::kNoStore;
  }
  if (!BeginChange()) return OpenResult::kNoStore;
  main_.set_shared(is_shared());
  const OpenResult result = OpenStores(mode, silent, is_new);
  EndChange();
  return result;
}

OpenResult Directory::OpenStores(AddressMode mode, bool silent, bool is_new) {
  const OpenResult result = OpenMainFile(is_new);
  if (!IsOpen(result)) return CloseAfter(result);
  const std::optional<ChangeNote> note = main_.NoteOnDisk();
  if (note && !SettleChange(*note)) return CloseAfter(OpenResult::kNoStore);
  if (!OpenIndexes()) return CloseAfter(OpenResult::kNoStore);
  const bool mended = index(1).was_written() || index(2).was_written();
  // Other seats hold the indexes as they were.
  if (is_shared() && mended && result == OpenResult::kOpened) main_.RenewStamp();
  if (!OpenAddressFile(mode, silent)) return CloseAfter(OpenResult::kNoStore);
  CreateMissingCriteria();
  open_ = true;
  return result;
}

OpenResult Directory::CloseAfter(OpenResult result) {
  for (KeyIndex& index : indexes_) index = KeyIndex(services_.files, index.path());
  address_.Close();
  main_.Close();
  return result;
}

OpenResult Directory::OpenMainFile(bool is_new) {
  const std::string path = paths_.Main();
  // Another seat may have made it a moment ago.
  if (is_new && ReadStart(services_.files, path, 1).empty()) {
    const bool made = main_.Create(services_.files, path, MainHeader::Template());
    return made ? OpenResult::kCreated : OpenResult::kNoStore;
  }
  if (!main_.Open(services_.files, path)) return OpenResult::kNoStore;
  const std::optional<std::string> version = main_.header().Version();
  if (!version) return OpenResult::kNoStore;
  if (*version < kMainVersion) return OpenResult::kOlderVersion;
  main_.InitFieldTable(true);
  return OpenResult::kOpened;
}

bool Directory::OpenIndexes() {
  // The count is looked for beside the main file, wherever the seat's own address file lies. What
  // somebody who worked alone has left there is out of date for seats, but for a change cut short.
  AddressFile beside(services_.files, paths_.BesideMain(".ADR"));
  const bool is_there = beside.Open();
  const bool differs =
      is_shared() ? beside.is_changing() : beside.header().count() != main_.header().card_count();
  if (!TakeIndexes(is_there && differs)) return false;
  if (!is_shared()) return true;
  // No seat's address file is there to tell: the indexes themselves have to.
  for (int number = 1; number <= 2; ++number) {
    uint32_t used = 0;
    index(number).ForEachUsed([&used](const IndexSlot&) { ++used; });
    if (used != main_.count() && !BuildKeyIndex(number)) return false;
  }
  return true;
}

bool Directory::TakeIndexes(bool counts_differ) {
  for (int number = 1; number <= 2; ++number) {
    KeyIndex& store = index(number);
    const bool there = services_.files.Exists(store.path());
    if (there && store.CheckKeyIndex(main_.end_offset(), counts_differ)) {
      DropStaleSlots(number);
    } else if (!BuildKeyIndex(number)) {
      return false;
    }
  }
  return true;
}

bool Directory::BuildKeyIndex(int number) {
  KeyIndex& store = index(number);
  // Of a seat that dies in it nothing but this note would tell the others.
  main_.Note(ChangeKind::kGuard, 0, main_.count());
  if (!store.CreateEmpty()) return false;
  const int key_field = number == 1 ? kSte1 : kNom;
  ForEachCard([&](uint32_t offset, const CardRecord& card) {
    store.UpdateIndex(RebuildKeyOf(card, key_field), offset, 0, IndexMode::kInsert);
  });
  store.Flush();
  return true;
}

void Directory::DropStaleSlots(int number) {
  KeyIndex& store = index(number);
  std::vector<bool> filed(main_.count() + size_t{1});
  std::vector<bool> filed_twice(filed.size());
  bool any_twice = false;
  const auto card_of = [](const IndexSlot& slot) { return slot.card_offset / kCardSize; };
  store.ForEachUsed([&](const IndexSlot& slot) {
    const size_t card = card_of(slot);
    if (card >= filed.size()) return;
    if (filed[card]) any_twice = filed_twice[card] = true;
    filed[card] = true;
  });
  if (!any_twice) return;
  const int key_field = number == 1 ? kSte1 : kNom;
  store.RemoveSlotsIf([&](const IndexSlot& slot) {
    CardRecord card;
    if (!filed_twice[card_of(slot)] || !main_.ReadCard(slot.card_offset, card)) return false;
    return !MayBeFiledUnder(slot.key, card, key_field);
  });
  store.Flush();
}

bool Directory::OpenAddressFile(AddressMode mode, bool silent) {
  std::vector<EntrySlot> former;
  if (address_.Open()) {
    const bool mirrors = address_.CheckAddressFile(active_index(), main_.count());
    const std::optional<std::string> version = address_.header().Version();
    const bool is_ours = version && *version >= kAddressVersion;
    const bool by_others =
        is_shared() && is_ours && address_.header().stamp() != main_.stamp_on_disk();
    if (by_others) former = address_.Entries();
    if (!mirrors || !is_ours) address_.CloseAndDelete();
  } else if (services_.files.Exists(address_.path())) {
    return false;
  }
  if (!address_.is_open()) {
    if (!RebuildAddressFile(mode, silent)) return false;
    if (former.empty()) return true;
    // Another seat has changed the directory meanwhile: that takes no marks away.
    marked_count_ = address_.KeepMarked(former, selection_bit());
    CloseListView();
    return true;
  }
  marked_count_ = address_.Counter(selection_bit());
  address_.header().set_count(static_cast<uint16_t>(address_.entry_count()));
  address_.BuildLetterTable(active_index());
  address_.Flush();
  return true;
}

bool Directory::RebuildAddressFile(AddressMode mode, bool silent) {
  if (mode != AddressMode::kKeepDependents) DeleteDependents(services_.files, paths_);
  marked_count_ = 0;
  if (!address_.CreateAddressFile()) return false;
  const bool shown = !silent && main_.count() != 0;
  if (shown) services_.progress.Open(ProgressForm::kBuildIndex, main_.count());
  const std::vector<uint8_t> flags = CollectNumberFlags();
  active_index().ForEachUsed([&](const IndexSlot& slot) {
    EntrySlot entry;
    entry.set_card_offset(slot.card_offset);
    entry.set_bit(group_bit_, true);
    entry.set_bit(kWholeFileBit, true);
    const size_t card = slot.card_offset / kCardSize - 1;
    if (card < flags.size()) entry.set_number_flags(flags[card]);
    address_.AppendEntry(entry);
    address_.letters().EntryAdded(static_cast<unsigned char>(slot.key[0]));
    if (shown) {
      const std::string key(KeyView(slot.key));
      (void)services_.progress.Step(Utf8FromOem(OemText(CopyFieldText(key, kKeySize))));
    }
  });
  address_.header().set_count(static_cast<uint16_t>(address_.entry_count()));
  address_.header().set_stamp(main_.stamp_on_disk());
  address_.Flush();
  if (shown) services_.progress.Close();
  CreateMissingCriteria();
  return true;
}

std::vector<uint8_t> Directory::CollectNumberFlags() {
  std::vector<uint8_t> flags;
  flags.reserve(main_.count());
  ForEachCard([&flags](uint32_t, const CardRecord& card) { flags.push_back(NumberFlagsOf(card)); });
  return flags;
}

void Directory::CreateMissingCriteria() {
  const std::string path = paths_.Of(".CRT");
  if (services_.files.Exists(path)) return;
  const std::unique_ptr<File> file = services_.files.Open(path, OpenMode::kCreateOrOpen);
  if (file != nullptr) file->Write(0, DefaultCriteriaFile());
}

void Directory::set_group_bit(uint8_t bit) {
  group_bit_ = bit;
  marked_count_ = address_.Counter(selection_bit());
}

void Directory::CloseListView() {
  // The stamp of the disk: an own change must not look like another seat's at the next opening.
  address_.header().set_stamp(main_.stamp_on_disk());
  address_.Flush();
  address_.SetCounter(selection_bit(), static_cast<uint16_t>(marked_count_));
  address_.FlushCounter(selection_bit());
}

void Directory::CloseDirectory() {
  if (!open_) return;
  CloseListView();
  open_ = false;
  if (selection_dirty_) main_.SetModificationTime(services_.clock.Now());
  selection_dirty_ = false;
  UnlockCard();
  CloseAfter(OpenResult::kOpened);
}

bool Directory::write_failed() const {
  return main_.write_failed() || indexes_[0].write_failed() || indexes_[1].write_failed() ||
         address_.write_failed();
}

void Directory::Commit() {
  if (in_batch_) return;
  main_.Finish();
  for (int number = 1; number <= 2; ++number) {
    // That a card was added without reaching the active index shows at the next opening. All else
    // has to be on the disk before the address file tells that the family agrees.
    const bool shows = number == active_index_number() && !address_.is_changing();
    index(number).Flush(shows ? KeyIndex::FlushTo::kFile : KeyIndex::FlushTo::kDisk);
  }
  address_.Flush();
}

void Directory::BeginBatch() {
  in_batch_ = true;
  main_.BeginBatch();
}

void Directory::EndBatch() {
  // The turn was lost: what the batch had is on the disk, and others may be at it.
  if (!in_batch_) return;
  main_.EndBatch();
  in_batch_ = false;
  address_.header().set_stamp(main_.stamp_on_disk());
  Commit();
}

Directory::Batch::Batch(Directory& directory)
    : directory_(directory), begun_(directory.BeginChange()) {
  if (begun_) directory_.BeginBatch();
}

Directory::Batch::~Batch() {
  if (!begun_) return;
  directory_.EndBatch();
  directory_.EndChange();
}

int32_t CountMarks(const Directory& directory) {
  int32_t count = 0;
  for (uint32_t row = 0; row < directory.address().entry_count(); ++row) {
    if (directory.address().Entry(row).bit(directory.selection_bit())) ++count;
  }
  return count;
}

}  // namespace carnetel
