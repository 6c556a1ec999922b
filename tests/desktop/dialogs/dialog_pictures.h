// Pictures of dialogs for eyes, with ordinary letters and with letters twice as large, saved beside
// the test program; no text of the dialog may be cut off in them.
#pragma once

#include "tests/desktop/dialogs/dialog_testing.h"

namespace carnetel::desktop {

// The application's letters at a size in percent, as long as it lives.
class LettersAt {
 public:
  explicit LettersAt(int percent) {
    QFont font = former_;
    font.setPointSizeF(former_.pointSizeF() * percent / 100);
    QApplication::setFont(font);
  }
  ~LettersAt() { QApplication::setFont(former_); }
  LettersAt(const LettersAt&) = delete;
  LettersAt& operator=(const LettersAt&) = delete;

 private:
  QFont former_ = QApplication::font();
};

// dialog_NAME_PERCENT.png
inline void SavePicture(QDialog& dialog, const QString& name, int percent) {
  dialog.show();
  ASSERT_TRUE(QTest::qWaitForWindowExposed(&dialog));
  ExpectTextsFit(dialog);
  const QString file = QStringLiteral("dialog_%1_%2.png").arg(name).arg(percent);
  EXPECT_TRUE(dialog.grab().save(file));
}

}  // namespace carnetel::desktop
