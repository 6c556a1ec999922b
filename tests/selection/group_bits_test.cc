// Members of groups in the bytes of the address file.
#include "selection/group_bits.h"

#include "tests/selection/selection_testing.h"

namespace carnetel {
namespace {

class GroupBitsTest : public SelectionFixture {
 protected:
  void SetUp() override {
    Open();
    AddCompanies({"BOTH", "MARKED", "MEMBER", "NONE"});
    MarkOnly({"BOTH", "MEMBER"});
    ApplyGroupBits(*directory_, 10, GroupOperation::kCreate);
    MarkOnly({"BOTH", "MARKED"});
  }
  Texts MembersAfter(GroupOperation operation) {
    ApplyGroupBits(*directory_, 10, operation);
    EXPECT_EQ(Marked(), (Texts{"BOTH", "MARKED"}));
    EXPECT_EQ(directory_->marked_count(), 2);
    return CompaniesWith(10);
  }
  // Puts one entry with these mark bytes and this flag byte into the file.
  void SetBits(uint32_t row, std::byte marks, std::byte flags) {
    EntrySlot entry = directory_->address().Entry(row);
    FileBytes bytes(entry.bytes().begin(), entry.bytes().end());
    std::fill(bytes.begin() + 4, bytes.begin() + 15, marks);
    bytes[15] = flags;
    directory_->address().SetEntry(row, EntrySlot(bytes));
    directory_->Commit();
  }
  FileBytes EntryBytes(size_t row) {
    const FileBytes file = Contents(".ADR");
    const auto start = file.begin() + 320 + static_cast<std::ptrdiff_t>(16 * row);
    return {start, start + 16};
  }
};

TEST_F(GroupBitsTest, CreatingMakesTheMarkedCardsMembersAndLetsFormerOnesBe) {
  EXPECT_EQ(MembersAfter(GroupOperation::kCreate), (Texts{"BOTH", "MARKED", "MEMBER"}));
}

TEST_F(GroupBitsTest, ReplacingMakesTheMarkedCardsTheMembers) {
  EXPECT_EQ(MembersAfter(GroupOperation::kReplace), (Texts{"BOTH", "MARKED"}));
}

TEST_F(GroupBitsTest, MergingAddsTheMarkedCards) {
  EXPECT_EQ(MembersAfter(GroupOperation::kMerge), (Texts{"BOTH", "MARKED", "MEMBER"}));
}

TEST_F(GroupBitsTest, DeletingEmptiesTheGroup) {
  EXPECT_EQ(MembersAfter(GroupOperation::kDelete), Texts{});
}

TEST_F(GroupBitsTest, ItsOperationsAreNumbers) {
  EXPECT_EQ(static_cast<int>(GroupOperation::kCreate), 1);
  EXPECT_EQ(static_cast<int>(GroupOperation::kReplace), 2);
  EXPECT_EQ(static_cast<int>(GroupOperation::kDelete), 3);
  EXPECT_EQ(static_cast<int>(GroupOperation::kMerge), 4);
}

TEST_F(GroupBitsTest, TheMarksAreThoseOfTheDisplayedGroup) {
  Display(10);
  MarkOnly({"MEMBER"});
  ApplyGroupBits(*directory_, 12, GroupOperation::kCreate);
  EXPECT_EQ(CompaniesWith(12), Texts{"MEMBER"});
  ApplyGroupBits(*directory_, 10, GroupOperation::kReplace);
  EXPECT_EQ(CompaniesWith(10), Texts{"MEMBER"});
  EXPECT_EQ(CompaniesWith(11), Texts{"MEMBER"});
}

// Every slot: of an entry with all bits set, a member that leaves loses the bit of the slot, and in
// slots 2, 4 and 6 the selection bit of slots 18, 36 and 54. Its own selection bit stays.
TEST_F(GroupBitsTest, AMemberThatLeavesLosesTheStrayBitOfSlots2And4And6) {
  for (unsigned slot = 2; slot <= 88; slot += 2) {
    for (const GroupOperation operation : {GroupOperation::kDelete, GroupOperation::kReplace}) {
      SetBits(0, std::byte{0xFF}, std::byte{0xFF});
      // Not marked in what is displayed, so that replacing puts it out.
      Display(0);
      EntrySlot entry = directory_->address().Entry(0);
      entry.set_bit(1, false);
      directory_->address().SetEntry(0, entry);
      FileBytes expected(entry.bytes().begin(), entry.bytes().end());
      expected[4 + slot / 8] &= ~std::byte(1 << slot % 8);
      if (slot == 2) expected[4 + 19 / 8] &= ~std::byte(1 << 19 % 8);
      if (slot == 4) expected[4 + 37 / 8] &= ~std::byte(1 << 37 % 8);
      if (slot == 6) expected[4 + 55 / 8] &= ~std::byte(1 << 55 % 8);
      ApplyGroupBits(*directory_, static_cast<uint8_t>(slot), operation);
      EXPECT_TRUE(SameBytes(expected, EntryBytes(0))) << "slot " << slot;
    }
  }
}

TEST_F(GroupBitsTest, JoiningAGroupClearsNothing) {
  for (const uint8_t slot : std::initializer_list<uint8_t>{2, 4, 6, 8, 88}) {
    SetBits(0, std::byte{0xFF}, std::byte{0xFF});
    const FileBytes before = EntryBytes(0);
    for (const GroupOperation operation :
         {GroupOperation::kCreate, GroupOperation::kReplace, GroupOperation::kMerge}) {
      ApplyGroupBits(*directory_, slot, operation);
      EXPECT_TRUE(SameBytes(before, EntryBytes(0))) << int{slot};
    }
  }
}

TEST_F(GroupBitsTest, AMemberThatStaysInLosesNoStrayBit) {
  SetBits(0, std::byte{0xFF}, std::byte{0xFF});
  ApplyGroupBits(*directory_, 2, GroupOperation::kReplace);
  EXPECT_TRUE(EntryBit(Contents(".ADR"), 0, 19));
}

TEST_F(GroupBitsTest, OneThatIsNoMemberLosesNoStrayBit) {
  SetBits(3, std::byte{0}, std::byte{0});
  EntrySlot entry = directory_->address().Entry(3);
  entry.set_bit(19, true);
  directory_->address().SetEntry(3, entry);
  ApplyGroupBits(*directory_, 2, GroupOperation::kDelete);
  EXPECT_TRUE(EntryBit(Contents(".ADR"), 3, 19));
}

TEST_F(GroupBitsTest, Slot88AndItsSelectionLieBesideTheNumberFlags) {
  ApplyGroupBits(*directory_, 88, GroupOperation::kCreate);
  EXPECT_EQ(EntryBytes(0)[15], std::byte{0x01});
  Display(88);
  MarkOnly({"BOTH"});
  EXPECT_EQ(EntryBytes(0)[15], std::byte{0x03});
  EXPECT_EQ(EntryBytes(1)[15], std::byte{0x01});
  EXPECT_EQ(EntryBytes(3)[15], std::byte{0});
}

TEST_F(GroupBitsTest, ARefreshOfTheNumberFlagsLeavesThePairOfSlot88) {
  ApplyGroupBits(*directory_, 88, GroupOperation::kCreate);
  Display(88);
  MarkOnly({"BOTH"});
  CardRecord card;
  const uint32_t offset = directory_->address().CardOffsetAt(0);
  ASSERT_TRUE(directory_->main().ReadCard(offset, card));
  card.SetField(kTel1, OemText("1"));
  card.SetField(kFax, OemText("2"));
  EXPECT_EQ(ChangeCard(*directory_, offset, card).result, ChangeResult::kRewritten);
  EXPECT_EQ(EntryBytes(0)[15], std::byte{0x93});
  card.SetField(kTel1, OemText(""));
  EXPECT_EQ(ChangeCard(*directory_, offset, card).result, ChangeResult::kRewritten);
  EXPECT_EQ(EntryBytes(0)[15], std::byte{0x13});
}

TEST_F(GroupBitsTest, GroupsLeaveTheNumberFlags) {
  SetBits(0, std::byte{0x03}, std::byte{0xF0});
  ApplyGroupBits(*directory_, 88, GroupOperation::kCreate);
  EXPECT_EQ(EntryBytes(0)[15], std::byte{0xF1});
  ApplyGroupBits(*directory_, 88, GroupOperation::kDelete);
  EXPECT_EQ(EntryBytes(0)[15], std::byte{0xF0});
}

TEST_F(GroupBitsTest, ANegativeOffsetEndsTheWalk) {
  EntrySlot entry = directory_->address().Entry(1);
  entry.set_card_offset(0x80000300);
  directory_->address().SetEntry(1, entry);
  ApplyGroupBits(*directory_, 12, GroupOperation::kCreate);
  EXPECT_TRUE(EntryBit(Contents(".ADR"), 0, 12));
  EXPECT_FALSE(EntryBit(Contents(".ADR"), 1, 12));
}

}  // namespace
}  // namespace carnetel
