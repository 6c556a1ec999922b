#include "tests/cli/cli_testing.h"
#include "tests/support/same_bytes.h"

namespace carnetel {
namespace {

class ExtractCommandTest : public CliTest {
 protected:
  void SetUp() override { Done({"create"}); }

  // In the order of the list: Ada at 768, Bob at 1536 (marked), Cyr at 2304 (no fax), Dan at 3072.
  void AddFour() {
    Done({"add", "Ste1=Ada", "Nom=Été", "Fax=01 01"});
    Done({"add", "Ste1=Bob", "Fax=02 02", "--mark"});
    Done({"add", "Ste1=Cyr", "Tel1=03 03", "--mark"});
    Done({"add", "Ste1=Dan", "Fax=04 04", "Modem=44"});
  }
  static std::string Padded(std::string text, size_t size) {
    text.resize(size, '\0');
    return text;
  }
  static std::string Short(const std::string& number, const std::string& offset,
                           const std::string& company, const std::string& path) {
    return Padded(number, 30) + Padded(offset, 10) + Padded(company, 48) + Padded(path, 61);
  }
  void ExpectFile(const std::string& expected) {
    EXPECT_TRUE(SameBytes(AsBytes(expected), files_.Contents("/t/X")));
  }
  void ExpectNothing(const Words& words, int status, const std::string& reason) {
    ExpectRefused(words, status, reason);
    EXPECT_FALSE(files_.Exists("/t/X"));
  }
  const std::string at_768_ = std::string("\0\3", 2);
  const std::string at_1536_ = std::string("\0\6", 2);
  const std::string at_3072_ = std::string("\0\x0C", 2);
};

TEST_F(ExtractCommandTest, ARowLeavesOneRecord) {
  AddFour();
  EXPECT_EQ(Done({"extract", "/t/X", "--number", "fax", "--row", "4"}), "1 fiche extraite\n");
  ExpectFile(Short("04 04", at_3072_, "Dan", "/D/CLIENTS.DAN"));
  EXPECT_EQ(Done({"--json", "extract", "/t/X", "--number", "modem", "--row", "@3072"}),
            "{\"cards\":1}\n");
  ExpectFile(Short("04 04", at_3072_, "Dan", "/D/CLIENTS.DAN") +
             Short("44", at_3072_, "Dan", "/D/CLIENTS.DAN"));
}

TEST_F(ExtractCommandTest, TheSelectionAndAllCardsWithSuchANumber) {
  AddFour();
  EXPECT_EQ(Done({"extract", "/t/X", "--number", "fax", "--selection"}), "1 fiche extraite\n");
  EXPECT_EQ(Done({"extract", "/t/X", "--number", "fax", "--all"}), "3 fiches extraites\n");
  ExpectFile(Short("02 02", at_1536_, "Bob", "/d/CLIENTS.DAN") +
             Short("01 01", at_768_, "Ada", "/D/CLIENTS.DAN") +
             Short("02 02", at_1536_, "Bob", "/D/CLIENTS.DAN") +
             Short("04 04", at_3072_, "Dan", "/D/CLIENTS.DAN"));
}

TEST_F(ExtractCommandTest, LongRecords) {
  AddFour();
  Done({"extract", "/t/X", "--number", "fax", "--row", "1", "--long"});
  ExpectFile(Padded("01 01", 30) + Padded(at_768_, 4) + Padded("\xC9t\xE9", 33) +
             Padded("Ada", 33) + Padded("/D/CLIENTS.DAN", 61));
}

TEST_F(ExtractCommandTest, OfAGroupItsMembersAndItsMarks) {
  AddFour();
  Done({"mark", "4"});
  Done({"group", "create", "Nord"});
  EXPECT_EQ(Done({"extract", "/t/X", "--number", "fax", "--all", "--group", "nord"}),
            "2 fiches extraites\n");
  Done({"mark", "4", "--group", "Nord"});
  EXPECT_EQ(Done({"extract", "/t/X", "--number", "fax", "--selection", "--group", "Nord"}),
            "1 fiche extraite\n");
  ExpectFile(Short("02 02", at_1536_, "Bob", "/D/CLIENTS.DAN") +
             Short("04 04", at_3072_, "Dan", "/D/CLIENTS.DAN") +
             Short("04 04", at_3072_, "Dan", "/d/CLIENTS.DAN"));
  ExpectRefused({"extract", "/t/Y", "--number", "fax", "--row", "1", "--group", "Nord"}, 1,
                "la fiche de la ligne 1 n'est pas de celles qui ont un tel numéro");
  ExpectRefused({"extract", "/t/Y", "--number", "fax", "--all", "--group", "Sud"}, 1,
                "pas de groupe « Sud »");
  EXPECT_FALSE(files_.Exists("/t/Y"));
}

TEST_F(ExtractCommandTest, AGroupThatShowsTheWholeFileGivesItsMembersAlone) {
  AddFour();
  Done({"group", "create", "Nord", "--whole"});
  EXPECT_EQ(Done({"extract", "/t/X", "--number", "fax", "--all", "--group", "Nord"}),
            "1 fiche extraite\n");
}

TEST_F(ExtractCommandTest, AViafaxJob) {
  AddFour();
  SetFile("/home/u/profile.ini", "[PhoneBook-DROV]\nViafaxOption=2\n");
  SetFile("/home/u/carnetel/CARNETEL.INI", "[General]\nUserName=Hélène\n");
  SetFile("/home/u/carnetel/FAXER.INI", "[General]\nUserName=Anne\n");
  const Words extract = {"extract", "/t/VIAF07", "--number", "fax", "--row", "1", "--viafax"};
  EXPECT_EQ(Done(extract), "1 fiche extraite\n");
  const std::string start =
      "NOM CLIENT\r\n\r\nADMIN BL=7,PW=\"\",REL=\"\"\r\n\r\nPW=\"/\"\r\n"
      "PM=\"N\",\r\nPMID=\"\",\r\nSUBJ=\"\",\r\nUREF=\"\",\r\nCC=\"\",\r\n";
  const std::string end =
      "TO=\"Ada\",\r\nRE=\"\",\r\nADR02=\"\",\r\nADR08=\"\x90t\x82-Ada\",\r\n"
      "ADR01=01 01,TYPE=FAXG3,PRI=2\r\nNNNN\r\n";
  EXPECT_EQ(TextOf("/t/VIAF07"), start + "FROM=\"H\xE9l\xE8ne\",\r\n" + end);
  files_.Remove("/t/VIAF07");
  Words of_another = extract;
  of_another.insert(of_another.end(), {"--appli", "FAXER"});
  Done(of_another);
  EXPECT_EQ(TextOf("/t/VIAF07"), start + "FROM=\"Anne\",\r\n" + end);
  EXPECT_EQ(Done({"--json", "extract", "/t/VIAF07", "--number", "fax", "--all", "--viafax"}),
            "{\"cards\":3}\n");
}

TEST_F(ExtractCommandTest, ACardThatTheChooserWouldNotListIsRefused) {
  AddFour();
  const std::string reason = "la fiche de la ligne 3 n'est pas de celles qui ont un tel numéro";
  for (const char* form : {"--long", "--viafax"}) {
    ExpectNothing({"extract", "/t/X", "--number", "fax", "--row", "3", form}, 1, reason);
  }
  ExpectNothing({"extract", "/t/X", "--number", "fax", "--row", "9"}, 1,
                "pas de fiche à la ligne 9");
}

TEST_F(ExtractCommandTest, WithTheSecondTelephoneThereIsNothingToExtract) {
  Done({"add", "Ste1=Ada", "Tel2=01 01", "--mark"});
  ExpectNothing({"extract", "/t/X", "--number", "tel2", "--row", "1"}, 1,
                "la fiche de la ligne 1 n'est pas de celles qui ont un tel numéro");
  ExpectNothing({"extract", "/t/X", "--number", "tel2", "--selection"}, 1,
                "Pas de sélection disponible");
  ExpectNothing({"extract", "/t/X", "--number", "tel2", "--all"}, 1,
                "aucune fiche n'a un tel numéro");
}

TEST_F(ExtractCommandTest, AnEmptySelectionIsRefused) {
  AddFour();
  Done({"unmark", "--all"});
  ExpectNothing({"extract", "/t/X", "--number", "fax", "--selection"}, 1,
                "Pas de sélection disponible");
}

TEST_F(ExtractCommandTest, AnEmptyNumberIsTold) {
  Done({"add", "Ste1=Ada", "Fax=1"});
  ExpectRefused({"extract", "/t/X", "--number", "fax", "--row", "1", "--long"}, 1,
                "La fiche sélectionnée ne comporte pas de numéro...");
  ExpectFile("");
  EXPECT_EQ(Done({"extract", "/t/X", "--number", "fax", "--row", "1"}), "1 fiche extraite\n");
}

TEST_F(ExtractCommandTest, NeverIntoAFileOfItsOwnFamily) {
  AddFour();
  for (const char* file :
       {"/d/CLIENTS.DAN", "/d/../d/CLIENTS.ADR", "/d/CLIENTS.GRP", "/d/clients.dan"}) {
    ExpectRefused({"extract", file, "--number", "fax", "--all"}, 1,
                  "Impossible de transférer le fichier " + std::string(file) + " sur lui-même");
  }
}

TEST_F(ExtractCommandTest, AFileThatCannotBeOpenedOrWrittenIsTold) {
  AddFour();
  SetFile("/t/fichier", "x");
  ExpectRefused({"extract", "/t/fichier/X", "--number", "fax", "--all"}, 1,
                "Accès au fichier /t/fichier/X impossible");
  SetFile("/t/X", "ancien");
  disk_.FillDisk();
  const CliOutcome outcome = On({"extract", "/t/X", "--number", "fax", "--all"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.err, "Erreur : /t/X : Erreur en écriture...\n");
  EXPECT_EQ(TextOf("/t/X"), "ancien");
}

TEST_F(ExtractCommandTest, WrongUsageChangesNothing) {
  AddFour();
  const std::string which = "il faut une ligne (--row), ou --selection, ou --all";
  const std::string kind = "--number demande fax, modem, minitel, tel1 ou tel2";
  const std::vector<std::pair<Words, std::string>> wrong = {
      {{"--all"}, kind},
      {{"--number", "telex", "--all"}, kind},
      {{"--number", "fax"}, which},
      {{"--number", "fax", "--all", "--selection"}, which},
      {{"--number", "fax", "--row", "1", "--all"}, which},
      {{"--number", "fax", "--row", "x"}, "« x » n'est ni une ligne ni une @position"},
      {{"--number", "fax", "--all", "--viafax", "--long"},
       "l'option --long n'a pas de sens avec --viafax"},
      {{"--number", "fax", "--all", "--appli", "FAXER"},
       "l'option --appli n'a de sens qu'avec --viafax"},
      {{"--number", "fax", "--all", "--viafax", "--appli", "../FAXER"},
       "--appli demande un nom, sans chemin"}};
  for (const auto& [options, reason] : wrong) {
    Words words = {"extract", "/t/X"};
    words.insert(words.end(), options.begin(), options.end());
    ExpectNothing(words, 2, reason);
  }
  EXPECT_EQ(On({"extract", "--number", "fax", "--all"}).status, 2);
  EXPECT_EQ(On({"extract", "", "--number", "fax", "--all"}).status, 2);
}

}  // namespace
}  // namespace carnetel
