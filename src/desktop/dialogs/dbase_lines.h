// The lines of the two dialogs about dBase tables: those of the other structures and the field that
// a person has to spare, which is a column like any other here.
#pragma once

#include <algorithm>
#include <array>

#include "desktop/dialogs/structure_dialog.h"
#include "transfer/structure_lines.h"

namespace carnetel::desktop {

inline constexpr auto kDbaseLines = [] {
  std::array<int, kStructureLines.size() + 1> lines{};
  *std::ranges::copy(kStructureLines, lines.begin()).out = kSparePerson;
  return lines;
}();

// What an input of a line is called.
[[nodiscard]] inline QString DbaseLineLabel(const char* input, int line) {
  return QString::fromUtf8(input) +
         (line == kReferenceLine ? QStringLiteral("la référence") : LineLabel(line));
}

}  // namespace carnetel::desktop
