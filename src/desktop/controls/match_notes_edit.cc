#include "desktop/controls/match_notes_edit.h"

#include <QEvent>

namespace carnetel::desktop {

MatchNotesEdit::MatchNotesEdit(int id, int limit, QWidget* parent)
    : FilteredNotesEdit(id, limit, parent) {
  connect(this, &QPlainTextEdit::textChanged, this, [this] { SetMatches({}); });
  connect(this, &FilteredNotesEdit::focusEntered, this, [this] { ShowMatches(false); });
  connect(this, &FilteredNotesEdit::focusLeft, this, [this] { ShowMatches(true); });
}

void MatchNotesEdit::SetMatches(const QList<TextRun>& matches) {
  matches_ = matches;
  ShowMatches(!hasFocus());
}

void MatchNotesEdit::ShowMatches(bool show) {
  QList<QTextEdit::ExtraSelection> selections;
  for (const TextRun& match : show ? matches_ : QList<TextRun>()) {
    QTextEdit::ExtraSelection selection;
    selection.cursor = QTextCursor(document());
    selection.cursor.setPosition(static_cast<int>(match.start));
    selection.cursor.setPosition(static_cast<int>(match.start + match.length),
                                 QTextCursor::KeepAnchor);
    selection.format.setBackground(palette().color(QPalette::Text));
    selection.format.setForeground(palette().color(QPalette::Base));
    selections += selection;
  }
  setExtraSelections(selections);
}

void MatchNotesEdit::changeEvent(QEvent* event) {
  FilteredNotesEdit::changeEvent(event);
  if (event->type() == QEvent::PaletteChange) ShowMatches(!hasFocus());
}

}  // namespace carnetel::desktop
