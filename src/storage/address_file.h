// The address file of an open directory: header, counters and entries in memory (half a megabyte
// for a full directory) and the handle through which changes reach the disk. It is valid only as an
// exact image of the active index; a file that is not is deleted and made anew.
//
// What is on the disk after an operation: the entries, then the header with the true count. The
// counter of the selection waits for the list view to close.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "storage/address_format.h"
#include "storage/file_image.h"
#include "storage/key_index.h"
#include "storage/letter_table.h"

namespace carnetel {

// What an insert or a delete did to one entry, for the list that shows it.
struct EntryChange {
  bool marked = false;
  int16_t row = 0;
  uint32_t card_offset = 0;
};

class AddressFile {
 public:
  AddressFile(FileSystem& files, std::string path) : files_(&files), path_(std::move(path)) {}

  [[nodiscard]] const std::string& path() const { return path_; }
  [[nodiscard]] bool is_open() const { return file_ != nullptr; }

  // Opens an existing file; false when there is none or it cannot be opened.
  bool Open();
  // True when the entries mirror the slots of the active index in number and order, and the count
  // of the header is that of the main file.
  [[nodiscard]] bool CheckAddressFile(const KeyIndex& active, uint32_t card_count) const;
  // Makes an empty file: header and counters, no entries; false when it cannot be created.
  bool CreateAddressFile();
  void Close();
  void CloseAndDelete();

  AddressHeader& header() { return header_; }
  [[nodiscard]] const AddressHeader& header() const { return header_; }
  LetterTable& letters() { return letters_; }
  [[nodiscard]] const LetterTable& letters() const { return letters_; }
  void BuildLetterTable(const KeyIndex& active);

  [[nodiscard]] uint16_t Counter(uint8_t bit) const { return LoadLe16(counters_, size_t{2} * bit); }
  void SetCounter(uint8_t bit, uint16_t value);

  // Entries by row, from 0.
  [[nodiscard]] uint32_t entry_count() const {
    return static_cast<uint32_t>(entries_.size() / kEntrySize);
  }
  [[nodiscard]] EntrySlot Entry(uint32_t row) const {
    return EntrySlot(entries_.At(kEntrySize * row, kEntrySize));
  }
  [[nodiscard]] std::vector<EntrySlot> Entries() const;
  // Puts these entries in the place of all others, in the order of the active index.
  void TakeEntries(const std::vector<EntrySlot>& entries, const KeyIndex& active);
  // Every entry of `former` that has the selection bit replaces the one of its card, looked for
  // from the last hit on: a card that has moved to the front of it is not found. Returns how many.
  int32_t KeepMarked(const std::vector<EntrySlot>& former, uint8_t selection_bit);
  void SetEntry(uint32_t row, const EntrySlot& entry);
  void AppendEntry(const EntrySlot& entry) { entries_.Append(entry.bytes()); }
  [[nodiscard]] uint32_t CardOffsetAt(uint32_t row) const {
    return LoadLe32(entries_.bytes(), kEntrySize * row);
  }
  // The row of the entry that holds `card_offset`, searched from `from`; entry_count() when none.
  [[nodiscard]] uint32_t FindRow(uint32_t card_offset, uint32_t from = 0) const;

  // Puts an entry in front of row (position - 320) / 16: behind that of `previous_offset`, looked
  // for from the letter's first entry on, or at the letter's first entry when that is 0 or below.
  // When the previous card is not found there, the entry lands behind all others. Returns its row.
  uint32_t InsertEntry(unsigned char letter, const EntrySlot& entry, int64_t previous_offset);

  // Takes the entry of `deleted_offset` out and gives that of `moved_from`, the card that was moved
  // into the freed place, its new offset. Only entries from the lower of the two letters on are
  // looked at. Marks and flags move with their entries. Fills `removed` and, when a card was moved,
  // `moved`; `selection_bit` tells which mark they report.
  void RemoveEntry(uint32_t deleted_offset, uint32_t moved_from, unsigned char deleted_letter,
                   unsigned char moved_letter, uint8_t selection_bit, EntryChange* removed,
                   EntryChange* moved);

  // Makes the card's row the saved current row of the whole-file list, on disk too; an offset that
  // no entry holds changes nothing.
  void SelectRowOfCard(uint32_t card_offset);

  // Puts a count on the disk that no family has, until the next Flush. It is there when this
  // returns, before the main file changes: not even a power cut loses it alone.
  void MarkChanging();
  [[nodiscard]] bool is_changing() const {
    return header_on_disk_.count() == AddressHeader::kCountWhileChanging;
  }
  // Entries first, then the header: a file that a crash cut short has a count that tells it.
  void Flush();
  void FlushCounter(uint8_t bit);
  [[nodiscard]] bool write_failed() const { return file_ != nullptr && file_->write_failed(); }

 private:
  void FlushHeader();

  FileSystem* files_;
  std::string path_;
  std::unique_ptr<File> file_;
  AddressHeader header_;
  AddressHeader header_on_disk_;
  std::array<std::byte, kAddressCountersSize> counters_{};
  FileImage entries_;
  LetterTable letters_;
};

}  // namespace carnetel
