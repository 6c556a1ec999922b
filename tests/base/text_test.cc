#include "base/text.h"

#include <gtest/gtest.h>

#include <string>

namespace carnetel {
namespace {

using namespace std::string_literals;

constexpr size_t kKeyLimit = 10;

TEST(CopyFieldText, StopsAtTheFirstZeroByte) {
  EXPECT_EQ(CopyFieldText("DUPONT\0SUITE"s, 32), "DUPONT");
}

TEST(CopyFieldText, AFullFieldHasNoZeroByteAndDoesNotRunIntoTheNext) {
  const std::string card = std::string(32, 'A') + "SECOND LINE";
  EXPECT_EQ(CopyFieldText(card, 32), std::string(32, 'A'));
}

TEST(CopyFieldText, EndsWithTheSource) {
  EXPECT_EQ(CopyFieldText("ABC"s, 32), "ABC");
}

TEST(CopyFieldText, LimitZeroGivesNothing) {
  EXPECT_EQ(CopyFieldText("ABC"s, 0), "");
}

TEST(CopyFieldText, AnEmptyFieldIsEmpty) {
  EXPECT_EQ(CopyFieldText("\0BC"s, 3), "");
}

std::string UpperCased(std::string text, size_t limit) {
  UpperCaseRun(text, limit);
  return text;
}

TEST(UpperCaseRun, ChangesPlainLettersAlone) {
  EXPECT_EQ(UpperCased("az-09[Az{`", 10), "AZ-09[AZ{`");
}

TEST(UpperCaseRun, StopsAtTheLimit) {
  EXPECT_EQ(UpperCased("abcdef", 3), "ABCdef");
}

TEST(UpperCaseRun, StopsAtAZeroByte) {
  EXPECT_EQ(UpperCased("ab\0cd"s, 10), "AB\0cd"s);
}

TEST(UpperCaseRun, StepsOverAnEscapedByteWithoutCountingThePair) {
  EXPECT_EQ(UpperCased("a\x1B"s + "bcd", 3), "A\x1B"s + "bCD");
  EXPECT_EQ(UpperCased("a\x1B"s + "bcde", 3), "A\x1B"s + "bCDe");
}

TEST(UpperCaseRun, AnEscapeAtTheEndIsHarmless) {
  EXPECT_EQ(UpperCased("a\x1B", 5), "A\x1B");
}

TEST(UpperCaseRun, LeavesAccentedLettersAsTheyAre) {
  EXPECT_EQ(UpperCased("\x82t\x82", 10), "\x82T\x82");
}

TEST(FindInTable, GivesThePositionPlusOne) {
  EXPECT_EQ(FindInTable(0, "ABC", 'A'), 1u);
  EXPECT_EQ(FindInTable(0, "ABC", 'C'), 3u);
}

TEST(FindInTable, GivesZeroForAByteThatIsNotThere) {
  EXPECT_EQ(FindInTable(0, "ABC", 'D'), 0u);
  EXPECT_EQ(FindInTable(0, "", 'D'), 0u);
}

TEST(FindInTable, SearchesFromTheStartGiven) {
  EXPECT_EQ(FindInTable(1, "ABA", 'A'), 3u);
  EXPECT_EQ(FindInTable(1, "ABC", 'A'), 0u);
  EXPECT_EQ(FindInTable(9, "ABC", 'A'), 0u);
}

TEST(FindInTable, FindsBytesAboveAscii) {
  EXPECT_EQ(FindInTable(0, "\x9A\x99", 0x99), 2u);
}

TEST(TrimmedLength, RightIsTheLengthWithoutTrailingBlanks) {
  EXPECT_EQ(TrimmedLength("AB  ", TrimSide::kRight), 2u);
  EXPECT_EQ(TrimmedLength("  AB", TrimSide::kRight), 4u);
  EXPECT_EQ(TrimmedLength("A", TrimSide::kRight), 1u);
  EXPECT_EQ(TrimmedLength("   ", TrimSide::kRight), 0u);
  EXPECT_EQ(TrimmedLength("", TrimSide::kRight), 0u);
}

TEST(TrimmedLength, LeftIsOneMoreThanTheLeadingBlanks) {
  EXPECT_EQ(TrimmedLength("  AB", TrimSide::kLeft), 3u);
  EXPECT_EQ(TrimmedLength("AB  ", TrimSide::kLeft), 1u);
  EXPECT_EQ(TrimmedLength("   ", TrimSide::kLeft), 0u);
  EXPECT_EQ(TrimmedLength("", TrimSide::kLeft), 0u);
}

std::string Trimmed(std::string text) {
  TrimRight(text);
  return text;
}

TEST(TrimRight, CutsTrailingBlanks) {
  EXPECT_EQ(Trimmed("AB "), "AB");
  EXPECT_EQ(Trimmed("A B   "), "A B");
  EXPECT_EQ(Trimmed("AB"), "AB");
}

TEST(TrimRight, EmptiesATextOfOneCharacter) {
  EXPECT_EQ(Trimmed("A"), "");
  EXPECT_EQ(Trimmed(" "), "");
}

TEST(TrimRight, EmptiesATextWhoseOnlyCharacterIsTheFirst) {
  EXPECT_EQ(Trimmed("A   "), "");
}

TEST(TrimRight, KeepsASingleCharacterBehindABlank) {
  EXPECT_EQ(Trimmed(" A  "), " A");
}

TEST(TrimRight, EmptiesBlanks) {
  EXPECT_EQ(Trimmed("    "), "");
  EXPECT_EQ(Trimmed(""), "");
}

TEST(CutTrailingBlanks, KeepsATextOfOneCharacter) {
  std::string text = "A  ";
  CutTrailingBlanks(text);
  EXPECT_EQ(text, "A");
}

TEST(FoldByte, TheSevenAccentedCapitalsGiveTheirPlainLetter) {
  EXPECT_EQ(FoldByte(0x9A), 'U');
  EXPECT_EQ(FoldByte(0x99), 'O');
  EXPECT_EQ(FoldByte(0xA5), 'N');
  EXPECT_EQ(FoldByte(0x90), 'E');
  EXPECT_EQ(FoldByte(0x8E), 'A');
  EXPECT_EQ(FoldByte(0x8F), 'A');
  EXPECT_EQ(FoldByte(0x92), 'A');
}

TEST(FoldByte, BytesWithoutAPlaceEndAKey) {
  for (const unsigned char byte : {'[', '\\', ']', '^', '_', '`', '{', '|', '}', '~', '\x7F'}) {
    EXPECT_EQ(FoldByte(byte), 0) << byte;
  }
}

TEST(CompareKey, TreatsCapitalsAsSmallLetters) {
  EXPECT_EQ(CompareKey("DuPont", "dUpONT", kKeyLimit), 0);
  EXPECT_LT(CompareKey("ABC", "abd", kKeyLimit), 0);
  EXPECT_GT(CompareKey("abd", "ABC", kKeyLimit), 0);
}

TEST(CompareKey, ASignBetweenTheCasesComesBeforeLetters) {
  EXPECT_LT(CompareKey("_", "A", kKeyLimit), 0);
  EXPECT_GT(CompareKey("{", "Z", kKeyLimit), 0);
}

TEST(CompareKey, ComparesUnsignedValues) {
  EXPECT_GT(CompareKey("\x82", "z", kKeyLimit), 0);
  EXPECT_LT(CompareKey("\x82", "\x90", kKeyLimit), 0);
}

TEST(CompareKey, AnAccentedCapitalIsNotItsSmallLetter) {
  EXPECT_NE(CompareKey("\x90", "\x82", kKeyLimit), 0);
}

TEST(CompareKey, LooksNoFurtherThanTheLimit) {
  EXPECT_EQ(CompareKey("ABCDEFGHIJK", "ABCDEFGHIJL", kKeyLimit), 0);
  EXPECT_LT(CompareKey("ABCDEFGHIJ", "ABCDEFGHIK", kKeyLimit), 0);
  EXPECT_EQ(CompareKey("A", "B", 0), 0);
}

TEST(CompareKey, EndsAtAZeroByteOfBoth) {
  EXPECT_EQ(CompareKey("AB\0XY"s, "AB\0ZZ"s, kKeyLimit), 0);
  EXPECT_EQ(CompareKey("AB\0XY"s, "AB", kKeyLimit), 0);
}

TEST(CompareKey, TheShorterTextComesFirst) {
  EXPECT_LT(CompareKey("AB", "ABC", kKeyLimit), 0);
  EXPECT_GT(CompareKey("ABC", "AB\0C"s, kKeyLimit), 0);
  EXPECT_LT(CompareKey("", "A", kKeyLimit), 0);
}

}  // namespace
}  // namespace carnetel
