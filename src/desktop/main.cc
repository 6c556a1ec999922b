// The program `carnetel`: one command line, one role, one exit.
#include <QApplication>
#include <QLibraryInfo>
#include <QSessionManager>
#include <QTranslator>
#include <algorithm>
#include <iostream>

#include "desktop/controls/faces.h"
#include "desktop/controls/window_messages.h"
#include "desktop/controls/window_progress.h"
#include "desktop/window/main_window.h"
#include "desktop/window/system_signals.h"
#include "platform/instance_guard.h"
#include "platform/posix_file_system.h"
#include "shell/caller_notifier.h"

namespace carnetel::desktop {
namespace {

// Rows that the list takes, for trying out what happens when there are more. A directory named
// directly makes every setting read as its default, this one too.
int ListCapacity(const Session& session, const UserProfile& profile) {
  constexpr int kMostRows = static_cast<int>(kMaxCards);
  if (session.request().direct_open) return kMostRows;
  return std::clamp(profile.Int(LoadText(231), "ListCapacity", kMostRows), 0, kMostRows);
}

void RunMainWindow(QApplication& application, Session& session, BusyState& busy, int capacity) {
  MainWindow window(session, busy, capacity);
  QObject::connect(&window, &MainWindow::ended, &application, &QApplication::quit);
  // A signal ends the window as the command to quit does, without its question.
  const SystemSignals signals_of_system;
  QObject::connect(&signals_of_system, &SystemSignals::endRequested, &window,
                   &MainWindow::QuitUnasked);
  // Whatever role runs, a desktop that shuts down has to wait for it.
  QObject::connect(&application, &QGuiApplication::commitDataRequest, &window,
                   [&session](QSessionManager& manager) {
                     session.services().messages.ShowMessage(MessageStyle::kError, 51, 264);
                     manager.cancel();
                   });
  window.Start();
  window.show();
  QApplication::exec();
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
  Session session({files, clock, progress, messages, profile}, request, home);
  session.SetDebugLine(DebugLineFor(environment));
  session.Start();
  bool fell_back = false;
  (void)session.OpenAtStart(&fell_back);
  if (session.role().command == kRoleMainWindow) {
    RunMainWindow(application, session, busy, ListCapacity(session, profile));
  }
  // Also when the opening failed for a role that runs nothing then and tells nobody.
  session.Exit();
  return 0;
}

}  // namespace
}  // namespace carnetel::desktop

int main(int argc, char** argv) {
  return carnetel::desktop::Run(argc, argv);
}
