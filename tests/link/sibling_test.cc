#include "link/sibling.h"

#include "tests/link/hand_off_testing.h"
#include "tests/support/same_bytes.h"

namespace carnetel {
namespace {

constexpr std::string_view kProfile =
    "[ApplDROV]\r\n"
    "VoiceAppl=/opt/voix/VOIX.EXE\r\n"
    "FaxAppl=/opt/fax/tfax\r\n"
    "FileAppl=/opt/fich/TFICH.EXE\r\n"
    "MinitelAppl=/opt/mtel/MTEL.EXE\r\n"
    "ISDNAppl=/opt/rnis/RNIS.EXE\r\n"
    "TDF=/opt/tdf/\r\n";
constexpr const char* kNumEmi = "/opt/fax/NUMEMI.DAT";
constexpr const char* kMinitNum = "/opt/fax/MINITNUM.DAT";
constexpr const char* kNum = "/opt/tdf/NUM.DAT";

class SiblingTest : public HandOffTest {
 protected:
  SiblingTest() { SetProfile(kProfile); }

  void SetProfile(std::string_view text) {
    SetFile("/home/profile.ini", text);
    apps_ = SiblingApps(UserProfile(files_, "/home/profile.ini"), files_, "/t/ECHANGE.DAT");
  }
  // Paul Bez of Bazar, with all numbers, at 768.
  void AddCard() {
    Add({{kSte1, "Bazar "},
         {kPrenom, "Paul"},
         {kNom, "B\x82z"},
         {kTel1, "18 18"},
         {kTel2, "19 19"},
         {kMtel, "20 20"},
         {kFax, "22 22 "},
         {kModem, "24 24"}});
  }
  static SiblingCall Call(Sibling sibling) {
    SiblingCall call;
    call.sibling = sibling;
    call.number_text = "01";
    call.card_offset = 768;
    call.window = 77;
    return call;
  }
  void Press(const SiblingCall& call) {
    CallSibling(*directory_, apps_, call, messages_, [this](const std::string& command_line) {
      started_.push_back(command_line);
      return starts_;
    });
  }
  void Press(Sibling sibling) { Press(Call(sibling)); }
  static std::string Record(std::string_view number) {
    return Long(number, 768, "Paul B\xE9z ", "Bazar ");
  }
  void ExpectFile(const std::string& path, const std::string& expected) {
    EXPECT_TRUE(files_.Exists(path)) << path;
    EXPECT_TRUE(SameBytes(AsBytes(expected), files_.Contents(path))) << path;
  }
  void ExpectMessage(MessageStyle style, std::string_view title, std::string_view text) {
    ASSERT_EQ(messages_.shown().size(), 1U);
    EXPECT_EQ(messages_.shown()[0].style, style);
    EXPECT_EQ(MessageTitle(messages_.shown()[0].title_id), title);
    EXPECT_EQ(messages_.shown()[0].text, text);
  }

