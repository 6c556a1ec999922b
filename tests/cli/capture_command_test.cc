#include "tests/cli/cli_testing.h"
#include "tests/transfer/capture_testing.h"

namespace carnetel {
namespace {

class CaptureCommandTest : public CliTest {
 protected:
  void SetUp() override {
    Done({"create"});
    SetFile("/t/capture.dat", CaptureBytes({.company = "gamma", .first_number = "01.40"}) +
                                  CaptureBytes({.company = "\x82toile"}) +
                                  CaptureBytes({.company = "beta", .town = "Orl\x82\x61ns"}));
  }
};

TEST_F(CaptureCommandTest, AddsEveryRecordAndPrintsTheirNumber) {
  const CliOutcome outcome = On({"capture", "/t/capture.dat"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, "3 fiche(s) créée(s)\n");
  EXPECT_EQ(outcome.err, "");
  EXPECT_EQ(Done({"list"}), "1   ATOILE\n2   BETA\n3   GAMMA\n");
  const std::string card = Done({"--json", "show", "2"});
  EXPECT_NE(card.find("\"Ville\":\"Orléans\""), std::string::npos) << card;
  ExpectConsistent();
}

TEST_F(CaptureCommandTest, PrintsJson) {
  EXPECT_EQ(Done({"--json", "capture", "/t/capture.dat"}), "{\"cards\":3}\n");
}

TEST_F(CaptureCommandTest, ThePrefixGoesInFrontOfTheNumbers) {
  Done({"capture", "/t/capture.dat", "--prefix", "0,"});
  const std::string card = Done({"--json", "show", "3"});
  EXPECT_NE(card.find("\"Tel1\":\"0,01:40\""), std::string::npos) << card;
  Done({"capture", "/t/capture.dat", "--prefix", "?"});
  const std::string other = Done({"--json", "show", "6"});
  EXPECT_NE(other.find("\"Tel1\":\"01:40\""), std::string::npos) << other;
}

TEST_F(CaptureCommandTest, AFileThatIsNoneIsRefused) {
  SetFile("/t/court.dat", std::string(155, 'A'));
  const std::string reason =
      "Echec de l'enrichissement. Vérifiez le format du fichier de capture par l'option Editer.";
  ExpectRefused({"capture", "/t/court.dat"}, 1, reason);
  ExpectRefused({"capture", "/t/rien.dat"}, 1, reason);
  ExpectRefused({"capture", "/d/CLIENTS.DAN"}, 1,
                "Impossible de transférer le fichier /d/CLIENTS.DAN sur lui-même");
}

TEST_F(CaptureCommandTest, AnInterruptFinishesTheRecordAtHand) {
  interrupt_after_ = 1;
  const CliOutcome outcome = On({"capture", "/t/capture.dat"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, "2 fiche(s) créée(s)\n");
  EXPECT_EQ(outcome.err, "Erreur : interrompu\n");
  interrupt_after_ = -1;
  ExpectConsistent();
}

TEST_F(CaptureCommandTest, AFullDiskIsToldWithStatus1) {
  disk_.FillDisk();
  const CliOutcome outcome = On({"capture", "/t/capture.dat"});
  disk_.Heal();
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, "");
  EXPECT_NE(outcome.err.find("Echec de l'enrichissement."), std::string::npos) << outcome.err;
  // The next opening finds room to heal.
  EXPECT_EQ(Done({"list"}), "");
  ExpectConsistent();
}

TEST_F(CaptureCommandTest, AScriptGoesOnWithTheDirectory) {
  input_ = "capture /t/capture.dat\nlist --letter B\n";
  EXPECT_EQ(Done({"batch"}), "3 fiche(s) créée(s)\n2   BETA\n");
}

TEST_F(CaptureCommandTest, ADirectoryThatIsNotThereIsNotMade) {
  EXPECT_EQ(Run({"-d", "/d/AUTRE", "capture", "/t/capture.dat"}).status, 1);
  EXPECT_FALSE(files_.Exists("/d/AUTRE.DAN"));
}

}  // namespace
}  // namespace carnetel
