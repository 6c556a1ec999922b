// What printers, PDF files and the preview share: where on a page a line stands. Lines are counted
// from 1, one line height apart from the top, so that the space of one line stays free above them;
// a page that is full turns by itself.
#pragma once

#include <string_view>

#include "printing/print_target.h"

namespace carnetel {

class PagedTarget : public PrintTarget {
 public:
  explicit PagedTarget(int lines_per_page) : lines_per_page_(lines_per_page) {}

  [[nodiscard]] PrintText text() const override { return PrintText::kAnsi; }
  void PrintLine(std::string_view line) override;
  void NewPage() override;

 protected:
  // Draws on the page at hand; `number` from 1.
  virtual void DrawLine(int number, std::string_view ansi) = 0;
  // Ends the page at hand and begins the next one.
  virtual void TurnPage() = 0;

 private:
  int lines_per_page_;
  int current_line_ = 1;
};

// The size of a page's printable part, in points (1/72 inch).
struct PageSize {
  double width = 0;
  double height = 0;
};

// A fixed-pitch font of one point: how wide a character is and how high a line, leading included.
struct FontShape {
  double advance = 0;
  double line_height = 0;
};

struct PageFit {
  double font_size = 0;  // points
  double line_height = 0;
  int lines_per_page = 0;
};

// The largest font, from 10 points down to 5, in which `columns` characters and the lines of a page
// fit, so that columns hold and pages break where the run breaks them. What does not fit at 5 is
// cut off at the right and turns the page early.
[[nodiscard]] PageFit FitPage(const PageSize& page, const FontShape& font, size_t columns,
                              int lines);

}  // namespace carnetel
