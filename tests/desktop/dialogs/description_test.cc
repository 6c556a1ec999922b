#include <QToolTip>

#include "desktop/dialogs/description_dialog.h"
#include "desktop/dialogs/path_label.h"
#include "tests/desktop/dialogs/dialog_testing.h"
#include "tests/shell/window_fixture.h"

namespace carnetel::desktop {
namespace {

using namespace std::string_literals;

class DescriptionDialogTest : public WindowFixture {
 protected:
  void OpenAlone() { Open({}, DefaultPath()); }
  void OpenAtSeat() {
    memory.MakeFolder(home + "seat/");
    StartupRequest request;
    request.workstation_number = 3;
    request.exchange_file_path = home + "seat/ECHANGE.DAT";
    Open(request, home + "shared");
  }
  // A directory described as "Été".
  void Open(const StartupRequest& request, const std::string& path) {
    stem = path;
    Build(stem, {CardWith({{kSte1, "ALPHA"}})});
    StartSession(request);
    ASSERT_TRUE(session->OpenDirectoryChecked(stem, false));
    ASSERT_TRUE(session->directory()->main().Describe(OemText("\x90t\x82"), {}));
    before = Bytes();
    OpenDialog();
  }
  void OpenDialog() {
    dialog.reset();
    form = std::make_unique<DescriptionForm>(*session);
    dialog = std::make_unique<DescriptionDialog>(*form, nullptr);
    help = std::make_unique<QSignalSpy>(dialog.get(), &FixedDialog::helpWanted);
    Show(*dialog);
    Edit()->SetBeeper([this] { ++beeps; });
  }
  ~DescriptionDialogTest() override {
    dialog.reset();
    form.reset();
  }

  FilteredEdit* Edit() { return Find<FilteredEdit>(*dialog, 196); }
  QString OwnerLine() { return Find<QLabel>(*dialog, 226)->text(); }
  QCheckBox* Box() { return Find<QCheckBox>(*dialog, 225); }
  std::string Bytes() const {
    const std::vector<std::byte> bytes = memory.Contents(stem + ".DAN");
    return std::string(AsChars(bytes));
  }
  // The file as it was, but for description and owner.
  std::string Described(std::string description, const std::string& owner) const {
    description.resize(42, '\0');
    std::string bytes = before;
    return bytes.replace(34, 42, description).replace(106, 2, owner);
  }
  void ExpectConfirmed() {
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(dialog->result(), 1);
    EXPECT_FALSE(session->private_requested());
  }
  void ExpectAbandoned() {
    EXPECT_FALSE(dialog->isVisible());
    EXPECT_EQ(dialog->result(), 0);
    EXPECT_EQ(Bytes(), before);
    EXPECT_FALSE(session->private_requested());
  }

