// Rows and field values as they are named on a command's line, and what becomes of a text on its
// way into a card: refused when the card's code page lacks one of its characters, cut with a
// warning when the field is too short.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cli/cli_session.h"
#include "cli/json_form.h"

namespace carnetel {

// A whole number without a sign; nothing when the text is none.
[[nodiscard]] std::optional<uint32_t> ParseNumber(std::string_view text);

// The card offsets of rows ("12") and offsets ("@768"); nothing when one of them is none (told,
// with the exit status in `*status`).
[[nodiscard]] std::optional<std::vector<uint32_t>> ResolveRows(
    CliSession& session, Directory& directory, const std::vector<std::string>& names, int* status);

struct FieldValue {
  int field = 0;
  OemText text;
};

// FIELD=VALUE arguments; nothing when one cannot be taken (told, with the exit status).
[[nodiscard]] std::optional<std::vector<FieldValue>> ParseAssignments(
    CliSession& session, const std::vector<std::string>& arguments, int* status);
// The same of names and texts.
[[nodiscard]] std::optional<std::vector<FieldValue>> ParseFields(
    CliSession& session, const std::vector<NamedText>& fields, int* status);

// A text for a place of `size` bytes that messages call `place`: as above. Nothing when it is
// refused (told).
[[nodiscard]] std::optional<OemText> ToOem(CliSession& session, const std::string& utf8,
                                           const std::string& place, size_t size,
                                           bool line_breaks = false);

// Puts values into a card as a form's controls do: the postal code goes to both of its fields.
void SetFields(const std::vector<FieldValue>& values, CardRecord* card);

}  // namespace carnetel
