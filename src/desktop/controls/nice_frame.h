// The frames around the zones of a window: a thin two-tone edge, raised or sunken by kind, and the
// plain panels of the card form.
#pragma once

#include <QFrame>

namespace carnetel::desktop {

class NiceFrame : public QFrame {
  Q_OBJECT

 public:
  enum class Kind {
    kRaised,  // light above, dark below
    kSunken,  // dark above, light below
    kJoined,  // raised, without an upper edge: the letter tabs draw that one
    kPanel,   // a panel of the card form: rounded, one thin line
    kLine,    // a line across
  };

  // `id` becomes the object name.
  NiceFrame(int id, Kind kind, QWidget* parent = nullptr);

  [[nodiscard]] Kind kind() const { return kind_; }
  [[nodiscard]] QSize sizeHint() const override;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  void PaintPanel(QPainter& painter) const;

  Kind kind_;
};

}  // namespace carnetel::desktop
