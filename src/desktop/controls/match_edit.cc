#include "desktop/controls/match_edit.h"

namespace carnetel::desktop {

MatchEdit::MatchEdit(int id, const EntryRule& rule, int limit, QWidget* parent)
    : FilteredEdit(id, rule, limit, parent) {
  connect(this, &QLineEdit::textChanged, this, [this] { SetMatches({}); });
}

void MatchEdit::SetMatches(const QList<TextRun>& matches) {
  matches_ = matches;
  update();
}

QList<TextRun> MatchEdit::InvertedRuns() const {
  return hasFocus() ? QList<TextRun>() : matches_;
}

}  // namespace carnetel::desktop
