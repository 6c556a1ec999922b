#include <gmock/gmock.h>

#include "tests/transfer/transfer_testing.h"

namespace carnetel {
namespace {

using std::string_literals::operator""s;
using testing::Contains;
using testing::ElementsAre;
using testing::Pair;

constexpr char kWriteMessage[] = "/dir/CLIENTS.DAN\nErreur en écriture...";

class DelimitedImport : public TransferTest {
 protected:
  // The card at each row of the whole-file list, after the family was opened again.
  std::vector<std::string> NamesInList() {
    Directory directory(Services(), Options());
    EXPECT_EQ(directory.OpenDirectory(), OpenResult::kOpened);
    std::vector<std::string> names;
    for (uint32_t row = 0; row < directory.address().entry_count(); ++row) {
      CardRecord card;
      EXPECT_TRUE(directory.main().ReadCard(directory.address().CardOffsetAt(row), card));
      names.push_back(card.FieldText(kNom).bytes());
    }
    return names;
  }
};

std::string Lines(int count, std::string_view text = "x\r\n") {
  std::string lines;
  for (int i = 0; i < count; ++i) lines += text;
  return lines;
}

TEST_F(DelimitedImport, MakesADirectoryWithACardForEachLine) {
  const TransferOutcome outcome =
      Import("Durand;Lyon\r\nMartin;Paris\r\n", Columns({kNom, kVille}));
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.cards, 2u);
  EXPECT_EQ(outcome.message, "");
  EXPECT_EQ(outcome.lines_left_out, 0u);
  ASSERT_EQ(CardCount(), 2u);
  EXPECT_EQ(Card(0), MakeCard({{kNom, "Durand"}, {kVille, "Lyon"}}));
  EXPECT_EQ(Card(1), MakeCard({{kNom, "Martin"}, {kVille, "Paris"}}));
  for (const char* extension : {".DAN", ".I01", ".I02", ".ADR", ".CRT"}) {
    EXPECT_TRUE(files_.Exists(std::string("/dir/CLIENTS") + extension)) << extension;
  }
}

TEST_F(DelimitedImport, ClosesAConsistentFamily) {
  EXPECT_EQ(Import("b\r\nc\r\na\r\n", Columns({kNom})).cards, 3u);
  progress_.opened.clear();
  EXPECT_THAT(NamesInList(), ElementsAre("a", "b", "c"));
  EXPECT_THAT(progress_.opened, testing::IsEmpty()) << "nothing had to be made anew";
}

TEST_F(DelimitedImport, AddsBehindTheCardsThatAreThere) {
  AddCards({MakeCard({{kNom, "Blanc"}}), MakeCard({{kNom, "Zola"}})}, true);
  EXPECT_EQ(Import("Durand\r\n", Columns({kNom})).cards, 1u);
  EXPECT_THAT(NamesInList(), ElementsAre("Blanc", "Durand", "Zola"));
  EXPECT_EQ(Card(2), MakeCard({{kNom, "Durand"}}));
}

TEST_F(DelimitedImport, LeavesMarksAsTheyAreAndMarksNothing) {
  AddCards({MakeCard({{kNom, "Blanc"}}), MakeCard({{kNom, "Zola"}})}, true);
  EXPECT_EQ(Import("Durand\r\n", Columns({kNom})).cards, 1u);
  Directory directory(Services(), Options());
  ASSERT_EQ(directory.OpenDirectory(), OpenResult::kOpened);
  EXPECT_EQ(directory.marked_count(), 2);
  EXPECT_TRUE(directory.address().Entry(0).bit(1));
  EXPECT_FALSE(directory.address().Entry(1).bit(1));
  EXPECT_TRUE(directory.address().Entry(2).bit(1));
}

TEST_F(DelimitedImport, ALineEqualToACardMakesASecondCard) {
  EXPECT_EQ(Import("Durand\r\nDurand\r\n", Columns({kNom})).cards, 2u);
  EXPECT_EQ(Import("Durand\r\n", Columns({kNom})).cards, 1u);
  EXPECT_EQ(CardCount(), 3u);
}

TEST_F(DelimitedImport, ReplaceDeletesTheWholeFamilyFirst) {
  AddCards({MakeCard({{kNom, "Blanc"}})}, true);
  files_.SetContents("/dir/CLIENTS.LST", AsBytes("layout"));
  SetSource("Durand\r\n");
  EXPECT_EQ(ImportDelimited(Services(), Columns({kNom}), Request(true)).cards, 1u);
  EXPECT_THAT(NamesInList(), ElementsAre("Durand"));
  EXPECT_FALSE(files_.Exists("/dir/CLIENTS.LST"));
}

TEST_F(DelimitedImport, ASeatKeepsItsFilesInItsOwnFolder) {
  SetSource("Durand\r\n");
  ImportRequest request = Request();
  request.destination.shared_dir = "/seat/";
  EXPECT_EQ(ImportDelimited(Services(), Columns({kNom}), request).cards, 1u);
  EXPECT_TRUE(files_.Exists(kMain));
  EXPECT_TRUE(files_.Exists("/seat/CLIENTS.ADR"));
  EXPECT_FALSE(files_.Exists("/dir/CLIENTS.ADR"));
}

TEST_F(DelimitedImport, TheDefaultRanksFillTheSparePersonFieldToo) {
  EXPECT_EQ(Import("M.;Paul;Durand;SA;;;;69000;Lyon;;01 02;;03;3615 X;04;r1;;;;;r6;22;Note\r\n",
                   TransferProfile::OfNewInstallation())
                .cards,
            1u);
  EXPECT_EQ(Card(0), MakeCard({{kQualite, "M."},
                               {kPrenom, "Paul"},
                               {kNom, "Durand"},
                               {kSparePerson, "Durand"},
                               {kSte1, "SA"},
                               {kPostalCode, "69000"},
                               {kVille, "Lyon"},
                               {kTel1, "01 02"},
                               {kFax, "03"},
                               {kMtel, "3615 X"},
                               {kModem, "04"},
                               {kRef1, "r1"},
                               {kRef6, "r6"},
                               {kNotes, "Note"}}));
}

TEST_F(DelimitedImport, TakesQuotedFields) {
  TransferProfile profile = Columns({kNom, kVille});
  profile.set_field_separator("22h 2Ch");
  profile.set_card_separator("0Dh 0Ah");
  EXPECT_EQ(Import("\"Durand\",\"Lyon; Rh\x93ne\"\r\n\"Martin\",\"\"\r\n", profile).cards, 2u);
  EXPECT_EQ(Card(0), MakeCard({{kNom, "Durand"}, {kVille, "Lyon; Rh\x93ne"}}));
  EXPECT_EQ(Card(1), MakeCard({{kNom, "Martin"}}));
  EXPECT_EQ(profile.field_separator(), "22h 2Ch") << "the texts of the profile stay";
  EXPECT_EQ(profile.card_separator(), "0Dh 0Ah");
}

TEST_F(DelimitedImport, TakesTabsAndLineFeeds) {
  TransferProfile profile = Columns({kNom, kVille});
  profile.set_field_separator("TAB");
  profile.set_card_separator("LF");
  EXPECT_EQ(Import("Durand\tLyon\nMartin\tParis\n", profile).cards, 2u);
  EXPECT_EQ(Card(1), MakeCard({{kNom, "Martin"}, {kVille, "Paris"}}));
}

TEST_F(DelimitedImport, TextBehindTheLastSeparatorIsNotImported) {
  EXPECT_EQ(Import("Durand\r\nMartin", Columns({kNom})).cards, 1u);
  EXPECT_EQ(Import("Martin", Columns({kNom})).cards, 0u);
  EXPECT_EQ(CardCount(), 1u);
}

TEST_F(DelimitedImport, AFileShorterThanTheCardSeparatorHasNoLine) {
  const TransferOutcome outcome = Import("x", Columns({kNom}));
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.cards, 0u);
}

