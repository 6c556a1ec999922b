// A command of the tool: what its line looks like, how it is explained, and what it does. The
// commands of a subject stand in one file as a table of these; parsing, help and scripts work from
// the tables alone.
#pragma once

#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace carnetel {

class CliSession;

// What stood on a command's line.
struct Arguments {
  std::vector<std::string> positionals;
  // By long name ("--letter"), flags with no value.
  std::map<std::string, std::vector<std::string>, std::less<>> options;

  [[nodiscard]] bool Has(std::string_view option) const { return options.contains(option); }
  [[nodiscard]] std::optional<std::string> Value(std::string_view option) const {
    const auto found = options.find(option);
    if (found == options.end() || found->second.empty()) return std::nullopt;
    return found->second.front();
  }
  // All values of an option that may be given several times, in their order.
  [[nodiscard]] std::vector<std::string> Values(std::string_view option) const {
    const auto found = options.find(option);
    return found == options.end() ? std::vector<std::string>() : found->second;
  }
};

struct OptionSyntax {
  std::string names;  // "-d,--directory", the long name last
  std::string value;  // what stands for the value in the help; empty for a flag
  std::string help;
  bool repeatable = false;

  [[nodiscard]] std::string LongName() const { return names.substr(names.rfind(',') + 1); }
};

// One of the things that a command does, when its first word says which: "group create".
struct ActionSyntax {
  std::string name;
  std::string usage = {};  // its words as the help shows them
  std::string help;
  size_t least = 0;  // number of its words
  size_t most = 0;
  std::vector<std::string> options = {};  // long names of those of the command that it takes
};

struct Command {
  std::string name;
  std::string summary;       // one line for the list of commands
  std::string details = {};  // paragraphs for the command's own help, may be empty
  std::string usage = {};    // positionals as the help shows them
  size_t least = 0;          // number of positionals
  size_t most = 0;
  std::vector<OptionSyntax> options = {};
  std::vector<ActionSyntax> actions = {};  // none: the command does one thing
  // The exit status.
  int (*run)(CliSession& session, const Arguments& arguments) = nullptr;
};

inline constexpr size_t kManyArguments = 1000000;

inline constexpr int kDone = 0;
inline constexpr int kRefused = 1;
inline constexpr int kWrongUsage = 2;

}  // namespace carnetel
