// The seven comparators on every kind of field and value.
#include "selection/card_test.h"

#include "tests/selection/selection_testing.h"

namespace carnetel {
namespace {

const Texts kComparators = {"=", "<>", "<=", ">=", "<", ">", "~"};

// One sign a comparator: 'P' where the card passes, '-' where it fails.
std::string Results(const CardRecord& card, int field, const std::string& value) {
  std::string results;
  for (const std::string& comparator : kComparators) {
    results += TestCard(RowsOf({{field, comparator, value}}), card) ? 'P' : '-';
  }
  return results;
}

CardRecord CardWith(std::initializer_list<std::pair<int, std::string>> fields) {
  CardRecord card;
  for (const auto& [field, text] : fields) card.SetField(field, OemText(text));
  return card;
}

// What a field gives that equals the value over its length, lies below it, or above it.
const std::string kEqualAndFound = "P-PP--P";
const std::string kEqualNotFound = "P-PP---";
const std::string kBelow = "-PP-P--";
const std::string kAbove = "-P-P-P-";
const std::string kBelowAndFound = "-PP-P-P";
const std::string kAboveAndFound = "-P-P-PP";

struct TestCase {
  std::string name;
  int field;
  std::string text;
  std::string value;
  std::string results;
};

void PrintTo(const TestCase& test, std::ostream* out) {
  *out << test.name;
}

class CardTestTable : public testing::TestWithParam<TestCase> {};

TEST_P(CardTestTable, EachComparatorAnswers) {
  const TestCase& test = GetParam();
  EXPECT_EQ(Results(CardWith({{test.field, test.text}}), test.field, test.value), test.results);
}

INSTANTIATE_TEST_SUITE_P(
    Lengths, CardTestTable,
    testing::Values(TestCase{"Shorter", kSte1, "DURAND", "DU", kEqualAndFound},
                    TestCase{"ShorterInTheOtherCase", kSte1, "dupont", "DU", kEqualAndFound},
                    TestCase{"ShorterMixed", kSte1, "Duval", "dU", kEqualAndFound},
                    TestCase{"ShorterInside", kSte1, "LE DUC", "DU", kAboveAndFound},
                    TestCase{"ShorterAtTheEnd", kSte1, "LE DU", "du", kAboveAndFound},
                    TestCase{"ShorterBelow", kSte1, "ABEL", "DU", kBelow},
                    TestCase{"ShorterAbove", kSte1, "ZOE", "DU", kAbove},
                    TestCase{"Same", kVille, "PARIS", "PARIS", kEqualAndFound},
                    TestCase{"SameInTheOtherCase", kVille, "Paris", "pARIS", kEqualAndFound},
                    TestCase{"SameLengthBelow", kVille, "PARIR", "PARIS", kBelow},
                    TestCase{"SameLengthAbove", kVille, "PARIT", "PARIS", kAbove},
                    TestCase{"LongerWithTheSameStart", kSte1, "DU", "DUVAL", kBelow},
                    TestCase{"LongerAbove", kSte1, "E", "DUVAL", kAbove},
                    TestCase{"TextInAnEmptyField", kSte1, "", "DU", kBelow}),
    [](const auto& test) { return test.param.name; });

INSTANTIATE_TEST_SUITE_P(
    Bytes, CardTestTable,
    testing::Values(TestCase{"AccentIsNotItsLetter", kSte1, "D\x9ARAND", "DU", kAbove},
                    TestCase{"SmallAccentIsNotItsLetter", kSte1, "d\x81rand", "DU", kAbove},
                    TestCase{"AccentIsItself", kSte1, "\x90LAN", "\x90l", kEqualAndFound},
                    TestCase{"AccentHasNoOtherCase", kSte1, "\x90LAN", "\x82l", kAbove},
                    TestCase{"AccentInsideIsFoundAsItself", kSte1, "LE \x82T\x82", "t\x82",
                             kBelowAndFound},
                    TestCase{"BytesAreUnsigned", kSte1, "\x80", "z", kAbove},
                    TestCase{"BytesAreUnsignedInTheValue", kSte1, "z", "\xFF", kBelow},
                    // In capitals 'Z' would be below '[' and '_' above 'A'.
                    TestCase{"OrderIsThatOfSmallLetters", kSte1, "Z", "[", kAbove},
                    TestCase{"OrderIsThatOfSmallLettersForTheValue", kSte1, "_", "A", kBelow},
                    TestCase{"NumbersAreText", kTel1, "9", "10", kAbove},
                    TestCase{"LongNumbersAreText", kTel1, "0123456789", "0123", kEqualAndFound},
                    TestCase{"ReferencesToo", kRef6, "100", "20", kBelow},
                    TestCase{"BlankCounts", kSte1, " DU", "DU", kBelowAndFound},
                    TestCase{"StarInsideIsAStar", kSte1, "A*B", "*B", kAboveAndFound}),
    [](const auto& test) { return test.param.name; });

// The byte behind an ESC keeps its case in a search; comparisons know nothing of ESC.
INSTANTIATE_TEST_SUITE_P(Escapes, CardTestTable,
                         testing::Values(TestCase{"ByteBehindInTheOtherCase", kSte1,
                                                  "a\x1B"
                                                  "bc",
                                                  "A\x1B"
                                                  "BC",
                                                  kEqualNotFound},
                                         TestCase{"ByteBehindInTheSameCase", kSte1,
                                                  "a\x1B"
                                                  "bc",
                                                  "A\x1B"
                                                  "bC",
                                                  kEqualAndFound},
                                         TestCase{"PairInsideTheField", kSte1,
                                                  "xa\x1B"
                                                  "bc",
                                                  "A\x1B"
                                                  "bC",
                                                  kAboveAndFound},
                                         TestCase{"PlainValueInAPair", kSte1,
                                                  "x\x1B"
                                                  "b",
                                                  "B", kAbove},
                                         TestCase{"PlainCapitalInAPair", kSte1,
                                                  "x\x1B"
                                                  "B",
                                                  "b", kAboveAndFound},
                                         TestCase{"LastInTheValue", kSte1,
                                                  "a\x1B"
                                                  "b",
                                                  "a\x1B", kEqualAndFound},
                                         TestCase{"LastInTheField", kSte1, "ab\x1B", "b\x1B",
                                                  "-PP-P-P"}),
                         [](const auto& test) { return test.param.name; });

INSTANTIATE_TEST_SUITE_P(
    EmptyValues, CardTestTable,
    testing::Values(TestCase{"InAnEmptyField", kNom, "", "", "P-PP--P"},
                    TestCase{"InAFilledField", kNom, "DURAND", "", "-P-P-P-"},
                    TestCase{"InABlank", kNom, " ", "", "-P-P-P-"},
                    // "<" passes for what begins with a byte of 80h or above, and nothing else.
                    TestCase{"BeforeAnAccent", kNom, "\x90LAN", "", "-P-PPP-"},
                    TestCase{"BeforeTheFirstHighByte", kNom, "\x80", "", "-P-PPP-"},
                    TestCase{"BeforeTheLastLowByte", kNom, "\x7F", "", "-P-P-P-"}),
    [](const auto& test) { return test.param.name; });

TEST(CardTestTest, AValueLongerThanTheFieldIsComparedOverTheFieldAlone) {
  // The town lies right behind the short postal code, which has no terminator when it is full.
  const CardRecord card = CardWith({{kShortPostalCode, "75001"}, {kVille, "2 RUE"}});
  EXPECT_EQ(Results(card, kShortPostalCode, "750012"), kEqualNotFound);
  EXPECT_EQ(Results(card, kShortPostalCode, "750022"), kBelow);
  EXPECT_EQ(Results(card, kShortPostalCode, "75001"), kEqualAndFound);
  EXPECT_EQ(Results(card, kShortPostalCode, "001"), kAboveAndFound);
  EXPECT_EQ(Results(card, kShortPostalCode, "12"), kAbove);
}

TEST(CardTestTest, TheShortPostalCodeStandsInForAnEmptyLongOne) {
  const CardRecord both = CardWith({{kPostalCode, "69002"}, {kShortPostalCode, "75001"}});
  EXPECT_EQ(Results(both, kPostalCode, "75"), kBelow);
  EXPECT_EQ(Results(both, kPostalCode, "69"), kEqualAndFound);
  const CardRecord short_only = CardWith({{kShortPostalCode, "75001"}, {kVille, "2"}});
  EXPECT_EQ(Results(short_only, kPostalCode, "75"), kEqualAndFound);
  EXPECT_EQ(Results(short_only, kPostalCode, "750012"), kEqualNotFound);
  EXPECT_EQ(Results(short_only, kPostalCode, ""), "-P-P-P-");
  EXPECT_EQ(Results(CardRecord(), kPostalCode, ""), "P-PP--P");
  EXPECT_EQ(Results(CardRecord(), kPostalCode, "75"), kBelow);
}

const std::string k21 = "ABCDEFGHIJKLMNOPQRSTU";
// Passes every card.
const Criterion kFiller = {kPrenom, ">=", ""};

// The value in front of a row on the first name, whose code is 10.
std::string ResultsWithRowBehind(const CardRecord& card, int field) {
  std::string results;
  for (const std::string& comparator : kComparators) {
    results += TestCard(RowsOf({{field, comparator, k21}, kFiller}), card) ? 'P' : '-';
  }
  return results;
}

TEST(CardTestTest, AValueOf21BytesTakesTheCodeOfTheNextRowFor22nd) {
  EXPECT_EQ(ResultsWithRowBehind(CardWith({{kSte1, k21}}), kSte1), kBelow);
  EXPECT_EQ(ResultsWithRowBehind(CardWith({{kSte1, k21 + "V"}}), kSte1), kAbove);
  EXPECT_EQ(ResultsWithRowBehind(CardWith({{kSte1, k21 + "\x0A"}}), kSte1), kEqualAndFound);
}

TEST(CardTestTest, InAFieldOf21BytesThe22ndIsNotCompared) {
  const CardRecord card = CardWith({{kModem, k21}});
  EXPECT_EQ(ResultsWithRowBehind(card, kModem), kEqualNotFound);
  EXPECT_EQ(Results(card, kModem, k21), kEqualAndFound);
}

TEST(CardTestTest, WithoutARowBehindAValueOf21BytesIsItself) {
  EXPECT_EQ(Results(CardWith({{kSte1, k21}}), kSte1, k21), kEqualAndFound);
  EXPECT_EQ(Results(CardWith({{kSte1, k21 + "V"}}), kSte1, k21), kEqualAndFound);
  EXPECT_EQ(Results(CardWith({{kSte1, k21.substr(0, 20)}}), kSte1, k21), kBelow);
}

TEST(CardTestTest, InTheSixthRowAValueOf21BytesIsItself) {
  const CardRecord card = CardWith({{kSte1, k21 + "V"}});
  std::string results;
  for (const std::string& comparator : kComparators) {
    const CriteriaRows rows =
        RowsOf({kFiller, kFiller, kFiller, kFiller, kFiller, {kSte1, comparator, k21}});
    results += TestCard(rows, card) ? 'P' : '-';
  }
  EXPECT_EQ(results, kEqualAndFound);
}

TEST(CardTestTest, EveryRowHasToPass) {
  const CardRecord card = CardWith({{kSte1, "DURAND"}, {kVille, "PARIS"}, {kFax, "1"}});
  EXPECT_TRUE(TestCard(RowsOf({{kSte1, "=", "DU"}, {kVille, "~", "ari"}, {kFax, "<>", ""}}), card));
  EXPECT_FALSE(
      TestCard(RowsOf({{kSte1, "=", "DU"}, {kVille, "=", "ari"}, {kFax, "<>", ""}}), card));
  EXPECT_FALSE(
      TestCard(RowsOf({kFiller, kFiller, kFiller, kFiller, kFiller, {kVille, "=", "x"}}), card));
}

TEST(CardTestTest, RowsBehindTheFirstEmptyOneAreNotLookedAt) {
  const CardRecord card = CardWith({{kSte1, "DURAND"}});
  EXPECT_TRUE(TestCard(RowsOf({{kSte1, "=", "DU"}, {-1, "=", "x"}, {kSte1, "=", "x"}}), card));
  EXPECT_TRUE(TestCard(RowsOf({{-1, "=", "x"}, {kSte1, "=", "x"}}), card));
  EXPECT_TRUE(TestCard(CriteriaRows(), card));
}

TEST(CardTestTest, ASearchLeavesTheSetAsItIs) {
  const CriteriaRows rows = RowsOf({{kVille, "~", "paris"}});
  EXPECT_TRUE(TestCard(rows, CardWith({{kVille, "LE VIEUX PARIS"}})));
  EXPECT_EQ(rows, RowsOf({{kVille, "~", "paris"}}));
}

TEST(CardTestTest, ACodeThatIsNoFieldPassesNoCard) {
  for (const int field : {31, 1000, -3}) {
    EXPECT_EQ(Results(CardWith({{kSte1, "x"}}), field, "x"), "-------") << field;
    EXPECT_EQ(Results(CardRecord(), field, ""), "-------") << field;
  }
}

TEST(PassesAllTest, IsAStarAtTheStartOfTheFirstValueOnly) {
  EXPECT_TRUE(PassesAll(RowsOf({{kSte1, "=", "*"}})));
  EXPECT_TRUE(PassesAll(RowsOf({{kFax, "<", "*rest"}, {kNom, "=", "x"}})));
  EXPECT_TRUE(PassesAll(RowsOf({{-1, "~", "*"}})));
  EXPECT_FALSE(PassesAll(RowsOf({{kSte1, "=", "A*"}})));
  EXPECT_FALSE(PassesAll(RowsOf({{kSte1, "=", "A"}, {kSte1, "=", "*"}})));
  EXPECT_FALSE(PassesAll(CriteriaRows()));
}

TEST(RowsForAllTest, TheFirstRowIsAStarAndTheNextFourGo) {
  const CriteriaRows five = RowsOf(
      {{kNom, "~", "1"}, {kNom, "~", "2"}, {kNom, "~", "3"}, {kNom, "~", "4"}, {kNom, "~", "5"}});
  EXPECT_EQ(RowsForAll(five), RowsOf({{kSte1, "=", "*"}}));
  EXPECT_EQ(RowsForAll(CriteriaRows()), RowsOf({{kSte1, "=", "*"}}));
}

TEST(RowsForAllTest, ASixthRowStaysAndMovesUpWhenTheSetIsValidated) {
  const Criterion sixth = {kVille, "=", "PARIS"};
  const CriteriaRows rows =
      RowsForAll(RowsOf({kFiller, kFiller, kFiller, kFiller, kFiller, sixth}));
  EXPECT_EQ(rows, RowsOf({{kSte1, "=", "*"}, sixth}));
  EXPECT_TRUE(PassesAll(rows));
}

}  // namespace
}  // namespace carnetel
