// The notation in which users give separators, in at most 8 characters: one of twelve names such as
// TAB or CRLF, or tokens with blanks between them. A token of one character is that character, of
// two a decimal number, of three a decimal number or with an H at its end one in base 16 ("0Dh"),
// and a longer one is 0, as is any value that is no byte.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

namespace carnetel {

struct SeparatorName {
  std::string_view name;
  std::string_view code;
};

// In the order of the lists. The card separator's list is the names alone, the field separator's
// has these proposals in front.
inline constexpr std::array<SeparatorName, 12> kSeparatorNames = {{{"NUL", "00h"},
                                                                   {"BEL", "07h"},
                                                                   {"TAB", "09h"},
                                                                   {"LF", "0Ah"},
                                                                   {"FF", "0Ch"},
                                                                   {"CR", "0Dh"},
                                                                   {"SUB", "1Ah"},
                                                                   {"ESC", "1Bh"},
                                                                   {"CRLF", "0Dh 0Ah"},
                                                                   {"LFCR", "0Ah 0Dh"},
                                                                   {"CRFF", "0Dh 0Ch"},
                                                                   {"FFCR", "0Ch 0Dh"}}};
inline constexpr std::array<std::string_view, 3> kFieldSeparatorProposals = {"\" ,", "\" ;", ";"};

enum class SeparatorForm { kBytes, kDisplay };

// kBytes: the bytes that the text stands for, none for an empty text. kDisplay: the text as the
// form shows it, names as they stand, printable values as characters and others as "0Dh"; "00h" for
// an empty text.
[[nodiscard]] std::string ParseSeparator(std::string_view text, SeparatorForm form);

// The first position at or behind `from` at which `pattern` stands; -1 when there is none.
[[nodiscard]] std::ptrdiff_t FindBytes(std::string_view buffer, std::string_view pattern,
                                       size_t from);

}  // namespace carnetel
