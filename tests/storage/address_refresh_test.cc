// What a seat's address file becomes when another seat has changed the directory.
#include <gmock/gmock.h>

#include "platform/fault_file_system.h"
#include "storage/address_reorder.h"
#include "tests/storage/family_bytes.h"
#include "tests/storage/family_check.h"
#include "tests/support/recording_progress.h"

namespace carnetel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;
using ::testing::UnorderedElementsAre;

constexpr uint32_t kTime = 1'000'000'000;
constexpr uint32_t kLater = kTime + 60;
constexpr std::string_view kSeatFile = "/poste1/ESSAI.ADR";

// Seat 1 has the directory open; seat 2 comes and goes. Cards of the directory: ALPHA at 768, BRAVO
// at 3072, MIKE at 1536 and TANGO at 2304.
class AddressRefreshTest : public StoreFixture {
 protected:
  void SetUp() override {
    Open();
    Add(MakeCard({{kSte1, "ALPHA"}, {kTel1, "1"}}));
    Add(MakeCard({{kSte1, "MIKE"}, {kFax, "2"}}));
    Add(MakeCard({{kSte1, "TANGO"}, {kModem, "3"}}));
    Add(MakeCard({{kSte1, "BRAVO"}}));
    Close();
    files.Remove(Path(".ADR"));
    OpenSeat("/poste2/", files);
    seat_ = OpenSeat("/poste1/", files);
    for (const std::string_view extension : {"GRP", "CRT", "LST"}) {
      for (const std::string_view folder : {"/poste1/", "/poste2/"}) {
        files.SetContents(std::string(folder) + "ESSAI." + std::string(extension), AsBytes("kept"));
      }
    }
    clock.Advance(60);
  }
  std::unique_ptr<Directory> OpenSeat(const std::string& folder, FileSystem& disk) {
    DirectoryOptions options;
    options.path = kStem;
    options.shared_dir = folder;
    auto opened = std::make_unique<Directory>(DirectoryServices{disk, clock, shown}, options);
    EXPECT_EQ(opened->OpenDirectory(AddressMode::kNormal, true), OpenResult::kOpened);
    return opened;
  }
  // The card's entry of seat 1 gets these bytes behind its offset.
  void SetBits(uint32_t card_offset, std::string_view bits) {
    FileBytes bytes(16);
    StoreLe32(bytes, 0, card_offset);
    StorePadded(bytes, 4, 12, bits);
    AddressFile& address = seat().address();
    const EntrySlot entry(bytes);
    address.SetEntry(address.FindRow(card_offset), entry);
    if (entry.bit(1)) seat().set_marked_count(seat().marked_count() + 1);
    seat().CloseListView();
  }
  void SeatTwo(const std::function<void(Directory&)>& change) {
    const std::unique_ptr<Directory> other = OpenSeat("/poste2/", files);
    change(*other);
  }
  void SeatTwoAdds(const CardRecord& card) {
    SeatTwo([&card](Directory& other) {
      other.context().current = card;
      uint32_t position = 0;
      EXPECT_EQ(CardDispatch(other).Add(false, &position), 0);
    });
  }
  void SeatTwoDeletes(uint32_t card_offset) {
    SeatTwo([card_offset](Directory& other) {
      uint32_t moved_from = 0;
      EXPECT_TRUE(DeleteCard(other, card_offset, &moved_from));
    });
  }
  // An address file whose entries have these bytes behind their offsets.
  static FileBytes Expected(const std::vector<std::pair<uint32_t, std::string>>& entries,
                            uint16_t marked, uint32_t stamp = kLater) {
    std::vector<uint32_t> offsets;
    for (const auto& [offset, bits] : entries) offsets.push_back(offset);
    FileBytes file = ExpectedAddressFile(PlainEntries(offsets), stamp, marked);
    for (size_t row = 0; row < entries.size(); ++row) {
      StorePadded(file, 320 + 16 * row + 4, 12, entries[row].second);
    }
    return file;
  }
  [[nodiscard]] FileBytes SeatFile() const { return files.Contents(std::string(kSeatFile)); }
  void ExpectDependentsOfSeatOneGone() {
    EXPECT_THAT(files.List("/poste1"), UnorderedElementsAre("ESSAI.ADR", "ESSAI.CRT"));
    EXPECT_TRUE(SameBytes(DefaultCriteriaBytes(), files.Contents("/poste1/ESSAI.CRT")));
    for (const std::string_view extension : {"GRP", "CRT", "LST"}) {
      EXPECT_EQ(AsChars(files.Contents("/poste2/ESSAI." + std::string(extension))), "kept");
    }
  }
  Directory& seat() { return *seat_; }

  RecordingProgress shown;

 private:
  std::unique_ptr<Directory> seat_;
};

// Bytes of an entry behind its card offset.
std::string Bits(std::string_view first, char flags) {
  std::string bits(first);
  bits.resize(12);
  bits[11] = flags;
  return bits;
}

