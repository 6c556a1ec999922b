// "Descriptif de l'carnetel": path and description of the open directory and, with seats, whose it
// is. What the buttons do is said by DescriptionForm.
#pragma once

#include <QCheckBox>
#include <QLabel>

#include "desktop/controls/filtered_edit.h"
#include "desktop/dialogs/fixed_dialog.h"
#include "shell/description.h"

class QGridLayout;

namespace carnetel::desktop {

class DescriptionDialog : public FixedDialog {
  Q_OBJECT

 public:
  // The form must outlive the dialog.
  DescriptionDialog(DescriptionForm& form, QWidget* parent);

  // Abandons.
  void reject() override;

 private:
  void AddFields(QGridLayout& grid);
  void AddSeatLines(QGridLayout& grid);
  QLayout* MakeButtons();
  void ShowSeatLines();
  void Confirm();
  void Restore();

  DescriptionForm& form_;
  FilteredEdit* description_ = nullptr;
  QCheckBox* private_box_ = nullptr;  // null without seats, as the line beside it
  QLabel* owner_line_ = nullptr;
};

}  // namespace carnetel::desktop
