#include "desktop/controls/match_reference_combo.h"

#include <algorithm>

namespace carnetel::desktop {

MatchReferenceCombo::MatchReferenceCombo(int id, int limit, QWidget* parent)
    : ReferenceCombo(id, new MatchEdit(id, {}, limit), parent) {
  connect(this, &QComboBox::currentIndexChanged, this, [this] { ShowMatches(); });
  connect(edit(), &QLineEdit::textEdited, this, [this] {
    const int row = currentIndex();
    if (row >= 0 && row < matches_.size()) matches_[row].clear();
  });
}

void MatchReferenceCombo::SetMatches(const QList<QList<TextRun>>& matches) {
  matches_ = matches;
  const auto fits = [](const QList<TextRun>& row) { return !row.isEmpty(); };
  const auto first = std::ranges::find_if(matches_, fits);
  if (first != matches_.end()) setCurrentIndex(static_cast<int>(first - matches_.begin()));
  ShowMatches();
}

void MatchReferenceCombo::ShowMatches() {
  static_cast<MatchEdit*>(edit())->SetMatches(matches_.value(currentIndex()));
}

}  // namespace carnetel::desktop
