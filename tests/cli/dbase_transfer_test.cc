// Import and export of dBase tables.
#include <fstream>
#include <iterator>

#include "tests/cli/cli_testing.h"

namespace carnetel {
namespace {

class DbaseTransferTest : public CliTest {
 protected:
  void SetUp() override { Done({"create"}); }
  void TakeTable(const std::string& path) {
    std::ifstream file(CARNETEL_SOURCE_DIR "/tests/data/clients-tableur.dbf", std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    ASSERT_EQ(bytes.size(), 62770U);
    SetFile(path, bytes);
  }
  void SetVersion(const std::string& path, char version) {
    std::string table = TextOf(path);
    table[0] = version;
    SetFile(path, table);
  }
};

TEST_F(DbaseTransferTest, ExportWritesTheColumnsByteByByte) {
  Done({"add", "Nom=Éluard", "Ville=Évry", "Ste1=X", "--mark"});
  Done({"--json", "export", "/t/s.dbf", "--column", "Nom=NOM", "--column", "CP=CODE:N"});
  using namespace std::string_view_literals;
  std::string golden("\x03\x01\x09\x09\x01\0\0\0\x60\0\x2E\0"sv);
  golden.resize(32);
  const auto add_column = [&golden](std::string_view head, char length) {
    const size_t start = golden.size();
    golden += head;
    golden.resize(start + 16);
    golden += length;
    golden.resize(start + 32);
  };
  add_column("CODE\0\0\0\0\0\0\0N\0\0\0\0"sv, 14);
  add_column("NOM\0\0\0\0\0\0\0\0C\x0E\0\0\0"sv, 32);
  golden += "\r" + std::string(14, ' ') + "\x90luard" + std::string(26, ' ');
  EXPECT_EQ(TextOf("/t/s.dbf"), golden);
}

TEST_F(DbaseTransferTest, WithoutColumnsThereIsOneForEachFieldAndTheTableComesBack) {
  Done({"add", "Ste1=Dupont", "Nom=Éluard", "CP=45000", "Tel1=01 02", "Ref6=r", "--mark"});
  Done({"add", "Nom=Bez", "--mark"});
  EXPECT_EQ(Done({"export", "/t/s.DBF"}), "2 fiches transférées\n");
  EXPECT_EQ(Done({"export", "/t/iv", "--type", "dbase4"}), "2 fiches transférées\n");
  EXPECT_EQ(TextOf("/t/s.DBF")[0], '\x03');
  EXPECT_EQ(TextOf("/t/iv")[0], '\x43');
  EXPECT_EQ(TextOf("/t/iv").substr(1), TextOf("/t/s.DBF").substr(1));
  Done({"import", "/t/s.DBF", "--replace", "--yes", "--map", "Ste1=ste1", "--map", "Nom=Nom",
        "--map", "CP=CODEPOST", "--map", "Tel1=TELEPHONE1", "--map", "Ref6=REFERENCE6"});
  // An empty key becomes an A.
  EXPECT_EQ(Done({"show", "1", "2"}),
            "Fiche 1 (@768)\n"
            "  Ste1     A\n"
            "  Nom      Bez\n"
            "\n"
            "Fiche 2 (@1536)\n"
            "  Ste1     Dupont\n"
            "  Nom      Éluard\n"
            "  Ref6     r\n"
            "  Tel1     01 02\n"
            "  CP       45000\n");
  ExpectConsistent();
}

TEST_F(DbaseTransferTest, ATableOfASpreadsheetComesInByNameAndByNumber) {
  TakeTable("/t/clients.dbf");
  EXPECT_EQ(Done({"--json", "import", "/t/clients.dbf", "--map", "Nom=NOM", "--map", "Ste1=4",
                  "--map", "Adr1=ADRESSE1", "--map", "Tel1=tel1"}),
            "{\"cards\":200}\n");
  EXPECT_EQ(
      Done({"find", "Ste1=Assurances Tessier"}).find("Assurances Tessier") == std::string::npos,
      false);
  const std::string card = Done({"--json", "find", "Ste1=Assurances Tessier"});
  EXPECT_NE(card.find("\"fields\":{\"Ste1\":\"Assurances Tessier\",\"Adr1\":\"rue Dorothée "
                      "Buisson\",\"Nom\":\"Pascal\",\"Tel1\":\"01 48 61 17 01\"}"),
            std::string::npos)
      << card;
  ExpectConsistent();
}

TEST_F(DbaseTransferTest, AMappingServesTablesOfTheSameColumnsAlone) {
  TakeTable("/t/clients.dbf");
  TakeTable("/t/autres.dbf");
  const std::string reason =
      "aucune correspondance n'est connue pour /t/clients.dbf : --map CHAMP=COLONNE en donne une. "
      "Colonnes : QUALITE, PRENOM, NOM, SOCIETE, SERVICE, ADRESSE1, ADRESSE2, CP, VILLE, PAYS, "
      "TEL1, TEL2, FAX, MINITEL, MODEM, REF1, REF2, REF3, REF4, REF5, REF6, VIDE, NOTES";
  ExpectRefused({"import", "/t/clients.dbf"}, 1, reason);
  Done({"import", "/t/clients.dbf", "--map", "Nom=NOM", "--map", "Ste1=SOCIETE"});
  EXPECT_EQ(Done({"import", "/t/autres.dbf"}), "200 fiches transférées\n");
  Done({"mark", "1"});
  Done({"export", "/t/s.dbf"});
  EXPECT_EQ(On({"import", "/t/s.dbf"}).status, 1);
}

TEST_F(DbaseTransferTest, ColumnsThatAreNotThereAreRefused) {
  TakeTable("/t/c.dbf");
  ExpectRefused({"import", "/t/c.dbf", "--map", "Nom=NON"}, 1, "pas de colonne « NON »");
  ExpectRefused({"import", "/t/c.dbf", "--map", "Nom=24"}, 1,
                "pas de colonne n° 24 : le fichier en a 23");
  ExpectRefused({"import", "/t/c.dbf", "--map", "Nom=0"}, 1,
                "pas de colonne n° 0 : le fichier en a 23");
  SetFile("/t/x.dbf", "x");
  ExpectRefused({"import", "/t/x.dbf", "--map", "Nom=1"}, 1,
                "/t/x.dbf : Format du Fichier Dbase non reconnu");
}

TEST_F(DbaseTransferTest, TheTypeFollowsTheTableUnlessItWasGiven) {
  TakeTable("/t/c.dbf");
  SetVersion("/t/c.dbf", '\x43');
  const Words words = {"import", "/t/c.dbf",     "--map",  "Nom=NOM",
                       "--map",  "Ste1=SOCIETE", "--type", "dbase3"};
  ExpectRefused(words, 1, "rien n'est transféré");
  EXPECT_TRUE(On(words).err.starts_with("Le Fichier est Probablement d'origine Dbase IV."));
  Words yes = words;
  yes.emplace_back("--yes");
  EXPECT_EQ(Done(yes), "200 fiches transférées\n");
  EXPECT_EQ(On({"import", "/t/c.dbf", "--map", "Nom=NOM", "--map", "Ste1=SOCIETE"}).err, "");
}

TEST_F(DbaseTransferTest, WrongColumnsAreWrongUsage) {
  Done({"add", "Nom=a", "--mark"});
  TakeTable("/t/c.dbf");
  const std::string size = "--column : un nom de colonne a de 1 à 10 caractères du jeu OEM, non ";
  const std::vector<std::pair<Words, std::string>> wrong = {
      {{"import", "--map", "Nom"}, "--map : « Nom » n'est pas de la forme CHAMP=COLONNE"},
      {{"import", "--map", "Notes=1"}, "--map : « Notes » n'est pas un champ de ces fichiers"},
      {{"import", "--map", "Nom=1", "--map", "NOM=2"}, "--map : NOM est donné deux fois"},
      {{"export", "--column", "Nom"}, "--column : « Nom » n'est pas de la forme CHAMP=COLONNE"},
      {{"export", "--column", "Nom=A:X"},
       "--column : le type d'une colonne est C, N ou D, non « X »"},
      {{"export", "--column", "Nom="}, size + "«  »"},
      {{"export", "--column", "Nom=DOUZELETTRES"}, size + "« DOUZELETTRES »"},
      {{"export", "--column", "Nom=Ł"}, size + "« Ł »"},
      {{"export", "--map", "Nom=1"}, "option inconnue : --map"},
      {{"import", "--column", "Nom=A"}, "option inconnue : --column"}};
  for (const auto& [line, reason] : wrong) {
    Words words = {line[0], "/t/c.dbf"};
    words.insert(words.end(), line.begin() + 1, line.end());
    ExpectRefused(words, 2, reason);
  }
}

TEST_F(DbaseTransferTest, RecordsDoNotGoBehindWhatIsNoTable) {
  Done({"add", "Nom=a", "--mark"});
  Done({"export", "/t/s.dbf"});
  const std::string text = "a;b\r\nplus de trente-deux caractères en tout\r\n";
  SetFile("/t/s.csv", text);
  // Without a type it is that of the table.
  ExpectRefused({"export", "/t/s.csv"}, 1, "/t/s.csv : Format du Fichier Dbase non reconnu");
  EXPECT_EQ(TextOf("/t/s.csv"), text);
  const CliOutcome outcome = On({"export", "/t/neuf"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "type dbase3, celui du dernier transfert (--type en donne un autre)\n");
  EXPECT_EQ(On({"--quiet", "export", "/t/neuf"}).err, "");
  for (const char* type : {"dbase3", "delimited", "fixed"}) {
    ExpectRefused({"export", "/t", "--type", type}, 1, "Accès au fichier /t impossible");
  }
}

TEST_F(DbaseTransferTest, NothingMarkedLeavesATableAlone) {
  TakeTable("/t/c.dbf");
  const std::string before = TextOf("/t/c.dbf");
  for (const Words& more : {Words{}, Words{"--replace", "--yes"}}) {
    Words words = {"export", "/t/c.dbf"};
    words.insert(words.end(), more.begin(), more.end());
    ExpectRefused(words, 1, "Pas de sélection disponible");
  }
  ExpectRefused({"export", "/t/neuf.dbf"}, 1, "Pas de sélection disponible");
  EXPECT_EQ(TextOf("/t/c.dbf"), before);
  EXPECT_FALSE(files_.Exists("/t/neuf.dbf"));
}

}  // namespace
}  // namespace carnetel
