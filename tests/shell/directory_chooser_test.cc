#include "tests/shell/directory_chooser_fixture.h"

namespace carnetel {
namespace {

// ---- what the dialog is given ----

TEST_F(DirectoryChooserTest, TheDialogBeginsBesideTheCurrentDirectory) {
  OpenCurrent();
  std::string folder;
  dialogs.file_picker = [&folder](FilePicker& picker) {
    folder = picker.folder();
    return false;
  };
  EXPECT_FALSE(
      ChooseDirectory(*session, dialogs, kOpen, ChooserMode::kDirectories, true).confirmed);
  EXPECT_EQ(folder + "/", home);
}

TEST_F(DirectoryChooserTest, EachModeHasItsTypesAndExtension) {
  OpenCurrent();
  const auto choose = [this](ChooserMode mode) {
    std::string types;
    dialogs.file_picker = [&types](FilePicker& picker) {
      types = picker.filters().front().pattern;
      picker.SetName("X");
      EXPECT_EQ(picker.Accept(), PickerAnswer::kAccepted);
      return true;
    };
    const Choice choice = ChooseDirectory(*session, dialogs, kOther, mode, false);
    EXPECT_TRUE(choice.confirmed);
    return types + " " + choice.paths.front().substr(home.size());
  };
  EXPECT_EQ(choose(ChooserMode::kAny), "*.* X");
  EXPECT_EQ(choose(ChooserMode::kDirectories), "*.DAN X.DAN");
  EXPECT_EQ(choose(ChooserMode::kInvalidFile), "*.DAN X.DAN");
  EXPECT_EQ(choose(ChooserMode::kDbase), "*.dbf X.DBF");
}

TEST_F(DirectoryChooserTest, ACancelledDialogChangesNothing) {
  OpenCurrent();
  for (const ChooserTemplate form : {kCreate, kOpen, kDestroy, kOther}) {
    dialogs.file_picker = [](FilePicker& picker) {
      picker.SetName("A");
      return false;
    };
    const Choice choice = ChooseDirectory(*session, dialogs, form, ChooserMode::kDirectories, true);
    EXPECT_FALSE(choice.confirmed);
    EXPECT_EQ(choice.paths, Names());
  }
  EXPECT_TRUE(IsCurrentOpen(1));
  EXPECT_EQ(messages.TakeShown(), Shown());
}

TEST_F(DirectoryChooserTest, WithoutActingTheChoiceIsOnlyHandedBack) {
  OpenCurrent();
  BuildOther(home + "A");
  for (const ChooserTemplate form : {kCreate, kOpen}) {
    for (const char* name : {"A", "missing"}) {
      const Choice choice = Type(form, name, false);
      EXPECT_TRUE(choice.confirmed);
      EXPECT_EQ(choice.paths, Names{home + name + ".DAN"});
    }
  }
  EXPECT_TRUE(IsCurrentOpen(1));
  EXPECT_FALSE(memory.Exists(home + "missing.DAN"));
  EXPECT_EQ(messages.TakeShown(), Shown());
}

TEST_F(DirectoryChooserTest, OtherFilesAndOtherFormsAreOnlyHandedBack) {
  OpenCurrent();
  BuildOther(home + "A");
  MakeFile(home + "A.DBF");
  EXPECT_TRUE(Select(kOther, {"A.DAN"}).confirmed);
  for (const ChooserMode mode : {ChooserMode::kAny, ChooserMode::kDbase}) {
    for (const ChooserTemplate form : {kOpen, kDestroy, kOther}) {
      const Choice choice = Select(form, {"A.DBF"}, mode);
      EXPECT_TRUE(choice.confirmed);
      EXPECT_EQ(choice.paths, Names{home + "A.DBF"});
    }
  }
  EXPECT_TRUE(IsCurrentOpen(1));
  EXPECT_TRUE(memory.Exists(home + "A.DAN"));
  EXPECT_TRUE(memory.Exists(home + "A.DBF"));
  EXPECT_EQ(messages.TakeShown(), Shown());
}

// ---- create ----

TEST_F(DirectoryChooserTest, CreatesAndOpensANewDirectory) {
  OpenCurrent();
  const Choice choice = Type(kCreate, "NEW");
  EXPECT_TRUE(choice.confirmed);
  EXPECT_EQ(choice.paths, Names{home + "NEW.DAN"});
  EXPECT_EQ(session->current_path(), home + "NEW");
  EXPECT_EQ(session->directory()->main().count(), 0u);
  EXPECT_EQ(Saved().size(), 1u);
}

TEST_F(DirectoryChooserTest, ANewNameMayHoldDots) {
  OpenCurrent();
  EXPECT_TRUE(Type(kCreate, "mes.fiches").confirmed);
  EXPECT_EQ(session->current_path(), home + "mes.fiches");
  EXPECT_TRUE(memory.Exists(home + "mes.fiches.DAN"));
}

TEST_F(DirectoryChooserTest, CreatingOverAnExistingNameIsRefused) {
  OpenCurrent();
  BuildOther(home + "A");
  MakeFile(home + "B.txt");
  const std::vector<std::byte> before = memory.Contents(home + "A.DAN");
  for (const char* name : {"A", "A.DAN", "a.dan", "A.ADR", "B.txt"}) {
    EXPECT_FALSE(Type(kCreate, name).confirmed);
    EXPECT_EQ(messages.TakeShown(), Shown{Error("Le fichier existe déjà")});
    EXPECT_TRUE(IsCurrentOpen(1)) << name;
  }
  EXPECT_EQ(memory.Contents(home + "A.DAN"), before);
  EXPECT_EQ(memory.Contents(home + "B.txt").size(), 12u);
}

TEST_F(DirectoryChooserTest, CreatingOverTheOpenDirectoryIsRefused) {
  OpenCurrent();
  EXPECT_FALSE(Type(kCreate, "CARNETEL").confirmed);
  EXPECT_EQ(messages.TakeShown(), Shown{Error("Le fichier existe déjà")});
  EXPECT_TRUE(IsCurrentOpen(1));
}

TEST_F(DirectoryChooserTest, ADirectoryThatCannotBeMadeLeavesTheOneFromBefore) {
  OpenCurrent();
  files.StopAfter(0);
  EXPECT_TRUE(Type(kCreate, "NEW").confirmed);
  EXPECT_EQ(messages.TakeShown().front(), Error("Carnetel non valide - Choisissez un autre..."));
  files.Heal();
  EXPECT_EQ(session->current_path(), DefaultPath());
  EXPECT_FALSE(memory.Exists(home + "NEW.DAN"));
}

// ---- open ----

TEST_F(DirectoryChooserTest, OpensTheDirectorySelected) {
  OpenCurrent();
  BuildOther(home + "A");
  int closings = 0;
  session->OnClosing([&closings] { ++closings; });
  const Choice choice = Select(kOpen, {"A.DAN"});
  EXPECT_TRUE(choice.confirmed);
  EXPECT_EQ(choice.paths, Names{home + "A.DAN"});
  EXPECT_EQ(session->current_path(), home + "A");
  EXPECT_EQ(session->directory()->main().count(), 1u);
  EXPECT_EQ(closings, 1);
  EXPECT_EQ(messages.TakeShown(), Shown());
}

TEST_F(DirectoryChooserTest, OpensTheOpenDirectoryAgain) {
  OpenCurrent();
  EXPECT_TRUE(Select(kOpen, {"CARNETEL.DAN"}).confirmed);
  EXPECT_TRUE(IsCurrentOpen(1));
}

TEST_F(DirectoryChooserTest, OpensByAnyNameOfTheFamily) {
  OpenCurrent();
  BuildOther(home + "A");
  EXPECT_TRUE(Type(kOpen, "A.I01").confirmed);
  EXPECT_EQ(session->current_path(), home + "A");
}

TEST_F(DirectoryChooserTest, AMissingFileIsRefusedAndNotMade) {
  OpenCurrent();
  MakeFile(home + "B.txt");
  for (const char* name : {"missing", "missing.DAN", "B.txt"}) {
    EXPECT_FALSE(Type(kOpen, name).confirmed);
    EXPECT_EQ(messages.TakeShown(), Shown{Error("Carnetel non valide - Choisissez un autre...")});
    EXPECT_TRUE(IsCurrentOpen(1)) << name;
  }
  EXPECT_EQ(FilesOf("missing"), Names());
  EXPECT_EQ(FilesOf("B"), Names{"B.txt"});
}

TEST_F(DirectoryChooserTest, AFileThatCannotBeReadIsTold) {
  OpenCurrent();
  // A folder of that name, reached through the name of another file of the family.
  memory.MakeFolder(home + "A.DAN");
  EXPECT_FALSE(Type(kOpen, "A.ADR").confirmed);
  EXPECT_EQ(messages.TakeShown(), Shown{Error("Accès au fichier " + home + "A.DAN impossible")});
  EXPECT_TRUE(IsCurrentOpen(1));
}

TEST_F(DirectoryChooserTest, ADirectoryOfAnotherSeatIsRefused) {
  BuildOther(home + "A");
  SetOwner(home + "A", 7);
  OpenOnSeat(3);
  EXPECT_FALSE(Type(kOpen, home + "A").confirmed);
  EXPECT_EQ(messages.TakeShown(), Shown{Error("Accès refusé, Carnetel privé de:   (Poste N° 07)")});
  EXPECT_EQ(session->current_path(), home + "seat/CARNETEL");
  EXPECT_NE(session->directory(), nullptr);
}

TEST_F(DirectoryChooserTest, TheOwnerAndProgramsWithoutSeatsMayOpen) {
  BuildOther(home + "A");
  SetOwner(home + "A", 7);
  OpenOnSeat(7);
  EXPECT_TRUE(Type(kOpen, home + "A").confirmed);
  EXPECT_EQ(session->current_path(), home + "A");
  session.reset();
  OpenCurrent();
  EXPECT_TRUE(Select(kOpen, {"A.DAN"}).confirmed);
  EXPECT_EQ(session->current_path(), home + "A");
  EXPECT_EQ(messages.TakeShown(), Shown());
}

TEST_F(DirectoryChooserTest, AFileThatIsNoDirectoryLeavesTheOneFromBefore) {
  OpenCurrent();
  MakeFile(home + "B.DAN");
  EXPECT_TRUE(Select(kOpen, {"B.DAN"}).confirmed);
  EXPECT_EQ(messages.TakeShown(), Shown{Error("Carnetel non valide - Choisissez un autre...")});
  EXPECT_TRUE(IsCurrentOpen(1));
  EXPECT_EQ(memory.Contents(home + "B.DAN").size(), 12u);
}

// ---- the private box ----

TEST_F(DirectoryChooserTest, ADirectoryCreatedWithTheBoxTickedBelongsToTheSeat) {
  OpenOnSeat(3);
  dialogs.file_picker = [](FilePicker& picker) {
    picker.SetName("NEW");
    picker.SetPrivate(true);
    return picker.Accept() == PickerAnswer::kAccepted;
  };
  EXPECT_TRUE(
      ChooseDirectory(*session, dialogs, kCreate, ChooserMode::kDirectories, true).confirmed);
  EXPECT_EQ(OwnerOf(home + "seat/NEW"), 3);
  EXPECT_EQ(OwnerOf(home + "seat/CARNETEL"), 0);
  EXPECT_FALSE(session->private_requested());
}

TEST_F(DirectoryChooserTest, APublicDirectoryOpenedWithTheBoxTickedBelongsToTheSeat) {
  BuildOther(home + "A");
  OpenOnSeat(3);
  dialogs.file_picker = [this](FilePicker& picker) {
    picker.EnterFolder(home);
    picker.SelectFiles({"A.DAN"});
    picker.SetPrivate(true);
    return picker.Accept() == PickerAnswer::kAccepted;
  };
  EXPECT_TRUE(ChooseDirectory(*session, dialogs, kOpen, ChooserMode::kDirectories, true).confirmed);
  EXPECT_EQ(OwnerOf(home + "A"), 3);
}

TEST_F(DirectoryChooserTest, ABoxTickedForWhatIsCancelledOrRefusedIsForgotten) {
  OpenOnSeat(3);
  for (const bool confirms : {false, true}) {
    dialogs.file_picker = [confirms](FilePicker& picker) {
      picker.SetName("missing");
      picker.SetPrivate(true);
      EXPECT_EQ(picker.Accept(), PickerAnswer::kAccepted);
      return confirms;
    };
    EXPECT_FALSE(
        ChooseDirectory(*session, dialogs, kOpen, ChooserMode::kDirectories, true).confirmed);
    EXPECT_FALSE(session->private_requested());
  }
  messages.TakeShown();
}

TEST_F(DirectoryChooserTest, ABoxTickedForAChoiceHandedBackIsKeptForItsOpening) {
  OpenOnSeat(3);
  dialogs.file_picker = [](FilePicker& picker) {
    picker.SetName("NEW");
    picker.SetPrivate(true);
    return picker.Accept() == PickerAnswer::kAccepted;
  };
  EXPECT_TRUE(
      ChooseDirectory(*session, dialogs, kCreate, ChooserMode::kDirectories, false).confirmed);
  EXPECT_TRUE(session->private_requested());
}

}  // namespace
}  // namespace carnetel
