// A run from the opening to the last word to the caller, with windows that a test stands for.
#include "shell/roles.h"

#include <gmock/gmock.h>

#include <optional>
#include <sstream>

#include "tests/link/exchange_request_testing.h"
#include "tests/shell/window_fixture.h"
#include "tests/transfer/capture_testing.h"
#include "transfer/enrichment.h"

namespace carnetel {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using Texts = std::vector<std::string>;

constexpr uint32_t kCaller = 77;

class RoleTest : public WindowFixture, protected RoleWindows {
 protected:
  RoleTest() {
    Build({CardWith({{kSte1, "ALPHA"}, {kNom, "DURAND"}, {kTel1, "01"}}),
           CardWith({{kSte1, "BETA"}, {kNom, "MARTIN"}, {kTel1, "02"}}),
           CardWith({{kSte1, "GAMMA"}, {kNom, "MARTIN"}, {kTel1, "03"}})});
  }

  // Runs a launch type to its end.
  void RunType(int32_t type, uint32_t caller = kCaller) {
    StartupRequest request;
    request.launch_type = type;
    request.caller_window = caller;
    request.exchange_file_path = ExchangeFile();
    StartSession(request);
    Run();
  }
  void Run() {
    const auto told = [this](uint32_t window, int message, int32_t w_param, int32_t l_param) {
      EXPECT_EQ(window, kCaller);
      steps.push_back(FormatPrintf("told %d %d %d", {message, w_param, l_param}));
      EXPECT_EQ(session->directory(), nullptr) << "the stores are still open";
      EXPECT_EQ(Profile("File1"), "(missing)") << "the directory is noted already";
    };
    const Environment no_environment = [](const std::string&) { return std::string(); };
    RunSession(*session, *this, {session->request().caller_window, output, no_environment, told});
    EXPECT_EQ(session->directory(), nullptr);
  }
  [[nodiscard]] std::string ExchangeFile() const { return home + "ECHANGE.DAT"; }
  void SetExchangeFile(const std::string& bytes) {
    memory.SetContents(ExchangeFile(), AsBytes(bytes));
  }
  void SetRequest(std::string_view surname, std::string_view company = {}) {
    SetExchangeFile(ExchangeBytes({{{surname, kNom}, {company, kSte1}}}));
  }
  void BreakDirectory() {
    memory.SetContents(DefaultPath() + ".DAN", AsBytes(std::string_view("no directory")));
  }
  [[nodiscard]] std::string NotedDirectory() { return "&1 " + DefaultPath() + ".DAN"; }
  Texts Told() {
    Texts told;
    for (const auto& entry : messages.TakeShown()) told.push_back(entry.text);
    return told;
  }

  // RoleWindows
  void RunMainWindow() override {
    steps.emplace_back("main window");
    had_directory = session->directory() != nullptr;
  }
  int32_t RunChooser(ChooserKind kind) override {
    steps.push_back(FormatPrintf("chooser %d", {static_cast<int>(kind)}));
    EXPECT_NE(session->directory(), nullptr);
    return chooser_result;
  }
  DialogHost& Dialogs() override { return dialogs; }

