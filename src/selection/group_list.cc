#include "selection/group_list.h"

#include <array>

namespace carnetel {

std::vector<GroupRow> ReadGroups(FileSystem& files, const std::string& path) {
  std::vector<GroupRow> groups;
  const std::unique_ptr<File> file = files.Open(path, OpenMode::kRead);
  if (file == nullptr) return groups;
  std::array<std::byte, kGroupHeaderSize> header{};
  if (file->Read(0, header) < header.size()) return groups;
  const uint64_t row_size = LoadLe16(header, kGroupRowSizeOffset);
  const unsigned rows = LoadLe16(header, kGroupCountOffset);
  for (unsigned row = 1; row < rows; ++row) {
    std::array<std::byte, kGroupRowSize> bytes{};
    if (file->Read(kGroupHeaderSize + row_size * row, bytes) < bytes.size()) break;
    const uint8_t slot = LoadU8(bytes, kGroupSlotOffset);
    if (slot < kFirstGroupSlot || slot > kLastGroupSlot || slot % 2 != 0) continue;
    groups.push_back({OemText(CopyFieldText(ByteView(bytes), kGroupNameSize)), slot,
                      LoadU8(bytes, kGroupModeOffset)});
  }
  return groups;
}

}  // namespace carnetel
