// Questions and news as message boxes over the active window: plain text, French captions whatever
// the desktop's language, the symbol and the default button that the style asks for.
#pragma once

#include <deque>
#include <vector>

#include "base/messages.h"

class QMessageBox;

namespace carnetel::desktop {

// What a test puts in place of the user: answers in order, and what was shown. With no answer left
// a box is answered by its default button.
struct MessageScript {
  std::deque<MessageButton> answers;
  std::vector<SilentMessages::Entry> shown;
};

class WindowMessages : public MessageForm {
 public:
  // With a script, no box opens. The script must outlive this object.
  explicit WindowMessages(MessageScript* script = nullptr) : script_(script) {}

  MessageButton Show(MessageStyle style, int title_id, const std::string& text) override;

  // Makes `box` what Show opens; a box of its own, so that a test looks at it without a loop.
  static void Prepare(QMessageBox& box, MessageStyle style, int title_id, const std::string& text);

 private:
  MessageScript* script_;
};

// The button that Enter presses in a box of that style.
[[nodiscard]] MessageButton DefaultButton(MessageStyle style);

}  // namespace carnetel::desktop
