#include "desktop/dialogs/window_dialogs.h"

#include <QApplication>

#include "desktop/controls/wait_cursor.h"
#include "desktop/dialogs/about_dialog.h"
#include "desktop/dialogs/description_dialog.h"
#include "desktop/dialogs/file_chooser.h"
#include "desktop/dialogs/invalid_file_dialog.h"
#include "desktop/dialogs/preferences_dialog.h"

namespace carnetel::desktop {

// Under the arrow, whatever cursor the command that opened it has.
template <class Dialog>
bool WindowDialogs::Run(Dialog& dialog) {
  QObject::connect(&dialog, &Dialog::helpWanted, &dialog, [this](int topic) { ShowHelp(topic); });
  const WaitCursorPause arrow;
  return dialog.exec() == QDialog::Accepted;
}

WindowDialogs::~WindowDialogs() {
  delete patience_;
}

QWidget* WindowDialogs::Owner() const {
  QWidget* modal = QApplication::activeModalWidget();
  return modal != nullptr ? modal : window_;
}

bool WindowDialogs::RunFilePicker(FilePicker& picker) {
  FileChooserDialog dialog(picker, Owner());
  return Run(dialog);
}

bool WindowDialogs::RunDescription(DescriptionForm& form) {
  DescriptionDialog dialog(form, Owner());
  return Run(dialog);
}

bool WindowDialogs::RunPreferences(PreferencesForm& form) {
  PreferencesDialog dialog(form, Owner());
  return Run(dialog);
}

InvalidFileEnd WindowDialogs::RunInvalidFile(InvalidFileForm& form) {
  InvalidFileDialog dialog(form, Owner());
  (void)Run(dialog);
  return dialog.end();
}

void WindowDialogs::ShowAbout() {
  AboutDialog dialog(Owner());
  (void)Run(dialog);
}

void WindowDialogs::ShowPatience(bool shown) {
  delete patience_;
  if (!shown) return;
  patience_ = new PatienceBox(busy_, Owner());
  patience_->show();
}

void WindowDialogs::ShowHelp(int topic) {
  help_.ShowTopic(topic);
}

}  // namespace carnetel::desktop
