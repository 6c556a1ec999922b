#include "desktop/controls/faces.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>
#include <array>

// In the global namespace, as the macro demands; a library's resources are not found without it.
static void LoadResources() {
  Q_INIT_RESOURCE(icons);
}

namespace carnetel::desktop {
namespace {

// In the order of Face.
constexpr std::array<const char*, kFaceCount> kNames = {
    "open",         "import",        "print",          "search",      "groups",      "select",
    "help",         "quit",          "new_card",       "cancel_card", "save_change", "save_new",
    "mark",         "delete",        "delete_marked",  "notes",       "references",  "voice",
    "isdn",         "fax",           "files",          "terminal",    "next",        "previous",
    "extract_card", "extract_group", "extract_marked", "view_card",   "clear_marks", "list_mark",
    "list_flag"};

// The tones as the files spell them.
constexpr const char* kInk = "#1b365d";
constexpr const char* kPaper = "#ffffff";
constexpr const char* kSoft = "#cfe0f4";
constexpr const char* kAccent = "#ee8f1d";
constexpr const char* kDanger = "#cf3b32";
constexpr const char* kBack = "#efefee";

constexpr std::array kIconSizes = {16, 22, 24, 32, 48, 64, 128, 256};

QByteArray ReadDrawing(const char* name) {
  LoadResources();
  QFile file(QStringLiteral(":/icons/%1.svg").arg(QLatin1String(name)));
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QColor Blend(const QColor& a, const QColor& b, double share_of_b) {
  const auto mix = [share_of_b](int x, int y) { return qRound(x + (y - x) * share_of_b); };
  return QColor(mix(a.red(), b.red()), mix(a.green(), b.green()), mix(a.blue(), b.blue()));
}

QByteArray WithTones(QByteArray drawing, const FaceTones& tones) {
  drawing.replace(kInk, tones.ink.name().toLatin1());
  drawing.replace(kPaper, tones.paper.name().toLatin1());
  drawing.replace(kSoft, tones.soft.name().toLatin1());
  drawing.replace(kAccent, tones.accent.name().toLatin1());
  drawing.replace(kDanger, tones.danger.name().toLatin1());
  return drawing.replace(kBack, tones.back.name().toLatin1());
}

QPixmap PaintDrawing(const QByteArray& drawing, QSize size, qreal pixel_ratio) {
  QPixmap pixmap(size * pixel_ratio);
  pixmap.setDevicePixelRatio(pixel_ratio);
  pixmap.fill(Qt::transparent);
  QSvgRenderer renderer(drawing);
  const QSizeF fitted = QSizeF(renderer.defaultSize()).scaled(size, Qt::KeepAspectRatio);
  QPainter painter(&pixmap);
  renderer.render(&painter,
                  QRectF((size.width() - fitted.width()) / 2, (size.height() - fitted.height()) / 2,
                         fitted.width(), fitted.height()));
  return pixmap;
}

}  // namespace

FaceTones TonesFor(const QPalette& palette, bool active) {
  const QColor face = palette.color(QPalette::Active, QPalette::Button);
  const bool dark = face.lightness() < 128;
  if (!active) {
    const QColor text = palette.color(QPalette::Active, QPalette::ButtonText);
    const QColor grey = Blend(face, text, 0.38);
    return {grey, Blend(face, text, 0.03), Blend(face, text, 0.10), grey, grey, face};
  }
  if (dark) {
    return {QColor(0xd6e4f7), Blend(face, Qt::black, 0.35),
            QColor(0x3c5f8f), QColor(0xffb04a),
            QColor(0xff7b6f), face};
  }
  return {QColor(kInk), QColor(kPaper), QColor(kSoft), QColor(kAccent), QColor(kDanger), face};
}

QPixmap PaintFace(Face face, QSize size, qreal pixel_ratio, const FaceTones& tones) {
  const QByteArray drawing = ReadDrawing(kNames[static_cast<size_t>(face)]);
  return PaintDrawing(WithTones(drawing, tones), size, pixel_ratio);
}

QIcon ApplicationIcon() {
  const QByteArray drawing = ReadDrawing("application");
  QIcon icon;
  for (const int edge : kIconSizes) icon.addPixmap(PaintDrawing(drawing, QSize(edge, edge), 1.0));
  return icon;
}

}  // namespace carnetel::desktop
