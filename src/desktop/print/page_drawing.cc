#include "desktop/print/page_drawing.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <QFontMetricsF>
#include <QPainter>

#include "base/code_page.h"

namespace carnetel::desktop {
namespace {

QFont FixedPitchFont(double points) {
  QFont font(QFontDatabase::systemFont(QFontDatabase::FixedFont).family());
  if (!QFontInfo(font).fixedPitch()) font.setFamily(QStringLiteral("Courier"));
  font.setStyleHint(QFont::TypeWriter);
  font.setFixedPitch(true);
  font.setHintingPreference(QFont::PreferNoHinting);
  font.setPixelSize(qRound(points * PageDrawing::kUnitsPerPoint));
  return font;
}

double AdvanceOf(const QFontMetricsF& metrics) {
  return metrics.horizontalAdvance(u'0');
}

FontShape ShapeOfOnePoint() {
  constexpr double kLarge = 10;
  const QFontMetricsF metrics(FixedPitchFont(kLarge));
  constexpr double kUnits = kLarge * PageDrawing::kUnitsPerPoint;
  return {AdvanceOf(metrics) / kUnits, metrics.lineSpacing() / kUnits};
}

// What has no glyph keeps its place as a blank.
QString Printable(std::string_view ansi) {
  QString text = QString::fromStdString(Utf8FromAnsi(AnsiText(std::string(ansi))));
  for (QChar& character : text) {
    if (!character.isPrint()) character = u' ';
  }
  return text;
}

}  // namespace

PageDrawing::PageDrawing(const PageSize& page, size_t columns, int lines)
    : fit_(FitPage(page, ShapeOfOnePoint(), columns, lines)),
      font_(FixedPitchFont(fit_.font_size)) {
  const QFontMetricsF metrics(font_);
  advance_ = AdvanceOf(metrics);
  ascent_ = metrics.ascent();
}

void PageDrawing::Scale(QPainter& painter, double pixels_per_point) {
  painter.scale(pixels_per_point / kUnitsPerPoint, pixels_per_point / kUnitsPerPoint);
}

void PageDrawing::DrawLine(QPainter& painter, int number, std::string_view ansi) const {
  const QString text = Printable(ansi);
  const double base = number * fit_.line_height * kUnitsPerPoint + ascent_;
  painter.setFont(font_);
  for (qsizetype start = 0; start < text.size();) {
    qsizetype end = text.indexOf(u' ', start);
    if (end < 0) end = text.size();
    if (end > start) {
      painter.drawText(QPointF(static_cast<double>(start) * advance_, base),
                       text.mid(start, end - start));
    }
    start = end + 1;
  }
}

PageSize PrintableSize(const QPageLayout& layout) {
  const QRectF printable = layout.paintRect(QPageLayout::Point);
  return {printable.width(), printable.height()};
}

}  // namespace carnetel::desktop
