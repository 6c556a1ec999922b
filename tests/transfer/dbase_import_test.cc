#include <gmock/gmock.h>

#include "tests/transfer/dbase_testing.h"

namespace carnetel {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

class DbaseImport : public DbaseTest {
 protected:
  // What becomes of a text in a column of its own that is mapped to `field`.
  std::string Imported(int field, const std::string& text, int length, int key_field = kSte1,
                       CharacterSet charset = CharacterSet::kOem) {
    const int other = field == kSte1 ? kNom : kSte1;
    SetTable(
        Table({{"TEXT", length}, {"OTHER", 4}}, {Padded(text, static_cast<size_t>(length)) + "X"}));
    ImportRequest request = TableRequest(charset);
    request.replace = true;
    request.destination.key_field = key_field;
    const DbaseMapping mapping = ImportMapping({length, 4}, {{field, 0}, {other, 1}});
    EXPECT_EQ(ImportDbase(Services(), mapping, request).cards, 1u);
    return Card(0).FieldText(field).bytes();
  }
};

TEST_F(DbaseImport, MakesADirectoryWithACardForEachRecord) {
  const std::string table =
      Table({{"VILLE", 10}, {"SOCIETE", 12}, {"REM", 3}},
            {"Lyon      Garage", "Paris     Mairie      abc", "          Zoo"});
  const TransferOutcome outcome =
      ImportTable(table, ImportMapping({10, 12, 3}, {{kSte1, 1}, {kVille, 0}}));
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.cards, 3u);
  EXPECT_EQ(outcome.message, "");
  ASSERT_EQ(CardCount(), 3u);
  EXPECT_EQ(Card(0), MakeCard({{kSte1, "Garage"}, {kVille, "Lyon"}}));
  EXPECT_EQ(Card(1), MakeCard({{kSte1, "Mairie"}, {kVille, "Paris"}}));
  EXPECT_EQ(Card(2), MakeCard({{kSte1, "Zoo"}}));
  EXPECT_THAT(progress_.opened, Contains(Pair(ProgressForm::kTransfer, 3u)));
  EXPECT_EQ(progress_.steps, 3);
  EXPECT_EQ(progress_.closed, 1);
  for (const char* extension : {".DAN", ".I01", ".I02", ".ADR", ".CRT"}) {
    EXPECT_TRUE(files_.Exists(std::string("/dir/CLIENTS") + extension)) << extension;
  }
}

TEST_F(DbaseImport, AddsUnmarkedBehindWhatIsThere) {
  AddCards({MakeCard({{kSte1, "Blanc"}})}, true);
  EXPECT_EQ(ImportTable(Table({{"S", 5}}, {"Avant"}), ImportMapping({5}, {{kSte1, 0}})).cards, 1u);
  Directory directory(Services(), Options());
  ASSERT_EQ(directory.OpenDirectory(), OpenResult::kOpened);
  EXPECT_EQ(directory.main().count(), 2u);
  EXPECT_EQ(directory.marked_count(), 1);
  EXPECT_EQ(Card(1), MakeCard({{kSte1, "Avant"}}));
}

TEST_F(DbaseImport, ReplaceStartsWithAnEmptyDirectory) {
  AddCards({MakeCard({{kSte1, "Blanc"}}), MakeCard({{kSte1, "Noir"}})}, true);
  SetTable(Table({{"S", 5}}, {"Avant"}));
  ImportRequest request = TableRequest();
  request.replace = true;
  EXPECT_EQ(ImportDbase(Services(), ImportMapping({5}, {{kSte1, 0}}), request).cards, 1u);
  EXPECT_EQ(CardCount(), 1u);
  EXPECT_EQ(Card(0), MakeCard({{kSte1, "Avant"}}));
}

TEST_F(DbaseImport, DeletedRecordsAreImportedLikeAllOthers) {
  std::string table = Table({{"S", 5}}, {"Avant", "Perdu", "Suite"});
  table[32 + 32 + 1 + 6] = '*';
  EXPECT_EQ(ImportTable(table, ImportMapping({5}, {{kSte1, 0}})).cards, 3u);
  EXPECT_EQ(Card(1), MakeCard({{kSte1, "Perdu"}}));
}

TEST_F(DbaseImport, AnEndMarkDoesNotEndTheTable) {
  const std::string table = Table({{"S", 5}}, {"Avant", "\x1A", "Suite"});
  EXPECT_EQ(ImportTable(table, ImportMapping({5}, {{kVille, 0}, {kNom, 0}})).cards, 3u);
  EXPECT_EQ(Card(1), MakeCard({{kVille, "\x1A"}, {kNom, "\x1A"}}));
}

