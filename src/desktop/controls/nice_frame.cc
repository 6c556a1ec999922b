#include "desktop/controls/nice_frame.h"

#include <QPainter>
#include <utility>

#include "desktop/controls/panel_colours.h"

namespace carnetel::desktop {
namespace {

constexpr int kEdge = 2;

}  // namespace

NiceFrame::NiceFrame(int id, Kind kind, QWidget* parent) : QFrame(parent), kind_(kind) {
  setObjectName(QString::number(id));
  setFrameShape(QFrame::NoFrame);
  if (kind == Kind::kLine) {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  } else {
    setContentsMargins(kEdge, kEdge, kEdge, kEdge);
  }
}

QSize NiceFrame::sizeHint() const {
  return kind_ == Kind::kLine ? QSize(kEdge, kEdge) : QFrame::sizeHint();
}

void NiceFrame::PaintPanel(QPainter& painter) const {
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(palette().color(QPalette::Mid));
  painter.setBrush(Qt::NoBrush);
  painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 3, 3);
}

void NiceFrame::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  if (kind_ == Kind::kPanel) {
    PaintPanel(painter);
    return;
  }
  auto [above, below] = FrameEdges(palette());
  if (kind_ == Kind::kSunken || kind_ == Kind::kLine) std::swap(above, below);
  const QRect box = rect();
  painter.setPen(above);
  if (kind_ != Kind::kJoined) painter.drawLine(box.topLeft(), box.topRight());
  if (kind_ != Kind::kLine) painter.drawLine(box.topLeft(), box.bottomLeft());
  painter.setPen(below);
  painter.drawLine(box.bottomLeft(), box.bottomRight());
  if (kind_ != Kind::kLine) painter.drawLine(box.topRight(), box.bottomRight());
}

}  // namespace carnetel::desktop
