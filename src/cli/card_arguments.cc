#include "cli/card_arguments.h"

#include <charconv>

#include "base/code_page.h"
#include "base/utf8.h"
#include "shell/field_names.h"
#include "storage/card_edit.h"

namespace carnetel {
namespace {

bool HoldsControl(std::string_view text, bool line_breaks) {
  for (size_t i = 0; i < text.size(); ++i) {
    const auto byte = static_cast<unsigned char>(text[i]);
    if (byte >= 0x20 && byte != 0x7F) continue;
    const bool pair = line_breaks && text.substr(i, 2) == "\r\n";
    if (!pair) return true;
    ++i;
  }
  return false;
}

std::string CutText(std::string text, size_t size) {
  text.resize(std::min(text.size(), size));
  if (text.ends_with('\r')) text.pop_back();
  return text;
}

}  // namespace

std::optional<uint32_t> ParseNumber(std::string_view text) {
  uint32_t number = 0;
  const char* end = text.data() + text.size();
  const auto [stop, error] = std::from_chars(text.data(), end, number);
  if (text.empty() || error != std::errc() || stop != end) return std::nullopt;
  return number;
}

std::optional<OemText> ToOem(CliSession& session, const std::string& utf8, const std::string& place,
                             size_t size, bool line_breaks) {
  const std::string text = line_breaks ? WithCrLf(utf8) : utf8;
  OemConversion converted = OemFromUtf8(text);
  if (!converted.refused.empty()) {
    session.Fail(place + " : le caractère « " + converted.refused +
                 " » n'existe pas dans la page de codes des fiches (850)");
    return std::nullopt;
  }
  if (HoldsControl(converted.text.bytes(), line_breaks)) {
    session.Fail(place + " : les caractères de contrôle ne sont pas admis");
    return std::nullopt;
  }
  if (converted.text.size() > size) {
    session.messages().Warn(place + " : texte coupé à " + std::to_string(size) + " caractères");
    return OemText(CutText(converted.text.bytes(), size));
  }
  return converted.text;
}

std::optional<std::vector<uint32_t>> ResolveRows(CliSession& session, Directory& directory,
                                                 const std::vector<std::string>& names,
                                                 int* status) {
  const AddressFile& address = directory.address();
  std::vector<uint32_t> offsets;
  for (const std::string& name : names) {
    const bool by_offset = name.starts_with('@');
    const std::optional<uint32_t> number =
        ParseNumber(by_offset ? std::string_view(name).substr(1) : std::string_view(name));
    if (!number) {
      *status = session.WrongUsage("« " + name + " » n'est ni une ligne ni une @position");
      return std::nullopt;
    }
    const uint32_t row = by_offset ? address.FindRow(*number) : *number - 1;
    if (row >= address.entry_count()) {
      *status = session.Fail(
          (by_offset ? "pas de fiche à la position " : "pas de fiche à la ligne ") + name);
      return std::nullopt;
    }
    offsets.push_back(address.CardOffsetAt(row));
  }
  return offsets;
}

std::optional<std::vector<FieldValue>> ParseFields(CliSession& session,
                                                   const std::vector<NamedText>& fields,
                                                   int* status) {
  std::vector<FieldValue> values;
  for (const auto& [name, text] : fields) {
    const std::optional<int> field = FindField(name);
    if (!field) {
      *status = session.WrongUsage("« " + name + " » n'est pas un champ");
      return std::nullopt;
    }
    const std::optional<OemText> oem = ToOem(session, text, "champ " + FieldName(*field),
                                             kFieldTable[*field].size, *field == kNotes);
    if (!oem) {
      *status = kRefused;
      return std::nullopt;
    }
    values.push_back({*field, *oem});
  }
  return values;
}

std::optional<std::vector<FieldValue>> ParseAssignments(CliSession& session,
                                                        const std::vector<std::string>& arguments,
                                                        int* status) {
  std::vector<NamedText> fields;
  for (const std::string& argument : arguments) {
    const size_t equals = argument.find('=');
    if (equals == std::string::npos) {
      *status = session.WrongUsage("« " + argument + " » n'est pas de la forme CHAMP=VALEUR");
      return std::nullopt;
    }
    fields.emplace_back(argument.substr(0, equals), argument.substr(equals + 1));
  }
  return ParseFields(session, fields, status);
}

void SetFields(const std::vector<FieldValue>& values, CardRecord* card) {
  for (const FieldValue& value : values) {
    if (value.field == kPostalCode) {
      SetPostalCode(*card, value.text);
    } else {
      card->SetField(value.field, value.text);
    }
  }
}

}  // namespace carnetel