const std::string kMarkedMember = Bits("\x13\x02\x30", '\x07');
const std::string kMember = Bits("\x11\x02\x30", '\x08');

TEST_F(AddressRefreshTest, MarkedEntriesKeepAllBytesAndOthersLoseTheirGroups) {
  SetBits(768, kMarkedMember);
  SetBits(2304, kMember);
  SeatTwoAdds(MakeCard({{kSte1, "KILO"}, {kMtel, "4"}}));
  ASSERT_TRUE(RefreshAddressFile(seat(), RefreshView::kWholeFile, true));
  EXPECT_TRUE(SameBytes(Expected({{768, kMarkedMember},
                                  {3072, Bits("\x01", 0)},
                                  {3840, Bits("\x01", '\x40')},
                                  {1536, Bits("\x01", '\x10')},
                                  {2304, Bits("\x01", '\x20')}},
                                 1),
                        SeatFile()));
  EXPECT_EQ(seat().marked_count(), 1);
  ExpectDependentsOfSeatOneGone();
}

TEST_F(AddressRefreshTest, TheSeatSeesTheCardsOfTheOther) {
  SeatTwoAdds(MakeCard("KILO", "ZOLA"));
  ASSERT_TRUE(RefreshAddressFile(seat(), RefreshView::kWholeFile, true));
  EXPECT_EQ(seat().main().count(), 5U);
  CardRecord card;
  ASSERT_TRUE(seat().main().ReadCard(seat().address().CardOffsetAt(2), card));
  EXPECT_EQ(card.FieldText(kSte1).bytes(), "KILO");
  // The next card of this seat comes behind it.
  seat().context().current = MakeCard("NOVEMBER");
  uint32_t position = 0;
  EXPECT_EQ(CardDispatch(seat()).Add(false, &position), 0);
  seat().CloseDirectory();
  const FileBytes own = SeatFile();
  const FamilyBytes family = {MainFile(), IndexFile(1), IndexFile(2), own};
  EXPECT_EQ(CardsOf(family.main).size(), 6U);
  EXPECT_EQ(FamilyFault(family), "");
}

// The stamp is that of the other seat's change, so that the next look finds none.
TEST_F(AddressRefreshTest, TheStampIsTaken) {
  SeatTwoAdds(MakeCard("KILO"));
  ASSERT_NE(seat().address().header().stamp(), kLater);
  ASSERT_TRUE(RefreshAddressFile(seat(), RefreshView::kWholeFile, true));
  EXPECT_EQ(seat().address().header().stamp(), kLater);
  EXPECT_EQ(LoadLe32(SeatFile(), 104), kLater);
  EXPECT_EQ(LoadLe32(MainFile(), 102), kLater);
}

TEST_F(AddressRefreshTest, WithoutMarksNoneStayAndTheGroupsGo) {
  SetBits(768, kMember);
  SetBits(2304, kMember);
  ASSERT_TRUE(RefreshAddressFile(seat(), RefreshView::kWholeFile, true));
  EXPECT_TRUE(SameBytes(Expected({{768, Bits("\x01", '\x80')},
                                  {3072, Bits("\x01", 0)},
                                  {1536, Bits("\x01", '\x10')},
                                  {2304, Bits("\x01", '\x20')}},
                                 0, kTime),
                        SeatFile()));
  EXPECT_EQ(seat().marked_count(), 0);
  ExpectDependentsOfSeatOneGone();
}

// Entries are known by the offset of their card: the last card, moved into the freed place, takes
// over what the deleted one had.
TEST_F(AddressRefreshTest, AMovedCardTakesOverTheBytesOfTheDeletedOne) {
  SetBits(1536, kMarkedMember);
  SeatTwoDeletes(1536);
  ASSERT_TRUE(RefreshAddressFile(seat(), RefreshView::kWholeFile, true));
  EXPECT_TRUE(SameBytes(
      Expected({{768, Bits("\x01", '\x80')}, {1536, kMarkedMember}, {2304, Bits("\x01", '\x20')}},
               1),
      SeatFile()));
}

// The search goes forward only: TANGO's place holds BRAVO now, in front of MIKE, which was found
// before it.
TEST_F(AddressRefreshTest, AMarkWhosePlaceMovedInFrontOfTheLastHitIsLost) {
  SetBits(768, kMarkedMember);
  SetBits(1536, kMarkedMember);
  SetBits(2304, kMarkedMember);
  SeatTwoDeletes(2304);
  ASSERT_TRUE(RefreshAddressFile(seat(), RefreshView::kWholeFile, true));
  EXPECT_TRUE(
      SameBytes(Expected({{768, kMarkedMember}, {2304, Bits("\x01", 0)}, {1536, kMarkedMember}}, 2),
                SeatFile()));
  EXPECT_EQ(seat().marked_count(), 2);
}

