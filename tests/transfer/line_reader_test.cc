#include "transfer/line_reader.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>

namespace carnetel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class TextFile : public ReadableFile {
 public:
  explicit TextFile(std::string text) : text_(std::move(text)) {}
  size_t Read(uint64_t position, ByteSpan into) override {
    const std::string_view rest = std::string_view(text_).substr(std::min(position, Size()));
    const ByteView bytes = AsBytes(rest.substr(0, into.size()));
    std::ranges::copy(bytes, into.begin());
    return bytes.size();
  }
  uint64_t Size() override { return text_.size(); }

 private:
  std::string text_;
};

constexpr size_t kLongest = 32767;

std::vector<std::string> LinesOf(const std::string& text, const std::string& separator,
                                 size_t longest = kLongest) {
  TextFile file(text);
  LineReader reader(file, separator, longest);
  std::vector<std::string> lines;
  while (reader.Next()) {
    lines.push_back(reader.too_long() ? "(too long)" : std::string(reader.line()));
  }
  return lines;
}

TEST(LineReader, GivesLinesWithTheirSeparator) {
  EXPECT_THAT(LinesOf("a\r\nbc\r\n\r\n", "\r\n"), ElementsAre("a\r\n", "bc\r\n", "\r\n"));
}

TEST(LineReader, TextBehindTheLastSeparatorIsNoLine) {
  EXPECT_THAT(LinesOf("a\nb", "\n"), ElementsAre("a\n"));
  EXPECT_THAT(LinesOf("a\r", "\r\n"), IsEmpty());
}

TEST(LineReader, AFileShorterThanTheSeparatorHasNoLine) {
  EXPECT_THAT(LinesOf("\r", "\r\n"), IsEmpty());
  EXPECT_THAT(LinesOf("", "\n"), IsEmpty());
}

TEST(LineReader, AnEmptySeparatorGivesNoLine) {
  EXPECT_THAT(LinesOf("abc", ""), IsEmpty());
}

TEST(LineReader, AllBytesOfASeparatorCount) {
  EXPECT_THAT(LinesOf("a\rb\nc\n\rd\r\n", "\r\n"), ElementsAre("a\rb\nc\n\rd\r\n"));
  EXPECT_THAT(LinesOf("aXXXb", "XX"), ElementsAre("aXX")) << "no byte ends two lines";
}

TEST(LineReader, KnowsAnEmptyLine) {
  TextFile file("a\r\n\r\n");
  LineReader reader(file, "\r\n", kLongest);
  ASSERT_TRUE(reader.Next());
  EXPECT_FALSE(reader.empty());
  ASSERT_TRUE(reader.Next());
  EXPECT_TRUE(reader.empty());
  EXPECT_FALSE(reader.Next());
}

TEST(LineReader, ALineOfTheLongestSizeIsGivenAndALongerOneIsNot) {
  const std::string fits(kLongest - 2, 'x');
  EXPECT_THAT(LinesOf("a\r\n" + fits + "\r\nb\r\n", "\r\n"),
              ElementsAre("a\r\n", fits + "\r\n", "b\r\n"));
  EXPECT_THAT(LinesOf("a\r\n" + fits + "x\r\nb\r\n", "\r\n"),
              ElementsAre("a\r\n", "(too long)", "b\r\n"));
}

TEST(LineReader, ALineMayBeLongerThanAnyPieceInMemory) {
  const std::string huge(3'000'000, 'x');
  EXPECT_THAT(LinesOf("a\r\n" + huge + "\r\nb\r\n", "\r\n"),
              ElementsAre("a\r\n", "(too long)", "b\r\n"));
  EXPECT_THAT(LinesOf(huge, "\r\n"), IsEmpty());
}

TEST(LineReader, LinesAndSeparatorsMaySpanPieces) {
  // 1.2 million bytes in lines of 13 and 997, so that cuts fall everywhere.
  for (const size_t length : {size_t{13}, size_t{997}}) {
    std::string text;
    std::vector<std::string> expected;
    for (size_t i = 0; i * length < 1'200'000; ++i) {
      expected.push_back(std::string(length - 4, static_cast<char>('a' + i % 26)) + "\r\n\r\n");
      text += expected.back();
    }
    EXPECT_EQ(LinesOf(text, "\r\n\r\n"), expected) << length;
  }
}

TEST(LineReader, ASeparatorMayStandAcrossTheEndOfAPieceOfAnySize) {
  // The first line ends at each place around the end of the first piece.
  for (size_t length = 294'900; length < 294'920; ++length) {
    std::string text = std::string(length - 30'000, 'a') + "\r\n" + std::string(29'998, 'b');
    text += "\r\nc\r\n";
    EXPECT_THAT(LinesOf(text, "\r\n"), SizeIs(3)) << length;
  }
}

}  // namespace
}  // namespace carnetel
