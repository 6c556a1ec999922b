// The program `carnetel`: one command line, one role, one exit.
#include <QApplication>
#include <QLibraryInfo>
#include <QTranslator>
#include <algorithm>
#include <iostream>

#include "desktop/controls/faces.h"
#include "desktop/controls/window_messages.h"
#include "desktop/controls/window_progress.h"
#include "desktop/roles/run_windows.h"
#include "platform/instance_guard.h"
#include "platform/posix_file_system.h"
#include "platform/program_start.h"
#include "shell/start_command.h"

namespace carnetel::desktop {
namespace {

// Rows that the list takes, for trying out what happens when there are more. A directory named
// directly makes every setting read as its default, this one too.
int ListCapacity(const Session& session, const UserProfile& profile) {
  constexpr int kMostRows = static_cast<int>(kMaxCards);
  if (session.request().direct_open) return kMostRows;
  return std::clamp(profile.Int(LoadText(231), "ListCapacity", kMostRows), 0, kMostRows);
}

CallerNotifier NotifierOf(const StartupRequest& request, const Environment& environment) {
  return {request.caller_window, std::cout, environment,
          [](uint32_t window, int message, int32_t w_param, int32_t l_param) {
            CallerWindow(window).Send(message, w_param, l_param);
          }};
}

int Run(int argc, char** argv) {
  const Environment environment = SystemEnvironment;
  // A second instance ends at once: no message, no word to whoever started it.
  const std::unique_ptr<FileLock> instance = TakeInstanceGuard(environment);
  if (instance == nullptr) return 0;
  const StartupRequest request = ParseCommandLine(JoinArguments(argc, argv));
  // The toolkit would take options of its own out of the command line.
  int own_argc = 1;
  QApplication application(own_argc, argv);
  application.setQuitOnLastWindowClosed(false);
  application.setWindowIcon(ApplicationIcon());
  QTranslator translator;
  if (translator.load(QStringLiteral("qtbase_fr"),
                      QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
    QApplication::installTranslator(&translator);
  }
  PosixFileSystem files;
  SystemClock clock;
  BusyState busy;
  WindowMessages messages;
  WindowProgress progress(busy);
  UserProfile profile(files, ProfilePath(environment));
  const std::string home = HomeFolder(files, environment, ExecutableFolder());
  files.MakeFolder(home);
  const auto start_program = [&files](const std::string& command_line) {
    return StartCommand(files, command_line, StartProgram);
  };
  Session session({files, clock, progress, messages, profile, start_program}, request, home);
  session.SetDebugLine(DebugLineFor(environment));
  session.Start();
  RunWindows windows(session, busy, ListCapacity(session, profile));
  RunSession(session, windows, NotifierOf(request, environment));
  return 0;
}

}  // namespace
}  // namespace carnetel::desktop

int main(int argc, char** argv) {
  return carnetel::desktop::Run(argc, argv);
}
