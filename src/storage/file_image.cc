#include "storage/file_image.h"

#include <cstring>

namespace carnetel {

bool FileImage::Load(ReadableFile& file, size_t base) {
  Clear();
  const uint64_t size = file.Size();
  if (size > kLargestFile) return false;
  bytes_.resize(size > base ? size - base : 0);
  bytes_.resize(file.Read(base, bytes_));
  return true;
}

void FileImage::Clear() {
  bytes_.clear();
  dirty_from_ = dirty_to_ = 0;
  resized_ = false;
}

void FileImage::MarkChanged(size_t from, size_t to) {
  if (dirty_from_ == dirty_to_) {
    dirty_from_ = from;
    dirty_to_ = to;
    return;
  }
  dirty_from_ = std::min(dirty_from_, from);
  dirty_to_ = std::max(dirty_to_, to);
}

ByteSpan FileImage::Change(size_t position, size_t size) {
  MarkChanged(position, position + size);
  return ByteSpan(bytes_).subspan(position, size);
}

void FileImage::Append(ByteView bytes) {
  const size_t end = bytes_.size();
  bytes_.insert(bytes_.end(), bytes.begin(), bytes.end());
  MarkChanged(end, bytes_.size());
}

void FileImage::InsertGap(size_t position, size_t size) {
  const size_t moved = bytes_.size() - position;
  bytes_.resize(bytes_.size() + size);
  std::memmove(bytes_.data() + position + size, bytes_.data() + position, moved);
  MarkChanged(position, bytes_.size());
}

void FileImage::Erase(size_t position, size_t size) {
  bytes_.erase(bytes_.begin() + static_cast<std::ptrdiff_t>(position),
               bytes_.begin() + static_cast<std::ptrdiff_t>(position + size));
  resized_ = true;
  MarkChanged(position, bytes_.size());
}

void FileImage::Flush(File& file, size_t base) {
  if (!dirty()) return;
  const size_t to = std::min(dirty_to_, bytes_.size());
  if (dirty_from_ < to) file.Write(base + dirty_from_, At(dirty_from_, to - dirty_from_));
  if (resized_) file.Truncate(base + bytes_.size());
  dirty_from_ = dirty_to_ = 0;
  resized_ = false;
}

}  // namespace carnetel
