// The notes field: a few lines of text under the same entry rules as FilteredEdit. A line break
// takes two bytes of the limit. Tab goes to the next control, Enter confirms the form and Ctrl with
// Enter breaks the line.
#pragma once

#include <QPlainTextEdit>

#include "base/key_filter.h"
#include "desktop/controls/beeper.h"

namespace carnetel::desktop {

class FilteredNotesEdit : public QPlainTextEdit {
  Q_OBJECT

 public:
  // `id` becomes the object name; `limit` in bytes, 0 for none.
  FilteredNotesEdit(int id, int limit, QWidget* parent = nullptr);

  // Shows another text, lines parted by "\n" or CR LF; nothing can be undone, textEdited is silent.
  void SetText(const QString& text);
  // The text with "\n" between lines.
  [[nodiscard]] QString Text() const { return toPlainText(); }

  // A frozen field takes no input at all and says nothing about it.
  void SetFrozen(bool frozen) { frozen_ = frozen; }

  // Without its frame, the text on the same spot and the field of the same size.
  void SetFlat(bool flat);

  void SetBeeper(Beeper beeper) { beep_ = std::move(beeper); }

 Q_SIGNALS:
  void textEdited();
  void returnPressed();
  void focusEntered(Qt::FocusReason reason);
  void focusLeft(Qt::FocusReason reason);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void inputMethodEvent(QInputMethodEvent* event) override;
  void insertFromMimeData(const QMimeData* source) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;

 private:
  [[nodiscard]] QString Admit(FilteredText filtered);
  void Insert(const FilteredText& filtered);

  EntryRule rule_;
  int limit_;
  bool frozen_ = false;
  bool showing_ = false;  // SetText is at work: the change is not the user's
  Beeper beep_ = SystemBeep;
};

}  // namespace carnetel::desktop
