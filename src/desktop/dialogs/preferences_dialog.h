// The preferences as a dialog: the radios and the check box of a PreferencesForm, which they keep
// up to date while the user chooses. It decides nothing; what "Ok" does is the caller's.
#pragma once

#include "desktop/dialogs/fixed_dialog.h"
#include "shell/preferences.h"

class QButtonGroup;
class QCheckBox;
class QGroupBox;
class QHBoxLayout;

namespace carnetel::desktop {

class PreferencesDialog : public FixedDialog {
  Q_OBJECT

 public:
  // `form` outlives the dialog.
  PreferencesDialog(PreferencesForm& form, QWidget* parent);

 private:
  QGroupBox* BuildIndexBox();
  QGroupBox* BuildStyleBox();
  QGroupBox* BuildZoneBox();
  QGroupBox* BuildStartBox();
  void BuildBalloons();
  QHBoxLayout* BuildButtons();
  // The styles of the chosen index alone can be chosen.
  void EnableStyles();

  PreferencesForm& form_;
  QButtonGroup* person_styles_ = nullptr;
  QButtonGroup* company_styles_ = nullptr;
  QCheckBox* balloons_ = nullptr;
};

}  // namespace carnetel::desktop
