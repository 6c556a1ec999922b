// Messages of an operation that tells its outcome in a message box: the tool prints that as its
// result, so what merely informs is left out here.
#pragma once

#include <string>

#include "cli/terminal_messages.h"

namespace carnetel {

class ResultMessages : public MessageForm {
 public:
  explicit ResultMessages(TerminalMessages& messages) : messages_(messages) {}

  MessageButton Show(MessageStyle style, int title_id, const std::string& text) override {
    if (style == MessageStyle::kInformation) return MessageButton::kOk;
    told_failure_ = told_failure_ || style == MessageStyle::kError;
    return messages_.Show(style, title_id, text);
  }
  [[nodiscard]] bool told_failure() const { return told_failure_; }

 private:
  TerminalMessages& messages_;
  bool told_failure_ = false;
};

}  // namespace carnetel
