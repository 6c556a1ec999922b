#include "tests/shell/file_picker_fixture.h"

namespace carnetel {
namespace {

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

}  // namespace
}  // namespace carnetel
