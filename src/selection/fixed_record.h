// Files of a header and records of one size, such as criteria and groups.
#pragma once

#include <string>

#include "platform/file_system.h"

namespace carnetel {

enum class RecordDeletion { kNotOpened = -1, kWriteFailed = 0, kDeleted = 1 };

// Takes record `number` (from 0) out of the file at `path`, whose records of `size` bytes start at
// `base`: the records behind it move one place down and the file is cut behind the last whole one.
// A write that fails stops the move; the file is cut at the place reached all the same.
RecordDeletion DeleteFixedRecord(FileSystem& files, const std::string& path, uint64_t base,
                                 size_t size, size_t number);

}  // namespace carnetel
