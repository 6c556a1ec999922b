// dBase tables as other programs write them, byte by byte, and mappings for them.
#pragma once

#include <algorithm>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "tests/transfer/transfer_testing.h"
#include "transfer/dbase.h"

namespace carnetel {

inline std::string Le16(uint32_t value) {
  return {static_cast<char>(value & 0xFF), static_cast<char>((value >> 8) & 0xFF)};
}
inline std::string Le32(uint32_t value) {
  return Le16(value & 0xFFFF) + Le16(value >> 16);
}
inline std::string Padded(std::string_view text, size_t size, char fill = ' ') {
  std::string padded(text);
  padded.resize(size, fill);
  return padded;
}

// The 32 bytes in front of a table.
inline std::string TableHeader(char version, std::string_view date, uint32_t records,
                               uint32_t header_length, uint32_t record_length) {
  return std::string(1, version) + std::string(date) + Le32(records) + Le16(header_length) +
         Le16(record_length) + std::string(20, '\0');
}
inline std::string Descriptor(std::string_view name, char type, uint32_t offset, int length) {
  return Padded(name, 11, '\0') + type + Le32(offset) + static_cast<char>(length) +
         std::string(15, '\0');
}

struct TableColumn {
  std::string name;
  int length = 0;
};

// A table of dBase III with a mark of deletion in front of each record and 1Ah at the end. Every
// record is the bytes behind the mark.
inline std::string Table(const std::vector<TableColumn>& columns,
                         const std::vector<std::string>& records) {
  std::string descriptors;
  uint32_t record_length = 1;
  for (const TableColumn& column : columns) {
    descriptors += Descriptor(column.name, 'C', 0, column.length);
    record_length += static_cast<uint32_t>(column.length);
  }
  const auto header_length = static_cast<uint32_t>(32 + descriptors.size() + 1);
  std::string table = TableHeader('\x03', "\x5F\x0C\x1F", static_cast<uint32_t>(records.size()),
                                  header_length, record_length) +
                      descriptors + '\r';
  for (const std::string& record : records) table += ' ' + Padded(record, record_length - 1);
  return table + '\x1A';
}

// An import mapping for columns of these lengths, with nothing mapped but the fields given.
inline DbaseMapping ImportMapping(const std::vector<int>& lengths,
                                  const std::vector<std::pair<int, int>>& maps) {
  DbaseMapping mapping;
  mapping.kind = kDbaseImportKind;
  for (DbaseColumn& column : mapping.columns) column.map = static_cast<int8_t>(lengths.size());
  uint32_t offset = 1;
  for (size_t column = 0; column < lengths.size(); ++column) {
    mapping.columns[column].length = static_cast<uint8_t>(lengths[column]);
    mapping.columns[column].offset = offset;
    offset += mapping.columns[column].length;
  }
  for (const auto& [field, column] : maps) {
    mapping.columns[static_cast<size_t>(field)].map = static_cast<int8_t>(column);
  }
  return mapping;
}

// An export mapping with these columns and no others.
struct ExportColumn {
  int field = 0;
  std::string name;
  uint8_t length = 0;
  DbaseType type = DbaseType::kCharacter;
};
inline DbaseMapping ExportMapping(const std::vector<ExportColumn>& columns) {
  DbaseMapping mapping;
  mapping.kind = kDbaseExportKind;
  for (const ExportColumn& column : columns) {
    DbaseColumn& row = mapping.columns[static_cast<size_t>(column.field)];
    row = {OemText(column.name), column.length, 0, column.type, 0};
  }
  return mapping;
}

class DbaseTest : public TransferTest {
 protected:
  static constexpr char kTable[] = "/tables/CLIENTS.DBF";

  void SetTable(std::string_view bytes) { files_.SetContents(kTable, AsBytes(bytes)); }
  [[nodiscard]] static ImportRequest TableRequest(CharacterSet charset = CharacterSet::kOem) {
    return {kTable, Options(), false, charset};
  }
  TransferOutcome ImportTable(std::string_view bytes, const DbaseMapping& mapping,
                              CharacterSet charset = CharacterSet::kOem) {
    SetTable(bytes);
    return ImportDbase(Services(), mapping, TableRequest(charset));
  }
  // Adds marked cards, as many as told, each from `make` by its number.
  template <class Make>
  void Fill(int count, Make make) {
    Directory directory(Services(), Options());
    ASSERT_TRUE(IsOpen(directory.OpenDirectory()));
    {
      const Directory::Batch batch(directory);
      for (int number = 0; number < count; ++number) {
        directory.context().current = make(number);
        uint32_t position = 0;
        ASSERT_EQ(CardDispatch(directory).Add(true, &position), 0);
      }
    }
    directory.CloseDirectory();
    MarkAll();
  }
  TransferOutcome ExportTable(const DbaseMapping& mapping, bool replace = false,
                              TransferFileType type = TransferFileType::kDbase3,
                              CharacterSet charset = CharacterSet::kOem) {
    Directory directory(Services(), Options());
    EXPECT_EQ(directory.OpenDirectory(), OpenResult::kOpened);
    return ExportDbase(directory, mapping, type, {kTable, replace, charset});
  }
};

}  // namespace carnetel
