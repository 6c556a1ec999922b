// From words to a command: the line of the tool itself, with the options that hold for the whole
// run, and a line of a script. The only place that knows the parsing library.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "cli/command.h"

namespace carnetel {

struct GlobalOptions {
  std::optional<std::string> directory;
  std::optional<std::string> profile;
  std::optional<std::string> parameters;
  int32_t seat = 0;        // 1 or more: several seats share the directory
  std::string shared_dir;  // folder of this seat's own files, with its '/'
  bool json = false;
  bool yes = false;
  bool quiet = false;
};

struct CommandLine {
  GlobalOptions global;
  const Command* command = nullptr;  // null without one
  Arguments arguments;
  bool help = false;
  bool version = false;
  std::string error;  // French, empty when the line can be run
};

// The options that stand before the command, or anywhere behind it.
[[nodiscard]] const std::vector<OptionSyntax>& GlobalSyntax();

[[nodiscard]] CommandLine ParseToolLine(const std::vector<std::string>& words,
                                        std::span<const Command> commands);

// A command without options of the run, as scripts have it.
[[nodiscard]] CommandLine ParseScriptCommand(const std::vector<std::string>& words,
                                             std::span<const Command> commands);

}  // namespace carnetel
