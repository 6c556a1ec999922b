// Creating, opening and destroying directories from the menu, through their dialogs.
#include <QPushButton>

#include "tests/desktop/window/dialog_user.h"

namespace carnetel::desktop {
namespace {

constexpr const char* kNotValid = "Carnetel non valide - Choisissez un autre...";

class DirectoryCommands : public DialogWindowTest {
 protected:
  [[nodiscard]] std::string Title() { return window->windowTitle().toStdString(); }
  void ExpectShown(const std::string& stem, const Texts& rows) {
    EXPECT_EQ(session->current_path(), stem);
    EXPECT_EQ(Title(), "Carnetel -  " + stem + ".DAN");
    EXPECT_EQ(Rows(), rows);
  }
};

// ---- Nouveau ----

TEST_F(DirectoryCommands, ANewDirectoryIsShownEmpty) {
  BuildCompanies(3);
  Start();
  ClickRow(1);
  Press(1008);
  ExpectName(125, "CLIENTS");
  Choose(200);
  ExpectShown(home + "CLIENTS", {});
  EXPECT_EQ(Text(181), "1 / 0");
  EXPECT_EQ(Text(150), "");
  EXPECT_EQ(Focus(), 655);
  EXPECT_EQ(RecentTexts(), (Texts{"&1 " + home + "CLIENTS.DAN", "&2 " + home + "CARNETEL.DAN"}));
  EXPECT_EQ(Asked(), Texts{});
  EXPECT_EQ(files.Contents(home + "CLIENTS.DAN").size(), 768u);
  // The one before is closed and whole.
  EXPECT_EQ(SavedCompanies(), (Texts{"ALPHA", "BETA", "BRAVO"}));
  Choose(206);
  ExitSession();
  EXPECT_EQ(Profile("File1"), "&1 " + home + "CLIENTS.DAN");
  EXPECT_EQ(Profile("File2"), "&2 " + home + "CARNETEL.DAN");
}

TEST_F(DirectoryCommands, ANewDirectoryTakesCards) {
  Start();
  ExpectName(125, "CLIENTS");
  Choose(200);
  Press(1008);
  Type("NEUF");
  Key(Qt::Key_Return);
  EXPECT_EQ(Rows(), Texts{"NEUF"});
}

TEST_F(DirectoryCommands, AnExistingNameIsNotMadeAnew) {
  BuildCompanies(3);
  Build(home + "CLIENTS", {CardWith({{kSte1, "AUTRE"}})});
  const auto before = files.Contents(home + "CLIENTS.DAN");
  Start();
  ClickRow(2);
  ExpectName(125, "CLIENTS");
  Choose(200);
  EXPECT_EQ(Asked(), Texts{"Le fichier existe déjà"});
  EXPECT_EQ(script.shown.back().title_id, 79);
  ExpectShown(DefaultPath(), {"ALPHA", "BETA", "BRAVO"});
  EXPECT_EQ(List()->CurrentRow(), 2);
  EXPECT_EQ(files.Contents(home + "CLIENTS.DAN"), before);
}

TEST_F(DirectoryCommands, APrivateDirectoryBelongsToItsSeat) {
  StartWithSeats();
  Expect(125, [this](QDialog& dialog) {
    Type("MIEN");
    PressIn(dialog, 225);
    EXPECT_EQ(Find<QLabel>(dialog, 226)->text(), "  (Poste N° 03)");
    PressIn(dialog, 1);
  });
  Choose(200);
  EXPECT_EQ(HeaderOf(home + "MIEN").owner(), 3);
  // The wish was for that one alone.
  ExpectName(125, "PUBLIC");
  Choose(200);
  EXPECT_EQ(HeaderOf(home + "PUBLIC").owner(), 0);
}

TEST_F(DirectoryCommands, AWishForAPrivateDirectoryGoesWithItsDialog) {
  StartWithSeats();
  Expect(125, [](QDialog& dialog) {
    PressIn(dialog, 225);
    PressIn(dialog, 2);
  });
  Choose(200);
  Expect(132, [](QDialog& dialog) {
    PressIn(dialog, 225);
    PressIn(dialog, 2);
  });
  Choose(204);
  Build(home + "AUTRE", {});
  EXPECT_TRUE(Drop({home + "AUTRE.DAN"}));
  EXPECT_EQ(HeaderOf(home + "AUTRE").owner(), 0);
  EXPECT_EQ(HeaderOf(DefaultPath()).owner(), 0);
}

// ---- Ouvrir ----

TEST_F(DirectoryCommands, ADoubleClickInTheListOpens) {
  BuildCompanies(3);
  Build(home + "AUTRE", {CardWith({{kSte1, "SEULE"}})});
  Start();
  Click(window->findChild<QWidget*>("657"));
  Expect(128, [](QDialog& dialog) {
    EXPECT_EQ(dialog.windowTitle(), "Chargement d'un carnetel");
    ClickText(FilesOf(dialog), "AUTRE.DAN", true);
  });
  Press(1010);
  ExpectShown(home + "AUTRE", {"SEULE"});
  EXPECT_EQ(Text(150), "SEULE");
  EXPECT_EQ(Focus(), 655);
}

TEST_F(DirectoryCommands, ATextUnderTheNameOfADirectoryIsRefused) {
  BuildCompanies(3);
  MakeText(home + "TEXTE.DAN", "Ceci est un texte.");
  Start();
  ClickRow(1);
  Key(Qt::Key_Space);
  Expect(128, [](QDialog& dialog) { ClickText(FilesOf(dialog), "TEXTE.DAN", true); });
  Choose(201);
  EXPECT_EQ(Asked(), Texts{kNotValid});
  EXPECT_EQ(script.shown.back().title_id, 79);
  ExpectShown(DefaultPath(), {"ALPHA", "BETA", "BRAVO"});
  EXPECT_EQ(MarkedRows(), Numbers{1});
  EXPECT_EQ(Text(150), "BRAVO");
  EXPECT_EQ(RecentTexts(), Texts{"&1 " + DefaultPath() + ".DAN"});
}

TEST_F(DirectoryCommands, AMissingFileIsRefused) {
  BuildCompanies(1);
  Start();
  ExpectName(128, "NULLE PART");
  Choose(201);
  EXPECT_EQ(Asked(), Texts{kNotValid});
  ExpectShown(DefaultPath(), {"ALPHA"});
  EXPECT_FALSE(files.Exists(home + "NULLE PART.DAN"));
}

TEST_F(DirectoryCommands, ADirectoryOpensWhereItWasLeft) {
  BuildCompanies(5);
  Build(home + "AUTRE", {CardWith({{kSte1, "SEULE"}})});
  Start();
  ClickRow(3);
  ExpectName(128, "AUTRE");
  Choose(201);
  ExpectName(128, "CARNETEL");
  Choose(201);
  EXPECT_EQ(List()->CurrentRow(), 3);
  EXPECT_EQ(Text(150), "CHARLIE");
}

TEST_F(DirectoryCommands, TheMarkedCardsBesideFollowTheDirectory) {
  BuildCompanies(3);
  Build(home + "AUTRE", {CardWith({{kSte1, "SEULE"}})});
  Start();
  Key(Qt::Key_Space);
  Choose(219);
  const auto shown = [this](int id) {
    return window->findChild<Consultation*>()->panel().FieldText(id).toStdString();
  };
  EXPECT_EQ(shown(150), "ALPHA");
  ExpectName(128, "AUTRE");
  Choose(201);
  EXPECT_EQ(shown(150), "SEULE");
  // Nothing is marked there.
  Click(window->findChild<Consultation*>()->findChild<QPushButton*>("216"));
  EXPECT_EQ(shown(150), "SEULE");
}

// ---- Supprimer ----

TEST_F(DirectoryCommands, AnotherDirectoryIsDestroyed) {
  BuildCompanies(3);
  Build(home + "VIEUX", {CardWith({{kSte1, "X"}})});
  Start();
  ClickRow(1);
  Press(1009);
  Expect(123, [](QDialog& dialog) {
    ClickText(FilesOf(dialog), "VIEUX.DAN");
    PressIn(dialog, 1);
  });
  Answer(MessageButton::kOk);
  Choose(217);
  EXPECT_EQ(Asked(), Texts{"Le fichier  " + home + "VIEUX.DAN va être détruit "});
  EXPECT_EQ(script.shown.back().title_id, 80);
  for (const char* extension : {".DAN", ".I01", ".I02", ".ADR"}) {
    EXPECT_FALSE(files.Exists(home + "VIEUX" + extension)) << extension;
  }
  ExpectShown(DefaultPath(), {"ALPHA", "BETA", "BRAVO"});
  EXPECT_EQ(MarkedRows(), Numbers{1});
  EXPECT_EQ(Focus(), 655);
}

TEST_F(DirectoryCommands, TheOpenDirectoryIsEmptied) {
  BuildCompanies(3);
  Start();
  Expect(123, [](QDialog& dialog) {
    ClickText(FilesOf(dialog), "CARNETEL.DAN");
    PressIn(dialog, 1);
  });
  Answer(MessageButton::kOk);
  Choose(217);
  EXPECT_EQ(Asked(),
            Texts{"Le fichier  carnetel courant: " + DefaultPath() + ".DAN \nva être vidé "});
  ExpectShown(DefaultPath(), {});
  EXPECT_EQ(Text(150), "");
  EXPECT_EQ(SavedCompanies(), Texts{});
}

TEST_F(DirectoryCommands, ARecentDirectoryThatWasDestroyedComesBackEmpty) {
  BuildCompanies(2);
  Build(home + "VIEUX", {CardWith({{kSte1, "X"}})});
  SetProfile("File2", "&2 " + home + "VIEUX.DAN");
  Start();
  ExpectName(123, "VIEUX");
  Answer(MessageButton::kOk);
  Choose(217);
  EXPECT_EQ(RecentTexts(), (Texts{"&1 " + DefaultPath() + ".DAN", "&2 " + home + "VIEUX.DAN"}));
  Choose(226);
  ExpectShown(home + "VIEUX", {});
}

// ---- all of them ----

TEST_F(DirectoryCommands, ACancelledDialogLeavesEverythingAsItIs) {
  BuildCompanies(3);
  Start();
  ClickRow(2);
  for (const auto& [command, number] :
       {std::pair(200, 125), std::pair(201, 128), std::pair(204, 103), std::pair(230, 134)}) {
    Expect(number, [this](QDialog&) { Key(Qt::Key_Escape); });
    Choose(command);
    EXPECT_EQ(Focus(), 195) << command;
    EXPECT_EQ(List()->CurrentRow(), 2) << command;
    EXPECT_EQ(Rows().size(), 3u) << command;
  }
  Expect(123, [this](QDialog&) { Key(Qt::Key_Escape); });
  Choose(217);
  EXPECT_EQ(Focus(), 655);
  EXPECT_EQ(Rows().size(), 3u);
  EXPECT_EQ(Text(150), "BRAVO");
}

TEST_F(DirectoryCommands, ChangedTextIsAskedAboutBeforeAnyOfThem) {
  BuildCompanies(3);
  Build(home + "VIEUX", {});
  SetProfile("File2", "&2 " + home + "VIEUX.DAN");
  Start();
  TypeInto(156, "Lyon");
  for (const int command : {200, 201, 204, 206, 217, 225, 226, 229, 230}) {
    Answer(MessageButton::kNo);
    Choose(command);
    EXPECT_EQ(Asked().size(), 1u) << command;
    EXPECT_EQ(Focus(), 156) << command;
    EXPECT_EQ(Text(156), "Lyon") << command;
  }
  Answer(MessageButton::kNo);
  Press(1010);
  EXPECT_EQ(Asked().size(), 1u);
  EXPECT_EQ(Focus(), 156);
  Answer(MessageButton::kNo);
  EXPECT_TRUE(Drop({home + "VIEUX.DAN"}));
  EXPECT_EQ(Asked().size(), 1u);
  EXPECT_EQ(Focus(), 156);
  // With "Oui" the text goes and the command runs.
  Answer(MessageButton::kYes);
  ExpectName(128, "VIEUX");
  Choose(201);
  ExpectShown(home + "VIEUX", {});
  EXPECT_EQ(ended, 0);
}

TEST_F(DirectoryCommands, DialogsOpenOverTheMiddleOfTheWindow) {
  BuildCompanies(3);
  Start();
  window->move(window->pos() + QPoint(20, 10));
  Settle();
  for (const auto& [command, number] :
       {std::pair(200, 125), std::pair(201, 128), std::pair(217, 123), std::pair(204, 103),
        std::pair(230, 134), std::pair(229, 131)}) {
    Expect(number, [this](QDialog& dialog) {
      const QPoint off = dialog.frameGeometry().center() - window->frameGeometry().center();
      EXPECT_LE(off.manhattanLength(), 4) << dialog.objectName().toStdString();
      EXPECT_EQ(QApplication::overrideCursor(), nullptr);
      Key(Qt::Key_Escape);
    });
    Choose(command);
  }
}

TEST_F(DirectoryCommands, NothingIsDroppedBesideADialog) {
  BuildCompanies(2);
  Build(home + "AUTRE", {CardWith({{kSte1, "SEULE"}})});
  Start();
  Expect(103, [this](QDialog& dialog) {
    EXPECT_FALSE(Drop({home + "AUTRE.DAN"}));
    Type("Pour celui-ci");
    PressIn(dialog, 1);
  });
  Choose(204);
  ExpectShown(DefaultPath(), {"ALPHA", "BETA"});
  EXPECT_EQ(HeaderOf(DefaultPath()).description().bytes(), "Pour celui-ci");
  EXPECT_EQ(HeaderOf(home + "AUTRE").description().bytes(), "");
}

}  // namespace
}  // namespace carnetel::desktop
