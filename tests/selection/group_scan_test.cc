// The scan of the members of the displayed group.
#include "selection/group_bits.h"
#include "selection/selection_scan.h"
#include "tests/selection/selection_testing.h"

namespace carnetel {
namespace {

class GroupScanTest : public SelectionFixture {
 protected:
  // Slot 2 has three members and is displayed.
  void SetUp() override {
    Open(kSte1);
    AddCompanies({"ALPHA", "DELTA", "DUPONT", "DURAND", "ZETA"});
    MarkOnly({"ALPHA", "DUPONT", "ZETA"});
    ApplyGroupBits(*directory_, 2, GroupOperation::kCreate);
    Display(2);
  }
  void Scan(const std::vector<Criterion>& criteria, bool add = false) {
    ScanGroupMembers(*directory_, RowsOf(criteria), add, 3);
  }
};

TEST_F(GroupScanTest, MarksMembersOnlyAndInTheGroupsOwnBit) {
  Scan({{kSte1, "=", "D"}});
  EXPECT_EQ(CompaniesWith(3), Texts{"DUPONT"});
  EXPECT_EQ(CompaniesWith(1), (Texts{"ALPHA", "DUPONT", "ZETA"}));
  EXPECT_EQ(directory_->marked_count(), 1);
}

TEST_F(GroupScanTest, IsNotNarrowed) {
  // Over the whole file this range would be empty of anything below D.
  Scan({{kSte1, "<", "DURAND"}});
  EXPECT_EQ(Marked(), (Texts{"ALPHA", "DUPONT"}));
  AddCard("9A", "");
  directory_->CloseListView();
  Scan({{kSte1, "=", "9"}});
  EXPECT_EQ(Marked(), Texts{"9A"});
}

TEST_F(GroupScanTest, AStarMarksAllMembers) {
  Scan({{kSte1, "=", "*"}});
  EXPECT_EQ(Marked(), (Texts{"ALPHA", "DUPONT", "ZETA"}));
}

TEST_F(GroupScanTest, TheDisplayGetsAStepForEachEntryAndTheTotalOfTheList) {
  Scan({{kSte1, "=", "D"}});
  EXPECT_EQ(recorded_.form(), ProgressForm::kSelection);
  EXPECT_EQ(recorded_.TakeLog(),
            (Texts{"Sélection en cours parmi 3 fiche(s)", "0", "0", "1", "1", "1", "closed"}));
}

TEST_F(GroupScanTest, CannotBeStopped) {
  recorded_.StopAt(1);
  Scan({{kSte1, "=", "*"}});
  EXPECT_EQ(Marked(), (Texts{"ALPHA", "DUPONT", "ZETA"}));
  EXPECT_EQ(directory_->marked_count(), 3);
}

TEST_F(GroupScanTest, ReplacingTakesTheFormerMarksAway) {
  MarkOnly({"ALPHA"});
  Scan({{kSte1, "=", "Z"}});
  EXPECT_EQ(Marked(), Texts{"ZETA"});
  EXPECT_EQ(directory_->marked_count(), 1);
}

TEST_F(GroupScanTest, AddingCountsTheNewOnesFromZeroWhereItIsShown) {
  MarkOnly({"ALPHA"});
  Scan({{kSte1, "=", "*"}}, true);
  EXPECT_EQ(Marked(), (Texts{"ALPHA", "DUPONT", "ZETA"}));
  EXPECT_EQ(directory_->marked_count(), 2);
}

TEST_F(GroupScanTest, UnseenNothingIsShownAndTheCountGoesOn) {
  MarkOnly({"ALPHA"});
  ScanGroupMembers(*directory_, RowsOf({{kSte1, "=", "*"}}), true, std::nullopt);
  EXPECT_EQ(directory_->marked_count(), 3);
  ScanGroupMembers(*directory_, RowsOf({{kSte1, "=", "D"}}), false, std::nullopt);
  EXPECT_EQ(directory_->marked_count(), 1);
  EXPECT_EQ(recorded_.TakeLog(), Texts{});
}

TEST_F(GroupScanTest, WithTheWholeFileDisplayedEveryCardIsAMember) {
  Display(0);
  ScanGroupMembers(*directory_, RowsOf({{kSte1, "=", "D"}}), false, std::nullopt);
  EXPECT_EQ(Marked(), (Texts{"DELTA", "DUPONT", "DURAND"}));
}

TEST_F(GroupScanTest, TheWordAllDependsOnWhatIsDisplayed) {
  RunSelection(*directory_, RowsOf({{kSte1, "<", "DURAND"}}), false, true, 3);
  EXPECT_EQ(CompaniesWith(3), (Texts{"ALPHA", "DUPONT"}));
  Display(0);
  RunSelection(*directory_, RowsOf({{kSte1, "<", "DURAND"}}), false, false, 5);
  EXPECT_EQ(CompaniesWith(1), Texts{"ALPHA"});
}

}  // namespace
}  // namespace carnetel
