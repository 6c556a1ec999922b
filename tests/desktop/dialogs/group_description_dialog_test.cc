// "Descriptif du Groupe" as its user meets it, alone and as the program asks it.
#include "desktop/dialogs/group_description_dialog.h"

#include <QTimer>

#include "desktop/dialogs/window_dialogs.h"
#include "tests/desktop/dialogs/dialog_pictures.h"

namespace carnetel::desktop {
namespace {

class GroupDescriptionDialogTest : public ::testing::Test {
 protected:
  void Open(const GroupDescription& offered = {}) {
    dialog = std::make_unique<GroupDescriptionDialog>(offered, nullptr);
    help = std::make_unique<QSignalSpy>(dialog.get(), &FixedDialog::helpWanted);
    Name()->SetBeeper([this] { ++beeps; });
    Show(*dialog);
  }
  FilteredEdit* Name() { return Find<FilteredEdit>(*dialog, 196); }
  bool IsChosen(int id) { return Find<QRadioButton>(*dialog, id)->isChecked(); }
  void ExpectEnd(QDialog::DialogCode code) {
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(dialog->result(), code);
  }

  std::unique_ptr<GroupDescriptionDialog> dialog;
  std::unique_ptr<QSignalSpy> help;
  int beeps = 0;
};

TEST_F(GroupDescriptionDialogTest, HasItsTitleAndTexts) {
  Open();
  EXPECT_EQ(dialog->objectName(), "124");
  EXPECT_EQ(dialog->windowTitle(), "Descriptif du Groupe");
  EXPECT_EQ(Find<QRadioButton>(*dialog, 229)->text(), "Fiches du &groupe uniquement ");
  EXPECT_EQ(Find<QRadioButton>(*dialog, 230)->text(), "Fichier &entier plus groupe sélectionné ");
  EXPECT_EQ(Find<QPushButton>(*dialog, 1)->text(), "Valider");
  EXPECT_EQ(Find<QPushButton>(*dialog, 2)->text(), "Abandonner");
  ExpectNames(*dialog);
}

TEST_F(GroupDescriptionDialogTest, ANewGroupIsEmptyAndShowsItsCardsAlone) {
  Open();
  EXPECT_EQ(Name()->text(), "");
  EXPECT_TRUE(IsChosen(229));
  EXPECT_FALSE(IsChosen(230));
  EXPECT_EQ(dialog->description(), (GroupDescription{"", kMembersOnly}));
  EXPECT_EQ(FocusId(), 196);
}

TEST_F(GroupDescriptionDialogTest, ShowsWhatIsOffered) {
  Open({"Été", kWholeFileFlagged});
  EXPECT_EQ(Name()->text(), "Été");
  EXPECT_FALSE(IsChosen(229));
  EXPECT_TRUE(IsChosen(230));
  EXPECT_EQ(dialog->description(), (GroupDescription{"Été", kWholeFileFlagged}));
  // Typing takes the place of the name.
  Type("Hiver");
  EXPECT_EQ(dialog->description(), (GroupDescription{"Hiver", kWholeFileFlagged}));
}

TEST_F(GroupDescriptionDialogTest, TabComesByTheChosenModeAndTheButtons) {
  Open();
  EXPECT_EQ(TabWalk(), (QList<int>{196, 229, 1, 2}));
  Open({"Lyon", kWholeFileFlagged});
  EXPECT_EQ(TabWalk(), (QList<int>{196, 230, 1, 2}));
}

TEST_F(GroupDescriptionDialogTest, ModesAreChosenByMouseArrowsAndLetters) {
  Open({"Lyon"});
  Press(*dialog, 230);
  EXPECT_EQ(dialog->description().mode, kWholeFileFlagged);
  PressKey(Qt::Key_Up);
  EXPECT_EQ(dialog->description().mode, kMembersOnly);
  PressMnemonic(*dialog, Qt::Key_E, 230);
  EXPECT_EQ(dialog->description().mode, kWholeFileFlagged);
  PressMnemonic(*dialog, Qt::Key_G, 229);
  EXPECT_EQ(dialog->description().mode, kMembersOnly);
  PressKey(Qt::Key_N, Qt::AltModifier);
  EXPECT_EQ(FocusId(), 196);
}

TEST_F(GroupDescriptionDialogTest, TheNameHas23CharactersOfTheFilesCodePage) {
  Open();
  Type(QString(23, QChar(u'é')));
  EXPECT_EQ(beeps, 0);
  Type("x");
  EXPECT_EQ(beeps, 1);
  EXPECT_EQ(Name()->text(), QString(23, QChar(u'é')));
  PressKey(Qt::Key_Backspace);
  Type("€");
  EXPECT_EQ(beeps, 2);
  EXPECT_EQ(Name()->text(), QString(22, QChar(u'é')));
}

TEST_F(GroupDescriptionDialogTest, ALongerNameOfTheFileIsKeptUntilItIsTypedOver) {
  const std::string name(32, 'x');
  Open({name});
  EXPECT_EQ(dialog->description().name, name);
  PressKey(Qt::Key_End);
  Type("y");
  EXPECT_EQ(beeps, 1);
  EXPECT_EQ(dialog->description().name, name);
}

TEST_F(GroupDescriptionDialogTest, ValiderAndEnterConfirm) {
  Open();
  Type("Lyon");
  Press(*dialog, 1);
  ExpectEnd(QDialog::Accepted);
  Open();
  Type("Lyon");
  PressKey(Qt::Key_Return);
  ExpectEnd(QDialog::Accepted);
  EXPECT_EQ(dialog->description(), (GroupDescription{"Lyon", kMembersOnly}));
  Open({"Lyon"});
  Find(*dialog, 229)->setFocus();
  PressKey(Qt::Key_Return);
  ExpectEnd(QDialog::Accepted);
}

TEST_F(GroupDescriptionDialogTest, AbandonnerEscapeAndTheCrossDoNot) {
  Open({"Lyon"});
  Press(*dialog, 2);
  ExpectEnd(QDialog::Rejected);
  Open({"Lyon"});
  PressKey(Qt::Key_Escape);
  ExpectEnd(QDialog::Rejected);
  Open({"Lyon"});
  dialog->close();
  ExpectEnd(QDialog::Rejected);
  Open({"Lyon"});
  Find(*dialog, 2)->setFocus();
  PressKey(Qt::Key_Return);
  ExpectEnd(QDialog::Rejected);
}

TEST_F(GroupDescriptionDialogTest, HelpByKey) {
  Open();
  for (const int id : {196, 229, 1, 2}) {
    Find(*dialog, id)->setFocus();
    PressKey(Qt::Key_F1);
  }
  ASSERT_EQ(help->count(), 4);
  for (const QList<QVariant>& wanted : *help) EXPECT_EQ(wanted.value(0).toInt(), 63);
  EXPECT_TRUE(dialog->isVisible());
}

TEST_F(GroupDescriptionDialogTest, Pictures) {
  for (const int percent : {100, 200}) {
    const LettersAt letters(percent);
    GroupDescriptionDialog pictured({"Les fournisseurs de Lyo", kWholeFileFlagged}, nullptr);
    SavePicture(pictured, QStringLiteral("group_description"), percent);
  }
}

// ---- as the program asks it ----

class AskedGroup : public ::testing::Test {
 protected:
  // What the program gets when the user does this once the dialog is open.
  std::optional<GroupDescription> Ask(const GroupDescription& offered,
                                      const std::function<void(QDialog&)>& user) {
    WindowDialogs dialogs(nullptr, busy);
    QTimer::singleShot(0, qApp, [&] {
      auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
      ASSERT_NE(dialog, nullptr);
      user(*dialog);
      dialog->close();
    });
    return dialogs.AskGroup(offered);
  }

  BusyState busy;
};

TEST_F(AskedGroup, ValiderGivesNameAndMode) {
  const auto group = Ask({}, [](QDialog& dialog) {
    Find<QLineEdit>(dialog, 196)->setText("Lyon");
    Press(dialog, 230);
    Press(dialog, 1);
  });
  EXPECT_EQ(group, (GroupDescription{"Lyon", kWholeFileFlagged}));
}

TEST_F(AskedGroup, AnEmptyNameCountsAsAbandoned) {
  const auto group = Ask({"Lyon"}, [](QDialog& dialog) {
    Find<QLineEdit>(dialog, 196)->clear();
    Press(dialog, 1);
  });
  EXPECT_EQ(group, std::nullopt);
}

TEST_F(AskedGroup, AbandonnerGivesNothing) {
  EXPECT_EQ(Ask({"Lyon"}, [](QDialog& dialog) { Press(dialog, 2); }), std::nullopt);
}

}  // namespace
}  // namespace carnetel::desktop
