// A progress box that shows nothing: it remembers what it was told, and asks for an abort after so
// many steps.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "base/messages.h"

namespace carnetel {

class RecordingProgress : public ProgressBox {
 public:
  void Open(ProgressForm form, uint32_t total) override { opened.emplace_back(form, total); }
  [[nodiscard]] bool Step(std::string_view text) override {
    texts.emplace_back(text);
    ++steps;
    if (steps == act_after) act();
    return steps == abort_after;
  }
  void Close() override { ++closed; }

  std::vector<std::pair<ProgressForm, uint32_t>> opened;
  std::vector<std::string> texts;
  int steps = 0;
  int closed = 0;
  int abort_after = 0;  // 0: never
  int act_after = 0;
  std::function<void()> act;
};

}  // namespace carnetel
