// The address file by itself: entries put in and taken out, marks, flags and the letter table.
#include <gmock/gmock.h>

#include "storage/address_file.h"
#include "tests/storage/family_bytes.h"

namespace carnetel {
namespace {

constexpr std::string_view kPath = "/ESSAI.ADR";
constexpr uint8_t kMark = 1;

class AddressFileTest : public ::testing::Test {
 protected:
  void SetUp() override { ASSERT_TRUE(address.CreateAddressFile()); }
  uint32_t Insert(char letter, uint32_t card_offset, int64_t previous, uint8_t flags = 0) {
    EntrySlot entry;
    entry.set_card_offset(card_offset);
    entry.set_bit(0, true);
    entry.set_number_flags(flags);
    return address.InsertEntry(static_cast<unsigned char>(letter), entry, previous);
  }
  void Remove(uint32_t deleted, uint32_t moved_from, char deleted_letter, char moved_letter) {
    address.RemoveEntry(deleted, moved_from, static_cast<unsigned char>(deleted_letter),
                        static_cast<unsigned char>(moved_letter), kMark, &removed, &moved);
  }
  [[nodiscard]] std::vector<uint32_t> Order() const {
    std::vector<uint32_t> offsets;
    for (uint32_t row = 0; row < address.entry_count(); ++row) {
      offsets.push_back(address.CardOffsetAt(row));
    }
    return offsets;
  }
  [[nodiscard]] uint32_t Start(char letter) const {
    return address.letters().Start(static_cast<unsigned char>(letter));
  }
  FileBytes Bytes() {
    address.Flush();
    return files.Contents(std::string(kPath));
  }

