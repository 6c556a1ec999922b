#include "transfer/record_reader.h"

#include <algorithm>

namespace carnetel {
namespace {

constexpr size_t kBlockSize = 64 * 1024;

}  // namespace

RecordReader::RecordReader(ReadableFile& file, uint64_t offset, size_t record_size)
    : file_(file),
      record_size_(record_size),
      position_(offset),
      block_(std::max<size_t>(kBlockSize / record_size, 1) * record_size, '\0') {
  const uint64_t size = file.Size();
  if (size > offset) count_ = (size - offset) / record_size;
  left_ = count_;
}

std::string_view RecordReader::Next() {
  if (next_ == filled_) {
    const uint64_t wanted = std::min<uint64_t>(left_, block_.size() / record_size_);
    const ByteSpan into = std::as_writable_bytes(std::span(block_));
    const size_t read = file_.Read(position_, into.first(wanted * record_size_));
    filled_ = read - read % record_size_;
    next_ = 0;
    position_ += filled_;
    left_ -= filled_ / record_size_;
    if (filled_ == 0) return {};
  }
  const std::string_view record = std::string_view(block_).substr(next_, record_size_);
  next_ += record_size_;
  return record;
}

}  // namespace carnetel
