#include "shell/card_rows.h"

#include "storage/card_key.h"

namespace carnetel {
namespace {

constexpr bool IsIn(unsigned char byte, unsigned char first, unsigned char last) {
  return byte >= first && byte <= last;
}

constexpr unsigned char Capital(unsigned char byte) {
  return IsIn(byte, 'a', 'z') ? static_cast<unsigned char>(byte - ('a' - 'A')) : byte;
}

}  // namespace

std::optional<LetterRange> LetterRangeOf(char letter) {
  const unsigned char first = Capital(static_cast<unsigned char>(letter));
  if (first == 'Z') return LetterRange{'Z', 0};
  // The letter behind '9' is 'A'.
  if (first == '9') return LetterRange{'9', 'A'};
  if (!IsIn(first, '0', '8') && !IsIn(first, 'A', 'Y')) return std::nullopt;
  return LetterRange{first, static_cast<unsigned char>(first + 1)};
}

bool ShowsCard(const CardRecord& card, int key_field, const LetterRange& range) {
  const ByteView text = card.FieldBytes(ListedKeyField(card, key_field));
  const auto first = static_cast<signed char>(Capital(LoadU8(text, 0)));
  const auto wanted = static_cast<signed char>(range.first);
  return range.end == 0 ? first >= wanted : first == wanted;
}

uint32_t VisitCardRows(Directory& directory, const LetterRange& range,
                       const std::function<bool(const CardRow&)>& visit) {
  const AddressFile& address = directory.address();
  const LetterTable& letters = address.letters();
  const uint32_t stop = range.end == 0 ? address.entry_count() : EntryRow(letters.Start(range.end));
  uint32_t hidden = 0;
  CardRow row;
  for (row.row = EntryRow(letters.Start(range.first)); row.row < stop; ++row.row) {
    if (row.row >= address.entry_count()) break;
    row.entry = address.Entry(row.row);
    if (!directory.main().ReadCard(row.entry.card_offset(), row.card)) continue;
    if (!ShowsCard(row.card, directory.key_field(), range)) {
      ++hidden;
    } else if (!visit(row)) {
      break;
    }
  }
  return hidden;
}

}  // namespace carnetel
