#include <gmock/gmock.h>

#include "tests/transfer/directory_transfer_testing.h"

namespace carnetel {
namespace {

using testing::ElementsAre;
using testing::Pair;

class DirectoryImport : public DirectoryTransfer {
 protected:
  static ImportRequest From(const std::string& source, bool replace = false) {
    return {source, Options(), replace, CharacterSet::kOem};
  }
  TransferOutcome ImportCards(bool replace = false) {
    return ImportDirectory(Services(), From(kForeign, replace));
  }
  std::vector<std::string> Names() { return NamesIn(Options()); }
};

TEST_F(DirectoryImport, AddsAllCardsAndMarksNothing) {
  AddNames({"Martin"}, true);
  MakeForeign({"Zola", "Blanc"});
  const std::string foreign = Contents(kForeign);
  progress_ = {};
  const TransferOutcome outcome = ImportCards();
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.cards, 2u);
  EXPECT_EQ(outcome.message, "");
  EXPECT_EQ(Contents(kForeign), foreign);
  EXPECT_EQ(Contents(kMain).substr(2 * kCardSize, CardRecord::kWriteTimeOffset),
            foreign.substr(kCardSize, CardRecord::kWriteTimeOffset));
  EXPECT_THAT(progress_.opened, ElementsAre(Pair(ProgressForm::kTransfer, 2u)));
  EXPECT_EQ(progress_.steps, 2);
  EXPECT_EQ(progress_.closed, 1);
  EXPECT_THAT(Names(), ElementsAre("Blanc", "Martin", "Zola"));
  Directory directory(Services(), Options());
  ASSERT_EQ(directory.OpenDirectory(), OpenResult::kOpened);
  EXPECT_EQ(directory.marked_count(), 1);
}

TEST_F(DirectoryImport, TheProgressTotalCanBeOneTooMany) {
  MakeForeign({"Zola"});
  files_.SetContents(kForeign, AsBytes(Contents(kForeign) + std::string(200, 'x')));
  progress_ = {};
  EXPECT_EQ(ImportCards().cards, 1u) << "a partial card does not count";
  EXPECT_THAT(progress_.opened, ElementsAre(Pair(ProgressForm::kTransfer, 2u)));
  EXPECT_EQ(progress_.steps, 1);
}

TEST_F(DirectoryImport, EmptyCardsAndCardsThatAreThereAlreadyAreAddedToo) {
  AddNames({"Zola"}, false);
  MakeForeign({"Zola", ""});
  EXPECT_EQ(ImportCards().cards, 2u);
  EXPECT_EQ(CardCount(), 3u);
}

TEST_F(DirectoryImport, NothingIsConverted) {
  MakeForeign({"Andr\x82"});
  ImportRequest request = From(kForeign);
  request.charset = CharacterSet::kAnsi;
  EXPECT_EQ(ImportDirectory(Services(), request).cards, 1u);
  EXPECT_THAT(Names(), ElementsAre("Andr\x82"));
}

TEST_F(DirectoryImport, ReplaceDeletesTheWholeFamilyFirst) {
  AddNames({"Martin"}, true);
  files_.SetContents("/dir/CLIENTS.LST", AsBytes("layout"));
  MakeForeign({"Zola"});
  EXPECT_EQ(ImportCards(/*replace=*/true).cards, 1u);
  EXPECT_THAT(Names(), ElementsAre("Zola"));
  EXPECT_FALSE(files_.Exists("/dir/CLIENTS.LST"));
}

TEST_F(DirectoryImport, ASourceWithoutItsExtensionOrInSmallLettersIsFound) {
  MakeForeign({"Zola"});
  EXPECT_EQ(ImportDirectory(Services(), From("/sub/EXTRAIT")).cards, 1u);
  ASSERT_TRUE(files_.Rename(kForeign, "/sub/extrait.dan"));
  EXPECT_EQ(ImportDirectory(Services(), From(kForeign)).cards, 1u);
}

TEST_F(DirectoryImport, AnAbortKeepsTheCardsAlreadyAdded) {
  MakeForeign({"a", "b", "c"});
  progress_ = {};
  progress_.abort_after = 2;
  const TransferOutcome outcome = ImportCards();
  EXPECT_EQ(outcome.result, 0);
  EXPECT_TRUE(outcome.aborted);
  EXPECT_EQ(outcome.cards, 2u);
  EXPECT_THAT(Names(), ElementsAre("a", "b"));
}

TEST_F(DirectoryImport, ASourceThatCannotBeReadIsToldAndTouchesNothing) {
  AddNames({"Martin"}, false);
  const std::string main = Contents(kMain);
  const auto expect_told = [&](const TransferOutcome& outcome) {
    EXPECT_EQ(outcome.result, -1);
    EXPECT_EQ(outcome.message, "/sub/EXTRAIT.DAN\nErreur en lecture...");
    EXPECT_EQ(outcome.title_id, 92);
    EXPECT_EQ(Contents(kMain), main);
  };
  expect_told(ImportCards(/*replace=*/true));
  MakeForeign({"Zola"});
  RefusingFileSystem files(files_, kForeign);
  expect_told(ImportDirectory({files, clock_, progress_}, From(kForeign, true)));
  files_.Remove(kForeign);
  ASSERT_TRUE(files_.MakeFolder(kForeign));
  expect_told(ImportCards(/*replace=*/true));
}

TEST_F(DirectoryImport, ADestinationThatCannotBeOpenedIsTold) {
  MakeForeign({"Zola"});
  files_.SetContents(kMain, AsBytes("a text"));
  const TransferOutcome outcome = ImportCards();
  EXPECT_EQ(outcome.result, -1);
  EXPECT_EQ(outcome.message, "/dir/CLIENTS.DAN\nErreur en lecture...");
  EXPECT_EQ(outcome.title_id, 92);
  EXPECT_EQ(Contents(kMain), "a text");
}

TEST_F(DirectoryImport, AFullDirectoryIsToldWithResultZero) {
  AddCards({}, false);
  std::string main = Contents(kMain);
  main.resize(kCardSize * 32767, '\0');  // 32766 cards
  for (size_t card = 1; card < 32767; ++card) {
    main[kCardSize * card + kFieldTable[kSte1].offset] = static_cast<char>('A' + card % 26);
  }
  files_.SetContents(kMain, AsBytes(main));
  MakeForeign({"Avant", "Suivant"});
  const TransferOutcome outcome = ImportCards();
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.cards, 1u);
  EXPECT_TRUE(outcome.directory_full);
  EXPECT_EQ(outcome.message, "/dir/CLIENTS.DAN\nErreur en écriture...");
  EXPECT_EQ(outcome.title_id, 92);
  EXPECT_EQ(CardCount(), 32767u);
}

TEST_F(DirectoryImport, AFullDiskIsToldWithResultZero) {
  MakeForeign({"a", "b"});
  AddNames({"Martin"}, false);
  progress_ = {};
  progress_.act_after = 1;
  progress_.act = [this] { disk_.FillDisk(); };
  const TransferOutcome outcome = ImportDirectory({disk_, clock_, progress_}, From(kForeign));
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.message, "/dir/CLIENTS.DAN\nErreur en écriture...");
  EXPECT_EQ(outcome.cards, 0u);
  EXPECT_THAT(Names(), ElementsAre("Martin"));
}

}  // namespace
}  // namespace carnetel
