// "Recherche par numéro": goes to a row of the list by its number. Which numbers are rows is said
// by NumberForm.
#pragma once

#include "desktop/controls/filtered_edit.h"
#include "desktop/dialogs/fixed_dialog.h"
#include "shell/search_form.h"

namespace carnetel::desktop {

class NumberDialog : public FixedDialog {
  Q_OBJECT

 public:
  // The form must outlive the dialog.
  NumberDialog(NumberForm& form, QWidget* parent);

  // For a number that is no row.
  void SetBeeper(Beeper beeper) { beep_ = std::move(beeper); }

 private:
  void Confirm();

  NumberForm& form_;
  FilteredEdit* number_;
  Beeper beep_ = SystemBeep;
};

}  // namespace carnetel::desktop
