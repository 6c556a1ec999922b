#include "transfer/capture.h"

#include "base/code_page.h"
#include "transfer/field_text.h"

namespace carnetel {
namespace {

struct Area {
  size_t offset;
  size_t size;
};
constexpr Area kCompany = {0, 33};
constexpr Area kAddress = {33, 33};
constexpr Area kFirstNumber = {66, 18};
constexpr size_t kSecondIsFax = 84;
constexpr Area kPostalCodeText = {86, 16};
constexpr Area kTown = {102, 33};
constexpr Area kSecondNumber = {135, 18};

constexpr size_t kCharactersOfNumber = 18;
constexpr char kNoPrefix = '?';

std::string TextOf(std::string_view record, const Area& area) {
  std::string text = CopyFieldText(record.substr(area.offset, area.size), area.size);
  CutTrailingBlanks(text);
  return text;
}

bool IsDialled(char byte) {
  return kDialled.find(byte) != std::string_view::npos;
}

// A number as it is dialled: pauses of any kind are ":", what cannot be dialled goes.
std::string DialledNumber(const std::string& text) {
  std::string number;
  for (const char byte : text.substr(0, kCharactersOfNumber)) {
    if (byte == ',' || byte == '.' || byte == ';') {
      number += ':';
    } else if (IsDialled(byte)) {
      number += byte;
    }
  }
  return number;
}

// Up to the first zero byte of the whole record, wherever it lies: writers end the company with
// one, so that only it is written in capitals; in a record without zeros all texts are.
void MakeCapitals(std::string& record) {
  const size_t end = std::min(record.find('\0'), record.size());
  record.replace(0, end, AnsiCapitals(AnsiText(record.substr(0, end))).bytes());
}

// Every card gets a letter to be filed under; an accented one counts as none, as does an empty
// company.
void MakeFilable(std::string& record) {
  const auto first = static_cast<signed char>(record[0]);
  if (first < '0' || first >= '[') record[0] = 'A';
}

// The card holds ANSI bytes until its user converts it.
void SetText(CardRecord* card, int field, const std::string& ansi) {
  card->SetField(field, OemText(ansi));
}

}  // namespace

CaptureReader::CaptureReader(FileSystem& files, const std::string& path, std::string prefix)
    : file_(files.Open(path, OpenMode::kRead)), prefix_(std::move(prefix)) {
  if (file_ != nullptr && file_->Size() < kCaptureRecordSize) file_.reset();
  if (prefix_.starts_with(kNoPrefix)) prefix_.clear();
  std::erase_if(prefix_, [](char byte) { return !IsDialled(byte); });
}

bool CaptureReader::ReadCaptureRecord(CardRecord* ansi_card) {
  const size_t read = file_ == nullptr ? 0 : file_->Read(position_, record_);
  if (read == 0) return false;
  position_ += read;
  ansi_card->Clear();
  std::string record = OemToAnsi(OemText(std::string(AsChars(record_)))).bytes();
  MakeCapitals(record);
  MakeFilable(record);
  SetText(ansi_card, kSte1, TextOf(record, kCompany));
  SetText(ansi_card, kAdr1, TextOf(record, kAddress));
  SetText(ansi_card, kShortPostalCode, TextOf(record, kPostalCodeText));
  SetText(ansi_card, kPostalCode, TextOf(record, kPostalCodeText));
  SetText(ansi_card, kVille, TextOf(record, kTown));
  SetText(ansi_card, kTel1, prefix_ + DialledNumber(TextOf(record, kFirstNumber)));
  const int second = record[kSecondIsFax] != 0 ? kFax : kTel2;
  SetText(ansi_card, second, prefix_ + DialledNumber(TextOf(record, kSecondNumber)));
  return true;
}

}  // namespace carnetel
