#include "cli/script_line.h"

namespace carnetel {
namespace {

constexpr bool IsBlank(char byte) {
  return byte == ' ' || byte == '\t' || byte == '\r';
}

class Splitter {
 public:
  explicit Splitter(std::string_view line) : line_(line) {}

  std::optional<std::vector<std::string>> Run() {
    while (next_ < line_.size()) {
      const char byte = line_[next_++];
      if (IsBlank(byte)) {
        EndWord();
      } else if (byte == '#' && !in_word_) {
        break;
      } else if (!TakeByte(byte)) {
        return std::nullopt;
      }
    }
    EndWord();
    return std::move(words_);
  }

 private:
  bool TakeByte(char byte) {
    in_word_ = true;
    if (byte == '\'') return TakeQuoted('\'', "");
    if (byte == '"') return TakeQuoted('"', "\"\\");
    if (byte == '\\') {
      if (next_ == line_.size()) return false;
      byte = line_[next_++];
    }
    word_ += byte;
    return true;
  }

  // Up to the closing quote; a backslash in front of one of `escaped` is taken away.
  bool TakeQuoted(char quote, std::string_view escaped) {
    while (next_ < line_.size() && line_[next_] != quote) {
      const bool escapes = line_[next_] == '\\' && next_ + 1 < line_.size() &&
                           escaped.find(line_[next_ + 1]) != std::string_view::npos;
      if (escapes) ++next_;
      word_ += line_[next_++];
    }
    return next_++ < line_.size();
  }

  void EndWord() {
    if (in_word_) words_.push_back(std::move(word_));
    word_.clear();
    in_word_ = false;
  }

  std::string_view line_;
  size_t next_ = 0;
  std::string word_;
  bool in_word_ = false;
  std::vector<std::string> words_;
};

}  // namespace

std::optional<std::vector<std::string>> SplitScriptLine(std::string_view line) {
  return Splitter(line).Run();
}

}  // namespace carnetel
