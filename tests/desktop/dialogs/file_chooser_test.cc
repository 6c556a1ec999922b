// The file dialog as its user meets it: real widgets over a real folder, worked on by mouse and by
// keys alone.
#include "desktop/dialogs/file_chooser.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <filesystem>
#include <functional>
#include <memory>
#include <stdexcept>

#include "base/string_table.h"
#include "desktop/controls/window_messages.h"
#include "platform/posix_file_system.h"
#include "shell/directory_chooser.h"
#include "tests/support/fresh_folder.h"

namespace carnetel::desktop {
namespace {

using Names = std::vector<std::string>;
using Numbers = std::vector<int>;

constexpr ChooserTemplate kForms[] = {ChooserTemplate::kOther, ChooserTemplate::kDestroy,
                                      ChooserTemplate::kCreate, ChooserTemplate::kOpen};

class FileChooserTest : public testing::Test {
 protected:
  FileChooserTest() { StartSession(0); }
  ~FileChooserTest() override { QApplication::setFont(usual_font_); }

  // Seat 0 is a program without seats.
  void StartSession(int32_t seat) {
    StartupRequest request;
    request.exchange_file_path = folder_.path() + "ECHANGE.DAT";
    request.workstation_number = seat;
    session_ = std::make_unique<Session>(
        SessionServices{files_, clock_, progress_, messages_, profile_}, request, folder_.path());
    session_->Start();
  }
  void MakeFile(const std::string& name, ByteView bytes = {}) {
    const auto file = files_.Open(folder_.path() + name, OpenMode::kCreateOrEmpty);
    ASSERT_NE(file, nullptr);
    ASSERT_TRUE(file->Write(0, bytes));
  }
  void MakeDirectoryFile(const std::string& name, std::string_view description,
                         uint16_t owner = 0) {
    MainHeader header = MainHeader::Template();
    header.set_description(OemText(std::string(description)));
    header.set_owner(owner);
    MakeFile(name, header.bytes());
  }
  void MakeFolder(const std::string& name) {
    ASSERT_TRUE(std::filesystem::create_directory(folder_.path() + name));
  }
  static FilePickerOptions OptionsOf(ChooserTemplate form) {
    FilePickerOptions options;
    options.form = form;
    options.filters = LoadText(form == ChooserTemplate::kOther ? 167 : 168);
    if (form != ChooserTemplate::kOther) options.default_extension = ".DAN";
    return options;
  }
  void Open(ChooserTemplate form) { Open(OptionsOf(form)); }
  void Open(FilePickerOptions options) {
    dialog_.reset();
    options.folder = folder_.path();
    options.environment = [this](const std::string& name) {
      return name == "HOME" ? folder_.path() : std::string();
    };
    picker_ = std::make_unique<FilePicker>(*session_, std::move(options));
    dialog_ = std::make_unique<FileChooserDialog>(*picker_, nullptr);
    help_ = std::make_unique<QSignalSpy>(dialog_.get(), &FileChooserDialog::helpWanted);
    finished_ = std::make_unique<QSignalSpy>(dialog_.get(), &QDialog::finished);
    dialog_->show();
    dialog_->activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(dialog_.get()));
  }

  template <class Widget = QWidget>
  Widget& Control(int id) {
    auto* control = dialog_->findChild<Widget*>(QString::number(id));
    if (control == nullptr) throw std::runtime_error("no control " + std::to_string(id));
    return *control;
  }
  bool Has(int id) { return dialog_->findChild<QWidget*>(QString::number(id)) != nullptr; }
  std::string Text(int id) {
    if (auto* edit = qobject_cast<QLineEdit*>(&Control(id))) return edit->text().toStdString();
    if (auto* combo = qobject_cast<QComboBox*>(&Control(id))) {
      return combo->currentText().toStdString();
    }
    return Control<QLabel>(id).text().toStdString();
  }
  QListWidget& Files() { return Control<QListWidget>(1120); }
  QListWidget& Folders() { return Control<QListWidget>(1121); }
  static Names RowsOf(const QListWidget& list) {
    Names rows;
    for (int i = 0; i < list.count(); ++i) rows.push_back(list.item(i)->text().toStdString());
    return rows;
  }
  bool BoxTicked() { return Control<QCheckBox>(225).isChecked(); }

