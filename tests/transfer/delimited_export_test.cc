#include <gmock/gmock.h>

#include "tests/transfer/transfer_testing.h"

namespace carnetel {
namespace {

using std::string_literals::operator""s;
using testing::ElementsAre;
using testing::Pair;

class DelimitedExport : public TransferTest {
 protected:
  // The counter of the whole file's selection, as another program may have left it.
  void SetCounter(uint16_t count) {
    std::vector<std::byte> address = files_.Contents("/dir/CLIENTS.ADR");
    StoreLe16(address, 130, count);
    files_.SetContents("/dir/CLIENTS.ADR", address);
  }
};

CardRecord FullCard() {
  return MakeCard({{kSte1, "Garage du Midi"},
                   {kSte2, "Atelier"},
                   {kAdr1, "12, rue Basse"},
                   {kAdr2, "BP 7"},
                   {kAdr3, "jamais"},
                   {kShortPostalCode, "69001"},
                   {kVille, "Lyon"},
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
                   {kNotes, "ferm\x82 le lundi"},
                   {kSpare27, "z"}});
}

constexpr char kFullLine[] =
    "M.;Andr\x82;Durand;associ\x82;Garage du Midi;Atelier;12, rue Basse;BP 7;69002 CEDEX;Lyon;"
    "France;04 78 01 02 03;06 01;04 78 00;3615 GARAGE;04 79;un;deux;trois;quatre;cinq;six;;"
    "ferm\x82 le lundi\r\n";

TEST_F(DelimitedExport, TheDefaultRanksGive24Columns) {
  AddCards({FullCard()}, true);
  const TransferOutcome outcome = Export(TransferProfile::OfNewInstallation());
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.cards, 1u);
  EXPECT_EQ(outcome.message, "");
  EXPECT_EQ(Contents(kTarget), kFullLine);
  EXPECT_EQ(std::ranges::count(Contents(kTarget), ';'), 23);
}

TEST_F(DelimitedExport, QuoteModeWithTheDefaultRanks) {
  AddCards({MakeCard({{kNom, "Durand"}, {kVille, "Lyon"}, {kNotes, "dit \"oui\""}})}, true);
  TransferProfile profile;
  EXPECT_EQ(Export(profile).cards, 1u);
  EXPECT_EQ(Contents(kTarget),
            "\"\",\"\",\"Durand\",\"\",\"\",\"\",\"\",\"\",\"\",\"Lyon\",\"\",\"\",\"\",\"\","
            "\"\",\"\",\"\",\"\",\"\",\"\",\"\",\"\",\"\",\"dit \"oui\"\"\r\n");
}

TEST_F(DelimitedExport, WritesMarkedCardsInTheOrderOfTheList) {
  AddCards({MakeCard({{kNom, "Zola"}}), MakeCard({{kNom, "Blanc"}})}, true);
  AddCards({MakeCard({{kNom, "Martin"}})}, false);
  AddCards({MakeCard({{kNom, "Hugo"}})}, true);
  EXPECT_EQ(Export(Columns({kNom})).cards, 3u);
  EXPECT_EQ(Contents(kTarget), "Blanc\r\nHugo\r\nZola\r\n");
  EXPECT_THAT(progress_.opened, ElementsAre(Pair(ProgressForm::kTransfer, 3u)));
  EXPECT_EQ(progress_.steps, 3);
  EXPECT_EQ(progress_.closed, 1);
}

TEST_F(DelimitedExport, NulSeparatorsAreOneZeroByteEach) {
  AddCards({MakeCard({{kNom, "Durand"}, {kVille, "Lyon"}})}, true);
  TransferProfile profile = Columns({kNom, kPrenom, -1, kVille});
  profile.set_field_separator("NUL");
  EXPECT_EQ(Export(profile).cards, 1u);
  EXPECT_EQ(Contents(kTarget), "Durand\0\0\0Lyon\0\r\n"s);
}

TEST_F(DelimitedExport, AnsiConvertsTheLine) {
  AddCards({MakeCard({{kNom, "Andr\x82"}, {kVille, "N\x8Cmes"}}),
            MakeCard({{kNom, "Zo\x89"}, {kVille, "S\x8Ate"}})},
           true);
  EXPECT_EQ(Export(Columns({kNom, kVille}), false, CharacterSet::kAnsi).cards, 2u);
  EXPECT_EQ(Contents(kTarget), "Andr\xE9;N\xEEmes\r\nZo\xEB;S\xE8te\r\n");
}

TEST_F(DelimitedExport, AnsiWithNulSeparatorsReachesTheFirstFieldOnly) {
  AddCards({MakeCard({{kNom, "Andr\x82"}, {kVille, "N\x8Cmes"}}),
            MakeCard({{kNom, "Zo\x89"}, {kVille, "S\x8Ate"}})},
           true);
  TransferProfile profile = Columns({kNom, kVille});
  profile.set_field_separator("NUL");
  EXPECT_EQ(Export(profile, false, CharacterSet::kAnsi).cards, 2u);
  EXPECT_EQ(Contents(kTarget), "Andr\xE9\0N\x8Cmes\0\r\nZo\xEB\0S\x8Ate\0\r\n"s);
}

TEST_F(DelimitedExport, ACardWithoutAPostalCodeExportsTheShortOne) {
  AddCards({MakeCard({{kNom, "a"}, {kShortPostalCode, "69001"}})}, true);
  EXPECT_EQ(Export(Columns({kNom, kPostalCode})).cards, 1u);
  EXPECT_EQ(Contents(kTarget), "a;69001\r\n");
}

TEST_F(DelimitedExport, AddsBehindWhatIsThere) {
  AddCards({MakeCard({{kNom, "Durand"}})}, true);
  files_.SetContents(kTarget, AsBytes("header\r\n"));
  EXPECT_EQ(Export(Columns({kNom})).cards, 1u);
  EXPECT_EQ(Contents(kTarget), "header\r\nDurand\r\n");
}

TEST_F(DelimitedExport, ReplaceStartsWithAnEmptyFile) {
  AddCards({MakeCard({{kNom, "Durand"}})}, true);
  files_.SetContents(kTarget, AsBytes("a long header\r\n"));
  EXPECT_EQ(Export(Columns({kNom}), /*replace=*/true).cards, 1u);
  EXPECT_EQ(Contents(kTarget), "Durand\r\n");
}

TEST_F(DelimitedExport, NothingMarkedFailsWithoutAWordAndTouchesNothing) {
  AddCards({MakeCard({{kNom, "Durand"}})}, false);
  files_.SetContents(kTarget, AsBytes("as before"));
  const TransferOutcome outcome = Export(Columns({kNom}), /*replace=*/true);
  EXPECT_EQ(outcome.result, -1);
  EXPECT_EQ(outcome.message, "");
  EXPECT_EQ(Contents(kTarget), "as before");
  EXPECT_TRUE(progress_.opened.empty());
}

TEST_F(DelimitedExport, TheCounterDecidesHowManyMarkedCardsAreTaken) {
  AddCards({MakeCard({{kNom, "a"}}), MakeCard({{kNom, "b"}}), MakeCard({{kNom, "c"}})}, true);
  SetCounter(2);
  EXPECT_EQ(Export(Columns({kNom})).cards, 2u);
  EXPECT_EQ(Contents(kTarget), "a\r\nb\r\n");
  SetCounter(9);
  EXPECT_EQ(Export(Columns({kNom}), /*replace=*/true).cards, 3u);
  EXPECT_EQ(Contents(kTarget), "a\r\nb\r\nc\r\n");
}

TEST_F(DelimitedExport, ADestinationThatCannotBeOpenedIsNoFailure) {
  AddCards({MakeCard({{kNom, "a"}})}, true);
  ASSERT_TRUE(files_.MakeFolder(kTarget));
  const TransferOutcome outcome = Export(Columns({kNom}));
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.message, "");
  EXPECT_TRUE(outcome.not_opened);
  EXPECT_EQ(outcome.cards, 0u);
}

