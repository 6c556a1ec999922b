// Says whether a long loop is at work that lets events through. Closing, quitting, drops, timers
// and checks that arrive then must wait: whoever handles one asks IsBusy first and, if so, does it
// on becameIdle.
#pragma once

#include <QObject>
#include <functional>

namespace carnetel::desktop {

class BusyState : public QObject {
  Q_OBJECT

 public:
  using QObject::QObject;

  [[nodiscard]] bool IsBusy() const { return depth_ > 0; }
  // Whether a loop is at work. If so, `then` runs when it has ended and `who` is still there.
  [[nodiscard]] bool PutsOff(QObject* who, std::function<void()> then);

  void Enter() { ++depth_; }
  void Leave();

 Q_SIGNALS:
  void becameIdle();

 private:
  int depth_ = 0;
};

// Busy for the life of a scope.
class BusyScope {
 public:
  explicit BusyScope(BusyState& state) : state_(state) { state_.Enter(); }
  ~BusyScope() { state_.Leave(); }
  BusyScope(const BusyScope&) = delete;
  BusyScope& operator=(const BusyScope&) = delete;

 private:
  BusyState& state_;
};

}  // namespace carnetel::desktop
