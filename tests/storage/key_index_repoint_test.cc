#include "tests/storage/index_fixture.h"

namespace carnetel {
namespace {

constexpr uint32_t kNewPlace = CardOffset(700);

class KeyIndexRepointTest : public IndexFixture {};

TEST_F(KeyIndexRepointTest, TheSlotOfTheOldOffsetTakesTheNewOne) {
  StartFrom(IndexBuilder().Page('A', Numbered('A', 1, 3)).Bytes());
  EXPECT_GE(Repoint("A020", kNewPlace, CardOffset(2)), 0);
  const ExpectedSlots slots =
      Numbered('A', 1, 1) + ExpectedSlots{{"A020", kNewPlace}} + Numbered('A', 3, 3);
  EXPECT_TRUE(SameBytes(IndexBuilder().Page('A', slots).Bytes(), Bytes()));
}

TEST_F(KeyIndexRepointTest, EqualKeysAreToldApartByTheOldOffset) {
  StartFrom(
      IndexBuilder().Page('D', {{"DUPONT", 768}, {"DUPONT", 1536}, {"DUPONT", 2304}}).Bytes());
  EXPECT_GE(Repoint("DUPONT", kNewPlace, 1536), 0);
  EXPECT_TRUE(SameBytes(
      IndexBuilder().Page('D', {{"DUPONT", 768}, {"DUPONT", kNewPlace}, {"DUPONT", 2304}}).Bytes(),
      Bytes()));
}

TEST_F(KeyIndexRepointTest, WithoutAnOldOffsetNothingIsWritten) {
  const FileBytes before = IndexBuilder().Page('A', Numbered('A', 1, 3)).Bytes();
  StartFrom(before);
  files.ResetCounts();
  EXPECT_EQ(Repoint("A030", kNewPlace, 0), 2);
  EXPECT_EQ(files.counts().writes, 0);
  EXPECT_TRUE(SameBytes(before, Bytes()));
}

TEST_F(KeyIndexRepointTest, TheWalkGoesOnOverThePagesOfTheChain) {
  StartFrom(
      IndexBuilder().Page('A', Numbered('A', 1, 36)).Page('A', Numbered('A', 37, 38)).Bytes());
  EXPECT_GE(Repoint("A010", kNewPlace, CardOffset(38)), 0);
  EXPECT_TRUE(SameBytes(IndexBuilder()
                            .Page('A', Numbered('A', 1, 36))
                            .Page('A', Numbered('A', 37, 37) + ExpectedSlots{{"A380", kNewPlace}})
                            .Bytes(),
                        Bytes()));
}

TEST_F(KeyIndexRepointTest, TheWalkEndsWithTheLetter) {
  const FileBytes before =
      IndexBuilder().Page('A', Numbered('A', 1, 36)).Page('B', {{"B", 76800}}).Bytes();
  StartFrom(before);
  EXPECT_EQ(Repoint("A010", kNewPlace, 76800), -1);
  EXPECT_TRUE(SameBytes(before, Bytes()));
}

TEST_F(KeyIndexRepointTest, TheWalkDoesNotLookInFrontOfTheKey) {
  const FileBytes before = IndexBuilder().Page('A', Numbered('A', 1, 3)).Bytes();
  StartFrom(before);
  EXPECT_EQ(Repoint("A020", kNewPlace, CardOffset(1)), -1);
  EXPECT_TRUE(SameBytes(before, Bytes()));
}

TEST_F(KeyIndexRepointTest, AtTheEndOfTheFileTheWalkEnds) {
  StartFrom(IndexBuilder().Page('Z', Numbered('Z', 1, 36)).Bytes());
  EXPECT_EQ(Repoint("Z010", kNewPlace, CardOffset(99)), -1);
}

TEST_F(KeyIndexRepointTest, AnEmptyFirstPageAnswersMinusTwo) {
  EXPECT_EQ(Repoint("5", kNewPlace, 0), -2);
  EXPECT_EQ(Search("5"), -2);
}

TEST_F(KeyIndexRepointTest, AGreaterKeyInTheVeryFirstSlotAnswersMinusTwo) {
  StartFrom(IndexBuilder().Page('5', {{"55", 768}}).Bytes());
  EXPECT_EQ(Repoint("5", kNewPlace, 0), -2);
  EXPECT_EQ(Search("5"), -2);
}

TEST_F(KeyIndexRepointTest, ALetterBehindItsLowerBoundAnswersItsSlot) {
  EXPECT_EQ(Repoint("DUPONT", kNewPlace, 0), 0);
  StartFrom(IndexBuilder().Page('D', {{"DUPONT", 768}}).Bytes());
  EXPECT_EQ(Search("DURAND"), 1);
}

TEST_F(KeyIndexRepointTest, BehindAFullChainTheNextLetterAnswersMinusThree) {
  StartFrom(IndexBuilder().Page('A', Numbered('A', 1, 36)).Bytes());
  EXPECT_EQ(Repoint("A999", kNewPlace, 0), -3);
  EXPECT_EQ(Search("A999"), -3);
  EXPECT_EQ(Repoint("A999", kNewPlace, CardOffset(1)), -1);
}

TEST_F(KeyIndexRepointTest, ASearchGoesBehindEqualKeysAndARepointToTheFirstOfThem) {
  StartFrom(IndexBuilder().Page('D', {{"DUPONT", 768}, {"DUPONT", 1536}}).Bytes());
  EXPECT_EQ(Search("DUPONT"), 2);
  EXPECT_EQ(Repoint("DUPONT", kNewPlace, 0), 0);
}

TEST_F(KeyIndexRepointTest, AKeyWithoutAPlaceAnswersMinusOne) {
  EXPECT_EQ(Repoint("", kNewPlace, 768), -1);
  EXPECT_EQ(Search(""), -1);
}

}  // namespace
}  // namespace carnetel
