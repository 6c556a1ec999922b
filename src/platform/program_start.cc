#include "platform/program_start.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <optional>

namespace carnetel {
namespace {

constexpr int kSignalBase = 128;

// What a program is started with; it refers to the words.
class Spawner {
 public:
  explicit Spawner(const std::vector<std::string>& words) {
    for (const std::string& word : words) arguments_.push_back(const_cast<char*>(word.c_str()));
    arguments_.push_back(nullptr);
    ready_ = !words.empty() && ::posix_spawn_file_actions_init(&actions_) == 0;
    if (ready_ && ::posix_spawnattr_init(&attributes_) != 0) {
      ::posix_spawn_file_actions_destroy(&actions_);
      ready_ = false;
    }
    Do([this] { return OpenNull(STDIN_FILENO, O_RDONLY); });
    Do([this] { return OpenNull(STDOUT_FILENO, O_WRONLY); });
  }
  ~Spawner() {
    if (!ready_) return;
    ::posix_spawnattr_destroy(&attributes_);
    ::posix_spawn_file_actions_destroy(&actions_);
  }
  Spawner(const Spawner&) = delete;
  Spawner& operator=(const Spawner&) = delete;

  void BeginIn(const std::string& folder) {
    Do([&] { return ::posix_spawn_file_actions_addchdir_np(&actions_, folder.c_str()); });
  }
  // No terminal's signals reach it then.
  void InOwnSession() {
    Do([this] { return ::posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSID); });
  }

  [[nodiscard]] std::optional<pid_t> Spawn() {
    pid_t process = 0;
    if (!ready_ || !complete_) return {};
    const int error = ::posix_spawnp(&process, arguments_.front(), &actions_, &attributes_,
                                     arguments_.data(), environ);
    return error == 0 ? std::optional(process) : std::nullopt;
  }

 private:
  template <class Step>
  void Do(Step step) {
    if (ready_ && complete_) complete_ = step() == 0;
  }
  int OpenNull(int descriptor, int flags) {
    return ::posix_spawn_file_actions_addopen(&actions_, descriptor, "/dev/null", flags, 0);
  }

  std::vector<char*> arguments_;
  posix_spawn_file_actions_t actions_{};
  posix_spawnattr_t attributes_{};
  bool ready_ = false;
  bool complete_ = true;
};

int WaitFor(pid_t process) {
  int status = 0;
  pid_t ended = 0;
  do {
    ended = ::waitpid(process, &status, 0);
  } while (ended < 0 && errno == EINTR);
  if (ended < 0) return -1;
  return WIFEXITED(status) ? WEXITSTATUS(status) : kSignalBase + WTERMSIG(status);
}

}  // namespace

int RunProgram(const std::vector<std::string>& words) {
  const std::optional<pid_t> process = Spawner(words).Spawn();
  return process ? WaitFor(*process) : -1;
}

// A process between the two ends at once, so that the program is nobody's child to be waited for.
bool StartProgram(const std::vector<std::string>& words, const std::string& working_folder) {
  Spawner spawner(words);
  if (!working_folder.empty()) spawner.BeginIn(working_folder);
  spawner.InOwnSession();
  const pid_t between = ::fork();
  if (between == 0) ::_exit(spawner.Spawn() ? 0 : 1);
  return between > 0 && WaitFor(between) == 0;
}

}  // namespace carnetel
