#include "shell/pickers.h"

#include "base/code_page.h"
#include "selection/selection_scan.h"

namespace carnetel {
namespace {

constexpr int kWholeFileName = 164;
constexpr int kNoSetName = 165;

}  // namespace

void Pickers::SetDirectory(Directory* directory, Position position) {
  directory_ = directory;
  group_ = set_ = last_set_ = last_group_ = 0;
  list_.SetDisplayedGroup({});
  criteria_.reset();
  groups_ = {std::string(LoadText(kWholeFileName))};
  sets_ = {std::string(LoadText(kNoSetName))};
  if (directory_ == nullptr) return;
  if (directory_->group_bit() != kWholeFileBit) {
    directory_->CloseListView();
    directory_->set_group_bit(kWholeFileBit);
  }
  criteria_ = std::make_unique<CriteriaFile>(directory_->files(), directory_->paths().Of(".CRT"));
  const bool made = GroupFile(*directory_).Check();
  ReloadGroups();
  ReloadSets();
  last_set_ = set_;
  const std::optional<GroupRecord> whole_file = DisplayedRecord();
  if (made || !whole_file || position == Position::kOfAddressFile) return;
  directory_->address().header().set_current_row(whole_file->current_row());
  directory_->address().header().set_top_row(whole_file->top_row());
}

std::optional<GroupRecord> Pickers::DisplayedRecord() const {
  return GroupFile(*directory_).ReadRow(static_cast<size_t>(group_));
}

AnsiText Pickers::SetName() const {
  return AnsiFromUtf8Lossy(sets_[static_cast<size_t>(set_)]);
}

void Pickers::ReloadGroups() {
  groups_.clear();
  for (const GroupRecord& row : GroupFile(*directory_).Rows()) {
    groups_.push_back(Utf8FromOem(row.name()));
  }
  if (groups_.empty()) groups_ = {std::string(LoadText(kWholeFileName))};
  if (group_ >= static_cast<int>(groups_.size())) group_ = 0;
}

void Pickers::ReloadSets() {
  (void)criteria_->ReadCriteriaHeader();
  sets_ = {std::string(LoadText(kNoSetName))};
  for (const OemText& name : criteria_->ListCriteriaSets()) sets_.push_back(Utf8FromOem(name));
  const int active = criteria_->active_set();
  set_ = active >= 0 && active < static_cast<int>(sets_.size()) ? active : 0;
}

// True when something else is displayed from now on.
bool Pickers::SwitchGroup(int row) {
  const std::optional<GroupRecord> record =
      GroupFile(*directory_).ReadRow(static_cast<size_t>(row));
  // A group that names no bit pair cannot be displayed.
  if (!record || (row != 0 && !record->HasSlot())) return false;
  const uint8_t slot = row == 0 ? kWholeFileBit : record->slot();
  const bool flagged = row != 0 && record->mode() != kMembersOnly;
  group_ = row;
  const bool other =
      slot != directory_->group_bit() || flagged != list_.displayed_group().whole_file;
  list_.SetDisplayedGroup({row, flagged});
  if (!other) return false;
  directory_->CloseListView();
  directory_->set_group_bit(slot);
  return true;
}

void Pickers::PickGroup(int row) {
  if (directory_ == nullptr) return;
  StorePosition();
  if (!SwitchGroup(row)) return;
  list_.ListRefill();
  const std::optional<GroupRecord> record = DisplayedRecord();
  if (!record) return;
  // The set's name is shown; its criteria are not loaded and nothing is scanned.
  const std::string name = Utf8FromAnsi(record->set_name_shown());
  for (size_t i = 0; i < sets_.size(); ++i) {
    if (CompareKey(sets_[i], name, name.size() + 1) != 0) continue;
    set_ = static_cast<int>(i);
    criteria_->set_active_set(static_cast<int16_t>(i));
    break;
  }
  list_.GoToRows(record->current_row(), record->top_row());
}

void Pickers::RememberSet() {
  GroupFile file(*directory_);
  std::optional<GroupRecord> record = file.ReadRow(static_cast<size_t>(group_));
  if (!record) return;
  if (group_ == 0) record->set_name(OemFromUtf8Lossy(LoadText(kWholeFileName)));
  record->set_set_name(SetName());
  file.WriteRow(static_cast<size_t>(group_), *record);
}

void Pickers::PickSet(int row, Memory memory) {
  if (directory_ == nullptr || row < 0 || row >= static_cast<int>(sets_.size())) return;
  const bool changed = row != last_set_ || group_ != last_group_;
  const bool was_none = !changed && last_set_ == 0;
  set_ = last_set_ = row;
  last_group_ = group_;
  criteria_->set_active_set(static_cast<int16_t>(row));
  if (row == 0 && !was_none) list_.DeselectListed();
  if (memory == Memory::kRemembers) RememberSet();
  if (row == 0 || !changed) return;
  (void)criteria_->LoadCriteriaSet(static_cast<size_t>(row));
  ScanGroupMembers(*directory_, criteria_->rows(), false, std::nullopt);
  list_.ListRefill();
  const int first = list_.first_marked_row();
  if (first >= 0) list_.GoToRows(first, first);
}

void Pickers::StorePosition() {
  if (directory_ == nullptr) return;
  list_.StorePosition();
  GroupFile file(*directory_);
  std::optional<GroupRecord> record = file.ReadRow(static_cast<size_t>(group_));
  if (!record) return;
  const AddressHeader& header = directory_->address().header();
  if (group_ == 0) {
    record->set_rows(header.current_row(), header.top_row());
  } else {
    record->set_rows(static_cast<uint16_t>(list_.current_row()),
                     static_cast<uint16_t>(list_.top_row()));
  }
  file.WriteRow(static_cast<size_t>(group_), *record);
}

void Pickers::StoreActiveSet() {
  if (criteria_ != nullptr) (void)criteria_->WriteHeader();
}

}  // namespace carnetel
