#include "storage/main_header.h"

#include <gtest/gtest.h>

#include "storage/directory_file.h"
#include "tests/storage/store_fixture.h"

namespace carnetel {
namespace {

// The 768 bytes of a directory without cards.
FileBytes EmptyMainFile() {
  FileBytes block(768);
  StorePadded(block, 0, 32, "CARNETEL DROV SOFTW. VER 05.00");
  StorePadded(block, 32, 2, "\r\n");
  StorePadded(block, 76, 4, std::string_view("\x00\x0D\x0A\x1A", 4));
  StorePadded(block, 80, 4, "\xD6\xA9\x06\x01");
  StorePadded(block, 84, 4, std::string_view("\x00\x01\x00\x00", 4));
  StorePadded(block, 88, 4, std::string_view("\x60\x00\x00\x00", 4));
  StorePadded(block, 92, 4, std::string_view("\x00\x03\x00\x00", 4));
  StorePadded(block, 96, 2, std::string_view("\x00\x00", 2));
  StorePadded(block, 98, 2, std::string_view("\x00\x03", 2));
  StorePadded(block, 100, 2, std::string_view("\x1F\x00", 2));
  constexpr int kSizes[] = {32, 32, 32, 32, 32, 5, 32, 32, 24, 24, 32, 16, 24, 24, 24, 24,
                            24, 24, 24, 24, 21, 4, 21, 12, 21, 14, 64, 21, 12, 12, 12};
  int offset = 0;
  for (size_t row = 0; row < 31; ++row) {
    StoreLe16(block, 160 + 8 * row, static_cast<uint16_t>(offset));
    StoreLe16(block, 160 + 8 * row + 4, static_cast<uint16_t>(kSizes[row]));
    StoreLe16(block, 160 + 8 * row + 6, row == 12 ? 6 : 1);
    offset += kSizes[row];
  }
  return block;
}

std::string VersionOfBanner(std::string_view banner) {
  MainHeader header;
  StorePadded(header.bytes(), 0, 32, banner);
  return header.Version().value_or("none");
}

std::string BannerWithVersion(std::string_view banner) {
  MainHeader header;
  StorePadded(header.bytes(), 0, 32, banner);
  header.SetVersionInBanner();
  return CopyFieldText(header.bytes(), 32);
}

TEST(MainHeaderTest, TheTemplateHoldsWhatANewFileStartsFrom) {
  FileBytes expected = EmptyMainFile();
  expected.resize(108);
  StorePadded(expected, 34, 42, "Fichier carnetel principal ver 05.00");
  // The field count is still to be set.
  StoreLe16(expected, 100, 0);
  EXPECT_TRUE(SameBytes(expected, MainHeader::Template().bytes()));
}

TEST(MainHeaderTest, TheVersionStandsBehindVer) {
  EXPECT_EQ(MainHeader::Template().Version(), "05.00");
  EXPECT_EQ(VersionOfBanner("CARNETEL DROV SOFTW. VER 04.10"), "04.10");
  EXPECT_EQ(VersionOfBanner("AUTRE VER 06.20 ET PLUS"), "06.20");
}

TEST(MainHeaderTest, WithoutVerThereIsNoVersion) {
  EXPECT_EQ(VersionOfBanner("CARNETEL"), "none");
  EXPECT_EQ(VersionOfBanner("ver 05.00"), "none");
}

TEST(MainHeaderTest, TheVersionIsLookedForInTheWholeImage) {
  MainHeader header;
  header.set_description(OemText("VER 05.00"));
  EXPECT_EQ(header.Version(), "05.00");
}

TEST(MainHeaderTest, AVersionThatTheImageCutsOffIsNone) {
  MainHeader header;
  StorePadded(header.bytes(), 99, 9, "VER 05.00");
  EXPECT_EQ(header.Version(), "05.00");
  header = MainHeader();
  StorePadded(header.bytes(), 100, 8, "VER 05.0");
  EXPECT_EQ(header.Version(), std::nullopt);
}

TEST(MainHeaderTest, TheVersionIsWrittenAtTheEndOfTheBanner) {
  EXPECT_EQ(BannerWithVersion("CARNETEL DROV SOFTW. VER 04.10"), "CARNETEL DROV SOFTW. VER 05.00");
  EXPECT_EQ(BannerWithVersion("CARNETEL VER 04.10"), "CARNETEL VER 05.00");
}

TEST(MainHeaderTest, AShortBannerBecomesBlank) {
  EXPECT_EQ(BannerWithVersion("VER 04.10"), "          05.00");
  EXPECT_EQ(BannerWithVersion(""), "          05.00");
  // One of fifteen bytes has room for the version, one of fourteen has not.
  EXPECT_EQ(BannerWithVersion("CARNETEL V04.10"), "CARNETEL V05.00");
  EXPECT_EQ(BannerWithVersion("CARNETEL 04.10"), "          05.00");
}

TEST(MainHeaderTest, TheDescriptionIsCutAt41Bytes) {
  MainHeader header = MainHeader::Template();
  header.set_description(OemText("12345678901234567890123456789012345678901X"));
  EXPECT_EQ(header.description().bytes(), "12345678901234567890123456789012345678901");
  EXPECT_EQ(header.bytes()[75], std::byte{0});
  header.set_description(OemText("Clients"));
  EXPECT_EQ(Hex(header.bytes().subspan(32, 12)), "0D 0A 43 6C 69 65 6E 74 73 00 00 00");
}

TEST(MainHeaderTest, CountStampAndOwnerHaveTheirPlaces) {
  MainHeader header;
  header.set_card_count(0x1234);
  header.set_field_count(31);
  header.set_stamp(0x3B9ACA00);
  header.set_owner(7);
  EXPECT_EQ(Hex(header.bytes().subspan(96)), "34 12 00 00 1F 00 00 CA 9A 3B 07 00");
}

class MainFileTest : public StoreFixture {
 protected:
  // Opens the main file alone.
  DirectoryFile OpenMain() {
    DirectoryFile main;
    EXPECT_TRUE(main.Open(files, Path(".DAN")));
    return main;
  }
};

TEST_F(MainFileTest, ANewFileIsOneBlock) {
  DirectoryFile main;
  ASSERT_TRUE(main.Create(files, Path(".DAN"), MainHeader::Template()));
  EXPECT_TRUE(SameBytes(EmptyMainFile(), MainFile()));
  EXPECT_EQ(main.count(), 0U);
}

TEST_F(MainFileTest, AnotherFieldCountHasHeaderAndFieldTableRewritten) {
  FileBytes bytes = EmptyMainFile();
  StorePadded(bytes, 34, 42, "Mes clients");
  StoreLe16(bytes, 106, 3);
  StoreLe16(bytes, 100, 27);
  std::fill_n(bytes.begin() + 160, 248, std::byte{0xEE});
  std::fill_n(bytes.begin() + 108, 52, std::byte{0x11});
  std::fill_n(bytes.begin() + 408, 360, std::byte{0x22});
  const CardRecord card = MakeCard("Alpha");
  bytes.insert(bytes.end(), card.bytes().begin(), card.bytes().end());
  StoreLe16(bytes, 96, 1);
  files.SetContents(Path(".DAN"), bytes);

  DirectoryFile main = OpenMain();
  main.InitFieldTable(true);

  FileBytes expected = bytes;
  StoreLe16(expected, 100, 31);
  const FileBytes fresh = EmptyMainFile();
  std::copy_n(fresh.begin() + 160, 248, expected.begin() + 160);
  EXPECT_TRUE(SameBytes(expected, MainFile()));
}

TEST_F(MainFileTest, TheRightFieldCountLeavesTheFileUntouched) {
  FileBytes bytes = EmptyMainFile();
  std::fill_n(bytes.begin() + 160, 248, std::byte{0xEE});
  files.SetContents(Path(".DAN"), bytes);
  DirectoryFile main = OpenMain();
  files.ResetCounts();
  main.InitFieldTable(true);
  EXPECT_EQ(files.counts().writes, 0);
  EXPECT_TRUE(SameBytes(bytes, MainFile()));
}

TEST_F(MainFileTest, TheCountComesFromTheSizeAndIsCorrectedInTheImageAlone) {
  FileBytes bytes = EmptyMainFile();
  StoreLe16(bytes, 96, 9);
  bytes.resize(768 * 4);
  files.SetContents(Path(".DAN"), bytes);
  DirectoryFile main = OpenMain();
  EXPECT_EQ(main.count(), 3U);
  EXPECT_EQ(main.header().card_count(), 3);
  EXPECT_TRUE(SameBytes(bytes, MainFile()));
}

TEST_F(MainFileTest, APartialCardDoesNotCount) {
  FileBytes bytes = EmptyMainFile();
  bytes.resize(768 * 3 + 767);
  files.SetContents(Path(".DAN"), bytes);
  DirectoryFile main = OpenMain();
  EXPECT_EQ(main.count(), 2U);
  EXPECT_EQ(main.end_offset(), 2304U);
  CardRecord card;
  EXPECT_TRUE(main.ReadCard(1536, card));
  EXPECT_FALSE(main.ReadCard(2304, card));
}

TEST_F(MainFileTest, AFileShorterThanItsHeaderHasNoCards) {
  FileBytes bytes = EmptyMainFile();
  bytes.resize(200);
  files.SetContents(Path(".DAN"), bytes);
  EXPECT_EQ(OpenMain().count(), 0U);
}

TEST_F(MainFileTest, ACountAbove32767IsRewrittenInTheImageOnEveryOpen) {
  FileBytes bytes = EmptyMainFile();
  StoreLe16(bytes, 96, 0x8005);
  bytes.resize(768 * 2);
  files.SetContents(Path(".DAN"), bytes);
  for (int opening = 0; opening < 2; ++opening) {
    EXPECT_EQ(OpenMain().header().card_count(), 1);
    EXPECT_EQ(LoadLe16(MainFile(), 96), 0x8005);
  }
}

TEST_F(MainFileTest, CountAndStampAreWrittenWhereTheHeaderTells) {
  FileBytes bytes = EmptyMainFile();
  StoreLe32(bytes, 88, 120);
  bytes.resize(768 * 2);
  files.SetContents(Path(".DAN"), bytes);
  DirectoryFile main = OpenMain();
  main.header().set_stamp(0x3B9ACA00);
  main.SetCount(1);
  FileBytes expected = bytes;
  StorePadded(expected, 120, 2, std::string_view("\x01\x00", 2));
  StorePadded(expected, 126, 4, std::string_view("\x00\xCA\x9A\x3B", 4));
  EXPECT_TRUE(SameBytes(expected, MainFile()));
}

TEST_F(MainFileTest, OnlyTheImageIsWrittenBack) {
  FileBytes bytes = EmptyMainFile();
  std::fill_n(bytes.begin() + 108, 660, std::byte{0x77});
  files.SetContents(Path(".DAN"), bytes);
  DirectoryFile main = OpenMain();
  main.header().set_description(OemText("Clients"));
  main.header().set_owner(5);
  EXPECT_TRUE(main.WriteHeader());
  FileBytes expected = bytes;
  StorePadded(expected, 34, 42, "Clients");
  StoreLe16(expected, 106, 5);
  EXPECT_TRUE(SameBytes(expected, MainFile()));
}

TEST_F(MainFileTest, AnEmptyOrMissingFileIsNotOpened) {
  DirectoryFile main;
  EXPECT_FALSE(main.Open(files, Path(".DAN")));
  files.SetContents(Path(".DAN"), {});
  EXPECT_FALSE(main.Open(files, Path(".DAN")));
}

TEST_F(MainFileTest, TheMagicAndTheConstantsAreNotTested) {
  FileBytes bytes = EmptyMainFile();
  std::fill_n(bytes.begin() + 76, 12, std::byte{0});
  files.SetContents(Path(".DAN"), bytes);
  Open();
  EXPECT_EQ(open_result, OpenResult::kOpened);
}

TEST_F(MainFileTest, TheHeaderIsJudgedByItsVersion) {
  const auto open_with = [this](const char* version) {
    FileBytes bytes = EmptyMainFile();
    StorePadded(bytes, 25, 5, version);
    Close();
    files.SetContents(Path(".DAN"), bytes);
    Open();
    return open_result;
  };
  EXPECT_EQ(open_with("04.10"), OpenResult::kOlderVersion);
  EXPECT_EQ(open_with("04.99"), OpenResult::kOlderVersion);
  EXPECT_EQ(open_with("05.00"), OpenResult::kOpened);
  EXPECT_EQ(open_with("05.01"), OpenResult::kOpened);
  EXPECT_EQ(open_with("10.00"), OpenResult::kOpened);
}

TEST_F(MainFileTest, ABannerWithoutVerIsNoDirectory) {
  FileBytes bytes = EmptyMainFile();
  StorePadded(bytes, 0, 32, "AUTRE CHOSE");
  files.SetContents(Path(".DAN"), bytes);
  Open();
  EXPECT_EQ(open_result, OpenResult::kNoStore);
  EXPECT_TRUE(SameBytes(bytes, MainFile()));
}

}  // namespace
}  // namespace carnetel
