// Names of things that a directory keeps, groups and saved sets, as they stand on a command's line:
// found without regard to the case of any letter, accented ones too, and refused when they are not
// there or could mean two.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "cli/cli_session.h"

namespace carnetel {

// What is looked for, as messages call it.
struct NamedKind {
  std::string_view one;
  std::string_view several;
};

// A new name: 23 characters, not empty; nothing when it cannot be taken (told).
[[nodiscard]] std::optional<OemText> ToName(CliSession& session, const std::string& utf8);

// The place of the name `wanted` (UTF-8) among `names`; nothing when it is not there or stands
// twice (told).
[[nodiscard]] std::optional<size_t> FindName(CliSession& session, const NamedKind& kind,
                                             const std::vector<OemText>& names,
                                             const std::string& wanted);

// False when another than the one at place `own` bears the name already (told): a name that stands
// twice could not be called any more.
[[nodiscard]] bool IsFreeName(CliSession& session, const NamedKind& kind,
                              const std::vector<OemText>& names, const OemText& name,
                              std::optional<size_t> own = std::nullopt);

}  // namespace carnetel
