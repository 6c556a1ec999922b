#include "desktop/roles/run_windows.h"

#include <QApplication>
#include <QSessionManager>

#include "desktop/window/chooser_window.h"
#include "desktop/window/main_window.h"

namespace carnetel::desktop {

RunWindows::RunWindows(Session& session, BusyState& busy, int list_capacity)
    : session_(session),
      busy_(busy),
      list_capacity_(list_capacity),
      caller_(session.request().caller_window),
      dialogs_(nullptr, busy) {
  dialogs_.SetCaller(caller_);
  connect(&signals_, &SystemSignals::endRequested, this, &RunWindows::EndAsked);
  connect(qApp, &QGuiApplication::commitDataRequest, this, [this](QSessionManager& manager) {
    // The desktop is to know of the box, whatever it thinks of it.
    (void)manager.allowsInteraction();
    RefuseShutdown(session_.services().messages, [&manager] { manager.cancel(); });
  });
}

// The loops of dialogs and boxes end, and those that would still come end at once.
void RunWindows::EndAsked() {
  end_asked_ = true;
  if (end_window_) {
    end_window_();
    return;
  }
  QApplication::closeAllWindows();
  QApplication::exit();
}

template <class Window>
void RunWindows::Run(Window& window) {
  // The wish came while another role was at work that this one would follow.
  if (end_asked_) return;
  connect(&window, &Window::ended, qApp, &QApplication::quit);
  end_window_ = [&window] { window.QuitUnasked(); };
  window.Start();
  caller_.Own(window);
  window.show();
  QApplication::exec();
  end_window_ = {};
  caller_.ShowAgain();
}

void RunWindows::RunMainWindow() {
  MainWindow window(session_, busy_, list_capacity_);
  Run(window);
}

int32_t RunWindows::RunChooser(ChooserKind kind) {
  ChooserWindow window(session_, busy_, kind, list_capacity_);
  Run(window);
  return window.result();
}

}  // namespace carnetel::desktop
