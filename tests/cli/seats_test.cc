// The tool as one of several seats on a directory: --seat and --shared-dir.
#include "storage/card_dispatch.h"
#include "tests/cli/cli_testing.h"

namespace carnetel {
namespace {

const char* const kHeld = "Fiche en cours de modification par un autre poste";

class CliSeats : public CliTest {
 protected:
  // The tool at a seat, on the directory that all of them share.
  CliOutcome At(int seat, const Words& words) {
    Words all = {"-d",           "/reseau/COMMUN",
                 "--seat",       std::to_string(seat),
                 "--shared-dir", "/poste" + std::to_string(seat),
                 "--yes"};
    all.insert(all.end(), words.begin(), words.end());
    return Run(all);
  }
  std::string DoneAt(int seat, const Words& words) {
    const CliOutcome outcome = At(seat, words);
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    return outcome.out;
  }
  void ExpectRefusedAt(int seat, const Words& words, const std::string& reason) {
    const auto before = files_.Contents("/reseau/COMMUN.DAN");
    const CliOutcome outcome = At(seat, words);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(outcome.out, "");
    EXPECT_NE(outcome.err.find("Erreur : " + reason + "\n"), std::string::npos) << outcome.err;
    EXPECT_EQ(files_.Contents("/reseau/COMMUN.DAN"), before);
  }
  void BuildThree() {
    DoneAt(1, {"create"});
    for (const char* company : {"ALPHA", "BETA", "CESAR"}) {
      DoneAt(1, {"add", std::string("Ste1=") + company});
    }
  }
  // Another seat edits the card with this number, from 1.
  [[nodiscard]] std::unique_ptr<RangeLock> Edited(uint64_t number) {
    return files_.LockRange("/reseau/COMMUN.DAN", 768 * number, 768);
  }
};

// ---- the options ----

TEST_F(CliSeats, BothOptionsAreNeeded) {
  for (const Words& words : {Words{"--seat", "1", "info"}, Words{"--shared-dir", "/poste1", "info"},
                             Words{"--seat", "1", "--shared-dir", "", "info"}}) {
    ExpectRefused(words, 2, "--seat et --shared-dir vont ensemble");
  }
}

TEST_F(CliSeats, ASeatIsANumberFromOne) {
  for (const char* seat : {"0", "-1", "un", "1x", "65536", "99999999999"}) {
    ExpectRefused({"--seat=" + std::string(seat), "--shared-dir", "/p", "info"}, 2,
                  "--seat demande un numéro de poste, 1 ou plus");
  }
}

TEST_F(CliSeats, OptionsMayStandBehindTheCommandAndNotInAScript) {
  BuildThree();
  const CliOutcome outcome =
      Run({"-d", "/reseau/COMMUN", "info", "--shared-dir=/poste2/", "--seat=2"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_TRUE(files_.Exists("/poste2/COMMUN.ADR"));
  input_ = "list --seat 3\n";
  EXPECT_EQ(At(1, {"batch"}).status, 2);
}

// ---- files ----

TEST_F(CliSeats, ASeatsOwnFilesLieInItsFolder) {
  BuildThree();
  DoneAt(2, {"list"});
  const auto names = files_.List("/reseau");
  EXPECT_EQ(names, (std::vector<std::string>{"COMMUN.DAN", "COMMUN.I01", "COMMUN.I02"}));
  for (const char* folder : {"/poste1", "/poste2"}) {
    EXPECT_EQ(files_.List(folder),
              (std::vector<std::string>{"COMMUN.ADR", "COMMUN.CRT", "COMMUN.GRP"}));
  }
  EXPECT_EQ(guarded_.back(), "/poste2/COMMUN.ADR");
}

TEST_F(CliSeats, EachSeatHasItsOwnMarks) {
  BuildThree();
  DoneAt(1, {"mark", "2"});
  EXPECT_EQ(DoneAt(1, {"--json", "unmark", "3"}), "{\"marked\":1}\n");
  EXPECT_EQ(DoneAt(2, {"--json", "unmark", "3"}), "{\"marked\":0}\n");
}

TEST_F(CliSeats, ASeatSeesWhatAnotherDidAndKeepsItsMarks) {
  BuildThree();
  DoneAt(2, {"mark", "2"});
  DoneAt(1, {"add", "Ste1=AVANT"});
  EXPECT_NE(DoneAt(2, {"list", "--marked"}).find("BETA"), std::string::npos);
  EXPECT_EQ(DoneAt(2, {"check"}), "Aucune incohérence.\n");
  DoneAt(2, {"edit", "1", "Ville=Lille"});
  DoneAt(2, {"delete", "4"});
  EXPECT_EQ(DoneAt(1, {"check"}).find("fiche"), std::string::npos);
  EXPECT_NE(DoneAt(1, {"show", "1"}).find("Lille"), std::string::npos);
}

TEST_F(CliSeats, WithoutASeatNothingIsLocked) {
  Done({"create"});
  Done({"add", "Ste1=ALPHA"});
  Done({"edit", "1", "Ste1=BETA"});
  Done({"--yes", "delete", "1"});
  Done({"check"});
  EXPECT_EQ(files_.counts().locks, 0);
}

// ---- what others are at ----

TEST_F(CliSeats, ACardThatAnotherSeatEditsIsLeft) {
  BuildThree();
  const auto lock = Edited(1);
  ExpectRefusedAt(2, {"edit", "1", "Ville=Lille"}, kHeld);
  ExpectRefusedAt(2, {"edit", "1", "Ste1=ZORRO"}, kHeld);
  ExpectRefusedAt(2, {"--quiet", "delete", "1"}, kHeld);
}

TEST_F(CliSeats, TheLastCardUnderEditKeepsOthersFromBeingDeleted) {
  BuildThree();
  const auto lock = Edited(3);
  ExpectRefusedAt(2, {"--quiet", "delete", "1"}, kHeld);
  ExpectRefusedAt(2, {"edit", "1", "Ste1=ZORRO"}, kHeld);
  DoneAt(2, {"edit", "1", "Ville=Lille"});
  DoneAt(2, {"add", "Ste1=DELTA"});
}

TEST_F(CliSeats, OfSeveralThoseThatAreFreeGo) {
  BuildThree();
  DoneAt(2, {"mark", "--all"});
  const auto lock = Edited(1);
  const CliOutcome outcome = At(2, {"delete", "--marked"});
  EXPECT_EQ(outcome.status, 1);
  EXPECT_NE(outcome.err.find("2 fiches supprimées"), std::string::npos) << outcome.err;
  EXPECT_NE(outcome.err.find(kHeld), std::string::npos);
  EXPECT_EQ(DoneAt(2, {"list"}), "1 * ALPHA\n");
}

// A script keeps the directory open between its commands: each of them sees what others did.
TEST_F(CliSeats, EveryCommandOfAScriptTakesOverWhatOthersDid) {
  BuildThree();
  DirectoryOptions options;
  options.path = "/reseau/COMMUN";
  options.shared_dir = "/poste9/";
  SilentProgress silent;
  Directory other({files_, clock_, silent}, options);
  ASSERT_EQ(other.OpenDirectory(), OpenResult::kOpened);
  input_ = "list\nadd Ste1=DELTA\ncheck\nlist\n";
  int added = 0;
  while_running_ = [&] {
    other.context().current.Clear();
    other.context().current.SetField(kSte1, OemText("X" + std::to_string(++added)));
    uint32_t position = 0;
    EXPECT_EQ(CardDispatch(other).Add(false, &position), 0);
  };
  const CliOutcome outcome = At(1, {"batch"});
  EXPECT_EQ(outcome.status, 0) << outcome.err;
  EXPECT_NE(outcome.out.find("Aucune incohérence."), std::string::npos) << outcome.out;
  EXPECT_NE(outcome.out.rfind("X4"), std::string::npos);
  EXPECT_EQ(other.main().count(), 3U + 1 + static_cast<uint32_t>(added));
}

TEST_F(CliSeats, FilesThatCannotBeLockedEndTheRun) {
  BuildThree();
  SetFile("/poste7", "a file, no folder");
  ExpectRefusedAt(7, {"list"}, "L'utilisation de l'carnetel sous Réseau nécéssite le SHARE Dos");
}

// ---- private directories ----

TEST_F(CliSeats, APrivateDirectoryIsItsSeats) {
  DoneAt(2, {"create", "--private"});
  EXPECT_NE(DoneAt(2, {"--json", "info"}).find("\"owner\":2"), std::string::npos);
  ExpectRefusedAt(1, {"list"}, "Accès refusé, Carnetel privé de:   (Poste N° 02)");
  ExpectRefusedAt(12, {"describe", "x", "--public"},
                  "Accès refusé, Carnetel privé de:   (Poste N° 02)");
}

TEST_F(CliSeats, ADirectoryIsMadePrivateAndPublicAgain) {
  BuildThree();
  DoneAt(1, {"describe", "Ventes", "--private"});
  EXPECT_EQ(At(2, {"list"}).status, 1);
  DoneAt(1, {"describe", "Ventes", "--public"});
  EXPECT_EQ(At(2, {"list"}).status, 0);
  DoneAt(2, {"describe", "Achats"});
  EXPECT_NE(DoneAt(1, {"--json", "info"}).find("\"owner\":0"), std::string::npos);
}

TEST_F(CliSeats, WithoutASeatEveryDirectoryOpensAndNoneIsMadePrivate) {
  DoneAt(2, {"create", "--private"});
  EXPECT_EQ(Run({"-d", "/reseau/COMMUN", "list"}).status, 0);
  EXPECT_EQ(Run({"-d", "/reseau/COMMUN", "describe", "x", "--private"}).status, 1);
}

TEST_F(CliSeats, APrivateDirectoryIsDestroyedByItsSeatOnlyWithThatSeatsFiles) {
  DoneAt(2, {"create", "--private"});
  ExpectRefusedAt(1, {"--yes", "destroy", "/reseau/COMMUN"},
                  "Accès refusé, Carnetel privé de:   (Poste N° 02)");
  EXPECT_TRUE(files_.Exists("/reseau/COMMUN.DAN"));
  DoneAt(2, {"--yes", "destroy", "/reseau/COMMUN"});
  EXPECT_FALSE(files_.Exists("/reseau/COMMUN.DAN"));
  EXPECT_FALSE(files_.Exists("/poste2/COMMUN.ADR"));
}

TEST_F(CliSeats, TheHighestSeatNumberIsAnOwnerToo) {
  DoneAt(65535, {"create", "--private"});
  EXPECT_NE(DoneAt(65535, {"--json", "info"}).find("\"owner\":65535"), std::string::npos);
  ExpectRefusedAt(1, {"list"}, "Accès refusé, Carnetel privé de:   (Poste N° 65535)");
}

}  // namespace
}  // namespace carnetel
