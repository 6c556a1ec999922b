// The second page of the print form, "Définir liste": twelve rows of a field and a width, and the
// width of the list that they make.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "printing/layout_file.h"

namespace carnetel {

class LayoutForm {
 public:
  static constexpr size_t kWidthDigits = 3;
  // The largest number of so many digits.
  static constexpr uint32_t kMaxWidth = 999;

  // Shows the user's composition. `file` outlives the form.
  explicit LayoutForm(LayoutFile& file);

  // The entries of a row's list of fields: an empty one, then the fields in capitals.
  [[nodiscard]] static std::vector<std::string> Choices();

  // `row` from 0 to 11. An empty row has choice 0 and an empty width.
  [[nodiscard]] uint32_t choice(size_t row) const { return rows_[row].choice; }
  [[nodiscard]] const std::string& width_text(size_t row) const { return rows_[row].width; }
  void Choose(size_t row, uint32_t choice) { rows_[row].choice = choice; }
  // Takes the digits of what stands in the input, three at most.
  void TypeWidth(size_t row, std::string_view text);

  // The widths of all rows with a field and the blanks between them.
  [[nodiscard]] int ColumnsWidth() const;
  // "Largeur de la liste : 80 colonnes".
  [[nodiscard]] std::string WidthText() const;

  // Shows the composition as it came; nothing is saved.
  void Default();
  // Keeps the rows that have a field and a width, closes up the gaps and shows them again. False
  // when the file could not be written.
  bool Save();

 private:
  struct Row {
    uint32_t choice = 0;
    std::string width;
  };
  void Show(const Composition& composition);

  LayoutFile& file_;
  std::array<Row, kMaxColumns> rows_;
};

}  // namespace carnetel
