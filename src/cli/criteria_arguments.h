// Criteria as words of a command's line: a field, one of = <> <= >= < > ~, and a value, which may
// be empty: "Ste1=DU", "Fax<>". The word "*" alone stands for all cards.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/card_arguments.h"
#include "selection/criteria_set.h"

namespace carnetel {

[[nodiscard]] bool IsSelectAll(const std::vector<std::string>& words);

// The rows of these criteria, validated; nothing when one cannot be taken or none is left (told,
// with the exit status in `*status`).
[[nodiscard]] std::optional<CriteriaRows> ParseCriteria(CliSession& session,
                                                        const std::vector<std::string>& words,
                                                        int* status);

// A row as such a word.
[[nodiscard]] std::string CriterionText(const CriteriaRow& row);

}  // namespace carnetel
