#include "shell/command_table.h"

#include <algorithm>
#include <array>

namespace carnetel {
namespace {

constexpr std::array<MenuItem, 12> kFileMenu = {{{kCommandNew, "&Nouveau...", ""},
                                                 {kCommandOpen, "&Ouvrir...", ""},
                                                 {0, "", ""},
                                                 {kCommandImport, "I&mporter...", ""},
                                                 {kCommandExport, "E&xporter...", ""},
                                                 {kCommandDescribe, "&Descriptif...", ""},
                                                 {kCommandPrint, "&Imprimer...", ""},
                                                 {0, "", ""},
                                                 {kCommandDestroy, "&Supprimer...", ""},
                                                 {0, "", ""},
                                                 {kCommandQuit, "&Quitter", ""},
                                                 {0, "", ""}}};
constexpr std::array<MenuItem, 4> kEditMenu = {
    {{kCommandCreateCard, "&Créer...", "Inser"},
     {kCommandSaveChange, "&Modifier Fiche", ""},
     {kCommandDeleteCard, "&Détruire Fiche", "Suppr"},
     {kCommandDeleteMarked, "Détruire &Fiches sélectionnées", ""}}};
constexpr std::array<MenuItem, 3> kSearchMenu = {
    {{kCommandSearch, "Sur &Critères...", ""},
     {kCommandGoToNumber, "Par &Numéros...", ""},
     {kCommandBrowseMarked, "&Parcourir la Sélection...", ""}}};
constexpr std::array<MenuItem, 3> kSelectionMenu = {
    {{kCommandSelect, "&Sélectionner...", ""},
     {kCommandDeselectAll, "Tout &Désélectionner", ""},
     {kCommandSelectAll, "&Tout Sélectionner", ""}}};
constexpr std::array<MenuItem, 1> kGroupMenu = {{{kCommandGroups, "&Gestion de Groupe...", ""}}};
constexpr std::array<MenuItem, 1> kOptionsMenu = {{{kCommandPreferences, "&Préférences...", ""}}};
constexpr std::array<MenuItem, 2> kHelpMenu = {
    {{kCommandHelp, "&Aide...", "F1"}, {kCommandAbout, "A &propos", ""}}};

constexpr std::array<MenuPopup, 7> kMainMenu = {{{"&Fichier", 60, kFileMenu},
                                                 {"&Edition", 65, kEditMenu},
                                                 {"&Recherche", 70, kSearchMenu},
                                                 {"&Sélection", 72, kSelectionMenu},
                                                 {"&Groupe", 162, kGroupMenu},
                                                 {"&Options", 262, kOptionsMenu},
                                                 {"&Aide", 74, kHelpMenu}}};

constexpr std::array<ButtonInfo, 8> kToolbar = {{{kButtonOpen, "Ouvrir un carnetel", "open"},
                                                 {kButtonImport, "Importer des fiches", "import"},
                                                 {kButtonPrint, "Imprimer", "print"},
                                                 {kButtonSearch, "Recherche Fiche", "search"},
                                                 {kButtonGroups, "Gestion de Groupe", "groups"},
                                                 {kButtonSelect, "Sélectionner", "select"},
                                                 {kButtonHelp, "Aide", "help"},
                                                 {kButtonQuit, "Quitter", "quit"}}};
constexpr std::array<ButtonInfo, 6> kFormColumn = {
    {{kButtonCreateOrCancel, "Créer nouvelle fiche", "new-card"},
     {kButtonSaveChange, "Modifier la fiche", "save"},
     {kButtonSaveNew, "Enregistrer une nouvelle fiche", "save-new"},
     {kButtonMark, "Sélection / Désélection", "mark"},
     {kButtonDeleteCard, "Détruire la fiche", "delete"},
     {kButtonDeleteMarked, "Détruire les fiches sélectionnées", "delete-marked"}}};
constexpr std::array<ButtonInfo, 5> kSiblings = {{{kButtonVoice, "Voix", "voice"},
                                                  {kButtonIsdn, "Numeris", "isdn"},
                                                  {kButtonFax, "Fax", "fax"},
                                                  {kButtonFiles, "Fichiers", "files"},
                                                  {kButtonMinitel, "Minitel", "minitel"}}};
constexpr std::array<ButtonInfo, 2> kZones = {
    {{kButtonShowNotes, "Afficher notes", "notes"},
     {kButtonShowReferences, "Afficher Ref.", "references"}}};

struct NumberPair {
  int item;
  int value;
};

constexpr std::array<NumberPair, 12> kButtonCommands = {
    {{kButtonPrint, kCommandPrint},
     {kButtonSearch, kCommandSearch},
     {kButtonGroups, kCommandGroups},
     {kButtonSelect, kCommandSelect},
     {kButtonDeleteCard, kCommandDeleteCard},
     {kButtonDeleteMarked, kCommandDeleteMarked},
     {kButtonSaveChange, kCommandSaveChange},
     {kButtonCreateOrCancel, kCommandCreateCard},
     {kButtonOpen, kCommandOpen},
     {kButtonImport, kCommandImport},
     {kButtonQuit, kCommandQuit},
     {kButtonHelp, kCommandHelp}}};

constexpr int kOtherStatusText = 59;
constexpr std::array<NumberPair, 37> kStatusTexts = {
    {{200, 61},   {201, 62},  {1010, 62}, {202, 98},  {1011, 98},  {203, 111},  {204, 63},
     {206, 64},   {1012, 64}, {207, 66},  {1007, 66}, {213, 73},   {214, 74},   {1013, 74},
     {215, 91},   {219, 91},  {217, 166}, {218, 169}, {230, 262},  {1018, 222}, {1020, 228},
     {1000, 71},  {205, 71},  {1001, 70}, {211, 70},  {1002, 162}, {216, 162},  {1003, 72},
     {212, 72},   {1004, 68}, {209, 68},  {1005, 69}, {210, 69},   {1006, 67},  {208, 67},
     {1008, 220}, {1009, 221}}};
constexpr std::array<NumberPair, 5> kSiblingStatusTexts = {
    {{1014, 223}, {1015, 225}, {1016, 226}, {1017, 227}, {1019, 224}}};

constexpr int kGeneralTopic = 48;
constexpr std::array<NumberPair, 18> kCommandTopics = {{{200, 49},
                                                        {201, 50},
                                                        {217, 72},
                                                        {202, 58},
                                                        {203, 59},
                                                        {204, 51},
                                                        {205, 54},
                                                        {207, 52},
                                                        {208, 52},
                                                        {209, 52},
                                                        {210, 52},
                                                        {211, 53},
                                                        {215, 53},
                                                        {219, 53},
                                                        {212, 56},
                                                        {213, 56},
                                                        {218, 56},
                                                        {216, 63}}};
constexpr std::array<NumberPair, 6> kControlTopics = {
    {{1006, 52}, {1007, 52}, {1001, 53}, {1000, 54}, {1002, 63}, {1003, 56}}};

int Find(std::span<const NumberPair> table, int item, int otherwise) {
  const auto found =
      std::ranges::find_if(table, [item](const NumberPair& row) { return row.item == item; });
  return found == table.end() ? otherwise : found->value;
}

}  // namespace

std::span<const MenuPopup> MainMenu() {
  return kMainMenu;
}

bool IsGrey(int command, const MenuState& state) {
  switch (command) {
    case kCommandSaveChange:
      return !state.may_save_change || state.group_displayed;
    case kCommandPrint:
    case kCommandDeleteCard:
    case kCommandSearch:
    case kCommandGoToNumber:
    case kCommandSelect:
    case kCommandSelectAll:
    case kCommandGroups:
      return !state.has_rows;
    case kCommandExport:
    case kCommandDeleteMarked:
    case kCommandBrowseMarked:
    case kCommandDeselectAll:
      return !state.has_marks;
    default:
      return false;
  }
}

int CommandOfButton(int button) {
  return Find(kButtonCommands, button, button);
}

int StatusTextOf(int item) {
  return Find(kStatusTexts, item, Find(kSiblingStatusTexts, item, kOtherStatusText));
}

int HelpTopicOfCommand(int command) {
  if (command == kCommandPreferences) return 75;
  return Find(kCommandTopics, command, kGeneralTopic);
}

int HelpTopicOfControl(int control, bool new_card) {
  const int topic = Find(kControlTopics, control, 0);
  if (topic != 0) return topic;
  if (control >= 150 && control <= 174) return new_card ? 52 : 66;
  return kGeneralTopic;
}

std::span<const ButtonInfo> ToolbarButtons() {
  return kToolbar;
}
std::span<const ButtonInfo> FormColumnButtons() {
  return kFormColumn;
}
std::span<const ButtonInfo> SiblingButtons() {
  return kSiblings;
}
std::span<const ButtonInfo> ZoneButtons() {
  return kZones;
}

}  // namespace carnetel
