#include "desktop/window/chooser_consultation.h"

namespace carnetel::desktop {
namespace {

constexpr int kTemplate = 106;
constexpr int kExtract = 218;

}  // namespace

ChooserConsultation::ChooserConsultation(QWidget* parent) : Consultation(kTemplate, parent) {
  connect(AddButton(kExtract, QStringLiteral("&Ext. Fiche")), &QPushButton::clicked, this, [this] {
    Q_EMIT extractWanted();
    close();
  });
}

void ChooserConsultation::Show(const CardRecord& card) {
  panel().SetTexts(TextsOfCard(card));
}

}  // namespace carnetel::desktop
