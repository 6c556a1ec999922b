#include "shell/directory_chooser.h"

#include <unistd.h>

#include "base/string_table.h"
#include "tests/shell/fake_dialogs.h"
#include "tests/shell/window_fixture.h"

namespace carnetel {
namespace {

using Names = std::vector<std::string>;
using Shown = std::vector<QueuedMessages::Entry>;

constexpr auto kCreate = ChooserTemplate::kCreate;
constexpr auto kOpen = ChooserTemplate::kOpen;
constexpr auto kDestroy = ChooserTemplate::kDestroy;
constexpr auto kOther = ChooserTemplate::kOther;

class DirectoryChooserTest : public WindowFixture {
 protected:
  ~DirectoryChooserTest() override {
    session.reset();
    for (const std::string& folder : {home, home + "seat/"}) {
      for (const char* stem : {"A", "B", "CARNETEL", "NEW", "mes.fiches"}) {
        ::unlink(DirectoryGuard::LockFilePath(folder + stem + ".ADR").c_str());
      }
    }
  }

  // One card in each directory, CARNETEL open.
  void OpenCurrent() {
    Build({CardWith({{kSte1, "CURRENT"}})});
    StartSession();
    ASSERT_TRUE(session->OpenAtStart(&fell_back));
  }
  // The same on a seat, whose default directory lies in the folder "seat/".
  void OpenOnSeat(int32_t seat) {
    memory.MakeFolder(home + "seat/");
    StartupRequest request;
    request.exchange_file_path = home + "seat/ECHANGE.DAT";
    request.workstation_number = seat;
    StartSession(request);
    ASSERT_TRUE(session->OpenAtStart(&fell_back));
  }
  void BuildOther(const std::string& stem) { Build(stem, {CardWith({{kSte1, "OTHER"}})}); }
  void MakeFile(const std::string& path) { memory.SetContents(path, AsBytes("no directory")); }
  [[nodiscard]] uint16_t OwnerOf(const std::string& stem) {
    return ReadMainHeader(memory, stem + ".DAN").value_or(MainHeader()).owner();
  }
  void SetOwner(const std::string& stem, uint16_t seat) {
    std::vector<std::byte> bytes = memory.Contents(stem + ".DAN");
    ASSERT_GT(bytes.size(), MainHeader::kSize);
    StoreLe16(bytes, MainHeader::kOwnerOffset, seat);
    memory.SetContents(stem + ".DAN", bytes);
  }

  // The user types `name` and presses OK.
  Choice Type(ChooserTemplate form, const std::string& name, bool act = true) {
    dialogs.file_picker = [&name](FilePicker& picker) {
      picker.SetName(name);
      return picker.Accept() == PickerAnswer::kAccepted;
    };
    return ChooseDirectory(*session, dialogs, form, ChooserMode::kDirectories, act);
  }
  // The user selects `names` in the list and presses OK.
  Choice Select(ChooserTemplate form, const Names& names,
                ChooserMode mode = ChooserMode::kDirectories) {
    dialogs.file_picker = [&names](FilePicker& picker) {
      picker.SelectFiles(names);
      return picker.Accept() == PickerAnswer::kAccepted;
    };
    return ChooseDirectory(*session, dialogs, form, mode, true);
  }
  void Answer(MessageButton button) { messages.Answer(button); }
  static Shown::value_type Error(const std::string& text) {
    return {MessageStyle::kError, 79, text};
  }
  static Shown::value_type Question(const std::string& text) {
    return {MessageStyle::kOkCancel, 80, text};
  }
  [[nodiscard]] Shown::value_type AsksToDestroy(const std::string& stem) const {
    return Question("Le fichier  " + stem + ".DAN va être détruit ");
  }
  [[nodiscard]] Shown::value_type AsksToEmpty(const std::string& stem) const {
    return Question("Le fichier  carnetel courant: " + stem + ".DAN \nva être vidé ");
  }
  [[nodiscard]] bool IsCurrentOpen(uint32_t cards) const {
    return session->directory() != nullptr && session->directory()->main().count() == cards &&
           session->current_path() == DefaultPath();
  }
  Names FilesOf(const std::string& stem_name) {
    Names names;
    for (const std::string& name : memory.List(home)) {
      if (name.starts_with(stem_name + ".")) names.push_back(name);
    }
    return names;
  }

