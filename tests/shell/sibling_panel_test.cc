// The buttons of the sibling programs beside the numbers, and what a press of one does, through the
// main window without its widgets.
#include "shell/sibling_panel.h"

#include <gmock/gmock.h>

#include "tests/shell/window_fixture.h"

namespace carnetel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using Numbers = std::vector<int>;

constexpr size_t kRecordSize = 161;

class SiblingButtons : public WindowFixture {
 protected:
  SiblingButtons() {
    memory.MakeFolder("/suite/");
    memory.MakeFolder("/tdf/");
    Build({CardWith({{kSte1, "ALPHA"}, {kTel1, "01"}, {kFax, "02"}}),
           CardWith({{kSte1, "BETA"}, {kModem, "03"}, {kMtel, "3614"}, {kTel2, "04"}})});
  }
  void SetApplication(std::string_view key, std::string_view text) {
    profile.Write("ApplDROV", key, text);
  }
  void SetAll() {
    SetApplication("VoiceAppl", "/suite/voice");
    SetApplication("FaxAppl", "/suite/fax");
    SetApplication("FileAppl", "/suite/files");
    SetApplication("MinitelAppl", "/suite/minitel");
    SetApplication("ISDNAppl", "/suite/isdn");
    SetApplication("TDF", "/tdf/");
  }
  // As a sibling starts it.
  void StartCalled(uint32_t caller = 77, int32_t argument = 0) {
    StartupRequest request;
    request.caller_window = caller;
    request.caller_argument = argument;
    request.exchange_file_path = home + "ECHANGE.DAT";
    program_starter = [this](const std::string& line) {
      started.push_back(line);
      return starts;
    };
    ASSERT_TRUE(Start(request));
  }
  Numbers Shown() {
    Numbers shown;
    for (const auto& [button, state] : view.siblings) {
      if (state.first) shown.push_back(button);
    }
    return shown;
  }
  Numbers Enabled() {
    Numbers enabled;
    for (const auto& [button, state] : view.siblings) {
      if (state.second) enabled.push_back(button);
    }
    return enabled;
  }
  [[nodiscard]] size_t Records(const std::string& path) {
    if (!memory.Exists(path)) return 0;
    const size_t size = memory.Contents(path).size();
    EXPECT_EQ(size % kRecordSize, 0u);
    return size / kRecordSize;
  }
  [[nodiscard]] std::string NumberOf(const std::string& path, size_t record) {
    const auto bytes = memory.Contents(path);
    const std::string text(reinterpret_cast<const char*>(bytes.data()) + record * kRecordSize, 30);
    return text.substr(0, text.find('\0'));
  }
  std::vector<std::string> Told() {
    std::vector<std::string> told;
    for (const auto& entry : messages.TakeShown()) told.push_back(entry.text);
    return told;
  }

  std::vector<std::string> started;
  bool starts = true;
};

TEST_F(SiblingButtons, AStandAloneRunHasNone) {
  SetAll();
  StartCalled(0);
  EXPECT_THAT(Shown(), IsEmpty());
  view.Focus(kControlSte1);
  view.Focus(kControlList);
  EXPECT_THAT(Shown(), IsEmpty());
}

TEST_F(SiblingButtons, ShowWhereAProgramIsSetUp) {
  SetApplication("FaxAppl", "/suite/fax");
  SetApplication("MinitelAppl", "/suite/minitel");
  StartCalled();
  EXPECT_THAT(Shown(), ElementsAre(1015, 1017));
}

TEST_F(SiblingButtons, FollowTheNumbersOfTheCard) {
  SetAll();
  StartCalled();
  EXPECT_THAT(Shown(), ElementsAre(1014, 1015, 1016, 1017, 1019));
  EXPECT_THAT(Enabled(), ElementsAre(1014, 1015));
  view.ClickRow(1);
  EXPECT_THAT(Enabled(), ElementsAre(1016, 1017, 1019));
}

TEST_F(SiblingButtons, GoWhileAFieldHasTheFocusAndComeBackWithTheList) {
  SetAll();
  StartCalled();
  view.Focus(kControlSte1);
  EXPECT_THAT(Shown(), IsEmpty());
  view.Focus(kControlList);
  EXPECT_THAT(Shown(), SizeIs(5));
  EXPECT_THAT(Enabled(), ElementsAre(1014, 1015));
}

// Only voice, fax and files have a say in it: Minitel and ISDN alone stay, and their faces follow
// what is typed.
TEST_F(SiblingButtons, OfMinitelAndIsdnAloneStayWhileAFieldHasTheFocus) {
  SetApplication("MinitelAppl", "/suite/minitel");
  SetApplication("ISDNAppl", "/suite/isdn");
  StartCalled();
  view.Focus(kControlSte1);
  EXPECT_THAT(Shown(), ElementsAre(1017, 1019));
  EXPECT_THAT(Enabled(), IsEmpty());
  view.Type(kControlMtel, "3615");
  EXPECT_THAT(Enabled(), ElementsAre(1017));
  view.Type(kControlMtel, "");
  EXPECT_THAT(Enabled(), IsEmpty());
}

