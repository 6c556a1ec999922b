#include "printing/text_target.h"

namespace carnetel {
namespace {

constexpr size_t kBlockSize = 64 * 1024;
constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kFormFeed = "\x0C";

}  // namespace

void TextFileTarget::PrintLine(std::string_view line) {
  Append(line);
  Append(kLineEnd);
}

void TextFileTarget::NewPage() {
  Append(kFormFeed);
}

void TextFileTarget::Append(std::string_view bytes) {
  block_ += bytes;
  if (block_.size() >= kBlockSize) Flush();
}

bool TextFileTarget::Flush() {
  if (!block_.empty() && !file_.write_failed()) {
    file_.Write(position_, AsBytes(block_));
    position_ += block_.size();
  }
  block_.clear();
  return !file_.write_failed();
}

}  // namespace carnetel
