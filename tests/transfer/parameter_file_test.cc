#include "transfer/parameter_file.h"

#include <gtest/gtest.h>

#include <string>

#include "platform/fault_file_system.h"
#include "platform/memory_file_system.h"
#include "tests/transfer/parameter_bytes.h"

namespace carnetel {
namespace {

constexpr auto kImport = TransferDirection::kImport;
constexpr auto kExport = TransferDirection::kExport;
constexpr auto kDelimited = TransferFileType::kDelimited;
constexpr auto kDbase3 = TransferFileType::kDbase3;
constexpr auto kRead = ParameterFile::Access::kRead;
constexpr auto kWrite = ParameterFile::Access::kWrite;
constexpr char kPath[] = "/home/CARNETEL.TRS";

class ParameterFileTest : public testing::Test {
 protected:
  std::string Contents() { return std::string(AsChars(files_.Contents(kPath))); }
  void SetContents(const std::string& text) { files_.SetContents(kPath, AsBytes(text)); }

  FakeClock clock_{1000};
  MemoryFileSystem files_{clock_};
};

TEST_F(ParameterFileTest, AMissingFileIsMadeByteForByte) {
  ParameterFile parameters(files_, kPath);
  parameters.StartTransfer(kImport);
  EXPECT_EQ(Contents(), NewFile());
}

TEST_F(ParameterFileTest, ANewInstallationOffersSemicolonAndCrLf) {
  ParameterFile parameters(files_, kPath);
  EXPECT_EQ(parameters.profile().field_separator(), "22h 2Ch");
  parameters.StartTransfer(kImport);
  EXPECT_EQ(parameters.profile().field_separator(), ";");
  EXPECT_EQ(parameters.profile().card_separator(), "CRLF");
}

TEST_F(ParameterFileTest, ReadOfAMissingFileFailsAndChangesNothing) {
  ParameterFile parameters(files_, kPath);
  parameters.profile().set_rank(kVille, 77);
  EXPECT_EQ(parameters.AccessParameterFile(kRead, kDelimited, kImport), -1);
  EXPECT_EQ(parameters.AccessParameterFile(kRead, kDbase3, kImport), -1);
  EXPECT_EQ(parameters.profile().rank(kVille), 77);
  EXPECT_FALSE(files_.Exists(kPath));
}

TEST_F(ParameterFileTest, TheLastFormatComesBack) {
  ParameterFile first(files_, kPath);
  first.StartTransfer(kImport);
  first.profile().set_field_separator("TAB");
  first.profile().set_rank(kSpare30, 24);
  first.header().set_last_type(TransferFileType::kFixed);
  EXPECT_EQ(first.AccessParameterFile(kWrite, kDelimited, kImport), 0);

  ParameterFile second(files_, kPath);
  second.StartTransfer(kExport);
  EXPECT_EQ(second.profile().field_separator(), "TAB");
  EXPECT_EQ(second.profile().rank(kSpare30), 24);
  EXPECT_EQ(second.profile().type(), 1) << "the type of the last transfer";
  EXPECT_EQ(second.header().direction(), 1);
}

TEST_F(ParameterFileTest, AWriteChangesHeaderAndLastFormatSlotAlone) {
  std::string file = NewFile() + std::string(2 * 628, 'p');
  file.replace(756, 2 * 628, std::string(2 * 628, 'd'));
  file.replace(128 + 236, 392, std::string(392, 'x'));
  PutLe16(file, 92, 3);
  SetContents(file);
  ParameterFile parameters(files_, kPath);
  parameters.StartTransfer(kExport);
  parameters.profile().set_card_separator("LF");
  parameters.header().set_last_type(TransferFileType::kDirectory);
  EXPECT_EQ(parameters.AccessParameterFile(kWrite, kDelimited, kExport), 0);

  file[106] = 2;
  file[107] = 1;
  file.replace(128 + 37, 4, "LF\0\0", 4);
  file.replace(128 + 236, 392, std::string(392, '\0'));
  EXPECT_EQ(Contents(), file);
}

TEST_F(ParameterFileTest, AWriteMakesAMissingFile) {
  ParameterFile parameters(files_, kPath);
  EXPECT_EQ(parameters.AccessParameterFile(kWrite, kDelimited, kImport), 0);
  EXPECT_EQ(Contents().size(), 128u + 628u);
  EXPECT_EQ(LoadLe16(files_.Contents(kPath), 92), 1) << "the count is at least 1";
}

TEST_F(ParameterFileTest, ANegativeSlotCountIsRaisedToOne) {
  ParameterFile parameters(files_, kPath);
  parameters.header().set_slot_count(-5);
  EXPECT_EQ(parameters.AccessParameterFile(kWrite, kDelimited, kImport), 0);
  EXPECT_EQ(LoadLe16(files_.Contents(kPath), 92), 1);
}

TEST_F(ParameterFileTest, TextsOfTheHeaderAreNotCompared) {
  std::string file = NewFile();
  file.replace(0, 92, std::string(92, '?'));
  SetContents(file);
  ParameterFile parameters(files_, kPath);
  EXPECT_EQ(parameters.AccessParameterFile(kRead, kDelimited, kImport), 0);
  EXPECT_EQ(parameters.profile(), TransferProfile::OfNewInstallation());
}

TEST_F(ParameterFileTest, AnOldFileIsReadThroughItsOwnOffsets) {
  std::string file = NewFile();
  std::string moved = file.substr(0, 128) + std::string(100, '\0') + file.substr(128);
  PutLe16(moved, 96, 228);
  PutLe16(moved, 98, 856);
  PutLe16(moved, 102, 1484);
  moved[228 + 27] = ',';
  moved[856 + 24] = '\xFE';
  moved.replace(856, 3, "OLD");
  SetContents(moved);
  ParameterFile parameters(files_, kPath);
  parameters.StartTransfer(kImport);
  EXPECT_EQ(parameters.profile().field_separator(), ",");
  EXPECT_EQ(parameters.AccessParameterFile(kRead, kDbase3, kImport), 0);
  EXPECT_EQ(parameters.mapping(kImport).name.bytes(), "OLD");
  EXPECT_EQ(parameters.header().saved_profile_offset(0), 228u + 1884u);
}

TEST_F(ParameterFileTest, EachTransferCommandResetsTheOffsetsBeforeItReads) {
  std::string file = NewFile();
  PutLe16(file, 96, 0);
  SetContents(file);
  ParameterFile parameters(files_, kPath);
  parameters.StartTransfer(kImport);
  EXPECT_EQ(parameters.header().last_format_offset(), 0);
  files_.Remove(kPath);
  parameters.StartTransfer(kImport);
  EXPECT_EQ(Contents(), NewFile());
}

TEST_F(ParameterFileTest, SavedProfilesStartAt2012) {
  const ParameterHeader header;
  EXPECT_EQ(header.saved_profile_offset(0), 2012u);
  EXPECT_EQ(header.saved_profile_offset(3), 2012u + 3 * 628u);
}

TEST_F(ParameterFileTest, ANewFileHasNoDbaseMapping) {
  ParameterFile parameters(files_, kPath);
  parameters.StartTransfer(kImport);
  EXPECT_EQ(parameters.AccessParameterFile(kRead, kDbase3, kImport), -1);
  EXPECT_EQ(parameters.AccessParameterFile(kRead, TransferFileType::kDbase4, kExport), -1);
  EXPECT_EQ(parameters.header().last_type(), 4) << "noted all the same";
}

TEST_F(ParameterFileTest, ASlotOfALowerKindIsNoMapping) {
  std::string file = NewFile();
  file[756 + 24] = '\xFD';
  SetContents(file);
  ParameterFile parameters(files_, kPath);
  parameters.mapping(kImport).name = OemText("as before");
  EXPECT_EQ(parameters.AccessParameterFile(kRead, kDbase3, kImport), -1);
  EXPECT_EQ(parameters.mapping(kImport).name.bytes(), "as before");
}

TEST_F(ParameterFileTest, EachDirectionHasAMappingOfItsOwn) {
  ParameterFile first(files_, kPath);
  first.StartTransfer(kImport);
  first.mapping(kImport) = {OemText("IMPORT DBF"), kDbaseImportKind, {}, kImport, {}};
  first.mapping(kExport) = {OemText("EXPORT DBF"), kDbaseExportKind, {}, kExport, {}};
  EXPECT_EQ(first.AccessParameterFile(kWrite, kDbase3, kImport), 0);
  EXPECT_EQ(first.AccessParameterFile(kWrite, kDbase3, kExport), 0);

  ParameterFile second(files_, kPath);
  EXPECT_EQ(second.AccessParameterFile(kRead, kDbase3, kImport), 0);
  EXPECT_EQ(second.AccessParameterFile(kRead, kDbase3, kExport), 0);
  EXPECT_EQ(second.mapping(kImport), first.mapping(kImport));
  EXPECT_EQ(second.mapping(kExport), first.mapping(kExport));
  std::string file = NewFile();
  file[756 + 24] = '\xFE';
  file.replace(756, 10, "IMPORT DBF");
  file[1384 + 24] = '\xFF';
  file.replace(1384, 10, "EXPORT DBF");
  file[1384 + 38] = 1;
  EXPECT_EQ(Contents(), file);
}

TEST_F(ParameterFileTest, ATornFileIsMadeAnew) {
  SetContents(NewFile().substr(0, 200));
  ParameterFile parameters(files_, kPath);
  parameters.StartTransfer(kImport);
  EXPECT_EQ(Contents(), NewFile());
}

TEST_F(ParameterFileTest, AFileUnderAnotherCaseIsUsed) {
  files_.SetContents("/home/carnetel.trs", AsBytes(NewFile()));
  ParameterFile parameters(files_, kPath);
  parameters.profile().set_rank(kVille, 99);
  EXPECT_EQ(parameters.AccessParameterFile(kWrite, kDelimited, kImport), 0);
  EXPECT_FALSE(files_.Exists(kPath));
  EXPECT_EQ(parameters.AccessParameterFile(kRead, kDelimited, kImport), 0);
  EXPECT_EQ(parameters.profile().rank(kVille), 99);
}

TEST_F(ParameterFileTest, WithoutADiskThereIsStillAProfileToWorkWith) {
  FaultFileSystem broken(files_);
  broken.StopAfter(0);
  ParameterFile parameters(broken, kPath);
  parameters.StartTransfer(kImport);
  EXPECT_EQ(parameters.profile(), TransferProfile::OfNewInstallation());
  EXPECT_FALSE(files_.Exists(kPath));
}

}  // namespace
}  // namespace carnetel
