#include "desktop/controls/busy_state.h"

#include <utility>

namespace carnetel::desktop {

bool BusyState::PutsOff(QObject* who, std::function<void()> then) {
  if (!IsBusy()) return false;
  connect(this, &BusyState::becameIdle, who, std::move(then),
          static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection));
  return true;
}

void BusyState::Leave() {
  if (--depth_ == 0) Q_EMIT becameIdle();
}

}  // namespace carnetel::desktop
