// A switch of the active index, byte for byte: the address file before and after it, held against a
// plain account of how a switch looks every card up.
#include "storage/address_reorder.h"

#include <gmock/gmock.h>

#include "platform/fault_file_system.h"
#include "tests/storage/family_bytes.h"
#include "tests/storage/family_check.h"
#include "tests/support/recording_progress.h"

namespace carnetel {
namespace {

using ::testing::ElementsAre;
using ::testing::Pair;

constexpr uint32_t kTime = 1'000'000'000;
constexpr uint8_t kMark = 1;
// Bytes 4 to 15 of a card that is not found: those of the old header.
constexpr std::string_view kPieceOfBanner = "ETEL (c) DRO";

// The card offsets of an index in the order of its slots, read from its bytes.
std::vector<uint32_t> OrderOf(ByteView index) {
  std::vector<uint32_t> order;
  for (size_t page = 0; page < index.size(); page += 506) {
    for (size_t slot = page + 2; slot < page + 506; slot += 14) {
      if (index[slot] != std::byte{0}) order.push_back(LoadLe32(index, slot + 10));
    }
  }
  return order;
}

// A plain account of the switch over whole files: pairs of card offset and position are collected
// in blocks of 8000 bytes, which go to a file once one is full; then every card of the new order is
// looked up pair by pair.
class PlainReorder {
 public:
  explicit PlainReorder(FileBytes old_file) : old_(std::move(old_file)) {
    FileBytes block;
    for (size_t position = 320; position + 16 <= old_.size(); position += 16) {
      FileBytes pair(8);
      StoreLe32(pair, 0, LoadLe32(old_, position));
      StoreLe32(pair, 4, static_cast<uint32_t>(position));
      block.insert(block.end(), pair.begin(), pair.end());
      if (block.size() == 8000) {
        spilled_.insert(spilled_.end(), block.begin(), block.end());
        block.clear();
      }
    }
    // Without a full block there is no file, and the one block is searched in memory, behind its
    // pairs zeros. With one, the rest goes behind and is never read as it comes short.
    if (spilled_.empty()) {
      block.resize(8000);
      spilled_ = block;
    } else {
      spilled_.insert(spilled_.end(), block.begin(), block.end());
    }
  }
  [[nodiscard]] FileBytes Result(const std::vector<uint32_t>& new_order) const {
    FileBytes file(old_.begin(), old_.begin() + 128);
    StoreLe16(file, 96, static_cast<uint16_t>(new_order.size()));
    file.resize(320);
    uint16_t marks = 0;
    for (const uint32_t offset : new_order) {
      const size_t from = OldPosition(offset);
      FileBytes entry(old_.begin() + static_cast<ptrdiff_t>(from),
                      old_.begin() + static_cast<ptrdiff_t>(from) + 16);
      if ((entry[4] & std::byte{2}) != std::byte{0}) ++marks;
      StoreLe32(entry, 0, offset);
      file.insert(file.end(), entry.begin(), entry.end());
    }
    StoreLe16(file, 130, marks);
    return file;
  }

 private:
  [[nodiscard]] size_t OldPosition(uint32_t card_offset) const {
    for (size_t block = 0; block + 8000 <= spilled_.size(); block += 8000) {
      for (size_t pair = block; pair < block + 8000; pair += 8) {
        const uint32_t there = LoadLe32(spilled_, pair);
        if (there == 0) break;
        if (there == card_offset) return LoadLe32(spilled_, pair + 4);
      }
    }
    return 0;
  }

