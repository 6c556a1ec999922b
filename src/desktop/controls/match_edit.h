// An edit field that shows which pieces of its text a search was after, in inverted colours. They
// are those of the text that was set last: what the user types has none. While the field has the
// focus it looks like any other, so that cursor and selection can be seen.
#pragma once

#include "desktop/controls/filtered_edit.h"

namespace carnetel::desktop {

class MatchEdit : public FilteredEdit {
  Q_OBJECT

 public:
  explicit MatchEdit(int id, const EntryRule& rule = {}, int limit = 0, QWidget* parent = nullptr);

  // The pieces of the text at hand; they go with the next change of it.
  void SetMatches(const QList<TextRun>& matches);

 protected:
  [[nodiscard]] QList<TextRun> InvertedRuns() const override;

 private:
  QList<TextRun> matches_;
};

}  // namespace carnetel::desktop
