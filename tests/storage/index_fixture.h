// One key index in memory, without a directory around it, for the tests of its bytes.
#pragma once

#include "tests/storage/store_fixture.h"

namespace carnetel {

// A main file of this size holds every card that these tests name.
inline constexpr uint32_t kLargeMainFile = CardOffset(1000);

class IndexFixture : public ::testing::Test {
 protected:
  // Begins with an empty index.
  IndexFixture() {
    EXPECT_TRUE(index.CreateEmpty());
    index.Flush();
  }

  // Begins again with these bytes, as an opening finds them.
  void StartFrom(const FileBytes& bytes, uint32_t main_size = kLargeMainFile) {
    files.SetContents(kPath, bytes);
    index = KeyIndex(files, kPath);
    EXPECT_TRUE(index.CheckKeyIndex(main_size, false));
  }
  IndexUpdate Update(std::string_view key, uint32_t card_offset, uint32_t old_offset,
                     IndexMode mode) {
    const IndexUpdate update = index.UpdateIndex(KeyOf(key), card_offset, old_offset, mode);
    index.Flush();
    return update;
  }
  IndexUpdate Insert(std::string_view key, uint32_t card_offset) {
    return Update(key, card_offset, 0, IndexMode::kInsert);
  }
  int Remove(std::string_view key, uint32_t card_offset) {
    return Update(key, card_offset, 0, IndexMode::kRemove).result;
  }
  int Repoint(std::string_view key, uint32_t card_offset, uint32_t old_offset) {
    return Update(key, card_offset, old_offset, IndexMode::kRepoint).result;
  }
  int Search(std::string_view key) { return Update(key, 0, 0, IndexMode::kSearch).result; }
  [[nodiscard]] FileBytes Bytes() const { return files.Contents(kPath); }

  const std::string kPath = "/ESSAI.I01";
  FakeClock clock;
  MemoryFileSystem files{clock};
  KeyIndex index{files, kPath};
};

// Slots of the cards `first` to `last`: card n has the key of the letter and 10 x n in three
// digits, such as "A010" for card 1, and lies at CardOffset(n).
inline ExpectedSlots Numbered(char letter, int first, int last) {
  ExpectedSlots slots;
  for (int number = first; number <= last; ++number) {
    const std::string digits = std::to_string(1000 + 10 * number).substr(1);
    slots.push_back({letter + digits, CardOffset(static_cast<uint32_t>(number))});
  }
  return slots;
}

// Lists one behind the other.
inline ExpectedSlots operator+(ExpectedSlots left, const ExpectedSlots& right) {
  left.insert(left.end(), right.begin(), right.end());
  return left;
}

}  // namespace carnetel
