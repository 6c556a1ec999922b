#include "selection/group_removal.h"

#include <gmock/gmock.h>

#include "selection/marks.h"
#include "tests/shell/shell_testing.h"
#include "tests/support/recording_progress.h"

namespace carnetel {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

constexpr uint8_t kGroup = 4;
constexpr uint8_t kGroupMark = 5;
// Counter of the group's marks in the address file.
constexpr size_t kCounterAt = 128 + 2 * kGroupMark;
// Bits of a member as another group, the whole file and a number left them: all but the pair 4, 5.
constexpr std::string_view kOtherBits("\xCF\x40\x02\x00\x00\x00\x00\x00\x00\x00\x80\x8B", 12);

class GroupRemovalTest : public OpenDirectoryTest {
 protected:
  // Five cards, of which the first four are members of the displayed group, all but C marked.
  void SetUp() override {
    OpenWith(progress_);
    for (const char* company : {"Abc", "Bcd", "Cde", "Def", "Efg"}) {
      offsets_.push_back(AddCard(company, ""));
    }
    for (uint32_t row = 0; row < 5; ++row) {
      SetBits(row, row < 4, row < 4 && row != 2);
    }
    directory_->set_group_bit(kGroup);
    directory_->set_marked_count(3);
    directory_->CloseListView();
  }
  void OpenWith(ProgressBox& progress) {
    DirectoryOptions options;
    options.path = "/d/X";
    directory_ = std::make_unique<Directory>(DirectoryServices{files_, clock_, progress}, options);
    ASSERT_TRUE(IsOpen(directory_->OpenDirectory()));
  }
  // Closes the directory and opens it with a display of its own, the group displayed.
  void Reopen(RecordingProgress& shown) {
    directory_->CloseDirectory();
    OpenWith(shown);
    directory_->set_group_bit(kGroup);
  }
  void SetBits(uint32_t row, bool member, bool marked) {
    std::vector<std::byte> bytes(16);
    StoreLe32(bytes, 0, directory_->address().CardOffsetAt(row));
    StorePadded(bytes, 4, 12, kOtherBits);
    EntrySlot entry(bytes);
    entry.set_bit(kGroup, member);
    entry.set_bit(kGroupMark, marked);
    directory_->address().SetEntry(row, entry);
  }
  // The 12 bytes of an entry behind its card offset, on the disk.
  [[nodiscard]] std::string Bits(uint32_t row) const {
    const std::vector<std::byte> file = files_.Contents("/d/X.ADR");
    return std::string(AsChars(ByteView(file).subspan(320 + 16 * row + 4, 12)));
  }
  static std::string BitsWith(bool member, bool marked) {
    std::string bits(kOtherBits);
    if (member) bits[0] = static_cast<char>(bits[0] | 0x10);
    if (marked) bits[0] = static_cast<char>(bits[0] | 0x20);
    return bits;
  }
  [[nodiscard]] uint16_t Counter() const {
    return LoadLe16(files_.Contents("/d/X.ADR"), kCounterAt);
  }

