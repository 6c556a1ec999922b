#include <gmock/gmock.h>

#include "tests/transfer/directory_transfer_testing.h"

namespace carnetel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

class DirectoryExport : public DirectoryTransfer {
 protected:
  static ExportRequest To(bool replace) { return {kForeign, replace, CharacterSet::kOem}; }
  TransferOutcome ExportOn(FileSystem& files, const ExportRequest& request) {
    Directory directory({files, clock_, progress_}, Options());
    EXPECT_EQ(directory.OpenDirectory(), OpenResult::kOpened);
    return ExportDirectory(directory, request);
  }
  TransferOutcome ExportCards(bool replace = false) { return ExportOn(files_, To(replace)); }
};

TEST_F(DirectoryExport, MakesAMainFileOfTheMarkedCards) {
  AddNames({"Zola", "Blanc"}, true);
  AddNames({"Martin"}, false);
  const std::string main = Contents(kMain);
  const TransferOutcome outcome = ExportCards();
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.cards, 2u);
  EXPECT_EQ(outcome.message, "");
  MainHeader header = MainHeader::Template();
  header.BecomeEmpty();
  header.set_card_count(2);
  const CardRecord block = header.Block();
  EXPECT_EQ(Contents(kForeign), std::string(AsChars(block.bytes())) +
                                    main.substr(2 * kCardSize, kCardSize) +
                                    main.substr(kCardSize, kCardSize))
      << "bytes as they are, in the order of the list";
  EXPECT_THAT(progress_.opened, ElementsAre(Pair(ProgressForm::kTransfer, 2u)));
  EXPECT_EQ(progress_.steps, 2);
  EXPECT_EQ(progress_.closed, 1);
  EXPECT_FALSE(files_.Exists("/sub/EXTRAIT.ADR")) << "only the main file is made";
  EXPECT_THAT(ForeignNames(), ElementsAre("Blanc", "Zola"));
}

TEST_F(DirectoryExport, CardsAreNotConverted) {
  AddNames({"Andr\x82"}, true);
  EXPECT_EQ(ExportOn(files_, {kForeign, false, CharacterSet::kAnsi}).cards, 1u);
  EXPECT_THAT(ForeignNames(), ElementsAre("Andr\x82"));
}

TEST_F(DirectoryExport, TheExtensionIsAlwaysThatOfADirectory) {
  AddNames({"Zola"}, true);
  EXPECT_EQ(ExportOn(files_, {"/sub/EXTRAIT.TXT", false, CharacterSet::kOem}).cards, 1u);
  EXPECT_FALSE(files_.Exists("/sub/EXTRAIT.TXT"));
  EXPECT_EQ(ExportOn(files_, {"/sub/EXTRAIT", false, CharacterSet::kOem}).cards, 1u);
  EXPECT_THAT(ForeignNames(), ElementsAre("Zola", "Zola"));
}

TEST_F(DirectoryExport, AddingDeletesTheDerivedFilesAndTheNextOpeningHasAllCards) {
  AddNames({"Zola", "Blanc"}, true);
  MakeForeign({"Martin", "Hugo"});
  ASSERT_TRUE(files_.Exists("/sub/EXTRAIT.CRT"));
  const std::string old = Contents(kForeign);
  EXPECT_EQ(ExportCards().cards, 2u);
  EXPECT_FALSE(files_.Exists("/sub/EXTRAIT.ADR"));
  EXPECT_FALSE(files_.Exists("/sub/EXTRAIT.I01"));
  EXPECT_TRUE(files_.Exists("/sub/EXTRAIT.I02"));
  EXPECT_TRUE(files_.Exists("/sub/EXTRAIT.CRT"));
  EXPECT_EQ(Contents(kForeign).substr(kCardSize, 2 * kCardSize), old.substr(kCardSize));
  EXPECT_THAT(ForeignNames(), ElementsAre("Blanc", "Hugo", "Martin", "Zola"));
}

