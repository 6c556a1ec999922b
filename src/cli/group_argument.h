// The group that a command's line names, and the marks of that group.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "cli/command.h"
#include "cli/name_argument.h"
#include "selection/group_file.h"

namespace carnetel {

inline constexpr NamedKind kGroupKind = {"groupe", "groupes"};

// The names of the groups; the group at place p is row p + 1 of the file.
[[nodiscard]] std::vector<OemText> GroupNames(GroupFile& groups);

// A group by its name.
struct FoundGroup {
  size_t row = 0;
  GroupRecord record;
};
// Nothing when the name is not there, stands twice, or names a group without a bit pair (told).
[[nodiscard]] std::optional<FoundGroup> FindGroup(CliSession& session, GroupFile& groups,
                                                  const std::string& name);

[[nodiscard]] uint32_t CountMembers(const Directory& directory, uint8_t slot);

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
  [[nodiscard]] bool is_group() const { return group_.has_value(); }
  // Of the group file; 0 is the whole file.
  [[nodiscard]] size_t row() const { return group_ ? group_->row : 0; }
  // Of a group: whether the card is a member.
  [[nodiscard]] bool Holds(const EntrySlot& entry) const {
    return !group_ || entry.bit(group_->record.slot());
  }
  // Whether the view of the group shows the card: a member, or any card with display mode 1.
  [[nodiscard]] bool Shows(const EntrySlot& entry) const {
    return Holds(entry) || group_->record.mode() != kMembersOnly;
  }
  // False when one of the cards is not shown, or no member (told).
  [[nodiscard]] bool ShowsEach(const std::vector<uint32_t>& card_offsets) const;
  [[nodiscard]] bool HoldsEach(const std::vector<uint32_t>& card_offsets) const;

  // The offsets of the marked cards that are shown. A card that is not may bear a mark all the
  // same: a new group takes over the marks of the deleted one that had its bit pair.
  [[nodiscard]] std::vector<uint32_t> MarkedShown() const;
  // Makes the count of marks that of the marked cards that are shown.
  void Recount();

 private:
  using Test = bool (GroupScope::*)(const EntrySlot&) const;
  [[nodiscard]] bool Each(const std::vector<uint32_t>& card_offsets, Test test) const;
  void Enter(uint8_t slot);

  CliSession& session_;
  Directory& directory_;
  std::optional<FoundGroup> group_;
  bool found_ = true;
};

}  // namespace carnetel
