#include "selection/groups_form.h"

#include <algorithm>
#include <utility>

#include "base/code_page.h"

namespace carnetel {
namespace {

constexpr int kError = 79;
constexpr int kAttention = 80;
constexpr int kToBeDeleted = 36;
constexpr int kNoSelection = 50;
constexpr int kListFull = 197;
constexpr int kToBeMerged = 245;
constexpr int kMembersText = 273;
constexpr int kWholeFileText = 274;

GroupFile::Description ForFile(const GroupDescription& group) {
  return {OemFromUtf8Lossy(group.name), group.mode};
}

}  // namespace

GroupsForm::GroupsForm(Directory& directory, MessageForm& messages, AskGroup ask_group, Place place)
    : directory_(directory),
      file_(directory),
      messages_(messages),
      ask_group_(std::move(ask_group)),
      place_(std::move(place)) {
  (void)file_.Check();
  ListGroups();
  if (!groups_.empty()) selected_ = 0;
}

void GroupsForm::ListGroups() {
  groups_.clear();
  const std::vector<GroupRecord> rows = file_.Rows();
  for (size_t row = 1; row < rows.size(); ++row) {
    groups_.push_back({Utf8FromOem(rows[row].name()), rows[row].mode()});
  }
}

bool GroupsForm::HasSelection() const {
  return selected_ >= 0 && static_cast<size_t>(selected_) < groups_.size();
}

GroupsForm::Buttons GroupsForm::EnabledButtons() const {
  const bool marks = directory_.marked_count() != 0;
  const bool any = !groups_.empty();
  return {marks, marks && any, marks && any, any, any};
}

std::string GroupsForm::ModeText() const {
  if (!HasSelection()) return {};
  const uint8_t mode = groups_[static_cast<size_t>(selected_)].mode;
  return std::string(LoadText(mode == kMembersOnly ? kMembersText : kWholeFileText));
}

bool GroupsForm::TellNoMarks() {
  if (directory_.marked_count() != 0) return false;
  messages_.ShowMessage(MessageStyle::kError, kError, kNoSelection);
  return true;
}

GroupsForm::Outcome GroupsForm::Create() {
  if (groups_.size() >= kMostGroups) {
    messages_.ShowMessage(MessageStyle::kError, kError, kListFull);
    return Outcome::kStays;
  }
  if (TellNoMarks()) return Outcome::kStays;
  const std::optional<GroupDescription> group = Ask({});
  if (!group) return Outcome::kStays;
  if (!file_.CreateGroup(ForFile(*group), place_.set_name, place_.displayed)) {
    return Outcome::kStays;
  }
  groups_.push_back(*group);
  selected_ = static_cast<int>(groups_.size()) - 1;
  return Outcome::kStays;
}

// An emptied name counts as none: no group has an empty one.
std::optional<GroupDescription> GroupsForm::Ask(const GroupDescription& offered) {
  std::optional<GroupDescription> group = ask_group_(offered);
  if (group && group->name.empty()) group.reset();
  return group;
}

std::optional<GroupDescription> GroupsForm::AskAboutSelected() {
  return Ask(groups_[static_cast<size_t>(selected_)]);
}

GroupsForm::Outcome GroupsForm::Replace() {
  if (TellNoMarks()) return Outcome::kStays;
  if (!HasSelection()) return Outcome::kBeeps;
  const std::optional<GroupDescription> group = AskAboutSelected();
  if (group && file_.ReplaceGroup(SelectedRow(), ForFile(*group), place_.set_name)) {
    groups_[static_cast<size_t>(selected_)] = *group;
  }
  return Outcome::kStays;
}

GroupsForm::Outcome GroupsForm::Rename() {
  if (!HasSelection()) return Outcome::kBeeps;
  const std::optional<GroupDescription> group = AskAboutSelected();
  if (group && file_.RenameGroup(SelectedRow(), ForFile(*group), place_.set_name)) {
    groups_[static_cast<size_t>(selected_)] = *group;
  }
  return Outcome::kStays;
}

GroupsForm::Outcome GroupsForm::Merge() {
  if (!HasSelection()) return Outcome::kBeeps;
  const MessageButton answer = messages_.ShowMessage(MessageStyle::kYesNo, kAttention, kToBeMerged,
                                                     groups_[static_cast<size_t>(selected_)].name);
  if (answer == MessageButton::kYes) (void)file_.MergeGroup(SelectedRow());
  return Outcome::kStays;
}

GroupsForm::Outcome GroupsForm::Delete() {
  if (!HasSelection()) return Outcome::kBeeps;
  const MessageButton answer =
      messages_.ShowMessage(MessageStyle::kOkCancel, kAttention, kToBeDeleted,
                            groups_[static_cast<size_t>(selected_)].name);
  if (answer != MessageButton::kOk) return Outcome::kStays;
  if (file_.DeleteGroup(SelectedRow())) {
    groups_.erase(groups_.begin() + selected_);
  } else {
    // One that failed half-way may have cut off others too.
    ListGroups();
  }
  selected_ = std::min(selected_, static_cast<int>(groups_.size()) - 1);
  return Outcome::kStays;
}

}  // namespace carnetel
