#include "base/messages.h"

#include <gtest/gtest.h>

namespace carnetel {
namespace {

TEST(MessageStyle, HasTheNumbersOfTheMessageBox) {
  EXPECT_EQ(static_cast<int>(MessageStyle::kError), 16);
  EXPECT_EQ(static_cast<int>(MessageStyle::kYesNoCancel), 35);
  EXPECT_EQ(static_cast<int>(MessageStyle::kOkCancel), 49);
  EXPECT_EQ(static_cast<int>(MessageStyle::kInformation), 64);
  EXPECT_EQ(static_cast<int>(MessageStyle::kYesNoDefaultNo), 292);
}

TEST(MessageTitle, ZeroMeansTheNameOfTheApplication) {
  EXPECT_EQ(MessageTitle(0), "Carnetel ");
  EXPECT_EQ(MessageTitle(79), "Erreur");
  EXPECT_EQ(MessageTitle(80), "Attention");
}

TEST(SilentMessages, GivesItsAnswerAndRemembersTheText) {
  SilentMessages messages(MessageButton::kNo);
  MessageForm& form = messages;
  EXPECT_EQ(form.ShowMessage(MessageStyle::kYesNoDefaultNo, 80, 43, "/a/100%s.DAN"),
            MessageButton::kNo);
  ASSERT_EQ(messages.shown().size(), 1u);
  EXPECT_EQ(messages.shown()[0].style, MessageStyle::kYesNoDefaultNo);
  EXPECT_EQ(messages.shown()[0].title_id, 80);
  EXPECT_EQ(messages.shown()[0].text, "Accès au fichier /a/100%s.DAN impossible");
}

TEST(SilentMessages, AnswersOkUnlessToldOtherwise) {
  SilentMessages messages;
  EXPECT_EQ(messages.ShowMessage(MessageStyle::kError, 79, 30), MessageButton::kOk);
}

TEST(SilentProgress, NeverAsksForAnAbort) {
  SilentProgress progress;
  ProgressBox& box = progress;
  box.Open(ProgressForm::kTransfer, 1);
  EXPECT_FALSE(box.Step());
  EXPECT_FALSE(box.Step("DUPONT"));
  box.Close();
}

ProgressCounter Counted(ProgressForm form, uint32_t total, int steps) {
  ProgressCounter counter(form, total);
  for (int step = 0; step < steps; ++step) counter.Step({});
  return counter;
}

TEST(ProgressCounter, TitlesAndLabelsByForm) {
  const ProgressCounter index(ProgressForm::kBuildIndex, 12);
  EXPECT_EQ(index.Title(), "Création des index en cours sur 12 fiche(s)");
  EXPECT_EQ(index.Label(), "Nombre de fiches trouvées :");
  const ProgressCounter deletion(ProgressForm::kDelete, 1);
  EXPECT_EQ(deletion.Title(), "Suppression de 1 fiche(s) en cours");
  EXPECT_EQ(deletion.Label(), "Destruction de la fiche :");
  const ProgressCounter selection(ProgressForm::kSelection, 32767);
  EXPECT_EQ(selection.Title(), "Sélection en cours parmi 32767 fiche(s)");
  EXPECT_EQ(selection.Label(), "Nombre de fiches trouvées :");
  const ProgressCounter transfer(ProgressForm::kTransfer, 4000000000u);
  EXPECT_EQ(transfer.Title(), "Transfert de 4000000000 fiche(s) en cours");
  EXPECT_EQ(transfer.Label(), "Nombre de fiches transférées :");
}

TEST(ProgressCounter, BuildingAnIndexCannotBeAborted) {
  EXPECT_FALSE(ProgressCounter(ProgressForm::kBuildIndex, 1).CanAbort());
  EXPECT_TRUE(ProgressCounter(ProgressForm::kDelete, 1).CanAbort());
  EXPECT_TRUE(ProgressCounter(ProgressForm::kSelection, 1).CanAbort());
  EXPECT_TRUE(ProgressCounter(ProgressForm::kTransfer, 1).CanAbort());
}

TEST(ProgressCounter, TotalZeroShowsNoGaugeAndNoText) {
  const ProgressCounter counter = Counted(ProgressForm::kTransfer, 0, 3);
  EXPECT_EQ(counter.count(), 3u);
  EXPECT_FALSE(counter.ShowsGauge());
  EXPECT_EQ(counter.PercentText(), "");
  EXPECT_EQ(counter.FilledWidth(200), 0);
}

TEST(ProgressCounter, NothingShowsBeforeTheFirstStep) {
  const ProgressCounter counter(ProgressForm::kTransfer, 10);
  EXPECT_FALSE(counter.ShowsGauge());
  EXPECT_EQ(counter.PercentText(), "");
  EXPECT_EQ(counter.FilledWidth(200), 0);
}

TEST(ProgressCounter, PercentIsCutAndPaddedToThreePlaces) {
  EXPECT_EQ(Counted(ProgressForm::kTransfer, 300, 1).PercentText(), "  0%");
  EXPECT_EQ(Counted(ProgressForm::kTransfer, 3, 2).PercentText(), " 66%");
  EXPECT_EQ(Counted(ProgressForm::kTransfer, 3, 3).PercentText(), "100%");
}

TEST(ProgressCounter, ACountAboveTheTotalShowsAHundredPercent) {
  const ProgressCounter counter = Counted(ProgressForm::kTransfer, 2, 5);
  EXPECT_EQ(counter.PercentText(), "100%");
  EXPECT_EQ(counter.FilledWidth(200), 200);
}

TEST(ProgressCounter, TheFilledWidthFollowsTheCount) {
  EXPECT_EQ(Counted(ProgressForm::kTransfer, 3, 1).FilledWidth(200), 66);
  EXPECT_EQ(Counted(ProgressForm::kTransfer, 3, 1).FilledWidth(-1), 0);
}

// Width times count is 8e13 here, beyond 32 bits.
TEST(ProgressCounter, LargeNumbersDoNotWrap) {
  const ProgressCounter counter = Counted(ProgressForm::kTransfer, 50000, 40000);
  EXPECT_EQ(counter.PercentText(), " 80%");
  EXPECT_EQ(counter.FilledWidth(2000000000), 1600000000);
}

TEST(ProgressCounter, TransferAndIndexShowTheCount) {
  for (const ProgressForm form : {ProgressForm::kTransfer, ProgressForm::kBuildIndex}) {
    ProgressCounter counter(form, 10);
    EXPECT_EQ(counter.Step("DUPONT").value, "1");
    const ProgressCounter::Update update = counter.Step({});
    EXPECT_EQ(update.value, "2");
    EXPECT_TRUE(update.repaint_gauge);
  }
}

TEST(ProgressCounter, DeletionShowsItsTextAndRestsWithoutOne) {
  ProgressCounter counter(ProgressForm::kDelete, 10);
  const ProgressCounter::Update named = counter.Step("DUPONT");
  EXPECT_EQ(named.value, "DUPONT");
  EXPECT_TRUE(named.repaint_gauge);
  const ProgressCounter::Update unnamed = counter.Step({});
  EXPECT_EQ(unnamed.value, std::nullopt);
  EXPECT_FALSE(unnamed.repaint_gauge);
  EXPECT_EQ(counter.count(), 2u);
}

TEST(ProgressCounter, SelectionShowsTheMarksWhenTheyChange) {
  ProgressCounter counter(ProgressForm::kSelection, 10);
  EXPECT_EQ(counter.Step("1").value, "1");
  const ProgressCounter::Update same = counter.Step("1");
  EXPECT_EQ(same.value, std::nullopt);
  EXPECT_TRUE(same.repaint_gauge);
  EXPECT_EQ(counter.Step("2").value, "2");
}

}  // namespace
}  // namespace carnetel
