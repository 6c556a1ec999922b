#include "desktop/dialogs/window_dialogs.h"

#include <QApplication>

#include "desktop/controls/wait_cursor.h"
#include "desktop/dialogs/about_dialog.h"
#include "desktop/dialogs/criteria_dialog.h"
#include "desktop/dialogs/dbase_export_dialog.h"
#include "desktop/dialogs/dbase_import_dialog.h"
#include "desktop/dialogs/description_dialog.h"
#include "desktop/dialogs/enrichment_dialog.h"
#include "desktop/dialogs/enrichment_progress.h"
#include "desktop/dialogs/file_chooser.h"
#include "desktop/dialogs/fixed_layout_dialog.h"
#include "desktop/dialogs/group_description_dialog.h"
#include "desktop/dialogs/groups_dialog.h"
#include "desktop/dialogs/invalid_file_dialog.h"
#include "desktop/dialogs/name_dialog.h"
#include "desktop/dialogs/named_sets_dialog.h"
#include "desktop/dialogs/number_dialog.h"
#include "desktop/dialogs/preferences_dialog.h"
#include "desktop/dialogs/print_dialog.h"
#include "desktop/dialogs/printer_choice_dialog.h"
#include "desktop/dialogs/rank_dialog.h"
#include "desktop/dialogs/search_dialog.h"
#include "desktop/dialogs/transfer_dialog.h"
#include "desktop/dialogs/transfer_mode_dialog.h"
#include "desktop/dialogs/viafax_dialog.h"

namespace carnetel::desktop {

WindowDialogs::~WindowDialogs() {
  delete patience_;
}

QWidget* WindowDialogs::Owner() const {
  QWidget* modal = QApplication::activeModalWidget();
  return modal != nullptr ? modal : window_;
}

// Under the arrow, whatever cursor the command that opened it has.
template <class Dialog>
bool WindowDialogs::Run(Dialog& dialog) {
  QObject::connect(&dialog, &Dialog::helpWanted, &dialog, [this](int topic) { ShowHelp(topic); });
  const WaitCursorPause arrow;
  return dialog.exec() == QDialog::Accepted;
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

CriteriaEnd WindowDialogs::RunCriteria(CriteriaForm& form) {
  CriteriaDialog dialog(form, Owner());
  (void)Run(dialog);
  return dialog.end();
}

void WindowDialogs::RunNamedSets(SetsDialog which, NamedSetsForm& form) {
  NamedSetsDialog dialog(which, form, Owner());
  (void)Run(dialog);
}

std::optional<std::string> WindowDialogs::AskName(SetsDialog which, const std::string& offered) {
  NameDialog dialog(which, offered, Owner());
  if (!Run(dialog) || dialog.name().empty()) return {};
  return dialog.name();
}

void WindowDialogs::RunGroups(GroupsForm& form) {
  GroupsDialog dialog(form, Owner());
  (void)Run(dialog);
}

std::optional<GroupDescription> WindowDialogs::AskGroup(const GroupDescription& offered) {
  GroupDescriptionDialog dialog(offered, Owner());
  if (!Run(dialog) || dialog.description().name.empty()) return {};
  return dialog.description();
}

void WindowDialogs::RunSearch(SearchForm& form) {
  SearchDialog dialog(form, Owner());
  (void)Run(dialog);
}

bool WindowDialogs::RunNumber(NumberForm& form) {
  NumberDialog dialog(form, Owner());
  return Run(dialog);
}

void WindowDialogs::RunTransfer(TransferForm& form) {
  TransferDialog dialog(form, Owner());
  (void)Run(dialog);
}

void WindowDialogs::RunRanks(RankForm& form) {
  RankDialog dialog(form, Owner());
  (void)Run(dialog);
}

void WindowDialogs::RunFixedLayout(FixedLayoutForm& form) {
  FixedLayoutDialog dialog(form, Owner());
  (void)Run(dialog);
}

void WindowDialogs::RunDbaseImport(DbaseImportForm& form) {
  DbaseImportDialog dialog(form, Owner());
  (void)Run(dialog);
}

void WindowDialogs::RunDbaseExport(DbaseExportForm& form) {
  DbaseExportDialog dialog(form, Owner());
  (void)Run(dialog);
}

std::optional<bool> WindowDialogs::AskReplace(bool imports) {
  TransferModeDialog dialog(imports, Owner());
  if (!Run(dialog)) return {};
  return dialog.replaces();
}

void WindowDialogs::RunPrint(PrintForm& form) {
  PrintDialog dialog(
      form, [this](const std::string& printer) { return printers_.PageLayout(printer); }, Owner());
  (void)Run(dialog);
}

bool WindowDialogs::RunPrinterChoice(PrinterChoiceForm& form) {
  PrinterChoiceDialog dialog(form, Owner());
  return Run(dialog);
}

// A window of its own: the role has no other one.
void WindowDialogs::RunEnrichment(EnrichmentForm& form) {
  if (form.mode() == EnrichmentMode::kSilent) {
    EnrichSilently(form);
  } else {
    EnrichWithReview(form);
  }
  caller_.ShowAgain();
}

void WindowDialogs::EnrichSilently(EnrichmentForm& form) {
  EnrichmentProgress box(busy_, form.DirectoryText(), Owner());
  caller_.Own(box);
  box.CentreOnScreen();
  box.show();
  form.RunSilently([&box](const std::string& company) { return box.ShowCompany(company); });
}

void WindowDialogs::EnrichWithReview(EnrichmentForm& form) {
  EnrichmentReview review(form);
  if (!review.has_record()) return;
  EnrichmentDialog dialog(review, Owner());
  caller_.Own(dialog);
  dialog.CentreOnScreen();
  (void)Run(dialog);
}

bool WindowDialogs::RunViafaxOption(ViafaxOptionForm& form) {
  ViafaxDialog dialog(form, Owner());
  return Run(dialog);
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
