// A line of a script taken apart into words as a shell does it: blanks part them, single quotes
// keep everything, double quotes keep blanks and know \" and \\, a backslash keeps the next
// character, and # at the start of a word begins a comment.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace carnetel {

// Nothing when a quote is not closed or a backslash stands at the end.
[[nodiscard]] std::optional<std::vector<std::string>> SplitScriptLine(std::string_view line);

}  // namespace carnetel
