// Targets of print runs that only a terminal has: standard output, and any target that ends when
// the user presses Ctrl+C.
#pragma once

#include <iosfwd>

#include "cli/cli_session.h"
#include "printing/print_target.h"

namespace carnetel {

// The text file of a run as a terminal reads it: UTF-8, line feeds behind lines, form feeds between
// pages. Line ends within notes break the line as in the file; other control bytes become blanks.
class StreamTarget : public PrintTarget {
 public:
  explicit StreamTarget(std::ostream& out) : out_(out) {}

  [[nodiscard]] PrintText text() const override { return PrintText::kOem; }
  void PrintLine(std::string_view line) override;
  void NewPage() override;
  // Once nobody takes the output any more.
  [[nodiscard]] bool Ended() const override;

 private:
  std::ostream& out_;
};

class InterruptibleTarget : public PrintTarget {
 public:
  InterruptibleTarget(const CliSession& session, PrintTarget& target)
      : session_(session), target_(target) {}

  [[nodiscard]] PrintText text() const override { return target_.text(); }
  void PrintLine(std::string_view line) override { target_.PrintLine(line); }
  void NewPage() override { target_.NewPage(); }
  [[nodiscard]] bool Ended() const override { return session_.interrupted() || target_.Ended(); }

 private:
  const CliSession& session_;
  PrintTarget& target_;
};

}  // namespace carnetel
