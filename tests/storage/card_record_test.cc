#include "storage/card_record.h"

#include <gtest/gtest.h>

#include "tests/storage/store_fixture.h"

namespace carnetel {
namespace {

struct Row {
  int field;
  int offset;
  int size;
};

constexpr Row kRows[] = {{0, 0, 32},    {1, 32, 32},   {2, 64, 32},   {3, 96, 32},   {4, 128, 32},
                         {5, 160, 5},   {6, 165, 32},  {7, 197, 32},  {8, 229, 24},  {9, 253, 24},
                         {10, 277, 32}, {11, 309, 16}, {12, 325, 24}, {13, 349, 24}, {14, 373, 24},
                         {15, 397, 24}, {16, 421, 24}, {17, 445, 24}, {18, 469, 24}, {19, 493, 24},
                         {20, 517, 21}, {21, 538, 4},  {22, 542, 21}, {23, 563, 12}, {24, 575, 21},
                         {25, 596, 14}, {26, 610, 64}, {27, 674, 21}, {28, 695, 12}, {29, 707, 12},
                         {30, 719, 12}};

TEST(CardRecordTest, EveryFieldHasItsPlace) {
  ASSERT_EQ(std::size(kRows), 31U);
  for (const Row& row : kRows) {
    EXPECT_EQ(kFieldTable[row.field].offset, row.offset) << row.field;
    EXPECT_EQ(kFieldTable[row.field].size, row.size) << row.field;
    EXPECT_EQ(kFieldTable[row.field].group_count, row.field == 12 ? 6 : 1) << row.field;
  }
}

TEST(CardRecordTest, TheTableOfTheHeaderHasFourWordsARow) {
  std::array<std::byte, 248> table;
  kFieldTable.Store(table);
  for (const Row& row : kRows) {
    const auto at = 8 * static_cast<size_t>(row.field);
    EXPECT_EQ(LoadLe16(table, at), row.offset);
    EXPECT_EQ(LoadLe16(table, at + 2), 0);
    EXPECT_EQ(LoadLe16(table, at + 4), row.size);
    EXPECT_EQ(LoadLe16(table, at + 6), row.field == 12 ? 6 : 1);
  }
  EXPECT_EQ(Hex(ByteView(table).subspan(8 * 12, 16)),
            "45 01 00 00 18 00 06 00 5D 01 00 00 18 00 01 00");
}

TEST(CardRecordTest, AFieldIsStoredAtItsOffsetWithZerosBehind) {
  CardRecord card;
  card.SetField(kShortPostalCode, OemText("12345"));
  card.SetField(kShortPostalCode, OemText("69"));
  card.SetField(kVille, OemText("Lyon"));
  EXPECT_EQ(Hex(card.bytes().subspan(159, 12)), "00 36 39 00 00 00 4C 79 6F 6E 00 00");
}

TEST(CardRecordTest, ACompanyOf32CharactersDoesNotRunIntoTheNextField) {
  CardRecord card;
  card.SetField(kSte1, OemText("12345678901234567890123456789012"));
  card.SetField(kSte2, OemText("Suite"));
  EXPECT_EQ(card.bytes()[31], std::byte{'2'});
  EXPECT_EQ(card.bytes()[32], std::byte{'S'});
  EXPECT_EQ(card.FieldText(kSte1).bytes(), "12345678901234567890123456789012");
}

TEST(CardRecordTest, ATextLongerThanItsFieldIsCut) {
  CardRecord card;
  card.SetField(kShortPostalCode, OemText("123456789"));
  EXPECT_EQ(card.FieldText(kShortPostalCode).bytes(), "12345");
  EXPECT_TRUE(card.FieldEmpty(kVille));
}

TEST(CardRecordTest, AFieldIsReadUpToItsFirstZero) {
  CardRecord card;
  StorePadded(card.bytes(), 277, 32, std::string_view("DUR\0AND", 7));
  EXPECT_EQ(card.FieldText(kNom).bytes(), "DUR");
  StoreU8(card.bytes(), 277, 0);
  EXPECT_TRUE(card.FieldEmpty(kNom));
  EXPECT_EQ(card.FieldText(kNom).bytes(), "");
}

TEST(CardRecordTest, TheTimeOfTheLastWriteIsTheLastFourBytes) {
  CardRecord card;
  card.set_write_time(0x3B9ACA00);
  EXPECT_EQ(Hex(card.bytes().subspan(763)), "00 00 CA 9A 3B");
  EXPECT_EQ(card.write_time(), 1000000000U);
}

TEST(CardRecordTest, ACopiedFieldTakesEveryByteOfItsArea) {
  CardRecord from;
  StorePadded(from.bytes(), 674, 21, std::string_view("AB\0CD", 5));
  CardRecord to;
  to.SetField(kSpare27, OemText("123456789012345678901"));
  EXPECT_FALSE(to.SameField(from, kSpare27));
  to.CopyFieldFrom(from, kSpare27);
  EXPECT_TRUE(to.SameField(from, kSpare27));
  EXPECT_EQ(Hex(to.bytes().subspan(673, 8)), "00 41 42 00 43 44 00 00");
  EXPECT_EQ(to, from);
}

TEST(CardRecordTest, TheNumberFlagsTellWhichNumbersThereAre) {
  EXPECT_EQ(NumberFlagsOf(MakeCard({{18, "1"}})), 0x80);
  EXPECT_EQ(NumberFlagsOf(MakeCard({{20, "1"}})), 0x40);
  EXPECT_EQ(NumberFlagsOf(MakeCard({{24, "1"}})), 0x20);
  EXPECT_EQ(NumberFlagsOf(MakeCard({{22, "1"}})), 0x10);
  EXPECT_EQ(NumberFlagsOf(MakeCard({{19, "1"}})), 0);
  EXPECT_EQ(NumberFlagsOf(MakeCard({{18, "1"}, {20, "1"}, {22, "1"}, {24, "1"}})), 0xF0);
}

}  // namespace
}  // namespace carnetel
