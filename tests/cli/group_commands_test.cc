#include "tests/cli/cli_testing.h"

namespace carnetel {
namespace {

constexpr size_t kGroupCount = 96;
constexpr size_t kRow0 = 176;
constexpr size_t kRowSize = 80;
constexpr size_t kSetName = 48;
constexpr size_t kSlot = 72;
constexpr size_t kMode = 77;

class GroupCommandsTest : public CliTest {
 protected:
  void SetUp() override {
    Done({"create"});
    for (const char* name : {"Ste1=Alpha", "Ste1=Beta", "Ste1=Gamma", "Ste1=Delta"}) {
      Done({"add", name});
    }
  }

  void Mark(const Words& rows) {
    Done({"unmark", "--all"});
    Words words = {"mark"};
    words.insert(words.end(), rows.begin(), rows.end());
    Done(words);
  }
  std::string Groups() { return Done({"--json", "group", "list"}); }
  static std::string Group(const std::string& name, int slot, int mode, int members) {
    return "{\"name\":\"" + name + "\",\"slot\":" + std::to_string(slot) +
           ",\"mode\":" + std::to_string(mode) + ",\"members\":" + std::to_string(members) + "}\n";
  }
  // Labels of the members.
  std::string Members(const std::string& group) {
    std::string members;
    std::istringstream lines(Done({"list", "--group", group}));
    for (std::string line; std::getline(lines, line);) {
      members += (members.empty() ? "" : " ") + line.substr(line.rfind(' ') + 1);
    }
    return members;
  }
  std::string Row(size_t row) {
    return TextOf("/d/CLIENTS.GRP").substr(kRow0 + row * kRowSize, kRowSize);
  }
};

TEST_F(GroupCommandsTest, CreateMakesAGroupOfTheMarkedCards) {
  EXPECT_EQ(Groups(), "");
  Mark({"1", "3"});
  const CliOutcome created = On({"group", "create", "Élus"});
  EXPECT_EQ(created.status, 0);
  EXPECT_EQ(created.out, "");
  EXPECT_EQ(created.err, "Groupe « Élus » : 2 fiches\n");
  EXPECT_EQ(On({"--quiet", "group", "create", "Tous", "--whole"}).err, "");
  EXPECT_EQ(Groups(), Group("Élus", 2, 0, 2) + Group("Tous", 4, 1, 2));
  EXPECT_EQ(Done({"group", "list"}),
            "Élus : 2 fiches (Fiches du groupe uniquement)\n"
            "Tous : 2 fiches (Fichier entier plus groupe sélectionné)\n");
  EXPECT_EQ(Members("élus"), "Alpha Delta");
  // The marks of the whole file stay, the group's own are none.
  EXPECT_EQ(Done({"list", "--marked"}), "1 * Alpha\n3 * Delta\n");
  EXPECT_EQ(Done({"list", "--marked", "--group", "Élus"}), "");
  ExpectConsistent();
}

TEST_F(GroupCommandsTest, CreateWritesTheRowOfTheGroup) {
  Done({"criteria", "save", "Été", "Ville=a"});
  Mark({"1"});
  Done({"group", "create", "Nord"});
  std::string criteria = TextOf("/d/CLIENTS.CRT");
  criteria[100] = 1;
  SetFile("/d/CLIENTS.CRT", criteria);
  Done({"group", "create", "\xC3\x89lus", "--whole"});
  EXPECT_EQ(TextOf("/d/CLIENTS.GRP")[kGroupCount], 3);
  EXPECT_EQ(Row(1).substr(0, 5), std::string("Nord\0", 5));
  EXPECT_EQ(Row(1).substr(kSetName, 9), std::string("Sans Nom\0", 9));
  EXPECT_EQ(Row(1).substr(kSlot, 6), std::string("\2\0\0\0\0\0", 6));
  EXPECT_EQ(Row(2).substr(0, 5), std::string("\x90lus\0", 5));
  // The entry of the window's list of sets, in its own code page.
  EXPECT_EQ(Row(2).substr(kSetName, 4), std::string("\xC9t\xE9\0", 4));
  EXPECT_EQ(Row(2).substr(kSlot, 6), std::string("\4\0\0\0\0\1", 6));
}

TEST_F(GroupCommandsTest, CreateIsRefusedWithoutMarksOrWithATakenName) {
  ExpectRefused({"group", "create", "Nord"}, 1, "Pas de sélection disponible");
  Mark({"1"});
  ExpectRefused({"group", "create", ""}, 1, "il faut un nom");
  ExpectRefused({"group", "create", "10 €"}, 1,
                "nom : le caractère « € » n'existe pas dans la page de codes des fiches (850)");
  Done({"group", "create", "Élus"});
  ExpectRefused({"group", "create", "éLUS"}, 1, "un groupe « éLUS » existe déjà");
  Done({"group", "create", "Elus"});
  EXPECT_EQ(Groups(), Group("Élus", 2, 0, 1) + Group("Elus", 4, 0, 1));
}

TEST_F(GroupCommandsTest, TheFortyFifthGroupIsRefused) {
  Mark({"1"});
  SetFile("/t/script", [] {
    std::string script;
    for (int i = 1; i <= 44; ++i) script += "group create G" + std::to_string(i) + "\n";
    return script;
  }());
  Done({"batch", "/t/script"});
  EXPECT_NE(Groups().find(R"({"name":"G44","slot":88,)"), std::string::npos);
  ExpectRefused({"group", "create", "G45"}, 1,
                "Création de groupe impossible. La liste est saturée !");
  // The limit is looked at first.
  Done({"unmark", "--all"});
  ExpectRefused({"group", "create", "G45"}, 1,
                "Création de groupe impossible. La liste est saturée !");
  Done({"--yes", "group", "delete", "G7"});
  Mark({"2"});
  Done({"group", "create", "Sept"});
  EXPECT_NE(Groups().find(R"({"name":"Sept","slot":14,)"), std::string::npos);
}

TEST_F(GroupCommandsTest, ReplaceTakesTheMarkedCardsInsteadOfTheOthers) {
  Mark({"1", "2"});
  Done({"group", "create", "Nord", "--whole"});
  Mark({"2", "3"});
  const CliOutcome outcome = On({"group", "replace", "NORD"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "Groupe « Nord » : 2 fiches\n");
  EXPECT_EQ(Groups(), Group("Nord", 2, 1, 2));
  EXPECT_NE(Done({"show", "3"}).find("Groupes  Nord"), std::string::npos);
  EXPECT_EQ(Done({"show", "1"}).find("Groupes"), std::string::npos);
  Done({"unmark", "--all"});
  ExpectRefused({"group", "replace", "Nord"}, 1, "Pas de sélection disponible");
  ExpectConsistent();
}

TEST_F(GroupCommandsTest, MergeAsksAndAddsTheMarkedCards) {
  Mark({"1"});
  Done({"group", "create", "Nord"});
  ExpectRefused({"group", "merge", "Sud"}, 1, "pas de groupe « Sud »");
  Mark({"4"});
  const auto before = Family();
  const CliOutcome refused = On({"group", "merge", "nord"});
  EXPECT_EQ(refused.status, 1);
  EXPECT_EQ(refused.err,
            "Confirmez-vous la fusion des fiches sélectionnées au groupe : Nord ? "
            "Non (--yes pour répondre oui)\n"
            "Erreur : rien n'est changé\n");
  EXPECT_EQ(Family(), before);
  const CliOutcome merged = On({"--yes", "group", "merge", "nord"});
  EXPECT_EQ(merged.status, 0);
  EXPECT_EQ(merged.err, "Groupe « Nord » : 2 fiches\n");
  EXPECT_EQ(Members("Nord"), "Alpha Gamma");
  Done({"unmark", "--all"});
  ExpectRefused({"--yes", "group", "merge", "Nord"}, 1, "Pas de sélection disponible");
}

TEST_F(GroupCommandsTest, RenameChangesNameAndDisplayAndKeepsTheMembers) {
  Mark({"1", "2"});
  Done({"group", "create", "Nord"});
  Done({"group", "create", "Sud"});
  EXPECT_EQ(Done({"group", "rename", "nord", "Lille"}), "");
  EXPECT_EQ(Groups(), Group("Lille", 2, 0, 2) + Group("Sud", 4, 0, 2));
  Done({"group", "rename", "Lille", "LILLE", "--whole"});
  EXPECT_EQ(Row(1)[kMode], 1);
  Done({"group", "rename", "Lille", "Nord"});
  EXPECT_EQ(Groups(), Group("Nord", 2, 1, 2) + Group("Sud", 4, 0, 2));
  Done({"group", "rename", "Nord", "Nord", "--members"});
  EXPECT_EQ(Row(1)[kMode], 0);
  ExpectRefused({"group", "rename", "Nord", "SUD"}, 1, "un groupe « SUD » existe déjà");
  ExpectRefused({"group", "rename", "Nord", ""}, 1, "il faut un nom");
  ExpectRefused({"group", "rename", "Est", "Ouest"}, 1, "pas de groupe « Est »");
}

TEST_F(GroupCommandsTest, DeleteAsksAndFreesTheSlot) {
  Mark({"1", "2"});
  Done({"group", "create", "Nord"});
  Done({"group", "create", "Sud"});
  const auto before = Family();
  const CliOutcome refused = On({"group", "delete", "NORD"});
  EXPECT_EQ(refused.status, 1);
  EXPECT_EQ(refused.err,
            "Le jeu \"Nord\" va être supprimé... Non (--yes pour répondre oui)\n"
            "Erreur : rien n'est supprimé\n");
  EXPECT_EQ(Family(), before);
  EXPECT_EQ(Done({"--yes", "group", "delete", "NORD"}), "");
  EXPECT_EQ(Groups(), Group("Sud", 4, 0, 2));
  EXPECT_NE(Done({"show", "1"}).find("  Groupes  Sud\n"), std::string::npos);
  EXPECT_EQ(Done({"info"}).find("Fiches      : 4\n") != std::string::npos, true);
  Mark({"3"});
  Done({"group", "create", "Est"});
  EXPECT_EQ(Groups(), Group("Sud", 4, 0, 2) + Group("Est", 2, 0, 1));
  ExpectConsistent();
}

TEST_F(GroupCommandsTest, FromTakesTheMarksOfAGroup) {
  Mark({"1", "2", "3"});
  Done({"group", "create", "Nord"});
  ExpectRefused({"group", "create", "Lille", "--from", "Nord"}, 1, "Pas de sélection disponible");
  Done({"mark", "2", "3", "--group", "Nord"});
  Mark({"4"});
  EXPECT_EQ(On({"group", "create", "Lille", "--from", "NORD"}).err,
            "Groupe « Lille » : 2 fiches\n");
  EXPECT_EQ(Members("Lille"), "Beta Delta");
  Done({"unmark", "3", "--group", "Nord"});
  EXPECT_EQ(On({"group", "replace", "Lille", "--from", "Nord"}).err,
            "Groupe « Lille » : 1 fiche\n");
  EXPECT_EQ(Members("Lille"), "Beta");
  EXPECT_EQ(On({"--yes", "group", "merge", "Lille", "--from", "Nord"}).status, 0);
  // A group made of its own marks keeps those alone.
  Done({"group", "replace", "Nord", "--from", "Nord"});
  EXPECT_EQ(Members("Nord"), "Beta");
  ExpectRefused({"group", "create", "Est", "--from", "Rien"}, 1, "pas de groupe « Rien »");
  EXPECT_EQ(Done({"list", "--marked"}), "4 * Gamma\n");
  ExpectConsistent();
}

TEST_F(GroupCommandsTest, ANameThatStandsTwiceIsRefused) {
  Mark({"1"});
  Done({"group", "create", "élus"});
  Done({"group", "create", "Autre"});
  std::string group_file = TextOf("/d/CLIENTS.GRP");
  group_file.replace(kRow0 + 2 * kRowSize, 5, "\x90LUS\0", 5);
  SetFile("/d/CLIENTS.GRP", group_file);
  const std::string reason = "plusieurs groupes portent le nom « élus »";
  for (const Words& words :
       {Words{"group", "replace", "élus"}, Words{"--yes", "group", "merge", "élus"},
        Words{"group", "rename", "élus", "x"}, Words{"--yes", "group", "delete", "élus"},
        Words{"group", "create", "x", "--from", "élus"}, Words{"list", "--group", "élus"},
        Words{"mark", "1", "--group", "élus"}, Words{"unmark", "--all", "--group", "élus"},
        Words{"--yes", "delete", "1", "--group", "élus"},
        Words{"select", "*", "--group", "élus"}}) {
    ExpectRefused(words, 1, reason);
  }
}

TEST_F(GroupCommandsTest, AGroupWithoutABitPairCanOnlyBeDeleted) {
  Mark({"1"});
  Done({"group", "create", "Nord"});
  std::string group_file = TextOf("/d/CLIENTS.GRP");
  group_file[kRow0 + kRowSize + kSlot] = 3;
  SetFile("/d/CLIENTS.GRP", group_file);
  EXPECT_EQ(Groups(), "");
  const std::string reason = "le groupe « nord » est abîmé";
  for (const Words& words :
       {Words{"group", "replace", "nord"}, Words{"--yes", "group", "merge", "nord"},
        Words{"group", "rename", "nord", "x"}, Words{"list", "--group", "nord"},
        Words{"group", "create", "x", "--from", "nord"}}) {
    ExpectRefused(words, 1, reason);
  }
  Done({"--yes", "group", "delete", "nord"});
  EXPECT_EQ(TextOf("/d/CLIENTS.GRP").size(), kRow0 + kRowSize);
}

TEST_F(GroupCommandsTest, OptionsThatAnActionDoesNotHaveAreWrongUsage) {
  Mark({"1"});
  Done({"group", "create", "Nord"});
  const std::vector<std::pair<Words, Words>> actions = {
      {{"list"}, {"--from", "--whole", "--members"}},
      {{"create", "Sud"}, {"--members"}},
      {{"replace", "Nord"}, {"--whole", "--members"}},
      {{"merge", "Nord"}, {"--whole", "--members"}},
      {{"rename", "Nord", "Sud"}, {"--from"}},
      {{"delete", "Nord"}, {"--from", "--whole", "--members"}}};
  for (const auto& [action, options] : actions) {
    for (const std::string& option : options) {
      Words words = {"--yes", "group"};
      words.insert(words.end(), action.begin(), action.end());
      words.push_back(option);
      if (option == "--from") words.emplace_back("Nord");
      ExpectRefused(words, 2,
                    "l'option " + option + " n'a pas de sens avec « group " + action[0] + " »");
    }
  }
  ExpectRefused({"group", "rename", "Nord", "Sud", "--whole", "--members"}, 2,
                "--whole et --members s'excluent");
  // In a script too.
  SetFile("/t/script", "group list --whole\n");
  EXPECT_EQ(On({"batch", "/t/script"}).err,
            "Erreur (ligne 1) : l'option --whole n'a pas de sens avec « group list »\n");
}

TEST_F(GroupCommandsTest, AFailedWriteIsTold) {
  Mark({"1"});
  disk_.FillDisk();
  const CliOutcome outcome = On({"group", "create", "Nord"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "Erreur : le fichier des groupes n'a pas pu être écrit\n");
  disk_.Heal();
  EXPECT_EQ(Groups(), "");
  EXPECT_EQ(Done({"show", "1"}).find("Groupes"), std::string::npos);
}

TEST_F(GroupCommandsTest, GroupsOfAnotherPathAreNotThoseOfTheDirectory) {
  Mark({"1"});
  Done({"group", "create", "Nord"});
  for (const auto& [name, content] : Family()) {
    files_.SetContents("/d/COPIE" + name.substr(name.find('.')), content);
  }
  EXPECT_EQ(Run({"-d", "/d/COPIE", "check"}).status, 0);
  EXPECT_EQ(TextOf("/d/COPIE.GRP"), TextOf("/d/CLIENTS.GRP"));
  EXPECT_EQ(Run({"-d", "/d/COPIE", "group", "list"}).out, "");
  EXPECT_EQ(TextOf("/d/COPIE.GRP").size(), kRow0 + kRowSize);
  EXPECT_EQ(Groups(), Group("Nord", 2, 0, 1));
}

TEST_F(GroupCommandsTest, ControlBytesOfAForeignFileDoNotReachTheTerminal) {
  Mark({"1"});
  Done({"group", "create", "Nord"});
  std::string group_file = TextOf("/d/CLIENTS.GRP");
  group_file[kRow0 + kRowSize + 1] = '\x1B';
  SetFile("/d/CLIENTS.GRP", group_file);
  EXPECT_EQ(Done({"group", "list"}), "N rd : 1 fiche (Fiches du groupe uniquement)\n");
  EXPECT_EQ(On({"group", "replace", "N\x1Brd"}).err, "Groupe « N rd » : 1 fiche\n");
}

}  // namespace
}  // namespace carnetel
