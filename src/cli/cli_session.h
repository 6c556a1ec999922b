// One run of the tool: the options of the whole run, the messages, the settings, and the directory,
// which is opened by the first command that needs it and stays open for the following ones of a
// script. Whatever happens, its stores are closed properly at the end.
#pragma once

#include <memory>
#include <optional>
#include <string>

#include "cli/cli_environment.h"
#include "cli/command_line.h"
#include "cli/terminal_messages.h"
#include "cli/terminal_progress.h"
#include "shell/settings.h"
#include "storage/directory.h"

namespace carnetel {

class CliSession {
 public:
  CliSession(const CliEnvironment& environment, GlobalOptions options);
  ~CliSession();
  CliSession(const CliSession&) = delete;
  CliSession& operator=(const CliSession&) = delete;

  [[nodiscard]] const GlobalOptions& options() const { return options_; }
  [[nodiscard]] const CliEnvironment& environment() const { return environment_; }
  [[nodiscard]] FileSystem& files() const { return environment_.files; }
  [[nodiscard]] std::ostream& out() const { return environment_.out; }
  TerminalMessages& messages() { return messages_; }
  ProgressBox& progress() { return progress_; }
  [[nodiscard]] bool interrupted() const { return environment_.interrupted(); }

  const Settings& settings();
  // Keeps the active index in the profile and for this run; false when it cannot be written.
  bool StoreKeyField(int key_field);
  [[nodiscard]] LabelStyles label_styles() { return settings().Labels(); }
  // The profile of the user, which need not exist; its section that is this system's.
  [[nodiscard]] UserProfile Profile() const { return {files(), ProfileFile()}; }
  [[nodiscard]] static std::string_view ProfileSection();
  // The home folder of the program with its trailing '/'; it exists afterwards.
  [[nodiscard]] std::string HomePath();
  // The parameter file of transfers; its folder exists afterwards.
  [[nodiscard]] std::string ParameterFile();
  // The files of the run's directory; null when its path names no directory (told).
  const FamilyPaths* Family();

  // The open directory, opened when it is not; null when that is refused (told).
  Directory* Open();
  // Makes a directory that is not there yet, with this description and owner seat (0 for a public
  // one), and its folder when needed.
  Directory* Create(const OemText& description, uint16_t owner);
  // Closes the stores, written; the directory stays this run's. False when a write failed (told).
  bool CloseStores();
  // The same and lets other programs in.
  bool Close();
  // Keeps other programs out of the run's directory from now on; false when another one is in
  // (told). `Open` does it too.
  bool TakeDirectory();
  // False, and told, when a directory with this owner seat is another seat's.
  [[nodiscard]] bool MayOpenAs(uint16_t owner);
  // Whether a main file is that of the run's directory.
  [[nodiscard]] bool IsOwn(const std::string& main_file);

  // Tell what is wrong and answer the exit status for it.
  int Fail(const std::string& text);
  int WrongUsage(const std::string& text);
  // Asks, with that text of the table; `style` is one with a "no".
  template <class... Args>
  [[nodiscard]] bool Confirm(int text_id, const Args&... args) {
    return messages_.ShowMessage(MessageStyle::kOkCancel, kAttentionTitle, text_id, args...) ==
           MessageButton::kOk;
  }

  // Whether a script is being run, and what feeds it.
  bool in_script = false;
  bool script_from_input = false;

 private:
  static constexpr int kAttentionTitle = 80;

  [[nodiscard]] std::string ProfileFile() const;
  [[nodiscard]] DirectoryOptions OpenOptions(bool may_create);
  // False, and told, when files cannot be locked for seats, or the directory is another seat's.
  [[nodiscard]] bool MayUseSeat();
  Directory* Refuse();

  const CliEnvironment& environment_;
  GlobalOptions options_;
  TerminalProgress progress_;
  TerminalMessages messages_;
  std::optional<Settings> settings_;
  std::optional<FamilyPaths> family_;
  std::shared_ptr<void> guard_;
  std::unique_ptr<Directory> directory_;
};

}  // namespace carnetel
