#include "shell/file_picker.h"

#include "base/string_table.h"
#include "tests/shell/window_fixture.h"

namespace carnetel {
namespace {

using Names = std::vector<std::string>;
using Shown = std::vector<QueuedMessages::Entry>;

class FilePickerTest : public WindowFixture {
 protected:
  FilePickerTest() { folder = home + "f"; }

  void MakeFile(const std::string& path, std::string_view text = "x") {
    memory.SetContents(path, AsBytes(text));
  }
  // The header of a main file and nothing behind it.
  void MakeDirectoryFile(const std::string& name, std::string_view description, uint16_t owner = 0,
                         uint32_t magic = kStoreMagic) {
    MainHeader header = MainHeader::Template();
    header.set_description(OemText(std::string(description)));
    header.set_owner(owner);
    StoreLe32(header.bytes(), MainHeader::kMagicOffset, magic);
    memory.SetContents(folder + "/" + name, header.bytes());
  }
  void StartOnSeat(int32_t seat) {
    StartupRequest request;
    request.exchange_file_path = home + "seat/ECHANGE.DAT";
    request.workstation_number = seat;
    StartSession(request);
  }
  static FilePickerOptions Directories(ChooserTemplate form) {
    FilePickerOptions options;
    options.form = form;
    options.filters = LoadText(168);
    options.default_extension = ".DAN";
    return options;
  }
  FilePicker Open(FilePickerOptions options) {
    if (session == nullptr) StartSession();
    if (options.folder.empty()) options.folder = folder;
    options.environment = [this](const std::string& name) { return name == "HOME" ? home : ""; };
    return {*session, std::move(options)};
  }
  FilePicker Open(ChooserTemplate form) { return Open(Directories(form)); }
  FilePicker OpenAny() {
    FilePickerOptions options;
    options.filters = LoadText(167);
    return Open(options);
  }
  // What OK answers for a typed name.
  static PickerAnswer Type(FilePicker& picker, const std::string& name) {
    picker.SetName(name);
    return picker.Accept();
  }
  static Shown NoAccess(const std::string& path) {
    return {{MessageStyle::kError, 79, "Accès au fichier " + path + " impossible"}};
  }