TEST_F(DbaseImport, AFieldWithoutAColumnStaysEmpty) {
  DbaseMapping mapping = ImportMapping({5, 5}, {{kSte1, 0}});
  mapping.columns[kVille].map = 31;
  mapping.columns[kPays].map = -1;
  mapping.columns[kAdr1].map = 127;
  mapping.columns[kAdr2].map = 30;
  EXPECT_EQ(ImportTable(Table({{"S", 5}, {"T", 5}}, {"Avantautre"}), mapping).cards, 1u);
  EXPECT_EQ(Card(0), MakeCard({{kSte1, "Avant"}}));
}

TEST_F(DbaseImport, AMapOf0IsTheFirstColumn) {
  EXPECT_EQ(
      ImportTable(Table({{"S", 5}}, {"Avant"}), ImportMapping({5}, {{kSte1, 0}, {kRef6, 0}})).cards,
      1u);
  EXPECT_EQ(Card(0), MakeCard({{kSte1, "Avant"}, {kRef6, "Avant"}}));
}

TEST_F(DbaseImport, FieldsThatNoTableTakesStayEmptyWhateverTheirMap) {
  DbaseMapping mapping = ImportMapping({5}, {{kSte1, 0}});
  for (const int field :
       {kAdr3, kShortPostalCode, kServiceType, kNinit, kNotes, kSpare27, kSpare30}) {
    mapping.columns[static_cast<size_t>(field)].map = 0;
  }
  EXPECT_EQ(ImportTable(Table({{"S", 5}}, {"Avant"}), mapping).cards, 1u);
  EXPECT_EQ(Card(0), MakeCard({{kSte1, "Avant"}}));
}

TEST_F(DbaseImport, TextsAreCutAtTheirFields) {
  const std::string line = "123456789 123456789 123456789 123456789 ";
  EXPECT_EQ(Imported(kVille, line, 40), line.substr(0, 32));
  EXPECT_EQ(Imported(kPostalCode, line, 40), line.substr(0, 14));
  EXPECT_EQ(Imported(kSte1, line, 40), line.substr(0, 32));
  EXPECT_EQ(Imported(kNom, "  " + line, 42), line.substr(0, 30)) << "cut before the blanks go";
}

TEST_F(DbaseImport, BlanksBehindAreCutPlainly) {
  EXPECT_EQ(Imported(kVille, "L", 5), "L") << "a text of one character stays";
  EXPECT_EQ(Imported(kVille, "  L ", 5), "  L") << "blanks in front stay";
  EXPECT_EQ(Imported(kVille, "", 5), "");
}

TEST_F(DbaseImport, ATextEndsAtAZeroByte) {
  EXPECT_EQ(Imported(kVille, std::string("Ly\0on", 5), 8), "Ly");
}

TEST_F(DbaseImport, OfALongColumn80BytesAreRead) {
  EXPECT_EQ(Imported(kVille, std::string(79, ' ') + "x", 255), std::string(32, ' '));
  EXPECT_EQ(Imported(kVille, std::string(80, ' ') + "x", 255), "");
}

TEST_F(DbaseImport, TheKeyFieldIsCleanedBySignedBytes) {
  EXPECT_EQ(Imported(kSte1, "\x82t\x82", 8), "At\x82") << "an accented letter counts as below 0";
  EXPECT_EQ(Imported(kSte1, "zoo", 8), "Zoo");
  EXPECT_EQ(Imported(kSte1, "  dupont", 8), "Dupont");
  EXPECT_EQ(Imported(kSte1, "9 puits", 8), "9 puits");
  EXPECT_EQ(Imported(kSte1, "/ oblique", 9), "A oblique") << "the last byte below 0";
  EXPECT_EQ(Imported(kSte1, "@ la mer", 8), "@ la mer") << "between 9 and A nothing changes";
  EXPECT_EQ(Imported(kSte1, "[x]", 8), "Zx]");
  EXPECT_EQ(Imported(kSte1, "{x}", 8), "Zx}");
  EXPECT_EQ(Imported(kSte1,
                     "\x9A"
                     "BER",
                     8),
            "ABER")
      << "capitals with accents too";
  EXPECT_EQ(Imported(kSte1, "", 8), "A");
  EXPECT_EQ(Imported(kSte1, "   ", 8), "A");
}

TEST_F(DbaseImport, TheOtherKeyFieldLosesLeadingBlanksOnly) {
  EXPECT_EQ(Imported(kNom, "  \x82t\x82", 8), "\x82t\x82");
  EXPECT_EQ(Imported(kNom, "zoo", 8), "zoo");
  EXPECT_EQ(Imported(kNom, "", 8), "");
}

TEST_F(DbaseImport, TheCurrentKeyFieldIsTheOneOfTheDestination) {
  EXPECT_EQ(Imported(kNom, "\x82t\x82", 8, kNom), "At\x82");
  EXPECT_EQ(Imported(kNom, "", 8, kNom), "A");
  EXPECT_EQ(Imported(kSte1, "\x82t\x82", 8, kNom), "\x82t\x82");
}

