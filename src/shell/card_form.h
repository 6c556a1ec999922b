// The card form without its widgets: viewer of the current card, its editor and the entry form for
// new cards in one. Nothing is opened or closed to edit: typing turns the view into an edit, moving
// the focus to the list asks what to do with the changes. This class holds the states that guard
// typed text; the window shows what it says and tells it what the user does.
//
// Texts that were not edited keep the bytes of the card, whatever the screen can show of them.
#pragma once

#include <array>
#include <set>
#include <string>

#include "base/messages.h"
#include "shell/card_list.h"
#include "shell/command_table.h"
#include "shell/form_fields.h"
#include "shell/settings.h"

namespace carnetel {

enum class FormMode { kRest = 0, kChanged = 1, kLeaving = 2, kAsking = 3 };
enum class FormPurpose { kCard = 0, kNewCard = 1, kNewCardSaved = 2 };
enum class FormZone { kNotes = 0, kReferences = 1 };

// What the form asks of its window. Setting texts must not come back as a change.
class CardFormView {
 public:
  virtual ~CardFormView() = default;
  virtual void SetFieldText(int control, const std::string& utf8) = 0;
  [[nodiscard]] virtual std::string FieldText(int control) const = 0;
  virtual void SetReferences(const std::array<std::string, kReferenceCount>& utf8) = 0;
  // With the row that is being typed in closed first.
  [[nodiscard]] virtual std::array<std::string, kReferenceCount> References() = 0;
  // Takes the last change of a field back and empties its undo buffer.
  virtual void UndoChange(int control) = 0;
  // Input look: the person's three fields instead of the composed line, other colours. When it goes
  // off, a focus in the form goes to the list.
  virtual void SetEditLook(bool on) = 0;
  virtual void SetZone(FormZone zone) = 0;
  virtual void SetButton(int button, bool enabled) = 0;
  // Button 1008 with its cancel face and caption, or its create face and caption.
  virtual void SetCancelFace(bool cancel) = 0;
  // A button beside a number, for the sibling program that takes it: 1014 to 1017 and 1019.
  virtual void SetSiblingButton(int button, bool visible, bool enabled) = 0;
  virtual void FocusControl(int control) = 0;
  virtual void FocusList() = 0;
  virtual void Beep() = 0;
  // Delivers a command after the events that wait.
  virtual void PostCommand(int command) = 0;
  virtual void PostLeaveQuestion() = 0;
};

class CardForm {
 public:
  CardForm(CardFormView& view, CardList& list, MessageForm& messages, const Settings& settings);

  void SetDirectory(Directory* directory);
  [[nodiscard]] FormMode mode() const { return mode_; }
  [[nodiscard]] FormPurpose purpose() const { return purpose_; }
  [[nodiscard]] bool edit_look() const { return edit_look_; }
  // An existing card is open for editing and has a key: what button 1006 and its menu item need.
  [[nodiscard]] bool may_save_change() const;
  [[nodiscard]] int return_field() const { return return_field_; }
  [[nodiscard]] FormZone zone() const { return zone_; }
  [[nodiscard]] uint32_t displayed_card() const { return displayed_card_; }
  // The card in the form as it was read.
  [[nodiscard]] const CardRecord& shown() const { return shown_; }
  // The form holds what was typed, at rest too: after a save that was refused.
  [[nodiscard]] bool has_unsaved_text() const { return !edited_controls_.empty(); }
  // True while the list must not change what the form shows: a card is being keyed or a question is
  // on its way.
  [[nodiscard]] bool IsFrozen() const {
    return mode_ == FormMode::kLeaving || mode_ == FormMode::kAsking;
  }

  // Shows the list's current card, when it is not the one shown; `force` reads it again. Nothing
  // while a new card is keyed.
  void ShowCurrentCard(bool force);
  // The list was refilled: buttons follow the counts, and the current card is shown.
  void ListRefilled();
  void UpdateButtons();

  // The user changed a field; `row` is the reference typed in, for control 164.
  void FieldChanged(int control, int row = 0);
  // A field took the focus.
  void FieldEntered(int control);
  void ListEntered();
  // Comes after ListEntered with changes, when the list knows the row that the user went to.
  void LeaveQuestion();

  // The opening of nearly every command: false when there are changes and the user keeps them.
  [[nodiscard]] bool LeaveForm();

  void Confirm();  // Enter
  void Escape();
  void CreateCard();      // Insert, or 1008 with its create face
  void CreateOrCancel();  // button 1008
  void SaveChange();      // 1006
  void SaveNew();         // 1007
  void ShowZone(FormZone zone);

 private:
  // kHeld: another seat edits the card, or has changed it.
  enum class SaveOutcome { kSaved, kNoKey, kFailed, kHeld };

  void Rest();

  bool AskDiscard();
  void LookOff();
  void ClearForm();
  void ShowCard(const CardRecord& card);
  void ShowRow();
  void SetButtonsForMode(bool rest);
  [[nodiscard]] bool HasKeyText() const;
  [[nodiscard]] int IndexControl() const;
  void CheckFirstCharacter(int control, bool* undone);
  [[nodiscard]] CardRecord CollectCard();
  SaveOutcome SaveCard(bool is_change);
  bool AddCard(const CardRecord& card);
  SaveOutcome ReplaceCard(CardRecord card);
  void KeepFailedText();
  void ReportSave(SaveOutcome outcome);
  void AfterSave();

  CardFormView& view_;
  CardList& list_;
  MessageForm& messages_;
  const Settings& settings_;
  Directory* directory_ = nullptr;

  FormMode mode_ = FormMode::kRest;
  FormPurpose purpose_ = FormPurpose::kCard;
  bool creating_card_ = false;
  bool edit_look_ = false;
  bool cancel_face_ = false;
  bool first_keystroke_ = false;
  int return_field_ = 0;
  FormZone zone_;
  // The card in the form: its offset (0 for none or a new one) and its bytes as they were read.
  uint32_t displayed_card_ = 0;
  CardRecord shown_;
  std::set<int> edited_controls_;
  std::set<int> edited_references_;
};

}  // namespace carnetel
