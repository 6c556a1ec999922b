#include "tests/storage/index_fixture.h"

namespace carnetel {
namespace {

class KeyIndexRemoveTest : public IndexFixture {};

TEST_F(KeyIndexRemoveTest, TheOnlyCardOfALetterLeavesItsEmptyPage) {
  Insert("DUPONT", 768);
  EXPECT_EQ(Remove("DUPONT", 768), 0);
  EXPECT_TRUE(SameBytes(IndexBuilder().Bytes(), Bytes()));
}

TEST_F(KeyIndexRemoveTest, TheFirstCardPullsTheOthersUp) {
  StartFrom(IndexBuilder().Page('A', Numbered('A', 1, 3)).Bytes());
  EXPECT_EQ(Remove("A010", CardOffset(1)), 0);
  EXPECT_TRUE(SameBytes(IndexBuilder().Page('A', Numbered('A', 2, 3)).Bytes(), Bytes()));
}

TEST_F(KeyIndexRemoveTest, AMiddleCardPullsTheLaterOnesUp) {
  StartFrom(IndexBuilder().Page('A', Numbered('A', 1, 3)).Bytes());
  EXPECT_EQ(Remove("A020", CardOffset(2)), 0);
  EXPECT_TRUE(SameBytes(IndexBuilder().Page('A', Numbered('A', 1, 1) + Numbered('A', 3, 3)).Bytes(),
                        Bytes()));
}

TEST_F(KeyIndexRemoveTest, TheLastCardLeavesTheOthers) {
  StartFrom(IndexBuilder().Page('A', Numbered('A', 1, 3)).Bytes());
  EXPECT_EQ(Remove("A030", CardOffset(3)), 0);
  EXPECT_TRUE(SameBytes(IndexBuilder().Page('A', Numbered('A', 1, 2)).Bytes(), Bytes()));
}

TEST_F(KeyIndexRemoveTest, OfEqualKeysTheOneOfTheCardGoes) {
  StartFrom(IndexBuilder().Page('D', {{"DUPONT", 768}, {"DUPONT", 1536}}).Bytes());
  EXPECT_EQ(Remove("DUPONT", 1536), 0);
  EXPECT_TRUE(SameBytes(IndexBuilder().Page('D', {{"DUPONT", 768}}).Bytes(), Bytes()));
}

TEST_F(KeyIndexRemoveTest, OnlyTheLetterOfTheKeyCounts) {
  StartFrom(IndexBuilder().Page('A', Numbered('A', 1, 2)).Bytes());
  EXPECT_EQ(Remove("AZZZ", CardOffset(1)), 0);
  EXPECT_TRUE(SameBytes(IndexBuilder().Page('A', Numbered('A', 2, 2)).Bytes(), Bytes()));
}

TEST_F(KeyIndexRemoveTest, AKeyFiledUnderZeroIsFoundThere) {
  Insert("\x90LAN", 768);
  EXPECT_EQ(Remove("\x90LAN", 768), 0);
  EXPECT_TRUE(SameBytes(IndexBuilder().Bytes(), Bytes()));
}

TEST_F(KeyIndexRemoveTest, AFullPageAloneLosesOneSlot) {
  StartFrom(IndexBuilder().Page('A', Numbered('A', 1, 36)).Page('B', {{"B", 76800}}).Bytes());
  EXPECT_EQ(Remove("A360", CardOffset(36)), 0);
  EXPECT_TRUE(SameBytes(
      IndexBuilder().Page('A', Numbered('A', 1, 35)).Page('B', {{"B", 76800}}).Bytes(), Bytes()));
}

TEST_F(KeyIndexRemoveTest, TheNextPageGivesItsFirstSlotAndStaysEmpty) {
  StartFrom(
      IndexBuilder().Page('A', Numbered('A', 1, 36)).Page('A', Numbered('A', 37, 37)).Bytes());
  EXPECT_EQ(Remove("A010", CardOffset(1)), 0);
  ASSERT_EQ(Bytes().size(), 18722U);
  EXPECT_TRUE(
      SameBytes(IndexBuilder().Page('A', Numbered('A', 2, 37)).Page('A', {}).Bytes(), Bytes()));
}

TEST_F(KeyIndexRemoveTest, EveryLaterPageOfTheChainGivesOneSlot) {
  StartFrom(IndexBuilder()
                .Page('A', Numbered('A', 1, 36))
                .Page('A', Numbered('A', 37, 72))
                .Page('A', Numbered('A', 73, 75))
                .Page('B', {{"B", 76800}})
                .Bytes());
  EXPECT_EQ(Remove("A100", CardOffset(10)), 0);
  EXPECT_TRUE(SameBytes(IndexBuilder()
                            .Page('A', Numbered('A', 1, 9) + Numbered('A', 11, 37))
                            .Page('A', Numbered('A', 38, 73))
                            .Page('A', Numbered('A', 74, 75))
                            .Page('B', {{"B", 76800}})
                            .Bytes(),
                        Bytes()));
}

TEST_F(KeyIndexRemoveTest, InTheLastSlotOfAPageTheNextPageFillsIt) {
  StartFrom(
      IndexBuilder().Page('A', Numbered('A', 1, 36)).Page('A', Numbered('A', 37, 38)).Bytes());
  EXPECT_EQ(Remove("A360", CardOffset(36)), 0);
  EXPECT_TRUE(SameBytes(IndexBuilder()
                            .Page('A', Numbered('A', 1, 35) + Numbered('A', 37, 37))
                            .Page('A', Numbered('A', 38, 38))
                            .Bytes(),
                        Bytes()));
}

TEST_F(KeyIndexRemoveTest, ACardOnTheSecondPageStays) {
  const FileBytes before =
      IndexBuilder().Page('A', Numbered('A', 1, 36)).Page('A', Numbered('A', 37, 38)).Bytes();
  StartFrom(before);
  EXPECT_EQ(Remove("A370", CardOffset(37)), -1);
  EXPECT_TRUE(SameBytes(before, Bytes()));
}

TEST_F(KeyIndexRemoveTest, ACardThatIsNotThereChangesNothing) {
  const FileBytes before = IndexBuilder().Page('A', Numbered('A', 1, 3)).Bytes();
  StartFrom(before);
  EXPECT_EQ(Remove("A010", CardOffset(9)), -1);
  EXPECT_EQ(Remove("B", CardOffset(1)), -1);
  EXPECT_EQ(Remove("", CardOffset(1)), -1);
  EXPECT_TRUE(SameBytes(before, Bytes()));
}

TEST_F(KeyIndexRemoveTest, OnTheFirst36OfALetterAHoleInFrontDoesNotHideACard) {
  StartFrom(IndexBuilder().Page('A', {{"A010", 768}, {"", 0}, {"A030", 2304}}).Bytes());
  EXPECT_EQ(Remove("A030", 2304), 0);
  EXPECT_TRUE(SameBytes(IndexBuilder().Page('A', {{"A010", 768}}).Bytes(), Bytes()));
}

TEST_F(KeyIndexRemoveTest, ASlotOfAnotherLetterInFrontOfTheStopIsFoundToo) {
  // The search for B stops at the C that strayed into the page of A.
  StartFrom(IndexBuilder().Page('A', {{"A010", 768}, {"C", 1536}}).Bytes());
  EXPECT_EQ(Remove("B", 768), 0);
  EXPECT_TRUE(SameBytes(IndexBuilder().Page('A', {{"C", 1536}}).Bytes(), Bytes()));
}

}  // namespace
}  // namespace carnetel
