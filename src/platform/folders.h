// Where the user's things are: the profile file and the home folder of the program, by environment
// variables first and the usual places of the desktop else. Nothing is made here.
#pragma once

#include <functional>
#include <string>

#include "platform/file_system.h"

namespace carnetel {

// The value of an environment variable, empty when it is not set.
using Environment = std::function<std::string(const std::string& name)>;

// The environment of this process; HOME, when it is not set, as the system's user list has it.
[[nodiscard]] std::string SystemEnvironment(const std::string& name);

// The folder of the running executable with its trailing '/'; empty when it cannot be had.
[[nodiscard]] std::string ExecutableFolder();

// $CARNETEL_PROFILE, else carnetel/profile.ini in $XDG_CONFIG_HOME, else in ~/.config.
[[nodiscard]] std::string ProfilePath(const Environment& environment);

// $CARNETEL_HOME, else `executable_folder` when it holds a file carnetel.portable, else carnetel/
// in $XDG_DATA_HOME, else in ~/.local/share. With its trailing '/'. The caller makes it at the
// start.
[[nodiscard]] std::string HomeFolder(FileSystem& files, const Environment& environment,
                                     const std::string& executable_folder);

}  // namespace carnetel
