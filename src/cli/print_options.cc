#include "cli/print_options.h"

#include <algorithm>
#include <array>

#include "cli/card_arguments.h"

namespace carnetel {
namespace {

constexpr std::string_view kStandardOutput = "-";

// In the order of the values of Presentation and PrintScope.
constexpr std::array<std::string_view, 2> kModes = {"list", "card"};
constexpr std::array<std::string_view, 3> kScopes = {"file", "selection", "current"};

// A value that is one of some words: its number among them.
template <class Words, class Value>
std::string TakeWord(const Arguments& arguments, const std::string& option, const Words& words,
                     Value* value) {
  const std::optional<std::string> given = arguments.Value(option);
  if (!given) return {};
  const auto* const found = std::ranges::find(words, *given);
  if (found != words.end()) {
    *value = static_cast<Value>(found - words.begin());
    return {};
  }
  std::string known;
  for (const std::string_view word : words)
    known += (known.empty() ? "" : ", ") + std::string(word);
  return option + " : « " + *given + " » n'est pas parmi " + known;
}

struct Range {
  int least;
  int most;
};

template <class Value>
std::string TakeNumber(const Arguments& arguments, const std::string& option, const Range& range,
                       Value* value) {
  const std::optional<std::string> given = arguments.Value(option);
  if (!given) return {};
  const std::optional<uint32_t> number = ParseNumber(*given);
  if (!number || *number < static_cast<uint32_t>(range.least) ||
      *number > static_cast<uint32_t>(range.most)) {
    return option + " demande un nombre de " + std::to_string(range.least) + " à " +
           std::to_string(range.most);
  }
  *value = static_cast<Value>(*number);
  return {};
}

std::string TakeRow(const Arguments& arguments, PrintOrder* order) {
  order->row = arguments.Value("--row");
  if (!order->row) return {};
  const bool other = arguments.Has("--scope") && order->setup.scope != PrintScope::kCurrent;
  order->setup.scope = PrintScope::kCurrent;
  return other ? "--row n'a de sens qu'avec --scope current" : std::string();
}

std::string TakeOutput(const Arguments& arguments, bool json, PrintOrder* order) {
  const std::optional<std::string> text = arguments.Value("--output");
  const std::optional<std::string> pdf = arguments.Value("--pdf");
  if (text && pdf) return "--output et --pdf s'excluent";
  if (!text && !pdf) return {};
  order->path = text ? *text : *pdf;
  order->output = text ? PrintOutput::kTextFile : PrintOutput::kPdf;
  if (order->path.empty()) return std::string(text ? "--output" : "--pdf") + " demande un fichier";
  if (order->path != kStandardOutput) return {};
  if (pdf) return "--pdf demande un fichier ; la sortie standard est pour --output";
  if (json) return "--json et --output - s'excluent : la sortie standard est au texte imprimé";
  order->output = PrintOutput::kStandardOutput;
  return {};
}

}  // namespace

std::vector<OptionSyntax> PrintOptionSyntax() {
  return {
      {"--mode", "list|card", "une ligne par fiche (voir « layout »), ou la fiche entière"},
      {"--scope", "file|selection|current",
       "toutes les fiches, les fiches marquées, ou la fiche courante de la liste"},
      {"--row", "LIGNE", "la fiche de cette ligne (--scope current)"},
      {"--group", "NOM", "les fiches de ce groupe, avec ses marques"},
      {"--output", "FICHIER",
       "dans un fichier texte (page de codes 850) ; « - » : sur la sortie standard, en UTF-8"},
      {"--pdf", "FICHIER", "dans un fichier PDF"},
      {"--lines", "N", "lignes par page, de 1 à 127"},
      {"--top", "N", "marge du haut, en centièmes de centimètre ou de pouce"},
      {"--left", "N", "marge de gauche, de même"},
  };
}

std::string ParsePrintOptions(const Arguments& arguments, bool json, MeasureUnit unit,
                              PrintOrder* order) {
  PageSetup& setup = order->setup;
  const Range margins = {0, MaxMargin(unit)};
  const std::array<std::string, 7> errors = {
      TakeWord(arguments, "--mode", kModes, &setup.presentation),
      TakeWord(arguments, "--scope", kScopes, &setup.scope),
      TakeRow(arguments, order),
      TakeOutput(arguments, json, order),
      TakeNumber(arguments, "--lines", {1, kMaxLines}, &setup.lines),
      TakeNumber(arguments, "--top", margins, &setup.top_margin),
      TakeNumber(arguments, "--left", margins, &setup.left_margin),
  };
  const auto* const wrong =
      std::ranges::find_if(errors, [](const std::string& error) { return !error.empty(); });
  return wrong == errors.end() ? std::string() : *wrong;
}

}  // namespace carnetel
