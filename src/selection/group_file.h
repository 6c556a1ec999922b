// The group file of a directory: the names of its groups, the bit pair of each, how each is
// displayed and what its list looked like when it was left. Row 0 is the whole file; the group at
// place p of a list is row p + 1. Which cards are members stands in the address file
// (selection/group_bits.h).
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "storage/directory.h"
#include "storage/group_format.h"

namespace carnetel {

class GroupFile {
 public:
  // The directory must be open whenever this is used.
  explicit GroupFile(Directory& directory);

  // Makes the file when it is missing, is no group file, or belongs to an address file of another
  // path: a directory that was moved or renamed loses the names of its groups, their bits stay.
  // True when it was made.
  bool Check();

  // All rows, row 0 first; empty when the file cannot be read.
  [[nodiscard]] std::vector<GroupRecord> Rows();
  // Those that name a bit pair: what cards can be members of.
  [[nodiscard]] std::vector<GroupRecord> Groups();
  [[nodiscard]] std::optional<GroupRecord> ReadRow(size_t row);
  bool WriteRow(size_t row, const GroupRecord& record);

  // What belongs to a group besides its members.
  struct Description {
    OemText name;
    uint8_t mode = kMembersOnly;
  };

  // Each of these works on the marks of what is displayed; `set_name` is the entry that the list of
  // criteria sets shows. False when the file could not be opened or written.

  // `displayed`: the row of what is displayed, of which the new row keeps what it does not set.
  bool CreateGroup(const Description& description, const AnsiText& set_name, size_t displayed);
  bool ReplaceGroup(size_t row, const Description& description, const AnsiText& set_name);
  // Name and mode only: the members stay.
  bool RenameGroup(size_t row, const Description& description, const AnsiText& set_name);
  bool MergeGroup(size_t row);
  bool DeleteGroup(size_t row);

 private:
  [[nodiscard]] OemText AddressPath() const;
  [[nodiscard]] bool Belongs(ByteView header) const;
  bool WriteCount(size_t count);
  bool Describe(size_t row, const Description& description, const AnsiText& set_name);

  Directory& directory_;
  std::string path_;
};

}  // namespace carnetel
