// The numbered text table: every text a user reads, the names of the card's fields and most fixed
// file names and settings keys, in French. The numbers are the names: callers say LoadText(48).
#pragma once

#include <cstddef>
#include <string_view>

namespace carnetel {

// No text of the table is longer than this, in characters.
inline constexpr size_t kLongestText = 127;

// The text of that number in UTF-8, empty for a number without one. It lives as long as the program
// and ends in a zero byte.
[[nodiscard]] std::string_view LoadText(int id);

}  // namespace carnetel
