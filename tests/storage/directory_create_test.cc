// A directory made in an empty folder, byte by byte, and what stands in the way of making one.
#include <gmock/gmock.h>

#include "tests/storage/family_bytes.h"

namespace carnetel {
namespace {

using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

class DirectoryCreateTest : public StoreFixture {};

TEST_F(DirectoryCreateTest, EmptyFolderGetsFiveFiles) {
  Open();
  EXPECT_EQ(open_result, OpenResult::kCreated);
  EXPECT_THAT(files.List("/carnets"), UnorderedElementsAre("ESSAI.DAN", "ESSAI.I01", "ESSAI.I02",
                                                           "ESSAI.ADR", "ESSAI.CRT"));
  EXPECT_TRUE(SameBytes(MainHeaderBytes(0, 0), MainFile()));
  EXPECT_EQ(IndexFile(1).size(), 18216U);
  EXPECT_TRUE(SameBytes(IndexBuilder().Bytes(), IndexFile(1)));
  EXPECT_TRUE(SameBytes(IndexBuilder().Bytes(), IndexFile(2)));
  EXPECT_TRUE(SameBytes(ExpectedAddressFile({}, 0), AddressFileBytes()));
  EXPECT_TRUE(SameBytes(DefaultCriteriaBytes(), Contents(".CRT")));
}

TEST_F(DirectoryCreateTest, ClosingAnEmptyDirectoryChangesNothing) {
  Open();
  Close();
  EXPECT_TRUE(SameBytes(MainHeaderBytes(0, 0), MainFile()));
  EXPECT_TRUE(SameBytes(ExpectedAddressFile({}, 0), AddressFileBytes()));
}

TEST_F(DirectoryCreateTest, SecondOpeningWritesNothing) {
  Open();
  Close();
  files.ResetCounts();
  Open();
  EXPECT_EQ(open_result, OpenResult::kOpened);
  EXPECT_EQ(files.counts().writes, 0);
  EXPECT_EQ(files.counts().truncates, 0);
}

TEST_F(DirectoryCreateTest, NothingIsMadeWhenItMayNotBe) {
  DirectoryOptions options;
  options.path = kStem;
  options.may_create = false;
  Directory absent({files, clock, progress}, options);
  EXPECT_EQ(absent.OpenDirectory(), OpenResult::kNoStore);
  EXPECT_FALSE(absent.is_open());
  EXPECT_THAT(files.List("/carnets"), IsEmpty());
}

TEST_F(DirectoryCreateTest, FolderUnderTheNameOfTheMainFile) {
  files.MakeFolder(Path(".DAN"));
  Open();
  EXPECT_EQ(open_result, OpenResult::kNoStore);
  EXPECT_THAT(files.List("/carnets"), UnorderedElementsAre("ESSAI.DAN"));
}

TEST_F(DirectoryCreateTest, MainFileThatCannotBeMade) {
  files.SetContents("/carnets", AsBytes("a file where the folder should be"));
  Open();
  EXPECT_EQ(open_result, OpenResult::kNoStore);
}

TEST_F(DirectoryCreateTest, FolderUnderTheNameOfAnIndexClosesEverything) {
  files.MakeFolder(Path(".I02"));
  Open();
  EXPECT_EQ(open_result, OpenResult::kNoStore);
  EXPECT_FALSE(directory().is_open());
  EXPECT_FALSE(directory().main().is_open());
  EXPECT_FALSE(directory().index(1).is_open());
  EXPECT_FALSE(directory().address().is_open());
}

TEST_F(DirectoryCreateTest, FolderUnderTheNameOfTheAddressFileClosesEverything) {
  files.MakeFolder(Path(".ADR"));
  Open();
  EXPECT_EQ(open_result, OpenResult::kNoStore);
  EXPECT_FALSE(directory().main().is_open());
  EXPECT_FALSE(directory().index(2).is_open());
}

// What a creation finds under the names of derived files is checked as at any opening.
TEST_F(DirectoryCreateTest, OldIndexesUnderTheSameNameAreCleared) {
  Build(3);
  Close();
  files.Remove(Path(".DAN"));
  files.Remove(Path(".ADR"));
  Open();
  EXPECT_EQ(open_result, OpenResult::kCreated);
  EXPECT_TRUE(SameBytes(IndexBuilder().Bytes(), IndexFile(1)));
  EXPECT_TRUE(SameBytes(ExpectedAddressFile({}, 0), AddressFileBytes()));
}

// An address file made anew takes the criteria with it, unless the opening says otherwise.
TEST_F(DirectoryCreateTest, CriteriaOfAFormerDirectoryGo) {
  files.SetContents(Path(".CRT"), AsBytes("of a former directory"));
  Open();
  EXPECT_TRUE(SameBytes(DefaultCriteriaBytes(), Contents(".CRT")));
}

TEST_F(DirectoryCreateTest, CriteriaOfAFormerDirectoryStayWithKeptDependents) {
  files.SetContents(Path(".CRT"), AsBytes("of a former directory"));
  Open(kSte1, AddressMode::kKeepDependents);
  EXPECT_EQ(AsChars(Contents(".CRT")), "of a former directory");
}

}  // namespace
}  // namespace carnetel
