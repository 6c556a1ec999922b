#include "tests/cli/cli_testing.h"

namespace carnetel {
namespace {

constexpr size_t kRecord0 = 128;
constexpr size_t kRecordSize = 167;
constexpr size_t kActiveSet = 100;

class SelectionCommandsTest : public CliTest {
 protected:
  void SetUp() override {
    Done({"create"});
    Done({"add", "Ste1=9 Telecom", "Ville=Paris", "Fax=01 02"});
    Done({"add", "Ste1=Dupont", "Ville=Lille"});
    Done({"add", "Ste1=Durand", "Ville=Paris"});
    Done({"add", "Ste1=Martin", "Ville=Lille", "Fax=03 04"});
  }

  // The marked rows, "1 3".
  std::string Marked() {
    std::string rows;
    std::istringstream lines(Done({"list", "--marked"}));
    for (std::string line; std::getline(lines, line);) {
      rows += (rows.empty() ? "" : " ") + line.substr(0, line.find(' '));
    }
    return rows;
  }
  std::string Criteria() { return TextOf("/d/CLIENTS.CRT"); }
  // The first field code, comparator and value of a record.
  std::string FirstRow(size_t record) {
    const std::string row = Criteria().substr(kRecord0 + record * kRecordSize + 23, 24);
    return std::to_string(row[0]) + row[2] + row.substr(3, row.find('\0', 3) - 3);
  }
  std::string RecordName(size_t record) {
    const std::string name = Criteria().substr(kRecord0 + record * kRecordSize, 23);
    return name.substr(0, name.find('\0'));
  }
  void SetActiveSet(char number) {
    std::string criteria = Criteria();
    criteria[kActiveSet] = number;
    SetFile("/d/CLIENTS.CRT", criteria);
  }
};

TEST_F(SelectionCommandsTest, SelectMarksWhatPassesAndTakesFormerMarksAway) {
  Done({"mark", "4"});
  EXPECT_EQ(Done({"select", "Ste1=DU"}), "2 fiches marquées\n");
  EXPECT_EQ(Marked(), "2 3");
  EXPECT_EQ(Done({"--json", "select", "Ste1=DU", "Ville=lille"}), "{\"marked\":1}\n");
  EXPECT_EQ(Marked(), "2");
  EXPECT_EQ(Done({"select", "Ville=Rome"}), "0 fiche marquée\n");
  EXPECT_EQ(Marked(), "");
  ExpectConsistent();
}

TEST_F(SelectionCommandsTest, SelectAddKeepsMarksAndCountsThemAll) {
  Done({"mark", "2", "4"});
  EXPECT_EQ(Done({"select", "--add", "Ville=Paris"}), "4 fiches marquées\n");
  Done({"mark", "2"});
  Done({"select", "Ste1=Dup"});
  EXPECT_EQ(Done({"--json", "select", "Ville=Lille", "--add"}), "{\"marked\":2}\n");
  EXPECT_EQ(LoadLe16(files_.Contents("/d/CLIENTS.ADR"), 130), 2);
}

TEST_F(SelectionCommandsTest, EverySignIsUnderstood) {
  const std::vector<std::pair<std::string, std::string>> criteria = {
      {"Ville=Paris", "1 3"},  {"Ville<>Paris", "2 4"},
      {"Ville<=Lille", "2 4"}, {"Ville>=Lille", "1 2 3 4"},
      {"Ville<Paris", "2 4"},  {"Ville>Lille", "1 3"},
      {"Ville~IL", "2 4"},     {"Fax=", "2 3"},
      {"Fax<>", "1 4"},        {"fAX~04", "4"},
      {"#6~ari", "1 3"}};
  for (const auto& [criterion, rows] : criteria) {
    Done({"select", criterion});
    EXPECT_EQ(Marked(), rows) << criterion;
  }
}

TEST_F(SelectionCommandsTest, SelectStoresTheWorkingSet) {
  SetActiveSet(3);
  Done({"select", "Ville~PAR", "Fax<>"});
  EXPECT_EQ(Criteria().size(), kRecord0 + kRecordSize);
  EXPECT_EQ(RecordName(0), "Derni\x8Are S\x82lection");
  EXPECT_EQ(FirstRow(0), "76PAR");
  const std::string second = Criteria().substr(kRecord0 + 23 + 24, 4);
  EXPECT_EQ(second, std::string("\x17\x00"
                                "1\x00",
                                4));
  EXPECT_EQ(Criteria()[kActiveSet], 3);
}

TEST_F(SelectionCommandsTest, SelectAllMarksAllAndLeavesTheCriteriaAlone) {
  Done({"select", "Ville=Paris"});
  const std::string criteria = Criteria();
  clock_.Advance(50);
  EXPECT_EQ(Done({"select", "*"}), "4 fiches marquées\n");
  EXPECT_EQ(Criteria(), criteria);
  // As after marks by hand, other seats see it by the time of the main file.
  EXPECT_EQ(files_.Open("/d/CLIENTS.DAN", OpenMode::kRead)->ModificationTime(), clock_.Now());
  // A criterion that begins with a star passes all cards too, and is a criterion.
  Done({"unmark", "--all"});
  EXPECT_EQ(Done({"select", "Ville=*"}), "4 fiches marquées\n");
  EXPECT_EQ(FirstRow(0), "70*");
}

TEST_F(SelectionCommandsTest, AFirstCriterionOnTheCompanyNarrowsByLetters) {
  EXPECT_EQ(Done({"select", "Ste1=9"}), "0 fiche marquée\n");
  EXPECT_EQ(Done({"select", "Ville=", "Ste1=9"}), "0 fiche marquée\n");
  EXPECT_EQ(Done({"select", "Ville=Paris", "Ste1=9"}), "1 fiche marquée\n");
  EXPECT_EQ(Done({"select", "Ste1<DUZ"}), "1 fiche marquée\n");
}

TEST_F(SelectionCommandsTest, CriteriaWithoutATestAreLeftOutWithAWarning) {
  const CliOutcome outcome = On({"select", "Fax~", "Ville=Paris"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, "2 fiches marquées\n");
  EXPECT_EQ(outcome.err,
            "Attention : critère Fax~ ignoré : seuls = et <> admettent une valeur vide\n");
  EXPECT_EQ(FirstRow(0), "70Paris");
  for (const char* word : {"Fax~", "Fax<", "Fax>", "Fax<=", "Fax>="}) {
    ExpectRefused({"select", word}, 1, "Sélection impossible : Absence de critères valides");
  }
}

TEST_F(SelectionCommandsTest, ValuesAreCutAtWhatARowHolds) {
  const CliOutcome name = On({"select", "Nom=" + std::string(22, 'a')});
  EXPECT_EQ(name.err, "Attention : critère Nom : texte coupé à 21 caractères\n");
  EXPECT_EQ(FirstRow(0), "110" + std::string(21, 'a'));
  EXPECT_EQ(On({"select", "CP=" + std::string(21, '7')}).err, "");
}

TEST_F(SelectionCommandsTest, WhatIsNoCriterionIsWrongUsage) {
  const std::vector<std::pair<Words, std::string>> lines = {
      {{}, "il faut des critères, ou --set"},
      {{"--set", "Nord", "Ville=a"}, "il faut des critères, ou --set"},
      {{"--set", "Nord", "*"}, "il faut des critères, ou --set"},
      {{"Ville"}, "« Ville » n'est pas un critère, tel que Ste1=DU ou Fax<>"},
      {{"*", "Ville=a"}, "« * » n'est pas un critère, tel que Ste1=DU ou Fax<>"},
      {{"Vile=a"}, "« Vile » n'est pas un champ des critères de sélection"},
      {{"=a"}, "«  » n'est pas un champ des critères de sélection"},
      {{"Nom=a", "Mtel=1"}, "« Mtel » n'est pas un champ des critères de sélection"},
      {{"Qualite=M."}, "« Qualite » n'est pas un champ des critères de sélection"},
      {{"#5=75"}, "« #5 » n'est pas un champ des critères de sélection"},
      {Words(7, "Ville=a"), "six critères au plus"}};
  Done({"mark", "1"});
  for (const auto& [criteria, reason] : lines) {
    Words words = {"select"};
    words.insert(words.end(), criteria.begin(), criteria.end());
    ExpectRefused(words, 2, reason);
    // A line that is wrong is wrong without a directory too.
    words.insert(words.begin(), {"-d", "/d/RIEN"});
    EXPECT_EQ(Run(words).status, 2) << reason;
  }
  EXPECT_EQ(Done({"select", "Ville~a", "Ville~a", "Ville~a", "Ville~a", "Ville~a", "Ville~s"}),
            "2 fiches marquées\n");
}

TEST_F(SelectionCommandsTest, ACharacterThatNoCardHoldsIsRefused) {
  ExpectRefused({"select", "Ville=Łódź"}, 1,
                "critère Ville : le caractère « Ł » n'existe pas dans la page de codes des fiches "
                "(850)");
  ExpectRefused({"select", "Ville=a\tb"}, 1,
                "critère Ville : les caractères de contrôle ne sont pas admis");
}

TEST_F(SelectionCommandsTest, SelectStopsWhenTheUserWantsIt) {
  interrupt_after_ = 1;
  const CliOutcome outcome = On({"select", "Ville<>"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, "1 fiche marquée\n");
  EXPECT_EQ(outcome.err, "Erreur : la sélection a été arrêtée\n");
  interrupt_after_ = -1;
  EXPECT_EQ(Marked(), "1");
  EXPECT_EQ(LoadLe16(files_.Contents("/d/CLIENTS.ADR"), 130), 1);
  ExpectConsistent();
}

TEST_F(SelectionCommandsTest, SelectShowsItsProgressOnATerminal) {
  shows_progress_ = true;
  const CliOutcome outcome = On({"select", "Ville=Paris"});
  EXPECT_NE(outcome.err.find("Sélection en cours parmi 4 fiche(s)"), std::string::npos)
      << outcome.err;
  EXPECT_EQ(outcome.out, "2 fiches marquées\n");
  EXPECT_EQ(On({"--quiet", "select", "Ville=Paris"}).err, "");
}

TEST_F(SelectionCommandsTest, SelectBySavedSetStoresItsValidRowsAsTheWorkingSet) {
  Done({"criteria", "save", "Paris", "Ville=Paris", "Fax<>"});
  const std::string before = Criteria();
  EXPECT_EQ(Done({"select", "--set", "PARIS"}), "1 fiche marquée\n");
  EXPECT_EQ(Marked(), "1");
  EXPECT_EQ(RecordName(0), "Derni\x8Are S\x82lection");
  EXPECT_EQ(FirstRow(0), "70Paris");
  EXPECT_EQ(Criteria().substr(kRecord0 + kRecordSize), before.substr(kRecord0 + kRecordSize));
  EXPECT_EQ(Done({"select", "--add", "--set", "paris"}), "1 fiche marquée\n");
}

TEST_F(SelectionCommandsTest, ASavedSetWithoutAValidRowIsRefused) {
  Done({"criteria", "save", "Vide", "Ville=Paris"});
  std::string criteria = Criteria();
  criteria[kRecord0 + kRecordSize + 23] = 0;
  SetFile("/d/CLIENTS.CRT", criteria);
  ExpectRefused({"select", "--set", "Vide"}, 1,
                "Sélection impossible : Absence de critères valides");
  EXPECT_EQ(Done({"criteria", "show", "Vide"}), "");
  EXPECT_EQ(Done({"--json", "criteria", "show", "Vide"}), "{\"name\":\"Vide\",\"criteria\":[]}\n");
}

TEST_F(SelectionCommandsTest, SelectIsRefusedWhenTheCriteriaCannotBeWritten) {
  disk_.StopAfter(0);
  const auto before = Family();
  const CliOutcome outcome = On({"select", "Ville=Paris"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_NE(outcome.err.find("les critères n'ont pas pu être écrits"), std::string::npos);
  EXPECT_EQ(Family(), before);
}

TEST_F(SelectionCommandsTest, SetsAreSavedShownAndListed) {
  EXPECT_EQ(Done({"criteria", "list"}), "");
  EXPECT_EQ(Done({"criteria", "save", "Été", "Ville~É", "ste1>=d", "#12=x", "Fax<>"}), "");
  EXPECT_EQ(Done({"criteria", "save", "Tous", "*"}), "");
  EXPECT_EQ(Done({"criteria", "list"}), "Été\nTous\n");
  EXPECT_EQ(Done({"--json", "criteria", "list"}), "{\"name\":\"Été\"}\n{\"name\":\"Tous\"}\n");
  EXPECT_EQ(Done({"criteria", "show", "été"}), "Ville~É\nSte1>=d\nRef1=x\nFax<>\n");
  EXPECT_EQ(Done({"--json", "criteria", "show", "ÉTÉ"}),
            R"({"name":"Été","criteria":["Ville~É","Ste1>=d","Ref1=x","Fax<>"]})"
            "\n");
  EXPECT_EQ(Done({"criteria", "show", "tous"}), "Ste1=*\n");
  EXPECT_EQ(RecordName(1), "\x90t\x82");
  EXPECT_EQ(FirstRow(1), "76\x90");
  // The working set has not been touched.
  EXPECT_EQ(FirstRow(0), "0" + std::string(1, '\0'));
}

TEST_F(SelectionCommandsTest, NamesOfSetsAreTakenOnceAndCutAtTheirSize) {
  Done({"criteria", "save", "Été", "Ville=a"});
  ExpectRefused({"criteria", "save", "éTÉ", "Ville=b"}, 1,
                "un jeu de critères « éTÉ » existe déjà");
  ExpectRefused({"criteria", "save", "", "Ville=b"}, 1, "il faut un nom");
  ExpectRefused({"criteria", "save", "Łódź", "Ville=b"}, 1,
                "nom : le caractère « Ł » n'existe pas dans la page de codes des fiches (850)");
  const CliOutcome cut = On({"criteria", "save", std::string(24, 'n'), "Ville=b"});
  EXPECT_EQ(cut.status, 0);
  EXPECT_EQ(cut.err, "Attention : nom : texte coupé à 23 caractères\n");
  EXPECT_EQ(Done({"criteria", "show", std::string(23, 'N')}), "Ville=b\n");
}

TEST_F(SelectionCommandsTest, ANameIsNotTakenForALookAlike) {
  Done({"criteria", "save", "ete", "Ville=a"});
  Done({"criteria", "save", "Koenig", "Ville=a"});
  Done({"criteria", "save", "K?nig", "Ville=a"});
  for (const char* name : {"été", "Kœnig", "KőNIG", "et", "etes", ""}) {
    ExpectRefused({"--yes", "criteria", "delete", name}, 1,
                  "pas de jeu de critères « " + std::string(name) + " »");
  }
}

TEST_F(SelectionCommandsTest, ANameThatStandsTwiceIsRefused) {
  Done({"criteria", "save", "élus", "Ville=a"});
  Done({"criteria", "save", "Autre", "Ville=a"});
  // As the dialog may leave it.
  std::string criteria = Criteria();
  criteria.replace(kRecord0 + 2 * kRecordSize, 5, "\x90LUS\0", 5);
  SetFile("/d/CLIENTS.CRT", criteria);
  EXPECT_EQ(Done({"criteria", "list"}), "élus\nÉLUS\n");
  const std::string reason = "plusieurs jeux de critères portent le nom « Élus »";
  ExpectRefused({"criteria", "show", "Élus"}, 1, reason);
  ExpectRefused({"select", "--set", "Élus"}, 1, reason);
  ExpectRefused({"criteria", "replace", "Élus", "Ville=b"}, 1, reason);
  ExpectRefused({"criteria", "rename", "Élus", "Autres"}, 1, reason);
  ExpectRefused({"--yes", "criteria", "delete", "Élus"}, 1, reason);
}

TEST_F(SelectionCommandsTest, ReplaceChangesTheRowsAndKeepsTheName) {
  Done({"criteria", "save", "Nord", "Ville=Lille", "Fax<>"});
  EXPECT_EQ(Done({"criteria", "replace", "NORD", "Ville=Dunkerque"}), "");
  EXPECT_EQ(Done({"--json", "criteria", "show", "nord"}),
            "{\"name\":\"Nord\",\"criteria\":[\"Ville=Dunkerque\"]}\n");
  EXPECT_EQ(Criteria().size(), kRecord0 + 2 * kRecordSize);
}

TEST_F(SelectionCommandsTest, RenameChangesTheNameAlone) {
  Done({"criteria", "save", "Nord", "Ville=Lille"});
  Done({"criteria", "save", "Sud", "Ville=Nice"});
  ExpectRefused({"criteria", "rename", "Nord", "sud"}, 1, "un jeu de critères « sud » existe déjà");
  ExpectRefused({"criteria", "rename", "Nord", ""}, 1, "il faut un nom");
  Done({"criteria", "rename", "nord", "NORD"});
  EXPECT_EQ(Done({"criteria", "list"}), "NORD\nSud\n");
  Done({"criteria", "rename", "sud", "Midi"});
  EXPECT_EQ(Done({"criteria", "show", "midi"}), "Ville=Nice\n");
}

TEST_F(SelectionCommandsTest, DeleteAsksByTheNameAsItIsWritten) {
  Done({"criteria", "save", "Nord", "Ville=Lille"});
  Done({"criteria", "save", "Sud", "Ville=Nice"});
  const auto before = Family();
  const CliOutcome refused = On({"criteria", "delete", "NORD"});
  EXPECT_EQ(refused.status, 1);
  EXPECT_EQ(refused.err,
            "Le jeu \"Nord\" va être supprimé... Non (--yes pour répondre oui)\n"
            "Erreur : rien n'est supprimé\n");
  EXPECT_EQ(Family(), before);
  can_ask_ = true;
  input_ = "o\n";
  EXPECT_EQ(Done({"criteria", "delete", "NORD"}), "");
  EXPECT_EQ(Done({"criteria", "list"}), "Sud\n");
  EXPECT_EQ(Done({"criteria", "show", "Sud"}), "Ville=Nice\n");
  EXPECT_EQ(Criteria().size(), kRecord0 + 2 * kRecordSize);
}

TEST_F(SelectionCommandsTest, TheActiveSetOfTheWindowIsLeftAlone) {
  Done({"criteria", "save", "Un", "Ville=a"});
  SetActiveSet(1);
  Done({"criteria", "save", "Deux", "Ville=b"});
  Done({"criteria", "replace", "Deux", "Ville=c"});
  Done({"criteria", "rename", "Deux", "Trois"});
  Done({"select", "--set", "Trois"});
  Done({"--yes", "criteria", "delete", "Un"});
  EXPECT_EQ(Criteria()[kActiveSet], 1);
}

TEST_F(SelectionCommandsTest, WrongWordsOfCriteriaAreWrongUsage) {
  Done({"criteria", "save", "Nord", "Ville=Lille"});
  const std::vector<std::pair<Words, std::string>> lines = {
      {{}, "il manque un argument : criteria ACTION [ARGUMENTS]"},
      {{"copy"}, "action inconnue : copy"},
      {{"list", "Nord"}, "argument en trop : Nord"},
      {{"show"}, "il manque un argument : criteria show NOM"},
      {{"show", "Nord", "Sud"}, "argument en trop : Sud"},
      {{"save", "Sud"}, "il manque un argument : criteria save NOM CRITÈRE…"},
      {{"replace", "Nord"}, "il manque un argument : criteria replace NOM CRITÈRE…"},
      {{"rename", "Nord"}, "il manque un argument : criteria rename NOM NOUVEAU"},
      {{"delete", "Nord", "Sud"}, "argument en trop : Sud"},
      {{"save", "Sud", "Ville"}, "« Ville » n'est pas un critère, tel que Ste1=DU ou Fax<>"},
      {{"replace", "Nord", "Vile=a"}, "« Vile » n'est pas un champ des critères de sélection"}};
  for (const auto& [rest, reason] : lines) {
    Words words = {"criteria"};
    words.insert(words.end(), rest.begin(), rest.end());
    ExpectRefused(words, 2, reason);
  }
  ExpectRefused({"criteria", "save", "Sud", "Ville~"}, 1,
                "Sélection impossible : Absence de critères valides");
}

TEST_F(SelectionCommandsTest, ACriteriaFileThatIsCutShortIsMadeAnew) {
  Done({"criteria", "save", "Nord", "Ville=Lille"});
  SetFile("/d/CLIENTS.CRT", Criteria().substr(0, 100));
  EXPECT_EQ(Done({"criteria", "list"}), "");
  EXPECT_EQ(Criteria().size(), kRecord0 + kRecordSize);
  SetFile("/d/CLIENTS.CRT", "");
  Done({"criteria", "save", "Sud", "Ville=Nice"});
  EXPECT_EQ(Done({"criteria", "show", "Sud"}), "Ville=Nice\n");
  EXPECT_EQ(FirstRow(0), "0" + std::string(1, '\0'));
}

TEST_F(SelectionCommandsTest, ControlBytesOfAForeignFileDoNotReachTheTerminal) {
  Done({"criteria", "save", "Nord", "Ville=Lille"});
  std::string criteria = Criteria();
  criteria[kRecord0 + kRecordSize + 1] = '\x1B';
  criteria[kRecord0 + kRecordSize + 23 + 4] = '\x1B';
  SetFile("/d/CLIENTS.CRT", criteria);
  EXPECT_EQ(Done({"criteria", "list"}), "N rd\n");
  EXPECT_EQ(Done({"criteria", "show", "N\x1Brd"}), "Ville=L lle\n");
  EXPECT_EQ(On({"criteria", "delete", "N\x1Brd"}).err.find('\x1B'), std::string::npos);
}

TEST_F(SelectionCommandsTest, AScriptSavesSelectsAndGoesOn) {
  SetFile("/t/script",
          "criteria save Paris 'Ville=Paris'\n"
          "select --set paris\n"
          "group create Paris\n"
          "select --group paris 'Fax<>'\n"
          "list --marked\n"
          "list --group Paris --marked\n"
          "select Ville~\n"
          "select '*'\n");
  const CliOutcome outcome = On({"--quiet", "batch", "/t/script"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out,
            "2 fiches marquées\n"
            "1 fiche marquée\n"
            "1 * 9 Telecom\n3 * Durand\n"
            "1 * 9 Telecom\n");
  EXPECT_EQ(outcome.err,
            "Attention (ligne 7) : critère Ville~ ignoré : seuls = et <> admettent une valeur "
            "vide\n"
            "Erreur (ligne 7) : Sélection impossible : Absence de critères valides\n");
  EXPECT_EQ(Marked(), "1 3");
  ExpectConsistent();
}

}  // namespace
}  // namespace carnetel
