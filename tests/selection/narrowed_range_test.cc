// Which entries the first row of a set leaves to be looked at.
#include "selection/selection_scan.h"
#include "tests/selection/selection_testing.h"

namespace carnetel {
namespace {

// Where the entries of the nine cards below start, by what they are filed under.
constexpr int64_t kOf1 = 320;
constexpr int64_t kOf3 = 336;
constexpr int64_t kOf4 = 352;
constexpr int64_t kOf9 = 368;
constexpr int64_t kOfA = 384;
constexpr int64_t kOfD = 416;
constexpr int64_t kOfE = 448;
constexpr int64_t kOfZ = 464;
constexpr int64_t kEnd = 480;

using Range = std::pair<int64_t, int64_t>;
const Range kWhole = {320, kEnd};

// The ranges of = <> <= >= < > ~ for one value.
struct RangeCase {
  std::string name;
  std::string value;
  std::array<Range, 7> ranges;
};

void PrintTo(const RangeCase& test, std::ostream* out) {
  *out << test.name;
}

class NarrowedRangeTest : public SelectionFixture, public testing::WithParamInterface<RangeCase> {
 protected:
  static constexpr std::array<const char*, 9> kKeys = {"1A",    "3B",     "4C",   "9D",  "ALPHA",
                                                       "DELTA", "DUPONT", "ELAN", "ZETA"};
  Range Narrowed(const std::vector<Criterion>& criteria) {
    const ScanRange range = NarrowedRange(directory_->address(), RowsOf(criteria));
    return {range.start, range.end};
  }
  void ExpectRanges(const RangeCase& test) {
    const Texts comparators = {"=", "<>", "<=", ">=", "<", ">", "~"};
    for (size_t i = 0; i < comparators.size(); ++i) {
      EXPECT_EQ(Narrowed({{kSte1, comparators[i], test.value}}), test.ranges[i]) << comparators[i];
    }
  }
};

TEST_P(NarrowedRangeTest, OnTheIndexOfCompanies) {
  Open(kSte1);
  for (const char* key : kKeys) AddCard(key, "NOM");
  AddCard("BETA", "NOM");
  ExpectRanges(GetParam());
}

// The value is one of the company, the letters are those of the surnames.
TEST_P(NarrowedRangeTest, OnTheIndexOfSurnamesAllTheSame) {
  Open(kNom);
  for (const char* key : kKeys) AddCard("SOCIETE", key);
  AddCard("SOCIETE", "BETA");
  ExpectRanges(GetParam());
}

constexpr std::array<Range, 7> kRangesOfD = {
    {{kOfD, kOfE}, kWhole, {320, kOfE}, {kOfD, kEnd}, {320, kOfD}, {kOfE, kEnd}, kWhole}};
// Of a letter without a row.
constexpr std::array<Range, 7> kRangesOfNoLetter = {
    {kWhole, kWhole, kWhole, kWhole, {320, 320}, {kEnd, kEnd}, kWhole}};

INSTANTIATE_TEST_SUITE_P(
    Letters, NarrowedRangeTest,
    testing::Values(
        RangeCase{"Capital", "DU", kRangesOfD}, RangeCase{"Small", "dupont", kRangesOfD},
        RangeCase{
            "WithoutCards",
            "Q",
            {{{kOfZ, kOfZ}, kWhole, {320, kOfZ}, {kOfZ, kEnd}, {320, kOfZ}, {kOfZ, kEnd}, kWhole}}},
        RangeCase{
            "Last",
            "z",
            {{{kOfZ, kEnd}, kWhole, kWhole, {kOfZ, kEnd}, {320, kOfZ}, {kEnd, kEnd}, kWhole}}},
        RangeCase{
            "First",
            "A",
            {{{kOfA, 400}, kWhole, {320, 400}, {kOfA, kEnd}, {320, kOfA}, {400, kEnd}, kWhole}}},
        RangeCase{
            "Digit",
            "3",
            {{{kOf3, kOf4}, kWhole, {320, kOf4}, {kOf3, kEnd}, {320, kOf3}, {kOf4, kEnd}, kWhole}}},
        // The letter behind '9' is '3'.
        RangeCase{
            "Nine",
            "9D",
            {{{kOf9, kOf3}, kWhole, {320, kOf3}, {kOf9, kEnd}, {320, kOf9}, {kOf3, kEnd}, kWhole}}},
        // Counts as '0', of which there are no cards.
        RangeCase{"Empty",
                  "",
                  {{{320, kOf1}, kWhole, {320, kOf1}, kWhole, {320, 320}, {kOf1, kEnd}, kWhole}}}),
    [](const auto& test) { return test.param.name; });

INSTANTIATE_TEST_SUITE_P(
    OtherBytes, NarrowedRangeTest,
    testing::Values(
        RangeCase{"Accent", "\x90LAN", kRangesOfNoLetter},
        RangeCase{"SmallAccent", "\x82", kRangesOfNoLetter},
        RangeCase{"HighestByte", "\xFF", kRangesOfNoLetter},
        RangeCase{"Bracket", "[", kRangesOfNoLetter}, RangeCase{"Line", "_a", kRangesOfNoLetter},
        RangeCase{"Tilde", "~", kRangesOfNoLetter}, RangeCase{"Blank", " D", kRangesOfNoLetter},
        RangeCase{"Parenthesis", "(D", kRangesOfNoLetter},
        RangeCase{"InFrontOfZero", "/D", kRangesOfNoLetter},
        // Between '9' and 'A' the bytes have the rows of '3' to '9'.
        RangeCase{
            "Colon",
            ":",
            {{{kOf3, kOf4}, kWhole, {320, kOf4}, {kOf3, kEnd}, {320, kOf3}, {kOf4, kEnd}, kWhole}}},
        RangeCase{
            "At",
            "@",
            {{{kOf9, kOfA}, kWhole, {320, kOfA}, {kOf9, kEnd}, {320, kOf9}, {kOfA, kEnd}, kWhole}}},
        RangeCase{"Star", "*D", {{kWhole, kWhole, kWhole, kWhole, kWhole, kWhole, kWhole}}}),
    [](const auto& test) { return test.param.name; });

class WholeRangeTest : public NarrowedRangeTest {};

TEST_F(WholeRangeTest, OnlyTheFirstRowAndOnlyTheCompanyNarrow) {
  Open(kSte1);
  for (const char* key : kKeys) AddCard(key, "");
  AddCard("BETA", "");
  EXPECT_EQ(Narrowed({{kNom, "=", "D"}}), kWhole);
  EXPECT_EQ(Narrowed({{kSte2, "=", "D"}}), kWhole);
  EXPECT_EQ(Narrowed({{kVille, "<", "D"}, {kSte1, "=", "D"}}), kWhole);
  EXPECT_EQ(Narrowed({{kSte1, "=", "D"}, {kVille, "<", "D"}}), (Range{kOfD, kOfE}));
  EXPECT_EQ(Narrowed({}), kWhole);
}

TEST_F(WholeRangeTest, AComparatorThatIsNoneDoesNotNarrow) {
  Open(kSte1);
  for (const char* key : kKeys) AddCard(key, "");
  AddCard("BETA", "");
  for (const char comparator : {'\0', '/', '7', 'A', '\xFF'}) {
    CriteriaRows rows;
    rows.SetRow(0, {1, comparator, OemText("D")});
    EXPECT_EQ(NarrowedRange(directory_->address(), rows).start, 320);
    EXPECT_EQ(NarrowedRange(directory_->address(), rows).end, kEnd);
  }
}

TEST_F(WholeRangeTest, WithoutCardsThereIsNothing) {
  Open(kSte1);
  ExpectRanges(
      {"",
       "D",
       {{{320, 320}, {320, 320}, {320, 320}, {320, 320}, {320, 320}, {320, 320}, {320, 320}}}});
}

}  // namespace
}  // namespace carnetel
