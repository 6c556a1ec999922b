// Writing behind what another program left in a file. The programs that share such a file take no
// locks and count on whole records and whole jobs, so a block gets there whole or not at all.
#pragma once

#include "platform/file_system.h"

namespace carnetel {

// Writes `block` from `position` on, which is at most the file's size; what stood there is written
// over. When it fails (a full disk), the file is as it was, as far as the disk allows.
[[nodiscard]] bool AppendBlock(File& file, uint64_t position, ByteView block);

}  // namespace carnetel
