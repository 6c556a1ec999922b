#include "tests/cli/cli_testing.h"

namespace carnetel {
namespace {

constexpr size_t kUserComposition = 248;

class LayoutCommandTest : public CliTest {
 protected:
  void SetUp() override { Done({"create"}); }

  // Field choices and widths of the user's composition, up to the first that is 0.
  std::vector<std::pair<int, int>> Stored() {
    const std::string text = TextOf("/d/CLIENTS.LST");
    std::vector<std::pair<int, int>> columns;
    for (size_t at = kUserComposition; at + 8 <= text.size() && text[at] != 0; at += 8) {
      const ByteView column = AsBytes(text).subspan(at, 8);
      columns.emplace_back(LoadLe32(column, 0), LoadLe32(column, 4));
    }
    return columns;
  }
};

using Columns = std::vector<std::pair<int, int>>;

TEST_F(LayoutCommandTest, ANewDirectoryShowsTheFactoryComposition) {
  const std::string text =
      " 1  Ste1      30\n"
      " 2  Adr1      30\n"
      " 3  CP         5\n"
      " 4  Fax       12\n"
      "Largeur de la liste : 80 colonnes\n";
  EXPECT_EQ(Done({"layout", "show"}), text);
  EXPECT_EQ(Done({"layout", "show", "--factory"}), text);
  EXPECT_EQ(TextOf("/d/CLIENTS.LST").size(), 368U);
}

TEST_F(LayoutCommandTest, TheJsonFormHasTheColumnsAndTheWidth) {
  EXPECT_EQ(Done({"--json", "layout", "show"}),
            "{\"columns\":[{\"field\":\"Ste1\",\"width\":30},{\"field\":\"Adr1\",\"width\":30},"
            "{\"field\":\"CP\",\"width\":5},{\"field\":\"Fax\",\"width\":12}],\"width\":80}\n");
}

TEST_F(LayoutCommandTest, SetStoresTheUsersCopyAndLeavesTheFactorysAlone) {
  EXPECT_EQ(Done({"layout", "set", "NOM:20", "cp:1", "Notes:064"}), "");
  EXPECT_EQ(Stored(), (Columns{{2, 20}, {7, 1}, {20, 64}}));
  EXPECT_EQ(Done({"layout", "show"}),
            " 1  Nom       20\n"
            " 2  CP         1\n"
            " 3  Notes     64\n"
            "Largeur de la liste : 87 colonnes\n");
  EXPECT_EQ(Done({"--json", "layout", "show", "--factory"}).find("Ste1") != std::string::npos,
            true);
  Done({"layout", "set", "Ville:9"});
  EXPECT_EQ(Stored(), (Columns{{8, 9}}));
}

TEST_F(LayoutCommandTest, TwelveColumnsAreTheMost) {
  Words words = {"layout", "set"};
  Columns columns;
  for (int i = 1; i <= 12; ++i) {
    words.push_back("Tel2:" + std::to_string(i));
    columns.emplace_back(11, i);
  }
  Done(words);
  EXPECT_EQ(Stored(), columns);
  words.emplace_back("Tel1:9");
  ExpectRefused(words, 2, "argument en trop : Tel1:9");
}

TEST_F(LayoutCommandTest, AWiderListThanALineIsToldAndStored) {
  EXPECT_EQ(On({"layout", "set", "Ste1:64", "Ste2:63"}).err, "");
  const CliOutcome wide = On({"layout", "set", "Ste1:64", "Ste2:64"});
  EXPECT_EQ(wide.status, 0);
  EXPECT_EQ(wide.err,
            "Attention : Largeur de la liste : 129 colonnes ; une ligne imprimée en a 128 au plus, "
            "le reste est coupé\n");
  Done({"layout", "set", "Ste1:999"});
  EXPECT_EQ(Stored(), (Columns{{3, 999}}));
}

TEST_F(LayoutCommandTest, EveryFieldOfTheListIsOfferedAndNoOther) {
  const Words offered = {"Prenom", "Nom",  "Ste1", "Ste2", "Adr1", "Adr2",  "CP",
                         "Ville",  "Pays", "Tel1", "Tel2", "Fax",  "Modem", "Ref1",
                         "Ref2",   "Ref3", "Ref4", "Ref5", "Ref6", "Notes"};
  for (size_t i = 0; i < offered.size(); ++i) {
    Done({"layout", "set", offered[i] + ":7"});
    EXPECT_EQ(Stored(), (Columns{{static_cast<int>(i) + 1, 7}}));
  }
  for (const char* name : {"Qualite", "Mtel", "#5", "#11", "Truc", ""}) {
    ExpectRefused({"layout", "set", std::string(name) + ":7"}, 2,
                  "« " + std::string(name) + " » n'est pas un champ de la liste imprimée");
  }
}

TEST_F(LayoutCommandTest, AWrongColumnIsWrongUsageAndNothingIsWritten) {
  Done({"layout", "show"});
  for (const char* word : {"Nom", "Nom:", "Nom:0", "Nom:1000", "Nom:-1", "Nom:+5", "Nom:x",
                           "Nom:5x", "Nom:4294967297", "Nom:5:6", "Nom: 5"}) {
    ExpectRefused({"layout", "set", "Ste1:5", word}, 2,
                  "« " + std::string(word) + " » n'est pas de la forme CHAMP:LARGEUR, de 1 à 999");
  }
  ExpectRefused({"layout", "set"}, 2, "il manque un argument : layout set CHAMP:LARGEUR…");
  ExpectRefused({"layout", "set", "Nom:5", "--factory"}, 2,
                "l'option --factory n'a pas de sens avec « layout set »");
  ExpectRefused({"layout", "reset"}, 2, "action inconnue : reset");
  ExpectRefused({"layout", "show", "Nom"}, 2, "argument en trop : Nom");
}

TEST_F(LayoutCommandTest, ADiskThatFailsIsToldAndADirectoryIsNeeded) {
  Done({"layout", "show"});
  disk_.StopAfter(0);
  ExpectRefused({"layout", "set", "Nom:5"}, 1, "la composition n'a pas pu être écrite");
  disk_.Heal();
  EXPECT_EQ(Stored().size(), 4U);
  EXPECT_EQ(Run({"-d", "/d/AUTRE", "layout", "show"}).status, 1);
}

TEST_F(LayoutCommandTest, ACompositionWithoutColumnsIsEmpty) {
  Done({"layout", "show"});
  std::string text = TextOf("/d/CLIENTS.LST");
  text.replace(kUserComposition, 120, 120, '\0');
  SetFile("/d/CLIENTS.LST", text);
  EXPECT_EQ(Done({"--json", "layout", "show"}), "{\"columns\":[],\"width\":0}\n");
  EXPECT_EQ(Done({"layout", "show"}), "Largeur de la liste : 0 colonnes\n");
}

}  // namespace
}  // namespace carnetel
