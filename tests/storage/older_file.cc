#include "tests/storage/older_file.h"

namespace carnetel {
namespace {

constexpr uint32_t kOldStamp = 0x2F000000;
constexpr uint16_t kOldOwner = 7;

// Offset and size of the fields of an old card; 29 and 30 had none.
constexpr size_t kOldTable[29][2] = {
    {0, 32},   {32, 32},  {64, 32},   {96, 32},  {128, 32}, {160, 5},  {165, 32}, {197, 32},
    {229, 24}, {253, 24}, {277, 24},  {301, 24}, {325, 24}, {349, 24}, {373, 24}, {397, 24},
    {421, 24}, {445, 24}, {469, 24},  {493, 24}, {517, 21}, {538, 4},  {542, 21}, {563, 12},
    {575, 21}, {596, 14}, {610, 128}, {738, 12}, {750, 18}};

}  // namespace

FileBytes BytesWith(size_t size, const std::vector<Piece>& pieces) {
  FileBytes bytes(size);
  for (const auto& [offset, text] : pieces) StorePadded(bytes, offset, text.size(), text);
  return bytes;
}

FileBytes OldCard(const std::vector<std::pair<int, std::string>>& fields) {
  FileBytes card(768);
  for (const auto& [field, text] : fields) {
    const auto& [offset, size] = kOldTable[field];
    EXPECT_LE(text.size(), size) << "old field " << field;
    StorePadded(card, offset, size, text);
  }
  return card;
}

FileBytes OldHeader(uint16_t count, std::string_view banner) {
  FileBytes header = MainHeaderBytes(count, kOldStamp);
  StorePadded(header, 0, 32, banner);
  StorePadded(header, 34, 42, "Clients de l'ann\x82\x65");
  StoreLe16(header, 100, 29);
  StoreLe16(header, 106, kOldOwner);
  for (const size_t start : {size_t{108}, size_t{408}}) {
    const size_t end = start == 108 ? 160 : 768;
    std::fill(header.begin() + static_cast<ptrdiff_t>(start),
              header.begin() + static_cast<ptrdiff_t>(end), std::byte{0xEE});
  }
  for (size_t row = 0; row < 29; ++row) {
    StoreLe16(header, 160 + 8 * row, static_cast<uint16_t>(kOldTable[row][0]));
    StoreLe16(header, 160 + 8 * row + 4, static_cast<uint16_t>(kOldTable[row][1]));
  }
  return header;
}

FileBytes OldMainFile(const std::vector<FileBytes>& cards, std::string_view banner) {
  std::vector<FileBytes> blocks = {OldHeader(static_cast<uint16_t>(cards.size()), banner)};
  blocks.insert(blocks.end(), cards.begin(), cards.end());
  return Joined(blocks);
}

FileBytes UpgradedHeader(uint16_t count, std::string_view banner) {
  FileBytes header = MainHeaderBytes(count, kOldStamp);
  StorePadded(header, 0, 32, banner);
  StoreLe16(header, 106, kOldOwner);
  return header;
}

FileBytes Joined(const std::vector<FileBytes>& files) {
  FileBytes joined;
  for (const FileBytes& file : files) joined.insert(joined.end(), file.begin(), file.end());
  return joined;
}

}  // namespace carnetel
