#include "shell/main_window.h"

#include "base/format_text.h"

namespace carnetel {
namespace {

// The range of a tab: letters up to Y have an end, Z and "A à Z" have none.
LetterRange RangeOfTab(int tab) {
  if (tab == kTabAll) return kAllLetters;
  const auto letter = static_cast<unsigned char>('A' + (tab - kTabA));
  return {letter, static_cast<unsigned char>(tab == kTabZ ? 0 : letter + 1)};
}

}  // namespace

MainWindowLogic::MainWindowLogic(Session& session, MainWindowView& view, DialogHost& dialogs,
                                 int list_capacity)
    : session_(session),
      view_(view),
      dialogs_(dialogs),
      list_(*this, list_capacity),
      pickers_(list_),
      form_(view, list_, session.services().messages, session.settings()),
      recents_(session),
      siblings_(view, session) {
  session_.OnClosing([this] { LetGoOfDirectory(); });
}

MainWindowLogic::~MainWindowLogic() {
  session_.OnClosing({});
}

void MainWindowLogic::Start() {
  view_.SetEditLook(false);
  form_.ShowZone(session_.settings().shows_references ? FormZone::kReferences : FormZone::kNotes);
  // Without a directory the menu has none of them, and the profile keeps what it has.
  if (session_.directory() != nullptr) recents_.Read();
  ReloadAfterOpen();
  const bool fell_back = !session_.unrecognised_file().empty();
  if (fell_back && session_.directory() != nullptr) view_.PostCommand(kEventAskInvalidDirectory);
  view_.FocusList();
  // A window that is not on the screen yet does not tell of its focus.
  ListFocused();
}

void MainWindowLogic::ReloadAfterOpen() {
  list_.SetDirectory(session_.directory());
  list_.SetLabelStyles(session_.settings().Labels());
  form_.SetDirectory(session_.directory());
  pickers_.SetDirectory(session_.directory());
  ShowPickers();
  // Without a directory the window stays as it is.
  if (session_.directory() != nullptr) {
    if (TakeOverChanges()) pickers_.ReloadGroups();
    last_seat_check_ = session_.services().clock.Now();
    view_.SetTitle(FormatText(265, session_.CurrentMainFile()));
    view_.SetRecents(recents_.Rebuild());
  }
  if (session_.TakeListPositionRestore()) list_.RestorePositionAtNextRefill();
  list_.ListRefill(kAllLetters);
  view_.FocusControl(kTabAll);
  view_.ShowTab(kTabAll);
}

void MainWindowLogic::Dispatch(int command) {
  if (DispatchDirectoryCommand(command) || DispatchSelectionCommand(command)) return;
  if (command >= kTabAll && command <= kTabZ) {
    ApplyLetterTab(command);
    return;
  }
  switch (command) {
    case kEventCheckSeats:
      CheckSeats();
      break;
    case kCommandConfirm:
      form_.Confirm();
      break;
    case kCommandEscape:
      form_.Escape();
      break;
    case kCommandQuit:
    case kButtonQuit:
      RequestQuit();
      break;
    case kCommandCreateCard:
      form_.CreateCard();
      break;
    case kButtonCreateOrCancel:
      form_.CreateOrCancel();
      break;
    case kCommandSaveChange:
    case kButtonSaveChange:
      form_.SaveChange();
      break;
    case kButtonSaveNew:
      form_.SaveNew();
      break;
    case kButtonMark:
      list_.ToggleMark(list_.current_row());
      break;
    case kButtonShowNotes:
      form_.ShowZone(FormZone::kNotes);
      view_.FocusControl(kLabelNotes);
      break;
    case kButtonShowReferences:
      form_.ShowZone(FormZone::kReferences);
      view_.FocusControl(kLabelReferences);
      break;
    case kButtonVoice:
    case kButtonFax:
    case kButtonFiles:
    case kButtonMinitel:
      CallSibling(command);
      break;
    default:
      break;
  }
}

bool MainWindowLogic::ApplyLetterTab(int tab) {
  if (!form_.LeaveForm()) return false;
  list_.ListRefill(RangeOfTab(tab));
  view_.ShowTab(tab);
  return true;
}

bool MainWindowLogic::RequestQuit() {
  if (ended_) return true;
  if (!form_.LeaveForm()) return false;
  QuitUnasked();
  return true;
}

void MainWindowLogic::QuitUnasked() {
  if (ended_) return;
  ended_ = true;
  recents_.Write();
  session_.CloseDirectory();
  view_.EndWindow();
}

MenuState MainWindowLogic::menu_state() const {
  MenuState state;
  state.has_rows = list_.row_count() != 0;
  state.has_marks = list_.marked_count() != 0;
  state.group_displayed = list_.displayed_group().row != 0;
  state.may_save_change = form_.may_save_change();
  return state;
}

int MainWindowLogic::HelpTopic(int focused_control) const {
  return HelpTopicOfControl(focused_control, form_.purpose() == FormPurpose::kNewCard);
}

void MainWindowLogic::ShowStatusOf(int item) {
  ShowStatusText(StatusTextOf(item));
}

void MainWindowLogic::ShowStatusText(int text) {
  view_.SetStatus(std::string(LoadText(text)));
}

void MainWindowLogic::JumpToLetter(char letter) {
  if (!list_.JumpToLetter(letter)) view_.Beep();
}

void MainWindowLogic::ListDoubleClicked() {
  if (session_.directory() != nullptr) session_.directory()->set_selection_dirty();
  form_.UpdateButtons();
}

void MainWindowLogic::TellNotLoaded() {
  if (list_.not_loaded_count() == 0) return;
  session_.services().messages.ShowMessage(MessageStyle::kInformation, 80, 279,
                                           list_.not_loaded_count());
}

int MainWindowLogic::NextMarkedRow(int row, int step) const {
  for (int next = row + step; next >= 0 && next < list_.row_count(); next += step) {
    if (list_.IsMarked(next)) return next;
  }
  return -1;
}

void MainWindowLogic::ShowCounts() {
  view_.SetPosition(list_.PositionText());
  view_.SetMarked(list_.marked_count());
}

void MainWindowLogic::ListRefilled() {
  view_.ListRefilled();
  ShowCounts();
  form_.ListRefilled();
  view_.UpdateConsultation();
}

void MainWindowLogic::CurrentRowChanged() {
  view_.ShowCurrentRow();
  ShowCounts();
  form_.ShowCurrentCard(false);
  view_.UpdateConsultation();
}

void MainWindowLogic::RowRepainted(int row) {
  view_.RepaintRow(row);
}

void MainWindowLogic::MarksChanged() {
  ShowCounts();
  form_.UpdateButtons();
}

}  // namespace carnetel
