#include "cli/command_line.h"

#include <CLI/App.hpp>
#include <CLI/Config.hpp>
#include <CLI/Formatter.hpp>
#include <algorithm>
#include <charconv>

namespace carnetel {
namespace {

struct Registered {
  const OptionSyntax* syntax;
  CLI::Option* option;
};

std::vector<Registered> RegisterOptions(CLI::App& app, const std::vector<OptionSyntax>& options) {
  std::vector<Registered> registered;
  for (const OptionSyntax& syntax : options) {
    CLI::Option* option = syntax.value.empty() ? app.add_flag(syntax.names)->disable_flag_override()
                                               : app.add_option(syntax.names)->expected(1);
    if (syntax.repeatable) option->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
    registered.push_back({&syntax, option});
  }
  return registered;
}

// Takes words as they come, as many as the command has; how many it needs is looked at afterwards.
// The usual way, a list of any length, would take a word such as "[a,b]" apart.
CLI::Option* RegisterPositionals(CLI::App& app, const Command& command) {
  if (command.most == 0) return nullptr;
  return app.add_option("arguments")
      ->expected(static_cast<int>(command.most))
      ->allow_extra_args(false)
      ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll);
}

struct RegisteredCommand {
  const Command* command;
  CLI::App* app;
  std::vector<Registered> options;
  CLI::Option* positionals;
};

RegisteredCommand RegisterCommand(CLI::App& app, const Command& command) {
  CLI::App* sub = app.add_subcommand(command.name);
  sub->fallthrough();
  return {&command, sub, RegisterOptions(*sub, command.options),
          RegisterPositionals(*sub, command)};
}

void TakeOptions(const std::vector<Registered>& registered, Arguments* arguments) {
  for (const Registered& entry : registered) {
    if (entry.option->count() == 0) continue;
    std::vector<std::string>& values = arguments->options[entry.syntax->LongName()];
    if (!entry.syntax->value.empty()) values = entry.option->results();
  }
}

bool LooksLikeOption(std::string_view word) {
  return word.size() > 1 && word.front() == '-';
}

std::string UnexpectedWord(const std::string& word, bool has_command) {
  if (LooksLikeOption(word)) return "option inconnue : " + word;
  return (has_command ? "argument en trop : " : "commande inconnue : ") + word;
}

// The library's message begins with the name of the option concerned.
std::string MismatchText(const CLI::ParseError& error) {
  const std::string message = error.what();
  const std::string name = message.substr(0, message.find_first_of(": "));
  if (message.find("At Most") != std::string::npos) {
    return "l'option " + name + " est donnée plusieurs fois";
  }
  if (message.find("override") != std::string::npos) {
    return "l'option --" + name + " ne prend pas de valeur";
  }
  return "l'option " + name + " demande une valeur";
}

bool RunParser(CLI::App& app, std::vector<std::string> words, std::string* error) {
  std::ranges::reverse(words);
  try {
    app.parse(std::move(words));
  } catch (const CLI::ParseError& problem) {
    *error = MismatchText(problem);
  }
  return error->empty();
}

void TakeCommand(const RegisteredCommand& registered, CommandLine* line) {
  line->command = registered.command;
  TakeOptions(registered.options, &line->arguments);
  if (registered.positionals != nullptr) {
    line->arguments.positionals = registered.positionals->results();
  }
}

// What is wrong with the words of a command that has actions; empty when nothing is.
std::string ActionError(const Command& command, const Arguments& arguments) {
  const std::string& name = arguments.positionals.front();
  const auto action = std::ranges::find(command.actions, name, &ActionSyntax::name);
  if (action == command.actions.end()) return "action inconnue : " + name;
  const std::string line = command.name + ' ' + name;
  const size_t count = arguments.positionals.size() - 1;
  if (count < action->least) return "il manque un argument : " + line + ' ' + action->usage;
  if (count > action->most) return "argument en trop : " + arguments.positionals[action->most + 1];
  const auto foreign = std::ranges::find_if(arguments.options, [action](const auto& option) {
    return std::ranges::find(action->options, option.first) == action->options.end();
  });
  if (foreign == arguments.options.end()) return {};
  return "l'option " + foreign->first + " n'a pas de sens avec « " + line + " »";
}

void CheckWords(const CLI::App& app, CommandLine* line) {
  if (line->help || line->version) return;
  // "--", behind which nothing is an option, is among the words left over.
  std::vector<std::string> unexpected = app.remaining(true);
  std::erase(unexpected, "--");
  if (!unexpected.empty()) {
    line->error = UnexpectedWord(unexpected.front(), line->command != nullptr);
  } else if (line->command == nullptr) {
    line->error = "il manque une commande";
  } else if (line->arguments.positionals.size() < line->command->least) {
    line->error = "il manque un argument : " + line->command->name + " " + line->command->usage;
  } else if (!line->command->actions.empty()) {
    line->error = ActionError(*line->command, line->arguments);
  }
}

// A seat is nothing without the folder of its files, and the other way round.
void TakeSeat(const Arguments& options, CommandLine* line) {
  const std::optional<std::string> seat = options.Value("--seat");
  const std::optional<std::string> folder = options.Value("--shared-dir");
  if (!seat && !folder) return;
  if (!seat || !folder || folder->empty()) {
    line->error = "--seat et --shared-dir vont ensemble";
    return;
  }
  const char* const end = seat->data() + seat->size();
  const auto [stop, error] = std::from_chars(seat->data(), end, line->global.seat);
  constexpr int32_t kMostSeats = 0xFFFF;
  const bool valid = error == std::errc() && stop == end && line->global.seat >= 1 &&
                     line->global.seat <= kMostSeats;
  if (!valid) line->error = "--seat demande un numéro de poste, 1 ou plus";
  line->global.shared_dir = folder->ends_with('/') ? *folder : *folder + '/';
}

void TakeGlobal(const Arguments& options, CommandLine* line) {
  line->global.directory = options.Value("--directory");
  line->global.profile = options.Value("--profile");
  line->global.parameters = options.Value("--parameters");
  line->global.json = options.Has("--json");
  line->global.yes = options.Has("--yes");
  line->global.quiet = options.Has("--quiet");
  line->help = options.Has("--help");
  line->version = options.Has("--version");
}

const std::vector<OptionSyntax>& ScriptSyntax() {
  static const std::vector<OptionSyntax> options = {
      {"-h,--help", "", "affiche cette aide"},
  };
  return options;
}

CommandLine Parse(const std::vector<std::string>& words, const std::vector<OptionSyntax>& options,
                  std::span<const Command> commands) {
  CommandLine line;
  // Before anything can fail: an error has to come out in the form that was asked for.
  line.global.json = std::ranges::find(words, "--json") != words.end();
  CLI::App app;
  app.set_help_flag();
  app.allow_extras();
  app.require_subcommand(0, 1);
  const std::vector<Registered> global = RegisterOptions(app, options);
  std::vector<RegisteredCommand> registered;
  for (const Command& command : commands) registered.push_back(RegisterCommand(app, command));
  if (!RunParser(app, words, &line.error)) return line;
  Arguments taken;
  TakeOptions(global, &taken);
  TakeGlobal(taken, &line);
  TakeSeat(taken, &line);
  if (!line.error.empty()) return line;
  for (const RegisteredCommand& command : registered) {
    if (command.app->parsed()) TakeCommand(command, &line);
  }
  CheckWords(app, &line);
  return line;
}

}  // namespace

