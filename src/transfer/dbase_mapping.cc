#include "transfer/dbase_mapping.h"

namespace carnetel {
namespace {

constexpr size_t kFileNameOffset = 25;
constexpr size_t kDirectionOffset = 38;
constexpr size_t kColumnsOffset = 39;

static_assert(kColumnsOffset + kFieldCount * DbaseColumn::kSize == kProfileSlotSize);

// An area of `limit` bytes and a zero.
void StoreEnded(ByteSpan bytes, size_t offset, size_t limit, const OemText& text) {
  StorePadded(bytes, offset, limit + 1, std::string_view(text.bytes()).substr(0, limit));
}

}  // namespace

DbaseColumn DbaseColumn::Load(ByteView bytes) {
  DbaseColumn column;
  column.name = OemText(CopyFieldText(bytes, kMaxName));
  column.length = LoadU8(bytes, 12);
  column.offset = LoadLe32(bytes, 13);
  column.type = static_cast<DbaseType>(LoadU8(bytes, 17));
  column.map = static_cast<int8_t>(LoadU8(bytes, 18));
  return column;
}

void DbaseColumn::Store(ByteSpan bytes) const {
  StoreEnded(bytes, 0, kMaxName, name);
  StoreU8(bytes, 12, length);
  StoreLe32(bytes, 13, offset);
  StoreU8(bytes, 17, static_cast<uint8_t>(type));
  StoreU8(bytes, 18, static_cast<uint8_t>(map));
}

DbaseMapping DbaseMapping::Load(ByteView slot) {
  DbaseMapping mapping;
  mapping.name = OemText(CopyFieldText(slot, TransferProfile::kMaxName));
  mapping.kind = LoadU8(slot, kSlotKindOffset);
  mapping.file_name = OemText(CopyFieldText(slot.subspan(kFileNameOffset), kMaxFileName));
  mapping.direction = static_cast<TransferDirection>(LoadU8(slot, kDirectionOffset));
  size_t offset = kColumnsOffset;
  for (DbaseColumn& column : mapping.columns) {
    column = DbaseColumn::Load(slot.subspan(offset, DbaseColumn::kSize));
    offset += DbaseColumn::kSize;
  }
  return mapping;
}

void DbaseMapping::Store(ByteSpan slot) const {
  StoreEnded(slot, 0, TransferProfile::kMaxName, name);
  StoreU8(slot, kSlotKindOffset, kind);
  StoreEnded(slot, kFileNameOffset, kMaxFileName, file_name);
  StoreU8(slot, kDirectionOffset, static_cast<uint8_t>(direction));
  size_t offset = kColumnsOffset;
  for (const DbaseColumn& column : columns) {
    column.Store(slot.subspan(offset, DbaseColumn::kSize));
    offset += DbaseColumn::kSize;
  }
}

}  // namespace carnetel
