// A signal of the system that comes while a dialog or a box is open: everything closes, nobody is
// asked, and the files are whole.
#include <QTimer>
#include <csignal>

#include "desktop/window/system_signals.h"
#include "tests/desktop/window/dialog_user.h"

namespace carnetel::desktop {
namespace {

class EndingByASignal : public DialogWindowTest {
 protected:
  // Opens the dialog and sends the signal while it is open; in the loop of the program, which must
  // come to its end.
  void EndDuring(int command, int number, const std::function<void(QDialog&)>& before = {}) {
    const SystemSignals system_signals;
    QObject::connect(&system_signals, &SystemSignals::endRequested, window.get(),
                     &MainWindow::QuitUnasked);
    QObject::connect(window.get(), &MainWindow::ended, qApp, &QApplication::quit);
    Expect(number, [this, before](QDialog& dialog) {
      if (before) before(dialog);
      ::raise(SIGTERM);
      EXPECT_TRUE(QTest::qWaitFor([this] { return ended == 1; }));
      EXPECT_EQ(session->directory(), nullptr);
      EXPECT_FALSE(dialog.isVisible());
    });
    QTimer::singleShot(0, window.get(),
                       [this, command] { window->MenuAction(command)->trigger(); });
    QApplication::exec();
    EXPECT_EQ(ended, 1);
    EXPECT_FALSE(window->isVisible());
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    ExitSession();
    EXPECT_EQ(Profile("File1"), "&1 " + DefaultPath() + ".DAN");
    EXPECT_EQ(SavedCompanies(), (Texts{"ALPHA", "BETA", "BRAVO"}));
  }
};

TEST_F(EndingByASignal, WhileADialogIsOpen) {
  constexpr std::pair<int, int> kDialogs[] = {{200, 125}, {201, 128}, {217, 123}, {204, 103},
                                              {230, 134}, {229, 131}, {205, 130}};
  BuildCompanies(3);
  for (const auto& [command, number] : kDialogs) {
    SCOPED_TRACE(number);
    ended = 0;
    Start();
    EndDuring(command, number);
  }
}

TEST_F(EndingByASignal, WhileADialogHasItsHelpOpen) {
  BuildCompanies(3);
  Start();
  EndDuring(230, 134, [this](QDialog&) {
    Key(Qt::Key_F1);
    EXPECT_NE(window->dialogs().help_window(), nullptr);
  });
}

TEST_F(EndingByASignal, WhatWasTypedInADialogIsLost) {
  BuildCompanies(3);
  Start();
  EndDuring(204, 103, [this](QDialog&) { Type("Perdu"); });
  EXPECT_EQ(HeaderOf(DefaultPath()).description().bytes(), "");
}

// The box hangs over a directory that has gone meanwhile.
class EndingInABox : public EndingByASignal {
 protected:
  void SetUp() override {
    BuildCompanies(3);
    boxes = &real_boxes_;
    Start();
  }

 private:
  WindowMessages real_boxes_;
};

TEST_F(EndingInABox, AboutACard) {
  EndDuring(209, DialogUser::kMessageBox);
}

TEST_F(EndingInABox, AboutMarkedCards) {
  Key(Qt::Key_Space);
  EndDuring(210, DialogUser::kMessageBox);
}

TEST_F(EndingInABox, AboutTypedText) {
  TypeInto(156, "Lyon");
  EndDuring(201, DialogUser::kMessageBox);
}

TEST_F(EndingInABox, AboutADirectoryToDestroy) {
  ExpectName(123, "CARNETEL");
  EndDuring(217, DialogUser::kMessageBox);
}

TEST_F(EndingInABox, AboutADirectoryThatCannotBeOpened) {
  MakeText(home + "TEXTE.DAN", "text");
  ExpectName(128, "TEXTE");
  EndDuring(201, DialogUser::kMessageBox);
}

}  // namespace
}  // namespace carnetel::desktop
