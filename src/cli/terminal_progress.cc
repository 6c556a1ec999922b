#include "cli/terminal_progress.h"

#include <ostream>
#include <utility>

namespace carnetel {
namespace {

constexpr int64_t kRedrawMilliseconds = 100;
constexpr int kBarWidth = 24;
constexpr const char* kEraseLine = "\r\x1B[K";

}  // namespace

TerminalProgress::TerminalProgress(std::ostream& err, bool shown, std::function<bool()> interrupted,
                                   std::function<int64_t()> milliseconds)
    : err_(err),
      shown_(shown),
      interrupted_(std::move(interrupted)),
      milliseconds_(std::move(milliseconds)) {}

void TerminalProgress::Open(ProgressForm form, uint32_t total) {
  counter_.emplace(form, total);
  drawn_at_ = shown_ ? milliseconds_() : 0;
}

bool TerminalProgress::Step(std::string_view text) {
  if (!counter_) return interrupted_();
  (void)counter_->Step(text);
  if (shown_ && milliseconds_() - drawn_at_ >= kRedrawMilliseconds) Draw();
  return counter_->CanAbort() && interrupted_();
}

void TerminalProgress::Close() {
  Erase();
  counter_.reset();
}

void TerminalProgress::Erase() {
  if (!on_screen_) return;
  err_ << kEraseLine;
  err_.flush();
  on_screen_ = false;
}

void TerminalProgress::Draw() {
  drawn_at_ = milliseconds_();
  const int filled = counter_->FilledWidth(kBarWidth);
  std::string bar(static_cast<size_t>(filled), '#');
  bar.resize(kBarWidth, '.');
  err_ << kEraseLine << counter_->Title() << " [" << bar << ']' << counter_->PercentText();
  err_.flush();
  on_screen_ = true;
}

}  // namespace carnetel
