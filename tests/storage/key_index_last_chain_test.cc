// The chain of Z has no page behind it that could be moved: what it does once its page is full is
// odd, and it stays so, since the next opening heals it.
#include "tests/storage/index_fixture.h"

namespace carnetel {
namespace {

constexpr uint32_t kNewCard = CardOffset(500);

class KeyIndexLastChainTest : public IndexFixture {};

FileBytes FullZ() {
  return IndexBuilder().Page('Z', Numbered('Z', 1, 36)).Bytes();
}

FileBytes FullZ(int copies) {
  IndexBuilder builder;
  for (int copy = 0; copy < copies; ++copy) builder.Page('Z', Numbered('Z', 1, 36));
  return builder.Bytes();
}

TEST_F(KeyIndexLastChainTest, TakesThirtySixCardsAsAnyOther) {
  StartFrom(IndexBuilder().Page('Z', Numbered('Z', 1, 35)).Bytes());
  EXPECT_EQ(Insert("Z360", CardOffset(36)).previous, CardOffset(35));
  EXPECT_TRUE(SameBytes(FullZ(), Bytes()));
}

TEST_F(KeyIndexLastChainTest, FullItTakesNoKeyAtItsEnd) {
  StartFrom(FullZ());
  EXPECT_EQ(Insert("Z370", kNewCard).result, -1);
  EXPECT_TRUE(SameBytes(FullZ(), Bytes()));
}

TEST_F(KeyIndexLastChainTest, FullInTheMiddleItsPageIsCopiedAndTheKeyIsNotWritten) {
  StartFrom(FullZ());
  const IndexUpdate update = Insert("Z015", kNewCard);
  EXPECT_EQ(update.result, 0);
  EXPECT_EQ(update.previous, CardOffset(1));
  EXPECT_TRUE(SameBytes(FullZ(2), Bytes()));
}

TEST_F(KeyIndexLastChainTest, FullInFrontItsPageIsCopiedToo) {
  StartFrom(FullZ());
  const IndexUpdate update = Insert("Z005", kNewCard);
  EXPECT_EQ(update.result, 0);
  EXPECT_EQ(update.previous, 0U);
  EXPECT_TRUE(SameBytes(FullZ(2), Bytes()));
}

TEST_F(KeyIndexLastChainTest, FullTwiceThePlaceInTheSecondSlotStillCopies) {
  StartFrom(FullZ(2));
  EXPECT_EQ(Insert("Z015", kNewCard).result, 0);
  EXPECT_TRUE(SameBytes(FullZ(3), Bytes()));
}

TEST_F(KeyIndexLastChainTest, FullTwiceAPlaceOutOfStepLeavesTheFile) {
  StartFrom(FullZ(2));
  EXPECT_EQ(Insert("Z005", kNewCard).result, 0);
  EXPECT_TRUE(SameBytes(FullZ(2), Bytes()));
}

TEST_F(KeyIndexLastChainTest, FullThreeTimesTheWholeFirstPageIsOutOfStep) {
  StartFrom(FullZ(3));
  EXPECT_EQ(Insert("Z355", kNewCard).result, 0);
  EXPECT_TRUE(SameBytes(FullZ(3), Bytes()));
}

TEST_F(KeyIndexLastChainTest, FullItStillGivesCardsBack) {
  StartFrom(FullZ());
  EXPECT_EQ(Remove("Z360", CardOffset(36)), 0);
  EXPECT_TRUE(SameBytes(IndexBuilder().Page('Z', Numbered('Z', 1, 35)).Bytes(), Bytes()));
}

TEST_F(KeyIndexLastChainTest, AnEarlierChainStillOverflowsInFrontOfIt) {
  StartFrom(IndexBuilder().Page('Y', Numbered('Y', 1, 36)).Page('Z', Numbered('Z', 1, 36)).Bytes());
  EXPECT_EQ(Insert("Y370", CardOffset(37)).result, 0);
  EXPECT_TRUE(SameBytes(IndexBuilder()
                            .Page('Y', Numbered('Y', 1, 36))
                            .Page('Y', Numbered('Y', 37, 37))
                            .Page('Z', Numbered('Z', 1, 36))
                            .Bytes(),
                        Bytes()));
}

}  // namespace
}  // namespace carnetel
