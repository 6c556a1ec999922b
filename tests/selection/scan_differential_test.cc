// Whole scans over directories and sets made by chance, against the model that walks entry by
// entry.
#include <random>

#include "selection/marks.h"
#include "selection/selection_scan.h"
#include "tests/selection/scan_model.h"

namespace carnetel {
namespace {

// Few letters, so that cards and values meet: digits, both cases, accents, and what has no row.
constexpr std::string_view kStarts = "0139AaDdMZz\x90\x82:[( ";
constexpr std::string_view kLetters = "DdUu\x9A\x1B ";
constexpr int kDirectories = 12;
constexpr int kScansEach = 60;

class ScanDifferentialTest : public SelectionFixture, public testing::WithParamInterface<int> {
 protected:
  int Below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random_); }

  std::string Text(int longest) {
    std::string text;
    const int length = Below(longest + 1);
    while (static_cast<int>(text.size()) < length) {
      const std::string_view from = text.empty() ? kStarts : kLetters;
      text += from[static_cast<size_t>(Below(static_cast<int>(from.size())))];
    }
    return text;
  }

  void AddRandomCard() {
    CardRecord& card = directory_->context().current;
    card.Clear();
    for (const int field : {kSte1, kNom, kVille}) card.SetField(field, OemText(Text(4)));
    card.SetField(Below(2) == 0 ? kPostalCode : kShortPostalCode, OemText(Text(6)));
    uint32_t position = 0;
    (void)CardDispatch(*directory_).Add(false, &position);
  }

  // Opened anew, the letters are those of the index: a card that the index could not take may stand
  // in the table of the run that added it.
  void MakeDirectory(int number) {
    const std::string path = "/d/X" + std::to_string(number);
    Open(GetParam(), path);
    for (int card = Below(60); card >= 0; --card) AddRandomCard();
    Open(GetParam(), path);
    for (uint32_t row = 0; row < directory_->address().entry_count(); ++row) {
      EntrySlot entry = directory_->address().Entry(row);
      for (uint8_t bit = 1; bit <= 5; ++bit) entry.set_bit(bit, Below(3) == 0);
      directory_->address().SetEntry(row, entry);
    }
    directory_->set_marked_count(CountMarks(*directory_));
    directory_->Commit();
  }

  CriteriaRows RandomRows() {
    const std::array<int, 6> fields = {kSte1, kSte1, kSte1, kNom, kVille, kPostalCode};
    CriteriaRows rows;
    const int count = 1 + (Below(3) == 0 ? Below(6) : 0);
    for (int row = 0; row < count; ++row) {
      std::string value = Text(3);
      if (Below(12) == 0) value.insert(value.begin(), '*');
      if (Below(12) == 0) value += std::string(21, 'x');
      const int field = fields[static_cast<size_t>(Below(static_cast<int>(fields.size())))];
      rows.SetRow(static_cast<size_t>(row), {static_cast<int16_t>(field + 1),
                                             static_cast<char>('0' + Below(7)), OemText(value)});
    }
    return rows;
  }

  ModelInput Input(const CriteriaRows& rows, bool add, int stop_at) {
    ModelInput input;
    input.main_file = Contents(".DAN");
    input.active_index = Contents(GetParam() == kSte1 ? ".I01" : ".I02");
    input.address_file = Contents(".ADR");
    input.rows.assign(rows.bytes().begin(), rows.bytes().end());
    input.add = add;
    input.marked_count = directory_->marked_count();
    input.group_bit = directory_->group_bit();
    input.stop_at = stop_at;
    return input;
  }

  void Expect(const ModelOutcome& expected) {
    EXPECT_TRUE(SameBytes(expected.address_file, Contents(".ADR")));
    EXPECT_EQ(directory_->marked_count(), expected.marked_count);
    EXPECT_EQ(recorded_.TakeLog(), expected.log);
  }

  void ScanBothWays(bool add, int stop_at) {
    const CriteriaRows rows = RandomRows();
    SCOPED_TRACE("rows " + Hex(rows.bytes()) + (add ? " added" : ""));
    recorded_.StopAt(stop_at);
    const ModelOutcome expected = ModelScan(Input(rows, add, stop_at));
    EXPECT_EQ(ScanAddressFile(*directory_, rows, add), expected.first_passed);
    Expect(expected);
    const int list_rows = Below(3) - 1;
    const ModelOutcome members = ModelGroupScan(Input(rows, add, 0), list_rows);
    const bool shown = list_rows >= 0;
    ScanGroupMembers(*directory_, rows, add,
                     shown ? std::optional(static_cast<uint32_t>(list_rows)) : std::nullopt);
    Expect(members);
  }

  std::mt19937 random_;
};

TEST_P(ScanDifferentialTest, EveryScanIsThatOfTheModel) {
  for (int seed = 0; seed < kDirectories; ++seed) {
    SCOPED_TRACE(seed);
    random_.seed(static_cast<unsigned>(seed));
    MakeDirectory(seed);
    for (int scan = 0; scan < kScansEach && !HasFailure(); ++scan) {
      if (Below(10) == 0) Display(static_cast<uint8_t>(2 * Below(3)));
      ScanBothWays(Below(2) == 0, Below(4) == 0 ? 1 + Below(20) : 0);
    }
  }
}

INSTANTIATE_TEST_SUITE_P(Indexes, ScanDifferentialTest, testing::Values(kSte1, kNom),
                         [](const auto& test) {
                           return test.param == kSte1 ? "Companies" : "Surnames";
                         });

}  // namespace
}  // namespace carnetel
