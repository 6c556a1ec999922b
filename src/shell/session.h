// The values of one run: what the command line asked for, the folders, the directory worked on and
// the settings. Made once in main and passed on; a test may have several.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <utility>

#include "base/messages.h"
#include "platform/clock.h"
#include "platform/debug_line.h"
#include "platform/directory_guard.h"
#include "platform/user_profile.h"
#include "shell/launch.h"
#include "shell/settings.h"
#include "storage/directory.h"

namespace carnetel {

struct SessionServices {
  FileSystem& files;
  Clock& clock;
  ProgressBox& progress;
  MessageForm& messages;
  UserProfile& profile;
  // Starts the command line of another program; none can be started without it.
  std::function<bool(const std::string& command_line)> start_program = {};
};

class Session {
 public:
  // `home_folder` ends in a separator.
  Session(const SessionServices& services, StartupRequest request, std::string home_folder);

  // Where lines for the finder of faults go; nowhere at first.
  void SetDebugLine(DebugLine debug_line) { debug_line_ = std::move(debug_line); }

  // Runs before an open directory is closed, so that who shows it lets go of it first: messages and
  // progress boxes that come up meanwhile may repaint what is on the screen. Empty takes it away.
  void OnClosing(std::function<void()> observer) { closing_ = std::move(observer); }

  // Resolves folders, directory and settings, in this order; settings are written straight back so
  // that their defaults appear in the profile.
  void Start();

  // With seats, files cannot be locked: the user was told, and the run is to end.
  [[nodiscard]] bool sharing_failed() const { return sharing_failed_; }

  [[nodiscard]] const StartupRequest& request() const { return request_; }
  [[nodiscard]] const Role& role() const { return role_; }
  [[nodiscard]] bool exchange_launch() const { return IsExchangeLaunch(request_); }
  [[nodiscard]] bool lan_on() const { return lan_on_; }
  [[nodiscard]] int32_t workstation_number() const { return workstation_number_; }
  [[nodiscard]] const std::string& home_dir() const { return home_dir_; }
  // Where the installation's own files lie, seats or not.
  [[nodiscard]] const std::string& module_dir() const { return module_dir_; }
  [[nodiscard]] const std::string& shared_dir() const { return shared_dir_; }
  [[nodiscard]] const std::string& appli_name() const { return appli_name_; }
  // The stem of the directory, without extension.
  [[nodiscard]] const std::string& current_path() const { return current_path_; }
  // The same with ".DAN", as titles and recents tell it.
  [[nodiscard]] std::string CurrentMainFile() const { return current_path_ + ".DAN"; }
  // True when both paths lead to the same file.
  [[nodiscard]] bool SamePath(const std::string& a, const std::string& b) const;
  Settings& settings() { return settings_; }
  [[nodiscard]] const Settings& settings() const { return settings_; }
  // Makes these the settings of the run and writes the six of them that the user chooses.
  void StoreSettings(const Settings& settings);

  // Whether a directory with this owner seat is another seat's: never for seat 0 or without owner.
  [[nodiscard]] bool BelongsToAnotherSeat(uint16_t owner) const {
    return owner != 0 && workstation_number_ != 0 && owner != workstation_number_;
  }
  // The same of the directory that a main file holds, read from the file.
  [[nodiscard]] bool BelongsToAnotherSeat(const std::string& path) const;
  // What dialogs show of an owner seat: the seat, or that the directory is public.
  [[nodiscard]] std::string OwnerLine(uint16_t owner) const;

  // The box that makes a directory private was ticked: the next one opened that has no owner gets
  // this seat. Opening one takes the wish away in every case.
  void set_private_requested(bool requested) { private_requested_ = requested; }
  [[nodiscard]] bool private_requested() const { return private_requested_; }
  [[nodiscard]] const SessionServices& services() const { return services_; }

  // Opens the directory of `path` (stem or main file) in place of the open one. With `strict`, a
  // directory that another seat owns asks whether to take the default one instead; without it, one
  // that cannot be opened is told. False leaves no directory open.
  bool OpenDirectoryChecked(const std::string& path, bool strict);
  // The same, not strict, but that the directory that was open, if any, comes back on a failure.
  void OpenInPlace(const std::string& path);
  // The directory of the start; when that fails for the main window, CARN001 to CARN1000 beside it.
  // `*fell_back` tells that one of those was tried.
  bool OpenAtStart(bool* fell_back);
  // The main file that the start could not open, for which a fallback came; empty when it could.
  [[nodiscard]] const std::string& unrecognised_file() const { return unrecognised_file_; }
  void CloseDirectory();
  [[nodiscard]] Directory* directory() { return directory_.get(); }

  // A successful open happened: the list applies the row that the address file has kept.
  [[nodiscard]] bool TakeListPositionRestore();

  // The section of the profile that this run's settings stand in; empty for a run without any.
  [[nodiscard]] std::string_view ProfileSection() const;
  [[nodiscard]] std::string ProfileText(int key, std::string_view fallback) const;
  void ProfileWrite(int key, std::string_view text);

  // Writes the most recent directory, for every role, and closes what is open.
  void Exit();

 private:
  void ResolveFolders();
  void ResolveDirectory();
  void WriteSettingsBack();
  // `*upgraded`: the file was of an older version.
  OpenResult OpenPath(const std::string& path, bool* upgraded = nullptr);
  bool AskForDefaultDirectory();
  void TakeOwnership();

  SessionServices services_;
  StartupRequest request_;
  Role role_;
  DebugLine debug_line_ = [](std::string_view) {};
  bool lan_on_ = false;
  bool sharing_failed_ = false;
  int32_t workstation_number_ = 0;
  std::string appli_name_;
  std::string module_dir_;
  std::string home_dir_;
  std::string shared_dir_;
  std::string current_path_;
  Settings settings_;
  std::unique_ptr<DirectoryGuard> guard_;
  std::unique_ptr<Directory> directory_;
  bool list_position_restore_ = false;
  bool private_requested_ = false;
  std::string unrecognised_file_;
  std::function<void()> closing_;
};

}  // namespace carnetel