TEST_F(DbaseImport, TheKeyIsCleanedBeforeAnAnsiTextIsConverted) {
  EXPECT_EQ(Imported(kSte1, "\xE9t\xE9", 8, kSte1, CharacterSet::kAnsi), "At\x82");
  EXPECT_EQ(Imported(kSte1, "\xC9T\xC9", 8, kSte1, CharacterSet::kAnsi), "AT\x90");
  EXPECT_EQ(Imported(kNom, "\xE9t\xE9", 8, kSte1, CharacterSet::kAnsi), "\x82t\x82");
}

TEST_F(DbaseImport, NumbersAreCleanedTheMinitelOneToo) {
  for (const int field : {kTel1, kTel2, kMtel, kFax, kModem}) {
    EXPECT_EQ(Imported(field, "a.b;c d,w+1-2#*@:", 20), "A:B:C D,W+1-2#*@:") << field;
    EXPECT_EQ(Imported(field, "(01) e\x82/23xWABCDZ", 20), "01 23WABCD") << field;
    EXPECT_EQ(Imported(field, "  01", 20), "  01") << "blanks in front stay";
  }
  EXPECT_EQ(Imported(kRef1, "a.b;(e)", 20), "a.b;(e)") << "other fields stay as they are";
}

TEST_F(DbaseImport, OfANumber41CharactersAreLookedAt) {
  EXPECT_EQ(Imported(kTel1, std::string(39, 'z') + "123", 50), "12");
  EXPECT_EQ(Imported(kTel1, std::string(41, 'z') + "123", 50), "");
}

TEST_F(DbaseImport, ACardWithoutALabelIsNotAdded) {
  const std::string table =
      Table({{"VILLE", 5}, {"NOM", 6}}, {"Lyon Durand", "Paris", "Nice Martin"});
  const TransferOutcome outcome =
      ImportTable(table, ImportMapping({5, 6}, {{kVille, 0}, {kNom, 1}}));
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.cards, 2u);
  EXPECT_EQ(Card(0), MakeCard({{kVille, "Lyon"}, {kNom, "Durand"}}));
  EXPECT_EQ(Card(1), MakeCard({{kVille, "Nice"}, {kNom, "Martin"}}));
  EXPECT_EQ(progress_.steps, 3) << "it counts as a record all the same";
}

TEST_F(DbaseImport, ATableOfDbase4IsOneToo) {
  std::string table = Table({{"S", 5}}, {"Avant"});
  table[0] = '\x43';
  EXPECT_EQ(ImportTable(table, ImportMapping({5}, {{kSte1, 0}})).cards, 1u);
}

TEST_F(DbaseImport, ATableWithAMemoFileIsRefusedAndNothingTouched) {
  AddCards({MakeCard({{kSte1, "Blanc"}})}, false);
  const std::string before = Contents(kMain);
  for (const char version : {'\x83', '\x8B', '\0', '\x30'}) {
    std::string table = Table({{"S", 5}}, {"Avant"});
    table[0] = version;
    SetTable(table);
    ImportRequest request = TableRequest();
    request.replace = true;
    const TransferOutcome outcome =
        ImportDbase(Services(), ImportMapping({5}, {{kSte1, 0}}), request);
    EXPECT_EQ(outcome.result, -1);
    EXPECT_EQ(outcome.message, "Format du Fichier Dbase non reconnu");
    EXPECT_EQ(outcome.title_id, 92);
  }
  EXPECT_EQ(Contents(kMain), before);
}

TEST_F(DbaseImport, WithoutAMappingNothingIsImported) {
  DbaseMapping mapping = ImportMapping({5}, {{kSte1, 0}});
  mapping.kind = 0xFD;
  const TransferOutcome outcome = ImportTable(Table({{"S", 5}}, {"Avant"}), mapping);
  EXPECT_EQ(outcome.result, -1);
  EXPECT_EQ(outcome.message, "Format du Fichier Dbase non reconnu");
  EXPECT_EQ(outcome.title_id, 92);
  EXPECT_FALSE(files_.Exists(kMain));
}

TEST_F(DbaseImport, AMissingSourceIsToldAndTouchesNothing) {
  AddCards({MakeCard({{kSte1, "Blanc"}})}, false);
  const std::string before = Contents(kMain);
  ImportRequest request = TableRequest();
  request.replace = true;
  const TransferOutcome outcome =
      ImportDbase(Services(), ImportMapping({5}, {{kSte1, 0}}), request);
  EXPECT_EQ(outcome.result, -1);
  EXPECT_EQ(outcome.message, "/tables/CLIENTS.DBF\nErreur en lecture...");
  EXPECT_EQ(outcome.title_id, 92);
  EXPECT_EQ(Contents(kMain), before);
}

