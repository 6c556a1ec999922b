#include "cli/help_text.h"

#include <algorithm>

#include "base/utf8.h"
#include "cli/command_line.h"

namespace carnetel {
namespace {

constexpr size_t kHelpWidth = 80;
constexpr size_t kIndent = 2;
constexpr size_t kWidestTerm = 26;

// Stands for a blank at which no line is broken: within an option's term, and where French sets a
// blank in front of a sign.
constexpr char kFixedBlank = '\x01';

std::string WithFixedBlanks(std::string text) {
  for (const std::string_view sign : {" ;", " :", " »", "« "}) {
    for (size_t at = text.find(sign); at != std::string::npos; at = text.find(sign, at + 1)) {
      text[at + sign.find(' ')] = kFixedBlank;
    }
  }
  return text;
}

// `text` broken at blanks into lines of at most `width` characters; a line end starts a new one.
std::vector<std::string> Wrap(const std::string& text, size_t width) {
  const std::string fixed = WithFixedBlanks(text);
  std::string_view rest = fixed;
  std::vector<std::string> lines(1);
  while (!rest.empty()) {
    const size_t end = std::min(rest.find_first_of(" \n"), rest.size());
    const std::string_view word = rest.substr(0, end);
    const size_t taken = CountCharacters(lines.back());
    if (taken != 0 && taken + 1 + CountCharacters(word) > width) lines.emplace_back();
    if (!lines.back().empty()) lines.back() += ' ';
    lines.back() += word;
    if (end < rest.size() && rest[end] == '\n') lines.emplace_back();
    rest.remove_prefix(std::min(end + 1, rest.size()));
  }
  for (std::string& line : lines) std::ranges::replace(line, kFixedBlank, ' ');
  return lines;
}

std::string Paragraphs(const std::string& text) {
  std::string wrapped;
  for (const std::string& line : Wrap(text, kHelpWidth)) wrapped += line + '\n';
  return wrapped;
}

struct Row {
  std::string term;
  std::string text;
};

// Two columns; the second starts at one place and is wrapped within it.
std::string Table(const std::string& title, const std::vector<Row>& rows) {
  size_t term_width = 0;
  for (const Row& row : rows) term_width = std::max(term_width, CountCharacters(row.term));
  const size_t column = kIndent + std::min(term_width, kWidestTerm) + 2;
  std::string table = '\n' + title + " :\n";
  for (const Row& row : rows) {
    std::string line = std::string(kIndent, ' ') + row.term;
    for (const std::string& piece : Wrap(row.text, kHelpWidth - column)) {
      if (CountCharacters(line) + 2 > column) {
        table += line + '\n';
        line.clear();
      }
      line.append(column - CountCharacters(line), ' ');
      table += line + piece + '\n';
      line.clear();
    }
  }
  return table;
}

std::string OptionTerm(const OptionSyntax& option) {
  std::string term = option.names;
  const size_t comma = term.find(',');
  if (comma != std::string::npos) term.insert(comma + 1, " ");
  return option.value.empty() ? term : term + ' ' + option.value;
}

std::string OptionTable(const std::string& title, const std::vector<OptionSyntax>& options) {
  std::vector<Row> rows;
  rows.reserve(options.size());
  for (const OptionSyntax& option : options) rows.push_back({OptionTerm(option), option.help});
  return rows.empty() ? std::string() : Table(title, rows);
}

std::string BracketedTerm(const OptionSyntax& option) {
  std::string term = OptionTerm(option);
  std::ranges::replace(term, ' ', kFixedBlank);
  return '[' + term + ']';
}

std::string CommandUsage(const Command& command) {
  std::string usage = "Usage : carnetel-cli [OPTIONS] " + command.name;
  if (!command.usage.empty()) usage += ' ' + command.usage;
  // Which action takes which option is told with the actions.
  if (!command.actions.empty()) return usage;
  for (const OptionSyntax& option : command.options) usage += ' ' + BracketedTerm(option);
  return usage;
}

std::string ActionTerm(const Command& command, const ActionSyntax& action) {
  std::string term = action.name;
  if (!action.usage.empty()) term += ' ' + action.usage;
  for (const OptionSyntax& option : command.options) {
    const bool taken = std::ranges::find(action.options, option.LongName()) != action.options.end();
    if (taken) term += " [" + OptionTerm(option) + ']';
  }
  return term;
}

std::string ActionTable(const Command& command) {
  std::vector<Row> rows;
  rows.reserve(command.actions.size());
  for (const ActionSyntax& action : command.actions) {
    rows.push_back({ActionTerm(command, action), action.help});
  }
  return rows.empty() ? std::string() : Table("Actions", rows);
}

}  // namespace

std::string ShortHelp(const Command* command) {
  if (command != nullptr) {
    return Paragraphs(CommandUsage(*command)) + "« carnetel-cli " + command->name +
           " --help » décrit la commande.\n";
  }
  return "Usage : carnetel-cli [OPTIONS] COMMANDE [ARGUMENTS]\n"
         "« carnetel-cli --help » décrit les options et les commandes.\n";
}

std::string ToolHelp(std::span<const Command> commands) {
  std::vector<Row> rows;
  rows.reserve(commands.size());
  for (const Command& command : commands) rows.push_back({command.name, command.summary});
  return "Usage : carnetel-cli [OPTIONS] COMMANDE [ARGUMENTS]\n\n" +
         Paragraphs(
             "Le carnetel sans fenêtre : crée, consulte et modifie un répertoire de "
             "correspondants depuis un terminal ou un script.") +
         Table("Commandes", rows) + OptionTable("Options", GlobalSyntax()) + '\n' +
         Paragraphs(
             "« carnetel-cli COMMANDE --help » décrit une commande.\n"
             "Code de retour : 0 fait, 1 refus ou échec, 2 mauvais usage.");
}

std::string CommandHelp(const Command& command) {
  std::string help = Paragraphs(CommandUsage(command)) + '\n' + Paragraphs(command.summary + '.');
  if (!command.details.empty()) help += '\n' + Paragraphs(command.details);
  help += ActionTable(command);
  help += OptionTable("Options de la commande", command.options);
  return help + "\n« carnetel-cli --help » décrit les options générales.\n";
}

}  // namespace carnetel
