// Where printed lines go: everything above it knows nothing of paper, of files or of terminals.
#pragma once

#include <string_view>

namespace carnetel {

// The code page of the lines that a target takes: files get the bytes of the cards, OEM, on
// purpose; printers ANSI.
enum class PrintText { kOem, kAnsi };

class PrintTarget {
 public:
  virtual ~PrintTarget() = default;

  [[nodiscard]] virtual PrintText text() const = 0;
  virtual void PrintLine(std::string_view line) = 0;
  virtual void NewPage() = 0;
  // True when nothing that is printed from now on goes anywhere: the user has stopped the run, or
  // the target has all it wants.
  [[nodiscard]] virtual bool Ended() const { return false; }
};

}  // namespace carnetel
