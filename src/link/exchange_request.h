// Serves a request that a sibling program left in an exchange file: a look-up by surname that is
// answered in the same file, a rewrite of the request, or cards to insert.
#pragma once

#include <cstdint>
#include <string>

#include "base/messages.h"
#include "storage/directory.h"

namespace carnetel {

enum class ExchangeType { kLookUp = 6, kRewrite = 7, kInsert = 8 };

struct ExchangeRequestJob {
  ExchangeType type = ExchangeType::kLookUp;
  std::string file;
  bool long_records = false;
};

// 1: done, and the directory is closed. -1: the file could not be opened or a card was refused.
// 0: everything else; the directory stays open, and after a look-up its saved current row is that
// of the nearest card.
[[nodiscard]] int ServeExchangeRequest(Directory& directory, const ExchangeRequestJob& job,
                                       MessageForm& messages);

}  // namespace carnetel
