#include "base/key_filter.h"

#include <gtest/gtest.h>

#include <string>

namespace carnetel {
namespace {

constexpr char32_t kBeyondTwoBytes = 0x400;

// Holds `filter_class` to `expected` for every character up to the end of Cyrillic's first half.
void ExpectExactly(FilterClass filter_class, const std::u32string& expected) {
  for (char32_t character = 0; character < kBeyondTwoBytes; ++character) {
    EXPECT_EQ(AcceptsCharacter(filter_class, character),
              expected.find(character) != std::u32string::npos)
        << static_cast<unsigned>(character);
  }
}

const std::u32string kCapitals = U"ABCDEFGHIJKLMNOPQRSTUVWXYZ";
const std::u32string kDigits = U"0123456789";

TEST(FilterClass, ZeroTakesEverything) {
  for (char32_t character = 0; character < kBeyondTwoBytes; ++character) {
    EXPECT_TRUE(AcceptsCharacter(FilterClass{0}, character));
  }
}

TEST(FilterClass, OneTakesCapitals) {
  ExpectExactly(FilterClass{1}, kCapitals);
}

TEST(FilterClass, TwoTakesDigits) {
  ExpectExactly(FilterClass{2}, kDigits);
}

TEST(FilterClass, ThreeTakesNumbersAndControlsBelow27) {
  std::u32string expected = U" 1234567890:-+,@#*ABCDW";
  for (char32_t control = 0; control < 27; ++control) expected += control;
  ExpectExactly(FilterClass{3}, expected);
}

TEST(FilterClass, FourTakesPaths) {
  ExpectExactly(FilterClass{4}, kCapitals + kDigits + U":\\./@&#%!_-(){}^~$");
}

TEST(FilterClass, FiveTakesPatternsToo) {
  ExpectExactly(FilterClass{5}, U"*?" + kCapitals + kDigits + U":\\./@&#%!_-(){}^~$");
}

TEST(FilterClass, SixTakesSevenAccentedCapitals) {
  ExpectExactly(FilterClass{6},
                U"\u00DB\u00D4\u00D1\u00C9\u00C2\u00C5\u00C6 " + kDigits + kCapitals);
}

TEST(FilterClass, NativePathsTakeAllButZero) {
  EXPECT_FALSE(AcceptsCharacter(FilterClass::kNativePath, 0));
  for (char32_t character = 1; character < kBeyondTwoBytes; ++character) {
    EXPECT_TRUE(AcceptsCharacter(FilterClass::kNativePath, character));
  }
}

TEST(CaseRule, NumbersAreThoseOfTheFieldRules) {
  EXPECT_EQ(ApplyCaseRule(CaseRule{0}, U'a'), U'a');
  EXPECT_EQ(ApplyCaseRule(CaseRule{1}, U'a'), U'A');
  EXPECT_EQ(ApplyCaseRule(CaseRule{2}, U'A'), U'a');
}

struct Pair {
  char32_t small;
  char32_t capital;
};

TEST(CaseRule, LettersWithAccentsHaveBothForms) {
  for (const Pair pair : {Pair{U'z', U'Z'}, Pair{0xE9, 0xC9}, Pair{0xE0, 0xC0}, Pair{0xFE, 0xDE},
                          Pair{0xFF, 0x178}, Pair{0x153, 0x152}, Pair{0x161, 0x160}}) {
    EXPECT_EQ(ApplyCaseRule(CaseRule::kUpper, pair.small), pair.capital);
    EXPECT_EQ(ApplyCaseRule(CaseRule::kLower, pair.capital), pair.small);
    EXPECT_EQ(ApplyCaseRule(CaseRule::kUpper, pair.capital), pair.capital);
    EXPECT_EQ(ApplyCaseRule(CaseRule::kLower, pair.small), pair.small);
  }
}

TEST(CaseRule, OtherCharactersStay) {
  for (const char32_t character :
       {U'0', U'@', U'[', U'`', U'{', U'\u00D7', U'\u00F7', U'\u00DF', U'\u00B5'}) {
    EXPECT_EQ(ApplyCaseRule(CaseRule::kUpper, character), character);
    EXPECT_EQ(ApplyCaseRule(CaseRule::kLower, character), character);
  }
}

constexpr EntryRule kText;
constexpr EntryRule kNumber{FilterClass::kNumber, CaseRule::kUpper};
constexpr EntryRule kPath{FilterClass::kPath, CaseRule::kUpper};
constexpr EntryRule kPattern{FilterClass::kPathPattern, CaseRule::kUpper};

TEST(FilterCharacter, CaseComesBeforeTheClass) {
  EXPECT_EQ(FilterCharacter(kNumber, U'w'), U'W');
  EXPECT_EQ(FilterCharacter(kNumber, U'e'), std::nullopt);
  EXPECT_EQ(FilterCharacter({FilterClass::kCapitals, CaseRule::kLower}, U'A'), std::nullopt);
}

TEST(FilterCharacter, SlashBecomesBackslashInPathsOnly) {
  EXPECT_EQ(FilterCharacter(kPath, U'/'), U'\\');
  EXPECT_EQ(FilterCharacter(kPattern, U'/'), U'/');
  EXPECT_EQ(FilterCharacter({FilterClass::kNativePath, CaseRule::kNone}, U'/'), U'/');
}

TEST(FilterCharacter, BackspaceAlwaysPasses) {
  for (uint8_t number = 0; number <= 7; ++number) {
    EXPECT_EQ(FilterCharacter({FilterClass{number}, CaseRule::kUpper}, 8), char32_t{8});
  }
}

TEST(FilterCharacter, RefusesWhatCodePage850Lacks) {
  for (const char32_t character : {U'\u20AC', U'\u0153', U'\u2019', U'\u0416', U'\U0001F600'}) {
    EXPECT_EQ(FilterCharacter(kText, character), std::nullopt);
    EXPECT_EQ(FilterCharacter({FilterClass::kNativePath, CaseRule::kNone}, character), character);
  }
  for (const char32_t character : {U'\u00E9', U'\u00FF', U'\u2588', U'\u00D0'}) {
    EXPECT_EQ(FilterCharacter(kText, character), character);
  }
}

TEST(FilterTyped, LeavesOutAndTells) {
  const FilteredText filtered = FilterTyped(kNumber, U"01.40w");
  EXPECT_EQ(filtered.text, U"0140W");
  EXPECT_TRUE(filtered.refused);
  EXPECT_FALSE(FilterTyped(kNumber, U"01 40").refused);
  EXPECT_EQ(FilterTyped(kText, U"\u0153uf").text, U"uf");
}

TEST(FilterPasted, ReplacesLookAlikes) {
  const FilteredText filtered = FilterPasted(kText, LineBreaks::kToBlank,
                                             U"l\u2019\u0153uf\u00A0\u201Cdur\u201D \u2013 \u2026");
  EXPECT_EQ(filtered.text, U"l'oeuf \"dur\" - ...");
  EXPECT_FALSE(filtered.refused);
}

TEST(FilterPasted, LeavesOutTheRest) {
  const FilteredText filtered = FilterPasted(kText, LineBreaks::kToBlank, U"10 \u20AC \u0416a\x01");
  EXPECT_EQ(filtered.text, U"10  a");
  EXPECT_TRUE(filtered.refused);
}

TEST(FilterPasted, LineBreaksBecomeBlanksOrStay) {
  EXPECT_EQ(FilterPasted(kText, LineBreaks::kToBlank, U"a\r\nb\rc\nd\te").text, U"a b c d e");
  const FilteredText kept = FilterPasted(kText, LineBreaks::kKeep, U"a\r\nb\rc\nd\te");
  EXPECT_EQ(kept.text, U"a\nb\nc\nd e");
  EXPECT_FALSE(kept.refused);
}

TEST(FilterPasted, NativePathsStayAsTheyAre) {
  const EntryRule native{FilterClass::kNativePath, CaseRule::kNone};
  EXPECT_EQ(FilterPasted(native, LineBreaks::kToBlank, U"/a\u2019\u0153/b").text,
            U"/a\u2019\u0153/b");
}

TEST(EntryBytes, ALineBreakTakesTwo) {
  EXPECT_EQ(EntryBytes(U""), 0u);
  EXPECT_EQ(EntryBytes(U"\u00E9t\u00E9"), 3u);
  EXPECT_EQ(EntryBytes(U"a\nb\n"), 6u);
}

TEST(CutToRoom, CutsAndTells) {
  FilteredText text{U"a\nbc"};
  CutToRoom(text, 5);
  EXPECT_EQ(text.text, U"a\nbc");
  EXPECT_FALSE(text.refused);
  CutToRoom(text, 4);
  EXPECT_EQ(text.text, U"a\nb");
  EXPECT_TRUE(text.refused);
}

TEST(CutToRoom, ALineBreakIsNeverHalved) {
  FilteredText text{U"a\nb"};
  CutToRoom(text, 2);
  EXPECT_EQ(text.text, U"a");
  CutToRoom(text, 0);
  EXPECT_EQ(text.text, U"");
}

}  // namespace
}  // namespace carnetel