  Texts steps;
  std::ostringstream output;
  int32_t chooser_result = 2;
  bool had_directory = false;
};

TEST_F(RoleTest, TheMainWindowTellsNobody) {
  for (const int32_t type : {0, 10}) {
    SCOPED_TRACE(type);
    steps.clear();
    RunType(type);
    EXPECT_THAT(steps, ElementsAre("main window"));
    EXPECT_TRUE(had_directory);
    EXPECT_EQ(output.str(), "");
    EXPECT_EQ(Profile("File1"), NotedDirectory());
  }
}

TEST_F(RoleTest, AChooserTellsItsResult) {
  RunType(1);
  EXPECT_THAT(steps, ElementsAre("chooser 1", "told 1524 2 0"));
  EXPECT_EQ(output.str(), "1524 2 0\n");
  EXPECT_EQ(Profile("File1"), NotedDirectory());
}

TEST_F(RoleTest, TheChooserOfSeveralTellsItsResult) {
  chooser_result = 0;
  RunType(19);
  EXPECT_THAT(steps, ElementsAre("chooser 2", "told 1524 0 0"));
}

TEST_F(RoleTest, StandAloneNobodyIsTold) {
  RunType(2, 0);
  EXPECT_THAT(steps, ElementsAre("chooser 2"));
  EXPECT_EQ(output.str(), "");
}

// The session was started by `-TYPE 99`: the directory opens, nothing runs, the directory is noted.
TEST_F(RoleTest, OtherLaunchTypesRunNothing) {
  for (const int32_t type : {-1, 20, 99, 110}) {
    SCOPED_TRACE(type);
    profile.Write("PhoneBook-DROV", "File1", "");
    RunType(type);
    EXPECT_THAT(steps, IsEmpty());
    EXPECT_EQ(output.str(), "");
    EXPECT_EQ(Profile("File1"), NotedDirectory());
  }
}

TEST_F(RoleTest, ALookUpThatIsAnsweredNeedsNoChooser) {
  SetRequest("DURAND");
  RunType(16);
  EXPECT_THAT(steps, ElementsAre("told 1524 1 16"));
  EXPECT_THAT(std::string(AsChars(memory.Contents(ExchangeFile()))), HasSubstr("ALPHA"));
  EXPECT_EQ(Profile("File1"), NotedDirectory());
}

TEST_F(RoleTest, ALookUpWithoutAnswerOpensTheChooserWhoseResultIsTold) {
  SetRequest("MARTIN");
  chooser_result = 1;
  RunType(6);
  EXPECT_THAT(steps, ElementsAre("chooser 1", "told 1524 1 6"));
}

TEST_F(RoleTest, WithoutItsFileALookUpOpensTheChooser) {
  chooser_result = 0;
  RunType(6);
  EXPECT_THAT(steps, ElementsAre("chooser 1", "told 1524 0 6"));
}

TEST_F(RoleTest, ARewriteThatIsDoneNeedsNoChooser) {
  SetRequest("DURAND");
  RunType(7);
  EXPECT_THAT(steps, ElementsAre("told 1524 1 7"));
}

TEST_F(RoleTest, AnInsertionTellsByItsOwnMessage) {
  SetRequest("NOUVEAU", "OMEGA");
  RunType(18);
  EXPECT_THAT(steps, ElementsAre("told 1424 1 18"));
  EXPECT_THAT(SavedCompanies(), ElementsAre("ALPHA", "BETA", "GAMMA", "OMEGA"));
}

TEST_F(RoleTest, AnInsertionThatIsRefusedOpensNoChooser) {
  SetRequest("", "");
  RunType(8);
  EXPECT_THAT(steps, ElementsAre("told 1424 -1 8"));
  EXPECT_EQ(Told().size(), 1u);
}

TEST_F(RoleTest, AnEnrichmentRunsItsDialogAndTellsItsType) {
  SetExchangeFile(CaptureBytes({.company = "delta"}) + CaptureBytes({.company = "omega"}));
  dialogs.enrichment = [this](EnrichmentForm& form) {
    steps.emplace_back("dialog");
    EXPECT_EQ(form.mode(), EnrichmentMode::kSilent);
    form.RunSilently([](const std::string&) { return false; });
    return 0;
  };
  RunType(13);
  EXPECT_THAT(steps, ElementsAre("dialog", "told 1524 0 13"));
  EXPECT_THAT(Told(), ElementsAre("2 fiche(s) créée(s)"));
  EXPECT_THAT(SavedCompanies(), ElementsAre("ALPHA", "BETA", "DELTA", "GAMMA", "OMEGA"));
}

TEST_F(RoleTest, AnEnrichmentTakesThePrefixOfTheCommandLine) {
  SetExchangeFile(CaptureBytes({.company = "delta", .first_number = "12"}));
  StartupRequest request;
  request.launch_type = 4;
  request.caller_window = kCaller;
  request.exchange_file_path = ExchangeFile();
  request.app_argument = "0,";
  StartSession(request);
  std::string number;
  dialogs.enrichment = [&number](EnrichmentForm& form) {
    EXPECT_EQ(form.mode(), EnrichmentMode::kReview);
    EXPECT_TRUE(form.Next());
    number = form.card().FieldText(kTel1).bytes();
    return 0;
  };
  Run();
  EXPECT_EQ(number, "0,12");
}

TEST_F(RoleTest, AFileTooShortForARecordShowsNoDialog) {
  SetExchangeFile(std::string(155, 'A'));
  RunType(5);
  EXPECT_THAT(steps, ElementsAre("told 1524 0 5"));
  EXPECT_THAT(Told(), ElementsAre(HasSubstr("Echec de l'enrichissement.")));
  EXPECT_EQ(Saved().size(), 3u);
}

TEST_F(RoleTest, WithoutADirectoryNoRoleRunsAndNobodyIsTold) {
  BreakDirectory();
  for (const int32_t type : {1, 2, 3, 4, 5, 6, 7, 8, 9}) {
    SCOPED_TRACE(type);
    profile.Write("PhoneBook-DROV", "File1", DefaultPath());
    RunType(type);
    EXPECT_THAT(steps, IsEmpty());
    EXPECT_EQ(output.str(), "");
    EXPECT_THAT(Told(), IsEmpty());
    EXPECT_EQ(Profile("File1"), NotedDirectory());
  }
}

TEST_F(RoleTest, WithoutADirectoryTheMainWindowTakesAnother) {
  BreakDirectory();
  RunType(0);
  EXPECT_THAT(steps, ElementsAre("main window"));
  EXPECT_TRUE(had_directory);
  EXPECT_EQ(Profile("File1"), "&1 " + home + "CARN001.DAN");
}

TEST_F(RoleTest, TheMainWindowRunsWithoutAnyDirectory) {
  BreakDirectory();
  files.StopAfter(0);
  StartSession();
  Run();
  EXPECT_THAT(steps, ElementsAre("main window"));
  EXPECT_FALSE(had_directory);
}

TEST(RefuseShutdown, IsToldAndRefused) {
  SilentMessages messages;
  Texts order;
  RefuseShutdown(messages, [&] {
    EXPECT_EQ(messages.shown().size(), 1u);
    order.emplace_back("refused");
  });
  ASSERT_EQ(messages.shown().size(), 1u);
  EXPECT_EQ(MessageTitle(messages.shown()[0].title_id), "Carnetel ");
  EXPECT_EQ(
      messages.shown()[0].text,
      "Application encore active.\n Veuillez fermer l'application avant de quitter Windows !");
  EXPECT_THAT(order, ElementsAre("refused"));
}

struct Told {
  int32_t command;
  int32_t type;
  std::optional<RoleNotification> expected;
};

TEST(NotificationOf, EveryRole) {
  const Told kTold[] = {{100, 0, {}},
                        {119, 11, RoleNotification{1524, 7, 0}},
                        {105, 12, RoleNotification{1524, 7, 0}},
                        {3, 3, RoleNotification{1524, 0, 3}},
                        {4, 14, RoleNotification{1524, 0, 14}},
                        {5, 5, RoleNotification{1524, 0, 5}},
                        {6, 16, RoleNotification{1524, 7, 16}},
                        {7, 7, RoleNotification{1524, 7, 7}},
                        {8, 18, RoleNotification{1424, 7, 18}},
                        {kRoleNone, 20, {}}};
  for (const Told& told : kTold) {
    SCOPED_TRACE(told.command);
    Role role;
    role.command = told.command;
    role.effective_launch_type = told.type;
    EXPECT_EQ(NotificationOf(role, 7), told.expected);
  }
}

}  // namespace
}  // namespace carnetel
