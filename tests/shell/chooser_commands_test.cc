// The chooser's menus, buttons, status texts and greying, as data.
#include "shell/chooser_commands.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace carnetel {
namespace {

using Numbers = std::vector<int>;
using Texts = std::vector<std::string>;

Texts TextsOf(const MenuPopup& popup) {
  Texts texts;
  for (const MenuItem& item : popup.items) texts.emplace_back(item.text);
  return texts;
}

Numbers CommandsOf(const MenuPopup& popup) {
  Numbers commands;
  for (const MenuItem& item : popup.items) commands.push_back(item.command);
  return commands;
}

TEST(ChooserCommands, TheMenusInTheirOrder) {
  const auto menu = ChooserMenu(false);
  ASSERT_EQ(menu.size(), 5U);
  Texts titles;
  Numbers statuses;
  for (const MenuPopup& popup : menu) {
    titles.emplace_back(popup.title);
    statuses.push_back(popup.status_text);
  }
  EXPECT_EQ(titles, (Texts{"&Fichier", "&Edition", "E&xtraction", "&Options", "&Aide"}));
  EXPECT_EQ(statuses, (Numbers{170, 171, 172, 272, 74}));
  EXPECT_EQ(CommandsOf(menu[0]), (Numbers{201, 224, 206, 0}));
  EXPECT_EQ(TextsOf(menu[0]), (Texts{"&Ouvrir...", "&Descriptif...", "&Quitter", ""}));
  EXPECT_EQ(CommandsOf(menu[1]), (Numbers{220, 211, 213}));
  EXPECT_EQ(TextsOf(menu[1]), (Texts{"&Visu Fiche...", "&Chercher...", "Tout &Désélectionner"}));
  EXPECT_EQ(CommandsOf(menu[2]), (Numbers{221, 222, 223}));
  EXPECT_EQ(TextsOf(menu[2]),
            (Texts{"Extraire &Fiche", "Extraire &Sélection", "Extraire &Groupe"}));
  EXPECT_EQ(CommandsOf(menu[3]), (Numbers{231, 232, 233, 234}));
  EXPECT_EQ(TextsOf(menu[3]),
            (Texts{"&Qualité-Prénom-Nom", "&Prénom-Nom", "Qualité-&Nom-Prénom", "N&om-Prénom"}));
  EXPECT_EQ(CommandsOf(menu[4]), (Numbers{214, 229}));
}

TEST(ChooserCommands, TheViafaxItemStandsAtTheEndOfItsRunsOptions) {
  const auto menu = ChooserMenu(true);
  ASSERT_EQ(menu.size(), 5U);
  EXPECT_EQ(CommandsOf(menu[3]), (Numbers{231, 232, 233, 234, 0, 235}));
  EXPECT_EQ(TextsOf(menu[3]).back(), "&Option Viafax");
}

TEST(ChooserCommands, TheButtonsInTheirOrder) {
  Numbers ids;
  Texts captions;
  for (const ButtonInfo& button : ChooserButtons()) {
    ids.push_back(button.id);
    captions.emplace_back(button.caption);
  }
  EXPECT_EQ(ids, (Numbers{1010, 1012, 1033, 1001, 1034, 1030, 1032, 1031}));
  EXPECT_EQ(captions,
            (Texts{"Ouvrir un carnetel", "Quitter", "Visu Fiche", "Recherche Fiche",
                   "Vider sélection", "Extraire Fiche", "Extraire Sélection", "Extraire Groupe"}));
}

TEST(ChooserCommands, EveryItemHasItsStatus) {
  const std::pair<int, int> texts[] = {
      {201, 62},   {1010, 62}, {224, 63},   {206, 64},  {1012, 64},  {220, 173},
      {1033, 173}, {211, 70},  {1001, 70},  {213, 73},  {1034, 73},  {221, 174},
      {1030, 174}, {222, 175}, {1032, 175}, {223, 176}, {1031, 176}, {235, 283}};
  for (const auto& [item, text] : texts) {
    EXPECT_EQ(ChooserStatusTextOf(item, ChooserKind::kSingle), text) << item;
    EXPECT_EQ(ChooserStatusTextOf(item, ChooserKind::kMany), text) << item;
  }
  for (const int item : {195, 184, 185, 214, 225, 229, 231}) {
    EXPECT_EQ(ChooserStatusTextOf(item, ChooserKind::kSingle), 192) << item;
    EXPECT_EQ(ChooserStatusTextOf(item, ChooserKind::kMany), 59) << item;
  }
}

Numbers Grey(const ChooserState& state) {
  Numbers grey;
  for (const int command : {1,   2,   201, 206, 211,  213,  214,  220,  221,  222,  223,  224, 225,
                            229, 231, 235, 500, 1001, 1010, 1012, 1030, 1031, 1032, 1033, 1034}) {
    if (IsChooserGrey(command, state)) grey.push_back(command);
  }
  return grey;
}

TEST(ChooserCommands, WhatIsGrey) {
  constexpr auto kOne = ChooserKind::kSingle;
  constexpr auto kSeveral = ChooserKind::kMany;
  EXPECT_EQ(Grey({kSeveral, true, true}), Numbers{});
  EXPECT_EQ(Grey({kSeveral, true, false}), (Numbers{213, 222, 1032, 1034}));
  const Numbers all = {211, 213, 220, 221, 222, 223, 1001, 1030, 1031, 1032, 1033, 1034};
  EXPECT_EQ(Grey({kSeveral, false, false}), all);
  EXPECT_EQ(Grey({kOne, false, false}), all);
  EXPECT_EQ(Grey({kOne, true, false}), (Numbers{213, 222, 223, 1031, 1032, 1034}));
  // The item that takes marks away follows them even where none are shown.
  EXPECT_EQ(Grey({kOne, true, true}), (Numbers{222, 223, 1031, 1032, 1034}));
}

}  // namespace
}  // namespace carnetel
