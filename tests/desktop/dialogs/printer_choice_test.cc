// "Installation de l'imprimante" as its user meets it.
#include "desktop/dialogs/printer_choice_dialog.h"
#include "platform/memory_file_system.h"
#include "tests/desktop/dialogs/named_controls.h"
#include "tests/support/fake_printers.h"

namespace carnetel::desktop {
namespace {

class PrinterChoice : public ::testing::Test {
 protected:
  void Open() {
    dialog.reset();
    form = std::make_unique<PrinterChoiceForm>(stored, printers);
    dialog = std::make_unique<PrinterChoiceDialog>(*form, nullptr);
    finished = std::make_unique<QSignalSpy>(dialog.get(), &QDialog::finished);
    help = std::make_unique<QSignalSpy>(dialog.get(), &FixedDialog::helpWanted);
    Show(*dialog);
  }
  QListWidget* List() { return Named<QListWidget>(*dialog, "printers"); }
  QPoint Row(int row) { return List()->visualItemRect(List()->item(row)).center(); }
  // How the dialog ended; -1 while it is open.
  int End() { return finished->isEmpty() ? -1 : finished->first().first().toInt(); }

  FakeClock clock{1'000'000'000};
  MemoryFileSystem files{clock};
  StoredPrinter stored{files, "/CARNETEL.INI"};
  FakePrinters printers;
  std::unique_ptr<PrinterChoiceForm> form;
  std::unique_ptr<PrinterChoiceDialog> dialog;
  std::unique_ptr<QSignalSpy> finished;
  std::unique_ptr<QSignalSpy> help;

  void SetUp() override {
    printers.installed = {{"Accueil", "HP", "usb://HP"},
                          {"Telecopie", "CAPTURE FAX DROV", "CUPS"},
                          {"Bureau", "Epson", "ipp://bureau"},
                          {"PDF", "CUPS-PDF", "cups-pdf:/"}};
  }
};

TEST_F(PrinterChoice, ListsThePrintersAndMarksTheStoredOne) {
  stored.Write(printers.installed[2]);
  Open();
  EXPECT_EQ(dialog->objectName(), "133");
  EXPECT_EQ(dialog->windowTitle(), "Installation de l'imprimante");
  ASSERT_EQ(List()->count(), 3);
  EXPECT_EQ(List()->item(0)->text(), "Accueil,usb://HP");
  EXPECT_EQ(List()->item(1)->text(), "Bureau,ipp://bureau");
  EXPECT_EQ(List()->currentRow(), 1);
  EXPECT_EQ(FocusName(), "printers");
  EXPECT_EQ(Find<QPushButton>(*dialog, 1)->text(), "&Fermer");
  EXPECT_EQ(Find<QPushButton>(*dialog, 2)->text(), "&Abandon");
  EXPECT_EQ(Named<QPushButton>(*dialog, "properties")->text(), "&Paramètres...");
  ExpectNames(*dialog);
}

TEST_F(PrinterChoice, TheCaptureDriverStoredLeavesTheFirstRow) {
  stored.Write(printers.installed[1]);
  Open();
  EXPECT_EQ(List()->currentRow(), 0);
  EXPECT_EQ(form->selected(), 0);
}

TEST_F(PrinterChoice, FermerEnterAndADoubleClickConfirm) {
  Open();
  PressKey(Qt::Key_Down);
  desktop::Press(*dialog, 1);
  EXPECT_EQ(End(), QDialog::Accepted);
  EXPECT_EQ(form->selected(), 1);
  Open();
  PressKey(Qt::Key_End);
  PressKey(Qt::Key_Return);
  EXPECT_EQ(End(), QDialog::Accepted);
  EXPECT_EQ(form->selected(), 2);
  Open();
  QTest::mouseClick(List()->viewport(), Qt::LeftButton, Qt::NoModifier, Row(1));
  EXPECT_EQ(End(), -1);
  QTest::mouseDClick(List()->viewport(), Qt::LeftButton, Qt::NoModifier, Row(1));
  EXPECT_EQ(End(), QDialog::Accepted);
  EXPECT_EQ(form->selected(), 1);
}

TEST_F(PrinterChoice, AbandonAndEscapeDoNot) {
  Open();
  desktop::Press(*dialog, 2);
  EXPECT_EQ(End(), QDialog::Rejected);
  Open();
  PressKey(Qt::Key_Escape);
  EXPECT_EQ(End(), QDialog::Rejected);
}

TEST_F(PrinterChoice, ParametresOpensTheSettingsOfTheMarkedOne) {
  Open();
  PressKey(Qt::Key_Down);
  PressNamed(*dialog, "properties");
  EXPECT_EQ(printers.properties_shown, std::vector<std::string>{"Bureau"});
  EXPECT_EQ(End(), -1);
}

TEST_F(PrinterChoice, HasThePageOfPrintingAsItsHelp) {
  Open();
  desktop::Press(*dialog, 500);
  PressKey(Qt::Key_F1);
  ASSERT_EQ(help->count(), 2);
  EXPECT_EQ(help->at(0).first().toInt(), 54);
  EXPECT_EQ(help->at(1).first().toInt(), 54);
}

TEST_F(PrinterChoice, WithTheCaptureDriverAloneTheListIsEmpty) {
  printers.installed = {{"Telecopie", "CAPTURE FAX DROV", "CUPS"}};
  Open();
  EXPECT_EQ(List()->count(), 0);
  PressNamed(*dialog, "properties");
  EXPECT_TRUE(printers.properties_shown.empty());
}

}  // namespace
}  // namespace carnetel::desktop
