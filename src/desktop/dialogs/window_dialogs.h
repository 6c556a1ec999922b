// The application's dialogs as windows over the active one, and its help.
#pragma once

#include <QPointer>

#include "desktop/controls/busy_state.h"
#include "desktop/controls/caller_window.h"
#include "desktop/dialogs/help_window.h"
#include "desktop/dialogs/patience_box.h"
#include "desktop/print/printer_desk.h"
#include "shell/dialog_host.h"

namespace carnetel::desktop {

class WindowDialogs : public DialogHost {
 public:
  // Dialogs open over `window`, or over the dialog that is open already.
  WindowDialogs(QWidget* window, BusyState& busy)
      : window_(window), busy_(busy), printers_(busy, [this] { return Owner(); }) {}
  ~WindowDialogs() override;
  WindowDialogs(const WindowDialogs&) = delete;
  WindowDialogs& operator=(const WindowDialogs&) = delete;

  bool RunFilePicker(FilePicker& picker) override;
  bool RunDescription(DescriptionForm& form) override;
  bool RunPreferences(PreferencesForm& form) override;
  InvalidFileEnd RunInvalidFile(InvalidFileForm& form) override;
  CriteriaEnd RunCriteria(CriteriaForm& form) override;
  void RunNamedSets(SetsDialog dialog, NamedSetsForm& form) override;
  std::optional<std::string> AskName(SetsDialog dialog, const std::string& offered) override;
  void RunGroups(GroupsForm& form) override;
  std::optional<GroupDescription> AskGroup(const GroupDescription& offered) override;
  void RunSearch(SearchForm& form) override;
  bool RunNumber(NumberForm& form) override;
  void RunTransfer(TransferForm& form) override;
  void RunRanks(RankForm& form) override;
  void RunFixedLayout(FixedLayoutForm& form) override;
  void RunDbaseImport(DbaseImportForm& form) override;
  void RunDbaseExport(DbaseExportForm& form) override;
  std::optional<bool> AskReplace(bool imports) override;
  void RunPrint(PrintForm& form) override;
  bool RunPrinterChoice(PrinterChoiceForm& form) override;
  PrinterDesk& Printers() override { return printers_; }
  void RunEnrichment(EnrichmentForm& form) override;
  bool RunViafaxOption(ViafaxOptionForm& form) override;
  void ShowAbout() override;
  void ShowPatience(bool shown) override;
  void ShowHelp(int topic) override;

  // The window of the calling program, which owns dialogs that have no window of this program's
  // below them.
  void SetCaller(const CallerWindow& caller) { caller_ = caller; }
  void CloseHelp() { help_.Close(); }
  [[nodiscard]] HelpWindow* help_window() const { return help_.window(); }

 private:
  [[nodiscard]] QWidget* Owner() const;
  // Shows a dialog over the active window, with its help; true when it was confirmed.
  template <class Dialog>
  bool Run(Dialog& dialog);
  void EnrichSilently(EnrichmentForm& form);
  void EnrichWithReview(EnrichmentForm& form);

  QWidget* window_;
  BusyState& busy_;
  PrinterDesk printers_;
  HelpDesk help_;
  QPointer<PatienceBox> patience_;
  CallerWindow caller_{0};
};

}  // namespace carnetel::desktop
