// What an edit field lets its user enter: a filter class (which characters), a case rule (what
// becomes of letters first) and a limit in bytes. Everything here is a pure function over Unicode
// characters; the edit fields of the window call it for what is typed and what is pasted. Fields
// end up in single-byte text of code page 850, so a byte is a character, and a line break two
// bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace carnetel {

enum class FilterClass : uint8_t {
  kEverything = 0,
  kCapitals = 1,
  kDigits = 2,
  kNumber = 3,       // telephone numbers with their pauses and prefixes; control characters
  kPath = 4,         // paths with drive letters; "/" is entered as "\"
  kPathPattern = 5,  // the same with "*" and "?", "/" stays
  kKeyCapitals = 6,  // capitals, digits, blank and seven accented capitals
  kNativePath = 7,   // paths of this system: anything but a zero character, code page or not
};

enum class CaseRule : uint8_t { kNone = 0, kUpper = 1, kLower = 2 };

struct EntryRule {
  FilterClass filter_class = FilterClass::kEverything;
  CaseRule case_rule = CaseRule::kNone;
};

// Whether the class lets a character pass that has been through ApplyCaseRule.
[[nodiscard]] bool AcceptsCharacter(FilterClass filter_class, char32_t character);

// The other form of a letter of code page 1252; everything else as it is.
[[nodiscard]] char32_t ApplyCaseRule(CaseRule rule, char32_t character);

// The character that enters the field for a typed one; nothing when it is refused. Backspace passes
// unchanged and untested. A character that code page 850 lacks is refused, except in native paths.
[[nodiscard]] std::optional<char32_t> FilterCharacter(const EntryRule& rule, char32_t character);

// `refused`: at least one character was left out, which is worth one beep.
struct FilteredText {
  std::u32string text;
  bool refused = false;
};

[[nodiscard]] FilteredText FilterTyped(const EntryRule& rule, std::u32string_view text);

enum class LineBreaks { kToBlank, kKeep };

// As FilterTyped, but characters that code page 850 lacks are first replaced by those they look
// like (quotes, dashes, ligatures, special blanks), a tab by a blank and a line break (CR LF, CR or
// LF) by one blank or by "\n"; other control characters are refused.
[[nodiscard]] FilteredText FilterPasted(const EntryRule& rule, LineBreaks line_breaks,
                                        std::u32string_view text);

// Bytes that `text` takes in its field; a "\n" is stored as CR LF.
[[nodiscard]] size_t EntryBytes(std::u32string_view text);

// Cuts `filtered` at the last character that fits into `room` bytes.
void CutToRoom(FilteredText& filtered, size_t room);

}  // namespace carnetel
