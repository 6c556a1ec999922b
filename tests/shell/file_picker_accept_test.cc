// What OK does with what was selected or typed.
#include "tests/shell/file_picker_fixture.h"

namespace carnetel {
namespace {

TEST_F(FilePickerTest, ASelectedNameIsTakenAsItIs) {
  MakeFile(folder + "/README");
  MakeFile(folder + "/~");
  FilePickerOptions options = Directories(ChooserTemplate::kOther);
  FilePicker picker = Open(options);
  picker.SelectFiles({"README"});
  EXPECT_EQ(picker.Accept(), PickerAnswer::kAccepted);
  EXPECT_EQ(picker.Paths(), Names{folder + "/README"});
  picker.SelectFiles({"~"});
  EXPECT_EQ(picker.Accept(), PickerAnswer::kAccepted);
  EXPECT_EQ(picker.Paths(), Names{folder + "/~"});
}

TEST_F(FilePickerTest, AnEmptyNameStays) {
  memory.MakeFolder(folder);
  for (const auto form : {ChooserTemplate::kCreate, ChooserTemplate::kOpen,
                          ChooserTemplate::kDestroy, ChooserTemplate::kOther}) {
    FilePicker picker = Open(form);
    EXPECT_EQ(picker.Accept(), PickerAnswer::kStays);
    EXPECT_EQ(Type(picker, "   "), PickerAnswer::kStays);
    EXPECT_EQ(picker.Paths(), Names());
  }
  EXPECT_EQ(messages.TakeShown(), Shown());
}

TEST_F(FilePickerTest, ANameWithoutExtensionGetsTheOfferedOne) {
  memory.MakeFolder(folder);
  FilePicker picker = Open(ChooserTemplate::kCreate);
  EXPECT_EQ(Type(picker, "CLIENTS"), PickerAnswer::kAccepted);
  EXPECT_EQ(picker.Paths(), Names{folder + "/CLIENTS.DAN"});
  EXPECT_EQ(Type(picker, "mes.fiches"), PickerAnswer::kAccepted);
  EXPECT_EQ(picker.Paths(), Names{folder + "/mes.fiches"});
  EXPECT_EQ(Type(picker, "  à garder  "), PickerAnswer::kAccepted);
  EXPECT_EQ(picker.Paths(), Names{folder + "/à garder.DAN"});
  FilePicker other = OpenAny();
  EXPECT_EQ(Type(other, "CLIENTS"), PickerAnswer::kAccepted);
  EXPECT_EQ(other.Paths(), Names{folder + "/CLIENTS"});
}

TEST_F(FilePickerTest, ATypedNameTakesTheCaseOfTheFileThatIsThere) {
  MakeFile(folder + "/Clients.dan");
  FilePicker picker = Open(ChooserTemplate::kOpen);
  EXPECT_EQ(Type(picker, "CLIENTS"), PickerAnswer::kAccepted);
  EXPECT_EQ(picker.Paths(), Names{folder + "/Clients.dan"});
}

TEST_F(FilePickerTest, PathsMayBeTypedInEveryForm) {
  MakeFile(folder + "/sub/B.DAN");
  memory.MakeFolder(home + "g");
  FilePicker picker = Open(ChooserTemplate::kOpen);
  EXPECT_EQ(Type(picker, "sub/B"), PickerAnswer::kAccepted);
  EXPECT_EQ(picker.Paths(), Names{folder + "/sub/B.DAN"});
  EXPECT_EQ(Type(picker, "../g/C.DAN"), PickerAnswer::kAccepted);
  EXPECT_EQ(picker.Paths(), Names{home + "g/C.DAN"});
  EXPECT_EQ(Type(picker, home + "g/C"), PickerAnswer::kAccepted);
  EXPECT_EQ(picker.Paths(), Names{home + "g/C.DAN"});
  EXPECT_EQ(Type(picker, "~/D"), PickerAnswer::kAccepted);
  EXPECT_EQ(picker.Paths(), Names{home + "D.DAN"});
  EXPECT_EQ(picker.folder(), folder);
}

TEST_F(FilePickerTest, ATypedFolderIsEntered) {
  MakeFile(folder + "/sub/B.DAN");
  FilePicker picker = Open(ChooserTemplate::kOpen);
  EXPECT_EQ(Type(picker, "sub"), PickerAnswer::kStays);
  EXPECT_EQ(picker.folder(), folder + "/sub");
  EXPECT_EQ(picker.name(), "");
  EXPECT_EQ(Type(picker, "../"), PickerAnswer::kStays);
  EXPECT_EQ(picker.folder(), folder);
  EXPECT_EQ(Type(picker, "~"), PickerAnswer::kStays);
  EXPECT_EQ(picker.folder() + "/", home);
  EXPECT_EQ(Type(picker, "/"), PickerAnswer::kStays);
  EXPECT_EQ(picker.folder(), "/");
}

TEST_F(FilePickerTest, ATypedPatternChoosesTheFilesListed) {
  for (const char* name : {"a1.DAN", "a2.DAN", "b1.DAN", "a1.txt", "sub/a3.DAN"}) {
    MakeFile(folder + "/" + name);
  }
  FilePicker picker = Open(ChooserTemplate::kOpen);
  EXPECT_EQ(Type(picker, "A?.*"), PickerAnswer::kStays);
  EXPECT_EQ(picker.Files(), (Names{"a1.DAN", "a1.txt", "a2.DAN"}));
  EXPECT_EQ(picker.name(), "A?.*");
  EXPECT_EQ(Type(picker, "sub/a*"), PickerAnswer::kStays);
  EXPECT_EQ(picker.folder(), folder + "/sub");
  EXPECT_EQ(picker.Files(), Names{"a3.DAN"});
  picker.EnterFolder("..");
  picker.SetFilter(0);
  EXPECT_EQ(picker.Files(), (Names{"a1.DAN", "a2.DAN", "b1.DAN"}));
}

TEST_F(FilePickerTest, AFileMayBeCalledAsAPattern) {
  MakeFile(folder + "/why?.DAN");
  FilePicker picker = Open(ChooserTemplate::kOpen);
  EXPECT_EQ(Type(picker, "why?.DAN"), PickerAnswer::kAccepted);
  EXPECT_EQ(picker.Paths(), Names{folder + "/why?.DAN"});
}

TEST_F(FilePickerTest, ANameInAFolderThatIsNotThereIsTold) {
  MakeFile(folder + "/A.DAN");
  FilePicker picker = Open(ChooserTemplate::kCreate);
  EXPECT_EQ(Type(picker, "gone/B"), PickerAnswer::kStays);
  EXPECT_EQ(messages.TakeShown(), NoAccess(folder + "/gone/B"));
  EXPECT_EQ(Type(picker, "gone/"), PickerAnswer::kStays);
  EXPECT_EQ(messages.TakeShown(), NoAccess(folder + "/gone"));
  EXPECT_EQ(Type(picker, "A.DAN/B"), PickerAnswer::kStays);
  EXPECT_EQ(messages.TakeShown(), NoAccess(folder + "/A.DAN/B"));
  EXPECT_EQ(picker.name(), "A.DAN/B");
  EXPECT_EQ(picker.folder(), folder);
}

TEST_F(FilePickerTest, WhetherAFileIsThereIsForOthersToJudge) {
  MakeFile(folder + "/A.DAN");
  FilePicker open = Open(ChooserTemplate::kOpen);
  EXPECT_EQ(Type(open, "missing"), PickerAnswer::kAccepted);
  FilePicker create = Open(ChooserTemplate::kCreate);
  EXPECT_EQ(Type(create, "A"), PickerAnswer::kAccepted);
  EXPECT_EQ(messages.TakeShown(), Shown());
}

TEST_F(FilePickerTest, SeveralNamesMayBeTypedWhereSeveralAreTaken) {
  memory.MakeFolder(folder);
  FilePicker picker = Open(ChooserTemplate::kDestroy);
  EXPECT_EQ(Type(picker, R"("A B" "C.DAN")"), PickerAnswer::kAccepted);
  EXPECT_EQ(picker.Paths(), (Names{folder + "/A B.DAN", folder + "/C.DAN"}));
  EXPECT_EQ(Type(picker, "A B"), PickerAnswer::kAccepted);
  EXPECT_EQ(picker.Paths(), Names{folder + "/A B.DAN"});
  FilePicker one = Open(ChooserTemplate::kOther);
  EXPECT_EQ(Type(one, R"("A" "B.DAN")"), PickerAnswer::kAccepted);
  EXPECT_EQ(one.Paths(), Names{folder + R"(/"A" "B.DAN")"});
}

TEST_F(FilePickerTest, ARefusedNameForgetsWhatWasAcceptedBefore) {
  memory.MakeFolder(folder);
  FilePicker picker = Open(ChooserTemplate::kOpen);
  EXPECT_EQ(Type(picker, "A"), PickerAnswer::kAccepted);
  EXPECT_EQ(Type(picker, "gone/B"), PickerAnswer::kStays);
  EXPECT_EQ(picker.Paths(), Names());
  messages.TakeShown();
}

}  // namespace
}  // namespace carnetel
