// What a line of the command print asks for: a page set-up that starts from that of the profile,
// and where the pages go.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "cli/command.h"
#include "printing/page_setup.h"

namespace carnetel {

enum class PrintOutput { kPrinter, kTextFile, kStandardOutput, kPdf };

struct PrintOrder {
  PageSetup setup;
  PrintOutput output = PrintOutput::kPrinter;
  std::string path;                // of a text file or a PDF
  std::optional<std::string> row;  // the card of the scope "current"
};

[[nodiscard]] std::vector<OptionSyntax> PrintOptionSyntax();

// Puts the options over `order->setup`; answers what is wrong with them, empty when nothing is.
[[nodiscard]] std::string ParsePrintOptions(const Arguments& arguments, bool json, MeasureUnit unit,
                                            PrintOrder* order);

}  // namespace carnetel
