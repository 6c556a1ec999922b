// The preferences as a dialog: the radios and the check box of a PreferencesForm, which they keep
// up to date while the user chooses. It decides nothing; what "Ok" does is the caller's.
#pragma once

#include <QDialog>

#include "shell/preferences.h"

class QButtonGroup;
class QCheckBox;
class QGroupBox;

namespace carnetel::desktop {

class PreferencesDialog : public QDialog {
  Q_OBJECT

 public:
  // `form` outlives the dialog.
  PreferencesDialog(PreferencesForm& form, QWidget* parent);

 Q_SIGNALS:
  void helpWanted();

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  QGroupBox* BuildIndexBox();
  QGroupBox* BuildStyleBox();
  QGroupBox* BuildZoneBox();
  QGroupBox* BuildStartBox();
  void BuildBalloons();
  QWidget* BuildButtons();
  // The styles of the chosen index alone can be chosen.
  void EnableStyles();

  PreferencesForm& form_;
  QButtonGroup* person_styles_ = nullptr;
  QButtonGroup* company_styles_ = nullptr;
  QCheckBox* balloons_ = nullptr;
};

}  // namespace carnetel::desktop
