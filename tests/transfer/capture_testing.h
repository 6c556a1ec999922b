// Capture files composed byte by byte.
#pragma once

#include <string>
#include <string_view>

namespace carnetel {

struct Captured {
  std::string_view company = {};
  std::string_view address = {};
  std::string_view first_number = {};
  bool is_fax = false;
  std::string_view postal_code = {};
  std::string_view town = {};
  std::string_view second_number = {};
};

// 156 bytes of OEM text: the company zero ended, all else blank padded.
inline std::string CaptureBytes(const Captured& record) {
  std::string bytes(156, ' ');
  const auto put = [&bytes](size_t at, std::string_view text) {
    bytes.replace(at, text.size(), text);
  };
  put(0, record.company);
  bytes[record.company.size()] = '\0';
  put(33, record.address);
  put(66, record.first_number);
  bytes[84] = record.is_fax ? '\1' : '\0';
  put(86, record.postal_code);
  put(102, record.town);
  put(135, record.second_number);
  put(153, "???");
  return bytes;
}

}  // namespace carnetel
