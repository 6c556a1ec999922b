// The notes field of a search: as MatchEdit, it shows in inverted colours which pieces of its text
// fitted, until they are typed over and never while it has the focus.
#pragma once

#include "desktop/controls/filtered_edit.h"
#include "desktop/controls/filtered_notes_edit.h"

namespace carnetel::desktop {

class MatchNotesEdit : public FilteredNotesEdit {
  Q_OBJECT

 public:
  MatchNotesEdit(int id, int limit, QWidget* parent = nullptr);

  // Places in Text(), where a line break is one character; they go with the next change of it.
  void SetMatches(const QList<TextRun>& matches);

 protected:
  void changeEvent(QEvent* event) override;

 private:
  void ShowMatches(bool show);

  QList<TextRun> matches_;
};

}  // namespace carnetel::desktop
