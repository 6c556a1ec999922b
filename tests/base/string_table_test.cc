#include "base/string_table.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "base/code_page.h"
#include "base/utf8.h"

namespace carnetel {
namespace {

constexpr int kLastId = 283;

// Numbers below the last one that have no text.
const std::set<int> kEmptyIds = {4,   11,  21,  23,  27,  28,  29,  42,  83,  153, 154,
                                 163, 200, 208, 209, 210, 211, 212, 213, 214, 215, 216,
                                 217, 218, 219, 229, 241, 242, 243, 244, 253};

TEST(StringTable, EveryNumberHasItsTextOrNone) {
  for (int id = 0; id <= kLastId; ++id) {
    EXPECT_EQ(LoadText(id).empty(), kEmptyIds.count(id) == 1) << id;
  }
}

TEST(StringTable, ANumberWithoutARowIsEmpty) {
  EXPECT_EQ(LoadText(-1), "");
  EXPECT_EQ(LoadText(kLastId + 1), "");
  EXPECT_EQ(LoadText(1524), "");
}

TEST(StringTable, NoTextIsLongerThanItsLimit) {
  for (int id = 0; id <= kLastId; ++id) {
    EXPECT_LE(CountCharacters(LoadText(id)), kLongestText) << id;
  }
}

TEST(StringTable, EveryTextHasAPlaceInBothCodePages) {
  for (int id = 0; id <= kLastId; ++id) {
    EXPECT_EQ(OemFromUtf8(LoadText(id)).refused, "") << id;
    EXPECT_EQ(AnsiFromUtf8(LoadText(id)).refused, "") << id;
  }
}

TEST(StringTable, TextsEndInAZeroByte) {
  EXPECT_EQ(std::string(LoadText(52).data()), "CARNETEL");
  EXPECT_EQ(std::string(LoadText(4).data()), "");
}

TEST(StringTable, ShortNamesOfTheFields) {
  const char* const names[] = {"Ste1", "Ste2",    "Adr1",   "Adr2",  "",     "CP",   "Ville",
                               "Pays", "Qualite", "Prenom", "Nom",   "",     "Ref1", "Ref2",
                               "Ref3", "Ref4",    "Ref5",   "Ref6",  "Tel1", "Tel2", "Mtel",
                               "",     "Fax",     "",       "Modem", "CP",   "Notes"};
  int id = 0;
  for (const char* const name : names) {
    EXPECT_EQ(LoadText(id), name) << id;
    ++id;
  }
}

TEST(StringTable, LongNamesOfTheFields) {
  const char* const names[] = {"STE1",       "STE2",       "ADRESSE1",   "ADRESSE2",   "ADRESSE3",
                               "CODEPOSTAL", "VILLE",      "PAYS",       "QUALITE",    "PRENOM",
                               "NOM",        "VIDE",       "REFERENCE1", "REFERENCE2", "REFERENCE3",
                               "REFERENCE4", "REFERENCE5", "REFERENCE6", "TELEPHONE1", "TELEPHONE2",
                               "MINITEL",    "TYPE SRV",   "TELECOPIE",  "NINIT",      "MODEM",
                               "CODEPOST"};
  int id = 127;
  for (const char* const name : names) {
    EXPECT_EQ(LoadText(id), name) << id;
    ++id;
  }
}

TEST(StringTable, BlanksAtTheEndBelongToTheText) {
  EXPECT_EQ(LoadText(51), "Carnetel ");
  EXPECT_EQ(LoadText(85), "Carnetel ");
  EXPECT_EQ(LoadText(30), "Fiche incomplète : le champ d'index est obligatoire ");
  EXPECT_EQ(LoadText(164), "Tout le Fichier ");
  EXPECT_EQ(LoadText(179), "Le fichier  %s va être détruit ");
}

TEST(StringTable, Accents) {
  EXPECT_EQ(LoadText(117), "Qualit\u00E9");
  EXPECT_EQ(LoadText(57), "Suppression de %u fiche(s) en cours");
  EXPECT_EQ(LoadText(74), "Acc\u00E8der au syst\u00E8me d'aide en ligne");
  EXPECT_EQ(LoadText(186), "%s  (Poste N\u00B0 %02d)");
  EXPECT_EQ(LoadText(254), "Soci\u00E9t\u00E9");
  EXPECT_EQ(LoadText(190),
            "Acc\u00E8s a %s refus\u00E9. \nCarnetel priv\u00E9 de: %s  (Poste N\u00B0 %02d)\n"
            "Charger l'carnetel d\u00E9faut ?");
}

TEST(StringTable, LineFeedsAndQuotes) {
  EXPECT_EQ(LoadText(31), "La fiche %s \nva être détruite ...");
  EXPECT_EQ(LoadText(36), "Le jeu \"%s\" va être supprimé...");
  EXPECT_EQ(LoadText(94), "%s\nErreur en écriture...");
  EXPECT_EQ(LoadText(180), "Le champ \" %s\"\nrecouvre le champ \" %s\" !");
  EXPECT_EQ(LoadText(183),
            "Le fichier %s est incompatible avec le type de transfer choisi.\n"
            "Désirez-vous poursuivre l'opération ?");
}

TEST(StringTable, LongTextsAreWhole) {
  EXPECT_EQ(LoadText(279),
            "Liste de fiches saturée: [ %d ] fiches non chargées. \n Actionnez les onglets des "
            "lettres pour les visualiser !");
}

TEST(StringTable, FileBanners) {
  EXPECT_EQ(LoadText(86), "CARNETEL DROV SOFTW. VER %s");
  EXPECT_EQ(LoadText(87), "CARNETEL (c) DROV SOFTWARE 1992");
  EXPECT_EQ(LoadText(88), "Fichier carnetel principal ver %s");
  EXPECT_EQ(LoadText(89), "Fichier carnetel d'adresses ver %s");
}

TEST(StringTable, FiltersEndInTheirSeparator) {
  EXPECT_EQ(LoadText(167),
            "Fichier(*.*)|*.*|Fichier Texte(*.txt)|*.txt|Fichier Ascii(*.asc)|*.asc|"
            "Fichier Carnetel(*.dan)|*.DAN|Fichier Dbf(*.dbf)|*.dbf|");
  EXPECT_EQ(LoadText(168), "Fichier Carnetel(*.Dan)|*.DAN|");
  EXPECT_EQ(LoadText(184), "Fichier Dbf (*.dbf)|*.dbf|");
}

}  // namespace
}  // namespace carnetel
