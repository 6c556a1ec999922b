// The print command of the main window: what its form is given, and when it does not open.
#include "printing/print_form.h"
#include "tests/shell/window_fixture.h"

namespace carnetel {
namespace {

class PrintCommand : public WindowFixture {
 protected:
  void SetUp() override {
    Build({CardWith({{kSte1, "ALPHA"}, {kVille, "LYON"}}),
           CardWith({{kSte1, "BETA"}, {kVille, "PARIS"}}),
           CardWith({{kSte1, "DURAND"}, {kVille, "LYON"}}),
           CardWith({{kSte1, "Duval"}, {kVille, "NICE"}}),
           CardWith({{kSte1, "ZETA"}, {kVille, "LYON"}})});
    Start();
    dialogs.print = [this](PrintForm& form) {
      ++forms_opened;
      form.setup().top_margin = 0;
      form.setup().left_margin = 0;
      form.setup().scope = scope;
      EXPECT_TRUE(form.Print());
      return 0;
    };
  }
  // The companies of the lines that the printer got, behind their heading.
  std::vector<std::string> PrintedCompanies() {
    std::vector<std::string> companies;
    if (dialogs.printers.printed == nullptr) return companies;
    for (const std::string& line : dialogs.printers.printed->pages.front()) {
      companies.push_back(line.substr(0, line.find(' ')));
    }
    if (!companies.empty()) companies.erase(companies.begin());
    return companies;
  }
  // What the command prints with this scope.
  std::vector<std::string> Print(PrintScope printed_scope) {
    scope = printed_scope;
    view.Run(kCommandPrint);
    return PrintedCompanies();
  }
  // A group of the cards in Lyon is displayed.
  void DisplayLyon(uint8_t mode) {
    dialogs.criteria = [](CriteriaForm& form) {
      TypedCriteria typed;
      typed[0] = {8, 0, "LYON"};
      return form.Confirm(typed) ? CriteriaEnd::kReplace : CriteriaEnd::kQuit;
    };
    view.Run(kCommandSelect);
    dialogs.group_descriptions.push_back(GroupDescription{"Lyon", mode});
    dialogs.groups = [](GroupsForm& form) { return static_cast<int>(form.Create()); };
    view.Run(kButtonGroups);
    window().PickGroup(1);
  }

