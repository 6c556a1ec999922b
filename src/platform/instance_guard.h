// Keeps a second window of one user from starting: whoever comes second ends at once and silently.
// The lock lies in $XDG_RUNTIME_DIR, which is the user's own, or else in /tmp under the user's
// number.
#pragma once

#include <memory>

#include "platform/file_lock.h"
#include "platform/folders.h"

namespace carnetel {

// Held for the whole life of the process; null when another instance holds it.
[[nodiscard]] std::unique_ptr<FileLock> TakeInstanceGuard(const Environment& environment);

}  // namespace carnetel
