// "Enrichissement de l'carnetel": the cards of a capture file one by one, to look at or to
// complete, each saved or passed over. Which comes next and when it ends is said by
// EnrichmentReview.
#pragma once

#include "desktop/controls/beeper.h"
#include "desktop/dialogs/fixed_dialog.h"
#include "desktop/form/card_panel.h"
#include "shell/enrichment_review.h"

namespace carnetel::desktop {

class EnrichmentDialog : public FixedDialog {
  Q_OBJECT

 public:
  // The review has its first record, and must outlive the dialog.
  EnrichmentDialog(EnrichmentReview& review, QWidget* parent);

  CardPanel& panel() { return *panel_; }
  // For a company or a surname that may not start so.
  void SetBeeper(Beeper beeper) { beep_ = std::move(beeper); }

 private:
  QLayout* MakeButtons();
  void WatchFields();
  void FieldEdited(int control);
  void ShowCard();
  void Take(EnrichmentReview::Outcome outcome);

  EnrichmentReview& review_;
  CardPanel* panel_;
  QPushButton* save_ = nullptr;
  QPushButton* skip_ = nullptr;
  QPushButton* end_ = nullptr;
  Beeper beep_ = SystemBeep;
};

}  // namespace carnetel::desktop
