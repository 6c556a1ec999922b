// A second, plain account of how a key index changes, for tests that hold the real one against it:
// it works on the bytes of the whole file, searches slot after slot from the letter's lower bound
// and shifts with single moves of 14 bytes. Nothing in it is clever.
#pragma once

#include <optional>

#include "storage/key_index.h"
#include "tests/storage/store_fixture.h"

namespace carnetel {

class LiteralIndex {
 public:
  explicit LiteralIndex(FileBytes bytes) : bytes_(std::move(bytes)) {}

  [[nodiscard]] const FileBytes& bytes() const { return bytes_; }

  // Inserts, re-points, removes or searches, as KeyIndex::UpdateIndex.
  IndexUpdate UpdateIndex(const IndexKey& key, uint32_t card_offset, uint32_t old_offset,
                          IndexMode mode);
  // Clears every slot that cannot name a card of a main file of `main_size` bytes.
  void ClearStraySlots(uint32_t main_size);

 private:
  struct Found {
    int result = -1;
    int page = 0;
    int slot = 0;
    uint32_t previous = 0;
  };

  [[nodiscard]] bool WholePageAt(int page) const {
    return page >= 0 && page + 506 <= static_cast<int>(bytes_.size());
  }
  [[nodiscard]] int SignedAt(int position) const {
    return static_cast<signed char>(bytes_[static_cast<size_t>(position)]);
  }
  [[nodiscard]] uint32_t CardAt(int slot_position) const {
    return LoadLe32(bytes_, static_cast<size_t>(slot_position) + 10);
  }
  [[nodiscard]] int Compare(int slot_position, const IndexKey& key) const;
  [[nodiscard]] int EndOfChain(int letter) const;
  [[nodiscard]] Found Search(const IndexKey& key, IndexMode mode) const;

  IndexUpdate Insert(const IndexKey& key, uint32_t card_offset, const Found& found);
  IndexUpdate InsertWithNewPage(const IndexKey& key, uint32_t card_offset, const Found& found,
                                int last_page);
  void Shift(const IndexKey& key, uint32_t card_offset, int into, int from, uint32_t* previous);
  IndexUpdate Repoint(int letter, uint32_t card_offset, uint32_t old_offset, const Found& found);
  IndexUpdate Remove(uint32_t card_offset, const Found& found);

  void MoveBytes(int from, int to, int count);
  void PutSlot(int position, const IndexKey& key, uint32_t card_offset);
  void ClearSlot(int position);

  FileBytes bytes_;
};

}  // namespace carnetel
