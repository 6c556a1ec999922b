// What the main window's commands do with directories as a whole, and the dialogs around them.
#include "base/format_text.h"
#include "base/path.h"
#include "shell/description.h"
#include "shell/invalid_file.h"
#include "shell/main_window.h"
#include "shell/preferences.h"
#include "shell/transfer_command.h"

namespace carnetel {
namespace {

constexpr size_t kLongestDroppedPath = 259;

}  // namespace

bool MainWindowLogic::DispatchDirectoryCommand(int command) {
  switch (command) {
    case kCommandNew:
      ChooseAndReload(ChooserTemplate::kCreate);
      return true;
    case kCommandOpen:
    case kButtonOpen:
      ChooseAndReload(ChooserTemplate::kOpen);
      return true;
    case kCommandDestroy:
      DestroyDirectories();
      return true;
    case kCommandImport:
    case kButtonImport:
      Transfer(TransferDirection::kImport);
      return true;
    case kCommandExport:
      Transfer(TransferDirection::kExport);
      return true;
    case kCommandDescribe:
      Describe();
      return true;
    case kCommandPreferences:
      ChangePreferences();
      return true;
    case kCommandAbout:
      if (form_.LeaveForm()) dialogs_.ShowAbout();
      return true;
    case kCommandHelp:
    case kButtonHelp:
    case kCommandHelpKey:
      dialogs_.ShowHelp(HelpTopic(view_.FocusedControl()));
      return true;
    case kEventAskInvalidDirectory:
      AskInvalidDirectory();
      return true;
    default:
      if (command < kCommandRecent1 || command > kCommandRecent4) return false;
      OpenRecent(command);
      return true;
  }
}

// Before the session closes it: what it shows meanwhile (messages, progress) may repaint the list.
void MainWindowLogic::LetGoOfDirectory() {
  pickers_.StorePosition();
  pickers_.StoreActiveSet();
  pickers_.SetDirectory(nullptr);
  list_.SetDirectory(nullptr);
  form_.SetDirectory(nullptr);
}

void MainWindowLogic::OpenRecent(int command) {
  if (!form_.LeaveForm()) return;
  const std::string path = recents_.PathToOpen(command);
  // That of another seat is passed over without a word.
  if (!path.empty() && !session_.BelongsToAnotherSeat(path)) OpenInPlace(path);
}

void MainWindowLogic::OpenInPlace(const std::string& path) {
  session_.OpenInPlace(path);
  ReloadAfterOpen();
}

void MainWindowLogic::OpenDropped(const std::string& path) {
  if (!form_.LeaveForm()) return;
  const PathPieces pieces = PathSplit(path);
  if (path.size() > kLongestDroppedPath || CompareKey(pieces.extension, ".DAN", 5) != 0) {
    session_.services().messages.ShowMessage(MessageStyle::kError, 79, 49);
    return;
  }
  OpenInPlace(path);
}

void MainWindowLogic::ChooseAndReload(ChooserTemplate form) {
  if (!form_.LeaveForm()) return;
  const Choice choice = ChooseDirectory(session_, dialogs_, form, ChooserMode::kDirectories, true);
  if (choice.confirmed) ReloadAfterOpen();
}

void MainWindowLogic::DestroyDirectories() {
  if (!form_.LeaveForm()) return;
  pickers_.StorePosition();
  (void)ChooseDirectory(session_, dialogs_, ChooserTemplate::kDestroy, ChooserMode::kDirectories,
                        true);
  ReloadAfterOpen();
}

void MainWindowLogic::Transfer(TransferDirection direction) {
  if (!form_.LeaveForm() || session_.directory() == nullptr) return;
  pickers_.StorePosition();
  const std::string former = session_.CurrentMainFile();
  TransferCommand(session_, dialogs_, &charset_).Run(direction);
  // The program was ended from outside while the dialog was open: nothing is opened again.
  if (ended_) return;
  if (session_.directory() == nullptr) session_.OpenDirectoryChecked(former, false);
  ReloadAfterOpen();
}

void MainWindowLogic::Describe() {
  if (!form_.LeaveForm() || session_.directory() == nullptr) return;
  DescriptionForm form(session_);
  (void)dialogs_.RunDescription(form);
}

void MainWindowLogic::ChangePreferences() {
  if (!form_.LeaveForm()) return;
  PreferencesForm form(session_.settings(), session_.request().caller_window != 0);
  if (!dialogs_.RunPreferences(form)) return;
  pickers_.StorePosition();
  const PreferencesResult result = ApplyPreferences(session_, dialogs_, form);
  list_.SetLabelStyles(session_.settings().Labels());
  view_.SettingsChanged();
  const bool references = session_.settings().shows_references;
  const FormZone zone = references ? FormZone::kReferences : FormZone::kNotes;
  if (form_.zone() != zone) form_.ShowZone(zone);
  const bool reordered = result == PreferencesResult::kIndexChanged;
  if (reordered) pickers_.PickGroup(0);
  ShowPickers();
  list_.ListRefill(reordered ? kAllLetters : list_.letter_range());
  if (reordered) view_.ShowTab(kTabAll);
  form_.ShowCurrentCard(true);
}

void MainWindowLogic::AskInvalidDirectory() {
  if (session_.directory() == nullptr) return;
  pickers_.StorePosition();
  session_.directory()->CloseListView();
  InvalidFileForm form(session_, [this] {
    (void)ChooseDirectory(session_, dialogs_, ChooserTemplate::kDestroy, ChooserMode::kInvalidFile,
                          true);
  });
  const InvalidFileEnd end = dialogs_.RunInvalidFile(form);
  ReloadAfterOpen();
  if (end == InvalidFileEnd::kCreate) view_.PostCommand(kCommandNew);
  if (end == InvalidFileEnd::kLoad) view_.PostCommand(kCommandOpen);
  if (end == InvalidFileEnd::kRecovered) view_.PostCommand(kTabAll);
}

}  // namespace carnetel