  std::string folder;
};

// ---- the four forms ----

TEST_F(FilePickerTest, EachFormHasItsTitle) {
  EXPECT_EQ(Open(ChooserTemplate::kCreate).title(), "Création d'un nouvel carnetel");
  EXPECT_EQ(Open(ChooserTemplate::kOpen).title(), "Chargement d'un carnetel");
  EXPECT_EQ(Open(ChooserTemplate::kDestroy).title(), "Choix de Fichiers Carnetel à Détruire");
  EXPECT_EQ(Open(ChooserTemplate::kOther).title(), "Choix de Fichier");
  FilePickerOptions options;
  options.title = "Choix du fichier source";
  EXPECT_EQ(Open(options).title(), "Choix du fichier source");
}

TEST_F(FilePickerTest, EachFormHasItsHelp) {
  EXPECT_EQ(Open(ChooserTemplate::kCreate).help_topic(), 49);
  EXPECT_EQ(Open(ChooserTemplate::kOpen).help_topic(), 50);
  EXPECT_EQ(Open(ChooserTemplate::kDestroy).help_topic(), 72);
  EXPECT_EQ(Open(ChooserTemplate::kOther).help_topic(), 40);
}

TEST_F(FilePickerTest, WithOtherFilesTheHelpIsTheGeneralOne) {
  FilePickerOptions options;
  options.default_extension = ".DBF";
  options.form = ChooserTemplate::kOpen;
  EXPECT_EQ(Open(options).help_topic(), 40);
  options.form = ChooserTemplate::kDestroy;
  EXPECT_EQ(Open(options).help_topic(), 40);
  options.form = ChooserTemplate::kCreate;
  EXPECT_EQ(Open(options).help_topic(), 49);
}

TEST_F(FilePickerTest, OnlyCreatingDisablesTheListAndOnlyDestroyingTakesSeveral) {
  EXPECT_FALSE(Open(ChooserTemplate::kCreate).list_enabled());
  EXPECT_FALSE(Open(ChooserTemplate::kCreate).multi_selection());
  for (const auto form :
       {ChooserTemplate::kOpen, ChooserTemplate::kDestroy, ChooserTemplate::kOther}) {
    EXPECT_TRUE(Open(form).list_enabled());
    EXPECT_EQ(Open(form).multi_selection(), form == ChooserTemplate::kDestroy);
  }
}

TEST_F(FilePickerTest, TheZoneBelongsToDirectoriesAndTheBoxToSeats) {
  const ChooserTemplate with_zone[] = {ChooserTemplate::kCreate, ChooserTemplate::kOpen,
                                       ChooserTemplate::kDestroy};
  for (const ChooserTemplate form : with_zone) {
    EXPECT_TRUE(Open(form).has_directory_zone());
    EXPECT_FALSE(Open(form).has_private_box());
  }
  EXPECT_FALSE(Open(ChooserTemplate::kOther).has_directory_zone());
  FilePickerOptions dbase;
  dbase.form = ChooserTemplate::kOpen;
  dbase.default_extension = ".DBF";
  EXPECT_FALSE(Open(dbase).has_directory_zone());
  StartOnSeat(3);
  for (const ChooserTemplate form : with_zone) EXPECT_TRUE(Open(form).has_private_box());
  EXPECT_FALSE(Open(ChooserTemplate::kOther).has_private_box());
  EXPECT_FALSE(Open(dbase).has_private_box());
}

// ---- lists ----

TEST_F(FilePickerTest, ListsTheFilesThatFitWhateverTheirCase) {
  for (const char* name : {"Zoé.DAN", "été.dan", "abbé.Dan", ".caché.DAN", "x.txt", "DAN"}) {
    MakeFile(folder + "/" + name);
  }
  memory.MakeFolder(folder + "/folder.DAN");
  EXPECT_EQ(Open(ChooserTemplate::kOpen).Files(), (Names{"abbé.Dan", "été.dan", "Zoé.DAN"}));
}

TEST_F(FilePickerTest, ListsFoldersBehindTheWayUp) {
  for (const char* name : {"Zone", "Écoles", "ateliers", ".git"}) {
    memory.MakeFolder(folder + "/" + name);
  }
  FilePicker picker = Open(ChooserTemplate::kOpen);
  EXPECT_EQ(picker.Folders(), (Names{"..", "ateliers", "Écoles", "Zone"}));
  picker.EnterFolder("/");
  EXPECT_EQ(picker.folder(), "/");
  EXPECT_EQ(picker.Folders().front(), "home");
}

TEST_F(FilePickerTest, AnotherTypeListsOtherFiles) {
  for (const char* name : {"a.txt", "b.TXT", "c.dbf", "README"}) {
    MakeFile(folder + "/" + name);
  }
  FilePicker picker = OpenAny();
  EXPECT_EQ(picker.Files(), (Names{"a.txt", "b.TXT", "c.dbf", "README"}));
  picker.SetFilter(1);
  EXPECT_EQ(picker.filter(), 1u);
  EXPECT_EQ(picker.Files(), (Names{"a.txt", "b.TXT"}));
  picker.SetFilter(99);
  EXPECT_EQ(picker.filter(), 1u);
}

TEST_F(FilePickerTest, WithoutFiltersEverythingIsListed) {
  MakeFile(folder + "/a.txt");
  MakeFile(folder + "/README");
  EXPECT_EQ(Open(FilePickerOptions()).Files(), (Names{"a.txt", "README"}));
}

TEST_F(FilePickerTest, BeginsInTheNearestFolderThatIsThere) {
  FilePickerOptions options = Directories(ChooserTemplate::kOpen);
  options.folder = home + "gone/deeper/";
  EXPECT_EQ(Open(options).folder() + "/", home);
}

// ---- folders ----

TEST_F(FilePickerTest, GoesIntoFoldersAndUpAgain) {
  MakeFile(folder + "/sub/B.DAN");
  FilePicker picker = Open(ChooserTemplate::kOpen);
  picker.EnterFolder("sub");
  EXPECT_EQ(picker.folder(), folder + "/sub");
  EXPECT_EQ(picker.Files(), Names{"B.DAN"});
  picker.EnterFolder("..");
  EXPECT_EQ(picker.folder(), folder);
  picker.EnterFolder(folder + "/sub");
  EXPECT_EQ(picker.folder(), folder + "/sub");
}

TEST_F(FilePickerTest, AFolderOfTheListMayBeCalledAsTheHome) {
  memory.MakeFolder(folder + "/~");
  FilePicker picker = Open(ChooserTemplate::kOpen);
  picker.EnterFolder("~");
  EXPECT_EQ(picker.folder(), folder + "/~");
}

TEST_F(FilePickerTest, AFolderThatIsGoneIsToldAndNothingMoves) {
  memory.MakeFolder(folder);
  FilePicker picker = Open(ChooserTemplate::kOpen);
  picker.EnterFolder("/media/gone");
  EXPECT_EQ(messages.TakeShown(), NoAccess("/media/gone"));
  EXPECT_EQ(picker.folder(), folder);
}

TEST_F(FilePickerTest, ATypedNameStaysWhenAFolderIsEntered) {
  memory.MakeFolder(folder + "/sub");
  FilePicker picker = Open(ChooserTemplate::kCreate);
  picker.SetName("CLIENTS");
  picker.EnterFolder("sub");
  EXPECT_EQ(picker.name(), "CLIENTS");
  EXPECT_EQ(picker.Accept(), PickerAnswer::kAccepted);
  EXPECT_EQ(picker.Paths(), Names{folder + "/sub/CLIENTS.DAN"});
}

TEST_F(FilePickerTest, ASelectionGoesWhenAFolderIsEntered) {
  MakeDirectoryFile("A.DAN", "Amis");
  memory.MakeFolder(folder + "/sub");
  FilePicker picker = Open(ChooserTemplate::kOpen);
  picker.SelectFiles({"A.DAN"});
  picker.EnterFolder("sub");
  EXPECT_EQ(picker.name(), "");
  EXPECT_EQ(picker.description(), "");
  EXPECT_EQ(picker.Accept(), PickerAnswer::kStays);
}

TEST_F(FilePickerTest, PlacesAreRootHomeAndVolumes) {
  memory.MakeFolder("/media/CLE/fiches");
  FilePicker picker = Open(ChooserTemplate::kOpen);
  const Names places = picker.Places({{"/", "/dev/sda1"},
                                      {"/boot", "/dev/sda2"},
                                      {"/media/CLE", "/dev/sdb1"},
                                      {"/media/GONE", "/dev/sdc1"},
                                      {home, "/dev/sda3"}});
  const std::string own = home.substr(0, home.size() - 1);
  EXPECT_EQ(places, (Names{"/", own, "/media/CLE"}));
  EXPECT_EQ(picker.PlaceOf(places), 1u);
  memory.MakeFolder(home + "deep/er");
  picker.EnterFolder(home + "deep/er");
  EXPECT_EQ(picker.PlaceOf(places), 1u);
  picker.EnterFolder("/media/CLE/fiches");
  EXPECT_EQ(picker.PlaceOf(places), 2u);
  picker.EnterFolder("/media");
  EXPECT_EQ(picker.PlaceOf(places), 0u);
}

// ---- the selection and what it shows ----

TEST_F(FilePickerTest, ASelectedDirectoryShowsItsDescription) {
  MakeDirectoryFile("A.DAN", "Amis d'\x82t\x82");
  FilePicker picker = Open(ChooserTemplate::kOpen);
  picker.SelectFiles({"A.DAN"});
  EXPECT_EQ(picker.name(), "A.DAN");
  EXPECT_EQ(picker.description(), "Amis d'été");
}

TEST_F(FilePickerTest, AnotherMagicHasNoDescription) {
  MakeDirectoryFile("A.DAN", "Amis", 0, kStoreMagic + 1);
  MakeFile(folder + "/B.DAN", "too short for a magic, long enough for a description");
  FilePicker picker = Open(ChooserTemplate::kOpen);
  picker.SelectFiles({"A.DAN"});
  EXPECT_EQ(picker.description(), "");
  picker.SelectFiles({"B.DAN"});
  EXPECT_EQ(picker.description(), "");
}

TEST_F(FilePickerTest, FilesOfOtherExtensionsShowNothing) {
  MakeDirectoryFile("A.DAN", "Amis", 7);
  MakeDirectoryFile("A.ADR", "Other", 7);
  StartOnSeat(3);
  FilePicker picker = Open(ChooserTemplate::kOpen);
  picker.SelectFiles({"A.DAN"});
  EXPECT_EQ(picker.description(), "Amis");
  picker.SelectFiles({"A.ADR"});
  EXPECT_EQ(picker.description(), "");
  EXPECT_EQ(picker.owner_line(), "Carnetel Public");
}

TEST_F(FilePickerTest, TheOwnerLineNamesTheSeat) {
  MakeDirectoryFile("A.DAN", "", 7);
  MakeDirectoryFile("B.DAN", "");
  StartOnSeat(3);
  FilePicker picker = Open(ChooserTemplate::kOpen);
  EXPECT_EQ(picker.owner_line(), "Carnetel Public");
  picker.SelectFiles({"A.DAN"});
  EXPECT_EQ(picker.owner_line(), "  (Poste N° 07)");
  picker.SelectFiles({"B.DAN"});
  EXPECT_EQ(picker.owner_line(), "Carnetel Public");
}

TEST_F(FilePickerTest, TheOwnerCountsWhateverTheMagic) {
  MakeDirectoryFile("A.DAN", "", 7, 1);
  StartOnSeat(3);
  FilePicker picker = Open(ChooserTemplate::kOpen);
  picker.SelectFiles({"A.DAN"});
  EXPECT_EQ(picker.owner_line(), "  (Poste N° 07)");
}

TEST_F(FilePickerTest, TheBoxFollowsTheOwnerAndIsTheWishForAPrivateDirectory) {
  MakeDirectoryFile("A.DAN", "", 7);
  MakeDirectoryFile("B.DAN", "");
  StartOnSeat(3);
  FilePicker picker = Open(ChooserTemplate::kOpen);
  picker.SelectFiles({"A.DAN"});
  EXPECT_TRUE(picker.private_checked());
  EXPECT_TRUE(session->private_requested());
  picker.SelectFiles({"B.DAN"});
  EXPECT_FALSE(picker.private_checked());
  EXPECT_FALSE(session->private_requested());
}

TEST_F(FilePickerTest, TickingTheBoxIsTheWishAndChangesTheLine) {
  MakeDirectoryFile("A.DAN", "", 7);
  StartOnSeat(3);
  FilePicker picker = Open(ChooserTemplate::kCreate);
  picker.SetPrivate(true);
  EXPECT_TRUE(session->private_requested());
  EXPECT_EQ(picker.owner_line(), "  (Poste N° 03)");
  picker.SetName("typing leaves it");
  EXPECT_TRUE(picker.private_checked());
  picker.SetPrivate(false);
  EXPECT_FALSE(session->private_requested());
  EXPECT_EQ(picker.owner_line(), "Carnetel Public");
}

TEST_F(FilePickerTest, WithoutABoxThereIsNoWish) {
  MakeDirectoryFile("A.DAN", "", 7);
  FilePicker picker = Open(ChooserTemplate::kOpen);
  picker.SelectFiles({"A.DAN"});
  EXPECT_FALSE(session->private_requested());
  picker.SetPrivate(true);
  EXPECT_FALSE(session->private_requested());
}

TEST_F(FilePickerTest, OpeningTakesAnEarlierWishBack) {
  StartSession();
  session->set_private_requested(true);
  Open(ChooserTemplate::kOther);
  EXPECT_FALSE(session->private_requested());
}

TEST_F(FilePickerTest, TypingDropsTheSelectionWithAllItShowed) {
  MakeDirectoryFile("A.DAN", "Amis", 7);
  StartOnSeat(3);
  FilePicker picker = Open(ChooserTemplate::kOpen);
  picker.SelectFiles({"A.DAN"});
  picker.SetName("B.DAN");
  EXPECT_EQ(picker.selection(), Names());
  EXPECT_EQ(picker.name(), "B.DAN");
  EXPECT_EQ(picker.description(), "");
  EXPECT_EQ(picker.owner_line(), "Carnetel Public");
  EXPECT_FALSE(picker.private_checked());
}

TEST_F(FilePickerTest, AnotherTypeDropsTheSelection) {
  MakeFile(folder + "/a.txt");
  FilePicker picker = OpenAny();
  picker.SelectFiles({"a.txt"});
  picker.SetFilter(4);
  EXPECT_EQ(picker.name(), "");
  EXPECT_EQ(picker.Accept(), PickerAnswer::kStays);
}

TEST_F(FilePickerTest, SeveralNamesAreQuotedAndShowNoDescription) {
  MakeDirectoryFile("A.DAN", "Amis", 3);
  MakeDirectoryFile("B C.DAN", "Bureau", 3);
  StartOnSeat(3);
  FilePicker picker = Open(ChooserTemplate::kDestroy);
  picker.SelectFiles({"A.DAN"});
  EXPECT_TRUE(picker.private_checked());
  picker.SelectFiles({"A.DAN", "B C.DAN"});
  EXPECT_EQ(picker.name(), R"("A.DAN" "B C.DAN")");
  EXPECT_EQ(picker.description(), "");
  EXPECT_FALSE(picker.private_checked());
  EXPECT_EQ(picker.Accept(), PickerAnswer::kAccepted);
  EXPECT_EQ(picker.Paths(), (Names{folder + "/A.DAN", folder + "/B C.DAN"}));
}

TEST_F(FilePickerTest, UnselectingEmptiesTheNameButNotATypedOne) {
  MakeDirectoryFile("A.DAN", "Amis");
  FilePicker picker = Open(ChooserTemplate::kDestroy);
  picker.SelectFiles({"A.DAN"});
  picker.SelectFiles({});
  EXPECT_EQ(picker.name(), "");
  picker.SetName("typed");
  picker.SelectFiles({});
  EXPECT_EQ(picker.name(), "typed");
}

TEST_F(FilePickerTest, NothingCanBeSelectedWhereADirectoryIsCreated) {
  MakeDirectoryFile("A.DAN", "Amis");
  FilePicker picker = Open(ChooserTemplate::kCreate);
  picker.SelectFiles({"A.DAN"});
  EXPECT_EQ(picker.name(), "");
  EXPECT_EQ(picker.description(), "");
}

// ---- OK ----

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