TEST_F(DbaseImport, ADestinationThatIsNoDirectoryIsTold) {
  files_.SetContents(kMain, AsBytes("a text"));
  const TransferOutcome outcome =
      ImportTable(Table({{"S", 5}}, {"Avant"}), ImportMapping({5}, {{kSte1, 0}}));
  EXPECT_EQ(outcome.result, -1);
  EXPECT_EQ(outcome.message, "Accès au fichier /dir/CLIENTS.DAN impossible");
  EXPECT_EQ(outcome.title_id, 92);
  EXPECT_EQ(Contents(kMain), "a text");
}

TEST_F(DbaseImport, AnAbortKeepsTheCardsAlreadyAdded) {
  progress_.abort_after = 2;
  const TransferOutcome outcome =
      ImportTable(Table({{"S", 1}}, {"A", "B", "C", "D"}), ImportMapping({1}, {{kSte1, 0}}));
  EXPECT_EQ(outcome.result, 0);
  EXPECT_TRUE(outcome.aborted);
  EXPECT_EQ(outcome.cards, 2u);
  EXPECT_EQ(CardCount(), 2u);
  EXPECT_EQ(progress_.closed, 1);
}

TEST_F(DbaseImport, ClosesAConsistentFamily) {
  EXPECT_EQ(ImportTable(Table({{"S", 1}}, {"C", "A", "B"}), ImportMapping({1}, {{kSte1, 0}})).cards,
            3u);
  progress_.opened.clear();
  Directory directory(Services(), Options());
  ASSERT_EQ(directory.OpenDirectory(), OpenResult::kOpened);
  EXPECT_THAT(progress_.opened, IsEmpty()) << "nothing had to be made anew";
  EXPECT_EQ(directory.address().CardOffsetAt(0), 2 * kCardSize);
}

TEST_F(DbaseImport, AFullDirectoryEndsTheRunWithoutAWord) {
  AddCards({}, false);
  std::string main = Contents(kMain);
  main.resize(kCardSize * 32767, '\0');  // 32766 cards
  for (size_t card = 1; card < 32767; ++card) {
    main[kCardSize * card + kFieldTable[kSte1].offset] = static_cast<char>('A' + card % 26);
  }
  files_.SetContents(kMain, AsBytes(main));
  progress_.steps = 0;
  const TransferOutcome outcome =
      ImportTable(Table({{"S", 1}}, {"V", "W", "X"}), ImportMapping({1}, {{kSte1, 0}}));
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.message, "");
  EXPECT_EQ(outcome.cards, 1u);
  EXPECT_TRUE(outcome.directory_full);
  EXPECT_EQ(Card(32766), MakeCard({{kSte1, "V"}}));
  EXPECT_EQ(LoadLe16(files_.Contents(kMain), 96), 32767);
}

TEST_F(DbaseImport, AFullDiskIsToldWithTheCardsThatAreInTheFile) {
  SetTable(Table({{"S", 1}}, std::vector<std::string>(300, "X")));
  FaultFileSystem disk(files_);
  progress_.act_after = 100;
  progress_.act = [&disk] { disk.FillDisk(); };
  const TransferOutcome outcome =
      ImportDbase({disk, clock_, progress_}, ImportMapping({1}, {{kSte1, 0}}), TableRequest());
  EXPECT_EQ(outcome.result, -1);
  EXPECT_EQ(outcome.message, "/dir/CLIENTS.DAN\nErreur en écriture...");
  EXPECT_EQ(outcome.title_id, 92);
  EXPECT_EQ(outcome.cards, 85u) << "cards reach the disk in blocks of 85";
  EXPECT_FALSE(outcome.directory_full);
  EXPECT_EQ(CardCount(), 85u);
}

TEST_F(DbaseImport, TablesLargerThanABlockAreReadThrough) {
  std::vector<std::string> records;
  for (int i = 0; i < 2000; ++i) records.push_back(Padded("N" + std::to_string(i), 100) + "x");
  const std::string table = Table({{"S", 100}, {"LAST", 1}}, records);
  ASSERT_GT(table.size(), 3u * 65536u);
  EXPECT_EQ(ImportTable(table, ImportMapping({100, 1}, {{kSte1, 0}, {kVille, 1}})).cards, 2000u);
  int wrong = 0;
  const std::string main = Contents(kMain);
  for (size_t card = 1; card <= 2000; ++card) {
    const std::string name = "N" + std::to_string(card - 1);
    const std::string text = Padded(name, 32, '\0');
    if (main.substr(kCardSize * card, 32) != text) ++wrong;
    if (main[kCardSize * card + kFieldTable[kVille].offset] != 'x') ++wrong;
  }
  EXPECT_EQ(wrong, 0);
}

}  // namespace
}  // namespace carnetel
