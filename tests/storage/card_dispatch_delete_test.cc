// The whole family after cards were deleted, byte by byte, and what a delete reports.
#include <gmock/gmock.h>

#include "base/format_text.h"
#include "tests/storage/family_bytes.h"

namespace carnetel {
namespace {

constexpr uint32_t kTime = 1'000'000'000;

class CardDispatchDeleteTest : public StoreFixture {
 protected:
  void AddCompanies(const std::vector<std::string>& names) {
    Open();
    for (const std::string& name : names) Add(name);
  }
  // Deletes through the dispatcher alone; answers its result and sets `position`.
  int Delete(uint32_t card_offset) {
    position = card_offset;
    EXPECT_TRUE(directory().main().ReadCard(card_offset, directory().context().reference));
    directory().last_removed() = {};
    directory().last_inserted() = {true, 77, 7777};
    return CardDispatch(directory()).Delete(&position);
  }
  void ExpectMain(const std::vector<std::string>& names) {
    std::vector<CardRecord> cards;
    for (const std::string& name : names) cards.push_back(MakeCard(name));
    EXPECT_TRUE(SameBytes(MainFileBytes(cards, kTime), MainFile()));
  }
  void ExpectIndexes(const FileBytes& both) {
    EXPECT_TRUE(SameBytes(both, IndexFile(1)));
    EXPECT_TRUE(SameBytes(both, IndexFile(2)));
  }
  void ExpectEntries(const std::vector<ExpectedEntry>& entries) {
    EXPECT_TRUE(SameBytes(ExpectedAddressFile(entries, kTime), AddressFileBytes()));
  }
  void ExpectNothingMoved() {
    EXPECT_TRUE(directory().last_inserted().marked);
    EXPECT_EQ(directory().last_inserted().row, 77);
    EXPECT_EQ(directory().last_inserted().card_offset, 7777U);
  }

