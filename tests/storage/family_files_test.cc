#include "storage/family_files.h"

#include <gtest/gtest.h>

#include "tests/storage/store_fixture.h"

namespace carnetel {
namespace {

class FamilyFilesTest : public ::testing::Test {
 protected:
  void Make(std::initializer_list<std::string_view> paths) {
    for (const std::string_view path : paths) files.SetContents(std::string(path), AsBytes("x"));
  }
  // The paths given that exist.
  std::vector<std::string> Left(std::initializer_list<std::string_view> paths) {
    std::vector<std::string> left;
    for (const std::string_view path : paths) {
      if (files.Exists(std::string(path))) left.emplace_back(path);
    }
    return left;
  }
  // A group file whose rows have these names of files to go with them.
  void MakeGroups(const std::string& path, const std::vector<std::string_view>& names) {
    FileBytes bytes(176 + 80 * names.size());
    StoreLe32(bytes, 92, 176);
    StoreLe16(bytes, 96, static_cast<uint16_t>(names.size()));
    StoreLe16(bytes, 98, 80);
    for (size_t row = 0; row < names.size(); ++row) {
      StorePadded(bytes, 176 + 80 * row + 32, 16, names[row]);
    }
    files.SetContents(path, bytes);
  }

  FakeClock clock;
  MemoryFileSystem files{clock};
};

using Paths = std::vector<std::string>;

TEST_F(FamilyFilesTest, TheListsOfExtensionsAreInTheirOrder) {
  EXPECT_EQ(Paths(kFamilyExtensions.begin(), kFamilyExtensions.end()),
            (Paths{".DAN", ".ADR", ".I01", ".I02", ".CRT", ".LST", ".GRP"}));
  EXPECT_EQ(Paths(kDependentExtensions.begin(), kDependentExtensions.end()),
            (Paths{".DAN", ".ADR", ".I01", ".CRT", ".LST", ".GRP"}));
}

TEST_F(FamilyFilesTest, TheStemIsThePathWithoutAnExtensionOfTheFamily) {
  EXPECT_EQ(FamilyPaths(files, "/d/MES").stem(), "/d/MES");
  EXPECT_EQ(FamilyPaths(files, "/d/MES.DAN").stem(), "/d/MES");
  EXPECT_EQ(FamilyPaths(files, "/d/MES.adr").stem(), "/d/MES");
  EXPECT_EQ(FamilyPaths(files, "/d/MES.I02").stem(), "/d/MES");
  EXPECT_EQ(FamilyPaths(files, "/d/MES.CLIENTS").stem(), "/d/MES.CLIENTS");
}

TEST_F(FamilyFilesTest, ExtensionsAreWrittenInCapitals) {
  const FamilyPaths paths(files, "/d/mes");
  EXPECT_EQ(paths.Main(), "/d/mes.DAN");
  EXPECT_EQ(paths.Of(".I01"), "/d/mes.I01");
}

TEST_F(FamilyFilesTest, AFileUnderAnotherCaseIsUsedAsItIs) {
  Make({"/d/mes.dan", "/d/MES.i01"});
  const FamilyPaths paths(files, "/d/MES.DAN");
  EXPECT_EQ(paths.Main(), "/d/mes.dan");
  EXPECT_EQ(paths.Of(".I01"), "/d/MES.i01");
  EXPECT_EQ(paths.Of(".ADR"), "/d/mes.ADR");
}

TEST_F(FamilyFilesTest, FilesOfASeatLieInItsFolder) {
  const FamilyPaths paths(files, "/d/MES", "/poste/");
  EXPECT_EQ(paths.Main(), "/d/MES.DAN");
  EXPECT_EQ(paths.Of(".DAN"), "/d/MES.DAN");
  EXPECT_EQ(paths.Of(".I01"), "/d/MES.I01");
  EXPECT_EQ(paths.Of(".I02"), "/d/MES.I02");
  for (const std::string_view extension : {".ADR", ".CRT", ".GRP", ".LST"}) {
    EXPECT_EQ(paths.Of(extension), "/poste/MES" + std::string(extension));
    EXPECT_EQ(paths.BesideMain(extension), "/d/MES" + std::string(extension));
  }
}

TEST_F(FamilyFilesTest, DeletingADirectoryTakesTheWholeFamily) {
  Make({"/d/MES.DAN", "/d/MES.ADR", "/d/MES.I01", "/d/MES.I02", "/d/MES.CRT", "/d/MES.LST",
        "/d/MES.GRP", "/d/MES.T01", "/d/MES.T02", "/d/MES.T04", "/d/MES.T08", "/d/MES.T16"});
  Make({"/d/MES.T32", "/d/MES.TXT", "/d/MES2.DAN", "/d/AUTRE.I01"});
  EXPECT_TRUE(DeleteDirectoryFiles(files, "/d/MES.DAN", ""));
  std::vector<std::string> left = files.List("/d");
  std::ranges::sort(left);
  EXPECT_EQ(left, (Paths{"AUTRE.I01", "MES.T32", "MES.TXT", "MES2.DAN"}));
}

TEST_F(FamilyFilesTest, FilesThatAreNotThereAreNotMissed) {
  Make({"/d/MES.DAN"});
  EXPECT_TRUE(DeleteDirectoryFiles(files, "/d/MES", ""));
  EXPECT_FALSE(files.Exists("/d/MES.DAN"));
}

TEST_F(FamilyFilesTest, DeletionBeginsAtTheExtensionAsked) {
  Make({"/d/MES.DAN", "/d/MES.ADR", "/d/MES.I01", "/d/MES.I02", "/d/MES.CRT"});
  EXPECT_FALSE(DeleteDirectoryFiles(files, "/d/MES.DAN", "", 3));
  EXPECT_EQ(Left({"/d/MES.DAN", "/d/MES.ADR", "/d/MES.I01", "/d/MES.I02", "/d/MES.CRT"}),
            (Paths{"/d/MES.DAN", "/d/MES.ADR", "/d/MES.I01"}));
}

TEST_F(FamilyFilesTest, FromASeatTheSharedIndexesStayBehind) {
  Make({"/d/MES.DAN", "/d/MES.I01", "/d/MES.I02", "/d/MES.ADR"});
  Make({"/poste/MES.ADR", "/poste/MES.CRT", "/poste/MES.GRP", "/poste/MES.DAN"});
  EXPECT_TRUE(DeleteDirectoryFiles(files, "/d/MES.DAN", "/poste/"));
  EXPECT_EQ(Left({"/d/MES.DAN", "/d/MES.I01", "/d/MES.I02", "/d/MES.ADR"}),
            (Paths{"/d/MES.I01", "/d/MES.I02", "/d/MES.ADR"}));
  EXPECT_EQ(Left({"/poste/MES.ADR", "/poste/MES.CRT", "/poste/MES.GRP", "/poste/MES.DAN"}),
            (Paths{"/poste/MES.DAN"}));
}

TEST_F(FamilyFilesTest, FromASeatTheFirstExtensionAskedIsDeletedBesideTheMainFile) {
  Make({"/d/MES.CRT", "/d/MES.LST", "/d/MES.GRP", "/poste/MES.CRT", "/poste/MES.LST",
        "/poste/MES.GRP"});
  (void)DeleteDirectoryFiles(files, "/d/MES.DAN", "/poste/", 4);
  EXPECT_EQ(Left({"/d/MES.CRT", "/d/MES.LST", "/d/MES.GRP", "/poste/MES.CRT", "/poste/MES.LST",
                  "/poste/MES.GRP"}),
            (Paths{"/d/MES.LST", "/d/MES.GRP", "/poste/MES.CRT"}));
}

TEST_F(FamilyFilesTest, TheDependentsAreCriteriaLayoutsAndGroups) {
  Make({"/d/MES.DAN", "/d/MES.ADR", "/d/MES.I01", "/d/MES.I02", "/d/MES.CRT", "/d/MES.LST",
        "/d/MES.GRP", "/d/MES.T01", "/d/MES.T16"});
  DeleteDependents(files, FamilyPaths(files, "/d/MES"));
  std::vector<std::string> left = files.List("/d");
  std::ranges::sort(left);
  EXPECT_EQ(left, (Paths{"MES.ADR", "MES.DAN", "MES.I01", "MES.I02"}));
}

TEST_F(FamilyFilesTest, TheFilesThatGroupsNameGoWithThem) {
  Make({"/d/MES.DAN", "/d/ROW0", "/d/AMIS.T32", "/d/CLIENTS.T64", "/d/AUTRE"});
  MakeGroups("/d/MES.GRP", {"ROW0", "AMIS.T32", "", "CLIENTS.T64", "ABSENT"});
  DeleteDependents(files, FamilyPaths(files, "/d/MES"));
  std::vector<std::string> left = files.List("/d");
  std::ranges::sort(left);
  EXPECT_EQ(left, (Paths{"AUTRE", "MES.DAN", "ROW0"}));
}

TEST_F(FamilyFilesTest, AGroupCannotTakeAMainFileOrAFileElsewhere) {
  Make({"/d/MES.DAN", "/d/AUTRE.dan", "/e/X"});
  MakeGroups("/d/MES.GRP", {"ROW0", "MES.DAN", "AUTRE.dan", "../e/X", "/e/X"});
  DeleteDependents(files, FamilyPaths(files, "/d/MES"));
  EXPECT_EQ(Left({"/d/MES.DAN", "/d/AUTRE.dan", "/e/X"}),
            (Paths{"/d/MES.DAN", "/d/AUTRE.dan", "/e/X"}));
}

TEST_F(FamilyFilesTest, ADamagedGroupFileGoesWithoutTakingOthers) {
  Make({"/d/MES.DAN", "/d/MES.GRP", "/d/X"});
  DeleteDependents(files, FamilyPaths(files, "/d/MES"));
  EXPECT_EQ(Left({"/d/MES.GRP", "/d/X"}), (Paths{"/d/X"}));
}

TEST_F(FamilyFilesTest, OfASeatItsOwnDependentsGo) {
  Make({"/d/MES.DAN", "/d/MES.CRT", "/d/MES.GRP", "/poste/MES.CRT", "/poste/MES.GRP",
        "/poste/MES.LST", "/poste/AMIS"});
  MakeGroups("/poste/MES.GRP", {"ROW0", "AMIS"});
  DeleteDependents(files, FamilyPaths(files, "/d/MES", "/poste/"));
  EXPECT_EQ(Left({"/d/MES.CRT", "/d/MES.GRP", "/poste/MES.CRT", "/poste/MES.GRP", "/poste/MES.LST",
                  "/poste/AMIS"}),
            (Paths{"/d/MES.CRT", "/d/MES.GRP"}));
}

}  // namespace
}  // namespace carnetel
