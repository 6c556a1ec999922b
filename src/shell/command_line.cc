#include "shell/command_line.h"

#include <optional>

#include "base/text.h"

namespace carnetel {
namespace {

constexpr std::string_view kDirectOption = "/X";
// Behind the option: its two letters and one character that is skipped whatever it is.
constexpr size_t kDirectOptionSkip = 3;

size_t FindDirectOption(std::string_view line) {
  size_t found = line.find(kDirectOption);
  while (found != std::string_view::npos && found > 0 && line[found - 1] != ' ') {
    found = line.find(kDirectOption, found + 1);
  }
  return found;
}

void SkipBlanks(std::string_view& rest) {
  rest.remove_prefix(std::min(rest.find_first_not_of(' '), rest.size()));
}

// Reads the texts of `-TYPE %d -HWND %u -NUM %d -APPLI %s -NUMP %d` one by one.
class OptionReader {
 public:
  explicit OptionReader(std::string_view rest) : rest_(rest) {}

  bool Expect(std::string_view name) {
    SkipBlanks(rest_);
    if (!rest_.starts_with(name)) return false;
    rest_.remove_prefix(name.size());
    return true;
  }

  // A whole number, taken into 32 bits whatever its size.
  std::optional<uint32_t> Number() {
    SkipBlanks(rest_);
    const bool negative = rest_.starts_with('-');
    if (negative || rest_.starts_with('+')) rest_.remove_prefix(1);
    if (rest_.empty() || rest_.front() < '0' || rest_.front() > '9') return {};
    uint32_t value = 0;
    while (!rest_.empty() && rest_.front() >= '0' && rest_.front() <= '9') {
      value = value * 10 + static_cast<uint32_t>(rest_.front() - '0');
      rest_.remove_prefix(1);
    }
    return negative ? 0 - value : value;
  }

  std::string Word() {
    SkipBlanks(rest_);
    const std::string_view word = rest_.substr(0, rest_.find(' '));
    rest_.remove_prefix(word.size());
    return std::string(word);
  }

 private:
  std::string_view rest_;
};

void ReadNumbers(std::string_view from_type, StartupRequest& request) {
  OptionReader reader(from_type);
  if (!reader.Expect("-TYPE")) return;
  const std::optional<uint32_t> type = reader.Number();
  if (!type) return;
  request.launch_type = static_cast<int32_t>(*type);
  if (!reader.Expect("-HWND")) return;
  const std::optional<uint32_t> window = reader.Number();
  if (!window) return;
  request.caller_window = *window;
  if (!reader.Expect("-NUM")) return;
  const std::optional<uint32_t> argument = reader.Number();
  if (!argument) return;
  request.caller_argument = static_cast<int32_t>(*argument);
  if (!reader.Expect("-APPLI")) return;
  request.appli_name = reader.Word();
  if (request.appli_name.empty() || !reader.Expect("-NUMP")) return;
  request.workstation_number = static_cast<int32_t>(reader.Number().value_or(0));
}

// The text between two positions, without the one blank in front of the second.
std::string Between(std::string_view line, size_t from, size_t to) {
  if (to > from && line[to - 1] == ' ') --to;
  return to > from ? std::string(line.substr(from, to - from)) : std::string();
}

}  // namespace

std::string JoinArguments(int count, const char* const* arguments) {
  std::string line;
  for (int i = 1; i < count; ++i) {
    if (i > 1) line += ' ';
    line += arguments[i];
  }
  return line;
}

StartupRequest ParseCommandLine(std::string_view command_line) {
  StartupRequest request;
  const size_t direct = FindDirectOption(command_line);
  if (direct != std::string_view::npos) {
    request.direct_open = true;
    std::string_view path =
        command_line.substr(std::min(direct + kDirectOptionSkip, command_line.size()));
    SkipBlanks(path);
    request.direct_path = path;
    return request;
  }
  const size_t app = command_line.find("-APP");
  if (app == std::string_view::npos) return request;
  const size_t file = command_line.find("-FILE", app);
  const size_t type = command_line.rfind("-TYPE");
  if (file == std::string_view::npos || type == std::string_view::npos || type < file) {
    return request;
  }
  request.app_argument = Between(command_line, app + 5, file);
  request.exchange_file_path = Between(command_line, file + 6, type);
  CutTrailingBlanks(request.exchange_file_path);
  ReadNumbers(command_line.substr(type), request);
  return request;
}

}  // namespace carnetel
