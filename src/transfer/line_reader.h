// Cuts a text file into lines, each ended by a separator of a few bytes. The file may be of any
// size: one piece of it is in memory at a time.
#pragma once

#include <string>
#include <string_view>

#include "platform/file_system.h"

namespace carnetel {

class LineReader {
 public:
  // Starts at the beginning of `file`. With an empty separator there is no line.
  LineReader(ReadableFile& file, std::string separator, size_t longest);
  LineReader(const LineReader&) = delete;
  LineReader& operator=(const LineReader&) = delete;

  // Goes on to the next line; false when there is none. Text behind the last separator is no line.
  bool Next();

  // The line with its separator, valid until the next call; not for a line that is too long.
  [[nodiscard]] std::string_view line() const { return line_; }
  [[nodiscard]] bool too_long() const { return too_long_; }
  // True when the line holds nothing but its separator.
  [[nodiscard]] bool empty() const { return !too_long_ && line_.size() == separator_.size(); }

 private:
  // Reads on behind what is still needed; false at the end of the file.
  bool Refill();

  ReadableFile& file_;
  std::string separator_;
  size_t longest_;
  std::string piece_;
  size_t filled_ = 0;        // bytes of piece_ that are from the file
  size_t start_ = 0;         // of the line at hand, in piece_
  size_t search_ = 0;        // no separator begins before this
  uint64_t position_ = 0;    // of the next read
  bool start_lost_ = false;  // the line at hand began before what piece_ holds
  std::string_view line_;
  bool too_long_ = false;
};

}  // namespace carnetel
