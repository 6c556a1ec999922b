// Opening a main file by its header and size: which files are taken, which are refused, and how the
// count follows the size.
#include <gmock/gmock.h>

#include "tests/storage/family_bytes.h"

namespace carnetel {
namespace {

constexpr size_t kBannerVersion = 25;
constexpr size_t kCount = 96;
constexpr size_t kFieldCountAt = 100;

class DirectoryHeaderTest : public StoreFixture {
 protected:
  void SetUp() override {
    Build(3);
    Close();
  }
  void Patch(size_t offset, std::string_view text) {
    FileBytes file = MainFile();
    StorePadded(file, offset, text.size(), text);
    files.SetContents(Path(".DAN"), file);
  }
  void PatchCount(uint16_t count) {
    FileBytes file = MainFile();
    StoreLe16(file, kCount, count);
    files.SetContents(Path(".DAN"), file);
  }
  [[nodiscard]] uint16_t CountOnDisk() const { return LoadLe16(MainFile(), kCount); }
  void Resize(size_t size) {
    FileBytes file = MainFile();
    file.resize(size, std::byte{0x41});
    files.SetContents(Path(".DAN"), file);
  }
  // Opens a file that must be refused, and requires that the whole family stays as it is.
  OpenResult OpenRefused() {
    const MemoryFileSystem before = files.Snapshot();
    Open();
    for (const std::string_view extension : {".DAN", ".I01", ".I02", ".ADR", ".CRT"}) {
      EXPECT_TRUE(SameBytes(before.Contents(Path(extension)), Contents(extension))) << extension;
    }
    EXPECT_FALSE(directory().is_open());
    EXPECT_FALSE(directory().main().is_open());
    return open_result;
  }
};

TEST_F(DirectoryHeaderTest, Version0410IsOlder) {
  Patch(kBannerVersion, "04.10");
  EXPECT_EQ(OpenRefused(), OpenResult::kOlderVersion);
}

TEST_F(DirectoryHeaderTest, Version0499IsOlder) {
  Patch(kBannerVersion, "04.99");
  EXPECT_EQ(OpenRefused(), OpenResult::kOlderVersion);
}

TEST_F(DirectoryHeaderTest, Version0500AndLaterOpen) {
  for (const std::string_view version : {"05.00", "05.01", "06.00", "99.99"}) {
    Patch(kBannerVersion, version);
    const FileBytes before = MainFile();
    Open();
    EXPECT_EQ(open_result, OpenResult::kOpened) << version;
    EXPECT_EQ(directory().main().count(), 3U) << version;
    Close();
    EXPECT_TRUE(SameBytes(before, MainFile())) << version;
  }
}

TEST_F(DirectoryHeaderTest, BannerWithoutVersionIsRefused) {
  Patch(0, std::string(34, '.'));
  EXPECT_EQ(OpenRefused(), OpenResult::kNoStore);
}

TEST_F(DirectoryHeaderTest, ZeroByteFileIsRefusedAndLeftAsItIs) {
  files.SetContents(Path(".DAN"), {});
  EXPECT_EQ(OpenRefused(), OpenResult::kNoStore);
  EXPECT_TRUE(MainFile().empty());
}

TEST_F(DirectoryHeaderTest, FileThatEndsInItsBannerIsRefused) {
  Resize(20);
  EXPECT_EQ(OpenRefused(), OpenResult::kNoStore);
}

TEST_F(DirectoryHeaderTest, ForeignFileWithAVersionAnywhereInItsHeaderOpens) {
  Patch(0, std::string(34, '.'));
  Patch(40, "a VER 07.00");
  Open();
  EXPECT_EQ(open_result, OpenResult::kOpened);
  EXPECT_EQ(directory().main().count(), 3U);
}

TEST_F(DirectoryHeaderTest, MagicAndConstantsAreNotTested) {
  Patch(76, std::string(12, 'x'));
  Patch(98, "xx");
  Open();
  EXPECT_EQ(open_result, OpenResult::kOpened);
  EXPECT_EQ(CardAt(CardOffset(3)).FieldText(kSte1).bytes(), "CARTE 00003");
}

TEST_F(DirectoryHeaderTest, OtherFieldCountRewritesFieldCountAndTableOnly) {
  const FileBytes whole = MainFile();
  Patch(34, "Clients du Nord");
  const FileBytes described = MainFile();
  Patch(kFieldCountAt, std::string_view("\x1E\x00", 2));
  Patch(160, std::string(248, 'x'));
  Open();
  EXPECT_EQ(open_result, OpenResult::kOpened);
  EXPECT_TRUE(SameBytes(described, MainFile()));
  EXPECT_EQ(described.size(), whole.size());
}

// The count is corrected in the image only, even when the field count is corrected on the disk.
TEST_F(DirectoryHeaderTest, OtherFieldCountLeavesAWrongCountOnTheDisk) {
  PatchCount(7);
  const FileBytes before = MainFile();
  Patch(kFieldCountAt, std::string_view("\x00\x00", 2));
  Open();
  EXPECT_EQ(directory().main().count(), 3U);
  EXPECT_TRUE(SameBytes(before, MainFile()));
}

TEST_F(DirectoryHeaderTest, RightFieldCountLeavesAWrongTable) {
  Patch(160, std::string(248, 'x'));
  const FileBytes before = MainFile();
  Open();
  Close();
  EXPECT_TRUE(SameBytes(before, MainFile()));
}

TEST_F(DirectoryHeaderTest, WrongCountIsCorrectedInTheImageOnly) {
  for (const uint16_t wrong : std::vector<uint16_t>{0, 2, 4, 32767, 40000, 65535}) {
    PatchCount(wrong);
    files.ResetCounts();
    Open();
    EXPECT_EQ(open_result, OpenResult::kOpened);
    EXPECT_EQ(directory().main().count(), 3U);
    EXPECT_EQ(directory().main().header().card_count(), 3);
    EXPECT_EQ(CountOnDisk(), wrong);
    EXPECT_EQ(files.counts().writes, 0) << "no derived file has a reason to change";
    Close();
  }
}

TEST_F(DirectoryHeaderTest, NextAddWritesTheTrueCount) {
  PatchCount(40);
  Open();
  EXPECT_EQ(Add("DUPONT"), CardOffset(4));
  EXPECT_EQ(CountOnDisk(), 4);
}

TEST_F(DirectoryHeaderTest, NextDeleteWritesTheTrueCount) {
  PatchCount(40);
  Open();
  EXPECT_TRUE(Delete(CardOffset(1)));
  EXPECT_EQ(CountOnDisk(), 2);
}

TEST_F(DirectoryHeaderTest, CountIsWrittenWhereTheHeaderTells) {
  Patch(88, std::string_view("\xC8\x01\x00\x00", 4));
  Open();
  Add("DUPONT");
  const FileBytes file = MainFile();
  EXPECT_EQ(LoadLe16(file, 456), 4);
  EXPECT_EQ(LoadLe32(file, 462), 1'000'000'000U);
  EXPECT_EQ(LoadLe16(file, kCount), 3);
}

TEST_F(DirectoryHeaderTest, TruncationInMidCardDropsThePartialCard) {
  Resize(768 * 3 + 500);
  Open();
  EXPECT_EQ(open_result, OpenResult::kOpened);
  EXPECT_EQ(directory().main().count(), 2U);
  const FileBytes index =
      IndexBuilder().Page('C', {{"CARTE 0000", 768}, {"CARTE 0000", 1536}}).Bytes();
  EXPECT_TRUE(SameBytes(index, IndexFile(1)));
  EXPECT_TRUE(SameBytes(index, IndexFile(2)));
  EXPECT_TRUE(
      SameBytes(ExpectedAddressFile(PlainEntries({768, 1536}), 1'000'000'000), AddressFileBytes()));
  EXPECT_EQ(MainFile().size(), 768U * 3 + 500) << "nothing is cut at an opening";
}

TEST_F(DirectoryHeaderTest, AddWritesOverThePartialCard) {
  Resize(768 * 3 + 500);
  Open();
  EXPECT_EQ(Add("DUPONT"), CardOffset(3));
  EXPECT_EQ(MainFile().size(), 768U * 4);
  EXPECT_EQ(CountOnDisk(), 3);
}

TEST_F(DirectoryHeaderTest, PartialBlockBehindTheLastCardNeverCounts) {
  Resize(768 * 4 + 767);
  files.ResetCounts();
  Open();
  EXPECT_EQ(directory().main().count(), 3U);
  EXPECT_EQ(files.counts().writes, 0);
  EXPECT_TRUE(Delete(CardOffset(3)));
  EXPECT_EQ(MainFile().size(), 768U * 3);
}

TEST_F(DirectoryHeaderTest, FileThatEndsInItsHeaderBlockHasNoCards) {
  Resize(108);
  Open();
  EXPECT_EQ(open_result, OpenResult::kOpened);
  EXPECT_EQ(directory().main().count(), 0U);
  EXPECT_TRUE(SameBytes(IndexBuilder().Bytes(), IndexFile(1)));
  EXPECT_EQ(AddressFileBytes().size(), 320U);
}

}  // namespace
}  // namespace carnetel
