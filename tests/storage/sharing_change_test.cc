// Two seats that change one directory in turn: each works on top of what the other has done, and
// the marks of a seat stay with their cards.
#include <gmock/gmock.h>

#include "base/format_text.h"
#include "storage/recovery.h"
#include "tests/storage/sharing_fixture.h"
#include "tests/support/gated_file_system.h"

namespace carnetel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

class SharingChangeTest : public SharingFixture {
 protected:
  void SetUp() override { StartWithFour(); }
  static void Mark(Directory& seat, std::string_view company) {
    AddressFile& address = seat.address();
    const uint32_t row = address.FindRow(OffsetOf(seat, company));
    EntrySlot entry = address.Entry(row);
    entry.set_bit(1, true);
    address.SetEntry(row, entry);
    seat.set_marked_count(seat.marked_count() + 1);
    seat.CloseListView();
  }
};

TEST_F(SharingChangeTest, AddsOfBothLandOneBehindTheOther) {
  ASSERT_TRUE(AddTo(one(), "KILO"));
  ASSERT_TRUE(AddTo(two(), "LIMA"));
  ASSERT_TRUE(AddTo(one(), "CHARLIE"));
  EXPECT_EQ(CardsOf(MainFile()).size(), 7U);
  EXPECT_THAT(Listed(one()),
              ElementsAre("ALPHA", "BRAVO", "CHARLIE", "KILO", "LIMA", "MIKE", "TANGO"));
  ExpectAgreement();
}

TEST_F(SharingChangeTest, EveryKindOfChangeInTurn) {
  ASSERT_TRUE(DeleteFrom(one(), "ALPHA"));
  ASSERT_TRUE(AddTo(two(), "KILO"));
  EXPECT_EQ(SetIn(one(), "BRAVO", kSte1, "ZULU"), ChangeResult::kMoved);
  EXPECT_EQ(SetIn(two(), "MIKE", kTel1, "01"), ChangeResult::kRewritten);
  { ASSERT_TRUE(ChangeScope(two())); }
  EXPECT_EQ(SetIn(two(), "TANGO", kNom, "HUGO"), ChangeResult::kMoved);
  ASSERT_TRUE(DeleteFrom(one(), "KILO"));
  ExpectAgreement();
  EXPECT_THAT(Listed(one()), ElementsAre("MIKE", "TANGO", "ZULU"));
}

TEST_F(SharingChangeTest, ManyTurnsOfARowOfChanges) {
  uint32_t random = 7;
  const auto next = [&random](uint32_t below) {
    random = random * 1664525 + 1013904223;
    return (random >> 16) % below;
  };
  for (int turn = 0; turn < 400; ++turn) {
    Directory& seat = next(2) == 0 ? one() : two();
    const ChangeScope change(seat);
    ASSERT_TRUE(change);
    const Names names = Listed(seat);
    const std::string name = names[next(static_cast<uint32_t>(names.size()))];
    const std::string fresh = static_cast<char>('A' + next(26)) + std::to_string(turn);
    const uint32_t kind = next(4);
    if (names.size() < 5 || (kind == 0 && names.size() < 30)) {
      ASSERT_TRUE(AddTo(seat, fresh, next(2) == 0));
    } else if (kind == 1 || names.size() >= 30) {
      ASSERT_TRUE(DeleteFrom(seat, name));
    } else {
      ASSERT_NE(SetIn(seat, name, kind == 2 ? int{kSte1} : int{kAdr1}, fresh),
                ChangeResult::kNotPossible);
    }
    ASSERT_EQ(seat.marked_count(), CountMarks(seat));
  }
  ExpectAgreement();
}

// ---- marks ----

TEST_F(SharingChangeTest, MarksStayWithTheirCardsWhenAnotherSeatAdds) {
  Mark(one(), "MIKE");
  ASSERT_TRUE(AddTo(two(), "CHARLIE"));
  { ASSERT_TRUE(ChangeScope(one())); }
  EXPECT_THAT(MarkedIn(one()), ElementsAre("MIKE"));
  EXPECT_EQ(one().marked_count(), 1);
  EXPECT_THAT(MarkedIn(two()), IsEmpty());
}

