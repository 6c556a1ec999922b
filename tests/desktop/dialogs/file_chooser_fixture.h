// The file dialog with real widgets over a real folder, for one test, which works on it by mouse
// and by keys.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <filesystem>
#include <memory>
#include <stdexcept>

#include "base/string_table.h"
#include "desktop/controls/window_messages.h"
#include "desktop/dialogs/file_chooser.h"
#include "platform/posix_file_system.h"
#include "tests/support/fresh_folder.h"

namespace carnetel::desktop {

class FileChooserTest : public testing::Test {
 protected:
  using Names = std::vector<std::string>;
  using Numbers = std::vector<int>;
  static constexpr ChooserTemplate kForms[] = {ChooserTemplate::kOther, ChooserTemplate::kDestroy,
                                               ChooserTemplate::kCreate, ChooserTemplate::kOpen};

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

}  // namespace carnetel::desktop
