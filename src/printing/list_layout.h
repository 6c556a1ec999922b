// The lines of a printed list: which field a column's choice stands for, the heading and the line
// of a card. A line holds 128 characters at most, the left margin not counted.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "printing/layout_file.h"
#include "storage/card_record.h"

namespace carnetel {

inline constexpr size_t kMaxListLine = 128;
// Choices of a column, from 1; the field Qualite is not offered, by design.
inline constexpr uint32_t kColumnChoices = 20;

// The card field of a choice from 1 to kColumnChoices.
[[nodiscard]] int FieldOfChoice(uint32_t choice);
// The choice of a field, 0 for one that is not offered.
[[nodiscard]] uint32_t ChoiceOfField(int field);
// Its name in capitals, "STE1".
[[nodiscard]] std::string ChoiceName(uint32_t choice);

class ListLayout {
 public:
  // Takes the columns up to the first without a field.
  explicit ListLayout(const Composition& composition);

  // The names of the columns. Each is padded to the size of its card field, not to its column, and
  // the next one overwrites what is too much; it ends where the last name's text ends.
  [[nodiscard]] std::string Heading() const;
  // The fields of a card, each cut and padded to its column's width, with a blank behind it.
  [[nodiscard]] std::string Line(const CardRecord& card) const;
  // Characters of the longer of the two.
  [[nodiscard]] size_t Width() const;

 private:
  struct Column {
    int field;
    size_t width;
  };
  std::vector<Column> columns_;
};

}  // namespace carnetel
