#include "base/path.h"

#include <gtest/gtest.h>

namespace carnetel {
namespace {

TEST(PathSplit, TakesAPathApart) {
  EXPECT_EQ(PathSplit("/home/x/MES.DAN"), (PathPieces{"", "/home/x/", "MES", ".DAN", false}));
  EXPECT_EQ(PathSplit("MES.DAN"), (PathPieces{"", "", "MES", ".DAN", false}));
  EXPECT_EQ(PathSplit("/MES"), (PathPieces{"", "/", "MES", "", false}));
  EXPECT_EQ(PathSplit(""), (PathPieces{}));
}

TEST(PathSplit, APathThatEndsInASeparatorIsAFolder) {
  EXPECT_EQ(PathSplit("/seat/"), (PathPieces{"", "/seat/", "", "", false}));
  EXPECT_EQ(PathSplit("/"), (PathPieces{"", "/", "", "", false}));
}

TEST(PathSplit, ADotInAFolderIsNoExtension) {
  EXPECT_EQ(PathSplit("/home/a.b/CARNETEL"), (PathPieces{"", "/home/a.b/", "CARNETEL", "", false}));
  EXPECT_EQ(PathSplit("/home/a.b/"), (PathPieces{"", "/home/a.b/", "", "", false}));
}

TEST(PathSplit, TheLastDotBeginsTheExtension) {
  EXPECT_EQ(PathSplit("/a/X.old.DAN"), (PathPieces{"", "/a/", "X.old", ".DAN", false}));
  EXPECT_EQ(PathSplit("X."), (PathPieces{"", "", "X", ".", false}));
}

TEST(PathSplit, ALeadingDotAloneBeginsAnExtension) {
  EXPECT_EQ(PathSplit(".ADR"), (PathPieces{"", "", "", ".ADR", false}));
  EXPECT_EQ(PathSplit("/a/.ADR"), (PathPieces{"", "/a/", "", ".ADR", false}));
}

TEST(PathSplit, ColonAndBackslashAreCharactersOfAName) {
  EXPECT_EQ(PathSplit("C:\\dir\\X.DAN"), (PathPieces{"", "", "C:\\dir\\X", ".DAN", false}));
  EXPECT_EQ(PathSplit("/a/12:30.DAN"), (PathPieces{"", "/a/", "12:30", ".DAN", false}));
}

TEST(PathSplit, TellsWildcardsInTheNameAlone) {
  EXPECT_TRUE(PathSplit("/a/*.DAN").wildcard);
  EXPECT_TRUE(PathSplit("/a/X.?01").wildcard);
  EXPECT_FALSE(PathSplit("/a*/b?/X.DAN").wildcard);
}

TEST(PathMerge, ReplacesTheExtension) {
  EXPECT_EQ(PathMerge("/a/b/X.DAN", ".ADR"), "/a/b/X.ADR");
  EXPECT_EQ(PathMerge("/home/a.b/CARNETEL", ".ADR"), "/home/a.b/CARNETEL.ADR");
  EXPECT_EQ(PathMerge("/home/a.b/CARNETEL", ".I01"), "/home/a.b/CARNETEL.I01");
}

TEST(PathMerge, ReplacesTheFolder) {
  EXPECT_EQ(PathMerge("/a/X.ADR", "/seat/"), "/seat/X.ADR");
  EXPECT_EQ(PathMerge("X.ADR", "seat/"), "seat/X.ADR");
  EXPECT_EQ(PathMerge("/a/X.ADR", "/home/a.b/"), "/home/a.b/X.ADR");
}

TEST(PathMerge, ReplacesTheNameAndKeepsTheRest) {
  EXPECT_EQ(PathMerge("/a/X.DAN", "CARN001"), "/a/CARN001.DAN");
  EXPECT_EQ(PathMerge("/a/X.DAN", "NUM.DAT"), "/a/NUM.DAT");
}

TEST(PathMerge, AFullOverlayReplacesAll) {
  EXPECT_EQ(PathMerge("/a/X.DAN", "/b/Y.TXT"), "/b/Y.TXT");
}

TEST(PathMerge, AnEmptyOverlayChangesNothing) {
  EXPECT_EQ(PathMerge("/a/X.DAN", ""), "/a/X.DAN");
  EXPECT_EQ(PathMerge("", "/a/X.DAN"), "/a/X.DAN");
}

TEST(PathMerge, CaseStaysAsItIs) {
  EXPECT_EQ(PathMerge("/Data/été.dan", ".ADR"), "/Data/été.ADR");
}

TEST(OverlayPieces, TheExtensionCanBeTakenAway) {
  PathPieces pieces = PathSplit("/a/X.DAN");
  pieces.extension.clear();
  EXPECT_EQ(ComposePath(pieces), "/a/X");
}

TEST(OverlayPieces, TellsTheWildcardsOfTheResult) {
  EXPECT_FALSE(OverlayPieces(PathSplit("/a/*.DAN"), PathSplit("X")).wildcard);
  EXPECT_TRUE(OverlayPieces(PathSplit("/a/X.DAN"), PathSplit(".I0?")).wildcard);
}

TEST(ComposePath, ADriveWithoutFolderGetsASeparator) {
  EXPECT_EQ(ComposePath({"C:", "", "X", ".DAN", false}), "C:/X.DAN");
  EXPECT_EQ(ComposePath({"C:", "/a/", "X", ".DAN", false}), "C:/a/X.DAN");
}

TEST(UpperCasePath, MakesAsciiAndAccentedLettersCapitals) {
  EXPECT_EQ(UpperCasePath(AnsiText("/home/\xE9t\xE9/\xE0\xFE.dan")).bytes(),
            "/HOME/\xC9T\xC9/\xC0\xDE.DAN");
  EXPECT_EQ(UpperCasePath(AnsiText("\x9A\x9C\x9E\xFF")).bytes(), "\x8A\x8C\x8E\x9F");
}

TEST(UpperCasePath, LeavesWhatHasNoCapital) {
  const std::string without = "/A_1[{~\x80\x83\x99\x9B\x9D\xAA\xB5\xBA\xC9\xD7\xDF\xF7";
  EXPECT_EQ(UpperCasePath(AnsiText(without)).bytes(), without);
}

}  // namespace
}  // namespace carnetel
