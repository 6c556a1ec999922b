#include "selection/named_sets.h"

#include <utility>

namespace carnetel {
namespace {

constexpr int kAttention = 80;
constexpr int kError = 79;
constexpr int kToBeDeleted = 36;
constexpr int kToBeLoaded = 41;
constexpr int kNothingToStore = 46;

}  // namespace

NamedSetsForm::NamedSetsForm(SetStore& store, MessageForm& messages, AskName ask_name)
    : store_(store),
      messages_(messages),
      ask_name_(std::move(ask_name)),
      names_(store.Names()),
      selected_(names_.empty() ? -1 : 0) {}

bool NamedSetsForm::HasSelection() const {
  return selected_ >= 0 && static_cast<size_t>(selected_) < names_.size();
}

std::string NamedSetsForm::SelectedName() const {
  return HasSelection() ? names_[static_cast<size_t>(selected_)] : std::string();
}

NamedSetsForm::Buttons NamedSetsForm::EnabledButtons() const {
  const bool any = !names_.empty();
  const bool content = store_.HasContent();
  const bool may_load = any && (!HasSelection() || store_.MayLoad(static_cast<size_t>(selected_)));
  return {may_load, content, any && content, any, any};
}

// An emptied name counts as none: no set has an empty one.
std::optional<std::string> NamedSetsForm::Ask(const std::string& offered) {
  std::optional<std::string> name = ask_name_(offered);
  if (name && name->empty()) name.reset();
  return name;
}

bool NamedSetsForm::TellNothingToStore() {
  if (store_.HasContent()) return false;
  messages_.ShowMessage(MessageStyle::kError, kError, kNothingToStore);
  return true;
}

NamedSetsForm::Outcome NamedSetsForm::Load() {
  const MessageButton answer =
      messages_.ShowMessage(MessageStyle::kOkCancel, kAttention, kToBeLoaded, SelectedName());
  const Outcome unanswered = store_.LoadQuestionEnds() ? Outcome::kLoaded : Outcome::kStays;
  if (answer != MessageButton::kOk) return unanswered;
  if (!HasSelection()) return Outcome::kBeeps;
  (void)store_.Load(static_cast<size_t>(selected_));
  return Outcome::kLoaded;
}

NamedSetsForm::Outcome NamedSetsForm::Add() {
  if (TellNothingToStore()) return Outcome::kStays;
  const std::optional<std::string> name = Ask(store_.NameForNew());
  if (!name || !store_.Add(*name)) return Outcome::kStays;
  names_.push_back(*name);
  selected_ = static_cast<int>(names_.size()) - 1;
  return Outcome::kStays;
}

NamedSetsForm::Outcome NamedSetsForm::ChangeSelected(bool rename) {
  if (!HasSelection()) return Outcome::kBeeps;
  const std::optional<std::string> name = Ask(SelectedName());
  if (!name) return Outcome::kStays;
  const auto position = static_cast<size_t>(selected_);
  const bool done = rename ? store_.Rename(position, *name) : store_.Replace(position, *name);
  if (done) names_[position] = *name;
  return Outcome::kStays;
}

NamedSetsForm::Outcome NamedSetsForm::Replace() {
  return TellNothingToStore() ? Outcome::kStays : ChangeSelected(false);
}

NamedSetsForm::Outcome NamedSetsForm::Rename() {
  return ChangeSelected(true);
}

NamedSetsForm::Outcome NamedSetsForm::Delete() {
  if (!HasSelection()) return Outcome::kBeeps;
  const MessageButton answer =
      messages_.ShowMessage(MessageStyle::kOkCancel, kAttention, kToBeDeleted, SelectedName());
  if (answer != MessageButton::kOk) return Outcome::kStays;
  if (store_.Delete(static_cast<size_t>(selected_))) {
    names_.erase(names_.begin() + selected_);
  } else {
    // One that failed half-way may have cut off others too.
    names_ = store_.Names();
  }
  const int last = static_cast<int>(names_.size()) - 1;
  // An empty list has no selection; until then the same place, or the last one.
  selected_ = std::min(store_.DeletionSelectsFirst() ? 0 : selected_, last);
  return Outcome::kStays;
}

}  // namespace carnetel
