#include "tests/cli/cli_testing.h"

namespace carnetel {
namespace {

// The commands that work on the view of a group instead of the whole file.
class GroupViewCommandsTest : public CliTest {
 protected:
  // Nord (members 2, 4, 5 alone) and Tout (members 2, 4, shown with the whole file) of five cards.
  void SetUp() override {
    Done({"create"});
    for (const char* name : {"Ste1=A", "Ste1=B", "Ste1=C", "Ste1=D", "Ste1=E"}) {
      Done({"add", name, "Ville=Lille"});
    }
    Done({"mark", "2", "4"});
    Done({"group", "create", "Tout", "--whole"});
    Done({"mark", "5"});
    Done({"group", "create", "Nord"});
    Done({"unmark", "--all"});
  }

  std::string Marked(const std::string& group) {
    return Done({"list", "--marked", "--group", group});
  }
  // Whether an entry has a bit, straight from the file.
  bool Bit(size_t row, int bit) {
    const std::vector<std::byte> address = files_.Contents("/d/CLIENTS.ADR");
    const size_t place = 320 + (row - 1) * 16 + 4 + static_cast<size_t>(bit / 8);
    return (std::to_integer<int>(address[place]) & (1 << (bit % 8))) != 0;
  }
  int Counter(int bit) {
    return LoadLe16(files_.Contents("/d/CLIENTS.ADR"), 128 + 2 * static_cast<size_t>(bit));
  }
};

constexpr int kTout = 2;
constexpr int kNord = 4;

TEST_F(GroupViewCommandsTest, ListShowsTheMembersUnderTheirRowsInTheFile) {
  Done({"mark", "4", "--group", "nord"});
  Done({"mark", "1"});
  EXPECT_EQ(Done({"list", "--group", "NORD"}), "2   B\n4 * D\n5   E\n");
  EXPECT_EQ(Done({"list", "--group", "Nord", "--marked"}), "4 * D\n");
  EXPECT_EQ(Done({"list", "--group", "Nord", "--letter", "E"}), "5   E\n");
  EXPECT_EQ(Done({"list", "--group", "Nord", "--letter", "A"}), "");
  EXPECT_EQ(Done({"list"}), "1 * A\n2   B\n3   C\n4   D\n5   E\n");
  EXPECT_EQ(Done({"--json", "list", "--group", "Nord", "--marked"}),
            R"({"row":4,"offset":3072,"marked":true,"groups":["Tout","Nord"],"label":"D",)"
            R"("fields":{"Ste1":"D","Ville":"Lille"}})"
            "\n");
  ExpectRefused({"list", "--group", "Sud"}, 1, "pas de groupe « Sud »");
}

TEST_F(GroupViewCommandsTest, ListOfAWholeFileGroupShowsAllWithItsOwnMarks) {
  Done({"mark", "1", "4", "--group", "Tout"});
  EXPECT_EQ(Done({"list", "--group", "Tout"}), "1 * A\n2   B\n3   C\n4 * D\n5   E\n");
  EXPECT_EQ(Done({"list", "--marked"}), "");
}

TEST_F(GroupViewCommandsTest, MarksOfAGroupAreItsOwn) {
  EXPECT_EQ(Done({"mark", "2", "@3072", "--group", "Nord"}), "2 fiches marquées\n");
  EXPECT_TRUE(Bit(2, kNord + 1));
  EXPECT_FALSE(Bit(2, 1));
  EXPECT_FALSE(Bit(2, kTout + 1));
  EXPECT_EQ(Counter(kNord + 1), 2);
  EXPECT_EQ(Counter(1), 0);
  EXPECT_EQ(Done({"--json", "unmark", "2", "--group", "Nord"}), "{\"marked\":1}\n");
  EXPECT_EQ(Counter(kNord + 1), 1);
  EXPECT_EQ(Done({"mark", "1"}), "1 fiche marquée\n");
  EXPECT_EQ(Marked("Nord"), "4 * D\n");
  ExpectConsistent();
}

TEST_F(GroupViewCommandsTest, ACardThatIsNotShownIsRefused) {
  const std::string reason = "la fiche de la ligne 3 n'est pas dans le groupe";
  ExpectRefused({"mark", "2", "3", "--group", "Nord"}, 1, reason);
  ExpectRefused({"unmark", "2", "@2304", "--group", "Nord"}, 1, reason);
  ExpectRefused({"--yes", "delete", "2", "3", "--group", "Nord"}, 1, reason);
  ExpectRefused({"mark", "6", "--group", "Nord"}, 1, "pas de fiche à la ligne 6");
  ExpectRefused({"mark", "x", "--group", "Nord"}, 2, "« x » n'est ni une ligne ni une @position");
  ExpectRefused({"mark", "1", "--group", "Sud"}, 1, "pas de groupe « Sud »");
}

TEST_F(GroupViewCommandsTest, MarkAllMarksTheMembers) {
  EXPECT_EQ(Done({"mark", "--all", "--group", "Nord"}), "3 fiches marquées\n");
  EXPECT_EQ(Marked("Nord"), "2 * B\n4 * D\n5 * E\n");
  EXPECT_FALSE(Bit(1, kNord + 1));
  EXPECT_EQ(Done({"mark", "--all", "--group", "Tout"}), "2 fiches marquées\n");
  EXPECT_EQ(Marked("Tout"), "2 * B\n4 * D\n");
  EXPECT_EQ(Done({"unmark", "--all", "--group", "Nord"}), "0 fiche marquée\n");
  EXPECT_EQ(Marked("Nord"), "");
  EXPECT_EQ(Marked("Tout"), "2 * B\n4 * D\n");
}

TEST_F(GroupViewCommandsTest, UnmarkAllTakesTheMarksOfOtherCardsShownToo) {
  Done({"mark", "1", "2", "--group", "Tout"});
  EXPECT_EQ(Done({"unmark", "--all", "--group", "Tout"}), "0 fiche marquée\n");
  EXPECT_EQ(Marked("Tout"), "");
}

TEST_F(GroupViewCommandsTest, SelectGoesOverTheMembersAlone) {
  Done({"mark", "1"});
  EXPECT_EQ(Done({"select", "--group", "nord", "Ste1<>D"}), "2 fiches marquées\n");
  EXPECT_EQ(Marked("Nord"), "2 * B\n5 * E\n");
  EXPECT_EQ(Done({"select", "--group", "Nord", "--add", "Ste1=D"}), "3 fiches marquées\n");
  EXPECT_EQ(Done({"--json", "select", "--group", "Nord", "Ste1=E"}), "{\"marked\":1}\n");
  EXPECT_EQ(Counter(kNord + 1), 1);
  EXPECT_EQ(Done({"select", "--group", "Tout", "*"}), "2 fiches marquées\n");
  EXPECT_EQ(Done({"list", "--marked"}), "1 * A\n");
  ExpectRefused({"select", "--group", "Sud", "Ste1=E"}, 1, "pas de groupe « Sud »");
  ExpectRefused({"select", "--group", "Nord", "--set", "Rien"}, 1,
                "pas de jeu de critères « Rien »");
}

TEST_F(GroupViewCommandsTest, SelectOfAGroupGoesToItsEnd) {
  interrupt_after_ = 0;
  const CliOutcome outcome = On({"select", "--group", "Nord", "*"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, "3 fiches marquées\n");
  EXPECT_EQ(outcome.err, "Erreur : interrompu\n");
  interrupt_after_ = -1;
  EXPECT_EQ(Marked("Nord"), "2 * B\n4 * D\n5 * E\n");
}

TEST_F(GroupViewCommandsTest, DeleteTakesCardsOutOfTheGroup) {
  Done({"mark", "2", "--group", "Nord"});
  const auto before = Family();
  const CliOutcome refused = On({"delete", "2", "--group", "Nord"});
  EXPECT_EQ(refused.status, 1);
  EXPECT_EQ(refused.err,
            "La fiche B va être détruite ... Non (--yes pour répondre oui)\n"
            "Erreur : rien n'est supprimé\n");
  EXPECT_EQ(Family(), before);
  const CliOutcome one = On({"--yes", "delete", "2", "--group", "Nord"});
  EXPECT_EQ(one.status, 0);
  EXPECT_EQ(one.err, "1 fiche a quitté le groupe\n");
  EXPECT_FALSE(Bit(2, kNord));
  EXPECT_FALSE(Bit(2, kNord + 1));
  EXPECT_TRUE(Bit(2, kTout));
  EXPECT_EQ(Counter(kNord + 1), 0);
  const CliOutcome two = On({"--yes", "delete", "4", "5", "4", "--group", "Nord"});
  EXPECT_EQ(two.err, "2 fiches ont quitté le groupe\n");
  EXPECT_EQ(Done({"list", "--group", "Nord"}), "");
  EXPECT_EQ(Done({"list"}), "1   A\n2   B\n3   C\n4   D\n5   E\n");
  EXPECT_EQ(TextOf("/d/CLIENTS.DAN").size(), 6U * 768);
  ExpectConsistent();
}

TEST_F(GroupViewCommandsTest, DeleteMarkedTakesTheMarkedMembersOut) {
  ExpectRefused({"--yes", "delete", "--marked", "--group", "Nord"}, 1,
                "Pas de sélection disponible");
  Done({"mark", "1"});
  Done({"mark", "2", "5", "--group", "Nord"});
  const CliOutcome asked = On({"delete", "--marked", "--group", "Nord"});
  EXPECT_EQ(asked.status, 1);
  EXPECT_TRUE(
      asked.err.starts_with("La totalité des fiches sélectionnées va être supprimée... Non"))
      << asked.err;
  const CliOutcome outcome = On({"--yes", "delete", "--marked", "--group", "Nord"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "2 fiches ont quitté le groupe\n");
  EXPECT_EQ(Done({"list", "--group", "Nord"}), "4   D\n");
  EXPECT_EQ(Done({"list", "--marked"}), "1 * A\n");
  EXPECT_EQ(Counter(kNord + 1), 0);
  ExpectConsistent();
}

TEST_F(GroupViewCommandsTest, DeleteNamesMembersAloneInAWholeFileGroupToo) {
  ExpectRefused({"--yes", "delete", "1", "--group", "Tout"}, 1,
                "la fiche de la ligne 1 n'est pas dans le groupe");
  Done({"mark", "1", "2", "--group", "Tout"});
  const CliOutcome outcome = On({"--yes", "delete", "--marked", "--group", "Tout"});
  EXPECT_EQ(outcome.err, "1 fiche a quitté le groupe\n");
  EXPECT_EQ(Marked("Tout"), "");
  EXPECT_FALSE(Bit(2, kTout));
  EXPECT_TRUE(Bit(4, kTout));
}

TEST_F(GroupViewCommandsTest, LeavingStopsWhenTheUserWantsIt) {
  Done({"mark", "--all", "--group", "Nord"});
  interrupt_after_ = 1;
  EXPECT_EQ(On({"--yes", "delete", "--marked", "--group", "Nord"}).status, 1);
  interrupt_after_ = -1;
  EXPECT_EQ(Done({"list", "--group", "Nord"}), "5 * E\n");
  ExpectConsistent();
}

// A group takes over the marks of the deleted one that had its bit pair.
TEST_F(GroupViewCommandsTest, InheritedMarksOfCardsThatAreNoMembersDoNotCount) {
  Done({"mark", "--all", "--group", "Nord"});
  Done({"--yes", "group", "delete", "Nord"});
  Done({"mark", "1", "2"});
  Done({"group", "create", "Neuf"});
  EXPECT_EQ(Marked("Neuf"), "2 * B\n");
  EXPECT_EQ(Done({"mark", "2", "--group", "Neuf"}), "1 fiche marquée\n");
  const CliOutcome outcome = On({"--yes", "delete", "--marked", "--group", "Neuf"});
  EXPECT_EQ(outcome.err, "1 fiche a quitté le groupe\n");
  EXPECT_EQ(Done({"list", "--group", "Neuf"}), "1   A\n");
  EXPECT_EQ(Done({"select", "--group", "Neuf", "*"}), "1 fiche marquée\n");
  EXPECT_EQ(Counter(kNord + 1), 1);
}

TEST_F(GroupViewCommandsTest, AStaleCounterOfAGroupIsNotBelieved) {
  std::string address = TextOf("/d/CLIENTS.ADR");
  address[128 + 2 * (kNord + 1)] = 77;
  SetFile("/d/CLIENTS.ADR", address);
  EXPECT_EQ(Done({"mark", "2", "--group", "Nord"}), "1 fiche marquée\n");
  EXPECT_EQ(Counter(kNord + 1), 1);
}

TEST_F(GroupViewCommandsTest, AScriptComesBackToTheWholeFile) {
  SetFile("/t/script",
          "mark 2 --group Nord\n"
          "mark 1\n"
          "add Ste1=F\n"
          "list --group Nord\n"
          "mark 1 --group Nord\n"
          "list --marked\n");
  const CliOutcome outcome = On({"batch", "/t/script", "--keep-going"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out,
            "1 fiche marquée\n1 fiche marquée\n6\n"
            "2 * B\n4   D\n5   E\n"
            "1 * A\n");
  EXPECT_EQ(outcome.err, "Erreur (ligne 5) : la fiche de la ligne 1 n'est pas dans le groupe\n");
  ExpectConsistent();
}

}  // namespace
}  // namespace carnetel
