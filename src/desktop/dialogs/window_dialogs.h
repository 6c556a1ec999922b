// The application's dialogs as windows over the active one, and its help.
#pragma once

#include <QPointer>

#include "desktop/controls/busy_state.h"
#include "desktop/dialogs/help_window.h"
#include "desktop/dialogs/patience_box.h"
#include "shell/dialog_host.h"

namespace carnetel::desktop {

class WindowDialogs : public DialogHost {
 public:
  // Dialogs open over `window`, or over the dialog that is open already.
  WindowDialogs(QWidget* window, BusyState& busy) : window_(window), busy_(busy) {}
  ~WindowDialogs() override;
  WindowDialogs(const WindowDialogs&) = delete;
  WindowDialogs& operator=(const WindowDialogs&) = delete;

  bool RunFilePicker(FilePicker& picker) override;
  bool RunDescription(DescriptionForm& form) override;
  bool RunPreferences(PreferencesForm& form) override;
  InvalidFileEnd RunInvalidFile(InvalidFileForm& form) override;
  void ShowAbout() override;
  void ShowPatience(bool shown) override;
  void ShowHelp(int topic) override;

  void CloseHelp() { help_.Close(); }
  [[nodiscard]] HelpWindow* help_window() const { return help_.window(); }

 private:
  [[nodiscard]] QWidget* Owner() const;
  template <class Dialog>
  bool Run(Dialog& dialog);

  QWidget* window_;
  BusyState& busy_;
  HelpDesk help_;
  QPointer<PatienceBox> patience_;
};

}  // namespace carnetel::desktop