TEST_F(DelimitedExport, AnAbortKeepsTheLinesAlreadyWritten) {
  AddCards({MakeCard({{kNom, "a"}}), MakeCard({{kNom, "b"}}), MakeCard({{kNom, "c"}})}, true);
  progress_.abort_after = 2;
  const TransferOutcome outcome = Export(Columns({kNom}));
  EXPECT_EQ(outcome.result, 0);
  EXPECT_TRUE(outcome.aborted);
  EXPECT_EQ(outcome.cards, 2u);
  EXPECT_EQ(Contents(kTarget), "a\r\nb\r\n");
}

TEST_F(DelimitedExport, ACardThatCannotBeReadIsTold) {
  AddCards({MakeCard({{kNom, "a"}}), MakeCard({{kNom, "b"}})}, true);
  Directory directory(Services(), Options());
  ASSERT_EQ(directory.OpenDirectory(), OpenResult::kOpened);
  files_.SetContents(kMain, AsBytes(Contents(kMain).substr(0, 3 * kCardSize - 1)));
  const TransferOutcome outcome =
      ExportDelimited(directory, Columns({kNom}), {kTarget, false, CharacterSet::kOem});
  EXPECT_EQ(outcome.result, -1);
  EXPECT_EQ(outcome.message, "/dir/CLIENTS.DAN\nErreur en lecture...");
  EXPECT_EQ(outcome.title_id, 104);
  EXPECT_EQ(outcome.cards, 1u);
  EXPECT_EQ(Contents(kTarget), "a\r\n");
}

