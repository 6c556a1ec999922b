// The same 32767 invented cards at every run: companies, towns, people and numbers drawn from short
// lists by a fixed pseudo-random sequence. Letters are spread as in a French directory, and no
// letter Z has more than 36 keys, so that a directory of these cards comes to rest.
#pragma once

#include <string>
#include <vector>

#include "storage/card_record.h"

namespace carnetel::bench {

[[nodiscard]] std::vector<CardRecord> GenerateCards(size_t count);

// Delimited text of some cards as the default ranks expect it, but for field 11: `;` between the
// fields, CR LF behind each card, in OEM.
[[nodiscard]] std::string DelimitedText(const CardRecord* cards, size_t count);

}  // namespace carnetel::bench
