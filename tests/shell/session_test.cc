#include "shell/session.h"

#include <unistd.h>

#include "tests/shell/window_fixture.h"

namespace carnetel {
namespace {

using Shown = std::vector<QueuedMessages::Entry>;

class SessionTest : public WindowFixture {
 protected:
  bool Open() { return session->OpenAtStart(&fell_back); }
  void MakeFile(const std::string& path, std::string_view text = "no directory") {
    memory.SetContents(path, AsBytes(text));
  }
  void SetOwner(const std::string& stem, uint8_t seat) {
    std::vector<std::byte> bytes = memory.Contents(stem + ".DAN");
    ASSERT_GT(bytes.size(), MainHeader::kOwnerOffset);
    bytes[MainHeader::kOwnerOffset] = std::byte{seat};
    memory.SetContents(stem + ".DAN", bytes);
  }
  // A caller on seat 3, whose exchange file lies in the folder "seat/".
  StartupRequest FromSeat(int32_t type = 0) const {
    StartupRequest request;
    request.launch_type = type;
    request.exchange_file_path = home + "seat/ECHANGE.DAT";
    request.workstation_number = 3;
    return request;
  }
  static StartupRequest Direct(const std::string& path) {
    StartupRequest request;
    request.direct_open = true;
    request.direct_path = path;
    return request;
  }
};

// ---- settings ----

TEST_F(SessionTest, WritesTheDefaultsOfFiveSettingsBack) {
  StartSession();
  EXPECT_EQ(AsChars(memory.Contents("/profile.ini")),
            "[PhoneBook-DROV]\nIdindex=0\nShowRefCor=1\nStyleAffList=1\nStyleAffSte=0\n"
            "DebutSaisie=0\n");
}

TEST_F(SessionTest, KeepsTheSettingsOfTheProfile) {
  const std::vector<std::pair<std::string, std::string>> stored = {{"Idindex", "10"},
                                                                   {"ShowRefCor", "0"},
                                                                   {"StyleAffList", "3"},
                                                                   {"StyleAffSte", "2"},
                                                                   {"DebutSaisie", "1"}};
  for (const auto& [key, text] : stored) SetProfile(key, text);
  StartSession();
  EXPECT_EQ(session->settings().key_field, kNom);
  EXPECT_FALSE(session->settings().shows_references);
  EXPECT_EQ(session->settings().style_aff_list, 3);
  EXPECT_EQ(session->settings().style_aff_ste, 2);
  EXPECT_TRUE(session->settings().starts_at_first);
  for (const auto& [key, text] : stored) EXPECT_EQ(Profile(key), text);
}

TEST_F(SessionTest, TooltipsFollowTheSuiteWhenASiblingStartsTheProgram) {
  SetProfile("Balloons", "0");
  StartSession();
  EXPECT_FALSE(session->settings().balloons);
  StartupRequest request;
  request.caller_window = 7;
  StartSession(request);
  EXPECT_TRUE(session->settings().balloons);
  profile.Write("ApplDROV", "Balloons", "0");
  SetProfile("Balloons", "1");
  StartSession(request);
  EXPECT_FALSE(session->settings().balloons);
}

TEST_F(SessionTest, DirectOpeningReadsDefaultsAndWritesNothing) {
  Build(home + "direct", {CardWith({{kSte1, "ALPHA"}})});
  SetProfile("Idindex", "10");
  SetProfile("DebutSaisie", "1");
  SetProfile("File1", "&1 /elsewhere/A.DAN");
  const std::vector<std::byte> before = memory.Contents("/profile.ini");
  StartSession(Direct(home + "direct.DAN"));
  EXPECT_EQ(session->settings().key_field, kSte1);
  EXPECT_FALSE(session->settings().starts_at_first);
  EXPECT_EQ(session->ProfileText(261, "default"), "default");
  ASSERT_TRUE(Open());
  EXPECT_EQ(session->directory()->main().count(), 1u);
  EXPECT_EQ(session->current_path(), home + "direct");
  session->Exit();
  EXPECT_EQ(memory.Contents("/profile.ini"), before);
}

TEST_F(SessionTest, DirectOpeningMakesNoProfile) {
  StartSession(Direct(home + "direct"));
  ASSERT_TRUE(Open());
  session->Exit();
  EXPECT_FALSE(memory.Exists("/profile.ini"));
}

TEST_F(SessionTest, ExitWritesTheRecentDirectoryForEveryRole) {
  for (const int32_t type : {0, 1, 2, 6, 99}) {
    StartupRequest request;
    request.launch_type = type;
    profile.Write("PhoneBook-DROV", "File1", "");
    StartSession(request);
    ASSERT_TRUE(Open());
    session->Exit();
    EXPECT_EQ(session->directory(), nullptr);
    EXPECT_EQ(Profile("File1"), "&1 " + home + "CARNETEL.DAN") << type;
  }
}

TEST_F(SessionTest, AChooserLeavesTheDirectoryItEndedWith) {
  StartupRequest request;
  request.launch_type = 12;
  StartSession(request);
  ASSERT_TRUE(Open());
  ASSERT_TRUE(session->OpenDirectoryChecked(home + "other.DAN", false));
  session->Exit();
  EXPECT_EQ(Profile("File1"), "&1 " + home + "other.DAN");
}

// ---- which directory ----

TEST_F(SessionTest, WithoutRecentDirectoryMakesTheDefaultOne) {
  StartSession();
  EXPECT_EQ(session->current_path(), home + "CARNETEL");
  ASSERT_TRUE(Open());
  EXPECT_FALSE(fell_back);
  EXPECT_TRUE(memory.Exists(home + "CARNETEL.DAN"));
  EXPECT_EQ(session->CurrentMainFile(), home + "CARNETEL.DAN");
}

TEST_F(SessionTest, TakesTheRecentDirectoryWithAndWithoutMenuPrefix) {
  MakeFile(home + "mes.fiches.DAN");
  SetProfile("File1", "&1 " + home + "mes.fiches.DAN");
  StartSession();
  EXPECT_EQ(session->current_path(), home + "mes.fiches");
  SetProfile("File1", home + "mes.fiches.DAN");
  StartSession();
  EXPECT_EQ(session->current_path(), home + "mes.fiches");
}

TEST_F(SessionTest, ARecentDirectoryThatIsGoneGivesTheDefaultOne) {
  SetProfile("File1", "&1 /gone/A.DAN");
  StartSession();
  EXPECT_EQ(session->current_path(), home + "CARNETEL");
}

TEST_F(SessionTest, AnExchangeLaunchLooksInTheFolderOfItsFile) {
  StartupRequest request;
  request.launch_type = 4;
  request.exchange_file_path = "/exchange/NUM.DAT";
  StartSession(request);
  EXPECT_EQ(session->current_path(), "/exchange/CARNETEL");
  request.launch_type = 2;
  request.caller_argument = 16;
  StartSession(request);
  EXPECT_EQ(session->current_path(), "/exchange/CARNETEL");
  request.caller_argument = 1;
  StartSession(request);
  EXPECT_EQ(session->current_path(), home + "CARNETEL");
  // A recent directory that is there goes before all of them.
  MakeFile(home + "A.DAN");
  SetProfile("File1", "&1 " + home + "A.DAN");
  request.launch_type = 4;
  StartSession(request);
  EXPECT_EQ(session->current_path(), home + "A");
}

TEST_F(SessionTest, ADirectoryOfAnOlderReleaseIsRenamedFirst) {
  MakeFile(home + "old.PBK", "what it held");
  SetProfile("File1", "&1 " + home + "old.DAN");
  StartSession();
  EXPECT_EQ(session->current_path(), home + "old");
  EXPECT_FALSE(memory.Exists(home + "old.PBK"));
  EXPECT_EQ(memory.Contents(home + "old.DAN").size(), 12u);
}

TEST_F(SessionTest, ADirectoryOfAnOlderReleaseMayBeNamedByItsOwnExtension) {
  MakeFile(home + "old.pbk");
  StartSession(Direct(home + "old.pbk"));
  EXPECT_EQ(session->current_path(), home + "old");
  EXPECT_FALSE(memory.Exists(home + "old.pbk"));
  EXPECT_TRUE(memory.Exists(home + "old.DAN"));
}

TEST_F(SessionTest, AnOlderReleaseBesideADirectoryIsLeftAlone) {
  MakeFile(home + "old.PBK", "older");
  MakeFile(home + "old.DAN", "newer one");
  StartSession(Direct(home + "old"));
  EXPECT_EQ(memory.Contents(home + "old.PBK").size(), 5u);
  EXPECT_EQ(memory.Contents(home + "old.DAN").size(), 9u);
}

// ---- folders and seats ----

TEST_F(SessionTest, SeatZeroLeavesTheHomeFolder) {
  memory.MakeFolder(home + "seat/");
  StartupRequest request = FromSeat();
  request.workstation_number = 0;
  StartSession(request);
  EXPECT_FALSE(session->lan_on());
  EXPECT_EQ(session->home_dir(), home);
  EXPECT_EQ(session->shared_dir(), home);
}

TEST_F(SessionTest, ASeatWithoutFolderIsNone) {
  StartupRequest request = FromSeat();
  request.exchange_file_path = "ECHANGE.DAT";
  StartSession(request);
  EXPECT_FALSE(session->lan_on());
  EXPECT_EQ(session->workstation_number(), 0);
  EXPECT_EQ(session->home_dir(), home);
}

TEST_F(SessionTest, ASeatWorksInTheFolderOfItsFile) {
  memory.MakeFolder(home + "seat/");
  StartSession(FromSeat());
  EXPECT_TRUE(session->lan_on());
  EXPECT_EQ(session->workstation_number(), 3);
  EXPECT_EQ(session->home_dir(), home + "seat/");
  EXPECT_EQ(session->shared_dir(), home + "seat/");
  EXPECT_EQ(session->current_path(), home + "seat/CARNETEL");
}

TEST_F(SessionTest, ASeatWhoseFolderIsMissingStaysAtHome) {
  StartSession(FromSeat());
  EXPECT_TRUE(session->lan_on());
  EXPECT_EQ(session->home_dir(), home);
  EXPECT_EQ(session->shared_dir(), home);
}

TEST_F(SessionTest, TheCallersNameDefaultsToTheProgramsOwn) {
  StartSession();
  EXPECT_EQ(session->appli_name(), "CARNETEL");
  StartupRequest request;
  request.appli_name = "FAXDROV";
  StartSession(request);
  EXPECT_EQ(session->appli_name(), "FAXDROV");
}

// ---- opening ----

TEST_F(SessionTest, AMainWindowFallsBackOnNumberedNames) {
  MakeFile(home + "CARNETEL.DAN");
  MakeFile(home + "CARN001.DAN");
  StartSession();
  ASSERT_TRUE(Open());
  EXPECT_TRUE(fell_back);
  EXPECT_EQ(session->current_path(), home + "CARN002");
  EXPECT_TRUE(memory.Exists(home + "CARN002.DAN"));
  EXPECT_EQ(messages.TakeShown(), Shown());
  for (const char* name : {"CARNETEL.DAN", "CARN001.DAN"}) {
    EXPECT_EQ(memory.Contents(home + name).size(), 12u) << name;
  }
}

TEST_F(SessionTest, TheNumberedNamesLieBesideTheDirectoryThatFailed) {
  MakeFile(home + "data/A.DAN");
  StartSession(Direct(home + "data/A"));
  ASSERT_TRUE(Open());
  EXPECT_EQ(session->current_path(), home + "data/CARN001");
  session->CloseDirectory();
  ::unlink(DirectoryGuard::LockFilePath(home + "data/A.ADR").c_str());
  ::unlink(DirectoryGuard::LockFilePath(home + "data/CARN001.ADR").c_str());
}

TEST_F(SessionTest, OtherRolesDoNotFallBack) {
  MakeFile(home + "CARNETEL.DAN");
  SetProfile("File1", "&1 " + home + "CARNETEL.DAN");
  for (const int32_t type : {1, 2, 3, 6, 8, 99}) {
    StartupRequest request;
    request.launch_type = type;
    StartSession(request);
    EXPECT_FALSE(Open()) << type;
    EXPECT_FALSE(fell_back);
    EXPECT_EQ(session->directory(), nullptr);
  }
  EXPECT_FALSE(memory.Exists(home + "CARN001.DAN"));
  EXPECT_EQ(messages.TakeShown(), Shown());
}

TEST_F(SessionTest, AfterAThousandNamesThereIsNoDirectoryAndNoMessage) {
  SetProfile("File2", "&2 /a/B.DAN");
  SetProfile("File3", "&3 /a/C.DAN");
  files.StopAfter(0);
  EXPECT_FALSE(Start());
  EXPECT_TRUE(fell_back);
  EXPECT_EQ(session->directory(), nullptr);
  EXPECT_EQ(session->current_path(), home + "CARN1000");
  EXPECT_EQ(messages.TakeShown(), Shown());
  EXPECT_EQ(list().row_count(), 0);
  EXPECT_EQ(view.title, "");
  EXPECT_EQ(view.recents, std::vector<std::string>());
  EXPECT_EQ(view.focus, kControlList);
  // The recent directories that no menu shows stay in the profile as they are.
  files.Heal();
  EXPECT_TRUE(window().RequestQuit());
  EXPECT_EQ(Profile("File2"), "&2 /a/B.DAN");
  EXPECT_EQ(Profile("File3"), "&3 /a/C.DAN");
  for (int number = 1; number <= 1000; ++number) {
    const std::string stem = home + FormatPrintf("CARN%03d", {number});
    ::unlink(DirectoryGuard::LockFilePath(stem + ".ADR").c_str());
  }
  ::unlink(DirectoryGuard::LockFilePath(home + "CARNETEL.ADR").c_str());
}

TEST_F(SessionTest, TellsAFailedOpeningUnlessStrict) {
  MakeFile(home + "bad.DAN");
  StartSession();
  EXPECT_FALSE(session->OpenDirectoryChecked(home + "bad", true));
  EXPECT_EQ(messages.TakeShown(), Shown());
  EXPECT_FALSE(session->OpenDirectoryChecked(home + "bad", false));
  EXPECT_EQ(messages.TakeShown(),
            (Shown{{MessageStyle::kError, 79, "Carnetel non valide - Choisissez un autre..."}}));
  EXPECT_EQ(session->directory(), nullptr);
}

TEST_F(SessionTest, WhatWasOpenComesBackAfterAFailedOpeningAndNothingElse) {
  MakeFile(home + "bad.DAN");
  const Shown told_once = {
      {MessageStyle::kError, 79, "Carnetel non valide - Choisissez un autre..."}};
  StartSession();
  session->OpenInPlace(home + "bad");
  EXPECT_EQ(messages.TakeShown(), told_once);
  EXPECT_EQ(session->directory(), nullptr);
  EXPECT_FALSE(memory.Exists(home + "CARNETEL.DAN"));
  session->OpenInPlace(home + "good");
  EXPECT_EQ(messages.TakeShown(), Shown());
  session->OpenInPlace(home + "bad");
  EXPECT_EQ(messages.TakeShown(), told_once);
  ASSERT_NE(session->directory(), nullptr);
  EXPECT_EQ(session->current_path(), home + "good");
}

TEST_F(SessionTest, TheListRestoresItsRowsUnlessAnOpeningWasToldToFail) {
  MakeFile(home + "bad.DAN");
  StartSession();
  EXPECT_FALSE(session->OpenDirectoryChecked(home + "bad", false));
  EXPECT_FALSE(session->TakeListPositionRestore());
  EXPECT_FALSE(session->OpenDirectoryChecked(home + "bad", true));
  EXPECT_TRUE(session->TakeListPositionRestore());
  EXPECT_TRUE(session->OpenDirectoryChecked(home + "good", false));
  EXPECT_TRUE(session->TakeListPositionRestore());
  EXPECT_FALSE(session->TakeListPositionRestore());
}

TEST_F(SessionTest, OpeningClosesTheDirectoryBefore) {
  StartSession();
  ASSERT_TRUE(session->OpenDirectoryChecked(home + "first", false));
  ASSERT_TRUE(session->OpenDirectoryChecked(home + "second.DAN", false));
  EXPECT_EQ(session->current_path(), home + "second");
  EXPECT_EQ(session->directory()->paths().stem(), home + "second");
  // The first one is free for other programs again.
  EXPECT_NE(DirectoryGuard::Take(home + "first.ADR", std::chrono::milliseconds(0)), nullptr);
  EXPECT_EQ(DirectoryGuard::Take(home + "second.ADR", std::chrono::milliseconds(0)), nullptr);
}

TEST_F(SessionTest, KnowsAPathWhateverWayItIsWritten) {
  StartSession();
  EXPECT_TRUE(session->SamePath(home + "A.DAN", home + "x/../A.DAN"));
  EXPECT_FALSE(session->SamePath(home + "A.DAN", home + "a.DAN"));
}

// ---- private directories ----

class PrivateDirectory : public SessionTest {
 protected:
  void SetUp() override {
    stem_ = home + "private";
    Build(stem_, {CardWith({{kSte1, "SECRET"}})});
    SetOwner(stem_, 5);
    memory.MakeFolder(home + "seat/");
    SetProfile("File1", "&1 " + stem_ + ".DAN");
  }
  Shown Question() const {
    return {{MessageStyle::kOkCancel, 80,
             "Accès a " + stem_ +
                 ".DAN refusé. \nCarnetel privé de:   (Poste N° 05)\nCharger l'carnetel défaut "
                 "?"}};
  }

