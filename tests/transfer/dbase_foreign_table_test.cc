// Tables that other programs wrote: by shapelib, and by a spreadsheet from the first 200 lines of
// samples/correspondants.csv.
#include <gmock/gmock.h>
#include <shapefil.h>

#include <fstream>
#include <sstream>

#include "base/code_page.h"
#include "tests/support/fresh_folder.h"
#include "tests/transfer/dbase_testing.h"
#include "transfer/dbase_forms.h"

namespace carnetel {
namespace {

constexpr auto kImport = TransferDirection::kImport;

std::string FileBytes(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  EXPECT_TRUE(file) << path;
  std::ostringstream bytes;
  bytes << file.rdbuf();
  return bytes.str();
}

class DbaseForeignTable : public DbaseTest {
 protected:
  DbaseForeignTable() { parameters_.StartTransfer(kImport); }

  // Prepares the mapping of the table at `path` as the form does, each field by the name of its
  // column.
  void Map(const std::string& path, const std::vector<std::pair<int, std::string>>& columns) {
    TransferFileType type = TransferFileType::kDbase3;
    ASSERT_EQ(ReadDbaseHeader(files_, parameters_, messages_, path, &type).result,
              DbaseHeaderOutcome::Result::kRead);
    DbaseImportForm form(parameters_, path, type);
    const std::vector<std::string> entries = form.Entries();
    for (const int field : kDbaseFields) form.SetPosition(field, -1);
    for (const auto& [field, name] : columns) {
      const auto found = std::ranges::find(entries, name);
      ASSERT_NE(found, entries.end()) << name;
      form.SetPosition(field, static_cast<int>(found - entries.begin()));
    }
    form.Confirm();
  }
  TransferOutcome ImportMapped(CharacterSet charset = CharacterSet::kOem) {
    const DbaseMapping mapping = ReadStoredMapping(parameters_, TransferFileType::kDbase3, kImport);
    return ImportDbase(Services(), mapping, TableRequest(charset));
  }

  ParameterFile parameters_{files_, "/home/CARNETEL.TRS"};
  SilentMessages messages_;
};

// Writes a table by shapelib and hands over its bytes.
class ShapelibTable {
 public:
  ShapelibTable() : handle_(DBFCreate(path_.c_str())) { EXPECT_NE(handle_, nullptr); }
  ~ShapelibTable() { Close(); }
  ShapelibTable(const ShapelibTable&) = delete;
  ShapelibTable& operator=(const ShapelibTable&) = delete;

  int AddColumn(const std::string& name, DBFFieldType type, int width, int decimals = 0) {
    return DBFAddField(handle_, name.c_str(), type, width, decimals);
  }
  void Text(int record, int column, const std::string& text) {
    (void)DBFWriteStringAttribute(handle_, record, column, text.c_str());  // cut at its column
  }
  void Number(int record, int column, double value) {
    EXPECT_TRUE(DBFWriteDoubleAttribute(handle_, record, column, value));
  }
  void MarkDeleted(int record) { EXPECT_TRUE(DBFMarkRecordDeleted(handle_, record, 1)); }
  std::string Bytes() {
    Close();
    return FileBytes(path_);
  }

 private:
  void Close() {
    if (handle_ != nullptr) DBFClose(handle_);
    handle_ = nullptr;
  }

