#include "desktop/controls/busy_state.h"

namespace carnetel::desktop {

void BusyState::Leave() {
  if (--depth_ == 0) Q_EMIT becameIdle();
}

}  // namespace carnetel::desktop
