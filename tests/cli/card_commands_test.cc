#include "storage/card_record.h"
#include "tests/cli/cli_testing.h"

namespace carnetel {
namespace {

class CardCommands : public CliTest {
 protected:
  void SetUp() override { Done({"create"}); }

  CardRecord Card(uint32_t offset) {
    CardRecord card;
    const std::vector<std::byte> main = files_.Contents("/d/CLIENTS.DAN");
    std::ranges::copy(ByteView(main).subspan(offset, kCardSize), card.bytes().begin());
    return card;
  }
};

TEST_F(CardCommands, AddPrintsTheRowOfTheNewCard) {
  EXPECT_EQ(Done({"add", "Ste1=Martin"}), "1\n");
  EXPECT_EQ(Done({"add", "Ste1=Dupont"}), "1\n");
  EXPECT_EQ(Done({"add", "Nom=Zola"}), "3\n");
  ExpectConsistent();
}

TEST_F(CardCommands, AddStoresEveryFieldInOemAndThePostalCodeTwice) {
  EXPECT_EQ(Done({"--json", "add", "sTe1=Café", "CP=75001-12", "#4=Bât", "#30=fin", "--mark"}),
            R"({"row":1,"offset":768,"marked":true,"groups":[],"label":"Café",)"
            R"("fields":{"Ste1":"Café","#4":"Bât","#5":"75001","CP":"75001-12","#30":"fin"}})"
            "\n");
  const CardRecord card = Card(768);
  EXPECT_EQ(card.FieldText(kSte1).bytes(), "Caf\x82");
  EXPECT_EQ(card.FieldText(kAdr3).bytes(), "B\x83t");
  EXPECT_EQ(card.FieldText(kPostalCode).bytes(), "75001-12");
  EXPECT_EQ(card.FieldText(kShortPostalCode).bytes(), "75001");
}

TEST_F(CardCommands, AddCutsALongValueWithAWarning) {
  const CliOutcome outcome = On({"add", "Ste1=" + std::string(33, 'a')});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "Attention : champ Ste1 : texte coupé à 32 caractères\n");
  EXPECT_EQ(Card(768).FieldText(kSte1).bytes(), std::string(32, 'a'));
}

TEST_F(CardCommands, AddTakesOffWhatNoKeyStartsWith) {
  const CliOutcome outcome = On({"add", "Ste1= (Dupont)", "Ville= Paris"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_TRUE(outcome.err.starts_with("Attention : les premiers caractères de Ste1 et Nom"));
  EXPECT_EQ(Card(768).FieldText(kSte1).bytes(), "Dupont)");
  EXPECT_EQ(Card(768).FieldText(kVille).bytes(), " Paris");
}

TEST_F(CardCommands, WhatACardCannotHoldIsRefusedAndNothingIsWritten) {
  Done({"add", "Ste1=Dupont"});
  const auto before = Family();
  const std::vector<std::pair<std::string, std::string>> refusals = {
      {"Ville=Łódź", "champ Ville : le caractère « Ł »"},
      {"Nom=10 €", "champ Nom : le caractère « € »"},
      {"Nom=a\tb", "champ Nom : les caractères de contrôle"},
      {"Notes=a\rb", "champ Notes : les caractères de contrôle"},
      {"Ville=a\r\nb", "champ Ville : les caractères de contrôle"},
      {"Ste1=(", "Fiche incomplète : le champ d'index est obligatoire\n"}};
  for (const auto& [assignment, reason] : refusals) {
    const CliOutcome add = On({"add", "Ville=x", assignment});
    EXPECT_EQ(add.status, 1);
    EXPECT_NE(add.err.find("Erreur : " + reason), std::string::npos) << add.err;
    const CliOutcome edit = On({"edit", "1", "Ville=x", assignment});
    EXPECT_EQ(edit.status, 1);
    EXPECT_NE(edit.err.find("Erreur : " + reason), std::string::npos) << edit.err;
  }
  EXPECT_EQ(Family(), before);
}

TEST_F(CardCommands, LineEndsOfNotesAreCrLf) {
  Done({"add", "Nom=a", "Notes=un\ndeux\r\ntrois"});
  EXPECT_EQ(Card(768).FieldText(kNotes).bytes(), "un\r\ndeux\r\ntrois");
  // The cut does not leave half a line end.
  EXPECT_EQ(On({"edit", "1", "Notes=" + std::string(63, 'x') + "\n"}).status, 0);
  EXPECT_EQ(Card(768).FieldText(kNotes).bytes(), std::string(63, 'x'));
}

TEST_F(CardCommands, AddFromInputTakesWhatJsonPrints) {
  Done({"add", "Nom=Éluard", "CP=75001"});
  Done({"add", "Ste1=Dupont", "Notes=un\ndeux", "--mark"});
  input_ = Done({"--json", "show", "1", "2"});
  EXPECT_EQ(Run({"-d", "/d/COPIE", "create"}).status, 0);
  const CliOutcome added = Run({"-d", "/d/COPIE", "add", "-"});
  EXPECT_EQ(added.status, 0) << added.err;
  EXPECT_EQ(Run({"-d", "/d/COPIE", "check"}).status, 0);
  const CliOutcome copy = Run({"-d", "/d/COPIE", "--json", "show", "1", "2"});
  EXPECT_EQ(copy.out, input_);
}

TEST_F(CardCommands, AddFromInputPassesOverAByteOrderMark) {
  input_ = "\xEF\xBB\xBF{\"fields\":{\"Nom\":\"Un\"}}\n";
  EXPECT_EQ(On({"add", "-"}).out, "1\n");
}

TEST_F(CardCommands, AddFromInputKeepsTheCardsInFrontOfARefusedOne) {
  input_ =
      "{\"fields\":{\"Nom\":\"Un\"}}\n\n"
      "{\"fields\":{\"Nom\":\"Łódź\"}}\n"
      "{\"fields\":{\"Nom\":\"Trois\"}}\n";
  const CliOutcome outcome = On({"add", "-"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, "1\n");
  EXPECT_NE(outcome.err.find("champ Nom : le caractère « Ł »"), std::string::npos);
  EXPECT_NE(outcome.err.find("fiche de la ligne 3 refusée"), std::string::npos);
  EXPECT_EQ(Done({"list"}), "1   Un\n");
  ExpectConsistent();
}

TEST_F(CardCommands, AddFromInputSaysWhatIsNoCard) {
  const std::vector<std::pair<std::string, std::string>> lines = {
      {"rien", "fiche de la ligne 1 : ce n'est pas un objet JSON"},
      {"[1]", "fiche de la ligne 1 : ce n'est pas un objet JSON"},
      {"{\"Nom\":\"x\"}", "fiche de la ligne 1 : la fiche n'a pas d'objet « fields »"},
      {"{\"fields\":{\"Nom\":3}}", "fiche de la ligne 1 : le champ Nom n'est pas un texte"},
      {"{\"fields\":{\"Nam\":\"x\"}}", "« Nam » n'est pas un champ"}};
  for (const auto& [line, reason] : lines) {
    input_ = line + "\n";
    const CliOutcome outcome = On({"add", "-"});
    EXPECT_EQ(outcome.status, 1) << line;
    EXPECT_NE(outcome.err.find(reason), std::string::npos) << outcome.err;
  }
  EXPECT_EQ(Done({"list"}), "");
}

TEST_F(CardCommands, ShowPrintsWholeCards) {
  Done({"add", "Ste1=Dupont", "Ville=Orléans", "Notes=un\ndeux", "--mark"});
  Done({"add", "Nom=Martin"});
  EXPECT_EQ(Done({"show", "1", "@1536"}),
            "Fiche 1 (@768) marquée\n"
            "  Ste1     Dupont\n"
            "  Ville    Orléans\n"
            "  Notes    un\n"
            "           deux\n"
            "\n"
            "Fiche 2 (@1536)\n"
            "  Nom      Martin\n");
  EXPECT_EQ(Done({"--json", "show", "2"}),
            R"({"row":2,"offset":1536,"marked":false,"groups":[],"label":"Martin",)"
            R"("fields":{"Nom":"Martin"}})"
            "\n");
}

TEST_F(CardCommands, ControlBytesOfForeignFilesDoNotReachTheTerminal) {
  SetFile("/t/f.csv", "a\x1B[2Jb\r\n");
  Done({"import", "/t/f.csv", "--columns", "Nom"});
  EXPECT_EQ(Done({"list"}), "1   a [2Jb\n");
  EXPECT_EQ(Done({"show", "1"}), "Fiche 1 (@768)\n  Nom      a [2Jb\n");
}

TEST_F(CardCommands, RowsThatAreNotThereAreRefused) {
  Done({"add", "Nom=a"});
  const auto before = Family();
  for (const char* row : {"0", "2", "@0", "@769", "@1536", "4294967295"}) {
    EXPECT_EQ(On({"show", "1", row}).status, 1) << row;
    EXPECT_EQ(On({"--yes", "delete", "1", row}).status, 1) << row;
    EXPECT_EQ(On({"mark", "1", row}).status, 1) << row;
  }
  for (const char* row : {"", "x", "1a", "@", "@x", "+1", "4294967296"}) {
    EXPECT_EQ(On({"show", row}).status, 2) << row;
  }
  EXPECT_EQ(On({"show", "2"}).err, "Erreur : pas de fiche à la ligne 2\n");
  EXPECT_EQ(On({"show", "@1"}).err, "Erreur : pas de fiche à la position @1\n");
  EXPECT_EQ(Family(), before);
}

TEST_F(CardCommands, EditInPlaceKeepsTheOtherFields) {
  Done({"add", "Ste1=Dupont", "#11=a", "#21=b", "#30=c", "Tel1=1"});
  EXPECT_EQ(Done({"edit", "1", "Tel1=2", "#30="}), "1\n");
  const CardRecord card = Card(768);
  EXPECT_EQ(card.FieldText(kTel1).bytes(), "2");
  EXPECT_EQ(card.FieldText(kSparePerson).bytes(), "a");
  EXPECT_EQ(card.FieldText(kServiceType).bytes(), "b");
  EXPECT_EQ(card.FieldText(kSpare30).bytes(), "");
  EXPECT_EQ(TextOf("/d/CLIENTS.DAN").size(), 2U * 768);
  ExpectConsistent();
}

TEST_F(CardCommands, EditOfAnErasedPostalCodeErasesBothFields) {
  Done({"add", "Nom=a", "CP=75001"});
  Done({"edit", "1", "CP="});
  EXPECT_TRUE(Card(768).FieldEmpty(kPostalCode));
  EXPECT_TRUE(Card(768).FieldEmpty(kShortPostalCode));
}

TEST_F(CardCommands, EditOfAKeyMovesTheCardAndKeepsItsMark) {
  Done({"add", "Ste1=Alpha", "#27=x", "--mark"});
  Done({"add", "Ste1=Beta"});
  EXPECT_EQ(Done({"edit", "1", "Ste1=Gamma"}), "2\n");
  EXPECT_EQ(Done({"list"}), "1   Beta\n2 * Gamma\n");
  EXPECT_EQ(Done({"--json", "show", "2"}),
            R"({"row":2,"offset":1536,"marked":true,"groups":[],"label":"Gamma",)"
            R"("fields":{"Ste1":"Gamma","#27":"x"}})"
            "\n");
  EXPECT_NE(Done({"info"}).find("Marquées    : 1\n"), std::string::npos);
  ExpectConsistent();
}

TEST_F(CardCommands, DeleteAsksByTheNameOfTheCard) {
  Done({"add", "Ste1=Dupont"});
  Done({"add", "Nom=Éluard"});
  const auto before = Family();
  const CliOutcome refused = On({"delete", "2"});
  EXPECT_EQ(refused.status, 1);
  EXPECT_EQ(refused.err,
            "La fiche Dupont va être détruite ... Non (--yes pour répondre oui)\n"
            "Erreur : rien n'est supprimé\n");
  EXPECT_EQ(Family(), before);
  can_ask_ = true;
  for (const char* answer : {"", "\n", "n\n", "non\n"}) {
    input_ = answer;
    EXPECT_EQ(On({"delete", "1"}).status, 1);
    EXPECT_EQ(Family(), before);
  }
  input_ = "o\n";
  const CliOutcome done = On({"delete", "1"});
  EXPECT_EQ(done.status, 0);
  EXPECT_EQ(done.err, "La fiche Éluard va être détruite ... [o/N] 1 fiche supprimée\n");
  EXPECT_EQ(Done({"list"}), "1   Dupont\n");
  ExpectConsistent();
}

TEST_F(CardCommands, DeleteOfSeveralRowsKeepsTheTargetsRight) {
  for (const char* name : {"Ste1=A", "Ste1=B", "Ste1=C", "Ste1=D"}) Done({"add", name});
  // The last card moves into the first freed place and is a target itself.
  Done({"--yes", "delete", "1", "4", "1"});
  EXPECT_EQ(Done({"list"}), "1   B\n2   C\n");
  EXPECT_EQ(TextOf("/d/CLIENTS.DAN").size(), 3U * 768);
  ExpectConsistent();
  Done({"--yes", "delete", "@768", "1"});
  EXPECT_EQ(TextOf("/d/CLIENTS.DAN").size(), 768U);
  ExpectConsistent();
}

TEST_F(CardCommands, DeleteMarkedTakesAllMarkedCards) {
  EXPECT_EQ(On({"--yes", "delete", "--marked"}).err, "Erreur : Pas de sélection disponible\n");
  for (const char* name : {"Ste1=A", "Ste1=B", "Ste1=C"}) Done({"add", name});
  Done({"mark", "1", "3"});
  EXPECT_EQ(On({"delete", "--marked"}).status, 1);
  const CliOutcome outcome = On({"--yes", "delete", "--marked"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, "2 fiches supprimées\n");
  EXPECT_EQ(Done({"list"}), "1   B\n");
  EXPECT_NE(Done({"info"}).find("Marquées    : 0\n"), std::string::npos);
  ExpectConsistent();
  EXPECT_EQ(On({"delete"}).status, 2);
  EXPECT_EQ(On({"delete", "1", "--marked"}).status, 2);
}

TEST_F(CardCommands, DeleteStopsWhenTheUserWantsIt) {
  for (const char* name : {"Ste1=A", "Ste1=B", "Ste1=C"}) Done({"add", name, "--mark"});
  interrupt_after_ = 0;
  EXPECT_EQ(On({"--yes", "delete", "--marked"}).status, 1);
  interrupt_after_ = -1;
  EXPECT_EQ(Done({"list"}), "1 * B\n2 * C\n");
  ExpectConsistent();
}

TEST_F(CardCommands, GroupsOfACardAreNamed) {
  Done({"add", "Nom=a", "--mark"});
  Done({"group", "create", "Élus"});
  Done({"group", "create", "Amis"});
  Done({"add", "Nom=b", "--mark"});
  Done({"group", "create", "Autres"});
  EXPECT_NE(Done({"--json", "show", "1"}).find(R"("groups":["Élus","Amis","Autres"])"),
            std::string::npos);
  EXPECT_NE(Done({"show", "1"}).find("  Groupes  Élus, Amis, Autres\n"), std::string::npos);
  EXPECT_NE(Done({"show", "2"}).find("  Groupes  Autres\n"), std::string::npos);
  EXPECT_NE(Done({"--json", "info"}).find(R"("groups":3)"), std::string::npos);
}

}  // namespace
}  // namespace carnetel
