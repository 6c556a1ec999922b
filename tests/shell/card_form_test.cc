#include "shell/card_form.h"

#include "tests/shell/window_fixture.h"

namespace carnetel {
namespace {

using Shown = std::vector<QueuedMessages::Entry>;

const Shown kDiscardQuestion = {
    {MessageStyle::kYesNoDefaultNo, 80, "Voulez vous quitter sans sauver les dernières saisies ?"}};

class CardFormTest : public WindowFixture {
 protected:
  void BuildThree() {
    Build({CardWith({{kSte1, "ALPHA"}, {kVille, "PARIS"}}),
           CardWith({{kSte1, "BETA"}, {kNom, "MARTIN"}}), CardWith({{kSte1, "CESAR"}})});
  }
  void StartWithThree() {
    BuildThree();
    Start();
  }
  void ExpectState(FormMode mode, FormPurpose purpose) {
    EXPECT_EQ(form().mode(), mode);
    EXPECT_EQ(form().purpose(), purpose);
  }
  void ExpectAtRest(const std::string& company) {
    ExpectState(FormMode::kRest, FormPurpose::kCard);
    EXPECT_FALSE(view.edit_look);
    EXPECT_FALSE(view.cancel_face);
    EXPECT_FALSE(view.IsEnabled(1006));
    EXPECT_EQ(view.Text(150), company);
  }
};

// ---- what it shows ----

TEST_F(CardFormTest, ShowsEachFieldInItsControl) {
  Build({CardWith({{0, "Ste"},          {1, "Suite"},  {2, "Rue"},  {3, "Bat"},    {4, "cache"},
                   {5, "75001"},        {6, "Ville"},  {7, "Pays"}, {8, "M. "},    {9, "Jean "},
                   {10, "DURAND "},     {11, "sparx"}, {12, "r1"},  {13, "r2"},    {14, "r3"},
                   {15, "r4"},          {16, "r5"},    {17, "r6"},  {18, "t1"},    {19, "t2"},
                   {20, "3615"},        {21, "x"},     {22, "fax"}, {23, "ninit"}, {24, "modem"},
                   {25, "75001 CEDEX"}, {26, "note"}})});
  Start();
  const std::vector<std::pair<int, std::string>> expected = {
      {150, "Ste"},         {151, "Suite"}, {152, "Rue"},     {153, "Bat"},
      {155, "75001 CEDEX"}, {156, "Ville"}, {157, "Pays"},    {158, "t1"},
      {159, "t2"},          {160, "fax"},   {161, "modem"},   {162, "3615"},
      {170, "M. "},         {171, "Jean "}, {172, "DURAND "}, {173, "M. Jean DURAND"},
      {174, "note"},        {154, ""},      {163, ""}};
  for (const auto& [control, text] : expected) EXPECT_EQ(view.Text(control), text) << control;
  const std::array<std::string, 6> references = {"r1", "r2", "r3", "r4", "r5", "r6"};
  EXPECT_EQ(view.references, references);
}

TEST_F(CardFormTest, ShowsTheShortPostalCodeWhenTheLongOneIsEmpty) {
  Build({CardWith({{kSte1, "ALPHA"}, {kShortPostalCode, "69002"}})});
  Start();
  EXPECT_EQ(view.Text(155), "69002");
}

TEST_F(CardFormTest, LeavesEmptyPartsOutOfTheComposedName) {
  Build({CardWith({{kQualite, "Mme"}, {kPrenom, "   "}, {kNom, "DURAND"}}),
         CardWith({{kNom, "ZOLA"}}), CardWith({{kSte1, "ZZ"}})});
  Start();
  EXPECT_EQ(view.Text(173), "Mme DURAND");
  list().SetCurrentRow(1);
  EXPECT_EQ(view.Text(173), "ZOLA");
  list().SetCurrentRow(2);
  EXPECT_EQ(view.Text(173), "");
}

TEST_F(CardFormTest, ShowsOemTextAsTheScreensOwn) {
  Build({CardWith({{kSte1, "Caf\x82"}, {kVille, "N\x8Cmes \xB3"}})});
  Start();
  EXPECT_EQ(view.Text(150), "Café");
  EXPECT_EQ(view.Text(156), "Nîmes │");
}

TEST_F(CardFormTest, FollowsTheCurrentRow) {
  StartWithThree();
  EXPECT_EQ(view.Text(156), "PARIS");
  list().SetCurrentRow(1);
  EXPECT_EQ(view.Text(150), "BETA");
  EXPECT_EQ(view.Text(156), "");
  EXPECT_EQ(view.Text(172), "MARTIN");
}

TEST_F(CardFormTest, StartsWithTheZoneOfTheSettings) {
  StartWithThree();
  EXPECT_EQ(view.zone, FormZone::kReferences);
  view.Run(1018);
  EXPECT_EQ(view.zone, FormZone::kNotes);
  EXPECT_EQ(form().zone(), FormZone::kNotes);
  EXPECT_EQ(view.focus, 2007);
  view.Run(1020);
  EXPECT_EQ(view.zone, FormZone::kReferences);
  EXPECT_EQ(view.focus, 2009);
  Quit();
  SetProfile("ShowRefCor", "0");
  Start();
  EXPECT_EQ(view.zone, FormZone::kNotes);
}

// ---- entering and typing ----

TEST_F(CardFormTest, EnteringAFieldPutsTheInputLookOn) {
  StartWithThree();
  ExpectAtRest("ALPHA");
  view.Focus(158);
  ExpectState(FormMode::kRest, FormPurpose::kCard);
  EXPECT_TRUE(view.edit_look);
  EXPECT_TRUE(view.cancel_face);
  EXPECT_TRUE(view.IsEnabled(1006));
  EXPECT_TRUE(view.IsEnabled(1007));
  EXPECT_FALSE(view.IsEnabled(1009));
  EXPECT_EQ(form().return_field(), 158);
}

TEST_F(CardFormTest, LeavingAnUntouchedFieldForTheListAsksNothing) {
  StartWithThree();
  view.Focus(158);
  view.ClickRow(1);
  ExpectAtRest("BETA");
  EXPECT_TRUE(view.IsEnabled(1009));
  EXPECT_EQ(messages.TakeShown(), Shown());
}

TEST_F(CardFormTest, TypingInAnyFieldMakesAChange) {
  StartWithThree();
  for (const int control :
       {150, 151, 152, 153, 155, 156, 157, 158, 159, 160, 161, 162, 170, 171, 172, 174}) {
    view.Type(control, "X");
    ExpectState(FormMode::kChanged, FormPurpose::kCard);
    EXPECT_TRUE(view.edit_look);
    EXPECT_TRUE(view.cancel_face);
    EXPECT_EQ(form().return_field(), control);
    view.Press(1008);
    ExpectAtRest("ALPHA");
  }
  view.TypeReference(4, "X");
  ExpectState(FormMode::kChanged, FormPurpose::kCard);
  EXPECT_EQ(form().return_field(), 164);
}

TEST_F(CardFormTest, TheComposedNamePassesTheFocusOn) {
  for (const auto& [index, first_field, expected] :
       {std::tuple{"0", "0", 170}, std::tuple{"0", "1", 170}, std::tuple{"10", "1", 170},
        std::tuple{"10", "0", 172}}) {
    SetProfile("Idindex", index);
    SetProfile("DebutSaisie", first_field);
    Start();
    view.Focus(173);
    EXPECT_EQ(view.focus, expected) << index << first_field;
    EXPECT_EQ(form().return_field(), expected);
    EXPECT_TRUE(view.edit_look);
    Quit();
  }
}

TEST_F(CardFormTest, TheNotesKeepTheFocus) {
  StartWithThree();
  view.Focus(174);
  EXPECT_EQ(view.focus, 174);
  EXPECT_TRUE(view.edit_look);
}

TEST_F(CardFormTest, SaveButtonsFollowTheKeyFields) {
  StartWithThree();
  view.Type(150, "");
  EXPECT_FALSE(view.IsEnabled(1006));
  EXPECT_FALSE(view.IsEnabled(1007));
  view.Type(172, "N");
  EXPECT_TRUE(view.IsEnabled(1006));
  EXPECT_TRUE(view.IsEnabled(1007));
  view.Type(172, "");
  EXPECT_FALSE(view.IsEnabled(1006));
  EXPECT_FALSE(view.IsEnabled(1007));
  view.Type(150, " ");
  EXPECT_TRUE(view.IsEnabled(1006));
  EXPECT_TRUE(view.IsEnabled(1007));
}

TEST_F(CardFormTest, TypingBehindACommandPutsTheLookOnAgain) {
  StartWithThree();
  view.Focus(158);
  view.Run(213);
  EXPECT_FALSE(view.edit_look);
  EXPECT_FALSE(view.cancel_face);
  // The focus is still there; no event tells it anew.
  view.Type(158, "01");
  ExpectState(FormMode::kChanged, FormPurpose::kCard);
  EXPECT_TRUE(view.edit_look);
  EXPECT_TRUE(view.cancel_face);
  EXPECT_TRUE(view.IsEnabled(1006));
  EXPECT_EQ(form().return_field(), 158);
}

struct FirstCharacter {
  const char* text;
  bool passes;
};

class FirstCharacterRule : public CardFormTest,
                           public ::testing::WithParamInterface<FirstCharacter> {};

TEST_P(FirstCharacterRule, HoldsForBothKeyFields) {
  Start();
  for (const int control : {150, 172}) {
    view.beeps = 0;
    view.Type(control, "avant");
    view.Type(control, GetParam().text);
    EXPECT_EQ(view.Text(control), GetParam().passes ? GetParam().text : "avant") << control;
    EXPECT_EQ(view.beeps, GetParam().passes ? 0 : 1);
  }
  view.beeps = 0;
  view.Type(156, GetParam().text);
  EXPECT_EQ(view.Text(156), GetParam().text);
  EXPECT_EQ(view.beeps, 0);
}

// The last ones share their byte of the form's code page with Ä Å É Æ Ö Ü Ñ of the cards'.
INSTANTIATE_TEST_SUITE_P(All, FirstCharacterRule,
                         ::testing::Values(FirstCharacter{"", true}, FirstCharacter{" x", true},
                                           FirstCharacter{"0", true}, FirstCharacter{"9", true},
                                           FirstCharacter{"A", true}, FirstCharacter{"Z", true},
                                           FirstCharacter{"a", true}, FirstCharacter{"z", true},
                                           FirstCharacter{"A(", true}, FirstCharacter{"(A", false},
                                           FirstCharacter{"-", false}, FirstCharacter{"@", false},
                                           FirstCharacter{"[", false},
                                           FirstCharacter{"École", false},
                                           FirstCharacter{"é", false}, FirstCharacter{"Ö", false},
                                           FirstCharacter{"Ž", true}, FirstCharacter{"’", true},
                                           FirstCharacter{"™", true}, FirstCharacter{"š", true},
                                           FirstCharacter{"¥", true}));

TEST_F(CardFormTest, AnUndoneChangeIsNone) {
  StartWithThree();
  view.Type(150, "(ALPHA");
  EXPECT_EQ(view.Text(150), "ALPHA");
  ExpectState(FormMode::kRest, FormPurpose::kCard);
}

// ---- create and cancel ----

TEST_F(CardFormTest, CreateClearsTheFormForANewCard) {
  StartWithThree();
  view.Run(207);
  ExpectState(FormMode::kRest, FormPurpose::kNewCard);
  EXPECT_EQ(view.Text(150), "");
  EXPECT_EQ(view.Text(156), "");
  EXPECT_EQ(view.focus, 150);
  EXPECT_TRUE(view.edit_look);
  EXPECT_TRUE(view.cancel_face);
  EXPECT_FALSE(view.IsEnabled(1006));
  EXPECT_FALSE(view.IsEnabled(1007));
  view.Type(150, "N");
  ExpectState(FormMode::kChanged, FormPurpose::kNewCard);
  EXPECT_FALSE(view.IsEnabled(1006));
  EXPECT_TRUE(view.IsEnabled(1007));
  EXPECT_FALSE(form().may_save_change());
}

TEST_F(CardFormTest, CreateStartsWhereTheSettingsSay) {
  for (const auto& [index, first_field, expected] :
       {std::tuple{"0", "0", 150}, std::tuple{"10", "0", 172}, std::tuple{"0", "1", 170},
        std::tuple{"10", "1", 170}}) {
    SetProfile("Idindex", index);
    SetProfile("DebutSaisie", first_field);
    Start();
    view.Press(1008);
    EXPECT_EQ(view.focus, expected) << index << first_field;
    Quit();
  }
}

TEST_F(CardFormTest, CreateFromTheFieldThatHasTheFocusOpensTheEdit) {
  StartWithThree();
  view.Focus(150);
  view.Run(207);
  ExpectState(FormMode::kRest, FormPurpose::kNewCard);
  EXPECT_TRUE(view.edit_look);
  EXPECT_TRUE(view.cancel_face);
}

TEST_F(CardFormTest, TheListDoesNotRefillANewCard) {
  StartWithThree();
  view.Run(207);
  view.Type(150, "NEUF");
  list().SetCurrentRow(2);
  EXPECT_EQ(view.Text(150), "NEUF");
  EXPECT_EQ(view.position, "3 / 3");
}

TEST_F(CardFormTest, CancelNeverAsks) {
  StartWithThree();
  view.Type(150, "XX");
  view.Press(1008);
  ExpectAtRest("ALPHA");
  EXPECT_EQ(view.focus, kControlList);
  view.Run(207);
  view.Type(150, "NEUF");
  view.Press(1008);
  ExpectAtRest("ALPHA");
  EXPECT_TRUE(view.IsEnabled(1009));
  EXPECT_EQ(messages.TakeShown(), Shown());
  EXPECT_EQ(SavedCompanies(), (std::vector<std::string>{"ALPHA", "BETA", "CESAR"}));
}

TEST_F(CardFormTest, AnUntouchedNewCardIsLeftForTheListWithoutQuestion) {
  StartWithThree();
  view.Run(207);
  view.ClickRow(1);
  ExpectAtRest("BETA");
  EXPECT_EQ(messages.TakeShown(), Shown());
}

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
  view.Type(156, "LYON");
  view.Focus(kControlList);
  messages.Answer(MessageButton::kNo);
  view.Run(213);
  EXPECT_EQ(messages.TakeShown(), kDiscardQuestion);
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
