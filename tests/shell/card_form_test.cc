#include "shell/card_form.h"

#include "tests/shell/card_form_fixture.h"

namespace carnetel {
namespace {

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

}  // namespace
}  // namespace carnetel
