// The scan of the whole file: what it marks, counts, shows, and leaves when it is stopped.
#include "selection/selection_scan.h"

#include <gmock/gmock.h>

#include "tests/selection/selection_testing.h"

namespace carnetel {
namespace {

class SelectionScanTest : public SelectionFixture {
 protected:
  void SetUp() override { Open(kSte1); }

  uint32_t Scan(const std::vector<Criterion>& criteria, bool add = false) {
    return ScanAddressFile(*directory_, RowsOf(criteria), add);
  }
};

TEST_F(SelectionScanTest, EqualIsTheStartOfTheFieldInEitherCase) {
  AddCompanies({"DURAND", "dupont", "Duval", "D\x9ARER", "DELTA", "EDUARD"});
  Scan({{kSte1, "=", "DU"}});
  EXPECT_EQ(Marked(), (Texts{"dupont", "DURAND", "Duval"}));
  EXPECT_EQ(directory_->marked_count(), 3);
}

TEST_F(SelectionScanTest, AnEmptyResultIsACountOfZero) {
  AddCompanies({"ALPHA", "BETA"});
  MarkOnly({"ALPHA"});
  EXPECT_EQ(Scan({{kSte1, "=", "GAMMA"}}), 0U);
  EXPECT_EQ(Marked(), Texts{});
  EXPECT_EQ(directory_->marked_count(), 0);
}

TEST_F(SelectionScanTest, AValueWithANineFindsNothingWithEqual) {
  AddCompanies({"9A", "9B", "3C"});
  Scan({{kSte1, "=", "9"}});
  EXPECT_EQ(Marked(), Texts{});
  EXPECT_EQ(recorded_.TakeLog(), (Texts{"Sélection en cours parmi 0 fiche(s)", "closed"}));
}

TEST_F(SelectionScanTest, AValueWithANineEndsInFrontOfTheThreesWithLowerOrEqual) {
  AddCompanies({"1A", "2B", "3C", "8D", "9E"});
  Scan({{kSte1, "<=", "9E"}});
  EXPECT_EQ(Marked(), (Texts{"1A", "2B"}));
}

TEST_F(SelectionScanTest, LowerAndGreaterNeverLookAtTheLetterOfTheValue) {
  AddCompanies({"CAROL", "DAMAS", "DURAND", "DZ", "EVE"});
  Scan({{kSte1, "<", "DURAND"}});
  EXPECT_EQ(Marked(), Texts{"CAROL"});
  Scan({{kSte1, ">", "DURAND"}});
  EXPECT_EQ(Marked(), Texts{"EVE"});
  // On another field the same value looks at all.
  Scan({{kSte2, ">=", ""}, {kSte1, "<", "DURAND"}});
  EXPECT_EQ(Marked(), (Texts{"CAROL", "DAMAS"}));
}

TEST_F(SelectionScanTest, EqualToNothingLooksAmongTheZerosOnly) {
  AddCard("", "0MEGA");
  AddCard("", "DURAND");
  AddCard("", "1ER");
  AddCard("0 DEFAUT", "");
  const uint32_t first = Scan({{kSte1, "=", ""}});
  CardRecord card;
  ASSERT_TRUE(directory_->main().ReadCard(first, card));
  EXPECT_EQ(card.FieldText(kNom).bytes(), "0MEGA");
  EXPECT_EQ(directory_->marked_count(), 1);
}

TEST_F(SelectionScanTest, ARowOnTheCompanyThatIsNotTheFirstDoesNotNarrow) {
  AddCompanies({"9A", "9B", "3C"});
  Scan({{kNom, "=", ""}, {kSte1, "=", "9"}});
  EXPECT_EQ(Marked(), (Texts{"9A", "9B"}));
}

TEST_F(SelectionScanTest, TheIndexOfSurnamesIsNarrowedByCompanyAllTheSame) {
  Open(kNom);
  AddCard("DELTA", "ANNE");
  AddCard("DUPONT", "DENIS");
  AddCard("DURAND", "ZOE");
  Scan({{kSte1, "=", "D"}});
  EXPECT_EQ(Marked(), Texts{"DUPONT"});
}

TEST_F(SelectionScanTest, AnAccentedStartOfTheValueLooksAtAll) {
  AddCompanies({"ELAN", "\x90LAN", "\x90T\x90", "ZETA"});
  const auto both = testing::UnorderedElementsAre("\x90LAN", "\x90T\x90");
  Scan({{kSte1, "=", "\x90"}});
  EXPECT_THAT(Marked(), both);
  Scan({{kSte1, ">=", "\x90"}});
  EXPECT_THAT(Marked(), both);
  Scan({{kSte1, "<", "\x90"}});
  EXPECT_EQ(Marked(), Texts{});
}

TEST_F(SelectionScanTest, AStarAtTheStartOfTheFirstValueMarksAll) {
  AddCompanies({"ALPHA", "BETA", "9"});
  Scan({{kSte1, "=", "*"}});
  EXPECT_EQ(Marked(), (Texts{"9", "ALPHA", "BETA"}));
  EXPECT_EQ(recorded_.TakeLog(),
            (Texts{"Sélection en cours parmi 3 fiche(s)", "1", "2", "3", "closed"}));
  Scan({{kFax, "<", "*x"}, {kNom, "=", "nobody"}});
  EXPECT_EQ(directory_->marked_count(), 3);
  Scan({{kSte1, "~", "A*"}});
  EXPECT_EQ(Marked(), Texts{});
  Scan({{kSte1, "=", "B"}, {kSte1, "=", "*"}});
  EXPECT_EQ(Marked(), Texts{});
}

// The dialog drops such a row, a set from elsewhere may have it.
TEST_F(SelectionScanTest, LowerThanNothingIsWhatBeginsWithAnAccent) {
  AddFields({{kSte1, "A"}, {kVille, "\x90VRY"}});
  AddFields({{kSte1, "B"}, {kVille, "PARIS"}});
  AddFields({{kSte1, "C"}});
  Scan({{kVille, "<", ""}});
  EXPECT_EQ(Marked(), Texts{"A"});
}

TEST_F(SelectionScanTest, TheAnswerIsTheFirstCardThatPassed) {
  AddCompanies({"DURAND", "ALPHA", "DELTA"});
  EXPECT_EQ(Scan({{kSte1, "=", "D"}}), 3U * 768);
  EXPECT_EQ(Scan({{kSte1, "=", "DU"}}), 768U);
}

TEST_F(SelectionScanTest, ReplacingTakesTheFormerMarksAway) {
  AddCompanies({"ALPHA", "BETA", "GAMMA"});
  MarkOnly({"BETA", "GAMMA"});
  Scan({{kSte1, "=", "A"}});
  EXPECT_EQ(Marked(), Texts{"ALPHA"});
  EXPECT_EQ(directory_->marked_count(), 1);
}

TEST_F(SelectionScanTest, ReplacingWithACountOfZeroTakesNoMarkAway) {
  AddCompanies({"ALPHA", "BETA"});
  MarkOnly({"BETA"});
  directory_->set_marked_count(0);
  Scan({{kSte1, "=", "A"}});
  EXPECT_EQ(Marked(), (Texts{"ALPHA", "BETA"}));
  EXPECT_EQ(directory_->marked_count(), 1);
}

TEST_F(SelectionScanTest, AddingKeepsMarksAndCountsTheNewOnesFromZero) {
  AddCompanies({"DELTA", "DUPONT", "DURAND", "ALPHA"});
  MarkOnly({"ALPHA", "DUPONT"});
  Scan({{kSte1, "=", "D"}}, true);
  EXPECT_EQ(Marked(), (Texts{"ALPHA", "DELTA", "DUPONT", "DURAND"}));
  EXPECT_EQ(directory_->marked_count(), 2);
  EXPECT_EQ(recorded_.TakeLog(),
            (Texts{"Sélection en cours parmi 3 fiche(s)", "1", "1", "2", "closed"}));
}

TEST_F(SelectionScanTest, StoppedOnACardThatPassedItIsCountedAndNotMarked) {
  AddCompanies({"DA", "DB", "DC"});
  recorded_.StopAt(2);
  EXPECT_EQ(Scan({{kSte1, "=", "D"}}), 768U);
  EXPECT_EQ(Marked(), Texts{"DA"});
  EXPECT_EQ(directory_->marked_count(), 2);
  EXPECT_EQ(recorded_.TakeLog(),
            (Texts{"Sélection en cours parmi 3 fiche(s)", "1", "2", "closed"}));
}

TEST_F(SelectionScanTest, StoppedOnTheFirstCardItIsTheAnswerAllTheSame) {
  AddCompanies({"DA", "DB"});
  recorded_.StopAt(1);
  EXPECT_EQ(Scan({{kSte1, "=", "D"}}), 768U);
  EXPECT_EQ(Marked(), Texts{});
  EXPECT_EQ(directory_->marked_count(), 1);
}

TEST_F(SelectionScanTest, StoppedOnACardThatFailedAllMarksSoFarStay) {
  AddCompanies({"DA", "DB", "DC"});
  recorded_.StopAt(2);
  Scan({{kSte1, "<>", "DB"}});
  EXPECT_EQ(Marked(), Texts{"DA"});
  EXPECT_EQ(directory_->marked_count(), 1);
}

TEST_F(SelectionScanTest, TheProgressIsThatOfASelectionOverTheRange) {
  AddCompanies({"ALPHA", "DA", "DB", "ZETA"});
  Scan({{kSte1, ">=", "DB"}});
  EXPECT_EQ(recorded_.form(), ProgressForm::kSelection);
  EXPECT_EQ(recorded_.TakeLog(),
            (Texts{"Sélection en cours parmi 3 fiche(s)", "0", "1", "2", "closed"}));
}

TEST_F(SelectionScanTest, OnlyTheMarksOfTheDisplayedPairAndNothingElseChange) {
  AddCompanies({"ALPHA", "BETA"});
  MarkOnly({"BETA"});
  directory_->CloseListView();
  FileBytes expected = Contents(".ADR");
  Scan({{kSte1, "=", "A"}});
  StoreU8(expected, 320 + 4, 0x03);
  StoreU8(expected, 336 + 4, 0x01);
  // The counter of the file waits for the list to close.
  EXPECT_EQ(LoadLe16(expected, 130), 1);
  EXPECT_TRUE(SameBytes(expected, Contents(".ADR")));
}

TEST_F(SelectionScanTest, WithoutCardsTheDisplayOpensAndClosesAllTheSame) {
  EXPECT_EQ(Scan({{kSte1, "=", "D"}}), 0U);
  EXPECT_EQ(recorded_.TakeLog(), (Texts{"Sélection en cours parmi 0 fiche(s)", "closed"}));
}

TEST_F(SelectionScanTest, MoreCardsThanOneReadTakesAreAllTested) {
  for (int i = 0; i < 150; ++i) AddCard("M" + std::to_string(1000 + i), i % 7 == 0 ? "oui" : "");
  Scan({{kNom, "=", "oui"}});
  EXPECT_EQ(directory_->marked_count(), 22);
  EXPECT_EQ(Marked().size(), 22U);
  EXPECT_THAT(Marked(), testing::Contains("M1147"));
}

TEST_F(SelectionScanTest, ClearingTakesTheMarksOfTheDisplayedPairOnly) {
  AddCompanies({"ALPHA", "BETA"});
  MarkOnly({"ALPHA", "BETA"});
  Display(4);
  MarkOnly({"ALPHA"});
  ClearAllMarks(*directory_);
  directory_->Commit();
  EXPECT_EQ(directory_->marked_count(), 0);
  EXPECT_EQ(CompaniesWith(5), Texts{});
  EXPECT_EQ(CompaniesWith(1), (Texts{"ALPHA", "BETA"}));
}

}  // namespace
}  // namespace carnetel