  FakeDialogs dialogs;
};

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

// ---- destroy ----

TEST_F(DirectoryChooserTest, DestroysTheFamilyAfterOk) {
  BuildOther(home + "A");
  OpenCurrent();
  MakeFile(home + "A.GRP");
  MakeFile(home + "A.T01");
  MakeFile(home + "A.txt");
  Answer(MessageButton::kOk);
  const Choice choice = Select(kDestroy, {"A.DAN"});
  EXPECT_TRUE(choice.confirmed);
  EXPECT_EQ(choice.paths, Names{home + "A.DAN"});
  EXPECT_EQ(messages.TakeShown(), Shown{AsksToDestroy(home + "A")});
  EXPECT_EQ(FilesOf("A"), Names{"A.txt"});
  EXPECT_TRUE(IsCurrentOpen(1));
}

TEST_F(DirectoryChooserTest, DestroysWithoutBeingAskedToActToo) {
  BuildOther(home + "A");
  OpenCurrent();
  Answer(MessageButton::kOk);
  EXPECT_TRUE(Type(kDestroy, "A", false).confirmed);
  EXPECT_FALSE(memory.Exists(home + "A.DAN"));
  messages.TakeShown();
}

TEST_F(DirectoryChooserTest, CancelGoesOnWithTheNextName) {
  BuildOther(home + "A");
  BuildOther(home + "B");
  OpenCurrent();
  Answer(MessageButton::kCancel);
  Answer(MessageButton::kOk);
  EXPECT_TRUE(Select(kDestroy, {"A.DAN", "B.DAN"}).confirmed);
  EXPECT_EQ(messages.TakeShown(), (Shown{AsksToDestroy(home + "A"), AsksToDestroy(home + "B")}));
  EXPECT_EQ(Saved(home + "A").size(), 1u);
  EXPECT_EQ(FilesOf("B"), Names());
}

TEST_F(DirectoryChooserTest, TheOpenDirectoryComesBackEmpty) {
  OpenCurrent();
  MakeFile(home + "CARNETEL.GRP");
  int closings = 0;
  session->OnClosing([&closings] { ++closings; });
  Answer(MessageButton::kOk);
  EXPECT_TRUE(Select(kDestroy, {"CARNETEL.DAN"}).confirmed);
  EXPECT_EQ(messages.TakeShown(), Shown{AsksToEmpty(DefaultPath())});
  EXPECT_EQ(closings, 1);
  EXPECT_TRUE(IsCurrentOpen(0));
  EXPECT_EQ(Saved().size(), 0u);
}

TEST_F(DirectoryChooserTest, ANoForTheOpenDirectoryKeepsItOpen) {
  OpenCurrent();
  int closings = 0;
  session->OnClosing([&closings] { ++closings; });
  Answer(MessageButton::kCancel);
  EXPECT_TRUE(Select(kDestroy, {"CARNETEL.DAN"}).confirmed);
  EXPECT_EQ(messages.TakeShown(), Shown{AsksToEmpty(DefaultPath())});
  EXPECT_EQ(closings, 0);
  EXPECT_TRUE(IsCurrentOpen(1));
}

TEST_F(DirectoryChooserTest, TheOpenDirectoryComesBackAfterTheLastName) {
  BuildOther(home + "A");
  BuildOther(home + "B");
  OpenCurrent();
  bool open_while_asked = true;
  messages.while_shown = [&] { open_while_asked = session->directory() != nullptr; };
  for (int i = 0; i < 3; ++i) Answer(MessageButton::kOk);
  EXPECT_TRUE(Select(kDestroy, {"A.DAN", "CARNETEL.DAN", "B.DAN"}).confirmed);
  EXPECT_FALSE(open_while_asked);
  EXPECT_EQ(messages.TakeShown(), (Shown{AsksToDestroy(home + "A"), AsksToEmpty(DefaultPath()),
                                         AsksToDestroy(home + "B")}));
  EXPECT_TRUE(IsCurrentOpen(0));
  EXPECT_EQ(FilesOf("B"), Names());
}

TEST_F(DirectoryChooserTest, TheOpenDirectoryIsKnownByItsFileWhateverItsCase) {
  Build({CardWith({{kSte1, "CURRENT"}})});
  memory.Rename(DefaultPath() + ".DAN", DefaultPath() + ".dan");
  StartSession();
  ASSERT_TRUE(session->OpenAtStart(&fell_back));
  Answer(MessageButton::kOk);
  EXPECT_TRUE(Select(kDestroy, {"CARNETEL.dan"}).confirmed);
  EXPECT_EQ(messages.TakeShown(), Shown{Question("Le fichier  carnetel courant: " + DefaultPath() +
                                                 ".dan \nva être vidé ")});
  EXPECT_TRUE(IsCurrentOpen(0));
}

TEST_F(DirectoryChooserTest, ACurrentDirectoryThatIsNotOpenIsOpenedAfterTheLastName) {
  BuildOther(home + "A");
  OpenCurrent();
  session->CloseDirectory();
  Answer(MessageButton::kOk);
  EXPECT_TRUE(Select(kDestroy, {"A.DAN"}, ChooserMode::kInvalidFile).confirmed);
  EXPECT_EQ(messages.TakeShown(), Shown{AsksToDestroy(home + "A")});
  EXPECT_TRUE(IsCurrentOpen(1));
}

TEST_F(DirectoryChooserTest, FilesThatCannotBeReadArePassedOverWithoutAWord) {
  BuildOther(home + "B");
  OpenCurrent();
  Answer(MessageButton::kOk);
  EXPECT_TRUE(Type(kDestroy, R"("missing" "B")").confirmed);
  EXPECT_EQ(messages.TakeShown(), Shown{AsksToDestroy(home + "B")});
  EXPECT_EQ(FilesOf("B"), Names());
}

TEST_F(DirectoryChooserTest, FilesThatAreNoDirectoriesCanBeDestroyed) {
  OpenCurrent();
  MakeFile(home + "B.DAN");
  Answer(MessageButton::kOk);
  EXPECT_TRUE(Select(kDestroy, {"B.DAN"}).confirmed);
  EXPECT_EQ(messages.TakeShown(), Shown{AsksToDestroy(home + "B")});
  EXPECT_FALSE(memory.Exists(home + "B.DAN"));
}

TEST_F(DirectoryChooserTest, AnotherFileOfTheFamilyNamesTheDirectory) {
  BuildOther(home + "A");
  BuildOther(home + "mes.fiches");
  OpenCurrent();
  Answer(MessageButton::kOk);
  Answer(MessageButton::kOk);
  EXPECT_TRUE(Type(kDestroy, R"("A.ADR" "mes.fiches")").confirmed);
  EXPECT_EQ(messages.TakeShown(),
            (Shown{AsksToDestroy(home + "A"), AsksToDestroy(home + "mes.fiches")}));
  EXPECT_EQ(FilesOf("A"), Names());
  EXPECT_EQ(FilesOf("mes"), Names());
}

TEST_F(DirectoryChooserTest, ADirectoryOfAnotherSeatIsPassedOverWithoutAWord) {
  BuildOther(home + "A");
  BuildOther(home + "B");
  SetOwner(home + "A", 7);
  SetOwner(home + "B", 3);
  OpenOnSeat(3);
  Answer(MessageButton::kOk);
  const std::string names = '"' + home + "A\" \"" + home + "B\"";
  EXPECT_TRUE(Type(kDestroy, names).confirmed);
  EXPECT_EQ(messages.TakeShown(), Shown{AsksToDestroy(home + "B")});
  EXPECT_TRUE(memory.Exists(home + "A.DAN"));
  EXPECT_FALSE(memory.Exists(home + "B.DAN"));
}

TEST_F(DirectoryChooserTest, ASeatLeavesTheSharedIndexesBehind) {
  BuildOther(home + "A");
  OpenOnSeat(3);
  MakeFile(home + "seat/A.ADR");
  MakeFile(home + "seat/A.CRT");
  Answer(MessageButton::kOk);
  EXPECT_TRUE(Type(kDestroy, home + "A").confirmed);
  messages.TakeShown();
  // What belongs to a program without seats is not this seat's to destroy.
  EXPECT_EQ(FilesOf("A"), (Names{"A.ADR", "A.CRT", "A.I01", "A.I02"}));
  EXPECT_FALSE(memory.Exists(home + "seat/A.ADR"));
  EXPECT_FALSE(memory.Exists(home + "seat/A.CRT"));
}

TEST_F(DirectoryChooserTest, DestroyingAPrivateDirectoryMakesNoOtherPrivate) {
  BuildOther(home + "A");
  SetOwner(home + "A", 3);
  OpenOnSeat(3);
  dialogs.file_picker = [this](FilePicker& picker) {
    picker.EnterFolder(home);
    picker.SelectFiles({"A.DAN"});
    EXPECT_TRUE(picker.private_checked());
    return picker.Accept() == PickerAnswer::kAccepted;
  };
  Answer(MessageButton::kOk);
  EXPECT_TRUE(
      ChooseDirectory(*session, dialogs, kDestroy, ChooserMode::kDirectories, true).confirmed);
  messages.TakeShown();
  EXPECT_FALSE(session->private_requested());
  EXPECT_EQ(OwnerOf(home + "seat/CARNETEL"), 0);
}

TEST_F(DirectoryChooserTest, AnEmptiedPrivateDirectoryComesBackPrivate) {
  OpenOnSeat(3);
  session->CloseDirectory();
  SetOwner(home + "seat/CARNETEL", 3);
  ASSERT_TRUE(session->OpenDirectoryChecked(session->CurrentMainFile(), false));
  Answer(MessageButton::kOk);
  EXPECT_TRUE(Select(kDestroy, {"CARNETEL.DAN"}).confirmed);
  messages.TakeShown();
  EXPECT_EQ(OwnerOf(home + "seat/CARNETEL"), 3);
}

TEST_F(DirectoryChooserTest, ADirectoryThatAnotherProgramHasOpenIsTold) {
  BuildOther(home + "A");
  BuildOther(home + "B");
  OpenCurrent();
  const auto elsewhere = DirectoryGuard::Take(home + "A.ADR", std::chrono::milliseconds(0));
  ASSERT_NE(elsewhere, nullptr);
  Answer(MessageButton::kOk);
  Answer(MessageButton::kOk);
  EXPECT_TRUE(Select(kDestroy, {"A.DAN", "B.DAN"}).confirmed);
  EXPECT_EQ(messages.TakeShown(), (Shown{AsksToDestroy(home + "A"),
                                         Error("Accès au fichier " + home + "A.DAN impossible"),
                                         AsksToDestroy(home + "B")}));
  EXPECT_EQ(Saved(home + "A").size(), 1u);
  EXPECT_EQ(FilesOf("B"), Names());
}

TEST_F(DirectoryChooserTest, AfterDestroyingOthersMayOpenTheName) {
  BuildOther(home + "A");
  OpenCurrent();
  Answer(MessageButton::kOk);
  EXPECT_TRUE(Select(kDestroy, {"A.DAN"}).confirmed);
  messages.TakeShown();
  EXPECT_NE(DirectoryGuard::Take(home + "A.ADR", std::chrono::milliseconds(0)), nullptr);
}

TEST_F(DirectoryChooserTest, FilesThatWillNotGoAreTold) {
  BuildOther(home + "A");
  OpenCurrent();
  Answer(MessageButton::kOk);
  files.StopAfter(0);
  EXPECT_TRUE(Select(kDestroy, {"A.DAN"}).confirmed);
  files.Heal();
  EXPECT_EQ(messages.TakeShown(), (Shown{AsksToDestroy(home + "A"),
                                         Error("Accès au fichier " + home + "A.DAN impossible")}));
  EXPECT_EQ(Saved(home + "A").size(), 1u);
}

}  // namespace
}  // namespace carnetel
