#include "desktop/controls/window_messages.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <array>

#include "desktop/controls/wait_cursor.h"

namespace carnetel::desktop {
namespace {

struct Caption {
  MessageButton button;
  const char* text;
  QMessageBox::ButtonRole role;
};
constexpr std::array kCaptions = {
    Caption{MessageButton::kOk, "OK", QMessageBox::AcceptRole},
    Caption{MessageButton::kYes, "Oui", QMessageBox::YesRole},
    Caption{MessageButton::kNo, "Non", QMessageBox::NoRole},
    Caption{MessageButton::kCancel, "Annuler", QMessageBox::RejectRole},
};
constexpr const char* kButtonProperty = "message_button";

bool HasButton(MessageStyle style, MessageButton button) {
  switch (style) {
    case MessageStyle::kError:
    case MessageStyle::kInformation:
      return button == MessageButton::kOk;
    case MessageStyle::kOkCancel:
      return button == MessageButton::kOk || button == MessageButton::kCancel;
    case MessageStyle::kYesNo:
    case MessageStyle::kYesNoDefaultNo:
      return button == MessageButton::kYes || button == MessageButton::kNo;
    case MessageStyle::kYesNoCancel:
      return button != MessageButton::kOk;
  }
  return false;
}

QMessageBox::Icon SymbolOf(MessageStyle style) {
  switch (style) {
    case MessageStyle::kError:
      return QMessageBox::Critical;
    case MessageStyle::kInformation:
      return QMessageBox::Information;
    case MessageStyle::kOkCancel:
      return QMessageBox::Warning;
    case MessageStyle::kYesNoCancel:
    case MessageStyle::kYesNo:
    case MessageStyle::kYesNoDefaultNo:
      return QMessageBox::Question;
  }
  return QMessageBox::NoIcon;
}

// What Escape and the window's cross answer.
MessageButton EscapeButton(MessageStyle style) {
  if (HasButton(style, MessageButton::kCancel)) return MessageButton::kCancel;
  return HasButton(style, MessageButton::kNo) ? MessageButton::kNo : MessageButton::kOk;
}

MessageButton PressedButton(const QMessageBox& box, MessageStyle style) {
  const QAbstractButton* pressed = box.clickedButton();
  if (pressed == nullptr) return EscapeButton(style);
  return static_cast<MessageButton>(pressed->property(kButtonProperty).toInt());
}

}  // namespace

MessageButton DefaultButton(MessageStyle style) {
  if (style == MessageStyle::kYesNoDefaultNo) return MessageButton::kNo;
  return HasButton(style, MessageButton::kYes) ? MessageButton::kYes : MessageButton::kOk;
}

void WindowMessages::Prepare(QMessageBox& box, MessageStyle style, int title_id,
                             const std::string& text) {
  const std::string_view title = MessageTitle(title_id);
  box.setWindowTitle(QString::fromUtf8(title.data(), static_cast<qsizetype>(title.size())));
  box.setTextFormat(Qt::PlainText);
  box.setText(QString::fromStdString(text));
  box.setIcon(SymbolOf(style));
  box.setWindowModality(Qt::ApplicationModal);
  for (const Caption& caption : kCaptions) {
    if (!HasButton(style, caption.button)) continue;
    QPushButton* button = box.addButton(QString::fromUtf8(caption.text), caption.role);
    button->setProperty(kButtonProperty, static_cast<int>(caption.button));
    button->setObjectName(QString::number(static_cast<int>(caption.button)));
    if (caption.button == DefaultButton(style)) box.setDefaultButton(button);
    if (caption.button == EscapeButton(style)) box.setEscapeButton(button);
  }
}

MessageButton WindowMessages::Show(MessageStyle style, int title_id, const std::string& text) {
  if (script_ != nullptr) {
    script_->shown.push_back({style, title_id, text});
    if (script_->answers.empty()) return DefaultButton(style);
    const MessageButton answer = script_->answers.front();
    script_->answers.pop_front();
    return answer;
  }
  const WaitCursorPause arrow;
  QMessageBox box(QApplication::activeWindow());
  Prepare(box, style, title_id, text);
  box.exec();
  return PressedButton(box, style);
}

}  // namespace carnetel::desktop
