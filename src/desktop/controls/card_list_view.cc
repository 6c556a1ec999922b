#include "desktop/controls/card_list_view.h"

#include <QAccessible>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>
#include <QStyleOptionFocusRect>
#include <algorithm>

#include "desktop/controls/faces.h"
#include "desktop/controls/letter_key.h"
#include "desktop/controls/measure.h"
#include "desktop/controls/panel_colours.h"

namespace carnetel::desktop {
namespace {

// Width of the mark column and of the flag column.
constexpr int kPictureWidth = 13;
constexpr int kRowPadding = 3;
constexpr int kLabelCharacters = 32;
constexpr int kUsualRows = 18;
// Rows kept beyond those in view before the store of rows is emptied.
constexpr int kSpareRows = 200;

// The selected row is white on black; where the list is dark, in the desktop's own colours.
struct SelectedColours {
  QColor background;
  QColor text;
};

SelectedColours SelectedOn(const QPalette& palette) {
  if (palette.color(QPalette::Base).lightness() < 128) {
    return {palette.color(QPalette::Active, QPalette::Highlight),
            palette.color(QPalette::Active, QPalette::HighlightedText)};
  }
  return {Qt::black, Qt::white};
}

bool HasMarkModifier(const QKeyEvent& event) {
  return event.modifiers() & (Qt::ControlModifier | Qt::ShiftModifier);
}

FaceTones SelectedTones(const SelectedColours& colours) {
  const QColor accent(0xffb04a);
  return {colours.text, colours.text, colours.text, accent, colours.text, colours.background};
}

}  // namespace

CardListView::CardListView(int id, RowSource& source, QWidget* parent)
    : QAbstractScrollArea(parent), source_(source) {
  setObjectName(QString::number(id));
  setFocusPolicy(Qt::StrongFocus);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
  setAccessibleName(QStringLiteral("Liste des fiches"));
  viewport()->setBackgroundRole(QPalette::Base);
  viewport()->setAutoFillBackground(true);
  verticalScrollBar()->setFocusPolicy(Qt::NoFocus);
  Reload();
}

void CardListView::Reload() {
  rows_.clear();
  row_count_ = source_.RowCount();
  current_ = std::clamp(current_, row_count_ > 0 ? 0 : -1, row_count_ - 1);
  shift_anchor_ = -1;
  UpdateScrollBar();
  viewport()->update();
  TellAccessibility();
}

void CardListView::ReloadRow(int row) {
  rows_.remove(row);
  viewport()->update(RowRect(row));
  if (row == current_) TellAccessibility();
}

void CardListView::SetCurrentRow(int row) {
  if (row < 0 || row >= row_count_) return;
  selection_hidden_ = false;
  const int former = std::exchange(current_, row);
  viewport()->update(RowRect(former));
  viewport()->update(RowRect(row));
  ScrollTo(row);
  TellAccessibility();
}

int CardListView::TopRow() const {
  return verticalScrollBar()->value();
}

void CardListView::SetTopRow(int row) {
  verticalScrollBar()->setValue(row);
}

int CardListView::RowHeight() const {
  return fontMetrics().height() + kRowPadding;
}

int CardListView::PictureWidth() const {
  return Measure(kPictureWidth, fontMetrics());
}

int CardListView::PageRows() const {
  return std::max(1, viewport()->height() / RowHeight());
}

QRect CardListView::RowRect(int row) const {
  return {0, (row - TopRow()) * RowHeight(), viewport()->width(), RowHeight()};
}

int CardListView::RowAt(const QPoint& position) const {
  const int row = TopRow() + position.y() / RowHeight();
  return position.y() >= 0 && row < row_count_ ? row : -1;
}

void CardListView::SetColumns(const QList<int>& left_edges) {
  columns_ = left_edges;
  viewport()->update();
}

QSize CardListView::sizeHint() const {
  const int label = fontMetrics().averageCharWidth() * kLabelCharacters;
  const int width = 2 * PictureWidth() + label + verticalScrollBar()->sizeHint().width();
  return {width + 2 * frameWidth(), kUsualRows * RowHeight() + 2 * frameWidth()};
}

void CardListView::UpdateScrollBar() {
  verticalScrollBar()->setRange(0, std::max(0, row_count_ - PageRows()));
  verticalScrollBar()->setPageStep(PageRows());
  verticalScrollBar()->setSingleStep(1);
}

void CardListView::ScrollTo(int row) {
  if (row < TopRow()) {
    SetTopRow(row);
  } else if (row >= TopRow() + PageRows()) {
    SetTopRow(row - PageRows() + 1);
  }
}

void CardListView::resizeEvent(QResizeEvent* event) {
  QAbstractScrollArea::resizeEvent(event);
  UpdateScrollBar();
}

void CardListView::scrollContentsBy(int /*dx*/, int dy) {
  viewport()->scroll(0, dy * RowHeight());
}

void CardListView::changeEvent(QEvent* event) {
  QAbstractScrollArea::changeEvent(event);
  pictures_ = {};
  if (event->type() != QEvent::FontChange) return;
  updateGeometry();
  UpdateScrollBar();
}

bool CardListView::viewportEvent(QEvent* event) {
  // Rows are not selected by hovering or touched by the toolkit's own tips.
  if (event->type() == QEvent::ToolTip) return true;
  return QAbstractScrollArea::viewportEvent(event);
}

const CardListView::Row& CardListView::RowToPaint(int row) {
  auto found = rows_.find(row);
  if (found == rows_.end()) {
    if (rows_.size() > PageRows() + kSpareRows) rows_.clear();
    const bool flagged = source_.ShowsFlagColumn() && source_.IsFlagged(row);
    found = rows_.insert(row, {source_.Label(row), source_.IsMarked(row), flagged});
  }
  return *found;
}

const CardListView::Pictures& CardListView::PicturesToPaint() {
  const qreal pixel_ratio = devicePixelRatioF();
  if (pictures_.mark[0].isNull() || pictures_.mark[0].devicePixelRatio() != pixel_ratio) {
    const QSize size(PictureWidth(), std::min(PictureWidth(), RowHeight()));
    QPalette on_list = palette();
    on_list.setColor(QPalette::Active, QPalette::Button, palette().color(QPalette::Base));
    const FaceTones rest = TonesFor(on_list, true);
    const FaceTones selected = SelectedTones(SelectedOn(palette()));
    pictures_.mark[0] = PaintFace(Face::kListMark, size, pixel_ratio, rest);
    pictures_.mark[1] = PaintFace(Face::kListMark, size, pixel_ratio, selected);
    pictures_.flag[0] = PaintFace(Face::kListFlag, size, pixel_ratio, rest);
    pictures_.flag[1] = PaintFace(Face::kListFlag, size, pixel_ratio, selected);
  }
  return pictures_;
}

void CardListView::PaintLabel(QPainter& painter, const QRect& box, const QString& label,
                              int text_left) const {
  const QList<int> edges = columns_.isEmpty() ? QList<int>{text_left} : columns_;
  const QStringList texts = columns_.isEmpty() ? QStringList{label} : label.split(u'\t');
  for (qsizetype i = 0; i < edges.size() && i < texts.size(); ++i) {
    const int left = std::max(edges[i], text_left);
    const int right = i + 1 < edges.size() ? edges[i + 1] - kRowPadding : box.right();
    const QRect cell(left, box.top(), right - left, box.height());
    const QString shown = fontMetrics().elidedText(texts[i], Qt::ElideRight, cell.width());
    painter.drawText(cell, Qt::AlignVCenter | Qt::AlignLeft | Qt::TextSingleLine, shown);
  }
}

void CardListView::PaintRow(QPainter& painter, int row) {
  const Row& shown = RowToPaint(row);
  const Pictures& pictures = PicturesToPaint();
  const QRect box = RowRect(row);
  const bool selected = row == current_ && !selection_hidden_;
  const SelectedColours colours = SelectedOn(palette());
  if (selected) painter.fillRect(box, colours.background);
  int left = 0;
  const auto paint_picture = [&](const QPixmap& picture) {
    const int top =
        box.top() + (box.height() - qRound(picture.deviceIndependentSize().height())) / 2;
    painter.drawPixmap(left, top, picture);
  };
  if (source_.ShowsFlagColumn()) {
    if (shown.flagged) paint_picture(pictures.flag[selected ? 1 : 0]);
    left += PictureWidth();
  }
  if (source_.ShowsMarkColumn()) {
    if (shown.marked) paint_picture(pictures.mark[selected ? 1 : 0]);
    left += PictureWidth();
  }
  painter.setPen(selected ? colours.text : InkFor(palette().color(QPalette::Base), palette()).blue);
  PaintLabel(painter, box, shown.label, left);
}

void CardListView::paintEvent(QPaintEvent* event) {
  QPainter painter(viewport());
  painter.setFont(font());
  if (row_count_ == 0) {
    if (hasFocus()) {
      QStyleOptionFocusRect option;
      option.initFrom(viewport());
      option.rect = QRect(1, 1, viewport()->width() - 2, RowHeight());
      option.backgroundColor = palette().color(QPalette::Base);
      option.state |= QStyle::State_KeyboardFocusChange;
      style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
    }
    TellPainted();
    return;
  }
  const QRect area = event->rect();
  const int first = TopRow() + area.top() / RowHeight();
  const int last = std::min(row_count_ - 1, TopRow() + area.bottom() / RowHeight());
  for (int row = first; row <= last; ++row) PaintRow(painter, row);
  TellPainted();
}

void CardListView::TellPainted() {
  if (std::exchange(paint_told_, true)) return;
  QMetaObject::invokeMethod(
      this,
      [this] {
        paint_told_ = false;
        Q_EMIT painted();
      },
      Qt::QueuedConnection);
}

void CardListView::MoveCurrent(int row) {
  const int target = std::clamp(row, 0, row_count_ - 1);
  const bool changed = target != current_;
  SetCurrentRow(target);
  if (changed) Q_EMIT currentRowChanged(target);
}

int CardListView::TargetOf(int key) const {
  switch (key) {
    case Qt::Key_Up:
      return current_ - 1;
    case Qt::Key_Down:
      return current_ + 1;
    case Qt::Key_PageUp:
      return current_ - std::max(1, PageRows() - 1);
    case Qt::Key_PageDown:
      return current_ + std::max(1, PageRows() - 1);
    case Qt::Key_Home:
      return 0;
    default:
      return row_count_ - 1;
  }
}

bool CardListView::HandleNavigation(const QKeyEvent& event) {
  switch (event.key()) {
    case Qt::Key_Up:
    case Qt::Key_Down:
      if (HasMarkModifier(event)) {
        Q_EMIT markAndStep(event.key() == Qt::Key_Up ? -1 : 1);
      } else {
        MoveCurrent(TargetOf(event.key()));
      }
      return true;
    case Qt::Key_PageUp:
    case Qt::Key_PageDown:
    case Qt::Key_Home:
    case Qt::Key_End: {
      const int from = shift_anchor_ >= 0 ? shift_anchor_ : current_;
      MoveCurrent(TargetOf(event.key()));
      if (event.modifiers() & Qt::ShiftModifier) Q_EMIT spanMoved(from, current_);
      return true;
    }
    case Qt::Key_Space:
      Q_EMIT markAndStep(1);
      return true;
    default:
      return false;
  }
}

void CardListView::keyPressEvent(QKeyEvent* event) {
  event->accept();
  if (frozen_) return;
  if (event->key() == Qt::Key_Shift) {
    if (!event->isAutoRepeat()) shift_anchor_ = current_;
  } else if (!(event->modifiers() & Qt::ShiftModifier)) {
    shift_anchor_ = -1;
  }
  if (row_count_ > 0 && HandleNavigation(*event)) return;
  if (const auto letter = LetterOfKey(*event)) {
    Q_EMIT letterTyped(*letter);
    return;
  }
  event->ignore();
}

void CardListView::mousePressEvent(QMouseEvent* event) {
  const int row = RowAt(event->position().toPoint());
  if (frozen_ || event->button() != Qt::LeftButton || row < 0) return;
  const bool shift = event->modifiers() & Qt::ShiftModifier;
  const int from = shift && shift_anchor_ >= 0 ? shift_anchor_ : current_;
  MoveCurrent(row);
  if (event->modifiers() & Qt::ControlModifier) {
    selection_hidden_ = true;
    viewport()->update(RowRect(row));
  }
  Q_EMIT rowClicked(row, event->modifiers());
  if (shift) Q_EMIT spanMoved(from, row);
}

void CardListView::mouseDoubleClickEvent(QMouseEvent* event) {
  const int row = RowAt(event->position().toPoint());
  if (frozen_ || event->button() != Qt::LeftButton || row < 0) return;
  Q_EMIT rowDoubleClicked(row);
}

void CardListView::focusInEvent(QFocusEvent* event) {
  const Qt::FocusReason reason = event->reason();
  QAbstractScrollArea::focusInEvent(event);
  viewport()->update();
  Q_EMIT focusEntered(reason);
}

void CardListView::focusOutEvent(QFocusEvent* event) {
  shift_anchor_ = -1;
  QAbstractScrollArea::focusOutEvent(event);
  viewport()->update();
}

// Screen readers hear the current row as the list's description.
void CardListView::TellAccessibility() {
  if (!QAccessible::isActive()) return;
  setAccessibleDescription(current_ < 0 ? QString() : RowToPaint(current_).label);
}

}  // namespace carnetel::desktop
