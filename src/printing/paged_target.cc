#include "printing/paged_target.h"

#include <algorithm>
#include <string>

namespace carnetel {
namespace {

constexpr double kLargestFont = 10;
constexpr double kSmallestFont = 5;
// Two line heights of a page are never printed on: that above its first line, and the last one,
// behind which a page would turn by itself before the run does it.
constexpr int kSpareLines = 2;

// Notes hold line ends, which have no place within a line.
std::string WithoutControls(std::string_view line) {
  std::string plain(line);
  std::ranges::replace_if(
      plain, [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
  return plain;
}

}  // namespace

void PagedTarget::PrintLine(std::string_view line) {
  if (Ended()) return;
  DrawLine(current_line_, WithoutControls(line));
  ++current_line_;
  if (current_line_ > lines_per_page_) NewPage();
}

void PagedTarget::NewPage() {
  if (!Ended()) TurnPage();
  current_line_ = 1;
}

PageFit FitPage(const PageSize& page, const FontShape& font, size_t columns, int lines) {
  PageFit fit;
  const double by_width =
      page.width / (font.advance * static_cast<double>(std::max<size_t>(columns, 1)));
  const double by_height = page.height / (font.line_height * (std::max(lines, 0) + kSpareLines));
  fit.font_size = std::clamp(std::min(by_width, by_height), kSmallestFont, kLargestFont);
  fit.line_height = fit.font_size * font.line_height;
  // A hair more, so that a height that was made to fit does.
  constexpr double kRounding = 1e-6;
  fit.lines_per_page = std::max(static_cast<int>(page.height / fit.line_height + kRounding) - 1, 1);
  return fit;
}

}  // namespace carnetel
