// What an import would do to the texts of its source: which lines it would refuse, which fields it
// would cut, empty or let run over. Looks at the source with the readers of the engines, and
// changes nothing.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "cli/transfer_setup.h"

namespace carnetel {

enum class TrialKind {
  kCut,      // the text is longer than the card field
  kEmptied,  // nothing of the text is left
  kOverrun,  // a fixed record's text goes on into the card fields behind its own
  kNoCard,   // the line or record gives no card
};

struct TrialFinding {
  uint32_t line = 0;  // or record, from 1
  TrialKind kind = TrialKind::kNoCard;
  int field = -1;      // of the card; none when the line is refused
  std::string reason;  // French, of a refused line
};

// `key_field` is that of the directory. None for another directory: its cards come as they are.
[[nodiscard]] std::vector<TrialFinding> ExamineSource(FileSystem& files, TransferSetup& setup,
                                                      int key_field);

// Prints the findings and the counts; lines that the import left out count as refused.
void PrintTrial(CliSession& session, const TransferSetup& setup, const TransferOutcome& outcome,
                const std::vector<TrialFinding>& findings);

}  // namespace carnetel
