// Hands one line to another program through a file or a named pipe, and never waits for it.
#pragma once

#include <string>

namespace carnetel {

// Appends `line` and a line feed to a file, made when missing, or sends it through a pipe that
// somebody reads. False when nobody does, or the file cannot be written.
bool SendLine(const std::string& path, const std::string& line);

}  // namespace carnetel
