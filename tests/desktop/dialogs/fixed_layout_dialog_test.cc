// The dialog of positions and sizes of a file of fixed records, as its user meets it.
#include "desktop/dialogs/fixed_layout_dialog.h"

#include <memory>

#include "desktop/controls/window_messages.h"
#include "platform/memory_file_system.h"
#include "tests/desktop/dialogs/dialog_pictures.h"
#include "tests/desktop/dialogs/named_controls.h"

namespace carnetel::desktop {
namespace {

constexpr char kParameters[] = "/CARNETEL.TRS";

class FixedLayoutDialogTest : public ::testing::Test {
 protected:
  void Open(TransferDirection direction = TransferDirection::kImport) {
    dialog.reset();
    form = std::make_unique<FixedLayoutForm>(parameters, messages, direction);
    dialog = std::make_unique<FixedLayoutDialog>(*form, nullptr);
    finished = std::make_unique<QSignalSpy>(dialog.get(), &QDialog::finished);
    for (auto* edit : dialog->findChildren<FilteredEdit*>()) edit->SetBeeper([] {});
    Show(*dialog);
  }
  void SetUp() override {
    parameters.StartTransfer(TransferDirection::kImport);
    Open();
  }
  QString Text(const QString& name) { return TextOf(*dialog, name); }
  void Enter(const QString& name, const QString& text) { TypeInto(*dialog, name, text); }
  bool CanConfirm() { return Find<QPushButton>(*dialog, 1)->isEnabled(); }
  int End() { return finished->count() == 1 ? finished->at(0).at(0).toInt() : -1; }
  TransferProfile Saved() {
    ParameterFile file(files, kParameters);
    EXPECT_EQ(file.AccessParameterFile(ParameterFile::Access::kRead, TransferFileType::kFixed,
                                       TransferDirection::kImport),
              0);
    return file.profile();
  }
  // Confirming fails with these words, goes to that input and stores nothing.
  void ExpectRefused(const std::vector<std::string>& texts, const QString& focus) {
    const TransferProfile former = Saved();
    PressKey(Qt::Key_Return);
    std::vector<std::string> told;
    for (const SilentMessages::Entry& entry : script.shown) {
      EXPECT_EQ(MessageTitle(entry.title_id), "Erreur");
      told.push_back(entry.text);
    }
    script.shown.clear();
    EXPECT_EQ(told, texts);
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_EQ(FocusName(), focus);
    EXPECT_EQ(Saved(), former);
  }

