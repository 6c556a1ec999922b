#include "shell/invalid_file.h"

#include <utility>

#include "storage/recovery.h"

namespace carnetel {

InvalidFileForm::InvalidFileForm(Session& session, std::function<void()> destroy)
    : session_(session), destroy_(std::move(destroy)), path_(session.unrecognised_file()) {
  CheckFile();
}

void InvalidFileForm::set_choice(InvalidFileChoice choice) {
  if (choice == InvalidFileChoice::kRecover && !may_recover()) return;
  choice_ = choice;
}

void InvalidFileForm::CheckFile() {
  FileSystem& files = session_.services().files;
  if (!path_.empty() && files.Exists(FindAnyCase(files, path_))) return;
  path_.clear();
  choice_ = InvalidFileChoice::kCreate;
}

void InvalidFileForm::Recover() {
  // Another one may be open than at the beginning, or none: a destruction opens it anew.
  Directory* directory = session_.directory();
  if (directory == nullptr) return;
  (void)RecoverCards(*directory, FindAnyCase(session_.services().files, path_));
}

std::optional<InvalidFileEnd> InvalidFileForm::Confirm() {
  switch (choice_) {
    case InvalidFileChoice::kRecover:
      Recover();
      return InvalidFileEnd::kRecovered;
    case InvalidFileChoice::kCreate:
      return InvalidFileEnd::kCreate;
    case InvalidFileChoice::kLoad:
      return InvalidFileEnd::kLoad;
    case InvalidFileChoice::kDestroy:
      destroy_();
      CheckFile();
      return {};
  }
  return {};
}

}  // namespace carnetel
