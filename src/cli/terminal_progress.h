// The progress box as one line on standard error: title, bar and percentage, drawn again at most
// ten times a second and taken away at the end. Without a terminal nothing is drawn; the user's
// wish to stop is answered all the same.
#pragma once

#include <cstdint>
#include <functional>
#include <iosfwd>
#include <optional>
#include <string>

#include "base/messages.h"

namespace carnetel {

class TerminalProgress : public ProgressBox {
 public:
  TerminalProgress(std::ostream& err, bool shown, std::function<bool()> interrupted,
                   std::function<int64_t()> milliseconds);

  void Open(ProgressForm form, uint32_t total) override;
  [[nodiscard]] bool Step(std::string_view text = {}) override;
  void Close() override;

  // Takes the bar off the screen until the next step.
  void Erase();

 private:
  void Draw();

  std::ostream& err_;
  bool shown_;
  std::function<bool()> interrupted_;
  std::function<int64_t()> milliseconds_;
  std::optional<ProgressCounter> counter_;
  int64_t drawn_at_ = 0;
  bool on_screen_ = false;
};

}  // namespace carnetel
