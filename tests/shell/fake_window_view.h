// The main window's widgets as plain values: it keeps what the window would show, takes the focus
// as a toolkit does (entering a field or the list is told at once), holds posted events until a
// test delivers them, and types, clicks and presses as a user would. Beside it, message boxes that
// answer from a queue.
#pragma once

#include <gtest/gtest.h>

#include <array>
#include <deque>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include "shell/main_window.h"

namespace carnetel {

// Answers questions in the order given; a question without an answer fails the test.
class QueuedMessages : public MessageForm {
 public:
  struct Entry {
    MessageStyle style;
    int title_id;
    std::string text;
    friend bool operator==(const Entry&, const Entry&) = default;
  };

  MessageButton Show(MessageStyle style, int title_id, const std::string& text) override;
  void Answer(MessageButton button) { answers_.push_back(button); }
  // What was shown since the last call.
  std::vector<Entry> TakeShown() { return std::exchange(shown_, {}); }
  // Runs while a box is up.
  std::function<void()> while_shown;

 private:
  std::deque<MessageButton> answers_;
  std::vector<Entry> shown_;
};

class FakeWindowView : public MainWindowView {
 public:
  static constexpr int kLeaveQuestion = -1;

  void Attach(MainWindowLogic& logic) { logic_ = &logic; }

  // ---- the user ----

  // Puts the focus on a field or the list, as Tab or a click does.
  void Focus(int control) { TakeFocus(control); }
  // Goes to the field and makes its text this one.
  void Type(int control, const std::string& utf8);
  void TypeReference(int row, const std::string& utf8);
  // A press on a button that is enabled, then everything that it posted.
  void Press(int button);
  // A menu item or key: the command, then everything that it posted.
  void Run(int command);
  // A click on a row: the list takes the focus with its old row, then the row changes, then the
  // events that were posted meanwhile arrive.
  void ClickRow(int row);
  void DeliverPosted();

  // ---- what the window shows ----

  [[nodiscard]] std::string Text(int control) const { return FieldText(control); }
  [[nodiscard]] bool IsEnabled(int button) const { return enabled_.contains(button); }
  // Ids of the enabled buttons that the logic switches, in order.
  [[nodiscard]] const std::set<int>& enabled() const { return enabled_; }

  std::string title;
  std::string position;
  int32_t marked = -1;
  std::string status;
  std::vector<std::string> recents;
  std::vector<std::string> groups;
  std::vector<std::string> sets;
  int tab = 0;
  int focus = 0;
  bool edit_look = false;
  bool cancel_face = false;
  FormZone zone = FormZone::kNotes;
  bool ended = false;
  int beeps = 0;
  int consultations = 0;
  int settings_changes = 0;
  int refills = 0;
  std::deque<int> posted;
  std::array<std::string, kReferenceCount> references;
  // Of a sibling's button: whether it shows, and whether it is enabled.
  std::map<int, std::pair<bool, bool>> siblings;

  // ---- MainWindowView ----

  void SetFieldText(int control, const std::string& utf8) override;
  [[nodiscard]] std::string FieldText(int control) const override;
  void SetReferences(const std::array<std::string, kReferenceCount>& utf8) override {
    references = utf8;
  }
  std::array<std::string, kReferenceCount> References() override { return references; }
  void UndoChange(int control) override { texts_[control] = before_change_; }
  void SetEditLook(bool on) override { edit_look = on; }
  void SetZone(FormZone shown) override { zone = shown; }
  void SetButton(int button, bool enabled) override;
  void SetCancelFace(bool cancel) override { cancel_face = cancel; }
  void FocusControl(int control) override { TakeFocus(control); }
  void FocusList() override { TakeFocus(kControlList); }
  void Beep() override { ++beeps; }
  void PostCommand(int command) override { posted.push_back(command); }
  void PostLeaveQuestion() override { posted.push_back(kLeaveQuestion); }
  void SetTitle(const std::string& utf8) override { title = utf8; }
  void SetPosition(const std::string& utf8) override { position = utf8; }
  void SetMarked(int32_t count) override { marked = count; }
  void SetStatus(const std::string& utf8) override { status = utf8; }
  void SetRecents(const std::vector<std::string>& texts) override { recents = texts; }
  void SetGroups(const std::vector<std::string>& names, int) override { groups = names; }
  void SetSets(const std::vector<std::string>& names, int) override { sets = names; }
  [[nodiscard]] int FocusedControl() const override { return focus; }
  void SettingsChanged() override { ++settings_changes; }
  void ShowTab(int shown) override { tab = shown; }
  void ListRefilled() override { ++refills; }
  void ShowCurrentRow() override {}
  void RepaintRow(int) override {}
  void OpenConsultation() override { ++consultations; }
  void UpdateConsultation() override {}
  void SetSiblingButton(int button, bool visible, bool enabled) override {
    siblings[button] = {visible, enabled};
  }
  [[nodiscard]] uint64_t WindowNumber() const override { return 4711; }
  void EndWindow() override { ended = true; }

 private:
  void TakeFocus(int control);

  MainWindowLogic* logic_ = nullptr;
  std::map<int, std::string> texts_;
  std::string before_change_;
  std::set<int> enabled_;
};

}  // namespace carnetel
