// "Importation" and "Exportation - Gestion et Paramétrage": the two paths, type and character set
// of the foreign file, and the buttons that choose a file, lay out the parameters, keep them under
// names and transfer. What they do and refuse is said by TransferForm.
#pragma once

#include "desktop/controls/filtered_edit.h"
#include "desktop/controls/picker_combo.h"
#include "desktop/dialogs/fixed_dialog.h"
#include "transfer/transfer_form.h"

class QGridLayout;

namespace carnetel::desktop {

class TransferDialog : public FixedDialog {
  Q_OBJECT

 public:
  // `form` outlives the dialog.
  TransferDialog(TransferForm& form, QWidget* parent);

 private:
  FilteredEdit* MakePath(const char* name, TransferSide side);
  PickerCombo* MakeList(const char* name, const QStringList& rows);
  QPushButton* MakeNamed(const char* name, const QString& caption);
  QGridLayout* MakeGrid();
  QLayout* MakeButtons();
  // Everything as the form has it.
  void ShowForm();
  [[nodiscard]] FilteredEdit* PathOf(TransferSide side) const;

  void Browse();
  void SetParameters();
  void ManageProfiles();
  void Act();

  TransferForm& form_;
  FilteredEdit* source_ = nullptr;
  FilteredEdit* destination_ = nullptr;
  PickerCombo* type_ = nullptr;
  PickerCombo* charset_ = nullptr;
  QPushButton* parameters_ = nullptr;
  QPushButton* action_ = nullptr;
  TransferSide focused_;  // the side that had the focus last
  TransferSide edited_;   // the side whose path changed last
};

}  // namespace carnetel::desktop
