#include "selection/card_test.h"

#include <algorithm>

namespace carnetel {
namespace {

constexpr int16_t kPostalCodeCode = kPostalCode + 1;

// An empty value looks at the first byte of the field only.
bool PassesEmptyValue(Comparator comparator, uint8_t first) {
  switch (comparator) {
    case Comparator::kEqual:
    case Comparator::kLowerOrEqual:
    case Comparator::kContains:
      return first == 0;
    case Comparator::kDifferent:
    case Comparator::kGreater:
      return first != 0;
    case Comparator::kLower:
      // Only a field that begins with an accented letter is lower than nothing; it has to stay.
      return static_cast<int8_t>(first) < 0;
    case Comparator::kGreaterOrEqual:
      break;
  }
  return true;
}

bool PassesOrder(Comparator comparator, int order) {
  switch (comparator) {
    case Comparator::kEqual:
      return order == 0;
    case Comparator::kDifferent:
      return order != 0;
    case Comparator::kLowerOrEqual:
      return order <= 0;
    case Comparator::kGreaterOrEqual:
      return order >= 0;
    case Comparator::kLower:
      return order < 0;
    case Comparator::kGreater:
      return order > 0;
    case Comparator::kContains:
      break;
  }
  return true;
}

bool Contains(std::string field, std::string value, size_t size, size_t compared) {
  UpperCaseRun(field, size);
  UpperCaseRun(value, compared);
  return field.find(value) != std::string::npos;
}

bool PassesRow(const CriteriaRows& rows, size_t row, const CardRecord& card) {
  const int16_t code = rows.FieldCode(row);
  // Not a field: no card has it.
  if (code < 0 || code > kFieldCount) return false;
  const bool short_code = code == kPostalCodeCode && card.FieldEmpty(kPostalCode);
  const int field = short_code ? kShortPostalCode : code - 1;
  const auto comparator = static_cast<Comparator>(rows.ComparatorOf(row));
  const std::string value = rows.ValueText(row);
  if (value.empty()) return PassesEmptyValue(comparator, LoadU8(card.FieldBytes(field), 0));
  const std::string text = card.FieldText(field).bytes();
  const size_t size = kFieldTable[field].size;
  const size_t compared = std::min(size, value.size());
  if (comparator == Comparator::kContains) return Contains(text, value, size, compared);
  return PassesOrder(comparator, CompareKey(text, value, compared));
}

}  // namespace

bool TestCard(const CriteriaRows& rows, const CardRecord& card) {
  for (size_t row = 0; row < kCriteriaRowCount && rows.FieldCode(row) != 0; ++row) {
    if (!PassesRow(rows, row, card)) return false;
  }
  return true;
}

bool PassesAll(const CriteriaRows& rows) {
  return rows.ValueText(0).starts_with('*');
}

// Row 6 is not touched.
CriteriaRows RowsForAll(CriteriaRows rows) {
  rows.SetRow(0, {kSte1 + 1, static_cast<char>(Comparator::kEqual), OemText("*")});
  for (size_t row = 1; row + 1 < kCriteriaRowCount; ++row) {
    CriteriaRow emptied = rows.Row(row);
    emptied.field_code = 0;
    rows.SetRow(row, emptied);
  }
  (void)rows.CompactCriteriaRows();
  return rows;
}

}  // namespace carnetel
