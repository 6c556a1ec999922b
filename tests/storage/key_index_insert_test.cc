#include "tests/storage/index_fixture.h"

namespace carnetel {
namespace {

constexpr uint32_t kNewCard = CardOffset(500);

class KeyIndexInsertTest : public IndexFixture {};

TEST_F(KeyIndexInsertTest, ANewIndexHasOneEmptyPageALetter) {
  const FileBytes bytes = Bytes();
  ASSERT_EQ(bytes.size(), 18216U);
  const std::string_view letters = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";
  for (size_t page = 0; page < 36; ++page) {
    EXPECT_EQ(LoadU8(bytes, 506 * page), static_cast<unsigned char>(letters[page]));
    for (size_t i = 1; i < 506; ++i) ASSERT_EQ(LoadU8(bytes, 506 * page + i), 0);
  }
}

TEST_F(KeyIndexInsertTest, FirstPagesAreExactForDigitsAndALowerBoundForLetters) {
  EXPECT_EQ(FirstPage('0'), 0U);
  EXPECT_EQ(FirstPage('9'), 4554U);
  EXPECT_EQ(FirstPage(':'), 5060U);
  EXPECT_EQ(FirstPage('A'), 0U);
  EXPECT_EQ(FirstPage('Z'), 12650U);
}

TEST_F(KeyIndexInsertTest, TheFirstCardOfALetterLandsInSlotZeroOfItsPage) {
  const IndexUpdate update = Insert("DUPONT", 768);
  EXPECT_EQ(update.result, 0);
  EXPECT_EQ(update.previous, 0U);
  EXPECT_TRUE(SameBytes(IndexBuilder().Page('D', {{"DUPONT", 768}}).Bytes(), Bytes()));
  // The page of D is the fourteenth.
  EXPECT_EQ(Hex(ByteView(Bytes()).subspan(506 * 13, 18)),
            "44 00 44 55 50 4F 4E 54 00 00 00 00 00 03 00 00 00 00");
}

TEST_F(KeyIndexInsertTest, BehindAFullPageOfAnotherLetterItsLastCardIsThePreviousOne) {
  StartFrom(IndexBuilder().Page('C', Numbered('C', 1, 36)).Bytes());
  EXPECT_EQ(Insert("DUPONT", kNewCard).previous, CardOffset(36));
}

TEST_F(KeyIndexInsertTest, BehindAPageThatIsNotFullThereIsNoPreviousCard) {
  StartFrom(IndexBuilder().Page('C', Numbered('C', 1, 35)).Bytes());
  EXPECT_EQ(Insert("DUPONT", kNewCard).previous, 0U);
}

TEST_F(KeyIndexInsertTest, AKeyBehindAllOthersFollowsThem) {
  StartFrom(IndexBuilder().Page('D', {{"DURAND", 768}}).Bytes());
  const IndexUpdate update = Insert("DUVAL", 1536);
  EXPECT_EQ(update.result, 0);
  EXPECT_EQ(update.previous, 768U);
  EXPECT_TRUE(
      SameBytes(IndexBuilder().Page('D', {{"DURAND", 768}, {"DUVAL", 1536}}).Bytes(), Bytes()));
}

TEST_F(KeyIndexInsertTest, AKeyInFrontOfAllOthersShiftsThemDown) {
  StartFrom(IndexBuilder().Page('D', {{"DURAND", 768}, {"DUVAL", 1536}}).Bytes());
  const IndexUpdate update = Insert("DUPONT", 2304);
  EXPECT_EQ(update.result, 0);
  EXPECT_EQ(update.previous, 0U);
  EXPECT_TRUE(SameBytes(
      IndexBuilder().Page('D', {{"DUPONT", 2304}, {"DURAND", 768}, {"DUVAL", 1536}}).Bytes(),
      Bytes()));
}

TEST_F(KeyIndexInsertTest, AKeyInTheMiddleKnowsTheCardInFrontOfIt) {
  StartFrom(IndexBuilder().Page('D', {{"DUPONT", 2304}, {"DUVAL", 1536}}).Bytes());
  const IndexUpdate update = Insert("DURAND", 768);
  EXPECT_EQ(update.result, 0);
  EXPECT_EQ(update.previous, 2304U);
  EXPECT_TRUE(SameBytes(
      IndexBuilder().Page('D', {{"DUPONT", 2304}, {"DURAND", 768}, {"DUVAL", 1536}}).Bytes(),
      Bytes()));
}

TEST_F(KeyIndexInsertTest, TheFirstKeyOfADigitGoesToItsPage) {
  EXPECT_EQ(Insert("3 SUISSES", 768).previous, 0U);
  EXPECT_EQ(Insert("3M", 1536).previous, 768U);
  EXPECT_EQ(Insert("0", 2304).previous, 0U);
  EXPECT_TRUE(SameBytes(
      IndexBuilder().Page('0', {{"0", 2304}}).Page('3', {{"3 SUISSES", 768}, {"3M", 1536}}).Bytes(),
      Bytes()));
}

TEST_F(KeyIndexInsertTest, EqualKeysStayInOrderOfInsertion) {
  EXPECT_EQ(Insert("DUPONT", 2304).previous, 0U);
  EXPECT_EQ(Insert("DUPONT", 768).previous, 2304U);
  EXPECT_EQ(Insert("DUVAL", 3072).previous, 768U);
  EXPECT_EQ(Insert("DUPONT", 1536).previous, 768U);
  EXPECT_TRUE(SameBytes(
      IndexBuilder()
          .Page('D', {{"DUPONT", 2304}, {"DUPONT", 768}, {"DUPONT", 1536}, {"DUVAL", 3072}})
          .Bytes(),
      Bytes()));
}

TEST_F(KeyIndexInsertTest, AKeyOfTenBytesFillsItsSlotWithoutAZero) {
  Insert("ABCDEFGHIJ", 768);
  Insert("ABCDEFGHI", 1536);
  EXPECT_TRUE(SameBytes(
      IndexBuilder().Page('A', {{"ABCDEFGHI", 1536}, {"ABCDEFGHIJ", 768}}).Bytes(), Bytes()));
}

TEST_F(KeyIndexInsertTest, AccentsBehindTheFirstByteSortBehindAllLetters) {
  Insert("B\x82RY", 768);
  Insert("BZ", 1536);
  EXPECT_TRUE(
      SameBytes(IndexBuilder().Page('B', {{"BZ", 1536}, {"B\x82RY", 768}}).Bytes(), Bytes()));
}

TEST_F(KeyIndexInsertTest, TheThirtySixthCardFillsThePage) {
  StartFrom(IndexBuilder().Page('A', Numbered('A', 1, 35)).Bytes());
  const IndexUpdate update = Insert("A360", CardOffset(36));
  EXPECT_EQ(update.result, 0);
  EXPECT_EQ(update.previous, CardOffset(35));
  EXPECT_TRUE(SameBytes(IndexBuilder().Page('A', Numbered('A', 1, 36)).Bytes(), Bytes()));
}

TEST_F(KeyIndexInsertTest, TheThirtySixthCardInTheMiddleFillsThePage) {
  StartFrom(IndexBuilder().Page('A', Numbered('A', 1, 35)).Bytes());
  EXPECT_EQ(Insert("A015", kNewCard).previous, CardOffset(1));
  const ExpectedSlots slots =
      Numbered('A', 1, 1) + ExpectedSlots{{"A015", kNewCard}} + Numbered('A', 2, 35);
  EXPECT_TRUE(SameBytes(IndexBuilder().Page('A', slots).Bytes(), Bytes()));
}

TEST_F(KeyIndexInsertTest, TheThirtySeventhCardAtTheEndMakesAPageAndMovesTheLaterOnes) {
  StartFrom(IndexBuilder().Page('A', Numbered('A', 1, 36)).Page('B', {{"B", 7680}}).Bytes());
  const IndexUpdate update = Insert("A370", CardOffset(37));
  EXPECT_EQ(update.result, 0);
  // Not card 36, the neighbour, but the one two slots in front of it.
  EXPECT_EQ(update.previous, CardOffset(34));
  ASSERT_EQ(Bytes().size(), 18722U);
  EXPECT_TRUE(SameBytes(IndexBuilder()
                            .Page('A', Numbered('A', 1, 36))
                            .Page('A', Numbered('A', 37, 37))
                            .Page('B', {{"B", 7680}})
                            .Bytes(),
                        Bytes()));
  // The lower bound of B still finds it.
  EXPECT_EQ(Insert("BB", kNewCard).previous, 7680U);
}

TEST_F(KeyIndexInsertTest, TheThirtyEighthCardJoinsTheNewPage) {
  StartFrom(
      IndexBuilder().Page('A', Numbered('A', 1, 36)).Page('A', Numbered('A', 37, 37)).Bytes());
  EXPECT_EQ(Insert("A380", CardOffset(38)).previous, CardOffset(37));
  EXPECT_TRUE(SameBytes(
      IndexBuilder().Page('A', Numbered('A', 1, 36)).Page('A', Numbered('A', 37, 38)).Bytes(),
      Bytes()));
}

TEST_F(KeyIndexInsertTest, InTheMiddleOfAFullPageItsLastSlotGoesToANewPage) {
  StartFrom(IndexBuilder().Page('A', Numbered('A', 1, 36)).Page('B', {{"B", 7680}}).Bytes());
  const IndexUpdate update = Insert("A015", kNewCard);
  EXPECT_EQ(update.result, 0);
  EXPECT_EQ(update.previous, CardOffset(1));
  const ExpectedSlots first =
      Numbered('A', 1, 1) + ExpectedSlots{{"A015", kNewCard}} + Numbered('A', 2, 35);
  EXPECT_TRUE(SameBytes(IndexBuilder()
                            .Page('A', first)
                            .Page('A', Numbered('A', 36, 36))
                            .Page('B', {{"B", 7680}})
                            .Bytes(),
                        Bytes()));
}

TEST_F(KeyIndexInsertTest, InTheLastSlotOfAFullPageThePreviousCardIsTheTrueNeighbour) {
  StartFrom(IndexBuilder().Page('A', Numbered('A', 1, 36)).Bytes());
  const IndexUpdate update = Insert("A355", kNewCard);
  EXPECT_EQ(update.result, 0);
  EXPECT_EQ(update.previous, CardOffset(35));
  EXPECT_TRUE(SameBytes(IndexBuilder()
                            .Page('A', Numbered('A', 1, 35) + ExpectedSlots{{"A355", kNewCard}})
                            .Page('A', Numbered('A', 36, 36))
                            .Bytes(),
                        Bytes()));
}

TEST_F(KeyIndexInsertTest, InFrontOfAFullPage) {
  StartFrom(IndexBuilder().Page('A', Numbered('A', 1, 36)).Bytes());
  EXPECT_EQ(Insert("A005", kNewCard).previous, 0U);
  EXPECT_TRUE(SameBytes(IndexBuilder()
                            .Page('A', ExpectedSlots{{"A005", kNewCard}} + Numbered('A', 1, 35))
                            .Page('A', Numbered('A', 36, 36))
                            .Bytes(),
                        Bytes()));
}

TEST_F(KeyIndexInsertTest, InTheFirstOfTwoFullPagesTheShiftCrossesThePages) {
  StartFrom(
      IndexBuilder().Page('A', Numbered('A', 1, 36)).Page('A', Numbered('A', 37, 72)).Bytes());
  const IndexUpdate update = Insert("A015", kNewCard);
  EXPECT_EQ(update.result, 0);
  EXPECT_EQ(update.previous, CardOffset(1));
  const ExpectedSlots first =
      Numbered('A', 1, 1) + ExpectedSlots{{"A015", kNewCard}} + Numbered('A', 2, 35);
  EXPECT_TRUE(SameBytes(IndexBuilder()
                            .Page('A', first)
                            .Page('A', Numbered('A', 36, 71))
                            .Page('A', Numbered('A', 72, 72))
                            .Bytes(),
                        Bytes()));
}

TEST_F(KeyIndexInsertTest, InTheFirstPageTheShiftFillsTheFreeSlotOfTheSecond) {
  StartFrom(
      IndexBuilder().Page('A', Numbered('A', 1, 36)).Page('A', Numbered('A', 37, 40)).Bytes());
  EXPECT_EQ(Insert("A355", kNewCard).previous, CardOffset(35));
  EXPECT_TRUE(SameBytes(IndexBuilder()
                            .Page('A', Numbered('A', 1, 35) + ExpectedSlots{{"A355", kNewCard}})
                            .Page('A', Numbered('A', 36, 40))
                            .Bytes(),
                        Bytes()));
}

TEST_F(KeyIndexInsertTest, AtTheEndOfAFullPageAnEmptySecondPageIsUsed) {
  StartFrom(IndexBuilder().Page('A', Numbered('A', 1, 36)).Page('A', {}).Bytes());
  EXPECT_EQ(Insert("A370", CardOffset(37)).previous, CardOffset(36));
  EXPECT_TRUE(SameBytes(
      IndexBuilder().Page('A', Numbered('A', 1, 36)).Page('A', Numbered('A', 37, 37)).Bytes(),
      Bytes()));
}

TEST_F(KeyIndexInsertTest, InTheMiddleOfAFullPageAnEmptySecondPageIsNotUsed) {
  StartFrom(IndexBuilder().Page('A', Numbered('A', 1, 36)).Page('A', {}).Bytes());
  Insert("A355", kNewCard);
  EXPECT_TRUE(SameBytes(IndexBuilder()
                            .Page('A', Numbered('A', 1, 35) + ExpectedSlots{{"A355", kNewCard}})
                            .Page('A', Numbered('A', 36, 36))
                            .Page('A', {})
                            .Bytes(),
                        Bytes()));
}

TEST_F(KeyIndexInsertTest, AKeyThatFoldsToNothingHasNoPlace) {
  const FileBytes before = Bytes();
  EXPECT_EQ(Insert("", 768).result, -1);
  EXPECT_TRUE(SameBytes(before, Bytes()));
}

TEST_F(KeyIndexInsertTest, AKeyBehindZHasNoPlace) {
  const FileBytes before = Bytes();
  EXPECT_EQ(Insert("[A", 768).result, -1);
  EXPECT_EQ(Insert("a", 768).result, -1);
  EXPECT_EQ(Insert("\x7F", 768).result, -1);
  EXPECT_TRUE(SameBytes(before, Bytes()));
}

TEST_F(KeyIndexInsertTest, AFirstByteBelowZeroIsFiledUnderZero) {
  EXPECT_EQ(Insert(" VIDE", 768).result, 0);
  EXPECT_EQ(Insert("-MOINS", 1536).result, 0);
  EXPECT_EQ(Insert("/", 2304).result, 0);
  EXPECT_TRUE(SameBytes(
      IndexBuilder().Page('0', {{"0", 2304}, {"0MOINS", 1536}, {"0VIDE", 768}}).Bytes(), Bytes()));
}

TEST_F(KeyIndexInsertTest, AnAccentAsFirstByteIsFiledUnderZero) {
  EXPECT_EQ(Insert("\x90LAN", 768).result, 0);
  EXPECT_EQ(Insert("\x82LAN", 1536).result, 0);
  EXPECT_EQ(Insert("\xFF", 2304).result, 0);
  EXPECT_TRUE(SameBytes(
      IndexBuilder().Page('0', {{"0", 2304}, {"0LAN", 768}, {"0LAN", 1536}}).Bytes(), Bytes()));
}

TEST_F(KeyIndexInsertTest, AByteBetweenNineAndAGoesInFrontOfTheLetterWhereItsSearchBegins) {
  EXPECT_EQ(Insert("ALPHA", 768).result, 0);
  EXPECT_EQ(Insert(":X", 1536).result, 0);
  EXPECT_TRUE(SameBytes(IndexBuilder().Page('A', {{":X", 1536}, {"ALPHA", 768}}).Bytes(), Bytes()));
}

TEST_F(KeyIndexInsertTest, AHoleTakesTheNextKeyThatReachesIt) {
  StartFrom(IndexBuilder().Page('A', {{"A010", 768}, {"", 0}, {"A030", 2304}}).Bytes());
  const IndexUpdate update = Insert("A040", kNewCard);
  EXPECT_EQ(update.result, 0);
  EXPECT_EQ(update.previous, 768U);
  EXPECT_TRUE(SameBytes(
      IndexBuilder().Page('A', {{"A010", 768}, {"A040", kNewCard}, {"A030", 2304}}).Bytes(),
      Bytes()));
}

TEST_F(KeyIndexInsertTest, AShiftCarriesAHoleAlong) {
  StartFrom(IndexBuilder().Page('A', {{"A010", 768}, {"", 0}, {"A030", 2304}}).Bytes());
  EXPECT_EQ(Insert("A005", kNewCard).result, 0);
  EXPECT_TRUE(SameBytes(IndexBuilder()
                            .Page('A', {{"A005", kNewCard}, {"A010", 768}, {"", 0}, {"A030", 2304}})
                            .Bytes(),
                        Bytes()));
}

TEST_F(KeyIndexInsertTest, AnIndexThatWasNeverOpenedTakesNothing) {
  KeyIndex closed(files, "/AUTRE.I01");
  EXPECT_EQ(closed.UpdateIndex(KeyOf("DUPONT"), 768, 0, IndexMode::kInsert).result, -1);
  EXPECT_FALSE(files.Exists("/AUTRE.I01"));
}

}  // namespace
}  // namespace carnetel
