#include "tests/desktop/window/window_fixture.h"

#include <QApplication>
#include <QDragEnterEvent>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QPushButton>
#include <QUrl>
#include <filesystem>

#include "storage/card_dispatch.h"
#include "storage/family_check.h"

namespace carnetel::desktop {

CardRecord CardWith(std::initializer_list<std::pair<int, std::string_view>> fields) {
  CardRecord card;
  for (const auto& [field, text] : fields) card.SetField(field, OemText(std::string(text)));
  return card;
}

void StoppedProgress::Open(ProgressForm form, uint32_t total) {
  steps.clear();
  box_.Open(form, total);
}

bool StoppedProgress::Step(std::string_view text) {
  steps.emplace_back(text);
  if (static_cast<int>(steps.size()) == stop_at) {
    QTest::mouseClick(box_.Box()->findChild<QPushButton*>(QStringLiteral("2")), Qt::LeftButton);
  }
  return box_.Step(text);
}

WindowTest::WindowTest() {
  const auto* test = ::testing::UnitTest::GetInstance()->current_test_info();
  home = std::string("/window/") + test->test_suite_name() + "." + test->name() + "/";
  files.MakeFolder("/window/");
  files.MakeFolder(home);
}

WindowTest::~WindowTest() {
  window.reset();
  session.reset();
  RemoveLockFiles();
}

// The guards of open directories are real files, even when the directories are not.
void WindowTest::RemoveLockFiles() {
  for (const std::string& name : files.List(home)) {
    const std::string stem = home + name.substr(0, name.rfind('.'));
    for (const char* extension : {".ADR", ".adr"}) {
      std::error_code ignored;
      std::filesystem::remove(DirectoryGuard::LockFilePath(stem + extension), ignored);
    }
  }
}

void WindowTest::Build(const std::string& stem, const std::vector<CardRecord>& cards) {
  DirectoryOptions options;
  options.path = stem;
  SilentProgress silent;
  Directory directory({files, clock, silent}, options);
  ASSERT_GE(static_cast<int>(directory.OpenDirectory()), 0);
  for (const CardRecord& card : cards) {
    directory.context().current = card;
    uint32_t position = 0;
    ASSERT_EQ(CardDispatch(directory).Add(false, &position), 0);
  }
  directory.CloseDirectory();
}

void WindowTest::BuildCompanies(int count) {
  constexpr const char* kCompanies[] = {"ALPHA",  "BETA",  "BRAVO", "CHARLIE", "DELTA",
                                        "MARTIN", "MERLE", "NOIR",  "ZORRO"};
  std::vector<CardRecord> cards;
  for (int i = 0; i < count; ++i) {
    cards.push_back(
        CardWith({{kSte1, kCompanies[i]}, {kTel1, "01 00 00 00 0" + std::to_string(i)}}));
  }
  Build(cards);
}

void WindowTest::Start(const StartupRequest& request, int capacity) {
  session = std::make_unique<Session>(
      SessionServices{disk, clock, progress, *boxes, profile, program_starter}, request, home);
  session->Start();
  bool fell_back = false;
  ASSERT_EQ(session->OpenAtStart(&fell_back), opens);
  window = std::make_unique<MainWindow>(*session, busy, capacity);
  QObject::connect(window.get(), &MainWindow::ended, [this] { ++ended; });
  window->Start();
  window->show();
  window->activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(window.get()));
  Settle();
}

void WindowTest::ExitSession() {
  EXPECT_EQ(ended, 1);
  session->Exit();
  window.reset();
  session.reset();
}

void WindowTest::Reactivate() {
  TestedWindow().activateWindow();
  ASSERT_TRUE(QTest::qWaitForWindowActive(&TestedWindow()));
  Settle();
}

void WindowTest::Settle() {
  for (int i = 0; i < 3; ++i) {
    QCoreApplication::sendPostedEvents();
    QCoreApplication::processEvents();
  }
}

