// The whole family after cards were added, byte by byte.
#include <gmock/gmock.h>

#include "base/format_text.h"
#include "tests/storage/family_bytes.h"

namespace carnetel {
namespace {

constexpr uint32_t kTime = 1'000'000'000;

class CardDispatchAddTest : public StoreFixture {
 protected:
  // Opens an empty directory and adds these cards one after the other.
  void AddAll(const std::vector<CardRecord>& cards) {
    Open();
    for (const CardRecord& card : cards) Add(card);
    EXPECT_TRUE(SameBytes(MainFileBytes(cards, kTime), MainFile()));
  }
  // Cards with these companies.
  void AddCompanies(const std::vector<std::string>& names) {
    std::vector<CardRecord> cards;
    for (const std::string& name : names) cards.push_back(MakeCard(name));
    AddAll(cards);
  }
  void ExpectIndexes(const FileBytes& both) {
    EXPECT_TRUE(SameBytes(both, IndexFile(1)));
    EXPECT_TRUE(SameBytes(both, IndexFile(2)));
  }
  void ExpectEntries(const std::vector<uint32_t>& card_offsets) {
    EXPECT_TRUE(
        SameBytes(ExpectedAddressFile(PlainEntries(card_offsets), kTime), AddressFileBytes()));
  }
};

// "M01" to "M<count>".
std::vector<std::string> Numbered(char letter, int count) {
  std::vector<std::string> names;
  for (int n = 1; n <= count; ++n) names.push_back(FormatPrintf("%c%02d", {letter, n}));
  return names;
}

// Slots of the cards with these numbers, under the first of these names.
ExpectedSlots SlotsOf(const std::vector<std::string>& names, const std::vector<uint32_t>& cards) {
  ExpectedSlots slots;
  for (size_t i = 0; i < cards.size(); ++i) slots.push_back({names[i], CardOffset(cards[i])});
  return slots;
}

std::vector<uint32_t> OneTo(uint32_t last) {
  std::vector<uint32_t> numbers;
  for (uint32_t n = 1; n <= last; ++n) numbers.push_back(n);
  return numbers;
}

std::vector<uint32_t> OffsetsOf(std::vector<uint32_t> cards) {
  for (uint32_t& card : cards) card = CardOffset(card);
  return cards;
}

TEST_F(CardDispatchAddTest, TwoCards) {
  AddAll({MakeCard("Martin SA", "Zola"), MakeCard("Durand", "Alain")});
  EXPECT_TRUE(SameBytes(
      IndexBuilder().Page('D', {{"DURAND", 1536}}).Page('M', {{"MARTIN SA", 768}}).Bytes(),
      IndexFile(1)));
  EXPECT_TRUE(
      SameBytes(IndexBuilder().Page('A', {{"ALAIN", 1536}}).Page('Z', {{"ZOLA", 768}}).Bytes(),
                IndexFile(2)));
  ExpectEntries({1536, 768});
}

TEST_F(CardDispatchAddTest, FirstCardOfALetterBetweenTwoOthers) {
  AddCompanies({"ALPHA", "CESAR", "BRAVO"});
  ExpectIndexes(IndexBuilder()
                    .Page('A', {{"ALPHA", 768}})
                    .Page('B', {{"BRAVO", 2304}})
                    .Page('C', {{"CESAR", 1536}})
                    .Bytes());
  ExpectEntries({768, 2304, 1536});
}

TEST_F(CardDispatchAddTest, EqualKeysStandInOrderOfInsertion) {
  AddCompanies({"DUPONT", "DURAND", "Dupont", "DUPONT"});
  ExpectIndexes(
      IndexBuilder()
          .Page('D', {{"DUPONT", 768}, {"DUPONT", 2304}, {"DUPONT", 3072}, {"DURAND", 1536}})
          .Bytes());
  ExpectEntries({768, 2304, 3072, 1536});
}

TEST_F(CardDispatchAddTest, KeysEndAtTenBytes) {
  AddCompanies({"ETABLISSEMENTS B", "ETABLISSEMENTS A"});
  ExpectIndexes(IndexBuilder().Page('E', {{"ETABLISSEM", 768}, {"ETABLISSEM", 1536}}).Bytes());
  ExpectEntries({768, 1536});
}

TEST_F(CardDispatchAddTest, EmptyCompanyIsFiledByItsName) {
  AddAll({MakeCard("", "Zola"), MakeCard("Balzac", "")});
  const FileBytes both =
      IndexBuilder().Page('B', {{"BALZAC", 1536}}).Page('Z', {{"ZOLA", 768}}).Bytes();
  ExpectIndexes(both);
  ExpectEntries({1536, 768});
}

TEST_F(CardDispatchAddTest, Digits) {
  AddCompanies({"9 Telecom", "3 Suisses", "ACME", "33 Export"});
  ExpectIndexes(IndexBuilder()
                    .Page('3', {{"3 SUISSES", 1536}, {"33 EXPORT", 3072}})
                    .Page('9', {{"9 TELECOM", 768}})
                    .Page('A', {{"ACME", 2304}})
                    .Bytes());
  ExpectEntries({1536, 3072, 768, 2304});
}

// An accent or punctuation in front has no letter of its own: filed under '0', first in the list.
TEST_F(CardDispatchAddTest, FirstByteWithoutAPlaceIsFiledUnderZero) {
  AddCompanies({"ACME",
                "\x90"
                "cole",
                "-Tiret", "0 Zero"});
  ExpectIndexes(IndexBuilder()
                    .Page('0', {{"0 ZERO", 3072}, {"0COLE", 1536}, {"0TIRET", 2304}})
                    .Page('A', {{"ACME", 768}})
                    .Bytes());
  ExpectEntries({3072, 1536, 2304, 768});
}

TEST_F(CardDispatchAddTest, NumberFlagsAndMark) {
  Open();
  Add(MakeCard({{kSte1, "A"}, {kTel1, "1"}, {kMtel, "3615"}}), true);
  Add(MakeCard({{kSte1, "B"}, {kTel2, "2"}}));
  Add(MakeCard({{kSte1, "C"}, {kFax, "4"}, {kModem, "5"}}), true);
  EXPECT_EQ(directory().marked_count(), 2);
  EXPECT_TRUE(SameBytes(
      ExpectedAddressFile({{768, 0x03, 0xC0}, {1536, 0x01, 0x00}, {2304, 0x03, 0x30}}, kTime, 0),
      AddressFileBytes()))
      << "the counter waits for the list view to close";
  directory().CloseListView();
  EXPECT_TRUE(SameBytes(
      ExpectedAddressFile({{768, 0x03, 0xC0}, {1536, 0x01, 0x00}, {2304, 0x03, 0x30}}, kTime, 2),
      AddressFileBytes()));
}

TEST_F(CardDispatchAddTest, ThirtySixCardsFillAPage) {
  AddCompanies(Numbered('M', 36));
  ExpectIndexes(IndexBuilder().Page('M', SlotsOf(Numbered('M', 36), OneTo(36))).Bytes());
  ExpectEntries(OffsetsOf(OneTo(36)));
}

// The new page's neighbour is told as the card two slots in front of the true one, so the entry
// lands behind the 34th.
TEST_F(CardDispatchAddTest, ThirtySeventhCardAtTheEndOpensAPage) {
  AddCompanies(Numbered('M', 37));
  const FileBytes index = IndexBuilder()
                              .Page('M', SlotsOf(Numbered('M', 36), OneTo(36)))
                              .Page('M', {{"M37", 768 * 37}})
                              .Bytes();
  ExpectIndexes(index);
  EXPECT_EQ(index.size(), 18216U + 506);
  std::vector<uint32_t> order = OneTo(34);
  order.insert(order.end(), {37, 35, 36});
  ExpectEntries(OffsetsOf(order));
}

TEST_F(CardDispatchAddTest, ReopeningPutsTheThirtySeventhEntryInOrder) {
  AddCompanies(Numbered('M', 37));
  Open();
  ExpectEntries(OffsetsOf(OneTo(37)));
}

TEST_F(CardDispatchAddTest, ThirtySeventhCardInTheMiddle) {
  std::vector<std::string> names = Numbered('M', 36);
  std::vector<std::string> added = names;
  added.emplace_back("M10B");
  AddCompanies(added);
  names.insert(names.begin() + 10, "M10B");
  std::vector<uint32_t> order = OneTo(36);
  order.insert(order.begin() + 10, 37);
  ExpectedSlots first = SlotsOf(names, order);
  first.pop_back();
  ExpectIndexes(IndexBuilder().Page('M', first).Page('M', {{"M36", 768 * 36}}).Bytes());
  ExpectEntries(OffsetsOf(order));
}

TEST_F(CardDispatchAddTest, ThirtySeventhCardInTheLastSlotOfTheFullPage) {
  std::vector<std::string> names = Numbered('M', 36);
  names.emplace_back("M35B");
  AddCompanies(names);
  ExpectedSlots first = SlotsOf(names, OneTo(35));
  first.push_back({"M35B", 768 * 37});
  ExpectIndexes(IndexBuilder().Page('M', first).Page('M', {{"M36", 768 * 36}}).Bytes());
  std::vector<uint32_t> order = OneTo(35);
  order.insert(order.end(), {37, 36});
  ExpectEntries(OffsetsOf(order));
}

// A full page in front gives the first card of the next letter a neighbour of another letter, which
// is not found among its own: the entry lands behind all others, until the next opening.
TEST_F(CardDispatchAddTest, FirstCardBehindAFullPageOfAnotherLetter) {
  std::vector<std::string> names = Numbered('M', 36);
  names.insert(names.end(), {"ZOLA", "NANTES"});
  AddCompanies(names);
  ExpectIndexes(IndexBuilder()
                    .Page('M', SlotsOf(Numbered('M', 36), OneTo(36)))
                    .Page('N', {{"NANTES", 768 * 38}})
                    .Page('Z', {{"ZOLA", 768 * 37}})
                    .Bytes());
  ExpectEntries(OffsetsOf(OneTo(38)));
  Open();
  std::vector<uint32_t> order = OneTo(36);
  order.insert(order.end(), {38, 37});
  ExpectEntries(OffsetsOf(order));
}

TEST_F(CardDispatchAddTest, ThirtySeventhCardPushesLaterLettersDown) {
  std::vector<std::string> names = {"NANTES"};
  for (const std::string& name : Numbered('M', 37)) names.push_back(name);
  AddCompanies(names);
  std::vector<uint32_t> cards = OneTo(37);
  cards.erase(cards.begin());
  ExpectIndexes(IndexBuilder()
                    .Page('M', SlotsOf(Numbered('M', 36), cards))
                    .Page('M', {{"M37", 768 * 38}})
                    .Page('N', {{"NANTES", 768}})
                    .Bytes());
  // Cards 2 to 37 are M01 to M36; card 38 (M37) lies behind M34, which is card 35.
  std::vector<uint32_t> order = {2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 13, 14,
                                 15, 16, 17, 18, 19, 20, 21, 22, 23, 24, 25, 26, 27,
                                 28, 29, 30, 31, 32, 33, 34, 35, 38, 36, 37, 1};
  ExpectEntries(OffsetsOf(order));
}

// Z has no page behind it. In the middle of a full chain the last page is doubled and the key is
// not written; its entry takes its place all the same.
TEST_F(CardDispatchAddTest, FullLastChainInTheMiddle) {
  std::vector<std::string> names = Numbered('Z', 36);
  names.emplace_back("Z10B");
  AddCompanies(names);
  const ExpectedSlots full = SlotsOf(names, OneTo(36));
  ExpectIndexes(IndexBuilder().Page('Z', full).Page('Z', full).Bytes());
  std::vector<uint32_t> order = OneTo(36);
  order.insert(order.begin() + 10, 37);
  ExpectEntries(OffsetsOf(order));
}

// At its end the key has no place at all: the index stays, the entry goes to the letter's front.
TEST_F(CardDispatchAddTest, FullLastChainAtItsEnd) {
  std::vector<std::string> names = {"ACME"};
  for (const std::string& name : Numbered('Z', 37)) names.push_back(name);
  AddCompanies(names);
  std::vector<uint32_t> cards = OneTo(37);
  cards.erase(cards.begin());
  ExpectIndexes(IndexBuilder()
                    .Page('A', {{"ACME", 768}})
                    .Page('Z', SlotsOf(Numbered('Z', 36), cards))
                    .Bytes());
  std::vector<uint32_t> order = OneTo(37);
  order.insert(order.begin() + 1, 38);
  ExpectEntries(OffsetsOf(order));
}

TEST_F(CardDispatchAddTest, KeyThatFoldsToNothingIsInNoIndex) {
  AddCompanies({"ACME", "[crochet", "BRAVO"});
  ExpectIndexes(IndexBuilder().Page('A', {{"ACME", 768}}).Page('B', {{"BRAVO", 2304}}).Bytes());
  ExpectEntries({1536, 768, 2304});
}

TEST_F(CardDispatchAddTest, CardWithoutAnyKeyIsKeptAndFiledUnderAByARebuild) {
  AddAll({MakeCard("BRAVO"), MakeCard({{kTel1, "1"}})});
  ExpectIndexes(IndexBuilder().Page('B', {{"BRAVO", 768}}).Bytes());
  EXPECT_TRUE(SameBytes(ExpectedAddressFile({{1536, 0x01, 0x80}, {768, 0x01, 0}}, kTime),
                        AddressFileBytes()));
  Open();
  Open();
  ExpectIndexes(IndexBuilder().Page('A', {{"A", 1536}}).Page('B', {{"BRAVO", 768}}).Bytes());
  EXPECT_TRUE(SameBytes(ExpectedAddressFile({{1536, 0x01, 0x80}, {768, 0x01, 0}}, kTime),
                        AddressFileBytes()));
}

TEST_F(CardDispatchAddTest, SurnameIndexActive) {
  Open(kNom);
  Add(MakeCard("ALPHA", "Zola"));
  Add(MakeCard("BRAVO", "Camus"));
  EXPECT_TRUE(
      SameBytes(IndexBuilder().Page('A', {{"ALPHA", 768}}).Page('B', {{"BRAVO", 1536}}).Bytes(),
                IndexFile(1)));
  EXPECT_TRUE(
      SameBytes(IndexBuilder().Page('C', {{"CAMUS", 1536}}).Page('Z', {{"ZOLA", 768}}).Bytes(),
                IndexFile(2)));
  ExpectEntries({1536, 768});
}

}  // namespace
}  // namespace carnetel
