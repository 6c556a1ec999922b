#include "storage/address_file.h"

#include <unordered_map>

namespace carnetel {

bool AddressFile::Open() {
  file_ = files_->Open(path_, OpenMode::kReadWrite);
  if (file_ == nullptr) return false;
  header_ = AddressHeader();
  counters_.fill(std::byte{0});
  const bool whole = file_->Read(0, header_.bytes()) == AddressHeader::kSize &&
                     file_->Read(kAddressCountersOffset, counters_) == kAddressCountersSize;
  const bool loaded = entries_.Load(*file_, kAddressEntriesOffset);
  // Without its version it is made anew.
  if (!whole || !loaded) header_ = AddressHeader();
  header_on_disk_ = header_;
  return true;
}

bool AddressFile::CheckAddressFile(const KeyIndex& active, uint32_t card_count) const {
  uint32_t row = 0;
  bool mirrors = true;
  active.ForEachUsed([&](const IndexSlot& slot) {
    mirrors = mirrors && row < entry_count() && CardOffsetAt(row) == slot.card_offset;
    ++row;
  });
  // The header has 16 bits for the count, in files with more cards than that too.
  return mirrors && row == card_count && header_.count() == static_cast<uint16_t>(card_count);
}

bool AddressFile::CreateAddressFile() {
  file_ = files_->Open(path_, OpenMode::kCreateOrEmpty);
  if (file_ == nullptr) return false;
  header_ = AddressHeader::Template();
  counters_.fill(std::byte{0});
  entries_.Clear();
  letters_.Reset();
  file_->Write(0, header_.bytes());
  file_->Write(kAddressCountersOffset, counters_);
  header_on_disk_ = header_;
  return true;
}

void AddressFile::Close() {
  if (file_ != nullptr) Flush();
  file_.reset();
}

void AddressFile::CloseAndDelete() {
  file_.reset();
  files_->Remove(path_);
}

void AddressFile::BuildLetterTable(const KeyIndex& active) {
  letters_.Reset();
  active.ForEachUsed([this](const IndexSlot& slot) {
    letters_.EntryAdded(static_cast<unsigned char>(slot.key[0]));
  });
}

void AddressFile::SetCounter(uint8_t bit, uint16_t value) {
  StoreLe16(counters_, size_t{2} * bit, value);
}

std::vector<EntrySlot> AddressFile::Entries() const {
  std::vector<EntrySlot> entries;
  entries.reserve(entry_count());
  for (uint32_t row = 0; row < entry_count(); ++row) entries.push_back(Entry(row));
  return entries;
}

void AddressFile::TakeEntries(const std::vector<EntrySlot>& entries, const KeyIndex& active) {
  entries_.Erase(0, entries_.size());
  for (const EntrySlot& entry : entries) entries_.Append(entry.bytes());
  header_.set_count(static_cast<uint16_t>(entries.size()));
  BuildLetterTable(active);
}

int32_t AddressFile::KeepMarked(const std::vector<EntrySlot>& former, uint8_t selection_bit) {
  std::unordered_map<uint32_t, uint32_t> rows;
  rows.reserve(entry_count());
  for (uint32_t row = 0; row < entry_count(); ++row) rows.emplace(CardOffsetAt(row), row);
  uint32_t last_hit = 0;
  int32_t kept = 0;
  for (const EntrySlot& old : former) {
    if (!old.bit(selection_bit)) continue;
    const auto found = rows.find(old.card_offset());
    if (found == rows.end() || found->second < last_hit) continue;
    last_hit = found->second;
    SetEntry(last_hit, old);
    ++kept;
  }
  return kept;
}

void AddressFile::SetEntry(uint32_t row, const EntrySlot& entry) {
  const ByteSpan place = entries_.Change(kEntrySize * row, kEntrySize);
  std::ranges::copy(entry.bytes(), place.begin());
}

uint32_t AddressFile::FindRow(uint32_t card_offset, uint32_t from) const {
  const uint32_t count = entry_count();
  uint32_t row = from;
  while (row < count && CardOffsetAt(row) != card_offset) ++row;
  return std::min(row, count);
}

uint32_t AddressFile::InsertEntry(unsigned char letter, const EntrySlot& entry,
                                  int64_t previous_offset) {
  uint32_t row = std::min(EntryRow(letters_.Start(letter)), entry_count());
  if (previous_offset > 0) {
    row = FindRow(static_cast<uint32_t>(previous_offset), row);
    if (row < entry_count()) ++row;
  }
  entries_.InsertGap(kEntrySize * row, kEntrySize);
  SetEntry(row, entry);
  header_.set_count(static_cast<uint16_t>(header_.count() + 1));
  letters_.EntryAdded(letter);
  return row;
}

void AddressFile::RemoveEntry(uint32_t deleted_offset, uint32_t moved_from,
                              unsigned char deleted_letter, unsigned char moved_letter,
                              uint8_t selection_bit, EntryChange* removed, EntryChange* moved) {
  const bool deleted_first =
      static_cast<signed char>(deleted_letter) < static_cast<signed char>(moved_letter);
  const uint32_t first = EntryRow(letters_.Start(deleted_first ? deleted_letter : moved_letter));
  const auto report = [&](uint32_t row) {
    return EntryChange{Entry(row).bit(selection_bit), static_cast<int16_t>(row), deleted_offset};
  };
  const uint32_t deleted_row = FindRow(deleted_offset, first);
  if (moved_from != deleted_offset) {
    const uint32_t moved_row = FindRow(moved_from, first);
    if (moved_row < entry_count()) {
      *moved = report(moved_row);
      EntrySlot entry = Entry(moved_row);
      entry.set_card_offset(deleted_offset);
      SetEntry(moved_row, entry);
    }
  }
  if (deleted_row < entry_count()) {
    *removed = report(deleted_row);
    entries_.Erase(kEntrySize * deleted_row, kEntrySize);
  }
  header_.set_count(static_cast<uint16_t>(header_.count() - 1));
  letters_.EntryRemoved(deleted_letter);
}

void AddressFile::SelectRowOfCard(uint32_t card_offset) {
  const uint32_t row = FindRow(card_offset);
  if (row < entry_count()) header_.set_current_row(static_cast<uint16_t>(row));
  FlushHeader();
}

void AddressFile::MarkChanging() {
  if (file_ == nullptr || is_changing()) return;
  header_on_disk_.set_count(AddressHeader::kCountWhileChanging);
  file_->Write(0, header_on_disk_.bytes());
  file_->Sync();
}

void AddressFile::Flush() {
  if (file_ == nullptr) return;
  entries_.Flush(*file_, kAddressEntriesOffset);
  FlushHeader();
}

void AddressFile::FlushHeader() {
  if (file_ == nullptr || std::ranges::equal(header_.bytes(), header_on_disk_.bytes())) return;
  file_->Write(0, header_.bytes());
  header_on_disk_ = header_;
}

void AddressFile::FlushCounter(uint8_t bit) {
  if (file_ == nullptr) return;
  const size_t at = size_t{2} * bit;
  file_->Write(kAddressCountersOffset + at, ByteView(counters_).subspan(at, 2));
}

}  // namespace carnetel
