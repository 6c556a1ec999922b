// What the main window and the chooser are put together from: rows of picture buttons, the two
// pickers, values and the status line below, and the few things that both do alike as windows.
#pragma once

#include <QLabel>
#include <QList>
#include <QMainWindow>
#include <QString>
#include <QStringList>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "desktop/controls/bubble_button.h"
#include "desktop/controls/picker_combo.h"
#include "shell/command_table.h"

namespace carnetel::desktop {

[[nodiscard]] QString Utf8(std::string_view text);
[[nodiscard]] QStringList ToList(const std::vector<std::string>& texts);

// A button of a table, with its picture, caption and name for screen readers.
[[nodiscard]] BubbleButton* MakeFaceButton(const ButtonInfo& info, ButtonSize size);
// The buttons side by side, one stop of the keyboard; those numbers begin a group.
[[nodiscard]] QWidget* MakeToolbar(const QList<BubbleButton*>& buttons,
                                   std::initializer_list<int> group_starts);

// The lists of groups (184) and of criteria sets (185), each behind its label.
struct PickerPair {
  QWidget* box;
  PickerCombo* groups;
  PickerCombo* sets;
};
[[nodiscard]] PickerPair MakePickers(const QString& groups_label, const QString& sets_label);
// Toolbar to the left, pickers to the right.
[[nodiscard]] QWidget* MakeTop(QWidget* toolbar, QWidget* pickers);

// Sunken, as wide as the usual text at least.
[[nodiscard]] QLabel* MakeValue(int id, const QString& name, const QString& usual);
// The labels and values of the current row (181) and of the number of marks (183).
struct CountLine {
  QWidget* box;
  QLabel* position;
  QLabel* marked;
};
[[nodiscard]] CountLine MakeCountLine();
[[nodiscard]] QLabel* MakeStatusLine();

// The control of that window which has its focus, or is around what has it; the list without one.
[[nodiscard]] int FocusedControlOf(const QMainWindow& window);
// A window of one size, in the middle of its screen.
void FixAndCentre(QMainWindow& window);

}  // namespace carnetel::desktop
