// The layout file byte by byte, when it is made anew, what a save touches, and what a full disk
// leaves.
#include "printing/layout_file.h"

#include "tests/printing/printing_testing.h"

namespace carnetel {
namespace {

constexpr size_t kUserCopy = 248;

// Everything in a new file that is not zero.
struct Area {
  size_t offset;
  std::string_view hex;
};
constexpr Area kNewFile[] = {
    {0, "43 41 52 4E 45 54 45 4C 20 44 52 4F 56 20 53 4F"},
    {16, "46 54 57 2E 20 56 45 52 20 30 35 2E 30 30 00 00"},
    {32, "0D 0A"},
    {77, "0D 0A 1A"},
    {80, "D6 A9 06 01"},
    {84, "33 00 02 00"},
    {88, "60 00 00 00"},
    {92, "80 00 00 00"},
    {102, "06 00"},
    {104, "17 00"},
    // Ste1 30, Adr1 30, CP 5, Fax 12.
    {128, "03 00 00 00 1E 00 00 00 05 00 00 00 1E 00 00 00"},
    {144, "07 00 00 00 05 00 00 00 0C 00 00 00 0C 00 00 00"},
    {248, "03 00 00 00 1E 00 00 00 05 00 00 00 1E 00 00 00"},
    {264, "07 00 00 00 05 00 00 00 0C 00 00 00 0C 00 00 00"},
};

void ExpectNewFile(FileBytes bytes) {
  ASSERT_EQ(bytes.size(), 368U);
  for (const Area& area : kNewFile) {
    const ByteSpan there = ByteSpan(bytes).subspan(area.offset, (area.hex.size() + 1) / 3);
    EXPECT_EQ(Hex(there), area.hex) << "at " << area.offset;
    std::ranges::fill(there, std::byte{0});
  }
  EXPECT_TRUE(SameBytes(FileBytes(368), bytes));
}

class LayoutFileTest : public ::testing::Test {
 protected:
  static constexpr char kPath[] = "/dir/CLIENTS.LST";

  // A file that holds a composition of the user's own.
  void MakeFile() {
    (void)layout.LoadComposition(CompositionCopy::kUser);
    EXPECT_TRUE(layout.SaveComposition(own));
  }
  void Resize(size_t size) {
    FileBytes bytes = files.Contents(kPath);
    bytes.resize(size);
    files.SetContents(kPath, bytes);
  }

  const Composition own = CompositionOf({{2, 20}, {10, 0x01020304}});
  FakeClock clock{1'000'000'000};
  MemoryFileSystem files{clock};
  FaultFileSystem faults{files};
  LayoutFile layout{faults, kPath};
};

TEST_F(LayoutFileTest, AMissingFileIsMadeWithTwoEqualCopies) {
  EXPECT_EQ(layout.LoadComposition(CompositionCopy::kUser), FactoryComposition());
  ExpectNewFile(files.Contents(kPath));
}

TEST_F(LayoutFileTest, TheFactoryCopyOfAMissingFileMakesItToo) {
  EXPECT_EQ(layout.LoadComposition(CompositionCopy::kFactory), FactoryComposition());
  ExpectNewFile(files.Contents(kPath));
}

TEST_F(LayoutFileTest, TheFactoryCompositionHasFourColumns) {
  EXPECT_EQ(FactoryComposition(), CompositionOf({{3, 30}, {5, 30}, {7, 5}, {12, 12}}));
}

TEST_F(LayoutFileTest, AFileOf367BytesIsRewritten) {
  MakeFile();
  Resize(367);
  EXPECT_EQ(layout.LoadComposition(CompositionCopy::kUser), FactoryComposition());
  ExpectNewFile(files.Contents(kPath));
}

TEST_F(LayoutFileTest, AFileOf369BytesIsRewrittenAndShorter) {
  MakeFile();
  Resize(369);
  EXPECT_EQ(layout.LoadComposition(CompositionCopy::kUser), FactoryComposition());
  ExpectNewFile(files.Contents(kPath));
}

TEST_F(LayoutFileTest, AnEmptyFileIsRewritten) {
  files.SetContents(kPath, {});
  EXPECT_EQ(layout.LoadComposition(CompositionCopy::kFactory), FactoryComposition());
  ExpectNewFile(files.Contents(kPath));
}

TEST_F(LayoutFileTest, EachCopyHasItsOwnPlace) {
  FileBytes bytes(368);
  StoreLe32(bytes, 128, 20);
  StoreLe32(bytes, 132, 64);
  StoreLe32(bytes, 248, 1);
  StoreLe32(bytes, 252, 9);
  files.SetContents(kPath, bytes);
  EXPECT_EQ(layout.LoadComposition(CompositionCopy::kFactory), CompositionOf({{20, 64}}));
  EXPECT_EQ(layout.LoadComposition(CompositionCopy::kUser), CompositionOf({{1, 9}}));
  EXPECT_TRUE(SameBytes(bytes, files.Contents(kPath)));
}

TEST_F(LayoutFileTest, ASaveWritesTheUserCopyAlone) {
  FileBytes bytes(368, std::byte{0xEE});
  files.SetContents(kPath, bytes);
  EXPECT_TRUE(layout.SaveComposition(own));
  std::fill(bytes.begin() + kUserCopy, bytes.end(), std::byte{0});
  StoreLe32(bytes, 248, 2);
  StoreLe32(bytes, 252, 20);
  StoreLe32(bytes, 256, 10);
  StoreLe32(bytes, 260, 0x01020304);
  EXPECT_TRUE(SameBytes(bytes, files.Contents(kPath)));
  EXPECT_EQ(layout.LoadComposition(CompositionCopy::kUser), own);
}

TEST_F(LayoutFileTest, ASaveMakesNoFile) {
  EXPECT_FALSE(layout.SaveComposition(own));
  EXPECT_FALSE(files.Exists(kPath));
}

TEST_F(LayoutFileTest, ASaveThatFailsIsTold) {
  MakeFile();
  const FileBytes before = files.Contents(kPath);
  faults.FailWrite(1);
  EXPECT_FALSE(layout.SaveComposition(FactoryComposition()));
  EXPECT_TRUE(SameBytes(before, files.Contents(kPath)));
}

TEST_F(LayoutFileTest, AFileThatCannotBeMadeLeavesTheFactoryComposition) {
  faults.StopAfter(0);
  EXPECT_EQ(layout.LoadComposition(CompositionCopy::kUser), FactoryComposition());
  EXPECT_FALSE(files.Exists(kPath));
}

TEST_F(LayoutFileTest, AWriteThatIsCutShortIsMadeGoodByTheNextLoad) {
  faults.TearWrite(1, 100);
  EXPECT_EQ(layout.LoadComposition(CompositionCopy::kUser), FactoryComposition());
  EXPECT_EQ(files.Contents(kPath).size(), 100U);
  faults.Heal();
  EXPECT_EQ(layout.LoadComposition(CompositionCopy::kUser), FactoryComposition());
  ExpectNewFile(files.Contents(kPath));
}

}  // namespace
}  // namespace carnetel
