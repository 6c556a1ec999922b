#include "desktop/dialogs/path_label.h"

#include <QEnterEvent>
#include <QPainter>
#include <QStyle>
#include <QToolTip>

namespace carnetel::desktop {
namespace {

constexpr int kCharacters = 60;

}  // namespace

PathLabel::PathLabel(QWidget* parent) : QLabel(parent) {
  setTextFormat(Qt::PlainText);
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void PathLabel::SetPath(const QString& path) {
  setText(path);
  setAccessibleName(path);
  // A tooltip takes what looks like markup for markup.
  setToolTip(Qt::mightBeRichText(path) ? Qt::convertFromPlainText(path) : path);
}

QString PathLabel::ShownText() const {
  return fontMetrics().elidedText(text(), Qt::ElideMiddle, contentsRect().width());
}

QSize PathLabel::sizeHint() const {
  const int height = QLabel::minimumSizeHint().height();
  return {fontMetrics().averageCharWidth() * kCharacters, std::max(height, fontMetrics().height())};
}

void PathLabel::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  style()->drawItemText(&painter, contentsRect(), Qt::AlignLeft | Qt::AlignVCenter, palette(),
                        isEnabled(), ShownText(), foregroundRole());
}

// The application leaves no tooltip to the toolkit's own clock.
void PathLabel::enterEvent(QEnterEvent* event) {
  QLabel::enterEvent(event);
  if (ShownText() != text()) QToolTip::showText(event->globalPosition().toPoint(), toolTip(), this);
}

}  // namespace carnetel::desktop
