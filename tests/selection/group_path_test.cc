// To which directory a group file belongs: the path of the address file that it keeps.
#include <algorithm>

#include "selection/group_file.h"
#include "tests/selection/criteria_bytes.h"
#include "tests/selection/group_bytes.h"
#include "tests/selection/selection_testing.h"

namespace carnetel {
namespace {

const std::string k70 = std::string(70, 'a');

class GroupPathTest : public SelectionFixture {
 protected:
  // A directory at this path with one group of one card.
  void MakeGroup(const std::string& path) {
    Open(kSte1, path);
    AddCompanies({"ALPHA", "BETA"});
    MarkOnly({"BETA"});
    GroupFile file(*directory_);
    file.Check();
    EXPECT_TRUE(file.CreateGroup({OemText("A"), kMembersOnly}, AnsiText("Sans Nom"), 0));
  }
  void CopyFamily(const std::string& from, const std::string& to) {
    for (const char* extension : {".DAN", ".ADR", ".I01", ".I02", ".CRT", ".GRP"}) {
      files_.SetContents(to + extension, files_.Contents(from + extension));
    }
  }
  size_t GroupsAfterCheck() {
    GroupFile file(*directory_);
    file.Check();
    return file.Groups().size();
  }
  void ExpectKept(const std::string& oem_path) {
    EXPECT_EQ(GroupsAfterCheck(), 1U);
    EXPECT_TRUE(
        SameBytes(BytesOf(GroupHeaderText(2, oem_path)), ByteView(Contents(".GRP")).first(176)));
  }
};

TEST_F(GroupPathTest, AMovedDirectoryLosesTheNamesAndKeepsTheBits) {
  MakeGroup("/d/X");
  Close();
  CopyFamily("/d/X", "/e/X");
  Open(kSte1, "/e/X");
  EXPECT_EQ(GroupsAfterCheck(), 0U);
  EXPECT_TRUE(
      SameBytes(BytesOf(GroupHeaderText(1, "/e/X.ADR") + WholeFileRowText()), Contents(".GRP")));
  EXPECT_EQ(CompaniesWith(2), Texts{"BETA"});
}

TEST_F(GroupPathTest, ARenamedDirectoryToo) {
  MakeGroup("/d/X");
  Close();
  CopyFamily("/d/X", "/d/Y");
  Open(kSte1, "/d/Y");
  EXPECT_EQ(GroupsAfterCheck(), 0U);
  const std::string row = GroupRowText({.name = "Tout le Fichier ", .file = "Y.ADR"});
  EXPECT_TRUE(SameBytes(BytesOf(GroupHeaderText(1, "/d/Y.ADR") + row), Contents(".GRP")));
  EXPECT_EQ(CompaniesWith(2), Texts{"BETA"});
}

TEST_F(GroupPathTest, CaseDoesNotCount) {
  MakeGroup("/d/X");
  FileBytes file = Contents(".GRP");
  StorePadded(file, 100, 64, "/D/x.adr");
  SetContents(".GRP", file);
  EXPECT_EQ(GroupsAfterCheck(), 1U);
  EXPECT_TRUE(SameBytes(file, Contents(".GRP")));
}

TEST_F(GroupPathTest, TheBeginningOfAPathIsAnotherPath) {
  MakeGroup("/d/X");
  const FileBytes file = Contents(".GRP");
  for (const char* path : {"/d/X.AD", "/d/X.ADRE", ""}) {
    FileBytes other = file;
    StorePadded(other, 100, 64, path);
    SetContents(".GRP", other);
    EXPECT_EQ(GroupsAfterCheck(), 0U) << path;
  }
}

TEST_F(GroupPathTest, APathOf64BytesFillsItsPlace) {
  const std::string stem = "/d/" + std::string(57, 'b');
  MakeGroup(stem);
  ExpectKept(stem + ".ADR");
}

TEST_F(GroupPathTest, ALongerPathIsComparedAsFarAsItIsKept) {
  MakeGroup("/d/" + k70 + "/X");
  ExpectKept("/d/" + k70.substr(0, 61));
}

TEST_F(GroupPathTest, ALongDirectoryThatMovedBehindTheKeptPartGoesUnnoticed) {
  MakeGroup("/d/" + k70 + "/X");
  Close();
  CopyFamily("/d/" + k70 + "/X", "/d/" + k70 + "b/X");
  Open(kSte1, "/d/" + k70 + "b/X");
  EXPECT_EQ(GroupsAfterCheck(), 1U);
  Close();
  CopyFamily("/d/" + k70 + "/X", "/d/c" + k70 + "/X");
  Open(kSte1, "/d/c" + k70 + "/X");
  EXPECT_EQ(GroupsAfterCheck(), 0U);
}

TEST_F(GroupPathTest, AccentsAreKeptInOem) {
  MakeGroup("/d/été/X");
  ExpectKept("/d/\x82t\x82/X.ADR");
}

TEST_F(GroupPathTest, WhatOemDoesNotHaveIsComparedAsItIsKept) {
  MakeGroup("/d/дом/X");
  ExpectKept("/d/\?\?\?/X.ADR");
}

TEST_F(GroupPathTest, ALongPathOfSuchCharactersToo) {
  std::string folder;
  for (int i = 0; i < 40; ++i) folder += "\u0434\u00E9";
  MakeGroup("/d/" + folder + "/X");
  std::string kept = "/d/";
  while (kept.size() < 64) kept += "?\x82";
  ExpectKept(kept.substr(0, 64));
}

TEST_F(GroupPathTest, ARelativePathIsKeptWhole) {
  MakeGroup("d/./X");
  path_ = "/d/X";
  ExpectKept("/d/X.ADR");
}

TEST_F(GroupPathTest, WithSeatsTheGroupsLieInTheSeatsFolder) {
  DirectoryOptions options;
  options.path = "/d/X";
  options.shared_dir = "/seat/";
  directory_ = std::make_unique<Directory>(DirectoryServices{faults_, clock_, recorded_}, options);
  ASSERT_EQ(directory_->OpenDirectory(), OpenResult::kCreated);
  GroupFile(*directory_).Check();
  EXPECT_FALSE(files_.Exists("/d/X.GRP"));
  EXPECT_TRUE(SameBytes(BytesOf(GroupHeaderText(1, "/seat/X.ADR") + WholeFileRowText()),
                        files_.Contents("/seat/X.GRP")));
}

}  // namespace
}  // namespace carnetel