  uint32_t position = 0;
};

TEST_F(CardDispatchDeleteTest, FirstCardTakesTheLastOne) {
  AddCompanies({"ALPHA", "BRAVO", "TANGO"});
  EXPECT_GE(Delete(768), 0);
  EXPECT_EQ(position, 2304U);
  ExpectMain({"TANGO", "BRAVO"});
  ExpectIndexes(IndexBuilder().Page('B', {{"BRAVO", 1536}}).Page('T', {{"TANGO", 768}}).Bytes());
  ExpectEntries({{1536}, {768}});
}

TEST_F(CardDispatchDeleteTest, MovedEntryKeepsItsPlaceAndShowsTheNewOffset) {
  AddCompanies({"ALPHA", "TABAC", "TOTAL", "TANGO"});
  Delete(768);
  ExpectIndexes(
      IndexBuilder().Page('T', {{"TABAC", 1536}, {"TANGO", 768}, {"TOTAL", 2304}}).Bytes());
  ExpectEntries({{1536}, {768}, {2304}});
  EXPECT_EQ(directory().last_removed().row, 0);
  EXPECT_EQ(directory().last_removed().card_offset, 768U);
  EXPECT_FALSE(directory().last_removed().marked);
  EXPECT_EQ(directory().last_inserted().row, 2) << "its row before the removal";
  EXPECT_EQ(directory().last_inserted().card_offset, 768U);
}

TEST_F(CardDispatchDeleteTest, MiddleCard) {
  AddCompanies({"TANGO", "BRAVO", "ALPHA"});
  Delete(1536);
  EXPECT_EQ(position, 2304U);
  ExpectMain({"TANGO", "ALPHA"});
  ExpectIndexes(IndexBuilder().Page('A', {{"ALPHA", 1536}}).Page('T', {{"TANGO", 768}}).Bytes());
  ExpectEntries({{1536}, {768}});
  EXPECT_EQ(directory().last_removed().row, 1);
  EXPECT_EQ(directory().last_inserted().row, 0);
}

TEST_F(CardDispatchDeleteTest, LastCardMovesNothing) {
  AddCompanies({"TANGO", "BRAVO", "ALPHA"});
  EXPECT_GE(Delete(2304), 0);
  EXPECT_EQ(position, 2304U);
  ExpectMain({"TANGO", "BRAVO"});
  ExpectIndexes(IndexBuilder().Page('B', {{"BRAVO", 1536}}).Page('T', {{"TANGO", 768}}).Bytes());
  ExpectEntries({{1536}, {768}});
  EXPECT_EQ(directory().last_removed().row, 0);
  EXPECT_EQ(directory().last_removed().card_offset, 2304U);
  ExpectNothingMoved();
}

TEST_F(CardDispatchDeleteTest, OnlyCard) {
  AddCompanies({"ALPHA"});
  EXPECT_GE(Delete(768), 0);
  EXPECT_EQ(position, 768U);
  EXPECT_TRUE(SameBytes(MainHeaderBytes(0, kTime), MainFile()));
  ExpectIndexes(IndexBuilder().Bytes());
  ExpectEntries({});
  EXPECT_EQ(AddressFileBytes().size(), 320U);
  for (int row = 0; row < LetterTable::kRows; ++row) {
    EXPECT_EQ(directory().address().letters().RowStart(row), 320U) << row;
  }
  ExpectNothingMoved();
}

TEST_F(CardDispatchDeleteTest, OnlyCardLeavesTheHeaderBlockAlone) {
  AddCompanies({"ALPHA"});
  directory().main().header().set_description(OemText("Clients"));
  directory().main().WriteHeader();
  FileBytes header = MainFile();
  header.resize(768);
  StoreLe16(header, 96, 0);
  Delete(768);
  EXPECT_TRUE(SameBytes(header, MainFile()));
}

TEST_F(CardDispatchDeleteTest, OneOfEqualKeys) {
  AddCompanies({"DUPONT", "DUPONT", "DUPONT", "DUPONT"});
  Delete(1536);
  ExpectIndexes(
      IndexBuilder().Page('D', {{"DUPONT", 768}, {"DUPONT", 2304}, {"DUPONT", 1536}}).Bytes());
  ExpectEntries({{768}, {2304}, {1536}});
}

TEST_F(CardDispatchDeleteTest, MarksAndFlagsMoveWithTheirEntries) {
  Open();
  Add(MakeCard({{kSte1, "ALPHA"}, {kFax, "1"}}), true);
  Add(MakeCard({{kSte1, "BRAVO"}, {kTel1, "2"}}));
  Add(MakeCard({{kSte1, "TANGO"}, {kMtel, "3"}}), true);
  Delete(768);
  EXPECT_TRUE(directory().last_removed().marked);
  EXPECT_TRUE(directory().last_inserted().marked);
  ExpectEntries({{1536, 0x01, 0x80}, {768, 0x03, 0x40}});
}

TEST_F(CardDispatchDeleteTest, MarkedCountFollows) {
  Open();
  Add(MakeCard("ALPHA"), true);
  Add(MakeCard("BRAVO"), true);
  Add(MakeCard("TANGO"));
  uint32_t moved_from = 0;
  EXPECT_TRUE(DeleteCard(directory(), 768, &moved_from));
  EXPECT_EQ(moved_from, 2304U);
  EXPECT_EQ(directory().marked_count(), 1);
  EXPECT_TRUE(DeleteCard(directory(), 768, &moved_from)) << "TANGO, not marked";
  EXPECT_EQ(directory().marked_count(), 1);
  directory().set_marked_count(0);
  EXPECT_TRUE(DeleteCard(directory(), 768, &moved_from));
  EXPECT_EQ(directory().marked_count(), 0) << "never below 0";
}

TEST_F(CardDispatchDeleteTest, CardWhoseEntryLiesOutOfPlaceIsReportedAsGone) {
  std::vector<std::string> names;
  for (int n = 1; n <= 36; ++n) names.push_back(FormatPrintf("M%02d", {n}));
  names.insert(names.end(), {"TANGO", "NANTES", "ZOLA"});
  AddCompanies(names);
  uint32_t moved_from = 0;
  EXPECT_TRUE(DeleteCard(directory(), CardOffset(37), &moved_from));
  EXPECT_EQ(moved_from, CardOffset(39));
  EXPECT_EQ(directory().last_removed().card_offset, 0U) << "its entry stays";
  EXPECT_EQ(MainFile().size(), 768U * 39);
}

TEST_F(CardDispatchDeleteTest, OffsetWhereNoCardLies) {
  AddCompanies({"ALPHA", "BRAVO"});
  const FileBytes before = MainFile();
  uint32_t moved_from = 0;
  for (const uint32_t wrong : {0U, 767U, 769U, 2304U, 0xFFFFFF00U}) {
    EXPECT_FALSE(DeleteCard(directory(), wrong, &moved_from)) << wrong;
  }
  EXPECT_TRUE(SameBytes(before, MainFile()));
  ExpectEntries({{768}, {1536}});
}

// Only the first 36 cards of a letter can be removed from an index: the slot of any other stays,
// with its key, and names the card that was moved into the place. The answer is that of the last
// index call joined with 1; the removal itself shows in the address file.
TEST_F(CardDispatchDeleteTest, CardBeyondTheFirstPageLeavesItsSlot) {
  std::vector<std::string> names;
  for (int n = 1; n <= 38; ++n) names.push_back(FormatPrintf("M%02d", {n}));
  AddCompanies(names);
  EXPECT_GE(Delete(CardOffset(37)), 0);
  ExpectedSlots first;
  for (uint32_t n = 1; n <= 36; ++n) first.push_back({names[n - 1], CardOffset(n)});
  ExpectIndexes(
      IndexBuilder().Page('M', first).Page('M', {{"M37", 768 * 37}, {"M38", 768 * 37}}).Bytes());
  EXPECT_EQ(AddressFileBytes().size(), 320U + 16 * 37);
  EXPECT_EQ(directory().last_removed().card_offset, CardOffset(37));
}

TEST_F(CardDispatchDeleteTest, LastCardBeyondTheFirstPageAnswersMinusOneAndIsGone) {
  std::vector<std::string> names;
  for (int n = 1; n <= 37; ++n) names.push_back(FormatPrintf("M%02d", {n}));
  AddCompanies(names);
  EXPECT_EQ(Delete(CardOffset(37)), -1);
  EXPECT_EQ(MainFile().size(), 768U * 37);
  EXPECT_EQ(AddressFileBytes().size(), 320U + 16 * 36);
}

TEST_F(CardDispatchDeleteTest, TwoOpeningsHealASlotThatStayed) {
  std::vector<std::string> names;
  for (int n = 1; n <= 38; ++n) names.push_back(FormatPrintf("M%02d", {n}));
  AddCompanies(names);
  Delete(CardOffset(37));
  Open();
  Open();
  ExpectedSlots first;
  std::vector<uint32_t> offsets;
  for (uint32_t n = 1; n <= 37; ++n) offsets.push_back(CardOffset(n));
  for (uint32_t n = 1; n <= 36; ++n) first.push_back({names[n - 1], CardOffset(n)});
  ExpectIndexes(IndexBuilder().Page('M', first).Page('M', {{"M38", 768 * 37}}).Bytes());
  ExpectEntries(PlainEntries(offsets));
  Close();
  files.ResetCounts();
  Open();
  EXPECT_EQ(files.counts().writes, 0);
}

TEST_F(CardDispatchDeleteTest, DeletePullsTheChainUp) {
  std::vector<std::string> names;
  for (int n = 1; n <= 37; ++n) names.push_back(FormatPrintf("M%02d", {n}));
  AddCompanies(names);
  Delete(CardOffset(1));
  ExpectedSlots first;
  for (uint32_t n = 2; n <= 36; ++n) first.push_back({names[n - 1], CardOffset(n)});
  first.push_back({"M37", CardOffset(1)});
  ExpectIndexes(IndexBuilder().Page('M', first).Page('M', {}).Bytes());
}

TEST_F(CardDispatchDeleteTest, StampFollowsTheDelete) {
  AddCompanies({"ALPHA", "BRAVO"});
  clock.Advance(60);
  Delete(1536);
  EXPECT_TRUE(SameBytes(
      MainFileBytes(std::vector<WrittenCard>{{MakeCard("ALPHA"), kTime}}, kTime + 60), MainFile()));
  EXPECT_TRUE(SameBytes(ExpectedAddressFile(PlainEntries({768}), kTime + 60), AddressFileBytes()));
}

// The card that is moved keeps the time of its own last write.
TEST_F(CardDispatchDeleteTest, MovedCardKeepsItsTime) {
  AddCompanies({"ALPHA", "BRAVO"});
  clock.Advance(60);
  Delete(768);
  EXPECT_TRUE(SameBytes(
      MainFileBytes(std::vector<WrittenCard>{{MakeCard("BRAVO"), kTime}}, kTime + 60), MainFile()));
}

}  // namespace
}  // namespace carnetel
