// "Installation de l'imprimante": how the chosen printer is kept, which ones are offered, and which
// of them is selected.
#include "printing/printer_choice.h"

#include "tests/printing/printing_testing.h"

namespace carnetel {
namespace {

using Texts = std::vector<std::string>;

const InstalledPrinter kLaser = {"Laser", "HP LaserJet 4", "usb://1"};
const InstalledPrinter kMatrix = {"Matricielle", "Epson LX", "lpt1"};
const InstalledPrinter kCapture = {"Télécopieur", "CAPTURE FAX DROV", "FAX:"};

class PrinterChoiceTest : public ::testing::Test {
 protected:
  static constexpr char kFile[] = "/home/CARNETEL.INI";

  FakeClock clock{1'000'000'000};
  MemoryFileSystem files{clock};
  FaultFileSystem faults{files};
  StoredPrinter stored{faults, kFile};
  FakePrinters printers;
};

TEST_F(PrinterChoiceTest, TheFileIsThatOfTheProgramInItsFolder) {
  EXPECT_EQ(PrinterFile("/home/", "CARNETEL"), "/home/CARNETEL.INI");
}

TEST_F(PrinterChoiceTest, NothingStoredIsThreeSigns) {
  EXPECT_EQ(stored.Text(), "@@@");
  EXPECT_EQ(stored.Read().name, "");
}

TEST_F(PrinterChoiceTest, APrinterIsStoredWithDriverAndPort) {
  EXPECT_TRUE(stored.Write(kLaser));
  EXPECT_EQ(UserProfile(files, kFile).Text("devices", "Printer", ""),
            "Laser,HP LaserJet 4,usb://1");
  EXPECT_EQ(stored.Text(), "Laser sur usb://1");
  EXPECT_EQ(stored.Read().driver, "HP LaserJet 4");
}

TEST_F(PrinterChoiceTest, TheFilesOtherSettingsStay) {
  files.SetContents(kFile, AsBytes("[General]\nUserName=Zoé\n[devices]\nPrinter=A,B,C\n"));
  EXPECT_TRUE(stored.Write(kMatrix));
  EXPECT_EQ(AsChars(files.Contents(kFile)),
            "[General]\nUserName=Zoé\n[devices]\nPrinter=Matricielle,Epson LX,lpt1\n");
}

TEST_F(PrinterChoiceTest, ACommaInTheDriverIsPartOfIt) {
  EXPECT_TRUE(stored.Write({"Laser", "HP, Color, 4", "usb://1"}));
  EXPECT_EQ(stored.Read().name, "Laser");
  EXPECT_EQ(stored.Read().driver, "HP, Color, 4");
  EXPECT_EQ(stored.Read().port, "usb://1");
}

TEST_F(PrinterChoiceTest, AnEntryWithoutADriverHasNone) {
  files.SetContents(kFile, AsBytes("[devices]\nPrinter=Laser,usb://1\n"));
  EXPECT_EQ(stored.Read().driver, "");
  EXPECT_EQ(stored.Text(), "Laser sur usb://1");
}

TEST_F(PrinterChoiceTest, AnEntryWithoutCommasIsNoPrinter) {
  files.SetContents(kFile, AsBytes("[devices]\nPrinter=Laser\n"));
  EXPECT_EQ(stored.Text(), "@@@");
}

TEST_F(PrinterChoiceTest, AFileThatCannotBeWrittenIsTold) {
  faults.StopAfter(0);
  EXPECT_FALSE(stored.Write(kLaser));
  EXPECT_EQ(stored.Text(), "@@@");
}

TEST_F(PrinterChoiceTest, RowsAreNamesAndPorts) {
  printers.installed = {kLaser, kMatrix};
  const PrinterChoiceForm form(stored, printers);
  EXPECT_TRUE(form.has_printers());
  EXPECT_EQ(form.Rows(), (Texts{"Laser,usb://1", "Matricielle,lpt1"}));
}

TEST_F(PrinterChoiceTest, WithoutPrintersTheFormDoesNotOpen) {
  PrinterChoiceForm form(stored, printers);
  EXPECT_FALSE(form.has_printers());
  EXPECT_EQ(form.selected(), -1);
}

TEST_F(PrinterChoiceTest, TheFirstRowIsSelectedWhenNothingIsStored) {
  printers.installed = {kLaser, kMatrix};
  EXPECT_EQ(PrinterChoiceForm(stored, printers).selected(), 0);
}

TEST_F(PrinterChoiceTest, TheStoredRowIsSelected) {
  printers.installed = {kLaser, kMatrix};
  EXPECT_TRUE(stored.Write({"Matricielle", "another driver", "lpt1"}));
  EXPECT_EQ(PrinterChoiceForm(stored, printers).selected(), 1);
}

TEST_F(PrinterChoiceTest, TheSamePrinterOnAnotherPortIsAnotherRow) {
  printers.installed = {kLaser, {"Laser", "HP LaserJet 4", "usb://2"}};
  EXPECT_TRUE(stored.Write({"Laser", "HP LaserJet 4", "usb://2"}));
  EXPECT_EQ(PrinterChoiceForm(stored, printers).selected(), 1);
  EXPECT_TRUE(stored.Write({"Laser", "HP LaserJet 4", "usb://3"}));
  EXPECT_EQ(PrinterChoiceForm(stored, printers).selected(), 0);
}

TEST_F(PrinterChoiceTest, TheCaptureDriverIsLeftOut) {
  printers.installed = {kCapture, kLaser, kMatrix};
  EXPECT_EQ(PrinterChoiceForm(stored, printers).Rows(),
            (Texts{"Laser,usb://1", "Matricielle,lpt1"}));
}

TEST_F(PrinterChoiceTest, AStoredCaptureDriverIsLeftOutAndTheFirstRowSelected) {
  printers.installed = {kLaser, kMatrix, kCapture};
  EXPECT_TRUE(stored.Write(kCapture));
  const PrinterChoiceForm form(stored, printers);
  EXPECT_EQ(form.Rows(), (Texts{"Laser,usb://1", "Matricielle,lpt1"}));
  EXPECT_EQ(form.selected(), 0);
}

TEST_F(PrinterChoiceTest, ADriverThatOnlyResemblesItIsOffered) {
  printers.installed = {{"Laser", "CAPTURE FAX DROV 2", "usb://1"}};
  EXPECT_EQ(PrinterChoiceForm(stored, printers).Rows(), Texts{"Laser,usb://1"});
}

TEST_F(PrinterChoiceTest, WithTheCaptureDriverAloneTheListIsEmpty) {
  printers.installed = {kCapture};
  PrinterChoiceForm form(stored, printers);
  EXPECT_TRUE(form.has_printers());
  EXPECT_EQ(form.Rows(), Texts{});
  EXPECT_EQ(form.selected(), -1);
  form.Confirm();
  form.ShowProperties();
  EXPECT_FALSE(files.Exists(kFile));
  EXPECT_EQ(printers.properties_shown, Texts{});
}

TEST_F(PrinterChoiceTest, TheSelectedRowIsKept) {
  printers.installed = {kCapture, kLaser, kMatrix};
  PrinterChoiceForm form(stored, printers);
  form.Select(1);
  form.Confirm();
  EXPECT_EQ(stored.Text(), "Matricielle sur lpt1");
}

TEST_F(PrinterChoiceTest, ARowThatThereIsNotIsNotSelected) {
  printers.installed = {kLaser, kMatrix};
  PrinterChoiceForm form(stored, printers);
  form.Select(1);
  for (const int row : {-1, 2}) {
    form.Select(row);
    EXPECT_EQ(form.selected(), 1) << row;
  }
}

TEST_F(PrinterChoiceTest, PropertiesAreThoseOfTheSelectedPrinter) {
  printers.installed = {kLaser, kMatrix};
  PrinterChoiceForm form(stored, printers);
  form.Select(1);
  form.ShowProperties();
  EXPECT_EQ(printers.properties_shown, Texts{"Matricielle"});
  EXPECT_FALSE(files.Exists(kFile));
}

}  // namespace
}  // namespace carnetel
