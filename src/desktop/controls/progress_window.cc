#include "desktop/controls/progress_window.h"

#include <QCloseEvent>
#include <QHBoxLayout>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

#include "desktop/controls/measure.h"

namespace carnetel::desktop {
namespace {

constexpr QColor kFilled(0, 0, 255);
constexpr QColor kEmpty(192, 192, 192);
constexpr int kGaugeWidth = 340;
constexpr int kGaugeHeight = 22;
// A key of a card, the longest value shown, has 32 characters.
constexpr int kValueCharacters = 33;

QLabel* PlainLabel(const QString& text) {
  auto* label = new QLabel(text);
  label->setTextFormat(Qt::PlainText);
  return label;
}

QString FromView(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

}  // namespace

ProgressGauge::ProgressGauge(const ProgressCounter& counter, QWidget* parent)
    : QWidget(parent), counter_(counter) {
  setObjectName(QStringLiteral("198"));
  setAccessibleName(QStringLiteral("Progression"));
  setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

QSize ProgressGauge::sizeHint() const {
  return {Measure(kGaugeWidth, fontMetrics()), Measure(kGaugeHeight, fontMetrics())};
}

void ProgressGauge::paintEvent(QPaintEvent* /*event*/) {
  if (!counter_.ShowsGauge()) return;
  QPainter painter(this);
  QFont bold = font();
  bold.setBold(true);
  painter.setFont(bold);
  const QString text = QString::fromStdString(counter_.PercentText());
  const int filled = counter_.FilledWidth(width());
  const auto paint_part = [&](const QRect& part, const QColor& background, const QColor& ink) {
    painter.setClipRect(part);
    painter.fillRect(part, background);
    painter.setPen(ink);
    painter.drawText(rect(), Qt::AlignCenter, text);
  };
  paint_part(QRect(0, 0, filled, height()), kFilled, Qt::white);
  paint_part(QRect(filled, 0, width() - filled, height()), kEmpty, Qt::black);
}

ProgressWindow::ProgressWindow(const ProgressCounter& counter, QWidget* parent)
    : QDialog(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint),
      value_(PlainLabel(QString())),
      gauge_(new ProgressGauge(counter)) {
  setObjectName(QStringLiteral("104"));
  setWindowTitle(QString::fromStdString(counter.Title()));
  setWindowModality(Qt::ApplicationModal);
  value_->setMinimumWidth(fontMetrics().averageCharWidth() * kValueCharacters);
  auto* line = new QHBoxLayout;
  line->addWidget(PlainLabel(FromView(counter.Label())));
  line->addWidget(value_, 1);
  auto* column = new QVBoxLayout(this);
  column->addLayout(line);
  column->addWidget(gauge_);
  column->setSizeConstraint(QLayout::SetFixedSize);
  if (!counter.CanAbort()) return;
  abandon_ = new QPushButton(QStringLiteral("Abandon"));
  abandon_->setObjectName(QStringLiteral("2"));
  connect(abandon_, &QPushButton::clicked, this, &ProgressWindow::RequestAbort);
  column->addWidget(abandon_, 0, Qt::AlignHCenter);
}

void ProgressWindow::Finish() {
  if (abandon_ != nullptr) abandon_->setEnabled(false);
}

void ProgressWindow::RequestAbort() {
  if (abandon_ != nullptr && abandon_->isEnabled()) abort_requested_ = true;
}

void ProgressWindow::closeEvent(QCloseEvent* event) {
  RequestAbort();
  event->ignore();
}

}  // namespace carnetel::desktop
