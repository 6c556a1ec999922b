// The mapping between card fields and the columns of a dBase table, as it lies in a slot of the
// parameter file. Row r serves two purposes on import: it describes column r of the table, and its
// map is the number of the column for card field r. On export it describes the column written for
// card field r.
//
//   0    24   name, OEM
//   24   u8   kind: FEh import, FFh export; any lower value is a plain profile
//   25   13   import only: name and extension of the table that the rows describe, zero ended
//   38   u8   direction
//   39   589  31 rows: name 12, zero ended; u8 length; u32 offset in the record; i8 type; i8 map
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "transfer/transfer_profile.h"

namespace carnetel {

// These values are on disk.
enum class DbaseType : int8_t { kCharacter = 0, kNumber = 1, kDate = 2 };

inline constexpr uint8_t kDbaseImportKind = 0xFE;
inline constexpr uint8_t kDbaseExportKind = 0xFF;

// In a slot of a saved or working profile: where its kind stands.
inline constexpr size_t kSlotKindOffset = 24;

struct DbaseColumn {
  static constexpr size_t kSize = 19;
  static constexpr size_t kMaxName = 11;

  OemText name;
  uint8_t length = 0;
  uint32_t offset = 0;
  DbaseType type = DbaseType::kCharacter;
  int8_t map = 0;

  static DbaseColumn Load(ByteView bytes);
  void Store(ByteSpan bytes) const;
  friend bool operator==(const DbaseColumn&, const DbaseColumn&) = default;
};

struct DbaseMapping {
  static constexpr size_t kMaxFileName = 12;

  OemText name;
  uint8_t kind = 0;
  OemText file_name;
  TransferDirection direction = TransferDirection::kImport;
  std::array<DbaseColumn, kFieldCount> columns;

  static DbaseMapping Load(ByteView slot);
  // Writes all 628 bytes.
  void Store(ByteSpan slot) const;
  friend bool operator==(const DbaseMapping&, const DbaseMapping&) = default;
};

}  // namespace carnetel
