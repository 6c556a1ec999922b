// A path in a dialog: one that is too long is shown with its middle left out, and
// whole as soon as the mouse comes over it. text() is the whole path, for screen readers too.
#pragma once

#include <QLabel>

namespace carnetel::desktop {

class PathLabel : public QLabel {
  Q_OBJECT

 public:
  explicit PathLabel(QWidget* parent = nullptr);

  void SetPath(const QString& path);
  // What is painted.
  [[nodiscard]] QString ShownText() const;

  [[nodiscard]] QSize sizeHint() const override;
  [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

 protected:
  void paintEvent(QPaintEvent* event) override;
  void enterEvent(QEnterEvent* event) override;
};

}  // namespace carnetel::desktop
