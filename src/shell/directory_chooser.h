// The routine through which a directory is created, opened or destroyed: it shows the file dialog,
// says what cannot be done with the names chosen, and does the rest.
#pragma once

#include <string>
#include <vector>

#include "shell/dialog_host.h"
#include "shell/file_picker.h"

namespace carnetel {

// What the dialog lists and completes names with.
enum class ChooserMode {
  kAny = 0,
  kDirectories = 2,
  kDbase = 3,
  kInvalidFile = 5,  // directories, from the dialog about a file that is none
};

struct Choice {
  // The choice was confirmed and nothing of it refused. A directory that could not be opened after
  // that counts as confirmed too: the one from before was opened again.
  bool confirmed = false;
  std::vector<std::string> paths;
};

// The form that destroys does so with every directory chosen; the forms that create and open do so
// with `act`. In every other case the choice is only handed back.
[[nodiscard]] Choice ChooseDirectory(Session& session, DialogHost& host, ChooserTemplate form,
                                     ChooserMode mode, bool act);

}  // namespace carnetel
