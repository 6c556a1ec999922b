// The command about the composition of the printed list.

#include <algorithm>
#include <ostream>

#include "cli/card_arguments.h"
#include "cli/commands.h"
#include "printing/layout_form.h"
#include "printing/list_layout.h"
#include "shell/field_names.h"

namespace carnetel {
namespace {

constexpr int kWidthText = 37;

struct Column {
  uint32_t choice = 0;
  uint32_t width = 0;
};

// FIELD:WIDTH; nothing when it is none (told).
std::optional<Column> ParseColumn(CliSession& session, const std::string& word) {
  const size_t colon = std::min(word.find(':'), word.size());
  const std::string name = word.substr(0, colon);
  const std::optional<int> field = FindField(name);
  const uint32_t choice = field ? ChoiceOfField(*field) : 0;
  if (choice == 0) {
    session.WrongUsage("« " + name + " » n'est pas un champ de la liste imprimée");
    return {};
  }
  const std::string_view rest = std::string_view(word).substr(colon);
  const auto width = ParseNumber(rest.substr(std::min<size_t>(rest.size(), 1)));
  if (width && *width >= 1 && *width <= LayoutForm::kMaxWidth) return Column{choice, *width};
  session.WrongUsage("« " + word + " » n'est pas de la forme CHAMP:LARGEUR, de 1 à 999");
  return {};
}

// Rows that are not among the columns are empty.
void Fill(LayoutForm& form, const std::vector<Column>& columns) {
  for (size_t row = 0; row < kMaxColumns; ++row) {
    const Column column = row < columns.size() ? columns[row] : Column();
    form.Choose(row, column.choice);
    form.TypeWidth(row, std::to_string(column.width));
  }
}

int Set(CliSession& session, const std::vector<std::string>& words) {
  std::vector<Column> columns;
  for (const std::string& word : words) {
    const std::optional<Column> column = ParseColumn(session, word);
    if (!column) return kWrongUsage;
    columns.push_back(*column);
  }
  Directory* directory = session.Open();
  if (directory == nullptr) return kRefused;
  LayoutFile file(session.files(), directory->paths().Of(".LST"));
  LayoutForm form(file);
  Fill(form, columns);
  if (!form.Save()) return session.Fail("la composition n'a pas pu être écrite");
  if (form.ColumnsWidth() > static_cast<int>(kMaxListLine)) {
    session.messages().Warn(form.WidthText() + " ; une ligne imprimée en a " +
                            std::to_string(kMaxListLine) + " au plus, le reste est coupé");
  }
  return kDone;
}

LayoutView ViewOf(const LayoutForm& form) {
  LayoutView view;
  for (size_t row = 0; row < kMaxColumns && form.choice(row) != 0; ++row) {
    const uint32_t width = ParseNumber(form.width_text(row)).value_or(0);
    view.columns.emplace_back(FieldName(FieldOfChoice(form.choice(row))), width);
  }
  // The blanks between no columns are none.
  view.width = std::max(form.ColumnsWidth(), 0);
  return view;
}

int Show(CliSession& session, bool factory) {
  Directory* directory = session.Open();
  if (directory == nullptr) return kRefused;
  LayoutFile file(session.files(), directory->paths().Of(".LST"));
  LayoutForm form(file);
  if (factory) form.Default();
  const LayoutView view = ViewOf(form);
  if (session.options().json) {
    session.out() << LayoutLine(view) << '\n';
    return kDone;
  }
  int number = 0;
  for (const auto& [field, width] : view.columns) {
    session.out() << FormatPrintf("%2d  %-8s %3d\n", {++number, field, width});
  }
  session.out() << FormatText(kWidthText, view.width) << '\n';
  return kDone;
}

int RunLayout(CliSession& session, const Arguments& arguments) {
  const std::vector<std::string>& words = arguments.positionals;
  if (words.front() == "show") return Show(session, arguments.Has("--factory"));
  return Set(session, {words.begin() + 1, words.end()});
}

std::vector<ActionSyntax> LayoutActions() {
  return {
      {.name = "show",
       .help = "les colonnes, leur largeur et celle de la liste",
       .options = {"--factory"}},
      {.name = "set",
       .usage = "CHAMP:LARGEUR…",
       .help = "ces colonnes, douze au plus, de 1 à 999 caractères, à la place des autres",
       .least = 1,
       .most = kMaxColumns},
  };
}

}  // namespace

Command LayoutCommand() {
  return {.name = "layout",
          .summary = "Montre ou change les colonnes de la liste imprimée",
          .details =
              "CHAMP est un nom court (Prenom Nom Ste1 Ste2 Adr1 Adr2 CP Ville Pays Tel1 "
              "Tel2 Fax Modem Ref1 à Ref6 Notes), sans égard aux majuscules. Une ligne "
              "imprimée a 128 caractères au plus ; le reste est coupé.",
          .usage = "ACTION [ARGUMENTS]",
          .least = 1,
          .most = kMaxColumns + 1,
          .options = {{"--factory", "", "les colonnes d'un nouveau carnetel"}},
          .actions = LayoutActions(),
          .run = RunLayout};
}

}  // namespace carnetel