  FileBytes old_;
  FileBytes spilled_;
};

class AddressReorderTest : public StoreFixture {
 protected:
  // Opens a directory of `count` cards whose companies and surnames have orders of their own, with
  // saved rows and other bits in every entry.
  void OpenOf(uint32_t count) {
    std::vector<CardRecord> cards;
    for (uint32_t number = 1; number <= count; ++number) {
      cards.push_back(MakeCard(Key(number, 7), Key(number, 11)));
      if (number % 3 == 0) cards.back().SetField(kTel1, OemText("1"));
    }
    files.SetContents(Path(".DAN"), MainFileBytes(cards, kTime));
    Open();
    ASSERT_EQ(open_result, OpenResult::kOpened);
    AddressFile& address = directory().address();
    for (uint32_t row = 0; row < count; ++row) address.SetEntry(row, EntryWithBits(row));
    address.header().set_top_row(3);
    address.header().set_current_row(5);
    SaveMarks();
  }
  // Spread over the letters but Z, unlike for each `step`.
  static std::string Key(uint32_t number, uint32_t step) {
    const uint32_t mixed = number * step;
    return static_cast<char>('A' + mixed % 25) + std::to_string(100'000 + mixed % 99'991);
  }
  // Every bit of the 12 bytes differs from card to card, but for that of the whole file.
  EntrySlot EntryWithBits(uint32_t row) {
    FileBytes entry(16);
    const uint32_t offset = directory().address().CardOffsetAt(row);
    StoreLe32(entry, 0, offset);
    for (size_t i = 4; i < 16; ++i) {
      StoreU8(entry, i, static_cast<uint8_t>((offset / 768 * 37 + i * 91) >> (i % 3)));
    }
    entry[4] |= std::byte{1};
    return EntrySlot(entry);
  }
  void SaveMarks() {
    int32_t marks = 0;
    for (uint32_t row = 0; row < directory().address().entry_count(); ++row) {
      if (directory().address().Entry(row).bit(directory().selection_bit())) ++marks;
    }
    directory().set_marked_count(marks);
    directory().CloseListView();
  }
  void Reorder(int key_field) {
    AddressReorder reorder(directory(), key_field);
    ASSERT_TRUE(reorder.built());
    reorder.CarryOver();
  }
  [[nodiscard]] std::string EntryText(size_t row) const {
    return std::string(AsChars(ByteView(AddressFileBytes()).subspan(320 + 16 * row + 4, 12)));
  }
  [[nodiscard]] uint32_t CountOfUnfound() const {
    const FileBytes file = AddressFileBytes();
    uint32_t count = 0;
    for (size_t at = 320; at < file.size(); at += 16) {
      if (AsChars(ByteView(file).subspan(at + 4, 12)) == kPieceOfBanner) ++count;
    }
    return count;
  }
};

struct SizeCase {
  uint32_t count;
  uint32_t unfound;
};

void PrintTo(const SizeCase& size, std::ostream* out) {
  *out << size.count << " cards";
}

class AddressReorderSizeTest : public AddressReorderTest,
                               public ::testing::WithParamInterface<SizeCase> {};

TEST_P(AddressReorderSizeTest, BitsFollowTheCardsThatAreSearched) {
  OpenOf(GetParam().count);
  const FileBytes old_file = AddressFileBytes();
  const std::vector<uint32_t> new_order = OrderOf(IndexFile(2));
  ASSERT_EQ(new_order.size(), GetParam().count);
  ASSERT_NE(new_order, OrderOf(IndexFile(1)));
  const FileBytes expected = PlainReorder(old_file).Result(new_order);
  Reorder(kNom);
  EXPECT_TRUE(SameBytes(expected, AddressFileBytes()));
  EXPECT_EQ(directory().marked_count(), LoadLe16(expected, 130));
  EXPECT_EQ(CountOfUnfound(), GetParam().unfound);
}

TEST_P(AddressReorderSizeTest, TheFamilyIsAtRestUnderTheNewIndex) {
  OpenOf(GetParam().count);
  Reorder(kNom);
  const int32_t marked = directory().marked_count();
  Close();
  const FileBytes address = AddressFileBytes();
  files.ResetCounts();
  Open(kNom);
  EXPECT_EQ(files.counts().writes, 0);
  EXPECT_EQ(directory().marked_count(), marked);
  EXPECT_TRUE(SameBytes(address, AddressFileBytes()));
}

INSTANTIATE_TEST_SUITE_P(Sizes, AddressReorderSizeTest,
                         ::testing::Values(SizeCase{10, 0}, SizeCase{999, 0}, SizeCase{1000, 0},
                                           SizeCase{1001, 1}, SizeCase{2500, 500}),
                         [](const auto& test) { return "Of" + std::to_string(test.param.count); });

TEST_F(AddressReorderTest, AnEmptyDirectory) {
  Open();
  Reorder(kNom);
  EXPECT_TRUE(SameBytes(ExpectedAddressFile({}, 0), AddressFileBytes()));
  EXPECT_EQ(directory().active_index_number(), 2);
}

TEST_F(AddressReorderTest, MarksAndFlagsOfThreeCards) {
  Open();
  Add(MakeCard({{kSte1, "ALPHA"}, {kNom, "ZOLA"}, {kTel1, "1"}}), true);
  Add(MakeCard({{kSte1, "MIKE"}, {kNom, "HUGO"}, {kFax, "2"}}));
  Add(MakeCard({{kSte1, "TANGO"}, {kNom, "CAMUS"}, {kModem, "3"}}), true);
  Reorder(kNom);
  EXPECT_TRUE(SameBytes(
      ExpectedAddressFile({{2304, 0x03, 0x20}, {1536, 0x01, 0x10}, {768, 0x03, 0x80}}, kTime, 2),
      AddressFileBytes()));
  EXPECT_EQ(directory().marked_count(), 2);
}

TEST_F(AddressReorderTest, ThereAndBackRestoresTheFile) {
  OpenOf(999);
  const FileBytes before = AddressFileBytes();
  Reorder(kNom);
  EXPECT_FALSE(before == AddressFileBytes());
  Reorder(kSte1);
  EXPECT_TRUE(SameBytes(before, AddressFileBytes()));
}

// The last partial block of the order that is left is not searched: another one on the way back.
TEST_F(AddressReorderTest, ThereAndBackOfMoreLosesTheLastBlockOfBothOrders) {
  OpenOf(1500);
  const FileBytes there = PlainReorder(AddressFileBytes()).Result(OrderOf(IndexFile(2)));
  Reorder(kNom);
  Reorder(kSte1);
  EXPECT_TRUE(SameBytes(PlainReorder(there).Result(OrderOf(IndexFile(1))), AddressFileBytes()));
  EXPECT_GT(CountOfUnfound(), 500U);
}

TEST_F(AddressReorderTest, ACardThatIsNotFoundGetsAPieceOfTheOldHeader) {
  OpenOf(1001);
  const uint32_t last = directory().address().CardOffsetAt(1000);
  Reorder(kNom);
  const uint32_t row = directory().address().FindRow(last);
  EXPECT_EQ(EntryText(row), kPieceOfBanner);
  EXPECT_EQ(Hex(ByteView(AddressFileBytes()).subspan(320 + 16 * row + 4, 12)),
            "45 54 45 4C 20 28 63 29 20 44 52 4F");
}

TEST_F(AddressReorderTest, ManyMarksOfAFullDirectory) {
  OpenOf(32767);
  std::vector<uint32_t> marked;
  std::vector<uint32_t> out_of_reach;
  for (uint32_t row = 0; row < 32767; ++row) {
    EntrySlot entry = directory().address().Entry(row);
    const bool late = row >= 32000 && row % 100 == 0;
    const bool marks = row % 16 == 0 && row < 32000;
    entry.set_bit(kMark, marks || late);
    directory().address().SetEntry(row, entry);
    if (marks) marked.push_back(entry.card_offset());
    if (late) out_of_reach.push_back(entry.card_offset());
  }
  ASSERT_EQ(marked.size(), 2000U);
  ASSERT_EQ(out_of_reach.size(), 8U);
  SaveMarks();
  Reorder(kNom);
  EXPECT_EQ(directory().marked_count(), 2000);
  EXPECT_EQ(LoadLe16(AddressFileBytes(), 130), 2000);
  EXPECT_EQ(CountOfUnfound(), 767U);
  std::vector<uint32_t> kept;
  for (uint32_t row = 0; row < directory().address().entry_count(); ++row) {
    const EntrySlot entry = directory().address().Entry(row);
    if (entry.bit(kMark)) kept.push_back(entry.card_offset());
  }
  std::ranges::sort(kept);
  std::ranges::sort(marked);
  EXPECT_EQ(kept, marked);
}

// No entry of a family is without a card, but a damaged one in memory must not be taken for more
// than the end of its block.
TEST_F(AddressReorderTest, AnEntryWithoutACardEndsTheSearchOfItsBlock) {
  OpenOf(10);
  EntrySlot entry = directory().address().Entry(4);
  entry.set_card_offset(0);
  directory().address().SetEntry(4, entry);
  SaveMarks();
  const FileBytes expected = PlainReorder(AddressFileBytes()).Result(OrderOf(IndexFile(2)));
  Reorder(kNom);
  EXPECT_TRUE(SameBytes(expected, AddressFileBytes()));
  EXPECT_EQ(CountOfUnfound(), 6U);
}

TEST_F(AddressReorderTest, TheNextBlockIsSearchedAllTheSame) {
  OpenOf(2000);
  EntrySlot entry = directory().address().Entry(300);
  entry.set_card_offset(0);
  directory().address().SetEntry(300, entry);
  SaveMarks();
  const FileBytes expected = PlainReorder(AddressFileBytes()).Result(OrderOf(IndexFile(2)));
  Reorder(kNom);
  EXPECT_TRUE(SameBytes(expected, AddressFileBytes()));
  EXPECT_EQ(CountOfUnfound(), 700U);
}

TEST_F(AddressReorderTest, SavedRowsStayAndTheCountIsRight) {
  OpenOf(10);
  directory().address().header().set_count(7);
  Reorder(kNom);
  const FileBytes file = AddressFileBytes();
  EXPECT_EQ(LoadLe16(file, 96), 10);
  EXPECT_EQ(LoadLe16(file, 100), 3);
  EXPECT_EQ(LoadLe16(file, 102), 5);
}

// An index whose last letter has overflowed in the middle has other slots than cards.
TEST_F(AddressReorderTest, TheCountIsThatOfTheNewEntries) {
  Open();
  for (int number = 0; number < 40; ++number) {
    Add("A" + std::to_string(100 + number), "Z" + std::to_string(900 - number));
  }
  const std::vector<uint32_t> new_order = OrderOf(IndexFile(2));
  ASSERT_NE(new_order.size(), 40U);
  Reorder(kNom);
  EXPECT_EQ(LoadLe16(AddressFileBytes(), 96), new_order.size());
  EXPECT_EQ(AddressFileBytes().size(), 320 + 16 * new_order.size());
}

// The counters of other groups begin anew; the lists count their marks when they are filled.
TEST_F(AddressReorderTest, OnlyTheDisplayedCounterIsWritten) {
  OpenOf(10);
  for (const uint8_t bit : {uint8_t{5}, uint8_t{89}}) {
    directory().address().SetCounter(bit, 6);
    directory().address().FlushCounter(bit);
  }
  const FileBytes expected = PlainReorder(AddressFileBytes()).Result(OrderOf(IndexFile(2)));
  Reorder(kNom);
  EXPECT_TRUE(SameBytes(expected, AddressFileBytes()));
  EXPECT_EQ(LoadLe16(AddressFileBytes(), 138), 0);
  EXPECT_EQ(LoadLe16(AddressFileBytes(), 306), 0);
}

TEST_F(AddressReorderTest, WithAGroupDisplayedItsMarksAreCounted) {
  OpenOf(10);
  directory().set_group_bit(4);
  SaveMarks();
  FileBytes expected = PlainReorder(AddressFileBytes()).Result(OrderOf(IndexFile(2)));
  const auto marked = static_cast<uint16_t>(directory().marked_count());
  StoreLe16(expected, 130, 0);
  StoreLe16(expected, 138, marked);
  ASSERT_GT(marked, 0);
  Reorder(kNom);
  EXPECT_TRUE(SameBytes(expected, AddressFileBytes()));
  EXPECT_EQ(directory().marked_count(), marked);
}

TEST_F(AddressReorderTest, GroupsCriteriaAndLayoutsStay) {
  OpenOf(10);
  for (const std::string_view extension : {".GRP", ".CRT", ".LST", ".T01"}) {
    files.SetContents(Path(extension), AsBytes("kept"));
  }
  const FamilyBytes before = ReadFamily(files, kStem);
  Reorder(kNom);
  for (const std::string_view extension : {".GRP", ".CRT", ".LST", ".T01"}) {
    EXPECT_EQ(AsChars(Contents(extension)), "kept") << extension;
  }
  EXPECT_TRUE(SameBytes(before.main, MainFile()));
  EXPECT_TRUE(SameBytes(before.index1, IndexFile(1)));
  EXPECT_TRUE(SameBytes(before.index2, IndexFile(2)));
  EXPECT_EQ(files.List("/carnets").size(), 8U) << "no other file stays behind";
}

// The new entries take the place of the old ones in the letters too.
TEST_F(AddressReorderTest, CardsAreAddedAndDeletedInTheNewOrder) {
  OpenOf(10);
  Reorder(kNom);
  EXPECT_NE(Add("AAA", "YYY"), 0U);
  EXPECT_TRUE(Delete(CardOffset(2)));
  Close();
  files.ResetCounts();
  Open(kNom);
  EXPECT_EQ(directory().address().entry_count(), 10U);
  EXPECT_EQ(files.counts().writes, 0);
}

TEST_F(AddressReorderTest, TheRebuildIsShown) {
  RecordingProgress shown;
  DirectoryOptions options;
  options.path = kStem;
  OpenOf(10);
  Close();
  Directory opened(DirectoryServices{files, clock, shown}, options);
  ASSERT_EQ(opened.OpenDirectory(), OpenResult::kOpened);
  AddressReorder reorder(opened, kNom);
  EXPECT_THAT(shown.opened, ElementsAre(Pair(ProgressForm::kBuildIndex, 10U)));
  EXPECT_EQ(shown.steps, 10);
  EXPECT_EQ(shown.closed, 1);
  reorder.CarryOver();
  EXPECT_EQ(shown.steps, 10);
}

TEST_F(AddressReorderTest, AnAddressFileThatCannotBeMadeStaysAsItWas) {
  OpenOf(10);
  Close();
  const FileBytes before = AddressFileBytes();
  FaultFileSystem faulty(files);
  {
    DirectoryOptions options;
    options.path = kStem;
    Directory opened(DirectoryServices{faulty, clock, progress}, options);
    ASSERT_EQ(opened.OpenDirectory(), OpenResult::kOpened);
    faulty.StopAfter(0);
    AddressReorder reorder(opened, kNom);
    EXPECT_FALSE(reorder.built());
    reorder.CarryOver();
  }
  EXPECT_TRUE(SameBytes(before, AddressFileBytes()));
  Open();
  EXPECT_TRUE(SameBytes(before, AddressFileBytes()));
}

}  // namespace
}  // namespace carnetel
