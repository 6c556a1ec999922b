// The tooltip of the picture buttons. One object watches the mouse for the whole application: after
// three ticks of 500 ms over a button its caption appears below it, black on yellow, grey for a
// button that is off. The toolkit's own tooltips are kept away.
#pragma once

#include <QLabel>
#include <QObject>
#include <QPointer>
#include <QTimer>

#include "desktop/controls/bubble_button.h"

namespace carnetel::desktop {

class BubbleTip : public QObject {
  Q_OBJECT

 public:
  static constexpr int kTickMilliseconds = 500;
  static constexpr int kTicksToShow = 3;

  explicit BubbleTip(QObject* parent = nullptr);
  ~BubbleTip() override;

  // The user's wish for tooltips; on at first.
  void SetAllowed(bool allowed);

  // One tick of the clock; the timer's own doing, public so that tests need no waiting.
  void Tick();
  // Shows the tip of the button it runs for without waiting for the remaining ticks.
  void ShowNow();
  // Takes the tip away; the clock ends with its next tick.
  void Stop();

  // The tip while it is visible, for its text and place; otherwise null.
  [[nodiscard]] const QLabel* Visible() const;
  [[nodiscard]] bool IsTicking() const { return timer_.isActive(); }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void MouseOver(BubbleButton* button);
  void Show();
  void Place();
  [[nodiscard]] bool MayShow() const;

  QTimer timer_;
  int ticks_ = 0;
  bool allowed_ = true;
  QPointer<BubbleButton> button_;
  QPointer<QLabel> label_;
};

}  // namespace carnetel::desktop
