// Which locks a seat takes and heeds: one for every change, one for the card that it edits; and
// none at all without seats.
#include <gmock/gmock.h>

#include "storage/upgrade.h"
#include "tests/storage/older_file.h"
#include "tests/storage/sharing_fixture.h"
#include "tests/support/gated_file_system.h"

namespace carnetel {
namespace {

using ::testing::ElementsAre;

constexpr std::chrono::milliseconds kAtOnce{0};

class SharingLockTest : public SharingFixture {
 protected:
  void SetUp() override { StartWithFour(); }
  [[nodiscard]] std::unique_ptr<RangeLock> AnotherSeatAtIt() {
    return HoldChanges(files, one().paths().Main(), kAtOnce);
  }
};

// ---- one change at a time ----

TEST_F(SharingLockTest, NothingIsChangedWhileAnotherSeatIsAtIt) {
  const std::unique_ptr<RangeLock> other = AnotherSeatAtIt();
  const FileBytes before = MainFile();
  EXPECT_FALSE(AddTo(one(), "KILO"));
  EXPECT_FALSE(DeleteFrom(one(), "ALPHA"));
  EXPECT_EQ(SetIn(one(), "BRAVO", kSte1, "KILO"), ChangeResult::kNotPossible);
  EXPECT_EQ(SetIn(one(), "BRAVO", kFax, "1"), ChangeResult::kNotPossible);
  EXPECT_FALSE(RefreshAddressFile(one(), RefreshView::kWholeFile, true));
  EXPECT_TRUE(one().lock_refused());
  EXPECT_TRUE(SameBytes(before, MainFile()));
}

TEST_F(SharingLockTest, ARefusalIsForgottenWithTheNextChange) {
  {
    const std::unique_ptr<RangeLock> other = AnotherSeatAtIt();
    EXPECT_FALSE(AddTo(one(), "KILO"));
  }
  EXPECT_TRUE(AddTo(one(), "KILO"));
  EXPECT_FALSE(one().lock_refused());
  ExpectAgreement();
}

TEST_F(SharingLockTest, NothingStaysLockedBehindAChange) {
  ASSERT_TRUE(AddTo(one(), "KILO"));
  ASSERT_TRUE(DeleteFrom(one(), "ALPHA"));
  EXPECT_NE(AnotherSeatAtIt(), nullptr);
  for (uint32_t card = 0; card < 6; ++card) EXPECT_TRUE(two().TestCardLock(768 * card));
}

TEST_F(SharingLockTest, ScopesMayBeNestedAndTheOutermostEndsThem) {
  {
    const ChangeScope outer(one());
    { ASSERT_TRUE(ChangeScope(one())); }
    ASSERT_TRUE(AddTo(one(), "KILO"));
    EXPECT_EQ(AnotherSeatAtIt(), nullptr);
    EXPECT_FALSE(AddTo(two(), "LIMA"));
  }
  EXPECT_TRUE(AddTo(two(), "LIMA"));
  ExpectAgreement();
}

TEST_F(SharingLockTest, AnOpeningIsAChangeToo) {
  const std::unique_ptr<RangeLock> other = AnotherSeatAtIt();
  Directory three({files, clock, progress}, SeatOptions(3));
  EXPECT_EQ(three.OpenDirectory(), OpenResult::kNoStore);
  EXPECT_TRUE(three.lock_refused());
  EXPECT_FALSE(files.Exists("/poste3/ESSAI.ADR"));
}

TEST_F(SharingLockTest, AFileThatIsNotThereIsNotWaitedFor) {
  GatedFileSystem gate(files);
  gate.may_lock = [] {
    ADD_FAILURE() << "nothing to lock";
    return false;
  };
  DirectoryOptions options = SeatOptions(3);
  options.path = "/reseau/AUTRE";
  options.may_create = false;
  Directory three({gate, clock, progress}, options);
  EXPECT_EQ(three.OpenDirectory(), OpenResult::kNoStore);
  EXPECT_FALSE(files.Exists("/reseau/AUTRE.DAN"));
}

// Both have seen that there is no directory yet; the one that gets the lock first fills it.
TEST_F(SharingLockTest, OfTwoSeatsThatCreateItOneFindsItMade) {
  DirectoryOptions options = SeatOptions(1);
  options.path = "/reseau/AUTRE";
  MemoryFileSystem fresh(clock);
  Directory quick({fresh, clock, progress}, options);
  GatedFileSystem slow_gate(fresh);
  slow_gate.may_lock = [&] {
    if (quick.is_open()) return true;
    const std::string main = "/reseau/AUTRE.DAN";
    fresh.Remove(main);
    EXPECT_EQ(quick.OpenDirectory(), OpenResult::kCreated);
    EXPECT_TRUE(AddTo(quick, "ALPHA"));
    return true;
  };
  options.shared_dir = FolderOf(2);
  Directory slow({slow_gate, clock, progress}, options);
  EXPECT_EQ(slow.OpenDirectory(), OpenResult::kOpened);
  EXPECT_THAT(Listed(slow), ElementsAre("ALPHA"));
}

TEST_F(SharingLockTest, ANewDirectoryIsMadeUnderTheLockAndIsThatOfASingleSeat) {
  GatedFileSystem gate(files);
  int locks = 0;
  gate.may_lock = [&] { return ++locks > 0; };
  DirectoryOptions options = SeatOptions(1);
  options.path = "/reseau/AUTRE";
  Directory made({gate, clock, progress}, options);
  EXPECT_EQ(made.OpenDirectory(), OpenResult::kCreated);
  EXPECT_EQ(locks, 1);
  options.path = "/seul/AUTRE";
  options.shared_dir.clear();
  Directory alone({files, clock, progress}, options);
  EXPECT_EQ(alone.OpenDirectory(), OpenResult::kCreated);
  for (const char* extension : {".DAN", ".I01", ".I02"}) {
    EXPECT_TRUE(SameBytes(files.Contents("/seul/AUTRE" + std::string(extension)),
                          files.Contents("/reseau/AUTRE" + std::string(extension))));
  }
}

TEST_F(SharingLockTest, AFileThatCannotBeMadeIsNoStore) {
  files.SetContents("/reseau/x", AsBytes("a file, no folder"));
  DirectoryOptions options = SeatOptions(1);
  options.path = "/reseau/x/AUTRE";
  Directory directory({files, clock, progress}, options);
  EXPECT_EQ(directory.OpenDirectory(), OpenResult::kNoStore);
}

// ---- an older main file ----

TEST_F(SharingLockTest, AnOlderFileIsConvertedByOneSeatOnly) {
  const std::string main = "/reseau/VIEUX.DAN";
  files.SetContents(main, OldMainFile({OldCard({{0, "ALPHA"}})}));
  DirectoryOptions options = SeatOptions(1);
  options.path = "/reseau/VIEUX";
  Directory first({files, clock, progress}, options);
  GatedFileSystem gate(files);
  int tries = 0;
  // The other seat is quicker between this one's look at the version and its change.
  gate.may_lock = [&] {
    if (++tries == 2) {
      EXPECT_EQ(OpenUpgrading(first), OpenResult::kOpened);
    }
    return true;
  };
  options.shared_dir = FolderOf(2);
  Directory second({gate, clock, progress}, options);
  EXPECT_EQ(OpenUpgrading(second), OpenResult::kOpened);
  EXPECT_THAT(Listed(first), ElementsAre("ALPHA"));
  EXPECT_THAT(Listed(second), ElementsAre("ALPHA"));
}

TEST_F(SharingLockTest, AnOlderFileIsNotConvertedUnderAnotherSeatsHands) {
  const std::string main = "/reseau/VIEUX.DAN";
  const FileBytes older = OldMainFile({OldCard({{0, "ALPHA"}})});
  files.SetContents(main, older);
  DirectoryOptions options = SeatOptions(1);
  options.path = "/reseau/VIEUX";
  GatedFileSystem gate(files);
  int tries = 0;
  gate.may_lock = [&] { return ++tries == 1; };
  Directory directory({gate, clock, progress}, options);
  EXPECT_EQ(OpenUpgrading(directory), OpenResult::kNoStore);
  EXPECT_TRUE(SameBytes(older, files.Contents(main)));
}

// ---- cards under edit ----

TEST_F(SharingLockTest, ACardIsHeldByOneSeatUntilItLetsGo) {
  EXPECT_TRUE(one().LockCard(768));
  EXPECT_TRUE(one().holds_card_lock());
  EXPECT_FALSE(two().LockCard(768));
  EXPECT_FALSE(two().holds_card_lock());
  EXPECT_FALSE(two().TestCardLock(768));
  EXPECT_TRUE(two().lock_refused());
  EXPECT_TRUE(two().TestCardLock(1536));
  EXPECT_FALSE(two().lock_refused());
  one().UnlockCard();
  EXPECT_TRUE(two().LockCard(768));
}

TEST_F(SharingLockTest, TheOwnLockIsNoObstacle) {
  ASSERT_TRUE(one().LockCard(768));
  EXPECT_TRUE(one().LockCard(768));
  EXPECT_TRUE(one().TestCardLock(768));
  EXPECT_EQ(SetIn(one(), "ALPHA", kFax, "1"), ChangeResult::kRewritten);
  EXPECT_FALSE(two().TestCardLock(768));
}

TEST_F(SharingLockTest, ASeatHoldsOneCardAtMost) {
  ASSERT_TRUE(one().LockCard(768));
  ASSERT_TRUE(one().LockCard(1536));
  EXPECT_TRUE(two().TestCardLock(768));
  EXPECT_FALSE(two().TestCardLock(1536));
}

TEST_F(SharingLockTest, TheLockCoversTheCardAndNothingElse) {
  ASSERT_TRUE(one().LockCard(1536));
  const std::string main = one().paths().Main();
  EXPECT_NE(files.LockRange(main, 0, 1536), nullptr);
  EXPECT_EQ(files.LockRange(main, 1536, 1), nullptr);
  EXPECT_EQ(files.LockRange(main, 2303, 1), nullptr);
  EXPECT_NE(files.LockRange(main, 2304, 768), nullptr);
}

TEST_F(SharingLockTest, ClosingLetsTheCardGo) {
  ASSERT_TRUE(one().LockCard(768));
  one().CloseDirectory();
  EXPECT_TRUE(two().TestCardLock(768));
}

TEST_F(SharingLockTest, AHeldCardDoesNotKeepOthersFromBeingChanged) {
  ASSERT_TRUE(one().LockCard(OffsetOf(one(), "BRAVO")));
  EXPECT_TRUE(AddTo(two(), "KILO"));
  EXPECT_EQ(SetIn(two(), "ALPHA", kFax, "1"), ChangeResult::kRewritten);
  EXPECT_TRUE(DeleteFrom(two(), "KILO"));
  ExpectAgreement();
}

// The last card would move into the freed place, which its editor must not find out.
TEST_F(SharingLockTest, NothingIsDeletedWhileAnotherSeatEditsTheLastCard) {
  ASSERT_TRUE(one().LockCard(OffsetOf(one(), "TANGO")));
  const FileBytes before = MainFile();
  EXPECT_FALSE(DeleteFrom(two(), "ALPHA"));
  EXPECT_TRUE(two().lock_refused());
  EXPECT_EQ(SetIn(two(), "ALPHA", kSte1, "KILO"), ChangeResult::kNotPossible);
  EXPECT_TRUE(two().lock_refused());
  EXPECT_TRUE(SameBytes(before, MainFile()));
  EXPECT_EQ(Fault(files, 2), "");
  one().UnlockCard();
  EXPECT_TRUE(DeleteFrom(two(), "ALPHA"));
  ExpectAgreement();
}

TEST_F(SharingLockTest, TheLastCardOfTheOwnEditIsNoObstacle) {
  ASSERT_TRUE(one().LockCard(OffsetOf(one(), "TANGO")));
  EXPECT_TRUE(DeleteFrom(one(), "ALPHA"));
}

// ---- without seats ----

TEST_F(SharingLockTest, WithoutSeatsNothingIsEverLocked) {
  DirectoryOptions options;
  options.path = "/seul/ESSAI";
  files.ResetCounts();
  Directory alone({files, clock, progress}, options);
  ASSERT_EQ(alone.OpenDirectory(), OpenResult::kCreated);
  ASSERT_TRUE(AddTo(alone, "ALPHA", true));
  ASSERT_TRUE(AddTo(alone, "BRAVO"));
  EXPECT_TRUE(alone.LockCard(768));
  EXPECT_FALSE(alone.holds_card_lock());
  EXPECT_TRUE(alone.TestCardLock(768));
  EXPECT_EQ(SetIn(alone, "ALPHA", kSte1, "KILO"), ChangeResult::kMoved);
  EXPECT_EQ(SetIn(alone, "KILO", kFax, "1"), ChangeResult::kRewritten);
  EXPECT_TRUE(DeleteFrom(alone, "BRAVO"));
  {
    const Directory::Batch batch(alone);
    EXPECT_TRUE(AddTo(alone, "LIMA"));
    EXPECT_EQ(alone.LetOthersIn(), Directory::Turn::kKept);
  }
  EXPECT_FALSE(RefreshIfChanged(alone, RefreshView::kWholeFile));
  alone.CloseDirectory();
  EXPECT_EQ(files.counts().locks, 0);
}

// What others have put into the file meanwhile is none of a single seat's business.
TEST_F(SharingLockTest, WithoutSeatsNobodyElseChanges) {
  DirectoryOptions options;
  options.path = kSharedStem;
  Directory alone({files, clock, progress}, options);
  ASSERT_EQ(alone.OpenDirectory(), OpenResult::kOpened);
  ASSERT_TRUE(AddTo(one(), "KILO"));
  EXPECT_FALSE(alone.ChangedByOthers());
  EXPECT_FALSE(alone.is_shared());
}

// ---- whether files can be locked at all ----

TEST_F(SharingLockTest, SharingWorksWhereAFileCanBeMadeAndLocked) {
  EXPECT_TRUE(SharingWorks(files, "/poste1/"));
  EXPECT_FALSE(files.Exists("/poste1/ZOZO.$$$"));
}

TEST_F(SharingLockTest, SharingWorksWithAFileThatIsThere) {
  files.SetContents("/poste1/ZOZO.$$$", AsBytes("left by a run that died"));
  EXPECT_TRUE(SharingWorks(files, "/poste1/"));
  EXPECT_FALSE(files.Exists("/poste1/ZOZO.$$$"));
}

TEST_F(SharingLockTest, SharingFailsWithoutLocksAndTheFileGoes) {
  GatedFileSystem gate(files);
  gate.may_lock = [] { return false; };
  EXPECT_FALSE(SharingWorks(gate, "/poste1/"));
  EXPECT_FALSE(files.Exists("/poste1/ZOZO.$$$"));
}

TEST_F(SharingLockTest, SharingFailsWhereNoFileCanBeMade) {
  files.SetContents("/poste9", AsBytes("a file, no folder"));
  EXPECT_FALSE(SharingWorks(files, "/poste9/"));
}

TEST_F(SharingLockTest, SharingIsTriedOnOneByteAtOffsetOne) {
  files.SetContents("/poste1/ZOZO.$$$", AsBytes("x"));
  const auto first = files.LockRange("/poste1/ZOZO.$$$", 0, 1);
  const auto behind = files.LockRange("/poste1/ZOZO.$$$", 2, 100);
  EXPECT_TRUE(SharingWorks(files, "/poste1/"));
}

}  // namespace
}  // namespace carnetel
