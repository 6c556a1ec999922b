// A criteria set: a name and six rows, each a test of one card field against a value. In memory the
// rows are one run of bytes in the layout of the file (storage/criteria_format.h): a value of 21
// characters has no terminator there, so that it goes on into the field code of the next row.
#pragma once

#include <array>
#include <span>
#include <string>

#include "storage/card_record.h"
#include "storage/criteria_format.h"

namespace carnetel {

// In the order of the comparator lists; the stored digit is the position there.
enum class Comparator : char {
  kEqual = '0',
  kDifferent = '1',
  kLowerOrEqual = '2',
  kGreaterOrEqual = '3',
  kLower = '4',
  kGreater = '5',
  kContains = '6',
};
inline constexpr std::array<std::string_view, 7> kComparatorTexts = {
    "=", "<>", "<=", ">=", "<", ">", "~"};

inline constexpr size_t kCriteriaValueSize = 21;

// One row by value, as dialogs and the terminal tool handle it.
struct CriteriaRow {
  int16_t field_code = 0;  // field number plus one; 0 is an empty row
  char comparator = '0';
  OemText value;  // at most 21 bytes are kept

  friend bool operator==(const CriteriaRow&, const CriteriaRow&) = default;
};

class CriteriaRows {
 public:
  static constexpr size_t kSize = kCriteriaRowCount * kCriteriaRowSize;

  [[nodiscard]] ByteView bytes() const { return bytes_; }
  ByteSpan bytes() { return bytes_; }

  [[nodiscard]] int16_t FieldCode(size_t row) const;
  [[nodiscard]] char ComparatorOf(size_t row) const;
  // As dialogs show it: never more than its 21 bytes.
  [[nodiscard]] CriteriaRow Row(size_t row) const;
  void SetRow(size_t row, const CriteriaRow& value);
  // As tests take it: up to the next zero byte, which a value of 21 bytes does not have. It goes on
  // with the low byte of the next row's field code. Only in the last row it ends at its 21 bytes.
  [[nodiscard]] std::string ValueText(size_t row) const;

  // Takes out the rows without a field, and those with an empty value whose comparator is neither
  // "=" nor "<>"; the rows behind move up. Returns the number of rows left, an unbroken run.
  size_t CompactCriteriaRows();
  void Clear() { bytes_.fill(std::byte{0}); }

  friend bool operator==(const CriteriaRows&, const CriteriaRows&) = default;

 private:
  [[nodiscard]] bool IsValid(size_t row) const;

  std::array<std::byte, kSize> bytes_{};
};

// A field that criteria can test, in the order of the field lists.
struct OfferedField {
  int16_t code;        // field number plus one
  int16_t limit_code;  // the code whose size limits the value edit
  bool number;         // the edit takes numbers only
};

[[nodiscard]] std::span<const OfferedField> OfferedFields();
// Null for a code that the lists do not offer, 0 among them.
[[nodiscard]] const OfferedField* FindOfferedField(int16_t code);
// How long a value may be typed for a field code; for one that is not offered too.
[[nodiscard]] int ValueLimit(int16_t code);

}  // namespace carnetel
