// The files of a family by their names: in any case, in the folder of a seat, and deleted together.
#include <gmock/gmock.h>

#include "tests/storage/family_bytes.h"
#include "tests/storage/family_check.h"

namespace carnetel {
namespace {

using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

class DirectoryFamilyTest : public StoreFixture {
 protected:
  void Put(const std::string& path) { files.SetContents(path, AsBytes("x")); }
  std::vector<std::string> Names() { return files.List("/carnets"); }
  std::unique_ptr<Directory> OpenAt(const std::string& path, const std::string& shared_dir = {},
                                    AddressMode mode = AddressMode::kNormal) {
    DirectoryOptions options;
    options.path = path;
    options.shared_dir = shared_dir;
    auto opened = std::make_unique<Directory>(DirectoryServices{files, clock, progress}, options);
    open_result = opened->OpenDirectory(mode);
    return opened;
  }
  // A group file whose rows name these files; row 0, the whole file, names the first.
  void PutGroups(const std::string& path, const std::vector<std::string_view>& names) {
    FileBytes file(176 + 80 * names.size());
    StoreLe32(file, 92, 176);
    StoreLe16(file, 96, static_cast<uint16_t>(names.size()));
    StoreLe16(file, 98, 80);
    for (size_t row = 0; row < names.size(); ++row) {
      StorePadded(file, 176 + 80 * row + 32, 16, names[row]);
    }
    files.SetContents(path, file);
  }
};

TEST_F(DirectoryFamilyTest, NamesInOtherCasesAreUsedAsTheyAre) {
  Build(3);
  Close();
  files.Rename("/carnets/ESSAI.DAN", "/carnets/essai.dan");
  files.Rename("/carnets/ESSAI.I01", "/carnets/Essai.i01");
  files.Rename("/carnets/ESSAI.I02", "/carnets/essai.I02");
  files.Rename("/carnets/ESSAI.ADR", "/carnets/essai.adr");
  files.Rename("/carnets/ESSAI.CRT", "/carnets/eSSAI.crt");
  files.ResetCounts();
  const auto opened = OpenAt("/carnets/ESSAI");
  EXPECT_EQ(open_result, OpenResult::kOpened);
  EXPECT_EQ(opened->main().count(), 3U);
  EXPECT_EQ(files.counts().writes, 0);
  EXPECT_THAT(Names(), UnorderedElementsAre("essai.dan", "Essai.i01", "essai.I02", "essai.adr",
                                            "eSSAI.crt"));
}

TEST_F(DirectoryFamilyTest, MissingFilesAreMadeBesideTheMainFileInCapitals) {
  Build(3);
  Close();
  files.Rename("/carnets/ESSAI.DAN", "/carnets/essai.dan");
  for (const std::string_view extension : {".I01", ".I02", ".ADR", ".CRT"}) {
    files.Remove(Path(extension));
  }
  const auto opened = OpenAt("/carnets/ESSAI.DAN");
  EXPECT_EQ(open_result, OpenResult::kOpened);
  EXPECT_THAT(Names(), UnorderedElementsAre("essai.dan", "essai.I01", "essai.I02", "essai.ADR",
                                            "essai.CRT"));
}

TEST_F(DirectoryFamilyTest, AnyNameOfTheFamilyOpensIt) {
  Build(2);
  Close();
  for (const std::string_view name : {"ESSAI", "ESSAI.DAN", "ESSAI.dan", "ESSAI.I02", "essai"}) {
    const auto opened = OpenAt("/carnets/" + std::string(name));
    EXPECT_EQ(open_result, OpenResult::kOpened) << name;
    EXPECT_EQ(opened->main().count(), 2U) << name;
  }
  EXPECT_EQ(Names().size(), 5U);
}

TEST_F(DirectoryFamilyTest, SeatHasItsOwnAddressFileAndCriteria) {
  const auto opened = OpenAt("/carnets/ESSAI", "/poste1/");
  EXPECT_EQ(open_result, OpenResult::kCreated);
  EXPECT_THAT(Names(), UnorderedElementsAre("ESSAI.DAN", "ESSAI.I01", "ESSAI.I02"));
  EXPECT_THAT(files.List("/poste1"), UnorderedElementsAre("ESSAI.ADR", "ESSAI.CRT"));
}

TEST_F(DirectoryFamilyTest, LosingTheAddressFileTakesItsDependents) {
  Build(2);
  Close();
  PutGroups(Path(".GRP"), {"ZERO.LNK", "UN.LNK", "", "DEUX.LNK"});
  for (const std::string_view name :
       {"ZERO.LNK", "UN.LNK", "DEUX.LNK", "TROIS.LNK", "ESSAI.LST", "ESSAI.T01", "ESSAI.T02",
        "ESSAI.T03", "ESSAI.T04", "ESSAI.T08", "ESSAI.T16", "ESSAI.T32"}) {
    Put("/carnets/" + std::string(name));
  }
  Put(Path(".CRT"));
  files.Remove(Path(".ADR"));
  Open();
  EXPECT_THAT(Names(),
              UnorderedElementsAre("ESSAI.DAN", "ESSAI.I01", "ESSAI.I02", "ESSAI.ADR", "ESSAI.CRT",
                                   "ZERO.LNK", "TROIS.LNK", "ESSAI.T03", "ESSAI.T32"));
  EXPECT_TRUE(SameBytes(DefaultCriteriaBytes(), Contents(".CRT")));
}

TEST_F(DirectoryFamilyTest, KeptDependentsStay) {
  Build(2);
  Close();
  PutGroups(Path(".GRP"), {"", "UN.LNK"});
  Put("/carnets/UN.LNK");
  Put(Path(".LST"));
  Put(Path(".CRT"));
  Put(Path(".T01"));
  files.Remove(Path(".ADR"));
  Open(kSte1, AddressMode::kKeepDependents);
  EXPECT_THAT(Names(),
              UnorderedElementsAre("ESSAI.DAN", "ESSAI.I01", "ESSAI.I02", "ESSAI.ADR", "ESSAI.CRT",
                                   "ESSAI.GRP", "ESSAI.LST", "ESSAI.T01", "UN.LNK"));
  EXPECT_EQ(AsChars(Contents(".CRT")), "x");
}

TEST_F(DirectoryFamilyTest, DependentsOfASeatLieInItsFolder) {
  OpenAt("/carnets/ESSAI", "/poste1/")->CloseDirectory();
  PutGroups("/poste1/ESSAI.GRP", {"", "UN.LNK"});
  Put("/poste1/UN.LNK");
  Put("/poste1/ESSAI.LST");
  Put("/carnets/ESSAI.GRP");
  Put("/carnets/ESSAI.LST");
  files.Remove("/poste1/ESSAI.ADR");
  OpenAt("/carnets/ESSAI", "/poste1/");
  EXPECT_THAT(files.List("/poste1"), UnorderedElementsAre("ESSAI.ADR", "ESSAI.CRT"));
  EXPECT_THAT(Names(), UnorderedElementsAre("ESSAI.DAN", "ESSAI.I01", "ESSAI.I02", "ESSAI.GRP",
                                            "ESSAI.LST"));
}

// A group names a file of its own; a damaged or crafted name must not reach anything else.
TEST_F(DirectoryFamilyTest, NoMainFileGoesByTheNameOfAGroup) {
  Build(2);
  Close();
  Put("/carnets/AUTRE.DAN");
  Put("/carnets/autre.dan");
  Put("/ailleurs/NOTE.TXT");
  PutGroups(Path(".GRP"),
            {"", "ESSAI.DAN", "AUTRE.DAN", "autre.dan", "/ailleurs/NOTE.TXT", "../ailleurs/NOTE"});
  files.Remove(Path(".ADR"));
  Open();
  EXPECT_EQ(directory().main().count(), 2U);
  EXPECT_TRUE(files.Exists("/carnets/AUTRE.DAN"));
  EXPECT_TRUE(files.Exists("/carnets/autre.dan"));
  EXPECT_TRUE(files.Exists("/ailleurs/NOTE.TXT"));
}

TEST_F(DirectoryFamilyTest, DamagedGroupFilesGoToo) {
  for (const size_t size : {0U, 50U, 176U, 200U}) {
    Build(1);
    Close();
    FileBytes groups(size, std::byte{0xFF});
    files.SetContents(Path(".GRP"), groups);
    files.Remove(Path(".ADR"));
    Open();
    EXPECT_EQ(open_result, OpenResult::kOpened) << size;
    EXPECT_FALSE(files.Exists(Path(".GRP"))) << size;
    Close();
    files.Remove(Path(".DAN"));
  }
}

TEST_F(DirectoryFamilyTest, WholeFamilyIsDeleted) {
  Build(2);
  Close();
  for (const std::string_view extension :
       {".GRP", ".LST", ".T01", ".T02", ".T04", ".T08", ".T16", ".TXT", ".T03"}) {
    Put(Path(extension));
  }
  Put("/carnets/AUTRE.DAN");
  EXPECT_TRUE(DeleteDirectoryFiles(files, Path(".DAN"), ""));
  EXPECT_THAT(Names(), UnorderedElementsAre("AUTRE.DAN", "ESSAI.TXT", "ESSAI.T03"));
}

TEST_F(DirectoryFamilyTest, FamilyInOtherCasesIsDeleted) {
  for (const std::string_view name : {"essai.dan", "Essai.i01", "essai.I02", "essai.adr"}) {
    Put("/carnets/" + std::string(name));
  }
  EXPECT_TRUE(DeleteDirectoryFiles(files, "/carnets/ESSAI", ""));
  EXPECT_THAT(Names(), IsEmpty());
}

TEST_F(DirectoryFamilyTest, DeletionFromAPositionOn) {
  Build(1);
  Close();
  Put(Path(".GRP"));
  EXPECT_FALSE(DeleteDirectoryFiles(files, Path(".DAN"), "", 3));
  EXPECT_THAT(Names(), UnorderedElementsAre("ESSAI.DAN", "ESSAI.ADR", "ESSAI.I01"));
}

// From the second name on, a seat deletes in its own folder: both shared indexes stay behind.
TEST_F(DirectoryFamilyTest, DeletionFromASeatLeavesTheSharedIndexes) {
  OpenAt("/carnets/ESSAI", "/poste1/")->CloseDirectory();
  for (const std::string_view name :
       {"/poste1/ESSAI.GRP", "/poste1/ESSAI.LST", "/carnets/ESSAI.GRP", "/carnets/ESSAI.ADR",
        "/carnets/ESSAI.T01"}) {
    Put(std::string(name));
  }
  EXPECT_TRUE(DeleteDirectoryFiles(files, Path(".DAN"), "/poste1/"));
  EXPECT_THAT(files.List("/poste1"), IsEmpty());
  EXPECT_THAT(Names(), UnorderedElementsAre("ESSAI.I01", "ESSAI.I02", "ESSAI.GRP", "ESSAI.ADR"));
}

TEST_F(DirectoryFamilyTest, NextCreationRepairsTheIndexesASeatLeft) {
  {
    const auto opened = OpenAt("/carnets/ESSAI", "/poste1/");
    opened->context().current = MakeCard("ACME");
    uint32_t position = 0;
    EXPECT_EQ(CardDispatch(*opened).Add(false, &position), 0);
  }
  EXPECT_TRUE(DeleteDirectoryFiles(files, Path(".DAN"), "/poste1/"));
  OpenAt("/carnets/ESSAI", "/poste1/");
  EXPECT_EQ(open_result, OpenResult::kCreated);
  EXPECT_TRUE(SameBytes(IndexBuilder().Bytes(), IndexFile(1)));
  EXPECT_TRUE(SameBytes(ExpectedAddressFile({}, 0), files.Contents("/poste1/ESSAI.ADR")));
}

TEST_F(DirectoryFamilyTest, DirectoryDeletedWhileOpenLeavesNothing) {
  Build(3);
  EXPECT_TRUE(DeleteDirectoryFiles(files, Path(".DAN"), ""));
  Close();
  EXPECT_THAT(Names(), IsEmpty());
}

TEST_F(DirectoryFamilyTest, DeletingWhatIsNotThere) {
  EXPECT_TRUE(DeleteDirectoryFiles(files, Path(".DAN"), ""));
}

TEST_F(DirectoryFamilyTest, MarksChangedGiveTheMainFileANewTime) {
  Build(1);
  clock.Advance(60);
  directory().set_selection_dirty();
  Close();
  const auto file = files.Open(Path(".DAN"), OpenMode::kRead);
  EXPECT_EQ(file->ModificationTime(), kStartTime + 60);
}

TEST_F(DirectoryFamilyTest, ClosingAloneKeepsTheTime) {
  Build(1);
  clock.Advance(60);
  Close();
  const auto file = files.Open(Path(".DAN"), OpenMode::kRead);
  EXPECT_EQ(file->ModificationTime(), kStartTime);
}

}  // namespace
}  // namespace carnetel
