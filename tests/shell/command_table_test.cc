#include "shell/command_table.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>
#include <vector>

#include "base/string_table.h"

namespace carnetel {
namespace {

using Items = std::vector<std::pair<int, std::string>>;

Items ItemsOf(const MenuPopup& popup) {
  Items items;
  for (const MenuItem& item : popup.items) items.emplace_back(item.command, item.text);
  return items;
}

TEST(CommandTable, HasSevenPopupsInOrder) {
  std::vector<std::pair<std::string, int>> popups;
  for (const MenuPopup& popup : MainMenu()) popups.emplace_back(popup.title, popup.status_text);
  const std::vector<std::pair<std::string, int>> expected = {
      {"&Fichier", 60}, {"&Edition", 65},  {"&Recherche", 70}, {"&Sélection", 72},
      {"&Groupe", 162}, {"&Options", 262}, {"&Aide", 74}};
  EXPECT_EQ(popups, expected);
}

TEST(CommandTable, HasTheItemsOfEachPopupInOrder) {
  EXPECT_EQ(ItemsOf(MainMenu()[0]), (Items{{200, "&Nouveau..."},
                                           {201, "&Ouvrir..."},
                                           {0, ""},
                                           {202, "I&mporter..."},
                                           {203, "E&xporter..."},
                                           {204, "&Descriptif..."},
                                           {205, "&Imprimer..."},
                                           {0, ""},
                                           {217, "&Supprimer..."},
                                           {0, ""},
                                           {206, "&Quitter"},
                                           {0, ""}}));
  EXPECT_EQ(ItemsOf(MainMenu()[1]), (Items{{207, "&Créer..."},
                                           {208, "&Modifier Fiche"},
                                           {209, "&Détruire Fiche"},
                                           {210, "Détruire &Fiches sélectionnées"}}));
  EXPECT_EQ(ItemsOf(MainMenu()[2]), (Items{{211, "Sur &Critères..."},
                                           {215, "Par &Numéros..."},
                                           {219, "&Parcourir la Sélection..."}}));
  EXPECT_EQ(ItemsOf(MainMenu()[3]), (Items{{212, "&Sélectionner..."},
                                           {213, "Tout &Désélectionner"},
                                           {218, "&Tout Sélectionner"}}));
  EXPECT_EQ(ItemsOf(MainMenu()[4]), (Items{{216, "&Gestion de Groupe..."}}));
  EXPECT_EQ(ItemsOf(MainMenu()[5]), (Items{{230, "&Préférences..."}}));
  EXPECT_EQ(ItemsOf(MainMenu()[6]), (Items{{214, "&Aide..."}, {229, "A &propos"}}));
}

TEST(CommandTable, ShowsTheKeysOfThreeItems) {
  std::map<int, std::string> shortcuts;
  for (const MenuPopup& popup : MainMenu()) {
    for (const MenuItem& item : popup.items) {
      if (!item.shortcut.empty()) shortcuts[item.command] = item.shortcut;
    }
  }
  EXPECT_EQ(shortcuts, (std::map<int, std::string>{{207, "Inser"}, {209, "Suppr"}, {214, "F1"}}));
}

TEST(CommandTable, TitlesHaveMnemonicsOfTheirOwn) {
  std::set<char> letters;
  for (const MenuPopup& popup : MainMenu()) {
    const size_t mark = popup.title.find('&');
    ASSERT_NE(mark, std::string_view::npos);
    // Alt+Q, P and N belong to the fields of the person.
    EXPECT_EQ(std::string_view("QPN").find(popup.title[mark + 1]), std::string_view::npos);
    letters.insert(popup.title[mark + 1]);
  }
  EXPECT_EQ(letters.size(), MainMenu().size());
}

TEST(CommandTable, TellsTheStatusTextOfEveryItem) {
  const std::map<int, int> expected = {
      {200, 61},   {201, 62},   {1010, 62},  {202, 98},   {1011, 98},  {203, 111},  {204, 63},
      {206, 64},   {1012, 64},  {207, 66},   {1007, 66},  {213, 73},   {214, 74},   {1013, 74},
      {215, 91},   {219, 91},   {217, 166},  {218, 169},  {230, 262},  {1018, 222}, {1020, 228},
      {1000, 71},  {205, 71},   {1001, 70},  {211, 70},   {1002, 162}, {216, 162},  {1003, 72},
      {212, 72},   {1004, 68},  {209, 68},   {1005, 69},  {210, 69},   {1006, 67},  {208, 67},
      {1008, 220}, {1009, 221}, {1014, 223}, {1015, 225}, {1016, 226}, {1017, 227}, {1019, 224}};
  for (int item = 0; item <= 1100; ++item) {
    const auto found = expected.find(item);
    const int text = found == expected.end() ? 59 : found->second;
    EXPECT_EQ(StatusTextOf(item), text) << item;
    EXPECT_NE(LoadText(text), "") << text;
  }
}

TEST(CommandTable, TellsTheHelpTopicOfEveryCommand) {
  const std::map<int, int> expected = {{200, 49}, {201, 50}, {217, 72}, {202, 58}, {203, 59},
                                       {204, 51}, {205, 54}, {207, 52}, {208, 52}, {209, 52},
                                       {210, 52}, {211, 53}, {215, 53}, {219, 53}, {212, 56},
                                       {213, 56}, {218, 56}, {216, 63}, {230, 75}};
  for (int command = 0; command <= 300; ++command) {
    const auto found = expected.find(command);
    EXPECT_EQ(HelpTopicOfCommand(command), found == expected.end() ? 48 : found->second) << command;
  }
}

TEST(CommandTable, TellsTheHelpTopicOfTheFocusedControl) {
  const std::map<int, int> buttons = {{1006, 52}, {1007, 52}, {1001, 53},
                                      {1000, 54}, {1002, 63}, {1003, 56}};
  for (int control = 0; control <= 1100; ++control) {
    const auto found = buttons.find(control);
    const bool field = control >= 150 && control <= 174;
    const int other = found == buttons.end() ? 48 : found->second;
    EXPECT_EQ(HelpTopicOfControl(control, false), field ? 66 : other) << control;
    EXPECT_EQ(HelpTopicOfControl(control, true), field ? 52 : other) << control;
  }
}

TEST(CommandTable, ButtonsShareTheirCommands) {
  const std::map<int, int> expected = {{1000, 205}, {1001, 211}, {1002, 216}, {1003, 212},
                                       {1004, 209}, {1005, 210}, {1006, 208}, {1008, 207},
                                       {1010, 201}, {1011, 202}, {1012, 206}, {1013, 214}};
  for (int button = 1000; button <= 1034; ++button) {
    const auto found = expected.find(button);
    EXPECT_EQ(CommandOfButton(button), found == expected.end() ? button : found->second);
  }
}

std::vector<int> GreyIn(const MenuState& state) {
  std::vector<int> grey;
  for (int command = 200; command <= 230; ++command) {
    if (IsGrey(command, state)) grey.push_back(command);
  }
  return grey;
}

TEST(CommandTable, GreysByRowsMarksFormAndGroup) {
  const std::vector<int> rows_items = {205, 208, 209, 211, 212, 215, 216, 218};
  const std::vector<int> marks_items = {203, 210, 213, 219};
  std::vector<int> both = {203, 205, 208, 209, 210, 211, 212, 213, 215, 216, 218, 219};
  EXPECT_EQ(GreyIn({}), both);
  EXPECT_EQ(GreyIn({.has_rows = false, .has_marks = true}), rows_items);
  EXPECT_EQ(GreyIn({.has_rows = true, .may_save_change = true}), marks_items);
  EXPECT_EQ(GreyIn({.has_rows = true, .has_marks = true, .may_save_change = true}),
            std::vector<int>());
  EXPECT_EQ(GreyIn({.has_rows = true, .has_marks = true}), std::vector<int>{208});
  EXPECT_EQ(
      GreyIn(
          {.has_rows = true, .has_marks = true, .group_displayed = true, .may_save_change = true}),
      std::vector<int>{208});
}

std::vector<int> IdsOf(std::span<const ButtonInfo> buttons) {
  std::vector<int> ids;
  for (const ButtonInfo& button : buttons) {
    EXPECT_NE(button.caption, "");
    EXPECT_NE(button.face, "");
    ids.push_back(button.id);
  }
  return ids;
}

TEST(CommandTable, HasTheButtonsOfTheWindowInOrder) {
  EXPECT_EQ(IdsOf(ToolbarButtons()),
            (std::vector<int>{1010, 1011, 1000, 1001, 1002, 1003, 1013, 1012}));
  EXPECT_EQ(IdsOf(FormColumnButtons()), (std::vector<int>{1008, 1006, 1007, 1009, 1004, 1005}));
  EXPECT_EQ(IdsOf(SiblingButtons()), (std::vector<int>{1014, 1019, 1015, 1016, 1017}));
  EXPECT_EQ(IdsOf(ZoneButtons()), (std::vector<int>{1018, 1020}));
}

}  // namespace
}  // namespace carnetel
