#include "transfer/field_text.h"

#include <gtest/gtest.h>

#include <string>

#include "storage/card_record.h"

namespace carnetel {
namespace {

std::string Cleaned(std::string text, int field) {
  CleanFieldText(text, field);
  return text;
}

TEST(CleanFieldText, RemovesLeadingBlanksOnly) {
  EXPECT_EQ(Cleaned("  Lyon  ", kVille), "Lyon  ");
  EXPECT_EQ(Cleaned("    ", kVille), "");
  EXPECT_EQ(Cleaned("", kVille), "");
}

TEST(CleanFieldText, KeepsWhatCanBeDialledInFourNumberFields) {
  for (const int field : {kTel1, kTel2, kFax, kModem}) {
    EXPECT_EQ(Cleaned("tel. 01 48-61(17);01", field), ": 01 48-6117:01");
    EXPECT_EQ(Cleaned("+33,1@#*ABCDW", field), "+33,1@#*ABCDW");
    EXPECT_EQ(Cleaned("abcdwEX", field), "");
  }
}

TEST(CleanFieldText, ABlankBehindDroppedCharactersStays) {
  EXPECT_EQ(Cleaned(" x 12", kTel1), " 12");
}

TEST(CleanFieldText, LeavesTheMinitelNumberAsItIs) {
  EXPECT_EQ(Cleaned(" 3615 MARQUES.x", kMtel), "3615 MARQUES.x");
}

TEST(CleanFieldText, LeavesOtherFieldsAsTheyAre) {
  EXPECT_EQ(Cleaned("(rue) .;", kAdr1), "(rue) .;");
  EXPECT_EQ(Cleaned("(Ste2)", kSte2), "(Ste2)");
}

TEST(CleanFieldText, PutsAnAForAFirstCharacterThatHasNoLetter) {
  for (const int field : {kSte1, kNom}) {
    EXPECT_EQ(Cleaned("(Durand)", field), "ADurand)");
    EXPECT_EQ(Cleaned("\"", field), "A");
    EXPECT_EQ(Cleaned("3M", field), "3M");
    EXPECT_EQ(Cleaned("zoe", field), "zoe");
    EXPECT_EQ(Cleaned("  (x", field), "Ax") << "blanks go first";
  }
}

TEST(CleanFieldText, KeepsTheSevenAccentedCapitalsOfTheOemPage) {
  for (const char capital : {'\x9A', '\x99', '\xA5', '\x90', '\x8E', '\x8F', '\x92'}) {
    EXPECT_EQ(Cleaned(std::string{capital, 'x'}, kNom), (std::string{capital, 'x'}));
  }
  EXPECT_EQ(Cleaned("\x82t\x82", kNom), "At\x82") << "a small OEM accent";
}

TEST(CleanFieldText, AnAnsiCapitalWithAnAccentBecomesAnA) {
  EXPECT_EQ(Cleaned("\xC9tienne", kNom), "Atienne");
}

TEST(CleanFieldText, AnEmptyKeyStaysEmpty) {
  EXPECT_EQ(Cleaned("", kSte1), "");
  EXPECT_EQ(Cleaned("   ", kNom), "");
}

TEST(CleanFieldText, TheLongestFieldIsNotCut) {
  const std::string notes(64, 'n');
  EXPECT_EQ(Cleaned(notes, kNotes), notes);
}

}  // namespace
}  // namespace carnetel
