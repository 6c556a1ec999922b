// The progress box of the window: a small modal box that counts, with a gauge and, where the work
// may be stopped, the button "Abandon". Its steps also keep the application alive: the events that
// wait are dispatched at each percent and at least every 40 ms, never more often, since a step may
// take microseconds.
#pragma once

#include <QElapsedTimer>
#include <QPointer>
#include <optional>

#include "base/messages.h"
#include "desktop/controls/busy_state.h"

class QDialog;

namespace carnetel::desktop {

class ProgressWindow;

class WindowProgress : public ProgressBox {
 public:
  static constexpr int kPumpMilliseconds = 40;
  static constexpr int kClosingPauseMilliseconds = 1000;

  // `busy` is held from Open to Close. It must outlive this object.
  explicit WindowProgress(BusyState& busy);
  ~WindowProgress() override;

  void Open(ProgressForm form, uint32_t total) override;
  [[nodiscard]] bool Step(std::string_view text = {}) override;
  void Close() override;

  // How long the finished box stays to be read; 0 where no screen is present.
  void SetClosingPause(int milliseconds) { closing_pause_ = milliseconds; }

  // The box while it is open (object name "104"); otherwise null.
  [[nodiscard]] QDialog* Box() const;

 private:
  void Pump();

  BusyState& busy_;
  int closing_pause_;
  std::optional<ProgressCounter> counter_;
  QPointer<ProgressWindow> box_;
  QElapsedTimer since_pump_;
  int shown_percent_ = -1;
};

}  // namespace carnetel::desktop
