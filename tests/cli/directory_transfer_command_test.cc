// Import from and export to another directory.
#include "tests/cli/cli_testing.h"

namespace carnetel {
namespace {

class DirectoryTransferCommandTest : public CliTest {
 protected:
  void SetUp() override {
    Done({"create"});
    for (const char* name : {"Nom=Bez", "Nom=Dupont", "Nom=Frémy"}) Done({"add", name});
  }
  std::string ListOf(const std::string& directory) { return Run({"-d", directory, "list"}).out; }
};

TEST_F(DirectoryTransferCommandTest, AnExportMakesASubFileOrCompletesOne) {
  Done({"mark", "1", "3"});
  EXPECT_EQ(Done({"--json", "export", "/t/SUB", "--type", "directory"}), "{\"cards\":2}\n");
  EXPECT_EQ(files_.List("/t"), std::vector<std::string>{"SUB.DAN"});
  // The main file as it is: the cards' own bytes behind the header.
  EXPECT_EQ(TextOf("/t/SUB.DAN").substr(768), TextOf("/d/CLIENTS.DAN").substr(768, 768) +
                                                  TextOf("/d/CLIENTS.DAN").substr(3 * 768, 768));
  EXPECT_EQ(ListOf("/t/SUB"), "1   Bez\n2   Frémy\n");
  EXPECT_EQ(Done({"export", "/t/SUB.DAN"}), "2 fiches transférées\n");
  EXPECT_EQ(ListOf("/t/SUB"), "1   Bez\n2   Bez\n3   Frémy\n4   Frémy\n");
  EXPECT_EQ(On({"export", "/t/SUB.DAN", "--replace"}).status, 1);
  Done({"export", "/t/SUB.txt", "--type", "directory", "--replace", "--yes"});
  EXPECT_EQ(ListOf("/t/SUB"), "1   Bez\n2   Frémy\n");
  EXPECT_FALSE(files_.Exists("/t/SUB.txt"));
}

TEST_F(DirectoryTransferCommandTest, AnExportGuardsItsDestinationToo) {
  Done({"mark", "1"});
  guarded_.clear();
  Done({"export", "/t/SUB.DAN"});
  EXPECT_EQ(guarded_, (std::vector<std::string>{"/d/CLIENTS.ADR", "/t/SUB.ADR"}));
}

TEST_F(DirectoryTransferCommandTest, AnImportAddsAllCardsOfTheOther) {
  Run({"-d", "/t/x", "create"});
  Run({"-d", "/t/x", "add", "Nom=Zola"});
  ASSERT_TRUE(files_.Exists("/t/x.DAN"));
  for (const char* file : {"/t/x.DAN", "/t/x.dan"}) {
    EXPECT_EQ(Done({"import", file}), "1 fiche transférée\n");
  }
  EXPECT_EQ(Done({"import", "/t/x"}), "1 fiche transférée\n");
  EXPECT_EQ(Done({"list"}), "1   Bez\n2   Dupont\n3   Frémy\n4   Zola\n5   Zola\n6   Zola\n");
  ExpectConsistent();
}

TEST_F(DirectoryTransferCommandTest, WhatIsNoDirectoryIsRefused) {
  SetFile("/t/f.txt", "x");
  ExpectRefused({"import", "/t/f.txt", "--type", "directory"}, 1,
                "le fichier /t/f.txt est incompatible avec le type de transfer choisi.");
  ExpectRefused({"import", "/t/absent", "--type", "directory"}, 1,
                "Accès au fichier /t/absent impossible");
  for (const char* command : {"import", "export"}) {
    ExpectRefused({command, "/d/../d/CLIENTS", "--type", "directory"}, 1,
                  "Impossible de transférer le fichier /d/../d/CLIENTS sur lui-même");
  }
  ExpectRefused({"export", "/t/SUB.DAN", "--replace"}, 1, "Pas de sélection disponible");
  EXPECT_FALSE(files_.Exists("/t/SUB.DAN"));
}

}  // namespace
}  // namespace carnetel
