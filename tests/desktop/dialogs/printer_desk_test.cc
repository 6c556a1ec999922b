// Runs on the system's printers, from the print form to the paper: the PDF file that stands for it
// is read back by pdftotext.
#include "desktop/print/printer_desk.h"

#include <QFile>
#include <QPageSetupDialog>
#include <QPrinter>
#include <QProcess>
#include <QRegularExpression>
#include <QStandardPaths>

#include "desktop/print/printer_ports.h"
#include "tests/desktop/dialogs/at_page.h"
#include "tests/desktop/dialogs/print_dialog_fixture.h"
#include "tests/support/fresh_folder.h"

namespace carnetel::desktop {
namespace {

class PrinterDeskTest : public PrintDialogTest {
 protected:
  void SetUp() override {
    desk.SetPrintDialog([this](QPrinter& printer, QWidget* owner) {
      owners += owner;
      documents += printer.docName();
      printer.setOutputFormat(QPrinter::PdfFormat);
      printer.setOutputFileName(pdf);
      return confirms;
    });
  }
  void OpenOnDesk() {
    Open(desk);
    desk_owner = dialog.get();
  }
  void Print() {
    PressNamed(*dialog, "print");
    // What a desktop does when the box has closed.
    Show(*dialog);
  }
  // The words of each page of the PDF, line by line and where they stand on the line.
  QList<QStringList> PdfPages() {
    QProcess process;
    process.start("pdftotext", {"-layout", "-enc", "UTF-8", pdf, "-"});
    EXPECT_TRUE(process.waitForFinished());
    return Pages(QString::fromUtf8(process.readAllStandardOutput()));
  }
  static QList<QStringList> Pages(const QString& text) {
    QList<QStringList> pages;
    for (const QString& page : text.split(u'\f')) {
      QStringList lines;
      for (QString line : page.split(u'\n')) {
        line.remove(QRegularExpression(QStringLiteral("\\s+$")));
        if (!line.isEmpty()) lines += line;
      }
      if (!lines.isEmpty()) pages += lines;
    }
    return pages;
  }
  // The same run into a text file.
  QList<QStringList> TextPages() {
    PressChoice("to_file");
    PressNamed(*dialog, "print");
    return Pages(QString::fromStdString(Utf8FromOem(OemText(Contents(home + "carn.prn")))));
  }
  // The words alone.
  static QList<QStringList> Words(const QList<QStringList>& pages) {
    QList<QStringList> words;
    for (const QStringList& page : pages) {
      QStringList lines;
      for (const QString& line : page) lines += line.simplified();
      words += lines;
    }
    return words;
  }
  static bool CanReadPdf() {
    const bool can = !QStandardPaths::findExecutable("pdftotext").isEmpty();
    if (!can) std::puts("pdftotext is not installed: what the PDF says is not read");
    return can;
  }

