#include "base/code_page.h"

#include <gtest/gtest.h>

#include <string>

namespace carnetel {
namespace {

using namespace std::string_literals;

std::string AllBytes() {
  std::string bytes;
  for (int byte = 0; byte < 256; ++byte) bytes += static_cast<char>(byte);
  return bytes;
}

std::string Ansi(const std::string& oem) {
  return OemToAnsi(OemText(oem)).bytes();
}
std::string Oem(const std::string& ansi) {
  return AnsiToOem(AnsiText(ansi)).bytes();
}

TEST(CodePage, AsciiAndControlsStandForThemselvesInBoth) {
  const std::string ascii = AllBytes().substr(0, 128);
  EXPECT_EQ(Utf8FromOem(OemText(ascii)), ascii);
  EXPECT_EQ(Utf8FromAnsi(AnsiText(ascii)), ascii);
  EXPECT_EQ(Ansi(ascii), ascii);
  EXPECT_EQ(Oem(ascii), ascii);
}

TEST(CodePage, OemCharactersInUtf8) {
  EXPECT_EQ(Utf8FromOem(OemText("\x80\x82\x85\x87\x88\x8A\x8C\x93\x97")), "Çéàçêèîôù");
  EXPECT_EQ(Utf8FromOem(OemText("\x9A\x99\xA5\x90\x8E\x8F\x92")), "ÜÖÑÉÄÅÆ");
  EXPECT_EQ(Utf8FromOem(OemText("\xF8\xF5\xC4\xB3\xDB\xD5\xFE")), "°§─│█ı■");
  EXPECT_EQ(Utf8FromOem(OemText("\xFF")), "\u00A0");
}

TEST(CodePage, AnsiCharactersInUtf8) {
  EXPECT_EQ(Utf8FromAnsi(AnsiText("\xC7\xE9\xE0\xE7\xEA\xE8\xEE\xF4\xF9")), "Çéàçêèîôù");
  EXPECT_EQ(Utf8FromAnsi(AnsiText("\x80\x9C\x8C\x92\x96\x85\x99")), "€œŒ’–…™");
  EXPECT_EQ(Utf8FromAnsi(AnsiText("\xFF")), "ÿ");
}

TEST(CodePage, UndefinedAnsiBytesAreTheControlsOfTheirValue) {
  EXPECT_EQ(Utf8FromAnsi(AnsiText("\x81\x8D\x8F\x90\x9D")), "\u0081\u008D\u008F\u0090\u009D");
}

TEST(CodePage, EveryOemByteSurvivesUtf8) {
  const OemConversion back = OemFromUtf8(Utf8FromOem(OemText(AllBytes())));
  EXPECT_EQ(back.refused, "");
  EXPECT_EQ(back.text.bytes(), AllBytes());
}

TEST(CodePage, EveryAnsiByteSurvivesUtf8) {
  const AnsiConversion back = AnsiFromUtf8(Utf8FromAnsi(AnsiText(AllBytes())));
  EXPECT_EQ(back.refused, "");
  EXPECT_EQ(back.text.bytes(), AllBytes());
}

TEST(CodePage, LettersOfBothPagesAreConvertedExactly) {
  EXPECT_EQ(Ansi("\x90t\x82 Fran\x87ois \x9A\x99\xA5\x8E\x8F\x92"),
            "\xC9t\xE9 Fran\xE7ois \xDC\xD6\xD1\xC4\xC5\xC6");
  EXPECT_EQ(Oem("\xC9t\xE9 Fran\xE7ois \xDC\xD6\xD1\xC4\xC5\xC6"),
            "\x90t\x82 Fran\x87ois \x9A\x99\xA5\x8E\x8F\x92");
}

// All but the frames and blocks of the OEM page and what only the ANSI page has.
TEST(CodePage, ACharacterOfBothPagesComesBack) {
  const std::string only_ansi =
      "\x80\x81\x82\x84\x85\x86\x87\x88\x89\x8A\x8B\x8C\x8D\x8E\x8F\x90\x91\x92\x93\x94\x95\x96"
      "\x97\x98\x99\x9A\x9B\x9C\x9D\x9E\x9F";
  for (const char byte : AllBytes()) {
    if (only_ansi.find(byte) != std::string::npos) continue;
    EXPECT_EQ(Ansi(Oem({byte})), std::string(1, byte)) << static_cast<int>(byte);
  }
}

TEST(CodePage, WhatTheOemPageLacksBecomesALookAlike) {
  EXPECT_EQ(Oem("\x91\x92\x82 \x93\x94\x84 \x96\x97 \x85 \x95"), "''' \"\"\" -- . .");
  EXPECT_EQ(Oem("\x9C\x8C \x80 \x99 \x8A\x9A\x8E\x9E\x9F"), "oO E T SsZzY");
  EXPECT_EQ(Oem("\x86\x87 \x88\x98 \x89 \x8B\x9B"), "++ ^~ % <>");
}

TEST(CodePage, WhatTheAnsiPageLacksBecomesALookAlike) {
  EXPECT_EQ(Ansi("\xC4\xCD \xB3\xBA"), "-- ||");
  EXPECT_EQ(Ansi("\xDA\xBF\xC0\xD9\xC5 \xC9\xBB\xC8\xBC\xCE"), "+++++ +++++");
  EXPECT_EQ(Ansi("\xB0\xB1\xB2\xDB\xDC\xDF\xFE"), "#######");
  EXPECT_EQ(Ansi("\xD5 \xF2"), "i =");
}

TEST(CodePage, ControlsWithoutALookAlikeBecomeQuestionMarks) {
  EXPECT_EQ(Oem("\x81\x8D\x8F\x90\x9D"), "?????");
}

TEST(CodePage, WholeBuffersAreConvertedZeroBytesAndTailIncluded) {
  std::string buffer = "\x82\0\x82\0\0\xE9\0"s;
  OemToCharBuff(std::as_writable_bytes(std::span(buffer)));
  EXPECT_EQ(buffer, "\xE9\0\xE9\0\0\xDA\0"s);
  CharToOemBuff(std::as_writable_bytes(std::span(buffer)));
  EXPECT_EQ(buffer, "\x82\0\x82\0\0\xE9\0"s);
}

TEST(OemFromUtf8, ConvertsWhatThePageHolds) {
  const OemConversion conversion = OemFromUtf8("Société Générale, 3 °C");
  EXPECT_EQ(conversion.refused, "");
  EXPECT_EQ(conversion.text.bytes(), "Soci\x82t\x82 G\x82n\x82rale, 3 \xF8"s + "C");
}

TEST(OemFromUtf8, NamesTheFirstCharacterItCannotHold) {
  EXPECT_EQ(OemFromUtf8("prix 5 € œuf").refused, "€");
  EXPECT_EQ(OemFromUtf8("prix 5 € œuf").text.bytes(), "prix 5 ");
  EXPECT_EQ(OemFromUtf8("l’été").refused, "’");
  EXPECT_EQ(OemFromUtf8("Иван").refused, "И");
  EXPECT_EQ(OemFromUtf8("x😀y").refused, "😀");
}

TEST(OemFromUtf8, ControlsOfTheUpperHalfAreRefused) {
  EXPECT_EQ(OemFromUtf8("\u0081").refused, "\u0081");
}

TEST(OemFromUtf8, BytesThatAreNotUtf8AreRefused) {
  EXPECT_EQ(OemFromUtf8("caf\xE9").refused, "\uFFFD");
  EXPECT_EQ(OemFromUtf8("caf\xE9").text.bytes(), "caf");
  EXPECT_EQ(OemFromUtf8("\x80").refused, "\uFFFD");
}

TEST(OemFromUtf8, KeepsZeroBytes) {
  EXPECT_EQ(OemFromUtf8("a\0b"s).text.bytes(), "a\0b"s);
  EXPECT_EQ(OemFromUtf8("").text.bytes(), "");
}

TEST(AnsiFromUtf8, HoldsTheEuroAndRefusesFrames) {
  EXPECT_EQ(AnsiFromUtf8("5 € œ").text.bytes(), "5 \x80 \x9C");
  EXPECT_EQ(AnsiFromUtf8("a─b").refused, "─");
}

TEST(LossyConversion, PutsLookAlikes) {
  EXPECT_EQ(OemFromUtf8Lossy("l’été – “œuf”…").bytes(), "l'\x82t\x82 - \"ouf\".");
  EXPECT_EQ(AnsiFromUtf8Lossy("│é■").bytes(), "|\xE9#");
}

TEST(LossyConversion, AQuestionMarkIsTheLastResort) {
  EXPECT_EQ(OemFromUtf8Lossy("И😀\xFFz").bytes(), "???z");
  EXPECT_EQ(AnsiFromUtf8Lossy("И😀\xFFz").bytes(), "???z");
}

}  // namespace
}  // namespace carnetel
