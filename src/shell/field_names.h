// The names by which fields of a card are told outside of the form: the short names of the text
// table, and "#N" with the field's number for those that have none of their own.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace carnetel {

// "Ste1", or "#4" for a field without a name. The name "CP" is the long postal code's.
[[nodiscard]] std::string FieldName(int field);

// The field of a name, without regard to case; "#0" to "#30" name every field by its number.
[[nodiscard]] std::optional<int> FindField(std::string_view name);

}  // namespace carnetel
