#include "printing/layout_form.h"

#include <algorithm>
#include <charconv>

#include "base/format_text.h"
#include "printing/list_layout.h"

namespace carnetel {
namespace {

constexpr int kWidthText = 37;

uint32_t NumberOf(std::string_view digits) {
  uint32_t number = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), number);
  return number;
}

}  // namespace

LayoutForm::LayoutForm(LayoutFile& file) : file_(file) {
  Show(file_.LoadComposition(CompositionCopy::kUser));
}

std::vector<std::string> LayoutForm::Choices() {
  std::vector<std::string> names = {""};
  for (uint32_t choice = 1; choice <= kColumnChoices; ++choice) names.push_back(ChoiceName(choice));
  return names;
}

void LayoutForm::TypeWidth(size_t row, std::string_view text) {
  std::string digits;
  std::ranges::copy_if(text, std::back_inserter(digits),
                       [](char c) { return c >= '0' && c <= '9'; });
  rows_[row].width = digits.substr(0, kWidthDigits);
}

int LayoutForm::ColumnsWidth() const {
  int width = -1;
  for (const Row& row : rows_) {
    if (row.choice != 0) width += static_cast<int>(NumberOf(row.width)) + 1;
  }
  return width;
}

std::string LayoutForm::WidthText() const {
  return FormatText(kWidthText, ColumnsWidth());
}

void LayoutForm::Default() {
  Show(file_.LoadComposition(CompositionCopy::kFactory));
}

bool LayoutForm::Save() {
  Composition composition{};
  size_t column = 0;
  for (const Row& row : rows_) {
    const uint32_t width = NumberOf(row.width);
    if (row.choice != 0 && width > 0) composition[column++] = {row.choice, width};
  }
  const bool saved = file_.SaveComposition(composition);
  Show(composition);
  return saved;
}

void LayoutForm::Show(const Composition& composition) {
  rows_ = {};
  for (size_t i = 0; i < kMaxColumns; ++i) {
    const ColumnSpec& stored = composition[i];
    if (stored.choice == 0 || stored.choice > kColumnChoices) break;
    // A file that somebody damaged may hold any width.
    rows_[i] = {stored.choice, std::to_string(std::min(stored.width, kMaxWidth))};
  }
}

}  // namespace carnetel
