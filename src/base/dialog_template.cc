#include "base/dialog_template.h"

#include <algorithm>
#include <array>

namespace carnetel {
namespace {

struct DialogTemplate {
  int number;
  std::string_view title;
};

// In ascending order.
constexpr std::array<DialogTemplate, 38> kTemplates = {{
    {100, "Carnetel Tolfax :  %s"},
    {101, ""},
    {102, "Recherche"},
    {103, "Descriptif de l'carnetel"},
    {104, ""},
    {105, "Choix du correspondant"},
    {106, "Consultation"},
    {107, "Saisie des critères de sélection"},
    {108, "Choix de Fichier"},
    {109, "Recherche par numéro"},
    {110, "Importation"},
    {111, "Structure du fichier source"},
    {112, "Mode d'importation de fiches"},
    {113, "Structure du fichier source"},
    {114, "Gestion des critères de Sélection"},
    {115, "Descriptif de la sélection"},
    {116, "Enrichissement de l'carnetel"},
    {117, "Enrichissement de l'carnetel"},
    {118, "Enrichissement de l'carnetel en cours..."},
    {119, "Choix du correspondant"},
    {120, "Importation - Paramètres du fichier Dbase"},
    {121, "Exportation - Paramètres du fichier Dbase"},
    {122, "Gestion de Groupe "},
    {123, "Choix de Fichiers Carnetel à Détruire"},
    {124, "Descriptif du Groupe"},
    {125, "Création d'un nouvel carnetel"},
    {126, "Consultation"},
    {127, "Exportation"},
    {128, "Choix de Fichier"},
    {129, ""},
    {130, "Impression de l'carnetel"},
    {131, "A propos de l'carnetel"},
    {132, "Descriptif de l'carnetel"},
    {133, ""},
    {134, "Préférences"},
    {135, "Veuillez patienter"},
    {136, "Erreur !   Carnetel invalide"},
    {1049, "Rubrique à l'attention de..."},
}};

const DialogTemplate* Find(int number) {
  const auto found = std::ranges::lower_bound(kTemplates, number, {}, &DialogTemplate::number);
  return found != kTemplates.end() && found->number == number ? &*found : nullptr;
}

}  // namespace

std::string_view DialogTitle(int number) {
  const DialogTemplate* found = Find(number);
  return found == nullptr ? std::string_view() : found->title;
}

bool HasDialogTemplate(int number) {
  return Find(number) != nullptr;
}

}  // namespace carnetel