  std::string stem;
  std::string before;
  std::unique_ptr<DescriptionForm> form;
  std::unique_ptr<DescriptionDialog> dialog;
  std::unique_ptr<QSignalSpy> help;
  int beeps = 0;
};

TEST_F(DescriptionDialogTest, ShowsPathAndDescription) {
  OpenAlone();
  EXPECT_EQ(dialog->objectName(), "103");
  EXPECT_EQ(dialog->windowTitle(), "Descriptif de l'carnetel");
  EXPECT_EQ(Find<QLabel>(*dialog, 180)->text().toStdString(), stem + ".DAN");
  EXPECT_EQ(Edit()->text(), "Été");
  EXPECT_EQ(Find(*dialog, 225), nullptr);
  EXPECT_EQ(Find(*dialog, 226), nullptr);
  EXPECT_EQ(Find<QPushButton>(*dialog, 1)->text(), "Valider");
  EXPECT_EQ(Find<QPushButton>(*dialog, 197)->text(), "&Restaurer");
  EXPECT_EQ(Find<QPushButton>(*dialog, 2)->text(), "Abandonner");
  EXPECT_EQ(Find<QPushButton>(*dialog, 500)->text(), "?");
}

TEST_F(DescriptionDialogTest, ShowsBoxAndOwnerLineWithSeats) {
  OpenAtSeat();
  EXPECT_EQ(dialog->objectName(), "132");
  EXPECT_EQ(dialog->windowTitle(), "Descriptif de l'carnetel");
  EXPECT_EQ(Box()->text(), "&Carnetel Privé");
  EXPECT_FALSE(Box()->isChecked());
  EXPECT_EQ(OwnerLine(), "Carnetel Public");
}

TEST_F(DescriptionDialogTest, TabComesByEveryControlAndEachHasAName) {
  OpenAlone();
  EXPECT_EQ(FocusId(), 196);
  EXPECT_EQ(TabWalk(), (QList<int>{196, 1, 197, 2, 500}));
  ExpectNames(*dialog);
  dialog.reset();
  OpenAtSeat();
  EXPECT_EQ(TabWalk(), (QList<int>{196, 225, 1, 197, 2, 500}));
  ExpectNames(*dialog);
}

TEST_F(DescriptionDialogTest, ValiderWritesWhatWasTyped) {
  OpenAlone();
  // The old description is selected: typing takes its place.
  Type("Amis à Lyon");
  EXPECT_EQ(Bytes(), before);
  Press(*dialog, 1);
  ExpectConfirmed();
  EXPECT_EQ(Bytes(), Described("Amis \x85 Lyon"s, "\0\0"s));
}

TEST_F(DescriptionDialogTest, EnterInTheEditIsValider) {
  OpenAlone();
  Type("Amis");
  PressKey(Qt::Key_Return);
  ExpectConfirmed();
  EXPECT_EQ(Bytes(), Described("Amis", "\0\0"s));
}

TEST_F(DescriptionDialogTest, AbandonnerWritesNothing) {
  OpenAlone();
  Type("Amis");
  Press(*dialog, 2);
  ExpectAbandoned();
}

TEST_F(DescriptionDialogTest, EnterOnAbandonnerPressesIt) {
  OpenAlone();
  Type("Amis");
  Find(*dialog, 2)->setFocus();
  PressKey(Qt::Key_Return);
  ExpectAbandoned();
}

TEST_F(DescriptionDialogTest, EscapeAndTheCrossAbandon) {
  OpenAtSeat();
  Type("Amis");
  Press(*dialog, 225);
  EXPECT_TRUE(session->private_requested());
  PressKey(Qt::Key_Escape);
  ExpectAbandoned();
  OpenDialog();
  Press(*dialog, 225);
  dialog->close();
  ExpectAbandoned();
}

TEST_F(DescriptionDialogTest, RestaurerBringsTheFilesOwnBack) {
  OpenAtSeat();
  Type("Amis");
  Press(*dialog, 225);
  EXPECT_TRUE(Box()->isChecked());
  Press(*dialog, 197);
  EXPECT_EQ(Edit()->text(), "Été");
  EXPECT_FALSE(Box()->isChecked());
  EXPECT_EQ(OwnerLine(), "Carnetel Public");
  EXPECT_EQ(FocusId(), 196);
  EXPECT_TRUE(dialog->isVisible());
  EXPECT_EQ(Bytes(), before);
  Press(*dialog, 1);
  EXPECT_EQ(Bytes(), before);
}

TEST_F(DescriptionDialogTest, RestaurerHasAKey) {
  OpenAlone();
  Type("Amis");
  PressMnemonic(*dialog, Qt::Key_R, 197);
  EXPECT_EQ(Edit()->text(), "Été");
}

TEST_F(DescriptionDialogTest, TheEditHolds41CharactersOfTheFilesCodePage) {
  OpenAlone();
  Type(QString(41, QChar('x')));
  EXPECT_EQ(beeps, 0);
  Type("y");
  EXPECT_EQ(beeps, 1);
  EXPECT_EQ(Edit()->text(), QString(41, QChar('x')));
  PressKey(Qt::Key_Backspace);
  Type("€");
  EXPECT_EQ(beeps, 2);
  EXPECT_EQ(Edit()->text(), QString(40, QChar('x')));
  Type("é");
  Press(*dialog, 1);
  EXPECT_EQ(Bytes(), Described(std::string(40, 'x') + "\x82", "\0\0"s));
}

TEST_F(DescriptionDialogTest, TheOwnerLineFollowsTheBox) {
  OpenAtSeat();
  Press(*dialog, 225);
  EXPECT_TRUE(Box()->isChecked());
  EXPECT_EQ(OwnerLine(), "  (Poste N° 03)");
  Box()->setFocus();
  PressKey(Qt::Key_Space);
  EXPECT_EQ(OwnerLine(), "Carnetel Public");
  PressMnemonic(*dialog, Qt::Key_C, 225);
  EXPECT_EQ(OwnerLine(), "  (Poste N° 03)");
  EXPECT_EQ(Bytes(), before);
  Press(*dialog, 1);
  ExpectConfirmed();
  EXPECT_EQ(Bytes(), Described("\x90t\x82"s, "\3\0"s));
}

TEST_F(DescriptionDialogTest, AClearedBoxMakesTheDirectoryPublic) {
  OpenAtSeat();
  ASSERT_TRUE(session->directory()->main().Describe(OemText("\x90t\x82"), uint16_t{3}));
  OpenDialog();
  EXPECT_TRUE(Box()->isChecked());
  EXPECT_EQ(OwnerLine(), "  (Poste N° 03)");
  Press(*dialog, 225);
  Press(*dialog, 1);
  ExpectConfirmed();
  EXPECT_EQ(Bytes(), Described("\x90t\x82"s, "\0\0"s));
}

TEST_F(DescriptionDialogTest, AFailedWriteIsToldAndTheDialogStays) {
  OpenAlone();
  Type("Amis");
  files.StopAfter(0);
  Press(*dialog, 1);
  EXPECT_TRUE(dialog->isVisible());
  EXPECT_EQ(Edit()->text(), "Amis");
  const auto shown = messages.TakeShown();
  ASSERT_EQ(shown.size(), 1u);
  EXPECT_EQ(shown[0].text, "Accès au fichier " + stem + ".DAN impossible");
  EXPECT_EQ(Bytes(), before);
  files.Heal();
  PressKey(Qt::Key_Escape);
  ExpectAbandoned();
}

TEST_F(DescriptionDialogTest, HelpByButtonAndKey) {
  OpenAtSeat();
  Press(*dialog, 500);
  EXPECT_EQ(help->count(), 1);
  for (const int id : {196, 225, 1}) {
    Find(*dialog, id)->setFocus();
    PressKey(Qt::Key_F1);
  }
  ASSERT_EQ(help->count(), 4);
  for (const QList<QVariant>& wanted : *help) EXPECT_EQ(wanted.value(0).toInt(), 51);
  EXPECT_TRUE(dialog->isVisible());
}

// ---- the path ----

class PathLabelTest : public ::testing::Test {
 protected:
  void SetUp() override {
    box.resize(label.sizeHint());
    label.setParent(&box);
    label.resize(label.sizeHint());
    Show(box);
  }
  // The mouse comes over the label: the tooltip that it brings.
  QString Hover() {
    QToolTip::hideText();
    QEnterEvent enter(QPointF(2, 2), QPointF(2, 2), label.mapToGlobal(QPointF(2, 2)));
    QApplication::sendEvent(&label, &enter);
    return QToolTip::text();
  }

