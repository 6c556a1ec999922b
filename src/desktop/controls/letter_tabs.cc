#include "desktop/controls/letter_tabs.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <algorithm>

#include "desktop/controls/measure.h"
#include "desktop/controls/panel_colours.h"

namespace carnetel::desktop {
namespace {

constexpr int kFirstWidth = 54;
constexpr int kLetterWidth = 20;
constexpr int kHeight = 19;
constexpr int kOverlap = 1;
constexpr double kCornerRadius = 4;

QString CaptionOf(int id) {
  if (id == LetterTabs::kFirstId) return QStringLiteral("A à Z");
  return QString(QChar(u'A' + (id - LetterTabs::kFirstId - 1)));
}

QString SpokenNameOf(int id) {
  if (id == LetterTabs::kFirstId) return QStringLiteral("Toutes les fiches, A à Z");
  return QStringLiteral("Lettre ") + CaptionOf(id);
}

}  // namespace

LetterTabs::LetterTabs(QWidget* parent) : QWidget(parent) {
  setAccessibleName(QStringLiteral("Onglets des lettres"));
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
  for (int id = kFirstId; id <= kLastId; ++id) tabs_ += new LetterTab(id, this);
  Select(kFirstId, false);
}

LetterTab* LetterTabs::Tab(int id) const {
  return tabs_.value(id - kFirstId, nullptr);
}

void LetterTabs::Select(int id, bool fire) {
  if (Tab(id) == nullptr) return;
  selected_ = id;
  for (LetterTab* tab : tabs_) {
    tab->setFocusPolicy(tab->id() == id ? Qt::TabFocus : Qt::NoFocus);
    tab->update();
  }
  // A tab that keeps the focus of its window would be chosen when the window is active again.
  const auto* focused = qobject_cast<LetterTab*>(window()->focusWidget());
  if (focused != nullptr && focused != Tab(id)) Tab(id)->setFocus(Qt::OtherFocusReason);
  Place();
  update();
  if (fire) Q_EMIT tabSelected(id);
}

void LetterTabs::Choose(int id) {
  if (id == selected_ || Tab(id) == nullptr || !Tab(id)->isEnabled()) return;
  if (may_leave_ && !may_leave_()) return;
  Select(id, false);
  Tab(id)->setFocus(Qt::OtherFocusReason);
  Q_EMIT tabSelected(id);
}

void LetterTabs::ChooseLater(int id) {
  QMetaObject::invokeMethod(
      this, [this, id] { Choose(id); }, Qt::QueuedConnection);
}

void LetterTabs::SetJoinedFrame(bool joined) {
  joined_ = joined;
  update();
}

int LetterTabs::TabWidth(int id) const {
  QFont bold = font();
  bold.setBold(true);
  const QFontMetrics metrics(bold);
  const int text = metrics.horizontalAdvance(CaptionOf(id));
  if (id == kFirstId) return std::max(Measure(kFirstWidth, fontMetrics()), text + 16);
  const int last = id == kLastId ? 1 : 0;
  return std::max(Measure(kLetterWidth, fontMetrics()), text + 8) + last;
}

QSize LetterTabs::sizeHint() const {
  int width = kOverlap;
  for (int id = kFirstId; id <= kLastId; ++id) width += TabWidth(id) - kOverlap;
  const int height = std::max(Measure(kHeight, fontMetrics()), fontMetrics().height() + 6);
  return {width, height};
}

void LetterTabs::Place() {
  int left = 0;
  const int height = sizeHint().height();
  for (LetterTab* tab : tabs_) {
    const int width = TabWidth(tab->id());
    tab->setGeometry(left, this->height() - height, width, height);
    left += width - kOverlap;
  }
  Tab(selected_)->raise();
}

void LetterTabs::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  Place();
}

void LetterTabs::changeEvent(QEvent* event) {
  QWidget::changeEvent(event);
  if (event->type() != QEvent::FontChange) return;
  updateGeometry();
  Place();
}

// The line that closes the row from the last tab to the right edge of the frame below.
void LetterTabs::paintEvent(QPaintEvent* /*event*/) {
  if (joined_) return;
  QPainter painter(this);
  painter.setPen(FrameEdges(palette()).dark);
  painter.drawLine(Tab(kLastId)->geometry().right(), height() - 1, width() - 1, height() - 1);
}

