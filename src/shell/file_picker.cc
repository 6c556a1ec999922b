#include "shell/file_picker.h"

#include <algorithm>

#include "base/code_page.h"
#include "base/dialog_template.h"
#include "base/path.h"
#include "base/string_table.h"

namespace carnetel {
namespace {

constexpr int kTopicOther = 40;
constexpr int kTopicCreate = 49;
constexpr int kTopicOpen = 50;
constexpr int kTopicDestroy = 72;
constexpr int kOpenTitle = 188;

std::string ParentOf(const std::string& path) {
  return CleanPath(path + "/..");
}

std::string WithoutOuterBlanks(std::string_view text) {
  const size_t start = std::min(text.find_first_not_of(' '), text.size());
  const size_t end = text.find_last_not_of(' ') + 1;  // 0 when there is none
  return std::string(text.substr(start, end > start ? end - start : 0));
}

}  // namespace

FilePicker::FilePicker(Session& session, FilePickerOptions options)
    : session_(session),
      options_(std::move(options)),
      filters_(ParseFilters(options_.filters)),
      owner_line_(session.OwnerLine(0)) {
  session_.set_private_requested(false);
  if (!filters_.empty()) pattern_ = filters_.front().pattern;
  FileSystem& files = session_.services().files;
  const bool absolute = options_.folder.starts_with('/');
  folder_ = CleanPath(absolute ? options_.folder : files.Canonical("./" + options_.folder));
  while (folder_ != "/" && !files.IsFolder(folder_)) folder_ = ParentOf(folder_);
  ReadFolder();
}

bool FilePicker::OffersDirectories() const {
  return options_.default_extension == ".DAN";
}

bool FilePicker::has_directory_zone() const {
  if (form() == ChooserTemplate::kCreate) return true;
  return form() != ChooserTemplate::kOther && OffersDirectories();
}

// The template of the form that opens has the title of the one for other files; it is not shown.
std::string FilePicker::title() const {
  if (!options_.title.empty()) return options_.title;
  if (form() == ChooserTemplate::kOpen) return std::string(LoadText(kOpenTitle));
  return std::string(DialogTitle(static_cast<int>(form())));
}

int FilePicker::help_topic() const {
  if (form() == ChooserTemplate::kCreate) return kTopicCreate;
  if (!has_directory_zone()) return kTopicOther;
  return form() == ChooserTemplate::kOpen ? kTopicOpen : kTopicDestroy;
}

// ---- what is listed ----

void FilePicker::ReadFolder() {
  FileSystem& files = session_.services().files;
  files_.clear();
  folders_.clear();
  for (std::string& name : files.List(folder_)) {
    if (name.starts_with('.')) continue;
    const bool folder = files.IsFolder(InFolder(name));
    (folder ? folders_ : files_).push_back(std::move(name));
  }
  SortNames(files_);
  SortNames(folders_);
  if (folder_ != "/") folders_.insert(folders_.begin(), "..");
}

std::vector<std::string> FilePicker::Files() const {
  std::vector<std::string> names;
  std::ranges::copy_if(files_, std::back_inserter(names),
                       [this](const std::string& name) { return MatchesFilter(name, pattern_); });
  return names;
}

std::vector<std::string> FilePicker::Folders() const {
  return folders_;
}

void FilePicker::SetFilter(size_t index) {
  if (index >= filters_.size()) return;
  filter_ = index;
  pattern_ = filters_[index].pattern;
  DropSelection();
}

void FilePicker::GoTo(const std::string& folder) {
  DropSelection();
  folder_ = folder;
  ReadFolder();
}

void FilePicker::EnterFolder(const std::string& name) {
  // One that is listed may be called as nothing else is typed: "~".
  const bool listed = std::ranges::find(folders_, name) != folders_.end();
  const std::string path = listed ? CleanPath(InFolder(name)) : Resolve(name);
  if (session_.services().files.IsFolder(path)) {
    GoTo(path);
  } else {
    Refuse(path);
  }
}

std::vector<std::string> FilePicker::Places(const std::vector<MountedVolume>& volumes) const {
  std::vector<std::string> places = {"/"};
  const auto add = [this, &places](const std::string& folder) {
    if (folder.empty()) return;
    const std::string clean = CleanPath(folder);
    const bool known = std::ranges::find(places, clean) != places.end();
    if (!known && session_.services().files.IsFolder(clean)) places.push_back(clean);
  };
  add(options_.environment("HOME"));
  for (const MountedVolume& volume : volumes) {
    if (HoldsUserFiles(volume)) add(volume.folder);
  }
  return places;
}

size_t FilePicker::PlaceOf(const std::vector<std::string>& places) const {
  size_t best = 0;
  for (size_t i = 0; i < places.size(); ++i) {
    if (!LiesIn(folder_, places[i])) continue;
    if (places[i].size() > places[best].size()) best = i;
  }
  return best;
}

// ---- what is chosen ----

void FilePicker::DropSelection() {
  if (selection_.empty()) return;
  selection_.clear();
  name_.clear();
  ShowSelection();
}

void FilePicker::SelectFiles(const std::vector<std::string>& names) {
  if (!list_enabled()) return;
  if (names.empty()) {
    DropSelection();
    return;
  }
  selection_ = names;
  name_ = names.size() == 1 ? names.front() : QuoteNames(names);
  ShowSelection();
}

// The owner counts whatever else the file holds, as it does when the file is opened: a directory of
// an older version may have another magic.
void FilePicker::ShowSelection() {
  if (!has_directory_zone()) return;
  MainHeader header;
  if (selection_.size() == 1 && HasExtension(selection_.front(), ".DAN")) {
    const std::string path = InFolder(selection_.front());
    header = ReadMainHeader(session_.services().files, path).value_or(MainHeader());
  }
  const bool known = header.magic() == kStoreMagic;
  description_ = known ? Utf8FromOem(header.description()) : std::string();
  owner_line_ = session_.OwnerLine(header.owner());
  if (has_private_box()) session_.set_private_requested(header.owner() != 0);
}

void FilePicker::SetName(const std::string& utf8) {
  DropSelection();
  name_ = utf8;
}

void FilePicker::SetPrivate(bool checked) {
  if (!has_private_box()) return;
  session_.set_private_requested(checked);
  const int32_t seat = checked ? session_.workstation_number() : 0;
  owner_line_ = session_.OwnerLine(static_cast<uint16_t>(seat));
}

std::string FilePicker::InFolder(const std::string& name) const {
  return folder_ == "/" ? "/" + name : folder_ + "/" + name;
}

std::string FilePicker::Resolve(std::string_view typed) const {
  return ResolveTyped(typed, folder_, options_.environment);
}

// With the extension that the dialog offers, and as the file is written on the disk.
std::string FilePicker::Completed(const std::string& path) const {
  const bool has_extension = !PathSplit(path).extension.empty();
  return FindAnyCase(session_.services().files,
                     has_extension ? path : path + options_.default_extension);
}

void FilePicker::Refuse(const std::string& path) {
  session_.services().messages.ShowMessage(MessageStyle::kError, 79, 43, path);
}

PickerAnswer FilePicker::AcceptTyped(const std::string& typed) {
  FileSystem& files = session_.services().files;
  const std::string path = Resolve(typed);
  if (files.IsFolder(path)) {
    GoTo(path);
    name_.clear();
    return PickerAnswer::kStays;
  }
  const std::string parent = ParentOf(path);
  if (typed.ends_with('/') || !files.IsFolder(parent)) {
    Refuse(path);
    return PickerAnswer::kStays;
  }
  const PathPieces pieces = PathSplit(path);
  if (pieces.wildcard && !files.Exists(path)) {
    if (parent != folder_) GoTo(parent);
    pattern_ = name_ = pieces.name + pieces.extension;
    return PickerAnswer::kStays;
  }
  paths_ = {Completed(path)};
  return PickerAnswer::kAccepted;
}

PickerAnswer FilePicker::Accept() {
  paths_.clear();
  for (const std::string& name : selection_) paths_.push_back(InFolder(name));
  if (!paths_.empty()) return PickerAnswer::kAccepted;
  const std::string typed = WithoutOuterBlanks(name_);
  if (typed.empty()) return PickerAnswer::kStays;
  if (multi_selection()) {
    for (const std::string& name : ParseQuotedNames(typed)) {
      paths_.push_back(Completed(Resolve(name)));
    }
  }
  return paths_.empty() ? AcceptTyped(typed) : PickerAnswer::kAccepted;
}

}  // namespace carnetel
