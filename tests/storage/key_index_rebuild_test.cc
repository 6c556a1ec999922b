// What the indexes hold after they were lost and made anew from the main file.
#include "tests/storage/store_fixture.h"

namespace carnetel {
namespace {

class KeyIndexRebuildTest : public StoreFixture {
 protected:
  // A directory of these cards of which nothing but the main file is left, opened.
  void OpenMainFileAlone(const std::vector<CardRecord>& cards) {
    Open();
    Close();
    FileBytes main = MainFile();
    for (const CardRecord& card : cards) {
      main.insert(main.end(), card.bytes().begin(), card.bytes().end());
    }
    files.SetContents(Path(".DAN"), main);
    for (const std::string_view extension : {".I01", ".I02", ".ADR"}) {
      files.Remove(Path(extension));
    }
    Open();
  }
};

TEST_F(KeyIndexRebuildTest, EachCardIsFiledByCompanyAndBySurname) {
  OpenMainFileAlone({MakeCard("Zebra", "Durand"), MakeCard("Alpha", "Martin")});
  EXPECT_EQ(open_result, OpenResult::kOpened);
  EXPECT_TRUE(
      SameBytes(IndexBuilder().Page('A', {{"ALPHA", 1536}}).Page('Z', {{"ZEBRA", 768}}).Bytes(),
                IndexFile(1)));
  EXPECT_TRUE(
      SameBytes(IndexBuilder().Page('D', {{"DURAND", 768}}).Page('M', {{"MARTIN", 1536}}).Bytes(),
                IndexFile(2)));
}

TEST_F(KeyIndexRebuildTest, AnEmptyKeyFieldIsReplacedByTheOther) {
  OpenMainFileAlone({MakeCard("", "Durand"), MakeCard("Alpha")});
  const FileBytes expected =
      IndexBuilder().Page('A', {{"ALPHA", 1536}}).Page('D', {{"DURAND", 768}}).Bytes();
  EXPECT_TRUE(SameBytes(expected, IndexFile(1)));
  EXPECT_TRUE(SameBytes(expected, IndexFile(2)));
}

TEST_F(KeyIndexRebuildTest, ACardWithoutKeyFieldsIsFiledUnderA) {
  OpenMainFileAlone({MakeCard({{kVille, "Lyon"}})});
  EXPECT_TRUE(SameBytes(IndexBuilder().Page('A', {{"A", 768}}).Bytes(), IndexFile(1)));
  EXPECT_TRUE(SameBytes(IndexBuilder().Page('A', {{"A", 768}}).Bytes(), IndexFile(2)));
}

TEST_F(KeyIndexRebuildTest, OnlyTheFirstByteIsFolded) {
  OpenMainFileAlone({MakeCard("ab[cd")});
  EXPECT_TRUE(SameBytes(IndexBuilder().Page('A', {{"AB[CD", 768}}).Bytes(), IndexFile(1)));
}

TEST_F(KeyIndexRebuildTest, ACardWhoseFirstByteFoldsToNothingStaysOut) {
  OpenMainFileAlone({MakeCard("[x"), MakeCard("Alpha")});
  EXPECT_TRUE(SameBytes(IndexBuilder().Page('A', {{"ALPHA", 1536}}).Bytes(), IndexFile(1)));
}

TEST_F(KeyIndexRebuildTest, AnAccentAsFirstByteIsFiledUnderZero) {
  OpenMainFileAlone(
      {MakeCard("\x90"
                "cole")});
  EXPECT_TRUE(SameBytes(IndexBuilder().Page('0', {{"0COLE", 768}}).Bytes(), IndexFile(1)));
}

TEST_F(KeyIndexRebuildTest, EqualKeysLieInTheOrderOfTheMainFile) {
  OpenMainFileAlone({MakeCard("Dupont"), MakeCard("DUPONT"), MakeCard("dupont")});
  EXPECT_TRUE(SameBytes(
      IndexBuilder().Page('D', {{"DUPONT", 768}, {"DUPONT", 1536}, {"DUPONT", 2304}}).Bytes(),
      IndexFile(1)));
}

TEST_F(KeyIndexRebuildTest, AFieldWithoutATerminatorGivesItsFirstTenBytes) {
  OpenMainFileAlone({MakeCard("abcdefghijklmnopqrstuvwxyz012345", "Suivant")});
  EXPECT_TRUE(SameBytes(IndexBuilder().Page('A', {{"ABCDEFGHIJ", 768}}).Bytes(), IndexFile(1)));
}

TEST_F(KeyIndexRebuildTest, APartialCardAtTheEndIsNotFiled) {
  OpenMainFileAlone({MakeCard("Alpha"), MakeCard("Beta")});
  Close();
  FileBytes main = MainFile();
  main.resize(main.size() - 1);
  files.SetContents(Path(".DAN"), main);
  files.Remove(Path(".I01"));
  Open();
  EXPECT_TRUE(SameBytes(IndexBuilder().Page('A', {{"ALPHA", 768}}).Bytes(), IndexFile(1)));
}

TEST_F(KeyIndexRebuildTest, MoreThanAPageOfOneLetterMakesAChain) {
  std::vector<CardRecord> cards;
  ExpectedSlots slots;
  for (uint32_t number = 1; number <= 37; ++number) {
    const std::string company = "CARTE " + std::to_string(100 + number);
    cards.push_back(MakeCard(company));
    slots.push_back({company, CardOffset(number)});
  }
  OpenMainFileAlone(cards);
  EXPECT_TRUE(SameBytes(
      IndexBuilder().Page('C', {slots.begin(), slots.begin() + 36}).Page('C', {slots[36]}).Bytes(),
      IndexFile(1)));
}

TEST_F(KeyIndexRebuildTest, AnAddedCardHasTheLiveKey) {
  Open();
  Add("ab[cd", "Durand");
  EXPECT_TRUE(SameBytes(IndexBuilder().Page('A', {{"AB", 768}}).Bytes(), IndexFile(1)));
  EXPECT_TRUE(SameBytes(IndexBuilder().Page('D', {{"DURAND", 768}}).Bytes(), IndexFile(2)));
}

}  // namespace
}  // namespace carnetel
