// How a page looks, on paper, in a PDF file and in the preview: lines of text in a font of fixed
// pitch, each word set where its column begins, so that columns hold whatever a glyph does. Lengths
// are hundredths of a point: text is laid out large and scaled by the painter, since fonts of a few
// pixels would have their advances rounded.
#pragma once

#include <QFont>
#include <QPageLayout>
#include <string_view>

#include "printing/paged_target.h"

class QPainter;

namespace carnetel::desktop {

class PageDrawing {
 public:
  static constexpr double kUnitsPerPoint = 100;

  // For a page on which `columns` characters and `lines` lines should find room.
  PageDrawing(const PageSize& page, size_t columns, int lines);

  [[nodiscard]] const PageFit& fit() const { return fit_; }
  // Puts a painter, whose origin is the corner of the printable part, into the units drawn in.
  static void Scale(QPainter& painter, double pixels_per_point);
  // `number` from 1.
  void DrawLine(QPainter& painter, int number, std::string_view ansi) const;

 private:
  PageFit fit_;
  QFont font_;
  double advance_ = 0;
  double ascent_ = 0;
};

// The printable part of a page, in points.
[[nodiscard]] PageSize PrintableSize(const QPageLayout& layout);

}  // namespace carnetel::desktop
