// Reading the groups of a directory: their names, the bit that their members have in the address
// file, and how they are displayed. Row 0 of the file, the whole file, is no group.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/file_system.h"
#include "storage/group_format.h"

namespace carnetel {

inline constexpr uint8_t kFirstGroupSlot = 2;
inline constexpr uint8_t kLastGroupSlot = 88;

struct GroupRow {
  OemText name;
  uint8_t slot = 0;  // the mark bit of its members
  uint8_t mode = 0;  // 0 members only, 1 the whole file with the members flagged
};

// In the order of the file; empty without a file. Rows whose slot is no group's are left out.
[[nodiscard]] std::vector<GroupRow> ReadGroups(FileSystem& files, const std::string& path);

}  // namespace carnetel
