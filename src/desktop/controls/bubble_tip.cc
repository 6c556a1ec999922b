#include "desktop/controls/bubble_tip.h"

#include <QApplication>
#include <QCursor>
#include <QMouseEvent>
#include <QScreen>

namespace carnetel::desktop {
namespace {

constexpr int kStopped = -2;
constexpr int kOffset = 2;
// Around the text: 2 and 1 before it, so that the whole is 7 wider and 4 higher than it.
constexpr QMargins kMargins(2, 1, 5, 3);

QLabel* MakeLabel() {
  auto* label = new QLabel(nullptr, Qt::ToolTip);
  label->setAttribute(Qt::WA_ShowWithoutActivating);
  label->setAttribute(Qt::WA_TransparentForMouseEvents);
  label->setTextFormat(Qt::PlainText);
  label->setContentsMargins(kMargins);
  label->setMargin(0);
  label->setIndent(0);
  label->setAlignment(Qt::AlignLeft | Qt::AlignTop);
  label->setAutoFillBackground(true);
  return label;
}

}  // namespace

BubbleTip::BubbleTip(QObject* parent) : QObject(parent) {
  timer_.setInterval(kTickMilliseconds);
  connect(&timer_, &QTimer::timeout, this, &BubbleTip::Tick);
  qApp->installEventFilter(this);
}

BubbleTip::~BubbleTip() {
  delete label_;
}

void BubbleTip::SetAllowed(bool allowed) {
  allowed_ = allowed;
  if (!allowed) Stop();
}

const QLabel* BubbleTip::Visible() const {
  return label_ != nullptr && label_->isVisible() ? label_.data() : nullptr;
}

bool BubbleTip::eventFilter(QObject* watched, QEvent* event) {
  switch (event->type()) {
    case QEvent::ToolTip:
      return true;
    case QEvent::Enter:
      if (watched->isWidgetType()) MouseOver(qobject_cast<BubbleButton*>(watched));
      break;
    case QEvent::MouseMove:
      // A button passes its moves on to its parent, which is not where the mouse is.
      if (auto* button = qobject_cast<BubbleButton*>(watched)) MouseOver(button);
      break;
    case QEvent::Leave:
      if (watched == button_) Stop();
      break;
    case QEvent::MouseButtonPress:
    case QEvent::KeyPress:
    case QEvent::WindowDeactivate:
      Stop();
      break;
    default:
      break;
  }
  return false;
}

void BubbleTip::MouseOver(BubbleButton* button) {
  if (button == button_) return;
  const bool captured = QWidget::mouseGrabber() != nullptr || QApplication::mouseButtons();
  if (!allowed_ || captured || QApplication::activeWindow() == nullptr) return;
  if (label_ != nullptr) label_->hide();
  button_ = button;
  if (button == nullptr || button->text().isEmpty()) {
    Stop();
    return;
  }
  ticks_ = 0;
  timer_.start();
}

void BubbleTip::Stop() {
  if (label_ != nullptr) label_->hide();
  button_ = nullptr;
  ticks_ = kStopped;
}

void BubbleTip::ShowNow() {
  if (!timer_.isActive() || button_ == nullptr) return;
  ticks_ = kTicksToShow;
  Show();
}

void BubbleTip::Tick() {
  if (ticks_ < 0 || ticks_ >= kTicksToShow) {
    timer_.stop();
    return;
  }
  if (++ticks_ == kTicksToShow) Show();
}

bool BubbleTip::MayShow() const {
  return button_ != nullptr && button_->isVisible() && QApplication::activeWindow() != nullptr &&
         QApplication::widgetAt(QCursor::pos()) != nullptr;
}

void BubbleTip::Show() {
  if (!MayShow()) {
    Stop();
    return;
  }
  if (label_ == nullptr) label_ = MakeLabel();
  QPalette colours;
  colours.setColor(QPalette::Window, QColor(255, 255, 128));
  colours.setColor(QPalette::WindowText,
                   button_->IsActive() ? QColor(0, 0, 0) : QColor(192, 192, 192));
  label_->setPalette(colours);
  label_->setFont(button_->font());
  label_->setText(button_->text());
  const QSize text = label_->fontMetrics().size(Qt::TextSingleLine, label_->text());
  label_->setFixedSize(text.grownBy(kMargins));
  Place();
  label_->show();
}

// Below the button, moved left to stay on the screen, and above it where there is no room below.
void BubbleTip::Place() {
  const QRect screen = button_->screen()->availableGeometry();
  const QPoint below = button_->mapToGlobal(button_->rect().bottomLeft());
  QPoint corner(below.x() + kOffset, below.y() + kOffset);
  corner.setX(std::max(screen.left(), std::min(corner.x(), screen.right() - label_->width())));
  if (corner.y() + label_->height() > screen.bottom()) {
    corner.setY(button_->mapToGlobal(QPoint(0, 0)).y() - kOffset - label_->height());
  }
  label_->move(corner);
}

}  // namespace carnetel::desktop
