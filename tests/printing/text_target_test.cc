// The text file that is printed into: its bytes, the tail it keeps, and a full disk.
#include "printing/text_target.h"

#include "tests/printing/printing_testing.h"

namespace carnetel {
namespace {

class TextTargetTest : public ::testing::Test {
 protected:
  static constexpr char kPath[] = "/out.txt";
  // More than one block of what the target gathers.
  static constexpr int kManyLines = 20'000;

  [[nodiscard]] std::unique_ptr<File> OpenFile() {
    return faults.Open(kPath, OpenMode::kCreateOrOpen);
  }
  [[nodiscard]] std::string Contents() const { return std::string(AsChars(files.Contents(kPath))); }
  static std::string NumberedLine(int number) { return "line " + std::to_string(number); }

  FakeClock clock{1'000'000'000};
  MemoryFileSystem files{clock};
  FaultFileSystem faults{files};
};

TEST_F(TextTargetTest, TakesTheBytesOfTheCards) {
  const std::unique_ptr<File> file = OpenFile();
  EXPECT_EQ(TextFileTarget(*file).text(), PrintText::kOem);
}

TEST_F(TextTargetTest, ALineEndsInCrLfAndAPageInAFormFeed) {
  const std::unique_ptr<File> file = OpenFile();
  TextFileTarget target(*file);
  target.PrintLine("ab");
  target.PrintLine("");
  target.NewPage();
  target.PrintLine("\x82");
  EXPECT_TRUE(target.Flush());
  EXPECT_EQ(Hex(files.Contents(kPath)), "61 62 0D 0A 0D 0A 0C 82 0D 0A");
}

TEST_F(TextTargetTest, ALongerFileKeepsItsTail) {
  files.SetContents(kPath, AsBytes("0123456789"));
  const std::unique_ptr<File> file = OpenFile();
  TextFileTarget target(*file);
  target.PrintLine("ab");
  EXPECT_TRUE(target.Flush());
  EXPECT_EQ(Contents(), "ab\r\n456789");
}

TEST_F(TextTargetTest, AShorterFileGrows) {
  files.SetContents(kPath, AsBytes("012"));
  const std::unique_ptr<File> file = OpenFile();
  TextFileTarget target(*file);
  target.PrintLine("ab");
  EXPECT_TRUE(target.Flush());
  EXPECT_EQ(Contents(), "ab\r\n");
}

TEST_F(TextTargetTest, ManyLinesStandInTheirOrder) {
  const std::unique_ptr<File> file = OpenFile();
  TextFileTarget target(*file);
  std::string expected;
  for (int number = 0; number < kManyLines; ++number) {
    target.PrintLine(NumberedLine(number));
    expected += NumberedLine(number) + "\r\n";
  }
  EXPECT_TRUE(target.Flush());
  EXPECT_TRUE(SameBytes(AsBytes(expected), files.Contents(kPath)));
}

TEST_F(TextTargetTest, NothingPrintedIsNothingWritten) {
  files.SetContents(kPath, AsBytes("old"));
  const std::unique_ptr<File> file = OpenFile();
  EXPECT_TRUE(TextFileTarget(*file).Flush());
  EXPECT_EQ(Contents(), "old");
}

TEST_F(TextTargetTest, AFullDiskEndsTheTarget) {
  const std::unique_ptr<File> file = OpenFile();
  TextFileTarget target(*file);
  faults.FillDisk();
  target.PrintLine("ab");
  EXPECT_FALSE(target.Ended());
  EXPECT_FALSE(target.Flush());
  EXPECT_TRUE(target.Ended());
  EXPECT_EQ(Contents(), "");
}

TEST_F(TextTargetTest, AFullDiskEndsALongRunOnItsWay) {
  const std::unique_ptr<File> file = OpenFile();
  TextFileTarget target(*file);
  faults.FillDisk();
  int printed = 0;
  while (printed < kManyLines && !target.Ended()) target.PrintLine(NumberedLine(printed++));
  EXPECT_LT(printed, kManyLines);
  faults.Heal();
  target.PrintLine("late");
  EXPECT_FALSE(target.Flush());
  EXPECT_EQ(Contents(), "");
}

TEST_F(TextTargetTest, AFullDiskTakesWhatFitsIntoAnOldFile) {
  files.SetContents(kPath, AsBytes("0123456789"));
  const std::unique_ptr<File> file = OpenFile();
  TextFileTarget target(*file);
  faults.FillDisk();
  target.PrintLine("ab");
  EXPECT_TRUE(target.Flush());
  EXPECT_EQ(Contents(), "ab\r\n456789");
}

}  // namespace
}  // namespace carnetel
