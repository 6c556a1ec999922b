#include "transfer/rank_form.h"

#include <algorithm>

#include "base/code_page.h"
#include "transfer/separator.h"

namespace carnetel {
namespace {

constexpr int kNoKeyField = 30;
constexpr int kErrorTitle = 79;
constexpr size_t kRankDigits = 2;

}  // namespace

std::vector<std::string> SeparatorProposals(SeparatorKind kind) {
  std::vector<std::string> rows;
  if (kind == SeparatorKind::kField) {
    rows.assign(kFieldSeparatorProposals.begin(), kFieldSeparatorProposals.end());
  }
  for (const SeparatorName& row : kSeparatorNames) rows.emplace_back(row.name);
  return rows;
}

RankForm::RankForm(ParameterFile& parameters, MessageForm& messages, TransferDirection direction)
    : parameters_(parameters), messages_(messages), direction_(direction) {
  const TransferProfile& profile = parameters_.profile();
  ForEachFieldOf(kStructureLines, [&](int field) {
    ranks_[static_cast<size_t>(field)] = NumberInput(profile.rank(field), kRankDigits);
  });
  Separator(SeparatorKind::kField) = AnsiText(profile.field_separator());
  Separator(SeparatorKind::kCard) = AnsiText(profile.card_separator());
}

void RankForm::LeaveRank(int line) {
  const bool is_key = line == kSte1;
  if (Rank(line).empty() || (is_key && Rank(line).value() == 0)) Rank(line).Show(is_key ? 1 : 0);
}

std::string RankForm::separator_text(SeparatorKind kind) const {
  return Utf8FromAnsi(Separator(kind));
}

void RankForm::TypeSeparator(SeparatorKind kind, std::string_view text) {
  const AnsiText typed = AnsiFromUtf8(text).text;
  Separator(kind) = AnsiText(typed.bytes().substr(0, TransferProfile::kMaxSeparator));
}

void RankForm::LeaveSeparator(SeparatorKind kind) {
  const std::string shown = ParseSeparator(Separator(kind).bytes(), SeparatorForm::kDisplay);
  // A longer one would be cut when it is stored, and stand for other bytes than were typed.
  if (shown.size() <= TransferProfile::kMaxSeparator) Separator(kind) = AnsiText(shown);
}

uint8_t RankForm::separator_row(SeparatorKind kind) const {
  const std::vector<std::string> rows = SeparatorProposals(kind);
  const auto row = std::ranges::find(rows, Separator(kind).bytes());
  return row == rows.end() ? kNoRow : static_cast<uint8_t>(row - rows.begin());
}

bool RankForm::Confirm() {
  if (Rank(kSte1).value() == 0) {
    messages_.ShowMessage(MessageStyle::kError, kErrorTitle, kNoKeyField);
    return false;
  }
  Store();
  return true;
}

void RankForm::Store() {
  TransferProfile& profile = parameters_.profile();
  profile.set_field_separator(Separator(SeparatorKind::kField).bytes());
  profile.set_field_separator_row(separator_row(SeparatorKind::kField));
  profile.set_card_separator(Separator(SeparatorKind::kCard).bytes());
  profile.set_card_separator_row(separator_row(SeparatorKind::kCard));
  ForEachFieldOf(kStructureLines, [&](int field) {
    profile.set_rank(field, ranks_[static_cast<size_t>(field)].value());
  });
  (void)parameters_.AccessParameterFile(ParameterFile::Access::kWrite, TransferFileType::kDelimited,
                                        direction_);
}

}  // namespace carnetel
