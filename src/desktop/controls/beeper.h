// The sound of a refusal. Every control that refuses something takes one of these, so that a test
// counts what a user would hear.
#pragma once

#include <functional>

namespace carnetel::desktop {

using Beeper = std::function<void()>;

// The sound of the desktop; what a control beeps with unless it is given another.
void SystemBeep();

}  // namespace carnetel::desktop
