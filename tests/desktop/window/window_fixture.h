// The real main window, off screen, over a home folder in memory: a test presses its keys and
// buttons, gives the answers of its message boxes beforehand, and looks at what was saved by
// opening a copy of the files through the stores.
#pragma once

#include <gtest/gtest.h>

#include <QAction>
#include <QTest>
#include <initializer_list>
#include <memory>
#include <utility>

#include "desktop/controls/window_messages.h"
#include "desktop/controls/window_progress.h"
#include "desktop/window/main_window.h"
#include "platform/fault_file_system.h"
#include "platform/memory_file_system.h"

namespace carnetel::desktop {

// A card with these fields; texts are OEM bytes.
CardRecord CardWith(std::initializer_list<std::pair<int, std::string_view>> fields);

// Presses the stop button of the real progress box at a step, counted from 1; 0 never.
class StoppedProgress : public ProgressBox {
 public:
  explicit StoppedProgress(BusyState& busy) : box_(busy) {}
  void Open(ProgressForm form, uint32_t total) override;
  [[nodiscard]] bool Step(std::string_view text) override;
  void Close() override { box_.Close(); }

  int stop_at = 0;
  std::vector<std::string> steps;

 private:
  WindowProgress box_;
};

class WindowTest : public ::testing::Test {
 protected:
  WindowTest();
  ~WindowTest() override;

  // Adds cards to a directory, made when missing; without a stem to the one that Start opens.
  void Build(const std::vector<CardRecord>& cards) { Build(DefaultPath(), cards); }
  void Build(const std::string& stem, const std::vector<CardRecord>& cards);
  // ALPHA, BETA and so on: the first `count` of nine.
  void BuildCompanies(int count);
  // Session, opening and window, shown and active, as the program does it. The opening must come to
  // what `opens` says.
  void Start(const StartupRequest& request = {}, int capacity = 32767);
  // Ends the run after the window has ended.
  void ExitSession();

  // The window that the keys and buttons of a test go to.
  [[nodiscard]] virtual QMainWindow& TestedWindow() { return *window; }

  // The widget of that number, which must be there; a test goes on only with one.
  [[nodiscard]] QWidget* Control(int id);
  [[nodiscard]] BubbleButton* Button(int id);
  [[nodiscard]] CardListView* List();
  // Text of an edit, a label, the references' line or the notes.
  [[nodiscard]] QString Text(int id);
  // Chooses a menu item as the mouse does: its menu opens first. Fails when it is missing or grey.
  void Choose(int command);
  // Opens a menu with Alt and its letter and chooses an item of it by its own.
  void ChooseByKeys(Qt::Key menu, Qt::Key item);
  // The menu items that are grey once every menu was opened.
  [[nodiscard]] std::vector<int> GreyItems();
  // Drops these files on the window; false when it does not take them.
  bool Drop(const std::vector<std::string>& paths);
  // The recent directories in the menu, with their numbers.
  [[nodiscard]] std::vector<std::string> RecentTexts();
  // Clicks a button; fails when it is missing, hidden or off.
  void Press(int button);
  void ClickRow(int row, Qt::KeyboardModifiers keys = Qt::NoModifier);
  // To the widget with the focus.
  void Key(Qt::Key key, Qt::KeyboardModifiers keys = Qt::NoModifier);
  void Type(const QString& text);
  // Clicks into a field, selects what it holds and types.
  void TypeInto(int control, const QString& text);
  void Click(QWidget* widget);
  // Number of the control with the focus, 0 for none.
  [[nodiscard]] int Focus();
  void Settle();
  // What a desktop does when another window of the program has closed.
  void Reactivate();

  void Answer(MessageButton answer) { script.answers.push_back(answer); }
  // What the boxes said since the last call.
  [[nodiscard]] std::vector<std::string> Asked();

  struct SavedCard {
    CardRecord card;
    EntrySlot entry;
    [[nodiscard]] std::string Field(int field) const { return card.FieldText(field).bytes(); }
  };
  // The cards on the disk in the order of the address file; the family must be without a fault.
  [[nodiscard]] std::vector<SavedCard> Saved(int key_field = kSte1);
  [[nodiscard]] std::vector<std::string> SavedCompanies(int key_field = kSte1);
  [[nodiscard]] std::vector<int> MarkedRows();
  // What the rows say, without the blank that stands for an empty second part.
  [[nodiscard]] std::vector<std::string> Rows();

  [[nodiscard]] std::string DefaultPath() const { return home + "CARNETEL"; }
  [[nodiscard]] std::string Profile(std::string_view key);
  void SetProfile(std::string_view key, std::string_view text);

  // Of this test alone: open directories are known by their path.
  std::string home;
  FakeClock clock{1'000'000'000};
  MemoryFileSystem files{clock};
  // What the program works on: `files` until it is told to fail.
  FaultFileSystem disk{files};
  UserProfile profile{files, "/profile.ini"};
  BusyState busy;
  StoppedProgress progress{busy};
  MessageScript script;
  WindowMessages messages{&script};
  // Who shows the boxes of the session; real ones with a WindowMessages without a script.
  MessageForm* boxes = &messages;
  // Starts programs in place of the system; none can be started without it.
  std::function<bool(const std::string& command_line)> program_starter;
  bool opens = true;
  std::unique_ptr<Session> session;
  std::unique_ptr<MainWindow> window;
  int ended = 0;

 private:
  void RemoveLockFiles();

  size_t asked_ = 0;
};

}  // namespace carnetel::desktop
