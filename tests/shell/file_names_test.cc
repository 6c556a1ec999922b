#include "shell/file_names.h"

#include <gtest/gtest.h>

#include "base/path.h"
#include "base/string_table.h"

namespace carnetel {
namespace {

using Names = std::vector<std::string>;
using Filters = std::vector<FileFilter>;

std::string HomeOfAnne(const std::string& name) {
  return name == "HOME" ? "/home/anne" : "";
}

// ---- filters ----

TEST(FileFilters, TheLastCharacterSeparates) {
  EXPECT_EQ(ParseFilters(LoadText(168)), (Filters{{"Fichier Carnetel(*.Dan)", "*.DAN"}}));
  EXPECT_EQ(ParseFilters(LoadText(184)), (Filters{{"Fichier Dbf (*.dbf)", "*.dbf"}}));
  EXPECT_EQ(ParseFilters("Texte#*.txt#"), (Filters{{"Texte", "*.txt"}}));
}

TEST(FileFilters, TheListForEveryFileHasFiveRows) {
  const Filters filters = ParseFilters(LoadText(167));
  ASSERT_EQ(filters.size(), 5u);
  EXPECT_EQ(filters[0], (FileFilter{"Fichier(*.*)", "*.*"}));
  EXPECT_EQ(filters[4], (FileFilter{"Fichier Dbf(*.dbf)", "*.dbf"}));
}

TEST(FileFilters, ATextWithoutItsPatternIsNone) {
  EXPECT_EQ(ParseFilters(""), Filters());
  EXPECT_EQ(ParseFilters("Texte|"), Filters());
  EXPECT_EQ(ParseFilters("Texte|*.txt|Reste|"), (Filters{{"Texte", "*.txt"}}));
}

TEST(FileFilters, MatchWithoutRegardToCase) {
  EXPECT_TRUE(MatchesFilter("clients.dan", "*.DAN"));
  EXPECT_TRUE(MatchesFilter("CLIENTS.DAN", "c*.dan"));
  EXPECT_FALSE(MatchesFilter("clients.dan.txt", "*.DAN"));
}

TEST(FileFilters, TheFilterForEveryFileTakesNamesWithoutADotToo) {
  EXPECT_TRUE(MatchesFilter("README", "*.*"));
  EXPECT_FALSE(MatchesFilter("README", "*.txt"));
}

TEST(FileFilters, ExtensionsAreComparedWhole) {
  EXPECT_TRUE(HasExtension("a.dan", ".DAN"));
  EXPECT_TRUE(HasExtension("a.b.DAN", ".DAN"));
  EXPECT_FALSE(HasExtension("a.DANE", ".DAN"));
  EXPECT_FALSE(HasExtension("a.DA", ".DAN"));
  EXPECT_FALSE(HasExtension("DAN", ".DAN"));
}

// ---- order ----

Names Sorted(Names names) {
  SortNames(names);
  return names;
}

TEST(FileNameOrder, AccentsAndCaseCountLast) {
  EXPECT_EQ(Sorted({"zèbre", "Étude", "ete", "été", "ETE", "abbé", "Zone"}),
            (Names{"abbé", "ETE", "ete", "été", "Étude", "zèbre", "Zone"}));
}

TEST(FileNameOrder, LigaturesAreTwoLetters) {
  EXPECT_EQ(Sorted({"Oeuf", "Œuvre", "Ode", "cæsium", "cadre", "camp", "Ÿ", "Z"}),
            (Names{"cadre", "cæsium", "camp", "Ode", "Oeuf", "Œuvre", "Ÿ", "Z"}));
}

TEST(FileNameOrder, NumbersCountAsNumbers) {
  EXPECT_EQ(Sorted({"CARN10", "CARN9", "CARN009", "CARN1000", "CARN", "CARN0", "CARNE", "9", "a"}),
            (Names{"9", "a", "CARN", "CARN0", "CARN009", "CARN9", "CARN10", "CARN1000", "CARNE"}));
}

TEST(FileNameOrder, NamesOfOtherBytesComeLast) {
  EXPECT_EQ(Sorted({"\xFF.DAN", "Z.DAN", "A.DAN"}), (Names{"A.DAN", "Z.DAN", "\xFF.DAN"}));
}

// ---- paths ----

TEST(TypedPaths, AreMadeAbsoluteAndClean) {
  const auto resolve = [](std::string_view typed) {
    return ResolveTyped(typed, "/data/fiches", HomeOfAnne);
  };
  EXPECT_EQ(resolve("A.DAN"), "/data/fiches/A.DAN");
  EXPECT_EQ(resolve("sub/A.DAN"), "/data/fiches/sub/A.DAN");
  EXPECT_EQ(resolve("../A.DAN"), "/data/A.DAN");
  EXPECT_EQ(resolve(".."), "/data");
  EXPECT_EQ(resolve("../../../.."), "/");
  EXPECT_EQ(resolve("/x//y/./z/"), "/x/y/z");
  EXPECT_EQ(resolve("/"), "/");
  EXPECT_EQ(resolve("~"), "/home/anne");
  EXPECT_EQ(resolve("~/A.DAN"), "/home/anne/A.DAN");
  EXPECT_EQ(resolve("~A.DAN"), "/data/fiches/~A.DAN");
  EXPECT_EQ(resolve(R"(C:\A.DAN)"), R"(/data/fiches/C:\A.DAN)");
}

TEST(TypedPaths, WithoutAHomeTheTildeIsAName) {
  const auto none = [](const std::string&) { return std::string(); };
  EXPECT_EQ(ResolveTyped("~/A", "/d", none), "/d/~/A");
}

TEST(TypedPaths, AFolderLiesInItsParents) {
  EXPECT_TRUE(LiesIn("/home/anne", "/home"));
  EXPECT_TRUE(LiesIn("/home", "/home"));
  EXPECT_TRUE(LiesIn("/home", "/"));
  EXPECT_FALSE(LiesIn("/homes", "/home"));
  EXPECT_FALSE(LiesIn("/", "/home"));
}

// ---- several names ----

TEST(QuotedNames, ComeBackAsTheyWent) {
  const Names names = {"A.DAN", "Mes clients.DAN", "Été.DAN"};
  EXPECT_EQ(QuoteNames(names), R"("A.DAN" "Mes clients.DAN" "Été.DAN")");
  EXPECT_EQ(ParseQuotedNames(QuoteNames(names)), names);
}

TEST(QuotedNames, AnyOtherLineHasNone) {
  EXPECT_EQ(ParseQuotedNames("A.DAN"), Names());
  EXPECT_EQ(ParseQuotedNames(R"("A.DAN" B.DAN)"), Names());
  EXPECT_EQ(ParseQuotedNames(R"("A.DAN" "B.DAN)"), Names());
  EXPECT_EQ(ParseQuotedNames(R"("")"), Names());
  EXPECT_EQ(ParseQuotedNames(""), Names());
}

// ---- places ----

TEST(UserFiles, LieOnDisksSharesAndOwnPartitions) {
  EXPECT_TRUE(HoldsUserFiles({"/media/anne/CLE", "/dev/sdb1"}));
  EXPECT_TRUE(HoldsUserFiles({"/run/media/anne/CLE", "/dev/sdb1"}));
  EXPECT_TRUE(HoldsUserFiles({"/mnt", "none"}));
  EXPECT_TRUE(HoldsUserFiles({"/data", "/dev/sda3"}));
  EXPECT_TRUE(HoldsUserFiles({"/home", "/dev/mapper/home"}));
  EXPECT_TRUE(HoldsUserFiles({"/bureau", "serveur:/export"}));
  EXPECT_TRUE(HoldsUserFiles({"/bureau", "//serveur/partage"}));
}

TEST(UserFiles, DoNotLieOnVolumesOfTheSystem) {
  EXPECT_FALSE(HoldsUserFiles({"/", "/dev/sda1"}));
  EXPECT_FALSE(HoldsUserFiles({"/boot/efi", "/dev/sda2"}));
  EXPECT_FALSE(HoldsUserFiles({"/run/user/1000", "tmpfs"}));
  EXPECT_FALSE(HoldsUserFiles({"/snap/core/1", "/dev/loop3"}));
  EXPECT_FALSE(HoldsUserFiles({"/data", "/dev/loop3"}));
  EXPECT_FALSE(HoldsUserFiles({"/data", "tmpfs"}));
  EXPECT_TRUE(HoldsUserFiles({"/boots", "/dev/sda4"}));
}

}  // namespace
}  // namespace carnetel