TEST_F(DirectoryExport, TheHeaderCountsTheCardsOfThisRunUntilAnOpening) {
  AddNames({"Zola", "Blanc"}, true);
  MakeForeign({"Martin", "Hugo", "Verne"});
  std::string expected = Contents(kForeign).substr(0, MainHeader::kSize);
  EXPECT_EQ(ExportCards().cards, 2u);
  EXPECT_EQ(ForeignCount(), 2u);
  expected.replace(MainHeader::kCountOffset, 2, std::string("\2\0", 2));
  EXPECT_EQ(Contents(kForeign).substr(0, MainHeader::kSize), expected)
      << "nothing else of the header changes";
  Directory directory(Services(), ForeignOptions());
  ASSERT_EQ(directory.OpenDirectory(), OpenResult::kOpened);
  EXPECT_EQ(directory.main().header().card_count(), 5u);
  EXPECT_EQ(directory.address().entry_count(), 5u);
}

// The second index lacks the new cards, and the address file made from it has their number wrong:
// the opening after that finds out and makes all anew.
TEST_F(DirectoryExport, SortedBySurnameTheSecondOpeningHasAllCards) {
  AddNames({"Zola", "Blanc"}, true);
  MakeForeign({"Martin", "Hugo"});
  EXPECT_EQ(ExportCards().cards, 2u);
  EXPECT_THAT(NamesIn(ForeignOptions(kNom)), ElementsAre("Hugo", "Martin"));
  EXPECT_THAT(NamesIn(ForeignOptions(kNom)), ElementsAre("Blanc", "Hugo", "Martin", "Zola"));
}

TEST_F(DirectoryExport, FindsAFamilyWrittenInSmallLetters) {
  AddNames({"Zola"}, true);
  MakeForeign({"Martin"});
  for (const char* extension : {"DAN", "ADR", "I01"}) {
    std::string small = extension;
    for (char& letter : small) letter = static_cast<char>(std::tolower(letter));
    ASSERT_TRUE(files_.Rename("/sub/EXTRAIT." + std::string(extension), "/sub/extrait." + small));
  }
  EXPECT_EQ(ExportCards().cards, 1u);
  EXPECT_FALSE(files_.Exists("/sub/EXTRAIT.DAN"));
  EXPECT_FALSE(files_.Exists("/sub/extrait.adr"));
  EXPECT_FALSE(files_.Exists("/sub/extrait.i01"));
  EXPECT_EQ(Contents("/sub/extrait.dan").size(), 3 * kCardSize);
}

TEST_F(DirectoryExport, ReplaceDeletesTheFamilyFirst) {
  AddNames({"Zola"}, true);
  MakeForeign({"Martin", "Hugo"});
  files_.SetContents("/sub/EXTRAIT.LST", AsBytes("layout"));
  EXPECT_EQ(ExportCards(/*replace=*/true).cards, 1u);
  EXPECT_FALSE(files_.Exists("/sub/EXTRAIT.LST"));
  EXPECT_FALSE(files_.Exists("/sub/EXTRAIT.I02"));
  EXPECT_EQ(Contents(kForeign).size(), 2 * kCardSize);
  EXPECT_THAT(ForeignNames(), ElementsAre("Zola"));
}

TEST_F(DirectoryExport, WithNothingMarkedANewDestinationIsItsHeaderAlone) {
  AddNames({"Zola"}, false);
  const TransferOutcome outcome = ExportCards();
  EXPECT_EQ(outcome.result, -1);
  EXPECT_EQ(outcome.message, "");
  EXPECT_EQ(outcome.cards, 0u);
  EXPECT_TRUE(progress_.opened.empty());
  EXPECT_EQ(Contents(kForeign).size(), kCardSize);
  EXPECT_THAT(ForeignNames(), IsEmpty());
}

TEST_F(DirectoryExport, WithNothingMarkedTheCardsOfTheDestinationStay) {
  AddNames({"Zola"}, false);
  MakeForeign({"Martin", "Hugo"});
  const std::string old = Contents(kForeign);
  EXPECT_EQ(ExportCards().result, -1);
  EXPECT_EQ(Contents(kForeign), old);
  EXPECT_THAT(ForeignNames(), ElementsAre("Hugo", "Martin"));
}

