#include "storage/letter_table.h"

#include "storage/address_format.h"

namespace carnetel {

std::array<uint32_t, LetterTable::kRows> LetterTable::Filled() {
  std::array<uint32_t, kRows> starts;
  starts.fill(kAddressEntriesOffset);
  return starts;
}

int LetterTable::LetterRow(unsigned char letter) {
  const int value = static_cast<signed char>(letter);
  const int row = value - '0' <= 9 ? value - '0' : value - '7';
  return row < 0 || row > 35 ? -1 : row;
}

void LetterTable::Reset() {
  starts_ = Filled();
}

void LetterTable::Shift(unsigned char letter, int distance) {
  for (size_t row = static_cast<size_t>(RowOrFirst(letter)) + 1; row < starts_.size(); ++row) {
    starts_[row] = static_cast<uint32_t>(static_cast<int64_t>(starts_[row]) + distance);
  }
}

}  // namespace carnetel
