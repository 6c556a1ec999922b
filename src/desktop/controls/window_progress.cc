#include "desktop/controls/window_progress.h"

#include <QApplication>
#include <QEventLoop>
#include <QTimer>

#include "desktop/controls/progress_window.h"

namespace carnetel::desktop {
namespace {

bool IsScreenPresent() {
  const QString platform = QGuiApplication::platformName();
  return platform != QLatin1String("offscreen") && platform != QLatin1String("minimal");
}

}  // namespace

WindowProgress::WindowProgress(BusyState& busy)
    : busy_(busy), closing_pause_(IsScreenPresent() ? kClosingPauseMilliseconds : 0) {}

WindowProgress::~WindowProgress() {
  if (!counter_) return;
  delete box_;
  busy_.Leave();
}

QDialog* WindowProgress::Box() const {
  return box_;
}

void WindowProgress::Open(ProgressForm form, uint32_t total) {
  if (counter_) {
    delete box_;
  } else {
    busy_.Enter();
  }
  counter_.emplace(form, total);
  shown_percent_ = -1;
  box_ = new ProgressWindow(*counter_, QApplication::activeWindow());
  box_->show();
  Pump();
}

void WindowProgress::Pump() {
  QCoreApplication::processEvents();
  since_pump_.restart();
}

bool WindowProgress::Step(std::string_view text) {
  if (!counter_ || box_ == nullptr) return false;
  const ProgressCounter::Update update = counter_->Step(text);
  if (update.value) box_->ShowValue(QString::fromStdString(*update.value));
  const bool new_percent = update.repaint_gauge && counter_->Percent() != shown_percent_;
  if (new_percent || since_pump_.hasExpired(kPumpMilliseconds)) {
    if (update.repaint_gauge) {
      shown_percent_ = counter_->Percent();
      box_->RepaintGauge();
    }
    Pump();
  }
  return box_ != nullptr && box_->AbortRequested();
}

void WindowProgress::Close() {
  if (!counter_) return;
  if (box_ != nullptr) {
    box_->Finish();
    box_->RepaintGauge();
    Pump();
    if (closing_pause_ > 0) {
      QEventLoop pause;
      QTimer::singleShot(closing_pause_, &pause, &QEventLoop::quit);
      pause.exec();
    }
  }
  delete box_;
  counter_.reset();
  busy_.Leave();
}

}  // namespace carnetel::desktop
