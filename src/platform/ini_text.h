// The text of an INI file, looked up and changed by the line: everything but the one value that
// changes stays as it is, byte for byte (comments, blank lines, order, line ends, a byte order
// mark, lines that nobody understands). Sections and keys are found without regard to the case of
// ASCII letters; of several equal keys of a section the first counts. The text is UTF-8 and lines
// end with LF, CR LF or CR.
//
// A library (SimpleIni) was tried: on saving it drops blank lines, the byte order mark, CR LF,
// lines without '=' and all but one of equal keys. It does not read for us either: after a line
// like
// "[oops" it takes the keys that follow away from their section, so that a value just written into
// the kept text would not be read back. One function finds the line for reading and for writing.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace carnetel {

// What stands behind the '=' of a key, without the blanks around it; none when the key is missing.
[[nodiscard]] std::optional<std::string_view> FindIniValue(std::string_view text,
                                                           std::string_view section,
                                                           std::string_view key);

// `text` with the value of a key replaced; a missing key is put behind the last key of its section,
// a missing section at the end. `value` holds no line end.
[[nodiscard]] std::string WithIniValue(std::string text, std::string_view section,
                                       std::string_view key, std::string_view value);

}  // namespace carnetel
