// What the tests of everything that leaves numbers for other programs share: an open directory
// /d/Clients in memory whose disk can fail, and records composed byte by byte.
#pragma once

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/fault_file_system.h"
#include "platform/memory_file_system.h"
#include "storage/card_dispatch.h"

namespace carnetel {

class HandOffTest : public testing::Test {
 protected:
  using Fields = std::initializer_list<std::pair<int, std::string_view>>;
  static constexpr std::string_view kMainFile = "/d/Clients.DAN";
  static constexpr std::string_view kMainFileInCapitals = "/D/CLIENTS.DAN";

  HandOffTest() {
    DirectoryOptions options;
    options.path = kMainFile;
    directory_ = std::make_unique<Directory>(DirectoryServices{disk_, clock_, progress_}, options);
    EXPECT_EQ(directory_->OpenDirectory(), OpenResult::kCreated);
  }

  // Texts are OEM.
  static CardRecord Card(Fields fields) {
    CardRecord card;
    for (const auto& [field, text] : fields) card.SetField(field, OemText(std::string(text)));
    return card;
  }
  // The n-th card added lies at 768 x n.
  uint32_t Add(Fields fields, bool marked = false) {
    directory_->context().current = Card(fields);
    uint32_t position = 0;
    EXPECT_EQ(CardDispatch(*directory_).Add(marked, &position), 0);
    return directory_->last_inserted().card_offset;
  }
  void SetBit(uint32_t card_offset, uint8_t bit) {
    AddressFile& address = directory_->address();
    const uint32_t row = address.FindRow(card_offset);
    EntrySlot entry = address.Entry(row);
    entry.set_bit(bit, true);
    address.SetEntry(row, entry);
  }

  static std::string Padded(std::string_view text, size_t size) {
    EXPECT_LE(text.size(), size);
    std::string padded(text);
    padded.resize(size, '\0');
    return padded;
  }
  static std::string Offset(uint32_t offset) {
    std::string bytes;
    for (int shift = 0; shift < 32; shift += 8) bytes += static_cast<char>(offset >> shift & 0xFF);
    return bytes;
  }
  // Texts are ANSI.
  static std::string Short(std::string_view number, uint32_t offset, std::string_view company,
                           std::string_view path = kMainFileInCapitals) {
    return Padded(number, 30) + Offset(offset) + Padded("", 6) + Padded(company, 48) +
           Padded(path, 60) + Padded("", 1);
  }
  static std::string Long(std::string_view number, uint32_t offset, std::string_view label,
                          std::string_view company, std::string_view path = kMainFileInCapitals) {
    return Padded(number, 30) + Offset(offset) + Padded(label, 33) + Padded(company, 33) +
           Padded(path, 60) + Padded("", 1);
  }

  [[nodiscard]] std::string TextOf(const std::string& path) const {
    return std::string(AsChars(files_.Contents(path)));
  }
  void SetFile(const std::string& path, std::string_view text) {
    files_.SetContents(path, AsBytes(text));
  }

  FakeClock clock_{1'000'000'000};
  MemoryFileSystem files_{clock_};
  FaultFileSystem disk_{files_};
  SilentProgress progress_;
  std::unique_ptr<Directory> directory_;
};

}  // namespace carnetel
