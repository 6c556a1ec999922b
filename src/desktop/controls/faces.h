// The pictures of the window: one family of drawings in six tones, kept as SVG files in
// desktop/icons and painted at the size and pixel ratio asked for. Tones follow the palette, so
// that the same drawing serves light and dark desktops and, in greys, buttons that are off.
#pragma once

#include <QColor>
#include <QIcon>
#include <QPalette>
#include <QPixmap>
#include <QSize>

namespace carnetel::desktop {

enum class Face {
  kOpen,
  kImport,
  kPrint,
  kSearch,
  kGroups,
  kSelect,
  kHelp,
  kQuit,
  kNewCard,
  kCancelCard,
  kSaveChange,
  kSaveNew,
  kMark,
  kDelete,
  kDeleteMarked,
  kNotes,
  kReferences,
  kVoice,
  kIsdn,
  kFax,
  kFiles,
  kTerminal,
  kNext,
  kPrevious,
  kExtractCard,
  kExtractGroup,
  kExtractMarked,
  kViewCard,
  kClearMarks,
  kListMark,
  kListFlag,
};
inline constexpr int kFaceCount = static_cast<int>(Face::kListFlag) + 1;

struct FaceTones {
  QColor ink;
  QColor paper;
  QColor soft;
  QColor accent;
  QColor danger;
  QColor back;  // what the face stands on; parts the front of a drawing from what is behind it

  friend bool operator==(const FaceTones&, const FaceTones&) = default;
};

// Tones of a face on the button colour of `palette`; in greys unless `active`.
[[nodiscard]] FaceTones TonesFor(const QPalette& palette, bool active);

// The face as large as fits into `size` (device independent pixels), centred, on nothing.
[[nodiscard]] QPixmap PaintFace(Face face, QSize size, qreal pixel_ratio, const FaceTones& tones);

// The program's own icon, in the sizes that desktops ask for.
[[nodiscard]] QIcon ApplicationIcon();

}  // namespace carnetel::desktop
