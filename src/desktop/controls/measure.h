// Sizes that grow with the text. Lengths of this window are told in pixels beside an ordinary
// 9-point font; Measure turns them into the pixels of the font at hand, never into fewer.
#pragma once

#include <QFontMetrics>

namespace carnetel::desktop {

[[nodiscard]] int Measure(int pixels, const QFontMetrics& metrics);

}  // namespace carnetel::desktop
