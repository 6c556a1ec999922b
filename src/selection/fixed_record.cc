#include "selection/fixed_record.h"

namespace carnetel {

RecordDeletion DeleteFixedRecord(FileSystem& files, const std::string& path, uint64_t base,
                                 size_t size, size_t number) {
  const std::unique_ptr<File> file = files.Open(path, OpenMode::kReadWrite);
  if (file == nullptr) return RecordDeletion::kNotOpened;
  uint64_t to = base + uint64_t{size} * number;
  if (to >= file->Size()) return RecordDeletion::kDeleted;
  std::vector<std::byte> record(size);
  bool written = true;
  while (written && file->Read(to + size, record) == size) {
    written = file->Write(to, record);
    if (written) to += size;
  }
  file->Truncate(to);
  return written ? RecordDeletion::kDeleted : RecordDeletion::kWriteFailed;
}

}  // namespace carnetel
