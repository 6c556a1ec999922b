#include "base/key_filter.h"

#include <algorithm>
#include <iterator>

#include "base/code_page.h"
#include "base/utf8.h"

namespace carnetel {
namespace {

constexpr char32_t kBackspace = 8;
constexpr char32_t kFirstBeyondNumberControls = 27;
constexpr std::u32string_view kNumberCharacters = U" 1234567890:-+,@#*ABCDW";
constexpr std::u32string_view kPathCharacters =
    U"ABCDEFGHIJKLMNOPQRSTUVWXYZ0123456789:\\./@&#%!_-(){}^~$";
constexpr std::u32string_view kPatternCharacters = U"*?";
// The bytes DBh D4h D1h C9h C2h C5h C6h as a keyboard delivers them, in code page 1252. They are
// not the seven accented capitals of the key alphabet; fields of this class take these all the
// same.
constexpr std::u32string_view kKeyCapitals = U"\u00DB\u00D4\u00D1\u00C9\u00C2\u00C5\u00C6";

bool Contains(std::u32string_view table, char32_t character) {
  return table.find(character) != std::u32string_view::npos;
}

bool IsBetween(char32_t character, char32_t first, char32_t last) {
  return character >= first && character <= last;
}

bool IsCapital(char32_t character) {
  return IsBetween(character, U'A', U'Z');
}

bool IsDigit(char32_t character) {
  return IsBetween(character, U'0', U'9');
}

// The letters of code page 1252 whose two forms are not 20h apart.
struct LetterPair {
  char32_t small;
  char32_t capital;
};
constexpr LetterPair kOddPairs[] = {
    {0x0161, 0x0160}, {0x0153, 0x0152}, {0x017E, 0x017D}, {0x00FF, 0x0178}};

constexpr char32_t kMultiplication = 0xD7;
constexpr char32_t kDivision = 0xF7;

char32_t ToUpper(char32_t character) {
  for (const LetterPair& pair : kOddPairs) {
    if (character == pair.small) return pair.capital;
  }
  const bool small = IsBetween(character, U'a', U'z') ||
                     (IsBetween(character, 0xE0, 0xFE) && character != kDivision);
  return small ? character - 0x20 : character;
}

char32_t ToLower(char32_t character) {
  for (const LetterPair& pair : kOddPairs) {
    if (character == pair.capital) return pair.small;
  }
  const bool capital =
      IsCapital(character) || (IsBetween(character, 0xC0, 0xDE) && character != kMultiplication);
  return capital ? character + 0x20 : character;
}

bool IsInOemPage(char32_t character) {
  std::string utf8;
  AppendUtf8(utf8, character);
  return OemFromUtf8(utf8).refused.empty();
}

struct LookAlike {
  char32_t character;
  std::u32string_view replacement;
};
constexpr LookAlike kLookAlikes[] = {
    {0x00A0, U" "},  {0x0152, U"OE"}, {0x0153, U"oe"}, {0x02BC, U"'"},   {0x2002, U" "},
    {0x2003, U" "},  {0x2007, U" "},  {0x2009, U" "},  {0x200A, U" "},   {0x200B, U""},
    {0x2010, U"-"},  {0x2011, U"-"},  {0x2012, U"-"},  {0x2013, U"-"},   {0x2014, U"-"},
    {0x2015, U"-"},  {0x2018, U"'"},  {0x2019, U"'"},  {0x201A, U"'"},   {0x201B, U"'"},
    {0x201C, U"\""}, {0x201D, U"\""}, {0x201E, U"\""}, {0x2026, U"..."}, {0x202F, U" "},
    {0x2032, U"'"},  {0x2033, U"\""}, {0x2212, U"-"},  {0xFEFF, U""},
};

void AppendLookAlike(char32_t character, std::u32string& text) {
  const auto* found = std::ranges::find(kLookAlikes, character, &LookAlike::character);
  if (found == std::end(kLookAlikes)) {
    text += character;
  } else {
    text += found->replacement;
  }
}

std::u32string WithLookAlikes(LineBreaks line_breaks, std::u32string_view pasted) {
  std::u32string text;
  for (size_t i = 0; i < pasted.size(); ++i) {
    const char32_t character = pasted[i];
    if (character == U'\r' && i + 1 < pasted.size() && pasted[i + 1] == U'\n') continue;
    if (character == U'\r' || character == U'\n' || character == 0x2028 || character == 0x2029) {
      text += line_breaks == LineBreaks::kKeep ? U'\n' : U' ';
    } else if (character == U'\t') {
      text += U' ';
    } else {
      AppendLookAlike(character, text);
    }
  }
  return text;
}

bool IsPasteControl(char32_t character, LineBreaks line_breaks) {
  if (character == U'\n') return line_breaks == LineBreaks::kToBlank;
  return character < U' ' || character == 0x7F;
}

void AppendFiltered(const EntryRule& rule, char32_t character, FilteredText& filtered) {
  if (const auto passed = FilterCharacter(rule, character)) {
    filtered.text += *passed;
  } else {
    filtered.refused = true;
  }
}

}  // namespace

bool AcceptsCharacter(FilterClass filter_class, char32_t character) {
  switch (filter_class) {
    case FilterClass::kEverything:
      return true;
    case FilterClass::kCapitals:
      return IsCapital(character);
    case FilterClass::kDigits:
      return IsDigit(character);
    case FilterClass::kNumber:
      return character < kFirstBeyondNumberControls || Contains(kNumberCharacters, character);
    case FilterClass::kPath:
      return Contains(kPathCharacters, character);
    case FilterClass::kPathPattern:
      return Contains(kPatternCharacters, character) || Contains(kPathCharacters, character);
    case FilterClass::kKeyCapitals:
      return character == U' ' || IsDigit(character) || IsCapital(character) ||
             Contains(kKeyCapitals, character);
    case FilterClass::kNativePath:
      return character != 0;
  }
  return false;
}

char32_t ApplyCaseRule(CaseRule rule, char32_t character) {
  if (rule == CaseRule::kUpper) return ToUpper(character);
  if (rule == CaseRule::kLower) return ToLower(character);
  return character;
}

std::optional<char32_t> FilterCharacter(const EntryRule& rule, char32_t character) {
  if (character == kBackspace) return character;
  character = ApplyCaseRule(rule.case_rule, character);
  if (rule.filter_class == FilterClass::kPath && character == U'/') character = U'\\';
  if (!AcceptsCharacter(rule.filter_class, character)) return std::nullopt;
  if (rule.filter_class != FilterClass::kNativePath && !IsInOemPage(character)) {
    return std::nullopt;
  }
  return character;
}

FilteredText FilterTyped(const EntryRule& rule, std::u32string_view text) {
  FilteredText filtered;
  for (const char32_t character : text) AppendFiltered(rule, character, filtered);
  return filtered;
}

FilteredText FilterPasted(const EntryRule& rule, LineBreaks line_breaks, std::u32string_view text) {
  FilteredText filtered;
  if (rule.filter_class == FilterClass::kNativePath) return FilterTyped(rule, text);
  for (const char32_t character : WithLookAlikes(line_breaks, text)) {
    if (IsPasteControl(character, line_breaks)) {
      filtered.refused = true;
    } else {
      AppendFiltered(rule, character, filtered);
    }
  }
  return filtered;
}

size_t EntryBytes(std::u32string_view text) {
  return text.size() + static_cast<size_t>(std::ranges::count(text, U'\n'));
}

void CutToRoom(FilteredText& filtered, size_t room) {
  size_t kept = 0;
  for (size_t bytes = 0; kept < filtered.text.size(); ++kept) {
    bytes += EntryBytes(std::u32string_view(filtered.text).substr(kept, 1));
    if (bytes > room) break;
  }
  if (kept == filtered.text.size()) return;
  filtered.text.resize(kept);
  filtered.refused = true;
}

}  // namespace carnetel