TEST_F(DelimitedImport, AnEmptyCardSeparatorHasNoLine) {
  TransferProfile profile = Columns({kNom});
  profile.set_card_separator("");
  const TransferOutcome outcome = Import("Durand\r\n", profile);
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.cards, 0u);
}

TEST_F(DelimitedImport, AnEmptySourceFailsWithoutAWord) {
  const TransferOutcome outcome = Import("", Columns({kNom}));
  EXPECT_EQ(outcome.result, -1);
  EXPECT_EQ(outcome.message, "");
  EXPECT_THAT(progress_.opened, testing::IsEmpty());
  EXPECT_TRUE(files_.Exists(kMain)) << "the directory is made before the source is looked at";
}

TEST_F(DelimitedImport, AnUnreadableSourceIsToldAndTouchesNothing) {
  AddCards({MakeCard({{kNom, "Blanc"}})}, false);
  const std::string before = Contents(kMain);
  const TransferOutcome outcome =
      ImportDelimited(Services(), Columns({kNom}), Request(/*replace=*/true));
  EXPECT_EQ(outcome.result, -1);
  EXPECT_EQ(outcome.message, "/in.txt\nErreur en lecture...");
  EXPECT_EQ(outcome.title_id, 92);
  EXPECT_EQ(Contents(kMain), before);
}

