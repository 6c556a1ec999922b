// A widget's picture with one pixel for each unit of its coordinates, whatever the screen.
#pragma once

#include <QImage>
#include <QWidget>

namespace carnetel::desktop {

inline QImage PaintedImage(QWidget& widget) {
  QImage image(widget.size(), QImage::Format_RGB32);
  image.fill(widget.palette().color(QPalette::Window));
  widget.render(&image);
  return image;
}

}  // namespace carnetel::desktop