const std::vector<OptionSyntax>& GlobalSyntax() {
  static const std::vector<OptionSyntax> options = {
      {"-d,--directory", "CHEMIN",
       "le carnetel : chemin de son fichier .DAN, avec ou sans l'extension ; par défaut le dernier "
       "ouvert (File1 du profil), sinon CARNETEL dans le dossier du programme"},
      {"--seat", "N",
       "poste de travail N (1 ou plus) d'un carnetel que plusieurs postes partagent"},
      {"--shared-dir", "DOSSIER", "avec --seat : le dossier des fichiers propres à ce poste"},
      {"--profile", "FICHIER", "profil de l'utilisateur (fichier INI) à la place du sien"},
      {"--parameters", "FICHIER",
       "fichier des paramètres de transfert (.TRS) à la place de celui de l'installation"},
      {"--json", "", "un objet JSON par ligne au lieu du texte"},
      {"--yes", "", "répond oui à toutes les questions"},
      {"--quiet", "", "ni progression ni messages d'information"},
      {"-h,--help", "", "affiche cette aide, ou celle d'une commande"},
      {"--version", "", "affiche la version"},
  };
  return options;
}

CommandLine ParseToolLine(const std::vector<std::string>& words,
                          std::span<const Command> commands) {
  return Parse(words, GlobalSyntax(), commands);
}

CommandLine ParseScriptCommand(const std::vector<std::string>& words,
                               std::span<const Command> commands) {
  // Only the command that is meant: scripts have thousands of lines.
  const auto named = std::ranges::find(commands, words.front(), &Command::name);
  if (named == commands.end()) return Parse(words, ScriptSyntax(), {});
  return Parse(words, ScriptSyntax(),
               commands.subspan(static_cast<size_t>(named - commands.begin()), 1));
}

}  // namespace carnetel
