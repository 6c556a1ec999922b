#include "cli/terminal_messages.h"

#include <istream>
#include <ostream>
#include <utility>

#include "base/text.h"
#include "cli/json_form.h"

namespace carnetel {
namespace {

constexpr int kErrorTitle = 79;
constexpr int kAttentionTitle = 80;

}  // namespace

std::string OneLine(const std::string& text) {
  std::string line;
  bool at_start = false;
  for (const char byte : text) {
    if (byte == '\r' || (at_start && byte == ' ')) continue;
    at_start = byte == '\n';
    if (at_start && line.ends_with('.')) {
      line += ' ';
    } else if (at_start) {
      line += line.ends_with(' ') ? "" : " : ";
    } else {
      // Names out of foreign files may hold control bytes.
      const auto code = static_cast<unsigned char>(byte);
      line += code < 0x20 || code == 0x7F ? ' ' : byte;
    }
  }
  CutTrailingBlanks(line);
  return line;
}

TerminalMessages::TerminalMessages(std::istream& in, std::ostream& err,
                                   const MessageOptions& options, std::function<void()> clear_line)
    : in_(in), err_(err), options_(options), clear_line_(std::move(clear_line)) {}

std::string TerminalMessages::Place() const {
  return script_line_ == 0 ? " : " : " (ligne " + std::to_string(script_line_) + ") : ";
}

void TerminalMessages::Error(const std::string& text) {
  clear_line_();
  if (options_.json) {
    const std::string line = script_line_ == 0 ? "" : "ligne " + std::to_string(script_line_);
    err_ << ErrorLine(line.empty() ? OneLine(text) : line + " : " + OneLine(text)) << '\n';
  } else {
    err_ << MessageTitle(kErrorTitle) << Place() << OneLine(text) << '\n';
  }
  err_.flush();
}

void TerminalMessages::Warn(const std::string& text) {
  clear_line_();
  err_ << MessageTitle(kAttentionTitle) << Place() << OneLine(text) << '\n';
  err_.flush();
}

void TerminalMessages::Inform(const std::string& text) {
  if (options_.quiet) return;
  clear_line_();
  err_ << OneLine(text) << '\n';
  err_.flush();
}

bool TerminalMessages::Ask(const std::string& text) {
  if (options_.yes) return true;
  clear_line_();
  if (!options_.can_ask) {
    err_ << OneLine(text) << " Non (--yes pour répondre oui)\n";
    return false;
  }
  err_ << OneLine(text) << " [o/N] ";
  err_.flush();
  std::string answer;
  if (!std::getline(in_, answer)) err_ << '\n';
  return answer.starts_with('o') || answer.starts_with('O');
}

MessageButton TerminalMessages::Show(MessageStyle style, int /*title_id*/,
                                     const std::string& text) {
  switch (style) {
    case MessageStyle::kError:
      Error(text);
      return MessageButton::kOk;
    case MessageStyle::kInformation:
      Inform(text);
      return MessageButton::kOk;
    case MessageStyle::kOkCancel:
      return Ask(text) ? MessageButton::kOk : MessageButton::kCancel;
    case MessageStyle::kYesNoCancel:
    case MessageStyle::kYesNo:
    case MessageStyle::kYesNoDefaultNo:
      return Ask(text) ? MessageButton::kYes : MessageButton::kNo;
  }
  return MessageButton::kCancel;
}

}  // namespace carnetel
