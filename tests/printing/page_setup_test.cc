// The page set-up in the profile: its keys, its defaults, and what a hand may have written there.
#include "printing/page_setup.h"

#include "tests/printing/printing_testing.h"

namespace carnetel {
namespace {

class PageSetupTest : public ::testing::Test {
 protected:
  static constexpr char kSection[] = "PhoneBook-DROV";

  [[nodiscard]] PageSetup Read(MeasureUnit unit = MeasureUnit::kCentimetres) const {
    return ReadPageSetup(profile, kSection, unit);
  }
  void Set(std::string_view key, std::string_view text) { profile.Write(kSection, key, text); }

  FakeClock clock{1'000'000'000};
  MemoryFileSystem files{clock};
  FaultFileSystem faults{files};
  UserProfile profile{faults, "/profile.ini"};
};

TEST_F(PageSetupTest, TheDefaults) {
  const PageSetup setup = Read();
  EXPECT_EQ(setup.lines, 64);
  EXPECT_EQ(setup.top_margin, 200);
  EXPECT_EQ(setup.left_margin, 200);
  EXPECT_EQ(setup.presentation, Presentation::kList);
  EXPECT_EQ(setup.scope, PrintScope::kSelection);
  EXPECT_EQ(setup.destination, PrintDestination::kPrinter);
  EXPECT_EQ(setup.file, "carn.prn");
  EXPECT_FALSE(files.Exists("/profile.ini"));
}

TEST_F(PageSetupTest, MarginsInInchesAreSmaller) {
  EXPECT_EQ(Read(MeasureUnit::kInches).top_margin, 80);
  EXPECT_EQ(Read(MeasureUnit::kInches).left_margin, 80);
}

TEST_F(PageSetupTest, EachValueHasItsKey) {
  EXPECT_TRUE(WritePageSetup(profile, kSection,
                             {66, 120, 40, Presentation::kCards, PrintScope::kCurrent,
                              PrintDestination::kFile, "/tmp/été.prn"}));
  const std::pair<const char*, const char*> expected[] = {
      {"Lines", "66"}, {"TopMargin", "120"}, {"LeftMargin", "40"},           {"Mode", "1"},
      {"Type", "2"},   {"PrintType", "1"},   {"FileToPrint", "/tmp/été.prn"}};
  for (const auto& [key, text] : expected) {
    EXPECT_EQ(profile.Text(kSection, key, "(missing)"), text) << key;
  }
}

TEST_F(PageSetupTest, WhatIsWrittenIsReadAgain) {
  for (const PageSetup& setup :
       {PageSetup{1, 0, 0, Presentation::kList, PrintScope::kFile, PrintDestination::kFile, "x"},
        PageSetup{127, 999, 999, Presentation::kCards, PrintScope::kSelection,
                  PrintDestination::kPrinter, "/a b/c.txt"},
        PageSetup{0, 396, 1, Presentation::kCards, PrintScope::kCurrent, PrintDestination::kFile,
                  ""}}) {
    EXPECT_TRUE(WritePageSetup(profile, kSection, setup));
    EXPECT_EQ(Read(), setup);
  }
}

TEST_F(PageSetupTest, AMarginIsNotConvertedWithTheUnit) {
  Set("TopMargin", "300");
  EXPECT_EQ(Read(MeasureUnit::kCentimetres).top_margin, 300);
  EXPECT_EQ(Read(MeasureUnit::kInches).top_margin, 300);
}

TEST_F(PageSetupTest, ValuesFromAnEditorAreHeldWithinTheForm) {
  Set("Lines", "300");
  Set("TopMargin", "99999");
  Set("LeftMargin", "-5");
  EXPECT_EQ(Read().lines, 127);
  EXPECT_EQ(Read().top_margin, 999);
  EXPECT_EQ(Read(MeasureUnit::kInches).top_margin, 396);
  EXPECT_EQ(Read().left_margin, 0);
  Set("Lines", "-1");
  EXPECT_EQ(Read().lines, 0);
}

TEST_F(PageSetupTest, UnknownKindsAreTheFirstOnes) {
  Set("Mode", "2");
  Set("Type", "3");
  Set("PrintType", "-1");
  EXPECT_EQ(Read().presentation, Presentation::kList);
  EXPECT_EQ(Read().scope, PrintScope::kFile);
  EXPECT_EQ(Read().destination, PrintDestination::kPrinter);
}

TEST_F(PageSetupTest, APathIsCutAt260Bytes) {
  Set("FileToPrint", "/" + std::string(300, 'x'));
  EXPECT_EQ(Read().file, "/" + std::string(259, 'x'));
}

TEST_F(PageSetupTest, AnEmptySectionReadsDefaultsAndWritesNothing) {
  Set("Lines", "66");
  const FileBytes before = files.Contents("/profile.ini");
  EXPECT_EQ(ReadPageSetup(profile, "", MeasureUnit::kInches).lines, 64);
  EXPECT_EQ(ReadPageSetup(profile, "", MeasureUnit::kInches).top_margin, 80);
  EXPECT_TRUE(WritePageSetup(profile, "", PageSetup{}));
  EXPECT_TRUE(SameBytes(before, files.Contents("/profile.ini")));
}

TEST_F(PageSetupTest, AProfileThatCannotBeWrittenIsTold) {
  faults.StopAfter(0);
  EXPECT_FALSE(WritePageSetup(profile, kSection, PageSetup{}));
}

}  // namespace
}  // namespace carnetel