  void Press(int id) {
    auto& button = Control<QPushButton>(id);
    ASSERT_TRUE(button.isEnabled() && button.isVisible()) << id;
    QTest::mouseClick(&button, Qt::LeftButton);
  }
  static QPoint PlaceOfRow(const QListWidget& list, const std::string& row) {
    const auto items = list.findItems(QString::fromStdString(row), Qt::MatchExactly);
    if (items.isEmpty()) throw std::runtime_error("no row " + row);
    return list.visualItemRect(items.front()).center();
  }
  static void Click(QListWidget& list, const std::string& row,
                    Qt::KeyboardModifiers keys = Qt::NoModifier) {
    QTest::mouseClick(list.viewport(), Qt::LeftButton, keys, PlaceOfRow(list, row));
  }
  static void DoubleClick(QListWidget& list, const std::string& row) {
    const QPoint place = PlaceOfRow(list, row);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, place);
    QTest::mouseDClick(list.viewport(), Qt::LeftButton, {}, place);
  }
  static void Key(Qt::Key key, Qt::KeyboardModifiers keys = Qt::NoModifier) {
    QTest::keyClick(QApplication::focusWidget(), key, keys);
  }
  static void Type(const QString& text) {
    for (const QChar letter : text) {
      QTest::sendKeyEvent(QTest::Click, QApplication::focusWidget(), Qt::Key_unknown, letter,
                          Qt::NoModifier);
    }
  }
  static int Focus() {
    const QWidget* focus = QApplication::focusWidget();
    return focus == nullptr ? 0 : focus->objectName().toInt();
  }
  // How the dialog ended; nothing while it is open.
  Numbers Ends() {
    Numbers ends;
    for (const auto& arguments : *finished_) ends.push_back(arguments.at(0).toInt());
    return ends;
  }
  Numbers HelpTopics() {
    Numbers topics;
    for (const auto& arguments : *help_) topics.push_back(arguments.at(0).toInt());
    return topics;
  }
  void ExpectAccepted(const Names& names) {
    Names paths;
    for (const std::string& name : names) paths.push_back(folder_.path() + name);
    EXPECT_EQ(Ends(), Numbers{QDialog::Accepted});
    EXPECT_EQ(picker_->Paths(), paths);
  }
  // What the message boxes said since the last call; each must be an error titled as one.
  Names TakeErrors() {
    Names texts;
    for (const auto& entry : script_.shown) {
      EXPECT_EQ(entry.style, MessageStyle::kError);
      EXPECT_EQ(entry.title_id, 79);
      texts.push_back(entry.text);
    }
    script_.shown.clear();
    return texts;
  }
  void UseLargeLetters() {
    QApplication::setFont(QFont(usual_font_.family(), usual_font_.pointSize() * 2));
  }

  const QFont usual_font_ = QApplication::font();
  FreshFolder folder_;
  PosixFileSystem files_;
  SystemClock clock_;
  SilentProgress progress_;
  MessageScript script_;
  WindowMessages messages_{&script_};
  UserProfile profile_{files_, {}};
  std::unique_ptr<Session> session_;
  std::unique_ptr<FilePicker> picker_;
  std::unique_ptr<FileChooserDialog> dialog_;
  std::unique_ptr<QSignalSpy> help_;
  std::unique_ptr<QSignalSpy> finished_;
};

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

// ---- the ends and the help ----

TEST_F(FileChooserTest, CancelEscapeAndTheCrossEndWithoutAChoice) {
  const std::function<void()> ways[] = {[this] { Press(2); }, [] { Key(Qt::Key_Escape); },
                                        [this] { dialog_->close(); }};
  for (const ChooserTemplate form : kForms) {
    for (const auto& way : ways) {
      Open(form);
      Type("X");
      way();
      EXPECT_EQ(Ends(), Numbers{QDialog::Rejected});
    }
  }
}

TEST_F(FileChooserTest, EscapeWorksFromEveryControl) {
  MakeFile("A.DAN");
  StartSession(3);
  for (const int id : {1152, 1120, 1121, 1136, 1137, 196, 225, 1, 2, 1038}) {
    Open(ChooserTemplate::kOpen);
    Control(id).setFocus();
    Key(Qt::Key_Escape);
    EXPECT_EQ(Ends(), Numbers{QDialog::Rejected}) << id;
  }
}

