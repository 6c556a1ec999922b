// What an import or export does before its engine runs: the checks of the transfer form, and the
// parameters that the engine works with, made of the stored ones and the options of the line and
// stored again.
#pragma once

#include <optional>
#include <string>

#include "cli/cli_session.h"
#include "cli/name_argument.h"
#include "cli/transfer_options.h"
#include "transfer/parameter_file.h"

namespace carnetel {

inline constexpr NamedKind kProfileKind = {"jeu de paramètres", "jeux de paramètres"};

struct TransferSetup {
  TransferDirection direction;
  TransferOptions options;
  ParameterFile parameters;
  TransferFileType type = TransferFileType::kDelimited;
  std::string file;  // the foreign file, as the engine gets it
};

// For the run's directory, which is there. Nothing when the transfer is refused (told, with the
// exit status); refused before the engine runs means that the files of both sides are as before.
[[nodiscard]] std::optional<TransferSetup> PrepareTransfer(CliSession& session,
                                                           const Arguments& arguments,
                                                           TransferDirection direction,
                                                           int* status);

}  // namespace carnetel
