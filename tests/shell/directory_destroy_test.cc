#include "tests/shell/directory_chooser_fixture.h"

namespace carnetel {
namespace {

using DirectoryDestroyTest = DirectoryChooserTest;

TEST_F(DirectoryDestroyTest, DestroysTheFamilyAfterOk) {
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

TEST_F(DirectoryDestroyTest, DestroysWithoutBeingAskedToActToo) {
  BuildOther(home + "A");
  OpenCurrent();
  Answer(MessageButton::kOk);
  EXPECT_TRUE(Type(kDestroy, "A", false).confirmed);
  EXPECT_FALSE(memory.Exists(home + "A.DAN"));
  messages.TakeShown();
}

TEST_F(DirectoryDestroyTest, CancelGoesOnWithTheNextName) {
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

TEST_F(DirectoryDestroyTest, TheOpenDirectoryComesBackEmpty) {
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

TEST_F(DirectoryDestroyTest, ANoForTheOpenDirectoryKeepsItOpen) {
  OpenCurrent();
  int closings = 0;
  session->OnClosing([&closings] { ++closings; });
  Answer(MessageButton::kCancel);
  EXPECT_TRUE(Select(kDestroy, {"CARNETEL.DAN"}).confirmed);
  EXPECT_EQ(messages.TakeShown(), Shown{AsksToEmpty(DefaultPath())});
  EXPECT_EQ(closings, 0);
  EXPECT_TRUE(IsCurrentOpen(1));
}

TEST_F(DirectoryDestroyTest, TheOpenDirectoryComesBackAfterTheLastName) {
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

TEST_F(DirectoryDestroyTest, TheOpenDirectoryIsKnownByItsFileWhateverItsCase) {
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

TEST_F(DirectoryDestroyTest, ACurrentDirectoryThatIsNotOpenIsOpenedAfterTheLastName) {
  BuildOther(home + "A");
  OpenCurrent();
  session->CloseDirectory();
  Answer(MessageButton::kOk);
  EXPECT_TRUE(Select(kDestroy, {"A.DAN"}, ChooserMode::kInvalidFile).confirmed);
  EXPECT_EQ(messages.TakeShown(), Shown{AsksToDestroy(home + "A")});
  EXPECT_TRUE(IsCurrentOpen(1));
}

TEST_F(DirectoryDestroyTest, FilesThatCannotBeReadArePassedOverWithoutAWord) {
  BuildOther(home + "B");
  OpenCurrent();
  Answer(MessageButton::kOk);
  EXPECT_TRUE(Type(kDestroy, R"("missing" "B")").confirmed);
  EXPECT_EQ(messages.TakeShown(), Shown{AsksToDestroy(home + "B")});
  EXPECT_EQ(FilesOf("B"), Names());
}

TEST_F(DirectoryDestroyTest, FilesThatAreNoDirectoriesCanBeDestroyed) {
  OpenCurrent();
  MakeFile(home + "B.DAN");
  Answer(MessageButton::kOk);
  EXPECT_TRUE(Select(kDestroy, {"B.DAN"}).confirmed);
  EXPECT_EQ(messages.TakeShown(), Shown{AsksToDestroy(home + "B")});
  EXPECT_FALSE(memory.Exists(home + "B.DAN"));
}

TEST_F(DirectoryDestroyTest, AnotherFileOfTheFamilyNamesTheDirectory) {
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

TEST_F(DirectoryDestroyTest, ADirectoryOfAnotherSeatIsPassedOverWithoutAWord) {
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

TEST_F(DirectoryDestroyTest, ASeatLeavesTheSharedIndexesBehind) {
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

TEST_F(DirectoryDestroyTest, DestroyingAPrivateDirectoryMakesNoOtherPrivate) {
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

TEST_F(DirectoryDestroyTest, AnEmptiedPrivateDirectoryComesBackPrivate) {
  OpenOnSeat(3);
  session->CloseDirectory();
  SetOwner(home + "seat/CARNETEL", 3);
  ASSERT_TRUE(session->OpenDirectoryChecked(session->CurrentMainFile(), false));
  Answer(MessageButton::kOk);
  EXPECT_TRUE(Select(kDestroy, {"CARNETEL.DAN"}).confirmed);
  messages.TakeShown();
  EXPECT_EQ(OwnerOf(home + "seat/CARNETEL"), 3);
}

TEST_F(DirectoryDestroyTest, ADirectoryThatAnotherProgramHasOpenIsTold) {
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

TEST_F(DirectoryDestroyTest, AfterDestroyingOthersMayOpenTheName) {
  BuildOther(home + "A");
  OpenCurrent();
  Answer(MessageButton::kOk);
  EXPECT_TRUE(Select(kDestroy, {"A.DAN"}).confirmed);
  messages.TakeShown();
  EXPECT_NE(DirectoryGuard::Take(home + "A.ADR", std::chrono::milliseconds(0)), nullptr);
}

TEST_F(DirectoryDestroyTest, FilesThatWillNotGoAreTold) {
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
