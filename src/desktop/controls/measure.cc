#include "desktop/controls/measure.h"

#include <algorithm>

namespace carnetel::desktop {
namespace {

// Line height of a 9-point sans serif font at 96 dots an inch.
constexpr double kOrdinaryHeight = 15.0;

}  // namespace

int Measure(int pixels, const QFontMetrics& metrics) {
  return qRound(pixels * std::max(1.0, metrics.height() / kOrdinaryHeight));
}

}  // namespace carnetel::desktop
