// "Mode d'importation de fiches": the destination of a transfer is there already. Its cards stay or
// go.
#pragma once

#include <QRadioButton>

#include "desktop/dialogs/fixed_dialog.h"

namespace carnetel::desktop {

class TransferModeDialog : public FixedDialog {
  Q_OBJECT

 public:
  TransferModeDialog(bool imports, QWidget* parent);

  // As it is chosen now.
  [[nodiscard]] bool replaces() const { return replace_->isChecked(); }

 private:
  QRadioButton* MakeChoice(const char* name, const char* caption);
  QLayout* MakeButtons();

  QRadioButton* replace_ = nullptr;
};

}  // namespace carnetel::desktop
