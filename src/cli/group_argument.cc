#include "cli/group_argument.h"

namespace carnetel {

std::vector<OemText> GroupNames(GroupFile& groups) {
  const std::vector<GroupRecord> rows = groups.Rows();
  std::vector<OemText> names;
  for (size_t row = 1; row < rows.size(); ++row) names.push_back(rows[row].name());
  return names;
}

std::optional<FoundGroup> FindGroup(CliSession& session, GroupFile& groups,
                                    const std::string& name) {
  const std::optional<size_t> place = FindName(session, kGroupKind, GroupNames(groups), name);
  if (!place) return {};
  const std::optional<GroupRecord> record = groups.ReadRow(*place + 1);
  if (record && record->HasSlot()) return FoundGroup{*place + 1, *record};
  session.Fail("le groupe « " + name + " » est abîmé");
  return {};
}

uint32_t CountMembers(const Directory& directory, uint8_t slot) {
  uint32_t members = 0;
  for (uint32_t row = 0; row < directory.address().entry_count(); ++row) {
    if (directory.address().Entry(row).bit(slot)) ++members;
  }
  return members;
}

GroupScope::GroupScope(CliSession& session, Directory& directory, const Arguments& arguments,
                       std::string_view option)
    : session_(session), directory_(directory) {
  const std::optional<std::string> name = arguments.Value(option);
  if (!name) return;
  GroupFile groups(directory);
  group_ = FindGroup(session, groups, *name);
  found_ = group_.has_value();
  if (found_) Enter(group_->record.slot());
}

GroupScope::~GroupScope() {
  if (!group_) return;
  group_.reset();
  Enter(kWholeFileBit);
}

void GroupScope::Enter(uint8_t slot) {
  directory_.CloseListView();
  directory_.set_group_bit(slot);
  // A run that ended badly may have left a stale counter.
  Recount();
}

void GroupScope::Recount() {
  directory_.set_marked_count(static_cast<int32_t>(MarkedShown().size()));
}

std::vector<uint32_t> GroupScope::MarkedShown() const {
  std::vector<uint32_t> offsets;
  const AddressFile& address = directory_.address();
  for (uint32_t row = 0; row < address.entry_count(); ++row) {
    const EntrySlot entry = address.Entry(row);
    const bool marked = entry.bit(directory_.selection_bit());
    if (marked && Shows(entry)) offsets.push_back(entry.card_offset());
  }
  return offsets;
}

bool GroupScope::ShowsEach(const std::vector<uint32_t>& card_offsets) const {
  return Each(card_offsets, &GroupScope::Shows);
}

bool GroupScope::HoldsEach(const std::vector<uint32_t>& card_offsets) const {
  return Each(card_offsets, &GroupScope::Holds);
}

bool GroupScope::Each(const std::vector<uint32_t>& card_offsets, Test test) const {
  const AddressFile& address = directory_.address();
  for (const uint32_t card_offset : card_offsets) {
    const uint32_t row = address.FindRow(card_offset);
    if (row < address.entry_count() && (this->*test)(address.Entry(row))) continue;
    session_.Fail("la fiche de la ligne " + std::to_string(row + 1) + " n'est pas dans le groupe");
    return false;
  }
  return true;
}

}  // namespace carnetel
