#include "base/key_alphabet.h"

#include <gtest/gtest.h>

#include <string>

namespace carnetel {
namespace {

// Ü Ö Ñ É Ä Å Æ, then digits and letters.
const std::string kAlphabet =
    "\x9A\x99\xA5\x90\x8E\x8F\x92"
    "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";

TEST(KeyAlphabet, HoldsTheseBytesAndNoOthers) {
  for (int byte = 0; byte < 256; ++byte) {
    const bool expected = kAlphabet.find(static_cast<char>(byte)) != std::string::npos;
    EXPECT_EQ(IsKeyStart(static_cast<unsigned char>(byte)), expected) << byte;
  }
}

TEST(KeyAlphabet, TheBlankIsInTheWiderOneOnly) {
  for (int byte = 0; byte < 256; ++byte) {
    const bool expected =
        byte == ' ' || kAlphabet.find(static_cast<char>(byte)) != std::string::npos;
    EXPECT_EQ(IsKeyStartOrBlank(static_cast<unsigned char>(byte)), expected) << byte;
  }
}

TEST(StripToKeyStart, RemovesLeadingCharactersOutsideTheAlphabet) {
  EXPECT_EQ(StripToKeyStart("  -(DUPONT) "), "DUPONT) ");
  EXPECT_EQ(StripToKeyStart("DUPONT"), "DUPONT");
}

TEST(StripToKeyStart, KeepsAnOemCapitalWithAccent) {
  EXPECT_EQ(StripToKeyStart("\x99zg\x81r"), "\x99zg\x81r");
}

TEST(StripToKeyStart, RemovesASmallLetterWithAccent) {
  EXPECT_EQ(StripToKeyStart("\x82t\x82"), "t\x82");
}

TEST(StripToKeyStart, EmptiesATextWithoutAKeyCharacter) {
  EXPECT_EQ(StripToKeyStart("   "), "");
  EXPECT_EQ(StripToKeyStart("-*["), "");
  EXPECT_EQ(StripToKeyStart(""), "");
}

}  // namespace
}  // namespace carnetel
