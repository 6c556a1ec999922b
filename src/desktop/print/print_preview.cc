#include "desktop/print/print_preview.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>
#include <algorithm>

#include "desktop/controls/measure.h"

namespace carnetel::desktop {
namespace {

constexpr int kSide = 320;
constexpr int kShadow = 3;
constexpr QColor kShade(0, 0, 0, 70);

QPushButton* MakeButton(const char* name, const char* caption, QWidget* parent) {
  auto* button = new QPushButton(QString::fromUtf8(caption), parent);
  button->setObjectName(QString::fromLatin1(name));
  return button;
}

}  // namespace

PaperView::PaperView(QWidget* parent) : QWidget(parent) {
  setObjectName(QStringLiteral("paper"));
  setAccessibleName(QStringLiteral("Aperçu de la page"));
  setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QSize PaperView::sizeHint() const {
  const int side = Measure(kSide, fontMetrics());
  return {side, side};
}

void PaperView::ShowPage(const QPageLayout& layout, const PageDrawing& drawing,
                         const PreviewPages::Page& page) {
  layout_ = layout;
  drawing_ = drawing;
  page_ = &page;
  update();
}

QRectF PaperView::PaperRect() const {
  const QSizeF paper = layout_.fullRect(QPageLayout::Point).size();
  const QSizeF shown = paper.scaled(size().shrunkBy({0, 0, kShadow, kShadow}), Qt::KeepAspectRatio);
  QRectF place(QPointF(), shown);
  place.moveCenter(QRectF(rect()).center());
  return place.toAlignedRect();
}

void PaperView::paintEvent(QPaintEvent* /*event*/) {
  if (!drawing_) return;
  QPainter painter(this);
  painter.setRenderHint(QPainter::TextAntialiasing);
  const QRectF paper = PaperRect();
  painter.fillRect(paper.translated(kShadow, kShadow), kShade);
  painter.fillRect(paper, Qt::white);
  painter.setPen(Qt::gray);
  painter.drawRect(paper.adjusted(0, 0, -1, -1));
  const double scale = paper.width() / layout_.fullRect(QPageLayout::Point).width();
  const QRectF printable = layout_.paintRect(QPageLayout::Point);
  painter.setPen(Qt::black);
  painter.translate(paper.topLeft() + printable.topLeft() * scale);
  // What does not find room is cut off, as on the paper.
  painter.setClipRect(QRectF(QPointF(), printable.size() * scale));
  PageDrawing::Scale(painter, scale);
  for (const PreviewPages::Line& line : *page_) {
    drawing_->DrawLine(painter, line.number, line.ansi);
  }
}

PrintPreview::PrintPreview(QWidget* parent)
    : QWidget(parent),
      paper_(new PaperView(this)),
      number_(new QLabel(this)),
      previous_(MakeButton("previous_page", "&Précédente", this)),
      next_(MakeButton("next_page", "Sui&vante", this)) {
  number_->setObjectName(QStringLiteral("page_number"));
  number_->setAlignment(Qt::AlignCenter);
  previous_->setAccessibleName(QStringLiteral("Page précédente"));
  next_->setAccessibleName(QStringLiteral("Page suivante"));
  connect(previous_, &QPushButton::clicked, this, [this] { Turn(-1); });
  connect(next_, &QPushButton::clicked, this, [this] { Turn(1); });
  auto* turning = new QHBoxLayout;
  turning->addWidget(previous_);
  turning->addWidget(number_, 1);
  turning->addWidget(next_);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(paper_);
  column->addLayout(turning);
}

void PrintPreview::Refresh(PrintForm& form, const QPageLayout& layout) {
  layout_ = layout;
  drawing_.emplace(PrintableSize(layout), form.Columns(), form.setup().lines);
  pages_.emplace(drawing_->fit().lines_per_page);
  form.Preview(*pages_);
  Turn(0);
}

void PrintPreview::Turn(int step) {
  page_ = std::clamp(page_ + step, 0, static_cast<int>(pages_->pages().size()) - 1);
  ShowPage();
}

void PrintPreview::ShowPage() {
  const auto count = static_cast<int>(pages_->pages().size());
  paper_->ShowPage(layout_, *drawing_, pages_->pages()[static_cast<size_t>(page_)]);
  QString text = QStringLiteral("Page %1").arg(page_ + 1);
  if (pages_->IsEmpty()) {
    text = QStringLiteral("Aucune fiche");
  } else if (!pages_->HasMore()) {
    text += QStringLiteral(" sur %1").arg(count);
  }
  number_->setText(text);
  const bool first = page_ == 0;
  const bool last = page_ == count - 1;
  // A button that goes off under the user hands the focus to the other one.
  if (!first) previous_->setEnabled(true);
  if (!last) next_->setEnabled(true);
  if (first && !last && previous_->hasFocus()) next_->setFocus();
  if (last && !first && next_->hasFocus()) previous_->setFocus();
  previous_->setEnabled(!first);
  next_->setEnabled(!last);
}

}  // namespace carnetel::desktop
