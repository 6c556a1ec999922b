// A button with a picture and no caption on it: toolbar, form column and sibling column consist of
// these. The caption is told by the tooltip (BubbleTip) and to screen readers. A button that is off
// stays alive, so that it still tells its caption: it is painted in greys, cannot be reached by
// Tab, and answers a press with a beep. Arrow keys between buttons are ButtonRow's.
#pragma once

#include <QAbstractButton>

#include "desktop/controls/beeper.h"
#include "desktop/controls/faces.h"

namespace carnetel::desktop {

enum class ButtonSize { kToolbar, kFormColumn, kSibling };

class BubbleButton : public QAbstractButton {
  Q_OBJECT

 public:
  // `id` becomes the object name. New buttons are active.
  BubbleButton(int id, Face face, ButtonSize size, const QString& caption,
               QWidget* parent = nullptr);

  // On or off; isEnabled() stays true for a button that is off.
  void SetActive(bool active);
  [[nodiscard]] bool IsActive() const { return active_; }

  void SetFace(Face face);
  [[nodiscard]] Face face() const { return face_; }

  // Whether Tab stops here while the button is active; of a row, one button does.
  void SetTabStop(bool tab_stop);

  void SetBeeper(Beeper beeper) { beep_ = std::move(beeper); }

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

 Q_SIGNALS:
  void activeChanged(bool active);

 protected:
  void paintEvent(QPaintEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void changeEvent(QEvent* event) override;
  void enterEvent(QEnterEvent* event) override;
  void leaveEvent(QEvent* event) override;

 private:
  void UpdateFocusPolicy();
  void PaintSurface(QPainter& painter) const;
  const QPixmap& Picture();

  Face face_;
  ButtonSize size_;
  bool active_ = true;
  bool tab_stop_ = true;
  Beeper beep_ = SystemBeep;
  QPixmap picture_;  // null: to be painted anew
};

}  // namespace carnetel::desktop