QWidget* WindowTest::Control(int id) {
  auto* widget = TestedWindow().findChild<QWidget*>(QString::number(id));
  if (widget == nullptr) qFatal("no control %d", id);
  return widget;
}

BubbleButton* WindowTest::Button(int id) {
  return dynamic_cast<BubbleButton*>(Control(id));
}

CardListView* WindowTest::List() {
  return dynamic_cast<CardListView*>(Control(kControlList));
}

QString WindowTest::Text(int id) {
  QWidget* control = Control(id);
  if (auto* edit = qobject_cast<QLineEdit*>(control)) return edit->text();
  if (auto* label = qobject_cast<QLabel*>(control)) return label->text();
  if (auto* combo = qobject_cast<QComboBox*>(control)) return combo->currentText();
  if (auto* notes = qobject_cast<FilteredNotesEdit*>(control)) return notes->Text();
  ADD_FAILURE() << id << " shows no text";
  return {};
}

void WindowTest::Choose(int command) {
  for (QAction* title : TestedWindow().menuBar()->actions()) {
    for (QAction* action : title->menu()->actions()) {
      if (action->objectName() != QString::number(command)) continue;
      Q_EMIT title->menu()->aboutToShow();
      ASSERT_TRUE(action->isEnabled()) << command << " is grey";
      Q_EMIT title->menu()->aboutToHide();
      action->trigger();
      Settle();
      return;
    }
  }
  FAIL() << "no menu item " << command;
}

void WindowTest::ChooseByKeys(Qt::Key menu, Qt::Key item) {
  QTest::keyClick(&TestedWindow(), menu, Qt::AltModifier);
  Settle();
  QWidget* opened = QApplication::activePopupWidget();
  ASSERT_NE(opened, nullptr);
  QTest::keyClick(opened, item);
  Settle();
}

std::vector<int> WindowTest::GreyItems() {
  std::vector<int> grey;
  for (QAction* title : TestedWindow().menuBar()->actions()) {
    Q_EMIT title->menu()->aboutToShow();
    for (QAction* action : title->menu()->actions()) {
      if (!action->isSeparator() && !action->isEnabled()) {
        grey.push_back(action->objectName().toInt());
      }
    }
    Q_EMIT title->menu()->aboutToHide();
  }
  std::ranges::sort(grey);
  return grey;
}