TEST_F(DirectoryExport, AnAbortKeepsTheCardsAlreadyWritten) {
  AddNames({"a", "b", "c"}, true);
  progress_.abort_after = 2;
  const TransferOutcome outcome = ExportCards();
  EXPECT_EQ(outcome.result, 0);
  EXPECT_TRUE(outcome.aborted);
  EXPECT_EQ(outcome.cards, 2u);
  EXPECT_EQ(ForeignCount(), 2u);
  EXPECT_THAT(ForeignNames(), ElementsAre("a", "b"));
}

TEST_F(DirectoryExport, APartialCardAtTheEndIsWrittenOver) {
  AddNames({"Zola"}, true);
  MakeForeign({"Martin"});
  files_.SetContents(kForeign, AsBytes(Contents(kForeign) + "half a card"));
  EXPECT_EQ(ExportCards().cards, 1u);
  EXPECT_EQ(Contents(kForeign).size(), 3 * kCardSize);
  EXPECT_THAT(ForeignNames(), ElementsAre("Martin", "Zola"));
}

TEST_F(DirectoryExport, AFullDestinationTakesNoMore) {
  AddNames({"a", "b", "c"}, true);
  MakeForeign({});
  std::string full = Contents(kForeign);
  full.resize(kCardSize * 32767, 'x');  // 32766 cards
  files_.SetContents(kForeign, AsBytes(full));
  const TransferOutcome outcome = ExportCards();
  EXPECT_EQ(outcome.result, -1);
  EXPECT_TRUE(outcome.directory_full);
  EXPECT_EQ(outcome.message, "/sub/EXTRAIT.DAN\nErreur en écriture...");
  EXPECT_EQ(outcome.title_id, 104);
  EXPECT_EQ(outcome.cards, 1u);
  EXPECT_EQ(Contents(kForeign).size(), kCardSize * 32768);
  EXPECT_EQ(ForeignCount(), 1u);
}

TEST_F(DirectoryExport, ACardThatCannotBeReadIsTold) {
  AddNames({"a", "b"}, true);
  Directory directory(Services(), Options());
  ASSERT_EQ(directory.OpenDirectory(), OpenResult::kOpened);
  files_.SetContents(kMain, AsBytes(Contents(kMain).substr(0, 3 * kCardSize - 1)));
  const TransferOutcome outcome = ExportDirectory(directory, To(false));
  EXPECT_EQ(outcome.result, -1);
  EXPECT_EQ(outcome.message, "/dir/CLIENTS.DAN\nErreur en lecture...");
  EXPECT_EQ(outcome.cards, 1u);
  EXPECT_THAT(ForeignNames(), ElementsAre("a"));
}

// A destination that cannot be used is told, and nothing of it is touched.
class DirectoryExportRefused : public DirectoryExport {
 protected:
  void SetUp() override {
    DirectoryExport::SetUp();
    AddNames({"Zola"}, true);
  }
  void ExpectTold(const TransferOutcome& outcome) {
    EXPECT_EQ(outcome.result, -1);
    EXPECT_EQ(outcome.message, "/sub/EXTRAIT.DAN\nErreur en lecture...");
    EXPECT_EQ(outcome.title_id, 104);
    EXPECT_EQ(outcome.cards, 0u);
    EXPECT_THAT(progress_.opened, IsEmpty());
  }
};

TEST_F(DirectoryExportRefused, AFolder) {
  ASSERT_TRUE(files_.MakeFolder(kForeign));
  ExpectTold(ExportCards());
  ExpectTold(ExportCards(/*replace=*/true));
}

TEST_F(DirectoryExportRefused, AFolderThatIsNotThere) {
  files_.SetContents("/none", AsBytes("a file"));
  const TransferOutcome outcome = ExportOn(files_, {"/none/X.DAN", false, CharacterSet::kOem});
  EXPECT_EQ(outcome.result, -1);
  EXPECT_EQ(outcome.message, "/none/X.DAN\nErreur en lecture...");
}

TEST_F(DirectoryExportRefused, AFileThatMayNotBeWritten) {
  MakeForeign({"Martin"});
  const std::string old = Contents(kForeign);
  RefusingFileSystem files(files_, kForeign);
  ExpectTold(ExportOn(files, To(false)));
  EXPECT_TRUE(files_.Exists("/sub/EXTRAIT.ADR"));
  ExpectTold(ExportOn(files, To(true)));
  EXPECT_EQ(Contents(kForeign), old);
}

