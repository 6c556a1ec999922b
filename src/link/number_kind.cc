#include "link/number_kind.h"

namespace carnetel {

NumberKind NumberKindOf(uint8_t byte) {
  switch (byte) {
    case 2:
    case 4:
    case 8:
    case 16:
      return static_cast<NumberKind>(byte);
    default:
      return NumberKind::kFax;
  }
}

NumberKindInfo InfoOf(NumberKind kind) {
  switch (kind) {
    case NumberKind::kModem:
      return {kModem, 248, kHasModem};
    case NumberKind::kMinitel:
      return {kMtel, 252, kHasMinitel};
    case NumberKind::kTel1:
      return {kTel1, 250, kHasTel1};
    case NumberKind::kTel2:
      return {kTel2, 251, 0};
    case NumberKind::kFax:
      break;
  }
  return {kFax, 249, kHasFax};
}

}  // namespace carnetel
