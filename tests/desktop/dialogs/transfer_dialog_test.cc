// The dialog of imports and exports as its user meets it: paths, lists, buttons, keys and ends.
#include "desktop/dialogs/transfer_dialog.h"

#include "tests/desktop/dialogs/dialog_pictures.h"
#include "tests/desktop/dialogs/transfer_dialog_fixture.h"

namespace carnetel::desktop {
namespace {

// ---- what it shows ----

TEST_F(TransferDialogTest, HasTitleAndTextsOfItsDirection) {
  Open(kImport);
  EXPECT_EQ(dialog->objectName(), "110");
  EXPECT_EQ(dialog->windowTitle(), "Importation - Gestion et Paramétrage");
  EXPECT_EQ(Button("action")->text(), "&Importer");
  EXPECT_EQ(Button("2")->text(), "&Quitter");
  EXPECT_EQ(Button("500")->text(), "?");
  ExpectNames(*dialog);
  Open(kExport);
  EXPECT_EQ(dialog->objectName(), "127");
  EXPECT_EQ(dialog->windowTitle(), "Exportation - Gestion et Paramétrage");
  EXPECT_EQ(Button("action")->text(), "&Exporter");
}

TEST_F(TransferDialogTest, ListsTypesAndCharacterSets) {
  Open(kImport);
  EXPECT_EQ(Rows(*dialog, "type"),
            (QStringList{"Fichier avec séparateurs", "Fichier continu", "Fichier Carnetel DROV",
                         "Fichier Dbase III", "Fichier Dbase IV"}));
  EXPECT_EQ(Rows(*dialog, "charset"), (QStringList{" ASCII", " ANSI"}));
  EXPECT_EQ(TextOf(*dialog, "type"), "Fichier avec séparateurs");
  EXPECT_EQ(TextOf(*dialog, "charset"), " ASCII");
}

TEST_F(TransferDialogTest, TheDirectoryFillsItsSideWhichTakesNoText) {
  Open(kImport);
  EXPECT_EQ(Path("source"), "");
  EXPECT_EQ(Path("destination"), kDirectory);
  EXPECT_EQ(FocusName(), "source");
  TypePath("destination", "x");
  EXPECT_EQ(Path("destination"), kDirectory);
  Open(kExport);
  EXPECT_EQ(Path("source"), kDirectory);
  EXPECT_EQ(Path("destination"), "");
  EXPECT_EQ(FocusName(), "destination");
  TypePath("source", "x");
  EXPECT_EQ(Path("source"), kDirectory);
}

TEST_F(TransferDialogTest, TheActionNeedsBothPaths) {
  Open(kImport);
  EXPECT_FALSE(Button("action")->isEnabled());
  PressKey(Qt::Key_Return);
  EXPECT_TRUE(dialog->isVisible());
  Type("/");
  EXPECT_TRUE(Button("action")->isEnabled());
  PressKey(Qt::Key_Backspace);
  EXPECT_FALSE(Button("action")->isEnabled());
}

TEST_F(TransferDialogTest, APathTakes260CharactersOfAnyKind) {
  Open(kImport);
  Type("/é€\\:*");
  EXPECT_EQ(Path("source"), "/é€\\:*");
  Named<FilteredEdit>(*dialog, "source")->SetBeeper([] {});
  TypePath("source", QString(261, u'x'));
  EXPECT_EQ(Path("source"), QString(260, u'x'));
  EXPECT_EQ(form->source().size(), 260u);
}

// ---- types ----

TEST_F(TransferDialogTest, TheExtensionDecidesTheTypeWhileItIsTyped) {
  Open(kImport);
  TypePath("source", "/in.da");
  EXPECT_EQ(TextOf(*dialog, "type"), "Fichier avec séparateurs");
  Type("n");
  EXPECT_EQ(TextOf(*dialog, "type"), "Fichier Carnetel DROV");
  EXPECT_FALSE(Button("parameters")->isEnabled());
  TypePath("source", "/in.dbf");
  EXPECT_EQ(TextOf(*dialog, "type"), "Fichier Dbase III");
  EXPECT_TRUE(Button("parameters")->isEnabled());
  Pick(*dialog, "type", 4);
  TypePath("source", "/other.DBF");
  EXPECT_EQ(TextOf(*dialog, "type"), "Fichier Dbase IV");
  TypePath("source", "/other.txt");
  EXPECT_EQ(TextOf(*dialog, "type"), "Fichier Dbase IV");
}

TEST_F(TransferDialogTest, ChoosingATypeSwitchesTheParameters) {
  Open(kExport);
  for (int type = 0; type < 5; ++type) {
    Pick(*dialog, "type", type);
    EXPECT_EQ(static_cast<int>(form->type()), type);
    EXPECT_EQ(Button("parameters")->isEnabled(), type != 2);
  }
  Pick(*dialog, "charset", 1);
  EXPECT_EQ(form->charset(), CharacterSet::kAnsi);
  ExpectWheelChangesNothing(*dialog);
}

// ---- what opens above ----

TEST_F(TransferDialogTest, BrowseIsForTheSideThatHadTheFocusLast) {
  using Filter = TransferCallbacks::Filter;
  Open(kImport);
  browsed = "/data/in.csv";
  PressNamed(*dialog, "browse");
  EXPECT_EQ(Path("source"), "/data/in.csv");
  EXPECT_EQ(FocusName(), "destination");
  browsed = "/home/OTHER.DAN";
  PressNamed(*dialog, "browse");
  EXPECT_EQ(Path("destination"), "/home/OTHER.DAN");
  EXPECT_EQ(FocusName(), "source");
  browsed = "/data/in.dan";
  PressNamed(*dialog, "browse");
  EXPECT_EQ(TextOf(*dialog, "type"), "Fichier Carnetel DROV");
  EXPECT_EQ(filters, (std::vector<Filter>{Filter::kAny, Filter::kDirectories, Filter::kAny}));
}

TEST_F(TransferDialogTest, ABrowseThatIsLeftChangesNothing) {
  Open(kImport);
  Pick(*dialog, "type", 3);
  PressNamed(*dialog, "browse");
  EXPECT_EQ(filters, std::vector{TransferCallbacks::Filter::kDbase});
  EXPECT_EQ(Path("source"), "");
  EXPECT_EQ(FocusName(), "browse");
  EXPECT_FALSE(Button("action")->isEnabled());
}

TEST_F(TransferDialogTest, ParametersAndProfilesOpenAboveIt) {
  Open(kExport);
  PressNamed(*dialog, "parameters");
  EXPECT_EQ(parameters_shown, 1);
  manage = [this] { parameters.header().set_last_type(TransferFileType::kFixed); };
  PressNamed(*dialog, "profiles");
  EXPECT_EQ(TextOf(*dialog, "type"), "Fichier continu");
  manage = [this] { parameters.header().set_last_type(TransferFileType::kDirectory); };
  PressNamed(*dialog, "profiles");
  EXPECT_FALSE(Button("parameters")->isEnabled());
}

// ---- the run ----

TEST_F(TransferDialogTest, ATransferThatWasMadeLeavesItOpenForAFurtherOne) {
  SetFile("/in.csv");
  Open(kImport);
  TypePath("source", "/in.csv");
  Pick(*dialog, "charset", 1);
  PressNamed(*dialog, "action");
  PressNamed(*dialog, "action");
  EXPECT_TRUE(dialog->isVisible());
  EXPECT_EQ(Path("source"), "/in.csv");
  EXPECT_EQ(TextOf(*dialog, "charset"), " ANSI");
  EXPECT_EQ(Told(), QStringList());
  EXPECT_EQ(replace_questions, 0);
  ASSERT_EQ(jobs.size(), 2u);
  EXPECT_EQ(jobs[0].source, "/in.csv");
  EXPECT_EQ(jobs[0].destination, kDirectory);
  EXPECT_EQ(jobs[0].charset, CharacterSet::kAnsi);
  EXPECT_TRUE(jobs[0].replace);
}

TEST_F(TransferDialogTest, AFailureIsToldAndClosesIt) {
  SetFile("/in.csv");
  Open(kImport);
  outcome.result = -1;
  outcome.title_id = 92;
  outcome.message = "/in.csv\nErreur en lecture...";
  TypePath("source", "/in.csv");
  PressNamed(*dialog, "action");
  EXPECT_EQ(Told(),
            QStringList{"Importation - Gestion et Paramétrage|/in.csv\nErreur en lecture..."});
  EXPECT_FALSE(dialog->isVisible());
  EXPECT_EQ(finished->count(), 1);
}

TEST_F(TransferDialogTest, ADestinationThatIsThereIsAskedAbout) {
  SetFile("/in.csv");
  SetFile(kDirectory);
  Open(kImport);
  TypePath("source", "/in.csv");
  PressNamed(*dialog, "action");
  EXPECT_EQ(replace_questions, 1);
  ExpectStays("source");
  for (const bool replace : {false, true}) {
    replaces = replace;
    PressNamed(*dialog, "action");
    EXPECT_EQ(jobs.back().replace, replace);
  }
}

// ---- ends, keys, help ----

TEST_F(TransferDialogTest, QuitAndEscapeCloseIt) {
  Open(kImport);
  Press(*dialog, 2);
  EXPECT_FALSE(dialog->isVisible());
  for (const char* name : {"source", "destination", "type", "charset", "profiles"}) {
    Open(kImport);
    Named(*dialog, name)->setFocus(Qt::TabFocusReason);
    PressKey(Qt::Key_Escape);
    EXPECT_FALSE(dialog->isVisible()) << name;
    EXPECT_EQ(finished->count(), 1) << name;
  }
}

TEST_F(TransferDialogTest, EnterActsFromTheFields) {
  SetFile("/in.csv");
  for (const char* name : {"source", "destination", "type", "charset"}) {
    Open(kImport);
    TypePath("source", "/in.csv");
    Named(*dialog, name)->setFocus(Qt::TabFocusReason);
    jobs.clear();
    PressKey(Qt::Key_Return);
    EXPECT_EQ(jobs.size(), 1u) << name;
  }
}

TEST_F(TransferDialogTest, TheKeyboardReachesEverything) {
  Open(kImport);
  Type("/x");
  EXPECT_EQ(TabNames(), (QStringList{"source", "destination", "browse", "type", "charset",
                                     "parameters", "profiles", "action", "2", "500"}));
  const std::pair<Qt::Key, const char*> labels[] = {{Qt::Key_T, "type"},
                                                    {Qt::Key_J, "charset"},
                                                    {Qt::Key_D, "destination"},
                                                    {Qt::Key_O, "source"}};
  for (const auto& [key, name] : labels) {
    PressKey(key, Qt::AltModifier);
    EXPECT_EQ(FocusName(), name);
  }
}

TEST_F(TransferDialogTest, ButtonAndF1AskForTheHelpOfTheDirection) {
  for (const auto direction : {kImport, kExport}) {
    Open(direction);
    QSignalSpy help(dialog.get(), &FixedDialog::helpWanted);
    Press(*dialog, 500);
    PressKey(Qt::Key_F1);
    ASSERT_EQ(help.count(), 2);
    for (const auto& asked : help) {
      EXPECT_EQ(asked.at(0).toInt(), direction == kImport ? 58 : 59);
    }
    EXPECT_TRUE(dialog->isVisible());
  }
}

TEST_F(TransferDialogTest, Pictures) {
  for (const int percent : {100, 200}) {
    const LettersAt letters(percent);
    Open(kImport);
    TypePath("source", "/home/anne/Documents/clients de la région lyonnaise.csv");
    SavePicture(*dialog, QStringLiteral("transfer_import"), percent);
    Open(kExport);
    SavePicture(*dialog, QStringLiteral("transfer_export"), percent);
  }
}

}  // namespace
}  // namespace carnetel::desktop
