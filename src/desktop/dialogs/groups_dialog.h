// "Gestion de Groupe": the groups of the open directory, and what can be done with them. What the
// buttons do and when they are on is said by GroupsForm.
#pragma once

#include <QLabel>
#include <QListWidget>

#include "desktop/controls/beeper.h"
#include "desktop/dialogs/fixed_dialog.h"
#include "selection/groups_form.h"

class QVBoxLayout;

namespace carnetel::desktop {

class GroupsDialog : public FixedDialog {
  Q_OBJECT

 public:
  // The form must outlive the dialog.
  GroupsDialog(GroupsForm& form, QWidget* parent);

  // For an action without a selected group.
  void SetBeeper(Beeper beeper) { beep_ = std::move(beeper); }

 protected:
  void keyPressEvent(QKeyEvent* event) override;

 private:
  using Action = GroupsForm::Outcome (GroupsForm::*)();

  QLayout* MakeListSide();
  QLayout* MakeButtonSide();
  QPushButton* AddButton(QVBoxLayout& column, int id, const QString& caption);
  QPushButton* AddAction(QVBoxLayout& column, int id, const QString& caption, Action action);
  void Act(Action action);
  // Shows the groups of the form with the selected one.
  void ShowGroups();
  // What follows the list: mode and buttons.
  void ShowState();
  void SetEnabled(QPushButton* button, bool enabled);

  GroupsForm& form_;
  QListWidget* list_;
  QLabel* mode_;
  QPushButton* create_ = nullptr;
  QPushButton* replace_ = nullptr;
  QPushButton* merge_ = nullptr;
  QPushButton* rename_ = nullptr;
  QPushButton* remove_ = nullptr;
  Beeper beep_ = SystemBeep;
};

}  // namespace carnetel::desktop