  std::vector<uint32_t> offsets_;
};

TEST_F(GroupRemovalTest, ACardLosesTheBitPairOfTheGroupAndNothingElse) {
  const std::vector<std::byte> before = files_.Contents("/d/X.ADR");
  EXPECT_TRUE(ClearEntryBits(*directory_, offsets_[1]));
  EXPECT_EQ(directory_->marked_count(), 2);
  std::vector<std::byte> expected = before;
  expected[320 + 16 + 4] = std::byte{0xCF};
  StoreLe16(expected, kCounterAt, 2);
  EXPECT_EQ(files_.Contents("/d/X.ADR"), expected);
}

TEST_F(GroupRemovalTest, ACardWithoutAMarkIsNotCounted) {
  EXPECT_TRUE(ClearEntryBits(*directory_, offsets_[2]));
  EXPECT_EQ(directory_->marked_count(), 3);
  EXPECT_EQ(Bits(2), BitsWith(false, false));
  EXPECT_EQ(Counter(), 3);
}

TEST_F(GroupRemovalTest, TheCountNeverGoesBelowZero) {
  directory_->set_marked_count(0);
  EXPECT_TRUE(ClearEntryBits(*directory_, offsets_[0]));
  EXPECT_EQ(directory_->marked_count(), 0);
  EXPECT_EQ(Bits(0), BitsWith(false, false));
  EXPECT_EQ(Counter(), 0);
}

TEST_F(GroupRemovalTest, ACardWithoutAnEntryIsTold) {
  const std::vector<std::byte> before = files_.Contents("/d/X.ADR");
  EXPECT_FALSE(ClearEntryBits(*directory_, 768 * 9));
  EXPECT_EQ(files_.Contents("/d/X.ADR"), before);
  EXPECT_EQ(directory_->marked_count(), 3);
}

TEST_F(GroupRemovalTest, TheMarkedCardsLeaveTheGroup) {
  const std::vector<std::byte> main_file = files_.Contents("/d/X.DAN");
  const std::vector<uint32_t> marked = {offsets_[0], offsets_[1], offsets_[3]};
  EXPECT_EQ(RemoveMarkedFromGroup(*directory_, marked), 3U);
  EXPECT_EQ(directory_->marked_count(), 0);
  EXPECT_EQ(Counter(), 0);
  for (const uint32_t row : {0U, 1U, 3U, 4U}) EXPECT_EQ(Bits(row), BitsWith(false, false)) << row;
  EXPECT_EQ(Bits(2), BitsWith(true, false));
  EXPECT_EQ(files_.Contents("/d/X.DAN"), main_file) << "the cards stay";
  EXPECT_EQ(files_.Contents("/d/X.ADR").size(), 320U + 16 * 5);
}

TEST_F(GroupRemovalTest, TheWalkEndsWithTheLastMark) {
  directory_->set_marked_count(2);
  const std::vector<uint32_t> marked = {offsets_[0], offsets_[1], offsets_[3]};
  EXPECT_EQ(RemoveMarkedFromGroup(*directory_, marked), 2U);
  EXPECT_EQ(Bits(3), BitsWith(true, true));
}

TEST_F(GroupRemovalTest, WithoutMarksNothingLeaves) {
  directory_->set_marked_count(0);
  EXPECT_EQ(RemoveMarkedFromGroup(*directory_, {offsets_}), 0U);
  EXPECT_EQ(Bits(0), BitsWith(true, true));
}

TEST_F(GroupRemovalTest, OffsetsWithoutACardAreLeftOut) {
  const std::vector<uint32_t> marked = {768 * 9, 0, 769, offsets_[3]};
  EXPECT_EQ(RemoveMarkedFromGroup(*directory_, marked), 1U);
  EXPECT_EQ(directory_->marked_count(), 2);
}

TEST_F(GroupRemovalTest, ProgressTellsTheNames) {
  RecordingProgress shown;
  Reopen(shown);
  CardRecord& card = directory_->context().current;
  card.Clear();
  card.SetField(kNom, OemText("\x90lu"));
  uint32_t position = 0;
  ASSERT_EQ(CardDispatch(*directory_).Add(true, &position), 0);
  const std::vector<uint32_t> marked = {offsets_[3], offsets_[0], 768 * 6};
  EXPECT_EQ(RemoveMarkedFromGroup(*directory_, marked), 3U);
  EXPECT_THAT(shown.opened, ElementsAre(Pair(ProgressForm::kDelete, 4U)));
  EXPECT_THAT(shown.texts, ElementsAre("Def", "Abc", "Élu"));
  EXPECT_EQ(shown.closed, 1);
  EXPECT_EQ(directory_->marked_count(), 1);
  directory_.reset();
}

// The card that was announced still leaves when the user stops at it.
TEST_F(GroupRemovalTest, AnAbortKeepsTheRestInTheGroup) {
  RecordingProgress shown;
  Reopen(shown);
  ASSERT_EQ(directory_->marked_count(), 3);
  shown.abort_after = 2;
  const std::vector<uint32_t> marked = {offsets_[0], offsets_[1], offsets_[3]};
  EXPECT_EQ(RemoveMarkedFromGroup(*directory_, marked), 2U);
  EXPECT_EQ(directory_->marked_count(), 1);
  EXPECT_EQ(Counter(), 1);
  EXPECT_EQ(Bits(1), BitsWith(false, false));
  EXPECT_EQ(Bits(3), BitsWith(true, true));
  EXPECT_EQ(shown.closed, 1);
  directory_.reset();
}

// Other seats see by the file's time that marks have changed.
TEST_F(GroupRemovalTest, TheMainFileGetsANewTimeWhenMarksWent) {
  const auto time = [this] { return files_.Open("/d/X.DAN", OpenMode::kRead)->ModificationTime(); };
  clock_.Advance(60);
  ClearEntryBits(*directory_, offsets_[2]);
  directory_->CloseDirectory();
  EXPECT_EQ(time(), 1'000'000'000) << "no mark went";
  OpenWith(progress_);
  directory_->set_group_bit(kGroup);
  ClearEntryBits(*directory_, offsets_[0]);
  directory_->CloseDirectory();
  EXPECT_EQ(time(), 1'000'000'060);
}

TEST_F(GroupRemovalTest, WhatLeftStaysOutAtTheNextOpening) {
  RemoveMarkedFromGroup(*directory_, std::vector<uint32_t>{offsets_[0]});
  directory_->CloseDirectory();
  OpenWith(progress_);
  directory_->set_group_bit(kGroup);
  EXPECT_EQ(directory_->marked_count(), 2);
  EXPECT_EQ(CountMarks(*directory_), 2);
  EXPECT_FALSE(directory_->address().Entry(0).bit(kGroup));
}

}  // namespace
}  // namespace carnetel
