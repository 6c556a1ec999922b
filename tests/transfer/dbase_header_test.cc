#include <gmock/gmock.h>

#include "tests/transfer/dbase_testing.h"
#include "tests/transfer/parameter_bytes.h"

namespace carnetel {
namespace {

using Result = DbaseHeaderOutcome::Result;
using testing::IsEmpty;
using testing::SizeIs;

constexpr char kParameters[] = "/home/CARNETEL.TRS";
constexpr auto kImport = TransferDirection::kImport;

class DbaseHeaderTest : public DbaseTest {
 protected:
  DbaseHeaderOutcome ReadHeader(const std::string& path = kTable) {
    return ReadDbaseHeader(files_, parameters_, messages_, path, &type_);
  }
  // Stores a mapping for a table of one column, "OLD", with the town mapped to it.
  void StoreMapping(const std::string& file_name) {
    DbaseMapping mapping = ImportMapping({7}, {{kVille, 0}});
    mapping.columns[0].name = OemText("OLD");
    mapping.file_name = OemText(file_name);
    parameters_.StartTransfer(kImport);
    parameters_.mapping(kImport) = mapping;
    parameters_.AccessParameterFile(ParameterFile::Access::kWrite, TransferFileType::kDbase3,
                                    kImport);
    parameters_.mapping(kImport) = {};
  }
  [[nodiscard]] const DbaseColumn& Row(size_t number) {
    return parameters_.mapping(kImport).columns[number];
  }

