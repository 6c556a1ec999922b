// The scans once more, entry by entry over the bytes of the files, with nothing of the code under
// test: what the tests compare whole scans with.
#pragma once

#include <string>
#include <vector>

#include "tests/selection/selection_testing.h"

namespace carnetel {

struct ModelInput {
  FileBytes main_file;
  FileBytes active_index;
  FileBytes address_file;
  FileBytes rows;  // 144 bytes
  bool add = false;
  int32_t marked_count = 0;
  unsigned group_bit = 0;
  int stop_at = 0;  // the step at which the user stops, 0 for never
};

struct ModelOutcome {
  FileBytes address_file;
  int32_t marked_count = 0;
  uint32_t first_passed = 0;
  Texts log;  // title, steps, "closed"
};

[[nodiscard]] ModelOutcome ModelScan(const ModelInput& input);
// `list_rows` negative: nothing is shown.
[[nodiscard]] ModelOutcome ModelGroupScan(const ModelInput& input, int list_rows);

}  // namespace carnetel
