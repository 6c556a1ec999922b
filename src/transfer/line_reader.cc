#include "transfer/line_reader.h"

#include <algorithm>
#include <cstring>

#include "transfer/separator.h"

namespace carnetel {
namespace {

constexpr size_t kPieceSize = 256 * 1024;

}  // namespace

LineReader::LineReader(ReadableFile& file, std::string separator, size_t longest)
    : file_(file),
      separator_(std::move(separator)),
      longest_(longest),
      piece_(longest + kPieceSize, '\0') {}

bool LineReader::Next() {
  if (separator_.empty()) return false;
  for (;;) {
    const std::string_view text = std::string_view(piece_).substr(0, filled_);
    const std::ptrdiff_t found = FindBytes(text, separator_, search_);
    if (found >= 0) {
      const size_t end = static_cast<size_t>(found) + separator_.size();
      line_ = text.substr(start_, end - start_);
      too_long_ = start_lost_ || line_.size() > longest_;
      start_ = search_ = end;
      start_lost_ = false;
      return true;
    }
    if (!Refill()) return false;
  }
}

bool LineReader::Refill() {
  // The end may be the first part of a separator.
  const size_t tail = separator_.size() - 1;
  if (filled_ - start_ > longest_) {
    start_ = std::max(start_, filled_ - std::min(tail, filled_));
    start_lost_ = true;
  }
  const size_t kept = filled_ - start_;
  std::memmove(piece_.data(), piece_.data() + start_, kept);
  start_ = 0;
  search_ = kept - std::min(tail, kept);
  const ByteSpan free = std::as_writable_bytes(std::span(piece_)).subspan(kept);
  const size_t read = file_.Read(position_, free);
  position_ += read;
  filled_ = kept + read;
  return read > 0;
}

}  // namespace carnetel
