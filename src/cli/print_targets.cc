#include "cli/print_targets.h"

#include <ostream>

#include "base/code_page.h"
#include "cli/card_output.h"

namespace carnetel {

void StreamTarget::PrintLine(std::string_view line) {
  constexpr std::string_view kLineEnd = "\r\n";
  for (size_t end = line.find(kLineEnd); end != std::string_view::npos; end = line.find(kLineEnd)) {
    PrintLine(line.substr(0, end));
    line.remove_prefix(end + kLineEnd.size());
  }
  out_ << Utf8FromOem(OemText(Shown(std::string(line)))) << '\n';
}

void StreamTarget::NewPage() {
  out_ << '\f';
}

bool StreamTarget::Ended() const {
  return !out_.good();
}

}  // namespace carnetel
