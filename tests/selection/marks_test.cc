// Marks of single cards and of all of them, in the bytes of the address file.
#include "selection/marks.h"

#include "tests/selection/selection_testing.h"

namespace carnetel {
namespace {

class MarksTest : public SelectionFixture {
 protected:
  void SetUp() override {
    Open();
    AddCompanies({"ALPHA", "BETA", "DELTA"});
  }
};

TEST_F(MarksTest, MarkingAndUnmarkingRestoresFileAndCount) {
  const FileBytes before = Contents(".ADR");
  EXPECT_TRUE(SetMark(*directory_, 1, true));
  EXPECT_EQ(directory_->marked_count(), 1);
  FileBytes marked = before;
  StoreU8(marked, 320 + 16 + 4, 0x03);
  EXPECT_TRUE(SameBytes(marked, Contents(".ADR")));
  EXPECT_TRUE(SetMark(*directory_, 1, false));
  EXPECT_EQ(directory_->marked_count(), 0);
  EXPECT_TRUE(SameBytes(before, Contents(".ADR")));
}

TEST_F(MarksTest, AMarkThatIsAsItShouldBeIsNoChange) {
  EXPECT_FALSE(SetMark(*directory_, 0, false));
  EXPECT_TRUE(SetMark(*directory_, 0, true));
  EXPECT_FALSE(SetMark(*directory_, 0, true));
  EXPECT_FALSE(SetMark(*directory_, 3, true));
  EXPECT_EQ(directory_->marked_count(), 1);
}

TEST_F(MarksTest, AllCardsAreMarkedInWhatIsDisplayed) {
  Display(4);
  SetAllMarks(*directory_, true);
  EXPECT_EQ(directory_->marked_count(), 3);
  EXPECT_EQ(CompaniesWith(5).size(), 3U);
  EXPECT_EQ(CompaniesWith(1), Texts{});
  directory_->set_marked_count(99);
  SetAllMarks(*directory_, false);
  EXPECT_EQ(directory_->marked_count(), 0);
  EXPECT_EQ(CompaniesWith(5), Texts{});
}

TEST_F(MarksTest, TheCountWaitsForTheListToClose) {
  SetMark(*directory_, 0, true);
  SetMark(*directory_, 2, true);
  EXPECT_EQ(LoadLe16(Contents(".ADR"), 130), 0);
  EXPECT_EQ(CountMarks(*directory_), 2);
  directory_->CloseListView();
  EXPECT_EQ(LoadLe16(Contents(".ADR"), 130), 2);
}

}  // namespace
}  // namespace carnetel