TEST_F(DelimitedImport, ADestinationThatIsNoDirectoryIsTold) {
  files_.SetContents(kMain, AsBytes("a text"));
  const TransferOutcome outcome = Import("Durand\r\n", Columns({kNom}));
  EXPECT_EQ(outcome.result, -1);
  EXPECT_EQ(outcome.message, "Accès au fichier /dir/CLIENTS.DAN impossible");
  EXPECT_EQ(outcome.title_id, 92);
  EXPECT_EQ(Contents(kMain), "a text");
}

TEST_F(DelimitedImport, ALineWithoutARankedFieldAddsNothing) {
  const TransferOutcome outcome = Import("a\r\na;b\r\nc\r\n", Columns({-1, kNom}));
  EXPECT_EQ(outcome.cards, 1u);
  EXPECT_EQ(Card(0), MakeCard({{kNom, "b"}}));
  EXPECT_EQ(progress_.steps, 1);
}

TEST_F(DelimitedImport, ALineOfSeparatorsMakesAnEmptyCard) {
  EXPECT_EQ(Import(";;\r\n", Columns({kNom, kVille})).cards, 1u);
  EXPECT_EQ(Card(0), CardRecord());
}

TEST_F(DelimitedImport, ACardWithoutItsKeyFieldIsAddedAsItStands) {
  EXPECT_EQ(Import(";Lyon;Durand\r\n", Columns({kSte1, kVille, kNom})).cards, 1u);
  EXPECT_EQ(Card(0), MakeCard({{kVille, "Lyon"}, {kNom, "Durand"}}));
  EXPECT_THAT(NamesInList(), ElementsAre("Durand"));
}

TEST_F(DelimitedImport, TheProgressTotalLeavesOutEmptyLines) {
  EXPECT_EQ(Import("a\r\n\r\n\r\nb\r\n", Columns({kNom})).cards, 2u);
  EXPECT_THAT(progress_.opened, Contains(Pair(ProgressForm::kTransfer, 2u)));
  EXPECT_EQ(progress_.steps, 2);
  EXPECT_EQ(progress_.closed, 1);
}