TEST_F(FileChooserTest, TheHelpIsThatOfTheForm) {
  const int topics[] = {40, 72, 49, 50};
  for (size_t i = 0; i < 4; ++i) {
    Open(kForms[i]);
    Press(1038);
    Key(Qt::Key_F1);
    Key(Qt::Key_A, Qt::AltModifier);
    EXPECT_TRUE(QTest::qWaitFor([this] { return help_->count() == 3; }));
    EXPECT_EQ(HelpTopics(), (Numbers{topics[i], topics[i], topics[i]}));
    EXPECT_EQ(Ends(), Numbers());
  }
}

TEST_F(FileChooserTest, TheHelpKeyWorksFromEveryControl) {
  MakeFile("A.DAN");
  StartSession(3);
  for (const int id : {1152, 1120, 1121, 1136, 1137, 196, 225, 1, 2, 1038}) {
    Open(ChooserTemplate::kOpen);
    Control(id).setFocus();
    Key(Qt::Key_F1);
    EXPECT_EQ(HelpTopics(), Numbers{50}) << id;
  }
}

TEST_F(FileChooserTest, EnterOnAButtonPressesIt) {
  Open(ChooserTemplate::kCreate);
  Type("X");
  Control(1038).setFocus();
  Key(Qt::Key_Return);
  EXPECT_EQ(HelpTopics(), Numbers{49});
  EXPECT_EQ(Ends(), Numbers());
  Control(2).setFocus();
  Key(Qt::Key_Return);
  EXPECT_EQ(Ends(), Numbers{QDialog::Rejected});
}

// ---- the walk through the dialog ----

class FileChooserWalk : public FileChooserTest {
 protected:
  void OpenWithLongNames(int32_t seat) {
    const std::string part = "Un nom de dossier beaucoup trop long pour une liste";
    MakeFolder(part);
    MakeFolder(part + "/" + part);
    MakeFile(part + "/" + part + "/Les clients de la région Provence-Alpes-Côte d'Azur, 1994.DAN");
    StartSession(seat);
    Open(ChooserTemplate::kOpen);
    picker_->EnterFolder(part + "/" + part);
    Type(".");
    Key(Qt::Key_Return);
  }
  static QRect TextPlace(QWidget& widget) {
    QStyleOptionButton option;
    option.initFrom(&widget);
    return widget.style()->subElementRect(QStyle::SE_PushButtonContents, &option, &widget);
  }
  // The line with the path leaves out its middle instead.
  static bool MayBeShortened(const QWidget& widget) {
    return widget.sizePolicy().horizontalPolicy() == QSizePolicy::Ignored;
  }
  void ExpectNothingClipped() {
    for (const QLabel* label : dialog_->findChildren<QLabel*>()) {
      EXPECT_GE(label->height(), label->fontMetrics().height()) << label->text().toStdString();
      if (MayBeShortened(*label)) continue;
      EXPECT_GE(label->width(), label->sizeHint().width()) << label->text().toStdString();
    }
    for (QPushButton* button : dialog_->findChildren<QPushButton*>()) {
      const int wanted = button->fontMetrics().horizontalAdvance(button->text().remove('&'));
      EXPECT_GE(TextPlace(*button).width(), wanted) << button->text().toStdString();
    }
    for (const QWidget* widget :
         dialog_->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
      const std::string name = widget->objectName().toStdString();
      EXPECT_TRUE(dialog_->rect().contains(widget->geometry())) << name;
      EXPECT_GE(widget->height(), widget->minimumSizeHint().height()) << name;
      if (MayBeShortened(*widget)) continue;
      EXPECT_GE(widget->width(), widget->minimumSizeHint().width()) << name;
    }
  }
  Numbers Walk() {
    Numbers stops;
    const int start = Focus();
    do {
      const QWidget* focus = QApplication::focusWidget();
      const QAccessibleInterface* spoken =
          QAccessible::queryAccessibleInterface(const_cast<QWidget*>(focus));
      EXPECT_FALSE(spoken->text(QAccessible::Name).isEmpty()) << Focus();
      stops.push_back(Focus());
      Key(Qt::Key_Tab);
    } while (Focus() != start && stops.size() < 30);
    return stops;
  }
};

