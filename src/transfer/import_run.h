// What all imports do: the cards of a foreign file go, one by one, into a directory that the import
// opens for itself. They gather in memory and reach the disk in blocks; what counts is what really
// is in the main file at the end.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "transfer/transfer.h"

namespace carnetel {

// Result -1 with that text of the string table, `path` filled in.
[[nodiscard]] TransferOutcome FailedImport(int text_id, const std::string& path);

// The destination of a request, opened; with `replace` its family is deleted first. Null when it
// cannot be opened or made.
[[nodiscard]] std::unique_ptr<Directory> OpenDestination(const DirectoryServices& services,
                                                         const ImportRequest& request);

// Makes `card`, which holds the one before and zeros at first, the next card of the source; false
// at its end.
using NextCard = std::function<bool(CardRecord& card)>;

// Adds the cards unmarked and without any test for duplicates, showing progress up to `total`.
// Result -1 with a message when a card could not be added or written; those before it stay.
[[nodiscard]] TransferOutcome ImportCards(Directory& destination, uint32_t total,
                                          const NextCard& next);

}  // namespace carnetel
