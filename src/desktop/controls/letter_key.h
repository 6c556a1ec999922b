// Which digit or letter a key press means on a list, on any keyboard.
#pragma once

#include <QKeyEvent>
#include <optional>

namespace carnetel::desktop {

// '0' to '9' or 'A' to 'Z': the letter without its accent, the digit also of the upper row of
// keyboards that have digits with Shift only. Nothing for other keys and shortcuts.
[[nodiscard]] std::optional<char> LetterOfKey(const QKeyEvent& event);

}  // namespace carnetel::desktop