TEST_F(DirectoryExportRefused, AFileThatIsNoDirectory) {
  for (const std::string& text : {std::string(), std::string("a text"), std::string(2000, 'x')}) {
    files_.SetContents(kForeign, AsBytes(text));
    ExpectTold(ExportCards());
    EXPECT_EQ(Contents(kForeign), text);
  }
}

TEST_F(DirectoryExportRefused, ADirectoryOfAnOlderLayout) {
  MakeForeign({"Martin"});
  std::string old = Contents(kForeign);
  old.replace(old.find("05.00"), 5, "04.10");
  files_.SetContents(kForeign, AsBytes(old));
  ExpectTold(ExportCards());
  EXPECT_EQ(Contents(kForeign), old);
  EXPECT_TRUE(files_.Exists("/sub/EXTRAIT.ADR"));
  EXPECT_EQ(ExportCards(/*replace=*/true).cards, 1u) << "replaced it may be";
}

class DirectoryExportOnAFullDisk : public DirectoryExport {
 protected:
  // The disk is full from the moment on at which so many cards were handed over.
  TransferOutcome ExportOnto(int cards_before_full) {
    Directory directory({disk_, clock_, progress_}, Options());
    EXPECT_EQ(directory.OpenDirectory(), OpenResult::kOpened);
    progress_ = {};
    progress_.act_after = cards_before_full;
    progress_.act = [this] { disk_.FillDisk(); };
    if (cards_before_full == 0) disk_.FillDisk();
    return ExportDirectory(directory, To(false));
  }
  void MarkMany(int count) {
    {
      Directory directory(Services(), Options());
      ASSERT_EQ(directory.OpenDirectory(), OpenResult::kCreated);
      const Directory::Batch batch(directory);
      for (int i = 0; i < count; ++i) {
        directory.context().current = MakeCard({{kNom, "a"}});
        uint32_t position = 0;
        ASSERT_EQ(CardDispatch(directory).Add(false, &position), 0);
      }
    }
    MarkAll();
  }
};

TEST_F(DirectoryExportOnAFullDisk, AHeaderThatCannotBeWrittenLeavesNoFile) {
  AddNames({"a"}, true);
  const TransferOutcome outcome = ExportOnto(0);
  EXPECT_EQ(outcome.result, -1);
  EXPECT_EQ(outcome.message, "/sub/EXTRAIT.DAN\nErreur en écriture...");
  EXPECT_EQ(outcome.title_id, 104);
  EXPECT_FALSE(files_.Exists(kForeign));
}

TEST_F(DirectoryExportOnAFullDisk, TheCountIsWhatIsReallyInTheFile) {
  MarkMany(200);
  const TransferOutcome outcome = ExportOnto(100);
  EXPECT_EQ(outcome.result, -1);
  EXPECT_EQ(outcome.message, "/sub/EXTRAIT.DAN\nErreur en écriture...");
  EXPECT_EQ(outcome.cards, 86u) << "cards go out in blocks of 86";
  EXPECT_EQ(Contents(kForeign).size(), 87 * kCardSize);
  EXPECT_EQ(ForeignCount(), 86u);
  EXPECT_EQ(progress_.closed, 1);
  EXPECT_EQ(ForeignNames().size(), 86u);
}

TEST_F(DirectoryExportOnAFullDisk, TheOldCardsStay) {
  AddNames({"a"}, true);
  MakeForeign({"Martin"});
  EXPECT_EQ(ExportOnto(0).message, "/sub/EXTRAIT.DAN\nErreur en écriture...");
  EXPECT_THAT(ForeignNames(), ElementsAre("Martin"));
}

TEST_F(DirectoryExport, AHeaderThatCannotBeWrittenBackIsTold) {
  AddNames({"a"}, true);
  MakeForeign({"Martin"});
  Directory directory({disk_, clock_, progress_}, Options());
  ASSERT_EQ(directory.OpenDirectory(), OpenResult::kOpened);
  // Three changes before it: two derived files go, a block of cards is written.
  disk_.StopAfter(3);
  const TransferOutcome outcome = ExportDirectory(directory, To(false));
  EXPECT_EQ(outcome.result, -1);
  EXPECT_EQ(outcome.message, "/sub/EXTRAIT.DAN\nErreur en écriture...");
  EXPECT_EQ(outcome.cards, 1u);
  disk_.Heal();
  EXPECT_THAT(ForeignNames(), ElementsAre("a", "Martin"));
}

