// A derived file held whole in memory: the two indexes and the address file are at most half a
// megabyte for a full directory, so each is read once, worked on by position and written back as
// one range.
#pragma once

#include <vector>

#include "platform/file_system.h"

namespace carnetel {

class FileImage {
 public:
  // No derived file of a main file that can be opened comes near this; a larger one is not loaded.
  static constexpr uint64_t kLargestFile = uint64_t{256} * 1024 * 1024;

  // Takes the content of a file from `base` on; false, and nothing taken, when the file is too
  // large to be one of ours.
  [[nodiscard]] bool Load(ReadableFile& file, size_t base = 0);
  void Clear();

  [[nodiscard]] size_t size() const { return bytes_.size(); }
  [[nodiscard]] ByteView bytes() const { return bytes_; }
  [[nodiscard]] ByteView At(size_t position, size_t size) const {
    return ByteView(bytes_).subspan(position, size);
  }
  // For changing bytes in place.
  ByteSpan Change(size_t position, size_t size);
  void Append(ByteView bytes);
  // Opens a gap at `position` by moving what lies behind it; the gap keeps its old bytes.
  void InsertGap(size_t position, size_t size);
  void Erase(size_t position, size_t size);

  // Writes the changed range and cuts the file to the image's size; nothing when nothing changed.
  // The image stands at `base` in the file.
  void Flush(File& file, size_t base = 0);
  [[nodiscard]] bool dirty() const { return dirty_from_ < dirty_to_ || resized_; }

 private:
  void MarkChanged(size_t from, size_t to);

  std::vector<std::byte> bytes_;
  size_t dirty_from_ = 0;
  size_t dirty_to_ = 0;
  bool resized_ = false;
};

}  // namespace carnetel
