#include "transfer/dbase_forms.h"

#include <gmock/gmock.h>

#include "tests/transfer/dbase_testing.h"
#include "tests/transfer/parameter_bytes.h"

namespace carnetel {
namespace {

using testing::ElementsAre;

constexpr char kParameters[] = "/home/CARNETEL.TRS";
constexpr auto kDbase3 = TransferFileType::kDbase3;
constexpr auto kImport = TransferDirection::kImport;
constexpr auto kExport = TransferDirection::kExport;

class DbaseForms : public DbaseTest {
 protected:
  DbaseForms() { parameters_.StartTransfer(kImport); }

  // A form for a table with the columns NOM, VILLE and T\xE9l.
  DbaseImportForm FormForTable() {
    SetTable(Table({{"NOM", 20}, {"VILLE", 5}, {"T\x82L", 10}}, {}));
    TransferFileType type = kDbase3;
    const auto outcome = ReadDbaseHeader(files_, parameters_, messages_, kTable, &type);
    EXPECT_EQ(outcome.result, DbaseHeaderOutcome::Result::kRead);
    return {parameters_, kTable, type};
  }
  // One row of a slot, byte by byte.
  static std::string Row(std::string_view name, int length, uint32_t offset, int type, int map) {
    return Padded(name, 12, '\0') + static_cast<char>(length) + Le32(offset) +
           static_cast<char>(type) + static_cast<char>(map);
  }

