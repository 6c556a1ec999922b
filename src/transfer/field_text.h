// What every import does to the text of a field before it goes into a card.
#pragma once

#include <string>

namespace carnetel {

// Takes leading blanks away; keeps in telephone, fax and modem numbers only what can be dialled,
// with "." and ";" as ":"; and puts an A in the place of a first character under which a company or
// a surname cannot be filed. The text is still in the code page of its file, and the last test
// looks at its bytes all the same: an accented ANSI capital becomes an A.
void CleanFieldText(std::string& text, int field);

}  // namespace carnetel