TEST_F(FileChooserWalk, TabGoesThroughEveryControl) {
  StartSession(3);
  Open(ChooserTemplate::kOpen);
  EXPECT_EQ(Walk(), (Numbers{1152, 1120, 1121, 1136, 1137, 196, 225, 1, 2, 1038}));
  Open(ChooserTemplate::kCreate);
  EXPECT_EQ(Walk(), (Numbers{1152, 1121, 1136, 1137, 196, 225, 1, 2, 1038}));
  Open(ChooserTemplate::kOther);
  EXPECT_EQ(Walk(), (Numbers{1152, 1120, 1121, 1136, 1137, 1, 2, 1038}));
}

TEST_F(FileChooserWalk, NothingIsClipped) {
  OpenWithLongNames(3);
  ExpectNothingClipped();
  EXPECT_LE(dialog_->width(), 800);
  EXPECT_LE(dialog_->height(), 600);
}

TEST_F(FileChooserWalk, NothingIsClippedWithoutSeats) {
  OpenWithLongNames(0);
  ExpectNothingClipped();
}

TEST_F(FileChooserWalk, NothingIsClippedWithLettersTwiceAsLarge) {
  UseLargeLetters();
  OpenWithLongNames(3);
  ExpectNothingClipped();
}

TEST_F(FileChooserWalk, ItCanBeMadeLarger) {
  Open(ChooserTemplate::kOpen);
  const QSize list = Files().size();
  dialog_->resize(dialog_->size() + QSize(200, 100));
  QApplication::processEvents();
  EXPECT_GT(Files().width(), list.width());
  EXPECT_EQ(Files().height(), list.height() + 100);
}

// ---- as part of the whole ----

class DialogOfTest : public DialogHost {
 public:
  std::function<void(FileChooserDialog&)> user;

  bool RunFilePicker(FilePicker& picker) override {
    FileChooserDialog dialog(picker, nullptr);
    QTimer::singleShot(0, [this, &dialog] { user(dialog); });
    return dialog.exec() == QDialog::Accepted;
  }
  bool RunDescription(DescriptionForm& /*form*/) override { return false; }
  bool RunPreferences(PreferencesForm& /*form*/) override { return false; }
  InvalidFileEnd RunInvalidFile(InvalidFileForm& /*form*/) override {
    return InvalidFileEnd::kClosed;
  }
  void ShowAbout() override {}
  void ShowPatience(bool /*shown*/) override {}
  void ShowHelp(int /*topic*/) override {}
};

TEST_F(FileChooserTest, CreatesOpensAndDestroysByKeysAlone) {
  const auto choose = [this](ChooserTemplate form, const QString& typed) {
    DialogOfTest host;
    host.user = [&typed](FileChooserDialog& dialog) {
      auto* name = dialog.findChild<QWidget*>(QStringLiteral("1152"));
      QTest::keyClicks(name, typed);
      QTest::keyClick(name, Qt::Key_Return);
    };
    return ChooseDirectory(*session_, host, form, ChooserMode::kDirectories, true).confirmed;
  };
  EXPECT_TRUE(choose(ChooserTemplate::kCreate, "Amis"));
  EXPECT_EQ(session_->CurrentMainFile(), folder_.path() + "Amis.DAN");
  EXPECT_FALSE(choose(ChooserTemplate::kCreate, "amis"));
  EXPECT_EQ(TakeErrors(), Names{"Le fichier existe déjà"});
  EXPECT_TRUE(choose(ChooserTemplate::kCreate, "Bureau"));
  EXPECT_TRUE(choose(ChooserTemplate::kOpen, "amis"));
  EXPECT_EQ(session_->CurrentMainFile(), folder_.path() + "Amis.DAN");
  EXPECT_TRUE(choose(ChooserTemplate::kDestroy, "Bureau"));
  ASSERT_EQ(script_.shown.size(), 1u);
  EXPECT_EQ(script_.shown[0].text, "Le fichier  " + folder_.path() + "Bureau.DAN va être détruit ");
  EXPECT_FALSE(files_.Exists(folder_.path() + "Bureau.DAN"));
  session_->CloseDirectory();
  for (const char* stem : {"Amis", "Bureau"}) {
    std::filesystem::remove(DirectoryGuard::LockFilePath(folder_.path() + stem + ".ADR"));
  }
}

}  // namespace
}  // namespace carnetel::desktop
