// Pictures of the dialogs of printing for eyes, with ordinary letters and with letters twice as
// large: dialog_*.png beside the test program.
#include "desktop/dialogs/printer_choice_dialog.h"
#include "desktop/print/abort_box.h"
#include "tests/desktop/dialogs/dialog_pictures.h"
#include "tests/desktop/dialogs/print_dialog_fixture.h"

namespace carnetel::desktop {
namespace {

class PrintPictures : public PrintDialogTest {
 protected:
  void SetUp() override {
    StartWithCards(150);
    StorePrinter({"Bureau_LaserJet_Pro_M404dn", "HP LaserJet Pro", "ipp://10.0.0.17/ipp/print"});
    SetProfile("PrintType", "1");
  }
};

TEST_F(PrintPictures, TheFormWithBothPages) {
  for (const int percent : {100, 200}) {
    const LettersAt letters(percent);
    Open();
    SavePicture(*dialog, QStringLiteral("print_setup"), percent);
    ShowLayoutPage();
    SavePicture(*dialog, QStringLiteral("print_layout"), percent);
    ExpectNames(*dialog);
  }
}

TEST_F(PrintPictures, CardsOnPaperAcross) {
  SetProfile("Mode", "1");
  layout.setOrientation(QPageLayout::Landscape);
  Open();
  SavePicture(*dialog, QStringLiteral("print_cards"), 100);
}

TEST_F(PrintPictures, TheChoiceOfAPrinter) {
  dialogs.printers.installed = {
      {"Accueil_LaserJet", "HP LaserJet", "usb://HP/LaserJet%20P1102?serial=000"},
      {"Bureau_LaserJet_Pro_M404dn", "HP LaserJet Pro",
       "dnssd://HP%20LaserJet%20Pro%20M404dn%20%5BA0B1C2%5D._ipp._tcp.local/?uuid=db66-41f2"},
      {"PDF", "Generic CUPS-PDF Printer", "cups-pdf:/"}};
  StoredPrinter stored(files, PrinterIni());
  PrinterChoiceForm choice(stored, dialogs.printers);
  for (const int percent : {100, 200}) {
    const LettersAt letters(percent);
    PrinterChoiceDialog pictured(choice, nullptr);
    SavePicture(pictured, QStringLiteral("printer_choice"), percent);
  }
}

TEST_F(PrintPictures, TheBoxToAbandon) {
  for (const int percent : {100, 200}) {
    const LettersAt letters(percent);
    AbortBox pictured(QStringLiteral("Carnetel - CARNETEL.DAN"), nullptr);
    SavePicture(pictured, QStringLiteral("print_abort"), percent);
  }
}

}  // namespace
}  // namespace carnetel::desktop
