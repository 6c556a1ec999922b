// The start on a file that is no directory, and a window without any directory.
#include <QRadioButton>
#include <filesystem>

#include "base/format_text.h"
#include "tests/desktop/window/dialog_user.h"

namespace carnetel::desktop {
namespace {

class UnrecognisedStart : public DialogWindowTest {
 protected:
  // Three cards behind a block that is no header.
  void SetUp() override {
    std::string file(768, 'x');
    for (const char* company : {"UN", "DEUX", "TROIS"}) {
      std::string card(768, '\0');
      card.replace(0, std::string_view(company).size(), company);
      file += card;
    }
    MakeText(DefaultPath() + ".DAN", file);
  }
  // Starts and makes this choice in the dialog that comes by itself; `then` says what follows it.
  void StartAndChoose(int choice, const std::function<void()>& then) {
    Expect(136, [choice](QDialog& dialog) {
      PressIn(dialog, choice);
      PressIn(dialog, 1);
    });
    then();
    Start();
    EXPECT_TRUE(QTest::qWaitFor([this] { return user.IsDone(); }));
    Settle();
  }
  void ExpectOpen(const std::string& stem) {
    EXPECT_EQ(session->current_path(), stem);
    EXPECT_EQ(window->windowTitle().toStdString(), "Carnetel -  " + stem + ".DAN");
  }
};

TEST_F(UnrecognisedStart, TellsTheFileAndRecoversIt) {
  const auto before = files.Contents(DefaultPath() + ".DAN");
  Expect(136, [this](QDialog& dialog) {
    EXPECT_EQ(dialog.windowTitle(), "Erreur !   Carnetel invalide");
    bool tells_path = false;
    for (const QLabel* label : dialog.findChildren<QLabel*>()) {
      tells_path = tells_path || label->text().toStdString() == DefaultPath() + ".DAN";
    }
    EXPECT_TRUE(tells_path);
    EXPECT_TRUE(Find<QRadioButton>(dialog, 690)->isChecked());
    EXPECT_TRUE(window->isVisible());
    Key(Qt::Key_Return);
  });
  Start();
  ExpectOpen(home + "CARN001");
  EXPECT_EQ(Rows(), (Texts{"DEUX", "TROIS", "UN"}));
  EXPECT_EQ(MarkedRows(), (Numbers{0, 1, 2}));
  EXPECT_EQ(Text(183), "3");
  EXPECT_EQ(Text(150), "DEUX");
  EXPECT_EQ(window->findChild<LetterTabs*>()->SelectedId(), 655);
  EXPECT_EQ(files.Contents(DefaultPath() + ".DAN"), before);
  EXPECT_EQ(Asked(), Texts{});
}

TEST_F(UnrecognisedStart, ARecoveryCanBeStopped) {
  progress.stop_at = 2;
  StartAndChoose(690, [] {});
  EXPECT_EQ(Rows().size(), 2u);
}

TEST_F(UnrecognisedStart, LeadsToANewDirectory) {
  StartAndChoose(687, [this] { ExpectName(125, "NEUF"); });
  ExpectOpen(home + "NEUF");
  EXPECT_EQ(Rows(), Texts{});
}

TEST_F(UnrecognisedStart, LeadsToAnExistingDirectory) {
  Build(home + "AUTRE", {CardWith({{kSte1, "SEULE"}})});
  StartAndChoose(688, [this] { ExpectName(128, "AUTRE"); });
  ExpectOpen(home + "AUTRE");
  EXPECT_EQ(Rows(), Texts{"SEULE"});
}

TEST_F(UnrecognisedStart, IsDestroyedFromItsDialog) {
  Expect(136, [this](QDialog& dialog) {
    PressIn(dialog, 689);
    Expect(123, [](QDialog& chooser) {
      ClickText(FilesOf(chooser), "CARNETEL.DAN");
      PressIn(chooser, 1);
    });
    Answer(MessageButton::kOk);
    PressIn(dialog, 1);
    EXPECT_EQ(Asked(), Texts{"Le fichier  " + DefaultPath() + ".DAN va être détruit "});
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_FALSE(Find<QRadioButton>(dialog, 690)->isEnabled());
    Settle();
    Key(Qt::Key_Escape);
  });
  Start();
  EXPECT_FALSE(files.Exists(DefaultPath() + ".DAN"));
  ExpectOpen(home + "CARN001");
  EXPECT_EQ(Rows(), Texts{});
}

TEST_F(UnrecognisedStart, TheDirectoryOpenedInItsPlaceCanBeDestroyedThere) {
  Expect(136, [this](QDialog& dialog) {
    PressIn(dialog, 689);
    Expect(123, [](QDialog& chooser) {
      ClickText(FilesOf(chooser), "CARN001.DAN");
      PressIn(chooser, 1);
    });
    Answer(MessageButton::kOk);
    PressIn(dialog, 1);
    PressIn(dialog, 690);
    PressIn(dialog, 1);
  });
  Start();
  ExpectOpen(home + "CARN001");
  EXPECT_EQ(Rows(), (Texts{"DEUX", "TROIS", "UN"}));
}

TEST_F(UnrecognisedStart, ClosedLeavesTheEmptyDirectoryInItsPlace) {
  Expect(136, [](QDialog& dialog) { PressIn(dialog, 2); });
  Start();
  ExpectOpen(home + "CARN001");
  EXPECT_EQ(Text(181), "1 / 0");
  Press(1008);
  Type("NEUF");
  Key(Qt::Key_Return);
  EXPECT_EQ(Rows(), Texts{"NEUF"});
}

// ---- no directory ----

// A disk that takes nothing: neither the directory nor any that comes in its place can be made.
class WithoutDirectory : public DialogWindowTest {
 protected:
  void SetUp() override {
    disk.StopAfter(0);
    opens = false;
    Start();
    ASSERT_EQ(session->directory(), nullptr);
  }
  void TearDown() override {
    for (int number = 1; number <= 1000; ++number) {
      const std::string stem = home + FormatPrintf("CARN%03d", {number});
      std::filesystem::remove(DirectoryGuard::LockFilePath(stem + ".ADR"));
    }
    std::filesystem::remove(DirectoryGuard::LockFilePath(DefaultPath() + ".ADR"));
  }
};

TEST_F(WithoutDirectory, TheWindowIsEmptyAndSaysNothing) {
  EXPECT_EQ(Asked(), Texts{});
  EXPECT_EQ(Text(181), "1 / 0");
  EXPECT_EQ(RecentTexts(), Texts{});
  EXPECT_FALSE(Button(1008)->IsActive());
}

TEST_F(WithoutDirectory, EveryCommandIsHarmless) {
  const std::map<int, int> dialog_of = {{200, 125}, {201, 128},  {217, 123}, {229, 131},
                                        {230, 134}, {1010, 128}, {204, 0}};
  const auto run = [&](int command) {
    const auto dialog = dialog_of.find(command);
    if (dialog != dialog_of.end() && dialog->second != 0) {
      Expect(dialog->second, [this](QDialog&) { Key(Qt::Key_Escape); });
    }
    window->logic().Dispatch(command);
    Settle();
    EXPECT_EQ(session->directory(), nullptr) << command;
    EXPECT_TRUE(user.IsDone()) << command;
  };
  for (int command = 1; command < 1100; ++command) {
    if (command != kCommandQuit && command != kButtonQuit) run(command);
  }
  EXPECT_EQ(Asked(), Texts{});
  EXPECT_EQ(ended, 0);
  Choose(206);
  EXPECT_EQ(ended, 1);
}

TEST_F(WithoutDirectory, KeysAndClicksAreHarmless) {
  for (const Qt::Key key : {Qt::Key_Space, Qt::Key_Down, Qt::Key_Insert, Qt::Key_Delete,
                            Qt::Key_Return, Qt::Key_Escape, Qt::Key_A}) {
    Key(key);
  }
  TypeInto(150, "PERDU");
  Key(Qt::Key_Return);
  Answer(MessageButton::kYes);
  Key(Qt::Key_Escape);
  EXPECT_EQ(Text(150), "");
  Click(Control(660));
  EXPECT_EQ(Text(181), "1 / 0");
}

TEST_F(WithoutDirectory, TheIndexCanBeChosenAndADirectoryMade) {
  Expect(134, [](QDialog& dialog) {
    PressIn(dialog, 172);
    PressIn(dialog, 1);
  });
  Choose(230);
  EXPECT_EQ(Profile("Idindex"), "10");
  disk.Heal();
  ExpectName(125, "NEUF");
  Choose(200);
  EXPECT_EQ(window->windowTitle().toStdString(), "Carnetel -  " + home + "NEUF.DAN");
  Press(1008);
  EXPECT_EQ(Focus(), 172);
  Type("Durand");
  Key(Qt::Key_Return);
  EXPECT_EQ(Rows(), Texts{"Durand"});
}

TEST_F(WithoutDirectory, AFailedOpeningIsToldOnce) {
  MakeText(home + "TEXTE.DAN", "text");
  ExpectName(128, "TEXTE");
  Choose(201);
  EXPECT_EQ(Asked(), Texts{"Carnetel non valide - Choisissez un autre..."});
  EXPECT_TRUE(Drop({home + "TEXTE.DAN"}));
  EXPECT_EQ(Asked(), Texts{"Carnetel non valide - Choisissez un autre..."});
}

}  // namespace
}  // namespace carnetel::desktop
