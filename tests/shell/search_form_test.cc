// The search by example and the way to a row by its number, without their dialogs.
#include "shell/search_form.h"

#include "tests/shell/window_fixture.h"

namespace carnetel {
namespace {

using Texts = std::vector<std::string>;
using Outcome = SearchForm::Outcome;
using Shown = std::vector<QueuedMessages::Entry>;

const Shown kNoExample = {
    {MessageStyle::kInformation, 80, "Il faut définir un ou plusieurs champs pour la recherche"}};
const Shown kNothingFound = {{MessageStyle::kInformation, 80, "Aucune fiche trouvée..."}};

FormTexts Example(std::initializer_list<std::pair<const int, std::string>> fields) {
  FormTexts texts;
  texts.fields = fields;
  return texts;
}

class SearchFormTest : public WindowFixture {
 protected:
  void StartWithCards() {
    Build({CardWith({{kSte1, "ALPHA"}, {kVille, "Paris"}}),
           CardWith({{kSte1, "BANQUE"}, {kVille, "Lyon"}, {kNom, "Durand"}}),
           CardWith({{kSte1, "Barbier"}, {kSte2, "Groupe BA"}, {kVille, "Lyon 3"}}),
           CardWith({{kSte1, "CESAR"}, {kSte2, "Le bazar"}, {kVille, "Villa Lyonnaise"}}),
           CardWith({{kSte1, "DURBAN"}, {kNom, "Balard"}, {kVille, "Nice"}})});
    StartProgram();
  }
  void StartProgram() {
    ASSERT_TRUE(Start());
    OpenForm();
  }
  void OpenForm() {
    search = std::make_unique<SearchForm>(*session->directory(), list(), messages);
  }
  // As the dialog does it: every change is told before the search is asked for.
  Outcome Search(const FormTexts& texts) {
    search->FieldsChanged(texts);
    return search->Search(texts);
  }
  std::string Found() const { return search->card().FieldText(kSte1).bytes(); }
  // The companies from the first hit to the last, as "Suiv" comes by them.
  Texts FindAll(const FormTexts& texts) {
    OpenForm();
    Texts found;
    for (Outcome outcome = Search(texts); outcome == Outcome::kFound;
         outcome = search->Step(WalkDirection::kNext)) {
      found.push_back(Found());
    }
    return found;
  }