  FreshFolder folder_;
  std::string path_ = folder_.path() + "table.dbf";
  DBFHandle handle_;
};

TEST_F(DbaseForeignTable, ShapelibTextsAndNumbersComeIn) {
  ShapelibTable table;
  const int number = table.AddColumn("NUMERO", FTInteger, 8);
  const int name = table.AddColumn("NOM", FTString, 40);
  const int town = table.AddColumn("VILLE", FTString, 10);
  const int turnover = table.AddColumn("CHIFFRE", FTDouble, 12, 2);
  table.Number(0, number, 17);
  table.Text(0, name, "Durand");
  table.Text(0, town, "N\x8Cmes");
  table.Number(0, turnover, 1234.5);
  table.Text(1, name, "Martin");
  table.Number(1, number, -3);
  table.Text(2, name, "\x82mile, un nom qui est plus long que le champ");
  table.Text(2, town, "0123456789ABC");
  table.MarkDeleted(1);
  SetTable(table.Bytes());
  Map(kTable, {{kNom, "NOM"}, {kVille, "VILLE"}, {kRef1, "NUMERO"}, {kRef1 + 1, "CHIFFRE"}});
  EXPECT_EQ(ImportMapped().cards, 3u);
  EXPECT_EQ(Card(0), MakeCard({{kNom, "Durand"},
                               {kVille, "N\x8Cmes"},
                               {kRef1, "      17"},
                               {kRef1 + 1, "     1234.50"}}));
  EXPECT_EQ(Card(1).FieldText(kNom).bytes(), "Martin") << "deleted records too";
  EXPECT_EQ(Card(1).FieldText(kRef1).bytes(), "      -3");
  EXPECT_EQ(Card(2).FieldText(kNom).bytes(), "\x82mile, un nom qui est plus long ");
  EXPECT_EQ(Card(2).FieldText(kVille).bytes(), "0123456789");
}

TEST_F(DbaseForeignTable, OfMoreThan31ColumnsTheFirst31CanBeUsed) {
  ShapelibTable table;
  for (int column = 0; column < 45; ++column) {
    table.AddColumn("C" + std::to_string(column), FTString, 5);
    table.Text(0, column, "v" + std::to_string(column));
  }
  SetTable(table.Bytes());
  Map(kTable, {{kNom, "C0"}, {kVille, "C30"}, {kPays, "C1"}});
  EXPECT_EQ(DbaseColumnCount(parameters_.mapping(kImport)), 31u);
  EXPECT_EQ(ImportMapped().cards, 1u);
  EXPECT_EQ(Card(0), MakeCard({{kNom, "v0"}, {kVille, "v30"}, {kPays, "v1"}}));
}

TEST_F(DbaseForeignTable, AnsiTextsAreConverted) {
  ShapelibTable table;
  table.AddColumn("NOM", FTString, 20);
  table.AddColumn("VILLE", FTString, 20);
  table.Text(0, 0, "Andr\xE9");
  table.Text(0, 1, "N\xEEmes");
  SetTable(table.Bytes());
  Map(kTable, {{kNom, "NOM"}, {kVille, "VILLE"}});
  EXPECT_EQ(ImportMapped(CharacterSet::kAnsi).cards, 1u);
  EXPECT_EQ(Card(0), MakeCard({{kNom, "Andr\x82"}, {kVille, "N\x8Cmes"}}));
}

TEST_F(DbaseForeignTable, ThousandsOfRecordsComeIn) {
  ShapelibTable table;
  table.AddColumn("NOM", FTString, 60);
  table.AddColumn("REF", FTString, 24);
  for (int record = 0; record < 3000; ++record) {
    table.Text(record, 0, "Nom " + std::to_string(record * 7919 % 3000));
    table.Text(record, 1, "r" + std::to_string(record));
  }
  SetTable(table.Bytes());
  Map(kTable, {{kNom, "NOM"}, {kRef6, "REF"}});
  EXPECT_EQ(ImportMapped().cards, 3000u);
  int wrong = 0;
  for (uint32_t record = 0; record < 3000; record += 37) {
    const CardRecord card = MakeCard({{kNom, "Nom " + std::to_string(record * 7919 % 3000)},
                                      {kRef6, "r" + std::to_string(record)}});
    if (Card(record) != card) ++wrong;
  }
  EXPECT_EQ(wrong, 0);
}

// The columns of the sample, one behind the other in a line.
struct SampleColumn {
  int field;
  const char* name;
};
constexpr std::array<SampleColumn, 21> kSampleColumns = {
    {{kQualite, "QUALITE"}, {kPrenom, "PRENOM"}, {kNom, "NOM"},       {kSte1, "SOCIETE"},
     {kSte2, "SERVICE"},    {kAdr1, "ADRESSE1"}, {kAdr2, "ADRESSE2"}, {kPostalCode, "CP"},
     {kVille, "VILLE"},     {kPays, "PAYS"},     {kTel1, "TEL1"},     {kTel2, "TEL2"},
     {kFax, "FAX"},         {kMtel, "MINITEL"},  {kModem, "MODEM"},   {kRef1, "REF1"},
     {kRef1 + 1, "REF2"},   {kRef1 + 2, "REF3"}, {kRef1 + 3, "REF4"}, {kRef1 + 4, "REF5"},
     {kRef6, "REF6"}}};

// What an import by company leaves of a text of the sample.
std::string Expected(int field, std::string text) {
  CutTrailingBlanks(text);
  if (field == kSte1) {
    const bool stays = !text.empty() && text[0] >= '0' && text[0] <= 'Z';
    return stays ? text : "A" + text.substr(std::min<size_t>(text.size(), 1));
  }
  if (field >= kTel1 && field <= kModem) {
    const std::string_view dialled = " 1234567890:,-+@#*ABCDW";
    std::erase_if(text, [&](char c) { return dialled.find(c) == std::string_view::npos; });
  }
  return text;
}

TEST_F(DbaseForeignTable, ASpreadsheetsTableHoldsTheLinesOfTheSample) {
  SetTable(FileBytes(CARNETEL_SOURCE_DIR "/tests/data/clients-tableur.dbf"));
  std::vector<std::pair<int, std::string>> columns;
  for (const SampleColumn& column : kSampleColumns) columns.emplace_back(column.field, column.name);
  Map(kTable, columns);
  EXPECT_EQ(ImportMapped().cards, 200u);
  std::istringstream sample(FileBytes(CARNETEL_SOURCE_DIR "/samples/correspondants.csv"));
  int accents = 0;
  for (uint32_t number = 0; number < 200; ++number) {
    std::string line;
    ASSERT_TRUE(std::getline(sample, line));
    std::istringstream fields(AnsiToOem(AnsiText(line)).bytes());
    CardRecord card;
    for (const SampleColumn& column : kSampleColumns) {
      std::string text;
      std::getline(fields, text, ';');
      card.SetField(column.field, OemText(Expected(column.field, text)));
    }
    EXPECT_EQ(Card(number), card) << line;
    accents += line.find('\xE9') != std::string::npos ? 1 : 0;
  }
  EXPECT_GT(accents, 50) << "enough of them to show a wrong code page";
}

}  // namespace
}  // namespace carnetel
