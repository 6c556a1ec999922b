// Writing behind what another program left in a file. The programs that share such a file take no
// locks and count on whole records and whole jobs, so a block gets there whole or not at all.
#pragma once

#include <memory>
#include <string>

#include "storage/directory.h"

namespace carnetel {

// Opens such a file, made when it is missing and never emptied; null when it cannot be opened, or
// when it is one of the directory's own, in whatever case: records would spoil the cards.
[[nodiscard]] std::unique_ptr<File> OpenToAppend(const Directory& directory,
                                                 const std::string& path);

// Writes `block` from `position` on, which is at most the file's size; what stood there is written
// over. When it fails (a full disk), the file is as it was, as far as the disk allows.
[[nodiscard]] bool AppendBlock(File& file, uint64_t position, ByteView block);

}  // namespace carnetel
