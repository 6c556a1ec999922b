#include "transfer/number_input.h"

#include <cstdlib>

namespace carnetel {

int16_t NumberInput::value() const {
  return static_cast<int16_t>(std::strtol(text_.c_str(), nullptr, 10));
}

void NumberInput::Type(std::string_view text) {
  if (text == text_) return;
  std::string typed(text);
  std::erase_if(typed, [](char c) { return c < '0' || c > '9'; });
  text_ = typed.substr(0, digits_);
}

}  // namespace carnetel
