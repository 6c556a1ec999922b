#include "storage/card_key.h"

namespace carnetel {
namespace {

// Compared as a signed byte, so that accented OEM letters (80h to FFh) are never replaced.
constexpr signed char kLastPlainKeyByte = 'Z';

bool IsAboveZ(char byte) {
  return static_cast<signed char>(byte) > kLastPlainKeyByte;
}

char Folded(char byte) {
  return static_cast<char>(FoldByte(static_cast<unsigned char>(byte)));
}

std::string KeyText(const CardRecord& card, int key_field) {
  const OemText text = card.FieldText(key_field);
  return text.empty() ? card.FieldText(OtherKeyField(key_field)).bytes() : text.bytes();
}

IndexKey ToKey(std::string_view text) {
  IndexKey key{};
  const std::string_view head = text.substr(0, std::min(kKeySize, text.find('\0')));
  std::copy(head.begin(), head.end(), key.begin());
  return key;
}

// A field without trailing blanks, with exactly one blank behind it when anything is left.
std::string LabelPart(const CardRecord& card, int field) {
  std::string part = card.FieldText(field).bytes();
  CutTrailingBlanks(part);
  if (!part.empty()) part += ' ';
  return part;
}

// A label that passes the limit ends exactly there, even when its first part alone passed it.
void AppendPart(std::string& label, const std::string& part, size_t limit) {
  label += part;
  if (label.size() > limit) label.resize(limit);
}

}  // namespace

IndexKey IndexKeyOf(const CardRecord& card, int key_field) {
  std::string text = KeyText(card, key_field);
  UpperCaseRun(text, kKeySize);
  text.resize(std::min(text.size(), kKeySize));
  for (char& byte : text) {
    if (IsAboveZ(byte)) byte = Folded(byte);
  }
  return ToKey(text);
}

IndexKey RebuildKeyOf(const CardRecord& card, int key_field) {
  std::string text = KeyText(card, key_field);
  text.resize(std::min(text.size(), kKeySize));
  if (text.empty()) text.assign(1, 'A');
  UpperCaseRun(text, kKeySize);
  if (IsAboveZ(text.front())) text.front() = Folded(text.front());
  return ToKey(text);
}

bool MayBeFiledUnder(const IndexKey& stored, const CardRecord& card, int key_field) {
  return SameKey(stored, FiledKey(IndexKeyOf(card, key_field))) ||
         SameKey(stored, FiledKey(RebuildKeyOf(card, key_field)));
}

std::string SearchKeyOf(const CardRecord& example, int key_field) {
  std::string text = example.FieldText(key_field).bytes();
  UpperCaseRun(text, kKeySize);
  if (!text.empty() && IsAboveZ(text.front())) text.front() = Folded(text.front());
  return text.substr(0, text.find('\0'));
}

unsigned char LetterOf(const CardRecord& card, int key_field) {
  const std::string text = KeyText(card, key_field);
  if (text.empty()) return 0;
  char first = text.front();
  if (IsAboveZ(first)) {
    if (static_cast<signed char>(first) < 0x7B) first = static_cast<char>(first - 0x20);
    if (IsAboveZ(first)) first = Folded(first);
  }
  return static_cast<unsigned char>(first);
}

OemText ComposeCardLabel(const CardRecord& card, LabelMode mode, size_t limit,
                         const LabelStyles& styles) {
  const std::string company = LabelPart(card, kSte1);
  const std::string title = LabelPart(card, kQualite);
  const std::string first = LabelPart(card, kPrenom);
  const std::string last = LabelPart(card, kNom);
  const std::array<std::array<const std::string*, 2>, 3> company_styles = {
      {{&company, nullptr}, {&company, &last}, {&last, &company}}};
  const std::array<std::array<const std::string*, 3>, 4> person_styles = {
      {{&title, &first, &last},
       {&first, &last, nullptr},
       {&title, &last, &first},
       {&last, &first, nullptr}}};
  const auto compose = [limit](std::span<const std::string* const> parts) {
    std::string label = *parts.front();
    for (const std::string* part : parts.subspan(1)) {
      if (part != nullptr) AppendPart(label, *part, limit);
    }
    return OemText(std::move(label));
  };
  if (styles.active_index != 2 && mode == LabelMode::kMainList) {
    return compose(company_styles[static_cast<size_t>(std::clamp(styles.style_aff_ste, 0, 2))]);
  }
  const int style = mode == LabelMode::kMainList ? styles.style_aff_list : styles.style_aff_emi;
  return compose(person_styles[static_cast<size_t>(std::clamp(style, 0, 3))]);
}

int ListedKeyField(const CardRecord& card, int key_field) {
  const std::byte first = card.FieldBytes(key_field).front();
  return first == std::byte{0} || first == std::byte{' '} ? OtherKeyField(key_field) : key_field;
}

OemText ListLabelOf(const CardRecord& card, const LabelStyles& styles) {
  OemText label = ComposeCardLabel(card, LabelMode::kMainList, kLabelLimit, styles);
  if (!label.empty()) return label;
  const int key_field = styles.active_index == 2 ? kNom : kSte1;
  return card.FieldText(ListedKeyField(card, key_field));
}

}  // namespace carnetel
