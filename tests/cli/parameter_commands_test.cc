#include "tests/cli/cli_testing.h"

namespace carnetel {
namespace {

class ParameterCommandsTest : public CliTest {
 protected:
  static constexpr const char* kParameterFile = "/home/u/carnetel/CARNETEL.TRS";

  void SetUp() override {
    Done({"create"});
    Done({"add", "Nom=Bez", "Ville=Lille", "--mark"});
  }
  void ExpectRefusedAndKept(const Words& words, const std::string& reason) {
    const std::string before = TextOf(kParameterFile);
    ExpectRefused(words, 1, reason);
    EXPECT_EQ(TextOf(kParameterFile), before);
  }
};

TEST_F(ParameterCommandsTest, BeforeAnyTransferThereIsNothing) {
  EXPECT_EQ(Done({"parameters", "list"}), "");
  ExpectRefused({"parameters", "save", "A"}, 1,
                "aucun transfert n'a encore été fait : rien à sauver");
  ExpectRefused({"parameters", "load", "A"}, 1, "pas de jeu de paramètres « A »");
  EXPECT_FALSE(files_.Exists(kParameterFile));
}

TEST_F(ParameterCommandsTest, KeepsWhatTheLastTransferUsed) {
  Done({"export", "/t/a", "--columns", "Nom,Ville", "--field-separator", ";"});
  Done({"parameters", "save", "Été"});
  Done({"export", "/t/b", "--columns", "Ville"});
  EXPECT_EQ(Done({"export", "/t/c", "--load", "éTÉ"}), "1 fiche transférée\n");
  EXPECT_EQ(TextOf("/t/c"), "Bez;Lille\r\n");
  Done({"export", "/t/b", "--columns", "Ville"});
  Done({"parameters", "load", "été"});
  Done({"export", "/t/d"});
  EXPECT_EQ(TextOf("/t/d"), "Bez;Lille\r\n");
  // Options of the line go over what is loaded.
  Done({"export", "/t/e", "--load", "Été", "--field-separator", "TAB"});
  EXPECT_EQ(TextOf("/t/e"), "Bez\tLille\r\n");
}

TEST_F(ParameterCommandsTest, AProfileBringsItsTypeBack) {
  Done({"export", "/t/f", "--type", "fixed", "--offset", "0", "--size", "4", "--place", "Nom@0:4"});
  Done({"parameters", "save", "Fixe"});
  Done({"export", "/t/b", "--type", "delimited"});
  Done({"export", "/t/c", "--load", "Fixe"});
  EXPECT_EQ(TextOf("/t/c"), std::string("Bez\0", 4));
}

TEST_F(ParameterCommandsTest, ListTellsTheKinds) {
  Done({"export", "/t/a", "--columns", "Nom"});
  Done({"parameters", "save", "Texte"});
  Done({"export", "/t/s.dbf", "--column", "Nom=N"});
  Done({"parameters", "save", "Sortie"});
  Done({"import", "/t/s.dbf", "--map", "Nom=N"});
  Done({"parameters", "save", "Entrée"});
  EXPECT_EQ(Done({"parameters", "list"}),
            "Texte\nSortie : exportation dBase\nEntrée : importation dBase\n");
  EXPECT_EQ(Done({"--json", "parameters", "list"}),
            "{\"name\":\"Texte\",\"kind\":\"plain\"}\n"
            "{\"name\":\"Sortie\",\"kind\":\"export\"}\n"
            "{\"name\":\"Entrée\",\"kind\":\"import\"}\n");
  ExpectRefused({"import", "/t/s.dbf", "--load", "sortie"}, 1,
                "le jeu de paramètres « sortie » sert à l'exportation");
  ExpectRefused({"export", "/t/s.dbf", "--load", "entrée"}, 1,
                "le jeu de paramètres « entrée » sert à l'importation");
  Done({"export", "/t/x.dbf", "--column", "Ville=V"});
  Done({"parameters", "load", "Sortie"});
  Done({"export", "/t/y.dbf"});
  EXPECT_EQ(TextOf("/t/y.dbf"), TextOf("/t/s.dbf"));
  EXPECT_EQ(Done({"import", "/t/s.dbf", "--load", "Entrée"}), "1 fiche transférée\n");
}

TEST_F(ParameterCommandsTest, RenameAndDelete) {
  Done({"export", "/t/a", "--columns", "Nom"});
  Done({"parameters", "save", "A"});
  Done({"parameters", "save", "B"});
  ExpectRefusedAndKept({"parameters", "save", "a"}, "un jeu de paramètres « a » existe déjà");
  ExpectRefusedAndKept({"parameters", "rename", "A", "b"},
                       "un jeu de paramètres « b » existe déjà");
  ExpectRefusedAndKept({"parameters", "rename", "C", "D"}, "pas de jeu de paramètres « C »");
  ExpectRefusedAndKept({"parameters", "save", ""}, "il faut un nom");
  Done({"parameters", "rename", "a", "Âge"});
  EXPECT_EQ(Done({"parameters", "list"}), "Âge\nB\n");
  const Words gone = {"parameters", "delete", "âge"};
  ExpectRefusedAndKept(gone, "rien n'est supprimé");
  EXPECT_TRUE(On(gone).err.starts_with("Le jeu \"Âge\" va être supprimé..."));
  Words yes = gone;
  yes.emplace_back("--yes");
  Done(yes);
  EXPECT_EQ(Done({"parameters", "list"}), "B\n");
}

TEST_F(ParameterCommandsTest, ANameThatStandsTwiceIsRefused) {
  Done({"export", "/t/a", "--columns", "Nom"});
  Done({"parameters", "save", "A"});
  Done({"parameters", "save", "B"});
  // The window does not look whether a name is there already.
  std::string file = TextOf(kParameterFile);
  file[2012 + 628] = 'a';
  SetFile(kParameterFile, file);
  for (const char* action : {"load", "delete"}) {
    ExpectRefusedAndKept({"parameters", action, "A"},
                         "plusieurs jeux de paramètres portent le nom « A »");
  }
  ExpectRefusedAndKept({"export", "/t/a", "--load", "a"},
                       "plusieurs jeux de paramètres portent le nom « a »");
}

TEST_F(ParameterCommandsTest, ATransferAndItsProfileWorkInAScript) {
  input_ =
      "export /t/a --columns Nom\n"
      "parameters save 'Noms seuls'\n"
      "export /t/b --columns Ville\n"
      "export /t/c --load 'noms SEULS'\n"
      "parameters list\n";
  const CliOutcome outcome = On({"batch"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_TRUE(outcome.out.ends_with("\nNoms seuls\n"));
  EXPECT_EQ(TextOf("/t/c"), "Bez\r\n");
}

}  // namespace
}  // namespace carnetel
