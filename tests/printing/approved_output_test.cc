// Whole printouts, byte for byte: lists of 1, 4 and 12 columns and wider than a line, cards, each
// scope, a group, margins and lines at their limits, and both character sets.
#include "tests/printing/printing_testing.h"

namespace carnetel {
namespace {

constexpr uint32_t kChoicePrenom = 1, kChoiceNom = 2, kChoiceSte1 = 3, kChoiceSte2 = 4;
constexpr uint32_t kChoiceAdr1 = 5, kChoiceCp = 7, kChoiceVille = 8, kChoicePays = 9;
constexpr uint32_t kChoiceTel1 = 10, kChoiceFax = 12, kChoiceRef1 = 14, kChoiceRef6 = 19;
constexpr uint32_t kChoiceNotes = 20;

constexpr uint8_t kGroupBit = 4;
constexpr uint8_t kGroupMark = 5;

class ApprovedOutput : public PrintingTest {
 protected:
  void SetUp() override {
    AddSampleCards();
    run.composition =
        CompositionOf({{kChoiceSte1, 30}, {kChoiceAdr1, 30}, {kChoiceCp, 5}, {kChoiceFax, 12}});
    run.setup.scope = PrintScope::kFile;
  }
  // 64 lines, margins 200.
  PrintRun run;
};

TEST_F(ApprovedOutput, OneColumn) {
  run.composition = CompositionOf({{kChoiceNom, 10}});
  EXPECT_TRUE(IsApproved("list_1_column.txt", PrintToText(run)));
}

TEST_F(ApprovedOutput, FourColumnsOnTwoPages) {
  run.setup.lines = 8;
  EXPECT_TRUE(IsApproved("list_4_columns.txt", PrintToText(run)));
}

TEST_F(ApprovedOutput, TwelveColumns) {
  run.composition = CompositionOf({{kChoicePrenom, 8},
                                   {kChoiceNom, 8},
                                   {kChoiceSte1, 12},
                                   {kChoiceSte2, 8},
                                   {kChoiceAdr1, 12},
                                   {kChoiceCp, 5},
                                   {kChoiceVille, 8},
                                   {kChoicePays, 6},
                                   {kChoiceTel1, 14},
                                   {kChoiceRef1, 7},
                                   {kChoiceRef6, 3},
                                   {kChoiceNotes, 16}});
  EXPECT_TRUE(IsApproved("list_12_columns.txt", PrintToText(run)));
}

TEST_F(ApprovedOutput, ColumnsBeyondTheLine) {
  run.composition =
      CompositionOf({{kChoiceSte1, 60}, {kChoiceAdr1, 60}, {kChoiceNotes, 30}, {kChoiceNom, 10}});
  EXPECT_TRUE(IsApproved("list_wider_than_128.txt", PrintToText(run)));
}

TEST_F(ApprovedOutput, AColumnBehindANameThatWasCut) {
  run.composition = CompositionOf({{kChoiceSte1, 100}, {kChoiceNotes, 5}, {kChoiceCp, 8}});
  EXPECT_TRUE(IsApproved("list_heading_cut.txt", PrintToText(run)));
}

TEST_F(ApprovedOutput, TheSelection) {
  run.setup.scope = PrintScope::kSelection;
  SetBit(1, kWholeFileBit + 1);
  SetBit(4, kWholeFileBit + 1);
  EXPECT_TRUE(IsApproved("list_selection.txt", PrintToText(run)));
}

TEST_F(ApprovedOutput, TheCurrentCard) {
  run.setup.scope = PrintScope::kCurrent;
  run.current_entry = 3;
  EXPECT_TRUE(IsApproved("list_current.txt", PrintToText(run)));
}

TEST_F(ApprovedOutput, AGroupAndItsSelection) {
  for (const uint32_t row : {0, 2, 5}) SetBit(row, kGroupBit);
  // A mark outside the group, and one of the whole file, are not the group's.
  SetBit(1, kGroupMark);
  SetBit(2, kGroupMark);
  SetBit(5, kWholeFileBit + 1);
  directory->set_group_bit(kGroupBit);
  EXPECT_TRUE(IsApproved("list_group.txt", PrintToText(run)));
  run.setup.scope = PrintScope::kSelection;
  EXPECT_TRUE(IsApproved("list_group_selection.txt", PrintToText(run)));
}

TEST_F(ApprovedOutput, WithoutMargins) {
  run.setup.top_margin = 0;
  run.setup.left_margin = 0;
  EXPECT_TRUE(IsApproved("list_no_margins.txt", PrintToText(run)));
}

TEST_F(ApprovedOutput, TheLargestMarginsOnTheLongestPage) {
  run.setup.lines = 127;
  run.setup.top_margin = 999;
  run.setup.left_margin = 999;
  EXPECT_TRUE(IsApproved("list_largest_margins.txt", PrintToText(run)));
  run.setup.top_margin = 396;
  run.setup.left_margin = 396;
  EXPECT_TRUE(IsApproved("list_largest_margins_inches.txt", PrintToText(run)));
}

TEST_F(ApprovedOutput, OneLineAPage) {
  run.setup.lines = 1;
  EXPECT_TRUE(IsApproved("list_1_line.txt", PrintToText(run)));
}

TEST_F(ApprovedOutput, CardPresentation) {
  run.setup.presentation = Presentation::kCards;
  EXPECT_TRUE(IsApproved("cards.txt", PrintToText(run)));
}

TEST_F(ApprovedOutput, CardsWithTheLargestMargins) {
  run.setup.presentation = Presentation::kCards;
  run.setup.lines = 127;
  run.setup.top_margin = 999;
  run.setup.left_margin = 999;
  EXPECT_TRUE(IsApproved("cards_largest_margins.txt", PrintToText(run)));
}

TEST_F(ApprovedOutput, CardsLongerThanThePage) {
  run.setup = Cards().setup;
  run.setup.lines = 10;
  EXPECT_TRUE(IsApproved("cards_10_lines.txt", PrintToText(run)));
  EXPECT_TRUE(IsApproved("cards_10_lines_ansi.txt", PagesText(PrintOnPages(run, 10))));
}

TEST_F(ApprovedOutput, OnPaper) {
  run.setup.lines = 8;
  EXPECT_TRUE(IsApproved("list_4_columns_ansi.txt", PagesText(PrintOnPages(run, 20))));
  run.setup.lines = 64;
  run.setup.presentation = Presentation::kCards;
  EXPECT_TRUE(IsApproved("cards_ansi.txt", PagesText(PrintOnPages(run, 200))));
}

}  // namespace
}  // namespace carnetel
