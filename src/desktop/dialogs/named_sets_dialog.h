// The dialog that keeps sets under names, for criteria and for parameters of transfers. What its
// buttons do, and when, is said by NamedSetsForm.
#pragma once

#include <QListWidget>
#include <array>

#include "desktop/controls/beeper.h"
#include "desktop/dialogs/fixed_dialog.h"
#include "selection/named_sets.h"
#include "shell/dialog_host.h"

namespace carnetel::desktop {

class NamedSetsDialog : public FixedDialog {
  Q_OBJECT

 public:
  // The form must outlive the dialog.
  NamedSetsDialog(SetsDialog dialog, NamedSetsForm& form, QWidget* parent);

  void SetBeeper(Beeper beeper) { beep_ = std::move(beeper); }

 private:
  using Action = NamedSetsForm::Outcome (NamedSetsForm::*)();

  QLayout* MakeListColumn();
  QLayout* MakeButtons();
  QPushButton* MakeAction(int id, const char* caption, Action action);
  // Lets the form act, then shows what it has come to.
  void Act(Action action);
  void ShowNames();
  void EnableButtons();
  // -1 for none: a selected name can be deselected.
  [[nodiscard]] int SelectedPosition() const;

  NamedSetsForm& form_;
  QListWidget* list_;
  QPushButton* load_ = nullptr;
  QPushButton* add_ = nullptr;
  QPushButton* replace_ = nullptr;
  QPushButton* rename_ = nullptr;
  QPushButton* remove_ = nullptr;
  Beeper beep_ = SystemBeep;
};

}  // namespace carnetel::desktop
