// The name of a saved set: criteria of a selection, parameters of a transfer.
#pragma once

#include <string>

#include "desktop/controls/filtered_edit.h"
#include "desktop/dialogs/fixed_dialog.h"
#include "shell/dialog_host.h"

namespace carnetel::desktop {

class NameDialog : public FixedDialog {
  Q_OBJECT

 public:
  // `offered` is UTF-8.
  NameDialog(SetsDialog dialog, const std::string& offered, QWidget* parent);

  // UTF-8; may be empty.
  [[nodiscard]] std::string name() const { return name_->text().toStdString(); }

 private:
  QLayout* MakeButtons(bool needs_name);

  FilteredEdit* name_;
};

}  // namespace carnetel::desktop
