#include <gmock/gmock.h>

#include "tests/transfer/dbase_testing.h"

namespace carnetel {
namespace {

using testing::ElementsAre;
using testing::Pair;

constexpr int64_t k19991231 = 946'598'400;  // its first second
constexpr int64_t k20000101 = 946'684'800;
constexpr char kDate1999[] = "\x63\x0C\x1F";
const std::string kDate2000("\x00\x01\x01", 3);

class DbaseExport : public DbaseTest {
 protected:
  DbaseExport() { clock_.Set(k19991231); }

  static DbaseMapping NameAndTown() {
    return ExportMapping({{kSte1, "SOCIETE", 8}, {kVille, "VILLE", 6}});
  }
};

TEST_F(DbaseExport, WritesATableOfDbase3ByteForByte) {
  AddCards({MakeCard({{kSte1, "Zola"}, {kVille, "Lyon"}}),
            MakeCard({{kSte1, "Blanc et Cie"}, {kVille, "Paris"}, {kNotes, "jamais"}})},
           true);
  AddCards({MakeCard({{kSte1, "Martin"}})}, false);
  const TransferOutcome outcome = ExportTable(NameAndTown());
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.cards, 2u);
  EXPECT_EQ(outcome.message, "");
  EXPECT_EQ(Contents(kTable), TableHeader('\x03', kDate1999, 2, 96, 14) +
                                  Descriptor("SOCIETE", 'C', 0, 8) +
                                  Descriptor("VILLE", 'C', 8, 6) + "\r" +  //
                                  "Blanc etParis " + "Zola    Lyon  ");
  EXPECT_THAT(progress_.opened, ElementsAre(Pair(ProgressForm::kTransfer, 2u)));
  EXPECT_EQ(progress_.steps, 2);
  EXPECT_EQ(progress_.closed, 1);
}

TEST_F(DbaseExport, WritesATableOfDbase4ByteForByte) {
  AddCards({MakeCard({{kSte1, "Zola"}, {kTel1, "04 78"}, {kRef1, "1994"}})}, true);
  const DbaseMapping mapping = ExportMapping({{kRef1, "DEPUIS", 4, DbaseType::kDate},
                                              {kSte1, "SOCIETE", 5},
                                              {kTel1, "TEL", 7, DbaseType::kNumber}});
  EXPECT_EQ(ExportTable(mapping, false, TransferFileType::kDbase4).cards, 1u);
  EXPECT_EQ(Contents(kTable), TableHeader('\x43', kDate1999, 1, 128, 16) +
                                  Descriptor("SOCIETE", 'C', 0, 5) + Descriptor("TEL", 'N', 5, 7) +
                                  Descriptor("DEPUIS", 'D', 12, 4) + "\r" +  //
                                  "Zola 04 78  1994")
      << "columns stand in the order of the fields, numbers are texts as well";
}

TEST_F(DbaseExport, TheDefaultColumnsTakeEveryFieldButTheNotes) {
  AddCards({MakeCard({{kSte1, "Garage du Midi"},
                      {kSte2, "Atelier"},
                      {kAdr1, "12, rue Basse"},
                      {kAdr2, "BP 7"},
                      {kAdr3, "jamais"},
                      {kShortPostalCode, "69001"},
                      {kVille, "N\x8Cmes"},
                      {kPays, "France"},
                      {kQualite, "M."},
                      {kPrenom, "Andr\x82"},
                      {kNom, "Durand"},
                      {kSparePerson, "associ\x82"},
                      {kRef1, "un"},
                      {kRef1 + 1, "deux"},
                      {kRef1 + 2, "trois"},
                      {kRef1 + 3, "quatre"},
                      {kRef1 + 4, "cinq"},
                      {kRef6, "six"},
                      {kTel1, "04 78 01 02 03"},
                      {kTel2, "06 01"},
                      {kMtel, "3615 GARAGE"},
                      {kServiceType, "x"},
                      {kFax, "04 78 00"},
                      {kNinit, "y"},
                      {kModem, "04 79"},
                      {kPostalCode, "69002 CEDEX"},
                      {kNotes, "jamais"},
                      {kSpare27, "z"}})},
           true);
  EXPECT_EQ(ExportTable(DefaultExportMapping()).cards, 1u);
  const std::vector<std::pair<std::string, std::pair<int, std::string>>> columns = {
      {"STE1", {32, "Garage du Midi"}},
      {"STE2", {32, "Atelier"}},
      {"ADRESSE1", {32, "12, rue Basse"}},
      {"ADRESSE2", {32, "BP 7"}},
      {"CODEPOST", {14, "69002 CEDEX"}},
      {"VILLE", {32, "N\x8Cmes"}},
      {"PAYS", {32, "France"}},
      {"TELEPHONE1", {24, "04 78 01 02 03"}},
      {"TELEPHONE2", {24, "06 01"}},
      {"TELECOPIE", {21, "04 78 00"}},
      {"MODEM", {21, "04 79"}},
      {"MINITEL", {21, "3615 GARAGE"}},
      {"REFERENCE1", {24, "un"}},
      {"REFERENCE2", {24, "deux"}},
      {"REFERENCE3", {24, "trois"}},
      {"REFERENCE4", {24, "quatre"}},
      {"REFERENCE5", {24, "cinq"}},
      {"REFERENCE6", {24, "six"}},
      {"QUALITE", {24, "M."}},
      {"PRENOM", {24, "Andr\x82"}},
      {"NOM", {32, "Durand"}},
      {"VIDE", {16, "associ\x82"}}};
  std::string table = TableHeader('\x03', kDate1999, 1, 32 + 22 * 32, 557);
  std::string record;
  for (const auto& [name, content] : columns) {
    table += Descriptor(name, 'C', static_cast<uint32_t>(record.size()), content.first);
    record += Padded(content.second, static_cast<size_t>(content.first));
  }
  EXPECT_EQ(record.size(), 557u);
  EXPECT_EQ(Contents(kTable), table + "\r" + record);
}

TEST_F(DbaseExport, TheYearIsToldInOneByte) {
  AddCards({MakeCard({{kSte1, "A"}})}, true);
  EXPECT_EQ(ExportTable(NameAndTown(), /*replace=*/true).cards, 1u);
  EXPECT_EQ(Contents(kTable).substr(1, 3), "\x63\x0C\x1F") << "99";
  clock_.Set(k20000101);
  EXPECT_EQ(ExportTable(NameAndTown(), /*replace=*/true).cards, 1u);
  EXPECT_EQ(Contents(kTable).substr(1, 3), kDate2000) << "0";
  clock_.Set(1'771'545'600);  // 2026-02-20
  EXPECT_EQ(ExportTable(NameAndTown(), /*replace=*/true).cards, 1u);
  EXPECT_EQ(Contents(kTable).substr(1, 3), "\x1A\x02\x14");
  clock_.Set(0);
  EXPECT_EQ(ExportTable(NameAndTown(), /*replace=*/true).cards, 1u);
  EXPECT_EQ(Contents(kTable).substr(1, 3), "\x46\x01\x01");
}

TEST_F(DbaseExport, TheDateIsThatOfTheUsersClock) {
  AddCards({MakeCard({{kSte1, "A"}})}, true);
  clock_.Set(k20000101 - 1);
  clock_.SetLocalAhead(3600);
  EXPECT_EQ(ExportTable(NameAndTown(), /*replace=*/true).cards, 1u);
  EXPECT_EQ(Contents(kTable).substr(1, 3), kDate2000);
  clock_.Set(k20000101);
  clock_.SetLocalAhead(-3600);
  EXPECT_EQ(ExportTable(NameAndTown(), /*replace=*/true).cards, 1u);
  EXPECT_EQ(Contents(kTable).substr(1, 3), kDate1999);
}

TEST_F(DbaseExport, ACardWithoutAPostalCodeExportsTheShortOne) {
  AddCards({MakeCard({{kSte1, "A"}, {kShortPostalCode, "69001"}}),
            MakeCard({{kSte1, "B"}, {kShortPostalCode, "69001"}, {kPostalCode, "75002"}})},
           true);
  EXPECT_EQ(ExportTable(ExportMapping({{kPostalCode, "CP", 7}})).cards, 2u);
  EXPECT_EQ(Contents(kTable).substr(65), "69001  75002  ");
}

TEST_F(DbaseExport, AColumnLongerThanItsFieldIsFilledWithBlanks) {
  AddCards({MakeCard({{kSte1, std::string(32, 'A')}, {kSte2, "second"}})}, true);
  EXPECT_EQ(ExportTable(ExportMapping({{kSte1, "S", 40}, {kShortPostalCode, "NO", 5}})).cards, 1u);
  EXPECT_EQ(Contents(kTable).substr(65), std::string(32, 'A') + std::string(8, ' '))
      << "the text ends with its field, and fields that no table takes have no column";
}

TEST_F(DbaseExport, WithoutANameOrALengthThereIsNoColumn) {
  AddCards({MakeCard({{kSte1, "Zola"}, {kSte2, "x"}, {kAdr1, "y"}, {kVille, "Lyon"}})}, true);
  const DbaseMapping mapping = ExportMapping(
      {{kSte1, "SOCIETE", 5}, {kSte2, "", 5}, {kAdr1, "RUE", 0}, {kVille, "VILLE", 5}});
  EXPECT_EQ(ExportTable(mapping).cards, 1u);
  EXPECT_EQ(Contents(kTable), TableHeader('\x03', kDate1999, 1, 96, 10) +
                                  Descriptor("SOCIETE", 'C', 0, 5) +
                                  Descriptor("VILLE", 'C', 5, 5) + "\rZola Lyon ");
}

TEST_F(DbaseExport, TheNotesHaveNoColumnEvenWithAName) {
  AddCards({MakeCard({{kSte1, "Zola"}, {kNotes, "jamais"}})}, true);
  EXPECT_EQ(ExportTable(ExportMapping({{kSte1, "SOCIETE", 5}, {kNotes, "NOTES", 9}})).cards, 1u);
  EXPECT_EQ(Contents(kTable), TableHeader('\x03', kDate1999, 1, 64, 5) +
                                  Descriptor("SOCIETE", 'C', 0, 5) + "\rZola ");
}

TEST_F(DbaseExport, WithoutColumnsOnlyRecordsAreCounted) {
  AddCards({MakeCard({{kSte1, "A"}}), MakeCard({{kSte1, "B"}})}, true);
  EXPECT_EQ(ExportTable(ExportMapping({})).cards, 2u);
  EXPECT_EQ(Contents(kTable), TableHeader('\x03', kDate1999, 2, 32, 0) + "\r");
}

TEST_F(DbaseExport, NamesAreCutAt10CharactersAndUnknownTypesAreC) {
  AddCards({MakeCard({{kSte1, "A"}})}, true);
  const DbaseMapping mapping =
      ExportMapping({{kSte1, "SOCIETE_12X", 1, static_cast<DbaseType>(7)}});
  EXPECT_EQ(ExportTable(mapping).cards, 1u);
  EXPECT_EQ(Contents(kTable).substr(32, 32), Descriptor("SOCIETE_12", 'C', 0, 1));
}

TEST_F(DbaseExport, AnsiConvertsTheRecord) {
  AddCards({MakeCard({{kSte1, "Zo\x89"}, {kVille, "N\x8Cmes"}})}, true);
  EXPECT_EQ(ExportTable(NameAndTown(), false, TransferFileType::kDbase3, CharacterSet::kAnsi).cards,
            1u);
  EXPECT_EQ(Contents(kTable).substr(97), "Zo\xEB     N\xEEmes ");
}

TEST_F(DbaseExport, OfALongRecord768BytesAreConverted) {
  AddCards({MakeCard({{kSte1, "\x82"},
                      {kSte2, "\x82"},
                      {kAdr1, "\x82"},
                      {kAdr2, "\x82"},
                      {kVille, "\x82\x82\x82\x82"}})},
           true);
  const DbaseMapping mapping = ExportMapping(
      {{kSte1, "A", 255}, {kSte2, "B", 255}, {kAdr1, "C", 255}, {kAdr2, "D", 1}, {kVille, "E", 9}});
  EXPECT_EQ(ExportTable(mapping, false, TransferFileType::kDbase3, CharacterSet::kAnsi).cards, 1u);
  const std::string record = Contents(kTable).substr(32 + 5 * 32 + 1);
  ASSERT_EQ(record.size(), 775u);
  EXPECT_EQ(record.substr(765), "\xE9\xE9\xE9\x82\x82     ");
}

TEST_F(DbaseExport, AddModeRaisesTheCountAndLeavesTheRestOfTheHeader) {
  AddCards({MakeCard({{kSte1, "Zola"}, {kVille, "Lyon"}})}, true);
  EXPECT_EQ(ExportTable(NameAndTown()).cards, 1u);
  clock_.Set(k20000101);
  EXPECT_EQ(ExportTable(NameAndTown(), false, TransferFileType::kDbase4).cards, 1u);
  EXPECT_EQ(Contents(kTable), TableHeader('\x03', kDate1999, 2, 96, 14) +
                                  Descriptor("SOCIETE", 'C', 0, 8) +
                                  Descriptor("VILLE", 'C', 8, 6) + "\r" +  //
                                  "Zola    Lyon  " + "Zola    Lyon  ");
}

TEST_F(DbaseExport, AddModeTakesTheRecordLengthOfTheTable) {
  AddCards({MakeCard({{kSte1, "Zola"}, {kVille, "Lyon"}})}, true);
  const std::string shorter = TableHeader('\x03', "abc", 7, 500, 11) + "what stands here stays";
  SetTable(shorter);
  EXPECT_EQ(ExportTable(NameAndTown()).cards, 1u);
  EXPECT_EQ(Contents(kTable),
            TableHeader('\x03', "abc", 8, 500, 11) + "what stands here stays" + "Zola    Lyo");
  const std::string longer = TableHeader('\x43', "abc", 7, 500, 20) + "what stands here stays";
  SetTable(longer);
  EXPECT_EQ(ExportTable(NameAndTown()).cards, 1u);
  EXPECT_EQ(Contents(kTable), TableHeader('\x43', "abc", 8, 500, 20) + "what stands here stays" +
                                  "Zola    Lyon        ");
}

TEST_F(DbaseExport, AddModeWithAnyBytesInFrontNeitherCrashesNorChangesThem) {
  AddCards({MakeCard({{kSte1, "Zola"}})}, true);
  std::string odd = TableHeader('\x7F', "abc", 0xFFFFFFFF, 65535, 65535);
  SetTable(odd);
  EXPECT_EQ(ExportTable(NameAndTown()).cards, 1u);
  odd.replace(4, 4, Le32(0));
  EXPECT_EQ(Contents(kTable), odd + "Zola" + std::string(65531, ' '));
}

TEST_F(DbaseExport, ATableThatEndsInItsHeaderCannotBeAddedTo) {
  AddCards({MakeCard({{kSte1, "Zola"}})}, true);
  const std::string torn = TableHeader('\x03', "abc", 7, 500, 11).substr(0, 31);
  SetTable(torn);
  const TransferOutcome outcome = ExportTable(NameAndTown());
  EXPECT_EQ(outcome.result, -1);
  EXPECT_EQ(outcome.message, "/tables/CLIENTS.DBF\nErreur en lecture...");
  EXPECT_EQ(outcome.title_id, 104);
  EXPECT_EQ(Contents(kTable), torn);
}

TEST_F(DbaseExport, ReplaceMakesANewTable) {
  AddCards({MakeCard({{kSte1, "Zola"}, {kVille, "Lyon"}})}, true);
  SetTable(std::string(5000, 'x'));
  EXPECT_EQ(ExportTable(NameAndTown(), /*replace=*/true).cards, 1u);
  EXPECT_EQ(Contents(kTable).substr(0, 32), TableHeader('\x03', kDate1999, 1, 96, 14));
  EXPECT_EQ(Contents(kTable).size(), 97u + 14u);
}

TEST_F(DbaseExport, WithNothingMarkedTheFirstHeaderStands) {
  AddCards({MakeCard({{kSte1, "Zola"}})}, false);
  const TransferOutcome outcome = ExportTable(NameAndTown());
  EXPECT_EQ(outcome.result, -1);
  EXPECT_EQ(outcome.message, "");
  EXPECT_EQ(Contents(kTable), TableHeader('\x03', kDate1999, 0, 801, 768) +
                                  Descriptor("SOCIETE", 'C', 0, 8) +
                                  Descriptor("VILLE", 'C', 8, 6) + "\r");
  EXPECT_TRUE(progress_.opened.empty());
}

TEST_F(DbaseExport, WithNothingMarkedAnExistingTableStays) {
  AddCards({MakeCard({{kSte1, "Zola"}})}, false);
  const std::string table = TableHeader('\x03', "abc", 7, 500, 11) + "what stands here stays";
  SetTable(table);
  EXPECT_EQ(ExportTable(NameAndTown()).result, -1);
  EXPECT_EQ(Contents(kTable), table);
}

TEST_F(DbaseExport, WithoutAMappingNothingIsTouched) {
  AddCards({MakeCard({{kSte1, "Zola"}})}, true);
  SetTable("as before");
  DbaseMapping mapping = NameAndTown();
  mapping.kind = 0;
  const TransferOutcome outcome = ExportTable(mapping, /*replace=*/true);
  EXPECT_EQ(outcome.result, -1);
  EXPECT_EQ(outcome.message, "Format du Fichier Dbase non reconnu");
  EXPECT_EQ(outcome.title_id, 104);
  EXPECT_EQ(Contents(kTable), "as before");
}

TEST_F(DbaseExport, ADestinationThatCannotBeOpenedIsTold) {
  AddCards({MakeCard({{kSte1, "Zola"}})}, true);
  ASSERT_TRUE(files_.MakeFolder(kTable));
  const TransferOutcome outcome = ExportTable(NameAndTown());
  EXPECT_EQ(outcome.result, -1);
  EXPECT_EQ(outcome.message, "/tables/CLIENTS.DBF\nErreur en lecture...");
  EXPECT_EQ(outcome.title_id, 104);
}

TEST_F(DbaseExport, AnAbortKeepsAndCountsTheRecordsAlreadyWritten) {
  AddCards({MakeCard({{kSte1, "A"}}), MakeCard({{kSte1, "B"}}), MakeCard({{kSte1, "C"}})}, true);
  progress_.abort_after = 2;
  const TransferOutcome outcome = ExportTable(ExportMapping({{kSte1, "S", 1}}));
  EXPECT_EQ(outcome.result, 0);
  EXPECT_TRUE(outcome.aborted);
  EXPECT_EQ(outcome.cards, 2u);
  EXPECT_EQ(Contents(kTable),
            TableHeader('\x03', kDate1999, 2, 64, 1) + Descriptor("S", 'C', 0, 1) + "\rAB");
}

TEST_F(DbaseExport, ACardThatCannotBeReadIsToldAndTheOthersCount) {
  AddCards({MakeCard({{kSte1, "A"}}), MakeCard({{kSte1, "B"}})}, true);
  Directory directory(Services(), Options());
  ASSERT_EQ(directory.OpenDirectory(), OpenResult::kOpened);
  files_.SetContents(kMain, AsBytes(Contents(kMain).substr(0, 3 * kCardSize - 1)));
  const TransferOutcome outcome =
      ExportDbase(directory, ExportMapping({{kSte1, "S", 1}}), TransferFileType::kDbase3,
                  {kTable, false, CharacterSet::kOem});
  EXPECT_EQ(outcome.result, -1);
  EXPECT_EQ(outcome.message, "/dir/CLIENTS.DAN\nErreur en lecture...");
  EXPECT_EQ(outcome.title_id, 104);
  EXPECT_EQ(outcome.cards, 1u);
  EXPECT_EQ(Contents(kTable),
            TableHeader('\x03', kDate1999, 1, 64, 1) + Descriptor("S", 'C', 0, 1) + "\rA");
}

class DbaseExportOntoAFullDisk : public DbaseExport {
 protected:
  // The disk is full once so many cards were exported; 0: from the start.
  TransferOutcome ExportOnto(int cards_before_full, const DbaseMapping& mapping) {
    FaultFileSystem disk(files_);
    Directory directory({disk, clock_, progress_}, Options());
    EXPECT_EQ(directory.OpenDirectory(), OpenResult::kOpened);
    progress_.steps = 0;
    progress_.act_after = cards_before_full;
    progress_.act = [&disk] { disk.FillDisk(); };
    if (cards_before_full == 0) disk.FillDisk();
    return ExportDbase(directory, mapping, TransferFileType::kDbase3,
                       {kTable, false, CharacterSet::kOem});
  }
};

TEST_F(DbaseExportOntoAFullDisk, IsToldWhenNotEvenTheHeaderFits) {
  AddCards({MakeCard({{kSte1, "A"}})}, true);
  const TransferOutcome outcome = ExportOnto(0, NameAndTown());
  EXPECT_EQ(outcome.result, -1);
  EXPECT_EQ(outcome.message, "/tables/CLIENTS.DBF\nErreur en écriture...");
  EXPECT_EQ(outcome.title_id, 104);
  EXPECT_EQ(outcome.cards, 0u);
}

TEST_F(DbaseExportOntoAFullDisk, OnlyRecordsThatReachedTheFileAreCounted) {
  Fill(300, [](int /*number*/) { return MakeCard({{kSte1, "A"}}); });
  // Records of 510 bytes, 129 to a block of 64 KB.
  const DbaseMapping mapping = ExportMapping({{kSte1, "S", 255}, {kSte2, "T", 255}});
  const TransferOutcome outcome = ExportOnto(200, mapping);
  EXPECT_EQ(outcome.result, -1);
  EXPECT_EQ(outcome.message, "/tables/CLIENTS.DBF\nErreur en écriture...");
  EXPECT_EQ(outcome.cards, 129u);
  EXPECT_EQ(Contents(kTable).size(), 97u + 129u * 510u);
  EXPECT_EQ(Contents(kTable).substr(0, 32), TableHeader('\x03', kDate1999, 129, 96, 510));
  EXPECT_EQ(progress_.closed, static_cast<int>(progress_.opened.size()));
}

TEST_F(DbaseExportOntoAFullDisk, ATornBlockIsCutOffSoThatLaterRecordsFallInPlace) {
  AddCards({MakeCard({{kSte1, "A"}}), MakeCard({{kSte1, "B"}})}, true);
  const DbaseMapping mapping = ExportMapping({{kSte1, "S", 4}});
  ASSERT_EQ(ExportTable(mapping).cards, 2u);
  const std::string before = Contents(kTable);

  // A disk that takes 6 bytes of the 8 and no more, but still cuts.
  class TornFile : public File {
   public:
    explicit TornFile(std::unique_ptr<File> file) : file_(std::move(file)) {}
    size_t Read(uint64_t position, ByteSpan into) override { return file_->Read(position, into); }
    uint64_t Size() override { return file_->Size(); }
    bool Write(uint64_t position, ByteView bytes) override {
      if (position == 0) return file_->Write(position, bytes);
      file_->Write(position, bytes.first(6));
      return Remember(false);
    }
    bool Truncate(uint64_t size) override { return file_->Truncate(size); }
    bool Sync() override { return true; }
    int64_t ModificationTime() override { return 0; }
    bool SetModificationTime(int64_t /*seconds*/) override { return true; }

   private:
    std::unique_ptr<File> file_;
  };
  class TornDisk : public FaultFileSystem {
   public:
    using FaultFileSystem::FaultFileSystem;
    std::unique_ptr<File> Open(const std::string& path, OpenMode mode) override {
      std::unique_ptr<File> file = FaultFileSystem::Open(path, mode);
      if (path == kTable && file != nullptr) return std::make_unique<TornFile>(std::move(file));
      return file;
    }
  };
  TornDisk disk(files_);
  Directory directory({disk, clock_, progress_}, Options());
  ASSERT_EQ(directory.OpenDirectory(), OpenResult::kOpened);
  const TransferOutcome outcome = ExportDbase(directory, mapping, TransferFileType::kDbase3,
                                              {kTable, false, CharacterSet::kOem});
  EXPECT_EQ(outcome.result, -1);
  EXPECT_EQ(outcome.cards, 0u);
  EXPECT_EQ(Contents(kTable), before);
}

}  // namespace
}  // namespace carnetel
