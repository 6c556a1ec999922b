// The rules of the dialog about a main file that the start could not open, shown over the numbered
// directory that was opened in its place: its cards can be saved into that one, another directory
// made or opened, or the file destroyed, after which the dialog goes on without it.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "shell/dialog_host.h"
#include "shell/session.h"

namespace carnetel {

// The numbers are those of the choices' controls.
enum class InvalidFileChoice { kCreate = 687, kLoad = 688, kDestroy = 689, kRecover = 690 };

class InvalidFileForm {
 public:
  // `destroy` lets the user choose files to destroy; the unrecognised one may be among them.
  InvalidFileForm(Session& session, std::function<void()> destroy);

  // The unrecognised file; empty once it is gone.
  [[nodiscard]] const std::string& path() const { return path_; }
  [[nodiscard]] bool may_recover() const { return !path_.empty(); }
  [[nodiscard]] InvalidFileChoice choice() const { return choice_; }
  // Not for kRecover without a file: then nothing changes.
  void set_choice(InvalidFileChoice choice);

  // Does what is chosen and says how the dialog ends; nothing when it stays. A recovery that could
  // not read the file, or was stopped, ends it too: what was recovered is in the directory.
  [[nodiscard]] std::optional<InvalidFileEnd> Confirm();

 private:
  void Recover();
  // Without the file there is nothing to recover.
  void CheckFile();

  Session& session_;
  std::function<void()> destroy_;
  std::string path_;
  InvalidFileChoice choice_ = InvalidFileChoice::kRecover;
};

}  // namespace carnetel
