#include "transfer/record_reader.h"

#include <gtest/gtest.h>

#include "platform/memory_file_system.h"

namespace carnetel {
namespace {

class RecordReaderTest : public testing::Test {
 protected:
  File& Source(std::string_view text) {
    files_.SetContents("/in", AsBytes(text));
    file_ = files_.Open("/in", OpenMode::kReadWrite);
    return *file_;
  }

  FakeClock clock_{1000};
  MemoryFileSystem files_{clock_};
  std::unique_ptr<File> file_;
};

TEST_F(RecordReaderTest, GivesWholeRecordsBehindTheOffset) {
  RecordReader reader(Source("headaaabbbcc"), 4, 3);
  EXPECT_EQ(reader.count(), 2u);
  EXPECT_EQ(reader.Next(), "aaa");
  EXPECT_EQ(reader.Next(), "bbb");
  EXPECT_EQ(reader.Next(), "");
  EXPECT_EQ(reader.Next(), "");
}

TEST_F(RecordReaderTest, AFileThatEndsBeforeTheOffsetHasNoRecord) {
  RecordReader reader(Source("head"), 768, 3);
  EXPECT_EQ(reader.count(), 0u);
  EXPECT_EQ(reader.Next(), "");
}

TEST_F(RecordReaderTest, ReadsInBlocksThatHoldManyRecords) {
  std::string text;
  for (int i = 0; i < 50'000; ++i) text += std::to_string(10'000 + i);
  File& source = Source(text);
  const uint64_t reads = files_.counts().reads;
  RecordReader reader(source, 0, 5);
  for (int i = 0; i < 50'000; ++i) ASSERT_EQ(reader.Next(), std::to_string(10'000 + i));
  EXPECT_EQ(reader.Next(), "");
  EXPECT_LE(files_.counts().reads - reads, 6u);
}

TEST_F(RecordReaderTest, ARecordLargerThanABlockIsReadWhole) {
  const std::string large(100'000, 'x');
  RecordReader reader(Source(large + large), 0, large.size());
  EXPECT_EQ(reader.Next(), large);
  EXPECT_EQ(reader.Next(), large);
  EXPECT_EQ(reader.Next(), "");
}

TEST_F(RecordReaderTest, WhatIsAppendedWhileReadingIsNotSeen) {
  File& source = Source("aaa");
  RecordReader reader(source, 0, 3);
  source.Write(3, AsBytes("bbb"));
  EXPECT_EQ(reader.Next(), "aaa");
  EXPECT_EQ(reader.Next(), "");
}

TEST_F(RecordReaderTest, AFileCutWhileReadingEndsEarly) {
  File& source = Source("aaabbbccc");
  RecordReader reader(source, 0, 3);
  source.Truncate(5);
  EXPECT_EQ(reader.Next(), "aaa");
  EXPECT_EQ(reader.Next(), "");
}

}  // namespace
}  // namespace carnetel