// The last card goes into the freed place, and its mark with it; that of the deleted card goes.
TEST_F(SharingChangeTest, MarksFollowTheCardThatMovesIntoAFreedPlace) {
  Mark(one(), "TANGO");
  Mark(one(), "ALPHA");
  ASSERT_TRUE(DeleteFrom(two(), "ALPHA"));
  { ASSERT_TRUE(ChangeScope(one())); }
  EXPECT_THAT(Listed(one()), ElementsAre("BRAVO", "MIKE", "TANGO"));
  EXPECT_THAT(MarkedIn(one()), ElementsAre("TANGO"));
  EXPECT_EQ(one().marked_count(), 1);
  ExpectAgreement();
}

// A card added afterwards takes the place that the moved one has left.
TEST_F(SharingChangeTest, MarksFollowACardWhoseFormerPlaceIsTakenAgain) {
  Mark(one(), "TANGO");
  ASSERT_TRUE(DeleteFrom(two(), "ALPHA"));
  ASSERT_TRUE(AddTo(two(), "ZULU"));
  { ASSERT_TRUE(ChangeScope(one())); }
  EXPECT_THAT(MarkedIn(one()), ElementsAre("TANGO"));
}

// As many cards, at the same places in the same order: only their keys tell that they are others.
TEST_F(SharingChangeTest, MarksDoNotPassToCardsThatTakeTheSamePlaces) {
  Mark(one(), "ALPHA");
  ASSERT_TRUE(DeleteFrom(two(), "TANGO"));
  ASSERT_TRUE(DeleteFrom(two(), "ALPHA"));
  EXPECT_EQ(SetIn(two(), "MIKE", kSte1, "AMIRAL"), ChangeResult::kMoved);
  ASSERT_TRUE(AddTo(two(), "VICTOR"));
  ASSERT_TRUE(AddTo(two(), "WHISKY"));
  { ASSERT_TRUE(ChangeScope(one())); }
  EXPECT_THAT(MarkedIn(one()), IsEmpty());
  EXPECT_EQ(one().marked_count(), 0);
  ExpectAgreement();
}

TEST_F(SharingChangeTest, GroupsAndFlagsOfAnEntryStayToo) {
  AddressFile& address = one().address();
  const uint32_t row = address.FindRow(OffsetOf(one(), "TANGO"));
  EntrySlot entry = address.Entry(row);
  entry.set_bit(4, true);
  entry.set_number_flags(0x30);
  address.SetEntry(row, entry);
  ASSERT_TRUE(DeleteFrom(two(), "ALPHA"));
  ASSERT_TRUE(AddTo(two(), MakeCard({{kSte1, "KILO"}, {kFax, "1"}})));
  files.SetContents("/poste1/ESSAI.GRP", AsBytes("kept"));
  { ASSERT_TRUE(ChangeScope(one())); }
  const EntrySlot moved = address.Entry(address.FindRow(OffsetOf(one(), "TANGO")));
  EXPECT_TRUE(moved.bit(4));
  EXPECT_EQ(moved.number_flags(), 0x30);
  // The new card belongs to no group, and its numbers are known.
  const EntrySlot fresh = address.Entry(address.FindRow(OffsetOf(one(), "KILO")));
  EXPECT_FALSE(fresh.bit(4));
  EXPECT_TRUE(fresh.bit(0));
  EXPECT_EQ(fresh.number_flags(), 0x10);
  EXPECT_EQ(AsChars(files.Contents("/poste1/ESSAI.GRP")), "kept");
}

TEST_F(SharingChangeTest, AnOwnDeleteFindsItsCardsWhereTheOtherSeatHasPutThem) {
  Mark(one(), "TANGO");
  Mark(one(), "BRAVO");
  ASSERT_TRUE(DeleteFrom(two(), "ALPHA"));
  const ChangeScope change(one());
  ASSERT_TRUE(change);
  for (const std::string& name : MarkedIn(one())) EXPECT_TRUE(DeleteFrom(one(), name));
  EXPECT_THAT(Listed(one()), ElementsAre("MIKE"));
  EXPECT_EQ(one().marked_count(), 0);
}

