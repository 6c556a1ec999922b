#include "storage/card_edit.h"

#include "base/key_alphabet.h"

namespace carnetel {
namespace {

constexpr std::array<int, 8> kFieldsWithoutControl = {
    kAdr3, kSparePerson, kServiceType, kNinit, kSpare27, kSpare27 + 1, kSpare30 - 1, kSpare30};

}  // namespace

bool StripKeyFields(CardRecord& card) {
  bool stripped = false;
  for (const int field : {int{kSte1}, int{kNom}}) {
    const OemText text = card.FieldText(field);
    const OemText kept(StripToKeyStart(text.bytes()));
    if (kept == text) continue;
    card.SetField(field, kept);
    stripped = true;
  }
  return stripped;
}

bool HasKeyField(const CardRecord& card) {
  return !card.FieldEmpty(kSte1) || !card.FieldEmpty(kNom);
}

void SetPostalCode(CardRecord& card, const OemText& code) {
  card.SetField(kPostalCode, code);
  card.SetField(kShortPostalCode, code);
}

void CarryHiddenFields(CardRecord& card, const CardRecord& old) {
  for (const int field : kFieldsWithoutControl) card.CopyFieldFrom(old, field);
  const size_t fields_end = kFieldTable[kSpare30].offset + size_t{kFieldTable[kSpare30].size};
  std::ranges::copy(old.bytes().subspan(fields_end), card.bytes().subspan(fields_end).begin());
}

}  // namespace carnetel
