// Where each letter's entries start in the address file: one row for '0' to '9' and 'A' to 'Z' and
// a closing one, in memory only. A row without entries holds the start of the next letter.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace carnetel {

class LetterTable {
 public:
  static constexpr int kRows = 37;

  // Row of a letter: digits 0 to 9, letters 10 to 35, the bytes between '9' and 'A' rows 3 to 9,
  // anything else -1. The letter counts as a signed byte.
  [[nodiscard]] static int LetterRow(unsigned char letter);

  // Offset of the first entry of a letter; a letter without a row counts as the first one.
  [[nodiscard]] uint32_t Start(unsigned char letter) const {
    return starts_[static_cast<size_t>(RowOrFirst(letter))];
  }
  [[nodiscard]] uint32_t RowStart(int row) const { return starts_[static_cast<size_t>(row)]; }

  // Every row to the first entry.
  void Reset();
  // An entry of the letter came or went: all rows behind the letter's move by one entry.
  void EntryAdded(unsigned char letter) { Shift(letter, 16); }
  void EntryRemoved(unsigned char letter) { Shift(letter, -16); }

 private:
  [[nodiscard]] static int RowOrFirst(unsigned char letter) {
    const int row = LetterRow(letter);
    return row < 0 ? 0 : row;
  }
  void Shift(unsigned char letter, int distance);

  std::array<uint32_t, kRows> starts_ = Filled();

  static std::array<uint32_t, kRows> Filled();
};

}  // namespace carnetel
