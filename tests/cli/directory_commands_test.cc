#include "storage/main_header.h"
#include "tests/cli/cli_testing.h"

namespace carnetel {
namespace {

using DirectoryCommands = CliTest;

TEST_F(DirectoryCommands, CreateMakesTheFamilyWithItsDescription) {
  const CliOutcome outcome = On({"create", "--description", "Clients d'été"});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(outcome.out, "");
  EXPECT_EQ(outcome.err, "Carnetel créé : /d/CLIENTS.DAN\n");
  const std::string main = TextOf("/d/CLIENTS.DAN");
  ASSERT_EQ(main.size(), 768U);
  EXPECT_EQ(main.substr(34, 14), std::string("Clients d'\x82t\x82\0", 14));
  EXPECT_EQ(TextOf("/d/CLIENTS.I01").size(), 18216U);
  EXPECT_EQ(TextOf("/d/CLIENTS.I02").size(), 18216U);
  EXPECT_EQ(TextOf("/d/CLIENTS.ADR").size(), 320U);
  EXPECT_EQ(TextOf("/d/CLIENTS.CRT").size(), 295U);
}

TEST_F(DirectoryCommands, CreateIsRefusedWhenTheDirectoryIsThereWhateverItsCase) {
  Done({"create"});
  const auto before = Family();
  for (const char* path : {"/d/CLIENTS", "/d/CLIENTS.DAN", "/d/clients.dan"}) {
    const CliOutcome outcome = Run({"-d", path, "create"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "Erreur : /d/CLIENTS.DAN : Le fichier existe déjà\n");
  }
  EXPECT_EQ(Family(), before);
}

TEST_F(DirectoryCommands, CreateCutsALongDescriptionWithAWarning) {
  const CliOutcome outcome = On({"create", "--description", std::string(42, 'x')});
  EXPECT_EQ(outcome.status, 0);
  EXPECT_NE(outcome.err.find("Attention : description : texte coupé à 41 caractères\n"),
            std::string::npos);
  EXPECT_EQ(TextOf("/d/CLIENTS.DAN").substr(34, 42), std::string(41, 'x') + '\0');
}

TEST_F(DirectoryCommands, CreateMakesNothingForADescriptionItCannotTake) {
  const CliOutcome outcome = On({"create", "--description", "Prix en €"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err,
            "Erreur : description : le caractère « € » n'existe pas dans la page de codes des "
            "fiches (850)\n");
  EXPECT_TRUE(Family().empty());
}

TEST_F(DirectoryCommands, PrivateNeedsASeat) {
  EXPECT_EQ(On({"create", "--private"}).status, 1);
  EXPECT_TRUE(Family().empty());
  Done({"create"});
  const auto before = Family();
  const CliOutcome outcome = On({"describe", "Autre", "--private"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_NE(outcome.err.find("numéro de poste"), std::string::npos);
  EXPECT_EQ(Family(), before);
}

TEST_F(DirectoryCommands, NoOtherCommandCreatesADirectory) {
  SetFile("/t/fiches.csv", "a;b\r\n");
  const std::vector<Words> commands = {{"info"},
                                       {"check"},
                                       {"describe", "x"},
                                       {"list"},
                                       {"find", "Nom=a"},
                                       {"mark", "--all"},
                                       {"unmark", "--all"},
                                       {"show", "1"},
                                       {"add", "Nom=a"},
                                       {"edit", "1", "Nom=a"},
                                       {"delete", "1"},
                                       {"import", "/t/fiches.csv"},
                                       {"export", "/t/sortie.csv"}};
  for (const Words& words : commands) {
    const CliOutcome outcome = On(words);
    EXPECT_EQ(outcome.status, 1) << words.front();
    EXPECT_EQ(outcome.out, "") << words.front();
    EXPECT_TRUE(outcome.err.starts_with(
        "Erreur : Accès au fichier /d/CLIENTS.DAN impossible : il n'existe pas"))
        << outcome.err;
    EXPECT_TRUE(Family().empty()) << words.front();
  }
}

TEST_F(DirectoryCommands, InfoTellsTheStateOfTheDirectory) {
  Done({"create", "--description", "Été"});
  Done({"add", "Ste1=Dupont", "--mark"});
  Done({"add", "Nom=Martin"});
  EXPECT_EQ(Done({"--json", "info"}),
            R"({"path":"/d/CLIENTS.DAN","version":"05.00","description":"Été","owner":0,"cards":2,)"
            R"("key":"societe","marked":1,"groups":0,)"
            R"("files":{"DAN":2304,"I01":18216,"I02":18216,"ADR":352,"CRT":295}})"
            "\n");
  EXPECT_EQ(Done({"info"}),
            "Chemin      : /d/CLIENTS.DAN\n"
            "Version     : 05.00\n"
            "Description : Été\n"
            "Poste       : public\n"
            "Fiches      : 2\n"
            "Index       : société\n"
            "Marquées    : 1\n"
            "Groupes     : 0\n"
            "Fichiers    : DAN 2304, I01 18216, I02 18216, ADR 352, CRT 295 octets\n");
}

TEST_F(DirectoryCommands, CheckTellsFindingsAndChangesNothing) {
  Done({"create"});
  Done({"add", "Ste1=Dupont"});
  EXPECT_EQ(Done({"check"}), "Aucune incohérence.\n");
  EXPECT_EQ(Done({"--json", "check"}), "{\"consistent\":true}\n");
  files_.SetContents("/d/CLIENTS.I01", ByteView(files_.Contents("/d/CLIENTS.I01")).first(506));
  const auto before = Family();
  const CliOutcome text = On({"check"});
  EXPECT_EQ(text.status, 1);
  EXPECT_TRUE(text.out.starts_with("I01")) << text.out;
  const CliOutcome json = On({"--json", "check"});
  EXPECT_EQ(json.status, 1);
  EXPECT_TRUE(json.out.starts_with(R"({"file":"I01","finding":")")) << json.out;
  EXPECT_TRUE(json.out.ends_with("\n{\"consistent\":false}\n")) << json.out;
  EXPECT_EQ(Family(), before);
}

TEST_F(DirectoryCommands, OpeningHealsWhatCheckFound) {
  Done({"create"});
  Done({"add", "Ste1=Dupont"});
  files_.Remove("/d/CLIENTS.I01");
  EXPECT_EQ(On({"check"}).status, 1);
  EXPECT_EQ(Done({"find", "Ste1=Dup"}), "1   Dupont\n");
  ExpectConsistent();
}

TEST_F(DirectoryCommands, DescribeWritesDescriptionAndOwner) {
  Done({"create", "--description", "Avant"});
  std::vector<std::byte> main = files_.Contents("/d/CLIENTS.DAN");
  StoreLe16(main, 106, 3);
  files_.SetContents("/d/CLIENTS.DAN", main);
  Done({"describe", "Après"});
  main = files_.Contents("/d/CLIENTS.DAN");
  EXPECT_EQ(CopyFieldText(ByteView(main).subspan(34), 42), "Apr\x8As");
  EXPECT_EQ(LoadLe16(main, 106), 3);
  Done({"describe", "", "--public"});
  main = files_.Contents("/d/CLIENTS.DAN");
  EXPECT_EQ(CopyFieldText(ByteView(main).subspan(34), 42), "");
  EXPECT_EQ(LoadLe16(main, 106), 0);
  EXPECT_EQ(On({"describe", "x", "--public", "--private"}).status, 2);
}

TEST_F(DirectoryCommands, DestroyAsksAndTakesTheWholeFamily) {
  Done({"create"});
  SetFile("/d/CLIENTS.GRP", "x");
  SetFile("/d/CLIENTS.T04", "x");
  SetFile("/d/AUTRE.TXT", "x");
  const auto before = Family();
  const CliOutcome refused = Run({"destroy", "/d/CLIENTS"});
  EXPECT_EQ(refused.status, 1);
  EXPECT_TRUE(refused.err.starts_with("Le fichier  /d/CLIENTS.DAN va être détruit Non (--yes"))
      << refused.err;
  EXPECT_EQ(Family(), before);
  const CliOutcome outcome = Run({"--yes", "destroy", "/d/clients.dan"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_EQ(files_.List("/d"), Words{"AUTRE.TXT"});
}

TEST_F(DirectoryCommands, DestroyTakesOnlyDirectories) {
  SetFile("/d/NOTES.DAN", std::string(768, 'x'));
  SetFile("/d/COURT.DAN", "x");
  Done({"create"});
  const auto before = Family();
  for (const char* path : {"/d/NOTES", "/d/COURT.DAN", "/d/CLIENTS.ADR", "/d/RIEN", "/d/", ""}) {
    const CliOutcome outcome = Run({"--yes", "destroy", path});
    EXPECT_EQ(outcome.status, 1) << path;
    EXPECT_NE(outcome.err, "");
  }
  EXPECT_EQ(Run({"--yes", "destroy", "/d/CLIENTS", "/d/RIEN"}).status, 1);
  EXPECT_EQ(Family(), before);
}

TEST_F(DirectoryCommands, ADirectoryThatAnotherProgramHasOpenIsLeftAlone) {
  Done({"create"});
  EXPECT_EQ(guarded_, Words{"/d/CLIENTS.ADR"});
  const auto before = Family();
  others_work_on_it_ = true;
  for (const Words& words :
       {Words{"list"}, Words{"check"}, Words{"--yes", "destroy", "/d/CLIENTS"}}) {
    const CliOutcome outcome = On(words);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.err, "Erreur : /d/CLIENTS.DAN est ouvert par un autre programme\n");
  }
  EXPECT_EQ(Family(), before);
}

TEST_F(DirectoryCommands, AFileThatIsNoDirectoryIsRefused) {
  SetFile("/d/CLIENTS.DAN", std::string(768, 'x'));
  const CliOutcome outcome = On({"list"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.err,
            "Erreur : /d/CLIENTS.DAN : Carnetel non valide - Choisissez un autre...\n");
}

TEST_F(DirectoryCommands, AnOlderDirectoryIsUpgradedAsItOpens) {
  std::string card(768, '\0');
  card.replace(0, 6, "DUPONT");
  card.replace(229, 8, "Monsieur");
  SetFile("/d/CLIENTS.DAN", "CARNETEL DROV SOFTW. VER 04.10" + std::string(738, '\0') + card);
  EXPECT_EQ(Done({"show", "1"}).find("Monsieur") != std::string::npos, true);
  const std::string main = TextOf("/d/CLIENTS.DAN");
  ASSERT_EQ(main.size(), 1536U);
  EXPECT_EQ(main.substr(0, 31), std::string("CARNETEL DROV SOFTW. VER 05.00\0", 31));
  EXPECT_EQ(main.substr(96, 2), std::string("\1\0", 2));
  EXPECT_EQ(main.substr(768 + 277, 9), std::string("Monsieur\0", 9));
  EXPECT_FALSE(files_.Exists("/d/CARNDAN.TMP"));
  ExpectConsistent();
}

TEST_F(DirectoryCommands, WithoutAPathTheProfileNamesTheDirectory) {
  EXPECT_EQ(Run({"create"}).status, 0);
  EXPECT_TRUE(files_.Exists("/home/u/carnetel/CARNETEL.DAN"));
  SetFile("/home/u/profile.ini", "[PhoneBook-DROV]\nFile1=&1 /d/CLIENTS\n");
  Done({"create", "--description", "Nommé"});
  const CliOutcome outcome = Run({"--json", "info"});
  EXPECT_NE(outcome.out.find("\"description\":\"Nommé\""), std::string::npos) << outcome.out;
  SetFile("/autre.ini", "[phonebook-drov]\nidindex=10\nfile1=/d/CLIENTS.DAN\n");
  const CliOutcome other = Run({"--profile", "/autre.ini", "--json", "info"});
  EXPECT_NE(other.out.find("\"key\":\"nom\""), std::string::npos) << other.out;
}

TEST_F(DirectoryCommands, AWriteThatFailsIsTold) {
  Done({"create"});
  disk_.FillDisk();
  const CliOutcome add = On({"add", "Ste1=Dupont"});
  EXPECT_EQ(add.status, 1);
  EXPECT_TRUE(
      add.err.starts_with("Erreur : Création ou modification impossible"
                          " : l'écriture a échoué\n"))
      << add.err;
  disk_.StopAfter(0);
  const CliOutcome describe = On({"describe", "x"});
  EXPECT_EQ(describe.status, 1);
  EXPECT_NE(describe.err, "");
  disk_.Heal();
  ExpectConsistent();
}

}  // namespace
}  // namespace carnetel
