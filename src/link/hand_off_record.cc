#include "link/hand_off_record.h"

#include "base/code_page.h"
#include "base/path.h"

namespace carnetel {
namespace {

constexpr size_t kNumberSize = 30;
constexpr size_t kCardOffsetAt = 30;
constexpr size_t kPathSize = 60;
// Of the short form.
constexpr size_t kNameAt = 40;
constexpr size_t kNameSize = 48;
constexpr size_t kShortPathAt = 88;
// Of the long form. Its areas for texts are one byte longer than the texts become.
constexpr size_t kLabelAt = 34;
constexpr size_t kCompanyAt = 67;
constexpr size_t kLongPathAt = 100;
constexpr size_t kLabelSize = kFieldTable[kNom].size;
constexpr size_t kCompanySize = kFieldTable[kSte1].size;

struct RecordTexts {
  AnsiText number;
  AnsiText label;
  AnsiText company;
};

RecordTexts TextsOf(const HandOffSource& source, const LabelStyles& styles) {
  const OemText label = ComposeCardLabel(source.card, LabelMode::kEmissionList, kLabelSize, styles);
  return {OemToAnsi(source.card.FieldText(source.number_field)), OemToAnsi(label),
          OemToAnsi(source.card.FieldText(kSte1))};
}

void Trim(RecordTexts& texts) {
  TrimRight(texts.number.bytes());
  TrimRight(texts.label.bytes());
  TrimRight(texts.company.bytes());
}

std::vector<std::byte> ShortRecord(const HandOffSource& source, const RecordTexts& texts) {
  std::vector<std::byte> record(kShortRecordSize);
  StorePadded(record, 0, kNumberSize, texts.number.bytes());
  StoreLe32(record, kCardOffsetAt, source.card_offset);
  StorePadded(record, kNameAt, kNameSize, texts.company.bytes());
  StorePadded(record, kShortPathAt, kPathSize, source.path.bytes());
  return record;
}

std::vector<std::byte> LongRecord(const HandOffSource& source, const RecordTexts& texts) {
  std::vector<std::byte> record(kLongRecordSize);
  StorePadded(record, 0, kNumberSize, texts.number.bytes());
  StoreLe32(record, kCardOffsetAt, source.card_offset);
  StorePadded(record, kLabelAt, kLabelSize, texts.label.bytes());
  StorePadded(record, kCompanyAt, kCompanySize, texts.company.bytes());
  StorePadded(record, kLongPathAt, kPathSize, source.path.bytes());
  return record;
}

}  // namespace

AnsiText RecordPath(const std::string& main_file) {
  return UpperCasePath(RecordPathAsItIs(main_file));
}

AnsiText RecordPathAsItIs(const std::string& main_file) {
  return AnsiFromUtf8Lossy(main_file);
}

std::optional<std::vector<std::byte>> MakeHandOffRecord(const HandOffSource& source,
                                                        RecordForm form,
                                                        const LabelStyles& styles) {
  RecordTexts texts = TextsOf(source, styles);
  const bool trimmed = form == RecordForm::kLong;
  if (trimmed) Trim(texts);
  if (texts.number.empty() || (trimmed && texts.company.empty())) return std::nullopt;
  return form == RecordForm::kShort ? ShortRecord(source, texts) : LongRecord(source, texts);
}

}  // namespace carnetel
