// The print run: which cards it takes and where its pages break, line by line.
#include "printing/page_loop.h"

#include "tests/printing/printing_testing.h"

namespace carnetel {
namespace {

constexpr uint8_t kGroupBit = 6;
constexpr uint8_t kGroupMark = 7;

class PageLoop : public PrintingTest {
 protected:
  // The run's lines, "|" for a new page; those of a list without its heading and trailing blanks.
  std::string Printed(const PrintRun& run) {
    std::string shown;
    std::string line;
    for (const char c : PrintToText(run)) {
      if (c == '\f') shown += "| ";
      if (c == '\n' && !line.starts_with("STE1")) {
        CutTrailingBlanks(line);
        shown += line + ' ';
      }
      if (c == '\n') line.clear();
      if (c != '\f' && c != '\r' && c != '\n') line += c;
    }
    CutTrailingBlanks(shown);
    return shown;
  }
  // How many lines stand on each page of a text file.
  std::vector<int> LinesOfPages(const PrintRun& run) {
    std::vector<int> lines = {0};
    for (const char c : PrintToText(run)) {
      if (c == '\n') ++lines.back();
      if (c == '\f') lines.push_back(0);
    }
    return lines;
  }
};

TEST_F(PageLoop, TheWholeFileStandsInTheOrderOfItsIndex) {
  AddCompanies({"CHARLIE", "ALPHA", "BETA"});
  EXPECT_EQ(Printed(CompanyList()), "ALPHA BETA CHARLIE");
}

TEST_F(PageLoop, WithoutCardsNothingIsPrinted) {
  EXPECT_EQ(PrintToText(CompanyList()), "");
  const PrintOutcome outcome = [&] {
    RecordedPages pages(10);
    return PrintCards(*directory, CompanyList(), pages);
  }();
  EXPECT_EQ(outcome.cards, 0U);
  EXPECT_EQ(outcome.pages, 1U);
}

TEST_F(PageLoop, EveryCardBelongsToTheWholeFile) {
  AddCompanies({"ALPHA", "BETA"});
  SetBit(0, kWholeFileBit, false);
  EXPECT_EQ(Printed(CompanyList()), "ALPHA BETA");
}

TEST_F(PageLoop, TheSelectionIsTheMarkedCards) {
  AddCompanies({"ALPHA", "BETA", "CHARLIE"});
  SetBit(0, kWholeFileBit + 1);
  SetBit(2, kWholeFileBit + 1);
  SetBit(1, kGroupMark);
  PrintRun run = CompanyList();
  run.setup.scope = PrintScope::kSelection;
  EXPECT_EQ(Printed(run), "ALPHA CHARLIE");
}

TEST_F(PageLoop, TheCurrentCardIsOneCard) {
  AddCompanies({"ALPHA", "BETA", "CHARLIE"});
  PrintRun run = CompanyList();
  run.setup.scope = PrintScope::kCurrent;
  run.current_entry = 1;
  EXPECT_EQ(Printed(run), "BETA");
  run.current_entry = 3;
  EXPECT_EQ(Printed(run), "");
  run.current_entry = 0xFFFFFFFF;
  EXPECT_EQ(Printed(run), "");
}

TEST_F(PageLoop, OtherScopesBeginAtTheFirstCard) {
  AddCompanies({"ALPHA", "BETA"});
  SetBit(0, kWholeFileBit + 1);
  PrintRun run = CompanyList();
  run.current_entry = 1;
  EXPECT_EQ(Printed(run), "ALPHA BETA");
  run.setup.scope = PrintScope::kSelection;
  EXPECT_EQ(Printed(run), "ALPHA");
}

TEST_F(PageLoop, AGroupIsItsMembers) {
  AddCompanies({"ALPHA", "BETA", "CHARLIE"});
  SetBit(0, kGroupBit);
  SetBit(2, kGroupBit);
  SetBit(1, kGroupMark);
  SetBit(2, kGroupMark);
  directory->set_group_bit(kGroupBit);
  PrintRun run = CompanyList();
  EXPECT_EQ(Printed(run), "ALPHA CHARLIE");
  run.setup.scope = PrintScope::kSelection;
  EXPECT_EQ(Printed(run), "CHARLIE");
}

// From a card that only the whole file holds, the next member is printed.
TEST_F(PageLoop, TheCurrentCardOfAGroupIsAMember) {
  AddCompanies({"ALPHA", "BETA", "CHARLIE"});
  SetBit(2, kGroupBit);
  directory->set_group_bit(kGroupBit);
  PrintRun run = CompanyList();
  run.setup.scope = PrintScope::kCurrent;
  run.current_entry = 1;
  EXPECT_EQ(Printed(run), "CHARLIE");
}

TEST_F(PageLoop, ACardThatCannotBeReadEndsTheRun) {
  AddCompanies({"ALPHA", "BETA", "CHARLIE"});
  EntrySlot entry = directory->address().Entry(1);
  entry.set_card_offset(kCardSize * 1000);
  directory->address().SetEntry(1, entry);
  EXPECT_EQ(Printed(CompanyList()), "ALPHA");
  RecordedPages pages(10);
  const PrintOutcome outcome = PrintCards(*directory, CompanyList(), pages);
  EXPECT_TRUE(outcome.read_failed);
  EXPECT_EQ(outcome.cards, 1U);
}

TEST_F(PageLoop, CountsCardsAndPages) {
  AddCompanies({"ALPHA", "BETA", "CHARLIE"});
  PrintRun run = CompanyList();
  run.setup.lines = 2;
  RecordedPages pages(10);
  const PrintOutcome outcome = PrintCards(*directory, run, pages);
  EXPECT_FALSE(outcome.read_failed);
  EXPECT_EQ(outcome.cards, 3U);
  EXPECT_EQ(outcome.pages, 3U);
  EXPECT_EQ(pages.pages.size(), 3U);
}

TEST_F(PageLoop, ATargetThatHasEndedIsSparedTheRest) {
  class OneLine : public PrintTarget {
   public:
    [[nodiscard]] PrintText text() const override { return PrintText::kOem; }
    void PrintLine(std::string_view) override { ++lines; }
    void NewPage() override {}
    [[nodiscard]] bool Ended() const override { return lines > 0; }
    int lines = 0;
  };
  AddCompanies({"ALPHA", "BETA", "CHARLIE"});
  OneLine target;
  const PrintOutcome outcome = PrintCards(*directory, CompanyList(), target);
  EXPECT_EQ(outcome.cards, 1U);
  EXPECT_EQ(target.lines, 2);  // the heading and the first card
}

TEST_F(PageLoop, ListPagesHoldHeadingAndLines) {
  AddCompanies({"A1", "B2", "C3", "D4", "E5"});
  PrintRun run = CompanyList();
  run.setup.lines = 3;
  EXPECT_EQ(Printed(run), "A1 B2 | C3 D4 | E5");
  EXPECT_EQ(LinesOfPages(run), (std::vector<int>{3, 3, 2}));
}

TEST_F(PageLoop, AFullPageIsNotTurnedBehindTheLastCard) {
  AddCompanies({"A1", "B2"});
  PrintRun run = CompanyList();
  run.setup.lines = 3;
  EXPECT_EQ(Printed(run), "A1 B2");
}

// The test for a full page runs before margin and heading, which are not part of it.
TEST_F(PageLoop, ATopMarginMayFillThePageAlone) {
  AddCompanies({"A1", "B2"});
  PrintRun run = CompanyList();
  run.setup.lines = 2;
  run.setup.top_margin = 300;
  EXPECT_EQ(LinesOfPages(run), (std::vector<int>{5 + 1 + 1, 5 + 1 + 1}));
}

TEST_F(PageLoop, NoLinesAPageGiveABlankFirstPage) {
  AddCompanies({"A1", "B2"});
  PrintRun run = CompanyList();
  run.setup.lines = 0;
  EXPECT_EQ(LinesOfPages(run), (std::vector<int>{0, 2, 2}));
}

TEST_F(PageLoop, ATopMarginOf100IsOneEmptyLine) {
  AddCompanies({"A1"});
  PrintRun run = CompanyList();
  run.setup.top_margin = 100;
  EXPECT_EQ(LinesOfPages(run), std::vector<int>{1 + 2});
  EXPECT_TRUE(PrintToText(run).starts_with("\r\nSTE1"));
}

TEST_F(PageLoop, ATopMarginOf59IsNone) {
  AddCompanies({"A1"});
  PrintRun run = CompanyList();
  run.setup.top_margin = 59;
  EXPECT_TRUE(PrintToText(run).starts_with("STE1"));
  run.setup.top_margin = 60;
  EXPECT_TRUE(PrintToText(run).starts_with("\r\nSTE1"));
}

TEST_F(PageLoop, ALeftMarginOf40IsOneBlank) {
  AddCompanies({"A1"});
  PrintRun run = CompanyList();
  run.setup.left_margin = 39;
  EXPECT_TRUE(PrintToText(run).ends_with("\nA1         \r\n"));
  run.setup.left_margin = 40;
  EXPECT_TRUE(PrintToText(run).ends_with("\n A1         \r\n"));
  run.setup.left_margin = 80;
  EXPECT_TRUE(PrintToText(run).ends_with("\n  A1         \r\n"));
}

TEST_F(PageLoop, TheLeftMarginIsNotPartOfALinesLength) {
  AddCompanies({"A1"});
  PrintRun run = CompanyList();
  run.composition = CompositionOf({{3, 127}});
  run.setup.left_margin = 999;
  const std::string line = std::string(24, ' ') + "A1" + std::string(126, ' ') + "\r\n";
  EXPECT_TRUE(PrintToText(run).ends_with('\n' + line));
  EXPECT_EQ(PrintColumns(run), 24U + 128U);
}

TEST_F(PageLoop, TheLastColumnOfAListIsFollowedByABlank) {
  AddCompanies({"0123456789"});
  EXPECT_TRUE(PrintToText(CompanyList()).ends_with("\n0123456789 \r\n"));
}

class CardPages : public PageLoop {
 protected:
  void SetUp() override { AddCompanies({"ALPHA", "BETA", "CHARLIE"}); }
};

TEST_F(CardPages, ACardIs22RowsAndTwoEmptyLines) {
  EXPECT_EQ(LinesOfPages(Cards()), (std::vector<int>{48, 24}));
}

TEST_F(CardPages, APageHoldsWholeCardsOnly) {
  PrintRun run = Cards();
  run.setup.lines = 47;
  EXPECT_EQ(LinesOfPages(run), (std::vector<int>{24, 24, 24}));
  run.setup.lines = 24;
  EXPECT_EQ(LinesOfPages(run), (std::vector<int>{24, 24, 24}));
}

TEST_F(CardPages, EmptyLinesFollowAsLongAsThePageHasRoom) {
  PrintRun run = Cards();
  run.setup.top_margin = 60;
  run.setup.lines = 24;
  EXPECT_EQ(LinesOfPages(run), (std::vector<int>{24, 24, 24}));
  run.setup.top_margin = 120;
  EXPECT_EQ(LinesOfPages(run), (std::vector<int>{24, 24, 24}));
  run.setup.top_margin = 180;
  EXPECT_EQ(LinesOfPages(run), (std::vector<int>{25, 25, 25}));
}

TEST_F(CardPages, OnAPageOf23LinesTheFirstStaysBlank) {
  PrintRun run = Cards();
  run.setup.lines = 23;
  EXPECT_EQ(LinesOfPages(run), (std::vector<int>{0, 23, 23, 23}));
}

TEST_F(CardPages, OnAPageOfTenLinesAllRowsAreSentAllTheSame) {
  PrintRun run = Cards();
  run.setup.lines = 10;
  EXPECT_EQ(LinesOfPages(run), (std::vector<int>{0, 22, 22, 22}));
  // A device of ten lines turns its pages besides.
  const RecordedPages pages = PrintOnPages(run, 10);
  std::vector<size_t> lines;
  for (const auto& page : pages.pages) lines.push_back(page.size());
  EXPECT_EQ(lines, (std::vector<size_t>{0, 10, 10, 2, 10, 10, 2, 10, 10, 2}));
}

TEST_F(CardPages, RowsHaveTheirLabelsInTheirOrder) {
  PrintRun run = Cards();
  run.setup.scope = PrintScope::kCurrent;
  const RecordedPages pages = PrintOnPages(run, 100);
  std::string labels;
  for (const std::string& line : pages.pages.front()) labels += line.substr(0, 6);
  EXPECT_EQ(labels,
            "Quali Preno Nom   Ste1  Ste2  Adr1  Adr2  CP    Ville Pays  Tel1  Tel2  Fax   Modem "
            "Mtel  Ref1  Ref2  Ref3  Ref4  Ref5  Ref6  Notes ");
}

TEST_F(PageLoop, ARowIsPaddedToItsFieldAndCutAt70) {
  AddCard({{kSte1, "ALPHA"}, {kNotes, std::string(64, 'n')}});
  PrintRun run = Cards();
  const auto rows = PrintOnPages(run, 100).pages.front();
  EXPECT_EQ(rows[3], "Ste1  ALPHA" + std::string(27, ' '));
  EXPECT_EQ(rows[7], "CP    " + std::string(14, ' '));
  EXPECT_EQ(rows[21], "Notes " + std::string(64, 'n'));
  EXPECT_EQ(PrintColumns(run), 70U);
  run.setup.left_margin = 400;
  EXPECT_EQ(PrintOnPages(run, 100).pages.front()[21],
            std::string(10, ' ') + "Notes " + std::string(54, 'n'));
  EXPECT_EQ(PrintColumns(run), 70U);
}

TEST_F(PageLoop, TheLongPostalCodeIsPrinted) {
  AddCard({{kSte1, "ALPHA"}, {kShortPostalCode, "75001"}, {kPostalCode, "75002-CEDEX-08"}});
  EXPECT_EQ(PrintOnPages(Cards(), 100).pages.front()[7], "CP    75002-CEDEX-08");
}

TEST_F(PageLoop, ACardIsOemInAFileAndAnsiOnPaper) {
  // é, è, ç, É.
  AddCard({{kSte1, "A\x82\x8A\x87\x90"}});
  EXPECT_TRUE(PrintToText(CompanyList()).ends_with("\nA\x82\x8A\x87\x90      \r\n"));
  EXPECT_EQ(PrintOnPages(CompanyList(), 10).pages.front()[1], "A\xE9\xE8\xE7\xC9      ");
}

TEST_F(PageLoop, LineEndsOfNotesStayInAFile) {
  AddCard({{kSte1, "ALPHA"}, {kNotes, "a\r\nb"}});
  PrintRun run = CompanyList();
  run.composition = CompositionOf({{20, 5}});
  EXPECT_TRUE(PrintToText(run).ends_with("\na\r\nb  \r\n"));
  EXPECT_EQ(PrintOnPages(run, 10).pages.front()[1], "a  b  ");
}

}  // namespace
}  // namespace carnetel
