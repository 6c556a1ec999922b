// Consultation: one card after the other, read-only, beside its window: the marked ones of the main
// window.
#pragma once

#include <QDialog>
#include <QHBoxLayout>
#include <QPushButton>

#include "desktop/form/card_panel.h"

namespace carnetel::desktop {

class Consultation : public QDialog {
  Q_OBJECT

 public:
  explicit Consultation(QWidget* parent) : Consultation(kMarkedCards, parent) {}

  CardPanel& panel() { return *panel_; }

 Q_SIGNALS:
  // 1 for the next card, -1 for the one before.
  void stepped(int step);
  void helpWanted();

 protected:
  // `number` is its template's.
  Consultation(int number, QWidget* parent);
  // One more button, behind the two steps.
  QPushButton* AddButton(int id, const QString& text);

  void keyPressEvent(QKeyEvent* event) override;
  bool focusNextPrevChild(bool next) override;

 private:
  static constexpr int kMarkedCards = 126;

  CardPanel* panel_;
  QHBoxLayout* buttons_;
};

}  // namespace carnetel::desktop
