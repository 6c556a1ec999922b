#include "base/bytes.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>

namespace carnetel {
namespace {

using ::testing::ElementsAre;

constexpr std::byte operator""_b(unsigned long long value) {
  return static_cast<std::byte>(value);
}

TEST(Bytes, NumbersAreStoredWithTheLowestByteFirst) {
  std::array<std::byte, 8> buffer{};
  StoreU8(buffer, 0, 0xFE);
  StoreLe16(buffer, 1, 0x0506);
  StoreLe32(buffer, 3, 0x89ABCDEF);
  EXPECT_THAT(buffer, ElementsAre(0xFE_b, 0x06_b, 0x05_b, 0xEF_b, 0xCD_b, 0xAB_b, 0x89_b, 0x00_b));
}

TEST(Bytes, NumbersAreLoadedUnsigned) {
  const std::array<std::byte, 5> buffer = {0x01_b, 0xFF_b, 0x80_b, 0x00_b, 0xF0_b};
  EXPECT_EQ(LoadU8(buffer, 1), 0xFF);
  EXPECT_EQ(LoadLe16(buffer, 1), 0x80FF);
  EXPECT_EQ(LoadLe32(buffer, 1), 0xF00080FFu);
}

TEST(Bytes, AsCharsAndAsBytesShowTheSameBytes) {
  EXPECT_THAT(AsBytes("A\x82"), ElementsAre(0x41_b, 0x82_b));
  const std::array<std::byte, 2> bytes = {0x41_b, 0x82_b};
  EXPECT_EQ(AsChars(bytes), "A\x82");
}

TEST(StorePadded, FillsUpWithZeroes) {
  std::array<std::byte, 6> buffer;
  buffer.fill(0x2A_b);
  StorePadded(buffer, 1, 4, "AB");
  EXPECT_THAT(buffer, ElementsAre(0x2A_b, 0x41_b, 0x42_b, 0x00_b, 0x00_b, 0x2A_b));
}

TEST(StorePadded, CutsWhatDoesNotFit) {
  std::array<std::byte, 4> buffer;
  buffer.fill(0x2A_b);
  StorePadded(buffer, 1, 2, "ABC");
  EXPECT_THAT(buffer, ElementsAre(0x2A_b, 0x41_b, 0x42_b, 0x2A_b));
}

}  // namespace
}  // namespace carnetel
