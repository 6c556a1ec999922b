// The dispatcher at its limits: a full directory, rows beyond 32767, rewrites that do not fit.
#include <gmock/gmock.h>

#include "tests/storage/family_bytes.h"
#include "tests/storage/family_check.h"

namespace carnetel {
namespace {

constexpr uint32_t kTime = 1'000'000'000;

class CardDispatchLimitsTest : public StoreFixture {
 protected:
  // Puts a main file of `count` cards in place, spread over the letters but Z, and opens it.
  void OpenOfSize(uint32_t count) {
    FileBytes file = MainHeaderBytes(static_cast<uint16_t>(count), kTime);
    file.resize(768 * (size_t{count} + 1));
    for (uint32_t n = 1; n <= count; ++n) {
      StoreU8(file, CardOffset(n), static_cast<uint8_t>('A' + n % 25));
    }
    files.SetContents(Path(".DAN"), file);
    Open();
    ASSERT_EQ(open_result, OpenResult::kOpened);
  }
  int Rewrite(const CardRecord& card, uint32_t card_offset, uint32_t row) {
    directory().context().current = card;
    return CardDispatch(directory()).Rewrite(card_offset, row);
  }
};

TEST_F(CardDispatchLimitsTest, Card32768IsRefused) {
  OpenOfSize(32766);
  EXPECT_EQ(Add("DERNIERE"), CardOffset(32767));
  const FamilyBytes full = ReadFamily(files, kStem);
  EXPECT_EQ(full.main.size(), 768U * 32768);
  EXPECT_EQ(LoadLe16(full.main, 96), 32767);
  uint32_t position = 77;
  directory().context().current = MakeCard("DE TROP");
  EXPECT_EQ(CardDispatch(directory()).Add(true, &position), -1);
  EXPECT_EQ(position, 77U);
  EXPECT_EQ(directory().marked_count(), 0);
  const FamilyBytes after = ReadFamily(files, kStem);
  EXPECT_TRUE(full.main == after.main);
  EXPECT_TRUE(full.index1 == after.index1);
  EXPECT_TRUE(full.index2 == after.index2);
  EXPECT_TRUE(full.address == after.address);
}

// A key of a full directory can still change: the card goes before the new one comes.
TEST_F(CardDispatchLimitsTest, KeyChangesInAFullDirectory) {
  OpenOfSize(32767);
  const ChangedCard changed = ChangeCard(directory(), CardOffset(5), MakeCard("AUTRE"));
  EXPECT_EQ(changed.result, ChangeResult::kMoved);
  EXPECT_EQ(changed.card_offset, CardOffset(32767));
  EXPECT_EQ(MainFile().size(), 768U * 32768);
}

// The count is a signed 16-bit number: it never equals that of the size and is corrected in the
// image at every opening. Rows beyond 32767 turn negative.
TEST_F(CardDispatchLimitsTest, LargerForeignFile) {
  OpenOfSize(32770);
  EXPECT_EQ(directory().main().count(), 32770U);
  EXPECT_EQ(directory().main().header().card_count(), 32770);
  EXPECT_EQ(directory().address().entry_count(), 32770U);
  EXPECT_EQ(Add("DE TROP"), 0U);
  Close();
  files.ResetCounts();
  Open();
  EXPECT_EQ(directory().main().count(), 32770U);
  EXPECT_EQ(files.counts().writes, 0);
  const uint32_t last_row_card = directory().address().CardOffsetAt(32769);
  (void)Delete(last_row_card);
  EXPECT_EQ(directory().last_removed().card_offset, last_row_card);
  EXPECT_EQ(directory().last_removed().row, -32767);
  EXPECT_EQ(MainFile().size(), 768U * 32770);
}

// The counts of the headers have 16 bits: both tell 4 here, and that is no difference to heal.
TEST_F(CardDispatchLimitsTest, MoreCardsThanAHeaderCanCount) {
  OpenOfSize(65540);
  EXPECT_EQ(directory().main().count(), 65540U);
  EXPECT_EQ(directory().main().header().card_count(), 4);
  Close();
  EXPECT_EQ(LoadLe16(AddressFileBytes(), 96), 4);
  files.ResetCounts();
  Open();
  EXPECT_EQ(files.counts().writes, 0);
  EXPECT_EQ(directory().address().entry_count(), 65540U);
}

TEST_F(CardDispatchLimitsTest, RewriteWithAChangedKeyLeavesTheIndexes) {
  Open();
  Add("ALPHA", "Hugo");
  Add("BRAVO", "Zola");
  const FileBytes indexes[] = {IndexFile(1), IndexFile(2)};
  Rewrite(MakeCard({{kSte1, "TANGO"}, {kNom, "Camus"}, {kTel1, "1"}}), 768, 0);
  EXPECT_EQ(CardAt(768).FieldText(kSte1).bytes(), "TANGO");
  EXPECT_TRUE(SameBytes(indexes[0], IndexFile(1)));
  EXPECT_TRUE(SameBytes(indexes[1], IndexFile(2)));
}

// The search for a digit's key answers -2 at the first slot of its page: the entry is not touched,
// and that is no failure.
TEST_F(CardDispatchLimitsTest, RewriteWithoutASlotLeavesTheEntry) {
  Open();
  Add("ALPHA");
  const FileBytes address = AddressFileBytes();
  EXPECT_EQ(Rewrite(MakeCard({{kSte1, "5 SUR 5"}, {kTel1, "1"}}), 768, 0), 1);
  EXPECT_EQ(CardAt(768).FieldText(kSte1).bytes(), "5 SUR 5");
  EXPECT_TRUE(SameBytes(address, AddressFileBytes()));
}

TEST_F(CardDispatchLimitsTest, RewriteWithARowThatIsNotThere) {
  Open();
  Add("ALPHA");
  const FileBytes address = AddressFileBytes();
  EXPECT_EQ(Rewrite(MakeCard({{kSte1, "ALPHA"}, {kTel1, "1"}}), 768, 1), 1);
  EXPECT_EQ(CardAt(768).FieldText(kTel1).bytes(), "1");
  EXPECT_TRUE(SameBytes(address, AddressFileBytes()));
}

TEST_F(CardDispatchLimitsTest, RewriteReplacesTheFlags) {
  Open();
  Add(MakeCard({{kSte1, "ALPHA"}, {kTel1, "1"}, {kMtel, "2"}}), true);
  EXPECT_EQ(Rewrite(MakeCard({{kSte1, "ALPHA"}, {kFax, "3"}}), 768, 0), 0);
  EXPECT_TRUE(SameBytes(ExpectedAddressFile({{768, 0x03, 0x10}}, kTime), AddressFileBytes()));
}

TEST_F(CardDispatchLimitsTest, AddKeepsTheCallersCopyWithoutATime) {
  Open();
  CardRecord card = MakeCard("ALPHA");
  card.set_write_time(1);
  Add(card);
  EXPECT_EQ(directory().context().current, card);
  EXPECT_EQ(CardAt(768).write_time(), kTime);
}

TEST_F(CardDispatchLimitsTest, AddTellsEntryPositionAndRow) {
  Open();
  Add("ALPHA");
  Add("TANGO");
  directory().context().current = MakeCard("MIKE");
  uint32_t position = 0;
  EXPECT_EQ(CardDispatch(directory()).Add(true, &position), 0);
  EXPECT_EQ(position, 336U);
  EXPECT_EQ(directory().last_inserted().row, 1);
  EXPECT_EQ(directory().last_inserted().card_offset, 2304U);
  EXPECT_FALSE(directory().last_inserted().marked) << "0 after an insert, marked or not";
}

TEST_F(CardDispatchLimitsTest, FindGoesByTheActiveField) {
  Open();
  Add("DUPONT", "Hugo");
  Add("DURAND", "Zola");
  directory().context().current = MakeCard("dura");
  uint32_t found = 0;
  EXPECT_EQ(CardDispatch(directory()).Find(WalkDirection::kFirst, &found), 0);
  EXPECT_EQ(found, 1536U);
  directory().context().current = MakeCard("dux");
  EXPECT_EQ(CardDispatch(directory()).Find(WalkDirection::kFirst, &found), -1);
  EXPECT_EQ(found, 1536U);
}

// In a batch nothing but the cards reaches the disk before its end.
TEST_F(CardDispatchLimitsTest, BatchEndsLikeSingleOperations) {
  Open();
  const std::vector<std::string> names = {"MIKE", "ALPHA", "TANGO", "BRAVO"};
  for (const std::string& name : names) Add(name);
  Delete(768);
  const FamilyBytes single = ReadFamily(files, kStem);
  Close();
  for (const std::string& name : files.List("/carnets")) files.Remove("/carnets/" + name);
  Open();
  {
    const Directory::Batch batch(directory());
    for (const std::string& name : names) Add(name);
    Delete(768);
  }
  const FamilyBytes together = ReadFamily(files, kStem);
  EXPECT_TRUE(SameBytes(single.main, together.main));
  EXPECT_TRUE(SameBytes(single.index1, together.index1));
  EXPECT_TRUE(SameBytes(single.index2, together.index2));
  EXPECT_TRUE(SameBytes(single.address, together.address));
}

TEST_F(CardDispatchLimitsTest, CardsOfABatchCanBeReadWithinIt) {
  Open();
  const Directory::Batch batch(directory());
  const uint32_t offset = Add("ALPHA");
  EXPECT_EQ(CardAt(offset).FieldText(kSte1).bytes(), "ALPHA");
}

}  // namespace
}  // namespace carnetel
