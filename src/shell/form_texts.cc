#include "shell/form_texts.h"

#include <algorithm>

#include "base/code_page.h"
#include "base/text.h"
#include "storage/card_edit.h"

namespace carnetel {
namespace {

std::string FieldUtf8(const CardRecord& card, int field) {
  return Utf8FromOem(card.FieldText(field));
}

}  // namespace

size_t FormTexts::CountFilled() const {
  const auto filled = [](const std::string& text) { return !text.empty(); };
  const auto count =
      std::ranges::count_if(fields, [&](const auto& row) { return filled(row.second); });
  return static_cast<size_t>(count + std::ranges::count_if(references, filled));
}

FormTexts TextsOfCard(const CardRecord& card) {
  FormTexts texts;
  for (const FormField& row : kFormFields) {
    const bool short_code = row.field == kPostalCode && card.FieldEmpty(kPostalCode);
    texts.fields[row.control] = FieldUtf8(card, short_code ? kShortPostalCode : row.field);
  }
  for (size_t i = 0; i < texts.references.size(); ++i) {
    texts.references[i] = FieldUtf8(card, kRef1 + static_cast<int>(i));
  }
  return texts;
}

CardRecord CardOfTexts(const CardRecord& shown, const FormTexts& typed) {
  CardRecord card = shown;
  const FormTexts former = TextsOfCard(shown);
  for (const FormField& row : kFormFields) {
    const auto text = typed.fields.find(row.control);
    if (text == typed.fields.end() || text->second == former.fields.at(row.control)) continue;
    const OemText oem = OemFromUtf8Lossy(WithCrLf(text->second));
    if (row.field == kPostalCode) {
      SetPostalCode(card, oem);
    } else {
      card.SetField(row.field, oem);
    }
  }
  for (size_t i = 0; i < typed.references.size(); ++i) {
    if (typed.references[i] == former.references[i]) continue;
    card.SetField(kRef1 + static_cast<int>(i), OemFromUtf8Lossy(typed.references[i]));
  }
  return card;
}

}  // namespace carnetel
