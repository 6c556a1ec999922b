// The two ways in which any part of the system speaks to its user: MessageForm asks and tells,
// ProgressBox accompanies a long loop and says whether to go on. Both are ports: the window and the
// terminal implement them, work that has no listener takes the silent ones. ProgressCounter is what
// the progress displays share: what to show, without a display.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/format_text.h"

namespace carnetel {

// Buttons, symbol and default button, in the numbers of the platform the system was made for.
enum class MessageStyle {
  kError = 16,            // OK, stop sign; title 79 "Erreur"
  kYesNoCancel = 35,      // question mark
  kYesNo = 36,            // question mark
  kOkCancel = 49,         // exclamation
  kInformation = 64,      // OK; title 80 "Attention"
  kYesNoDefaultNo = 292,  // question mark
};

enum class MessageButton { kOk = 1, kCancel = 2, kYes = 6, kNo = 7 };

// Title of a message: that text of the string table, "Carnetel " for 0.
[[nodiscard]] std::string_view MessageTitle(int title_id);

class MessageForm {
 public:
  virtual ~MessageForm() = default;

  // Shows `text` (UTF-8) and answers the button the user chose, one of those of `style`.
  virtual MessageButton Show(MessageStyle style, int title_id, const std::string& text) = 0;

  // Shows text `text_id` of the string table with `args` filled in.
  template <class... Args>
  MessageButton ShowMessage(MessageStyle style, int title_id, int text_id, const Args&... args) {
    return Show(style, title_id, FormatText(text_id, args...));
  }
};

enum class ProgressForm { kBuildIndex = 1, kDelete = 4, kSelection = 7, kTransfer = 8 };

class ProgressBox {
 public:
  virtual ~ProgressBox() = default;

  // `total` is the number of steps to come. Opening forgets an earlier abort request.
  virtual void Open(ProgressForm form, uint32_t total) = 0;

  // One unit is done. `text` (UTF-8) is the key of the card with kDelete and the number of marked
  // cards with kSelection, may be empty, and is not looked at otherwise. True: the user wants the
  // loop to stop; the box stays until Close.
  [[nodiscard]] virtual bool Step(std::string_view text = {}) = 0;

  virtual void Close() = 0;
};

// Counts the steps of one progress box and says what it shows.
class ProgressCounter {
 public:
  ProgressCounter(ProgressForm form, uint32_t total);

  struct Update {
    std::optional<std::string> value;  // new text behind the label, if it changes
    bool repaint_gauge = true;
  };
  // Counts one unit; `text` as in ProgressBox::Step.
  Update Step(std::string_view text);

  [[nodiscard]] uint32_t count() const { return count_; }
  [[nodiscard]] uint32_t total() const { return total_; }
  [[nodiscard]] std::string Title() const;
  [[nodiscard]] std::string_view Label() const;
  [[nodiscard]] bool CanAbort() const { return form_ != ProgressForm::kBuildIndex; }

  // Without steps done, or without a total, there is no gauge and no text.
  [[nodiscard]] bool ShowsGauge() const { return count_ != 0 && total_ != 0; }
  [[nodiscard]] int Percent() const;              // 0 to 100
  [[nodiscard]] std::string PercentText() const;  // such as " 42%", empty without a gauge
  // Filled part of a gauge that is `width` wide, in the same unit.
  [[nodiscard]] int FilledWidth(int width) const;

 private:
  [[nodiscard]] uint64_t CappedCount() const;

  ProgressForm form_;
  uint32_t total_;
  uint32_t count_ = 0;
  std::string shown_;
};

// Gives every question the same answer and remembers what it was asked.
class SilentMessages : public MessageForm {
 public:
  struct Entry {
    MessageStyle style;
    int title_id;
    std::string text;
  };

  explicit SilentMessages(MessageButton answer = MessageButton::kOk) : answer_(answer) {}

  MessageButton Show(MessageStyle style, int title_id, const std::string& text) override;
  [[nodiscard]] const std::vector<Entry>& shown() const { return shown_; }

 private:
  MessageButton answer_;
  std::vector<Entry> shown_;
};

// Shows nothing and never asks for an abort.
class SilentProgress : public ProgressBox {
 public:
  void Open(ProgressForm /*form*/, uint32_t /*total*/) override {}
  [[nodiscard]] bool Step(std::string_view /*text*/ = {}) override { return false; }
  void Close() override {}
};

}  // namespace carnetel
