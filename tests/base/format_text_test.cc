#include "base/format_text.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <limits>

namespace carnetel {
namespace {

TEST(FormatPrintf, TextWithoutDirectivesStays) {
  EXPECT_EQ(FormatPrintf("Sans Nom", {}), "Sans Nom");
  EXPECT_EQ(FormatPrintf("", {}), "");
}

TEST(FormatPrintf, Numbers) {
  EXPECT_EQ(FormatPrintf("%d / %d", {1, -20}), "1 / -20");
  EXPECT_EQ(FormatPrintf("%u", {4000000000u}), "4000000000");
  EXPECT_EQ(FormatPrintf("%i", {0}), "0");
  EXPECT_EQ(FormatPrintf("%ld %hu", {int64_t{5}, uint16_t{6}}), "5 6");
  EXPECT_EQ(FormatPrintf("%d", {std::numeric_limits<int64_t>::min()}), "-9223372036854775808");
  EXPECT_EQ(FormatPrintf("%u", {std::numeric_limits<uint64_t>::max()}), "18446744073709551615");
}

TEST(FormatPrintf, WidthAndZeros) {
  EXPECT_EQ(FormatPrintf("%02d|%02u|%03d", {7, 12u, -5}), "07|12|-05");
  EXPECT_EQ(FormatPrintf("%3d|%-3d|%3d", {7, 7, 1234}), "  7|7  |1234");
  EXPECT_EQ(FormatPrintf("%3d%%", {42}), " 42%");
  EXPECT_EQ(FormatPrintf("%+d % d", {7, 7}), "+7  7");
}

TEST(FormatPrintf, Hexadecimal) {
  EXPECT_EQ(FormatPrintf("%02X", {0x0A}), "0A");
  EXPECT_EQ(FormatPrintf("%02Xh ", {0xFE}), "FEh ");
  EXPECT_EQ(FormatPrintf("%x %#X", {0xBEEF, 0xBEEF}), "beef 0XBEEF");
}

TEST(FormatPrintf, APrecisionOfANumberIsItsDigits) {
  EXPECT_EQ(FormatPrintf("%s%03.3d%s", {"CARN", 7, ".DAN"}), "CARN007.DAN");
  EXPECT_EQ(FormatPrintf("%s%03.3d%s", {"CARN", 1234, ".DAN"}), "CARN1234.DAN");
  EXPECT_EQ(FormatPrintf("%05.3d|%.0d", {7, 0}), "  007|");
}

TEST(FormatPrintf, UnsignedOfANegativeNumberShowsItsThirtyTwoBits) {
  EXPECT_EQ(FormatPrintf("%u %X", {-1, -2}), "4294967295 FFFFFFFE");
}

TEST(FormatPrintf, Characters) {
  EXPECT_EQ(FormatPrintf("%c%3c", {'A', 'b'}), "A  b");
}

TEST(FormatPrintf, TextsWithWidthAndPrecision) {
  EXPECT_EQ(FormatPrintf("%s|%5s|%-5s|", {"ab", "ab", "ab"}), "ab|   ab|ab   |");
  EXPECT_EQ(FormatPrintf("%-5.3s|%.70s", {"abcdef", "xyz"}), "abc  |xyz");
}

TEST(FormatPrintf, StarsTakeTheirSizeFromTheArguments) {
  EXPECT_EQ(FormatPrintf("%*s%-5.5s %-*.*s|", {3, "", "ABCDEFG", 4, 2, "xyz"}), "   ABCDE xy  |");
  EXPECT_EQ(FormatPrintf("%*d|", {-4, 7}), "7   |");
  EXPECT_EQ(FormatPrintf("%.*s", {-1, "abc"}), "abc");
}

TEST(FormatPrintf, PercentSignsInArgumentsComeOutUnchanged) {
  EXPECT_EQ(FormatPrintf("La fiche %s de %s", {"100 %s", "%d%n"}), "La fiche 100 %s de %d%n");
}

TEST(FormatPrintf, AMissingArgumentLeavesTheDirective) {
  EXPECT_EQ(FormatPrintf("%s sur %s", {"un"}), "un sur %s");
  EXPECT_EQ(FormatPrintf("%03.3d", {}), "%03.3d");
}

TEST(FormatPrintf, AnArgumentOfTheWrongKindLeavesTheDirective) {
  EXPECT_EQ(FormatPrintf("%s, %d, %s", {1, "deux", "trois"}), "%s, %d, trois");
}

TEST(FormatPrintf, SurplusArgumentsAreIgnored) {
  EXPECT_EQ(FormatPrintf("%d", {1, 2}), "1");
}

TEST(FormatPrintf, APercentSignThatBeginsNoDirectiveStays) {
  EXPECT_EQ(FormatPrintf("100 %", {}), "100 %");
  EXPECT_EQ(FormatPrintf("5%é %s", {"a"}), "5%é a");
  EXPECT_EQ(FormatPrintf("%n%s", {"a"}), "%na");
}

TEST(FormatPrintf, AWildWidthIsBounded) {
  EXPECT_EQ(FormatPrintf("%99999999999d", {1}).size(), 1024u);
}

TEST(FormatText, FillsTheTextOfTheTable) {
  EXPECT_EQ(FormatText(38, "A", std::string("B")), "A sur B");
  EXPECT_EQ(FormatText(47, 3, 32767u), "3 fiche(s) retenue(s) sur un total de 32767 fiche(s)");
  EXPECT_EQ(FormatText(39, 21u, 5u), "21,05 cm");
  EXPECT_EQ(FormatText(186, "Comptabilité", 2), "Comptabilité  (Poste N° 02)");
  EXPECT_EQ(FormatText(31, "50 % \\n"), "La fiche 50 % \\n \nva être détruite ...");
  EXPECT_EQ(FormatText(86, "05.00"), "CARNETEL DROV SOFTW. VER 05.00");
}

TEST(FormatText, WithoutArgumentsIsTheTextItself) {
  EXPECT_EQ(FormatText(79), "Erreur");
  EXPECT_EQ(FormatText(4), "");
}

}  // namespace
}  // namespace carnetel
