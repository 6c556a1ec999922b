// The user who waits for a page in the box of a print run and does something then: while that page
// is being shown, so that it happens in the middle of the run, every time.
#pragma once

#include <QApplication>
#include <QEvent>
#include <QLabel>
#include <QPushButton>
#include <functional>

#include "desktop/print/abort_box.h"

namespace carnetel::desktop {

class AtPage : public QObject {
 public:
  using Act = std::function<void(AbortBox& box)>;

  AtPage(int page, Act act) : text_(QStringLiteral("Page %1").arg(page)), act_(std::move(act)) {
    qApp->installEventFilter(this);
  }
  [[nodiscard]] bool IsDone() const { return done_; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    auto* label = qobject_cast<QLabel*>(watched);
    if (done_ || label == nullptr || event->type() != QEvent::Paint) return false;
    auto* box = qobject_cast<AbortBox*>(label->window());
    if (box == nullptr || label->objectName() != "page" || label->text() != text_) return false;
    done_ = true;
    // Not within the painting.
    QMetaObject::invokeMethod(
        box, [this, box] { act_(*box); }, Qt::QueuedConnection);
    return false;
  }

 private:
  QString text_;
  Act act_;
  bool done_ = false;
};

inline void PressAbandon(const AbortBox& box) {
  box.findChild<QPushButton*>(QStringLiteral("abandon"))->click();
}

}  // namespace carnetel::desktop
