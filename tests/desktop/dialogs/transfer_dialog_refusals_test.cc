// What the dialog of imports and exports refuses or asks before anything is touched, by its texts.
#include "tests/desktop/dialogs/transfer_dialog_fixture.h"

namespace carnetel::desktop {
namespace {

using TransferDialogRefusals = TransferDialogTest;

TEST_F(TransferDialogRefusals, ASourceThatIsNotThereIsRefused) {
  Open(kImport);
  TypePath("source", "/none.csv");
  PressNamed(*dialog, "action");
  EXPECT_EQ(Told(), QStringList{"Importation - Gestion et Paramétrage|"
                                "Accès au fichier /none.csv impossible"});
  ExpectStays("source");
}

TEST_F(TransferDialogRefusals, ATransferOntoItselfIsRefused) {
  SetFile(kDirectory);
  Open(kExport);
  TypePath("destination", kDirectory);
  PressKey(Qt::Key_Return);
  EXPECT_EQ(Told(),
            QStringList{"Exportation - Gestion et Paramétrage|"
                        "Impossible de transférer le fichier /home/CARNETEL.DAN sur lui-même"});
  ExpectStays("destination");
}

TEST_F(TransferDialogRefusals, AnImportFromADirectoryNeedsItsExtension) {
  SetFile("/in.csv");
  Open(kImport);
  TypePath("source", "/in.csv");
  Pick(*dialog, "type", 2);
  PressNamed(*dialog, "action");
  EXPECT_EQ(Told(), QStringList{"Importation - Gestion et Paramétrage|le fichier /in.csv est "
                                "incompatible avec le type de transfer choisi."});
  ExpectStays("source");
}

TEST_F(TransferDialogRefusals, AnExportToADirectoryGetsItsExtensionWithoutAWord) {
  SetFile(kDirectory);
  Open(kExport);
  TypePath("destination", "/home/SUB.csv");
  Pick(*dialog, "type", 2);
  PressNamed(*dialog, "action");
  EXPECT_EQ(Told(), QStringList());
  EXPECT_EQ(Path("destination"), "/home/SUB.DAN");
  ASSERT_EQ(jobs.size(), 1u);
  EXPECT_EQ(jobs[0].destination, "/home/SUB.DAN");
}

TEST_F(TransferDialogRefusals, ADoubtfulTypeIsAskedAbout) {
  SetFile("/in.dbf");
  const QStringList question = {
      "Importation - Gestion et Paramétrage|Le fichier /in.dbf est incompatible avec le type de "
      "transfer choisi.\nDésirez-vous poursuivre l'opération ?"};
  Open(kImport);
  TypePath("source", "/in.dbf");
  Pick(*dialog, "type", 0);
  script.answers = {MessageButton::kNo};
  PressNamed(*dialog, "action");
  EXPECT_EQ(Told(), question);
  ExpectStays("source");
  script.answers = {MessageButton::kYes};
  PressNamed(*dialog, "action");
  EXPECT_EQ(Told(), question);
  EXPECT_EQ(jobs.size(), 1u);
}

TEST_F(TransferDialogRefusals, ADirectoryOfAnotherSeatIsRefused) {
  SetFile(kDirectory);
  SetOwner("/data/IN.DAN", 3);
  Open(kImport, 2);
  TypePath("source", "/data/IN.DAN");
  PressNamed(*dialog, "action");
  EXPECT_EQ(Told(), QStringList{"Importation - Gestion et Paramétrage|Accès refusé, Carnetel privé "
                                "de:   (Poste N° 03)"});
  ExpectStays("source");
}

// The path edited last is not the one that had the focus last.
TEST_F(TransferDialogRefusals, ARefusalReturnsToThePathEditedLast) {
  Open(kImport);
  TypePath("source", "/none.csv");
  Named(*dialog, "destination")->setFocus(Qt::TabFocusReason);
  PressKey(Qt::Key_Return);
  ExpectStays("source");
  browsed = "/home/OTHER.DAN";
  Named(*dialog, "destination")->setFocus(Qt::TabFocusReason);
  PressNamed(*dialog, "browse");
  EXPECT_EQ(FocusName(), "source");
  PressKey(Qt::Key_Return);
  ExpectStays("destination");
}

}  // namespace
}  // namespace carnetel::desktop
