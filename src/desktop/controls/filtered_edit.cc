#include "desktop/controls/filtered_edit.h"

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QMenu>
#include <QPainter>
#include <QPointer>
#include <QSignalBlocker>
#include <QStyleOptionFrame>
#include <limits>

#include "desktop/controls/entry_text.h"

namespace carnetel::desktop {
namespace {

QRect ContentsOf(const QLineEdit& edit, int frame_width) {
  QStyleOptionFrame option;
  option.initFrom(&edit);
  option.rect = edit.rect();
  option.lineWidth = frame_width;
  return edit.style()->subElementRect(QStyle::SE_LineEditContents, &option, &edit);
}

}  // namespace

FilteredEdit::FilteredEdit(int id, const EntryRule& rule, int limit, QWidget* parent)
    : QLineEdit(parent), rule_(rule) {
  setObjectName(QString::number(id));
  setAcceptDrops(false);
  setDragEnabled(false);
  SetEntryRule(rule, limit);
  connect(this, &QLineEdit::textChanged, this,
          [this] { text_before_edit_ = std::exchange(text_now_, text()); });
}

void FilteredEdit::SetEntryRule(const EntryRule& rule, int limit) {
  if (limit < 1) return;
  rule_ = rule;
  limit_ = limit;
}

size_t FilteredEdit::RoomForInsertion() const {
  if (limit_ < 1) return std::numeric_limits<size_t>::max();
  const size_t kept = EntryBytes(text()) - EntryBytes(selectedText());
  const auto limit = static_cast<size_t>(limit_);
  return kept < limit ? limit - kept : 0;
}

QString FilteredEdit::Admit(FilteredText filtered) {
  CutToRoom(filtered, RoomForInsertion());
  if (filtered.refused) beep_();
  return FromCharacters(filtered.text);
}

void FilteredEdit::Paste(const QString& text) {
  if (isReadOnly() || frozen_ || text.isEmpty()) return;
  const QString admitted = Admit(FilterPasted(rule_, LineBreaks::kToBlank, ToCharacters(text)));
  if (!admitted.isEmpty()) insert(admitted);
}

void FilteredEdit::PasteClipboard() {
  Paste(QApplication::clipboard()->text());
}

void FilteredEdit::keyPressEvent(QKeyEvent* event) {
  if (frozen_) {
    if (IsDialogKey(*event)) {
      event->ignore();
    } else {
      event->accept();
    }
    return;
  }
  if (event->matches(QKeySequence::Paste)) {
    PasteClipboard();
    event->accept();
    return;
  }
  if (isReadOnly() || !EntersText(*event)) {
    QLineEdit::keyPressEvent(event);
    return;
  }
  const QString admitted = Admit(FilterTyped(rule_, ToCharacters(event->text())));
  if (!admitted.isEmpty()) insert(admitted);
  event->accept();
}

void FilteredEdit::inputMethodEvent(QInputMethodEvent* event) {
  if (frozen_ || isReadOnly()) {
    event->ignore();
    return;
  }
  if (event->commitString().isEmpty()) {
    QLineEdit::inputMethodEvent(event);
    return;
  }
  const QString admitted = Admit(FilterTyped(rule_, ToCharacters(event->commitString())));
  QInputMethodEvent filtered(event->preeditString(), event->attributes());
  filtered.setCommitString(admitted, event->replacementStart(), event->replacementLength());
  QLineEdit::inputMethodEvent(&filtered);
}

void FilteredEdit::mousePressEvent(QMouseEvent* event) {
  if (!frozen_) QLineEdit::mousePressEvent(event);
}

// A middle click pastes the selection of another window.
void FilteredEdit::mouseReleaseEvent(QMouseEvent* event) {
  QClipboard* clipboard = QApplication::clipboard();
  if (event->button() != Qt::MiddleButton || !clipboard->supportsSelection()) {
    QLineEdit::mouseReleaseEvent(event);
    return;
  }
  event->accept();
  if (isReadOnly() || frozen_) return;
  deselect();
  setCursorPosition(cursorPositionAt(event->position().toPoint()));
  Paste(clipboard->text(QClipboard::Selection));
}

// A menu of our own: the standard one pastes past the filter, and its entries have no names to know
// that one by.
void FilteredEdit::contextMenuEvent(QContextMenuEvent* event) {
  if (frozen_) return;
  auto* menu = new QMenu(this);
  menu->setAttribute(Qt::WA_DeleteOnClose);
  const auto add = [&](const QString& name, const QString& text, bool enabled, auto act) {
    QAction* action = menu->addAction(text, this, act);
    action->setObjectName(name);
    action->setEnabled(enabled);
  };
  const bool writable = !isReadOnly();
  const bool pastes = writable && !QApplication::clipboard()->text().isEmpty();
  add(QStringLiteral("undo"), QStringLiteral("&Annuler"), isUndoAvailable(), &QLineEdit::undo);
  add(QStringLiteral("redo"), QStringLiteral("&Rétablir"), isRedoAvailable(), &QLineEdit::redo);
  menu->addSeparator();
  add(QStringLiteral("cut"), QStringLiteral("Cou&per"), writable && hasSelectedText(),
      &QLineEdit::cut);
  add(QStringLiteral("copy"), QStringLiteral("&Copier"), hasSelectedText(), &QLineEdit::copy);
  add(QStringLiteral("paste"), QStringLiteral("C&oller"), pastes, &FilteredEdit::PasteClipboard);
  menu->addSeparator();
  add(QStringLiteral("all"), QStringLiteral("&Tout sélectionner"), !text().isEmpty(),
      &QLineEdit::selectAll);
  menu->popup(event->globalPos());
}

void FilteredEdit::focusInEvent(QFocusEvent* event) {
  const Qt::FocusReason reason = event->reason();
  QLineEdit::focusInEvent(event);
  Q_EMIT focusEntered(reason);
}

void FilteredEdit::focusOutEvent(QFocusEvent* event) {
  const Qt::FocusReason reason = event->reason();
  QLineEdit::focusOutEvent(event);
  Q_EMIT focusLeft(reason);
}

// The toolkit tells textEdited before textChanged: who takes back on the first one comes before the
// change was noted.
void FilteredEdit::TakeBackEdit() {
  const QString former = text() == text_now_ ? text_before_edit_ : text_now_;
  setText(former);
  text_before_edit_ = former;
}

void FilteredEdit::ForgetUndo() {
  const QSignalBlocker quiet(this);
  const int cursor = cursorPosition();
  setText(text());
  setCursorPosition(cursor);
}

void FilteredEdit::SetFlat(bool flat) {
  if (flat == flat_) return;
  flat_ = flat;
  const int frame_width = style()->pixelMetric(QStyle::PM_DefaultFrameWidth, nullptr, this);
  const QRect framed = ContentsOf(*this, frame_width);
  const QRect bare = ContentsOf(*this, 0);
  setFrame(!flat);
  setTextMargins(flat ? QMargins(framed.left() - bare.left(), framed.top() - bare.top(),
                                 bare.right() - framed.right(), bare.bottom() - framed.bottom())
                      : QMargins());
}

// Places are those of the text's own extents, from the cursor outward: the toolkit does not tell
// how far it has scrolled.
void FilteredEdit::PaintRun(QPainter& painter, const QRect& area, const TextRun& run) const {
  const QFontMetrics metrics = fontMetrics();
  const int origin =
      cursorRect().center().x() - metrics.horizontalAdvance(text().left(cursorPosition()));
  const int left = origin + metrics.horizontalAdvance(text().left(run.start));
  const QString piece = text().mid(run.start, run.length);
  const QRect box(left, area.top() + (area.height() - metrics.height()) / 2,
                  metrics.horizontalAdvance(piece), metrics.height());
  painter.fillRect(box, palette().color(QPalette::Text));
  painter.setPen(palette().color(QPalette::Base));
  painter.drawText(QPoint(left, box.top() + metrics.ascent()), piece);
}

void FilteredEdit::paintEvent(QPaintEvent* event) {
  QLineEdit::paintEvent(event);
  const QList<TextRun> runs = InvertedRuns();
  if (runs.isEmpty()) return;
  QStyleOptionFrame option;
  initStyleOption(&option);
  const QRect area = style()->subElementRect(QStyle::SE_LineEditContents, &option, this);
  QPainter painter(this);
  painter.setClipRect(area);
  for (const TextRun& run : runs) PaintRun(painter, area, run);
}

}  // namespace carnetel::desktop
