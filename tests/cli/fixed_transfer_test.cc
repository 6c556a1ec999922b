// Import and export of files of fixed records.
#include "tests/cli/cli_testing.h"
#include "transfer/parameter_file.h"

namespace carnetel {
namespace {

class FixedTransferTest : public CliTest {
 protected:
  void SetUp() override { Done({"create"}); }
  Words With(Words words, const Words& options) {
    words.insert(words.end(), options.begin(), options.end());
    return words;
  }

  const Words layout_ = {"--type", "fixed",   "--offset", "2",       "--size",
                         "16",     "--place", "Nom@0:6",  "--place", "Ville@8:8"};
};

TEST_F(FixedTransferTest, ExportWritesTheRecordsByteByByte) {
  Done({"add", "Nom=Bez", "Ville=Évry", "Ste1=X", "--mark"});
  Done({"add", "Nom=Éluard", "Ville=Montpellier", "--mark"});
  EXPECT_EQ(Done(With({"--json", "export", "/t/f"}, layout_)), "{\"cards\":2}\n");
  using namespace std::string_view_literals;
  const std::string golden(
      "\0\0"
      "\x90luard\0\0Montpell"
      "Bez\0\0\0\0\0\x90vry\0\0\0\0"sv);
  EXPECT_EQ(TextOf("/t/f"), golden);
  // Type and layout are those of the last transfer, and a second export goes behind the first.
  Done({"export", "/t/f", "--charset", "ansi"});
  EXPECT_EQ(TextOf("/t/f").size(), 66U);
  EXPECT_EQ(TextOf("/t/f").substr(34, 6), "\xC9luard");
  Done({"export", "/t/f", "--replace", "--yes"});
  EXPECT_EQ(TextOf("/t/f"), golden);
}

TEST_F(FixedTransferTest, ImportTakesWholeRecordsBehindTheOffset) {
  SetFile("/t/f", "##Bez     Lille   Dupont  Paris   court");
  EXPECT_EQ(Done(With({"import", "/t/f"}, layout_)), "2 fiches transférées\n");
  EXPECT_EQ(Done({"show", "2"}),
            "Fiche 2 (@1536)\n"
            "  Ville    Paris   \n"
            "  Nom      Dupont\n");
  ExpectConsistent();
}

TEST_F(FixedTransferTest, PlacesLeaveNoOtherFieldOne) {
  SetFile("/t/f", "##Bez     Lille   ");
  Done(With({"import", "/t/f"}, layout_));
  ParameterFile kept(files_, "/home/u/carnetel/CARNETEL.TRS");
  kept.StartTransfer(TransferDirection::kExport);
  EXPECT_EQ(kept.profile().type(), static_cast<int16_t>(TransferFileType::kFixed));
  EXPECT_EQ(kept.profile().first_card_offset(), 2);
  EXPECT_EQ(kept.profile().card_size(), 16);
  for (int field = 0; field < kFieldCount; ++field) {
    const int16_t size = field == kNom ? 6 : field == kVille ? 8 : 0;
    EXPECT_EQ(kept.profile().place(field).size, size) << field;
  }
}

TEST_F(FixedTransferTest, TheDefaultLayoutComesBackExact) {
  Done({"add", "Ste1=Dupont", "Nom=Éluard", "CP=45000", "Ref6=r", "Notes=à rappeler", "--mark"});
  Done({"export", "/t/f", "--type", "fixed"});
  EXPECT_EQ(TextOf("/t/f").size(), 2U * 768);
  EXPECT_EQ(Done({"import", "/t/f", "--replace", "--yes"}), "1 fiche transférée\n");
  EXPECT_EQ(Done({"show", "1"}),
            "Fiche 1 (@768)\n"
            "  Ste1     Dupont\n"
            "  Nom      Éluard\n"
            "  Ref6     r\n"
            "  CP       45000\n"
            "  Notes    à rappeler\n");
}

TEST_F(FixedTransferTest, LayoutsThatDoNotHoldTogetherAreRefused) {
  SetFile("/t/f", "x");
  const std::vector<std::pair<Words, std::string>> wrong = {
      {{"--size", "0"}, "la taille d'une fiche est 0 : --size donne celle du fichier"},
      {{"--size", "10", "--place", "Ste1@8:3"},
       "La rubrique \" Société1\" : dépasse les limites de l'enregistrement !"},
      {{"--place", "Ste1@0:9", "--place", "Ville@8:3"},
       "Le champ \" Ville\" : recouvre le champ \" Société1\" !"},
      {{"--place", "Ste1@0:9", "--place", "Ref4@8:3"},
       "Le champ \" Réf. 4\" : recouvre le champ \" Société1\" !"}};
  for (const auto& [options, reason] : wrong) {
    ExpectRefused(With({"import", "/t/f", "--type", "fixed"}, options), 1, reason);
  }
  // Nothing of it was kept.
  ParameterFile kept(files_, "/home/u/carnetel/CARNETEL.TRS");
  kept.StartTransfer(TransferDirection::kExport);
  EXPECT_EQ(kept.profile().card_size(), 768);
}

TEST_F(FixedTransferTest, WrongNumbersAndPlacesAreWrongUsage) {
  SetFile("/t/f", "x");
  const std::string shape = "n'est pas de la forme CHAMP@POSITION:TAILLE";
  const std::vector<std::pair<Words, std::string>> wrong = {
      {{"--offset", "1000"}, "--offset demande un nombre de 0 à 999"},
      {{"--size", "-1"}, "--size demande un nombre de 0 à 999"},
      {{"--size", "12x"}, "--size demande un nombre de 0 à 999"},
      {{"--place", "Nom"}, "--place : « Nom » " + shape},
      {{"--place", "Nom@3"}, "--place : « Nom@3 » " + shape},
      {{"--place", "Nom:3@4"}, "--place : « Nom:3@4 » " + shape},
      {{"--place", "Nom@:4"}, "--place : « Nom@:4 » " + shape},
      {{"--place", "Nam@1:4"}, "--place : « Nam » n'est pas un champ de ces fichiers"},
      {{"--place", "#4@1:4"}, "--place : « #4 » n'est pas un champ de ces fichiers"},
      {{"--place", "Nom@1:4", "--place", "nom@5:4"}, "--place : nom est donné deux fois"}};
  for (const auto& [options, reason] : wrong) {
    ExpectRefused(With({"import", "/t/f", "--type", "fixed"}, options), 2, reason);
  }
}

}  // namespace
}  // namespace carnetel