  using Companies = std::vector<std::string>;
  PrintScope scope = PrintScope::kFile;
  int forms_opened = 0;
};

TEST_F(PrintCommand, PrintsTheOpenDirectory) {
  EXPECT_EQ(Print(PrintScope::kFile), (Companies{"ALPHA", "BETA", "DURAND", "Duval", "ZETA"}));
}

TEST_F(PrintCommand, TheButtonIsTheSameCommand) {
  view.Press(kButtonPrint);
  EXPECT_EQ(PrintedCompanies().size(), 5U);
}

TEST_F(PrintCommand, PrintsTheMarkedCards) {
  list().ToggleMark(1);
  list().ToggleMark(3);
  EXPECT_EQ(Print(PrintScope::kSelection), (Companies{"BETA", "Duval"}));
}

TEST_F(PrintCommand, TheCurrentCardIsThatOfTheCurrentRow) {
  EXPECT_EQ(Print(PrintScope::kCurrent), Companies{"ALPHA"});
  list().SetCurrentRow(3);
  EXPECT_EQ(Print(PrintScope::kCurrent), Companies{"Duval"});
}

TEST_F(PrintCommand, UnderALetterTheCurrentCardIsTheShownOne) {
  window().ApplyLetterTab(kTabA + 'D' - 'A');
  EXPECT_EQ(Rows(), (Companies{"DURAND ", "Duval "}));
  list().SetCurrentRow(1);
  EXPECT_EQ(Print(PrintScope::kCurrent), Companies{"Duval"});
  EXPECT_EQ(Print(PrintScope::kFile).size(), 5U);
}

TEST_F(PrintCommand, InAGroupTheCurrentCardIsTheShownOne) {
  DisplayLyon(kMembersOnly);
  EXPECT_EQ(Rows(), (Companies{"ALPHA ", "DURAND ", "ZETA "}));
  list().SetCurrentRow(1);
  EXPECT_EQ(Print(PrintScope::kCurrent), Companies{"DURAND"});
}

TEST_F(PrintCommand, InAGroupTheWholeFileIsItsMembers) {
  DisplayLyon(kMembersOnly);
  EXPECT_EQ(Print(PrintScope::kFile), (Companies{"ALPHA", "DURAND", "ZETA"}));
  EXPECT_EQ(Print(PrintScope::kSelection), Companies{});
  list().ToggleMark(2);
  EXPECT_EQ(Print(PrintScope::kSelection), Companies{"ZETA"});
}

TEST_F(PrintCommand, AGroupThatFlagsItsMembersPrintsThemAlone) {
  DisplayLyon(kWholeFileFlagged);
  EXPECT_EQ(Rows().size(), 5U);
  EXPECT_EQ(Print(PrintScope::kFile), (Companies{"ALPHA", "DURAND", "ZETA"}));
  list().SetCurrentRow(4);
  EXPECT_EQ(Print(PrintScope::kCurrent), Companies{"ZETA"});
}

TEST_F(PrintCommand, TheDocumentIsNamedAfterProgramAndDirectory) {
  view.Run(kCommandPrint);
  ASSERT_EQ(dialogs.printers.jobs.size(), 1U);
  EXPECT_EQ(dialogs.printers.jobs.front().document, session->appli_name() + " - CARNETEL.DAN");
}

TEST_F(PrintCommand, ThePageSetupIsKeptInTheProgramsSection) {
  view.Run(kCommandPrint);
  EXPECT_EQ(Profile("TopMargin"), "0");
  EXPECT_EQ(Profile("Type"), "0");
}

TEST_F(PrintCommand, ThePrinterIsChosenInItsOwnDialog) {
  dialogs.printers.installed = {{"Laser", "HP LaserJet 4", "usb://1"}};
  dialogs.printer_choice = [](PrinterChoiceForm& form) { return form.has_printers(); };
  dialogs.print = [](PrintForm& form) { return static_cast<int>(form.Configure()); };
  view.Run(kCommandPrint);
  const std::string path = session->home_dir() + session->appli_name() + ".INI";
  EXPECT_EQ(AsChars(memory.Contents(path)), "[devices]\nPrinter=Laser,HP LaserJet 4,usb://1\n");
}

TEST_F(PrintCommand, TheProfileChoosesTheUnit) {
  const auto unit_of_form = [this](const char* measure) {
    profile.Write("intl", "iMeasure", measure);
    MeasureUnit unit = MeasureUnit::kCentimetres;
    dialogs.print = [&unit](PrintForm& form) {
      unit = form.unit();
      return 0;
    };
    view.Run(kCommandPrint);
    return unit;
  };
  EXPECT_EQ(unit_of_form("1"), MeasureUnit::kInches);
  EXPECT_EQ(unit_of_form("0"), MeasureUnit::kCentimetres);
}

TEST_F(PrintCommand, AFailureIsToldByTheProgramsMessages) {
  dialogs.printers.start = PrinterStart::kFailed;
  dialogs.print = [](PrintForm& form) { return static_cast<int>(form.Print()); };
  view.Run(kCommandPrint);
  const auto shown = messages.TakeShown();
  ASSERT_EQ(shown.size(), 1U);
  EXPECT_EQ(shown.front(), (QueuedMessages::Entry{MessageStyle::kError, 79,
                                                  "Problème avec le gestionnaire d'impression"}));
}

TEST_F(PrintCommand, WithoutRowsNothingHappens) {
  window().ApplyLetterTab(kTabA + 'K' - 'A');
  ASSERT_TRUE(Rows().empty());
  EXPECT_FALSE(view.IsEnabled(kButtonPrint));
  view.Run(kCommandPrint);
  view.Run(kButtonPrint);
  EXPECT_EQ(forms_opened, 0);
  window().ApplyLetterTab(kTabAll);
  view.Run(kCommandPrint);
  EXPECT_EQ(forms_opened, 1);
}

TEST_F(PrintCommand, TypedTextThatStaysKeepsTheFormAway) {
  view.Type(156, "NANTES");
  for (const int command : {int{kCommandPrint}, int{kButtonPrint}}) {
    messages.Answer(MessageButton::kNo);
    view.Run(command);
    EXPECT_EQ(messages.TakeShown().size(), 1U) << command;
  }
  EXPECT_EQ(forms_opened, 0);
  EXPECT_EQ(view.Text(156), "NANTES");
}

// No dialog answers here: one that opened would fail the test.
class PrintCommandAlone : public WindowFixture {};

TEST_F(PrintCommandAlone, WithoutADirectoryNothingHappens) {
  StartSession();
  MainWindowLogic logic(*session, view, dialogs, kCapacity);
  view.Attach(logic);
  logic.Start();
  view.Run(kCommandPrint);
  EXPECT_TRUE(dialogs.printers.jobs.empty());
}

TEST_F(PrintCommandAlone, WithoutCardsNothingHappens) {
  Start();
  view.Run(kCommandPrint);
  EXPECT_TRUE(dialogs.printers.jobs.empty());
}

}  // namespace
}  // namespace carnetel
