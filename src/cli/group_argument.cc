#include "cli/group_argument.h"

#include "base/code_page.h"
#include "selection/marks.h"

namespace carnetel {

std::optional<size_t> FindGroup(CliSession& session, GroupFile& groups, const std::string& name) {
  const std::vector<GroupRecord> rows = groups.Rows();
  const OemText wanted = OemFromUtf8Lossy(name);
  std::optional<size_t> found;
  for (size_t row = 1; row < rows.size(); ++row) {
    if (!SameName(rows[row].name(), wanted)) continue;
    if (found) {
      session.Fail("plusieurs groupes portent le nom « " + name + " »");
      return {};
    }
    found = row;
  }
  if (!found) session.Fail("pas de groupe « " + name + " »");
  return found;
}

GroupScope::GroupScope(CliSession& session, Directory& directory, const Arguments& arguments,
                       std::string_view option)
    : session_(session), directory_(directory) {
  const std::optional<std::string> name = arguments.Value(option);
  if (!name) return;
  GroupFile groups(directory);
  const std::optional<size_t> row = FindGroup(session, groups, *name);
  const std::optional<GroupRecord> record = row ? groups.ReadRow(*row) : std::nullopt;
  found_ = record.has_value();
  if (record && !record->HasSlot()) {
    found_ = false;
    session.Fail("le groupe « " + *name + " » est abîmé");
  }
  if (!found_) return;
  record_ = record;
  row_ = *row;
  Enter(record_->slot());
}

GroupScope::~GroupScope() {
  if (record_) Enter(kWholeFileBit);
}

void GroupScope::Enter(uint8_t slot) {
  directory_.CloseListView();
  directory_.set_group_bit(slot);
  // A run that ended badly may have left a stale counter.
  directory_.set_marked_count(CountMarks(directory_));
}

bool GroupScope::ShowsEach(const std::vector<uint32_t>& card_offsets) const {
  const AddressFile& address = directory_.address();
  for (const uint32_t card_offset : card_offsets) {
    const uint32_t row = address.FindRow(card_offset);
    if (row < address.entry_count() && Shows(address.Entry(row))) continue;
    session_.Fail("la fiche de la ligne " + std::to_string(row + 1) + " n'est pas dans le groupe");
    return false;
  }
  return true;
}

}  // namespace carnetel
