// An input of a form that takes a number of a few digits. A stored number that has more of them, or
// a sign, is shown and stays as it is until the input is edited.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace carnetel {

class NumberInput {
 public:
  NumberInput() = default;
  NumberInput(int16_t stored, size_t digits) : text_(std::to_string(stored)), digits_(digits) {}

  [[nodiscard]] const std::string& text() const { return text_; }
  // 0 for an empty input.
  [[nodiscard]] int16_t value() const;
  [[nodiscard]] bool empty() const { return text_.empty(); }

  // Takes the digits of what stands in the input now, as many as it holds.
  void Type(std::string_view text);
  void Show(int16_t value) { text_ = std::to_string(value); }

 private:
  std::string text_;
  size_t digits_ = 0;
};

}  // namespace carnetel
