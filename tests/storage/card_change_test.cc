// Changing a card: in place when neither key field changes, by delete and add otherwise.
#include <gmock/gmock.h>

#include "base/format_text.h"
#include "tests/storage/family_bytes.h"
#include "tests/storage/family_check.h"

namespace carnetel {
namespace {

constexpr uint32_t kTime = 1'000'000'000;
constexpr uint32_t kLater = kTime + 60;

class CardChangeTest : public StoreFixture {
 protected:
  void SetUp() override {
    Open();
    Add(MakeCard({{kSte1, "ALPHA"}, {kFax, "1"}}), true);
    Add(MakeCard({{kSte1, "BRAVO"}, {kNom, "Zola"}, {kTel1, "2"}}));
    Add(MakeCard({{kSte1, "TANGO"}, {kMtel, "3"}}), true);
    SetMarks(0, 0x0F);
    clock.Advance(60);
  }
  // Sets the first mark byte of an entry, as marking and grouping do.
  void SetMarks(uint32_t row, uint8_t marks) {
    EntrySlot entry = directory().address().Entry(row);
    for (uint8_t bit = 0; bit < 8; ++bit) entry.set_bit(bit, (marks >> bit & 1) != 0);
    directory().address().SetEntry(row, entry);
    directory().Commit();
  }
  ChangedCard Change(uint32_t card_offset, const CardRecord& card) {
    return ChangeCard(directory(), card_offset, card);
  }
  [[nodiscard]] uint32_t StampOnDisk() const { return LoadLe32(MainFile(), 102); }
  [[nodiscard]] uint32_t AddressStampOnDisk() const { return LoadLe32(AddressFileBytes(), 104); }

