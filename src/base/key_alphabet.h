// The characters a key field (company, surname) may begin with: the seven accented OEM capitals
// Ü Ö Ñ É Ä Å Æ, the digits and the letters. Bytes are OEM (code page 850).
#pragma once

#include <string>

namespace carnetel {

[[nodiscard]] bool IsKeyStart(unsigned char oem_byte);

// The same and the blank: what typing and imports let pass.
[[nodiscard]] bool IsKeyStartOrBlank(unsigned char oem_byte);

// Whether a text typed into a key field may begin as it does; an empty one may.
[[nodiscard]] bool MayStartKey(const std::string& utf8);

// `oem` without the leading characters that are not IsKeyStart; leading blanks go too.
[[nodiscard]] std::string StripToKeyStart(std::string oem);

}  // namespace carnetel
