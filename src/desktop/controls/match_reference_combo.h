// The references of a search: the row that is picked shows in inverted colours which pieces of it
// fitted, as MatchEdit does.
#pragma once

#include "desktop/controls/match_edit.h"
#include "desktop/controls/reference_combo.h"

namespace carnetel::desktop {

class MatchReferenceCombo : public ReferenceCombo {
  Q_OBJECT

 public:
  MatchReferenceCombo(int id, int limit, QWidget* parent = nullptr);

  // Of the texts at hand, one list a row. Picks the first row that has any, so that it is seen.
  void SetMatches(const QList<QList<TextRun>>& matches);

 private:
  void ShowMatches();

  QList<QList<TextRun>> matches_;
};

}  // namespace carnetel::desktop
