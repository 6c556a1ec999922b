#include "platform/measurement.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string_view>

namespace carnetel {
namespace {

// Territories that measure in inches, by their ISO 3166 codes.
constexpr std::array<std::string_view, 3> kInchTerritories = {"US", "LR", "MM"};

std::string_view Variable(const char* name) {
  const char* const value = std::getenv(name);
  return value == nullptr ? std::string_view() : value;
}

}  // namespace

// From the variables themselves, in the order of POSIX (Base Definitions, 8.2): the locale that
// they name need not be installed. "en_US.UTF-8" has its territory behind the underscore.
bool LocaleIsMetric() {
  std::string_view locale;
  for (const char* name : {"LC_ALL", "LC_MEASUREMENT", "LANG"}) {
    if (locale.empty()) locale = Variable(name);
  }
  const size_t underscore = locale.find('_');
  if (underscore == std::string_view::npos) return true;
  const std::string_view behind = locale.substr(underscore + 1);
  const std::string_view territory = behind.substr(0, behind.find_first_of(".@"));
  return std::ranges::find(kInchTerritories, territory) == kInchTerritories.end();
}

}  // namespace carnetel
