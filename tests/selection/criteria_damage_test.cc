// Criteria files that are missing, cut short or from elsewhere: rewritten without a word.
#include "selection/criteria_file.h"

#include "tests/selection/criteria_bytes.h"
#include "tests/selection/selection_testing.h"

namespace carnetel {
namespace {

const std::string kPath = "/d/X.CRT";
const std::string kRow = CriteriaRowText(1, '0', "DU");

// The working set that is in memory in these tests.
const std::string kOwnRecord = CriteriaRecordText(kWorkingSetOem, kRow);
// What is written when there was no header to read.
const std::string kOwnFile = CriteriaHeaderText(0, 0x1A) + kOwnRecord;

class CriteriaDamageTest : public testing::Test {
 protected:
  CriteriaDamageTest() { criteria_.rows() = RowsOf({{kSte1, "=", "DU"}}); }

  void Put(const std::string& text) { files_.SetContents(kPath, BytesOf(text)); }
  void ExpectFile(const std::string& text) {
    EXPECT_TRUE(SameBytes(BytesOf(text), files_.Contents(kPath)));
  }
  void ExpectUnchangedMemory() { EXPECT_EQ(criteria_.rows(), RowsOf({{kSte1, "=", "DU"}})); }

  FakeClock clock_;
  MemoryFileSystem files_{clock_};
  FaultFileSystem faults_{files_};
  CriteriaFile criteria_{faults_, kPath};
};

TEST_F(CriteriaDamageTest, AMissingFileIsMadeByListing) {
  EXPECT_TRUE(criteria_.ListCriteriaSets().empty());
  ExpectFile(kOwnFile);
  EXPECT_EQ(criteria_.name(), OemText(kWorkingSetOem));
}

TEST_F(CriteriaDamageTest, AMissingFileIsMadeByLoading) {
  EXPECT_FALSE(criteria_.LoadCriteriaSet(1));
  ExpectFile(kOwnFile);
  ExpectUnchangedMemory();
}

TEST_F(CriteriaDamageTest, AMissingFileIsMadeByConfirmedCriteria) {
  EXPECT_TRUE(criteria_.StoreWorkingSet());
  ExpectFile(kOwnFile);
}

TEST_F(CriteriaDamageTest, AMissingFileIsNotMadeByTheOthers) {
  EXPECT_FALSE(criteria_.ReadCriteriaHeader());
  EXPECT_FALSE(criteria_.WriteHeader());
  EXPECT_FALSE(criteria_.AddCriteriaSet(OemText("A")));
  EXPECT_FALSE(criteria_.ReplaceCriteriaSet(1, OemText("A"), false));
  EXPECT_FALSE(criteria_.DeleteCriteriaSet(1));
  EXPECT_FALSE(files_.Exists(kPath));
}

TEST_F(CriteriaDamageTest, AFileShorterThanItsHeaderIsRewritten) {
  for (const size_t size : {size_t{0}, size_t{1}, size_t{127}}) {
    Put(CriteriaHeaderText(3).substr(0, size));
    EXPECT_TRUE(criteria_.ListCriteriaSets().empty());
    ExpectFile(kOwnFile);
    Put(CriteriaHeaderText(3).substr(0, size));
    EXPECT_FALSE(criteria_.LoadCriteriaSet(0));
    ExpectFile(kOwnFile);
  }
}

TEST_F(CriteriaDamageTest, AFileOfExactly128BytesListsNothingAndIsRewrittenByLoading) {
  Put(CriteriaHeaderText(0));
  EXPECT_TRUE(criteria_.ListCriteriaSets(true).empty());
  ExpectFile(CriteriaHeaderText(0));
  EXPECT_FALSE(criteria_.LoadCriteriaSet(0));
  // With the header that was read: its 80th byte stays 0.
  ExpectFile(CriteriaHeaderText(0) + kOwnRecord);
  ExpectUnchangedMemory();
}

TEST_F(CriteriaDamageTest, ARecordBehindTheLastOneIsRewrittenByLoadingAndTheOthersSurvive) {
  const std::string saved = CriteriaRecordText("A", CriteriaRowText(7, '6', "PARIS"));
  Put(CriteriaHeaderText(1) + CriteriaRecordText(kWorkingSetOem, "") + saved);
  EXPECT_FALSE(criteria_.LoadCriteriaSet(2));
  ExpectFile(CriteriaHeaderText(1) + kOwnRecord + saved);
}

TEST_F(CriteriaDamageTest, CreatingDoesNotTruncate) {
  const std::string rest = CriteriaRecordText("A", kRow) + "piece";
  Put(std::string(128 + 167, 'x') + rest);
  EXPECT_TRUE(criteria_.CreateCriteriaFile());
  ExpectFile(kOwnFile + rest);
}

// Sizes of name and record that leave no room for what a record holds.
TEST_F(CriteriaDamageTest, AHeaderThatTellsOfTooSmallRecordsIsNone) {
  const std::vector<std::pair<int, int>> sizes = {
      {0, 0}, {5, 23}, {6, 22}, {0, 23}, {6, 0}, {-1, 23}, {6, -1}, {0x8000, 23}, {6, 0x8017}};
  for (const auto& [rows, name_size] : sizes) {
    FileBytes file = BytesOf(CriteriaHeaderText(1) + kOwnRecord);
    StoreLe16(file, 96, static_cast<uint16_t>(rows));
    StoreLe16(file, 98, static_cast<uint16_t>(name_size));
    files_.SetContents(kPath, file);
    EXPECT_FALSE(criteria_.ReadCriteriaHeader()) << rows << ' ' << name_size;
    EXPECT_TRUE(criteria_.ListCriteriaSets(true).empty());
    ExpectFile(kOwnFile);
  }
}

TEST_F(CriteriaDamageTest, LargerRecordsAreReadWithTheirOwnSize) {
  FileBytes header = BytesOf(CriteriaHeaderText());
  StoreLe16(header, 96, 7);
  StoreLe16(header, 98, 30);
  const std::string name_area = std::string("Large") + std::string(25, '\0');
  const std::string record = name_area + kRow + std::string(6 * 24, '\0');
  Put(std::string(AsChars(header)) + record + record);
  EXPECT_EQ(criteria_.ListCriteriaSets(), std::vector{OemText("Large")});
  EXPECT_TRUE(criteria_.LoadCriteriaSet(1));
  EXPECT_EQ(criteria_.rows(), RowsOf({{kSte1, "=", "DU"}}));
  EXPECT_TRUE(criteria_.AddCriteriaSet(OemText("Large")));
  ExpectFile(std::string(AsChars(header)) + record + record + record);
}

TEST_F(CriteriaDamageTest, TheLargestSizesFindNoRecord) {
  FileBytes file = BytesOf(CriteriaHeaderText() + kOwnRecord);
  StoreLe16(file, 96, 0x7FFF);
  StoreLe16(file, 98, 0x7FFF);
  files_.SetContents(kPath, file);
  EXPECT_TRUE(criteria_.ListCriteriaSets(true).empty());
  EXPECT_FALSE(criteria_.LoadCriteriaSet(0xFFFF));
  EXPECT_EQ(files_.Contents(kPath).size(), 128U + 0x7FFF + 0x7FFF * 24);
  ExpectUnchangedMemory();
}

TEST_F(CriteriaDamageTest, AFileOfSomethingElseIsTakenForWhatItsNumbersSay) {
  Put(std::string(5000, ' '));
  EXPECT_TRUE(criteria_.ListCriteriaSets(true).empty());
  EXPECT_FALSE(criteria_.LoadCriteriaSet(0));
  ExpectUnchangedMemory();
}

TEST_F(CriteriaDamageTest, ADiskThatFailsIsTold) {
  Put(CriteriaHeaderText() + CriteriaRecordText(kWorkingSetOem, ""));
  const FileBytes before = files_.Contents(kPath);
  faults_.StopAfter(0);
  EXPECT_FALSE(criteria_.AddCriteriaSet(OemText("A")));
  EXPECT_FALSE(criteria_.ReplaceCriteriaSet(0, OemText("A"), false));
  EXPECT_FALSE(criteria_.StoreWorkingSet());
  EXPECT_FALSE(criteria_.WriteHeader());
  EXPECT_FALSE(criteria_.CreateCriteriaFile());
  EXPECT_TRUE(SameBytes(before, files_.Contents(kPath)));
}

}  // namespace
}  // namespace carnetel
