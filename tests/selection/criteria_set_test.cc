// The six rows of a set in their bytes, their validation, and the fields that criteria can test.
#include "selection/criteria_set.h"

#include "tests/selection/selection_testing.h"

namespace carnetel {
namespace {

const std::string k21 = "ABCDEFGHIJKLMNOPQRSTU";

// A row as it stands in a file.
std::string RowBytes(char low, char high, char comparator, std::string value) {
  value.resize(21);
  return std::string{low, high, comparator} + value;
}

FileBytes Padded(std::string rows) {
  rows.resize(144);
  const ByteView bytes = AsBytes(rows);
  return {bytes.begin(), bytes.end()};
}

TEST(CriteriaRowsTest, ARowIsCodeDigitAndPaddedValue) {
  const CriteriaRows rows = RowsOf({{kNom, "~", "du\x82"}, {kPostalCode, "<>", ""}});
  EXPECT_TRUE(
      SameBytes(Padded(RowBytes(11, 0, '6', "du\x82") + RowBytes(26, 0, '1', "")), rows.bytes()));
  EXPECT_EQ(rows.FieldCode(0), 11);
  EXPECT_EQ(rows.ComparatorOf(0), '6');
  EXPECT_EQ(rows.Row(0), (CriteriaRow{11, '6', OemText("du\x82")}));
}

TEST(CriteriaRowsTest, AFieldCodeIsSigned) {
  CriteriaRows rows;
  rows.SetRow(5, {-2, '0', OemText("x")});
  EXPECT_EQ(LoadU8(rows.bytes(), 120), 0xFE);
  EXPECT_EQ(LoadU8(rows.bytes(), 121), 0xFF);
  EXPECT_EQ(rows.FieldCode(5), -2);
}

TEST(CriteriaRowsTest, AValueIsCutAt21BytesAndHasNoTerminatorThen) {
  const CriteriaRows rows = RowsOf({{kSte1, "=", k21 + "VW"}, {kPrenom, "=", "x"}});
  EXPECT_TRUE(
      SameBytes(Padded(RowBytes(1, 0, '0', k21) + RowBytes(10, 0, '0', "x")), rows.bytes()));
  EXPECT_EQ(rows.Row(0).value.bytes(), k21);
}

TEST(CriteriaRowsTest, AsATestTakesItAValueOf21BytesGoesOnWithTheNextCode) {
  EXPECT_EQ(RowsOf({{kSte1, "=", k21}, {kPrenom, "=", "x"}}).ValueText(0), k21 + "\x0A");
  EXPECT_EQ(RowsOf({{kSte1, "=", k21}}).ValueText(0), k21);
  EXPECT_EQ(RowsOf({{kSte1, "=", k21.substr(1)}, {kPrenom, "=", "x"}}).ValueText(0), k21.substr(1));
}

TEST(CriteriaRowsTest, InTheLastRowAValueEndsAtIts21Bytes) {
  const Criterion filler = {kNom, ">=", ""};
  const CriteriaRows rows = RowsOf({filler, filler, filler, filler, filler, {kSte1, "=", k21}});
  EXPECT_EQ(rows.ValueText(5), k21);
}

struct ValidityCase {
  Criterion criterion;
  bool valid;
};

TEST(CompactCriteriaRowsTest, AnEmptyValueIsValidWithEqualAndDifferentOnly) {
  const std::vector<ValidityCase> cases = {
      {{kNom, "=", ""}, true},   {{kNom, "<>", ""}, true}, {{kNom, "<=", ""}, false},
      {{kNom, ">=", ""}, false}, {{kNom, "<", ""}, false}, {{kNom, ">", ""}, false},
      {{kNom, "~", ""}, false},  {{kNom, "~", "x"}, true}, {{kNom, "<", "x"}, true},
      {{-1, "=", "x"}, false},   {{-1, "=", ""}, false},
  };
  for (const ValidityCase& test : cases) {
    CriteriaRows rows = RowsOf({test.criterion});
    EXPECT_EQ(rows.CompactCriteriaRows(), test.valid ? 1U : 0U)
        << test.criterion.field << test.criterion.comparator << test.criterion.value;
    EXPECT_EQ(rows, test.valid ? RowsOf({test.criterion}) : CriteriaRows());
  }
}

TEST(CompactCriteriaRowsTest, GapsCloseAndTheRestIsZero) {
  const Criterion empty = {-1, "~", "left over"};
  CriteriaRows rows = RowsOf({{kSte1, "=", "one"},
                              empty,
                              {kNom, "~", ""},
                              {kVille, "<>", ""},
                              empty,
                              {kPays, ">", "six"}});
  EXPECT_EQ(rows.CompactCriteriaRows(), 3U);
  EXPECT_TRUE(SameBytes(
      Padded(RowBytes(1, 0, '0', "one") + RowBytes(7, 0, '1', "") + RowBytes(8, 0, '5', "six")),
      rows.bytes()));
}

TEST(CompactCriteriaRowsTest, SixValidRowsStay) {
  const Criterion row = {kNotes, "=", k21};
  CriteriaRows rows = RowsOf({row, row, row, row, row, row});
  const CriteriaRows before = rows;
  EXPECT_EQ(rows.CompactCriteriaRows(), 6U);
  EXPECT_EQ(rows, before);
}

TEST(OfferedFieldsTest, AreTwentyInTheOrderOfTheListsWithTheirLimits) {
  struct Expected {
    int code;
    int limit;
    bool number;
  };
  // Both names have the limit of the title; references, notes and postal code that of the modem.
  const std::vector<Expected> expected = {
      {10, 24, false}, {11, 24, false}, {1, 32, false},  {2, 32, false},  {3, 32, false},
      {4, 32, false},  {26, 21, false}, {7, 32, false},  {8, 32, false},  {19, 24, true},
      {20, 24, true},  {23, 21, true},  {25, 21, true},  {13, 24, false}, {14, 21, false},
      {15, 21, false}, {16, 21, false}, {17, 21, false}, {18, 21, false}, {27, 21, false}};
  ASSERT_EQ(OfferedFields().size(), expected.size());
  for (size_t i = 0; i < expected.size(); ++i) {
    const OfferedField& field = OfferedFields()[i];
    EXPECT_EQ(field.code, expected[i].code) << i;
    EXPECT_EQ(ValueLimit(field.code), expected[i].limit) << field.code;
    EXPECT_EQ(field.number, expected[i].number) << field.code;
    EXPECT_EQ(FindOfferedField(field.code), &field);
  }
}

TEST(OfferedFieldsTest, OthersCannotBeChosen) {
  // No field, street 3, short postal code, title, Minitel, service type and what lies outside.
  for (const int number : {0, 5, 6, 9, 12, 21, 22, 24, 28, 31, 32, -1}) {
    const auto code = static_cast<int16_t>(number);
    EXPECT_EQ(FindOfferedField(code), nullptr) << code;
    EXPECT_EQ(ValueLimit(code), 21) << code;
  }
}

}  // namespace
}  // namespace carnetel
