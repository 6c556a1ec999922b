#include "link/viafax_file.h"

#include <algorithm>
#include <cstdlib>
#include <limits>
#include <span>

#include "base/code_page.h"
#include "base/path.h"
#include "base/utf8.h"
#include "platform/user_profile.h"

namespace carnetel {
namespace {

constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kClosingLine = "NNNN\r\n";
constexpr std::string_view kFixedLines = "PM=\"N\",\r\nPMID=\"\",\r\nSUBJ=\"\",\r\nUREF=\"\",\r\n";
constexpr std::string_view kReferenceSeparator = "<:R:>";
constexpr size_t kJobNumberAt = 4;
constexpr size_t kMostUserName = 30;
constexpr size_t kMostTo = 30;
constexpr size_t kMostRe = 24;
constexpr size_t kMostNumber = 20;

std::string TrimmedField(const CardRecord& card, int field, size_t limit) {
  std::string text = CopyFieldText(card.FieldBytes(field), limit);
  TrimRight(text);
  return text;
}

std::string QuotedLine(std::string_view key, std::string_view text) {
  std::string line(key);
  return line.append("=\"").append(text).append("\",").append(kLineEnd);
}

std::string References(const CardRecord& card) {
  std::string joined;
  for (int field = kRef1; field <= kRef6; ++field) {
    const std::string reference = TrimmedField(card, field, kFieldTable[field].size);
    if (reference.empty()) continue;
    if (!joined.empty()) joined += kReferenceSeparator;
    joined += reference;
  }
  return joined;
}

// Settings files of older siblings are ANSI throughout.
AnsiText UserNameBytes(const std::string& user_name) {
  std::string not_utf8;
  AppendUtf8(not_utf8, kReplacementCharacter);
  const bool ansi = AnsiFromUtf8(user_name).refused == not_utf8;
  const AnsiText name = ansi ? AnsiText(user_name) : AnsiFromUtf8Lossy(user_name);
  return AnsiText(name.bytes().substr(0, kMostUserName));
}

std::span<const int> AttentionFields(int option) {
  static constexpr int kSets[][3] = {{kSte1},         {kSte1, kNom},
                                     {kNom, kSte1},   {kQualite, kPrenom, kNom},
                                     {kPrenom, kNom}, {kQualite, kNom, kPrenom},
                                     {kNom, kPrenom}};
  static constexpr size_t kCounts[] = {1, 2, 2, 3, 2, 3, 2};
  const size_t set = option >= 0 && option < static_cast<int>(std::size(kSets))
                         ? static_cast<size_t>(option)
                         : size_t{0};
  return std::span(kSets[set]).first(kCounts[set]);
}

// The second part gets its hyphen only behind something.
void JoinSecond(std::string& text, const std::string& part) {
  if (part.empty()) return;
  if (!text.empty()) text += '-';
  text += part;
}

// The third part gets its hyphen even behind nothing, unlike the second: the service has always
// been sent "-Nom" for a card without title and first name.
void JoinThird(std::string& text, const std::string& part) {
  if (!part.empty()) text += '-' + part;
}

}  // namespace

std::string ViafaxUserName(FileSystem& files, const std::string& home_folder,
                           const std::string& appli_name) {
  const UserProfile settings(files, FindAnyCase(files, home_folder + appli_name + ".INI"));
  return settings.Text("General", "UserName", "");
}

int32_t ViafaxJobNumber(const std::string& file) {
  const std::string name = AnsiFromUtf8Lossy(PathSplit(file).name).bytes();
  if (name.size() <= kJobNumberAt) return 0;
  using Limits = std::numeric_limits<int32_t>;
  const long long number = std::strtoll(name.c_str() + kJobNumberAt, nullptr, 10);
  return static_cast<int32_t>(std::clamp<long long>(number, Limits::min(), Limits::max()));
}

OemText ViafaxAttention(const CardRecord& card, int option) {
  const std::span<const int> fields = AttentionFields(option);
  std::string text = card.FieldText(fields[0]).bytes();
  TrimRight(text);
  if (fields.size() > 1) JoinSecond(text, card.FieldText(fields[1]).bytes());
  TrimRight(text);
  if (fields.size() > 2) JoinThird(text, card.FieldText(fields[2]).bytes());
  TrimRight(text);
  return OemText(text);
}

uint64_t ViafaxStart(uint64_t file_size) {
  return file_size - std::min<uint64_t>(file_size, kClosingLine.size());
}

ViafaxText::ViafaxText(const ViafaxSettings& settings, bool continues)
    : number_field_(settings.number_field),
      option_(settings.option),
      job_number_(ViafaxJobNumber(settings.file)),
      from_line_(QuotedLine("FROM", UserNameBytes(settings.user_name).bytes())) {
  if (!continues) AddHeader();
}

void ViafaxText::AddHeader() {
  text_ += "NOM CLIENT\r\n\r\n";
  text_ += "ADMIN BL=" + std::to_string(job_number_) + ",PW=\"\",REL=\"\"\r\n\r\n";
  text_ += "PW=\"/\"\r\n";
}

void ViafaxText::Add(const CardRecord& card) {
  if (addresses_ != 0 && addresses_ % kViafaxJobAddresses == 0) {
    End();
    AddHeader();
  }
  ++addresses_;
  const std::string second_line = TrimmedField(card, kSte2, kMostRe);
  text_ += kFixedLines;
  text_ += QuotedLine("CC", References(card));
  text_ += from_line_;
  text_ += QuotedLine("TO", TrimmedField(card, kSte1, kMostTo));
  text_ += QuotedLine("RE", second_line);
  // It is meant to stand twice.
  text_ += QuotedLine("ADR02", second_line);
  text_ += QuotedLine("ADR08", ViafaxAttention(card, option_).bytes());
  text_ += "ADR01=" + CopyFieldText(card.FieldBytes(number_field_), kMostNumber);
  text_ += ",TYPE=FAXG3,PRI=2\r\n";
}

void ViafaxText::End() {
  text_ += kClosingLine;
}

}  // namespace carnetel
