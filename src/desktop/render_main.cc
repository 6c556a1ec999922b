// Draws the real main window of a directory into a picture, without a screen when the platform says
// so (QT_QPA_PLATFORM=offscreen): `carnetel-render DIRECTORY PICTURE.png`. For machines without a
// display and for the pictures in the documents. Nothing is changed in the user's settings.
#include <QApplication>
#include <iostream>

#include "desktop/controls/faces.h"
#include "desktop/window/main_window.h"
#include "platform/posix_file_system.h"

namespace carnetel::desktop {
namespace {

constexpr int kRowInPicture = 2;

int Render(const QString& directory, const QString& picture) {
  PosixFileSystem files;
  SystemClock clock;
  SilentProgress progress;
  SilentMessages messages;
  UserProfile profile(files, {});
  BusyState busy;
  if (!FileExists(files, FamilyPaths(files, directory.toStdString()).Main())) {
    std::cerr << "Carnetel introuvable : " << directory.toStdString() << '\n';
    return 1;
  }
  StartupRequest request;
  request.direct_open = true;
  request.direct_path = directory.toStdString();
  Session session({files, clock, progress, messages, profile}, request, {});
  session.Start();
  bool fell_back = false;
  if (!session.OpenAtStart(&fell_back) || fell_back) return 1;
  MainWindow window(session, busy, static_cast<int>(kMaxCards));
  window.Start();
  const int row = window.logic().list().current_row();
  window.logic().list().SetCurrentRow(kRowInPicture);
  window.show();
  QApplication::processEvents();
  const bool saved = window.grab().save(picture);
  // The directory keeps the row that its user left it on.
  window.logic().list().SetCurrentRow(row);
  window.Quit();
  if (!saved) std::cerr << "Image non écrite : " << picture.toStdString() << '\n';
  return saved ? 0 : 1;
}

}  // namespace
}  // namespace carnetel::desktop

int main(int argc, char** argv) {
  QApplication application(argc, argv);
  const QStringList arguments = QApplication::arguments();
  if (arguments.size() != 3) {
    std::cerr << "Usage : carnetel-render CARNETEL IMAGE.png\n";
    return 2;
  }
  return carnetel::desktop::Render(arguments[1], arguments[2]);
}
