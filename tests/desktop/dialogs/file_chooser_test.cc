// The file dialog as its user meets it: lists, name line, folders, types, places and seats.
#include <algorithm>

#include "tests/desktop/dialogs/file_chooser_fixture.h"

namespace carnetel::desktop {
namespace {

// ---- what is there ----

TEST_F(FileChooserTest, EachFormHasItsNumberAndTitle) {
  const std::string titles[] = {"Choix de Fichier", "Choix de Fichiers Carnetel à Détruire",
                                "Création d'un nouvel carnetel", "Chargement d'un carnetel"};
  const int numbers[] = {108, 123, 125, 128};
  for (size_t i = 0; i < 4; ++i) {
    Open(kForms[i]);
    EXPECT_EQ(dialog_->windowTitle().toStdString(), titles[i]);
    EXPECT_EQ(dialog_->objectName().toInt(), numbers[i]);
    for (const int id : {1, 2, 1038, 1120, 1121, 1136, 1137, 1152}) EXPECT_TRUE(Has(id)) << id;
  }
}

TEST_F(FileChooserTest, OnlyTheListOfTheFormThatCreatesIsOff) {
  MakeFile("A.DAN");
  for (const ChooserTemplate form : kForms) {
    Open(form);
    EXPECT_EQ(Files().isEnabled(), form != ChooserTemplate::kCreate);
    EXPECT_TRUE(Folders().isEnabled());
    EXPECT_EQ(RowsOf(Files()), Names{"A.DAN"});
  }
}

TEST_F(FileChooserTest, WithoutSeatsThereIsNoBoxAndTheWindowIsShorter) {
  Open(ChooserTemplate::kOpen);
  for (const int id : {224, 196}) EXPECT_TRUE(Has(id)) << id;
  for (const int id : {225, 226, 2002}) EXPECT_FALSE(Has(id)) << id;
  const int height = dialog_->height();
  StartSession(3);
  Open(ChooserTemplate::kOpen);
  for (const int id : {224, 196, 225, 226, 2002}) EXPECT_TRUE(Has(id)) << id;
  EXPECT_LT(height, dialog_->height());
  Open(ChooserTemplate::kOther);
  for (const int id : {224, 196, 225, 226, 2002}) EXPECT_FALSE(Has(id)) << id;
}

TEST_F(FileChooserTest, FoldersAndTypesAreListed) {
  MakeFolder("Zone");
  MakeFolder("Écoles");
  MakeFile("notes.txt");
  Open(ChooserTemplate::kOther);
  EXPECT_EQ(RowsOf(Folders()), (Names{"..", "Écoles", "Zone"}));
  EXPECT_EQ(RowsOf(Files()), Names{"notes.txt"});
  EXPECT_EQ(Text(1136), "Fichier(*.*)");
  EXPECT_EQ(Control<QComboBox>(1136).count(), 5);
  EXPECT_GE(Control<QComboBox>(1137).count(), 2);
}

// ---- the list of files ----

TEST_F(FileChooserTest, ASelectedDirectoryFillsNameAndDescription) {
  MakeDirectoryFile("A.DAN", "Amis d'\x82t\x82");
  MakeDirectoryFile("B.DAN", "Bureau");
  Open(ChooserTemplate::kOpen);
  Click(Files(), "A.DAN");
  EXPECT_EQ(Text(1152), "A.DAN");
  EXPECT_EQ(Text(196), "Amis d'été");
  Key(Qt::Key_Down);
  EXPECT_EQ(Text(1152), "B.DAN");
  EXPECT_EQ(Text(196), "Bureau");
  EXPECT_EQ(Ends(), Numbers());
}

TEST_F(FileChooserTest, TheDescriptionIsOnlyRead) {
  MakeDirectoryFile("A.DAN", "Amis");
  Open(ChooserTemplate::kOpen);
  Click(Files(), "A.DAN");
  Control(196).setFocus();
  Type("autre");
  EXPECT_EQ(Text(196), "Amis");
}

TEST_F(FileChooserTest, ADoubleClickAndEnterInTheListAccept) {
  MakeDirectoryFile("A.DAN", "");
  MakeDirectoryFile("B.DAN", "");
  Open(ChooserTemplate::kOpen);
  DoubleClick(Files(), "B.DAN");
  ExpectAccepted({"B.DAN"});
  Open(ChooserTemplate::kOpen);
  Click(Files(), "A.DAN");
  Key(Qt::Key_Return);
  ExpectAccepted({"A.DAN"});
}

TEST_F(FileChooserTest, TheFormThatDestroysTakesSeveralByMouse) {
  for (const char* name : {"A.DAN", "B.DAN", "C D.DAN"}) MakeDirectoryFile(name, "");
  Open(ChooserTemplate::kDestroy);
  Click(Files(), "A.DAN");
  Click(Files(), "C D.DAN", Qt::ControlModifier);
  EXPECT_EQ(Text(1152), R"("A.DAN" "C D.DAN")");
  Click(Files(), "A.DAN", Qt::ControlModifier);
  EXPECT_EQ(Text(1152), "C D.DAN");
  Click(Files(), "A.DAN");
  Click(Files(), "C D.DAN", Qt::ShiftModifier);
  Press(1);
  ExpectAccepted({"A.DAN", "B.DAN", "C D.DAN"});
}

TEST_F(FileChooserTest, TheFormThatDestroysTakesSeveralByKeys) {
  for (const char* name : {"A.DAN", "B.DAN", "C.DAN"}) MakeDirectoryFile(name, "");
  Open(ChooserTemplate::kDestroy);
  Key(Qt::Key_F, Qt::AltModifier);
  EXPECT_EQ(Focus(), 1120);
  EXPECT_EQ(Text(1152), "A.DAN");
  Key(Qt::Key_Down, Qt::ShiftModifier);
  EXPECT_EQ(Text(1152), R"("A.DAN" "B.DAN")");
  Key(Qt::Key_Return);
  ExpectAccepted({"A.DAN", "B.DAN"});
}

TEST_F(FileChooserTest, OtherFormsTakeOne) {
  for (const char* name : {"A.DAN", "B.DAN"}) MakeDirectoryFile(name, "");
  for (const auto form : {ChooserTemplate::kOpen, ChooserTemplate::kOther}) {
    Open(form);
    Click(Files(), "A.DAN");
    Click(Files(), "B.DAN", Qt::ShiftModifier);
    EXPECT_EQ(Text(1152), "B.DAN");
  }
}

TEST_F(FileChooserTest, ANameThatIsNoUnicodeTextCanBeSelected) {
  MakeFile("\xE9t\xE9.DAN");
  Open(ChooserTemplate::kOpen);
  ASSERT_EQ(Files().count(), 1);
  Key(Qt::Key_F, Qt::AltModifier);
  Key(Qt::Key_Return);
  ExpectAccepted({"\xE9t\xE9.DAN"});
}

TEST_F(FileChooserTest, TypingTakesTheSelectionAway) {
  MakeDirectoryFile("A.DAN", "Amis");
  Open(ChooserTemplate::kOpen);
  Click(Files(), "A.DAN");
  Control(1152).setFocus();
  Type("x");
  EXPECT_TRUE(Files().selectedItems().isEmpty());
  EXPECT_EQ(Text(196), "");
  Click(Files(), "A.DAN");
  EXPECT_EQ(Text(1152), "A.DAN");
  EXPECT_EQ(Text(196), "Amis");
}

TEST_F(FileChooserTest, ComingToTheListKeepsATypedName) {
  MakeDirectoryFile("A.DAN", "Amis");
  Open(ChooserTemplate::kOpen);
  Type("x");
  Key(Qt::Key_Tab);
  EXPECT_EQ(Focus(), 1120);
  EXPECT_EQ(Text(1152), "x");
  EXPECT_TRUE(Files().selectedItems().isEmpty());
}

// ---- the name line ----

TEST_F(FileChooserTest, ATypedNameIsAcceptedByEnterAndByOk) {
  Open(ChooserTemplate::kCreate);
  EXPECT_EQ(Focus(), 1152);
  Type("Mes clients été");
  Key(Qt::Key_Return);
  ExpectAccepted({"Mes clients été.DAN"});
  Open(ChooserTemplate::kCreate);
  Type("B");
  Press(1);
  ExpectAccepted({"B.DAN"});
}

TEST_F(FileChooserTest, AnEmptyNameKeepsTheDialogOpen) {
  for (const ChooserTemplate form : kForms) {
    Open(form);
    Press(1);
    EXPECT_EQ(Ends(), Numbers());
    EXPECT_EQ(Focus(), 1152);
  }
  EXPECT_EQ(TakeErrors(), Names());
}

TEST_F(FileChooserTest, ATypedFolderIsEntered) {
  MakeFolder("Zone");
  MakeFile("Zone/Z.DAN");
  Open(ChooserTemplate::kOpen);
  Type("Zone");
  Key(Qt::Key_Return);
  EXPECT_EQ(Ends(), Numbers());
  EXPECT_EQ(RowsOf(Files()), Names{"Z.DAN"});
  EXPECT_EQ(Text(1152), "");
  Type("Z");
  Key(Qt::Key_Return);
  ExpectAccepted({"Zone/Z.DAN"});
}

TEST_F(FileChooserTest, ATypedPatternChoosesTheFiles) {
  for (const char* name : {"A.DAN", "B.DAN", "B.txt"}) MakeFile(name);
  Open(ChooserTemplate::kOpen);
  Type("b*");
  Key(Qt::Key_Return);
  EXPECT_EQ(Ends(), Numbers());
  EXPECT_EQ(RowsOf(Files()), (Names{"B.DAN", "B.txt"}));
  EXPECT_EQ(Text(1152), "b*");
}

TEST_F(FileChooserTest, AFolderThatIsNotThereIsToldAndTheNameStays) {
  Open(ChooserTemplate::kCreate);
  Type("/nulle/part/X");
  Key(Qt::Key_Return);
  EXPECT_EQ(TakeErrors(), Names{"Accès au fichier /nulle/part/X impossible"});
  EXPECT_EQ(Ends(), Numbers());
  EXPECT_EQ(Text(1152), "/nulle/part/X");
  EXPECT_EQ(Control<QLineEdit>(1152).selectedText().toStdString(), "/nulle/part/X");
  EXPECT_EQ(Focus(), 1152);
}

// ---- folders, types, places ----

TEST_F(FileChooserTest, ADoubleClickAndEnterGoIntoFolders) {
  MakeFolder("Zone");
  MakeFolder("Zone/Nord");
  MakeFile("Zone/Nord/N.DAN");
  Open(ChooserTemplate::kOpen);
  DoubleClick(Folders(), "Zone");
  EXPECT_EQ(RowsOf(Folders()), (Names{"..", "Nord"}));
  Key(Qt::Key_Down);
  Key(Qt::Key_Return);
  EXPECT_EQ(picker_->folder(), folder_.path() + "Zone/Nord");
  EXPECT_EQ(RowsOf(Files()), Names{"N.DAN"});
  EXPECT_EQ(Ends(), Numbers());
}

TEST_F(FileChooserTest, TheWholePathOfTheFolderIsTold) {
  MakeFolder("R & D");
  Open(ChooserTemplate::kOpen);
  DoubleClick(Folders(), "R & D");
  Names labels;
  for (const QLabel* label : dialog_->findChildren<QLabel*>()) {
    labels.push_back(label->text().toStdString());
  }
  EXPECT_EQ(std::ranges::count(labels, folder_.path() + "R & D"), 1);
}

TEST_F(FileChooserTest, GoingUpLeavesTheFolderMarked) {
  MakeFolder("Nord");
  MakeFolder("Zone.1");
  Open(ChooserTemplate::kOpen);
  DoubleClick(Folders(), "Zone.1");
  EXPECT_EQ(Folders().currentRow(), 0);
  Key(Qt::Key_Enter);
  EXPECT_EQ(Folders().currentItem()->text().toStdString(), "Zone.1");
  Key(Qt::Key_Enter);
  EXPECT_EQ(picker_->folder(), folder_.path() + "Zone.1");
}

TEST_F(FileChooserTest, AFolderThatIsGoneIsTold) {
  MakeFolder("Zone");
  Open(ChooserTemplate::kOpen);
  std::filesystem::remove(folder_.path() + "Zone");
  DoubleClick(Folders(), "Zone");
  EXPECT_EQ(TakeErrors(), Names{"Accès au fichier " + folder_.path() + "Zone impossible"});
  EXPECT_EQ(picker_->folder() + "/", folder_.path());
}

TEST_F(FileChooserTest, AnotherTypeShowsOtherFiles) {
  for (const char* name : {"A.DAN", "b.txt", "README"}) MakeFile(name);
  Open(ChooserTemplate::kOther);
  EXPECT_EQ(RowsOf(Files()), (Names{"A.DAN", "b.txt", "README"}));
  Click(Files(), "A.DAN");
  Key(Qt::Key_T, Qt::AltModifier);
  EXPECT_EQ(Focus(), 1136);
  Key(Qt::Key_Down);
  EXPECT_EQ(Text(1136), "Fichier Texte(*.txt)");
  EXPECT_EQ(RowsOf(Files()), Names{"b.txt"});
  EXPECT_EQ(Text(1152), "");
}

TEST_F(FileChooserTest, PlacesLeadToRootAndHome) {
  MakeFolder("Zone");
  Open(ChooserTemplate::kOpen);
  const std::string home = folder_.path().substr(0, folder_.path().size() - 1);
  EXPECT_EQ(Text(1137), home);
  DoubleClick(Folders(), "Zone");
  EXPECT_EQ(Text(1137), home);
  Key(Qt::Key_L, Qt::AltModifier);
  EXPECT_EQ(Focus(), 1137);
  Key(Qt::Key_Up);
  EXPECT_EQ(Text(1137), "/");
  EXPECT_EQ(picker_->folder(), "/");
  Key(Qt::Key_Down);
  EXPECT_EQ(picker_->folder(), home);
  EXPECT_EQ(RowsOf(Folders()), (Names{"..", "Zone"}));
}

TEST_F(FileChooserTest, APlaceThatIsGoneIsToldAndTheOldOneShownAgain) {
  MakeFolder("home");
  FilePickerOptions options = OptionsOf(ChooserTemplate::kOpen);
  Open(options);
  auto& places = Control<QComboBox>(1137);
  const std::string home = Text(1137);
  std::filesystem::remove_all(home);
  places.setCurrentIndex(0);
  Q_EMIT places.activated(1);
  EXPECT_EQ(TakeErrors(), Names{"Accès au fichier " + home + " impossible"});
  EXPECT_EQ(Text(1137), home);
}

// ---- seats ----

TEST_F(FileChooserTest, BoxAndLineFollowTheOwner) {
  MakeDirectoryFile("A.DAN", "", 7);
  MakeDirectoryFile("B.DAN", "");
  StartSession(3);
  Open(ChooserTemplate::kOpen);
  EXPECT_FALSE(BoxTicked());
  EXPECT_EQ(Text(226), "Carnetel Public");
  Click(Files(), "A.DAN");
  EXPECT_TRUE(BoxTicked());
  EXPECT_EQ(Text(226), "  (Poste N° 07)");
  EXPECT_TRUE(session_->private_requested());
  Click(Files(), "B.DAN");
  EXPECT_FALSE(BoxTicked());
  EXPECT_EQ(Text(226), "Carnetel Public");
  EXPECT_FALSE(session_->private_requested());
}

TEST_F(FileChooserTest, TickingTheBoxChangesTheLine) {
  StartSession(3);
  Open(ChooserTemplate::kCreate);
  Type("X");
  Key(Qt::Key_C, Qt::AltModifier);
  // The toolkit shows the press for a moment.
  EXPECT_TRUE(QTest::qWaitFor([this] { return BoxTicked(); }));
  EXPECT_EQ(Text(226), "  (Poste N° 03)");
  EXPECT_TRUE(session_->private_requested());
  Control(225).setFocus();
  Key(Qt::Key_Space);
  EXPECT_FALSE(BoxTicked());
  EXPECT_EQ(Text(226), "Carnetel Public");
  EXPECT_FALSE(session_->private_requested());
  EXPECT_EQ(Text(1152), "X");
}

}  // namespace
}  // namespace carnetel::desktop
