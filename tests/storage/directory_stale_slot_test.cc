// A delete reaches only the first 36 cards of a letter in an index; for any other its slot stays.
// The next opening takes it out, and so keeps marks, groups and criteria.
#include <gtest/gtest.h>

#include "storage/card_dispatch.h"
#include "storage/family_check.h"
#include "tests/storage/store_fixture.h"

namespace carnetel {
namespace {

class StaleSlot : public ::testing::Test {
 protected:
  static DirectoryOptions Options(int key_field = kSte1) {
    DirectoryOptions options;
    options.path = "/X";
    options.key_field = key_field;
    return options;
  }
  // 50 companies D10 to D59 whose surnames are filed under N, in order and at rest.
  void Build() {
    Directory directory({files_, clock_, progress_}, Options());
    ASSERT_EQ(directory.OpenDirectory(), OpenResult::kCreated);
    for (int i = 10; i < 60; ++i) {
      directory.context().current.Clear();
      directory.context().current.SetField(kSte1, OemText("D" + std::to_string(i)));
      directory.context().current.SetField(kNom, OemText("N" + std::to_string(i)));
      uint32_t position = 0;
      ASSERT_EQ(CardDispatch(directory).Add(false, &position), 0);
    }
    directory.CloseDirectory();
    Directory again({files_, clock_, progress_}, Options());
    ASSERT_EQ(again.OpenDirectory(), OpenResult::kOpened);
  }
  // Marks the card of row 2 and leaves a group file beside.
  void MarkOne() {
    Directory directory({files_, clock_, progress_}, Options());
    ASSERT_EQ(directory.OpenDirectory(), OpenResult::kOpened);
    EntrySlot entry = directory.address().Entry(2);
    entry.set_bit(1, true);
    directory.address().SetEntry(2, entry);
    directory.set_marked_count(1);
    directory.CloseDirectory();
    files_.SetContents("/X.GRP", AsBytes("groups"));
  }
  static uint32_t OffsetOf(int company) {
    return static_cast<uint32_t>(kCardSize * static_cast<size_t>(company - 9));
  }
  void ExpectMarkKeptAndAllInOrder(int key_field) {
    {
      Directory directory({files_, clock_, progress_}, Options(key_field));
      ASSERT_EQ(directory.OpenDirectory(), OpenResult::kOpened);
      if (key_field == kSte1) {
        EXPECT_TRUE(directory.address().Entry(2).bit(1));
        EXPECT_EQ(directory.marked_count(), 1);
        EXPECT_TRUE(files_.Exists("/X.GRP"));
      }
    }
    EXPECT_TRUE(CheckFamily(files_, FamilyPaths(files_, "/X"), key_field).empty());
  }

  FakeClock clock_{1000000000};
  MemoryFileSystem files_{clock_};
  SilentProgress progress_;
};

TEST_F(StaleSlot, OfADeletedCardGoesAtTheNextOpening) {
  Build();
  MarkOne();
  {
    Directory directory({files_, clock_, progress_}, Options());
    ASSERT_EQ(directory.OpenDirectory(), OpenResult::kOpened);
    uint32_t moved_from = 0;
    ASSERT_TRUE(DeleteCard(directory, OffsetOf(50), &moved_from));
    EXPECT_EQ(moved_from, OffsetOf(59));
  }
  EXPECT_FALSE(CheckFamily(files_, FamilyPaths(files_, "/X"), kSte1).empty());
  ExpectMarkKeptAndAllInOrder(kSte1);
}

TEST_F(StaleSlot, OfAChangedKeyGoesAtTheNextOpening) {
  Build();
  MarkOne();
  {
    Directory directory({files_, clock_, progress_}, Options());
    ASSERT_EQ(directory.OpenDirectory(), OpenResult::kOpened);
    CardRecord card;
    card.SetField(kSte1, OemText("Moved"));
    card.SetField(kNom, OemText("Moved"));
    ASSERT_EQ(ChangeCard(directory, OffsetOf(55), card).result, ChangeResult::kMoved);
  }
  ExpectMarkKeptAndAllInOrder(kSte1);
}

TEST_F(StaleSlot, GoesFromTheInactiveIndexToo) {
  Build();
  {
    Directory directory({files_, clock_, progress_}, Options());
    ASSERT_EQ(directory.OpenDirectory(), OpenResult::kOpened);
    uint32_t moved_from = 0;
    ASSERT_TRUE(DeleteCard(directory, OffsetOf(48), &moved_from));
    ASSERT_TRUE(DeleteCard(directory, OffsetOf(49), &moved_from));
  }
  ExpectMarkKeptAndAllInOrder(kNom);
}

TEST_F(StaleSlot, ADirectoryAtRestIsNotWrittenTo) {
  Build();
  MarkOne();
  const std::vector<std::byte> company = files_.Contents("/X.I01");
  const std::vector<std::byte> surname = files_.Contents("/X.I02");
  { Directory({files_, clock_, progress_}, Options()).OpenDirectory(); }
  EXPECT_EQ(files_.Contents("/X.I01"), company);
  EXPECT_EQ(files_.Contents("/X.I02"), surname);
}

}  // namespace
}  // namespace carnetel
