// The dialogs of the system by number, with the titles that stand in their templates. A title that
// is set at run time is not here.
#pragma once

#include <string_view>

namespace carnetel {

// UTF-8; empty for a template without a title and for a number without a template.
[[nodiscard]] std::string_view DialogTitle(int number);
[[nodiscard]] bool HasDialogTemplate(int number);

// The one template that goes by a name.
inline constexpr std::string_view kPrintAbortTitle = "Impression en cours ...";

}  // namespace carnetel
