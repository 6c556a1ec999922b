// The one-line edit field of all forms. It lets in only what its entry rule accepts, by whatever
// way the text comes (keys, dead keys, input methods, paste), up to a limit in bytes of code page
// 850, and beeps once for what it refuses. It takes no drops: those belong to the window.
#pragma once

#include <QLineEdit>
#include <QList>

#include "base/key_filter.h"
#include "desktop/controls/beeper.h"

namespace carnetel::desktop {

// A piece of a field's text: first character and number of characters.
struct TextRun {
  qsizetype start;
  qsizetype length;
};

class FilteredEdit : public QLineEdit {
  Q_OBJECT

 public:
  // `id` becomes the object name; `limit` in bytes, 0 for none.
  explicit FilteredEdit(int id, const EntryRule& rule = {}, int limit = 0,
                        QWidget* parent = nullptr);

  // A limit below 1 changes neither limit nor rule, as fields of unknown size ask for it.
  void SetEntryRule(const EntryRule& rule, int limit);
  [[nodiscard]] const EntryRule& entry_rule() const { return rule_; }

  // A frozen field takes no input at all and says nothing about it.
  void SetFrozen(bool frozen) { frozen_ = frozen; }
  [[nodiscard]] bool IsFrozen() const { return frozen_; }

  // Without its frame, the text on the same spot and the field of the same size.
  void SetFlat(bool flat);

  // Puts back the text from before the user's last change and forgets what could be undone.
  void TakeBackEdit();
  // Forgets what could be undone; the text stays.
  void ForgetUndo();

  void SetBeeper(Beeper beeper) { beep_ = std::move(beeper); }

 Q_SIGNALS:
  // Before and after the toolkit's own handling of the focus; `reason` see focus_reason.h.
  void focusEntered(Qt::FocusReason reason);
  void focusLeft(Qt::FocusReason reason);

 protected:
  // The pieces of the text to show in inverted colours; none here.
  [[nodiscard]] virtual QList<TextRun> InvertedRuns() const { return {}; }

  void keyPressEvent(QKeyEvent* event) override;
  void inputMethodEvent(QInputMethodEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
  void focusOutEvent(QFocusEvent* event) override;
  void paintEvent(QPaintEvent* event) override;

 private:
  [[nodiscard]] size_t RoomForInsertion() const;
  // What of `typed` may enter at the cursor; beeps for the rest.
  QString Admit(FilteredText filtered);
  void Paste(const QString& text);
  void PasteClipboard();
  void PaintRun(QPainter& painter, const QRect& area, const TextRun& run) const;

  EntryRule rule_;
  int limit_ = 0;
  bool frozen_ = false;
  bool flat_ = false;
  QString text_before_edit_;
  QString text_now_;
  Beeper beep_ = SystemBeep;
};

}  // namespace carnetel::desktop
