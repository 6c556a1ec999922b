// Where lines stand on a page, when a page turns by itself, and the font with which the pages of a
// device break where those of a text file do.
#include "printing/paged_target.h"

#include <array>

#include "base/code_page.h"
#include "printing/list_layout.h"
#include "tests/printing/printing_testing.h"

namespace carnetel {
namespace {

using Pages = std::vector<std::vector<std::string>>;

// A target that has all it wants after so many lines.
class EndingPages : public RecordedPages {
 public:
  explicit EndingPages(int lines) : RecordedPages(100), lines_left_(lines) {}
  [[nodiscard]] bool Ended() const override { return lines_left_ == 0; }

 protected:
  void DrawLine(int number, std::string_view ansi) override {
    RecordedPages::DrawLine(number, ansi);
    --lines_left_;
  }

 private:
  int lines_left_;
};

TEST(PagedTargetTest, TakesAnsi) {
  EXPECT_EQ(RecordedPages(10).text(), PrintText::kAnsi);
}

TEST(PagedTargetTest, LinesAreCountedFromOne) {
  class Numbers : public PagedTarget {
   public:
    Numbers() : PagedTarget(2) {}
    std::string seen;

   protected:
    void DrawLine(int number, std::string_view) override { seen += std::to_string(number); }
    void TurnPage() override { seen += '|'; }
  };
  Numbers target;
  for (int line = 0; line < 5; ++line) target.PrintLine("");
  EXPECT_EQ(target.seen, "12|12|1");
}

TEST(PagedTargetTest, AFullPageTurnsByItself) {
  RecordedPages target(2);
  target.PrintLine("a");
  target.PrintLine("b");
  EXPECT_EQ(target.pages, (Pages{{"a", "b"}, {}}));
  target.PrintLine("c");
  EXPECT_EQ(target.pages, (Pages{{"a", "b"}, {"c"}}));
}

TEST(PagedTargetTest, ANewPageBeginsAtItsFirstLine) {
  RecordedPages target(3);
  target.PrintLine("a");
  target.NewPage();
  target.PrintLine("b");
  target.PrintLine("c");
  EXPECT_EQ(target.pages, (Pages{{"a"}, {"b", "c"}}));
}

TEST(PagedTargetTest, AFullPageThatTheRunEndsTooLeavesABlankOne) {
  RecordedPages target(1);
  target.PrintLine("a");
  target.NewPage();
  target.PrintLine("b");
  EXPECT_EQ(target.pages, (Pages{{"a"}, {}, {"b"}, {}}));
}

TEST(PagedTargetTest, LineEndsWithinALineAreBlanks) {
  RecordedPages target(3);
  target.PrintLine("a\r\nb\tc\xE9");
  EXPECT_EQ(target.pages, (Pages{{"a  b c\xE9"}}));
}

TEST(PagedTargetTest, WhatComesAfterTheEndGoesNowhere) {
  EndingPages target(1);
  target.PrintLine("a");
  target.PrintLine("b");
  target.NewPage();
  EXPECT_EQ(target.pages, (Pages{{"a"}}));
}

constexpr FontShape kFont = {0.6, 1.2};

TEST(FitPageTest, TenPointsWhenAllFits) {
  const PageFit fit = FitPage({600, 840}, kFont, 80, 64);
  EXPECT_DOUBLE_EQ(fit.font_size, 10);
  EXPECT_DOUBLE_EQ(fit.line_height, 12);
  EXPECT_EQ(fit.lines_per_page, 69);  // 840 / 12, less one
}

TEST(FitPageTest, LongLinesMakeItSmaller) {
  // 125 columns of 0.6 points of a font of 8 are 600 points.
  const PageFit fit = FitPage({600, 840}, kFont, 125, 64);
  EXPECT_DOUBLE_EQ(fit.font_size, 8);
  EXPECT_EQ(fit.lines_per_page, 86);  // 840 / 9.6 = 87.5
}

TEST(FitPageTest, ManyLinesMakeItSmaller) {
  // 98 lines and two spare ones, 8.4 points each.
  const PageFit fit = FitPage({600, 840}, kFont, 80, 98);
  EXPECT_DOUBLE_EQ(fit.font_size, 7);
  EXPECT_EQ(fit.lines_per_page, 99);
}

TEST(FitPageTest, FivePointsAtTheLeast) {
  const PageFit wide = FitPage({600, 840}, kFont, 500, 64);
  EXPECT_DOUBLE_EQ(wide.font_size, 5);
  EXPECT_EQ(wide.lines_per_page, 139);
  const PageFit low = FitPage({600, 300}, kFont, 80, 127);
  EXPECT_DOUBLE_EQ(low.font_size, 5);
  EXPECT_EQ(low.lines_per_page, 49);
}

TEST(FitPageTest, APageHasALineInAnyCase) {
  EXPECT_EQ(FitPage({600, 1}, kFont, 80, 64).lines_per_page, 1);
  EXPECT_EQ(FitPage({600, 840}, kFont, 0, 0).lines_per_page, 69);
}

constexpr std::array<int8_t, 12> kLineCounts = {1, 10, 23, 24, 25, 48, 63, 64, 65, 96, 126, 127};

class PageBreaks : public PrintingTest {
 protected:
  // The pages of the text file, each line in ANSI and without the line ends of notes.
  Pages TextPages(const PrintRun& run) {
    Pages pages(1);
    std::string line;
    for (const char c : PrintToText(run)) {
      if (c == '\f') {
        pages.emplace_back();
      } else if (c == '\n') {
        pages.back().push_back(OemToAnsi(OemText(line)).bytes());
        line.clear();
      } else if (c != '\r') {
        line += c;
      }
    }
    return pages;
  }
  void ExpectSameBreaks(const PrintRun& run) {
    const PageFit fit = FitPage({523, 785}, kFont, PrintColumns(run), run.setup.lines);
    EXPECT_EQ(PrintOnPages(run, fit.lines_per_page).pages, TextPages(run))
        << "lines " << int{run.setup.lines} << ", top " << run.setup.top_margin;
  }
};

TEST_F(PageBreaks, OfADeviceAreThoseOfTheTextFile) {
  // Enough for a second page of the longest list; of cards, which are long, the marked ones do.
  for (char letter = 'A'; letter <= 'Z'; ++letter) {
    for (int number = 10; number < 15; ++number) {
      const std::string company = letter + std::to_string(number);
      AddCard({{kSte1, company}, {kNom, "GAR\x80ON"}}, number == 10 && letter < 'I');
    }
  }
  for (PrintRun run : {CompanyList(), Cards()}) {
    const bool is_list = run.setup.presentation == Presentation::kList;
    run.setup.scope = is_list ? PrintScope::kFile : PrintScope::kSelection;
    for (const int16_t margin : std::array<int16_t, 3>{0, 200, 999}) {
      run.setup.top_margin = margin;
      run.setup.left_margin = margin;
      for (const int8_t lines : kLineCounts) {
        run.setup.lines = lines;
        ExpectSameBreaks(run);
      }
    }
  }
}

}  // namespace
}  // namespace carnetel
