#include "tests/cli/cli_testing.h"

namespace carnetel {
namespace {

class ListCommandsTest : public CliTest {
 protected:
  void SetUp() override {
    Done({"create"});
    for (const char* name : {"Ste1=Alpha", "Ste1=9 Telecom", "Ste1=Zorro", "Nom=abel"}) {
      Done({"add", name});
    }
  }
};

TEST_F(ListCommandsTest, ListShowsRowMarkAndLabel) {
  Done({"mark", "4"});
  EXPECT_EQ(Done({"list"}),
            "1   9 Telecom\n"
            "2   abel\n"
            "3   Alpha\n"
            "4 * Zorro\n");
  EXPECT_EQ(Done({"list", "--marked"}), "4 * Zorro\n");
}

TEST_F(ListCommandsTest, NumbersAreAlignedToTheRight) {
  for (int i = 0; i < 6; ++i) Done({"add", "Ste1=B"});
  const std::string list = Done({"list"});
  EXPECT_TRUE(list.starts_with(" 1   9 Telecom\n 2   abel\n")) << list;
  EXPECT_TRUE(list.ends_with("\n10   Zorro\n")) << list;
}

TEST_F(ListCommandsTest, ALetterShowsItsCardsUnderTheirRows) {
  EXPECT_EQ(Done({"list", "--letter", "A"}), "2   abel\n3   Alpha\n");
  EXPECT_EQ(Done({"list", "--letter", "z"}), "4   Zorro\n");
  EXPECT_EQ(Done({"list", "--letter", "9"}), "1   9 Telecom\n");
  EXPECT_EQ(Done({"list", "--letter", "B"}), "");
  for (const char* letter : {"", "AB", "é", "*"}) {
    EXPECT_EQ(On({"list", "--letter", letter}).status, 2) << letter;
  }
}

TEST_F(ListCommandsTest, CardsThatNoViewShowsAreCounted) {
  Done({"add", "Ste1=Éclair"});
  const CliOutcome outcome = On({"list"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out.find("Éclair"), std::string::npos);
  EXPECT_TRUE(outcome.out.starts_with("2   9 Telecom\n")) << outcome.out;
  EXPECT_TRUE(outcome.err.starts_with("1 fiche n'apparaît dans aucune liste")) << outcome.err;
  EXPECT_EQ(On({"--quiet", "list"}).err, "");
  EXPECT_EQ(On({"list", "--letter", "A"}).err, "");
  EXPECT_EQ(Done({"show", "1"}), "Fiche 1 (@3840)\n  Ste1     Éclair\n");
}

TEST_F(ListCommandsTest, LabelsFollowTheProfile) {
  Done({"edit", "3", "Prenom=Anne", "Nom=Bez", "Qualite=Mme"});
  SetFile("/home/u/profile.ini", "[PhoneBook-DROV]\nStyleAffSte=2\n");
  EXPECT_EQ(Done({"find", "Nom=Bez"}), "3   Bez Alpha\n");
  SetFile("/home/u/profile.ini", "[PhoneBook-DROV]\nIdindex=10\nStyleAffList=0\n");
  EXPECT_EQ(Done({"list"}),
            "1   9 Telecom\n"
            "2   abel\n"
            "3   Mme Anne Bez\n"
            "4   Zorro\n");
}

TEST_F(ListCommandsTest, ListWithJsonPrintsWholeCards) {
  EXPECT_EQ(Done({"--json", "list", "--letter", "Z"}),
            R"({"row":4,"offset":2304,"marked":false,"groups":[],"label":"Zorro",)"
            R"("fields":{"Ste1":"Zorro"}})"
            "\n");
}

TEST_F(ListCommandsTest, FindPrintsTheFirstHitOrAllInIndexOrder) {
  Done({"add", "Ste1=Azur", "Ville=Nice"});
  Done({"add", "Ste1=Zen", "Ville=Nice"});
  EXPECT_EQ(Done({"find", "Ste1=a"}), "3   Alpha\n");
  EXPECT_EQ(Done({"find", "Ste1=a", "--all"}), "3   Alpha\n4   Azur\n");
  EXPECT_EQ(Done({"find", "Ville=ic", "--all"}), "4   Azur\n5   Zen\n");
  EXPECT_EQ(Done({"find", "ville=NICE", "Ste1=Z"}), "5   Zen\n");
  EXPECT_EQ(Done({"--json", "find", "Ville=nice"}),
            R"({"row":4,"offset":3840,"marked":false,"groups":[],"label":"Azur",)"
            R"("fields":{"Ste1":"Azur","Ville":"Nice"}})"
            "\n");
}

TEST_F(ListCommandsTest, FindWithoutAHitIsAFailure) {
  const CliOutcome outcome = On({"--json", "find", "Ste1=Q", "--all"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.err, "{\"error\":\"Aucune fiche trouvée...\"}\n");
  const CliOutcome empty = On({"find", "Ste1="});
  EXPECT_EQ(empty.status, 1);
  EXPECT_EQ(empty.err, "Erreur : Il faut définir un ou plusieurs champs pour la recherche\n");
}

TEST_F(ListCommandsTest, FindByPostalCodeReachesCardsWithEitherCode) {
  SetFile("/t/f.csv", "Un;75001\r\n");
  Done({"import", "/t/f.csv", "--columns", "Nom,CP"});
  Done({"add", "Nom=Deux", "#5=75001"});
  EXPECT_EQ(Done({"find", "CP=7500", "--all"}), "4   Deux\n5   Un\n");
}

TEST_F(ListCommandsTest, FindLeavesTheStoresAsTheyAre) {
  const auto before = Family();
  Done({"find", "Ste1=a", "--all"});
  EXPECT_EQ(Family(), before);
}

TEST_F(ListCommandsTest, MarksAddUp) {
  EXPECT_EQ(Done({"mark", "1", "@768"}), "2 fiches marquées\n");
  EXPECT_EQ(Done({"mark", "1"}), "2 fiches marquées\n");
  EXPECT_EQ(Done({"--json", "mark", "--all"}), "{\"marked\":4}\n");
  EXPECT_EQ(Done({"--json", "unmark", "2", "2"}), "{\"marked\":3}\n");
  EXPECT_EQ(LoadLe16(files_.Contents("/d/CLIENTS.ADR"), 130), 3);
  EXPECT_EQ(Done({"unmark", "--all"}), "0 fiche marquée\n");
  EXPECT_EQ(On({"mark"}).status, 2);
  EXPECT_EQ(On({"unmark", "1", "--all"}).status, 2);
}

TEST_F(ListCommandsTest, AStaleCounterOfMarksIsNotBelieved) {
  std::string address = TextOf("/d/CLIENTS.ADR");
  address[130] = 77;
  SetFile("/d/CLIENTS.ADR", address);
  EXPECT_EQ(Done({"mark", "1"}), "1 fiche marquée\n");
}

TEST_F(ListCommandsTest, AListThatIsInterruptedIsNotDone) {
  interrupt_after_ = 1;
  const CliOutcome outcome = On({"list"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, "1   9 Telecom\n2   abel\n");
  EXPECT_EQ(outcome.err, "Erreur : interrompu\n");
}

}  // namespace
}  // namespace carnetel