  FreshFolder folder;
  QString pdf = QString::fromStdString(folder.path()) + "out.pdf";
  BusyState busy;
  QWidget* desk_owner = nullptr;
  PrinterDesk desk{busy, [this] { return desk_owner; }};
  bool confirms = true;
  QList<QWidget*> owners;
  QStringList documents;
};

TEST_F(PrinterDeskTest, TheListComesOutAsInTheTextFile) {
  StartWithCards(150);
  OpenOnDesk();
  Print();
  EXPECT_EQ(owners, QList<QWidget*>{dialog.get()});
  // Offered as the name of a file, so without a folder.
  ASSERT_EQ(documents.size(), 1);
  EXPECT_TRUE(documents[0].endsWith(" - CARNETEL.DAN") && !documents[0].contains(u'/'));
  EXPECT_EQ(messages.TakeShown(), ShownBoxes());
  EXPECT_TRUE(QFile::exists(pdf));
  EXPECT_FALSE(busy.IsBusy());
  EXPECT_TRUE(dialog->isEnabled());
  EXPECT_EQ(FocusName(), "print");
  if (!CanReadPdf()) return;
  const QList<QStringList> pages = PdfPages();
  EXPECT_EQ(Words(pages), Words(TextPages()));
  ASSERT_EQ(pages.size(), 3);
  // The columns stand below their names, on every line.
  for (const QStringList& page : pages) {
    for (const QString& line : page.mid(1)) {
      EXPECT_EQ(line.indexOf("Allée des Érables"), page[0].indexOf("ADR1")) << line.toStdString();
      EXPECT_EQ(line.indexOf("69001"), page[0].indexOf("CP")) << line.toStdString();
      EXPECT_EQ(line.indexOf("04 00"), page[0].indexOf("FAX")) << line.toStdString();
    }
  }
}

TEST_F(PrinterDeskTest, CardsAndFullPagesBreakWhereTheTextFileDoes) {
  if (!CanReadPdf()) return;
  StartWithCards(12);
  OpenOnDesk();
  PressChoice("cards");
  for (const char* lines : {"127", "24", "60"}) {
    TypeSpin("lines", QString::fromLatin1(lines));
    Print();
    const QList<QStringList> pages = PdfPages();
    const QList<QStringList> text = TextPages();
    EXPECT_EQ(Words(pages), Words(text)) << lines;
    EXPECT_GT(pages.size(), 2) << lines;
    files.Remove(home + "carn.prn");
    PressChoice("to_file");
  }
}

TEST_F(PrinterDeskTest, TheWidestListFindsRoom) {
  if (!CanReadPdf()) return;
  StartWithCards(2);
  Composition wide{};
  wide[0] = {3, 100};
  wide[1] = {7, 26};
  (void)LayoutFile(files, DefaultPath() + ".LST").LoadComposition(CompositionCopy::kUser);
  LayoutFile(files, DefaultPath() + ".LST").SaveComposition(wide);
  OpenOnDesk();
  Print();
  EXPECT_EQ(Words(PdfPages()),
            QList<QStringList>{(QStringList{"STE1 CP", "NOM 001 69001", "NOM 002 69001"})});
}

TEST_F(PrinterDeskTest, TheBoxIsUpDuringTheRunAndTheFormIsOff) {
  StartWithCards(150);
  OpenOnDesk();
  AtPage second(2, [this](AbortBox& box) {
    EXPECT_EQ(box.objectName(), "BOITEABORT");
    EXPECT_EQ(box.windowTitle(), "Impression en cours ...");
    EXPECT_TRUE(box.findChild<PathLabel*>()->text().startsWith("Carnetel - "));
    EXPECT_TRUE(box.findChild<PathLabel*>()->text().endsWith("CARNETEL.DAN"));
    EXPECT_EQ(box.findChild<QPushButton*>()->text(), "Abandonner");
    EXPECT_TRUE(box.findChild<QPushButton*>()->isEnabled());
    EXPECT_EQ(QApplication::activeModalWidget(), &box);
    EXPECT_FALSE(dialog->isEnabled());
    EXPECT_TRUE(busy.IsBusy());
  });
  Print();
  EXPECT_TRUE(second.IsDone());
  EXPECT_TRUE(dialog->isEnabled());
  EXPECT_EQ(dialog->findChild<AbortBox*>(), nullptr);
}

TEST_F(PrinterDeskTest, AbandonInTheMiddleEndsTheRun) {
  StartWithCards(300);
  OpenOnDesk();
  using End = std::function<void(AbortBox&)>;
  const std::vector<End> ends = {[](AbortBox& box) { PressAbandon(box); },
                                 [](AbortBox& box) { QTest::keyClick(&box, Qt::Key_Escape); },
                                 [](AbortBox& box) { EXPECT_FALSE(box.close()); }};
  for (const End& end : ends) {
    AtPage second(2, end);
    AtPage third(3, [](AbortBox&) { ADD_FAILURE() << "the run goes on"; });
    Print();
    EXPECT_TRUE(second.IsDone());
    EXPECT_TRUE(dialog->isVisible());
    EXPECT_TRUE(dialog->isEnabled());
    EXPECT_FALSE(busy.IsBusy());
    EXPECT_EQ(dialog->findChild<AbortBox*>(), nullptr);
    EXPECT_EQ(FocusName(), "print");
    EXPECT_EQ(messages.TakeShown(), ShownBoxes());
    if (CanReadPdf()) {
      EXPECT_LE(PdfPages().size(), 2);
    }
  }
}

TEST_F(PrinterDeskTest, ACancelledDialogPrintsNothingAndSaysNothing) {
  StartWithCards(3);
  OpenOnDesk();
  confirms = false;
  Print();
  EXPECT_EQ(owners.size(), 1);
  EXPECT_EQ(messages.TakeShown(), ShownBoxes());
  EXPECT_FALSE(QFile::exists(pdf));
  EXPECT_TRUE(dialog->isEnabled());
}

TEST_F(PrinterDeskTest, AFileThatCannotBeMadeIsTheManagersProblem) {
  StartWithCards(3);
  OpenOnDesk();
  pdf = QString::fromStdString(folder.path()) + "missing/out.pdf";
  Print();
  EXPECT_EQ(messages.TakeShown(),
            (ShownBoxes{{MessageStyle::kError, 79, "Problème avec le gestionnaire d'impression"}}));
  EXPECT_TRUE(dialog->isEnabled());
  EXPECT_FALSE(busy.IsBusy());
}

TEST_F(PrinterDeskTest, ThePageChosenInTheSettingsIsKeptForThatPrinter) {
  StartWithCards(3);
  const QPageLayout former = desk.PageLayout("");
  bool confirms_page = false;
  desk.SetPageDialog([&](QPrinter& printer, QWidget*) {
    printer.setPageSize(QPageSize(QPageSize::A5));
    printer.setPageOrientation(QPageLayout::Landscape);
    return confirms_page;
  });
  desk.ShowProperties("");
  EXPECT_EQ(desk.PageLayout(""), former);
  confirms_page = true;
  desk.ShowProperties("");
  EXPECT_EQ(desk.PageLayout("").pageSize().id(), QPageSize::A5);
  EXPECT_EQ(desk.PageLayout("").orientation(), QPageLayout::Landscape);
  EXPECT_EQ(desk.PageLayout("another"), former);
  QPageLayout printed;
  desk.SetPrintDialog([&printed](QPrinter& printer, QWidget*) {
    printed = printer.pageLayout();
    return false;
  });
  OpenOnDesk();
  Print();
  EXPECT_EQ(printed.pageSize().id(), QPageSize::A5);
  EXPECT_EQ(printed.orientation(), QPageLayout::Landscape);
}

TEST(PrinterPorts, AreReadFromTheAnswerOfTheSystem) {
  const QMap<QString, QString> ports = ParsePrinterPorts(
      "device for PDF: cups-pdf:/\n"
      "device for Bureau_2: ipp://bureau.local:631/ipp/print\n"
      "lpstat: Scheduler is not running.\n"
      "device for Vide:\n");
  EXPECT_EQ(ports, (QMap<QString, QString>{{"PDF", "cups-pdf:/"},
                                           {"Bureau_2", "ipp://bureau.local:631/ipp/print"}}));
}

}  // namespace
}  // namespace carnetel::desktop
