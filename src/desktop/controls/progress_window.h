// The box that WindowProgress shows, and the gauge in it.
#pragma once

#include <QDialog>
#include <QLabel>
#include <QPushButton>
#include <QWidget>

#include "base/messages.h"

namespace carnetel::desktop {

// Paints how far the counter has come: its percent text changes colour at the edge of the filled
// part. Empty while there is nothing to show.
class ProgressGauge : public QWidget {
  Q_OBJECT

 public:
  explicit ProgressGauge(const ProgressCounter& counter, QWidget* parent = nullptr);

  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  const ProgressCounter& counter_;
};

class ProgressWindow : public QDialog {
  Q_OBJECT

 public:
  // `counter` must outlive the window.
  ProgressWindow(const ProgressCounter& counter, QWidget* parent);

  void ShowValue(const QString& value) { value_->setText(value); }
  void RepaintGauge() { gauge_->update(); }
  // The work is over: nothing can be stopped any more.
  void Finish();
  [[nodiscard]] bool AbortRequested() const { return abort_requested_; }

  // Escape and the window's cross: a wish to stop, where there is one. The box stays.
  void reject() override { RequestAbort(); }

 protected:
  void closeEvent(QCloseEvent* event) override;

 private:
  void RequestAbort();

  QLabel* value_;
  ProgressGauge* gauge_;
  QPushButton* abandon_ = nullptr;  // null where the work cannot be stopped
  bool abort_requested_ = false;
};

}  // namespace carnetel::desktop
