#include "tests/storage/family_bytes.h"

namespace carnetel {
namespace {

constexpr uint16_t kTable[31][2] = {
    {0, 32},   {32, 32},  {64, 32},  {96, 32},  {128, 32}, {160, 5},  {165, 32}, {197, 32},
    {229, 24}, {253, 24}, {277, 32}, {309, 16}, {325, 24}, {349, 24}, {373, 24}, {397, 24},
    {421, 24}, {445, 24}, {469, 24}, {493, 24}, {517, 21}, {538, 4},  {542, 21}, {563, 12},
    {575, 21}, {596, 14}, {610, 64}, {674, 21}, {695, 12}, {707, 12}, {719, 12}};

void Put(FileBytes& file, size_t offset, std::string_view text) {
  StorePadded(file, offset, text.size(), text);
}

}  // namespace

FileBytes MainHeaderBytes(uint16_t count, uint32_t stamp) {
  FileBytes file(768);
  Put(file, 0, "CARNETEL DROV SOFTW. VER 05.00");
  Put(file, 32, "\r\n");
  Put(file, 76, std::string_view("\x00\x0D\x0A\x1A", 4));
  StoreLe32(file, 80, 17213910);
  StoreLe32(file, 84, 256);
  StoreLe32(file, 88, 96);
  StoreLe32(file, 92, 768);
  StoreLe16(file, 96, count);
  StoreLe16(file, 98, 768);
  StoreLe16(file, 100, 31);
  StoreLe32(file, 102, stamp);
  for (size_t row = 0; row < 31; ++row) {
    StoreLe16(file, 160 + 8 * row, kTable[row][0]);
    StoreLe16(file, 160 + 8 * row + 4, kTable[row][1]);
    StoreLe16(file, 160 + 8 * row + 6, row == 12 ? 6 : 1);
  }
  return file;
}

FileBytes MainFileBytes(const std::vector<WrittenCard>& cards, uint32_t stamp) {
  FileBytes file = MainHeaderBytes(static_cast<uint16_t>(cards.size()), stamp);
  for (const WrittenCard& written : cards) {
    const ByteView bytes = written.card.bytes();
    file.insert(file.end(), bytes.begin(), bytes.end());
    StoreLe32(file, file.size() - 4, written.write_time);
  }
  return file;
}

FileBytes MainFileBytes(const std::vector<CardRecord>& cards, uint32_t time) {
  std::vector<WrittenCard> written;
  for (const CardRecord& card : cards) written.push_back({card, time});
  return MainFileBytes(written, time);
}

std::vector<ExpectedEntry> PlainEntries(const std::vector<uint32_t>& card_offsets) {
  std::vector<ExpectedEntry> entries;
  for (const uint32_t offset : card_offsets) entries.push_back({offset});
  return entries;
}

FileBytes ExpectedAddressFile(const std::vector<ExpectedEntry>& entries, uint32_t stamp,
                              uint16_t marked) {
  FileBytes file(320 + 16 * entries.size());
  Put(file, 0, "CARNETEL (c) DROV SOFTWARE 1992");
  Put(file, 32, "\r\n");
  Put(file, 34, "Fichier carnetel d'adresses ver 04.10");
  Put(file, 76, std::string_view("\x00\x0D\x0A\x1A", 4));
  StoreLe32(file, 80, 17213910);
  StoreLe32(file, 84, 256);
  StoreLe32(file, 88, 128);
  StoreLe32(file, 92, 320);
  StoreLe16(file, 96, static_cast<uint16_t>(entries.size()));
  StoreLe16(file, 98, 16);
  StoreLe32(file, 104, stamp);
  StoreLe16(file, 130, marked);
  size_t position = 320;
  for (const ExpectedEntry& entry : entries) {
    StoreLe32(file, position, entry.card_offset);
    StoreU8(file, position + 4, entry.marks);
    StoreU8(file, position + 15, entry.flags);
    position += 16;
  }
  return file;
}

FileBytes DefaultCriteriaBytes() {
  FileBytes file(295);
  Put(file, 0, "CARNETEL DROV SOFTW. VER 05.00");
  Put(file, 32, "\r\n");
  Put(file, 77, "\r\n");
  StoreLe32(file, 80, 0x0106A9D6);
  StoreLe32(file, 84, 0x00020033);
  StoreLe32(file, 88, 96);
  StoreLe32(file, 92, 128);
  StoreLe16(file, 96, 6);
  StoreLe16(file, 98, 23);
  Put(file, 128, "Derni\x8Are S\x82lection");
  return file;
}

}  // namespace carnetel
