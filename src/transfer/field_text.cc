#include "transfer/field_text.h"

#include <algorithm>

#include "base/key_alphabet.h"

namespace carnetel {
namespace {

// The Minitel number is left as it is, on purpose: it may hold the name of a service.
bool IsDialledField(int field) {
  return field == kTel1 || field == kTel2 || field == kFax || field == kModem;
}

}  // namespace

void CleanFieldText(std::string& text, int field) {
  text.erase(0, text.find_first_not_of(' '));
  if (IsDialledField(field)) {
    std::replace_if(
        text.begin(), text.end(), [](char c) { return c == '.' || c == ';'; }, ':');
    std::erase_if(text, [](char c) { return kDialled.find(c) == std::string_view::npos; });
  }
  const bool is_key = field == kSte1 || field == kNom;
  if (is_key && !text.empty() && !IsKeyStartOrBlank(static_cast<unsigned char>(text[0]))) {
    text[0] = 'A';
  }
}

std::string_view WrittenText(const CardRecord& card, int field) {
  const bool short_code = field == kPostalCode && card.FieldEmpty(field);
  const std::string_view area = AsChars(card.FieldBytes(short_code ? kShortPostalCode : field));
  return area.substr(0, area.find('\0'));
}

}  // namespace carnetel