// ---- stamps ----

// Whole seconds would let one seat take the change of another for its own.
TEST_F(SharingChangeTest, NoTwoChangesWithinASecondHaveOneStamp) {
  std::vector<uint32_t> stamps = {LoadLe32(MainFile(), 102)};
  for (Directory* seat : {&one(), &two(), &one(), &two()}) {
    ASSERT_TRUE(AddTo(*seat, "KILO"));
    stamps.push_back(LoadLe32(MainFile(), 102));
  }
  for (size_t i = 1; i < stamps.size(); ++i) EXPECT_GT(stamps[i], stamps[i - 1]);
}

TEST_F(SharingChangeTest, AStampBehindTheTimeIsTheTime) {
  clock.Advance(1000);
  ASSERT_TRUE(AddTo(one(), "KILO"));
  EXPECT_EQ(LoadLe32(MainFile(), 102), static_cast<uint32_t>(clock.Now()));
}

TEST_F(SharingChangeTest, ARewriteLeavesTheStamp) {
  const uint32_t before = LoadLe32(MainFile(), 102);
  clock.Advance(60);
  ASSERT_EQ(SetIn(one(), "MIKE", kFax, "1"), ChangeResult::kRewritten);
  EXPECT_EQ(LoadLe32(MainFile(), 102), before);
  EXPECT_FALSE(two().ChangedByOthers());
  EXPECT_EQ(Fault(files, 1), "");
}

TEST_F(SharingChangeTest, AChangeOfAnotherSeatIsNoticedOnce) {
  EXPECT_FALSE(two().ChangedByOthers());
  ASSERT_TRUE(AddTo(one(), "KILO"));
  EXPECT_FALSE(one().ChangedByOthers());
  EXPECT_TRUE(two().ChangedByOthers());
  EXPECT_TRUE(RefreshIfChanged(two(), RefreshView::kWholeFile));
  EXPECT_FALSE(RefreshIfChanged(two(), RefreshView::kWholeFile));
  EXPECT_EQ(Listed(two()), Listed(one()));
}

// The list has to be filled again although the change was taken over already.
TEST_F(SharingChangeTest, AChangeTakenOverByAnOwnOneIsStillNoticed) {
  ASSERT_TRUE(AddTo(one(), "KILO"));
  ASSERT_TRUE(AddTo(two(), "LIMA"));
  EXPECT_TRUE(two().ChangedByOthers());
  EXPECT_TRUE(RefreshIfChanged(two(), RefreshView::kWholeFile));
  EXPECT_FALSE(two().ChangedByOthers());
}

TEST_F(SharingChangeTest, WithAnotherGroupShownTheChangeIsNoticedOnceAndNothingElse) {
  ASSERT_TRUE(AddTo(one(), "KILO"));
  EXPECT_TRUE(RefreshIfChanged(two(), RefreshView::kOtherGroup));
  EXPECT_FALSE(RefreshIfChanged(two(), RefreshView::kOtherGroup));
  EXPECT_EQ(Listed(two()).size(), 4U);
  // The next own change takes it over all the same.
  ASSERT_TRUE(AddTo(two(), "LIMA"));
  EXPECT_EQ(Listed(two()).size(), 6U);
}

TEST_F(SharingChangeTest, ARefreshKeepsMarksAndTakesTheGroups) {
  Mark(one(), "MIKE");
  files.SetContents("/poste1/ESSAI.GRP", AsBytes("groups"));
  ASSERT_TRUE(AddTo(two(), "KILO"));
  ASSERT_TRUE(RefreshIfChanged(one(), RefreshView::kWholeFile));
  EXPECT_THAT(MarkedIn(one()), ElementsAre("MIKE"));
  EXPECT_FALSE(files.Exists("/poste1/ESSAI.GRP"));
}

// ---- indexes ----

