// Lines for whoever looks for a fault: to standard error when $CARNETEL_DEBUG is set, else nowhere.
// There are no log files and no levels.
#pragma once

#include <functional>
#include <string_view>

#include "platform/folders.h"

namespace carnetel {

using DebugLine = std::function<void(std::string_view)>;

// The longest line; what is longer is cut.
inline constexpr size_t kLongestDebugLine = 271;

// The sink of this run.
[[nodiscard]] DebugLine DebugLineFor(const Environment& environment);

}  // namespace carnetel
