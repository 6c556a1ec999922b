// The test of one card against the rows of a criteria set. All seven comparators work on text, on
// number fields too, and look at as many bytes of the field as the value has: "=" means that the
// field starts with it. ASCII letters match in either case, an accented letter only itself.
#pragma once

#include "selection/criteria_set.h"

namespace carnetel {

// True when the card passes every row up to the first one without a field.
[[nodiscard]] bool TestCard(const CriteriaRows& rows, const CardRecord& card);

// A '*' at the start of the first row's value: every card passes, whatever else the set says.
[[nodiscard]] bool PassesAll(const CriteriaRows& rows);

// The set behind "select all".
[[nodiscard]] CriteriaRows RowsForAll(CriteriaRows rows);

}  // namespace carnetel
