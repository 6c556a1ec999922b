#include "desktop/window/system_signals.h"

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <QSocketNotifier>
#include <array>

namespace carnetel::desktop {
namespace {

constexpr std::array<int, 3> kEndingSignals = {SIGTERM, SIGINT, SIGHUP};

// Where the handler writes; a handler can reach nothing but a variable of the process.
volatile sig_atomic_t g_write_end = -1;

void Forward(int /*signal*/) {
  const char byte = 1;
  (void)!::write(g_write_end, &byte, 1);
}

}  // namespace

SystemSignals::SystemSignals(QObject* parent) : QObject(parent) {
  if (::pipe2(ends_, O_CLOEXEC | O_NONBLOCK) != 0) return;
  g_write_end = ends_[1];
  auto* notifier = new QSocketNotifier(ends_[0], QSocketNotifier::Read, this);
  connect(notifier, &QSocketNotifier::activated, this, &SystemSignals::Read);
  struct sigaction action = {};
  action.sa_handler = Forward;
  action.sa_flags = SA_RESTART;
  for (const int signal : kEndingSignals) ::sigaction(signal, &action, nullptr);
}

SystemSignals::~SystemSignals() {
  for (const int signal : kEndingSignals) ::signal(signal, SIG_DFL);
  g_write_end = -1;
  for (const int end : ends_) ::close(end);
}

void SystemSignals::Read() {
  std::array<char, 16> bytes;
  while (::read(ends_[0], bytes.data(), bytes.size()) > 0) {
  }
  Q_EMIT endRequested();
}

}  // namespace carnetel::desktop
