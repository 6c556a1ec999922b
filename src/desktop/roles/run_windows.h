// The windows of one run. Whichever is open, a signal that asks the program to end closes it
// without a question, the desktop's shutdown is refused, and the window of the program that started
// this one is its owner and comes back behind it.
#pragma once

#include <QObject>
#include <functional>

#include "desktop/controls/busy_state.h"
#include "desktop/controls/caller_window.h"
#include "desktop/dialogs/window_dialogs.h"
#include "desktop/window/system_signals.h"
#include "shell/roles.h"

namespace carnetel::desktop {

class RunWindows : public QObject, public RoleWindows {
  Q_OBJECT

 public:
  // `list_capacity`: rows that the lists take. What is passed must outlive this object.
  RunWindows(Session& session, BusyState& busy, int list_capacity);

  void RunMainWindow() override;
  int32_t RunChooser(ChooserKind kind) override;
  DialogHost& Dialogs() override { return dialogs_; }

 private:
  // Shows a window of a role until it has ended.
  template <class Window>
  void Run(Window& window);
  void EndAsked();

  Session& session_;
  BusyState& busy_;
  int list_capacity_;
  CallerWindow caller_;
  WindowDialogs dialogs_;
  SystemSignals signals_;
  bool end_asked_ = false;
  // Ends the window that is open; empty for a role without one.
  std::function<void()> end_window_;
};

}  // namespace carnetel::desktop
