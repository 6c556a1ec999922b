// Criteria files as the tests write them down, from the numbers of the format.
#pragma once

#include <string>
#include <vector>

#include "tests/support/same_bytes.h"

namespace carnetel {

// "Dernière Sélection", OEM.
inline const std::string kWorkingSetOem = "Derni\x8Are S\x82lection";

// One row: code, digit of the comparator, value cut at 21 bytes.
inline std::string CriteriaRowText(int code, char comparator, std::string value) {
  value.resize(21);
  return std::string{static_cast<char>(code & 0xFF), static_cast<char>(code >> 8), comparator} +
         value;
}

// One record of 167 bytes: the name, then these rows.
inline std::string CriteriaRecordText(std::string name, const std::string& rows) {
  name.resize(23);
  std::string record = name + rows;
  record.resize(167);
  return record;
}

// 128 bytes. `end_of_text` is 1Ah in a file that the criteria make, 0 in that of a new directory.
inline std::string CriteriaHeaderText(int active_set = 0, char end_of_text = 0) {
  std::string header = "CARNETEL DROV SOFTW. VER 05.00";
  header.resize(32);
  header += "\r\n";
  header.resize(77);
  header += "\r\n";
  header += end_of_text;
  header += std::string("\xD6\xA9\x06\x01\x33\x00\x02\x00\x60\x00\x00\x00\x80\x00\x00\x00", 16);
  header += std::string("\x06\x00\x17\x00", 4);
  header += static_cast<char>(active_set);
  header.resize(128);
  return header;
}

inline FileBytes BytesOf(const std::string& text) {
  const ByteView bytes = AsBytes(text);
  return {bytes.begin(), bytes.end()};
}

}  // namespace carnetel
