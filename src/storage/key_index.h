// One of the two sorted indexes of a directory. There is no tree and no free list: a page that is
// full gets a successor by moving every later page one page down, a page once made is never given
// back, and equal keys stay in order of insertion. The whole file is held in memory (at most half
// a megabyte) and changes reach the disk as one range when the operation ends.
//
// Searches start at a lower bound and go forward over everything in front of the letter. An index
// whose pages and keys are all in order, as nearly every one is, is searched by halves instead,
// with the same outcome; `in_order_` tells which.
#pragma once

#include <memory>
#include <string>

#include "storage/file_image.h"
#include "storage/index_format.h"

namespace carnetel {

enum class IndexMode { kSearch = 0, kInsert = 1, kRepoint = 3, kRemove = 4 };

struct IndexUpdate {
  // 0 or above: done (a slot number for searches). -1: the key has no place, or the card is not
  // where it can be reached. -2, -3: a search that met no exact slot.
  int result = -1;
  // After an insert: the card in front of the new one, 0 when there is none.
  uint32_t previous = 0;
};

// A slot by the position of its page and its number there.
struct SlotPlace {
  size_t page = 0;
  size_t slot = 0;
};

class KeyIndex {
 public:
  // `path` is where the index lies or is to lie; nothing is opened yet.
  KeyIndex(FileSystem& files, std::string path) : files_(&files), path_(std::move(path)) {}

  // Takes an existing index for a main file of `card_end` bytes in whole cards, and clears every
  // slot that cannot name a card. The holes stay. False, and the file deleted, when it is not whole
  // or `counts_differ` tells that the address file has another count than the main file.
  bool CheckKeyIndex(uint32_t card_end, bool counts_differ);
  // Starts a new index of 36 empty pages; false when the file cannot be opened.
  bool CreateEmpty();
  [[nodiscard]] bool is_open() const { return file_ != nullptr; }
  [[nodiscard]] const std::string& path() const { return path_; }

  // Inserts `card_offset` under `key`, re-points the slot of `old_offset` to it, or removes its
  // slot. Only a card among the first 36 of its letter can be removed; for any other the slot stays
  // and the result is -1. Callers go on regardless, the next opening repairs.
  IndexUpdate UpdateIndex(const IndexKey& key, uint32_t card_offset, uint32_t old_offset,
                          IndexMode mode);

  [[nodiscard]] size_t page_count() const { return image_.size() / kIndexPageSize; }
  [[nodiscard]] unsigned char PageLetter(size_t page) const { return LoadU8(image_.bytes(), page); }
  [[nodiscard]] IndexSlot SlotAt(size_t page, size_t slot) const {
    return IndexSlot::Load(image_.At(SlotPosition(page, slot), kIndexSlotSize));
  }
  // The first slot whose key is not below `key`, among those of its letter; in an index that is not
  // in order, where the search for the letter starts. `key` is a filed key.
  [[nodiscard]] SlotPlace LowerBound(const IndexKey& key) const;
  // True when a whole page lies at this position.
  [[nodiscard]] bool HasPage(size_t page) const {
    return page % kIndexPageSize == 0 && page + kIndexPageSize <= image_.size();
  }

  // Calls `visit(const IndexSlot&)` for every slot with a key and an offset, in file order.
  template <class Visit>
  void ForEachUsed(Visit visit) const {
    for (size_t page = 0; HasPage(page); page += kIndexPageSize) {
      for (size_t slot = 0; slot < kSlotsPerPage; ++slot) {
        const IndexSlot entry = SlotAt(page, slot);
        if (entry.used()) visit(entry);
      }
    }
  }

  // Takes out every used slot for which `stale(const IndexSlot&)` is true, closing its chain up.
  template <class Stale>
  void RemoveSlotsIf(Stale stale) {
    // From the end, so that what is pulled up has been looked at.
    for (size_t page = page_count() * kIndexPageSize; page > 0;) {
      page -= kIndexPageSize;
      for (size_t slot = kSlotsPerPage; slot-- > 0;) {
        const IndexSlot entry = SlotAt(page, slot);
        if (entry.used() && stale(entry)) CloseGap(page, slot);
      }
    }
    in_order_ = IsInOrder();
  }

  enum class FlushTo { kFile, kDisk };
  // Brings the file to what the image holds; with kDisk that is on the disk when this returns.
  void Flush(FlushTo to = FlushTo::kFile);
  // Whether the file was changed since it was opened or made.
  [[nodiscard]] bool was_written() const { return was_written_; }
  [[nodiscard]] bool write_failed() const { return file_ != nullptr && file_->write_failed(); }

 private:
  struct Place {
    int result = -1;
    size_t page = 0;
    size_t slot = 0;
    uint32_t previous = 0;
  };

  // Where a key belongs, by going over every slot from the letter's lower bound.
  [[nodiscard]] Place FindByScan(const IndexKey& key, IndexMode mode) const;
  // The same in an index that is in order.
  [[nodiscard]] Place FindByHalves(const IndexKey& key, IndexMode mode) const;
  [[nodiscard]] Place PlaceInChain(const IndexKey& key, size_t chain, size_t used,
                                   IndexMode mode) const;
  // The first page behind the chain of a letter, or the chain's empty page.
  [[nodiscard]] size_t EndOfChain(unsigned char letter, size_t from) const;
  [[nodiscard]] size_t FirstPageNotBelow(unsigned char letter) const;
  // The first page, from the one of number `from` on, that `holds` is true of, as it is then of all
  // behind it; the end of the file when there is none.
  template <class Predicate>
  [[nodiscard]] size_t FirstPageThat(Predicate holds, size_t from) const;
  [[nodiscard]] bool IsInOrder() const;
  // Pages are never given back: a file of fewer than a new one's, or of parts of one, was cut
  // short.
  [[nodiscard]] bool IsWhole() const;

  IndexUpdate Insert(const IndexSlot& entry, const Place& place);
  IndexUpdate InsertIntoFullChain(const IndexSlot& entry, const Place& place, size_t last_page);
  IndexUpdate InsertIntoFullLastChain(const Place& place, size_t last_page);
  void ShiftAndStore(const IndexSlot& entry, const Place& place, size_t last_page,
                     uint32_t* previous);
  IndexUpdate Repoint(unsigned char letter, const Place& place, uint32_t card_offset,
                      uint32_t old_offset);
  IndexUpdate RemoveSlot(const Place& place, uint32_t card_offset);
  void CloseGap(size_t page, size_t slot);

  void StoreSlot(size_t page, size_t slot, const IndexSlot& entry);
  [[nodiscard]] unsigned char SlotLetter(size_t page, size_t slot) const {
    return LoadU8(image_.bytes(), SlotPosition(page, slot));
  }
  [[nodiscard]] uint32_t SlotOffset(size_t page, size_t slot) const {
    return LoadLe32(image_.bytes(), SlotPosition(page, slot) + kSlotCardOffset);
  }
  [[nodiscard]] std::string_view SlotKey(size_t page, size_t slot) const {
    return AsChars(image_.At(SlotPosition(page, slot), kKeySize));
  }
  // Moves the bytes of slots [first, last] of a page one slot down; the last one's place is lost.
  void MoveSlotsDown(size_t page, size_t first, size_t last);

  FileSystem* files_;
  std::string path_;
  std::unique_ptr<File> file_;
  FileImage image_;
  bool in_order_ = true;
  bool was_written_ = false;
};

}  // namespace carnetel
