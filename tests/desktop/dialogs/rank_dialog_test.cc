// The dialog of the ranks and separators of a delimited file, as its user meets it.
#include "desktop/dialogs/rank_dialog.h"

#include <memory>

#include "desktop/controls/window_messages.h"
#include "platform/memory_file_system.h"
#include "tests/desktop/dialogs/dialog_pictures.h"
#include "tests/desktop/dialogs/named_controls.h"

namespace carnetel::desktop {
namespace {

constexpr char kParameters[] = "/CARNETEL.TRS";

class RankDialogTest : public ::testing::Test {
 protected:
  void Open(TransferDirection direction = TransferDirection::kImport) {
    dialog.reset();
    form = std::make_unique<RankForm>(parameters, messages, direction);
    dialog = std::make_unique<RankDialog>(*form, nullptr);
    finished = std::make_unique<QSignalSpy>(dialog.get(), &QDialog::finished);
    for (auto* edit : dialog->findChildren<FilteredEdit*>()) {
      edit->SetBeeper([this] { ++beeps; });
    }
    Show(*dialog);
  }
  void SetUp() override {
    parameters.StartTransfer(TransferDirection::kImport);
    Open();
  }
  QString Text(const QString& name) { return TextOf(*dialog, name); }
  void Enter(const QString& name, const QString& text) { TypeInto(*dialog, name, text); }
  int End() { return finished->count() == 1 ? finished->at(0).at(0).toInt() : -1; }
  // The last format in the file.
  TransferProfile Saved() {
    ParameterFile file(files, kParameters);
    EXPECT_EQ(file.AccessParameterFile(ParameterFile::Access::kRead, TransferFileType::kDelimited,
                                       TransferDirection::kImport),
              0);
    return file.profile();
  }