  FakeClock clock{1'000'000'000};
  MemoryFileSystem files{clock};
  ParameterFile parameters{files, kParameters};
  MessageScript script;
  WindowMessages messages{&script};
  std::unique_ptr<FixedLayoutForm> form;
  std::unique_ptr<FixedLayoutDialog> dialog;
  std::unique_ptr<QSignalSpy> finished;
};

TEST_F(FixedLayoutDialogTest, HasItsTitleAndTexts) {
  EXPECT_EQ(dialog->objectName(), "111");
  EXPECT_EQ(dialog->windowTitle(), "Structure du fichier source");
  EXPECT_EQ(Find<QPushButton>(*dialog, 1)->text(), "Valider");
  EXPECT_EQ(Find<QPushButton>(*dialog, 2)->text(), "Abandonner");
  EXPECT_EQ(Find<QPushButton>(*dialog, 500)->text(), "?");
  ExpectNames(*dialog);
  Open(TransferDirection::kExport);
  EXPECT_EQ(dialog->windowTitle(), "Structure du fichier de destination");
}

TEST_F(FixedLayoutDialogTest, ShowsThePlaceOfEachField) {
  EXPECT_EQ(Text("first_card"), "768");
  EXPECT_EQ(Text("record_size"), "768");
  const TransferProfile stored = Saved();
  for (const int line : kFixedLayoutLines) {
    const FixedPlace place = stored.place(line);
    EXPECT_EQ(Text(QStringLiteral("position_%1").arg(line)), QString::number(place.position));
    EXPECT_EQ(Text(QStringLiteral("size_%1").arg(line)), QString::number(place.size));
  }
  EXPECT_EQ(Text("size_26"), "128");
  EXPECT_EQ(Rows(*dialog, "reference"),
            (QStringList{"Réf. 1", "Réf. 2", "Réf. 3", "Réf. 4", "Réf. 5", "Réf. 6"}));
}

TEST_F(FixedLayoutDialogTest, PlacesTakeThreeDigitsAndSizesTwo) {
  Enter("first_card", "1234");
  EXPECT_EQ(Text("first_card"), "123");
  Enter("position_10", "9x876");
  EXPECT_EQ(Text("position_10"), "987");
  Enter("size_10", "123");
  EXPECT_EQ(Text("size_10"), "12");
}

TEST_F(FixedLayoutDialogTest, AnInputLeftEmptyBecomesZero) {
  for (const char* name : {"first_card", "position_10", "size_10"}) {
    Enter(name, "");
    EXPECT_EQ(Text(name), "");
    PressKey(Qt::Key_Tab);
    EXPECT_EQ(Text(name), "0");
  }
}

TEST_F(FixedLayoutDialogTest, ASizeAboveTheStoredCardIsPutBack) {
  parameters.profile().set_card_size(50);
  Open();
  const QString former = Text("size_10");
  Enter("size_10", "5");
  EXPECT_EQ(Text("size_10"), "5");
  Type("1");
  EXPECT_EQ(Text("size_10"), former);
}

TEST_F(FixedLayoutDialogTest, ConfirmFollowsTheCardSizeAndThatOfTheCompany) {
  EXPECT_TRUE(CanConfirm());
  for (const char* name : {"record_size", "size_0"}) {
    for (const char* text : {"", "0"}) {
      Enter(name, text);
      EXPECT_FALSE(CanConfirm()) << name;
      Enter(name, "9");
      EXPECT_TRUE(CanConfirm()) << name;
    }
  }
  Enter("size_10", "0");
  EXPECT_TRUE(CanConfirm());
  Enter("size_0", "0");
  PressKey(Qt::Key_Return);
  EXPECT_TRUE(dialog->isVisible());
}

TEST_F(FixedLayoutDialogTest, TheReferencesShareTwoInputs) {
  Enter("position_12", "1");
  Enter("size_12", "2");
  Pick(*dialog, "reference", 5);
  const FixedPlace sixth = Saved().place(kRef6);
  EXPECT_EQ(Text("position_12"), QString::number(sixth.position));
  EXPECT_EQ(Text("size_12"), QString::number(sixth.size));
  Pick(*dialog, "reference", 0);
  EXPECT_EQ(Text("position_12"), "1");
  EXPECT_EQ(Text("size_12"), "2");
  ExpectWheelChangesNothing(*dialog);
}

TEST_F(FixedLayoutDialogTest, ConfirmStoresAndCloses) {
  Enter("first_card", "0");
  Enter("size_10", "12");
  Press(*dialog, 1);
  EXPECT_EQ(End(), QDialog::Accepted);
  EXPECT_EQ(script.shown.size(), 0u);
  EXPECT_EQ(Saved().first_card_offset(), 0);
  EXPECT_EQ(Saved().place(kNom).size, 12);
  EXPECT_EQ(Saved().place(kNotes).size, 128);
}

TEST_F(FixedLayoutDialogTest, AFieldOutsideTheRecordIsRefused) {
  Enter("position_10", "750");
  Enter("size_10", "20");
  ExpectRefused({"La rubrique \" Nom\"\ndépasse les limites de l'enregistrement !"}, "position_10");
}

TEST_F(FixedLayoutDialogTest, AReferenceOutsideTheRecordIsShown) {
  Pick(*dialog, "reference", 3);
  Enter("position_12", "760");
  Pick(*dialog, "reference", 0);
  ExpectRefused({"La rubrique \" Réf. 4\"\ndépasse les limites de l'enregistrement !"},
                "position_12");
  EXPECT_EQ(TextOf(*dialog, "reference"), "Réf. 4");
  EXPECT_EQ(Text("position_12"), "760");
}

TEST_F(FixedLayoutDialogTest, SizesThatExceedTheRecordAreRefused) {
  for (const int line : kFixedLayoutLines) {
    Enter(QStringLiteral("position_%1").arg(line), "0");
    Enter(QStringLiteral("size_%1").arg(line), "50");
  }
  // 16 fields of 50 and five references of 24 beside the one that is shown.
  Named(*dialog, "size_0")->setFocus(Qt::TabFocusReason);
  for (int i = 1; i < 6; ++i) EXPECT_EQ(Saved().place(kRef1 + i).size, 24);
  ExpectRefused({"Le total des tailles de rubriques (970)\nexcède la taille de la fiche !"},
                "size_0");
}

TEST_F(FixedLayoutDialogTest, FieldsThatOverlapAreRefused) {
  Enter("position_1", "31");
  Enter("size_1", "20");
  ExpectRefused({"Le champ \" Société2\"\nrecouvre le champ \" Société1\" !"}, "position_0");
}

TEST_F(FixedLayoutDialogTest, AbandonAndEscapeStoreNothing) {
  const TransferProfile former = Saved();
  Enter("first_card", "1");
  Press(*dialog, 2);
  EXPECT_EQ(End(), QDialog::Rejected);
  Open();
  Enter("first_card", "1");
  PressKey(Qt::Key_Escape);
  EXPECT_EQ(End(), QDialog::Rejected);
  EXPECT_EQ(Saved(), former);
}

TEST_F(FixedLayoutDialogTest, TheKeyboardReachesEverything) {
  EXPECT_EQ(FocusName(), "first_card");
  QStringList stops = {"first_card", "record_size"};
  for (const int line : kFixedLayoutLines) {
    if (line == kReferenceLine) stops += "reference";
    stops += QStringLiteral("position_%1").arg(line);
    stops += QStringLiteral("size_%1").arg(line);
  }
  EXPECT_EQ(TabNames(), stops + (QStringList{"1", "2", "500"}));
  PressKey(Qt::Key_F, Qt::AltModifier);
  EXPECT_EQ(FocusName(), "record_size");
  PressKey(Qt::Key_D, Qt::AltModifier);
  EXPECT_EQ(FocusName(), "first_card");
}

TEST_F(FixedLayoutDialogTest, ButtonAndF1AskForTheHelpOfTheDirection) {
  for (const auto direction : {TransferDirection::kImport, TransferDirection::kExport}) {
    Open(direction);
    QSignalSpy help(dialog.get(), &FixedDialog::helpWanted);
    Press(*dialog, 500);
    PressKey(Qt::Key_F1);
    ASSERT_EQ(help.count(), 2);
    for (const auto& asked : help) {
      EXPECT_EQ(asked.at(0).toInt(), direction == TransferDirection::kImport ? 58 : 59);
    }
  }
}

TEST_F(FixedLayoutDialogTest, Pictures) {
  for (const int percent : {100, 200}) {
    const LettersAt letters(percent);
    Open();
    EXPECT_LT(dialog->width(), 1000);
    EXPECT_LT(dialog->height(), 700);
    SavePicture(*dialog, QStringLiteral("fixed_layout"), percent);
  }
}

}  // namespace
}  // namespace carnetel::desktop
