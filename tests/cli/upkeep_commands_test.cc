#include "tests/cli/cli_testing.h"

namespace carnetel {
namespace {

class UpkeepCommands : public CliTest {
 protected:
  void AddThree() {
    Done({"create"});
    Done({"add", "Ste1=ALPHA", "Nom=ZOLA", "--mark"});
    Done({"add", "Ste1=BETA", "Nom=MARTIN"});
    Done({"add", "Ste1=GAMMA", "Nom=ALBERT", "--mark"});
  }
  // Row and mark of each line of the list.
  std::string Marks() {
    std::string marks;
    std::istringstream lines(Done({"--json", "list"}));
    for (std::string line; std::getline(lines, line);) {
      marks += line.find("\"marked\":true") != std::string::npos ? 'x' : '.';
    }
    return marks;
  }
};

TEST_F(UpkeepCommands, IndexSwitchesTheOrderAndKeepsMarksAndGroups) {
  AddThree();
  SetFile("/d/CLIENTS.LST", "layouts");
  EXPECT_EQ(Marks(), "x.x");
  EXPECT_EQ(Done({"index", "nom"}), "");
  EXPECT_EQ(Marks(), "x.x");
  const std::string cards = Done({"--json", "list"});
  EXPECT_LT(cards.find("ALBERT"), cards.find("MARTIN"));
  EXPECT_LT(cards.find("MARTIN"), cards.find("ZOLA"));
  EXPECT_EQ(TextOf("/home/u/profile.ini"), "[PhoneBook-DROV]\nIdindex=10\n");
  EXPECT_EQ(TextOf("/d/CLIENTS.LST"), "layouts");
  ExpectConsistent();
  Done({"index", "societe"});
  EXPECT_EQ(TextOf("/home/u/profile.ini"), "[PhoneBook-DROV]\nIdindex=0\n");
  EXPECT_EQ(Marks(), "x.x");
}

TEST_F(UpkeepCommands, IndexThatIsActiveAlreadyChangesNoFileOfTheFamily) {
  AddThree();
  const auto before = Family();
  Done({"index", "societe"});
  EXPECT_EQ(Family(), before);
  EXPECT_EQ(TextOf("/home/u/profile.ini"), "[PhoneBook-DROV]\nIdindex=0\n");
}

TEST_F(UpkeepCommands, IndexCountsForTheFollowingLinesOfAScript) {
  AddThree();
  input_ = "index nom\nshow 1\n";
  const CliOutcome outcome = On({"batch"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_NE(outcome.out.find("ALBERT"), std::string::npos) << outcome.out;
}

TEST_F(UpkeepCommands, IndexRefusesOtherWords) {
  Done({"create"});
  const CliOutcome outcome = On({"index", "ville"});
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.err, "Erreur : « ville » n'est pas un index : societe ou nom\n");
  EXPECT_FALSE(files_.Exists("/home/u/profile.ini"));
}

TEST_F(UpkeepCommands, IndexLeavesAllAsItIsWhenTheProfileCannotBeWritten) {
  AddThree();
  files_.SetContents("/home/u/verrou", {});
  const auto before = Family();
  const CliOutcome outcome =
      Run({"-d", "/d/CLIENTS", "--profile", "/home/u/verrou/profile.ini", "index", "nom"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "Erreur : le profil n'a pas pu être écrit\n");
  EXPECT_EQ(Family(), before);
}

TEST_F(UpkeepCommands, RecoverAddsEveryCardMarked) {
  Done({"create"});
  Done({"add", "Ste1=DEJA LA"});
  std::string source(768, 'x');
  for (const char* name : {"UN", "DEUX"}) {
    std::string card(768, '\0');
    card.replace(0, std::string_view(name).size(), name);
    source += card;
  }
  SetFile("/d/ABIME.DAN", source);
  EXPECT_EQ(Done({"recover", "/d/ABIME.DAN"}), "2 fiche(s) récupérée(s)\n");
  EXPECT_EQ(TextOf("/d/ABIME.DAN"), source);
  EXPECT_EQ(Marks(), ".xx");
  EXPECT_EQ(Done({"--json", "recover", "/d/ABIME.DAN"}), "{\"cards\":2}\n");
  EXPECT_EQ(Marks(), ".xxxx");
  ExpectConsistent();
}

TEST_F(UpkeepCommands, RecoverRefusesAMissingFileAFolderAndTheDirectoryItself) {
  AddThree();
  const auto before = Family();
  const std::vector<std::pair<std::string, std::string>> refusals = {
      {"/d/RIEN.DAN", "Accès au fichier /d/RIEN.DAN impossible"},
      {"/d", "Accès au fichier /d impossible"},
      {"/d/CLIENTS.DAN", "Impossible de transférer le fichier /d/CLIENTS.DAN sur lui-même"},
      {"/d/CLIENTS.I01", "Impossible de transférer le fichier /d/CLIENTS.I01 sur lui-même"}};
  for (const auto& [path, text] : refusals) {
    const CliOutcome outcome = On({"recover", path});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "Erreur : " + text + "\n");
  }
  EXPECT_EQ(Family(), before);
}

TEST_F(UpkeepCommands, RecoverOfAnEmptyFileAddsNothing) {
  Done({"create"});
  SetFile("/d/VIDE.DAN", "");
  EXPECT_EQ(Done({"recover", "/d/VIDE.DAN"}), "0 fiche(s) récupérée(s)\n");
  ExpectConsistent();
}

TEST_F(UpkeepCommands, AnInterruptedRecoveryKeepsWhatItAdded) {
  Done({"create"});
  SetFile("/d/ABIME.DAN", std::string(size_t{768} * 20, 'A'));
  interrupt_after_ = 5;
  const CliOutcome outcome = On({"recover", "/d/ABIME.DAN"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_NE(outcome.err.find("la récupération a été arrêtée"), std::string::npos) << outcome.err;
  interrupt_after_ = -1;
  EXPECT_GT(Marks().size(), 0U);
  EXPECT_LT(Marks().size(), 19U);
  ExpectConsistent();
}

}  // namespace
}  // namespace carnetel
