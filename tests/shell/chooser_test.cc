// The chooser's window without its widgets: what it lists and shows, what marks, where it stands,
// and its commands but for the extractions.
#include "shell/chooser.h"

#include "shell/description.h"
#include "tests/shell/chooser_fixture.h"

namespace carnetel {
namespace {

const std::set<int> kAllButtons = {1001, 1010, 1012, 1030, 1031, 1032, 1033, 1034};

// ---- what it lists ----

class ChooserNumbers : public ChooserTest {
 protected:
  void SetUp() override {
    Build({CardWith({{kSte1, "A FAX"}, {kFax, "1"}}), CardWith({{kSte1, "B MODEM"}, {kModem, "2"}}),
           CardWith({{kSte1, "C MINITEL"}, {kMtel, "3"}}),
           CardWith({{kSte1, "D TEL1"}, {kTel1, "4"}}),
           CardWith({{kSte1, "E TEL2"}, {kTel2, "5"}})});
  }
};

TEST_F(ChooserNumbers, OneKindIsListedUnderItsTitle) {
  struct Case {
    int byte;
    const char* company;
    const char* number;
    const char* title;
  };
  const Case cases[] = {{1, "A FAX", "1", "N° Fax"},         {2, "B MODEM", "2", "N° Modem"},
                        {4, "C MINITEL", "3", "N° Minitel"}, {8, "D TEL1", "4", "N° Téléphone 1"},
                        {0, "A FAX", "1", "N° Fax"},         {7, "A FAX", "1", "N° Fax"},
                        {255, "A FAX", "1", "N° Fax"}};
  for (const Case& test : cases) {
    SCOPED_TRACE(test.byte);
    StartChooser(kMany, test.byte);
    ASSERT_EQ(Companies(), Texts{test.company});
    EXPECT_EQ(chooser->Row(0).number, test.number);
    EXPECT_EQ(view.titles[kTitleNumber], test.title);
    EXPECT_EQ(view.position, "1 / 1");
  }
}

TEST_F(ChooserNumbers, TheSecondTelephoneListsNothingAndNothingCanBeExtracted) {
  for (const int type : {kSingle, kMany}) {
    StartChooser(type, 16);
    EXPECT_EQ(view.titles[kTitleNumber], "N° Téléphone 2");
    EXPECT_EQ(Companies(), Texts{});
    EXPECT_EQ(view.position, "1 / 0");
    EXPECT_EQ(view.marked, 0);
    EXPECT_EQ(view.enabled, (std::set<int>{1010, 1012}));
    for (const int command : {1, 211, 213, 220, 221, 222, 223, 1030, 1031, 1032, 1033, 1034}) {
      chooser->Dispatch(command);
    }
    chooser->ToggleRow(0);
    chooser->ToggleAndMove(1);
    chooser->Step(1);
    EXPECT_EQ(view.ends, 0);
    EXPECT_EQ(messages.TakeShown(), Shown());
    EXPECT_FALSE(memory.Exists(ExchangeFile()));
  }
}

TEST_F(ChooserTest, RowsHaveCompanyPersonAndNumberInTheirWidths) {
  Build({CardWith({{kSte1, "SOCIETE DES TRANSPORTS REUNIS"},
                   {kPrenom, "Jean-Christophe"},
                   {kNom, "DE LA ROCHEFOUCAULD"},
                   {kFax, "0140000001 poste 12"}}),
         CardWith({{kSte1, "\x82TOILE"}, {kNom, "ZOLA"}, {kFax, "2"}})});
  StartChooser(kMany);
  EXPECT_EQ(chooser->Row(1).first, "SOCIETE DES TRANSPORTS");
  EXPECT_EQ(chooser->Row(1).second, "Jean-Christophe DE LA");
  EXPECT_EQ(chooser->Row(1).number, "0140000001 post");
  EXPECT_EQ(chooser->Row(0).first, "éTOILE");
  EXPECT_EQ(chooser->Row(0).second, "ZOLA ");
  EXPECT_EQ(chooser->Row(2).first, "");
  EXPECT_EQ(chooser->Row(-1).first, "");
}

TEST_F(ChooserTest, WithTheNameIndexThePersonStandsInFront) {
  BuildFour();
  StartChooser(kMany);
  EXPECT_EQ(view.titles[kTitleFirst], "Société");
  EXPECT_EQ(view.titles[kTitleSecond], "Prénom-Nom");
  EXPECT_EQ(chooser->Row(0).second, "Jean DURAND ");
  chooser->Quit();
  Exit();
  SetProfile("Idindex", "10");
  StartChooser(kMany);
  EXPECT_EQ(view.titles[kTitleFirst], "Prénom-Nom");
  EXPECT_EQ(view.titles[kTitleSecond], "Société");
  const auto alpha = chooser->list().RowOfCard(768);
  EXPECT_EQ(chooser->Row(alpha).first, "Jean DURAND ");
  EXPECT_EQ(chooser->Row(alpha).second, "ALPHA");
  EXPECT_EQ(chooser->Row(alpha).number, "0140000001");
}

TEST_F(ChooserTest, EachStyleChangesTitleAndRowsAndIsKept) {
  BuildFour();
  StartChooser(kMany);
  EXPECT_EQ(view.style, 232);
  struct Case {
    int command;
    const char* title;
    const char* person;
  };
  const Case cases[] = {{231, "Qualité-Prénom-Nom", "M. Jean DURAND "},
                        {233, "Qualité-Nom-Prénom", "M. DURAND Jean "},
                        {234, "Nom-Prénom", "DURAND Jean "},
                        {232, "Prénom-Nom", "Jean DURAND "}};
  for (const Case& test : cases) {
    const int refills = view.refills;
    chooser->Dispatch(test.command);
    EXPECT_EQ(view.style, test.command);
    EXPECT_EQ(view.titles[kTitleSecond], test.title);
    EXPECT_EQ(chooser->Row(0).second, test.person);
    EXPECT_EQ(view.refills, refills + 1);
    EXPECT_EQ(Profile("StyleAffList"), std::to_string(test.command - 231));
  }
  chooser->Dispatch(234);
  chooser->Quit();
  Exit();
  StartChooser(kSingle);
  EXPECT_EQ(view.style, 234);
  EXPECT_EQ(view.titles[kTitleSecond], "Nom-Prénom");
}

TEST_F(ChooserTest, AnEntryOutsideOfTheWholeFileIsNotListedAndStaysAsItIs) {
  BuildFour();
  WithDirectory([](Directory& directory) {
    EntrySlot entry = directory.address().Entry(2);
    entry.set_bit(kWholeFileBit, false);
    directory.address().SetEntry(2, entry);
  });
  StartChooser(kMany);
  EXPECT_EQ(Companies(), (Texts{"ALPHA", "ZETA"}));
  chooser->Quit();
  EXPECT_FALSE(Saved()[2].entry.bit(kWholeFileBit));
}

TEST_F(ChooserTest, CardsWithoutAPlaceInTheListAreCountedAndTold) {
  BuildFour();
  StartChooser(Request(kMany), 1);
  EXPECT_EQ(Companies(), Texts{"ALPHA"});
  EXPECT_EQ(view.position, "1 / 3");
  chooser->TellNotLoaded();
  EXPECT_EQ(messages.TakeShown(),
            (Shown{{MessageStyle::kInformation, 80,
                    "Liste de fiches saturée: [ 2 ] fiches non chargées. \n Actionnez les onglets "
                    "des lettres pour les visualiser !"}}));
  StartChooser(kMany);
  chooser->TellNotLoaded();
  EXPECT_EQ(messages.TakeShown(), Shown());
}

// ---- marks ----

TEST_F(ChooserTest, ClicksAndKeysMarkWhereSeveralArePicked) {
  BuildFour();
  StartChooser(kMany);
  EXPECT_EQ(view.enabled, (std::set<int>{1001, 1010, 1012, 1030, 1031, 1033}));
  chooser->ToggleRow(1);
  EXPECT_EQ(Marked(), Numbers{1});
  EXPECT_TRUE(chooser->ShowsMark(1));
  EXPECT_FALSE(chooser->ShowsMark(0));
  EXPECT_EQ(view.repainted, Numbers{1});
  EXPECT_EQ(view.marked, 1);
  EXPECT_EQ(view.enabled, kAllButtons);
  chooser->ToggleRow(1);
  EXPECT_EQ(view.marked, 0);
  chooser->ToggleAndMove(1);
  EXPECT_EQ(chooser->list().current_row(), 1);
  chooser->ToggleAndMove(1);
  chooser->ToggleAndMove(1);
  EXPECT_EQ(chooser->list().current_row(), 2);
  EXPECT_EQ(Marked(), (Numbers{0, 1, 2}));
  chooser->ToggleSpan(1, 2);
  EXPECT_EQ(Marked(), Numbers{0});
  chooser->Quit();
  EXPECT_TRUE(Saved()[0].marked());
  EXPECT_FALSE(Saved()[2].marked());
}

TEST_F(ChooserTest, NothingMarksWhereOneIsPicked) {
  BuildFour();
  WithDirectory([](Directory& directory) { ChangeMark(directory, 2, true); });
  StartChooser(kSingle);
  EXPECT_EQ(view.marked, 1);
  EXPECT_FALSE(chooser->ShowsMark(1));
  chooser->ToggleRow(0);
  chooser->ToggleAndMove(1);
  chooser->ToggleSpan(0, 2);
  EXPECT_EQ(Marked(), Numbers{1});
  EXPECT_EQ(chooser->list().current_row(), 0);
  EXPECT_EQ(view.enabled, (std::set<int>{1001, 1010, 1012, 1030, 1033}));
  for (const int command : {222, 223, 1031, 1032, 1034}) chooser->Dispatch(command);
  EXPECT_EQ(view.ends, 0);
  EXPECT_EQ(messages.TakeShown(), Shown());
}

TEST_F(ChooserTest, MarksGoWhenTheUserAgreesWhateverIsPicked) {
  BuildFour();
  const QueuedMessages::Entry question = {MessageStyle::kYesNo, 80,
                                          "Vider la Sélection courante ?"};
  for (const auto& [type, command] : {std::pair(kSingle, 213), std::pair(kMany, 1034)}) {
    WithDirectory([](Directory& directory) { ChangeMark(directory, 2, true); });
    StartChooser(type);
    ASSERT_EQ(Marked(), Numbers{1});
    messages.Answer(MessageButton::kNo);
    chooser->Dispatch(command);
    EXPECT_EQ(Marked(), Numbers{1});
    messages.Answer(MessageButton::kYes);
    chooser->Dispatch(command);
    EXPECT_EQ(Marked(), Numbers{});
    EXPECT_EQ(messages.TakeShown(), (Shown{question, question}));
    EXPECT_FALSE(view.enabled.contains(1034));
    chooser->Dispatch(command);
    EXPECT_EQ(messages.TakeShown(), Shown());
    chooser->Quit();
    Exit();
  }
}

// ---- where it stands ----

TEST_F(ChooserTest, ThePositionIsKeptAsThatOfTheCardInTheWholeFile) {
  BuildFour();
  StartChooser(kMany);
  chooser->list().SetCurrentRow(1);
  EXPECT_EQ(view.position, "2 / 3");
  chooser->Quit();
  Exit();
  WithDirectory([](Directory& directory) {
    EXPECT_EQ(directory.address().header().current_row(), 2);
    EXPECT_EQ(directory.address().header().top_row(), 2);
  });
  StartChooser(kSingle);
  EXPECT_EQ(chooser->list().current_row(), 1);
  // BETA has no fax, so the list begins at its first row.
  chooser->Quit();
  Exit();
  WithDirectory([](Directory& directory) { directory.address().header().set_current_row(1); });
  StartChooser(kSingle);
  EXPECT_EQ(chooser->list().current_row(), 0);
}

TEST_F(ChooserTest, ALookUpForTheCallerLeavesItsCardCurrent) {
  BuildFour();
  StartSession(Request(7));
  ASSERT_TRUE(session->OpenAtStart(&fell_back));
  session->directory()->address().header().set_current_row(3);
  chooser = std::make_unique<ChooserLogic>(*session, view, dialogs, ChooserKind::kSingle, 100);
  chooser->Start();
  EXPECT_EQ(chooser->list().current_row(), 2);
  EXPECT_EQ(chooser->Row(2).first, "ZETA");
}

TEST_F(ChooserTest, StepsStopAtTheEnds) {
  BuildFour();
  StartChooser(kMany);
  const int updates = view.consultation_updates;
  chooser->Step(-1);
  EXPECT_EQ(chooser->list().current_row(), 0);
  chooser->Step(1);
  chooser->Step(1);
  chooser->Step(1);
  EXPECT_EQ(chooser->list().current_row(), 2);
  EXPECT_EQ(view.consultation_updates, updates + 2);
  CardRecord card;
  ASSERT_TRUE(chooser->CurrentCard(&card));
  EXPECT_EQ(card.FieldText(kSte1).bytes(), "ZETA");
}

TEST_F(ChooserTest, LettersJumpAmongTheListedCardsOnly) {
  BuildFour();
  StartChooser(kMany);
  chooser->JumpToLetter('G');
  EXPECT_EQ(chooser->list().current_row(), 1);
  EXPECT_EQ(view.beeps, 0);
  chooser->JumpToLetter('B');
  EXPECT_EQ(view.beeps, 1);
  EXPECT_EQ(chooser->list().current_row(), 1);
}

// ---- commands ----

TEST_F(ChooserTest, CommandsReachTheirDialogs) {
  BuildFour();
  StartChooser(kMany);
  for (const int command : {220, 1033}) chooser->Dispatch(command);
  EXPECT_EQ(view.consultations, 2);
  int searches = 0;
  dialogs.search = [&](SearchForm& form) {
    FormTexts texts;
    texts.fields[150] = searches == 0 ? "GAMMA" : "ZETA";
    form.FieldsChanged(texts);
    EXPECT_EQ(form.Search(texts), SearchForm::Outcome::kFound);
    return ++searches;
  };
  chooser->Dispatch(211);
  EXPECT_EQ(chooser->list().current_row(), 1);
  chooser->Dispatch(1001);
  EXPECT_EQ(chooser->list().current_row(), 2);
  int descriptions = 0;
  dialogs.description = [&](DescriptionForm&) { return ++descriptions < 0; };
  chooser->Dispatch(224);
  EXPECT_EQ(descriptions, 1);
  chooser->Dispatch(229);
  EXPECT_EQ(dialogs.abouts, 1);
  for (const int command : {214, 500}) chooser->Dispatch(command);
  EXPECT_EQ(dialogs.help_topics, (Numbers{48, 48}));
  chooser->Dispatch(204);
  EXPECT_EQ(view.ends, 0);
}

TEST_F(ChooserTest, AProgramThatEndsDuringADialogIsLeftAlone) {
  BuildFour();
  StartChooser(kMany);
  dialogs.search = [&](SearchForm&) {
    chooser->Quit();
    return 0;
  };
  chooser->Dispatch(211);
  EXPECT_EQ(view.ends, 1);
  chooser->Quit();
  chooser->Dispatch(221);
  chooser->Dispatch(231);
  EXPECT_EQ(view.ends, 1);
  EXPECT_EQ(chooser->result(), 0);
}

TEST_F(ChooserTest, TheStatusLineTellsWhatIsUnderTheBarOrTheFocus) {
  BuildFour();
  StartChooser(kMany);
  chooser->ShowStatusOf(195);
  EXPECT_EQ(view.status, "Alt=menu, Tab=boutons, Barre espace=sélection/désélection");
  chooser->ShowStatusOf(235);
  EXPECT_EQ(view.status, "Choix de présentation de la zone à l'Attention de...");
  StartChooser(kSingle);
  chooser->ShowStatusOf(195);
  EXPECT_EQ(view.status, "Alt=menu, Tab=boutons");
}

}  // namespace
}  // namespace carnetel
