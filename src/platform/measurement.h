// The measurement system of the user's surroundings, for who has not chosen one in the profile.
#pragma once

namespace carnetel {

// True for the metric system, false for the one of inches.
[[nodiscard]] bool LocaleIsMetric();

}  // namespace carnetel
