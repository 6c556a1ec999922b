#include "shell/enrichment_review.h"

namespace carnetel {

EnrichmentReview::EnrichmentReview(EnrichmentForm& form) : form_(form), has_record_(form.Next()) {}

EnrichmentReview::Outcome EnrichmentReview::Save(const FormTexts& typed) {
  if (!edits()) {
    form_.Add();
  } else if (!form_.AddEdited(CardOfTexts(form_.card(), typed))) {
    return Outcome::kIncomplete;
  }
  return Advance(&may_save_);
}

EnrichmentReview::Outcome EnrichmentReview::Skip() {
  return Advance(&may_skip_);
}

EnrichmentReview::Outcome EnrichmentReview::Advance(bool* button) {
  if (form_.Next()) return Outcome::kNext;
  if (!edits()) return Outcome::kEnds;
  *button = false;
  return Outcome::kStays;
}

}  // namespace carnetel
