#include "cli/card_output.h"

#include <algorithm>
#include <ostream>

#include "base/code_page.h"
#include "shell/field_names.h"

namespace carnetel {
namespace {

constexpr size_t kNameWidth = 8;

std::string PaddedNumber(uint32_t number, size_t width) {
  std::string text = std::to_string(number);
  return text.insert(0, width - std::min(width, text.size()), ' ');
}

// A field's text, one line under the other when it has several.
std::string FieldLines(const NamedText& field) {
  std::string lines;
  std::string_view rest = field.second;
  std::string term = field.first;
  while (true) {
    const size_t end = std::min(rest.find('\n'), rest.size());
    std::string_view line = rest.substr(0, end);
    if (line.ends_with('\r')) line.remove_suffix(1);
    term.resize(kNameWidth, ' ');
    lines += "  " + term + ' ' + Shown(std::string(line)) + '\n';
    if (end == rest.size()) return lines;
    rest.remove_prefix(end + 1);
    term.clear();
  }
}

std::string Joined(const std::vector<std::string>& texts) {
  std::string joined;
  for (const std::string& text : texts) joined += (joined.empty() ? "" : ", ") + text;
  return joined;
}

}  // namespace

std::string Shown(std::string text) {
  for (char& byte : text) {
    const auto code = static_cast<unsigned char>(byte);
    if (code < 0x20 || code == 0x7F) byte = ' ';
  }
  return text;
}

std::string CardCount(int64_t count) {
  return std::to_string(count) + (count > 1 ? " fiches" : " fiche");
}

void PrintMarkedCount(CliSession& session, int32_t count) {
  if (session.options().json) {
    session.out() << CountLine("marked", count) << '\n';
  } else {
    session.out() << CardCount(count) << (count > 1 ? " marquées\n" : " marquée\n");
  }
}

std::optional<CardRow> LoadRow(Directory& directory, uint32_t offset, uint32_t from) {
  const AddressFile& address = directory.address();
  CardRow row;
  row.row = address.FindRow(offset, from);
  if (row.row >= address.entry_count()) row.row = address.FindRow(offset);
  if (row.row >= address.entry_count()) return std::nullopt;
  row.entry = address.Entry(row.row);
  if (!directory.main().ReadCard(offset, row.card)) return std::nullopt;
  return row;
}

CardPrinter::CardPrinter(CliSession& session, Directory& directory)
    : session_(session),
      directory_(directory),
      styles_(session.label_styles()),
      groups_(GroupFile(directory).Groups()),
      number_width_(std::to_string(directory.address().entry_count()).size()) {}

std::string CardPrinter::Label(const CardRow& row) const {
  OemText label = ListLabelOf(row.card, styles_);
  CutTrailingBlanks(label.bytes());
  return Utf8FromOem(label);
}

bool CardPrinter::IsMarked(const CardRow& row) const {
  return row.entry.bit(directory_.selection_bit());
}

CardView CardPrinter::View(const CardRow& row) const {
  CardView view;
  view.row = row.row + 1;
  view.offset = row.entry.card_offset();
  view.marked = IsMarked(row);
  for (const GroupRecord& group : groups_) {
    if (row.entry.bit(group.slot())) view.groups.push_back(Utf8FromOem(group.name()));
  }
  view.label = Label(row);
  for (int field = 0; field < kFieldCount; ++field) {
    if (row.card.FieldEmpty(field)) continue;
    view.fields.emplace_back(FieldName(field), Utf8FromOem(row.card.FieldText(field)));
  }
  return view;
}

void CardPrinter::PrintRow(const CardRow& row) {
  if (session_.options().json) {
    session_.out() << CardLine(View(row)) << '\n';
    return;
  }
  session_.out() << PaddedNumber(row.row + 1, number_width_) << (IsMarked(row) ? " * " : "   ")
                 << Shown(Label(row)) << '\n';
}

void CardPrinter::PrintCard(const CardRow& row) {
  if (session_.options().json) {
    PrintRow(row);
    return;
  }
  const CardView view = View(row);
  std::string text = first_ ? "" : "\n";
  first_ = false;
  text += "Fiche " + std::to_string(view.row) + " (@" + std::to_string(view.offset) + ')';
  text += view.marked ? " marquée\n" : "\n";
  for (const NamedText& field : view.fields) text += FieldLines(field);
  if (!view.groups.empty()) text += FieldLines({"Groupes", Joined(view.groups)});
  session_.out() << text;
}

void CardPrinter::PrintNumber(const CardRow& row) {
  if (session_.options().json) {
    PrintRow(row);
  } else {
    session_.out() << row.row + 1 << '\n';
  }
}

}  // namespace carnetel
