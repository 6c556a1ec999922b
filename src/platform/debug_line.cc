#include "platform/debug_line.h"

#include <cstdio>
#include <string>

namespace carnetel {

DebugLine DebugLineFor(const Environment& environment) {
  if (environment("CARNETEL_DEBUG").empty()) return [](std::string_view) {};
  return [](std::string_view text) {
    const std::string line = std::string(text.substr(0, kLongestDebugLine)) + '\n';
    std::fputs(line.c_str(), stderr);
  };
}

}  // namespace carnetel
