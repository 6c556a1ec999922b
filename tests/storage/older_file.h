// Main files of releases before 05.00 as the tests write them down, composed from the numbers of
// their layout and nothing of the code under test.
#pragma once

#include "tests/storage/family_bytes.h"

namespace carnetel {

inline constexpr std::string_view kOlderBanner = "CARNETEL DROV SOFTW. VER 04.10";

// A piece of a file: where it starts, and its bytes.
using Piece = std::pair<size_t, std::string>;

// `size` bytes with these pieces; zeros elsewhere.
FileBytes BytesWith(size_t size, const std::vector<Piece>& pieces);

// 768 bytes of a card in the old layout, its fields by number.
FileBytes OldCard(const std::vector<std::pair<int, std::string>>& fields);

// The header block of an old file: described, of seat 7, with a stamp, with bytes behind the header
// that no current file has.
FileBytes OldHeader(uint16_t count, std::string_view banner = kOlderBanner);

// That header and these blocks behind it.
FileBytes OldMainFile(const std::vector<FileBytes>& cards, std::string_view banner = kOlderBanner);

// The header block that an upgrade of such a file gives.
FileBytes UpgradedHeader(uint16_t count,
                         std::string_view banner = "CARNETEL DROV SOFTW. VER 05.00");

// Files one behind the other.
FileBytes Joined(const std::vector<FileBytes>& files);

}  // namespace carnetel
