// Main files of releases before 05.00: the same header block and cards of the same 768 bytes, with
// other field sizes. Opening such a file writes it anew in the current layout.
//
//   old field  10   24 bytes at 277 (now 32)
//              11   24 bytes at 301 (now 16 at 309)
//              26   128 bytes at 610 (now 64)
//              27   12 bytes at 738 (now 21 at 674)
//              28   18 bytes at 750 (now 12 at 695)
//              29, 30   none
//
// Indexes and address file stay where they are and are judged by the next opening as always.
#pragma once

#include <string>

#include "storage/card_record.h"
#include "storage/directory.h"

namespace carnetel {

inline constexpr std::array<uint16_t, kFieldCount> kOldFieldSizes = {
    32, 32, 32, 32, 32, 5, 32, 32, 24, 24, 24,  24, 24, 24, 24, 24,
    24, 24, 24, 24, 21, 4, 21, 12, 21, 14, 128, 12, 18, 0,  0};

// A card of the old layout in the current one. The short postal code becomes the start of the long
// one; a surname kept in the title field moves to its own. What does not fit runs into the fields
// behind and is cut by them.
[[nodiscard]] CardRecord UpgradeCard(const CardRecord& old);

// Writes the old main file at `path` anew; the description is lost. False when it cannot be read,
// when its banner is not one that the new version fits into, or when the new file could not be
// written whole: then the old one is as it was.
[[nodiscard]] bool UpgradeMainFile(FileSystem& files, const std::string& path);

// Opens a directory; one of an older version is upgraded first. `*upgraded` tells that it was.
OpenResult OpenUpgrading(Directory& directory, bool* upgraded = nullptr);

}  // namespace carnetel
