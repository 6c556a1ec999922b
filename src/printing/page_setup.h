// How a print run comes out, as the print form keeps it in the user profile from one run to the
// next: the page, what is printed and where it goes.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/user_profile.h"
#include "printing/measure_unit.h"

namespace carnetel {

enum class Presentation { kList = 0, kCards = 1 };
// kFile: the whole file, or the displayed group.
enum class PrintScope { kFile = 0, kSelection = 1, kCurrent = 2 };
enum class PrintDestination { kPrinter = 0, kFile = 1 };

// The longest output path, in bytes.
inline constexpr size_t kMaxPrintPath = 260;

struct PageSetup {
  int8_t lines = 64;  // a page
  // Hundredths of the unit.
  int16_t top_margin = 200;
  int16_t left_margin = 200;
  Presentation presentation = Presentation::kList;
  PrintScope scope = PrintScope::kSelection;
  PrintDestination destination = PrintDestination::kPrinter;
  std::string file;  // UTF-8

  friend bool operator==(const PageSetup&, const PageSetup&) = default;
};

// Keys Lines, TopMargin, LeftMargin, Mode, Type, PrintType and FileToPrint; what is missing has its
// default, margins that of the unit and the file string 258. An empty section reads as all missing
// and is not written.
[[nodiscard]] PageSetup ReadPageSetup(const UserProfile& profile, std::string_view section,
                                      MeasureUnit unit);
// False when the profile could not be written.
bool WritePageSetup(UserProfile& profile, std::string_view section, const PageSetup& setup);

}  // namespace carnetel
