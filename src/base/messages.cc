#include "base/messages.h"

#include <algorithm>
#include <utility>

namespace carnetel {
namespace {

constexpr int kDefaultTitle = 51;
constexpr std::string_view kTemplateLabel = "Nombre de fiches trouvées :";

int TitleText(ProgressForm form) {
  switch (form) {
    case ProgressForm::kBuildIndex:
      return 54;
    case ProgressForm::kDelete:
      return 57;
    case ProgressForm::kSelection:
      return 55;
    case ProgressForm::kTransfer:
      return 56;
  }
  return kDefaultTitle;
}

}  // namespace

std::string_view MessageTitle(int title_id) {
  return LoadText(title_id == 0 ? kDefaultTitle : title_id);
}

ProgressCounter::ProgressCounter(ProgressForm form, uint32_t total) : form_(form), total_(total) {}

ProgressCounter::Update ProgressCounter::Step(std::string_view text) {
  ++count_;
  const bool own_text = form_ == ProgressForm::kDelete || form_ == ProgressForm::kSelection;
  std::string value = own_text ? std::string(text) : std::to_string(count_);
  Update update;
  update.repaint_gauge = form_ != ProgressForm::kDelete || !text.empty();
  if (value.empty() || value == shown_) return update;
  shown_ = value;
  update.value = std::move(value);
  return update;
}

std::string ProgressCounter::Title() const {
  return FormatText(TitleText(form_), total_);
}

std::string_view ProgressCounter::Label() const {
  if (form_ == ProgressForm::kDelete) return LoadText(58);
  if (form_ == ProgressForm::kTransfer) return LoadText(97);
  return kTemplateLabel;
}

uint64_t ProgressCounter::CappedCount() const {
  return std::min(count_, total_);
}

int ProgressCounter::Percent() const {
  return total_ == 0 ? 0 : static_cast<int>(CappedCount() * 100 / total_);
}

std::string ProgressCounter::PercentText() const {
  return ShowsGauge() ? FormatPrintf("%3d%%", {Percent()}) : std::string();
}

int ProgressCounter::FilledWidth(int width) const {
  if (total_ == 0 || width <= 0) return 0;
  return static_cast<int>(static_cast<uint64_t>(width) * CappedCount() / total_);
}

MessageButton SilentMessages::Show(MessageStyle style, int title_id, const std::string& text) {
  shown_.push_back({style, title_id, text});
  return answer_;
}

}  // namespace carnetel
