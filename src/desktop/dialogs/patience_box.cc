#include "desktop/dialogs/patience_box.h"

#include <QCloseEvent>
#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QLabel>
#include <QVBoxLayout>

#include "base/dialog_template.h"
#include "desktop/controls/measure.h"

namespace carnetel::desktop {
namespace {

constexpr int kNumber = 135;
constexpr int kMargin = 18;
// A window that the desktop does not show (on another workspace, say) must not hold up the work.
constexpr int kLongestWaitMilliseconds = 300;

}  // namespace

PatienceBox::PatienceBox(BusyState& busy, QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint), busy_(busy) {
  const QString title = QString::fromUtf8(DialogTitle(kNumber));
  setObjectName(QString::number(kNumber));
  setWindowTitle(title);
  setWindowModality(Qt::ApplicationModal);
  auto* column = new QVBoxLayout(this);
  auto* label = new QLabel(title + QStringLiteral("..."));
  label->setTextFormat(Qt::PlainText);
  column->addWidget(label, 0, Qt::AlignHCenter);
  const int margin = Measure(kMargin, fontMetrics());
  column->setContentsMargins(3 * margin, margin, 3 * margin, margin);
  column->setSizeConstraint(QLayout::SetFixedSize);
}

void PatienceBox::setVisible(bool visible) {
  if (visible == isVisible()) return;
  if (visible) scope_.emplace(busy_);
  painted_ = false;
  QDialog::setVisible(visible);
  if (visible) {
    WaitForPaint();
  } else {
    scope_.reset();
  }
}

void PatienceBox::WaitForPaint() {
  const QDeadlineTimer deadline(kLongestWaitMilliseconds);
  while (!painted_ && !deadline.hasExpired()) {
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
  }
}

void PatienceBox::closeEvent(QCloseEvent* event) {
  event->ignore();
}

void PatienceBox::paintEvent(QPaintEvent* event) {
  QDialog::paintEvent(event);
  painted_ = true;
}

}  // namespace carnetel::desktop
