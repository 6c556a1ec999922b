#include "storage/address_reorder.h"

#include <unordered_map>

namespace carnetel {
namespace {

// Cards are looked up in blocks of this many. A directory of fewer cards is one block; in a larger
// one only full blocks are looked at, so the cards of the last, partial block are not found.
constexpr size_t kPairsPerBlock = 1000;

size_t SearchedEntries(size_t count) {
  return count < kPairsPerBlock ? count : count / kPairsPerBlock * kPairsPerBlock;
}

// What a card that is not found gets in place of its marks: the first bytes of the old header, a
// piece of its banner. Other programs have seen such entries for years; it has to stay.
EntrySlot HeaderAsEntry(const AddressHeader& header) {
  return EntrySlot(header.bytes().first(kEntrySize));
}

// Old entries by the offset of their card, those that are searched. An entry without a card ends
// the search of its block.
std::unordered_map<uint32_t, const EntrySlot*> FindableEntries(
    const std::vector<EntrySlot>& entries) {
  std::unordered_map<uint32_t, const EntrySlot*> found;
  const size_t searched = SearchedEntries(entries.size());
  found.reserve(searched);
  for (size_t block = 0; block < searched; block += kPairsPerBlock) {
    const size_t end = std::min(block + kPairsPerBlock, searched);
    for (size_t i = block; i < end && entries[i].card_offset() != 0; ++i) {
      found.emplace(entries[i].card_offset(), &entries[i]);
    }
  }
  return found;
}

}  // namespace

AddressReorder::AddressReorder(Directory& directory, int key_field)
    : directory_(directory),
      old_header_(directory.address().header()),
      old_entries_(directory.address().Entries()) {
  directory.set_key_field(key_field);
  built_ = directory.RebuildAddressFile(AddressMode::kKeepDependents, false);
}

void AddressReorder::CarryOver() {
  if (!built_) return;
  AddressFile& address = directory_.address();
  const auto count = static_cast<uint16_t>(address.entry_count());
  address.header() = old_header_;
  address.header().set_count(count);
  const EntrySlot not_found = HeaderAsEntry(old_header_);
  const auto findable = FindableEntries(old_entries_);
  for (uint32_t row = 0; row < address.entry_count(); ++row) {
    EntrySlot entry = address.Entry(row);
    const auto found = findable.find(entry.card_offset());
    entry.TakeMarks(found == findable.end() ? not_found : *found->second);
    address.SetEntry(row, entry);
  }
  directory_.set_marked_count(CountMarks(directory_));
  directory_.CloseListView();
}

bool RefreshAddressFile(Directory& directory, RefreshView view, bool quiet) {
  if (view == RefreshView::kOtherGroup) return true;
  const ChangeScope change(directory, Directory::ChangeStart::kBare);
  if (!change || !directory.ReadStoresAgain()) return false;
  if (view == RefreshView::kWholeFile) {
    const std::vector<EntrySlot> old_entries = directory.address().Entries();
    if (!directory.RebuildAddressFile(AddressMode::kNormal, quiet)) return false;
    directory.set_marked_count(
        directory.address().KeepMarked(old_entries, directory.selection_bit()));
  } else {
    AddressHeader& header = directory.address().header();
    header.set_count(static_cast<uint16_t>(directory.address().entry_count()));
    directory.set_marked_count(CountMarks(directory));
  }
  directory.CloseListView();
  directory.TookChangesOver();
  return true;
}

bool RefreshIfChanged(Directory& directory, RefreshView view) {
  if (!directory.ChangedByOthers()) return false;
  // Other groups are left as they are, but the change is noticed once only.
  const bool stays = view == RefreshView::kOtherGroup;
  const uint32_t noticed = directory.main().ReadStamp();
  if (!RefreshAddressFile(directory, view, true)) return false;
  directory.address().header().set_stamp(stays ? noticed : directory.main().stamp_on_disk());
  directory.TookChangesOver();
  return true;
}

}  // namespace carnetel
