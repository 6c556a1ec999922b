// The unit of margins in the print form and the texts of its spins. Margins are stored as
// hundredths of whatever unit is chosen: they are not converted when the unit changes.
#pragma once

#include <string>
#include <string_view>

#include "platform/user_profile.h"

namespace carnetel {

enum class MeasureUnit { kCentimetres, kInches };

// `iMeasure` of the profile's section `intl` when it stands there (1 is inches), else the locale's.
[[nodiscard]] MeasureUnit ReadMeasureUnit(const UserProfile& profile, bool locale_is_metric);

// In hundredths of the unit.
[[nodiscard]] int MaxMargin(MeasureUnit unit);      // 999 cm, 396 in
[[nodiscard]] int DefaultMargin(MeasureUnit unit);  // 200 cm, 80 in
inline constexpr int kMaxLines = 127;

// "2,05 cm", "0,80 pces".
[[nodiscard]] std::string MarginText(MeasureUnit unit, int hundredths);
// "64 lg".
[[nodiscard]] std::string LineCountText(int lines);

// What was typed into a spin, its unit behind it or not; 0 for a value that the spin does not take.
// Behind the comma, a number below 10 counts as tenths even when zeros stand in front of it, by
// design: "1,5" and "1,05" are both 150, "1,15" is 115.
[[nodiscard]] int ReadMargin(MeasureUnit unit, std::string_view typed);
[[nodiscard]] int ReadLineCount(std::string_view typed);

}  // namespace carnetel
