// The commands to import and to export: shows the form of transfers with everything that opens
// above it, and runs the engine of the chosen type on the directory.
#pragma once

#include <optional>
#include <string>

#include "shell/dialog_host.h"
#include "shell/session.h"
#include "transfer/parameter_file.h"
#include "transfer/transfer_form.h"

namespace carnetel {

class TransferCommand {
 public:
  // `charset`: the character set of foreign files, kept from one transfer to the next.
  TransferCommand(Session& session, DialogHost& dialogs, CharacterSet* charset);

  // An import into the session's directory closes it, since the engine opens it for itself: the
  // caller opens it again.
  void Run(TransferDirection direction);

 private:
  [[nodiscard]] TransferCallbacks Callbacks(TransferDirection direction);
  [[nodiscard]] std::optional<std::string> Browse(TransferCallbacks::Filter filter);
  void SetParameters(TransferForm& form);
  void SetDbaseImport(TransferForm& form);
  void ManageProfiles(TransferForm& form);
  [[nodiscard]] TransferOutcome RunJob(const TransferJob& job);
  [[nodiscard]] TransferOutcome Import(const TransferJob& job);
  [[nodiscard]] TransferOutcome Export(const TransferJob& job);
  [[nodiscard]] TransferOutcome ExportFrom(Directory& source, const TransferJob& job);
  [[nodiscard]] DirectoryOptions OptionsOf(const std::string& main_file) const;
  [[nodiscard]] DirectoryServices Services() const;
  [[nodiscard]] bool IsOpen(const std::string& main_file) const;

  Session& session_;
  DialogHost& dialogs_;
  CharacterSet* charset_;
  ParameterFile parameters_;
};

}  // namespace carnetel
