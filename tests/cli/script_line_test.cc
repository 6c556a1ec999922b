#include "cli/script_line.h"

#include <gtest/gtest.h>

namespace carnetel {
namespace {

using Words = std::vector<std::string>;

TEST(SplitScriptLine, PartsWordsAtBlanks) {
  EXPECT_EQ(SplitScriptLine("  add  Nom=a\tVille=b \r"), (Words{"add", "Nom=a", "Ville=b"}));
  EXPECT_EQ(SplitScriptLine(""), Words{});
}

TEST(SplitScriptLine, QuotesKeepBlanks) {
  EXPECT_EQ(SplitScriptLine(R"(Nom="Du Pont" 'a "b" \c' x'y z'w)"),
            (Words{"Nom=Du Pont", R"(a "b" \c)", "xy zw"}));
  EXPECT_EQ(SplitScriptLine(R"("a\"b\\c\d")"), Words{R"(a"b\c\d)"});
  EXPECT_EQ(SplitScriptLine(R"('' "")"), (Words{"", ""}));
}

TEST(SplitScriptLine, ABackslashKeepsTheNextCharacter) {
  EXPECT_EQ(SplitScriptLine(R"(Saint\ Malo \# \' \\)"), (Words{"Saint Malo", "#", "'", "\\"}));
}

TEST(SplitScriptLine, CommentsBeginAtTheStartOfAWord) {
  EXPECT_EQ(SplitScriptLine("# rien"), Words{});
  EXPECT_EQ(SplitScriptLine("a#b #c 'd"), Words{"a#b"});
}

TEST(SplitScriptLine, WhatIsNotClosedIsRefused) {
  for (const char* line : {"'a", "\"a", "a\\", "\"a\\\""}) {
    EXPECT_EQ(SplitScriptLine(line), std::nullopt) << line;
  }
}

}  // namespace
}  // namespace carnetel
