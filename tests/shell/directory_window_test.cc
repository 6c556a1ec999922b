// What the main window's commands about directories do, from the command to the files.
#include "shell/description.h"
#include "shell/invalid_file.h"
#include "shell/preferences.h"
#include "tests/shell/window_fixture.h"

namespace carnetel {
namespace {

class DirectoryWindow : public WindowFixture {
 protected:
  static std::vector<CardRecord> ThreeCards() {
    return {CardWith({{kSte1, "ALPHA"}, {kNom, "ZOLA"}}),
            CardWith({{kSte1, "BETA"}, {kNom, "MARTIN"}}),
            CardWith({{kSte1, "GAMMA"}, {kNom, "ALBERT"}})};
  }
  // The next file dialog ends with this name.
  void WillChoose(const std::string& name) {
    dialogs.file_picker = [name](FilePicker& picker) {
      picker.SetName(name);
      return picker.Accept() == PickerAnswer::kAccepted;
    };
  }
  std::vector<std::byte> FileOf(const std::string& extension) {
    return memory.Contents(DefaultPath() + extension);
  }
};

TEST_F(DirectoryWindow, NewMakesADirectoryAndShowsIt) {
  Build(ThreeCards());
  Start();
  WillChoose("CLIENTS");
  view.Run(kCommandNew);
  EXPECT_EQ(session->CurrentMainFile(), home + "CLIENTS.DAN");
  EXPECT_EQ(view.title, "Carnetel -  " + home + "CLIENTS.DAN");
  EXPECT_EQ(view.recents, (std::vector<std::string>{"&1 " + home + "CLIENTS.DAN",
                                                    "&2 " + DefaultPath() + ".DAN"}));
  EXPECT_EQ(view.position, "1 / 0");
  EXPECT_EQ(view.tab, kTabAll);
  EXPECT_EQ(view.focus, kTabAll);
  EXPECT_EQ(memory.Contents(home + "CLIENTS.DAN").size(), 768U);
}

TEST_F(DirectoryWindow, NewOverAnExistingNameLeavesTheCurrentDirectoryOpen) {
  Build(ThreeCards());
  Build(home + "CLIENTS", {CardWith({{kSte1, "AUTRE"}})});
  Start();
  const auto before = memory.Contents(home + "CLIENTS.DAN");
  WillChoose("CLIENTS.DAN");
  view.Run(kCommandNew);
  EXPECT_EQ(
      messages.TakeShown(),
      (std::vector<QueuedMessages::Entry>{{MessageStyle::kError, 79, "Le fichier existe déjà"}}));
  EXPECT_EQ(session->CurrentMainFile(), DefaultPath() + ".DAN");
  EXPECT_EQ(Rows().size(), 3U);
  EXPECT_EQ(memory.Contents(home + "CLIENTS.DAN"), before);
}

TEST_F(DirectoryWindow, OpenShowsTheChosenDirectory) {
  Build(ThreeCards());
  Build(home + "AUTRE", {CardWith({{kSte1, "SEULE"}})});
  Start();
  WillChoose("AUTRE");
  view.Run(kButtonOpen);
  EXPECT_EQ(Rows(), std::vector<std::string>{"SEULE "});
  EXPECT_EQ(view.Text(150), "SEULE");
}

TEST_F(DirectoryWindow, ACancelledDialogChangesNothing) {
  Build(ThreeCards());
  Start();
  list().SetCurrentRow(2);
  dialogs.file_picker = [](FilePicker&) { return false; };
  view.Run(kCommandNew);
  view.Run(kCommandOpen);
  EXPECT_EQ(list().current_row(), 2);
  EXPECT_EQ(session->CurrentMainFile(), DefaultPath() + ".DAN");
  view.Run(kCommandDestroy);
  EXPECT_EQ(Rows().size(), 3U);
  EXPECT_EQ(view.focus, kTabAll);
}

TEST_F(DirectoryWindow, CommandsAskBeforeTypedTextIsLost) {
  Build(ThreeCards());
  Start();
  view.Type(156, "PARIS");
  for (const int command : {kCommandNew, kCommandOpen, kButtonOpen, kCommandDestroy,
                            kCommandDescribe, kCommandPreferences, kCommandAbout}) {
    messages.Answer(MessageButton::kNo);
    view.Run(command);
    EXPECT_EQ(messages.TakeShown().size(), 1U) << command;
    EXPECT_EQ(form().mode(), FormMode::kChanged) << command;
  }
  EXPECT_EQ(view.Text(156), "PARIS");
  EXPECT_EQ(dialogs.abouts, 0);
}

TEST_F(DirectoryWindow, DestroyingTheOpenDirectoryLeavesAnEmptyOneOfItsName) {
  Build(ThreeCards());
  Start();
  WillChoose("CARNETEL");
  messages.Answer(MessageButton::kOk);
  view.Run(kCommandDestroy);
  EXPECT_EQ(messages.TakeShown(),
            (std::vector<QueuedMessages::Entry>{
                {MessageStyle::kOkCancel, 80,
                 "Le fichier  carnetel courant: " + DefaultPath() + ".DAN \nva être vidé "}}));
  EXPECT_EQ(FileOf(".DAN").size(), 768U);
  EXPECT_EQ(view.position, "1 / 0");
  EXPECT_NE(session->directory(), nullptr);
}

TEST_F(DirectoryWindow, DestroyingAnotherDirectoryLeavesTheOpenOneAlone) {
  Build(ThreeCards());
  Build(home + "VIEUX", {CardWith({{kSte1, "X"}})});
  Start();
  WillChoose("VIEUX");
  messages.Answer(MessageButton::kOk);
  view.Run(kCommandDestroy);
  EXPECT_EQ(messages.TakeShown().front().text,
            "Le fichier  " + home + "VIEUX.DAN va être détruit ");
  EXPECT_FALSE(memory.Exists(home + "VIEUX.DAN"));
  EXPECT_FALSE(memory.Exists(home + "VIEUX.I01"));
  EXPECT_EQ(Rows().size(), 3U);
}

TEST_F(DirectoryWindow, TheDescriptionReachesTheFile) {
  Build(ThreeCards());
  Start();
  dialogs.description = [](DescriptionForm& form) { return form.Accept("Clients d'été"); };
  view.Run(kCommandDescribe);
  const auto main = FileOf(".DAN");
  EXPECT_EQ(AsChars(main).substr(34, 14), std::string_view("Clients d'\x82t\x82\0", 14));
}

TEST_F(DirectoryWindow, AnotherIndexShowsTheWholeFileInItsOrderWithItsMarks) {
  Build(ThreeCards());
  Start();
  list().ToggleMark(0);
  window().ApplyLetterTab(kTabA);
  dialogs.preferences = [](PreferencesForm& form) {
    form.set_key_field(kNom);
    return true;
  };
  view.Run(kCommandPreferences);
  EXPECT_EQ(view.tab, kTabAll);
  EXPECT_EQ(list().letter_range(), kAllLetters);
  EXPECT_EQ(Rows().size(), 3U);
  EXPECT_EQ(MarkedRows(), std::vector<int>{2});
  EXPECT_EQ(view.marked, 1);
  EXPECT_EQ(Profile("Idindex"), "10");
  EXPECT_EQ(dialogs.patience_boxes, 1);
  EXPECT_FALSE(dialogs.patience_shown);
  EXPECT_EQ(view.settings_changes, 1);
  Quit();
  const std::vector<SavedCard> saved = Saved(kNom);
  ASSERT_EQ(saved.size(), 3U);
  EXPECT_EQ(saved[2].card.FieldText(kSte1).bytes(), "ALPHA");
  EXPECT_TRUE(saved[2].marked());
}

TEST_F(DirectoryWindow, AnotherStyleOnlyRepaintsTheTab) {
  Build(ThreeCards());
  Start();
  window().ApplyLetterTab(kTabA);
  const auto before = FileOf(".ADR");
  dialogs.preferences = [](PreferencesForm& form) {
    form.set_style_aff_ste(2);
    return true;
  };
  view.Run(kCommandPreferences);
  EXPECT_EQ(Rows(), std::vector<std::string>{"ZOLA ALPHA "});
  EXPECT_EQ(dialogs.patience_boxes, 0);
  EXPECT_EQ(FileOf(".ADR"), before);
}

TEST_F(DirectoryWindow, TheZonesSwapWhenTheOtherIsToBeShownFirst) {
  Build(ThreeCards());
  Start();
  EXPECT_EQ(view.zone, FormZone::kReferences);
  dialogs.preferences = [](PreferencesForm& form) {
    form.set_shows_references(false);
    return true;
  };
  view.Run(kCommandPreferences);
  EXPECT_EQ(view.zone, FormZone::kNotes);
  EXPECT_EQ(Profile("ShowRefCor"), "0");
}

TEST_F(DirectoryWindow, HelpFollowsTheFocusAndNeverAsks) {
  Build(ThreeCards());
  Start();
  view.Focus(kButtonSearch);
  view.Run(kCommandHelp);
  view.Type(156, "PARIS");
  view.Run(kCommandHelpKey);
  view.Run(kButtonCreateOrCancel);
  view.Run(kButtonCreateOrCancel);
  view.Focus(150);
  view.Run(kButtonHelp);
  EXPECT_EQ(dialogs.help_topics, (std::vector<int>{53, 66, 52}));
  EXPECT_TRUE(messages.TakeShown().empty());
}

TEST_F(DirectoryWindow, AboutOpensItsDialog) {
  Start();
  view.Run(kCommandAbout);
  EXPECT_EQ(dialogs.abouts, 1);
}

class UnrecognisedFile : public DirectoryWindow {
 protected:
  void SetUp() override {
    // Three cards behind a block that is no header.
    std::string file(768, 'x');
    for (const char* company : {"UN", "DEUX", "TROIS"}) {
      std::string card(768, '\0');
      card.replace(0, std::string_view(company).size(), company);
      file += card;
    }
    memory.SetContents(DefaultPath() + ".DAN", AsBytes(file));
  }
};

TEST_F(UnrecognisedFile, IsRecoveredIntoTheFallbackWithEveryCardMarked) {
  const auto before = FileOf(".DAN");
  dialogs.invalid_file = [this](InvalidFileForm& form) {
    EXPECT_EQ(form.path(), DefaultPath() + ".DAN");
    EXPECT_EQ(form.choice(), InvalidFileChoice::kRecover);
    return form.Confirm().value_or(InvalidFileEnd::kClosed);
  };
  Start();
  EXPECT_TRUE(fell_back);
  EXPECT_EQ(session->CurrentMainFile(), home + "CARN001.DAN");
  EXPECT_EQ(Rows(), (std::vector<std::string>{"DEUX ", "TROIS ", "UN "}));
  EXPECT_EQ(view.marked, 3);
  EXPECT_EQ(view.tab, kTabAll);
  EXPECT_EQ(FileOf(".DAN"), before);
}

TEST_F(UnrecognisedFile, TheOtherChoicesLeadToTheirDialogs) {
  for (const InvalidFileChoice choice : {InvalidFileChoice::kCreate, InvalidFileChoice::kLoad}) {
    std::vector<ChooserTemplate> opened;
    dialogs.invalid_file = [choice](InvalidFileForm& form) {
      form.set_choice(choice);
      return form.Confirm().value_or(InvalidFileEnd::kClosed);
    };
    dialogs.file_picker = [&opened](FilePicker& picker) {
      opened.push_back(picker.form());
      return false;
    };
    Start();
    const bool creates = choice == InvalidFileChoice::kCreate;
    EXPECT_EQ(opened, std::vector<ChooserTemplate>{creates ? ChooserTemplate::kCreate
                                                           : ChooserTemplate::kOpen});
    Quit();
    SetProfile("File1", "");
  }
}

TEST_F(UnrecognisedFile, ClosingTheDialogLeavesTheEmptyFallbackOpen) {
  dialogs.invalid_file = [](InvalidFileForm&) { return InvalidFileEnd::kClosed; };
  Start();
  EXPECT_EQ(session->CurrentMainFile(), home + "CARN001.DAN");
  EXPECT_EQ(view.position, "1 / 0");
  EXPECT_TRUE(messages.TakeShown().empty());
}

TEST_F(UnrecognisedFile, CanBeDestroyedFromTheDialog) {
  dialogs.file_picker = [](FilePicker& picker) {
    EXPECT_EQ(picker.form(), ChooserTemplate::kDestroy);
    picker.SelectFiles({"CARNETEL.DAN"});
    return picker.Accept() == PickerAnswer::kAccepted;
  };
  messages.Answer(MessageButton::kOk);
  dialogs.invalid_file = [](InvalidFileForm& form) {
    form.set_choice(InvalidFileChoice::kDestroy);
    EXPECT_FALSE(form.Confirm().has_value());
    EXPECT_FALSE(form.may_recover());
    EXPECT_EQ(form.path(), "");
    return InvalidFileEnd::kClosed;
  };
  Start();
  EXPECT_FALSE(memory.Exists(DefaultPath() + ".DAN"));
  EXPECT_NE(session->directory(), nullptr);
}

TEST_F(DirectoryWindow, AnOlderDirectoryOpensUpgraded) {
  std::string file = "CARNETEL DROV SOFTW. VER 04.10" + std::string(738, '\0');
  std::string card(768, '\0');
  card.replace(0, 5, "ALPHA");
  memory.SetContents(DefaultPath() + ".DAN", AsBytes(file + card));
  EXPECT_TRUE(Start());
  EXPECT_FALSE(fell_back);
  EXPECT_EQ(Rows(), std::vector<std::string>{"ALPHA "});
  EXPECT_EQ(AsChars(FileOf(".DAN")).substr(25, 5), "05.00");
}

TEST_F(DirectoryWindow, AnOlderDirectoryThatCannotBeWrittenAnewIsRefused) {
  Build(ThreeCards());
  Start();
  const std::string old = "CARNETEL DROV SOFTW. VER 04.10" + std::string(738, '\0');
  memory.SetContents(home + "VIEUX.DAN", AsBytes(old));
  files.FillDisk();
  WillChoose("VIEUX");
  view.Run(kCommandOpen);
  files.Heal();
  EXPECT_EQ(messages.TakeShown().front().text, "Carnetel non valide - Choisissez un autre...");
  EXPECT_EQ(AsChars(memory.Contents(home + "VIEUX.DAN")), old);
  EXPECT_EQ(session->CurrentMainFile(), DefaultPath() + ".DAN");
  EXPECT_EQ(Rows().size(), 3U);
}

}  // namespace
}  // namespace carnetel
