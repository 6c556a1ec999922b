#include "shell/card_list.h"

#include "storage/card_dispatch.h"
#include "tests/shell/window_fixture.h"

namespace carnetel {
namespace {

using Labels = std::vector<std::string>;
using Numbers = std::vector<int>;

TEST(OffsetMirror, FindsTheEntryOfAnOffset) {
  OffsetMirror mirror;
  mirror.Append(3 * 768);
  mirror.Append(768);
  mirror.Append(2 * 768);
  EXPECT_EQ(mirror.size(), 3);
  EXPECT_EQ(mirror.Find(768), 1);
  EXPECT_EQ(mirror.Find(2 * 768), 2);
  EXPECT_EQ(mirror.Find(3 * 768), 0);
  EXPECT_EQ(mirror.Find(4 * 768), OffsetMirror::kNone);
}

TEST(OffsetMirror, TakesTheFirstOfTwoEntries) {
  OffsetMirror mirror;
  mirror.Append(768);
  mirror.Append(768);
  EXPECT_EQ(mirror.size(), 2);
  EXPECT_EQ(mirror.Find(768), 0);
  mirror.Clear();
  EXPECT_EQ(mirror.size(), 0);
  EXPECT_EQ(mirror.Find(768), OffsetMirror::kNone);
}

class CardListTest : public WindowFixture {
 protected:
  static CardRecord Company(std::string_view name) { return CardWith({{kSte1, name}}); }
  void BuildFive() {
    Build({Company("ZORRO"), Company("BETA"), Company("ALPHA"), Company("Dupont"),
           Company("MARTIN")});
  }
  // The entry of a card in the address file as it is on the disk.
  EntrySlot EntryOnDisk(uint32_t row) const {
    const std::vector<std::byte> bytes = memory.Contents(home + "CARNETEL.ADR");
    return EntrySlot(ByteView(bytes).subspan(EntryPosition(row), kEntrySize));
  }
  // Writes a company into a row's card behind the back of the indexes.
  void Overwrite(int row, std::string_view company) {
    EXPECT_TRUE(session->directory()->main().WriteCard(list().CardOffset(row), Company(company)));
  }
};

// ---- rows ----

TEST_F(CardListTest, ShowsTheCardsInKeyOrder) {
  BuildFive();
  Start();
  EXPECT_EQ(Rows(), (Labels{"ALPHA ", "BETA ", "Dupont ", "MARTIN ", "ZORRO "}));
  EXPECT_EQ(list().CardOffset(0), 3u * 768);
  EXPECT_EQ(list().CardOffset(4), 768u);
  EXPECT_EQ(list().current_row(), 0);
  EXPECT_EQ(view.position, "1 / 5");
  EXPECT_EQ(view.marked, 0);
  EXPECT_EQ(list().first_marked_row(), -1);
}

TEST_F(CardListTest, AnEmptyDirectoryHasPositionOneOfNone) {
  Start();
  EXPECT_EQ(list().row_count(), 0);
  EXPECT_EQ(view.position, "1 / 0");
  EXPECT_EQ(view.marked, 0);
  EXPECT_EQ(list().current_card(), 0u);
  EXPECT_FALSE(list().ToggleMark(0));
  EXPECT_FALSE(list().JumpToLetter('A'));
  EXPECT_EQ(list().Label(0), "");
}

TEST_F(CardListTest, TellsTheRowThatIsCurrent) {
  BuildFive();
  Start();
  list().SetCurrentRow(3);
  EXPECT_EQ(view.position, "4 / 5");
  EXPECT_EQ(view.Text(150), "MARTIN");
  list().SetCurrentRow(5);
  list().SetCurrentRow(-1);
  EXPECT_EQ(list().current_row(), 3);
}

TEST_F(CardListTest, FindsTheRowOfACard) {
  BuildFive();
  Start();
  EXPECT_EQ(list().RowOfCard(768), 4);
  EXPECT_EQ(list().current_row(), 0);
  EXPECT_EQ(list().FindCardRow(768), 4);
  EXPECT_EQ(list().current_row(), 4);
  list().ToggleMark(4);
  EXPECT_EQ(list().RowOfCard(768), 4);
  EXPECT_EQ(list().FindCardRow(6 * 768), -1);
  EXPECT_EQ(list().current_row(), 4);
}

TEST_F(CardListTest, ListsACardWithoutCompanyByItsName) {
  Build({Company("ALPHA"), CardWith({{kNom, "BRUN"}}), Company("CESAR")});
  Start();
  EXPECT_EQ(Rows(), (Labels{"ALPHA ", "BRUN", "CESAR "}));
  window().Dispatch(657);
  EXPECT_EQ(Rows(), Labels{"BRUN"});
}

TEST_F(CardListTest, ListsNoCardWhoseTwoKeysBeginWithABlank) {
  Build({Company("ALPHA"), CardWith({{kSte1, " B"}, {kNom, " N"}})});
  Start();
  EXPECT_EQ(Rows(), Labels{"ALPHA "});
  EXPECT_EQ(view.position, "1 / 1");
  EXPECT_EQ(Saved().size(), 2u);
}

TEST_F(CardListTest, RepairsTheMembershipOfTheWholeFile) {
  BuildFive();
  std::vector<std::byte> bytes = memory.Contents(home + "CARNETEL.ADR");
  bytes[EntryPosition(1) + EntrySlot::kMarksOffset] = std::byte{0x02};
  memory.SetContents(home + "CARNETEL.ADR", bytes);
  Start();
  EXPECT_EQ(list().row_count(), 5);
  EXPECT_TRUE(list().IsMarked(1));
  EXPECT_EQ(std::to_integer<int>(EntryOnDisk(1).bytes()[EntrySlot::kMarksOffset]), 0x03);
}

TEST_F(CardListTest, KeepsItsRowsUntilTheNextOpening) {
  BuildFive();
  Start();
  list().SetCurrentRow(3);
  list().SetTopRow(2);
  Quit();
  Start();
  EXPECT_EQ(list().current_row(), 3);
  EXPECT_EQ(list().top_row(), 2);
  EXPECT_EQ(view.Text(150), "MARTIN");
  // Once: a refill later keeps the row of the moment.
  list().SetCurrentRow(1);
  list().ListRefill();
  EXPECT_EQ(list().current_row(), 1);
}

// ---- tabs ----

TEST_F(CardListTest, ATabShowsTheKeysThatBeginWithItsLetter) {
  Build({Company("ALPHA"), Company("9NEUF"), Company("(PAREN"),
         Company("\x90"
                 "COLE"),
         Company("abricot"), Company("BETA"), Company("ZORRO"), Company("YVES")});
  Start();
  EXPECT_EQ(Rows(), (Labels{"9NEUF ", "abricot ", "ALPHA ", "BETA ", "YVES ", "ZORRO "}));
  window().Dispatch(656);
  EXPECT_EQ(Rows(), (Labels{"abricot ", "ALPHA "}));
  EXPECT_EQ(view.tab, 656);
  EXPECT_EQ(view.position, "1 / 2");
  window().Dispatch(680);
  EXPECT_EQ(Rows(), Labels{"YVES "});
  window().Dispatch(681);
  EXPECT_EQ(Rows(), Labels{"ZORRO "});
  window().Dispatch(672);
  EXPECT_EQ(Rows(), Labels());
  EXPECT_EQ(view.position, "1 / 0");
  EXPECT_EQ(view.Text(150), "");
  window().Dispatch(655);
  EXPECT_EQ(list().row_count(), 6);
}

TEST_F(CardListTest, TheLastTabShowsEveryKeyFromItsLetterUpward) {
  Build({Company("A"), Company("Z1"), Company("Z2"), Company("Z3"), Company("Z4"), Company("Z5")});
  Start();
  Overwrite(2, "[CROCHET");
  Overwrite(3, "{ACCOLADE");
  Overwrite(4, "\x7F");
  Overwrite(5, "\x80");
  window().Dispatch(681);
  EXPECT_EQ(Rows(), (Labels{"Z1 ", "[CROCHET ", "{ACCOLADE ", "\x7F "}));
  // Bytes from 80h on count as negative and are in no view at all.
  window().Dispatch(655);
  EXPECT_EQ(Rows(), (Labels{"A ", "Z1 ", "[CROCHET ", "{ACCOLADE ", "\x7F "}));
}

// ---- capacity ----

TEST_F(CardListTest, CountsTheCardsThatHaveNoPlace) {
  BuildFive();
  Start({}, 3);
  EXPECT_EQ(list().row_count(), 3);
  EXPECT_EQ(list().not_loaded_count(), 2);
  EXPECT_EQ(view.position, "1 / 5");
  window().TellNotLoaded();
  EXPECT_EQ(messages.TakeShown(),
            (std::vector<QueuedMessages::Entry>{
                {MessageStyle::kInformation, 80,
                 "Liste de fiches saturée: [ 2 ] fiches non chargées. \n Actionnez les onglets "
                 "des lettres pour les visualiser !"}}));
  list().ToggleMark(0);
  EXPECT_EQ(view.position, "1 / 5");
  EXPECT_EQ(view.marked, 1);
  window().Dispatch(681);
  EXPECT_EQ(Rows(), Labels{"ZORRO "});
  EXPECT_EQ(list().not_loaded_count(), 0);
  EXPECT_EQ(view.position, "1 / 1");
}

TEST_F(CardListTest, SaysNothingWhenEveryCardHasItsPlace) {
  BuildFive();
  Start({}, 5);
  window().TellNotLoaded();
  EXPECT_EQ(messages.TakeShown().size(), 0u);
}

TEST_F(CardListTest, CountsMarksOfCardsThatHaveNoPlace) {
  BuildFive();
  Start();
  list().ToggleMark(3);
  list().ToggleMark(4);
  Quit();
  Start({}, 3);
  EXPECT_EQ(view.marked, 2);
  EXPECT_EQ(list().first_marked_row(), 3);
  EXPECT_EQ(MarkedRows(), Numbers());
  // Only rows of the list are unmarked.
  window().Dispatch(213);
  EXPECT_EQ(view.marked, 2);
  EXPECT_TRUE(EntryOnDisk(4).bit(1));
}

// ---- marks ----

TEST_F(CardListTest, MarkingTwiceRestoresFileAndCount) {
  BuildFive();
  Start();
  const std::vector<std::byte> before = memory.Contents(home + "CARNETEL.ADR");
  ASSERT_TRUE(list().ToggleMark(2));
  EXPECT_EQ(view.marked, 1);
  EXPECT_TRUE(list().IsMarked(2));
  // At once on the disk: bit 1 of the entry's marks.
  std::vector<std::byte> marked = before;
  marked[EntryPosition(2) + 4] = std::byte{0x03};
  EXPECT_EQ(memory.Contents(home + "CARNETEL.ADR"), marked);
  ASSERT_TRUE(list().ToggleMark(2));
  EXPECT_EQ(view.marked, 0);
  EXPECT_EQ(memory.Contents(home + "CARNETEL.ADR"), before);
}

TEST_F(CardListTest, MarksSurviveTheEndOfTheProgram) {
  BuildFive();
  Start();
  list().ToggleMark(1);
  list().ToggleMark(3);
  Quit();
  Start();
  EXPECT_EQ(MarkedRows(), (Numbers{1, 3}));
  EXPECT_EQ(view.marked, 2);
  EXPECT_EQ(list().first_marked_row(), 1);
}

TEST_F(CardListTest, AChangeOfMarksGivesTheDirectoryANewTime) {
  BuildFive();
  const auto time = [this] {
    return memory.Open(home + "CARNETEL.DAN", OpenMode::kRead)->ModificationTime();
  };
  const int64_t before = time();
  clock.Advance(100);
  Start();
  Quit();
  EXPECT_EQ(time(), before);
  Start();
  list().ToggleMark(0);
  Quit();
  EXPECT_EQ(time(), before + 100);
}

TEST_F(CardListTest, MoreEntriesThanRowNumbersReachGiveAnEmptyWholeList) {
  // From elsewhere: 32768 cards, all of them under A but the last, which is the only B.
  Build({});
  std::vector<std::byte> bytes = memory.Contents(home + "CARNETEL.DAN");
  bytes.resize(768 * size_t{32769});
  for (size_t card = 1; card <= 32768; ++card) bytes[card * 768] = std::byte{'A'};
  bytes[32768 * size_t{768}] = std::byte{'B'};
  memory.SetContents(home + "CARNETEL.DAN", bytes);
  Start();
  EXPECT_EQ(session->directory()->address().entry_count(), 32768u);
  EXPECT_EQ(list().row_count(), 0);
  EXPECT_EQ(view.position, "1 / 0");
  // A letter whose rows can be told is there.
  window().Dispatch(656);
  EXPECT_EQ(list().row_count(), 32767);
  EXPECT_EQ(view.position, "1 / 32767");
}

TEST_F(CardListTest, SpaceMarksAndGoesOn) {
  BuildFive();
  Start();
  list().ToggleAndMove(1);
  list().ToggleAndMove(1);
  EXPECT_EQ(MarkedRows(), (Numbers{0, 1}));
  EXPECT_EQ(list().current_row(), 2);
  EXPECT_EQ(view.position, "3 / 5");
  list().SetCurrentRow(4);
  list().ToggleAndMove(1);
  EXPECT_EQ(list().current_row(), 4);
  EXPECT_EQ(MarkedRows(), (Numbers{0, 1, 4}));
  list().ToggleAndMove(1);
  EXPECT_EQ(MarkedRows(), (Numbers{0, 1}));
}

TEST_F(CardListTest, UpWithCtrlOrShiftMarksAndGoesBack) {
  BuildFive();
  Start();
  list().SetCurrentRow(1);
  list().ToggleAndMove(-1);
  EXPECT_EQ(list().current_row(), 0);
  list().ToggleAndMove(-1);
  EXPECT_EQ(list().current_row(), 0);
  EXPECT_EQ(MarkedRows(), (Numbers{0, 1}));
}

TEST_F(CardListTest, ASpanInvertsEveryRowBothEndsIncluded) {
  BuildFive();
  Start();
  list().ToggleMark(2);
  list().ToggleSpan(1, 3);
  EXPECT_EQ(MarkedRows(), (Numbers{1, 3}));
  EXPECT_EQ(view.marked, 2);
  list().ToggleSpan(4, 3);
  EXPECT_EQ(MarkedRows(), (Numbers{1, 4}));
  list().ToggleSpan(0, 0);
  EXPECT_EQ(MarkedRows(), (Numbers{0, 1, 4}));
  const std::vector<SavedCard> saved = Saved();
  EXPECT_TRUE(saved[0].marked());
  EXPECT_TRUE(saved[1].marked());
  EXPECT_FALSE(saved[2].marked());
  EXPECT_FALSE(saved[3].marked());
  EXPECT_TRUE(saved[4].marked());
}

TEST_F(CardListTest, DeselectingTakesTheMarksOfTheListedRows) {
  BuildFive();
  Start();
  list().ToggleSpan(0, 4);
  window().Dispatch(656);
  EXPECT_EQ(view.marked, 1);
  window().Dispatch(213);
  EXPECT_EQ(MarkedRows(), Numbers());
  EXPECT_EQ(view.marked, 0);
  // Those that the tab hides keep theirs.
  window().Dispatch(655);
  EXPECT_EQ(MarkedRows(), (Numbers{1, 2, 3, 4}));
  EXPECT_EQ(view.marked, 4);
}

// It may be painted over a loop that takes entries away or makes them anew.
TEST_F(CardListTest, ARowWhoseEntryHasGoneIsNoMember) {
  BuildFive();
  Start();
  EXPECT_TRUE(list().IsMember(4));
  uint32_t moved_from = 0;
  ASSERT_TRUE(DeleteCard(*session->directory(), list().CardOffset(4), &moved_from));
  EXPECT_TRUE(list().IsMember(3));
  EXPECT_FALSE(list().IsMember(4));
}

TEST_F(CardListTest, HasNoTextsAndMarksWithoutItsDirectory) {
  BuildFive();
  Start();
  list().SetDirectory(nullptr);
  EXPECT_EQ(list().Label(0), "");
  EXPECT_FALSE(list().IsMember(0));
  EXPECT_FALSE(list().ToggleMark(0));
  EXPECT_EQ(list().marked_count(), 0);
}

}  // namespace
}  // namespace carnetel
