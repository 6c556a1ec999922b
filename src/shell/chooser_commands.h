// The commands of the chooser as data, as the main window's are in shell/command_table.h: menus,
// buttons, status texts, and when something is grey.
#pragma once

#include <span>

#include "shell/command_table.h"

namespace carnetel {

// Besides the numbers that the chooser shares with the main window.
enum ChooserCommandId : int {
  kCommandViewCard = 220,
  kCommandExtractCard = 221,
  kCommandExtractSelection = 222,
  kCommandExtractGroup = 223,
  kCommandChooserDescribe = 224,
  kCommandFirstStyle = 231,
  kCommandLastStyle = 234,
  kCommandViafaxOption = 235,
  kButtonExtractCard = 1030,
  kButtonExtractGroup = 1031,
  kButtonExtractSelection = 1032,
  kButtonViewCard = 1033,
  kButtonDeselectAll = 1034,
  // Titles of the columns.
  kTitleSecond = 2013,
  kTitleNumber = 2014,
  kTitleFirst = 2017,
};

// The two choosers: the same window for one card, and for several.
enum class ChooserKind { kSingle = 1, kMany = 2 };

// The popups in order. The recent directories follow in the first one, behind its last separator.
// The one of options ends in that of the Viafax job, behind a separator, only for such a run.
[[nodiscard]] std::span<const MenuPopup> ChooserMenu(bool viafax_output);
[[nodiscard]] std::span<const ButtonInfo> ChooserButtons();

[[nodiscard]] int ChooserStatusTextOf(int item, ChooserKind kind);

struct ChooserState {
  ChooserKind kind = ChooserKind::kSingle;
  bool has_rows = false;
  bool has_marks = false;
};
// For menu items and buttons alike.
[[nodiscard]] bool IsChooserGrey(int command, const ChooserState& state);

}  // namespace carnetel
