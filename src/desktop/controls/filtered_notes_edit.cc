#include "desktop/controls/filtered_notes_edit.h"

#include <QMimeData>
#include <QScopedValueRollback>
#include <QStyle>
#include <limits>

#include "desktop/controls/entry_text.h"

namespace carnetel::desktop {
namespace {

// The toolkit parts the lines of a selection by the paragraph separator.
QString WithLineFeeds(QString selected) {
  return selected.replace(QChar::ParagraphSeparator, QLatin1Char('\n'));
}

}  // namespace

FilteredNotesEdit::FilteredNotesEdit(int id, int limit, QWidget* parent)
    : QPlainTextEdit(parent), limit_(limit) {
  setObjectName(QString::number(id));
  setAcceptDrops(false);
  setTabChangesFocus(true);
  setLineWrapMode(QPlainTextEdit::WidgetWidth);
  connect(this, &QPlainTextEdit::textChanged, this, [this] {
    if (!showing_) Q_EMIT textEdited();
  });
}

void FilteredNotesEdit::SetText(const QString& text) {
  const QScopedValueRollback<bool> showing(showing_, true);
  setPlainText(text);
}

QString FilteredNotesEdit::Admit(FilteredText filtered) {
  if (limit_ > 0) {
    const size_t kept = EntryBytes(Text()) - EntryBytes(WithLineFeeds(textCursor().selectedText()));
    const auto limit = static_cast<size_t>(limit_);
    CutToRoom(filtered, kept < limit ? limit - kept : 0);
  }
  if (filtered.refused) beep_();
  return FromCharacters(filtered.text);
}

void FilteredNotesEdit::Insert(const FilteredText& filtered) {
  const QString admitted = Admit(filtered);
  if (admitted.isEmpty()) return;
  textCursor().insertText(admitted);
  ensureCursorVisible();
}

void FilteredNotesEdit::keyPressEvent(QKeyEvent* event) {
  const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
  event->accept();
  if (frozen_) {
    if (IsDialogKey(*event)) event->ignore();
  } else if (enter && !(event->modifiers() & Qt::ControlModifier)) {
    Q_EMIT returnPressed();
  } else if (enter) {
    if (!isReadOnly()) Insert({U"\n"});
  } else if (!isReadOnly() && EntersText(*event)) {
    Insert(FilterTyped(rule_, ToCharacters(event->text())));
  } else {
    QPlainTextEdit::keyPressEvent(event);
  }
}

void FilteredNotesEdit::inputMethodEvent(QInputMethodEvent* event) {
  if (frozen_ || isReadOnly()) {
    event->ignore();
    return;
  }
  if (event->commitString().isEmpty()) {
    QPlainTextEdit::inputMethodEvent(event);
    return;
  }
  const QString admitted = Admit(FilterTyped(rule_, ToCharacters(event->commitString())));
  QInputMethodEvent filtered(event->preeditString(), event->attributes());
  filtered.setCommitString(admitted, event->replacementStart(), event->replacementLength());
  QPlainTextEdit::inputMethodEvent(&filtered);
}

// Every paste comes this way, from keys, menu and middle button.
void FilteredNotesEdit::insertFromMimeData(const QMimeData* source) {
  if (isReadOnly() || frozen_ || !source->hasText()) return;
  Insert(FilterPasted(rule_, LineBreaks::kKeep, ToCharacters(source->text())));
}

void FilteredNotesEdit::contextMenuEvent(QContextMenuEvent* event) {
  if (!frozen_) QPlainTextEdit::contextMenuEvent(event);
}

void FilteredNotesEdit::mousePressEvent(QMouseEvent* event) {
  if (!frozen_) QPlainTextEdit::mousePressEvent(event);
}

void FilteredNotesEdit::focusInEvent(QFocusEvent* event) {
  const Qt::FocusReason reason = event->reason();
  QPlainTextEdit::focusInEvent(event);
  Q_EMIT focusEntered(reason);
}

void FilteredNotesEdit::focusOutEvent(QFocusEvent* event) {
  const Qt::FocusReason reason = event->reason();
  QPlainTextEdit::focusOutEvent(event);
  Q_EMIT focusLeft(reason);
}

void FilteredNotesEdit::SetFlat(bool flat) {
  const int framed = style()->pixelMetric(QStyle::PM_DefaultFrameWidth, nullptr, this);
  setFrameShape(flat ? QFrame::NoFrame : QFrame::StyledPanel);
  const int margin = flat ? framed : 0;
  setViewportMargins(margin, margin, margin, margin);
}

}  // namespace carnetel::desktop