// Only a card among the first of its letter can be taken out of an index at once. Whoever reads the
// index next mends it, and the seats that hold it as it was have to learn that.
TEST_F(SharingChangeTest, ASeatThatMendsAnIndexTellsTheOthers) {
  for (int n = 1; n <= 60; ++n) ASSERT_TRUE(AddTo(one(), FormatPrintf("M%02d", {n})));
  ASSERT_TRUE(DeleteFrom(one(), "M55"));
  ASSERT_TRUE(AddTo(two(), "MALI"));
  EXPECT_TRUE(one().ChangedByOthers());
  ASSERT_TRUE(AddTo(one(), "MAROC"));
  ASSERT_TRUE(AddTo(two(), "MEXICO"));
  one_->CloseDirectory();
  two_->CloseDirectory();
  one_ = NewSeat(1);
  two_ = NewSeat(2);
  EXPECT_EQ(one().main().count(), 66U);
  EXPECT_EQ(Listed(one()).size(), 66U);
  EXPECT_EQ(Listed(one()), Listed(two()));
}

TEST_F(SharingChangeTest, AMendWithoutAnyChangeRenewsTheStampToo) {
  for (int n = 1; n <= 60; ++n) ASSERT_TRUE(AddTo(one(), FormatPrintf("M%02d", {n})));
  { ASSERT_TRUE(ChangeScope(two())); }
  ASSERT_TRUE(DeleteFrom(one(), "M55"));
  const uint32_t before = LoadLe32(MainFile(), 102);
  { ASSERT_TRUE(ChangeScope(two())); }
  EXPECT_GT(LoadLe32(MainFile(), 102), before);
  EXPECT_TRUE(one().ChangedByOthers());
  // Nothing is left to mend: the seats come to rest.
  { ASSERT_TRUE(ChangeScope(one())); }
  { ASSERT_TRUE(ChangeScope(two())); }
  const FileBytes at_rest = MainFile();
  { ASSERT_TRUE(ChangeScope(one())); }
  { ASSERT_TRUE(ChangeScope(two())); }
  EXPECT_TRUE(SameBytes(at_rest, MainFile()));
}

TEST_F(SharingChangeTest, ASeatThatOpensAndRepairsTellsTheOthers) {
  const uint32_t before = LoadLe32(MainFile(), 102);
  files.Remove(std::string(kSharedStem) + ".I02");
  const Seat three = NewSeat(3);
  EXPECT_GT(LoadLe32(MainFile(), 102), before);
  EXPECT_TRUE(one().ChangedByOthers());
  ASSERT_TRUE(AddTo(one(), "KILO"));
  ExpectAgreement();
}

TEST_F(SharingChangeTest, AnOpeningThatRepairsNothingLeavesTheFilesAsTheyAre) {
  const FileBytes before = MainFile();
  clock.Advance(60);
  NewSeat(3).reset();
  EXPECT_TRUE(SameBytes(before, MainFile()));
  EXPECT_FALSE(one().ChangedByOthers());
}

// An index that another seat has left with too few slots has its full size.
// Somebody worked alone on the directory before it was shared: his address file knows nothing of
// what the seats have added since.
TEST_F(SharingChangeTest, AnAddressFileOfFormerTimesBesideTheMainFileChangesNothing) {
  AddressFile alone(files, "/reseau/ESSAI.ADR");
  ASSERT_TRUE(alone.CreateAddressFile());
  alone.Close();
  const FileBytes main = MainFile();
  const FileBytes index = files.Contents("/reseau/ESSAI.I01");
  NewSeat(3)->CloseDirectory();
  EXPECT_TRUE(SameBytes(main, MainFile()));
  EXPECT_TRUE(SameBytes(index, files.Contents("/reseau/ESSAI.I01")));
}

