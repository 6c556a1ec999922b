#include <unistd.h>

#include <chrono>
#include <csignal>
#include <iostream>

#include "cli/interruptible_input.h"
#include "cli/run_cli.h"
#include "platform/directory_guard.h"
#include "platform/interrupt.h"
#include "platform/measurement.h"
#include "platform/posix_file_system.h"
#include "platform/program_start.h"

namespace {

constexpr std::chrono::seconds kGuardWait{2};

volatile std::sig_atomic_t reader_left = 0;

extern "C" void NoteReaderLeft(int) {
  reader_left = 1;
}

std::shared_ptr<void> TakeGuard(const std::string& address_path) {
  return carnetel::DirectoryGuard::Take(address_path, kGuardWait);
}

int64_t Milliseconds() {
  const auto now = std::chrono::steady_clock::now().time_since_epoch();
  return std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
}

}  // namespace

int main(int argc, char** argv) {
  // A reader that went away is no reason to leave the stores open.
  std::signal(SIGPIPE, NoteReaderLeft);
  std::ios::sync_with_stdio(false);
  const carnetel::InterruptFlag interrupt;
  carnetel::InterruptibleInput input(STDIN_FILENO);
  std::istream in(&input);
  carnetel::PosixFileSystem files;
  carnetel::SystemClock clock;
  const bool err_is_terminal = ::isatty(STDERR_FILENO) == 1;
  const carnetel::CliEnvironment environment{
      .files = files,
      .clock = clock,
      .in = in,
      .out = std::cout,
      .err = std::cerr,
      .variables = carnetel::SystemEnvironment,
      .executable_folder = carnetel::ExecutableFolder(),
      .version = CARNETEL_VERSION,
      .can_ask = err_is_terminal && ::isatty(STDIN_FILENO) == 1,
      .shows_progress = err_is_terminal,
      .metric = carnetel::LocaleIsMetric(),
      .reader_left = [] { return reader_left != 0; },
      .interrupted = [&interrupt] { return interrupt.requested(); },
      .take_guard = TakeGuard,
      .run_program = carnetel::RunProgram,
      .milliseconds = Milliseconds};
  return carnetel::RunCli({argv + 1, argv + argc}, environment);
}