  ParameterFile parameters_{files_, kParameters};
  SilentMessages messages_;
  TransferFileType type_ = TransferFileType::kDbase3;
};

TEST_F(DbaseHeaderTest, DescribesTheColumnsOfANewTable) {
  SetTable(Table({{"NOM", 20}, {"CP\x8A", 5}, {"ELEVENCHARS", 255}, {"", 0}, {"Z", 1}}, {"x"}));
  EXPECT_EQ(ReadHeader().result, Result::kRead);
  EXPECT_EQ(Row(0), (DbaseColumn{OemText("NOM"), 20, 1, DbaseType::kCharacter, 0}));
  EXPECT_EQ(Row(1), (DbaseColumn{OemText("CP\x8A"), 5, 21, DbaseType::kCharacter, 0}));
  EXPECT_EQ(Row(2), (DbaseColumn{OemText("ELEVENCHARS"), 255, 26, DbaseType::kCharacter, 0}));
  EXPECT_EQ(Row(3), (DbaseColumn{{}, 0, 281, DbaseType::kCharacter, 0}));
  EXPECT_EQ(Row(4), (DbaseColumn{OemText("Z"), 1, 281, DbaseType::kCharacter, 0}));
  EXPECT_EQ(Row(5), DbaseColumn());
  EXPECT_EQ(DbaseColumnCount(parameters_.mapping(kImport)), 5u);
  EXPECT_THAT(messages_.shown(), IsEmpty());
  EXPECT_FALSE(files_.Exists(kParameters)) << "nothing is stored yet";
}

TEST_F(DbaseHeaderTest, TypesAndAddressesOfDescriptorsAreNotTaken) {
  std::string table = Table({{"A", 3}, {"B", 4}}, {});
  table[32 + 11] = 'D';
  table.replace(64 + 12, 4, Le32(77777));
  SetTable(table);
  EXPECT_EQ(ReadHeader().result, Result::kRead);
  EXPECT_EQ(Row(0), (DbaseColumn{OemText("A"), 3, 1, DbaseType::kCharacter, 0}));
  EXPECT_EQ(Row(1), (DbaseColumn{OemText("B"), 4, 4, DbaseType::kCharacter, 0}));
}

TEST_F(DbaseHeaderTest, OfATableWithMoreThan31ColumnsTheFirst31AreShown) {
  std::vector<TableColumn> columns;
  for (int i = 0; i < 40; ++i) columns.push_back({"C" + std::to_string(i), 2});
  SetTable(Table(columns, {}));
  EXPECT_EQ(ReadHeader().result, Result::kRead);
  EXPECT_EQ(DbaseColumnCount(parameters_.mapping(kImport)), 31u);
  EXPECT_EQ(Row(30), (DbaseColumn{OemText("C30"), 2, 61, DbaseType::kCharacter, 0}));
}

TEST_F(DbaseHeaderTest, HeadersShorterThan35HaveNoColumn) {
  std::string table = Table({{"A", 3}, {"B", 4}}, {});
  for (const uint32_t length : {0u, 32u, 34u}) {
    table.replace(8, 2, Le16(length));
    SetTable(table);
    EXPECT_EQ(ReadHeader().result, Result::kRead);
    EXPECT_EQ(DbaseColumnCount(parameters_.mapping(kImport)), 0u) << length;
  }
  for (const auto& [length, count] : {std::pair(35u, 1u), {66u, 1u}, {67u, 2u}}) {
    table.replace(8, 2, Le16(length));
    SetTable(table);
    EXPECT_EQ(ReadHeader().result, Result::kRead);
    EXPECT_EQ(DbaseColumnCount(parameters_.mapping(kImport)), count) << length;
  }
}

TEST_F(DbaseHeaderTest, AHeaderLongerThanTheFileEndsWithIt) {
  std::string table = Table({{"A", 3}, {"B", 4}}, {});
  table.replace(8, 2, Le16(65535));
  SetTable(table.substr(0, 32 + 32 + 31));
  EXPECT_EQ(ReadHeader().result, Result::kRead);
  EXPECT_EQ(DbaseColumnCount(parameters_.mapping(kImport)), 1u);
}

TEST_F(DbaseHeaderTest, AMissingTableIsTold) {
  const DbaseHeaderOutcome outcome = ReadHeader();
  EXPECT_EQ(outcome.result, Result::kUnreadable);
  EXPECT_EQ(static_cast<int>(outcome.result), -1);
  EXPECT_EQ(outcome.message, "Accès au Fichier Source impossible");
  EXPECT_EQ(outcome.title_id, 92);
}

TEST_F(DbaseHeaderTest, TablesWithMemosAndFilesThatAreNoneAreUnreadable) {
  const std::string table = Table({{"A", 3}}, {});
  for (const std::string& bytes : {"\x83" + table.substr(1), "\x8B" + table.substr(1),
                                   std::string("no table"), table.substr(0, 31), std::string()}) {
    SetTable(bytes);
    const DbaseHeaderOutcome outcome = ReadHeader();
    EXPECT_EQ(outcome.result, Result::kUnreadable);
    EXPECT_EQ(outcome.message, "Format du Fichier Dbase non reconnu");
    EXPECT_EQ(outcome.title_id, 92);
    EXPECT_THAT(messages_.shown(), IsEmpty());
  }
}

TEST_F(DbaseHeaderTest, ATableOfDbase4AsksAndChangesTheType) {
  std::string table = Table({{"A", 3}}, {});
  table[0] = '\x43';
  SetTable(table);
  EXPECT_EQ(ReadHeader().result, Result::kRead);
  EXPECT_EQ(type_, TransferFileType::kDbase4);
  ASSERT_THAT(messages_.shown(), SizeIs(1));
  EXPECT_EQ(messages_.shown()[0].style, MessageStyle::kOkCancel);
  EXPECT_EQ(messages_.shown()[0].title_id, 80);
  EXPECT_EQ(messages_.shown()[0].text,
            "Le Fichier est Probablement d'origine Dbase IV.\nDésirez-vous poursuivre "
            "l'opération ?");
  EXPECT_EQ(ReadHeader().result, Result::kRead);
  EXPECT_THAT(messages_.shown(), SizeIs(1)) << "the type is the right one now";
}

TEST_F(DbaseHeaderTest, ATableOfDbase3AsksAndChangesTheType) {
  type_ = TransferFileType::kDbase4;
  SetTable(Table({{"A", 3}}, {}));
  EXPECT_EQ(ReadHeader().result, Result::kRead);
  EXPECT_EQ(type_, TransferFileType::kDbase3);
  ASSERT_THAT(messages_.shown(), SizeIs(1));
  EXPECT_EQ(messages_.shown()[0].text,
            "Le Fichier est Probablement d'origine Dbase III.\nDésirez-vous poursuivre "
            "l'opération ?");
}

TEST_F(DbaseHeaderTest, ARefusedVersionLeavesTheType) {
  type_ = TransferFileType::kDbase4;
  SetTable(Table({{"A", 3}}, {}));
  SilentMessages refusing(MessageButton::kCancel);
  const DbaseHeaderOutcome outcome = ReadDbaseHeader(files_, parameters_, refusing, kTable, &type_);
  EXPECT_EQ(outcome.result, Result::kDeclined);
  EXPECT_EQ(static_cast<int>(outcome.result), -2);
  EXPECT_EQ(outcome.message, "");
  EXPECT_EQ(type_, TransferFileType::kDbase4);
}

TEST_F(DbaseHeaderTest, ATableSeenBeforeKeepsItsMapping) {
  StoreMapping("CLIENTS.DBF");
  std::string table = Table({{"NEW", 3}}, {});
  table[0] = '\x43';
  SetTable(table);
  EXPECT_EQ(ReadHeader().result, Result::kRead);
  EXPECT_EQ(Row(0).name.bytes(), "OLD");
  EXPECT_EQ(Row(kVille).map, 0);
  EXPECT_EQ(Row(kPays).map, 1);
  EXPECT_THAT(messages_.shown(), IsEmpty()) << "the file is not even looked at";
}

TEST_F(DbaseHeaderTest, ATableOfTheSameNameInAnotherFolderKeepsTheMappingToo) {
  StoreMapping("CLIENTS.DBF");
  files_.SetContents("/elsewhere/CLIENTS.DBF", AsBytes(Table({{"NEW", 3}}, {})));
  EXPECT_EQ(ReadHeader("/elsewhere/CLIENTS.DBF").result, Result::kRead);
  EXPECT_EQ(Row(0).name.bytes(), "OLD");
}

TEST_F(DbaseHeaderTest, ATableOfAnotherNameTakesItsOwnColumnsMappedToNothing) {
  StoreMapping("CLIENTS.DB");
  SetTable(Table({{"NEW", 3}}, {}));
  EXPECT_EQ(ReadHeader().result, Result::kRead);
  EXPECT_EQ(Row(0), (DbaseColumn{OemText("NEW"), 3, 1, DbaseType::kCharacter, 0}));
  for (size_t row = 1; row < kFieldCount; ++row) EXPECT_EQ(Row(row), DbaseColumn()) << row;
}

TEST_F(DbaseHeaderTest, ANameThatWasCutKeepsTheMappingOfTheSameColumnsAlone) {
  StoreMapping("correspondan");
  const std::string same = Table({{"OLD", 7}}, {});
  files_.SetContents("/tables/correspondants-1.dbf", AsBytes(same));
  EXPECT_EQ(ReadHeader("/tables/correspondants-1.dbf").result, Result::kRead);
  EXPECT_EQ(Row(kPays).map, 1) << "kept";
  files_.SetContents("/tables/correspondants-2.dbf", AsBytes(Table({{"OLD", 8}}, {})));
  EXPECT_EQ(ReadHeader("/tables/correspondants-2.dbf").result, Result::kRead);
  EXPECT_EQ(Row(0).length, 8);
  EXPECT_EQ(Row(kPays).map, 0) << "mapped to nothing";
  EXPECT_EQ(ReadHeader("/tables/correspondants-3.dbf").result, Result::kUnreadable);
}

TEST_F(DbaseHeaderTest, NamesAreStoredInTheOemPageAndCut) {
  EXPECT_EQ(StoredDbaseName("/a/b.c/\xC3\xA9t\xC3\xA9.dbf").bytes(), "\x82t\x82.dbf");
  EXPECT_EQ(StoredDbaseName("clients-tableur.dbf").bytes(), "clients-tabl");
  EXPECT_EQ(StoredDbaseName("/tables/CLIENTS8.DBF").bytes(), "CLIENTS8.DBF");
}

TEST_F(DbaseHeaderTest, AMappingThatIsNotStoredIsEmpty) {
  EXPECT_EQ(ReadStoredMapping(parameters_, type_, kImport), DbaseMapping());
  parameters_.StartTransfer(kImport);
  parameters_.mapping(kImport) = ImportMapping({7}, {{kVille, 0}});
  EXPECT_EQ(ReadStoredMapping(parameters_, type_, kImport), DbaseMapping())
      << "the slot of a new file is none";
  StoreMapping("CLIENTS.DBF");
  EXPECT_EQ(ReadStoredMapping(parameters_, type_, kImport).columns[0].name.bytes(), "OLD");
}

TEST(DefaultExportMapping, HasAColumnForEachFieldButTheNotes) {
  const DbaseMapping mapping = DefaultExportMapping();
  EXPECT_EQ(mapping.name.bytes(), "EXPORT DBF");
  EXPECT_EQ(mapping.kind, 0xFF);
  EXPECT_EQ(mapping.direction, TransferDirection::kExport);
  const std::vector<std::string> names = {"STE1",
                                          "STE2",
                                          "ADRESSE1",
                                          "ADRESSE2",
                                          "ADRESSE3",
                                          "CODEPOSTAL",
                                          "VILLE",
                                          "PAYS",
                                          "QUALITE",
                                          "PRENOM",
                                          "NOM",
                                          "VIDE",
                                          "REFERENCE1",
                                          "REFERENCE2",
                                          "REFERENCE3",
                                          "REFERENCE4",
                                          "REFERENCE5",
                                          "REFERENCE6",
                                          "TELEPHONE1",
                                          "TELEPHONE2",
                                          "MINITEL",
                                          "TYPE SRV",
                                          "TELECOPIE",
                                          "NINIT",
                                          "MODEM",
                                          "CODEPOST",
                                          "",
                                          "",
                                          "",
                                          "",
                                          ""};
  for (size_t row = 0; row < kFieldCount; ++row) {
    EXPECT_EQ(mapping.columns[row].name.bytes(), names[row]) << row;
    EXPECT_EQ(mapping.columns[row].type, DbaseType::kCharacter) << row;
    const bool known = row <= kNotes;
    EXPECT_EQ(mapping.columns[row].length, known ? kFieldSizes[row] : 0) << row;
  }
  EXPECT_EQ(mapping.columns[kSte1].offset, 0u);
  EXPECT_EQ(mapping.columns[kPostalCode].offset, 128u)
      << "the order of the columns, not of the rows";
  EXPECT_EQ(mapping.columns[kVille].offset, 142u);
  EXPECT_EQ(mapping.columns[kSparePerson].offset, 541u);
}

}  // namespace
}  // namespace carnetel
