#include "tests/printing/printing_testing.h"

#include <algorithm>
#include <fstream>
#include <iterator>

#include "base/code_page.h"
#include "printing/list_layout.h"
#include "printing/text_target.h"
#include "storage/card_dispatch.h"

namespace carnetel {
namespace {

struct SampleField {
  int field;
  std::string_view utf8;
};

// In the order of the company index.
const std::vector<std::vector<SampleField>> kSampleCards = {
    {{kSte1, "ATELIER DU CHÊNE"},
     {kSte2, "Menuiserie générale"},
     {kAdr1, "12, rue de l'Église"},
     {kAdr2, "Bâtiment C"},
     {kPostalCode, "69003"},
     {kVille, "LYON"},
     {kPays, "France"},
     {kQualite, "Maître"},
     {kPrenom, "François"},
     {kNom, "DÉMÉTER"},
     {kTel1, "04 78 00 00 01"},
     {kTel2, "04 78 00 00 02"},
     {kFax, "04 78 00 00 03"},
     {kModem, "04 78 00 00 04"},
     {kMtel, "36 15 CHENE"},
     {kRef1, "Réf. un"},
     {13, "Deux"},
     {14, "Trois"},
     {15, "Quatre"},
     {16, "Cinq"},
     {kRef6, "Six"},
     {kNotes, "Livraison par la cour, après 18 h ; demander le gardien à côté !"}},
    {{kSte1, "BOULANGERIE NOËL & FILS - PARIS2"},
     {kAdr1, "1, place de la Mairie"},
     {kPostalCode, "75002-CEDEX-08"},
     {kVille, "PARIS"},
     {kNom, "NOËL"},
     {kFax, "01 42 00 00 00 / 4321"}},
    {{kSte1, "CRÊPERIE"}},
    {{kSte1, "DÉPANNAGE 24 H"},
     {kAdr1, "ZI des Oeillets"},
     {kPostalCode, "13001"},
     {kVille, "MARSEILLE"},
     {kTel1, "04 91 00 00 00"},
     {kNotes, "Ouvert\r\nla nuit"}},
    {{kSte1, "EIFFEL ÉTUDES"},
     {kPrenom, "Zoë"},
     {kNom, "ÇELIK"},
     {kPostalCode, "F-1000"},
     {kFax, "02 00 00 00 09"}},
    {{kSte1, "FORGE"},
     {kAdr1, "Route de Nîmes"},
     {kPostalCode, "30000"},
     {kVille, "NÎMES"},
     {kNom, "GARÇON"},
     {kFax, "04 66 00 00 00"}}};

PrintRun PlainRun() {
  PrintRun run;
  run.setup.top_margin = 0;
  run.setup.left_margin = 0;
  run.setup.scope = PrintScope::kFile;
  return run;
}

}  // namespace

Composition CompositionOf(std::initializer_list<ColumnSpec> columns) {
  Composition composition{};
  std::ranges::copy(columns, composition.begin());
  return composition;
}

std::string PagesText(const RecordedPages& pages) {
  std::string text;
  for (size_t i = 0; i < pages.pages.size(); ++i) {
    if (i > 0) text += '\f';
    for (const std::string& line : pages.pages[i]) text += line + '\n';
  }
  return text;
}

::testing::AssertionResult IsApproved(const std::string& name, std::string_view printed) {
  const std::string path = std::string(CARNETEL_SOURCE_DIR) + "/tests/printing/approved/" + name;
  std::ifstream file(path, std::ios::binary);
  if (!file) return ::testing::AssertionFailure() << path << " cannot be read";
  const std::string approved{std::istreambuf_iterator<char>(file),
                             std::istreambuf_iterator<char>()};
  return SameBytes(AsBytes(approved), AsBytes(printed));
}

PrintingTest::PrintingTest() {
  files.MakeFolder("/dir/");
  files.MakeFolder("/out/");
  DirectoryOptions options;
  options.path = kMain;
  directory = std::make_unique<Directory>(DirectoryServices{faults, clock, progress}, options);
  EXPECT_EQ(directory->OpenDirectory(), OpenResult::kCreated);
}

void PrintingTest::AddCard(Fields fields, bool marked) {
  CardRecord& card = directory->context().current;
  card.Clear();
  for (const auto& [field, text] : fields) card.SetField(field, OemText(std::string(text)));
  uint32_t position = 0;
  EXPECT_EQ(CardDispatch(*directory).Add(marked, &position), 0);
}

void PrintingTest::AddCompanies(std::initializer_list<const char*> companies) {
  for (const char* company : companies) AddCard({{kSte1, company}});
}

void PrintingTest::AddSampleCards() {
  for (const std::vector<SampleField>& sample : kSampleCards) {
    CardRecord& card = directory->context().current;
    card.Clear();
    for (const SampleField& field : sample) {
      const OemConversion text = OemFromUtf8(field.utf8);
      EXPECT_EQ(text.refused, "");
      EXPECT_LE(text.text.size(), kFieldTable[field.field].size) << field.utf8;
      card.SetField(field.field, text.text);
    }
    uint32_t position = 0;
    EXPECT_EQ(CardDispatch(*directory).Add(false, &position), 0);
  }
}

void PrintingTest::SetBit(uint32_t row, uint8_t bit, bool on) {
  EntrySlot entry = directory->address().Entry(row);
  entry.set_bit(bit, on);
  directory->address().SetEntry(row, entry);
}

PrintRun PrintingTest::CompanyList() {
  PrintRun run = PlainRun();
  run.composition = CompositionOf({{ChoiceOfField(kSte1), 10}});
  return run;
}

PrintRun PrintingTest::Cards() {
  PrintRun run = PlainRun();
  run.setup.presentation = Presentation::kCards;
  return run;
}

std::string PrintingTest::PrintToText(const PrintRun& run) {
  files.Remove(kOutput);
  const std::unique_ptr<File> file = faults.Open(kOutput, OpenMode::kCreateOrOpen);
  TextFileTarget target(*file);
  PrintCards(*directory, run, target);
  EXPECT_TRUE(target.Flush());
  return Contents(kOutput);
}

RecordedPages PrintingTest::PrintOnPages(const PrintRun& run, int lines_per_page) {
  RecordedPages pages(lines_per_page);
  PrintCards(*directory, run, pages);
  return pages;
}

}  // namespace carnetel
