#include "base/utf8.h"
#include "cli/commands.h"
#include "tests/cli/cli_testing.h"

namespace carnetel {
namespace {

using ToolLine = CliTest;

std::string FirstLine(const std::string& text) {
  return text.substr(0, text.find('\n'));
}

TEST_F(ToolLine, WrongUsageIsToldInFrench) {
  const std::vector<std::pair<Words, std::string>> lines = {
      {{}, "il manque une commande"},
      {{"-d", "x"}, "il manque une commande"},
      {{"foo"}, "commande inconnue : foo"},
      {{"--foo", "list"}, "option inconnue : --foo"},
      {{"list", "--foo"}, "option inconnue : --foo"},
      {{"list", "foo"}, "argument en trop : foo"},
      {{"group"}, "il manque un argument : group ACTION [ARGUMENTS]"},
      {{"group", "foo"}, "action inconnue : foo"},
      {{"group", "list", "foo"}, "argument en trop : foo"},
      {{"group", "create"}, "il manque un argument : group create NOM"},
      {{"group", "list", "--whole"}, "l'option --whole n'a pas de sens avec « group list »"},
      {{"describe", "a", "b"}, "argument en trop : b"},
      {{"show"}, "il manque un argument : show LIGNE…"},
      {{"edit", "1"}, "il manque un argument : edit LIGNE CHAMP=VALEUR…"},
      {{"list", "--letter"}, "l'option --letter demande une valeur"},
      {{"-d"}, "l'option --directory demande une valeur"},
      {{"list", "--letter", "A", "--letter", "B"}, "l'option --letter est donnée plusieurs fois"},
      {{"--json=non", "list"}, "l'option --json ne prend pas de valeur"},
      {{"add", "Nom"}, "« Nom » n'est pas de la forme CHAMP=VALEUR"},
      {{"add", "Nam=x"}, "« Nam » n'est pas un champ"},
      {{"find", "#31=x"}, "« #31 » n'est pas un champ"}};
  for (const auto& [words, reason] : lines) {
    const CliOutcome outcome = Run(words);
    EXPECT_EQ(outcome.status, 2) << reason;
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(FirstLine(outcome.err), "Erreur : " + reason);
  }
}

TEST_F(ToolLine, TheHelpOfACommandWithActionsTellsTheirWordsAndOptions) {
  const std::string help = Run({"group", "--help"}).out;
  EXPECT_TRUE(help.starts_with("Usage : carnetel-cli [OPTIONS] group ACTION [ARGUMENTS]\n"))
      << help;
  EXPECT_NE(help.find("\nActions :\n"), std::string::npos);
  EXPECT_NE(help.find("\n  rename NOM NOUVEAU [--whole] [--members]\n"), std::string::npos) << help;
  EXPECT_NE(help.find("\n  merge NOM [--from NOM] "), std::string::npos) << help;
}

TEST_F(ToolLine, ErrorsOfTheLineHaveAJsonFormToo) {
  EXPECT_EQ(Run({"--json", "foo"}).err, "{\"error\":\"commande inconnue : foo\"}\n");
  EXPECT_EQ(Run({"--json", "list", "--letter"}).err,
            "{\"error\":\"l'option --letter demande une valeur\"}\n");
}

TEST_F(ToolLine, WordsReachTheCommandAsTheyAre) {
  Done({"create"});
  EXPECT_EQ(Done({"add", "--", "Nom=--x", "Ville=[a,b]"}), "1\n");
  EXPECT_NE(Done({"show", "1"}).find("Ville    [a,b]"), std::string::npos);
  // A list in brackets is one word, not two paths.
  EXPECT_EQ(Run({"--yes", "destroy", "[/d/CLIENTS,/d/CLIENTS]"}).status, 1);
  EXPECT_TRUE(files_.Exists("/d/CLIENTS.DAN"));
  EXPECT_EQ(Done({"describe", "list"}), "");
  EXPECT_EQ(Done({"describe", ""}), "");
}

TEST_F(ToolLine, OptionsOfTheRunMayStandBehindTheCommand) {
  EXPECT_EQ(Run({"create", "--quiet", "--directory", "/d/CLIENTS.DAN"}).err, "");
  EXPECT_EQ(Run({"check", "-d", "/d/CLIENTS", "--json"}).out, "{\"consistent\":true}\n");
}

TEST_F(ToolLine, APathThatNamesNoDirectoryIsRefused) {
  for (const char* path : {"", "/d/"}) {
    const CliOutcome outcome = Run({"-d", path, "create"});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_NE(outcome.err.find("ne nomme pas un carnetel"), std::string::npos);
  }
  EXPECT_TRUE(Family().empty());
}

TEST_F(ToolLine, VersionIsPrinted) {
  EXPECT_EQ(Run({"--version"}).out, "carnetel-cli 9.9\n");
  EXPECT_EQ(Run({"list", "--version"}).out, "carnetel-cli 9.9\n");
}

TEST_F(ToolLine, EveryHelpIsFrenchAndFitsIntoEightyColumns) {
  std::vector<Words> helps = {{"--help"}, {"-h"}};
  for (const Command& command : AllCommands()) helps.push_back({command.name, "--help"});
  for (const Words& words : helps) {
    const CliOutcome outcome = Run(words);
    EXPECT_EQ(outcome.status, 0);
    EXPECT_TRUE(outcome.out.starts_with("Usage : carnetel-cli [OPTIONS] ")) << words.front();
    for (const char* english : {"Options:", "Positionals", "REQUIRED", "SUBCOMMAND", "Print"}) {
      EXPECT_EQ(outcome.out.find(english), std::string::npos) << words.front();
    }
    std::istringstream lines(outcome.out);
    for (std::string line; std::getline(lines, line);) {
      EXPECT_LE(CountCharacters(line), 80U) << line;
      EXPECT_FALSE(line.ends_with(' ')) << line;
    }
  }
}

TEST_F(ToolLine, TheHelpNamesEveryCommandAndItsOptions) {
  const std::string help = Run({"--help"}).out;
  for (const Command& command : AllCommands()) {
    EXPECT_NE(help.find("\n  " + command.name + ' '), std::string::npos) << command.name;
    const std::string own = Run({command.name, "--help"}).out;
    for (const OptionSyntax& option : command.options) {
      EXPECT_NE(own.find("\n  " + option.LongName()), std::string::npos) << option.names;
    }
    for (const ActionSyntax& action : command.actions) {
      EXPECT_NE(own.find("\n  " + action.name + ' '), std::string::npos) << action.name;
    }
  }
  EXPECT_EQ(AllCommands().size(), 27U);
}

}  // namespace
}  // namespace carnetel
