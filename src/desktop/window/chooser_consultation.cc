#include "desktop/window/chooser_consultation.h"

#include "desktop/form/shown_card.h"

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
  ShowCard(panel(), card);
}

}  // namespace carnetel::desktop
