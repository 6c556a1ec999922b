// Starting other programs: one whose end is waited for, and one that goes its own way. The first
// word names the program, by a path or by a name that is looked for in PATH; no shell comes
// between, so that words reach it as they are. Its standard input and output are the null device: a
// program that is started here must not mix into what this one prints. Standard error stays.
#pragma once

#include <string>
#include <vector>

namespace carnetel {

// The exit status, 128 and the signal's number when a signal ended it, -1 when it cannot be
// started.
[[nodiscard]] int RunProgram(const std::vector<std::string>& words);

// Starts a program that lives on when this one ends and leaves nothing behind in it. It begins in
// `working_folder`, in the current one when that is empty; a relative path of the program counts
// from there. False when it cannot be started.
[[nodiscard]] bool StartProgram(const std::vector<std::string>& words,
                                const std::string& working_folder);

}  // namespace carnetel