  std::unique_ptr<SearchForm> search;
};

// ---- what fits ----

TEST_F(SearchFormTest, ATownAloneIsLookedForInTheWholeIndex) {
  StartWithCards();
  EXPECT_EQ(FindAll(Example({{156, "lyon"}})), (Texts{"BANQUE", "Barbier", "CESAR"}));
  EXPECT_EQ(FindAll(Example({{156, "Paris"}})), Texts{"ALPHA"});
  EXPECT_EQ(FindAll(Example({{156, "Nice"}})), Texts{"DURBAN"});
}

TEST_F(SearchFormTest, TheIndexedCompanyFitsAtItsStartAndTheSecondLineAnywhere) {
  StartWithCards();
  EXPECT_EQ(FindAll(Example({{150, "BA"}})), (Texts{"BANQUE", "Barbier"}));
  EXPECT_EQ(FindAll(Example({{151, "BA"}})), (Texts{"Barbier", "CESAR"}));
  EXPECT_EQ(FindAll(Example({{172, "a"}})), (Texts{"BANQUE", "DURBAN"}));
  EXPECT_EQ(search->key_field(), kSte1);
}

TEST_F(SearchFormTest, WithTheIndexOnNamesCompanyAndNameChangeSides) {
  SetProfile("Idindex", "10");
  StartWithCards();
  EXPECT_EQ(search->key_field(), kNom);
  EXPECT_EQ(FindAll(Example({{150, "BA"}})), (Texts{"DURBAN", "Barbier", "BANQUE"}));
  EXPECT_EQ(FindAll(Example({{172, "bal"}})), Texts{"DURBAN"});
  EXPECT_EQ(FindAll(Example({{172, "a"}})), Texts());
}

TEST_F(SearchFormTest, AllFieldsOfTheExampleMustFit) {
  StartWithCards();
  EXPECT_EQ(FindAll(Example({{150, "b"}, {156, "lyon 3"}})), Texts{"Barbier"});
  EXPECT_EQ(FindAll(Example({{150, "b"}, {156, "paris"}})), Texts());
}

TEST_F(SearchFormTest, CapitalsDoNotCountAndAccentsDo) {
  Build({CardWith({{kSte1, "ETE"}, {kVille, "Evry"}}),
         CardWith({{kSte1, "HIVER"}, {kVille, "Saint-\x90tienne"}}),
         CardWith({{kSte1, "JUIN"}, {kVille, "saint-\x82tienne"}})});
  StartProgram();
  EXPECT_EQ(FindAll(Example({{156, "SAINT-étienne"}})), Texts{"JUIN"});
  EXPECT_EQ(FindAll(Example({{156, "SAINT-Étienne"}})), Texts{"HIVER"});
  EXPECT_EQ(FindAll(Example({{156, "saint-etienne"}})), Texts());
}

TEST_F(SearchFormTest, ACardWithoutALongPostalCodeFitsByItsShortOne) {
  Build({CardWith({{kSte1, "COURT"}, {kShortPostalCode, "69003"}}),
         CardWith({{kSte1, "LONG"}, {kPostalCode, "69003 CEDEX 3"}}),
         CardWith({{kSte1, "MIXTE"}, {kPostalCode, "75001"}, {kShortPostalCode, "69003"}})});
  StartProgram();
  EXPECT_EQ(FindAll(Example({{155, "69003"}})), (Texts{"COURT", "LONG"}));
  EXPECT_EQ(FindAll(Example({{155, "69003 cedex"}})), Texts{"LONG"});
  EXPECT_EQ(FindAll(Example({{155, "75"}})), Texts{"MIXTE"});
}

TEST_F(SearchFormTest, EveryControlLooksIntoItsOwnField) {
  const std::pair<int, int> fields[] = {
      {150, kSte1},  {151, kSte2}, {152, kAdr1},   {153, kAdr2}, {155, kPostalCode},
      {156, kVille}, {157, kPays}, {158, kTel1},   {159, kTel2}, {160, kFax},
      {161, kModem}, {162, kMtel}, {171, kPrenom}, {172, kNom},  {174, kNotes}};
  std::vector<CardRecord> cards;
  for (const auto& [control, field] : fields) {
    CardRecord card = CardWith({{kSte1, "C" + std::to_string(control)}});
    card.SetField(field, OemText(field == kSte1 ? "XYZ" : "1XYZ"));
    cards.push_back(card);
  }
  Build(cards);
  StartProgram();
  for (const auto& [control, field] : fields) {
    const std::string expected = field == kSte1 ? "XYZ" : "C" + std::to_string(control);
    EXPECT_EQ(FindAll(Example({{control, "xyz"}})), Texts{expected}) << control;
  }
}

TEST_F(SearchFormTest, AReferenceIsLookedForInItsOwnRow) {
  Build({CardWith({{kSte1, "PREMIER"}, {kRef1, "C0042"}}),
         CardWith({{kSte1, "SIXIEME"}, {kRef6, "C0042"}})});
  StartProgram();
  FormTexts texts;
  texts.references[5] = "42";
  EXPECT_EQ(FindAll(texts), Texts{"SIXIEME"});
}

TEST_F(SearchFormTest, ALineBreakInTheNotesFitsTheOneOfTheCard) {
  Build({CardWith({{kSte1, "ALPHA"}, {kNotes, "un\r\ndeux"}})});
  StartProgram();
  EXPECT_EQ(FindAll(Example({{174, "un\r\ndeux"}})), Texts{"ALPHA"});
  EXPECT_EQ(FindAll(Example({{174, "n\nd"}})), Texts{"ALPHA"});
}

TEST_F(SearchFormTest, WhatTheMainFormLeftBehindIsNoPartOfTheExample) {
  StartWithCards();
  session->directory()->context().current = CardWith({{kSpare27, "X"}, {kPays, "FRANCE"}});
  EXPECT_EQ(FindAll(Example({{156, "Nice"}})), Texts{"DURBAN"});
}

// ---- buttons and messages ----

TEST_F(SearchFormTest, TheSearchIsOnWithAFilledFieldUntilSomethingWasFound) {
  StartWithCards();
  EXPECT_FALSE(search->may_search());
  search->FieldsChanged(Example({{150, ""}, {156, "x"}}));
  EXPECT_TRUE(search->may_search());
  search->FieldsChanged(Example({{150, ""}, {156, ""}}));
  EXPECT_FALSE(search->may_search());
  FormTexts reference;
  reference.references[4] = "x";
  search->FieldsChanged(reference);
  EXPECT_TRUE(search->may_search());
  EXPECT_EQ(Search(Example({{156, "Brest"}})), Outcome::kNothing);
  EXPECT_TRUE(search->may_search());
  EXPECT_FALSE(search->may_step());
  EXPECT_EQ(Search(Example({{156, "Lyon"}})), Outcome::kFound);
  EXPECT_FALSE(search->may_search());
  EXPECT_TRUE(search->may_step());
  search->FieldsChanged(Example({{156, "Nice"}}));
  EXPECT_FALSE(search->may_search());
  EXPECT_TRUE(search->may_step());
}

TEST_F(SearchFormTest, ReferencesAreCountedRowByRow) {
  FormTexts texts = Example({{150, "a"}, {151, ""}, {174, "b"}});
  EXPECT_EQ(texts.CountFilled(), 2u);
  texts.references = {"1", "", "", "4", "", "6"};
  EXPECT_EQ(texts.CountFilled(), 5u);
}

TEST_F(SearchFormTest, AnEmptyExampleIsToldAndFindsNothing) {
  StartWithCards();
  EXPECT_EQ(Search(Example({{150, ""}, {174, ""}})), Outcome::kNothing);
  EXPECT_EQ(messages.TakeShown(), kNoExample);
  EXPECT_FALSE(search->may_step());
}

TEST_F(SearchFormTest, NothingThatFitsIsTold) {
  StartWithCards();
  EXPECT_EQ(Search(Example({{150, "ZORRO"}})), Outcome::kNothing);
  EXPECT_EQ(messages.TakeShown(), kNothingFound);
  EXPECT_EQ(Search(Example({{156, "Brest"}})), Outcome::kNothing);
  EXPECT_EQ(messages.TakeShown(), kNothingFound);
}

// ---- steps ----

TEST_F(SearchFormTest, TheStepsBeepAtTheirEndsAndTheCardStays) {
  StartWithCards();
  ASSERT_EQ(Search(Example({{150, "BA"}})), Outcome::kFound);
  EXPECT_EQ(search->Step(WalkDirection::kPrevious), Outcome::kBeeps);
  EXPECT_EQ(Found(), "BANQUE");
  EXPECT_EQ(search->Step(WalkDirection::kNext), Outcome::kFound);
  EXPECT_EQ(Found(), "Barbier");
  EXPECT_EQ(search->Step(WalkDirection::kNext), Outcome::kBeeps);
  EXPECT_EQ(Found(), "Barbier");
  EXPECT_EQ(search->Step(WalkDirection::kPrevious), Outcome::kFound);
  EXPECT_EQ(Found(), "BANQUE");
  EXPECT_EQ(messages.TakeShown(), Shown());
}

TEST_F(SearchFormTest, TheStepsGoOnWithTheExampleThatWasSearchedFor) {
  StartWithCards();
  ASSERT_EQ(Search(Example({{156, "Lyon"}})), Outcome::kFound);
  search->FieldsChanged(Example({{156, "Nice"}}));
  EXPECT_EQ(search->Step(WalkDirection::kNext), Outcome::kFound);
  EXPECT_EQ(Found(), "Barbier");
  EXPECT_EQ(search->ExampleText(kVille), "Lyon");
}

TEST_F(SearchFormTest, ANewSearchStartsFromTheFirstCard) {
  StartWithCards();
  ASSERT_EQ(Search(Example({{156, "Lyon"}})), Outcome::kFound);
  ASSERT_EQ(search->Step(WalkDirection::kNext), Outcome::kFound);
  search->End();
  OpenForm();
  ASSERT_EQ(Search(Example({{156, "Lyon"}})), Outcome::kFound);
  EXPECT_EQ(Found(), "BANQUE");
}

// ---- cards that the list does not show ----

TEST_F(SearchFormTest, HitsOutsideTheTabArePassedOver) {
  StartWithCards();
  list().ListRefill(*LetterRangeOf('C'));
  EXPECT_EQ(FindAll(Example({{156, "Lyon"}})), Texts{"CESAR"});
  EXPECT_EQ(search->Step(WalkDirection::kPrevious), Outcome::kBeeps);
  EXPECT_EQ(Found(), "CESAR");
  EXPECT_EQ(messages.TakeShown(), Shown());
}

TEST_F(SearchFormTest, ASearchWithHiddenHitsAloneFindsNothing) {
  StartWithCards();
  list().ListRefill(*LetterRangeOf('A'));
  EXPECT_EQ(Search(Example({{156, "Lyon"}})), Outcome::kNothing);
  EXPECT_EQ(messages.TakeShown(), kNothingFound);
  EXPECT_FALSE(search->may_step());
}

TEST_F(SearchFormTest, StepsPassOverCardsOutsideTheGroupBothWays) {
  StartWithCards();
  ASSERT_TRUE(list().ToggleMark(1));
  ASSERT_TRUE(list().ToggleMark(3));
  dialogs.groups = [](GroupsForm& form) { return static_cast<int>(form.Create()); };
  dialogs.group_descriptions = {GroupDescription{"Lyon", kMembersOnly}};
  view.Run(kCommandGroups);
  window().PickGroup(1);
  ASSERT_EQ(list().row_count(), 2);
  EXPECT_EQ(FindAll(Example({{156, "Lyon"}})), (Texts{"BANQUE", "CESAR"}));
  EXPECT_EQ(search->Step(WalkDirection::kPrevious), Outcome::kFound);
  EXPECT_EQ(Found(), "BANQUE");
  EXPECT_EQ(search->Step(WalkDirection::kPrevious), Outcome::kBeeps);
  EXPECT_EQ(Found(), "BANQUE");
  EXPECT_EQ(search->Step(WalkDirection::kNext), Outcome::kFound);
  EXPECT_EQ(Found(), "CESAR");
}

// ---- the end ----

TEST_F(SearchFormTest, TheCardFoundLastBecomesTheCurrentOne) {
  StartWithCards();
  ASSERT_EQ(Search(Example({{156, "Lyon"}})), Outcome::kFound);
  ASSERT_EQ(search->Step(WalkDirection::kNext), Outcome::kFound);
  EXPECT_EQ(list().current_row(), 0);
  search->End();
  EXPECT_EQ(list().current_row(), 2);
  EXPECT_EQ(MarkedRows(), std::vector<int>());
}

TEST_F(SearchFormTest, AMarkedCardIsFoundAndKeepsItsMark) {
  StartWithCards();
  ASSERT_TRUE(list().ToggleMark(3));
  ASSERT_EQ(Search(Example({{150, "CESAR"}})), Outcome::kFound);
  search->End();
  EXPECT_EQ(list().current_row(), 3);
  EXPECT_EQ(MarkedRows(), std::vector<int>{3});
}

TEST_F(SearchFormTest, WithoutAHitTheCurrentRowStays) {
  StartWithCards();
  list().SetCurrentRow(1);
  search->End();
  EXPECT_EQ(list().current_row(), 1);
  EXPECT_EQ(Search(Example({{156, "Brest"}})), Outcome::kNothing);
  search->End();
  EXPECT_EQ(list().current_row(), 1);
}

TEST_F(SearchFormTest, TheCommandShowsTheCardInTheMainForm) {
  StartWithCards();
  dialogs.search = [](SearchForm& form) {
    const FormTexts texts = Example({{150, "D"}});
    form.FieldsChanged(texts);
    EXPECT_EQ(form.Search(texts), Outcome::kFound);
    return 0;
  };
  view.Run(kCommandSearch);
  EXPECT_EQ(list().current_row(), 4);
  EXPECT_EQ(view.Text(150), "DURBAN");
  EXPECT_EQ(view.focus, kControlList);
}

// ---- what fitted ----

using Spans = std::vector<TextSpan>;

TEST(MatchSpansTest, EveryPlaceOfTheExampleCounts) {
  EXPECT_EQ(MatchSpans("Barbara", "ar"), (Spans{{1, 2}, {4, 2}}));
  EXPECT_EQ(MatchSpans("Barbara", "Barbara"), (Spans{{0, 7}}));
  EXPECT_EQ(MatchSpans("Barbara", "x"), Spans());
}

TEST(MatchSpansTest, WithoutExampleOrTextThereIsNone) {
  EXPECT_EQ(MatchSpans("Lyon", ""), Spans());
  EXPECT_EQ(MatchSpans("", "Lyon"), Spans());
  EXPECT_EQ(MatchSpans("Ly", "Lyon"), Spans());
}

TEST(MatchSpansTest, PlacesDoNotOverlap) {
  EXPECT_EQ(MatchSpans("aaaaa", "aa"), (Spans{{0, 2}, {2, 2}}));
}

TEST(MatchSpansTest, CapitalsDoNotCountEvenAccentedOnes) {
  EXPECT_EQ(MatchSpans("LYON", "lyon"), (Spans{{0, 4}}));
  EXPECT_EQ(MatchSpans("Été à la Cité", "té"), (Spans{{1, 2}, {11, 2}}));
  EXPECT_EQ(MatchSpans("été", "É"), (Spans{{0, 1}, {2, 1}}));
  EXPECT_EQ(MatchSpans("ete", "é"), Spans());
}

// ---- by number ----

class NumberFormTest : public WindowFixture {
 protected:
  void SetUp() override {
    Build(
        {CardWith({{kSte1, "ALPHA"}}), CardWith({{kSte1, "BETA"}}), CardWith({{kSte1, "BRAVO"}})});
    ASSERT_TRUE(Start());
  }
};

TEST_F(NumberFormTest, ARowFromOneOnBecomesTheCurrentOne) {
  NumberForm number(list());
  EXPECT_TRUE(number.Confirm("3"));
  EXPECT_EQ(list().current_row(), 2);
  EXPECT_TRUE(number.Confirm("1"));
  EXPECT_EQ(list().current_row(), 0);
  EXPECT_TRUE(number.Confirm("0002"));
  EXPECT_EQ(list().current_row(), 1);
}

TEST_F(NumberFormTest, ANumberThatIsNoRowIsRefused) {
  list().SetCurrentRow(1);
  NumberForm number(list());
  for (const char* text : {"0", "4", "9999", "-1", "", " ", "2x", "x", "99999999999"}) {
    EXPECT_FALSE(number.Confirm(text)) << text;
  }
  EXPECT_EQ(list().current_row(), 1);
}

TEST_F(NumberFormTest, RowsAreThoseOfTheTab) {
  list().ListRefill(*LetterRangeOf('B'));
  NumberForm number(list());
  EXPECT_FALSE(number.Confirm("3"));
  EXPECT_TRUE(number.Confirm("2"));
  EXPECT_EQ(list().CardOffset(list().current_row()), list().CardOffset(1));
  EXPECT_EQ(list().Label(list().current_row()).substr(0, 5), "BRAVO");
}

TEST_F(NumberFormTest, TheCommandGoesThere) {
  dialogs.number = [](NumberForm& form) { return form.Confirm("2"); };
  view.Run(kCommandGoToNumber);
  EXPECT_EQ(list().current_row(), 1);
  EXPECT_EQ(view.Text(150), "BETA");
}

TEST(NumberFormEmptyTest, AnEmptyListHasNoRow) {
  struct : CardList::Observer {
    void ListRefilled() override {}
    void CurrentRowChanged() override {}
    void RowRepainted(int) override {}
    void MarksChanged() override {}
  } observer;
  CardList list(observer, 10);
  NumberForm number(list);
  EXPECT_FALSE(number.Confirm("0"));
  EXPECT_FALSE(number.Confirm("1"));
}

}  // namespace
}  // namespace carnetel
