#include "cli/transfer_options.h"

#include <algorithm>
#include <array>
#include <charconv>

#include "base/code_page.h"
#include "shell/field_names.h"
#include "transfer/dbase.h"
#include "transfer/dbase_format.h"
#include "transfer/delimited.h"
#include "transfer/fixed.h"
#include "transfer/separator.h"

namespace carnetel {
namespace {

// Offsets, positions and sizes in a fixed record have three digits.
constexpr int16_t kLargestNumber = 999;

// In the order of the values of TransferFileType.
constexpr std::array<std::string_view, 5> kTypeWords = {"delimited", "fixed", "directory", "dbase3",
                                                        "dbase4"};

std::string Quoted(const std::string& text) {
  return "« " + text + " »";
}

std::optional<int16_t> NumberOf(std::string_view text) {
  int16_t number = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  const bool whole = error == std::errc() && end == text.data() + text.size();
  return whole && number >= 0 && number <= kLargestNumber ? std::optional(number) : std::nullopt;
}

std::string TakeNumber(const Arguments& arguments, const std::string& option,
                       std::optional<int16_t>* number) {
  const std::optional<std::string> text = arguments.Value(option);
  if (!text) return {};
  *number = NumberOf(*text);
  return *number ? std::string() : option + " demande un nombre de 0 à 999";
}

// The field of that name among those that a type of file has.
template <class Fields>
std::string TakeField(const std::string& option, const std::string& name, const Fields& fields,
                      int* field) {
  const std::optional<int> found = FindField(name);
  if (!found || std::ranges::find(fields, *found) == fields.end()) {
    return option + " : " + Quoted(name) + " n'est pas un champ de ces fichiers";
  }
  *field = *found;
  return {};
}

std::string TakeRanks(const Arguments& arguments, TransferOptions* options) {
  const std::optional<std::string> columns = arguments.Value("--columns");
  if (!columns) return {};
  std::vector<std::optional<int>>& ranks = options->ranks.emplace();
  std::string_view rest = *columns;
  for (;;) {
    const size_t comma = std::min(rest.find(','), rest.size());
    const std::string name(rest.substr(0, comma));
    std::optional<int> field;
    if (name != "-") {
      std::string error = TakeField("--columns", name, kDelimitedFields, &field.emplace());
      if (!error.empty()) return error;
      const bool twice = std::ranges::find(ranks, field) != ranks.end();
      if (twice) return "--columns : " + name + " est donné deux fois";
    }
    ranks.push_back(field);
    if (comma == rest.size()) return {};
    rest.remove_prefix(comma + 1);
  }
}

// A separator as the form keeps it: in the form it shows.
std::string TakeSeparator(const Arguments& arguments, const std::string& option,
                          std::optional<std::string>* kept) {
  const std::optional<std::string> text = arguments.Value(option);
  if (!text) return {};
  const bool ascii =
      std::ranges::all_of(*text, [](char byte) { return byte >= ' ' && byte < 0x7F; });
  if (!ascii || text->size() > TransferProfile::kMaxSeparator) {
    return option + " : au plus 8 caractères sans accent ; un octet s'écrit par exemple 0Dh";
  }
  const std::string shown = ParseSeparator(*text, SeparatorForm::kDisplay);
  *kept = shown.size() <= TransferProfile::kMaxSeparator ? shown : *text;
  return {};
}

template <class Entries>
bool HasField(const Entries& entries, int field) {
  return std::ranges::any_of(entries, [field](const auto& entry) { return entry.field == field; });
}

// FIELD@POSITION:SIZE
std::string TakePlaces(const Arguments& arguments, TransferOptions* options) {
  for (const std::string& text : arguments.Values("--place")) {
    const size_t at = text.find('@');
    const size_t colon = at == std::string::npos ? at : text.find(':', at);
    std::optional<int16_t> position;
    std::optional<int16_t> size;
    if (colon != std::string::npos) {
      position = NumberOf(std::string_view(text).substr(at + 1, colon - at - 1));
      size = NumberOf(std::string_view(text).substr(colon + 1));
    }
    if (!position || !size) {
      return "--place : " + Quoted(text) + " n'est pas de la forme CHAMP@POSITION:TAILLE";
    }
    const std::string name = text.substr(0, at);
    TransferOptions::Place place{0, {*position, *size}};
    std::string error = TakeField("--place", name, kFixedFields, &place.field);
    if (!error.empty()) return error;
    if (HasField(options->places, place.field)) return "--place : " + name + " est donné deux fois";
    options->places.push_back(place);
  }
  return {};
}

// What stands behind the ':' of a column; true when it is one of the three types.
bool TakeColumnType(std::string_view letter, DbaseType* type) {
  constexpr std::string_view kLetters = "CND";
  const size_t found = letter.size() == 1 ? kLetters.find(letter) : std::string_view::npos;
  if (found != std::string_view::npos) *type = static_cast<DbaseType>(found);
  return found != std::string_view::npos;
}

// NAME[:C|N|D] of a table that is written.
std::string TakeNewColumn(const std::string& text, TransferOptions::Column* column) {
  const size_t colon = std::min(text.find(':'), text.size());
  column->name = text.substr(0, colon);
  const bool typed = colon < text.size();
  if (typed && !TakeColumnType(std::string_view(text).substr(colon + 1), &column->type)) {
    return "--column : le type d'une colonne est C, N ou D, non " + Quoted(text.substr(colon + 1));
  }
  const OemConversion name = OemFromUtf8(column->name);
  const bool fits = !column->name.empty() && name.text.size() <= DbaseDescriptor::kMaxName;
  if (fits && name.refused.empty()) return {};
  return "--column : un nom de colonne a de 1 à 10 caractères du jeu OEM, non " +
         Quoted(column->name);
}

// FIELD=COLUMN of either direction.
std::string TakeColumns(const Arguments& arguments, const std::string& option,
                        TransferOptions* options) {
  for (const std::string& text : arguments.Values(option)) {
    const size_t equals = text.find('=');
    if (equals == std::string::npos) {
      return option + " : " + Quoted(text) + " n'est pas de la forme CHAMP=COLONNE";
    }
    TransferOptions::Column column;
    const std::string field = text.substr(0, equals);
    std::string error = TakeField(option, field, kDbaseFields, &column.field);
    column.name = text.substr(equals + 1);
    if (error.empty() && option == "--column") {
      error = TakeNewColumn(text.substr(equals + 1), &column);
    }
    if (!error.empty()) return error;
    if (HasField(options->columns, column.field)) {
      return option + " : " + field + " est donné deux fois";
    }
    options->columns.push_back(column);
  }
  return {};
}

std::string TakeWords(const Arguments& arguments, TransferOptions* options) {
  options->file = arguments.positionals.front();
  options->replace = arguments.Has("--replace");
  options->load = arguments.Value("--load");
  if (const std::optional<std::string> word = arguments.Value("--type")) {
    const auto found = std::ranges::find(kTypeWords, *word);
    if (found == kTypeWords.end()) return "--type : " + Quoted(*word) + " n'est pas un type connu";
    options->type = static_cast<TransferFileType>(found - kTypeWords.begin());
  }
  const std::string charset = arguments.Value("--charset").value_or("oem");
  if (charset != "oem" && charset != "ansi") return "--charset demande oem ou ansi";
  if (charset == "ansi") options->charset = CharacterSet::kAnsi;
  return {};
}

}  // namespace

std::string ParseTransferOptions(const Arguments& arguments, TransferOptions* options) {
  std::string error = TakeWords(arguments, options);
  if (error.empty()) error = TakeRanks(arguments, options);
  if (error.empty()) {
    error = TakeSeparator(arguments, "--field-separator", &options->field_separator);
  }
  if (error.empty()) error = TakeSeparator(arguments, "--card-separator", &options->card_separator);
  if (error.empty()) error = TakeNumber(arguments, "--offset", &options->offset);
  if (error.empty()) error = TakeNumber(arguments, "--size", &options->size);
  if (error.empty()) error = TakePlaces(arguments, options);
  if (error.empty()) error = TakeColumns(arguments, "--map", options);
  if (error.empty()) error = TakeColumns(arguments, "--column", options);
  return error;
}

std::string OptionOfOtherType(const Arguments& arguments, TransferFileType type) {
  struct Use {
    std::string_view option;
    bool used;
  };
  const bool delimited = type == TransferFileType::kDelimited;
  const bool fixed = type == TransferFileType::kFixed;
  const Use uses[] = {{"--columns", delimited},
                      {"--field-separator", delimited},
                      {"--card-separator", delimited},
                      {"--offset", fixed},
                      {"--size", fixed},
                      {"--place", fixed},
                      {"--map", IsDbase(type)},
                      {"--column", IsDbase(type)}};
  for (const Use& use : uses) {
    if (!use.used && arguments.Has(use.option)) return std::string(use.option);
  }
  return {};
}

std::string TypeWord(TransferFileType type) {
  return std::string(kTypeWords[static_cast<size_t>(type)]);
}

std::vector<OptionSyntax> TransferOptionSyntax(TransferDirection direction) {
  const bool imports = direction == TransferDirection::kImport;
  std::vector<OptionSyntax> options = {
      {"--type", "TYPE",
       "type du fichier : delimited (texte avec séparateurs), fixed (fiches de taille fixe), "
       "directory (un autre carnetel), dbase3 ou dbase4 ; par défaut d'après l'extension .DAN ou "
       ".DBF, sinon le type du dernier transfert"},
      {"--charset", "JEU", "jeu de caractères du fichier : oem (par défaut) ou ansi"},
      {"--replace", "",
       imports ? "remplace toutes les fiches existantes (demande confirmation)"
               : "remplace le fichier au lieu de le compléter (demande confirmation)"},
      {"--load", "NOM", "charge d'abord ce jeu de paramètres (voir « parameters »)"},
      {"--columns", "CHAMP,…",
       "delimited : champs d'une ligne, dans l'ordre ; « - » laisse un rang vide"},
      {"--field-separator", "TEXTE", "delimited : séparateur de champs, par exemple « ; » ou TAB"},
      {"--card-separator", "TEXTE", "delimited : séparateur de fiches, par exemple CRLF ou LF"},
      {"--offset", "N", "fixed : position de la première fiche dans le fichier"},
      {"--size", "N", "fixed : taille d'une fiche"},
      {"--place", "CHAMP@POSITION:TAILLE",
       "fixed, répétable : place d'un champ dans la fiche ; les champs non cités n'en ont plus",
       true},
  };
  if (imports) {
    options.push_back({"--map", "CHAMP=COLONNE",
                       "dBase, répétable : colonne d'un champ, par son nom ou son numéro à partir "
                       "de 1 ; les champs non cités n'en ont plus",
                       true});
    options.push_back({"--dry-run", "",
                       "ne change rien : compte les fiches qui seraient ajoutées et nomme les "
                       "lignes coupées, vidées ou refusées"});
  } else {
    options.push_back({"--column", "CHAMP=NOM[:C|N|D]",
                       "dBase, répétable : nom et type de la colonne d'un champ (C par défaut) ; "
                       "les champs non cités n'en ont plus. Sans --column, les colonnes du dernier "
                       "transfert, sinon une par champ",
                       true});
  }
  return options;
}

}  // namespace carnetel
