#include "desktop/controls/picker_combo.h"

#include <QFocusEvent>
#include <QSignalBlocker>
#include <QWheelEvent>

namespace carnetel::desktop {

PickerCombo::PickerCombo(int id, QWidget* parent) : QComboBox(parent) {
  setObjectName(QString::number(id));
  setAcceptDrops(false);
  setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
}

void PickerCombo::SetRows(const QStringList& rows, int current) {
  const QSignalBlocker quiet(this);
  clear();
  addItems(rows);
  setCurrentIndex(current);
}

void PickerCombo::wheelEvent(QWheelEvent* event) {
  event->ignore();
}

void PickerCombo::focusInEvent(QFocusEvent* event) {
  const Qt::FocusReason reason = event->reason();
  QComboBox::focusInEvent(event);
  Q_EMIT focusEntered(reason);
}

}  // namespace carnetel::desktop
