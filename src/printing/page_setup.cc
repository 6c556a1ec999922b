#include "printing/page_setup.h"

#include <algorithm>

#include "base/string_table.h"

namespace carnetel {
namespace {

constexpr int kDefaultFile = 258;
constexpr int kDefaultLines = 64;

constexpr std::string_view kLines = "Lines";
constexpr std::string_view kTopMargin = "TopMargin";
constexpr std::string_view kLeftMargin = "LeftMargin";
constexpr std::string_view kMode = "Mode";
constexpr std::string_view kType = "Type";
constexpr std::string_view kPrintType = "PrintType";
constexpr std::string_view kFileToPrint = "FileToPrint";

PrintScope ScopeOf(int stored) {
  return stored == 1 || stored == 2 ? static_cast<PrintScope>(stored) : PrintScope::kFile;
}

}  // namespace

PageSetup ReadPageSetup(const UserProfile& profile, std::string_view section, MeasureUnit unit) {
  const auto number = [&](std::string_view key, int fallback) {
    return profile.Int(section, key, fallback);
  };
  // What somebody wrote into the profile by hand is held within what the form takes.
  const auto margin = [&](std::string_view key) {
    return static_cast<int16_t>(std::clamp(number(key, DefaultMargin(unit)), 0, MaxMargin(unit)));
  };
  PageSetup setup;
  setup.lines = static_cast<int8_t>(std::clamp(number(kLines, kDefaultLines), 0, kMaxLines));
  setup.top_margin = margin(kTopMargin);
  setup.left_margin = margin(kLeftMargin);
  setup.presentation = number(kMode, 0) == 1 ? Presentation::kCards : Presentation::kList;
  setup.scope = ScopeOf(number(kType, 1));
  setup.destination =
      number(kPrintType, 0) == 1 ? PrintDestination::kFile : PrintDestination::kPrinter;
  setup.file = profile.Text(section, kFileToPrint, LoadText(kDefaultFile)).substr(0, kMaxPrintPath);
  return setup;
}

bool WritePageSetup(UserProfile& profile, std::string_view section, const PageSetup& setup) {
  bool done = profile.WriteInt(section, kLines, setup.lines);
  done &= profile.WriteInt(section, kTopMargin, setup.top_margin);
  done &= profile.WriteInt(section, kLeftMargin, setup.left_margin);
  done &= profile.WriteInt(section, kMode, static_cast<int>(setup.presentation));
  done &= profile.WriteInt(section, kType, static_cast<int>(setup.scope));
  done &= profile.WriteInt(section, kPrintType, static_cast<int>(setup.destination));
  done &= profile.Write(section, kFileToPrint, setup.file);
  return done;
}

}  // namespace carnetel