// Seats have address files of their own in a folder of theirs.
class DirectoryExportOfASeat : public DirectoryExport {
 protected:
  static DirectoryOptions OfSeat(DirectoryOptions options) {
    options.shared_dir = "/seat/";
    return options;
  }
  void SetUp() override {
    DirectoryExport::SetUp();
    ASSERT_TRUE(files_.MakeFolder("/seat"));
    ASSERT_TRUE(files_.MakeFolder("/other"));
  }
  void MakeForSeat(const DirectoryOptions& options, std::initializer_list<std::string_view> names) {
    Directory directory(Services(), OfSeat(options));
    ASSERT_GE(directory.OpenDirectory(), OpenResult::kOpened);
    for (const std::string_view name : names) {
      directory.context().current = MakeCard({{kNom, name}});
      uint32_t position = 0;
      ASSERT_EQ(CardDispatch(directory).Add(true, &position), 0);
    }
  }
  TransferOutcome ExportOfSeat(const ExportRequest& request) {
    Directory directory(Services(), OfSeat(Options()));
    EXPECT_EQ(directory.OpenDirectory(), OpenResult::kOpened);
    return ExportDirectory(directory, request);
  }
};

TEST_F(DirectoryExportOfASeat, TakesTheMarksOfTheSeat) {
  MakeForSeat(Options(), {"Zola", "Blanc"});
  EXPECT_EQ(ExportOfSeat(To(false)).cards, 2u);
  EXPECT_THAT(NamesIn(OfSeat(ForeignOptions())), ElementsAre("Blanc", "Zola"));
}

TEST_F(DirectoryExportOfASeat, AddingDeletesTheAddressFileOfTheSeat) {
  MakeForSeat(Options(), {"Zola"});
  MakeForSeat(ForeignOptions(), {"Martin"});
  ASSERT_TRUE(files_.Exists("/seat/EXTRAIT.ADR"));
  EXPECT_EQ(ExportOfSeat(To(false)).cards, 1u);
  EXPECT_FALSE(files_.Exists("/seat/EXTRAIT.ADR"));
  EXPECT_FALSE(files_.Exists("/sub/EXTRAIT.I01"));
  EXPECT_THAT(NamesIn(OfSeat(ForeignOptions())), ElementsAre("Martin", "Zola"));
}

TEST_F(DirectoryExportOfASeat, ReplaceLeavesNoIndexOfTheOldCards) {
  MakeForSeat(Options(), {"Zola"});
  MakeForSeat(ForeignOptions(), {"Martin", "Hugo"});
  EXPECT_EQ(ExportOfSeat(To(true)).cards, 1u);
  EXPECT_FALSE(files_.Exists("/seat/EXTRAIT.ADR"));
  EXPECT_THAT(NamesIn(OfSeat(ForeignOptions())), ElementsAre("Zola"));
  EXPECT_THAT(NamesIn(OfSeat(ForeignOptions(kNom))), ElementsAre("Zola"));
}

TEST_F(DirectoryExportOfASeat, ADirectoryOfTheSameNameLeavesTheSeatItsFiles) {
  MakeForSeat(Options(), {"Zola"});
  ASSERT_TRUE(files_.Exists("/seat/CLIENTS.ADR"));
  EXPECT_EQ(ExportOfSeat({"/other/CLIENTS.DAN", true, CharacterSet::kOem}).cards, 1u);
  EXPECT_TRUE(files_.Exists("/seat/CLIENTS.ADR"));
  EXPECT_TRUE(files_.Exists("/seat/CLIENTS.CRT"));
  Directory directory(Services(), OfSeat(Options()));
  ASSERT_EQ(directory.OpenDirectory(), OpenResult::kOpened);
  EXPECT_EQ(directory.marked_count(), 1) << "the marks of the open directory are still there";
}

}  // namespace
}  // namespace carnetel
