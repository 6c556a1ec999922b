// The commands of the main window as data: the numbers that menu items, buttons and controls share,
// the menus in their order, what the status line says of each item, its help topic, and when it is
// grey. The window draws menus, toolbar, status line and greying from this table and from nothing
// else.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string_view>

namespace carnetel {

// Commands and controls, under the numbers of the dialog templates. Fields are 150 to 174, letter
// tabs 655 to 681.
enum CommandId : int {
  kCommandConfirm = 1,
  kCommandEscape = 2,
  kControlGroups = 184,
  kControlSets = 185,
  kControlPosition = 181,
  kControlMarked = 183,
  kControlStatus = 194,
  kControlList = 195,
  kCommandNew = 200,
  kCommandOpen = 201,
  kCommandImport = 202,
  kCommandExport = 203,
  kCommandDescribe = 204,
  kCommandPrint = 205,
  kCommandQuit = 206,
  kCommandCreateCard = 207,
  kCommandSaveChange = 208,
  kCommandDeleteCard = 209,
  kCommandDeleteMarked = 210,
  kCommandSearch = 211,
  kCommandSelect = 212,
  kCommandDeselectAll = 213,
  kCommandHelp = 214,
  kCommandGoToNumber = 215,
  kCommandGroups = 216,
  kCommandDestroy = 217,
  kCommandSelectAll = 218,
  kCommandBrowseMarked = 219,
  kCommandRecent1 = 225,
  kCommandRecent4 = 228,
  kCommandAbout = 229,
  kCommandPreferences = 230,
  kCommandHelpKey = 500,
  // Posted at the start when the directory did not open and a fallback came in its place.
  kEventAskInvalidDirectory = 501,
  // Posted when it is time to look what other seats have changed.
  kEventCheckSeats = 502,
  kTabAll = 655,
  kTabA = 656,
  kTabZ = 681,
  kButtonPrint = 1000,
  kButtonSearch = 1001,
  kButtonGroups = 1002,
  kButtonSelect = 1003,
  kButtonDeleteCard = 1004,
  kButtonDeleteMarked = 1005,
  kButtonSaveChange = 1006,
  kButtonSaveNew = 1007,
  kButtonCreateOrCancel = 1008,
  kButtonMark = 1009,
  kButtonOpen = 1010,
  kButtonImport = 1011,
  kButtonQuit = 1012,
  kButtonHelp = 1013,
  kButtonVoice = 1014,
  kButtonFax = 1015,
  kButtonFiles = 1016,
  kButtonMinitel = 1017,
  kButtonShowNotes = 1018,
  kButtonIsdn = 1019,
  kButtonShowReferences = 1020,
};

struct MenuItem {
  int command = 0;            // 0 is a separator
  std::string_view text;      // with its mnemonic, UTF-8
  std::string_view shortcut;  // shown behind the text; the keys themselves are the key table's
};

struct MenuPopup {
  std::string_view title;
  int status_text;  // number in the string table
  std::span<const MenuItem> items;
};

// The seven popups in order. The recent directories follow in the first one, behind a separator.
[[nodiscard]] std::span<const MenuPopup> MainMenu();

// What greying looks at.
struct MenuState {
  bool has_rows = false;
  bool has_marks = false;
  bool group_displayed = false;
  // Button 1006 is active: an existing card is open in the form and has a key.
  bool may_save_change = false;
};

// True when the menu item is to be grey as its popup opens.
[[nodiscard]] bool IsGrey(int command, const MenuState& state);

// The command that a button of the toolbar or the form column stands for; the button's own number
// when it has no command besides.
[[nodiscard]] int CommandOfButton(int button);

// Number of the text that the status line shows for a menu item or a control.
[[nodiscard]] int StatusTextOf(int item);

// Help topic of a menu item.
[[nodiscard]] int HelpTopicOfCommand(int command);
// Help topic of the focused control; `new_card` tells that a new card is being keyed.
[[nodiscard]] int HelpTopicOfControl(int control, bool new_card);

struct ButtonInfo {
  int id;
  std::string_view caption;  // tooltip and accessible name, UTF-8
  std::string_view face;     // name of its picture
};

// Toolbar, form column and sibling buttons in the order of the window.
[[nodiscard]] std::span<const ButtonInfo> ToolbarButtons();
[[nodiscard]] std::span<const ButtonInfo> FormColumnButtons();
[[nodiscard]] std::span<const ButtonInfo> SiblingButtons();
[[nodiscard]] std::span<const ButtonInfo> ZoneButtons();

}  // namespace carnetel
