#include "cli/name_argument.h"

#include "base/code_page.h"
#include "base/utf8.h"
#include "cli/card_arguments.h"

namespace carnetel {
namespace {

constexpr size_t kLongestName = 23;

// Small letters of what the page of the cards holds.
char32_t SmallLetter(char32_t character) {
  const bool plain = character >= U'A' && character <= U'Z';
  const bool accented = character >= U'À' && character <= U'Þ' && character != U'×';
  return plain || accented ? character + 0x20 : character;
}

bool SameName(std::string_view a, std::string_view b) {
  while (!a.empty() && !b.empty()) {
    if (SmallLetter(DecodeUtf8(a)) != SmallLetter(DecodeUtf8(b))) return false;
  }
  return a.empty() && b.empty();
}

std::string Quoted(const std::string& name) {
  return "« " + name + " »";
}

}  // namespace

std::optional<OemText> ToName(CliSession& session, const std::string& utf8) {
  if (!utf8.empty()) return ToOem(session, utf8, "nom", kLongestName);
  session.Fail("il faut un nom");
  return std::nullopt;
}

std::optional<size_t> FindName(CliSession& session, const NamedKind& kind,
                               const std::vector<OemText>& names, const std::string& wanted) {
  std::optional<size_t> found;
  for (size_t place = 0; place < names.size(); ++place) {
    if (!SameName(Utf8FromOem(names[place]), wanted)) continue;
    if (found) {
      session.Fail("plusieurs " + std::string(kind.several) + " portent le nom " + Quoted(wanted));
      return {};
    }
    found = place;
  }
  if (!found) session.Fail("pas de " + std::string(kind.one) + ' ' + Quoted(wanted));
  return found;
}

bool IsFreeName(CliSession& session, const NamedKind& kind, const std::vector<OemText>& names,
                const OemText& name, std::optional<size_t> own) {
  const std::string wanted = Utf8FromOem(name);
  for (size_t place = 0; place < names.size(); ++place) {
    if (place == own || !SameName(Utf8FromOem(names[place]), wanted)) continue;
    session.Fail("un " + std::string(kind.one) + ' ' + Quoted(wanted) + " existe déjà");
    return false;
  }
  return true;
}

}  // namespace carnetel
