// Capture files: addressing records that another program has noted down, from which a directory is
// enriched. There is no header; a record has 156 bytes of OEM text:
//
//   0    33  company
//   33   33  address
//   66   18  first number
//   84   2   0 in the first byte: the second number is a telephone, else a fax
//   86   16  postal code
//   102  33  town
//   135  18  second number
//   153  3   not used
#pragma once

#include <array>
#include <cstdint>
#include <memory>
#include <string>

#include "platform/file_system.h"
#include "storage/card_record.h"

namespace carnetel {

inline constexpr size_t kCaptureRecordSize = 156;

class CaptureReader {
 public:
  // `prefix`: what numbers get in front, of ANSI bytes; one that begins with "?" is none.
  CaptureReader(FileSystem& files, const std::string& path, std::string prefix);

  // False for a file that cannot be opened or has less than one record.
  [[nodiscard]] bool is_open() const { return file_ != nullptr; }

  // Takes the next record as a card of ANSI text; false at the end of the file. A record that is
  // cut short keeps the end of the one before it, by design.
  bool ReadCaptureRecord(CardRecord* ansi_card);

 private:
  std::unique_ptr<File> file_;
  std::string prefix_;
  uint64_t position_ = 0;
  std::array<std::byte, kCaptureRecordSize> record_{};
};

}  // namespace carnetel
