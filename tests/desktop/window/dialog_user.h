// The user of modal dialogs in tests of the whole window. A dialog runs in an event loop of its
// own, so a test says what is to be done in it before the command that opens it. A dialog that
// nobody expects, or that is open still when all was done in it, fails the test and is abandoned.
#pragma once

#include <QListWidget>
#include <deque>
#include <functional>

#include "tests/desktop/dialogs/dialog_testing.h"
#include "tests/desktop/window/window_fixture.h"

namespace carnetel::desktop {

class DialogUser : public QObject {
 public:
  using Act = std::function<void(QDialog&)>;
  // What a message box has in place of a number.
  static constexpr int kMessageBox = 0;

  // `busy` tells when a box is up that is not the user's to end.
  explicit DialogUser(const BusyState& busy);
  // Every expected dialog must have come by now.
  ~DialogUser() override;

  // What is done in the next dialog, which must have that number. Must end it.
  void Expect(int number, Act act) { steps_.push_back({number, std::move(act)}); }
  [[nodiscard]] bool IsDone() const { return steps_.empty(); }

 private:
  struct Step {
    int number;
    Act act;
  };

  void LookLater();
  void Look();
  void WorkOn(QDialog& dialog);

  const BusyState& busy_;
  std::deque<Step> steps_;
  QList<QDialog*> at_work_;  // from the outermost on
};

// The window with somebody who answers its dialogs.
class DialogWindowTest : public WindowTest {
 protected:
  using Texts = std::vector<std::string>;
  using Numbers = std::vector<int>;

  // In the next dialog.
  void Expect(int number, DialogUser::Act act) { user.Expect(number, std::move(act)); }
  // In the next dialog, a file dialog: types a name and confirms.
  void ExpectName(int number, const QString& name);
  static void PressIn(const QDialog& dialog, int id) { desktop::Press(dialog, id); }
  static QListWidget* FilesOf(const QDialog& dialog) { return Find<QListWidget>(dialog, 1120); }
  // Presses a row of a list once, or twice in a row.
  static void ClickText(QListWidget* list, const QString& text, bool twice = false);

  void MakeText(const std::string& path, const std::string& text);
  // What the main file of a directory has as its header.
  [[nodiscard]] MainHeader HeaderOf(const std::string& stem);
  // Starts as seat 3 of several.
  void StartWithSeats();

  DialogUser user{busy};
};

}  // namespace carnetel::desktop