// A mark that finds nothing does not end the search for those behind it.
TEST_F(AddressRefreshTest, AMarkOfACardThatIsGoneIsLostAlone) {
  SetBits(3072, kMarkedMember);
  SetBits(2304, kMarkedMember);
  SeatTwoDeletes(3072);
  ASSERT_TRUE(RefreshAddressFile(seat(), RefreshView::kWholeFile, true));
  EXPECT_TRUE(SameBytes(
      Expected({{768, Bits("\x01", '\x80')}, {1536, Bits("\x01", '\x10')}, {2304, kMarkedMember}},
               1),
      SeatFile()));
}

TEST_F(AddressRefreshTest, SavedRowsBeginAnew) {
  seat().address().header().set_top_row(2);
  seat().address().header().set_current_row(3);
  seat().CloseListView();
  ASSERT_TRUE(RefreshAddressFile(seat(), RefreshView::kWholeFile, true));
  EXPECT_EQ(LoadLe32(SeatFile(), 100), 0U);
}

TEST_F(AddressRefreshTest, TheFirstGroupKeepsItsEntriesAndCountsThem) {
  seat().set_group_bit(4);
  SetBits(768, Bits("\x31", '\x80'));
  SetBits(2304, Bits("\x11", '\x20'));
  seat().address().header().set_count(77);
  const FileBytes before = SeatFile();
  SeatTwoAdds(MakeCard("KILO"));
  ASSERT_TRUE(RefreshAddressFile(seat(), RefreshView::kFirstGroup, true));
  FileBytes expected = before;
  StoreLe16(expected, 96, 4);
  StoreLe32(expected, 104, kLater);
  StoreLe16(expected, 128 + 2 * 5, 1);
  EXPECT_TRUE(SameBytes(expected, SeatFile()));
  EXPECT_EQ(seat().marked_count(), 1);
  EXPECT_EQ(seat().main().count(), 5U);
  EXPECT_THAT(files.List("/poste1"),
              UnorderedElementsAre("ESSAI.ADR", "ESSAI.GRP", "ESSAI.CRT", "ESSAI.LST"));
}

TEST_F(AddressRefreshTest, OtherGroupsChangeNothing) {
  SetBits(768, kMarkedMember);
  SeatTwoAdds(MakeCard("KILO"));
  seat().address().header().set_count(77);
  const FileBytes before = SeatFile();
  files.ResetCounts();
  EXPECT_TRUE(RefreshAddressFile(seat(), RefreshView::kOtherGroup, true));
  EXPECT_EQ(files.counts().writes, 0);
  EXPECT_TRUE(SameBytes(before, SeatFile()));
  EXPECT_EQ(seat().marked_count(), 1);
  EXPECT_EQ(files.List("/poste1").size(), 4U);
}

TEST_F(AddressRefreshTest, ProgressIsShownUnlessQuiet) {
  ASSERT_TRUE(RefreshAddressFile(seat(), RefreshView::kWholeFile, true));
  EXPECT_THAT(shown.opened, IsEmpty());
  ASSERT_TRUE(RefreshAddressFile(seat(), RefreshView::kWholeFile, false));
  EXPECT_THAT(shown.opened, ElementsAre(Pair(ProgressForm::kBuildIndex, 4U)));
  EXPECT_THAT(shown.texts, ElementsAre("ALPHA", "BRAVO", "MIKE", "TANGO"));
  EXPECT_EQ(shown.closed, 1);
}

TEST_F(AddressRefreshTest, AMissingIndexIsMadeAnew) {
  SetBits(768, kMarkedMember);
  files.Remove(Path(".I01"));
  files.SetContents(Path(".I02"), FileBytes(100));
  ASSERT_TRUE(RefreshAddressFile(seat(), RefreshView::kWholeFile, true));
  const FamilyBytes family = {MainFile(), IndexFile(1), IndexFile(2), SeatFile()};
  std::vector<uint32_t> order;
  ASSERT_EQ(IndexFault(family.index1, CardsOf(family.main), kSte1, SlotOrder::kSorted, &order), "");
  EXPECT_EQ(AddressFault(family.address, CardsOf(family.main), &order, false), "");
  EXPECT_EQ(seat().marked_count(), 1);
}

TEST_F(AddressRefreshTest, AnAddressFileThatCannotBeMadeIsTold) {
  FaultFileSystem faulty(files);
  const std::unique_ptr<Directory> other = OpenSeat("/poste3/", faulty);
  faulty.StopAfter(0);
  EXPECT_FALSE(RefreshAddressFile(*other, RefreshView::kWholeFile, true));
}

TEST_F(AddressRefreshTest, AMainFileThatIsEmptyIsTold) {
  files.SetContents(Path(".DAN"), {});
  const FileBytes before = SeatFile();
  EXPECT_FALSE(RefreshAddressFile(seat(), RefreshView::kWholeFile, true));
  EXPECT_TRUE(SameBytes(before, SeatFile()));
}

}  // namespace
}  // namespace carnetel
