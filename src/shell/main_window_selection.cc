// What the main window's commands do with marks, criteria, groups, single cards and printouts.
#include "platform/measurement.h"
#include "printing/print_form.h"
#include "selection/card_removal.h"
#include "selection/card_test.h"
#include "selection/criteria_form.h"
#include "selection/group_removal.h"
#include "selection/groups_form.h"
#include "selection/selection_scan.h"
#include "shell/main_window.h"
#include "shell/search_form.h"
#include "storage/address_reorder.h"
#include "storage/card_dispatch.h"

namespace carnetel {
namespace {

// False when another seat edits the card, or has put another one in its place since it was shown.
bool DeleteShownCard(Directory& directory, uint32_t card_offset, const CardRecord& shown) {
  const ChangeScope change(directory);
  if (!change) return false;
  CardRecord card;
  const bool is_same = directory.main().ReadCard(card_offset, card) && card == shown;
  if (directory.is_shared() && !is_same) return false;
  uint32_t moved_from = 0;
  (void)DeleteCard(directory, card_offset, &moved_from);
  return !directory.lock_refused();
}

}  // namespace

bool MainWindowLogic::DispatchSelectionCommand(int command) {
  using Action = void (MainWindowLogic::*)();
  Action action = nullptr;
  switch (CommandOfButton(command)) {
    case kCommandDeleteCard:
      action = &MainWindowLogic::DeleteCard;
      break;
    case kCommandDeleteMarked:
      action = &MainWindowLogic::DeleteMarked;
      break;
    case kCommandSearch:
      action = &MainWindowLogic::Search;
      break;
    case kCommandPrint:
      action = &MainWindowLogic::Print;
      break;
    case kCommandSelect:
      action = &MainWindowLogic::SelectByCriteria;
      break;
    case kCommandDeselectAll:
      action = &MainWindowLogic::DeselectListed;
      break;
    case kCommandGoToNumber:
      action = &MainWindowLogic::GoToNumber;
      break;
    case kCommandGroups:
      action = &MainWindowLogic::ManageGroups;
      break;
    case kCommandSelectAll:
      action = &MainWindowLogic::SelectAll;
      break;
    case kCommandBrowseMarked:
      action = &MainWindowLogic::BrowseMarked;
      break;
    default:
      return false;
  }
  if (form_.LeaveForm() && session_.directory() != nullptr) (this->*action)();
  return true;
}

void MainWindowLogic::ShowPickers() {
  view_.SetGroups(pickers_.groups(), pickers_.group());
  view_.SetSets(pickers_.sets(), pickers_.set());
}

// The focus stays where the user works: on the list.
void MainWindowLogic::PickGroup(int row) {
  if (form_.LeaveForm()) pickers_.PickGroup(row);
  ShowPickers();
  form_.UpdateButtons();
  view_.FocusList();
}

void MainWindowLogic::PickSet(int row) {
  if (form_.LeaveForm()) pickers_.PickSet(row);
  ShowPickers();
  form_.UpdateButtons();
  view_.FocusList();
}

void MainWindowLogic::DeselectListed() {
  list_.DeselectListed();
}

void MainWindowLogic::BrowseMarked() {
  view_.OpenConsultation();
}

void MainWindowLogic::SelectByCriteria() {
  const CriteriaDialogs dialogs = {
      [this](NamedSetsForm& form) { dialogs_.RunNamedSets(SetsDialog::kCriteria, form); },
      [this](const std::string& offered) {
        return dialogs_.AskName(SetsDialog::kCriteria, offered);
      }};
  CriteriaForm form(pickers_.criteria(), session_.services().messages, dialogs);
  const CriteriaEnd end = dialogs_.RunCriteria(form);
  if (end == CriteriaEnd::kQuit) return;
  RunSelection(pickers_.criteria().rows(), end == CriteriaEnd::kAdd);
}

void MainWindowLogic::SelectAll() {
  CriteriaRows& rows = pickers_.criteria().rows();
  rows = RowsForAll(rows);
  session_.directory()->set_selection_dirty();
  RunSelection(rows, false);
}

void MainWindowLogic::RunSelection(const CriteriaRows& rows, bool add) {
  carnetel::RunSelection(*session_.directory(), rows, add, pickers_.group() != 0,
                         static_cast<uint32_t>(list_.row_count()));
  list_.ListRefill();
  pickers_.ReloadSets();
  ShowPickers();
}

void MainWindowLogic::ManageGroups() {
  pickers_.StorePosition();
  GroupsForm form(*session_.directory(), session_.services().messages,
                  [this](const GroupDescription& offered) { return dialogs_.AskGroup(offered); },
                  {static_cast<size_t>(pickers_.group()), pickers_.SetName()});
  dialogs_.RunGroups(form);
  // The program was ended from outside while the dialog was open.
  if (session_.directory() == nullptr) return;
  pickers_.ReloadGroups();
  pickers_.PickGroup(pickers_.group());
  ShowPickers();
}

void MainWindowLogic::Search() {
  SearchForm form(*session_.directory(), list_, session_.services().messages);
  dialogs_.RunSearch(form);
  form.End();
  form_.ShowCurrentCard(true);
  view_.FocusList();
}

void MainWindowLogic::GoToNumber() {
  NumberForm form(list_);
  (void)dialogs_.RunNumber(form);
}

void MainWindowLogic::Print() {
  if (list_.row_count() == 0) return;
  const SessionServices& services = session_.services();
  const PrintServices print_services = {
      services.messages, services.profile, std::string(session_.ProfileSection()),
      dialogs_.Printers(),
      [this](PrinterChoiceForm& form) { return dialogs_.RunPrinterChoice(form); }};
  PrintPlace place;
  place.printer_file = PrinterFile(session_.home_dir(), session_.appli_name());
  place.application = session_.appli_name();
  place.current_entry = static_cast<uint32_t>(list_.EntryOfCard(list_.current_card()));
  place.unit = ReadMeasureUnit(services.profile, LocaleIsMetric());
  PrintForm form(*session_.directory(), print_services, std::move(place));
  dialogs_.RunPrint(form);
}

void MainWindowLogic::CallSibling(int button) {
  Sibling sibling = Sibling::kVoice;
  Directory* directory = session_.directory();
  if (directory == nullptr || !FindSibling(button, &sibling)) return;
  SiblingCall call;
  call.sibling = sibling;
  call.form_at_rest = form_.mode() == FormMode::kRest;
  call.number_text = view_.FieldText(InfoOf(sibling).control);
  call.card_offset = list_.current_card();
  call.window = view_.WindowNumber();
  call.styles = session_.settings().Labels();
  const SessionServices& services = session_.services();
  carnetel::CallSibling(*directory, siblings_.apps(), call, services.messages,
                        services.start_program);
}

void MainWindowLogic::DeleteCard() {
  Directory* directory = session_.directory();
  const uint32_t card_offset = list_.current_card();
  CardRecord card;
  if (directory == nullptr || !directory->main().ReadCard(card_offset, card)) return;
  const bool whole_file = pickers_.group() == 0;
  if (whole_file && !directory->TestCardLock(card_offset)) return TellHeldCard();
  const MessageButton answer = session_.services().messages.ShowMessage(
      MessageStyle::kOkCancel, 80, 31, DeletionLabel(card, directory->key_field()));
  if (answer != MessageButton::kOk) return;
  if (!whole_file) {
    ClearEntryBits(*directory, card_offset);
  } else if (!DeleteShownCard(*directory, card_offset, card)) {
    TellHeldCard();
  }
  list_.ListRefill();
  view_.FocusList();
}

void MainWindowLogic::TellHeldCard() {
  session_.services().messages.ShowMessage(MessageStyle::kError, 79, 177);
  view_.FocusList();
}

void MainWindowLogic::DeleteMarked() {
  Directory* directory = session_.directory();
  if (directory == nullptr || list_.marked_count() == 0) return;
  const MessageButton answer =
      session_.services().messages.ShowMessage(MessageStyle::kOkCancel, 80, 53);
  if (answer != MessageButton::kOk) return;
  if (pickers_.group() != 0) {
    RemoveMarkedFromGroup(*directory, list_.MarkedCards());
    list_.ListRefill();
  } else {
    DeleteMarkedEntries();
    list_.ListRefill(kAllLetters);
    view_.ShowTab(kTabAll);
  }
  view_.FocusList();
}

void MainWindowLogic::DeleteMarkedEntries() {
  Directory& directory = *session_.directory();
  ProgressBox& progress = session_.services().progress;
  int held = 0;
  progress.Open(ProgressForm::kDelete, static_cast<uint32_t>(directory.marked_count()));
  {
    const Directory::Batch batch(directory);
    if (!batch) held = 1;
    uint32_t row = 0;
    bool stopped = !batch;
    while (!stopped && row < directory.address().entry_count() && directory.marked_count() > 0) {
      const Directory::Turn turn = directory.LetOthersIn();
      // Cards lie elsewhere now: the walk begins anew.
      if (turn != Directory::Turn::kKept) row = 0, held = 0;
      if (turn == Directory::Turn::kLost) {
        held = 1;
        break;
      }
      const EntrySlot entry = directory.address().Entry(row);
      CardRecord card;
      if (!entry.bit(directory.selection_bit()) ||
          !directory.main().ReadCard(entry.card_offset(), card)) {
        ++row;
        continue;
      }
      if (!directory.TestCardLock(entry.card_offset())) {
        ++held;
        ++row;
        continue;
      }
      // The card that was announced still goes when the user stops the walk at it.
      stopped = progress.Step(DeletionLabel(card, directory.key_field()));
      // A delete takes the entry away: the same row is looked at again.
      uint32_t moved_from = 0;
      if (!carnetel::DeleteCard(directory, entry.card_offset(), &moved_from)) {
        if (directory.lock_refused()) ++held;
        ++row;
      }
    }
  }
  progress.Close();
  // Not in the walk: nothing stays locked while a user reads.
  while (held-- > 0) session_.services().messages.ShowMessage(MessageStyle::kError, 79, 177);
}

void MainWindowLogic::ListPainted() {
  const Directory* directory = session_.directory();
  if (directory == nullptr || !directory->is_shared()) return;
  const int64_t now = session_.services().clock.Now();
  if (now - last_seat_check_ < kSecondsBetweenSeatChecks) return;
  last_seat_check_ = now;
  view_.PostCommand(kEventCheckSeats);
}

void MainWindowLogic::CheckSeats() {
  // A card that is being keyed must not lose its place under the user's hands.
  if (session_.directory() == nullptr || form_.mode() != FormMode::kRest) return;
  if (form_.purpose() != FormPurpose::kCard || form_.has_unsaved_text()) return;
  const uint32_t current = list_.current_card();
  const CardRecord shown = form_.shown();
  if (!TakeOverChanges()) return;
  pickers_.ReloadGroups();
  pickers_.ReloadSets();
  ShowPickers();
  list_.ListRefill();
  StayWith(current, shown);
  form_.ShowCurrentCard(true);
}

// Rows have moved: the next key of the user means the card that he saw, not the one in its row.
void MainWindowLogic::StayWith(uint32_t card_offset, const CardRecord& shown) {
  CardRecord there;
  if (session_.directory()->main().ReadCard(card_offset, there) && there == shown) {
    (void)list_.FindCardRow(card_offset);
  }
}

bool MainWindowLogic::TakeOverChanges() {
  const int group = std::min(pickers_.group(), 2);
  return RefreshIfChanged(*session_.directory(), static_cast<RefreshView>(group));
}

}  // namespace carnetel
