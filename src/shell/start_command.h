// Starts the command line of another program, as the profile holds it: a program with its options,
// parted by blanks, in double quotes where a path has blanks of its own. The program begins in its
// own folder, where it may look for what belongs to it.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/file_system.h"

namespace carnetel {

// The words of a command line. Double quotes hold blanks together and go; three in a row are one
// quote of the text.
[[nodiscard]] std::vector<std::string> SplitCommand(std::string_view command_line);

// Starts a program by its words in a folder, empty for the current one; false when it cannot.
using WordStarter =
    std::function<bool(const std::vector<std::string>& words, const std::string& working_folder)>;

// False when the line has no word or the program cannot be started. A program named without a
// folder is looked for where the system looks for programs, and begins in the current one. A path
// with blanks that nobody put in quotes is tried as far as there is a file of that name.
[[nodiscard]] bool StartCommand(FileSystem& files, std::string_view command_line,
                                const WordStarter& start);

}  // namespace carnetel