TEST_F(SharingChangeTest, AChangeOfFormerTimesThatWasCutShortMakesTheIndexesAnew) {
  AddressFile alone(files, "/reseau/ESSAI.ADR");
  ASSERT_TRUE(alone.CreateAddressFile());
  alone.MarkChanging();
  // The slots of ALPHA and BRAVO name each other's card, as many as there are cards all the same.
  FileBytes index = files.Contents("/reseau/ESSAI.I01");
  const FileBytes whole = index;
  const auto slot_of = [&index](uint32_t offset) {
    size_t at = 10;
    while (LoadLe32(index, at) != offset) ++at;
    return at;
  };
  const size_t alpha = slot_of(768);
  const size_t bravo = slot_of(1536);
  StoreLe32(index, alpha, 1536);
  StoreLe32(index, bravo, 768);
  files.SetContents("/reseau/ESSAI.I01", index);
  NewSeat(3)->CloseDirectory();
  EXPECT_TRUE(SameBytes(whole, files.Contents("/reseau/ESSAI.I01")));
}

TEST_F(SharingChangeTest, AnIndexWithoutACardIsMadeAnewAtTheOpening) {
  KeyIndex index(files, std::string(kSharedStem) + ".I01");
  ASSERT_TRUE(index.CheckKeyIndex(768 * 5, false));
  index.UpdateIndex(KeyOf("MIKE"), OffsetOf(one(), "MIKE"), 0, IndexMode::kRemove);
  index.Flush();
  NewSeat(3).reset();
  ExpectAgreement();
}

// ---- what a single seat leaves ----

