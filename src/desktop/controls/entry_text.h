// Between the text of edit widgets and the entry rules of base/key_filter.h.
#pragma once

#include <QKeyEvent>
#include <QString>
#include <string>

#include "base/key_filter.h"

namespace carnetel::desktop {

[[nodiscard]] inline std::u32string ToCharacters(const QString& text) {
  return text.toStdU32String();
}

[[nodiscard]] inline QString FromCharacters(const std::u32string& characters) {
  return QString::fromStdU32String(characters);
}

[[nodiscard]] inline size_t EntryBytes(const QString& text) {
  return carnetel::EntryBytes(ToCharacters(text));
}

// Whether a key press enters text, and is not a shortcut.
[[nodiscard]] bool EntersText(const QKeyEvent& event);

// Keys that a field without input still leaves to its dialog: Tab, Escape, Enter and F1.
[[nodiscard]] bool IsDialogKey(const QKeyEvent& event);

}  // namespace carnetel::desktop
