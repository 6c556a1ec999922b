#include "desktop/controls/faces.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QDir>
#include <QPainter>
#include <set>

namespace carnetel::desktop {
namespace {

QPalette DarkPalette() {
  QPalette palette;
  palette.setColor(QPalette::Button, QColor(53, 53, 53));
  palette.setColor(QPalette::Window, QColor(45, 45, 45));
  palette.setColor(QPalette::ButtonText, Qt::white);
  return palette;
}

// Number of pixels that are not empty.
int Painted(const QPixmap& pixmap) {
  const QImage image = pixmap.toImage().convertToFormat(QImage::Format_ARGB32);
  int count = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) count += qAlpha(image.pixel(x, y)) > 127 ? 1 : 0;
  }
  return count;
}

TEST(Faces, EachIsADrawingOfItsOwn) {
  const FaceTones tones = TonesFor(QPalette(Qt::lightGray), true);
  std::set<QByteArray> seen;
  for (int number = 0; number < kFaceCount; ++number) {
    const QPixmap face = PaintFace(static_cast<Face>(number), QSize(38, 38), 1, tones);
    EXPECT_GT(Painted(face), 60) << number;
    const QImage image = face.toImage();
    seen.insert(QByteArray(reinterpret_cast<const char*>(image.constBits()), image.sizeInBytes()));
  }
  EXPECT_EQ(seen.size(), static_cast<size_t>(kFaceCount));
}

TEST(Faces, AreAsSharpAsTheScreen) {
  const FaceTones tones = TonesFor(QPalette(Qt::lightGray), true);
  const QPixmap face = PaintFace(Face::kVoice, QSize(32, 17), 2, tones);
  EXPECT_EQ(face.size(), QSize(64, 34));
  EXPECT_EQ(face.deviceIndependentSize(), QSizeF(32, 17));
}

TEST(Faces, HaveOtherTonesOnDarkDesktopsAndWhenOff) {
  const FaceTones light = TonesFor(QPalette(Qt::lightGray), true);
  const FaceTones dark = TonesFor(DarkPalette(), true);
  EXPECT_LT(light.ink.lightness(), 100);
  EXPECT_GT(dark.ink.lightness(), 180);
  const FaceTones off = TonesFor(QPalette(Qt::lightGray), false);
  EXPECT_EQ(off.accent.saturation(), 0);
  EXPECT_EQ(off.ink, off.danger);
}

TEST(Faces, TheApplicationHasIconsForEveryPlace) {
  const QIcon icon = ApplicationIcon();
  for (const int edge : {16, 24, 48, 256}) {
    EXPECT_EQ(icon.actualSize(QSize(edge, edge)), QSize(edge, edge));
  }
}

constexpr int kSheetColumns = 16;
constexpr int kColumnWidth = 42;
constexpr int kBlockHeight = 110;

// Paints all faces in the three sizes of buttons on `background`; the top of what comes next.
int PaintSheetBlock(QPainter& painter, int top, const FaceTones& tones, const QColor& background) {
  const int lines = (kFaceCount + kSheetColumns - 1) / kSheetColumns;
  painter.fillRect(QRect(0, top, kSheetColumns * kColumnWidth, lines * kBlockHeight), background);
  for (int number = 0; number < kFaceCount; ++number) {
    const auto face = static_cast<Face>(number);
    const int x = number % kSheetColumns * kColumnWidth;
    const int y = top + number / kSheetColumns * kBlockHeight;
    painter.drawPixmap(x + 7, y + 5, PaintFace(face, QSize(28, 28), 2, tones));
    painter.drawPixmap(x + 9, y + 48, PaintFace(face, QSize(24, 22), 2, tones));
    painter.drawPixmap(x + 5, y + 84, PaintFace(face, QSize(32, 17), 2, tones));
  }
  return top + lines * kBlockHeight;
}

// Nothing to compare with: the sheet is for eyes. It must be written, and it must not be empty.
TEST(Faces, ContactSheetForEyes) {
  QImage sheet(QSize(kSheetColumns * kColumnWidth, 740) * 2, QImage::Format_RGB32);
  sheet.setDevicePixelRatio(2);
  sheet.fill(Qt::white);
  QPainter painter(&sheet);
  const QPalette light(QColor(239, 239, 239));
  int top = PaintSheetBlock(painter, 0, TonesFor(light, true), QColor(239, 239, 239));
  top = PaintSheetBlock(painter, top, TonesFor(light, false), QColor(239, 239, 239));
  top = PaintSheetBlock(painter, top, TonesFor(DarkPalette(), true), QColor(53, 53, 53));
  int x = 4;
  for (const int edge : {16, 24, 32, 48, 64}) {
    painter.drawPixmap(x, top + 4, ApplicationIcon().pixmap(QSize(edge, edge), 2));
    x += edge + 12;
  }
  painter.end();
  EXPECT_TRUE(sheet.save(QStringLiteral("faces.png")));
}

}  // namespace
}  // namespace carnetel::desktop