  SiblingApps apps_;
  SilentMessages messages_;
  std::vector<std::string> started_;
  bool starts_ = true;
};

TEST_F(SiblingTest, EachHasItsButtonControlFieldAndLabel) {
  const auto expect = [](int button, int control, int field, std::string_view label) {
    Sibling sibling = Sibling::kVoice;
    ASSERT_TRUE(FindSibling(button, &sibling)) << button;
    const SiblingInfo info = InfoOf(sibling);
    EXPECT_EQ(info.control, control);
    EXPECT_EQ(info.field, field);
    EXPECT_EQ(LoadText(info.label_id), label);
  };
  expect(1014, 158, 18, "TELEPHONE1");
  expect(1015, 160, 22, "TELECOPIE");
  expect(1016, 161, 24, "MODEM");
  expect(1017, 162, 20, "MINITEL");
  Sibling isdn = Sibling::kVoice;
  ASSERT_TRUE(FindSibling(1019, &isdn));
  EXPECT_EQ(InfoOf(isdn).control, 159);
  EXPECT_EQ(InfoOf(isdn).field, 19);
  EXPECT_EQ(InfoOf(isdn).label_id, 0);
  Sibling none = Sibling::kFax;
  for (const int button : {0, 1013, 1018, 1020}) EXPECT_FALSE(FindSibling(button, &none)) << button;
  EXPECT_EQ(none, Sibling::kFax);
}

TEST_F(SiblingTest, TheCommandsAndFilesOfTheProfile) {
  EXPECT_EQ(apps_.command(Sibling::kVoice), "/opt/voix/VOIX.EXE");
  EXPECT_EQ(apps_.command(Sibling::kFax), "/opt/fax/tfax");
  EXPECT_EQ(apps_.command(Sibling::kFiles), "/opt/fich/TFICH.EXE");
  EXPECT_EQ(apps_.command(Sibling::kMinitel), "/opt/mtel/MTEL.EXE");
  EXPECT_EQ(apps_.command(Sibling::kIsdn), "/opt/rnis/RNIS.EXE");
  EXPECT_EQ(apps_.voice_command(), "/opt/tdf/TFCOM.EXE /U");
  EXPECT_EQ(apps_.voice_file(), kNum);
  EXPECT_EQ(apps_.hand_off_file(), kNumEmi);
}

TEST_F(SiblingTest, TheVoiceProgramIsFoundWhateverItsCase) {
  SetFile("/opt/tdf/tfcom.Exe", "x");
  SetProfile("[ApplDROV]\nTDF=/opt/tdf\n");
  EXPECT_EQ(apps_.voice_command(), "/opt/tdf/tfcom.Exe /U");
  EXPECT_EQ(apps_.voice_file(), "/opt/tdf/NUM.DAT");
}

TEST_F(SiblingTest, OneSeparatorAtTheEndOfTheFolderGoes) {
  SetProfile("[ApplDROV]\nTDF=/opt/tdf\\\n");
  EXPECT_EQ(apps_.voice_file(), "/opt/tdf/NUM.DAT");
  SetProfile("[ApplDROV]\nTDF=/opt/tdf//\n");
  EXPECT_EQ(apps_.voice_file(), "/opt/tdf//NUM.DAT");
  SetProfile("[ApplDROV]\nTDF=/\n");
  EXPECT_EQ(apps_.voice_file(), "/NUM.DAT");
}

TEST_F(SiblingTest, TheHandOffFileLiesBesideTheFirstOfThreePrograms) {
  SetProfile("[ApplDROV]\nVoiceAppl=/v/V.EXE\nFileAppl=/f/F.EXE\n");
  EXPECT_EQ(apps_.hand_off_file(), "/f/NUMEMI.DAT");
  SetProfile("[ApplDROV]\nVoiceAppl=/v/V.EXE\nMinitelAppl=/m/M.EXE\nISDNAppl=/i/I.EXE\n");
  EXPECT_EQ(apps_.hand_off_file(), "/v/NUMEMI.DAT");
  SetProfile("[ApplDROV]\nMinitelAppl=/m/M.EXE\nISDNAppl=/i/I.EXE\nTDF=/t\n");
  EXPECT_EQ(apps_.hand_off_file(), "/t/ECHANGE.DAT");
  EXPECT_EQ(SiblingApps().hand_off_file(), "");
}

TEST_F(SiblingTest, WithoutFolderThereIsNoVoiceCommand) {
  SetProfile("[ApplDROV]\nVoiceAppl=/v/V.EXE\nTDF=\n");
  EXPECT_EQ(apps_.voice_command(), "");
  EXPECT_EQ(apps_.voice_file(), "");
}

TEST_F(SiblingTest, FaxLeavesALongRecordAndStartsTheProgram) {
  AddCard();
  Press(Sibling::kFax);
  std::string expected = "22 22 " + std::string(24, '\0');
  expected += std::string("\0\3\0\0", 4);
  expected += "Paul B\xE9z " + std::string(24, '\0');
  expected += "Bazar " + std::string(27, '\0');
  expected += "/D/CLIENTS.DAN" + std::string(46, '\0');
  expected += std::string(1, '\0');
  ASSERT_EQ(expected.size(), 161U);
  ExpectFile(kNumEmi, expected);
  EXPECT_EQ(started_, std::vector<std::string>{"/opt/fax/tfax /X"});
  EXPECT_TRUE(messages_.shown().empty());
}

TEST_F(SiblingTest, FaxPressedTwiceLeavesTwoRecordsAndStartsTwice) {
  AddCard();
  Press(Sibling::kFax);
  Press(Sibling::kFax);
  ExpectFile(kNumEmi, Record("22 22 ") + Record("22 22 "));
  EXPECT_EQ(started_, (std::vector<std::string>{"/opt/fax/tfax /X", "/opt/fax/tfax /X"}));
}

TEST_F(SiblingTest, FilesPressedTwiceAddsToTheFileOfTheFax) {
  AddCard();
  Press(Sibling::kFax);
  Press(Sibling::kFiles);
  Press(Sibling::kFiles);
  ExpectFile(kNumEmi, Record("22 22 ") + Record("24 24") + Record("24 24"));
  EXPECT_EQ(started_.back(), "/opt/fich/TFICH.EXE /F");
  EXPECT_EQ(started_.size(), 3U);
}

TEST_F(SiblingTest, VoicePressedTwiceLeavesOneRecord) {
  AddCard();
  Press(Sibling::kVoice);
  ExpectFile(kNum, Record("18 18"));
  Press(Sibling::kVoice);
  ExpectFile(kNum, Record("18 18"));
  EXPECT_EQ(started_, (std::vector<std::string>{"/opt/tdf/TFCOM.EXE /U", "/opt/tdf/TFCOM.EXE /U"}));
  EXPECT_FALSE(files_.Exists(kNumEmi));
}

TEST_F(SiblingTest, MinitelPressedTwiceLeavesOneRecordInAFileOfItsOwn) {
  AddCard();
  Press(Sibling::kMinitel);
  ExpectFile(kMinitNum, Record("20 20"));
  EXPECT_FALSE(files_.Exists(kNumEmi));
  Press(Sibling::kMinitel);
  ExpectFile(kMinitNum, Record("20 20"));
  EXPECT_FALSE(files_.Exists(kNumEmi));
  EXPECT_EQ(started_,
            (std::vector<std::string>{"/opt/mtel/MTEL.EXE /H=77", "/opt/mtel/MTEL.EXE /H=77"}));
}

TEST_F(SiblingTest, MinitelTakesEarlierRecordsOfTheOthersAlong) {
  AddCard();
  Press(Sibling::kFax);
  Press(Sibling::kMinitel);
  ExpectFile(kMinitNum, Record("22 22 ") + Record("20 20"));
  EXPECT_FALSE(files_.Exists(kNumEmi));
}

TEST_F(SiblingTest, MinitelNeverFindsAFormerNumberWhenTheNewOneCouldNotBeWritten) {
  AddCard();
  SetFile(kMinitNum, "ancien");
  SetFile(std::string(kNumEmi) + "/x", "a folder of that name");
  Press(Sibling::kMinitel);
  ExpectMessage(MessageStyle::kInformation, "Attention",
                "Accès au fichier /opt/fax/NUMEMI.DAT impossible");
  EXPECT_FALSE(files_.Exists(kMinitNum));
  EXPECT_EQ(started_.size(), 1U);
}

TEST_F(SiblingTest, MinitelFileBesideTheExchangeFile) {
  AddCard();
  SetProfile("[ApplDROV]\nMinitelAppl=/m/M.EXE\n");
  Press(Sibling::kMinitel);
  ExpectFile("/t/MINITNUM.DAT", Record("20 20"));
  EXPECT_FALSE(files_.Exists("/t/ECHANGE.DAT"));
}

TEST_F(SiblingTest, AnExchangeFileOfTheMinitelNameKeepsItsRecord) {
  AddCard();
  SetProfile("[ApplDROV]\nMinitelAppl=/m/M.EXE\n");
  apps_ = SiblingApps(UserProfile(files_, "/home/profile.ini"), files_, "/t/MINITNUM.DAT");
  Press(Sibling::kMinitel);
  ExpectFile("/t/MINITNUM.DAT", Record("20 20"));
}

TEST_F(SiblingTest, AnExchangeFileOfTheDirectoryIsNeitherWrittenToNorRenamed) {
  AddCard();
  SetProfile("[ApplDROV]\nMinitelAppl=/m/M.EXE\n");
  apps_ = SiblingApps(UserProfile(files_, "/home/profile.ini"), files_, std::string(kMainFile));
  const std::string cards = TextOf(std::string(kMainFile));
  Press(Sibling::kMinitel);
  ExpectFile(std::string(kMainFile), cards);
  EXPECT_FALSE(files_.Exists("/d/MINITNUM.DAT"));
  ExpectMessage(MessageStyle::kInformation, "Attention",
                "Accès au fichier /d/Clients.DAN impossible");
  EXPECT_EQ(started_, std::vector<std::string>{"/m/M.EXE /H=77"});
}

TEST_F(SiblingTest, TheWindowIsToldAsAnUnsignedNumber) {
  AddCard();
  SiblingCall call = Call(Sibling::kMinitel);
  call.window = 4294967295U;
  Press(call);
  EXPECT_EQ(started_, std::vector<std::string>{"/opt/mtel/MTEL.EXE /H=4294967295"});
}

TEST_F(SiblingTest, TheButtonOfIsdnDoesNothing) {
  AddCard();
  SiblingCall call = Call(Sibling::kIsdn);
  Press(call);
  call.form_at_rest = false;
  Press(call);
  EXPECT_TRUE(started_.empty());
  EXPECT_TRUE(messages_.shown().empty());
  EXPECT_FALSE(files_.Exists(kNumEmi));
}

TEST_F(SiblingTest, AFormNotAtRestComesBeforeAnEmptyNumber) {
  AddCard();
  SetFile(kNum, "ancien");
  SiblingCall call = Call(Sibling::kVoice);
  call.form_at_rest = false;
  call.number_text.clear();
  Press(call);
  ExpectMessage(MessageStyle::kInformation, "Attention",
                "Vous devez d'abord sauver les dernières saisies.");
  ExpectFile(kNum, "ancien");
  EXPECT_TRUE(started_.empty());
}

TEST_F(SiblingTest, AnEmptyNumberIsToldByTheNameOfItsField) {
  AddCard();
  for (const auto& [sibling, label] :
       std::initializer_list<std::pair<Sibling, std::string>>{{Sibling::kVoice, "TELEPHONE1"},
                                                              {Sibling::kFax, "TELECOPIE"},
                                                              {Sibling::kFiles, "MODEM"},
                                                              {Sibling::kMinitel, "MINITEL"}}) {
    messages_ = SilentMessages();
    SiblingCall call = Call(sibling);
    call.number_text.clear();
    Press(call);
    ExpectMessage(MessageStyle::kError, "Erreur",
                  "Demande rejetée, le champ " + label + " de la fiche est vide");
  }
  EXPECT_FALSE(files_.Exists(kNumEmi));
  EXPECT_TRUE(started_.empty());
}

TEST_F(SiblingTest, VoiceDropsTheFormerRecordEvenForAnEmptyNumber) {
  AddCard();
  SetFile(kNum, "ancien");
  SiblingCall call = Call(Sibling::kVoice);
  call.number_text.clear();
  Press(call);
  EXPECT_FALSE(files_.Exists(kNum));
}

TEST_F(SiblingTest, ACardWithoutTheNumberEndsInSilence) {
  Add({{kSte1, "Bazar"}, {kTel1, "18"}});
  // The form shows a number that the card no longer has.
  Press(Sibling::kFax);
  ExpectFile(kNumEmi, "");
  SiblingCall call = Call(Sibling::kVoice);
  call.card_offset = 768 * 5;
  Press(call);
  ExpectFile(kNum, "");
  EXPECT_TRUE(started_.empty());
  EXPECT_TRUE(messages_.shown().empty());
}

TEST_F(SiblingTest, AFileThatCannotBeOpenedIsToldAndTheSiblingStarts) {
  AddCard();
  SetFile("/opt/fax", "no folder");
  Press(Sibling::kFax);
  ExpectMessage(MessageStyle::kInformation, "Attention",
                "Accès au fichier /opt/fax/NUMEMI.DAT impossible");
  EXPECT_EQ(started_, std::vector<std::string>{"/opt/fax/tfax /X"});
}

TEST_F(SiblingTest, AProgramThatCannotStartIsToldUpToTheFirstBlank) {
  AddCard();
  starts_ = false;
  Press(Sibling::kFax);
  ExpectMessage(MessageStyle::kError, "Erreur",
                "Impossible de charger le programme\n/opt/fax/tfax");
  ExpectFile(kNumEmi, Record("22 22 "));
}

TEST_F(SiblingTest, WithoutFolderAPressOfVoiceTellsFileAndProgram) {
  AddCard();
  SetProfile("[ApplDROV]\nVoiceAppl=/v/V.EXE\n");
  starts_ = false;
  Press(Sibling::kVoice);
  ASSERT_EQ(messages_.shown().size(), 2U);
  EXPECT_EQ(messages_.shown()[0].text, "Accès au fichier  impossible");
  EXPECT_EQ(messages_.shown()[1].text, "Impossible de charger le programme\n");
  EXPECT_EQ(started_, std::vector<std::string>{""});
}

TEST_F(SiblingTest, RecordsOfTheMainWindowNeverAreTrimmed) {
  Add({{kSte1, "B"}, {kNom, "Z"}, {kFax, "5"}});
  EXPECT_EQ(WriteHandOffRecord(*directory_, 768, {}, kFax, "/t/N.DAT", messages_), 1);
  ExpectFile("/t/N.DAT", Long("5", 768, "Z ", "B"));
  EXPECT_EQ(WriteHandOffRecord(*directory_, 768, {}, kTel1, "/t/N.DAT", messages_), 0);
  ExpectFile("/t/N.DAT", Long("5", 768, "Z ", "B"));
}

TEST_F(SiblingTest, AFullDiskLeavesTheRecordsThatAreThere) {
  AddCard();
  Press(Sibling::kFax);
  disk_.FillDisk();
  Press(Sibling::kFax);
  disk_.Heal();
  ExpectFile(kNumEmi, Record("22 22 "));
  EXPECT_EQ(started_.size(), 2U);
}

TEST_F(SiblingTest, LaunchingAnswersWhetherItStarted) {
  EXPECT_TRUE(LaunchProgram("/a/b /X", messages_, [](const std::string&) { return true; }));
  EXPECT_TRUE(messages_.shown().empty());
  EXPECT_FALSE(LaunchProgram("/a/b /X", messages_, [](const std::string&) { return false; }));
  ExpectMessage(MessageStyle::kError, "Erreur", "Impossible de charger le programme\n/a/b");
}

}  // namespace
}  // namespace carnetel
