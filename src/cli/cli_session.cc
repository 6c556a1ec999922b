#include "cli/cli_session.h"

#include <utility>

#include "base/path.h"
#include "selection/group_file.h"
#include "selection/marks.h"
#include "storage/address_reorder.h"
#include "storage/upgrade.h"

namespace carnetel {
namespace {

constexpr int kNoAccess = 43;
constexpr int kNotValid = 49;
constexpr int kHeldByOther = 177;
constexpr int kPrivate = 189;
constexpr int kNoSharing = 204;
constexpr int kFileThere = 33;
constexpr int kProfileSection = 231;
constexpr int kIdindex = 261;
constexpr const char* kParameterFileName = "CARNETEL.TRS";

MessageOptions MessageOptionsOf(const CliEnvironment& environment, const GlobalOptions& options) {
  return {options.json, options.yes, options.quiet, environment.can_ask};
}

void MakeFolders(FileSystem& files, const std::string& folder) {
  for (size_t end = folder.find('/', 1); end != std::string::npos;
       end = folder.find('/', end + 1)) {
    const std::string parent = folder.substr(0, end);
    if (!files.IsFolder(parent)) files.MakeFolder(parent);
  }
}

}  // namespace

CliSession::CliSession(const CliEnvironment& environment, GlobalOptions options)
    : environment_(environment),
      options_(std::move(options)),
      progress_(environment.err, environment.shows_progress && !options_.quiet,
                environment.interrupted, environment.milliseconds),
      messages_(environment.in, environment.err, MessageOptionsOf(environment, options_),
                [this] { progress_.Erase(); }) {}

CliSession::~CliSession() {
  Close();
}

const Settings& CliSession::settings() {
  if (!settings_) {
    settings_ = ReadSettings(Profile());
  }
  return *settings_;
}

std::string CliSession::ProfileFile() const {
  return options_.profile ? *options_.profile : ProfilePath(environment_.variables);
}

std::string_view CliSession::ProfileSection() {
  return LoadText(kProfileSection);
}

bool CliSession::StoreKeyField(int key_field) {
  (void)settings();
  if (!Profile().WriteInt(ProfileSection(), LoadText(kIdindex), key_field)) return false;
  settings_->key_field = key_field;
  return true;
}

std::string CliSession::HomePath() {
  std::string home = HomeFolder(files(), environment_.variables, environment_.executable_folder);
  MakeFolders(files(), home);
  return home;
}

std::string CliSession::ParameterFile() {
  return options_.parameters ? *options_.parameters : HomePath() + kParameterFileName;
}

const FamilyPaths* CliSession::Family() {
  if (family_) return &*family_;
  const bool in_home = !options_.directory && settings().recent_directory.empty();
  const std::string path = options_.directory
                               ? *options_.directory
                               : DefaultDirectory(settings(), in_home ? HomePath() : "");
  if (PathSplit(path).name.empty()) {
    Fail("« " + path + " » ne nomme pas un carnetel");
    return nullptr;
  }
  return &family_.emplace(files(), path, options_.shared_dir);
}

bool CliSession::TakeDirectory() {
  if (guard_ != nullptr) return true;
  const FamilyPaths* family = Family();
  if (family == nullptr) return false;
  guard_ = environment_.take_guard(files().Canonical(family->Of(".ADR")));
  if (guard_ == nullptr) Fail(family->Main() + " est ouvert par un autre programme");
  return guard_ != nullptr;
}

DirectoryOptions CliSession::OpenOptions(bool may_create) {
  DirectoryOptions options;
  options.path = Family()->Main();
  options.shared_dir = options_.shared_dir;
  options.key_field = settings().key_field;
  options.may_create = may_create;
  return options;
}

bool CliSession::MayUseSeat() {
  if (options_.seat == 0) return true;
  MakeFolders(files(), options_.shared_dir);
  if (SharingWorks(files(), options_.shared_dir)) return true;
  Fail(std::string(LoadText(kNoSharing)));
  return false;
}

bool CliSession::MayOpenAs(uint16_t owner) {
  if (owner == 0 || options_.seat == 0 || owner == options_.seat) return true;
  Fail(FormatText(kPrivate, "", owner));
  return false;
}

Directory* CliSession::Refuse() {
  const bool held = directory_ != nullptr && directory_->lock_refused();
  directory_.reset();
  const std::string path = Family()->Main();
  if (!files().Exists(path)) {
    Fail(FormatText(kNoAccess, path) + " : il n'existe pas (« create » crée un carnetel)");
  } else if (held) {
    Fail(std::string(LoadText(kHeldByOther)));
  } else {
    Fail(path + " : " + std::string(LoadText(kNotValid)));
  }
  return nullptr;
}

Directory* CliSession::Open() {
  if (directory_ != nullptr) {
    const bool behind = directory_->ChangedByOthers();
    const bool refreshed = behind && RefreshIfChanged(*directory_, RefreshView::kWholeFile);
    if (!behind || refreshed || !directory_->lock_refused()) return directory_.get();
    Fail(std::string(LoadText(kHeldByOther)));
    return nullptr;
  }
  const FamilyPaths* family = Family();
  if (family == nullptr) return nullptr;
  if (!files().Exists(family->Main())) return Refuse();
  if (!TakeDirectory() || !MayUseSeat()) return nullptr;
  directory_ = std::make_unique<Directory>(
      DirectoryServices{files(), environment_.clock, progress_}, OpenOptions(false));
  const OpenResult result = OpenUpgrading(*directory_);
  if (result != OpenResult::kOpened) return Refuse();
  if (!MayOpenAs(directory_->main().header().owner())) {
    directory_.reset();
    return nullptr;
  }
  // A run that ended badly may have left a stale counter; the marks themselves are right.
  directory_->set_marked_count(CountMarks(*directory_));
  GroupFile(*directory_).Check();
  return directory_.get();
}

Directory* CliSession::Create(const OemText& description, uint16_t owner) {
  const FamilyPaths* family = Family();
  if (family == nullptr || !TakeDirectory()) return nullptr;
  const std::string path = family->Main();
  if (files().Exists(path)) {
    Fail(path + " : " + std::string(LoadText(kFileThere)));
    return nullptr;
  }
  MakeFolders(files(), PathSplit(path).folder);
  if (!MayUseSeat()) return nullptr;
  directory_ = std::make_unique<Directory>(
      DirectoryServices{files(), environment_.clock, progress_}, OpenOptions(true));
  if (directory_->OpenDirectory() != OpenResult::kCreated) {
    directory_.reset();
    Fail(FormatText(kNoAccess, path));
    return nullptr;
  }
  {
    const ChangeScope change(*directory_);
    directory_->main().header().set_description(description);
    if (owner != 0) directory_->main().header().set_owner(owner);
    directory_->main().WriteHeader();
  }
  GroupFile(*directory_).Check();
  return directory_.get();
}

bool CliSession::CloseStores() {
  if (directory_ == nullptr) return true;
  directory_->CloseListView();
  const bool written = !directory_->write_failed();
  directory_->CloseDirectory();
  directory_.reset();
  if (!written) Fail("une écriture dans les fichiers du carnetel a échoué");
  return written;
}

bool CliSession::Close() {
  const bool written = CloseStores();
  guard_.reset();
  return written;
}

bool CliSession::IsOwn(const std::string& main_file) {
  if (directory_ == nullptr && guard_ == nullptr) return false;
  return files().Canonical(Family()->Main()) == files().Canonical(main_file);
}

int CliSession::Fail(const std::string& text) {
  messages_.Error(text);
  return kRefused;
}

int CliSession::WrongUsage(const std::string& text) {
  messages_.Error(text);
  return kWrongUsage;
}

}  // namespace carnetel