  const CardRecord alpha = MakeCard({{kSte1, "ALPHA"}, {kFax, "1"}});
  const CardRecord bravo = MakeCard({{kSte1, "BRAVO"}, {kNom, "Zola"}, {kTel1, "2"}});
  const CardRecord tango = MakeCard({{kSte1, "TANGO"}, {kMtel, "3"}});
};

TEST_F(CardChangeTest, InPlaceRewritesCardAndFlags) {
  CardRecord card = alpha;
  card.SetField(kTel1, OemText("0102030405"));
  card.SetField(kFax, OemText());
  const FileBytes indexes[] = {IndexFile(1), IndexFile(2)};
  const ChangedCard changed = Change(768, card);
  EXPECT_EQ(changed.result, ChangeResult::kRewritten);
  EXPECT_EQ(changed.card_offset, 768U);
  EXPECT_TRUE(SameBytes(MainFileBytes({{card, kLater}, {bravo, kTime}, {tango, kTime}}, kTime),
                        MainFile()));
  EXPECT_TRUE(SameBytes(indexes[0], IndexFile(1)));
  EXPECT_TRUE(SameBytes(indexes[1], IndexFile(2)));
  EXPECT_TRUE(SameBytes(
      ExpectedAddressFile({{768, 0x0F, 0x80}, {1536, 0x01, 0x80}, {2304, 0x03, 0x40}}, kTime),
      AddressFileBytes()));
}

// Other seats stay unaware of a rewrite; the directory's own next opening too.
TEST_F(CardChangeTest, InPlaceLeavesTheStampOnTheDisk) {
  CardRecord card = bravo;
  card.SetField(kTel1, OemText("9"));
  Change(1536, card);
  EXPECT_EQ(StampOnDisk(), kTime);
  Close();
  EXPECT_EQ(StampOnDisk(), kTime);
  EXPECT_EQ(AddressStampOnDisk(), kTime);
}

TEST_F(CardChangeTest, StampOfARewriteReachesTheDiskWithTheNextAdd) {
  CardRecord card = bravo;
  card.SetField(kTel1, OemText("9"));
  Change(1536, card);
  clock.Advance(60);
  Add("DELTA");
  EXPECT_EQ(StampOnDisk(), kLater + 60);
  EXPECT_EQ(AddressStampOnDisk(), kLater + 60);
}

TEST_F(CardChangeTest, CurrentBufferKeepsItsTime) {
  CardRecord card = bravo;
  card.set_write_time(12345);
  card.SetField(kTel1, OemText("9"));
  Change(1536, card);
  EXPECT_EQ(directory().context().current, card);
  EXPECT_EQ(CardAt(1536).write_time(), kLater);
}

TEST_F(CardChangeTest, NewKeyMovesTheCardToTheEndWithItsMarks) {
  CardRecord card = alpha;
  card.SetField(kSte1, OemText("ZENITH"));
  const ChangedCard changed = Change(768, card);
  EXPECT_EQ(changed.result, ChangeResult::kMoved);
  EXPECT_EQ(changed.card_offset, 2304U);
  EXPECT_TRUE(SameBytes(MainFileBytes({{tango, kTime}, {bravo, kTime}, {card, kLater}}, kLater),
                        MainFile()));
  EXPECT_TRUE(SameBytes(IndexBuilder()
                            .Page('B', {{"BRAVO", 1536}})
                            .Page('T', {{"TANGO", 768}})
                            .Page('Z', {{"ZENITH", 2304}})
                            .Bytes(),
                        IndexFile(1)));
  EXPECT_TRUE(SameBytes(IndexBuilder()
                            .Page('T', {{"TANGO", 768}})
                            .Page('Z', {{"ZENITH", 2304}, {"ZOLA", 1536}})
                            .Bytes(),
                        IndexFile(2)));
  EXPECT_TRUE(SameBytes(
      ExpectedAddressFile({{1536, 0x01, 0x80}, {768, 0x03, 0x40}, {2304, 0x0F, 0x10}}, kLater),
      AddressFileBytes()));
  EXPECT_EQ(directory().marked_count(), 2);
}

// The whole flag byte comes back with the marks, so flags are those of the old card.
TEST_F(CardChangeTest, NewKeyKeepsTheOldNumberFlags) {
  CardRecord card = bravo;
  card.SetField(kSte1, OemText("CHARLIE"));
  card.SetField(kTel1, OemText());
  card.SetField(kModem, OemText("7"));
  Change(1536, card);
  EXPECT_TRUE(SameBytes(
      ExpectedAddressFile({{768, 0x0F, 0x10}, {2304, 0x01, 0x80}, {1536, 0x03, 0x40}}, kLater),
      AddressFileBytes()));
}

TEST_F(CardChangeTest, NewKeyOfTheLastCardStaysAtItsOffset) {
  CardRecord card = tango;
  card.SetField(kSte1, OemText("ACACIA"));
  const ChangedCard changed = Change(2304, card);
  EXPECT_EQ(changed.result, ChangeResult::kMoved);
  EXPECT_EQ(changed.card_offset, 2304U);
  EXPECT_TRUE(SameBytes(MainFileBytes({{alpha, kTime}, {bravo, kTime}, {card, kLater}}, kLater),
                        MainFile()));
  EXPECT_TRUE(SameBytes(
      ExpectedAddressFile({{2304, 0x03, 0x40}, {768, 0x0F, 0x10}, {1536, 0x01, 0x80}}, kLater),
      AddressFileBytes()));
}

TEST_F(CardChangeTest, OnlyCard) {
  Delete(2304);
  Delete(1536);
  CardRecord card = alpha;
  card.SetField(kNom, OemText("Camus"));
  EXPECT_EQ(Change(768, card).card_offset, 768U);
  EXPECT_TRUE(SameBytes(MainFileBytes({card}, kLater), MainFile()));
  EXPECT_TRUE(SameBytes(IndexBuilder().Page('A', {{"ALPHA", 768}}).Bytes(), IndexFile(1)));
  EXPECT_TRUE(SameBytes(IndexBuilder().Page('C', {{"CAMUS", 768}}).Bytes(), IndexFile(2)));
  EXPECT_TRUE(SameBytes(ExpectedAddressFile({{768, 0x0F, 0x10}}, kLater), AddressFileBytes()));
}

// Key fields are compared over their full sizes, case included.
TEST_F(CardChangeTest, OtherCaseIsANewKey) {
  CardRecord card = alpha;
  card.SetField(kSte1, OemText("Alpha"));
  EXPECT_EQ(Change(768, card).result, ChangeResult::kMoved);
  EXPECT_TRUE(SameBytes(IndexBuilder()
                            .Page('A', {{"ALPHA", 2304}})
                            .Page('B', {{"BRAVO", 1536}})
                            .Page('T', {{"TANGO", 768}})
                            .Bytes(),
                        IndexFile(1)));
}

TEST_F(CardChangeTest, ByteBehindTheZeroOfAKeyFieldIsANewKey) {
  CardRecord card = alpha;
  StoreU8(card.bytes(), 31, 'x');
  EXPECT_EQ(Change(768, card).result, ChangeResult::kMoved);
}

TEST_F(CardChangeTest, OffsetWhereNoCardLies) {
  const FileBytes before = MainFile();
  for (const uint32_t wrong : {0U, 769U, 3072U}) {
    EXPECT_EQ(Change(wrong, alpha).result, ChangeResult::kNotPossible) << wrong;
  }
  EXPECT_TRUE(SameBytes(before, MainFile()));
}

// Reserved bytes behind the fields travel with a card.
TEST_F(CardChangeTest, ReservedBytesAreCarried) {
  CardRecord card = alpha;
  for (size_t i = 731; i < 764; ++i) StoreU8(card.bytes(), i, static_cast<uint8_t>(i));
  Change(768, card);
  EXPECT_TRUE(SameBytes(MainFileBytes({{card, kLater}, {bravo, kTime}, {tango, kTime}}, kTime),
                        MainFile()));
}

// The first card of a letter behind a full page lands behind all entries, and those of the letters
// between lie one row in front of where their letter starts: a delete does not find them. The card
// is gone from its old place all the same and must come back under its new key.
TEST_F(CardChangeTest, CardWhoseEntryLiesOutOfPlaceIsNotLost) {
  while (directory().main().count() > 0) Delete(768);
  for (int n = 1; n <= 36; ++n) Add(FormatPrintf("M%02d", {n}));
  for (const std::string_view company : {"TANGO", "NANTES", "ZOLA"}) Add(company);
  const ChangedCard changed = Change(CardOffset(37), MakeCard("ROMEO"));
  EXPECT_EQ(changed.result, ChangeResult::kMoved);
  EXPECT_EQ(changed.card_offset, CardOffset(39));
  EXPECT_EQ(CardAt(CardOffset(37)).FieldText(kSte1).bytes(), "ZOLA");
  EXPECT_EQ(CardAt(CardOffset(38)).FieldText(kSte1).bytes(), "NANTES");
  EXPECT_EQ(CardAt(CardOffset(39)).FieldText(kSte1).bytes(), "ROMEO");
  EXPECT_EQ(MainFile().size(), 768U * 40);
  Open();
  Open();
  EXPECT_EQ(FamilyFault(ReadFamily(files, kStem)), "");
}

// Nothing to take marks over from: the new entry is that of any new card, its first bit set.
TEST_F(CardChangeTest, CardWithoutAnEntryGetsAFreshOne) {
  EntryChange removed;
  EntryChange moved;
  directory().address().RemoveEntry(768, 768, 'A', 'A', 1, &removed, &moved);
  CardRecord card = alpha;
  card.SetField(kSte1, OemText("ZENITH"));
  EXPECT_EQ(Change(768, card).result, ChangeResult::kMoved);
  const AddressFile& address = directory().address();
  const uint32_t row = address.FindRow(2304);
  ASSERT_LT(row, address.entry_count());
  EXPECT_EQ(Hex(address.Entry(row).bytes()), "00 09 00 00 01 00 00 00 00 00 00 00 00 00 00 10");
}

TEST_F(CardChangeTest, ReopeningAfterANewKeyFindsEverythingInOrder) {
  CardRecord card = alpha;
  card.SetField(kSte1, OemText("ZENITH"));
  Change(768, card);
  Close();
  files.ResetCounts();
  Open();
  EXPECT_EQ(files.counts().writes, 0);
  EXPECT_EQ(directory().marked_count(), 2);
}

}  // namespace
}  // namespace carnetel