  std::string stem_;
};

TEST_F(PrivateDirectory, OfAnotherSeatOffersTheDefaultOne) {
  StartSession(FromSeat());
  messages.Answer(MessageButton::kOk);
  ASSERT_TRUE(Open());
  EXPECT_EQ(messages.TakeShown(), Question());
  EXPECT_FALSE(fell_back);
  EXPECT_EQ(session->current_path(), home + "seat/CARNETEL");
  EXPECT_EQ(session->directory()->main().count(), 0u);
}

TEST_F(PrivateDirectory, RefusedByAMainWindowGoesOnToTheNumberedNames) {
  StartSession(FromSeat());
  messages.Answer(MessageButton::kCancel);
  ASSERT_TRUE(Open());
  EXPECT_EQ(messages.TakeShown(), Question());
  EXPECT_TRUE(fell_back);
  EXPECT_EQ(session->current_path(), home + "CARN001");
}

TEST_F(PrivateDirectory, RefusedByAChooserEndsTheRun) {
  StartSession(FromSeat(12));
  messages.Answer(MessageButton::kCancel);
  EXPECT_FALSE(Open());
  EXPECT_EQ(session->directory(), nullptr);
}

TEST_F(PrivateDirectory, OfTheOwnSeatOpens) {
  SetOwner(stem_, 3);
  StartSession(FromSeat());
  ASSERT_TRUE(Open());
  EXPECT_EQ(session->current_path(), stem_);
}

TEST_F(PrivateDirectory, OpensWithoutSeats) {
  StartSession();
  ASSERT_TRUE(Open());
  EXPECT_EQ(session->current_path(), stem_);
}

TEST_F(PrivateDirectory, IsNotAskedAboutUnlessStrict) {
  StartSession(FromSeat());
  EXPECT_TRUE(session->OpenDirectoryChecked(stem_, false));
  EXPECT_EQ(messages.TakeShown(), Shown());
}

}  // namespace
}  // namespace carnetel
