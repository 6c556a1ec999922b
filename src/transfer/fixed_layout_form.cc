#include "transfer/fixed_layout_form.h"

#include <algorithm>
#include <vector>

namespace carnetel {
namespace {

constexpr int kErrorTitle = 79;
constexpr int kSumTooLarge = 96;
constexpr int kOutsideRecord = 109;
constexpr int kOverlap = 180;

constexpr size_t kPlaceDigits = 3;
constexpr size_t kSizeDigits = 2;

}  // namespace

FixedLayoutForm::FixedLayoutForm(ParameterFile& parameters, MessageForm& messages,
                                 TransferDirection direction)
    : parameters_(parameters), messages_(messages), direction_(direction) {
  const TransferProfile& profile = parameters_.profile();
  At({FixedInputKind::kFirstCard}) = NumberInput(profile.first_card_offset(), kPlaceDigits);
  At({FixedInputKind::kRecordSize}) = NumberInput(profile.card_size(), kPlaceDigits);
  ForEachFieldOf(kFixedLayoutLines, [&](int field) {
    const FixedPlace place = profile.place(field);
    inputs_[IndexOf(FixedInputKind::kPosition, field)] = NumberInput(place.position, kPlaceDigits);
    inputs_[IndexOf(FixedInputKind::kSize, field)] = NumberInput(place.size, kSizeDigits);
  });
  Changed({FixedInputKind::kRecordSize});
}

void FixedLayoutForm::Type(FixedInput input, std::string_view text) {
  NumberInput& changed = At(input);
  if (text == changed.text()) return;
  changed.Type(text);
  const TransferProfile& stored = parameters_.profile();
  if (input.kind == FixedInputKind::kSize && changed.value() > stored.card_size()) {
    changed.Show(stored.place(FieldOf(input.line)).size);
  }
  Changed(input);
}

void FixedLayoutForm::Leave(FixedInput input) {
  if (!At(input).empty()) return;
  At(input).Show(0);
  Changed(input);
}

void FixedLayoutForm::Changed(FixedInput input) {
  const bool decides = input.kind == FixedInputKind::kRecordSize ||
                       input == FixedInput{FixedInputKind::kSize, kSte1};
  if (decides) confirm_enabled_ = At(input).value() != 0;
}

bool FixedLayoutForm::Confirm() {
  focus_.reset();
  if (!confirm_enabled_ || !AllEndInRecord() || !SumFits() || !NoneOverlap()) return false;
  Store();
  return true;
}

bool FixedLayoutForm::EndsInRecord(int field) const {
  return PlaceOf(field).position + PlaceOf(field).size <= record_size();
}

void FixedLayoutForm::TellOutside(int line) {
  messages_.ShowMessage(MessageStyle::kError, kErrorTitle, kOutsideRecord, label(line));
  focus_ = {FixedInputKind::kPosition, line};
}

bool FixedLayoutForm::ReferencesEndInRecord() {
  for (int reference = 0; reference < kStructureReferences; ++reference) {
    if (EndsInRecord(kRef1 + reference)) continue;
    SelectReference(reference);
    TellOutside(kReferenceLine);
    return false;
  }
  return true;
}

// A plain line at fault ends the walk; behind the references, which are told once, it goes on, so
// that a second message can follow.
bool FixedLayoutForm::AllEndInRecord() {
  bool all = true;
  for (const int line : kFixedLayoutLines) {
    if (line == kReferenceLine) {
      all = ReferencesEndInRecord();
    } else if (!EndsInRecord(line)) {
      TellOutside(line);
      return false;
    }
  }
  return all;
}

bool FixedLayoutForm::SumFits() {
  int sum = 0;
  ForEachFieldOf(kFixedLayoutLines, [&](int field) { sum += PlaceOf(field).size; });
  if (sum <= record_size()) return true;
  messages_.ShowMessage(MessageStyle::kError, kErrorTitle, kSumTooLarge, sum);
  return false;
}

// Lines without a size take no part, wherever they stand: the end of the line before them is
// carried on to the next. The line of the references counts with what it shows.
bool FixedLayoutForm::NoneOverlap() {
  std::vector<int> lines(kFixedLayoutLines.begin(), kFixedLayoutLines.end());
  const auto place = [this](int line) { return PlaceOf(FieldOf(line)); };
  std::erase_if(lines, [&](int line) { return place(line).size <= 0; });
  std::ranges::stable_sort(lines, {}, [&](int line) { return place(line).position; });
  const auto overlaps = [&](int before, int line) {
    return place(line).position < place(before).position + place(before).size;
  };
  const auto found = std::ranges::adjacent_find(lines, overlaps);
  if (found == lines.end()) return true;
  const int before = *found;
  messages_.ShowMessage(MessageStyle::kError, kErrorTitle, kOverlap, label(*std::next(found)),
                        label(before));
  focus_ = {FixedInputKind::kPosition, before};
  return false;
}

void FixedLayoutForm::Store() {
  TransferProfile& profile = parameters_.profile();
  profile.set_first_card_offset(At({FixedInputKind::kFirstCard}).value());
  profile.set_card_size(record_size());
  ForEachFieldOf(kFixedLayoutLines, [&](int field) { profile.set_place(field, PlaceOf(field)); });
  (void)parameters_.AccessParameterFile(ParameterFile::Access::kWrite, TransferFileType::kFixed,
                                        direction_);
}

}  // namespace carnetel
