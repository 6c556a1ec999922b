// The bytes of parameter files, worked out by hand.
#pragma once

#include <cstddef>
#include <iterator>
#include <string>

namespace carnetel {

inline void PutLe16(std::string& text, size_t offset, int value) {
  text[offset] = static_cast<char>(value & 0xFF);
  text[offset + 1] = static_cast<char>((value >> 8) & 0xFF);
}

// The parameter file of a new installation, byte by byte.
inline std::string NewFile() {
  std::string file(2012, '\0');
  file.replace(0, 31, "CARNETEL (C) DROV SOFTWARE 1994");
  file.replace(42, 29, "Fichier de param\x8Atres V.4.00 ");
  PutLe16(file, 92, 1);
  PutLe16(file, 94, 628);
  PutLe16(file, 96, 128);
  PutLe16(file, 98, 756);
  PutLe16(file, 102, 1384);
  file.replace(128, 20, "Derni\x8Are Composition");
  file.replace(128 + 27, 1, ";");
  file.replace(128 + 37, 4, "CRLF");
  PutLe16(file, 128 + 46, 768);
  PutLe16(file, 128 + 48, 768);
  const int places[] = {0,   32, 32,  32, 64,  32, 96,  32, 128, 32, 160, 5,  165, 32,
                        197, 32, 229, 24, 253, 24, 277, 32, 309, 16, 325, 24, 349, 24,
                        373, 24, 397, 24, 421, 24, 445, 24, 469, 24, 493, 24, 517, 21,
                        538, 4,  542, 21, 563, 12, 575, 21, 596, 14, 610, 128};
  for (size_t i = 0; i < std::size(places); ++i) PutLe16(file, 128 + 50 + 2 * i, places[i]);
  const int ranks[] = {4,  5,  6,  7,  7,  8,  9,  10, 1,  2,  3,  3, 16, 17,
                       18, 19, 20, 21, 11, 12, 14, 14, 13, 13, 15, 8, 23};
  for (size_t i = 0; i < std::size(ranks); ++i) PutLe16(file, 128 + 174 + 2 * i, ranks[i]);
  return file;
}

}  // namespace carnetel