TEST_F(DelimitedImport, AnAbortKeepsTheCardsAlreadyAdded) {
  progress_.abort_after = 2;
  const TransferOutcome outcome = Import(Lines(5), Columns({kNom}));
  EXPECT_EQ(outcome.result, 0);
  EXPECT_TRUE(outcome.aborted);
  EXPECT_EQ(outcome.cards, 2u);
  EXPECT_EQ(outcome.message, "");
  EXPECT_EQ(NamesInList().size(), 2u);
  EXPECT_EQ(progress_.closed, 1);
}

TEST_F(DelimitedImport, Line10001AndThoseBehindAreLeftOutWithoutAWord) {
  std::string text;
  for (int i = 0; i < 10000; ++i) text += std::string(1, static_cast<char>('a' + i % 26)) + "\r\n";
  const TransferOutcome outcome = Import(text + "10001\r\n\r\nz\r\n", Columns({kNom}));
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.cards, 10000u);
  EXPECT_EQ(outcome.message, "");
  EXPECT_EQ(outcome.lines_left_out, 3u);
  EXPECT_EQ(Card(9999), MakeCard({{kNom, "p"}}));
  EXPECT_EQ(CardCount(), 10000u);
}

TEST_F(DelimitedImport, EmptyLinesCountAmongTheFirst10000) {
  const TransferOutcome outcome = Import(Lines(9999, "\r\n") + "x\r\ny\r\n", Columns({kNom}));
  EXPECT_EQ(outcome.cards, 1u);
  EXPECT_EQ(outcome.lines_left_out, 1u);
  EXPECT_EQ(Card(0), MakeCard({{kNom, "x"}}));
  EXPECT_THAT(progress_.opened, ElementsAre(Pair(ProgressForm::kTransfer, 1u)));
}

TEST_F(DelimitedImport, ALineLongerThanTheBufferIsSkipped) {
  const std::string fits = "fits;" + std::string(32767 - 7, 'x') + "\r\n";
  const std::string too_long = "long;" + std::string(32767 - 6, 'x') + "\r\n";
  const TransferOutcome outcome = Import("a\r\n" + fits + too_long + "b\r\n", Columns({kNom}));
  EXPECT_EQ(outcome.cards, 3u);
  EXPECT_THAT(NamesInList(), ElementsAre("a", "b", "fits"));
  EXPECT_THAT(progress_.opened, Contains(Pair(ProgressForm::kTransfer, 4u)));
}

