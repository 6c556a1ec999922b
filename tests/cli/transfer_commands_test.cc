#include "tests/cli/cli_testing.h"
#include "transfer/parameter_file.h"

namespace carnetel {
namespace {

class TransferCommandsTest : public CliTest {
 protected:
  void SetUp() override { Done({"create"}); }
};

TEST_F(TransferCommandsTest, ImportTakesTheDefaultOrderAndCountsTheCards) {
  SetFile("/t/f.csv", "M.;Paul;\x82lu;Caf\x82 SA\r\nMme;Anne;Bez;\r\nno separator behind");
  EXPECT_EQ(Done({"import", "/t/f.csv"}), "2 fiches transférées\n");
  EXPECT_EQ(Done({"list"}), "1   Bez\n2   Café SA\n");
  EXPECT_EQ(Done({"--json", "import", "/t/f.csv"}), "{\"cards\":2}\n");
  EXPECT_EQ(Done({"list"}), "1   Bez\n2   Bez\n3   Café SA\n4   Café SA\n");
  ExpectConsistent();
}

TEST_F(TransferCommandsTest, ImportConvertsAnAnsiFile) {
  SetFile("/t/f.csv", "\xC9t\xE9\r\n");
  Done({"import", "/t/f.csv", "--columns", "Ville", "--charset", "ansi"});
  EXPECT_NE(Done({"show", "1"}).find("Ville    Été"), std::string::npos);
}

TEST_F(TransferCommandsTest, ImportWithReplaceAsksAndEmptiesTheDirectory) {
  Done({"add", "Nom=Ancien"});
  SetFile("/t/f.csv", "Nouveau\r\n");
  const auto before = Family();
  const Words import = {"import", "/t/f.csv", "--columns", "Nom", "--replace"};
  const CliOutcome refused = On(import);
  EXPECT_EQ(refused.status, 1);
  EXPECT_TRUE(refused.err.starts_with("Le fichier  carnetel courant: /d/CLIENTS.DAN va être vidé"))
      << refused.err;
  EXPECT_EQ(Family(), before);
  Words yes = import;
  yes.emplace_back("--yes");
  EXPECT_EQ(Done(yes), "1 fiche transférée\n");
  EXPECT_EQ(Done({"list"}), "1   Nouveau\n");
  ExpectConsistent();
}

TEST_F(TransferCommandsTest, ExportWritesTheMarkedCardsAndAppends) {
  for (const char* name : {"Ste1=A;x", "Ste1=B", "Ste1=C"}) Done({"add", name, "Ville=É"});
  const CliOutcome none = On({"export", "/t/s.csv"});
  EXPECT_EQ(none.status, 1);
  EXPECT_EQ(none.err, "Erreur : Pas de sélection disponible\n");
  EXPECT_FALSE(files_.Exists("/t/s.csv"));
  Done({"mark", "1", "3"});
  EXPECT_EQ(Done({"--json", "export", "/t/s.csv", "--columns", "Ste1,-,Ville"}), "{\"cards\":2}\n");
  EXPECT_EQ(TextOf("/t/s.csv"), "A;x;;\x90\r\nC;;\x90\r\n");
  // The columns are those of the last transfer.
  EXPECT_EQ(Done({"export", "/t/s.csv", "--charset", "ansi"}), "2 fiches transférées\n");
  EXPECT_EQ(TextOf("/t/s.csv"), "A;x;;\x90\r\nC;;\x90\r\nA;x;;\xC9\r\nC;;\xC9\r\n");
  EXPECT_EQ(On({"export", "/t/s.csv", "--replace"}).status, 1);
  Done({"--yes", "export", "/t/s.csv", "--replace", "--field-separator", "TAB", "--card-separator",
        "LF"});
  EXPECT_EQ(TextOf("/t/s.csv"), "A;x\t\t\x90\nC\t\t\x90\n");
}

TEST_F(TransferCommandsTest, ColumnsMakeTheWayOutAndBackExact) {
  Done({"add", "Ste1=Dupont", "Nom=Éluard", "CP=45000", "Notes=à rappeler", "--mark"});
  Done({"add", "Nom=Bez", "Tel1=01 02", "--mark"});
  const std::string columns = "Nom,Ste1,CP,Notes,Tel1";
  Done({"export", "/t/s.csv", "--columns", columns});
  EXPECT_EQ(Run({"-d", "/d/COPIE", "create"}).status, 0);
  EXPECT_EQ(Run({"-d", "/d/COPIE", "import", "/t/s.csv", "--columns", columns}).status, 0);
  EXPECT_EQ(Run({"-d", "/d/COPIE", "show", "2"}).out,
            "Fiche 2 (@1536)\n"
            "  Ste1     Dupont\n"
            "  Nom      Éluard\n"
            "  CP       45000\n"
            "  Notes    à rappeler\n");
}

TEST_F(TransferCommandsTest, WhatWasUsedIsKeptInTheParameterFile) {
  SetFile("/t/f.csv", "a|b#");
  Done({"import", "/t/f.csv", "--columns", "Nom,Ste1", "--field-separator", "7Ch",
        "--card-separator", "#"});
  ParameterFile kept(files_, "/home/u/carnetel/CARNETEL.TRS");
  kept.StartTransfer(TransferDirection::kExport);
  EXPECT_EQ(kept.profile().field_separator(), "|");
  EXPECT_EQ(kept.profile().card_separator(), "#");
  EXPECT_EQ(kept.profile().rank(kNom), 1);
  EXPECT_EQ(kept.profile().rank(kSte1), 2);
  EXPECT_EQ(kept.profile().rank(kVille), 0);
  EXPECT_EQ(Done({"import", "/t/f.csv"}), "1 fiche transférée\n");
  // Another parameter file knows nothing of it.
  EXPECT_EQ(Done({"import", "/t/f.csv", "--parameters", "/t/AUTRE.TRS"}), "0 fiche transférée\n");
  EXPECT_TRUE(files_.Exists("/t/AUTRE.TRS"));
}

TEST_F(TransferCommandsTest, AFileThatGivesNoCardIsTold) {
  SetFile("/t/lf.csv", "a;b\nc;d\n");
  const CliOutcome outcome = On({"import", "/t/lf.csv"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err,
            "Attention : aucune ligne de /t/lf.csv ne donne de fiche : voyez les "
            "séparateurs\n");
  SetFile("/t/vide.csv", "");
  EXPECT_EQ(On({"import", "/t/vide.csv"}).status, 1);
}

TEST_F(TransferCommandsTest, TransfersOntoItselfAndTextInADirectoryAreRefused) {
  Done({"add", "Nom=a", "--mark"});
  SetFile("/t/x.dbf", "x");
  SetFile("/t/Y.DAN", "x");
  const auto before = Family();
  for (const char* command : {"import", "export"}) {
    for (const char* file : {"/d/CLIENTS.DAN", "/d/CLIENTS.ADR", "/d/../d/CLIENTS.I02"}) {
      const CliOutcome outcome = On({command, file, "--type", "delimited"});
      EXPECT_EQ(outcome.status, 1);
      EXPECT_EQ(outcome.err, "Erreur : Impossible de transférer le fichier " + std::string(file) +
                                 " sur lui-même\n");
    }
    const CliOutcome outcome = On({command, "/t/Y.DAN", "--type", "delimited"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err,
              "Erreur : le fichier /t/Y.DAN est incompatible avec le type de transfer choisi.\n");
  }
  EXPECT_EQ(TextOf("/t/Y.DAN"), "x");
  EXPECT_EQ(Family(), before);
  EXPECT_EQ(TextOf("/t/x.dbf"), "x");
}

TEST_F(TransferCommandsTest, WrongOptionsChangeNothing) {
  SetFile("/t/f.csv", "a\r\n");
  const auto before = Family();
  const std::vector<Words> wrong = {{"--columns", "Nom,Nam"},   {"--columns", "Nom,Nom"},
                                    {"--columns", "#4"},        {"--columns", ""},
                                    {"--charset", "utf-8"},     {"--type", "dbase5"},
                                    {"--field-separator", "é"}, {"--card-separator", "123456789"}};
  for (const Words& options : wrong) {
    Words words = {"import", "/t/f.csv"};
    words.insert(words.end(), options.begin(), options.end());
    EXPECT_EQ(On(words).status, 2) << options[0] << ' ' << options[1];
  }
  EXPECT_EQ(On({"import", "/t/absent.csv"}).status, 1);
  EXPECT_EQ(Family(), before);
  EXPECT_FALSE(files_.Exists("/home/u/carnetel/CARNETEL.TRS"));
}

TEST_F(TransferCommandsTest, ATableUnderAnotherTypeIsAskedAbout) {
  Done({"add", "Nom=a", "--mark"});
  const std::string question =
      "Le fichier /t/x.dbf est incompatible avec le type de transfer choisi. Désirez-vous "
      "poursuivre l'opération ?";
  const Words words = {"export", "/t/x.dbf", "--type", "delimited", "--columns", "Nom"};
  ExpectRefused(words, 1, "rien n'est transféré");
  EXPECT_TRUE(On(words).err.starts_with(question));
  EXPECT_FALSE(files_.Exists("/t/x.dbf"));
  Words yes = words;
  yes.emplace_back("--yes");
  Done(yes);
  EXPECT_EQ(TextOf("/t/x.dbf"), "a\r\n");
}

TEST_F(TransferCommandsTest, AnOptionOfAnotherTypeIsWrongUsage) {
  SetFile("/t/f", "a\r\n");
  const std::vector<std::pair<std::string, Words>> wrong = {
      {"delimited", {"--offset", "1"}},      {"delimited", {"--size", "1"}},
      {"delimited", {"--place", "Nom@0:1"}}, {"delimited", {"--map", "Nom=1"}},
      {"fixed", {"--columns", "Nom"}},       {"fixed", {"--field-separator", ";"}},
      {"dbase3", {"--card-separator", "LF"}}};
  for (const auto& [type, option] : wrong) {
    Words words = {"import", "/t/f", "--type", type};
    words.insert(words.end(), option.begin(), option.end());
    ExpectRefused(words, 2, "l'option " + option[0] + " n'a pas de sens avec le type " + type);
  }
}

TEST_F(TransferCommandsTest, WhatWasUsedIsKeptEvenWithoutMarks) {
  ExpectRefused({"export", "/t/s.csv", "--columns", "Ville", "--replace"}, 1,
                "Pas de sélection disponible");
  ParameterFile kept(files_, "/home/u/carnetel/CARNETEL.TRS");
  kept.StartTransfer(TransferDirection::kImport);
  EXPECT_EQ(kept.profile().rank(kVille), 1);
}

TEST_F(TransferCommandsTest, ExportThatCannotOpenItsFileFails) {
  Done({"add", "Nom=a", "--mark"});
  SetFile("/t/f", "x");
  const CliOutcome outcome = On({"export", "/t/f/s.csv"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err, "Erreur : Accès au fichier /t/f/s.csv impossible\n");
}

std::string Lines(int count) {
  std::string lines;
  for (int i = 0; i < count; ++i)
    lines += static_cast<char>('A' + i % 25) + std::to_string(i) + "\r\n";
  return lines;
}

TEST_F(TransferCommandsTest, LinesBeyondTheTenThousandthAreToldAndAFullDirectoryRefuses) {
  SetFile("/t/f.csv", Lines(10003));
  const Words import = {"import", "/t/f.csv", "--columns", "Nom"};
  CliOutcome outcome = On(import);
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, "10000 fiches transférées\n");
  EXPECT_EQ(outcome.err,
            "Attention : 3 lignes laissées de côté : une importation en prend 10000 au plus\n");
  Done(import);
  Done(import);
  SetFile("/t/f.csv", Lines(2768));
  outcome = On(import);
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, "2767 fiches transférées\n");
  EXPECT_EQ(outcome.err,
            "Erreur : Création ou modification impossible : le carnetel est plein (32767 fiches). "
            "/d/CLIENTS.DAN : Erreur en écriture...\n");
  ExpectConsistent();
  const auto before = Family();
  outcome = On({"add", "Nom=un de trop"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err,
            "Erreur : Création ou modification impossible : le carnetel est plein "
            "(32767 fiches)\n");
  EXPECT_EQ(Family(), before);
}

TEST_F(TransferCommandsTest, AnInterruptedTransferKeepsWhatWasDone) {
  SetFile("/t/f.csv", Lines(10));
  interrupt_after_ = 3;
  const CliOutcome outcome = On({"import", "/t/f.csv", "--columns", "Nom"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, "4 fiches transférées\n");
  EXPECT_EQ(outcome.err, "Erreur : transfert abandonné ; les fiches déjà transférées restent\n");
  interrupt_after_ = -1;
  ExpectConsistent();
}

TEST_F(TransferCommandsTest, AProgressBarShowsOnATerminalAndGoesAway) {
  SetFile("/t/f.csv", Lines(10));
  const Words import = {"import", "/t/f.csv", "--columns", "Nom"};
  EXPECT_EQ(On(import).err, "");
  shows_progress_ = true;
  const std::string shown = On(import).err;
  EXPECT_NE(shown.find("\r\x1B[KTransfert de 10 fiche(s) en cours [####"), std::string::npos)
      << shown;
  EXPECT_NE(shown.find("%"), std::string::npos);
  EXPECT_TRUE(shown.ends_with("\r\x1B[K")) << shown;
  Words quiet = import;
  quiet.emplace_back("--quiet");
  EXPECT_EQ(On(quiet).err, "");
}

}  // namespace
}  // namespace carnetel
