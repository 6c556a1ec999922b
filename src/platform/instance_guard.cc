#include "platform/instance_guard.h"

#include <unistd.h>

namespace carnetel {

std::unique_ptr<FileLock> TakeInstanceGuard(const Environment& environment) {
  const std::string folder = environment("XDG_RUNTIME_DIR");
  const std::string path = folder.starts_with('/')
                               ? folder + "/carnetel.lock"
                               : "/tmp/carnetel-instance-" + std::to_string(::getuid()) + ".lock";
  return FileLock::Take(path, std::chrono::milliseconds(0));
}

}  // namespace carnetel