TEST_F(SiblingButtons, TakeTheCardsTextAgainWhenAnEditIsGivenUp) {
  SetAll();
  StartCalled();
  view.Type(InfoOf(Sibling::kFiles).control, "99");
  messages.Answer(MessageButton::kYes);
  view.ClickRow(0);
  EXPECT_THAT(Shown(), SizeIs(5));
  EXPECT_THAT(Enabled(), ElementsAre(1014, 1015));
}

TEST_F(SiblingButtons, StayAwayWhenTheUserKeepsTheEdit) {
  SetAll();
  StartCalled();
  view.Type(InfoOf(Sibling::kFiles).control, "99");
  messages.Answer(MessageButton::kNo);
  view.ClickRow(1);
  EXPECT_THAT(Shown(), IsEmpty());
}

TEST_F(SiblingButtons, AnExchangeLaunchReadsNoProgram) {
  SetAll();
  StartCalled(77, 16);
  EXPECT_THAT(Shown(), IsEmpty());
}

TEST_F(SiblingButtons, TwoPressesOfTheFaxLeaveTwoRecords) {
  SetAll();
  StartCalled();
  view.Run(1015);
  view.Run(1015);
  EXPECT_EQ(Records("/suite/NUMEMI.DAT"), 2u);
  EXPECT_EQ(NumberOf("/suite/NUMEMI.DAT", 1), "02");
  EXPECT_THAT(started, ElementsAre("/suite/fax /X", "/suite/fax /X"));
  EXPECT_THAT(Told(), IsEmpty());
}

TEST_F(SiblingButtons, TwoPressesOfTheVoiceLeaveOneRecord) {
  SetAll();
  StartCalled();
  view.Run(1014);
  view.Run(1014);
  EXPECT_EQ(Records("/tdf/NUM.DAT"), 1u);
  EXPECT_THAT(started, ElementsAre("/tdf/TFCOM.EXE /U", "/tdf/TFCOM.EXE /U"));
}

TEST_F(SiblingButtons, TheMinitelTakesTheEarlierRecordsAlong) {
  SetAll();
  StartCalled();
  view.Run(1015);
  view.ClickRow(1);
  view.Run(1017);
  EXPECT_EQ(Records("/suite/NUMEMI.DAT"), 0u);
  EXPECT_EQ(Records("/suite/MINITNUM.DAT"), 2u);
  view.Run(1017);
  EXPECT_EQ(Records("/suite/MINITNUM.DAT"), 1u);
  EXPECT_EQ(NumberOf("/suite/MINITNUM.DAT", 0), "3614");
  EXPECT_THAT(started,
              ElementsAre("/suite/fax /X", "/suite/minitel /H=4711", "/suite/minitel /H=4711"));
}

TEST_F(SiblingButtons, TheIsdnDoesNothing) {
  SetAll();
  StartCalled();
  view.ClickRow(1);
  view.Run(1019);
  EXPECT_THAT(started, IsEmpty());
  EXPECT_THAT(Told(), IsEmpty());
}

TEST_F(SiblingButtons, AnUnsavedCardComesBeforeAnEmptyNumber) {
  SetAll();
  StartCalled();
  view.Type(kControlSte1, "ALPHAS");
  view.Run(1016);
  EXPECT_THAT(Told(), ElementsAre("Vous devez d'abord sauver les dernières saisies."));
  EXPECT_THAT(started, IsEmpty());
}

TEST_F(SiblingButtons, AnEmptyNumberIsRefused) {
  SetAll();
  StartCalled();
  view.Run(1016);
  EXPECT_THAT(Told(), ElementsAre("Demande rejetée, le champ MODEM de la fiche est vide"));
  EXPECT_EQ(Records("/suite/NUMEMI.DAT"), 0u);
  EXPECT_THAT(started, IsEmpty());
}

TEST_F(SiblingButtons, AProgramThatCannotStartIsToldAndTheRecordStays) {
  SetAll();
  StartCalled();
  starts = false;
  view.Run(1015);
  EXPECT_THAT(Told(), ElementsAre("Impossible de charger le programme\n/suite/fax"));
  EXPECT_EQ(Records("/suite/NUMEMI.DAT"), 1u);
}

TEST_F(SiblingButtons, WithoutAProgramStarterNothingCanBeStarted) {
  SetAll();
  StartupRequest request;
  request.caller_window = 77;
  ASSERT_TRUE(Start(request));
  view.Run(1015);
  EXPECT_THAT(Told(), ElementsAre("Impossible de charger le programme\n/suite/fax"));
}

}  // namespace
}  // namespace carnetel
