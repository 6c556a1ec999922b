#include "storage/letter_table.h"

#include <gtest/gtest.h>

namespace carnetel {
namespace {

TEST(LetterTableTest, DigitsAndLettersHaveRowsInOrder) {
  EXPECT_EQ(LetterTable::LetterRow('0'), 0);
  EXPECT_EQ(LetterTable::LetterRow('9'), 9);
  EXPECT_EQ(LetterTable::LetterRow('A'), 10);
  EXPECT_EQ(LetterTable::LetterRow('Z'), 35);
}

TEST(LetterTableTest, BytesBetweenNineAndAFallOnRowsBelowTen) {
  EXPECT_EQ(LetterTable::LetterRow(':'), 3);
  EXPECT_EQ(LetterTable::LetterRow(';'), 4);
  EXPECT_EQ(LetterTable::LetterRow('@'), 9);
}

TEST(LetterTableTest, BytesBelowZeroBehindZAndAboveSevenBitsHaveNoRow) {
  EXPECT_EQ(LetterTable::LetterRow('/'), -1);
  EXPECT_EQ(LetterTable::LetterRow(' '), -1);
  EXPECT_EQ(LetterTable::LetterRow('\0'), -1);
  EXPECT_EQ(LetterTable::LetterRow('['), -1);
  EXPECT_EQ(LetterTable::LetterRow('a'), -1);
  EXPECT_EQ(LetterTable::LetterRow(0x80), -1);
  EXPECT_EQ(LetterTable::LetterRow(0xB7), -1);
  EXPECT_EQ(LetterTable::LetterRow(0xFF), -1);
}

TEST(LetterTableTest, StartsWithEveryRowAtTheFirstEntry) {
  const LetterTable table;
  for (int row = 0; row < 37; ++row) EXPECT_EQ(table.RowStart(row), 320U) << row;
}

TEST(LetterTableTest, AnEntryMovesAllRowsBehindItsLetter) {
  LetterTable table;
  table.EntryAdded('C');
  for (int row = 0; row <= 12; ++row) EXPECT_EQ(table.RowStart(row), 320U) << row;
  for (int row = 13; row < 37; ++row) EXPECT_EQ(table.RowStart(row), 336U) << row;
  EXPECT_EQ(table.Start('C'), 320U);
  EXPECT_EQ(table.Start('D'), 336U);
}

TEST(LetterTableTest, ALetterWithoutEntriesStartsWhereTheNextOneDoes) {
  LetterTable table;
  table.EntryAdded('B');
  table.EntryAdded('D');
  EXPECT_EQ(table.Start('C'), 336U);
  EXPECT_EQ(table.Start('C'), table.Start('D'));
}

TEST(LetterTableTest, AnEntryOfZMovesTheClosingRowAlone) {
  LetterTable table;
  table.EntryAdded('Z');
  EXPECT_EQ(table.RowStart(35), 320U);
  EXPECT_EQ(table.RowStart(36), 336U);
}

TEST(LetterTableTest, ARemovedEntryTakesTheSameRowsBack) {
  LetterTable table;
  table.EntryAdded('0');
  table.EntryAdded('M');
  table.EntryRemoved('0');
  EXPECT_EQ(table.RowStart(1), 320U);
  EXPECT_EQ(table.Start('M'), 320U);
  EXPECT_EQ(table.Start('N'), 336U);
}

TEST(LetterTableTest, ALetterWithoutARowCountsAsTheFirstOne) {
  LetterTable table;
  table.EntryAdded(0x90);
  EXPECT_EQ(table.Start(0x90), 320U);
  EXPECT_EQ(table.RowStart(0), 320U);
  EXPECT_EQ(table.RowStart(1), 336U);
  EXPECT_EQ(table.RowStart(36), 336U);
  table.EntryRemoved('[');
  EXPECT_EQ(table.RowStart(1), 320U);
}

TEST(LetterTableTest, ResetPutsEveryRowBackToTheFirstEntry) {
  LetterTable table;
  table.EntryAdded('A');
  table.EntryAdded('7');
  table.Reset();
  for (int row = 0; row < 37; ++row) EXPECT_EQ(table.RowStart(row), 320U) << row;
}

}  // namespace
}  // namespace carnetel
