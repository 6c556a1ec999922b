// Saving from the card form: what the controls hold becomes a card, which is added, rewritten in
// place, or deleted and added under its new key.
#include "base/code_page.h"
#include "shell/card_form.h"
#include "storage/card_dispatch.h"
#include "storage/card_edit.h"

namespace carnetel {
namespace {

// The window lets no character through that the cards cannot hold, so nothing is lost here.
OemText FromScreen(const std::string& utf8) {
  return OemFromUtf8Lossy(WithCrLf(utf8));
}

}  // namespace

CardRecord CardForm::CollectCard() {
  CardRecord card;
  for (const FormField& row : kFormFields) {
    if (!edited_controls_.contains(row.control)) {
      card.CopyFieldFrom(shown_, row.field);
      continue;
    }
    const OemText text = FromScreen(view_.FieldText(row.control));
    if (row.field == kPostalCode) {
      SetPostalCode(card, text);
    } else {
      card.SetField(row.field, text);
    }
  }
  if (!edited_controls_.contains(kControlPostalCode)) card.CopyFieldFrom(shown_, kShortPostalCode);
  const std::array<std::string, kReferenceCount> references = view_.References();
  for (int i = 0; i < kReferenceCount; ++i) {
    const int field = kRef1 + i;
    if (edited_references_.contains(i)) {
      card.SetField(field, FromScreen(references[static_cast<size_t>(i)]));
    } else {
      card.CopyFieldFrom(shown_, field);
    }
  }
  StripKeyFields(card);
  return card;
}

bool CardForm::AddCard(const CardRecord& card) {
  directory_->context().current = card;
  uint32_t position = 0;
  if (CardDispatch(*directory_).Add(false, &position) < 0) return false;
  displayed_card_ = directory_->last_inserted().card_offset;
  return true;
}

CardForm::SaveOutcome CardForm::SaveCard(bool is_change) {
  const CardRecord card = CollectCard();
  if (!HasKeyField(card)) return SaveOutcome::kNoKey;
  if (is_change && displayed_card_ != 0) return ReplaceCard(card);
  if (AddCard(card)) return SaveOutcome::kSaved;
  return directory_->lock_refused() ? SaveOutcome::kHeld : SaveOutcome::kFailed;
}

CardForm::SaveOutcome CardForm::ReplaceCard(CardRecord card) {
  const ChangeScope change(*directory_);
  if (!change) return SaveOutcome::kHeld;
  CardRecord old;
  const bool is_there = directory_->main().ReadCard(displayed_card_, old);
  // With seats another card may lie there by now, or the same one with other texts.
  const bool is_same = !directory_->is_shared() || (is_there && old == shown_);
  if (!is_same || !directory_->TestCardLock(displayed_card_)) return SaveOutcome::kHeld;
  if (!is_there) return SaveOutcome::kFailed;
  CarryHiddenFields(card, old);
  const ChangedCard changed = ChangeCard(*directory_, displayed_card_, card);
  if (changed.result != ChangeResult::kNotPossible) {
    displayed_card_ = changed.card_offset;
    return SaveOutcome::kSaved;
  }
  // When the disk failed half-way, another card may lie there now: it must not be written over.
  CardRecord there;
  const bool stayed = directory_->main().ReadCard(displayed_card_, there) && there == old;
  if (!stayed) displayed_card_ = 0;
  return directory_->lock_refused() ? SaveOutcome::kHeld : SaveOutcome::kFailed;
}

// What was typed stays in the form, at rest; the list shows what the stores hold.
void CardForm::KeepFailedText() {
  mode_ = FormMode::kChanged;
  list_.ListRefill();
  Rest();
}

void CardForm::ReportSave(SaveOutcome outcome) {
  if (outcome == SaveOutcome::kNoKey) messages_.ShowMessage(MessageStyle::kError, 79, 30);
  if (outcome == SaveOutcome::kFailed) messages_.ShowMessage(MessageStyle::kError, 79, 48);
  if (outcome == SaveOutcome::kHeld) messages_.ShowMessage(MessageStyle::kError, 79, 177);
}

void CardForm::AfterSave() {
  Rest();
  list_.ListRefill();
}

void CardForm::SaveChange() {
  if (directory_ == nullptr) return;
  const SaveOutcome outcome = SaveCard(list_.row_count() != 0);
  ReportSave(outcome);
  const bool failed = outcome == SaveOutcome::kFailed || outcome == SaveOutcome::kHeld;
  if (failed) return KeepFailedText();
  const uint32_t saved = displayed_card_;
  // A card without a key is not saved, and what was typed is lost all the same: that has to stay.
  purpose_ = FormPurpose::kCard;
  creating_card_ = false;
  AfterSave();
  if (outcome == SaveOutcome::kSaved) list_.FindCardRow(saved);
  view_.FocusList();
}

void CardForm::SaveNew() {
  if (directory_ == nullptr) return;
  const SaveOutcome outcome = SaveCard(false);
  ReportSave(outcome);
  const bool failed = outcome == SaveOutcome::kFailed || outcome == SaveOutcome::kHeld;
  if (failed) return KeepFailedText();
  const uint32_t saved = displayed_card_;
  purpose_ = purpose_ == FormPurpose::kNewCard ? FormPurpose::kNewCardSaved : FormPurpose::kCard;
  creating_card_ = false;
  AfterSave();
  if (outcome == SaveOutcome::kSaved) list_.FindCardRow(saved);
  view_.FocusList();
}

}  // namespace carnetel
