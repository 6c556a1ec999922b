#include "desktop/form/shown_card.h"

#include "base/code_page.h"

namespace carnetel::desktop {
namespace {

QString FieldText(const CardRecord& card, int field) {
  return QString::fromStdString(Utf8FromOem(card.FieldText(field)));
}

}  // namespace

void ShowCard(CardPanel& panel, const CardRecord& card) {
  for (const FormField& row : kFormFields) {
    const bool short_code = row.field == kPostalCode && card.FieldEmpty(kPostalCode);
    panel.SetFieldText(row.control, FieldText(card, short_code ? kShortPostalCode : row.field));
  }
  QStringList references;
  for (int i = 0; i < kReferenceCount; ++i) references += FieldText(card, kRef1 + i);
  panel.SetReferences(references);
}

}  // namespace carnetel::desktop
