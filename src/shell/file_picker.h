// The file dialog without its widgets: which files and folders it lists, what the name line, the
// description of a directory and its private box show, and what OK does with a name that was typed.
// It has four forms, for the numbers of their templates:
//
//        use       list      several names  zone of a directory   help
//   108  other     enabled   no             no                    40
//   123  destroy   enabled   yes            with directories      72 with directories, else 40
//   125  create    disabled  no             yes                   49
//   128  open      enabled   no             with directories      50 with directories, else 40
//
// "With directories" is a dialog that offers ".DAN" as the extension. Whether a name may be used is
// not decided here but by who asked for it (see directory_chooser.h).
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "shell/file_names.h"
#include "shell/session.h"

namespace carnetel {

enum class ChooserTemplate { kOther = 108, kDestroy = 123, kCreate = 125, kOpen = 128 };

struct FilePickerOptions {
  ChooserTemplate form = ChooserTemplate::kOther;
  // Where to begin; when it is gone, the nearest folder above it that is there.
  std::string folder;
  // As ParseFilters takes it; without any, every file is listed.
  std::string_view filters;
  // What a typed name without extension gets, with its dot; empty for nothing.
  std::string default_extension;
  // Empty for the form's own.
  std::string title;
  Environment environment = SystemEnvironment;
};

enum class PickerAnswer {
  kAccepted,  // Paths() holds the choice
  kStays,     // a folder was entered, a pattern applied, or a message shown
};

class FilePicker {
 public:
  // Takes back an earlier wish for a private directory.
  FilePicker(Session& session, FilePickerOptions options);

  [[nodiscard]] ChooserTemplate form() const { return options_.form; }
  [[nodiscard]] std::string title() const;
  [[nodiscard]] int help_topic() const;
  [[nodiscard]] bool list_enabled() const { return form() != ChooserTemplate::kCreate; }
  [[nodiscard]] bool multi_selection() const { return form() == ChooserTemplate::kDestroy; }
  // The description of the selected directory; with seats also its owner and the private box.
  [[nodiscard]] bool has_directory_zone() const;
  [[nodiscard]] bool has_private_box() const { return has_directory_zone() && session_.lan_on(); }

  // ---- what is listed ----

  // Absolute, without a separator at its end but for the root.
  [[nodiscard]] const std::string& folder() const { return folder_; }
  // Names of the files that fit the pattern at hand, in order; hidden ones are left out.
  [[nodiscard]] std::vector<std::string> Files() const;
  // ".." but in the root, then the folders, in order.
  [[nodiscard]] std::vector<std::string> Folders() const;
  [[nodiscard]] const std::vector<FileFilter>& filters() const { return filters_; }
  [[nodiscard]] size_t filter() const { return filter_; }
  void SetFilter(size_t index);
  // A name of Folders() or any path. One that cannot be entered is told, and nothing changes.
  void EnterFolder(const std::string& name);
  // Root, home and the volumes that hold a user's files: where a search may start.
  [[nodiscard]] std::vector<std::string> Places(const std::vector<MountedVolume>& volumes) const;
  // The row of `places` that the folder lies in.
  [[nodiscard]] size_t PlaceOf(const std::vector<std::string>& places) const;

  // ---- what is chosen ----

  // The selection in the list of files: it stands in the name line, and the zone tells of it.
  void SelectFiles(const std::vector<std::string>& names);
  [[nodiscard]] const std::vector<std::string>& selection() const { return selection_; }
  // Text typed in the name line: nothing is selected any more.
  void SetName(const std::string& utf8);
  [[nodiscard]] const std::string& name() const { return name_; }
  [[nodiscard]] const std::string& description() const { return description_; }
  [[nodiscard]] const std::string& owner_line() const { return owner_line_; }
  [[nodiscard]] bool private_checked() const { return session_.private_requested(); }
  void SetPrivate(bool checked);

  // OK. An empty name, a folder (which is entered), a pattern (which chooses the files listed) and
  // a name in a folder that is not there (which is told) leave the dialog open.
  [[nodiscard]] PickerAnswer Accept();
  // Absolute paths of the accepted names.
  [[nodiscard]] const std::vector<std::string>& Paths() const { return paths_; }

 private:
  [[nodiscard]] bool OffersDirectories() const;
  [[nodiscard]] std::string InFolder(const std::string& name) const;
  [[nodiscard]] std::string Resolve(std::string_view typed) const;
  [[nodiscard]] std::string Completed(const std::string& path) const;
  [[nodiscard]] PickerAnswer AcceptTyped(const std::string& typed);
  void ReadFolder();
  void GoTo(const std::string& folder);
  void DropSelection();
  void ShowSelection();
  void Refuse(const std::string& path);

  Session& session_;
  FilePickerOptions options_;
  std::vector<FileFilter> filters_;
  size_t filter_ = 0;
  std::string pattern_ = "*";
  std::string folder_;
  // What is in the folder and not hidden.
  std::vector<std::string> files_;
  std::vector<std::string> folders_;
  std::string name_;
  std::vector<std::string> selection_;
  std::string description_;
  std::string owner_line_;
  std::vector<std::string> paths_;
};

}  // namespace carnetel
