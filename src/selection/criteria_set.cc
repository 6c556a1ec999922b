#include "selection/criteria_set.h"

#include <algorithm>

namespace carnetel {
namespace {

constexpr size_t kComparatorOffset = 2;
constexpr size_t kValueOffset = 3;

// The two names take the size of the title, references and notes that of the modem number.
constexpr int16_t kTitleCode = kQualite + 1;
constexpr int16_t kModemCode = kModem + 1;

constexpr std::array<OfferedField, 20> kOffered = {{
    {kPrenom + 1, kTitleCode, false},     {kNom + 1, kTitleCode, false},
    {kSte1 + 1, kSte1 + 1, false},        {kSte2 + 1, kSte2 + 1, false},
    {kAdr1 + 1, kAdr1 + 1, false},        {kAdr2 + 1, kAdr2 + 1, false},
    {kPostalCode + 1, kModemCode, false}, {kVille + 1, kVille + 1, false},
    {kPays + 1, kPays + 1, false},        {kTel1 + 1, kTel1 + 1, true},
    {kTel2 + 1, kTel2 + 1, true},         {kFax + 1, kFax + 1, true},
    {kModem + 1, kModemCode, true},       {kRef1 + 1, kRef1 + 1, false},
    {kRef1 + 2, kModemCode, false},       {kRef1 + 3, kModemCode, false},
    {kRef1 + 4, kModemCode, false},       {kRef1 + 5, kModemCode, false},
    {kRef6 + 1, kModemCode, false},       {kNotes + 1, kModemCode, false},
}};

constexpr size_t RowStart(size_t row) {
  return row * kCriteriaRowSize;
}

}  // namespace

int16_t CriteriaRows::FieldCode(size_t row) const {
  return static_cast<int16_t>(LoadLe16(bytes_, RowStart(row)));
}

char CriteriaRows::ComparatorOf(size_t row) const {
  return static_cast<char>(LoadU8(bytes_, RowStart(row) + kComparatorOffset));
}

CriteriaRow CriteriaRows::Row(size_t row) const {
  CriteriaRow value;
  value.field_code = FieldCode(row);
  value.comparator = ComparatorOf(row);
  value.value =
      OemText(CopyFieldText(bytes().subspan(RowStart(row) + kValueOffset), kCriteriaValueSize));
  return value;
}

void CriteriaRows::SetRow(size_t row, const CriteriaRow& value) {
  StoreLe16(bytes_, RowStart(row), static_cast<uint16_t>(value.field_code));
  StoreU8(bytes_, RowStart(row) + kComparatorOffset, static_cast<uint8_t>(value.comparator));
  StorePadded(bytes_, RowStart(row) + kValueOffset, kCriteriaValueSize, value.value.bytes());
}

std::string CriteriaRows::ValueText(size_t row) const {
  return CopyFieldText(bytes().subspan(RowStart(row) + kValueOffset), kSize);
}

bool CriteriaRows::IsValid(size_t row) const {
  if (FieldCode(row) == 0) return false;
  const bool has_value = LoadU8(bytes_, RowStart(row) + kValueOffset) != 0;
  return has_value || ComparatorOf(row) < static_cast<char>(Comparator::kLowerOrEqual);
}

size_t CriteriaRows::CompactCriteriaRows() {
  size_t kept = 0;
  for (size_t row = 0; row < kCriteriaRowCount; ++row) {
    if (!IsValid(row)) continue;
    if (kept != row) {
      std::ranges::copy(bytes().subspan(RowStart(row), kCriteriaRowSize),
                        bytes_.begin() + static_cast<std::ptrdiff_t>(RowStart(kept)));
    }
    ++kept;
  }
  std::fill(bytes_.begin() + static_cast<std::ptrdiff_t>(RowStart(kept)), bytes_.end(),
            std::byte{0});
  return kept;
}

std::span<const OfferedField> OfferedFields() {
  return kOffered;
}

const OfferedField* FindOfferedField(int16_t code) {
  const auto found = std::ranges::find(kOffered, code, &OfferedField::code);
  return found == kOffered.end() ? nullptr : &*found;
}

int ValueLimit(int16_t code) {
  const OfferedField* offered = FindOfferedField(code);
  const int16_t limit_code = offered == nullptr ? kModemCode : offered->limit_code;
  return kFieldTable[limit_code - 1].size;
}

}  // namespace carnetel
