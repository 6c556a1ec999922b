#include "storage/criteria_format.h"

#include "base/code_page.h"
#include "base/format_text.h"
#include "storage/main_header.h"

namespace carnetel {

std::array<std::byte, kCriteriaHeaderSize + kCriteriaRecordSize> DefaultCriteriaFile() {
  std::array<std::byte, kCriteriaHeaderSize + kCriteriaRecordSize> file{};
  StorePadded(file, 0, 31, FormatText(86, std::string(kMainVersion)));
  StorePadded(file, 32, 3, "\r\n");
  StorePadded(file, 77, 2, "\r\n");
  StoreLe32(file, 80, kStoreMagic);
  StoreLe32(file, 84, 0x00020033);
  StoreLe32(file, 88, 96);
  StoreLe32(file, 92, kCriteriaHeaderSize);
  StoreLe16(file, 96, kCriteriaRowCount);
  StoreLe16(file, 98, kCriteriaNameSize);
  StorePadded(file, kCriteriaHeaderSize, kCriteriaNameSize, OemFromUtf8Lossy(LoadText(45)).bytes());
  return file;
}

}  // namespace carnetel
