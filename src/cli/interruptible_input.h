// Standard input for a program that wants to be stopped while it waits there: a signal that comes
// during the wait ends the input. The library's own stream would go back to waiting.
#pragma once

#include <array>
#include <streambuf>

namespace carnetel {

class InterruptibleInput : public std::streambuf {
 public:
  explicit InterruptibleInput(int descriptor) : descriptor_(descriptor) {}

 protected:
  int_type underflow() override;

 private:
  int descriptor_;
  bool ended_ = false;
  std::array<char, 4096> bytes_{};
};

}  // namespace carnetel
