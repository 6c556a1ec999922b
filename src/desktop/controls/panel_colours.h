// The colours of the card form. At rest its panels are of the face colour with dark blue text, in
// edit look of the window's own with dark red text; labels of numbers and references are dark red
// always. They follow the desktop's palette: on a dark one the blue and the red are lighter kin.
#pragma once

#include <QColor>
#include <QList>
#include <QObject>
#include <QPalette>
#include <QPointer>
#include <QWidget>

namespace carnetel::desktop {

// Text colours that can be read on some background.
struct InkColours {
  QColor blue;
  QColor red;
  QColor disabled;
};
[[nodiscard]] InkColours InkFor(const QColor& background, const QPalette& palette);

// The two tones of a frame's edge.
struct EdgeColours {
  QColor light;
  QColor dark;
};
[[nodiscard]] EdgeColours FrameEdges(const QPalette& palette);

enum class PanelLook { kRest, kEdit };
enum class PanelRole {
  kPanel,      // the panels themselves
  kText,       // fields and labels: blue at rest, red in edit look
  kReference,  // numbers, references and notes with their labels: red always
};

// The palette of a widget of the form in that look, on a desktop with palette `system`.
[[nodiscard]] QPalette PanelPalette(const QPalette& system, PanelLook look, PanelRole role);

// Keeps the widgets of one form in its colours, also when the desktop changes its palette.
class PanelColours : public QObject {
  Q_OBJECT

 public:
  explicit PanelColours(QObject* parent = nullptr);

  void Add(QWidget* widget, PanelRole role);
  void SetLook(PanelLook look);
  [[nodiscard]] PanelLook look() const { return look_; }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct Member {
    QPointer<QWidget> widget;
    PanelRole role;
  };

  void Apply();

  PanelLook look_ = PanelLook::kRest;
  QList<Member> members_;
};

}  // namespace carnetel::desktop
