#include <gmock/gmock.h>

#include "tests/transfer/fixed_testing.h"
#include "tests/transfer/refusing_file_system.h"
#include "tests/transfer/transfer_testing.h"
#include "transfer/fixed.h"

namespace carnetel {
namespace {

using std::string_literals::operator""s;
using testing::Contains;
using testing::ElementsAre;
using testing::Pair;

constexpr char kWriteMessage[] = "/dir/CLIENTS.DAN\nErreur en écriture...";

class FixedImport : public TransferTest {
 protected:
  TransferOutcome ImportText(std::string_view text, const TransferProfile& profile) {
    SetSource(text);
    return ImportFixed(Services(), profile, Request());
  }
  // Records of ten bytes: a name.
  static TransferProfile Names() { return FixedLayout(0, 10, {{kNom, {0, 10}}}); }

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

std::string Records(int count) {
  std::string records;
  for (int i = 0; i < count; ++i) records += "x         ";
  return records;
}

TEST_F(FixedImport, MakesADirectoryWithACardForEachRecord) {
  const TransferProfile profile = FixedLayout(4, 12, {{kNom, {0, 6}}, {kVille, {6, 6}}});
  const TransferOutcome outcome = ImportText("HEADDurandLyon\0\0MartinParis\0"s, profile);
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.cards, 2u);
  EXPECT_EQ(outcome.message, "");
  EXPECT_FALSE(outcome.aborted);
  ASSERT_EQ(CardCount(), 2u);
  EXPECT_EQ(Card(0), MakeCard({{kNom, "Durand"}, {kVille, "Lyon"}}));
  EXPECT_EQ(Card(1), MakeCard({{kNom, "Martin"}, {kVille, "Paris"}}));
  EXPECT_THAT(progress_.opened, ElementsAre(Pair(ProgressForm::kTransfer, 2u)));
  EXPECT_EQ(progress_.steps, 2);
  EXPECT_EQ(progress_.closed, 1);
}

TEST_F(FixedImport, TheDefaultLayoutReadsAMainFileOfTheEarlyShape) {
  std::string text(768, 'h');
  std::string record(768, '\0');
  record.replace(0, 6, "Garage");
  record.replace(277, 6, "Durand");
  record.replace(596, 5, "69001");
  record.replace(610, 4, "Note");
  EXPECT_EQ(ImportText(text + record, TransferProfile()).cards, 1u);
  EXPECT_EQ(
      Card(0),
      MakeCard({{kSte1, "Garage"}, {kNom, "Durand"}, {kPostalCode, "69001"}, {kNotes, "Note"}}));
}

TEST_F(FixedImport, TrailingBytesThatFillNoRecordAreIgnored) {
  EXPECT_EQ(ImportText("Durand    Martin    Bla", Names()).cards, 2u);
  EXPECT_THAT(NamesInList(), ElementsAre("Durand    ", "Martin    "));
  EXPECT_THAT(progress_.opened, Contains(Pair(ProgressForm::kTransfer, 2u)));
}

TEST_F(FixedImport, ASourceThatEndsBeforeTheFirstCardHasNoRecord) {
  const TransferOutcome outcome = ImportText("Durand", FixedLayout(768, 10, {{kNom, {0, 10}}}));
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.cards, 0u);
  EXPECT_EQ(ImportText("", Names()).result, 0);
}

TEST_F(FixedImport, ANegativeOffsetIsTheStart) {
  EXPECT_EQ(ImportText("Durand    ", FixedLayout(-5, 10, {{kNom, {0, 10}}})).cards, 1u);
  EXPECT_THAT(NamesInList(), ElementsAre("Durand    "));
}

TEST_F(FixedImport, ARecordWithoutAnyFieldMakesAnEmptyCard) {
  const TransferOutcome outcome = ImportText("Durand    Martin    ", FixedLayout(0, 10, {}));
  EXPECT_EQ(outcome.cards, 2u);
  EXPECT_EQ(Card(0), CardRecord());
  EXPECT_EQ(Card(1), CardRecord());
}

TEST_F(FixedImport, APlaceLargerThanItsFieldFillsTheFieldsBehind) {
  const std::string address = "12, rue Basse" + std::string(19, ' ') + "3e gauche";
  EXPECT_EQ(
      ImportText("Durand" + address, FixedLayout(0, 47, {{kNom, {0, 6}}, {kAdr2, {6, 41}}})).cards,
      1u);
  EXPECT_EQ(Card(0), MakeCard({{kNom, "Durand"},
                               {kAdr2, "12, rue Basse" + std::string(19, ' ')},
                               {kAdr3, "3e gauche"}}));
}

TEST_F(FixedImport, ARecordEqualToACardMakesASecondCard) {
  EXPECT_EQ(ImportText("Durand    Durand    ", Names()).cards, 2u);
  EXPECT_EQ(ImportText("Durand    ", Names()).cards, 1u);
  EXPECT_EQ(CardCount(), 3u);
}

TEST_F(FixedImport, AnAnsiFileIsConverted) {
  SetSource("Andr\xE9 N\xEEmes\xC9rik  N\xEEmes");
  ImportRequest request = Request();
  request.charset = CharacterSet::kAnsi;
  const TransferProfile profile = FixedLayout(0, 11, {{kNom, {0, 6}}, {kVille, {6, 5}}});
  EXPECT_EQ(ImportFixed(Services(), profile, request).cards, 2u);
  EXPECT_EQ(Card(0), MakeCard({{kNom, "Andr\x82 "}, {kVille, "N\x8Cmes"}}));
  EXPECT_EQ(Card(1), MakeCard({{kNom, "Arik  "}, {kVille, "N\x8Cmes"}}))
      << "the first letter is tested before the conversion";
}

TEST_F(FixedImport, AnOemFileIsTakenAsItStands) {
  EXPECT_EQ(
      ImportText("Andr\xE9 N\x8Cm", FixedLayout(0, 9, {{kNom, {0, 6}}, {kVille, {6, 3}}})).cards,
      1u);
  EXPECT_EQ(Card(0), MakeCard({{kNom, "Andr\xE9 "}, {kVille, "N\x8Cm"}}));
}

TEST_F(FixedImport, AddsBehindTheCardsThatAreThereAndMarksNothing) {
  AddCards({MakeCard({{kNom, "Blanc"}}), MakeCard({{kNom, "Zola"}})}, true);
  EXPECT_EQ(ImportText("Durand    ", Names()).cards, 1u);
  EXPECT_THAT(NamesInList(), ElementsAre("Blanc", "Durand    ", "Zola"));
  Directory directory(Services(), Options());
  ASSERT_EQ(directory.OpenDirectory(), OpenResult::kOpened);
  EXPECT_EQ(directory.marked_count(), 2);
}

TEST_F(FixedImport, ClosesAConsistentFamily) {
  EXPECT_EQ(ImportText("b         a         ", Names()).cards, 2u);
  progress_.opened.clear();
  EXPECT_EQ(NamesInList().size(), 2u);
  EXPECT_THAT(progress_.opened, testing::IsEmpty()) << "nothing had to be made anew";
}

TEST_F(FixedImport, ReplaceDeletesTheWholeFamilyFirst) {
  AddCards({MakeCard({{kNom, "Blanc"}})}, true);
  files_.SetContents("/dir/CLIENTS.LST", AsBytes("layout"));
  SetSource("Durand    ");
  EXPECT_EQ(ImportFixed(Services(), Names(), Request(true)).cards, 1u);
  EXPECT_THAT(NamesInList(), ElementsAre("Durand    "));
  EXPECT_FALSE(files_.Exists("/dir/CLIENTS.LST"));
}

TEST_F(FixedImport, AnAbortKeepsTheCardsAlreadyAdded) {
  progress_.abort_after = 2;
  const TransferOutcome outcome = ImportText(Records(5), Names());
  EXPECT_EQ(outcome.result, 0);
  EXPECT_TRUE(outcome.aborted);
  EXPECT_EQ(outcome.cards, 2u);
  EXPECT_EQ(outcome.message, "");
  EXPECT_EQ(NamesInList().size(), 2u);
}

// Neither the family nor the source is touched by what fails before the first card.
class FixedImportRefused : public FixedImport {
 protected:
  void ExpectSilentAndUntouched(const TransferOutcome& outcome, const std::string& main) {
    EXPECT_EQ(outcome.result, -1);
    EXPECT_EQ(outcome.message, "");
    EXPECT_EQ(outcome.cards, 0u);
    EXPECT_EQ(Contents(kMain), main);
    EXPECT_THAT(progress_.opened, testing::IsEmpty());
  }
  std::string SomeCards() {
    AddCards({MakeCard({{kNom, "Blanc"}})}, false);
    return Contents(kMain);
  }
};

TEST_F(FixedImportRefused, ARecordSizeNotAboveZero) {
  const std::string main = SomeCards();
  SetSource("Durand    ");
  for (const int16_t size : {int16_t{0}, int16_t{-10}}) {
    const TransferProfile profile = FixedLayout(0, size, {{kNom, {0, 10}}});
    ExpectSilentAndUntouched(ImportFixed(Services(), profile, Request(true)), main);
  }
}

TEST_F(FixedImportRefused, AMissingSource) {
  const std::string main = SomeCards();
  ExpectSilentAndUntouched(ImportFixed(Services(), Names(), Request(true)), main);
}

TEST_F(FixedImportRefused, AFolderAsSource) {
  const std::string main = SomeCards();
  ASSERT_TRUE(files_.MakeFolder(kSource));
  ExpectSilentAndUntouched(ImportFixed(Services(), Names(), Request(true)), main);
}

TEST_F(FixedImportRefused, ASourceThatMayNotBeRead) {
  const std::string main = SomeCards();
  SetSource("Durand    ");
  RefusingFileSystem files(files_, kSource);
  const TransferOutcome outcome = ImportFixed({files, clock_, progress_}, Names(), Request(true));
  ExpectSilentAndUntouched(outcome, main);
}

TEST_F(FixedImportRefused, ADestinationThatIsNoDirectory) {
  files_.SetContents(kMain, AsBytes("a text"));
  ExpectSilentAndUntouched(ImportText("Durand    ", Names()), "a text");
}

TEST_F(FixedImportRefused, ADestinationThatMayNotBeWritten) {
  const std::string main = SomeCards();
  SetSource("Durand    ");
  RefusingFileSystem files(files_, kMain);
  ExpectSilentAndUntouched(ImportFixed({files, clock_, progress_}, Names(), Request()), main);
}

TEST_F(FixedImport, AFullDirectoryIsToldWithResultZero) {
  AddCards({}, false);
  std::string main = Contents(kMain);
  main.resize(kCardSize * 32767, '\0');  // 32766 cards
  for (size_t card = 1; card < 32767; ++card) {
    main[kCardSize * card + kFieldTable[kSte1].offset] = static_cast<char>('A' + card % 26);
  }
  files_.SetContents(kMain, AsBytes(main));
  const TransferOutcome outcome = ImportText("Avant     Suivant   Dernier   ", Names());
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.cards, 1u);
  EXPECT_TRUE(outcome.directory_full);
  EXPECT_EQ(outcome.message, kWriteMessage);
  EXPECT_EQ(outcome.title_id, 92);
  EXPECT_EQ(Contents(kMain).substr(kCardSize, kCardSize * 32766), main.substr(kCardSize));
  EXPECT_EQ(Card(32766), MakeCard({{kNom, "Avant     "}}));
  EXPECT_EQ(CardCount(), 32767u);
}

TEST_F(FixedImport, AFullDiskIsToldWithResultZero) {
  FaultFileSystem disk(files_);
  progress_.act_after = 100;
  progress_.act = [&disk] { disk.FillDisk(); };
  SetSource(Records(300));
  const TransferOutcome outcome = ImportFixed({disk, clock_, progress_}, Names(), Request());
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.message, kWriteMessage);
  EXPECT_FALSE(outcome.directory_full);
  EXPECT_EQ(outcome.cards, 85u) << "cards reach the disk in blocks of 85";
  EXPECT_EQ(CardCount(), 85u);
  EXPECT_EQ(progress_.closed, 1);
  EXPECT_EQ(NamesInList().size(), 85u);
}

}  // namespace
}  // namespace carnetel