bool WindowTest::Drop(const std::vector<std::string>& paths) {
  QMimeData data;
  QList<QUrl> urls;
  for (const std::string& path : paths) {
    urls.append(QUrl::fromLocalFile(QString::fromStdString(path)));
  }
  data.setUrls(urls);
  QDragEnterEvent enter(QPoint(9, 9), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&TestedWindow(), &enter);
  QDropEvent drop(QPointF(9, 9), Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
  QApplication::sendEvent(&TestedWindow(), &drop);
  Settle();
  return enter.isAccepted() && drop.isAccepted();
}

std::vector<std::string> WindowTest::RecentTexts() {
  std::vector<std::string> texts;
  for (int id = kCommandRecent1; id <= kCommandRecent4; ++id) {
    const auto* action = TestedWindow().findChild<QAction*>(QString::number(id));
    if (action != nullptr) texts.push_back(action->data().toString().toStdString());
  }
  return texts;
}

void WindowTest::Press(int button) {
  ASSERT_TRUE(Button(button)->isVisible()) << button << " is hidden";
  ASSERT_TRUE(Button(button)->IsActive()) << button << " is off";
  Click(Button(button));
}

void WindowTest::Click(QWidget* widget) {
  ASSERT_TRUE(widget->isVisible()) << widget->objectName().toStdString();
  QTest::mouseClick(widget, Qt::LeftButton);
  Settle();
}

void WindowTest::ClickRow(int row, Qt::KeyboardModifiers keys) {
  const QPoint place = List()->RowRect(row).center();
  // The press gives the focus, as the window system does it.
  if (QApplication::focusWidget() != List()) List()->setFocus(Qt::MouseFocusReason);
  QTest::mouseClick(List()->viewport(), Qt::LeftButton, keys, place);
  Settle();
}

void WindowTest::Key(Qt::Key key, Qt::KeyboardModifiers keys) {
  QWidget* focus = QApplication::focusWidget();
  ASSERT_NE(focus, nullptr);
  QTest::keyClick(focus, key, keys);
  Settle();
}

void WindowTest::Type(const QString& text) {
  for (const QChar character : text) {
    QWidget* focus = QApplication::focusWidget();
    ASSERT_NE(focus, nullptr);
    QTest::sendKeyEvent(QTest::Click, focus, Qt::Key_unknown, QString(character), Qt::NoModifier);
  }
  Settle();
}

void WindowTest::TypeInto(int control, const QString& text) {
  QWidget* widget = Control(control);
  if (auto* combo = qobject_cast<QComboBox*>(widget)) widget = combo->lineEdit();
  widget->setFocus(Qt::MouseFocusReason);
  QTest::keyClick(widget, Qt::Key_A, Qt::ControlModifier);
  Type(text);
}

int WindowTest::Focus() {
  for (QWidget* at = QApplication::focusWidget(); at != nullptr; at = at->parentWidget()) {
    if (const int id = at->objectName().toInt()) return id;
  }
  return 0;
}

std::vector<std::string> WindowTest::Asked() {
  std::vector<std::string> texts;
  for (; asked_ < script.shown.size(); ++asked_) texts.push_back(script.shown[asked_].text);
  return texts;
}

std::vector<WindowTest::SavedCard> WindowTest::Saved(int key_field) {
  MemoryFileSystem copy = files.Snapshot();
  SilentProgress silent;
  const FamilyPaths paths(copy, DefaultPath());
  for (const Finding& finding : CheckFamily(copy, paths, key_field)) {
    // An open directory keeps this count to itself until it is closed.
    const bool open = session != nullptr && session->directory() != nullptr;
    if (open && finding.text.find("compteur de la sélection") != std::string::npos) continue;
    ADD_FAILURE() << finding.file << ": " << finding.text;
  }
  DirectoryOptions options;
  options.path = DefaultPath();
  options.key_field = key_field;
  options.may_create = false;
  Directory directory({copy, clock, silent}, options);
  std::vector<SavedCard> cards;
  if (directory.OpenDirectory() != OpenResult::kOpened) {
    ADD_FAILURE() << "the directory cannot be opened";
    return cards;
  }
  for (uint32_t row = 0; row < directory.address().entry_count(); ++row) {
    SavedCard saved;
    saved.entry = directory.address().Entry(row);
    EXPECT_TRUE(directory.main().ReadCard(saved.entry.card_offset(), saved.card));
    cards.push_back(saved);
  }
  return cards;
}

std::vector<std::string> WindowTest::SavedCompanies(int key_field) {
  std::vector<std::string> companies;
  for (const SavedCard& saved : Saved(key_field)) companies.push_back(saved.Field(kSte1));
  return companies;
}

std::vector<int> WindowTest::MarkedRows() {
  std::vector<int> rows;
  CardList& list = window->logic().list();
  for (int row = 0; row < list.row_count(); ++row) {
    if (list.IsMarked(row)) rows.push_back(row);
  }
  return rows;
}

std::vector<std::string> WindowTest::Rows() {
  std::vector<std::string> labels;
  CardList& list = window->logic().list();
  for (int row = 0; row < list.row_count(); ++row) {
    const QString label = QString::fromStdString(list.Label(row));
    labels.push_back(label.trimmed().toStdString());
  }
  return labels;
}

std::string WindowTest::Profile(std::string_view key) {
  return profile.Text("PhoneBook-DROV", key, "(missing)");
}

void WindowTest::SetProfile(std::string_view key, std::string_view text) {
  profile.Write("PhoneBook-DROV", key, text);
}

}  // namespace carnetel::desktop
