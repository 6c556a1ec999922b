#include "link/chooser_extract.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <unordered_set>
#include <utility>

#include "link/append_block.h"
#include "link/hand_off_record.h"
#include "link/viafax_file.h"

namespace carnetel {
namespace {

using Result = ExtractOutcome::Result;

constexpr int32_t kOneCard = 1;
constexpr int32_t kSeveralCards = 2;

uint32_t OffsetOf(int32_t item) {
  return static_cast<uint32_t>(std::abs(int64_t{item}));
}

// The cards to go out, in their order, and how many of them at the most.
struct CardChoice {
  std::vector<uint32_t> offsets;
  uint32_t most = std::numeric_limits<uint32_t>::max();
};

CardChoice CurrentCard(const Directory& directory, const ChooserRows& rows) {
  CardChoice choice;
  if (rows.current < 0 || std::cmp_greater_equal(rows.current, rows.items.size())) return choice;
  const uint32_t offset = OffsetOf(rows.items[static_cast<size_t>(rows.current)]);
  if (directory.main().HoldsCard(offset)) choice.offsets = {offset};
  return choice;
}

// The rows say which cards count and when it is enough, the address file which of them are marked.
CardChoice SelectedCards(const Directory& directory, const ChooserRows& rows) {
  CardChoice choice;
  std::unordered_set<uint32_t> listed;
  for (const int32_t item : rows.items) listed.insert(OffsetOf(item));
  const auto marked = std::ranges::count_if(rows.items, [](int32_t item) { return item > 0; });
  choice.most = static_cast<uint32_t>(marked);
  if (choice.most == 0) return choice;
  const AddressFile& address = directory.address();
  for (uint32_t row = 0; row < address.entry_count(); ++row) {
    const EntrySlot entry = address.Entry(row);
    const bool counts =
        entry.bit(directory.selection_bit()) && listed.contains(entry.card_offset());
    if (counts) choice.offsets.push_back(entry.card_offset());
  }
  return choice;
}

CardChoice Choose(const Directory& directory, ExtractScope scope, const ChooserRows& rows) {
  if (scope == ExtractScope::kCard) return CurrentCard(directory, rows);
  if (scope == ExtractScope::kSelection) return SelectedCards(directory, rows);
  CardChoice choice;
  for (const int32_t item : rows.items) choice.offsets.push_back(OffsetOf(item));
  return choice;
}

// What goes into the file.
struct ExtractedText {
  std::string bytes;
  uint32_t cards = 0;
};

ExtractedText MakeRecords(Directory& directory, const ExtractRequest& request, ExtractScope scope,
                          const CardChoice& choice) {
  const std::string main_file = directory.paths().Main();
  const AnsiText path =
      scope == ExtractScope::kSelection ? RecordPathAsItIs(main_file) : RecordPath(main_file);
  const RecordForm form = request.long_records ? RecordForm::kLong : RecordForm::kShort;
  ExtractedText made;
  CardRecord card;
  for (const uint32_t offset : choice.offsets) {
    if (made.cards >= choice.most) break;
    if (!directory.main().ReadCard(offset, card)) continue;
    const HandOffSource source{card, offset, InfoOf(request.kind).field, path};
    const auto record = MakeHandOffRecord(source, form, request.styles);
    if (!record) continue;
    made.bytes += AsChars(*record);
    ++made.cards;
  }
  return made;
}

ExtractedText MakeViafaxText(Directory& directory, const ExtractRequest& request,
                             const CardChoice& choice, bool continues) {
  ViafaxText text(
      {request.file, InfoOf(request.kind).field, request.viafax_option, request.user_name},
      continues);
  CardRecord card;
  for (const uint32_t offset : choice.offsets) {
    if (text.addresses() >= choice.most) break;
    if (directory.main().ReadCard(offset, card)) text.Add(card);
  }
  // A job without an address is no job.
  if (text.addresses() == 0) return {};
  text.End();
  return {text.text(), text.addresses()};
}

int32_t AnswerOf(const ExtractRequest& request, ExtractScope scope, uint32_t cards) {
  if (scope == ExtractScope::kCard) return kOneCard;
  return request.viafax ? static_cast<int32_t>(cards) : kSeveralCards;
}

}  // namespace

ChooserRows ListChooserRows(const Directory& directory, NumberKind kind) {
  const uint8_t flag = InfoOf(kind).entry_flag;
  const AddressFile& address = directory.address();
  ChooserRows rows;
  for (uint32_t row = 0; row < address.entry_count(); ++row) {
    const EntrySlot entry = address.Entry(row);
    if (!entry.bit(directory.group_bit()) || (entry.number_flags() & flag) == 0) continue;
    const auto offset = static_cast<int32_t>(entry.card_offset());
    rows.items.push_back(entry.bit(directory.selection_bit()) ? offset : -offset);
  }
  return rows;
}

ExtractOutcome ChooserExtract(Directory& directory, const ExtractRequest& request,
                              ExtractScope scope, const ChooserRows& rows) {
  const CardChoice choice = Choose(directory, scope, rows);
  ExtractOutcome outcome;
  if (choice.offsets.empty()) {
    outcome.result = Result::kNoRow;
    return outcome;
  }
  const std::unique_ptr<File> file = OpenToAppend(directory, request.file);
  if (file == nullptr) {
    outcome.result = Result::kNoFile;
    return outcome;
  }
  const uint64_t size = file->Size();
  const ExtractedText made = request.viafax ? MakeViafaxText(directory, request, choice, size != 0)
                                            : MakeRecords(directory, request, scope, choice);
  if (made.cards == 0 && scope == ExtractScope::kCard) {
    outcome.result = Result::kNoNumber;
    return outcome;
  }
  outcome.answer = AnswerOf(request, scope, made.cards);
  outcome.cards = made.cards;
  if (made.bytes.empty()) return outcome;
  outcome.write_failed =
      !AppendBlock(*file, request.viafax ? ViafaxStart(size) : size, AsBytes(made.bytes));
  return outcome;
}

}  // namespace carnetel
