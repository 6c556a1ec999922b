#include "transfer/delimited_line.h"

#include <algorithm>

#include "transfer/field_text.h"
#include "transfer/separator.h"

namespace carnetel {
namespace {

constexpr char kQuote = '"';

// Separators are written as text that ends at a zero byte: NUL, and an empty one, is the zero byte
// alone.
bool IsWrittenAsZero(std::string_view separator) {
  return separator.empty() || separator[0] == '\0';
}

void AppendSeparator(std::string_view separator, std::string& text) {
  if (IsWrittenAsZero(separator)) {
    text += '\0';
  } else {
    text += separator;
  }
}

// The rank of field 0 is left out on purpose: a company whose rank lies behind all others is not
// written. Ranks of fields that never take part count.
int16_t HighestRank(const TransferProfile& profile) {
  int16_t highest = 1;
  for (int field = 1; field < kFieldCount; ++field) {
    highest = std::max(highest, profile.rank(field));
  }
  return highest;
}

}  // namespace

DelimitedLine::DelimitedLine(const TransferProfile& profile)
    : field_separator_(ParseSeparator(profile.field_separator(), SeparatorForm::kBytes)),
      card_separator_(ParseSeparator(profile.card_separator(), SeparatorForm::kBytes)),
      quoted_(field_separator_.size() == 2 && field_separator_[0] == kQuote),
      highest_rank_(HighestRank(profile)) {
  std::ranges::transform(kDelimitedFields, ranks_.begin(),
                         [&profile](int field) { return profile.rank(field); });
}

bool DelimitedLine::Read(std::string_view line, CardRecord& card) {
  return ForEachField(line, [&](int field, std::string_view text) { Store(text, field, card); });
}

bool DelimitedLine::TakeField(std::string_view line, size_t* position,
                              std::string_view* field) const {
  const bool one_field = field_separator_.empty();
  const std::ptrdiff_t found = one_field ? -1 : FindBytes(line, field_separator_, *position);
  size_t end = static_cast<size_t>(found);
  if (found < 0) {
    end = line.size() - card_separator_.size();
    if (end <= *position) return false;
    if (quoted_ && line[end - 1] == kQuote) --end;
  }
  if (quoted_ && line[*position] == kQuote) ++*position;
  *field = line.substr(*position, end - std::min(end, *position));
  *position += field->size() + field_separator_.size();
  return true;
}

void DelimitedLine::Store(std::string_view text, int field, CardRecord& card) {
  const FieldEntry& entry = kFieldTable[field];
  const std::string_view cut = text.substr(0, entry.size);
  work_.assign(cut.substr(0, cut.find('\0')));
  CleanFieldText(work_, field);
  StorePadded(card.bytes(), entry.offset, entry.size, work_);
}

void DelimitedLine::Append(const CardRecord& card, std::string& text) const {
  for (int rank = 1; rank <= highest_rank_; ++rank) {
    bool any = false;
    for (size_t i = 0; i < ranks_.size(); ++i) {
      if (ranks_[i] != rank) continue;
      AppendField(card, kDelimitedFields[i], rank == highest_rank_, text);
      any = true;
    }
    if (!any) AppendEmptyField(text);
  }
  AppendSeparator(card_separator_, text);
}

void DelimitedLine::AppendField(const CardRecord& card, int field, bool last,
                                std::string& text) const {
  if (quoted_) text += kQuote;
  text += WrittenText(card, field);
  // The zero byte stands behind the last text too.
  if (!last || IsWrittenAsZero(field_separator_)) {
    AppendSeparator(field_separator_, text);
  } else if (quoted_) {
    text += kQuote;
  }
}

// The separator follows behind the last rank too.
void DelimitedLine::AppendEmptyField(std::string& text) const {
  if (quoted_) text += kQuote;
  AppendSeparator(field_separator_, text);
}

}  // namespace carnetel
