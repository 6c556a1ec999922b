// import --dry-run: what it tells, and that nothing changes.
#include "tests/cli/cli_testing.h"

namespace carnetel {
namespace {

class ImportTrialTest : public CliTest {
 protected:
  void SetUp() override {
    Done({"create"});
    Done({"add", "Nom=Ancien"});
  }
  // Runs it and expects every file to stay as it was.
  CliOutcome Try(Words words) {
    words.emplace_back("--dry-run");
    const auto before = AllFiles();
    CliOutcome outcome = On(words);
    EXPECT_EQ(AllFiles(), before);
    return outcome;
  }
  std::map<std::string, std::string> AllFiles() {
    std::map<std::string, std::string> all;
    for (const char* folder : {"/d", "/t", "/home/u", "/home/u/carnetel"}) {
      for (const std::string& name : files_.List(folder)) {
        const std::string path = std::string(folder) + '/' + name;
        all[path] = TextOf(path);
      }
    }
    return all;
  }

  const std::string long_name_ = std::string(33, 'x');
};

TEST_F(ImportTrialTest, NamesTheLinesAndCountsThem) {
  SetFile("/t/f.csv", "Bez;01 02\r\n" + long_name_ +
                          ";n\x82"
                          "ant\r\n\r\n;;\r\nfin");
  const Words words = {"import", "/t/f.csv", "--columns", "Nom,Tel1"};
  const CliOutcome outcome = Try(words);
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(outcome.out,
            "Ligne 2 : Nom coupé à 32 caractères\n"
            "Ligne 2 : Tel1 vidé : rien de son texte ne peut y rester\n"
            "Ligne 5 : refusée, pas de séparateur de fiches à la fin\n"
            "3 fiches seraient ajoutées ; 1 champ trop long, 1 champ vidé, 1 ligne refusée\n");
  Words json = words;
  json.insert(json.begin(), "--json");
  EXPECT_EQ(Try(json).out,
            "{\"cards\":3,\"cut\":1,\"emptied\":1,\"overrun\":0,\"refused\":1,\"lines\":["
            "{\"line\":2,\"finding\":\"cut\",\"field\":\"Nom\"},"
            "{\"line\":2,\"finding\":\"emptied\",\"field\":\"Tel1\"},"
            "{\"line\":5,\"finding\":\"refused\",\"reason\":"
            "\"pas de séparateur de fiches à la fin\"}]}\n");
  // The import itself does as it was told.
  EXPECT_EQ(Done(words), "3 fiches transférées\n");
}

TEST_F(ImportTrialTest, ReplacingIsTriedWithoutAQuestion) {
  SetFile("/t/f.csv", "Bez\r\n");
  const CliOutcome outcome = Try({"import", "/t/f.csv", "--columns", "Nom", "--replace"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "");
  EXPECT_EQ(outcome.out,
            "1 fiche serait ajoutée ; 0 champ trop long, 0 champ vidé, 0 ligne refusée\n");
}

TEST_F(ImportTrialTest, LinesWithoutACardAndTooManyAreRefused) {
  SetFile("/t/f.csv", "a\r\n");
  const CliOutcome none = Try({"import", "/t/f.csv", "--columns", "-,Nom"});
  EXPECT_EQ(none.out,
            "Ligne 1 : refusée, aucun champ à prendre\n"
            "0 fiche serait ajoutée ; 0 champ trop long, 0 champ vidé, 1 ligne refusée\n");
  std::string lines;
  for (int i = 0; i < 10001; ++i) lines += "a\r\n";
  SetFile("/t/f.csv", lines);
  const CliOutcome many = Try({"import", "/t/f.csv", "--columns", "Nom"});
  EXPECT_EQ(many.out,
            "10000 fiches seraient ajoutées ; 0 champ trop long, 0 champ vidé, 1 ligne refusée\n");
  EXPECT_EQ(many.err,
            "Attention : 1 ligne laissée de côté : une importation en prend 10000 au plus\n");
}

TEST_F(ImportTrialTest, FixedRecordsRunOverAndMayBeCutShort) {
  SetFile("/t/f", long_name_ + "   Bez" + std::string(33, ' ') + "reste");
  const CliOutcome outcome = Try({"import", "/t/f", "--type", "fixed", "--offset", "0", "--size",
                                  "36", "--place", "Nom@0:36"});
  EXPECT_EQ(outcome.out,
            "Fiche 1 : Nom dépasse et déborde sur les champs suivants\n"
            "Fiche 3 : refusée, enregistrement incomplet\n"
            "2 fiches seraient ajoutées ; 1 champ trop long, 0 champ vidé, 1 fiche refusée\n");
}

TEST_F(ImportTrialTest, ATableIsTriedByTheRulesOfTables) {
  Done({"add", "Ste1=" + std::string(30, '7'), "Ville=oui"});
  Done({"mark", "--all"});
  Done({"export", "/t/s.dbf", "--column", "Ste1=A", "--column", "Ville=V"});
  const CliOutcome outcome =
      Try({"import", "/t/s.dbf", "--map", "Nom=A", "--map", "Tel1=A", "--map", "Mtel=V"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(outcome.out,
            "Fiche 1 : Tel1 coupé à 24 caractères\n"
            "Fiche 1 : Mtel vidé : rien de son texte ne peut y rester\n"
            "Fiche 2 : refusée, ni société ni nom\n"
            "1 fiche serait ajoutée ; 1 champ trop long, 1 champ vidé, 1 fiche refusée\n");
}

TEST_F(ImportTrialTest, CardsOfADirectoryAreCounted) {
  Done({"mark", "--all"});
  Done({"export", "/t/SUB.DAN"});
  EXPECT_EQ(Try({"--json", "import", "/t/SUB.DAN"}).out,
            "{\"cards\":1,\"cut\":0,\"emptied\":0,\"overrun\":0,\"refused\":0,\"lines\":[]}\n");
}

TEST_F(ImportTrialTest, ARefusalIsThatOfTheImport) {
  EXPECT_EQ(Try({"import", "/t/absent"}).err, "Erreur : Accès au fichier /t/absent impossible\n");
  SetFile("/t/vide", "");
  const CliOutcome empty = Try({"import", "/t/vide"});
  EXPECT_EQ(empty.status, 1);
  EXPECT_EQ(empty.err, "Erreur : /t/vide est vide : rien à importer\n");
}

TEST_F(ImportTrialTest, StoppedItTellsThatNothingIsChanged) {
  SetFile("/t/f.csv", "a\r\nb\r\nc\r\n");
  interrupt_after_ = 1;
  const CliOutcome outcome = Try({"import", "/t/f.csv", "--columns", "Nom"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.err, "Erreur : essai abandonné ; rien n'est changé\n");
}

TEST_F(ImportTrialTest, AScriptGoesOnWithTheDirectoryAsItWas) {
  SetFile("/t/f.csv", "Bez\r\n");
  input_ =
      "add Nom=Neuf\n"
      "import /t/f.csv --columns Nom --dry-run\n"
      "list\n"
      "import /t/absent --dry-run\n";
  const CliOutcome outcome = On({"batch"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out,
            "2\n1 fiche serait ajoutée ; 0 champ trop long, 0 champ vidé, 0 ligne refusée\n"
            "1   Ancien\n2   Neuf\n");
  EXPECT_EQ(outcome.err, "Erreur (ligne 4) : Accès au fichier /t/absent impossible\n");
}

}  // namespace
}  // namespace carnetel
