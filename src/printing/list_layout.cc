#include "printing/list_layout.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "base/string_table.h"
#include "base/text.h"

namespace carnetel {
namespace {

// By choice, from 1.
constexpr std::array<int, kColumnChoices> kFields = {
    kPrenom, kNom, kSte1,  kSte2, kAdr1, kAdr2, kPostalCode, kVille, kPays, kTel1,
    kTel2,   kFax, kModem, kRef1, 13,    14,    15,          16,     kRef6, kNotes};

// Puts a text and a blank at `start` of a line, cut where the line is full; returns their end.
size_t Overwrite(std::string& line, size_t start, std::string_view text, size_t width) {
  const size_t end = std::min(start + width + 1, line.size());
  for (size_t i = start; i < end; ++i) {
    const size_t at = i - start;
    line[i] = at < width && at < text.size() ? text[at] : ' ';
  }
  return end;
}

}  // namespace

int FieldOfChoice(uint32_t choice) {
  return kFields[choice - 1];
}

uint32_t ChoiceOfField(int field) {
  const auto* const found = std::ranges::find(kFields, field);
  return found == kFields.end() ? 0 : static_cast<uint32_t>(found - kFields.begin()) + 1;
}

std::string ChoiceName(uint32_t choice) {
  std::string name(LoadText(FieldOfChoice(choice)));
  UpperCaseRun(name, name.size());
  return name;
}

ListLayout::ListLayout(const Composition& composition) {
  for (size_t i = 0; i < kMaxColumns; ++i) {
    const ColumnSpec& stored = composition[i];
    if (stored.choice == 0 || stored.choice > kColumnChoices) break;
    columns_.push_back(
        {FieldOfChoice(stored.choice), std::min<size_t>(stored.width, kMaxListLine)});
  }
}

std::string ListLayout::Heading() const {
  std::string line(kMaxListLine, ' ');
  size_t start = 0;
  size_t end = 0;
  for (const Column& column : columns_) {
    end = Overwrite(line, start, ChoiceName(ChoiceOfField(column.field)),
                    kFieldTable[column.field].size);
    start += column.width + 1;
  }
  line.resize(end);
  return line;
}

std::string ListLayout::Line(const CardRecord& card) const {
  std::string line(kMaxListLine, ' ');
  size_t start = 0;
  for (const Column& column : columns_) {
    start = Overwrite(line, start, card.FieldText(column.field).bytes(), column.width);
  }
  line.resize(start);
  return line;
}

size_t ListLayout::Width() const {
  return std::max(Heading().size(), Line(CardRecord()).size());
}

}  // namespace carnetel
