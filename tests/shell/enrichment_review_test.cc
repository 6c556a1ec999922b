// The captured cards one by one, looked at or completed, apart from their windows.
#include "shell/enrichment_review.h"

#include <gmock/gmock.h>

#include <optional>

#include "tests/shell/shell_testing.h"
#include "tests/support/same_bytes.h"
#include "tests/transfer/capture_testing.h"

namespace carnetel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Outcome = EnrichmentReview::Outcome;

constexpr char kCapture[] = "/capture.dat";

class EnrichmentReviewTest : public OpenDirectoryTest {
 protected:
  void Begin(EnrichmentMode mode, const std::vector<Captured>& records) {
    OpenAt(kSte1);
    std::string bytes;
    for (const Captured& record : records) bytes += CaptureBytes(record);
    files_.SetContents(kCapture, AsBytes(bytes));
    form_.emplace(*directory_, messages_, mode, kCapture, "?");
    review_.emplace(*form_);
  }
  [[nodiscard]] std::string Shown(int control) const { return review_->Texts().fields.at(control); }

  SilentMessages messages_;
  std::optional<EnrichmentForm> form_;
  std::optional<EnrichmentReview> review_;
};

TEST_F(EnrichmentReviewTest, ReviewSavesAndPassesOverUntilTheEndCloses) {
  Begin(EnrichmentMode::kReview,
        {{.company = "alpha", .town = "LYON"}, {.company = "beta"}, {.company = "gamma"}});
  EXPECT_FALSE(review_->edits());
  ASSERT_TRUE(review_->has_record());
  EXPECT_EQ(Shown(150), "ALPHA");
  EXPECT_EQ(Shown(156), "LYON");
  EXPECT_EQ(review_->Save({}), Outcome::kNext);
  EXPECT_EQ(Shown(150), "BETA");
  EXPECT_EQ(review_->Skip(), Outcome::kNext);
  EXPECT_EQ(Shown(150), "GAMMA");
  EXPECT_EQ(review_->Save({}), Outcome::kEnds);
  EXPECT_EQ(form_->added(), 2);
  EXPECT_THAT(Companies(), ElementsAre("ALPHA", "GAMMA"));
}

TEST_F(EnrichmentReviewTest, PassingOverTheLastOneCloses) {
  Begin(EnrichmentMode::kReview, {{.company = "alpha"}});
  EXPECT_EQ(review_->Skip(), Outcome::kEnds);
  EXPECT_EQ(form_->added(), 0);
}

TEST_F(EnrichmentReviewTest, EditingSavesWhatWasTyped) {
  Begin(EnrichmentMode::kEdit, {{.company = "alpha"}, {.company = "beta"}});
  FormTexts typed = review_->Texts();
  typed.fields[kControlNom] = "  Durand";
  typed.fields[kControlNotes] = "un\r\ndeux";
  typed.references[3] = "été";
  EXPECT_EQ(review_->Save(typed), Outcome::kNext);
  EXPECT_EQ(Shown(150), "BETA");
  EXPECT_EQ(Shown(172), "");
  CardRecord card;
  ASSERT_TRUE(directory_->main().ReadCard(kCardSize, card));
  EXPECT_EQ(card.FieldText(kSte1).bytes(), "ALPHA");
  EXPECT_EQ(card.FieldText(kNom).bytes(), "Durand");
  EXPECT_EQ(card.FieldText(kNotes).bytes(), "un\r\ndeux");
  EXPECT_EQ(card.FieldText(kRef1 + 3).bytes(), "\x82t\x82");
}

TEST_F(EnrichmentReviewTest, EditingWithoutCompanyAndSurnameIsTold) {
  Begin(EnrichmentMode::kEdit, {{.company = "alpha"}, {.company = "beta"}});
  FormTexts typed = review_->Texts();
  typed.fields[150].clear();
  EXPECT_EQ(review_->Save(typed), Outcome::kIncomplete);
  ASSERT_EQ(messages_.shown().size(), 1u);
  EXPECT_EQ(messages_.shown()[0].text, "Fiche incomplète : le champ d'index est obligatoire ");
  // The record stays at hand.
  EXPECT_EQ(Shown(150), "ALPHA");
  typed.fields[172] = "Durand";
  EXPECT_EQ(review_->Save(typed), Outcome::kNext);
  EXPECT_EQ(form_->added(), 1);
}

TEST_F(EnrichmentReviewTest, AtTheEndOfEditingTheButtonPressedGoesOff) {
  Begin(EnrichmentMode::kEdit, {{.company = "alpha"}});
  EXPECT_TRUE(review_->may_save());
  EXPECT_TRUE(review_->may_skip());
  EXPECT_EQ(review_->Skip(), Outcome::kStays);
  EXPECT_TRUE(review_->may_save());
  EXPECT_FALSE(review_->may_skip());
  EXPECT_EQ(Shown(150), "ALPHA");
  // What is still shown can be saved after all, once.
  EXPECT_EQ(review_->Save(review_->Texts()), Outcome::kStays);
  EXPECT_FALSE(review_->may_save());
  EXPECT_THAT(Companies(), ElementsAre("ALPHA"));
}

TEST_F(EnrichmentReviewTest, WithoutARecordThereIsNothingToShow) {
  Begin(EnrichmentMode::kReview, {});
  EXPECT_FALSE(review_->has_record());
}

}  // namespace
}  // namespace carnetel