LetterTab::LetterTab(int id, LetterTabs* row)
    : QWidget(row), id_(id), row_(row), caption_(CaptionOf(id)) {
  setObjectName(QString::number(id));
  setAccessibleName(SpokenNameOf(id));
  setAttribute(Qt::WA_Hover);
}

bool LetterTab::IsSelected() const {
  return row_->SelectedId() == id_;
}

// Upper corners rounded; the lower edge is the frame's, and open under the selected tab.
void LetterTab::PaintShape(QPainter& painter) const {
  const bool selected = IsSelected();
  const QRectF box =
      QRectF(rect()).adjusted(0.5, selected ? 0.5 : 2.5, -0.5, selected ? 1.5 : -0.5);
  QPainterPath shape(box.bottomLeft());
  shape.lineTo(box.left(), box.top() + kCornerRadius);
  shape.quadTo(box.topLeft(), QPointF(box.left() + kCornerRadius, box.top()));
  shape.lineTo(box.right() - kCornerRadius, box.top());
  shape.quadTo(box.topRight(), QPointF(box.right(), box.top() + kCornerRadius));
  shape.lineTo(box.bottomRight());
  const QColor face = palette().color(QPalette::Window);
  const bool dark = face.lightness() < 128;
  const QColor behind =
      dark ? face.lighter(underMouse() ? 135 : 118) : face.darker(underMouse() ? 103 : 108);
  painter.fillPath(shape, selected ? face : behind);
  painter.setPen(FrameEdges(palette()).dark);
  painter.drawPath(shape);
  if (!selected) painter.drawLine(box.bottomLeft(), box.bottomRight());
}

void LetterTab::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  painter.setRenderHint(QPainter::Antialiasing);
  PaintShape(painter);
  QFont text_font = font();
  text_font.setBold(IsSelected());
  painter.setFont(text_font);
  const InkColours ink = InkFor(palette().color(QPalette::Window), palette());
  const QColor rest = palette().color(QPalette::Active, QPalette::WindowText);
  painter.setPen(!isEnabled() ? ink.disabled : IsSelected() ? ink.blue : rest);
  const QRect text_box = rect().adjusted(0, IsSelected() ? 1 : 3, 0, 0);
  painter.drawText(text_box, Qt::AlignCenter, caption_);
  if (!IsSelected() || !hasFocus()) return;
  const QFontMetrics metrics(text_font);
  QRect focus(0, 0, metrics.horizontalAdvance(caption_) + 4, metrics.height() - 1);
  focus.moveCenter(text_box.center());
  painter.setPen(QPen(palette().color(QPalette::Highlight), 1));
  painter.drawRoundedRect(QRectF(focus).adjusted(-0.5, 0.5, 0.5, 0.5), 2, 2);
}

void LetterTab::mousePressEvent(QMouseEvent* event) {
  event->accept();
  if (event->button() != Qt::LeftButton) return;
  if (IsSelected()) {
    setFocus(Qt::MouseFocusReason);
  } else {
    row_->ChooseLater(id_);
  }
}

void LetterTab::keyPressEvent(QKeyEvent* event) {
  switch (event->key()) {
    case Qt::Key_Left:
      row_->Choose(id_ - 1);
      break;
    case Qt::Key_Right:
      row_->Choose(id_ + 1);
      break;
    case Qt::Key_Home:
      row_->Choose(LetterTabs::kFirstId);
      break;
    case Qt::Key_End:
      row_->Choose(LetterTabs::kLastId);
      break;
    default:
      event->ignore();
  }
}

void LetterTab::focusInEvent(QFocusEvent* event) {
  QWidget::focusInEvent(event);
  update();
  if (!IsSelected()) row_->ChooseLater(id_);
}

void LetterTab::focusOutEvent(QFocusEvent* event) {
  QWidget::focusOutEvent(event);
  update();
}

void LetterTab::enterEvent(QEnterEvent* event) {
  QWidget::enterEvent(event);
  update();
}

void LetterTab::leaveEvent(QEvent* event) {
  QWidget::leaveEvent(event);
  update();
}

}  // namespace carnetel::desktop
