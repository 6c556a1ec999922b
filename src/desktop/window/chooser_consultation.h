// The consultation of the chooser: it shows the card of the list's current row, follows the list,
// and hands that card out.
#pragma once

#include "desktop/window/consultation.h"
#include "storage/card_record.h"

namespace carnetel::desktop {

class ChooserConsultation : public Consultation {
  Q_OBJECT

 public:
  explicit ChooserConsultation(QWidget* parent);

  void Show(const CardRecord& card);

 Q_SIGNALS:
  // The card shown is wanted; the window closes then.
  void extractWanted();
};

}  // namespace carnetel::desktop
