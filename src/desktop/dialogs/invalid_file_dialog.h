// "Erreur !   Carnetel invalide": the file that is no directory and what to do about it. What each
// choice does is said by InvalidFileForm.
#pragma once

#include <QButtonGroup>

#include "desktop/dialogs/fixed_dialog.h"
#include "desktop/dialogs/path_label.h"
#include "shell/invalid_file.h"

class QVBoxLayout;

namespace carnetel::desktop {

class InvalidFileDialog : public FixedDialog {
  Q_OBJECT

 public:
  // The form must outlive the dialog.
  InvalidFileDialog(InvalidFileForm& form, QWidget* parent);

  // How it ended; closed as long as it has not.
  [[nodiscard]] InvalidFileEnd end() const { return end_; }

 private:
  void AddChoices(QVBoxLayout& column);
  // Shows the state of the form and gives the focus to its choice.
  void ShowState();
  void Confirm();

  InvalidFileForm& form_;
  PathLabel* path_;
  QButtonGroup* choices_;
  InvalidFileEnd end_ = InvalidFileEnd::kClosed;
};

}  // namespace carnetel::desktop
