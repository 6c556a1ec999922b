#include "shell/session.h"

#include "base/format_text.h"
#include "base/path.h"
#include "storage/upgrade.h"

namespace carnetel {
namespace {

constexpr std::string_view kProgramName = "CARNETEL";
// Main files of an older release.
constexpr std::string_view kOlderExtension = ".PBK";
constexpr int kDefaultDirectoryName = 52;
constexpr int kFallbackName = 275;
constexpr int kMostFallbacks = 1000;
constexpr int kProgramTitle = 51;
constexpr int kNoSharing = 204;
constexpr int kFile1 = 237;
constexpr int kBalloons = 263;
// How long an open waits for another program that works on the same files.
constexpr std::chrono::milliseconds kGuardWait{5000};

// `path` without the extension of an older release, which is not one of the family's today.
std::string WithoutOlderExtension(const std::string& path) {
  PathPieces pieces = PathSplit(path);
  const size_t size = kOlderExtension.size();
  if (CompareKey(pieces.extension, kOlderExtension, size + 1) == 0) pieces.extension.clear();
  return ComposePath(pieces);
}

}  // namespace

Session::Session(const SessionServices& services, StartupRequest request, std::string home_folder)
    : services_(services),
      request_(std::move(request)),
      role_(RoleOf(request_)),
      module_dir_(std::move(home_folder)),
      home_dir_(module_dir_) {
  shared_dir_ = home_dir_;
}

// With a directory named directly no section has a name: every setting reads as its default and
// none is written, for the whole run. That has to stay.
std::string_view Session::ProfileSection() const {
  return request_.direct_open ? std::string_view() : LoadText(231);
}

std::string Session::ProfileText(int key, std::string_view fallback) const {
  return services_.profile.Text(ProfileSection(), LoadText(key), fallback);
}

void Session::ProfileWrite(int key, std::string_view text) {
  services_.profile.Write(ProfileSection(), LoadText(key), text);
}

void Session::Start() {
  ResolveFolders();
  sharing_failed_ = lan_on_ && !SharingWorks(services_.files, shared_dir_);
  if (sharing_failed_) {
    services_.messages.ShowMessage(MessageStyle::kError, kProgramTitle, kNoSharing);
    return;
  }
  settings_ = request_.direct_open ? Settings() : ReadSettings(services_.profile);
  // A sibling brings the whole suite's choice along.
  if (!request_.direct_open && request_.caller_window != 0) {
    settings_.balloons = services_.profile.Int(LoadText(230), LoadText(kBalloons), 1) != 0;
  }
  current_path_ = request_.direct_open ? request_.direct_path : settings_.recent_directory;
  ResolveDirectory();
  WriteSettingsBack();
}

void Session::ResolveFolders() {
  appli_name_ = request_.appli_name.empty() ? std::string(kProgramName) : request_.appli_name;
  lan_on_ = request_.workstation_number >= 1;
  debug_line_(FormatPrintf(" Valeur de lan_on = %d ", {lan_on_ ? 1 : 0}));
  const std::string folder = PathSplit(request_.exchange_file_path).folder;
  if (folder.empty()) lan_on_ = false;
  if (lan_on_ && services_.files.IsFolder(folder)) home_dir_ = shared_dir_ = folder;
  workstation_number_ = lan_on_ ? request_.workstation_number : 0;
}

void Session::ResolveDirectory() {
  if (!current_path_.empty()) {
    const FamilyPaths paths(services_.files, WithoutOlderExtension(current_path_));
    const std::string main = paths.Main();
    const std::string older =
        FindAnyCase(services_.files, paths.stem() + std::string(kOlderExtension));
    if (!services_.files.Exists(main) && services_.files.Exists(older)) {
      services_.files.Rename(older, main);
    }
    if (services_.files.Exists(main)) {
      current_path_ = paths.stem();
      return;
    }
  }
  const std::string folder =
      exchange_launch() ? PathSplit(request_.exchange_file_path).folder : home_dir_;
  current_path_ = folder + std::string(LoadText(kDefaultDirectoryName));
}

void Session::StoreSettings(const Settings& settings) {
  settings_ = settings;
  WriteSettingsBack();
  // The whole suite's choice is not this program's.
  if (request_.caller_window != 0) return;
  services_.profile.WriteInt(ProfileSection(), LoadText(kBalloons), settings_.balloons ? 1 : 0);
}

void Session::WriteSettingsBack() {
  const auto write = [this](int key, int value) {
    services_.profile.WriteInt(ProfileSection(), LoadText(key), value);
  };
  write(261, settings_.key_field);
  write(256, settings_.shows_references ? 1 : 0);
  write(266, settings_.style_aff_list);
  write(281, settings_.style_aff_ste);
  write(280, settings_.starts_at_first ? 1 : 0);
}

OpenResult Session::OpenPath(const std::string& path, bool* upgraded) {
  CloseDirectory();
  DirectoryOptions options;
  options.path = path;
  if (lan_on_) options.shared_dir = shared_dir_;
  options.key_field = settings_.key_field;
  const FamilyPaths paths(services_.files, path, options.shared_dir);
  guard_ = DirectoryGuard::Take(services_.files.Canonical(paths.Of(".ADR")), kGuardWait);
  if (guard_ == nullptr) return OpenResult::kNoStore;
  directory_ = std::make_unique<Directory>(
      DirectoryServices{services_.files, services_.clock, services_.progress}, options);
  const OpenResult result = OpenUpgrading(*directory_, upgraded);
  if (IsOpen(result)) {
    current_path_ = directory_->paths().stem();
  } else {
    directory_.reset();
    guard_.reset();
  }
  return result;
}

bool Session::AskForDefaultDirectory() {
  const uint16_t owner = directory_->main().header().owner();
  const std::string path = CurrentMainFile();
  CloseDirectory();
  const MessageButton answer =
      services_.messages.ShowMessage(MessageStyle::kOkCancel, 80, 190, path, "", owner);
  return answer == MessageButton::kOk &&
         IsOpen(OpenPath(home_dir_ + std::string(LoadText(kDefaultDirectoryName))));
}

bool Session::BelongsToAnotherSeat(const std::string& path) const {
  FileSystem& files = services_.files;
  const std::optional<MainHeader> header = ReadMainHeader(files, FindAnyCase(files, path));
  return header && BelongsToAnotherSeat(header->owner());
}

void Session::TakeOwnership() {
  const bool requested = std::exchange(private_requested_, false);
  if (!requested || directory_ == nullptr) return;
  const ChangeScope change(*directory_);
  // Another seat may have been quicker.
  if (!change || !directory_->main().ReadHeader()) return;
  MainHeader& header = directory_->main().header();
  if (header.owner() != 0) return;
  header.set_owner(static_cast<uint16_t>(workstation_number_));
  directory_->main().WriteHeader();
}

bool Session::OpenDirectoryChecked(const std::string& path, bool strict) {
  bool upgraded = false;
  const OpenResult result = OpenPath(path, &upgraded);
  bool opened = IsOpen(result);
  // One that was just made, or just upgraded, is nobody else's yet.
  const bool checked = strict && !upgraded && result == OpenResult::kOpened;
  if (checked && BelongsToAnotherSeat(directory_->main().header().owner())) {
    opened = AskForDefaultDirectory();
  }
  TakeOwnership();
  if (!opened && !strict) services_.messages.ShowMessage(MessageStyle::kError, 79, 49);
  if (opened || strict) list_position_restore_ = true;
  return opened;
}

void Session::OpenInPlace(const std::string& path) {
  const bool had_one = directory_ != nullptr;
  const std::string former = CurrentMainFile();
  if (!OpenDirectoryChecked(path, false) && had_one) OpenDirectoryChecked(former, false);
}

bool Session::OpenAtStart(bool* fell_back) {
  *fell_back = false;
  const std::string main_file = CurrentMainFile();
  if (OpenDirectoryChecked(current_path_, true)) return true;
  if (role_.command != kRoleMainWindow) return false;
  *fell_back = true;
  unrecognised_file_ = main_file;
  const std::string folder = PathSplit(current_path_).folder;
  for (int number = 1; number <= kMostFallbacks; ++number) {
    // The last name tried stays the current one, opened or not.
    current_path_ = folder + FormatPrintf("%s%03.3d", {LoadText(kFallbackName), number});
    if (OpenDirectoryChecked(current_path_, true)) return true;
  }
  return false;
}

bool Session::SamePath(const std::string& a, const std::string& b) const {
  return a == b || services_.files.Canonical(a) == services_.files.Canonical(b);
}

void Session::CloseDirectory() {
  if (directory_ != nullptr) {
    if (closing_) closing_();
    if (directory_->write_failed()) debug_line_("a write to " + current_path_ + " has failed");
    directory_->CloseDirectory();
  }
  directory_.reset();
  guard_.reset();
}

std::string Session::OwnerLine(uint16_t owner) const {
  if (owner == 0) return std::string(LoadText(187));
  // Seats have no names beside their numbers.
  return lan_on_ ? FormatText(186, "", owner) : FormatText(191, owner);
}

bool Session::TakeListPositionRestore() {
  return std::exchange(list_position_restore_, false);
}

void Session::Exit() {
  CloseDirectory();
  ProfileWrite(kFile1, "&1 " + CurrentMainFile());
}

}  // namespace carnetel
