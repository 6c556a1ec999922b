// Printing from the window, through the real dialogs, to files and back.
#include <QFile>
#include <QPrinter>
#include <QTimer>
#include <csignal>

#include "desktop/window/system_signals.h"
#include "tests/desktop/dialogs/at_page.h"
#include "tests/desktop/dialogs/named_controls.h"
#include "tests/desktop/window/dialog_user.h"
#include "tests/support/fresh_folder.h"

namespace carnetel::desktop {
namespace {

constexpr int kPrintForm = 130;

class Printing : public DialogWindowTest {
 protected:
  void StartOnPdf() {
    Start();
    window->dialogs().Printers().SetPrintDialog([this](QPrinter& printer, QWidget* owner) {
      EXPECT_EQ(owner->objectName(), QString::number(kPrintForm));
      printer.setOutputFormat(QPrinter::PdfFormat);
      printer.setOutputFileName(pdf);
      return true;
    });
  }
  std::string Contents(const std::string& path) {
    const std::vector<std::byte> bytes = files.Contents(path);
    return std::string(AsChars(bytes));
  }

  FreshFolder folder;
  QString pdf = QString::fromStdString(folder.path()) + "out.pdf";
};

TEST_F(Printing, TheMarkedCardsGoIntoAFile) {
  BuildCompanies(4);
  Start();
  ClickRow(1);
  Key(Qt::Key_Space);
  ClickRow(3);
  Key(Qt::Key_Space);
  Expect(kPrintForm, [this](QDialog& form) {
    Named<QAbstractButton>(form, "to_file")->click();
    desktop::TypeInto(form, "path", "choix.txt");
    PressNamed(form, "print");
    EXPECT_TRUE(form.isVisible());
    PressIn(form, 2);
  });
  Press(kButtonPrint);
  const std::string text = Contents(home + "choix.txt");
  EXPECT_EQ(text.find("ALPHA"), std::string::npos);
  EXPECT_NE(text.find("BETA"), std::string::npos);
  EXPECT_EQ(text.find("BRAVO"), std::string::npos);
  EXPECT_NE(text.find("CHARLIE"), std::string::npos);
  EXPECT_EQ(Profile("FileToPrint"), "choix.txt");
  EXPECT_EQ(Asked(), Texts{});
}

TEST_F(Printing, TheListGoesToThePrinterOfTheSystem) {
  BuildCompanies(4);
  StartOnPdf();
  Expect(kPrintForm, [this](QDialog& form) {
    Named<QAbstractButton>(form, "file")->click();
    PressNamed(form, "print");
    EXPECT_TRUE(form.isEnabled());
    PressIn(form, 2);
  });
  Choose(kCommandPrint);
  EXPECT_TRUE(QFile::exists(pdf));
  EXPECT_EQ(Asked(), Texts{});
}

TEST_F(Printing, ItsHelpIsAboveTheForm) {
  BuildCompanies(1);
  Start();
  Expect(kPrintForm, [this](QDialog& form) {
    Key(Qt::Key_F1);
    EXPECT_NE(window->dialogs().help_window(), nullptr);
    form.reject();
  });
  Choose(kCommandPrint);
}

// The signal waits for the run, which uses the directory to its end; then everything closes.
TEST_F(Printing, ASignalDuringARunEndsTheWindowBehindIt) {
  std::vector<CardRecord> cards;
  for (int i = 0; i < 150; ++i) cards.push_back(CardWith({{kSte1, "NOM " + std::to_string(i)}}));
  Build(cards);
  StartOnPdf();
  const SystemSignals system_signals;
  QObject::connect(&system_signals, &SystemSignals::endRequested, window.get(),
                   &MainWindow::QuitUnasked);
  QObject::connect(window.get(), &MainWindow::ended, qApp, &QApplication::quit);
  AtPage second(2, [this](AbortBox&) {
    ::raise(SIGTERM);
    EXPECT_NE(session->directory(), nullptr);
  });
  Expect(kPrintForm, [this](QDialog& form) {
    Named<QAbstractButton>(form, "file")->click();
    PressNamed(form, "print");
    EXPECT_TRUE(QTest::qWaitFor([this] { return ended == 1; }));
    EXPECT_EQ(session->directory(), nullptr);
    EXPECT_FALSE(form.isVisible());
  });
  QTimer::singleShot(0, window.get(), [this] { window->MenuAction(kCommandPrint)->trigger(); });
  QApplication::exec();
  EXPECT_TRUE(second.IsDone());
  EXPECT_EQ(ended, 1);
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
  EXPECT_TRUE(QFile::exists(pdf));
  ExitSession();
}

}  // namespace
}  // namespace carnetel::desktop
