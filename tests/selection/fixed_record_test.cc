// Taking one record out of a file of records, on a disk that works and on one that fails.
#include "selection/fixed_record.h"

#include <gtest/gtest.h>

#include "platform/fault_file_system.h"
#include "platform/memory_file_system.h"

namespace carnetel {
namespace {

const std::string kPath = "/d/records";

class FixedRecordTest : public testing::Test {
 protected:
  // A header of three bytes, records of four.
  void SetUp() override {
    Put("hdr"
        "aaaa"
        "bbbb"
        "cccc"
        "dddd");
  }

  void Put(const std::string& text) { files_.SetContents(kPath, AsBytes(text)); }
  [[nodiscard]] std::string Text() const {
    const std::vector<std::byte> bytes = files_.Contents(kPath);
    return std::string(AsChars(bytes));
  }
  RecordDeletion Delete(size_t number) { return DeleteFixedRecord(faults_, kPath, 3, 4, number); }

  FakeClock clock_;
  MemoryFileSystem files_{clock_};
  FaultFileSystem faults_{files_};
};

TEST_F(FixedRecordTest, TheRecordsBehindMoveDown) {
  EXPECT_EQ(Delete(1), RecordDeletion::kDeleted);
  EXPECT_EQ(Text(), "hdraaaaccccdddd");
  EXPECT_EQ(Delete(0), RecordDeletion::kDeleted);
  EXPECT_EQ(Text(), "hdrccccdddd");
}

TEST_F(FixedRecordTest, TheLastRecordIsCutOff) {
  EXPECT_EQ(Delete(3), RecordDeletion::kDeleted);
  EXPECT_EQ(Text(), "hdraaaabbbbcccc");
}

TEST_F(FixedRecordTest, TheOnlyRecordLeavesTheHeader) {
  Put("hdraaaa");
  EXPECT_EQ(Delete(0), RecordDeletion::kDeleted);
  EXPECT_EQ(Text(), "hdr");
}

TEST_F(FixedRecordTest, APieceAtTheEndIsCutOffToo) {
  Put("hdraaaabbbbcc");
  EXPECT_EQ(Delete(0), RecordDeletion::kDeleted);
  EXPECT_EQ(Text(), "hdrbbbb");
}

TEST_F(FixedRecordTest, BehindTheEndNothingHappens) {
  EXPECT_EQ(Delete(4), RecordDeletion::kDeleted);
  EXPECT_EQ(Delete(1000), RecordDeletion::kDeleted);
  EXPECT_EQ(Text(), "hdraaaabbbbccccdddd");
}

TEST_F(FixedRecordTest, AFileThatDoesNotOpenIsTold) {
  files_.Remove(kPath);
  EXPECT_EQ(Delete(0), RecordDeletion::kNotOpened);
  EXPECT_FALSE(files_.Exists(kPath));
}

TEST_F(FixedRecordTest, ItsAnswersAreNumbers) {
  EXPECT_EQ(static_cast<int>(RecordDeletion::kNotOpened), -1);
  EXPECT_EQ(static_cast<int>(RecordDeletion::kWriteFailed), 0);
  EXPECT_EQ(static_cast<int>(RecordDeletion::kDeleted), 1);
}

TEST_F(FixedRecordTest, AWriteThatFailsStopsTheMoveAndTheFileIsCutThere) {
  faults_.FailWrite(2);
  EXPECT_EQ(Delete(0), RecordDeletion::kWriteFailed);
  EXPECT_EQ(Text(), "hdrbbbb");
}

TEST_F(FixedRecordTest, WhenTheFirstWriteFailsAllFromTheRecordOnIsCut) {
  faults_.FailWrite(1);
  EXPECT_EQ(Delete(1), RecordDeletion::kWriteFailed);
  EXPECT_EQ(Text(), "hdraaaa");
}

TEST_F(FixedRecordTest, OnADiskThatStopsNothingIsLostThatWasNotMoved) {
  faults_.StopAfter(1);
  EXPECT_EQ(Delete(0), RecordDeletion::kWriteFailed);
  EXPECT_EQ(Text(), "hdrbbbbbbbbccccdddd");
}

TEST_F(FixedRecordTest, AWriteThatIsTornIsAFailure) {
  faults_.TearWrite(1, 2);
  EXPECT_EQ(Delete(2), RecordDeletion::kWriteFailed);
  EXPECT_EQ(Text(), "hdraaaabbbbddccdddd");
}

}  // namespace
}  // namespace carnetel
