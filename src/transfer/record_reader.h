// Reads the records of one size that lie behind each other in a file. They are read in blocks; a
// record that is cut short at the end of the file does not count.
#pragma once

#include <string>
#include <string_view>

#include "platform/file_system.h"

namespace carnetel {

class RecordReader {
 public:
  // `offset` is where the first record lies; `record_size` is above 0. Records that are appended
  // later, while the file is read, are not seen.
  RecordReader(ReadableFile& file, uint64_t offset, size_t record_size);
  RecordReader(const RecordReader&) = delete;
  RecordReader& operator=(const RecordReader&) = delete;

  // Whole records in the file when the reader was made.
  [[nodiscard]] uint64_t count() const { return count_; }

  // The next record, valid until the next call; empty at the end, or when it cannot be read.
  [[nodiscard]] std::string_view Next();

 private:
  ReadableFile& file_;
  size_t record_size_;
  uint64_t count_ = 0;
  uint64_t position_;  // of the next block
  uint64_t left_ = 0;  // records not yet in a block
  std::string block_;
  size_t filled_ = 0;  // bytes of block_ that are records from the file
  size_t next_ = 0;    // of the record to come, in block_
};

}  // namespace carnetel
