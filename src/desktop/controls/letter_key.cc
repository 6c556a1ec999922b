#include "desktop/controls/letter_key.h"

#include <QString>

namespace carnetel::desktop {
namespace {

// Codes of the keys 1 to 9 and 0 of the upper row, side by side on every keyboard.
#ifdef Q_OS_WINDOWS
constexpr quint32 kFirstDigitKey = 2;
#else
constexpr quint32 kFirstDigitKey = 10;
#endif
constexpr quint32 kDigitKeys = 10;

std::optional<char> DigitOfUpperRow(const QKeyEvent& event) {
  const quint32 place = event.nativeScanCode() - kFirstDigitKey;
  if (event.modifiers() != Qt::NoModifier || place >= kDigitKeys) return std::nullopt;
  return static_cast<char>('0' + (place + 1) % 10);
}

}  // namespace

std::optional<char> LetterOfKey(const QKeyEvent& event) {
  if (event.modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) {
    return std::nullopt;
  }
  if (const auto digit = DigitOfUpperRow(event)) return digit;
  if (event.text().isEmpty()) return std::nullopt;
  const QString plain = event.text().normalized(QString::NormalizationForm_D);
  const char16_t letter = plain.at(0).toUpper().unicode();
  const bool known = (letter >= u'0' && letter <= u'9') || (letter >= u'A' && letter <= u'Z');
  return known ? std::optional(static_cast<char>(letter)) : std::nullopt;
}

}  // namespace carnetel::desktop
