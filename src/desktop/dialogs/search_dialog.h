// "Recherche": a card form to fill in, the first card that has all of it, and from there the next
// and the previous ones, with what fitted in inverted colours. Which card is found and when the
// buttons are on is said by SearchForm. The fields can be typed in after a hit, too, but the steps
// go on with the example that was searched for.
#pragma once

#include "desktop/controls/beeper.h"
#include "desktop/dialogs/fixed_dialog.h"
#include "desktop/form/card_panel.h"
#include "shell/search_form.h"

namespace carnetel::desktop {

class SearchDialog : public FixedDialog {
  Q_OBJECT

 public:
  // The form must outlive the dialog.
  SearchDialog(SearchForm& form, QWidget* parent);

  CardPanel& panel() { return *panel_; }
  // For a step that leads nowhere and a company that may not start so.
  void SetBeeper(Beeper beeper) { beep_ = std::move(beeper); }

 private:
  QLayout* MakeButtons();
  void FieldEdited(int control);
  void Search();
  void Step(WalkDirection direction);
  void EnableButtons();
  void ShowCard();
  // The pieces of a shown text that fitted the example's field.
  [[nodiscard]] QList<TextRun> Matches(const QString& text, int field) const;

  SearchForm& form_;
  CardPanel* panel_;
  QPushButton* search_ = nullptr;
  QPushButton* next_ = nullptr;
  QPushButton* previous_ = nullptr;
  Beeper beep_ = SystemBeep;
};

}  // namespace carnetel::desktop
