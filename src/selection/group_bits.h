// Which cards are members of a group: one bit in each entry of the address file, set and cleared
// from the marks of what is displayed.
#pragma once

#include <cstdint>

#include "storage/directory.h"

namespace carnetel {

enum class GroupOperation {
  kCreate = 1,   // marked cards become members
  kReplace = 2,  // marked cards become members, others leave
  kDelete = 3,   // all leave
  kMerge = 4,    // marked cards become members too
};

// On the disk when it returns. A group that takes over the slot of a deleted one inherits its
// marks: the slot's own selection bits are never cleared here.
void ApplyGroupBits(Directory& directory, uint8_t slot, GroupOperation operation);

}  // namespace carnetel
