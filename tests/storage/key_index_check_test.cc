#include "tests/storage/index_fixture.h"

namespace carnetel {
namespace {

constexpr uint32_t kTwoCards = 768 * 3;

class KeyIndexCheckTest : public IndexFixture {
 protected:
  // Checks an index whose page of D holds `slots` against a main file of two cards and tells what
  // that page must hold then.
  void ExpectAfterCheck(const ExpectedSlots& slots, const ExpectedSlots& expected) {
    StartFrom(IndexBuilder().Page('D', slots).Bytes(), kTwoCards);
    EXPECT_TRUE(SameBytes(IndexBuilder().Page('D', expected).Bytes(), Bytes()));
  }
};

TEST_F(KeyIndexCheckTest, SlotsOfCardsStay) {
  ExpectAfterCheck({{"DA", 768}, {"DB", 1536}}, {{"DA", 768}, {"DB", 1536}});
}

TEST_F(KeyIndexCheckTest, AConsistentIndexIsNotWritten) {
  files.SetContents(kPath, IndexBuilder().Page('A', Numbered('A', 1, 36)).Bytes());
  index = KeyIndex(files, kPath);
  files.ResetCounts();
  EXPECT_TRUE(index.CheckKeyIndex(kLargeMainFile, false));
  EXPECT_EQ(files.counts().writes, 0);
  EXPECT_EQ(files.counts().truncates, 0);
}

TEST_F(KeyIndexCheckTest, AnOffsetBelowTheFirstCardIsCleared) {
  ExpectAfterCheck({{"DA", 767}, {"DB", 1}, {"DC", 0}, {"DD", 768}},
                   {{"", 0}, {"", 0}, {"", 0}, {"DD", 768}});
}

TEST_F(KeyIndexCheckTest, AnOffsetAtOrPastTheEndIsCleared) {
  ExpectAfterCheck({{"DA", 2304}, {"DB", 3072}, {"DC", 0xFFFFFFFF}, {"DD", 2303}},
                   {{"", 0}, {"", 0}, {"", 0}, {"DD", 2303}});
}

TEST_F(KeyIndexCheckTest, AnAccentAsFirstByteIsCleared) {
  ExpectAfterCheck({{"\x90LAN", 768}, {"\x80", 1536}, {"\xFF", 768}, {"DD", 768}},
                   {{"", 0}, {"", 0}, {"", 0}, {"DD", 768}});
}

TEST_F(KeyIndexCheckTest, AFirstByteBelowZeroIsCleared) {
  ExpectAfterCheck({{" A", 768}, {"/A", 1536}, {"", 768}}, {{"", 0}, {"", 0}, {"", 0}});
}

TEST_F(KeyIndexCheckTest, AFirstByteBelowZeroWithoutACardStays) {
  ExpectAfterCheck({{"\x90LAN", 767}, {"/A", 0}}, {{"\x90LAN", 767}, {"/A", 0}});
}

TEST_F(KeyIndexCheckTest, TheFirstPlaceOfAllIsZero) {
  ExpectAfterCheck({{"0", 768}, {":", 768}, {"z", 768}}, {{"0", 768}, {":", 768}, {"z", 768}});
}

TEST_F(KeyIndexCheckTest, HolesAreNotClosedUp) {
  ExpectAfterCheck({{"DA", 768}, {"DB", 9216}, {"DC", 1536}}, {{"DA", 768}, {"", 0}, {"DC", 1536}});
}

TEST_F(KeyIndexCheckTest, EveryPageIsLookedAt) {
  StartFrom(IndexBuilder()
                .Page('0', {{"0", 9216}})
                .Page('A', Numbered('A', 1, 36))
                .Page('A', Numbered('A', 37, 37))
                .Page('Z', {{"Z", 9216}})
                .Bytes(),
            kTwoCards);
  EXPECT_TRUE(
      SameBytes(IndexBuilder().Page('A', Numbered('A', 1, 2)).Page('A', {}).Bytes(), Bytes()));
}

TEST_F(KeyIndexCheckTest, WithoutCardsEverySlotIsCleared) {
  StartFrom(IndexBuilder().Page('A', Numbered('A', 1, 3)).Bytes(), 768);
  EXPECT_TRUE(SameBytes(IndexBuilder().Bytes(), Bytes()));
}

TEST_F(KeyIndexCheckTest, AnEmptyFileIsBadAndDeleted) {
  files.SetContents(kPath, {});
  index = KeyIndex(files, kPath);
  EXPECT_FALSE(index.CheckKeyIndex(kLargeMainFile, false));
  EXPECT_FALSE(index.is_open());
  EXPECT_FALSE(files.Exists(kPath));
}

TEST_F(KeyIndexCheckTest, AMissingFileIsBad) {
  files.Remove(kPath);
  index = KeyIndex(files, kPath);
  EXPECT_FALSE(index.CheckKeyIndex(kLargeMainFile, false));
  EXPECT_FALSE(index.is_open());
}

TEST_F(KeyIndexCheckTest, AnotherCountInTheAddressFileMakesItBad) {
  Insert("DUPONT", 768);
  index = KeyIndex(files, kPath);
  EXPECT_FALSE(index.CheckKeyIndex(kLargeMainFile, true));
  EXPECT_FALSE(files.Exists(kPath));
}

TEST_F(KeyIndexCheckTest, ABadIndexIsMadeAnewFromNothing) {
  files.SetContents(kPath, {});
  index = KeyIndex(files, kPath);
  EXPECT_FALSE(index.CheckKeyIndex(kLargeMainFile, false));
  EXPECT_TRUE(index.CreateEmpty());
  index.Flush();
  EXPECT_TRUE(SameBytes(IndexBuilder().Bytes(), Bytes()));
}

TEST_F(KeyIndexCheckTest, UsedSlotsAreVisitedInTheOrderOfTheFile) {
  StartFrom(IndexBuilder()
                .Page('0', {{"0", 768}})
                .Page('A', {{"", 0}, {"AB", 1536}, {"AA", 768}})
                .Page('A', {{"AC", 1536}})
                .Bytes(),
            kTwoCards);
  std::string visited;
  index.ForEachUsed([&](const IndexSlot& slot) {
    visited +=
        CopyFieldText(KeyView(slot.key), kKeySize) + "@" + std::to_string(slot.card_offset) + " ";
  });
  EXPECT_EQ(visited, "0@768 AB@1536 AA@768 AC@1536 ");
}

}  // namespace
}  // namespace carnetel
