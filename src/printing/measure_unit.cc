#include "printing/measure_unit.h"

#include <algorithm>
#include <charconv>

#include "base/format_text.h"

namespace carnetel {
namespace {

constexpr int kInchText = 160;
constexpr int kCentimetreText = 39;
constexpr int kLineText = 161;
constexpr int kInches = 1;
// Behind the comma: tenths below this, hundredths from it on.
constexpr int kFirstHundredth = 10;
// Far above all maxima, far below an overflow.
constexpr int kTooLarge = 100'000;

// The number at the start of a text, blanks and a sign in front; 0 when there is none.
int LeadingNumber(std::string_view text) {
  text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
  if (text.starts_with('+')) text.remove_prefix(1);
  int number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error == std::errc::result_out_of_range) return kTooLarge;
  return std::clamp(number, -kTooLarge, kTooLarge);
}

int WithinOrZero(int value, int most) {
  return value < 0 || value > most ? 0 : value;
}

}  // namespace

MeasureUnit ReadMeasureUnit(const UserProfile& profile, bool locale_is_metric) {
  constexpr std::string_view kSection = "intl";
  constexpr std::string_view kKey = "iMeasure";
  const int fallback = locale_is_metric ? 0 : kInches;
  return profile.Int(kSection, kKey, fallback) == kInches ? MeasureUnit::kInches
                                                          : MeasureUnit::kCentimetres;
}

int MaxMargin(MeasureUnit unit) {
  return unit == MeasureUnit::kInches ? 396 : 999;
}

int DefaultMargin(MeasureUnit unit) {
  return unit == MeasureUnit::kInches ? 80 : 200;
}

std::string MarginText(MeasureUnit unit, int hundredths) {
  const auto value = static_cast<unsigned>(std::max(hundredths, 0));
  return FormatText(unit == MeasureUnit::kInches ? kInchText : kCentimetreText, value / 100,
                    value % 100);
}

std::string LineCountText(int lines) {
  return FormatText(kLineText, static_cast<unsigned>(std::max(lines, 0)));
}

int ReadMargin(MeasureUnit unit, std::string_view typed) {
  int value = LeadingNumber(typed) * 100;
  const size_t comma = typed.find(',');
  if (comma != std::string_view::npos) {
    const int behind = LeadingNumber(typed.substr(comma + 1));
    value += behind < kFirstHundredth ? behind * 10 : behind;
  }
  return WithinOrZero(value, MaxMargin(unit));
}

int ReadLineCount(std::string_view typed) {
  return WithinOrZero(LeadingNumber(typed), kMaxLines);
}

}  // namespace carnetel
