#include "shell/start_command.h"

#include <filesystem>
#include <utility>

#include "base/path.h"

namespace carnetel {
namespace {

constexpr size_t kQuotesOfOne = 3;

// How many quotes stand there in a row.
size_t QuotesAt(std::string_view text, size_t at) {
  const size_t end = text.find_first_not_of('"', at);
  return (end == std::string_view::npos ? text.size() : end) - at;
}

bool IsBlank(char character) {
  return character == ' ' || character == '\t';
}

// A relative path would count from the folder that the program begins in.
std::string Absolute(const std::string& program) {
  if (program.find('/') == std::string::npos) return program;
  std::error_code error;
  const std::filesystem::path absolute = std::filesystem::absolute(program, error);
  return error ? program : absolute.string();
}

// The first words that make the path of a file become one; else they stay as they are.
void JoinProgram(FileSystem& files, std::vector<std::string>& words) {
  if (words.front().find('/') == std::string::npos) return;
  std::string program;
  for (size_t taken = 0; taken < words.size(); ++taken) {
    program += (taken == 0 ? "" : " ") + words[taken];
    if (!files.Exists(program) || files.IsFolder(program)) continue;
    words.front() = program;
    const auto second = std::next(words.begin());
    words.erase(second, second + static_cast<std::ptrdiff_t>(taken));
    return;
  }
}

}  // namespace

std::vector<std::string> SplitCommand(std::string_view command_line) {
  std::vector<std::string> words;
  std::string word;
  bool quoted = false;
  bool in_word = false;
  for (size_t at = 0; at < command_line.size(); ++at) {
    const char character = command_line[at];
    if (character == '"') {
      in_word = true;
      if (QuotesAt(command_line, at) >= kQuotesOfOne) {
        word += '"';
        at += kQuotesOfOne - 1;
      } else {
        quoted = !quoted;
      }
    } else if (IsBlank(character) && !quoted) {
      if (in_word) words.push_back(std::exchange(word, {}));
      in_word = false;
    } else {
      in_word = true;
      word += character;
    }
  }
  if (in_word) words.push_back(word);
  return words;
}

bool StartCommand(FileSystem& files, std::string_view command_line, const WordStarter& start) {
  std::vector<std::string> words = SplitCommand(command_line);
  if (words.empty() || words.front().empty()) return false;
  JoinProgram(files, words);
  words.front() = Absolute(words.front());
  return start(words, PathSplit(words.front()).folder);
}

}  // namespace carnetel
