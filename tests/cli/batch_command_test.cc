#include "tests/cli/cli_testing.h"

namespace carnetel {
namespace {

using BatchCommandTest = CliTest;

TEST_F(BatchCommandTest, RunsTheCommandsOfAScriptOnOneOpenDirectory) {
  SetFile("/t/script",
          "# a new directory\n"
          "create --description 'Mes clients'\r\n"
          "\n"
          "add Ste1=\"Dupont & Fils\" Ville=Saint\\ Malo --mark\n"
          "add Nom=Bez   # behind a command\n"
          "list");
  const CliOutcome outcome = On({"batch", "/t/script"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(outcome.out, "1\n1\n1   Bez\n2 * Dupont & Fils\n");
  EXPECT_EQ(guarded_.size(), 1U);
  ExpectConsistent();
}

TEST_F(BatchCommandTest, ReadsStandardInputWithoutAScript) {
  input_ = "create\nadd Nom=Bez\nlist\n";
  EXPECT_EQ(On({"--quiet", "batch"}).out, "1\n1   Bez\n");
}

TEST_F(BatchCommandTest, AByteOrderMarkInFrontOfTheScriptIsNoText) {
  SetFile("/t/script",
          "\xEF\xBB\xBF"
          "create\nadd Nom=Bez\n");
  EXPECT_EQ(On({"--quiet", "batch", "/t/script"}).out, "1\n");
}

TEST_F(BatchCommandTest, StopsAtTheFirstFailureWithItsLine) {
  Done({"create"});
  SetFile("/t/script", "add Nom=Un\n\nshow 7\nadd Nom=Deux\n");
  const CliOutcome outcome = On({"batch", "/t/script"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "Erreur (ligne 3) : pas de fiche à la ligne 7\n");
  EXPECT_EQ(Done({"list"}), "1   Un\n");
  const CliOutcome json = On({"--json", "batch", "/t/script"});
  EXPECT_EQ(json.err, "{\"error\":\"ligne 3 : pas de fiche à la ligne 7\"}\n");
}

TEST_F(BatchCommandTest, KeepGoingRunsTheRestAndFailsAtTheEnd) {
  Done({"create"});
  SetFile("/t/script", "add Nom='Un\nfoo\nlist --letter\nadd Nom=Deux\n");
  const CliOutcome outcome = On({"batch", "/t/script", "--keep-going"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, "1\n");
  EXPECT_EQ(outcome.err,
            "Erreur (ligne 1) : guillemet non fermé\n"
            "Erreur (ligne 2) : commande inconnue : foo\n"
            "Erreur (ligne 3) : l'option --letter demande une valeur\n");
  EXPECT_EQ(On({"batch", "/t/script"}).status, 2);
}

TEST_F(BatchCommandTest, OptionsOfTheRunAndScriptsDoNotBelongIntoALine) {
  Done({"create"});
  for (const char* line : {"-d /d/AUTRE create", "list --json", "batch", "--yes delete 1"}) {
    input_ = std::string(line) + "\n";
    EXPECT_EQ(On({"batch"}).status, 2) << line;
  }
  EXPECT_FALSE(files_.Exists("/d/AUTRE.DAN"));
}

TEST_F(BatchCommandTest, AnswersQuestionsOfAllLinesWithYes) {
  Done({"create"});
  Done({"add", "Nom=Bez"});
  SetFile("/t/script", "delete 1\nadd Nom=Autre\n");
  EXPECT_EQ(On({"batch", "/t/script"}).status, 1);
  EXPECT_EQ(On({"--yes", "batch", "/t/script"}).status, 0);
  EXPECT_EQ(Done({"list"}), "1   Autre\n");
}

TEST_F(BatchCommandTest, ImportExportCheckAndDestroyWorkBetweenOtherCommands) {
  SetFile("/t/f.csv", "Zola\r\nHugo\r\n");
  SetFile("/t/script",
          "create\n"
          "add Nom=Bez --mark\n"
          "import /t/f.csv --columns Nom\n"
          "check\n"
          "mark 2\n"
          "export /t/s.csv\n"
          "list\n"
          "destroy /d/CLIENTS\n"
          "create\n"
          "list\n");
  const CliOutcome outcome = On({"--yes", "--quiet", "batch", "/t/script"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(outcome.out,
            "1\n2 fiches transférées\nAucune incohérence.\n2 fiches marquées\n"
            "2 fiches transférées\n1 * Bez\n2 * Hugo\n3   Zola\n");
  EXPECT_EQ(TextOf("/t/s.csv"), "Bez\r\nHugo\r\n");
  ExpectConsistent();
}

TEST_F(BatchCommandTest, CardsFromInputNeedAScriptFile) {
  Done({"create"});
  input_ = "add -\n{\"fields\":{\"Nom\":\"x\"}}\n";
  EXPECT_EQ(On({"batch"}).status, 1);
  SetFile("/t/script", "add -\nlist\n");
  input_ = "{\"fields\":{\"Nom\":\"x\"}}\n";
  EXPECT_EQ(On({"batch", "/t/script"}).out, "1\n1   x\n");
}

TEST_F(BatchCommandTest, AnInterruptedScriptEndsProperly) {
  Done({"create"});
  SetFile("/t/script", "add Nom=Un\nadd Nom=Deux\n");
  interrupt_after_ = 1;
  EXPECT_EQ(On({"batch", "/t/script"}).status, 1);
  interrupt_after_ = -1;
  EXPECT_EQ(Done({"list"}), "1   Un\n");
  ExpectConsistent();
}

TEST_F(BatchCommandTest, AScriptThatIsNotThereIsRefused) {
  EXPECT_EQ(On({"batch", "/t/absent"}).err, "Erreur : Accès au fichier /t/absent impossible\n");
}

}  // namespace
}  // namespace carnetel
