// What the tool says beside its results, all of it on standard error: failures, warnings,
// information, and questions, which are asked of a person at a terminal and answered "no" without
// one.
#pragma once

#include <functional>
#include <iosfwd>
#include <string>

#include "base/messages.h"

namespace carnetel {

struct MessageOptions {
  bool json = false;   // failures as {"error": ...}
  bool yes = false;    // every question is answered with yes
  bool quiet = false;  // no information
  bool can_ask = false;
};

class TerminalMessages : public MessageForm {
 public:
  // `clear_line` runs before each text, to take away a progress bar that stands there.
  TerminalMessages(std::istream& in, std::ostream& err, const MessageOptions& options,
                   std::function<void()> clear_line);

  MessageButton Show(MessageStyle style, int title_id, const std::string& text) override;

  // `text` in UTF-8; it may hold line ends, which are shown as blanks.
  void Error(const std::string& text);
  void Warn(const std::string& text);
  void Inform(const std::string& text);

  // The line of a script that what is said from now on belongs to; 0 for none.
  void set_script_line(int line) { script_line_ = line; }
  [[nodiscard]] int script_line() const { return script_line_; }

 private:
  [[nodiscard]] bool Ask(const std::string& text);
  [[nodiscard]] std::string Place() const;

  std::istream& in_;
  std::ostream& err_;
  MessageOptions options_;
  std::function<void()> clear_line_;
  int script_line_ = 0;
};

// A text of a message box as one line: line ends become " : " behind a name and a blank elsewhere.
[[nodiscard]] std::string OneLine(const std::string& text);

}  // namespace carnetel
