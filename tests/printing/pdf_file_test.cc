#include "printing/pdf_file.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <iostream>
#include <regex>

#include "platform/posix_file_system.h"
#include "platform/program_start.h"
#include "tests/support/fresh_folder.h"

namespace carnetel {
namespace {

const PdfSetup kSetup = {MeasureUnit::kCentimetres, 80, 64, "CARNETEL - /d/\xC3\x89t\xC3\xA9.DAN"};

// What another program makes of a document; nothing when poppler-utils is not installed.
std::optional<std::string> Read(const std::vector<std::byte>& document,
                                std::vector<std::string> tool) {
  const FreshFolder folder;
  PosixFileSystem files;
  const std::string pdf = folder.path() + "document.pdf";
  const std::string text = folder.path() + "text";
  files.Open(pdf, OpenMode::kCreateOrEmpty)->Write(0, document);
  tool.insert(tool.end(), {pdf, text});
  const int status = RunProgram(tool);
  if (status == -1) std::cout << "without pdftotext the text of the pages is not looked at\n";
  EXPECT_LE(status, 0);
  return status == 0 ? ReadText(files, text) : std::nullopt;
}

std::vector<std::byte> Finished(PdfTarget& target) {
  const std::optional<std::vector<std::byte>> document = target.Finish();
  EXPECT_TRUE(document.has_value());
  return document.value_or(std::vector<std::byte>());
}

int CountOf(std::string_view what, const std::vector<std::byte>& document) {
  const std::string_view text = AsChars(document);
  int count = 0;
  for (size_t at = text.find(what); at != text.npos; at = text.find(what, at + 1)) ++count;
  return count;
}
int PageCount(const std::vector<std::byte>& document) {
  return CountOf("/Type /Page\n", document);
}

void PrintLines(PdfTarget& target, int count) {
  for (int line = 0; line < count; ++line) target.PrintLine("x");
}

TEST(PdfTarget, TheTextComesWithItsAccentsAndColumns) {
  PdfTarget target(kSetup);
  EXPECT_EQ(target.text(), PrintText::kAnsi);
  target.PrintLine("");
  target.PrintLine("STE1                 VILLE ");
  target.PrintLine("Soci\xE9t\xE9 (\\A) 50 \x80    \xC9VRY  ");
  target.PrintLine("Notes\r\nsuite         B\xE2le  ");
  target.NewPage();
  target.PrintLine("Na\xEFve \x9Cuvre");
  // The margin of 18 points is three characters.
  const auto text = Read(Finished(target), {"pdftotext", "-layout", "-fixed", "6"});
  if (!text) return;
  EXPECT_EQ(*text,
            "   STE1                 VILLE\n"
            "   Société (\\A) 50 €    ÉVRY\n"
            "   Notes  suite         Bâle\n"
            "\f   Naïve œuvre\n\f");
}

struct Place {
  std::string word;
  double left;
  double top;
};

std::vector<Place> Places(const std::string& boxes) {
  static const std::regex kWord(R"re(xMin="([0-9.]+)" yMin="([0-9.]+)"[^>]*>([^<]*)<)re");
  std::vector<Place> places;
  for (std::sregex_iterator it(boxes.begin(), boxes.end(), kWord), end; it != end; ++it) {
    places.push_back({(*it)[3], std::stod((*it)[1]), std::stod((*it)[2])});
  }
  return places;
}

// 10 points: 6 wide, 11.3 from line to line, 18 points of white on each side.
TEST(PdfTarget, LinesStandWhereTheirNumberAndColumnSay) {
  PdfTarget target(kSetup);
  target.PrintLine("one");
  target.PrintLine("");
  target.PrintLine("     three" + std::string(68, ' ') + "80");
  target.NewPage();
  target.PrintLine("next");
  const auto boxes = Read(Finished(target), {"pdftotext", "-bbox"});
  if (!boxes) return;
  const std::vector<Place> places = Places(*boxes);
  ASSERT_EQ(places.size(), 4U) << *boxes;
  const auto expect = [&](size_t index, const std::string& word, double left, double top) {
    EXPECT_EQ(places[index].word, word);
    EXPECT_NEAR(places[index].left, left, 0.01);
    EXPECT_NEAR(places[index].top, top, 0.01);
  };
  // The space of one line stays free above the first.
  const double first = places[0].top;
  EXPECT_GT(first, 18 + 11.3);
  EXPECT_LT(first, 18 + 2 * 11.3);
  expect(0, "one", 18, first);
  expect(1, "three", 18 + 6 * 5, first + 2 * 11.3);
  expect(2, "80", 18 + 6 * 78, first + 2 * 11.3);
  expect(3, "next", 18, first);
}

TEST(PdfTarget, TheSizeGoesDownToWhatHasToFit) {
  PdfSetup setup = kSetup;
  setup.lines = 127;
  PdfTarget target(setup);
  for (int line = 0; line < 127; ++line) target.PrintLine("number" + std::to_string(line));
  const std::vector<std::byte> document = Finished(target);
  EXPECT_EQ(PageCount(document), 1);
  const auto boxes = Read(document, {"pdftotext", "-bbox"});
  if (!boxes) return;
  const std::vector<Place> places = Places(*boxes);
  ASSERT_EQ(places.size(), 127U);
  // 805.89 points of height for 129 lines.
  EXPECT_NEAR(places[126].top - places[0].top, 126 * 805.89 / 129, 0.1);
  EXPECT_LT(places[126].top + 805.89 / 129, 841.89 - 18);
}

TEST(PdfTarget, PagesAreThoseOfTheRunAndTurnWhenFull) {
  const auto pages = [](int lines) {
    PdfTarget target(kSetup);
    PrintLines(target, lines);
    return PageCount(Finished(target));
  };
  EXPECT_EQ(pages(0), 1);
  EXPECT_EQ(pages(64), 1);
  // There is room for 70 lines of 11.3 points below the free one; the last of them turns the page.
  EXPECT_EQ(pages(69), 1);
  EXPECT_EQ(pages(70), 2);
  EXPECT_EQ(pages(139), 2);
  EXPECT_EQ(pages(140), 3);
  PdfTarget target(kSetup);
  PrintLines(target, 3);
  target.NewPage();
  target.NewPage();
  EXPECT_EQ(PageCount(Finished(target)), 3);
}

TEST(PdfTarget, ThePaperGoesWithTheUnit) {
  PdfSetup setup = kSetup;
  PdfTarget metric(setup);
  EXPECT_EQ(CountOf("/MediaBox [ 0 0 595.276 841.89", Finished(metric)), 1);
  setup.unit = MeasureUnit::kInches;
  PdfTarget inches(setup);
  EXPECT_EQ(CountOf("/MediaBox [ 0 0 612 792 ]", Finished(inches)), 1);
}

TEST(PdfTarget, TheSameRunGivesTheSameBytes) {
  const auto run = [] {
    PdfTarget target(kSetup);
    PrintLines(target, 100);
    return Finished(target);
  };
  const std::vector<std::byte> document = run();
  EXPECT_EQ(document, run());
  EXPECT_TRUE(AsChars(document).starts_with("%PDF-1."));
  EXPECT_EQ(CountOf("Date", document), 0);
}

TEST(PdfTarget, TheTitleIsThatOfTheRunInAnyAlphabet) {
  PdfSetup setup = kSetup;
  setup.title = "\xC3\x89t\xC3\xA9 \xCE\xA9";
  PdfTarget target(setup);
  // UTF-16 behind its mark.
  EXPECT_EQ(CountOf("/Title <FEFF00C9007400E9002003A9>", Finished(target)), 1);
}

TEST(PdfTarget, AFinishedOneTakesNothingMore) {
  PdfTarget target(kSetup);
  (void)Finished(target);
  EXPECT_TRUE(target.Ended());
  target.PrintLine("late");
  target.NewPage();
  EXPECT_FALSE(target.Finish().has_value());
}

int blocks_left = 0;
int blocks_held = 0;

void* Allocate(unsigned size) {
  if (blocks_left == 0) return nullptr;
  --blocks_left;
  ++blocks_held;
  return std::malloc(size);
}

void Release(void* block) {
  if (block != nullptr) --blocks_held;
  std::free(block);
}

// Whether a run of three pages ends well when the memory gives out after so many blocks.
bool RunsOn(int blocks) {
  blocks_left = blocks;
  PdfTarget target(kSetup, {Allocate, Release});
  for (int page = 0; page < 3; ++page) {
    if (page != 0) target.NewPage();
    PrintLines(target, 64);
  }
  const bool ended = target.Ended();
  const bool finished = target.Finish().has_value();
  EXPECT_FALSE(ended && finished);
  return finished;
}

TEST(PdfTarget, WhereverTheMemoryGivesOutTheRunEndsAndAllIsGivenBack) {
  constexpr int kPlenty = 100'000;
  int enough = 0;
  while (enough < kPlenty && !RunsOn(enough)) {
    ASSERT_EQ(blocks_held, 0) << enough;
    ++enough;
  }
  EXPECT_GT(enough, 50);
  EXPECT_LT(enough, kPlenty);
  EXPECT_TRUE(RunsOn(enough + 1));
  EXPECT_EQ(blocks_held, 0);
}

TEST(PdfTarget, WithoutMemoryItHasEndedFromTheStart) {
  blocks_left = 0;
  PdfTarget target(kSetup, {Allocate, Release});
  EXPECT_TRUE(target.Ended());
  PrintLines(target, 1);
  EXPECT_FALSE(target.Finish().has_value());
}

}  // namespace
}  // namespace carnetel
