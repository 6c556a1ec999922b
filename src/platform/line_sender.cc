#include "platform/line_sender.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

namespace carnetel {

BrokenPipeGuard::BrokenPipeGuard() : former_(::signal(SIGPIPE, SIG_IGN)) {}

BrokenPipeGuard::~BrokenPipeGuard() {
  ::signal(SIGPIPE, former_);
}

bool SendLine(const std::string& path, const std::string& line) {
  const int descriptor =
      ::open(path.c_str(), O_WRONLY | O_APPEND | O_CREAT | O_NONBLOCK | O_CLOEXEC, 0666);
  if (descriptor < 0) return false;
  const std::string text = line + '\n';
  const bool sent =
      ::write(descriptor, text.data(), text.size()) == static_cast<ssize_t>(text.size());
  ::close(descriptor);
  return sent;
}

}  // namespace carnetel
