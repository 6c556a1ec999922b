#include "tests/cli/cli_testing.h"
#include "tests/link/exchange_request_testing.h"

namespace carnetel {
namespace {

constexpr char kFile[] = "/t/NUM.DAT";

class ExchangeCommandTest : public CliTest {
 protected:
  void SetUp() override {
    Done({"create"});
    Done({"add", "Ste1=ZOLA S.A.", "Nom=Léonard", "Tel1=01 40"});
    Done({"add", "Ste1=ACME", "Nom=Dupont", "Tel1=02"});
    Done({"add", "Ste1=BETA", "Nom=Dupont", "Tel1=03"});
  }
  // Leaves a request for these rows, in ANSI, and serves it.
  CliOutcome Exchange(const std::vector<RequestRows>& requests, const Words& words) {
    SetFile(kFile, ExchangeBytes(requests));
    Words all = words;
    all.insert(std::find(all.begin(), all.end(), "exchange") + 1, kFile);
    return On(all);
  }
  CliOutcome LookUp(std::string_view surname, const Words& words) {
    return Exchange({{{surname, kNom}}}, words);
  }
};

const std::vector<RequestRows> kAcme = {{{"", kNom}, {"ACME", kSte1}}};

TEST_F(ExchangeCommandTest, ALookUpPrintsItsReply) {
  const CliOutcome found = LookUp("L\xE9onard", {"exchange", "--type", "6"});
  EXPECT_EQ(found.status, 0) << found.err;
  EXPECT_EQ(found.out, "3 Léonard : 01 40\n");
  EXPECT_EQ(TextOf(kFile).size(), 288U + 149);
  const CliOutcome json = LookUp("L\xE9onard", {"--json", "exchange", "--type", "6", "--long"});
  EXPECT_EQ(json.out, "{\"result\":1,\"name\":\"Léonard\",\"number\":\"01 40\",\"row\":3}\n");
  EXPECT_EQ(TextOf(kFile).size(), 288U + 161);
}

TEST_F(ExchangeCommandTest, ALookUpWithoutReplyIsRefused) {
  const std::string reason =
      "la demande reste sans réponse : aucune fiche à ce nom n'a de numéro Tel1, ou plusieurs";
  for (const char* name : {"Dupont", "Martin", "-"}) {
    const CliOutcome outcome = LookUp(name, {"exchange", "--type", "6"});
    EXPECT_EQ(outcome.status, 1) << name;
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err, "Erreur : " + reason + "\n");
    EXPECT_EQ(TextOf(kFile).size(), 269U);
  }
}

TEST_F(ExchangeCommandTest, ARewriteGivesTheFileItsForm) {
  EXPECT_EQ(LookUp("Dupont", {"exchange", "--type", "7"}).out, "");
  EXPECT_EQ(TextOf(kFile).size(), 288U);
  EXPECT_EQ(TextOf(kFile).substr(0, 8), "Carnetel");
  EXPECT_EQ(LookUp("Dupont", {"--json", "exchange", "--type", "7"}).out, "{\"result\":1}\n");
}

TEST_F(ExchangeCommandTest, AnInsertionPrintsTheNumberOfCards) {
  const CliOutcome outcome =
      Exchange({{{"Martin", kNom}, {"GAMMA", kSte1}}, {{"", kNom}, {"DELTA", kSte1}}},
               {"exchange", "--type", "8"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, "2 fiche(s) créée(s)\n");
  EXPECT_EQ(outcome.err, "");
  EXPECT_FALSE(files_.Exists(kFile));
  EXPECT_EQ(Done({"list"}), "1   ACME\n2   BETA\n3   DELTA\n4   GAMMA\n5   ZOLA S.A.\n");
  const CliOutcome json = Exchange({{{"Simon", kNom}}}, {"--json", "exchange", "--type", "8"});
  EXPECT_EQ(json.out, "{\"result\":1,\"cards\":1}\n");
  ExpectConsistent();
}

TEST_F(ExchangeCommandTest, WithoutATerminalACardThatExistsIsLeftOut) {
  const CliOutcome outcome = Exchange(kAcme, {"exchange", "--type", "8"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, "0 fiche(s) créée(s)\n");
  EXPECT_EQ(outcome.err,
            "Une fiche: ACME existe déjà. Voulez-vous insérer une nouvelle entrée ? "
            "Abandonner (--yes pour répondre oui)\n"
            "Erreur : rien n'est inséré\n");
}

TEST_F(ExchangeCommandTest, YesInsertsACardOfItsOwn) {
  EXPECT_EQ(Exchange(kAcme, {"--yes", "exchange", "--type", "8"}).out, "1 fiche(s) créée(s)\n");
  const std::string card = Done({"--json", "show", "2"});
  EXPECT_NE(card.find("\"fields\":{\"Ste1\":\"ACME\"}"), std::string::npos) << card;
}

TEST_F(ExchangeCommandTest, AtATerminalThereAreThreeAnswers) {
  can_ask_ = true;
  const std::string question =
      "Une fiche: ACME existe déjà. Voulez-vous insérer une nouvelle entrée ? [o/n/A] ";
  input_ = "n\n";
  CliOutcome outcome = Exchange(kAcme, {"exchange", "--type", "8"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.err, question);
  std::string card = Done({"--json", "show", "2"});
  EXPECT_NE(card.find("\"Nom\":\"Dupont\""), std::string::npos) << card;
  input_ = "Oui\n";
  EXPECT_EQ(Exchange(kAcme, {"exchange", "--type", "8"}).status, 0);
  card = Done({"--json", "show", "3"});
  EXPECT_EQ(card.find("\"Nom\""), std::string::npos) << card;
  for (const char* answer : {"a\n", "\n", ""}) {
    input_ = answer;
    EXPECT_EQ(Exchange(kAcme, {"exchange", "--type", "8"}).status, 1) << answer;
  }
}

TEST_F(ExchangeCommandTest, ARecordWithoutNameIsRefused) {
  const CliOutcome outcome =
      Exchange({{{"", kNom}, {"GAMMA", kSte1}}, {{"", kNom}}}, {"exchange", "--type", "8"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.out, "1 fiche(s) créée(s)\n");
  EXPECT_EQ(outcome.err,
            "Erreur : Insertion de la fiche  dans l'carnetel /d/CLIENTS.DAN refusée.\n");
  EXPECT_TRUE(files_.Exists(kFile));
  ExpectConsistent();
}

TEST_F(ExchangeCommandTest, FilesThatAreNoneAreRefused) {
  SetFile("/t/court.dat", std::string(268, 'A'));
  SetFile("/t/champs.dat", ExchangeBytes({{{"", kNom}, {"ACME", kSte1}, {"x", 31}}}));
  ExpectRefused({"exchange", "/t/court.dat", "--type", "6"}, 1,
                "/t/court.dat n'est pas un fichier d'échange");
  ExpectRefused({"exchange", "/t/champs.dat", "--type", "8"}, 1,
                "/t/champs.dat n'est pas un fichier d'échange");
  ExpectRefused({"exchange", "/t/rien.dat", "--type", "7"}, 1,
                "Accès au fichier /t/rien.dat impossible");
  ExpectRefused({"exchange", "/d/CLIENTS.DAN", "--type", "8"}, 1,
                "Impossible de transférer le fichier /d/CLIENTS.DAN sur lui-même");
}

TEST_F(ExchangeCommandTest, TheTypeIsSixSevenOrEight) {
  SetFile(kFile, ExchangeBytes(kAcme));
  ExpectRefused({"exchange", kFile}, 2, "--type prend 6, 7 ou 8");
  ExpectRefused({"exchange", kFile, "--type", "9"}, 2, "--type prend 6, 7 ou 8");
}

TEST_F(ExchangeCommandTest, AScriptGoesOnWithTheDirectory) {
  SetFile(kFile, ExchangeBytes({{{"L\xE9onard", kNom}}}));
  input_ = std::string("exchange ") + kFile + " --type 6\nlist --letter B\n";
  EXPECT_EQ(Done({"batch"}), "3 Léonard : 01 40\n2   BETA\n");
}

}  // namespace
}  // namespace carnetel
