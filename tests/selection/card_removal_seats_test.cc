// Deleting cards of a directory that two seats share: what another seat edits stays.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/memory_file_system.h"
#include "selection/card_removal.h"
#include "storage/card_dispatch.h"
#include "storage/family_check.h"

namespace carnetel {
namespace {

using ::testing::ElementsAre;

class CardRemovalAtSeats : public ::testing::Test {
 protected:
  void SetUp() override {
    one_ = OpenSeat("/poste1/");
    for (const char* company : {"ALPHA", "BRAVO", "MIKE", "TANGO"}) Add(one(), company);
    two_ = OpenSeat("/poste2/");
  }
  std::unique_ptr<Directory> OpenSeat(const std::string& folder) {
    DirectoryOptions options;
    options.path = "/reseau/X";
    options.shared_dir = folder;
    options.lock_wait = std::chrono::milliseconds(0);
    auto seat = std::make_unique<Directory>(DirectoryServices{files_, clock_, progress_}, options);
    EXPECT_TRUE(IsOpen(seat->OpenDirectory()));
    return seat;
  }
  static void Add(Directory& seat, const std::string& company) {
    seat.context().current.Clear();
    seat.context().current.SetField(kSte1, OemText(company));
    uint32_t position = 0;
    ASSERT_EQ(CardDispatch(seat).Add(false, &position), 0);
  }
  static void Mark(Directory& seat, uint32_t card_offset) {
    AddressFile& address = seat.address();
    const uint32_t row = address.FindRow(card_offset);
    EntrySlot entry = address.Entry(row);
    entry.set_bit(1, true);
    address.SetEntry(row, entry);
    seat.set_marked_count(seat.marked_count() + 1);
  }
  static std::vector<std::string> Companies(Directory& seat) {
    std::vector<std::string> companies;
    for (uint32_t row = 0; row < seat.address().entry_count(); ++row) {
      CardRecord card;
      EXPECT_TRUE(seat.main().ReadCard(seat.address().CardOffsetAt(row), card));
      companies.push_back(card.FieldText(kSte1).bytes());
    }
    return companies;
  }
  void ExpectConsistent() {
    two().CloseDirectory();
    for (const Finding& finding : CheckFamily(files_, two().paths(), kSte1)) {
      ADD_FAILURE() << finding.file << ' ' << finding.text;
    }
  }
  Directory& one() { return *one_; }
  Directory& two() { return *two_; }

  FakeClock clock_{1'000'000'000};
  MemoryFileSystem files_{clock_};
  SilentProgress progress_;

 private:
  std::unique_ptr<Directory> one_;
  std::unique_ptr<Directory> two_;
};

TEST_F(CardRemovalAtSeats, OfSeveralThoseThatOthersEditStay) {
  ASSERT_TRUE(one().LockCard(1536));
  const CardRemoval removal = DeleteCards(two(), {768, 1536, 2304});
  EXPECT_EQ(removal.deleted, 2U);
  EXPECT_EQ(removal.held, 1U);
  EXPECT_FALSE(removal.failed);
  EXPECT_THAT(Companies(two()), ElementsAre("BRAVO", "TANGO"));
  ExpectConsistent();
}

// It would have to move into the freed place.
TEST_F(CardRemovalAtSeats, WhileTheLastIsEditedAllStay) {
  ASSERT_TRUE(one().LockCard(3072));
  const CardRemoval removal = DeleteCards(two(), {768, 3072});
  EXPECT_EQ(removal.deleted, 0U);
  EXPECT_EQ(removal.held, 2U);
  EXPECT_FALSE(removal.failed);
  EXPECT_EQ(Companies(two()).size(), 4U);
  ExpectConsistent();
}

// TANGO lies where ALPHA was, and KILO where TANGO was, when the deletion begins.
TEST_F(CardRemovalAtSeats, TheMarkedAreThoseThatAreMarkedWhenItBegins) {
  Mark(two(), 3072);
  uint32_t moved_from = 0;
  ASSERT_TRUE(DeleteCard(one(), 768, &moved_from));
  Add(one(), "KILO");
  EXPECT_EQ(DeleteMarkedCards(two()).deleted, 1U);
  EXPECT_THAT(Companies(two()), ElementsAre("BRAVO", "KILO", "MIKE"));
  ExpectConsistent();
}

TEST_F(CardRemovalAtSeats, AMarkedCardThatIsGoneTakesNoOtherWithIt) {
  Mark(two(), 1536);
  uint32_t moved_from = 0;
  ASSERT_TRUE(DeleteCard(one(), 1536, &moved_from));
  EXPECT_EQ(DeleteMarkedCards(two()).deleted, 0U);
  EXPECT_THAT(Companies(two()), ElementsAre("ALPHA", "MIKE", "TANGO"));
}

TEST_F(CardRemovalAtSeats, NothingGoesWhileAnotherSeatIsAtIt) {
  Mark(two(), 768);
  const auto lock = HoldChanges(files_, one().paths().Main(), std::chrono::milliseconds(0));
  const CardRemoval removal = DeleteMarkedCards(two());
  EXPECT_EQ(removal.deleted, 0U);
  EXPECT_EQ(removal.held, 1U);
  EXPECT_EQ(Companies(two()).size(), 4U);
}

TEST_F(CardRemovalAtSeats, NothingStaysLockedBehindIt) {
  EXPECT_EQ(DeleteCards(two(), {768, 1536}).deleted, 2U);
  EXPECT_NE(HoldChanges(files_, one().paths().Main(), std::chrono::milliseconds(0)), nullptr);
  EXPECT_TRUE(one().TestCardLock(768));
}

}  // namespace
}  // namespace carnetel