  ParameterFile parameters_{files_, kParameters};
  SilentMessages messages_;
};

TEST_F(DbaseForms, ListsOfferTheColumnsAndAnEmptyLastEntry) {
  const DbaseImportForm form = FormForTable();
  EXPECT_THAT(form.Entries(), ElementsAre("NOM", "VILLE", "TéL", ""));
}

TEST_F(DbaseForms, ANewTableIsMappedToNothingButTheCompany) {
  const DbaseImportForm form = FormForTable();
  EXPECT_EQ(form.position(kSte1), 0) << "there a 0 is the first column";
  for (const int field : kDbaseFields.subspan(1)) EXPECT_EQ(form.position(field), 3) << field;
}

TEST_F(DbaseForms, PositionsOutsideTheListAreItsLastEntry) {
  DbaseImportForm form = FormForTable();
  for (const int position : {3, 4, 31, -1}) {
    form.SetPosition(kVille, position);
    EXPECT_EQ(form.position(kVille), 3) << position;
  }
}

TEST_F(DbaseForms, ConfirmingWritesTheImportSlotByteForByte) {
  DbaseImportForm form = FormForTable();
  form.SetPosition(kSte1, 3);
  form.SetPosition(kNom, 0);
  form.SetPosition(kVille, 1);
  form.SetPosition(kTel1, 2);
  form.Confirm();
  std::string slot = Padded("IMPORT DBF", 24, '\0') + "\xFE" + Padded("CLIENTS.DBF", 13, '\0');
  slot += '\0';
  // Row r is column r of the table and, in its last byte, the column of field r.
  const std::vector<std::pair<std::string, std::pair<int, uint32_t>>> columns = {
      {"NOM", {20, 1}}, {"VILLE", {5, 21}}, {"T\x82L", {10, 26}}};
  for (int row = 0; row < kFieldCount; ++row) {
    const bool mapped = std::ranges::find(kDbaseFields, row) != kDbaseFields.end();
    int map = mapped ? 3 : 0;
    if (row == kNom) map = 0;
    if (row == kVille) map = 1;
    if (row == kTel1) map = 2;
    const auto number = static_cast<size_t>(row);
    slot += number < columns.size() ? Row(columns[number].first, columns[number].second.first,
                                          columns[number].second.second, 0, map)
                                    : Row("", 0, 0, 0, map);
  }
  ASSERT_EQ(slot.size(), 628u);
  std::string file = NewFile();
  file.replace(756, 628, slot);
  file[106] = 3;
  EXPECT_EQ(Contents(kParameters), file);
}

TEST_F(DbaseForms, WhatWasConfirmedIsWhatTheRunTakes) {
  DbaseImportForm form = FormForTable();
  form.SetPosition(kSte1, 3);
  form.SetPosition(kNom, 0);
  form.SetPosition(kVille, 1);
  form.Confirm();
  const DbaseMapping stored = ReadStoredMapping(parameters_, kDbase3, kImport);
  EXPECT_EQ(
      ImportTable(Table({{"NOM", 20}, {"VILLE", 5}, {"TEL", 10}}, {Padded("Durand", 20) + "Lyon"}),
                  stored)
          .cards,
      1u);
  EXPECT_EQ(Card(0), MakeCard({{kNom, "Durand"}, {kVille, "Lyon"}}))
      << "a field without a column takes nothing, above all not the first one";
}

TEST_F(DbaseForms, ATableSeenBeforeShowsWhatWasConfirmed) {
  DbaseImportForm first = FormForTable();
  first.SetPosition(kSte1, 3);
  first.SetPosition(kVille, 1);
  first.SetPosition(kNom, 0);
  first.Confirm();
  const DbaseImportForm again = FormForTable();
  EXPECT_EQ(again.position(kSte1), 3);
  EXPECT_EQ(again.position(kVille), 1);
  EXPECT_EQ(again.position(kPays), 3);
  EXPECT_EQ(again.position(kNom), 3) << "a 0 shows as nothing, except for the company";
}

TEST_F(DbaseForms, ReferencesTakeTheirTurnInOnePlace) {
  DbaseImportForm form = FormForTable();
  EXPECT_EQ(form.reference().field(), kRef1);
  form.SetPosition(form.reference().field(), 1);
  form.reference().Choose(5);
  EXPECT_EQ(form.reference().field(), kRef6);
  EXPECT_EQ(form.position(form.reference().field()), 3);
  form.SetPosition(form.reference().field(), 2);
  form.reference().Choose(0);
  EXPECT_EQ(form.position(form.reference().field()), 1);
  form.Confirm();
  const DbaseMapping& mapping = parameters_.mapping(kImport);
  EXPECT_EQ(mapping.columns[kRef1].map, 1);
  EXPECT_EQ(mapping.columns[kRef6].map, 2);
  EXPECT_EQ(mapping.columns[kRef1 + 1].map, 3);
}

TEST_F(DbaseForms, ThePreviousConfigurationComesBack) {
  DbaseImportForm first = FormForTable();
  first.SetPosition(kVille, 1);
  first.Confirm();
  files_.SetContents("/tables/NEW.DBF", AsBytes(Table({{"A", 3}, {"B", 3}}, {})));
  TransferFileType type = kDbase3;
  EXPECT_EQ(ReadDbaseHeader(files_, parameters_, messages_, "/tables/NEW.DBF", &type).result,
            DbaseHeaderOutcome::Result::kRead);
  DbaseImportForm form(parameters_, "/tables/NEW.DBF", type);
  EXPECT_THAT(form.Entries(), ElementsAre("A", "B", ""));
  EXPECT_EQ(form.position(kVille), 2);
  EXPECT_TRUE(form.TakePrevious());
  EXPECT_THAT(form.Entries(), ElementsAre("NOM", "VILLE", "TéL", ""));
  EXPECT_EQ(form.position(kVille), 1);
  form.Confirm();
  EXPECT_EQ(parameters_.mapping(kImport).file_name.bytes(), "NEW.DBF");
}

TEST_F(DbaseForms, WithoutAPreviousConfigurationNothingChanges) {
  DbaseImportForm form = FormForTable();
  form.SetPosition(kVille, 1);
  EXPECT_FALSE(form.TakePrevious());
  EXPECT_EQ(form.position(kVille), 1);
  EXPECT_THAT(form.Entries(), ElementsAre("NOM", "VILLE", "TéL", ""));
}

TEST_F(DbaseForms, AStoredMapOutsideTheColumnsShowsAsNothing) {
  DbaseMapping mapping = ImportMapping({5}, {{kSte1, -1}, {kVille, 31}, {kPays, 99}});
  parameters_.mapping(kImport) = mapping;
  const DbaseImportForm form(parameters_, kTable, kDbase3);
  EXPECT_EQ(form.position(kSte1), 1);
  EXPECT_EQ(form.position(kVille), 1);
  EXPECT_EQ(form.position(kPays), 1);
}

TEST_F(DbaseForms, ATableOf31ColumnsHasItsEmptyEntryBehindThem) {
  std::vector<TableColumn> columns;
  for (int i = 0; i < 33; ++i) columns.push_back({"C" + std::to_string(i), 1});
  SetTable(Table(columns, {}));
  TransferFileType type = kDbase3;
  EXPECT_EQ(ReadDbaseHeader(files_, parameters_, messages_, kTable, &type).result,
            DbaseHeaderOutcome::Result::kRead);
  DbaseImportForm form(parameters_, kTable, type);
  EXPECT_EQ(form.Entries().size(), 32u);
  form.SetPosition(kVille, 30);
  form.Confirm();
  EXPECT_EQ(parameters_.mapping(kImport).columns[kVille].map, 30);
  EXPECT_EQ(parameters_.mapping(kImport).columns[kPays].map, 31);
}

TEST_F(DbaseForms, AnExportStartsFromTheDefaultColumns) {
  const DbaseExportForm form(parameters_, kDbase3);
  EXPECT_EQ(form.name(kSte1), "STE1");
  EXPECT_EQ(form.name(kSparePerson), "VIDE");
  EXPECT_EQ(form.name(kRef6), "REFERENCE6");
  EXPECT_EQ(form.name(kPostalCode), "CODEPOST");
  for (const int field : kDbaseFields) EXPECT_EQ(form.type(field), 0) << field;
  EXPECT_THAT(DbaseExportForm::kTypeTexts, ElementsAre(" C ", " N ", " D "));
}

TEST_F(DbaseForms, ConfirmingWritesTheExportSlotByteForByte) {
  DbaseExportForm form(parameters_, TransferFileType::kDbase4);
  form.SetName(kSte1, "SOCIÉTÉ");
  form.SetType(kSte1, 1);
  form.SetName(kSte2, "");
  form.SetName(kAdr1, "RUE_ET_NUMERO");
  form.SetType(kAdr1, 2);
  form.reference().Choose(1);
  form.SetName(form.reference().field(), "DEPUIS");
  form.SetType(form.reference().field(), 2);
  form.Confirm();
  const DbaseMapping defaults = DefaultExportMapping();
  std::string slot = Padded("EXPORT DBF", 24, '\0') + "\xFF" + std::string(13, '\0') + "\x01";
  for (size_t row = 0; row < kFieldCount; ++row) {
    const DbaseColumn& column = defaults.columns[row];
    std::string name = column.name.bytes();
    int type = 0;
    if (row == kSte1) name = "SOCI\x90T\x90";
    if (row == kSte1) type = 1;
    if (row == kSte2) name = "";
    if (row == kAdr1) name = "RUE_ET_NUME";
    if (row == kRef1 + 1) name = "DEPUIS";
    if (row == kAdr1 || row == kRef1 + 1) type = 2;
    slot += Row(name, column.length, column.offset, type, 0);
  }
  ASSERT_EQ(slot.size(), 628u);
  std::string file = NewFile();
  file.replace(1384, 628, slot);
  file[106] = 4;
  EXPECT_EQ(Contents(kParameters), file);
}

TEST_F(DbaseForms, AnExportShowsWhatWasConfirmed) {
  DbaseExportForm first(parameters_, kDbase3);
  first.SetName(kVille, "Köln");
  first.SetType(kVille, 2);
  first.SetName(kPays, "");
  first.Confirm();
  const DbaseExportForm again(parameters_, kDbase3);
  EXPECT_EQ(again.name(kVille), "Köln");
  EXPECT_EQ(again.type(kVille), 2);
  EXPECT_EQ(again.name(kPays), "");
  EXPECT_EQ(again.name(kSte1), "STE1");
}

TEST_F(DbaseForms, AnUnknownTypeShowsAndIsStoredAsC) {
  DbaseMapping mapping = DefaultExportMapping();
  mapping.columns[kVille].type = static_cast<DbaseType>(9);
  mapping.columns[kPays].type = static_cast<DbaseType>(-1);
  parameters_.mapping(kExport) = mapping;
  parameters_.AccessParameterFile(ParameterFile::Access::kWrite, kDbase3, kExport);
  DbaseExportForm form(parameters_, kDbase3);
  EXPECT_EQ(form.type(kVille), 0);
  form.Confirm();
  EXPECT_EQ(parameters_.mapping(kExport).columns[kVille].type, DbaseType::kCharacter);
  EXPECT_EQ(parameters_.mapping(kExport).columns[kPays].type, DbaseType::kCharacter);
}

TEST_F(DbaseForms, BeforeAnyConfirmationThereIsNoExport) {
  AddCards({MakeCard({{kSte1, "Zola"}})}, true);
  const DbaseMapping none = ReadStoredMapping(parameters_, kDbase3, kExport);
  EXPECT_EQ(ExportTable(none).message, "Format du Fichier Dbase non reconnu");
  DbaseExportForm(parameters_, kDbase3).Confirm();
  EXPECT_EQ(ExportTable(ReadStoredMapping(parameters_, kDbase3, kExport)).cards, 1u);
}

}  // namespace
}  // namespace carnetel
