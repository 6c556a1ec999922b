#include "shell/field_names.h"

#include <charconv>

#include "base/string_table.h"
#include "base/text.h"
#include "storage/card_record.h"

namespace carnetel {
namespace {

// Short names are the texts of the table from 0 on. The short postal code shares "CP" with the long
// one, which is its home today.
std::string_view OwnName(int field) {
  return field == kShortPostalCode || field > kNotes ? std::string_view() : LoadText(field);
}

}  // namespace

std::string FieldName(int field) {
  const std::string_view name = OwnName(field);
  return name.empty() ? '#' + std::to_string(field) : std::string(name);
}

std::optional<int> FindField(std::string_view name) {
  if (name.starts_with('#')) {
    int field = -1;
    const char* end = name.data() + name.size();
    const auto [stop, error] = std::from_chars(name.data() + 1, end, field);
    const bool valid = error == std::errc() && stop == end && field >= 0 && field < kFieldCount;
    return valid ? std::optional(field) : std::nullopt;
  }
  for (int field = 0; field < kFieldCount; ++field) {
    const std::string_view own = OwnName(field);
    if (!own.empty() && own.size() == name.size() && CompareKey(own, name, own.size()) == 0) {
      return field;
    }
  }
  return std::nullopt;
}

}  // namespace carnetel
