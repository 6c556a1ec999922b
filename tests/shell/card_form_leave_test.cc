// Leaving the card form: Escape and Enter, the list, and every other command.
#include "tests/shell/card_form_fixture.h"

namespace carnetel {
namespace {

// ---- Escape and Enter ----

TEST_F(CardFormTest, EscapeAsksOnlyWhenThereAreChanges) {
  StartWithThree();
  view.Run(2);
  view.Focus(150);
  view.Run(2);
  EXPECT_TRUE(view.edit_look);
  view.Run(207);
  view.Run(2);
  ExpectState(FormMode::kRest, FormPurpose::kNewCard);
  EXPECT_EQ(messages.TakeShown(), Shown());
}

TEST_F(CardFormTest, EscapeRefusedLeavesAllAsItWas) {
  StartWithThree();
  view.Type(156, "LYON");
  messages.Answer(MessageButton::kNo);
  view.Run(2);
  EXPECT_EQ(messages.TakeShown(), kDiscardQuestion);
  ExpectState(FormMode::kChanged, FormPurpose::kCard);
  EXPECT_EQ(view.Text(156), "LYON");
  EXPECT_EQ(view.focus, 156);
  EXPECT_TRUE(view.edit_look);
}

TEST_F(CardFormTest, EscapeAcceptedDropsTheChanges) {
  StartWithThree();
  view.Type(156, "LYON");
  messages.Answer(MessageButton::kYes);
  view.Run(2);
  ExpectAtRest("ALPHA");
  EXPECT_EQ(view.Text(156), "PARIS");
  EXPECT_EQ(view.focus, kControlList);
  EXPECT_EQ(form().return_field(), 0);
}

TEST_F(CardFormTest, EscapeFromANewCardShowsTheCurrentOne) {
  StartWithThree();
  list().SetCurrentRow(2);
  view.Run(207);
  view.Type(150, "NEUF");
  messages.Answer(MessageButton::kYes);
  view.Run(2);
  ExpectAtRest("CESAR");
}

TEST_F(CardFormTest, EnterAtRestDoesNothing) {
  StartWithThree();
  view.Focus(150);
  view.Run(1);
  EXPECT_EQ(view.beeps, 0);
  EXPECT_TRUE(view.edit_look);
  EXPECT_EQ(view.focus, 150);
}

TEST_F(CardFormTest, EnterWithoutKeyOnlyBeeps) {
  StartWithThree();
  view.Type(150, "");
  view.Run(1);
  EXPECT_EQ(view.beeps, 1);
  ExpectState(FormMode::kChanged, FormPurpose::kCard);
  view.Press(1008);
  view.Run(207);
  view.Run(1);
  EXPECT_EQ(view.beeps, 2);
  ExpectState(FormMode::kRest, FormPurpose::kNewCard);
  EXPECT_EQ(messages.TakeShown(), Shown());
}

TEST_F(CardFormTest, EnterPostsTheSave) {
  StartWithThree();
  view.Type(158, "01");
  window().Dispatch(1);
  EXPECT_EQ(view.posted, std::deque<int>{1006});
  view.posted.clear();
  view.Press(1008);
  view.Run(207);
  view.Type(172, "NOM");
  window().Dispatch(1);
  EXPECT_EQ(view.posted, std::deque<int>{1007});
}

// ---- leaving for the list ----

TEST_F(CardFormTest, TheQuestionWaitsForTheClickToEnd) {
  StartWithThree();
  view.Type(156, "LYON");
  view.Focus(kControlList);
  ExpectState(FormMode::kLeaving, FormPurpose::kCard);
  EXPECT_EQ(messages.TakeShown(), Shown());
  EXPECT_TRUE(form().IsFrozen());
  // The press changes the row; the form keeps its text.
  list().SetCurrentRow(2);
  EXPECT_EQ(view.Text(156), "LYON");
  messages.while_shown = [this] {
    EXPECT_EQ(form().mode(), FormMode::kAsking);
    // A repaint or a late event during the question changes nothing.
    form().ListEntered();
    form().ShowCurrentCard(true);
    EXPECT_FALSE(form().LeaveForm());
    EXPECT_EQ(view.Text(156), "LYON");
  };
  messages.Answer(MessageButton::kNo);
  view.DeliverPosted();
  EXPECT_EQ(messages.TakeShown(), kDiscardQuestion);
}

TEST_F(CardFormTest, AnswerNoGoesBackToTheCardUnderEdit) {
  StartWithThree();
  view.Type(156, "LYON");
  messages.Answer(MessageButton::kNo);
  view.ClickRow(2);
  ExpectState(FormMode::kChanged, FormPurpose::kCard);
  EXPECT_EQ(view.focus, 156);
  EXPECT_EQ(view.Text(150), "ALPHA");
  EXPECT_EQ(view.Text(156), "LYON");
  EXPECT_EQ(list().current_row(), 0);
  EXPECT_TRUE(view.edit_look);
  EXPECT_TRUE(view.cancel_face);
}

TEST_F(CardFormTest, AnswerNoThenYesShowsTheOtherRow) {
  StartWithThree();
  view.Type(172, "N");
  messages.Answer(MessageButton::kNo);
  view.ClickRow(2);
  EXPECT_EQ(view.focus, 172);
  messages.Answer(MessageButton::kYes);
  view.ClickRow(1);
  ExpectAtRest("BETA");
  EXPECT_EQ(list().current_row(), 1);
  EXPECT_EQ(view.focus, kControlList);
  EXPECT_TRUE(view.IsEnabled(1009));
  EXPECT_EQ(messages.TakeShown().size(), 2u);
  EXPECT_EQ(Saved()[0].card.FieldText(kNom).bytes(), "");
}

TEST_F(CardFormTest, AnswerNoKeepsANewCardNew) {
  StartWithThree();
  view.Run(207);
  view.Type(150, "NEUF");
  messages.Answer(MessageButton::kNo);
  view.ClickRow(1);
  ExpectState(FormMode::kChanged, FormPurpose::kNewCard);
  EXPECT_EQ(view.Text(150), "NEUF");
  EXPECT_FALSE(view.IsEnabled(1006));
  view.Run(1);
  EXPECT_EQ(SavedCompanies(), (std::vector<std::string>{"ALPHA", "BETA", "CESAR", "NEUF"}));
}

TEST_F(CardFormTest, AnswerYesLeavesANewCard) {
  StartWithThree();
  view.Run(207);
  view.Type(150, "NEUF");
  messages.Answer(MessageButton::kYes);
  view.ClickRow(2);
  ExpectAtRest("CESAR");
  EXPECT_EQ(SavedCompanies().size(), 3u);
}

TEST_F(CardFormTest, ACommandInFrontOfTheWaitingQuestionAsksInItsPlace) {
  StartWithThree();
  list().ToggleMark(1);
  view.Type(156, "LYON");
  view.Focus(kControlList);
  list().SetCurrentRow(2);
  messages.Answer(MessageButton::kNo);
  view.Run(213);
  EXPECT_EQ(messages.TakeShown(), kDiscardQuestion);
  // The row is that of the card under edit again.
  EXPECT_EQ(list().current_row(), 0);
  EXPECT_EQ(view.Text(150), "ALPHA");
  EXPECT_EQ(view.marked, 1);
  ExpectState(FormMode::kChanged, FormPurpose::kCard);
  EXPECT_EQ(view.focus, 156);
  EXPECT_EQ(view.Text(156), "LYON");
}

// ---- other commands ----

class LeavingByCommand : public CardFormTest, public ::testing::WithParamInterface<int> {
 protected:
  void SetUp() override {
    BuildThree();
    Build(home + "other", {});
    SetProfile("File2", "&2 " + home + "other.DAN");
    Start();
    list().ToggleMark(1);
    view.Type(156, "LYON");
  }
};

TEST_P(LeavingByCommand, RefusedStopsTheCommand) {
  const std::string title = view.title;
  messages.Answer(MessageButton::kNo);
  view.Run(GetParam());
  EXPECT_EQ(messages.TakeShown(), kDiscardQuestion);
  ExpectState(FormMode::kChanged, FormPurpose::kCard);
  EXPECT_EQ(view.focus, 156);
  EXPECT_EQ(view.Text(156), "LYON");
  EXPECT_EQ(view.tab, 655);
  EXPECT_EQ(view.title, title);
  EXPECT_EQ(view.marked, 1);
  EXPECT_EQ(view.consultations, 0);
  EXPECT_FALSE(view.ended);
  EXPECT_EQ(Saved().size(), 3u);
}

TEST_P(LeavingByCommand, AcceptedDropsTheChanges) {
  messages.Answer(MessageButton::kYes);
  messages.Answer(MessageButton::kCancel);  // of the deletions
  view.Run(GetParam());
  EXPECT_EQ(messages.TakeShown().front(), kDiscardQuestion.front());
  EXPECT_EQ(form().mode(), FormMode::kRest);
  EXPECT_NE(view.Text(156), "LYON");
  EXPECT_EQ(Saved()[0].card.FieldText(kVille).bytes(), "PARIS");
}

INSTANTIATE_TEST_SUITE_P(All, LeavingByCommand,
                         ::testing::Values(206, 1012, 207, 209, 1004, 210, 1005, 213, 219, 226, 655,
                                           656, 668, 681));

}  // namespace
}  // namespace carnetel
