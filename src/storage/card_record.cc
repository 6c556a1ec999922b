#include "storage/card_record.h"

namespace carnetel {

void FieldTable::Store(ByteSpan bytes) const {
  for (size_t i = 0; i < rows_.size(); ++i) {
    const size_t row = kFieldEntrySize * i;
    StoreLe16(bytes, row, rows_[i].offset);
    StoreLe16(bytes, row + 2, 0);
    StoreLe16(bytes, row + 4, rows_[i].size);
    StoreLe16(bytes, row + 6, rows_[i].group_count);
  }
}

void CardRecord::CopyFieldFrom(const CardRecord& other, int field) {
  const ByteView source = other.FieldBytes(field);
  std::copy(source.begin(), source.end(), bytes().subspan(kFieldTable[field].offset).begin());
}

bool CardRecord::SameField(const CardRecord& other, int field) const {
  return std::ranges::equal(FieldBytes(field), other.FieldBytes(field));
}

uint8_t NumberFlagsOf(const CardRecord& card) {
  uint8_t flags = 0;
  if (!card.FieldEmpty(kTel1)) flags |= kHasTel1;
  if (!card.FieldEmpty(kMtel)) flags |= kHasMinitel;
  if (!card.FieldEmpty(kModem)) flags |= kHasModem;
  if (!card.FieldEmpty(kFax)) flags |= kHasFax;
  return flags;
}

}  // namespace carnetel
