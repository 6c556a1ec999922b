#include "base/utf8.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace carnetel {
namespace {

std::vector<char32_t> Decoded(std::string_view text) {
  std::vector<char32_t> characters;
  while (!text.empty()) characters.push_back(DecodeUtf8(text));
  return characters;
}

using Characters = std::vector<char32_t>;

TEST(DecodeUtf8, ReadsOneToFourBytes) {
  EXPECT_EQ(Decoded("A\x7F"), (Characters{0x41, 0x7F}));
  EXPECT_EQ(Decoded("\xC2\x80\xC3\xA9\xDF\xBF"), (Characters{0x80, 0xE9, 0x7FF}));
  EXPECT_EQ(Decoded("\xE0\xA0\x80\xE2\x82\xAC\xEF\xBF\xBF"), (Characters{0x800, 0x20AC, 0xFFFF}));
  EXPECT_EQ(Decoded("\xF0\x90\x80\x80\xF4\x8F\xBF\xBF"), (Characters{0x10000, 0x10FFFF}));
}

TEST(DecodeUtf8, OverlongFormsAreRefused) {
  EXPECT_EQ(Decoded("\xC0\x80"), (Characters{kNotUtf8, kNotUtf8}));
  EXPECT_EQ(Decoded("\xE0\x9F\xBF").front(), kNotUtf8);
  EXPECT_EQ(Decoded("\xF0\x8F\xBF\xBF").front(), kNotUtf8);
}

TEST(DecodeUtf8, SurrogatesAndWhatLiesBeyondAreRefused) {
  EXPECT_EQ(Decoded("\xED\xA0\x80").front(), kNotUtf8);
  EXPECT_EQ(Decoded("\xED\xBF\xBF").front(), kNotUtf8);
  EXPECT_EQ(Decoded("\xF4\x90\x80\x80").front(), kNotUtf8);
  EXPECT_EQ(Decoded("\xF8\x88\x80\x80\x80").front(), kNotUtf8);
}

TEST(DecodeUtf8, ABrokenSequenceTakesOneByte) {
  EXPECT_EQ(Decoded("\xE2\x82"), (Characters{kNotUtf8, kNotUtf8}));
  EXPECT_EQ(Decoded("\xE2z"), (Characters{kNotUtf8, 'z'}));
  EXPECT_EQ(Decoded("\xBFz"), (Characters{kNotUtf8, 'z'}));
}

TEST(AppendUtf8, WritesOneToFourBytes) {
  std::string text;
  for (const char32_t character : {0x41, 0x7F, 0x80, 0x7FF, 0x800, 0xFFFF, 0x10000, 0x10FFFF}) {
    AppendUtf8(text, character);
  }
  EXPECT_EQ(text, "A\x7F\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF");
}

TEST(ByteOrderMark, IsTakenFromTheFrontAlone) {
  std::string text =
      "\xEF\xBB\xBF"
      "a\xEF\xBB\xBF";
  DropByteOrderMark(text);
  EXPECT_EQ(text, "a\xEF\xBB\xBF");
  DropByteOrderMark(text);
  EXPECT_EQ(text, "a\xEF\xBB\xBF");
}

TEST(CountCharacters, CountsCharactersNotBytes) {
  EXPECT_EQ(CountCharacters(""), 0u);
  EXPECT_EQ(CountCharacters("été €"), 5u);
  EXPECT_EQ(CountCharacters("a\xE9"), 2u);
}

}  // namespace
}  // namespace carnetel
