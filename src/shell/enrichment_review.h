// The rules of the two forms that go through a capture file record by record: the card at hand is
// saved or passed over, and the next one is shown. The form that is only looked at ends with the
// file. The one that can be typed in stays: the button that met the end goes off, and the user
// leaves.
#pragma once

#include "shell/form_texts.h"
#include "transfer/enrichment.h"

namespace carnetel {

class EnrichmentReview {
 public:
  // Takes the first record. The form must outlive this object.
  explicit EnrichmentReview(EnrichmentForm& form);

  [[nodiscard]] bool edits() const { return form_.mode() == EnrichmentMode::kEdit; }
  // The record at hand, as the controls show it.
  [[nodiscard]] FormTexts Texts() const { return TextsOfCard(form_.card()); }

  enum class Outcome {
    kNext,        // Texts() are to be shown
    kIncomplete,  // told; the focus goes to the company
    kStays,       // the file is at its end: the button pressed goes off
    kEnds,        // the form closes
  };
  // `typed`: what the controls hold; looked at only where they can be typed in.
  Outcome Save(const FormTexts& typed);
  Outcome Skip();

  // False from the beginning when there is no record: the form does not open.
  [[nodiscard]] bool has_record() const { return has_record_; }
  [[nodiscard]] bool may_save() const { return may_save_; }
  [[nodiscard]] bool may_skip() const { return may_skip_; }

 private:
  // `*button`: whether the one pressed stays on.
  Outcome Advance(bool* button);

  EnrichmentForm& form_;
  bool has_record_;
  bool may_save_ = true;
  bool may_skip_ = true;
};

}  // namespace carnetel
