#include "desktop/controls/bubble_button.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionFocusRect>

#include "desktop/controls/measure.h"

namespace carnetel::desktop {
namespace {

struct Geometry {
  QSize size;
  int picture_margin;
  QSize focus_margins;
};

Geometry GeometryOf(ButtonSize size) {
  switch (size) {
    case ButtonSize::kToolbar:
      return {{38, 38}, 5, {4, 4}};
    case ButtonSize::kFormColumn:
      return {{30, 28}, 3, {4, 4}};
    case ButtonSize::kSibling:
      return {{32, 17}, 0, {5, 2}};
  }
  return {};
}

bool IsPressKey(int key) {
  return key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter;
}

}  // namespace

BubbleButton::BubbleButton(int id, Face face, ButtonSize size, const QString& caption,
                           QWidget* parent)
    : QAbstractButton(parent), face_(face), size_(size) {
  setObjectName(QString::number(id));
  setText(caption);
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
  setMouseTracking(true);
  UpdateFocusPolicy();
}

void BubbleButton::SetActive(bool active) {
  if (active == active_) return;
  active_ = active;
  picture_ = QPixmap();
  if (!active) setDown(false);
  UpdateFocusPolicy();
  update();
  Q_EMIT activeChanged(active);
}

void BubbleButton::SetFace(Face face) {
  face_ = face;
  picture_ = QPixmap();
  update();
}

void BubbleButton::SetTabStop(bool tab_stop) {
  tab_stop_ = tab_stop;
  UpdateFocusPolicy();
}

void BubbleButton::UpdateFocusPolicy() {
  if (!active_) {
    setFocusPolicy(Qt::NoFocus);
  } else {
    setFocusPolicy(tab_stop_ ? Qt::StrongFocus : Qt::ClickFocus);
  }
}

QSize BubbleButton::sizeHint() const {
  const QSize size = GeometryOf(size_).size;
  return {Measure(size.width(), fontMetrics()), Measure(size.height(), fontMetrics())};
}

const QPixmap& BubbleButton::Picture() {
  const qreal pixel_ratio = devicePixelRatioF();
  if (picture_.isNull() || picture_.devicePixelRatio() != pixel_ratio) {
    const int margin = Measure(GeometryOf(size_).picture_margin, fontMetrics());
    const QRect area = rect().adjusted(margin, margin, -margin, -margin);
    picture_ = PaintFace(face_, area.size(), pixel_ratio, TonesFor(palette(), active_));
  }
  return picture_;
}

// Flat at rest; an edge appears under the mouse, and a pressed button is filled.
void BubbleButton::PaintSurface(QPainter& painter) const {
  const bool lit = active_ && (underMouse() || isDown());
  if (!lit) return;
  painter.setRenderHint(QPainter::Antialiasing);
  const QColor face = palette().color(QPalette::Button);
  const bool dark = face.lightness() < 128;
  const int step = dark ? 130 : 108;
  const QColor lifted = dark ? face.lighter(step) : QColor(Qt::white);
  painter.setBrush(isDown() ? face.darker(step) : lifted);
  painter.setPen(palette().color(QPalette::Mid));
  painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 4, 4);
}

void BubbleButton::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  PaintSurface(painter);
  const QPixmap& picture = Picture();
  const QSizeF size = picture.deviceIndependentSize();
  const int shift = isDown() ? 1 : 0;
  painter.drawPixmap(
      QPointF((width() - size.width()) / 2 + shift, (height() - size.height()) / 2 + shift),
      picture);
  if (!hasFocus()) return;
  const QSize margins = GeometryOf(size_).focus_margins;
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(QPen(palette().color(QPalette::Highlight), 1.4));
  painter.drawRoundedRect(QRectF(rect()).adjusted(margins.width() / 4.0, margins.height() / 4.0,
                                                  -margins.width() / 4.0, -margins.height() / 4.0),
                          4, 4);
}

void BubbleButton::mousePressEvent(QMouseEvent* event) {
  if (active_) {
    QAbstractButton::mousePressEvent(event);
    return;
  }
  if (event->button() == Qt::LeftButton) beep_();
  event->accept();
}

void BubbleButton::mouseReleaseEvent(QMouseEvent* event) {
  if (active_) {
    QAbstractButton::mouseReleaseEvent(event);
  } else {
    event->accept();
  }
}

void BubbleButton::keyPressEvent(QKeyEvent* event) {
  if (!IsPressKey(event->key())) {
    event->ignore();
    return;
  }
  event->accept();
  if (!active_) {
    if (!event->isAutoRepeat()) beep_();
  } else if (event->key() == Qt::Key_Space) {
    QAbstractButton::keyPressEvent(event);
  } else {
    click();
  }
}

void BubbleButton::keyReleaseEvent(QKeyEvent* event) {
  if (active_) {
    QAbstractButton::keyReleaseEvent(event);
  } else {
    event->ignore();
  }
}

void BubbleButton::changeEvent(QEvent* event) {
  picture_ = QPixmap();
  if (event->type() == QEvent::FontChange) updateGeometry();
  QAbstractButton::changeEvent(event);
}

void BubbleButton::enterEvent(QEnterEvent* event) {
  update();
  QAbstractButton::enterEvent(event);
}

void BubbleButton::leaveEvent(QEvent* event) {
  update();
  QAbstractButton::leaveEvent(event);
}

}  // namespace carnetel::desktop
