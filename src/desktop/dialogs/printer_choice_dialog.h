// "Installation de l'imprimante": the printers of the system, one of which Carnetel uses from then
// on, and the way to the settings of each.
#pragma once

#include <QListWidget>

#include "desktop/dialogs/fixed_dialog.h"
#include "printing/printer_choice.h"

namespace carnetel::desktop {

class PrinterChoiceDialog : public FixedDialog {
  Q_OBJECT

 public:
  // `form` outlives the dialog.
  PrinterChoiceDialog(PrinterChoiceForm& form, QWidget* parent);

 private:
  void FillList();
  QLayout* MakeButtons();

  PrinterChoiceForm& form_;
  QListWidget* list_;
};

}  // namespace carnetel::desktop