  FakeClock clock;
  MemoryFileSystem files{clock};
  AddressFile address{files, std::string(kPath)};
  EntryChange removed{true, -7, 7};
  EntryChange moved{true, -7, 7};
};

TEST_F(AddressFileTest, NewFile) {
  EXPECT_TRUE(SameBytes(ExpectedAddressFile({}, 0), Bytes()));
  for (int row = 0; row < LetterTable::kRows; ++row) {
    EXPECT_EQ(address.letters().RowStart(row), 320U);
  }
}

TEST_F(AddressFileTest, EntryBytes) {
  EntrySlot entry;
  entry.set_card_offset(0x01020304);
  for (const uint8_t bit : std::vector<uint8_t>{0, 9, 87}) entry.set_bit(bit, true);
  entry.set_number_flags(0xB0);
  EXPECT_EQ(Hex(entry.bytes()), "04 03 02 01 01 02 00 00 00 00 00 00 00 00 80 B0");
  entry.set_bit(9, false);
  entry.set_number_flags(0x10);
  EXPECT_EQ(Hex(entry.bytes()), "04 03 02 01 01 00 00 00 00 00 00 00 00 00 80 10");
}

TEST_F(AddressFileTest, EveryFlagHasItsBit) {
  EXPECT_EQ(NumberFlagsOf(MakeCard({{18, "1"}})), 0x80);
  EXPECT_EQ(NumberFlagsOf(MakeCard({{19, "1"}})), 0x00) << "the second number has none";
  EXPECT_EQ(NumberFlagsOf(MakeCard({{20, "1"}})), 0x40);
  EXPECT_EQ(NumberFlagsOf(MakeCard({{24, "1"}})), 0x20);
  EXPECT_EQ(NumberFlagsOf(MakeCard({{22, "1"}})), 0x10);
  EXPECT_EQ(NumberFlagsOf(MakeCard({{18, "1"}, {20, "1"}, {22, "1"}, {24, "1"}})), 0xF0);
}

TEST_F(AddressFileTest, InsertBehindThePreviousCard) {
  Insert('A', 768, 0);
  Insert('A', 1536, 768);
  EXPECT_EQ(Insert('A', 2304, 768), 1U);
  EXPECT_EQ(Order(), (std::vector<uint32_t>{768, 2304, 1536}));
  EXPECT_EQ(address.header().count(), 3);
}

TEST_F(AddressFileTest, InsertWithoutAPreviousCardGoesToTheFrontOfTheLetter) {
  Insert('A', 768, 0);
  Insert('M', 1536, 0);
  EXPECT_EQ(Insert('M', 2304, 0), 1U);
  EXPECT_EQ(Insert('M', 3072, -1), 1U);
  EXPECT_EQ(Order(), (std::vector<uint32_t>{768, 3072, 2304, 1536}));
}

TEST_F(AddressFileTest, InsertBehindACardOfAnEarlierLetterGoesToTheEnd) {
  Insert('A', 768, 0);
  Insert('T', 1536, 0);
  EXPECT_EQ(Insert('M', 2304, 768), 2U);
  EXPECT_EQ(Order(), (std::vector<uint32_t>{768, 1536, 2304}));
  EXPECT_EQ(Start('T'), 352U) << "the table counts the letters, wherever their entries lie";
}

TEST_F(AddressFileTest, LetterTableFollowsInsertsAndRemovals) {
  Insert('M', 768, 0);
  Insert('5', 1536, 0);
  EXPECT_EQ(Start('5'), 320U);
  EXPECT_EQ(Start('6'), 336U);
  EXPECT_EQ(Start('M'), 336U);
  EXPECT_EQ(Start('N'), 352U);
  EXPECT_EQ(address.letters().RowStart(36), 352U);
  Remove(1536, 1536, '5', '5');
  EXPECT_EQ(Start('6'), 320U);
  EXPECT_EQ(Start('N'), 336U);
}

TEST_F(AddressFileTest, LetterWithoutCardsStartsWhereTheNextOneDoes) {
  Insert('A', 768, 0);
  Insert('C', 1536, 0);
  EXPECT_EQ(Start('B'), Start('C'));
  EXPECT_EQ(Start('B'), 336U);
}

TEST_F(AddressFileTest, LetterOutsideTheTableCountsAsTheFirstRow) {
  Insert('0', 768, 0);
  EXPECT_EQ(Insert('\x90', 1536, 768), 1U);
  EXPECT_EQ(Start('\x90'), 320U);
  EXPECT_EQ(Start('1'), 352U);
  Remove(1536, 1536, '\x90', '\x90');
  EXPECT_EQ(Start('1'), 336U);
  EXPECT_EQ(Order(), (std::vector<uint32_t>{768}));
}

TEST_F(AddressFileTest, RemovalOfTheOnlyEntryLeavesHeaderAndCounters) {
  Insert('A', 768, 0);
  address.Flush();
  Remove(768, 768, 'A', 'A');
  EXPECT_TRUE(SameBytes(ExpectedAddressFile({}, 0), Bytes()));
  for (int row = 0; row < LetterTable::kRows; ++row) {
    EXPECT_EQ(address.letters().RowStart(row), 320U);
  }
}

TEST_F(AddressFileTest, RemovalOfTheLastCardMovesNoEntry) {
  Insert('A', 768, 0);
  Insert('T', 1536, 0);
  Remove(1536, 1536, 'T', 'T');
  EXPECT_EQ(Order(), (std::vector<uint32_t>{768}));
  EXPECT_EQ(removed.row, 1);
  EXPECT_EQ(removed.card_offset, 1536U);
  EXPECT_TRUE(moved.marked);
  EXPECT_EQ(moved.row, -7);
  EXPECT_EQ(moved.card_offset, 7U);
}

TEST_F(AddressFileTest, RemovalShowsTheMovedCardInPlace) {
  Insert('A', 768, 0);
  Insert('T', 1536, 0, 0x80);
  Insert('T', 2304, 1536, 0x40);
  Insert('T', 3072, 2304, 0x20);
  Remove(768, 3072, 'A', 'T');
  EXPECT_TRUE(
      SameBytes(ExpectedAddressFile({{1536, 0x01, 0x80}, {2304, 0x01, 0x40}, {768, 0x01, 0x20}}, 0),
                Bytes()));
  EXPECT_EQ(removed.row, 0);
  EXPECT_EQ(moved.row, 3);
  EXPECT_EQ(moved.card_offset, 768U);
}

// Only entries from the lower of the two letters on are looked at.
TEST_F(AddressFileTest, RemovalOverlooksEntriesInFrontOfBothLetters) {
  Insert('A', 768, 0);
  Insert('M', 1536, 0);
  Remove(768, 1536, 'M', 'T');
  EXPECT_EQ(Order(), (std::vector<uint32_t>{768, 768}));
  EXPECT_EQ(address.header().count(), 1);
}

TEST_F(AddressFileTest, LettersAreComparedAsSignedBytes) {
  Insert('\x90', 768, 0);
  Insert('A', 1536, 0);
  Remove(768, 1536, '\x90', 'A');
  EXPECT_EQ(Order(), (std::vector<uint32_t>{768}));
}

TEST_F(AddressFileTest, SelectedRowIsOnTheDisk) {
  Insert('A', 768, 0);
  Insert('M', 1536, 0);
  address.Flush();
  address.SelectRowOfCard(1536);
  EXPECT_EQ(LoadLe16(files.Contents(std::string(kPath)), 102), 1);
  address.SelectRowOfCard(9999 * 768);
  EXPECT_EQ(LoadLe16(files.Contents(std::string(kPath)), 102), 1);
}

TEST_F(AddressFileTest, CountersLieBehindTheHeader) {
  address.SetCounter(1, 0x0102);
  address.SetCounter(89, 3);
  address.FlushCounter(1);
  address.FlushCounter(89);
  const FileBytes file = Bytes();
  EXPECT_EQ(LoadLe16(file, 130), 0x0102);
  EXPECT_EQ(LoadLe16(file, 306), 3);
  EXPECT_EQ(file.size(), 320U);
}

// What stands on the disk while an operation runs is no count that a family has.
TEST_F(AddressFileTest, CountWhileChanging) {
  Insert('A', 768, 0);
  address.Flush();
  address.MarkChanging();
  EXPECT_EQ(LoadLe16(files.Contents(std::string(kPath)), 96), 0xFFFF);
  EXPECT_EQ(LoadLe16(Bytes(), 96), 1);
}

TEST_F(AddressFileTest, FlushWritesOnlyWhatChanged) {
  Insert('A', 768, 0);
  address.Flush();
  files.ResetCounts();
  address.Flush();
  EXPECT_EQ(files.counts().writes, 0);
}

}  // namespace
}  // namespace carnetel
