// The drop-down of the six references: each row is a field, the edit line shows and edits the row
// picked. What is typed belongs to its row at once, so nothing is lost by picking another row or
// leaving, and a text that equals another row's never jumps there. The wheel does not change it.
#pragma once

#include <QComboBox>

#include "desktop/controls/filtered_edit.h"

namespace carnetel::desktop {

class ReferenceCombo : public QComboBox {
  Q_OBJECT

 public:
  // `id` becomes the object name; `limit` is the number of bytes that can be typed into a row.
  ReferenceCombo(int id, int limit, QWidget* parent = nullptr);
  // With an edit line of another kind, which the combo takes.
  ReferenceCombo(int id, FilteredEdit* edit, QWidget* parent = nullptr);

  // Shows these rows with the first one picked; no signal.
  void SetTexts(const QStringList& texts);
  [[nodiscard]] QStringList Texts() const;

  // The edit line: its signals tell focus, Enter and what the user types.
  [[nodiscard]] FilteredEdit* edit() const { return edit_; }

 protected:
  void wheelEvent(QWheelEvent* event) override;

 private:
  FilteredEdit* edit_;
};

}  // namespace carnetel::desktop
