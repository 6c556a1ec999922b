// What imports do to the text of a field before it goes into a card, and what exports take out of
// one.
#pragma once

#include <string>
#include <string_view>

#include "storage/card_record.h"

namespace carnetel {

// Takes leading blanks away; keeps in telephone, fax and modem numbers only what can be dialled,
// with "." and ";" as ":"; and puts an A in the place of a first character under which a company or
// a surname cannot be filed. The text is still in the code page of its file, and the last test
// looks at its bytes all the same: an accented ANSI capital becomes an A.
void CleanFieldText(std::string& text, int field);

// The characters of a number that can be dialled.
inline constexpr std::string_view kDialled = " 1234567890:-+,@#*ABCDW";

// The text that an export writes for a field, a view into `card`: for the postal code, where that
// is empty, the short one that cards had in earlier days.
[[nodiscard]] std::string_view WrittenText(const CardRecord& card, int field);

}  // namespace carnetel
