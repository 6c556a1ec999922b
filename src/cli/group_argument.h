// The group that a command's line names, and the marks of that group.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/card_arguments.h"
#include "cli/command.h"
#include "selection/group_file.h"

namespace carnetel {

// The row of a group by its name without regard to case; nothing when there is none of that name or
// more than one (told).
[[nodiscard]] std::optional<size_t> FindGroup(CliSession& session, GroupFile& groups,
                                              const std::string& name);

// What a command works on: the whole file, or the group that an option names. As long as it lives,
// marks and their count are those of the group.
class GroupScope {
 public:
  // Without the option, the whole file.
  GroupScope(CliSession& session, Directory& directory, const Arguments& arguments,
             std::string_view option = "--group");
  ~GroupScope();
  GroupScope(const GroupScope&) = delete;
  GroupScope& operator=(const GroupScope&) = delete;

  // False when the group could not be found (told).
  [[nodiscard]] bool found() const { return found_; }
  [[nodiscard]] bool is_group() const { return record_.has_value(); }
  [[nodiscard]] size_t row() const { return row_; }
  // Whether what is displayed shows cards that are no members.
  [[nodiscard]] bool shows_all() const { return !record_ || record_->mode() != kMembersOnly; }
  [[nodiscard]] bool Shows(const EntrySlot& entry) const {
    return shows_all() || entry.bit(record_->slot());
  }
  // False when one of the cards is not shown in the group (told).
  [[nodiscard]] bool ShowsEach(const std::vector<uint32_t>& card_offsets) const;

 private:
  void Enter(uint8_t slot);

  CliSession& session_;
  Directory& directory_;
  std::optional<GroupRecord> record_;
  size_t row_ = 0;
  bool found_ = true;
};

}  // namespace carnetel
