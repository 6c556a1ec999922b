// Units of margins: which one, its limits, its texts, and what is read from what was typed.
#include "printing/measure_unit.h"

#include "tests/printing/printing_testing.h"

namespace carnetel {
namespace {

constexpr MeasureUnit kCm = MeasureUnit::kCentimetres;
constexpr MeasureUnit kIn = MeasureUnit::kInches;

class MeasureUnitTest : public ::testing::Test {
 protected:
  void SetMeasure(std::string_view text) { profile.Write("intl", "iMeasure", text); }

  FakeClock clock{1'000'000'000};
  MemoryFileSystem files{clock};
  UserProfile profile{files, "/profile.ini"};
};

TEST_F(MeasureUnitTest, WithoutTheSettingTheLocaleDecides) {
  EXPECT_EQ(ReadMeasureUnit(profile, true), kCm);
  EXPECT_EQ(ReadMeasureUnit(profile, false), kIn);
}

TEST_F(MeasureUnitTest, OneIsInchesWhateverTheLocale) {
  SetMeasure("1");
  EXPECT_EQ(ReadMeasureUnit(profile, true), kIn);
}

TEST_F(MeasureUnitTest, AnyOtherValueIsCentimetres) {
  for (const char* value : {"0", "2", "-1", "11", "cm"}) {
    SetMeasure(value);
    EXPECT_EQ(ReadMeasureUnit(profile, false), kCm) << value;
  }
}

TEST(MarginTest, EachUnitHasItsLimitAndItsDefault) {
  EXPECT_EQ(MaxMargin(kCm), 999);
  EXPECT_EQ(MaxMargin(kIn), 396);
  EXPECT_EQ(DefaultMargin(kCm), 200);
  EXPECT_EQ(DefaultMargin(kIn), 80);
  EXPECT_EQ(kMaxLines, 127);
}

TEST(MarginTest, TextsHaveTwoDecimalsAndTheUnit) {
  EXPECT_EQ(MarginText(kCm, 0), "0,00 cm");
  EXPECT_EQ(MarginText(kCm, 5), "0,05 cm");
  EXPECT_EQ(MarginText(kCm, 200), "2,00 cm");
  EXPECT_EQ(MarginText(kCm, 999), "9,99 cm");
  EXPECT_EQ(MarginText(kIn, 80), "0,80 pces");
  EXPECT_EQ(MarginText(kIn, 396), "3,96 pces");
  EXPECT_EQ(LineCountText(1), "1 lg");
  EXPECT_EQ(LineCountText(127), "127 lg");
}

TEST(MarginTest, OneCommaFiveIs150) {
  EXPECT_EQ(ReadMargin(kCm, "1,5"), 150);
}

// A number below ten behind the comma counts as tenths, whatever stands before it.
TEST(MarginTest, OneCommaZeroFiveIs150Too) {
  EXPECT_EQ(ReadMargin(kCm, "1,05"), 150);
  EXPECT_EQ(ReadMargin(kCm, "1,0005"), 150);
}

TEST(MarginTest, OneCommaFifteenIs115) {
  EXPECT_EQ(ReadMargin(kCm, "1,15"), 115);
  EXPECT_EQ(ReadMargin(kCm, "1,015"), 115);
}

TEST(MarginTest, TheUnitMayStandBehindTheNumber) {
  EXPECT_EQ(ReadMargin(kCm, "2,50 cm"), 250);
  EXPECT_EQ(ReadMargin(kIn, "0,80 pces"), 80);
  EXPECT_EQ(ReadLineCount("64 lg"), 64);
}

TEST(MarginTest, WithoutACommaItIsWholeUnits) {
  EXPECT_EQ(ReadMargin(kCm, "3"), 300);
  EXPECT_EQ(ReadMargin(kCm, " 3 cm"), 300);
  EXPECT_EQ(ReadMargin(kCm, "1.5"), 100);
}

TEST(MarginTest, EitherPartMayBeMissing) {
  EXPECT_EQ(ReadMargin(kCm, ",5"), 50);
  EXPECT_EQ(ReadMargin(kCm, "2,"), 200);
  EXPECT_EQ(ReadMargin(kCm, ""), 0);
  EXPECT_EQ(ReadMargin(kCm, "cm"), 0);
}

TEST(MarginTest, HundredthsMayMakeAnotherUnit) {
  EXPECT_EQ(ReadMargin(kCm, "1,250"), 350);
  EXPECT_EQ(ReadMargin(kCm, "1,10"), 110);
  EXPECT_EQ(ReadMargin(kCm, "1,9"), 190);
}

TEST(MarginTest, BeyondTheLimitIsZero) {
  EXPECT_EQ(ReadMargin(kCm, "9,99"), 999);
  EXPECT_EQ(ReadMargin(kCm, "10"), 0);
  EXPECT_EQ(ReadMargin(kIn, "3,96"), 396);
  EXPECT_EQ(ReadMargin(kIn, "3,97"), 0);
  EXPECT_EQ(ReadMargin(kCm, "-1"), 0);
  EXPECT_EQ(ReadMargin(kCm, "99999999999999999999"), 0);
  EXPECT_EQ(ReadMargin(kCm, "1,99999999999999999999"), 0);
}

TEST(MarginTest, LineCountsRunTo127) {
  EXPECT_EQ(ReadLineCount("0"), 0);
  EXPECT_EQ(ReadLineCount("1"), 1);
  EXPECT_EQ(ReadLineCount("127"), 127);
  EXPECT_EQ(ReadLineCount("128"), 0);
  EXPECT_EQ(ReadLineCount("-3"), 0);
  EXPECT_EQ(ReadLineCount("4294967297"), 0);
  EXPECT_EQ(ReadLineCount("x"), 0);
}

}  // namespace
}  // namespace carnetel
