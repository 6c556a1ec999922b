// A drop-down that chooses among fixed rows: displayed group, active selection. Connect to
// `activated`: it is the user's choice alone. The wheel does not change it.
#pragma once

#include <QComboBox>

namespace carnetel::desktop {

class PickerCombo : public QComboBox {
  Q_OBJECT

 public:
  // `id` becomes the object name.
  explicit PickerCombo(int id, QWidget* parent = nullptr);

  // Shows these rows with `current` picked; no signal.
  void SetRows(const QStringList& rows, int current);

 Q_SIGNALS:
  void focusEntered(Qt::FocusReason reason);

 protected:
  void wheelEvent(QWheelEvent* event) override;
  void focusInEvent(QFocusEvent* event) override;
};

}  // namespace carnetel::desktop
