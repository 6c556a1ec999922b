#include "shell/chooser_commands.h"

#include <algorithm>
#include <array>

namespace carnetel {
namespace {

constexpr std::array<MenuItem, 4> kFileMenu = {{{kCommandOpen, "&Ouvrir...", ""},
                                                {kCommandChooserDescribe, "&Descriptif...", ""},
                                                {kCommandQuit, "&Quitter", ""},
                                                {0, "", ""}}};
constexpr std::array<MenuItem, 3> kEditMenu = {{{kCommandViewCard, "&Visu Fiche...", ""},
                                                {kCommandSearch, "&Chercher...", ""},
                                                {kCommandDeselectAll, "Tout &Désélectionner", ""}}};
constexpr std::array<MenuItem, 3> kExtractionMenu = {
    {{kCommandExtractCard, "Extraire &Fiche", ""},
     {kCommandExtractSelection, "Extraire &Sélection", ""},
     {kCommandExtractGroup, "Extraire &Groupe", ""}}};
constexpr std::array<MenuItem, 6> kOptionsMenu = {{{231, "&Qualité-Prénom-Nom", ""},
                                                   {232, "&Prénom-Nom", ""},
                                                   {233, "Qualité-&Nom-Prénom", ""},
                                                   {234, "N&om-Prénom", ""},
                                                   {0, "", ""},
                                                   {kCommandViafaxOption, "&Option Viafax", ""}}};
constexpr size_t kStyles = 4;
constexpr std::array<MenuItem, 2> kHelpMenu = {
    {{kCommandHelp, "&Aide...", "F1"}, {kCommandAbout, "A &propos", ""}}};

using Menu = std::array<MenuPopup, 5>;
constexpr Menu MakeMenu(std::span<const MenuItem> options) {
  return {{{"&Fichier", 170, kFileMenu},
           {"&Edition", 171, kEditMenu},
           {"E&xtraction", 172, kExtractionMenu},
           {"&Options", 272, options},
           {"&Aide", 74, kHelpMenu}}};
}
constexpr Menu kMenu = MakeMenu(std::span(kOptionsMenu).first(kStyles));
constexpr Menu kViafaxMenu = MakeMenu(kOptionsMenu);

constexpr std::array<ButtonInfo, 8> kButtons = {
    {{kButtonOpen, "Ouvrir un carnetel", "open"},
     {kButtonQuit, "Quitter", "quit"},
     {kButtonViewCard, "Visu Fiche", "view-card"},
     {kButtonSearch, "Recherche Fiche", "search"},
     {kButtonDeselectAll, "Vider sélection", "clear-marks"},
     {kButtonExtractCard, "Extraire Fiche", "extract-card"},
     {kButtonExtractSelection, "Extraire Sélection", "extract-marked"},
     {kButtonExtractGroup, "Extraire Groupe", "extract-group"}}};

struct StatusText {
  int item;
  int text;
};
constexpr std::array<StatusText, 17> kStatusTexts = {{{kCommandOpen, 62},
                                                      {kButtonOpen, 62},
                                                      {kCommandChooserDescribe, 63},
                                                      {kCommandQuit, 64},
                                                      {kButtonQuit, 64},
                                                      {kCommandViewCard, 173},
                                                      {kButtonViewCard, 173},
                                                      {kCommandSearch, 70},
                                                      {kButtonSearch, 70},
                                                      {kCommandDeselectAll, 73},
                                                      {kButtonDeselectAll, 73},
                                                      {kCommandExtractCard, 174},
                                                      {kButtonExtractCard, 174},
                                                      {kCommandExtractSelection, 175},
                                                      {kButtonExtractSelection, 175},
                                                      {kCommandExtractGroup, 176},
                                                      {kButtonExtractGroup, 176}}};
constexpr int kViafaxStatus = 283;
constexpr int kSingleStatus = 192;
constexpr int kManyStatus = 59;

}  // namespace

std::span<const MenuPopup> ChooserMenu(bool viafax_output) {
  return viafax_output ? kViafaxMenu : kMenu;
}

std::span<const ButtonInfo> ChooserButtons() {
  return kButtons;
}

int ChooserStatusTextOf(int item, ChooserKind kind) {
  if (item == kCommandViafaxOption) return kViafaxStatus;
  const auto* const found = std::ranges::find(kStatusTexts, item, &StatusText::item);
  if (found != kStatusTexts.end()) return found->text;
  return kind == ChooserKind::kSingle ? kSingleStatus : kManyStatus;
}

bool IsChooserGrey(int command, const ChooserState& state) {
  const bool many = state.kind == ChooserKind::kMany;
  switch (command) {
    case kCommandViewCard:
    case kButtonViewCard:
    case kCommandSearch:
    case kButtonSearch:
    case kCommandExtractCard:
    case kButtonExtractCard:
      return !state.has_rows;
    case kCommandExtractGroup:
    case kButtonExtractGroup:
      return !many || !state.has_rows;
    case kCommandExtractSelection:
    case kButtonExtractSelection:
    case kButtonDeselectAll:
      return !many || !state.has_marks;
    case kCommandDeselectAll:
      return !state.has_marks;
    default:
      return false;
  }
}

}  // namespace carnetel
