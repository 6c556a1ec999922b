// The print run: takes cards in the order of the address file, lays them out as lines or as blocks
// of labelled rows, and breaks pages so that each holds whole cards.
#pragma once

#include <cstdint>

#include "printing/layout_file.h"
#include "printing/page_setup.h"
#include "printing/print_target.h"
#include "storage/directory.h"

namespace carnetel {

struct PrintRun {
  PageSetup setup;
  Composition composition{};   // of the list presentation
  uint32_t current_entry = 0;  // where the scope of the current card starts, in the address file
};

struct PrintOutcome {
  uint32_t cards = 0;
  uint32_t pages = 0;        // the first one and each new one
  bool read_failed = false;  // the run ended at a card that could not be read
};

// Prints the cards that belong to the directory's displayed group and to the scope.
PrintOutcome PrintCards(Directory& directory, const PrintRun& run, PrintTarget& target);

// Characters of the longest line that the run can print, its left margin included.
[[nodiscard]] size_t PrintColumns(const PrintRun& run);

}  // namespace carnetel
