#include "transfer/separator.h"

#include <gtest/gtest.h>

#include <string>

namespace carnetel {
namespace {

using std::string_literals::operator""s;

std::string Bytes(std::string_view text) {
  return ParseSeparator(text, SeparatorForm::kBytes);
}
std::string Shown(std::string_view text) {
  return ParseSeparator(text, SeparatorForm::kDisplay);
}

TEST(ParseSeparator, TakesEveryNameAsItsBytes) {
  EXPECT_EQ(Bytes("NUL"), "\0"s);
  EXPECT_EQ(Bytes("BEL"), "\x07");
  EXPECT_EQ(Bytes("TAB"), "\x09");
  EXPECT_EQ(Bytes("LF"), "\x0A");
  EXPECT_EQ(Bytes("FF"), "\x0C");
  EXPECT_EQ(Bytes("CR"), "\x0D");
  EXPECT_EQ(Bytes("SUB"), "\x1A");
  EXPECT_EQ(Bytes("ESC"), "\x1B");
  EXPECT_EQ(Bytes("CRLF"), "\x0D\x0A");
  EXPECT_EQ(Bytes("LFCR"), "\x0A\x0D");
  EXPECT_EQ(Bytes("CRFF"), "\x0D\x0C");
  EXPECT_EQ(Bytes("FFCR"), "\x0C\x0D");
}

TEST(ParseSeparator, AnEmptyTextHasNoBytes) {
  EXPECT_EQ(Bytes(""), "");
  EXPECT_EQ(Bytes("   "), "");
}

TEST(ParseSeparator, ReadsTokensByTheirLength) {
  EXPECT_EQ(Bytes(";"), ";");
  EXPECT_EQ(Bytes("\" ,"), "\",");
  EXPECT_EQ(Bytes("5"), "5") << "one character stands for itself, digits too";
  EXPECT_EQ(Bytes("44"), ",") << "two are a decimal number";
  EXPECT_EQ(Bytes("124"), "|") << "three without H are a decimal number";
  EXPECT_EQ(Bytes("22h 2Ch"), "\",");
  EXPECT_EQ(Bytes("7cH"), "|");
  EXPECT_EQ(Bytes("  a   b "), "ab") << "any number of blanks";
}

TEST(ParseSeparator, WhatIsNoByteIsZero) {
  EXPECT_EQ(Bytes("256"), "\0"s);
  EXPECT_EQ(Bytes("-1"), "\0"s);
  EXPECT_EQ(Bytes("-1h"), "\0"s);
  EXPECT_EQ(Bytes("zz"), "\0"s);
  EXPECT_EQ(Bytes("0044"), "\0"s) << "longer than three characters";
  EXPECT_EQ(Bytes("crlf"), "\0"s) << "names are in capitals";
  EXPECT_EQ(Bytes("255"), "\xFF");
  EXPECT_EQ(Bytes("FFh"), "\xFF");
}

TEST(ParseSeparator, ShowsNamesAsTheyStand) {
  EXPECT_EQ(Shown("CRLF"), "CRLF");
  EXPECT_EQ(Shown("NUL"), "NUL");
}

TEST(ParseSeparator, ShowsPrintableValuesAsCharacters) {
  EXPECT_EQ(Shown("22h 2Ch"), "\" ,");
  EXPECT_EQ(Shown("44"), ",");
  EXPECT_EQ(Shown("33"), "!") << "the first printable value";
  EXPECT_EQ(Shown("126"), "~") << "the last one";
}

TEST(ParseSeparator, ShowsOtherValuesInBase16) {
  EXPECT_EQ(Shown("32"), "20h");
  EXPECT_EQ(Shown("127"), "7Fh");
  EXPECT_EQ(Shown("13 10"), "0Dh 0Ah");
  EXPECT_EQ(Shown("200"), "C8h");
  EXPECT_EQ(Shown("\xC8"), "C8h");
}

TEST(ParseSeparator, ShowsAnEmptyTextAsAZeroByte) {
  EXPECT_EQ(Shown(""), "00h");
}

TEST(FieldSeparatorProposals, ParseToQuoteAndCommaQuoteAndSemicolonSemicolon) {
  EXPECT_EQ(Bytes(kFieldSeparatorProposals[0]), "\",");
  EXPECT_EQ(Bytes(kFieldSeparatorProposals[1]), "\";");
  EXPECT_EQ(Bytes(kFieldSeparatorProposals[2]), ";");
}

TEST(FindBytes, FindsTheFirstPositionNotBeforeFrom) {
  EXPECT_EQ(FindBytes("ab;cd;", ";", 0), 2);
  EXPECT_EQ(FindBytes("ab;cd;", ";", 2), 2);
  EXPECT_EQ(FindBytes("ab;cd;", ";", 3), 5);
  EXPECT_EQ(FindBytes("a\0b\0\0c"s, "\0\0"s, 0), 3);
}

TEST(FindBytes, FindsNothingBehindTheLastPlaceOfThePattern) {
  EXPECT_EQ(FindBytes("ab\r\n", "\r\n", 2), 2);
  EXPECT_EQ(FindBytes("ab\r\n", "\r\n", 3), -1);
  EXPECT_EQ(FindBytes("a", "\r\n", 0), -1);
  EXPECT_EQ(FindBytes("", ";", 0), -1);
  EXPECT_EQ(FindBytes("ab", ";", 9), -1);
}

}  // namespace
}  // namespace carnetel
