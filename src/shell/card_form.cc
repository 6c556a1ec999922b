#include "shell/card_form.h"

#include "base/code_page.h"
#include "base/key_alphabet.h"

namespace carnetel {
namespace {

std::string FieldUtf8(const CardRecord& card, int field) {
  return Utf8FromOem(card.FieldText(field));
}

// Title, first name and surname without trailing blanks, joined by one blank, empty ones left out.
std::string ComposedName(const CardRecord& card) {
  std::string line;
  for (const int field : {int{kQualite}, int{kPrenom}, int{kNom}}) {
    OemText part = card.FieldText(field);
    CutTrailingBlanks(part.bytes());
    if (part.empty()) continue;
    if (!line.empty()) line += ' ';
    line += Utf8FromOem(part);
  }
  return line;
}

bool IsKeyControl(int control) {
  return control == kControlSte1 || control == kControlNom;
}

}  // namespace

CardForm::CardForm(CardFormView& view, CardList& list, MessageForm& messages,
                   const Settings& settings)
    : view_(view),
      list_(list),
      messages_(messages),
      settings_(settings),
      zone_(settings.shows_references ? FormZone::kReferences : FormZone::kNotes) {}

void CardForm::SetDirectory(Directory* directory) {
  directory_ = directory;
  Rest();
  purpose_ = FormPurpose::kCard;
  creating_card_ = false;
  displayed_card_ = 0;
}

int CardForm::IndexControl() const {
  return settings_.key_field == kSte1 ? kControlSte1 : kControlNom;
}

bool CardForm::HasKeyText() const {
  return !view_.FieldText(kControlSte1).empty() || !view_.FieldText(kControlNom).empty();
}

// ---- showing ----

void CardForm::ShowCard(const CardRecord& card) {
  shown_ = card;
  edited_controls_.clear();
  edited_references_.clear();
  for (const FormField& row : kFormFields) {
    const bool short_code = row.field == kPostalCode && card.FieldEmpty(kPostalCode);
    view_.SetFieldText(row.control, FieldUtf8(card, short_code ? kShortPostalCode : row.field));
  }
  view_.SetFieldText(kControlComposedName, ComposedName(card));
  std::array<std::string, kReferenceCount> references;
  for (size_t i = 0; i < references.size(); ++i) {
    references[i] = FieldUtf8(card, kRef1 + static_cast<int>(i));
  }
  view_.SetReferences(references);
  Rest();
}

void CardForm::ClearForm() {
  displayed_card_ = 0;
  ShowCard(CardRecord());
}

void CardForm::ShowRow() {
  const uint32_t card_offset = list_.current_card();
  CardRecord card;
  if (card_offset == 0 || directory_ == nullptr ||
      !directory_->main().ReadCard(card_offset, card)) {
    ClearForm();
    return;
  }
  displayed_card_ = card_offset;
  ShowCard(card);
}

void CardForm::ShowCurrentCard(bool force) {
  if (purpose_ != FormPurpose::kCard || IsFrozen()) return;
  if (force || list_.current_card() != displayed_card_) ShowRow();
}

void CardForm::ListRefilled() {
  // An edit under way keeps its text, whatever made the list refill.
  if (mode_ == FormMode::kRest) ShowCurrentCard(true);
  // Last, as they look at whether the card that is shown has a key.
  UpdateButtons();
}

// ---- buttons ----

void CardForm::UpdateButtons() {
  const bool rows = list_.row_count() != 0;
  for (const int button : {int{kButtonPrint}, int{kButtonSearch}, int{kButtonGroups},
                           int{kButtonSelect}, int{kButtonDeleteCard}}) {
    view_.SetButton(button, rows);
  }
  view_.SetButton(kButtonDeleteMarked, list_.marked_count() != 0);
  SetButtonsForMode(!edit_look_);
}

bool CardForm::may_save_change() const {
  return edit_look_ && list_.row_count() != 0 && !creating_card_ && HasKeyText();
}

void CardForm::SetButtonsForMode(bool rest) {
  const bool rows = list_.row_count() != 0;
  const bool has_text = HasKeyText();
  view_.SetButton(kButtonSaveChange, !rest && may_save_change());
  // At rest it adds a copy of the card that is shown.
  view_.SetButton(kButtonSaveNew, has_text && (!rest || rows));
  view_.SetButton(kButtonCreateOrCancel, directory_ != nullptr);
  view_.SetButton(kButtonMark, rest && rows);
  cancel_face_ = !rest;
  view_.SetCancelFace(cancel_face_);
}

// ---- typing ----

void CardForm::CheckFirstCharacter(int control, bool* undone) {
  *undone = IsKeyControl(control) && !MayStartKey(view_.FieldText(control));
  if (!*undone) return;
  view_.Beep();
  view_.UndoChange(control);
}

void CardForm::FieldChanged(int control, int row) {
  bool undone = false;
  CheckFirstCharacter(control, &undone);
  if (undone) return;
  edited_controls_.insert(control);
  if (control == kControlReferences) edited_references_.insert(row);
  mode_ = FormMode::kChanged;
  // From the first change on no other seat may touch the card.
  if (displayed_card_ != 0 && directory_ != nullptr) (void)directory_->LockCard(displayed_card_);
  // A command may have taken the look off while the focus stayed in the field.
  if (!edit_look_) FieldEntered(control);
  if (first_keystroke_ || IsKeyControl(control)) {
    first_keystroke_ = false;
    SetButtonsForMode(false);
  }
}

void CardForm::FieldEntered(int control) {
  return_field_ = control;
  first_keystroke_ = true;
  if (!edit_look_) {
    edit_look_ = true;
    view_.SetEditLook(true);
  }
  SetButtonsForMode(false);
  if (control != kControlComposedName) return;
  // The composed line cannot be typed in: the field that stands for it takes the focus.
  const bool surname = settings_.key_field == kNom && !settings_.starts_at_first;
  view_.FocusControl(surname ? kControlNom : kControlQualite);
}

void CardForm::LookOff() {
  if (!edit_look_) return;
  edit_look_ = false;
  view_.SetEditLook(false);
}

// ---- leaving ----

void CardForm::Rest() {
  mode_ = FormMode::kRest;
  if (directory_ != nullptr) directory_->UnlockCard();
}

bool CardForm::AskDiscard() {
  const MessageButton answer = messages_.ShowMessage(MessageStyle::kYesNoDefaultNo, 80, 178);
  if (answer != MessageButton::kYes) {
    mode_ = FormMode::kChanged;
    return false;
  }
  return_field_ = 0;
  Rest();
  purpose_ = FormPurpose::kCard;
  creating_card_ = false;
  ShowRow();
  return true;
}

bool CardForm::LeaveForm() {
  // The question is up: whoever comes meanwhile waits for the next occasion.
  if (mode_ == FormMode::kAsking) return false;
  const bool row_has_moved = mode_ == FormMode::kLeaving;
  const uint32_t edited_card = displayed_card_;
  if (mode_ != FormMode::kRest && !AskDiscard()) {
    if (row_has_moved && edited_card != 0) list_.FindCardRow(edited_card);
    view_.FocusControl(return_field_);
    return false;
  }
  purpose_ = FormPurpose::kCard;
  creating_card_ = false;
  LookOff();
  SetButtonsForMode(true);
  return true;
}

void CardForm::ListEntered() {
  if (IsFrozen()) return;
  if (mode_ == FormMode::kChanged) {
    // The row that the user went to is known only after the click: the question waits for it.
    mode_ = FormMode::kLeaving;
    view_.PostLeaveQuestion();
    return;
  }
  const bool goes_on = purpose_ == FormPurpose::kNewCardSaved;
  purpose_ = FormPurpose::kCard;
  creating_card_ = false;
  ShowCurrentCard(true);
  LookOff();
  SetButtonsForMode(true);
  // Entry of new cards goes on until the user cancels.
  if (goes_on) view_.PostCommand(kButtonCreateOrCancel);
}

void CardForm::LeaveQuestion() {
  if (mode_ != FormMode::kLeaving) return;
  mode_ = FormMode::kAsking;
  const int leave_row = list_.current_row();
  const uint32_t edited_card = displayed_card_;
  const FormPurpose purpose = purpose_;
  const int return_field = return_field_;
  if (AskDiscard()) {
    LookOff();
    list_.SetCurrentRow(leave_row);
    ShowCurrentCard(true);
    SetButtonsForMode(true);
    view_.FocusList();
    return;
  }
  // Back to the card under edit, before the focus: or the next save would write into another one.
  purpose_ = purpose;
  if (edited_card != 0) list_.FindCardRow(edited_card);
  view_.FocusControl(return_field);
}

// ---- commands ----

void CardForm::Confirm() {
  if (purpose_ == FormPurpose::kCard && mode_ != FormMode::kChanged) return;
  if (!HasKeyText()) {
    view_.Beep();
    return;
  }
  view_.PostCommand(purpose_ == FormPurpose::kCard ? kButtonSaveChange : kButtonSaveNew);
}

void CardForm::Escape() {
  if (mode_ != FormMode::kChanged || !AskDiscard()) return;
  LookOff();
  SetButtonsForMode(true);
  view_.FocusList();
}

void CardForm::CreateOrCancel() {
  if (!cancel_face_) {
    CreateCard();
    return;
  }
  Rest();
  purpose_ = FormPurpose::kCard;
  creating_card_ = false;
  LookOff();
  ShowRow();
  SetButtonsForMode(true);
  view_.FocusList();
}

void CardForm::CreateCard() {
  if (directory_ == nullptr || !LeaveForm()) return;
  ClearForm();
  purpose_ = FormPurpose::kNewCard;
  creating_card_ = true;
  // Entered first, as its control may be one of those that only the input look shows.
  const int control = settings_.starts_at_first ? int{kControlQualite} : IndexControl();
  FieldEntered(control);
  view_.FocusControl(control);
}

void CardForm::ShowZone(FormZone zone) {
  zone_ = zone;
  view_.SetZone(zone);
}

}  // namespace carnetel
