// What the tests of the stores share: a directory in memory with a clock that stands still, cards
// made in one line, and key index files composed by hand.
#pragma once

#include <gtest/gtest.h>

#include <initializer_list>
#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "base/messages.h"
#include "platform/clock.h"
#include "platform/memory_file_system.h"
#include "storage/card_dispatch.h"
#include "storage/directory.h"
#include "storage/index_format.h"
#include "tests/support/same_bytes.h"

namespace carnetel {

// A card with these fields and zeros; texts are OEM bytes.
CardRecord MakeCard(std::string_view ste1, std::string_view nom = {});
CardRecord MakeCard(std::initializer_list<std::pair<int, std::string_view>> fields);

// A key of at most 10 bytes, zero padded.
IndexKey KeyOf(std::string_view text);

// Offset of the card with this number, counted from 1.
constexpr uint32_t CardOffset(uint32_t number) {
  return static_cast<uint32_t>(kCardSize * number);
}

// Slots of a page as a test writes them down: {"DUPONT", 768}; {"", 0} is an empty slot.
struct ExpectedSlot {
  std::string key;
  uint32_t card_offset = 0;
};
using ExpectedSlots = std::vector<ExpectedSlot>;

// 506 bytes: letter, zero, the slots, zeros behind.
FileBytes PageBytes(char letter, const ExpectedSlots& slots);

// Composes a whole key index: one empty page a letter, and for the letters named the pages given,
// in this order.
class IndexBuilder {
 public:
  // The first page of a letter takes the place of its empty one, further ones lengthen its chain.
  IndexBuilder& Page(char letter, const ExpectedSlots& slots);
  // A page behind all others, whatever its letter.
  IndexBuilder& Behind(const FileBytes& page);
  [[nodiscard]] FileBytes Bytes() const;

 private:
  std::map<char, std::vector<FileBytes>> chains_;
  FileBytes behind_;
};

// A main file with the seconds of its cards and of its header set to zero.
FileBytes WithoutTimes(FileBytes main_file);

class StoreFixture : public ::testing::Test {
 protected:
  static constexpr int64_t kStartTime = 1'000'000'000;
  static constexpr std::string_view kStem = "/carnets/ESSAI";

  // Opens the directory (made when missing) under the key field given; an open one is closed first.
  // `open_result` tells what came out.
  Directory& Open(int key_field = kSte1, AddressMode mode = AddressMode::kNormal);
  // A new directory with `count` cards whose companies are "CARTE 00001" and so on; card n lies at
  // CardOffset(n).
  Directory& Build(uint32_t count);
  // Closes the open directory and lets go of it.
  void Close();
  // Adds a card to the open directory; returns its offset, 0 when it was refused.
  uint32_t Add(const CardRecord& card, bool marked = false);
  uint32_t Add(std::string_view ste1, std::string_view nom = {}) {
    return Add(MakeCard(ste1, nom));
  }
  // Deletes the card at the offset from the open directory; true when it is gone.
  bool Delete(uint32_t card_offset);
  // The card at an offset of the open directory; a cleared one when there is none.
  CardRecord CardAt(uint32_t card_offset);

  Directory& directory() { return *directory_; }

  // Path of a file of the family, such as Path(".ADR").
  [[nodiscard]] static std::string Path(std::string_view extension) {
    return std::string(kStem) + std::string(extension);
  }
  // Files as they are on the disk.
  [[nodiscard]] FileBytes Contents(std::string_view extension) const {
    return files.Contents(Path(extension));
  }
  [[nodiscard]] FileBytes MainFile() const { return Contents(".DAN"); }
  [[nodiscard]] FileBytes IndexFile(int number) const {
    return Contents(number == 1 ? ".I01" : ".I02");
  }
  [[nodiscard]] FileBytes AddressFileBytes() const { return Contents(".ADR"); }

  FakeClock clock{kStartTime};
  MemoryFileSystem files{clock};
  SilentProgress progress;
  OpenResult open_result = OpenResult::kNoStore;

 private:
  std::unique_ptr<Directory> directory_;
};

}  // namespace carnetel
