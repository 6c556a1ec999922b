#include "desktop/dialogs/fixed_dialog.h"

#include <QKeyEvent>
#include <QScreen>

#include "base/dialog_template.h"
#include "shell/command_table.h"

namespace carnetel::desktop {

FixedDialog::FixedDialog(int number, int help_topic, QWidget* parent)
    : QDialog(parent), help_topic_(help_topic) {
  setObjectName(QString::number(number));
  setWindowTitle(QString::fromUtf8(DialogTitle(number)));
}

void FixedDialog::SetMainWindowFrame() {
  setWindowFlags(Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                 Qt::WindowSystemMenuHint | Qt::WindowMinimizeButtonHint |
                 Qt::WindowCloseButtonHint);
}

void FixedDialog::CentreOnScreen() {
  adjustSize();
  move(screen()->availableGeometry().center() - rect().center());
}

QPushButton* FixedDialog::MakeButton(int id, const QString& caption) {
  auto* button = new QPushButton(caption, this);
  button->setObjectName(QString::number(id));
  button->setDefault(id == kCommandConfirm);
  return button;
}

QPushButton* FixedDialog::MakeHelpButton() {
  QPushButton* button = MakeButton(kCommandHelpKey, QStringLiteral("?"));
  button->setAccessibleName(QStringLiteral("Aide"));
  connect(button, &QPushButton::clicked, this, [this] { Q_EMIT helpWanted(help_topic_); });
  return button;
}

void FixedDialog::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_F1 && help_topic_ != 0) {
    Q_EMIT helpWanted(help_topic_);
    return;
  }
  QDialog::keyPressEvent(event);
}

}  // namespace carnetel::desktop
