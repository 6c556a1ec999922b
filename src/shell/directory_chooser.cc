#include "shell/directory_chooser.h"

#include "base/path.h"
#include "base/string_table.h"

namespace carnetel {
namespace {

constexpr int kErrorTitle = 79;
constexpr int kAttentionTitle = 80;
constexpr int kAlreadyThere = 33;
constexpr int kNoAccess = 43;
constexpr int kNotThere = 49;
constexpr int kFiltersAny = 167;
constexpr int kFiltersDirectories = 168;
constexpr int kFiltersDbase = 184;
constexpr int kWillBeDestroyed = 179;
constexpr int kWillBeEmptied = 185;
constexpr int kPrivateOfOther = 189;

bool ListsDirectories(ChooserMode mode) {
  return mode == ChooserMode::kDirectories || mode == ChooserMode::kInvalidFile;
}

FilePickerOptions OptionsFor(const Session& session, ChooserTemplate form, ChooserMode mode) {
  FilePickerOptions options;
  options.form = form;
  options.folder = PathSplit(session.current_path()).folder;
  options.filters = LoadText(kFiltersAny);
  if (ListsDirectories(mode)) {
    options.filters = LoadText(kFiltersDirectories);
    options.default_extension = ".DAN";
  } else if (mode == ChooserMode::kDbase) {
    options.filters = LoadText(kFiltersDbase);
    options.default_extension = ".DBF";
  }
  return options;
}

// One call of ChooseDirectory.
class DirectoryChooser {
 public:
  explicit DirectoryChooser(Session& session)
      : session_(session), files_(session.services().files) {}

  void Destroy(const std::vector<std::string>& chosen);
  // Creates or opens one; false when it must not be.
  bool Open(ChooserTemplate form, const std::string& chosen);

 private:
  void DestroyOne(const std::string& chosen);
  bool MayCreate(const std::string& chosen);
  bool MayOpen(const std::string& chosen);
  template <class... Args>
  bool Refuse(int text, const Args&... args) {
    session_.services().messages.ShowMessage(MessageStyle::kError, kErrorTitle, text, args...);
    return false;
  }
  [[nodiscard]] FamilyPaths FamilyOf(const std::string& path) const {
    return {files_, path, session_.lan_on() ? session_.shared_dir() : std::string()};
  }

  Session& session_;
  FileSystem& files_;
};

// The files go only while no other program works on them: its open stores would write into the
// directory that comes next under this name.
void DirectoryChooser::DestroyOne(const std::string& chosen) {
  const FamilyPaths family = FamilyOf(chosen);
  const std::string main = family.Main();
  const std::optional<MainHeader> header = ReadMainHeader(files_, main);
  if (!header || session_.BelongsToAnotherSeat(header->owner())) return;
  const bool current = session_.SamePath(main, FamilyOf(session_.CurrentMainFile()).Main());
  const MessageButton answer = session_.services().messages.ShowMessage(
      MessageStyle::kOkCancel, kAttentionTitle, current ? kWillBeEmptied : kWillBeDestroyed, main);
  if (answer != MessageButton::kOk) return;
  if (current) session_.CloseDirectory();
  const std::unique_ptr<DirectoryGuard> guard =
      DirectoryGuard::Take(files_.Canonical(family.Of(".ADR")), std::chrono::milliseconds(0));
  const std::string shared_dir = session_.lan_on() ? session_.shared_dir() : std::string();
  if (guard == nullptr || !DeleteDirectoryFiles(files_, main, shared_dir)) Refuse(kNoAccess, main);
}

void DirectoryChooser::Destroy(const std::vector<std::string>& chosen) {
  for (const std::string& path : chosen) DestroyOne(path);
  // The current one comes back empty.
  if (session_.directory() == nullptr) {
    session_.OpenDirectoryChecked(session_.CurrentMainFile(), false);
  }
}

// Nothing that exists is made anew, by whichever of its names it was chosen.
bool DirectoryChooser::MayCreate(const std::string& chosen) {
  const bool there = files_.Exists(chosen) || files_.Exists(FamilyOf(chosen).Main());
  return there ? Refuse(kAlreadyThere) : true;
}

bool DirectoryChooser::MayOpen(const std::string& chosen) {
  const std::string main = FamilyOf(chosen).Main();
  if (!files_.Exists(main)) return Refuse(kNotThere);
  const std::optional<MainHeader> header = ReadMainHeader(files_, main);
  if (!header) return Refuse(kNoAccess, main);
  if (!session_.BelongsToAnotherSeat(header->owner())) return true;
  // Seats have no names beside their numbers.
  return Refuse(kPrivateOfOther, "", header->owner());
}

bool DirectoryChooser::Open(ChooserTemplate form, const std::string& chosen) {
  const bool may = form == ChooserTemplate::kCreate ? MayCreate(chosen) : MayOpen(chosen);
  if (!may) return false;
  session_.OpenInPlace(chosen);
  return true;
}

}  // namespace

Choice ChooseDirectory(Session& session, DialogHost& host, ChooserTemplate form, ChooserMode mode,
                       bool act) {
  FilePicker picker(session, OptionsFor(session, form, mode));
  Choice choice;
  choice.confirmed = host.RunFilePicker(picker);
  if (choice.confirmed) choice.paths = picker.Paths();
  DirectoryChooser chooser(session);
  const bool acts = !choice.paths.empty() && ListsDirectories(mode) &&
                    form != ChooserTemplate::kOther && (act || form == ChooserTemplate::kDestroy);
  if (acts && form == ChooserTemplate::kDestroy) {
    chooser.Destroy(choice.paths);
  } else if (acts) {
    choice.confirmed = chooser.Open(form, choice.paths.front());
  }
  // The box spoke of this choice: what was refused or cancelled must not make a later one private.
  if (acts || !choice.confirmed) session.set_private_requested(false);
  return choice;
}

}  // namespace carnetel