  QDialog box;
  PathLabel label{&box};
};

TEST_F(PathLabelTest, AShortPathIsShownWhole) {
  label.SetPath("/home/anne/CARNETEL.DAN");
  EXPECT_EQ(label.ShownText(), "/home/anne/CARNETEL.DAN");
  EXPECT_EQ(label.accessibleName(), "/home/anne/CARNETEL.DAN");
  EXPECT_EQ(Hover(), QString());
}

TEST_F(PathLabelTest, ALongPathLosesItsMiddleOnScreenOnly) {
  const QString path = "/home/anne/" + QString("dossier/").repeated(12) + "CARNETEL.DAN";
  const QSize size = label.sizeHint();
  label.SetPath(path);
  EXPECT_EQ(label.sizeHint(), size);
  const QString shown = label.ShownText();
  EXPECT_TRUE(shown.startsWith("/home/anne/") && shown.endsWith("/CARNETEL.DAN"));
  EXPECT_TRUE(shown.contains(QChar(0x2026)));
  EXPECT_LE(label.fontMetrics().horizontalAdvance(shown), label.width());
  EXPECT_EQ(label.text(), path);
  EXPECT_EQ(label.accessibleName(), path);
  EXPECT_EQ(Hover(), path);
}

TEST_F(PathLabelTest, MarkupInAPathIsText) {
  const QString path = "/home/<b>anne</b> & co/" + QString("dossier/").repeated(12);
  label.SetPath(path);
  EXPECT_EQ(Hover(), Qt::convertFromPlainText(path));
}

}  // namespace
}  // namespace carnetel::desktop