TEST_F(DelimitedImport, LinesMaySpanThePiecesOfALargeFile) {
  const std::string notes(64, 'n');
  std::string text;
  for (int i = 0; i < 9000; ++i) text += "Nom" + std::to_string(i) + ";" + notes + "\r\n";
  ASSERT_GT(text.size(), 600'000u);
  EXPECT_EQ(Import(text, Columns({kNom, kNotes})).cards, 9000u);
  std::string expected;
  for (int i = 0; i < 9000; ++i) {
    const std::string name = "Nom" + std::to_string(i);
    expected += name + std::string(kFieldTable[kNom].size - name.size(), '\0') + notes;
  }
  const std::string main = Contents(kMain);
  std::string imported;
  for (size_t card = kCardSize; card < main.size(); card += kCardSize) {
    imported += main.substr(card + kFieldTable[kNom].offset, kFieldTable[kNom].size);
    imported += main.substr(card + kFieldTable[kNotes].offset, kFieldTable[kNotes].size);
  }
  EXPECT_TRUE(imported == expected);
}

TEST_F(DelimitedImport, AnAnsiFileIsConverted) {
  SetSource("Durand;Gen\xE8ve\r\n\xC9tienne;N\xEEmes\r\n");
  ImportRequest request = Request();
  request.charset = CharacterSet::kAnsi;
  EXPECT_EQ(ImportDelimited(Services(), Columns({kNom, kVille}), request).cards, 2u);
  EXPECT_EQ(Card(0), MakeCard({{kNom, "Durand"}, {kVille, "Gen\x8Ave"}}));
  EXPECT_EQ(Card(1), MakeCard({{kNom, "Atienne"}, {kVille, "N\x8Cmes"}}))
      << "the first letter is tested before the conversion";
}

TEST_F(DelimitedImport, AnOemFileIsTakenAsItStands) {
  EXPECT_EQ(Import("Durand;Gen\xE8ve\r\n", Columns({kNom, kVille})).cards, 1u);
  EXPECT_EQ(Card(0), MakeCard({{kNom, "Durand"}, {kVille, "Gen\xE8ve"}}));
}

TEST_F(DelimitedImport, NothingIsLostWhenTheDirectoryIsFull) {
  AddCards({}, false);
  std::string main = Contents(kMain);
  main.resize(kCardSize * 32767, '\0');  // 32766 cards
  for (size_t card = 1; card < 32767; ++card) {
    main[kCardSize * card + kFieldTable[kSte1].offset] = static_cast<char>('A' + card % 26);
  }
  files_.SetContents(kMain, AsBytes(main));
  const TransferOutcome outcome = Import("Avant\r\nSuivant\r\nDernier\r\n", Columns({kNom}));
  EXPECT_EQ(outcome.result, -1);
  EXPECT_EQ(outcome.cards, 1u);
  EXPECT_TRUE(outcome.directory_full);
  EXPECT_EQ(outcome.message, kWriteMessage);
  EXPECT_EQ(outcome.title_id, 92);
  EXPECT_EQ(Contents(kMain).size(), kCardSize * 32768);
  EXPECT_EQ(Contents(kMain).substr(kCardSize, kCardSize * 32766), main.substr(kCardSize));
  EXPECT_EQ(Card(32766), MakeCard({{kNom, "Avant"}}));
  EXPECT_EQ(LoadLe16(files_.Contents(kMain), 96), 32767);
}

// Cards reach the disk in blocks of 85.
class DelimitedImportOnAFullDisk : public DelimitedImport {
 protected:
  // The disk is full from the moment on at which so many cards were added.
  TransferOutcome ImportOnto(int cards_before_full, int lines) {
    FaultFileSystem disk(files_);
    progress_.act_after = cards_before_full;
    progress_.act = [&disk] { disk.FillDisk(); };
    SetSource(Lines(lines));
    return ImportDelimited({disk, clock_, progress_}, Columns({kNom}), Request());
  }
};

TEST_F(DelimitedImportOnAFullDisk, TheCountIsWhatIsReallyInTheFile) {
  const TransferOutcome outcome = ImportOnto(100, 300);
  EXPECT_EQ(outcome.result, -1);
  EXPECT_EQ(outcome.message, kWriteMessage);
  EXPECT_EQ(outcome.cards, 85u);
  EXPECT_FALSE(outcome.directory_full);
  EXPECT_EQ(CardCount(), 85u);
  EXPECT_EQ(progress_.steps, 169) << "the card that met the full disk is not counted";
  EXPECT_EQ(progress_.closed, 1);
}

TEST_F(DelimitedImportOnAFullDisk, IsSeenWhenOnlyTheLastBlockMeetsIt) {
  const TransferOutcome outcome = ImportOnto(90, 100);
  EXPECT_EQ(outcome.result, -1);
  EXPECT_EQ(outcome.message, kWriteMessage);
  EXPECT_EQ(outcome.cards, 85u);
}

TEST_F(DelimitedImportOnAFullDisk, WhatIsInTheFileIsWholeAfterTheNextOpening) {
  AddCards({MakeCard({{kNom, "Blanc"}})}, false);
  EXPECT_EQ(ImportOnto(100, 300).cards, 85u);
  EXPECT_EQ(NamesInList().size(), 86u);
  progress_.opened.clear();
  EXPECT_EQ(NamesInList().size(), 86u);
  EXPECT_THAT(progress_.opened, testing::IsEmpty()) << "healed by the first opening";
}

}  // namespace
}  // namespace carnetel
