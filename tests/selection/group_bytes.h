// Group files as the tests write them down, from the numbers of the format.
#pragma once

#include <string>

#include "tests/support/same_bytes.h"

namespace carnetel {

// 176 bytes.
inline std::string GroupHeaderText(int count, std::string path = "/d/X.ADR") {
  std::string header = "CARNETEL (C) DROV SOFTWARE 1992";
  header.resize(32);
  header += "\r\nFichier carnetel d'adresses ver 04.10";
  header.resize(77);
  header += "\r\n\x1A\xD6\xA9\x06\x01";
  header += std::string("\x00\x01\x00\x00\x00\x00\x00\x00\xB0\x00\x00\x00", 12);
  header += std::string{static_cast<char>(count & 0xFF), static_cast<char>(count >> 8 & 0xFF)};
  header += std::string("\x50\x00", 2);
  path.resize(64);
  header += path;
  header.resize(176);
  return header;
}

// What a row of 80 bytes says.
struct GroupRowParts {
  std::string name;              // OEM
  std::string set = "Sans Nom";  // ANSI
  int slot = 0;
  int current_row = 0;
  int top_row = 0;
  int mode = 0;
  std::string file = "X.ADR";
};

inline std::string GroupRowText(GroupRowParts parts) {
  parts.name.resize(32);
  parts.file.resize(16);
  parts.set.resize(24);
  const auto word = [](int value) {
    return std::string{static_cast<char>(value & 0xFF), static_cast<char>(value >> 8)};
  };
  std::string row = parts.name + parts.file + parts.set + static_cast<char>(parts.slot) +
                    word(parts.current_row) + word(parts.top_row) + static_cast<char>(parts.mode);
  row.resize(80);
  return row;
}

inline std::string WholeFileRowText() {
  return GroupRowText({.name = "Tout le Fichier "});
}

}  // namespace carnetel
