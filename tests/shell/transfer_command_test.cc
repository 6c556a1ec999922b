// Imports and exports from the main window's menu to the files.
#include "shell/transfer_command.h"

#include "tests/shell/window_fixture.h"
#include "transfer/dbase_forms.h"
#include "transfer/rank_form.h"

namespace carnetel {
namespace {

class TransferWindow : public WindowFixture {
 protected:
  void SetUp() override {
    Build({CardWith({{kSte1, "ALPHA"}, {kVille, "LYON"}}),
           CardWith({{kSte1, "BETA"}, {kVille, "PARIS"}})});
  }
  // The form is used for one transfer of this file; what it came to is kept.
  void WillTransfer(const std::string& foreign, TransferFileType type) {
    dialogs.transfer = [this, foreign, type](TransferForm& form) {
      form.SetForeignPath(foreign);
      form.set_type(type);
      outcomes.push_back(form.Act());
      return 0;
    };
  }
  void SetText(const std::string& path, std::string_view text) {
    memory.SetContents(path, AsBytes(text));
  }
  std::string TextOf(const std::string& path) {
    return std::string(AsChars(memory.Contents(path)));
  }

  std::vector<TransferForm::Outcome> outcomes;
};

using Outcomes = std::vector<TransferForm::Outcome>;
constexpr auto kFinished = TransferForm::Outcome::kFinished;

TEST_F(TransferWindow, AnImportAddsItsCardsAndShowsThem) {
  SetText(home + "liste.csv", "M;Jean;DURAND;GAMMA;;;;75001;NICE\r\nMme;Anne;PETIT;ZETA\r\n");
  Start();
  list().SetCurrentRow(1);
  dialogs.replaces.emplace_back(false);
  WillTransfer(home + "liste.csv", TransferFileType::kDelimited);
  view.Run(kButtonImport);
  EXPECT_EQ(outcomes, Outcomes{kFinished});
  EXPECT_EQ(Rows(), (std::vector<std::string>{"ALPHA ", "BETA ", "GAMMA ", "ZETA "}));
  EXPECT_EQ(view.tab, kTabAll);
  EXPECT_EQ(list().current_row(), 1);
  EXPECT_NE(session->directory(), nullptr);
}

TEST_F(TransferWindow, AnImportCanReplaceAllCards) {
  SetText(home + "liste.csv", "M;Jean;DURAND;GAMMA\r\n");
  Start();
  dialogs.replaces.emplace_back(true);
  WillTransfer(home + "liste.csv", TransferFileType::kDelimited);
  view.Run(kCommandImport);
  EXPECT_EQ(Rows(), std::vector<std::string>{"GAMMA "});
}

TEST_F(TransferWindow, AnExportWritesTheMarkedCards) {
  Start();
  list().ToggleMark(1);
  WillTransfer(home + "sortie.csv", TransferFileType::kDelimited);
  view.Run(kCommandExport);
  EXPECT_EQ(outcomes, Outcomes{kFinished});
  EXPECT_EQ(TextOf(home + "sortie.csv"), ";;;;BETA;;;;;PARIS;;;;;;;;;;;;;;\r\n");
  EXPECT_EQ(MarkedRows(), std::vector<int>{1});
}

// But delimited files in the layout of a new installation: their lines have one column more than
// they are read with.
TEST_F(TransferWindow, TheOtherTypesGoOutAndComeBack) {
  for (const auto& [type, name] : std::vector<std::pair<TransferFileType, std::string>>{
           {TransferFileType::kFixed, "a.bin"},
           {TransferFileType::kDirectory, "A.DAN"},
           {TransferFileType::kDbase3, "a.dbf"},
           {TransferFileType::kDbase4, "b.dbf"}}) {
    Start();
    view.Run(kCommandSelectAll);
    dialogs.dbase_export = [](DbaseExportForm& form) {
      form.Confirm();
      return 0;
    };
    dialogs.dbase_import = [](DbaseImportForm& form) {
      form.SetPosition(kSte1, 0);
      form.SetPosition(kVille, 5);
      form.Confirm();
      return 0;
    };
    const auto run = [&, type = type, path = home + name](TransferForm& form) {
      form.SetForeignPath(path);
      form.set_type(type);
      if (type >= TransferFileType::kDbase3) form.SetParameters();
      outcomes.push_back(form.Act());
      return 0;
    };
    dialogs.transfer = run;
    view.Run(kCommandExport);
    dialogs.replaces.emplace_back(true);
    view.Run(kCommandImport);
    for (const auto& entry : messages.TakeShown()) ADD_FAILURE() << entry.text;
    EXPECT_EQ(outcomes, (Outcomes{kFinished, kFinished})) << name;
    EXPECT_EQ(Rows(), (std::vector<std::string>{"ALPHA ", "BETA "})) << name;
    list().SetCurrentRow(1);
    EXPECT_EQ(view.Text(156), "PARIS") << name;
    outcomes.clear();
    Quit();
  }
}

TEST_F(TransferWindow, ALeftFormChangesNothing) {
  Start();
  const auto before = memory.Contents(DefaultPath() + ".DAN");
  dialogs.transfer = [](TransferForm&) { return 0; };
  view.Run(kCommandImport);
  view.Run(kCommandExport);
  EXPECT_EQ(Rows().size(), 2U);
  EXPECT_EQ(memory.Contents(DefaultPath() + ".DAN"), before);
}

TEST_F(TransferWindow, TheCharacterSetIsKeptFromOneTransferToTheNext) {
  Start();
  dialogs.transfer = [](TransferForm& form) {
    EXPECT_EQ(form.charset(), CharacterSet::kOem);
    form.set_charset(CharacterSet::kAnsi);
    return 0;
  };
  view.Run(kCommandImport);
  dialogs.transfer = [](TransferForm& form) {
    EXPECT_EQ(form.charset(), CharacterSet::kAnsi);
    return 0;
  };
  view.Run(kCommandExport);
}

TEST_F(TransferWindow, TheMarksOfADisplayedGroupGoOut) {
  Start();
  list().ToggleMark(0);
  dialogs.group_descriptions.push_back(GroupDescription{"Un", kMembersOnly});
  dialogs.groups = [](GroupsForm& form) { return static_cast<int>(form.Create()); };
  view.Run(kCommandGroups);
  window().PickGroup(1);
  view.Run(kCommandSelectAll);
  WillTransfer(home + "groupe.csv", TransferFileType::kDelimited);
  view.Run(kCommandExport);
  EXPECT_EQ(TextOf(home + "groupe.csv"), ";;;;ALPHA;;;;;LYON;;;;;;;;;;;;;;\r\n");
}

TEST_F(TransferWindow, TheListStaysWhereItWasAfterAnExportAndAfterALeftForm) {
  Start();
  list().SetCurrentRow(1);
  dialogs.transfer = [](TransferForm&) { return 0; };
  view.Run(kCommandImport);
  EXPECT_EQ(list().current_row(), 1);
  list().ToggleMark(1);
  list().SetCurrentRow(1);
  WillTransfer(home + "sortie.csv", TransferFileType::kDelimited);
  view.Run(kCommandExport);
  EXPECT_EQ(outcomes, Outcomes{kFinished});
  EXPECT_EQ(list().current_row(), 1);
}

TEST_F(TransferWindow, ADirectoryThatAnotherProgramHasOpenIsNoDestinationOfAnExport) {
  Build(home + "AUTRE", {CardWith({{kSte1, "X"}})});
  const auto before = memory.Contents(home + "AUTRE.DAN");
  Start();
  view.Run(kCommandSelectAll);
  const auto other = DirectoryGuard::Take(memory.Canonical(home + "AUTRE.ADR"), {});
  ASSERT_NE(other, nullptr);
  dialogs.replaces.emplace_back(true);
  WillTransfer(home + "AUTRE.DAN", TransferFileType::kDirectory);
  view.Run(kCommandExport);
  EXPECT_EQ(outcomes, Outcomes{TransferForm::Outcome::kFailed});
  const auto shown = messages.TakeShown();
  ASSERT_EQ(shown.size(), 1U);
  EXPECT_EQ(shown[0].text, "Accès au fichier " + home + "AUTRE.DAN impossible");
  EXPECT_EQ(memory.Contents(home + "AUTRE.DAN"), before);
}

TEST_F(TransferWindow, AnEndFromOutsideDuringTheDialogOpensNothingAgain) {
  Start();
  dialogs.transfer = [this](TransferForm&) {
    window().QuitUnasked();
    return 0;
  };
  view.Run(kCommandImport);
  EXPECT_EQ(session->directory(), nullptr);
}

TEST_F(TransferWindow, AnEndFromOutsideDuringTheDialogOfGroupsIsTheEnd) {
  Start();
  dialogs.groups = [this](GroupsForm&) {
    window().QuitUnasked();
    return 0;
  };
  view.Run(kCommandGroups);
  EXPECT_EQ(session->directory(), nullptr);
}

TEST_F(TransferWindow, AnotherDirectoryCanBeTheDestinationOfAnImport) {
  Build(home + "AUTRE", {CardWith({{kSte1, "X"}})});
  SetText(home + "liste.csv", ";;;GAMMA\r\n");
  Start();
  dialogs.replaces.emplace_back(false);
  dialogs.file_picker = [](FilePicker& picker) {
    picker.SetName("AUTRE.DAN");
    return picker.Accept() == PickerAnswer::kAccepted;
  };
  dialogs.transfer = [this](TransferForm& form) {
    form.SetForeignPath(home + "liste.csv");
    EXPECT_TRUE(form.Browse(TransferSide::kDestination));
    outcomes.push_back(form.Act());
    return 0;
  };
  view.Run(kCommandImport);
  EXPECT_EQ(outcomes, Outcomes{kFinished});
  EXPECT_EQ(Rows().size(), 2U);
  EXPECT_EQ(Saved(home + "AUTRE").size(), 2U);
}

TEST_F(TransferWindow, AProfileIsSavedAndLoadedUnderItsName) {
  Start();
  dialogs.names = {"Tableur"};
  int visit = 0;
  dialogs.named_sets = [&visit](NamedSetsForm& form) {
    ++visit;
    return static_cast<int>(visit == 1 ? form.Add() : form.Load());
  };
  messages.Answer(MessageButton::kOk);
  dialogs.transfer = [](TransferForm& form) {
    form.set_type(TransferFileType::kFixed);
    form.ManageProfiles();
    form.set_type(TransferFileType::kDelimited);
    form.ManageProfiles();
    EXPECT_EQ(form.type(), TransferFileType::kFixed);
    return 0;
  };
  view.Run(kCommandImport);
  EXPECT_EQ(dialogs.names_offered, std::vector<std::string>{"Dernier format composé"});
  EXPECT_EQ(messages.TakeShown().front().text, "Charger \"Tableur\" en mémoire ?");
}

TEST_F(TransferWindow, AMappingNeedsATableThatIsThere) {
  SetText(home + "texte.dbf", "ceci n'est pas une table, et de loin.");
  Start();
  dialogs.transfer = [this](TransferForm& form) {
    form.SetForeignPath(home + "absente.dbf");
    form.SetParameters();
    form.SetForeignPath(home + "texte.dbf");
    form.SetParameters();
    return 0;
  };
  view.Run(kCommandImport);
  const auto shown = messages.TakeShown();
  ASSERT_EQ(shown.size(), 2U);
  EXPECT_EQ(shown[0].text, "Accès au Fichier Source impossible");
  EXPECT_EQ(shown[1].text, "Format du Fichier Dbase non reconnu");
}

}  // namespace
}  // namespace carnetel