TEST_F(DelimitedExport, AFullDiskIsTold) {
  AddCards({MakeCard({{kNom, "a"}}), MakeCard({{kNom, "b"}})}, true);
  FaultFileSystem disk(files_);
  Directory directory({disk, clock_, progress_}, Options());
  ASSERT_EQ(directory.OpenDirectory(), OpenResult::kOpened);
  disk.FillDisk();
  const TransferOutcome outcome =
      ExportDelimited(directory, Columns({kNom}), {kTarget, false, CharacterSet::kOem});
  EXPECT_EQ(outcome.result, -1);
  EXPECT_EQ(outcome.message, "/out.txt\nErreur en écriture...");
  EXPECT_EQ(outcome.title_id, 104);
  EXPECT_EQ(outcome.cards, 0u);
  EXPECT_EQ(progress_.closed, 1);
}

TEST_F(DelimitedExport, ADiskThatFillsHalfWayCountsTheBlocksWritten) {
  // Lines of 2002 bytes, 33 to a block of 64 KB.
  TransferProfile profile = Columns({kNom});
  profile.set_rank(kSpare27, 1999);
  profile.set_card_separator("CRLF");
  Directory directory(Services(), Options());
  ASSERT_EQ(directory.OpenDirectory(), OpenResult::kCreated);
  for (int i = 0; i < 100; ++i) {
    directory.context().current = MakeCard({{kNom, "a"}});
    uint32_t position = 0;
    ASSERT_EQ(CardDispatch(directory).Add(true, &position), 0);
  }
  directory.CloseDirectory();
  MarkAll();

  progress_.steps = 0;
  FaultFileSystem disk(files_);
  progress_.act_after = 40;
  progress_.act = [&disk] { disk.FillDisk(); };
  Directory source({disk, clock_, progress_}, Options());
  ASSERT_EQ(source.OpenDirectory(), OpenResult::kOpened);
  const TransferOutcome outcome =
      ExportDelimited(source, profile, {kTarget, false, CharacterSet::kOem});
  EXPECT_EQ(outcome.result, -1);
  EXPECT_EQ(outcome.message, "/out.txt\nErreur en écriture...");
  EXPECT_EQ(outcome.cards, 33u);
  EXPECT_EQ(Contents(kTarget).size(), 33u * 2002u);
  EXPECT_EQ(progress_.steps, 65);
}

}  // namespace
}  // namespace carnetel
