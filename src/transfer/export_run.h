// What all exports do: the marked cards of an open directory go, in the order of the list, one
// behind the other into an open file. They gather in a block of 64 KB; what counts is what reached
// the file.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

#include "transfer/transfer.h"

namespace carnetel {

// Result -1 with that text of the string table, `path` filled in.
[[nodiscard]] TransferOutcome FailedExport(int text_id, const std::string& path);
// The same for a run that has begun: what it counted stays.
void TellFailedExport(int text_id, const std::string& path, TransferOutcome* outcome);

struct ExportTarget {
  File& file;
  std::string path;            // as a message tells it
  uint64_t position = 0;       // where the first card goes
  uint32_t room = UINT32_MAX;  // cards that it can still take
};

// Appends what stands for a card in the target to a block of such.
using AppendCard = std::function<void(const CardRecord& card, std::string& block)>;

// Takes the cards marked in the displayed group, as many as their counter tells. Result -1 with a
// message when a card could not be read or written, or found no room; those before it stay.
[[nodiscard]] TransferOutcome ExportMarkedCards(Directory& source, const ExportTarget& target,
                                                const AppendCard& append);

}  // namespace carnetel
