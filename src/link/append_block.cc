#include "link/append_block.h"

#include <vector>

namespace carnetel {

std::unique_ptr<File> OpenToAppend(const Directory& directory, const std::string& path) {
  FileSystem& files = directory.files();
  if (directory.paths().Holds(FindAnyCase(files, path))) return nullptr;
  return files.Open(path, OpenMode::kCreateOrOpen);
}

bool AppendBlock(File& file, uint64_t position, ByteView block) {
  const uint64_t size = file.Size();
  std::vector<std::byte> former(static_cast<size_t>(size - position));
  former.resize(file.Read(position, former));
  if (file.Write(position, block)) return true;
  if (!former.empty()) file.Write(position, former);
  if (file.Size() > size) file.Truncate(size);
  return false;
}

}  // namespace carnetel
