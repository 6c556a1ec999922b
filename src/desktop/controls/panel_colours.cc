#include "desktop/controls/panel_colours.h"

#include <QApplication>
#include <QEvent>

namespace carnetel::desktop {
namespace {

constexpr int kHalfLightness = 128;

constexpr QColor kDarkBlue(0, 0, 128);
constexpr QColor kDarkRed(128, 0, 0);
constexpr QColor kLightBlue(140, 180, 255);
constexpr QColor kLightRed(255, 140, 130);

}  // namespace

InkColours InkFor(const QColor& background, const QPalette& palette) {
  const bool dark = background.lightness() < kHalfLightness;
  return {dark ? kLightBlue : kDarkBlue, dark ? kLightRed : kDarkRed,
          palette.color(QPalette::Disabled, QPalette::WindowText)};
}

EdgeColours FrameEdges(const QPalette& palette) {
  const QColor face = palette.color(QPalette::Active, QPalette::Window);
  if (face.lightness() < kHalfLightness) return {face.lighter(190), face.darker(220)};
  return {QColor(Qt::white), face.darker(155)};
}

QPalette PanelPalette(const QPalette& system, PanelLook look, PanelRole role) {
  const bool edit = look == PanelLook::kEdit;
  const QColor background =
      system.color(QPalette::Active, edit ? QPalette::Base : QPalette::Button);
  const InkColours ink = InkFor(background, system);
  const QColor text = edit || role == PanelRole::kReference ? ink.red : ink.blue;
  QPalette palette = system;
  for (const auto part : {QPalette::Window, QPalette::Base}) palette.setColor(part, background);
  for (const auto part : {QPalette::WindowText, QPalette::Text}) {
    palette.setColor(part, text);
    palette.setColor(QPalette::Disabled, part, ink.disabled);
  }
  return palette;
}

PanelColours::PanelColours(QObject* parent) : QObject(parent) {
  qApp->installEventFilter(this);
}

void PanelColours::Add(QWidget* widget, PanelRole role) {
  if (role == PanelRole::kPanel) widget->setAutoFillBackground(true);
  members_.append({widget, role});
  widget->setPalette(PanelPalette(QApplication::palette(), look_, role));
}

void PanelColours::SetLook(PanelLook look) {
  if (look == look_) return;
  look_ = look;
  Apply();
}

void PanelColours::Apply() {
  for (const Member& member : members_) {
    if (member.widget == nullptr) continue;
    member.widget->setPalette(PanelPalette(QApplication::palette(), look_, member.role));
  }
}

// The application's own event only: setting a widget's palette sends that widget a change, too.
bool PanelColours::eventFilter(QObject* watched, QEvent* event) {
  if (watched == qApp && event->type() == QEvent::ApplicationPaletteChange) Apply();
  return QObject::eventFilter(watched, event);
}

}  // namespace carnetel::desktop
