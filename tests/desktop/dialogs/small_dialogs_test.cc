// The dialogs without rules of their own, and pictures of all small dialogs for eyes, with ordinary
// letters and with letters twice as large: dialog_*.png beside the test program.
#include <unistd.h>

#include "desktop/dialogs/about_dialog.h"
#include "desktop/dialogs/description_dialog.h"
#include "desktop/dialogs/invalid_file_dialog.h"
#include "desktop/dialogs/patience_box.h"
#include "tests/desktop/dialogs/dialog_testing.h"
#include "tests/shell/window_fixture.h"

namespace carnetel::desktop {
namespace {

// ---- about ----

class About : public ::testing::Test {
 protected:
  void SetUp() override { Show(dialog); }

  AboutDialog dialog{nullptr};
};

TEST_F(About, SaysWhatItIsAndWhichVersion) {
  EXPECT_EQ(dialog.objectName(), "131");
  EXPECT_EQ(dialog.windowTitle(), "A propos de l'carnetel");
  QStringList texts;
  for (const QLabel* label : dialog.findChildren<QLabel*>()) texts += label->text();
  EXPECT_TRUE(texts.contains("Carnetel"));
  EXPECT_TRUE(texts.contains("Version " CARNETEL_VERSION));
  EXPECT_EQ(dialog.findChildren<QPushButton*>().size(), 1);
  EXPECT_EQ(Find<QPushButton>(dialog, 1)->text(), "OK");
  ExpectNames(dialog);
}

TEST_F(About, EndsWithItsButtonEnterAndEscape) {
  Press(dialog, 1);
  EXPECT_FALSE(dialog.isVisible());
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Escape}) {
    Show(dialog);
    PressKey(key);
    EXPECT_FALSE(dialog.isVisible());
  }
}

TEST_F(About, HasNoPageOfHelp) {
  const QSignalSpy help(&dialog, &FixedDialog::helpWanted);
  PressKey(Qt::Key_F1);
  EXPECT_EQ(help.count(), 0);
  EXPECT_TRUE(dialog.isVisible());
}

// ---- patience ----

class PaintCounter : public QObject {
 public:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Paint && watched->isWidgetType()) ++paints;
    return false;
  }
  int paints = 0;
};

class Patience : public ::testing::Test {
 protected:
  BusyState busy;
  PatienceBox box{busy, nullptr};
};

TEST_F(Patience, SaysSoWithoutAButton) {
  EXPECT_EQ(box.objectName(), "135");
  EXPECT_EQ(box.windowTitle(), "Veuillez patienter");
  EXPECT_EQ(box.findChildren<QAbstractButton*>().size(), 0);
  EXPECT_EQ(box.findChild<QLabel*>()->text(), "Veuillez patienter...");
}

TEST_F(Patience, IsPaintedWhenShowComesBack) {
  PaintCounter counter;
  box.installEventFilter(&counter);
  box.findChild<QLabel*>()->installEventFilter(&counter);
  box.show();
  EXPECT_GE(counter.paints, 2);
  box.hide();
  EXPECT_FALSE(box.isVisible());
  counter.paints = 0;
  box.show();
  EXPECT_GE(counter.paints, 2);
}

TEST_F(Patience, IsOverEverythingAndTheProgramIsBusyAsLong) {
  QSignalSpy idle(&busy, &BusyState::becameIdle);
  box.show();
  box.show();
  EXPECT_EQ(QApplication::activeModalWidget(), &box);
  EXPECT_TRUE(busy.IsBusy());
  box.hide();
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
  EXPECT_FALSE(busy.IsBusy());
  EXPECT_EQ(idle.count(), 1);
}

TEST_F(Patience, TheUserCannotCloseIt) {
  box.show();
  QTest::keyClick(&box, Qt::Key_Escape);
  QTest::keyClick(&box, Qt::Key_Return);
  EXPECT_FALSE(box.close());
  EXPECT_TRUE(box.isVisible());
  EXPECT_FALSE(box.windowFlags().testFlag(Qt::WindowCloseButtonHint));
}

TEST(PatienceLife, ABoxThatGoesWhileShownLeavesTheProgramIdle) {
  BusyState busy;
  {
    PatienceBox box(busy, nullptr);
    box.show();
  }
  EXPECT_FALSE(busy.IsBusy());
}

// ---- pictures ----

constexpr const char* kLongName =
    "Clients, fournisseurs et amis de la maison de Lyon et des environs";

class DialogPictures : public WindowFixture, public ::testing::WithParamInterface<int> {
 protected:
  void SetUp() override {
    QFont font = former_;
    font.setPointSizeF(former_.pointSizeF() * GetParam() / 100);
    QApplication::setFont(font);
  }
  void TearDown() override {
    QApplication::setFont(former_);
    ::unlink(DirectoryGuard::LockFilePath(home + kLongName + ".ADR").c_str());
  }

  static void Save(QDialog& dialog, const QString& name) {
    dialog.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&dialog));
    ExpectTextsFit(dialog);
    const QString file = QStringLiteral("dialog_%1_%2.png").arg(name).arg(GetParam());
    EXPECT_TRUE(dialog.grab().save(file));
  }

 private:
  QFont former_ = QApplication::font();
};

TEST_P(DialogPictures, Description) {
  Build({});
  StartSession();
  ASSERT_TRUE(session->OpenDirectoryChecked(DefaultPath(), false));
  ASSERT_TRUE(
      session->directory()->main().Describe(OemText("Clients de Lyon et de la r\x82gion"), {}));
  DescriptionForm form(*session);
  DescriptionDialog dialog(form, nullptr);
  Save(dialog, QStringLiteral("description"));
}

TEST_P(DialogPictures, DescriptionWithSeatsAndALongPath) {
  memory.MakeFolder(home + "seat/");
  StartupRequest request;
  request.workstation_number = 3;
  request.exchange_file_path = home + "seat/ECHANGE.DAT";
  StartSession(request);
  ASSERT_TRUE(session->OpenDirectoryChecked(home + kLongName, false));
  DescriptionForm form(*session);
  form.SetPrivate(true);
  DescriptionDialog dialog(form, nullptr);
  Save(dialog, QStringLiteral("description_seats"));
}

TEST_P(DialogPictures, InvalidFile) {
  const std::string path = home + kLongName + ".DAN";
  memory.SetContents(path, AsBytes("no directory"));
  StartupRequest request;
  request.direct_open = true;
  request.direct_path = path;
  StartSession(request);
  ASSERT_TRUE(session->OpenAtStart(&fell_back));
  InvalidFileForm form(*session, [] {});
  {
    InvalidFileDialog dialog(form, nullptr);
    Save(dialog, QStringLiteral("invalid_file"));
  }
  memory.Remove(path);
  InvalidFileForm gone(*session, [] {});
  InvalidFileDialog dialog(gone, nullptr);
  Save(dialog, QStringLiteral("invalid_file_gone"));
}

TEST_P(DialogPictures, AboutAndPatience) {
  AboutDialog about(nullptr);
  Save(about, QStringLiteral("about"));
  BusyState busy;
  PatienceBox patience(busy, nullptr);
  Save(patience, QStringLiteral("patience"));
}

INSTANTIATE_TEST_SUITE_P(Letters, DialogPictures, ::testing::Values(100, 200));

}  // namespace
}  // namespace carnetel::desktop