TEST_F(SharingChangeTest, TheBytesAtRestAreThoseOfASingleSeat) {
  for (Directory* seat : {&one(), &two()}) {
    clock.Advance(60);
    ASSERT_TRUE(AddTo(*seat, MakeCard("KILO", "HUGO")));
    ASSERT_EQ(SetIn(*seat, "KILO", kSte1, "LIMA"), ChangeResult::kMoved);
    ASSERT_EQ(SetIn(*seat, "LIMA", kTel1, "01"), ChangeResult::kRewritten);
    ASSERT_TRUE(DeleteFrom(*seat, "BRAVO"));
    ASSERT_TRUE(AddTo(*seat, "BRAVO"));
  }
  FakeClock other_clock{1'000'000'000};
  MemoryFileSystem other(other_clock);
  DirectoryOptions options;
  options.path = kSharedStem;
  Directory alone({other, other_clock, progress}, options);
  ASSERT_EQ(alone.OpenDirectory(), OpenResult::kCreated);
  for (const char* company : {"ALPHA", "BRAVO", "MIKE", "TANGO"}) AddTo(alone, company);
  for (int i = 0; i < 2; ++i) {
    AddTo(alone, MakeCard("KILO", "HUGO"));
    SetIn(alone, "KILO", kSte1, "LIMA");
    SetIn(alone, "LIMA", kTel1, "01");
    DeleteFrom(alone, "BRAVO");
    AddTo(alone, "BRAVO");
  }
  EXPECT_TRUE(SameBytes(WithoutTimes(Bytes(other, ".DAN")), WithoutTimes(MainFile())));
  EXPECT_TRUE(SameBytes(Bytes(other, ".I01"), Bytes(files, ".I01")));
  EXPECT_TRUE(SameBytes(Bytes(other, ".I02"), Bytes(files, ".I02")));
}

// ---- batches ----

TEST_F(SharingChangeTest, ABatchIsOnTopOfWhatTheOtherSeatDid) {
  ASSERT_TRUE(AddTo(two(), "KILO"));
  {
    const Directory::Batch batch(one());
    ASSERT_TRUE(batch);
    for (int n = 1; n <= 100; ++n) ASSERT_TRUE(AddTo(one(), FormatPrintf("F%03d", {n})));
    ASSERT_TRUE(DeleteFrom(one(), "F050"));
    ASSERT_TRUE(AddTo(one(), "GOLF"));
    EXPECT_EQ(SetIn(one(), "F001", kSte1, "HOTEL"), ChangeResult::kMoved);
  }
  EXPECT_EQ(CardsOf(MainFile()).size(), 105U);
  one_->CloseDirectory();
  one_ = NewSeat(1);
  { ASSERT_TRUE(ChangeScope(two())); }
  EXPECT_EQ(Listed(one()), Listed(two()));
}

// Turns of no length: every card gives way to the other seat.
TEST_F(SharingChangeTest, ALongBatchLetsTheOtherSeatIn) {
  DirectoryOptions options = SeatOptions(3);
  options.longest_turn = std::chrono::milliseconds(0);
  Directory three({files, clock, progress}, options);
  ASSERT_EQ(three.OpenDirectory(), OpenResult::kOpened);
  {
    const Directory::Batch batch(three);
    ASSERT_TRUE(AddTo(three, "KILO"));
    EXPECT_FALSE(AddTo(two(), "LIMA"));
    EXPECT_EQ(three.LetOthersIn(), Directory::Turn::kAgain);
    ASSERT_TRUE(AddTo(three, "LIMA"));
  }
  EXPECT_EQ(Listed(three).size(), 6U);
  ExpectAgreement();
}

TEST_F(SharingChangeTest, AShortBatchKeepsItsTurn) {
  const Directory::Batch batch(one());
  EXPECT_EQ(one().LetOthersIn(), Directory::Turn::kKept);
}

TEST_F(SharingChangeTest, CardsOfOthersThatCameInABatchAreNotOwnOnes) {
  const int64_t before = two().own_count();
  ASSERT_TRUE(AddTo(one(), "KILO"));
  ASSERT_TRUE(AddTo(one(), "LIMA"));
  ASSERT_TRUE(AddTo(two(), "NOVEMBER"));
  EXPECT_EQ(two().own_count() - before, 1);
  ASSERT_TRUE(DeleteFrom(one(), "ALPHA"));
  ASSERT_TRUE(RefreshIfChanged(two(), RefreshView::kWholeFile));
  EXPECT_EQ(two().own_count() - before, 1);
}

// The seat that has lost its turn must not cut off what the others have added since.
TEST_F(SharingChangeTest, ABatchThatHasLostItsTurnTouchesNothingAnyMore) {
  GatedFileSystem gate(files);
  DirectoryOptions options = SeatOptions(3);
  options.longest_turn = std::chrono::milliseconds(0);
  Directory three({gate, clock, progress}, options);
  ASSERT_EQ(three.OpenDirectory(), OpenResult::kOpened);
  FileBytes before;
  {
    const Directory::Batch batch(three);
    ASSERT_TRUE(AddTo(three, "KILO"));
    gate.may_lock = [&] {
      EXPECT_TRUE(AddTo(two(), "LIMA"));
      return false;
    };
    EXPECT_FALSE(AddTo(three, "NOVEMBER"));
    EXPECT_TRUE(three.lock_refused());
    before = MainFile();
  }
  EXPECT_EQ(CardsOf(before).size(), 6U);
  EXPECT_TRUE(SameBytes(before, MainFile()));
  gate.may_lock = [] { return true; };
  EXPECT_TRUE(AddTo(three, "NOVEMBER"));
  ExpectAgreement();
}

TEST_F(SharingChangeTest, ABatchThatCannotBeginChangesNothing) {
  const auto lock = HoldChanges(files, one().paths().Main(), std::chrono::milliseconds(0));
  const FileBytes before = MainFile();
  {
    const Directory::Batch batch(one());
    EXPECT_FALSE(batch);
  }
  files.SetContents("/alt.dan", before);
  const Recovery recovery = RecoverCards(one(), "/alt.dan");
  EXPECT_TRUE(recovery.failed);
  EXPECT_EQ(recovery.added, 0U);
  EXPECT_TRUE(SameBytes(before, MainFile()));
}

TEST_F(SharingChangeTest, RecoveredCardsAreAddedByTheSeat) {
  files.SetContents("/alt.dan", MainFile());
  ASSERT_TRUE(AddTo(two(), "KILO"));
  const Recovery recovery = RecoverCards(one(), "/alt.dan");
  EXPECT_EQ(recovery.added, 4U);
  EXPECT_FALSE(recovery.failed);
  EXPECT_EQ(CardsOf(MainFile()).size(), 9U);
  ExpectAgreement();
}

}  // namespace
}  // namespace carnetel
