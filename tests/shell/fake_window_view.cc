#include "tests/shell/fake_window_view.h"

namespace carnetel {
namespace {

bool IsQuestion(MessageStyle style) {
  return style != MessageStyle::kError && style != MessageStyle::kInformation;
}

bool IsField(int control) {
  return control >= kControlSte1 && control <= kControlNotes;
}

}  // namespace

MessageButton QueuedMessages::Show(MessageStyle style, int title_id, const std::string& text) {
  shown_.push_back({style, title_id, text});
  if (while_shown) while_shown();
  if (!IsQuestion(style)) return MessageButton::kOk;
  if (answers_.empty()) {
    ADD_FAILURE() << "no answer for: " << text;
    return MessageButton::kCancel;
  }
  const MessageButton answer = answers_.front();
  answers_.pop_front();
  return answer;
}

std::string FakeWindowView::FieldText(int control) const {
  const auto found = texts_.find(control);
  return found == texts_.end() ? std::string() : found->second;
}

void FakeWindowView::SetFieldText(int control, const std::string& utf8) {
  texts_[control] = utf8;
  if (logic_ != nullptr && IsNumberControl(control)) logic_->NumbersChanged();
}

void FakeWindowView::SetButton(int button, bool on) {
  if (on) {
    enabled_.insert(button);
  } else {
    enabled_.erase(button);
  }
}

void FakeWindowView::TakeFocus(int control) {
  if (focus == control) return;
  focus = control;
  if (logic_ == nullptr) return;
  if (control == kControlList) {
    logic_->form().ListEntered();
    logic_->ListFocused();
  } else if (IsField(control)) {
    logic_->form().FieldEntered(control);
    logic_->FieldFocused();
  }
}

void FakeWindowView::Type(int control, const std::string& utf8) {
  TakeFocus(control);
  before_change_ = FieldText(control);
  texts_[control] = utf8;
  logic_->form().FieldChanged(control);
  if (IsNumberControl(control)) logic_->NumbersChanged();
}

void FakeWindowView::TypeReference(int row, const std::string& utf8) {
  TakeFocus(kControlReferences);
  references[static_cast<size_t>(row)] = utf8;
  logic_->form().FieldChanged(kControlReferences, row);
}

void FakeWindowView::Press(int button) {
  EXPECT_TRUE(IsEnabled(button)) << "button " << button << " is grey";
  Run(button);
}

void FakeWindowView::Run(int command) {
  logic_->Dispatch(command);
  DeliverPosted();
}

void FakeWindowView::ClickRow(int row) {
  TakeFocus(kControlList);
  logic_->list().ForgetTypedLetter();
  logic_->list().SetCurrentRow(row);
  DeliverPosted();
}

void FakeWindowView::DeliverPosted() {
  while (!posted.empty()) {
    const int command = posted.front();
    posted.pop_front();
    if (command == kLeaveQuestion) {
      logic_->form().LeaveQuestion();
    } else {
      logic_->Dispatch(command);
    }
  }
}

}  // namespace carnetel