  FakeClock clock{1'000'000'000};
  MemoryFileSystem files{clock};
  ParameterFile parameters{files, kParameters};
  MessageScript script;
  WindowMessages messages{&script};
  std::unique_ptr<RankForm> form;
  std::unique_ptr<RankDialog> dialog;
  std::unique_ptr<QSignalSpy> finished;
  int beeps = 0;
};

TEST_F(RankDialogTest, HasItsTitleAndTexts) {
  EXPECT_EQ(dialog->objectName(), "113");
  EXPECT_EQ(dialog->windowTitle(), "Structure du fichier source");
  EXPECT_EQ(Find<QPushButton>(*dialog, 1)->text(), "Valider");
  EXPECT_EQ(Find<QPushButton>(*dialog, 2)->text(), "Abandonner");
  EXPECT_EQ(Find<QPushButton>(*dialog, 500)->text(), "?");
  ExpectNames(*dialog);
  Open(TransferDirection::kExport);
  EXPECT_EQ(dialog->windowTitle(), "Structure du fichier de destination");
}

TEST_F(RankDialogTest, ShowsARankForEachField) {
  QStringList shown;
  for (const QLabel* label : dialog->findChildren<QLabel*>()) {
    const auto* edit = qobject_cast<FilteredEdit*>(label->buddy());
    if (edit != nullptr) shown += label->text() + " " + edit->text();
  }
  EXPECT_EQ(shown,
            (QStringList{"Société1 4", "Société2 5", "Adresse1 6", "Adresse2 7", "Cde postal 8",
                         "Ville 9", "Pays 10", "Tél1 11", "Tél2 12", "N° Fax 13", "N° Modem 15",
                         "Minitel 14", "Qualité 1", "Prénom 2", "Nom 3"}));
  EXPECT_EQ(Rows(*dialog, "reference"),
            (QStringList{"Réf. 1", "Réf. 2", "Réf. 3", "Réf. 4", "Réf. 5", "Réf. 6"}));
  EXPECT_EQ(Text("rank_12"), "16");
}

TEST_F(RankDialogTest, ARankTakesTwoDigits) {
  Enter("rank_10", "1a234");
  EXPECT_EQ(Text("rank_10"), "12");
  EXPECT_GT(beeps, 0);
  EXPECT_EQ(form->rank_text(kNom), "12");
}

TEST_F(RankDialogTest, ARankLeftEmptyBecomesZeroAndThatOfTheCompanyOne) {
  Enter("rank_10", "");
  PressKey(Qt::Key_Tab);
  EXPECT_EQ(Text("rank_10"), "0");
  for (const char* text : {"", "0"}) {
    Enter("rank_0", text);
    EXPECT_EQ(Text("rank_0"), text);
    PressKey(Qt::Key_Tab);
    EXPECT_EQ(Text("rank_0"), "1");
  }
}

TEST_F(RankDialogTest, TheReferencesShareOneInput) {
  Enter("rank_12", "31");
  Pick(*dialog, "reference", 5);
  EXPECT_EQ(Text("rank_12"), "21");
  Enter("rank_12", "");
  Pick(*dialog, "reference", 0);
  EXPECT_EQ(Text("rank_12"), "31");
  Pick(*dialog, "reference", 5);
  EXPECT_EQ(Text("rank_12"), "0");
  Press(*dialog, 1);
  EXPECT_EQ(Saved().rank(kRef1), 31);
  EXPECT_EQ(Saved().rank(kRef6), 0);
}

TEST_F(RankDialogTest, SeparatorsAreChosenOrTyped) {
  EXPECT_EQ(Rows(*dialog, "field_separator"),
            (QStringList{"\" ,", "\" ;", ";", "NUL", "BEL", "TAB", "LF", "FF", "CR", "SUB", "ESC",
                         "CRLF", "LFCR", "CRFF", "FFCR"}));
  EXPECT_EQ(Rows(*dialog, "card_separator").size(), 12);
  EXPECT_EQ(FocusName(), "field_separator");
  Pick(*dialog, "field_separator", 5);
  EXPECT_EQ(Text("field_separator"), "TAB");
  EXPECT_EQ(form->separator_text(SeparatorKind::kField), "TAB");
  Enter("field_separator", "22h 2Ch");
  EXPECT_EQ(Text("field_separator"), "22h 2Ch");
  PressKey(Qt::Key_Tab);
  EXPECT_EQ(Text("field_separator"), "\" ,");
  Enter("card_separator", "123456789");
  EXPECT_EQ(Text("card_separator"), "12345678");
  ExpectWheelChangesNothing(*dialog);
}

// "cr" is no name, and does not become one because the list has it in capitals.
TEST_F(RankDialogTest, ATypedSeparatorIsNotCompleted) {
  Enter("card_separator", "c");
  EXPECT_EQ(Text("card_separator"), "c");
  Enter("card_separator", "cr");
  PressKey(Qt::Key_Return);
  EXPECT_EQ(End(), QDialog::Accepted);
  EXPECT_EQ(Saved().card_separator(), "cr");
}

TEST_F(RankDialogTest, ConfirmStoresAndCloses) {
  Enter("rank_0", "7");
  Enter("rank_10", "9");
  Pick(*dialog, "card_separator", 2);
  Press(*dialog, 1);
  EXPECT_EQ(End(), QDialog::Accepted);
  EXPECT_EQ(Saved().rank(kSte1), 7);
  EXPECT_EQ(Saved().rank(kNom), 9);
  EXPECT_EQ(Saved().rank(kNotes), 23);
  EXPECT_EQ(Saved().card_separator(), "TAB");
}

TEST_F(RankDialogTest, ConfirmWithoutACompanyIsRefused) {
  const TransferProfile former = Saved();
  for (const char* text : {"", "0"}) {
    script.shown.clear();
    Enter("rank_0", text);
    PressKey(Qt::Key_Return);
    ASSERT_EQ(script.shown.size(), 1u);
    EXPECT_EQ(script.shown[0].text, "Fiche incomplète : le champ d'index est obligatoire ");
    EXPECT_EQ(MessageTitle(script.shown[0].title_id), "Erreur");
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_EQ(FocusName(), "rank_0");
  }
  EXPECT_EQ(Saved(), former);
}

TEST_F(RankDialogTest, AbandonAndEscapeStoreNothing) {
  const TransferProfile former = Saved();
  Enter("rank_0", "7");
  Press(*dialog, 2);
  EXPECT_EQ(End(), QDialog::Rejected);
  for (const char* name : {"rank_0", "field_separator", "reference"}) {
    Open();
    Enter("rank_0", "7");
    Named(*dialog, name)->setFocus(Qt::TabFocusReason);
    PressKey(Qt::Key_Escape);
    EXPECT_EQ(End(), QDialog::Rejected) << name;
  }
  EXPECT_EQ(Saved(), former);
}

TEST_F(RankDialogTest, EnterConfirmsFromEverywhere) {
  for (const char* name : {"rank_0", "rank_12", "field_separator", "card_separator", "reference"}) {
    Open();
    Named(*dialog, name)->setFocus(Qt::TabFocusReason);
    PressKey(Qt::Key_Return);
    EXPECT_EQ(End(), QDialog::Accepted) << name;
  }
}

TEST_F(RankDialogTest, TheKeyboardReachesEverything) {
  QStringList stops = {"field_separator", "card_separator"};
  for (const int line : kStructureLines) {
    if (line == kReferenceLine) stops += "reference";
    stops += QStringLiteral("rank_%1").arg(line);
  }
  EXPECT_EQ(TabNames(), stops + (QStringList{"1", "2", "500"}));
  PressKey(Qt::Key_F, Qt::AltModifier);
  EXPECT_EQ(FocusName(), "card_separator");
  PressKey(Qt::Key_C, Qt::AltModifier);
  EXPECT_EQ(FocusName(), "field_separator");
}

TEST_F(RankDialogTest, ButtonAndF1AskForTheHelpOfTheDirection) {
  for (const auto direction : {TransferDirection::kImport, TransferDirection::kExport}) {
    Open(direction);
    QSignalSpy help(dialog.get(), &FixedDialog::helpWanted);
    Press(*dialog, 500);
    Named(*dialog, "rank_0")->setFocus(Qt::TabFocusReason);
    PressKey(Qt::Key_F1);
    ASSERT_EQ(help.count(), 2);
    for (const auto& asked : help) {
      EXPECT_EQ(asked.at(0).toInt(), direction == TransferDirection::kImport ? 58 : 59);
    }
  }
}

TEST_F(RankDialogTest, Pictures) {
  for (const int percent : {100, 200}) {
    const LettersAt letters(percent);
    Open();
    EXPECT_LT(dialog->width(), 1000);
    EXPECT_LT(dialog->height(), 700);
    SavePicture(*dialog, QStringLiteral("ranks"), percent);
  }
}

}  // namespace
}  // namespace carnetel::desktop
