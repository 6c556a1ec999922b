// How a card is filed: the 10-byte key of the two indexes, the letter under which the address file
// and the letter tabs look for it, and its one-line label in a list. Keys are made of OEM bytes:
// plain letters become capitals, accented ones keep their byte.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "storage/card_record.h"

namespace carnetel {

inline constexpr size_t kKeySize = 10;

// Zero ended when shorter than 10 bytes; a first byte of 0 is the empty key, which has no place.
using IndexKey = std::array<char, kKeySize>;

[[nodiscard]] inline std::string_view KeyView(const IndexKey& key) {
  return {key.data(), key.size()};
}

// The key field that stands in for an empty one: 10 for 0 and 0 for 10.
[[nodiscard]] constexpr int OtherKeyField(int key_field) {
  return key_field == kNom ? kSte1 : kNom;
}

// The key under which the card is added to and removed from the index of `key_field` (0 or 10).
[[nodiscard]] IndexKey IndexKeyOf(const CardRecord& card, int key_field);

// The key that a rebuild of the whole index gives the card. It differs from IndexKeyOf on purpose:
// only the first byte is folded, and a card without either key field is filed under A.
[[nodiscard]] IndexKey RebuildKeyOf(const CardRecord& card, int key_field);

// Makes the key of a search: the field `key_field` of the example alone, only the first byte
// folded.
[[nodiscard]] std::string SearchKeyOf(const CardRecord& example, int key_field);

// The letter of a card from the active key field. Nothing guarantees '0' to '9' or 'A' to 'Z'.
[[nodiscard]] unsigned char LetterOf(const CardRecord& card, int key_field);

// The letter under which a first key byte is filed. A byte below '0' as a signed value, which every
// OEM accent is, has no page and no letter of its own and is filed under '0'.
[[nodiscard]] constexpr unsigned char FiledLetter(unsigned char first) {
  return first != 0 && static_cast<signed char>(first) < '0' ? '0' : first;
}

// The key as an index holds it.
[[nodiscard]] constexpr IndexKey FiledKey(IndexKey key) {
  key[0] = static_cast<char>(FiledLetter(static_cast<unsigned char>(key[0])));
  return key;
}

[[nodiscard]] inline bool SameKey(const IndexKey& a, const IndexKey& b) {
  return CompareKey(KeyView(a), KeyView(b), kKeySize) == 0;
}

// True when an index may hold the card under this key: as an add or as a rebuild files it.
[[nodiscard]] bool MayBeFiledUnder(const IndexKey& stored, const CardRecord& card, int key_field);

// How lists show a card. The company styles serve the company index, the person styles the name
// index and every emission list.
struct LabelStyles {
  int active_index = 1;
  int style_aff_ste = 0;   // 0 company, 1 company then name, 2 name then company
  int style_aff_list = 1;  // 0 title first last, 1 first last, 2 title last first, 3 last first
  int style_aff_emi = 1;   // the same for the emission list
};

enum class LabelMode { kMainList = 0, kEmissionList = 1 };

inline constexpr size_t kLabelLimit = 32;

// The label of a card: its parts cut of trailing blanks, each followed by one blank (the last one
// too). A label of one part is never cut; one of several ends at `limit` bytes at the most.
[[nodiscard]] OemText ComposeCardLabel(const CardRecord& card, LabelMode mode, size_t limit,
                                       const LabelStyles& styles);

// The text that names a card in a list: the composed label, or the key field when that is empty or
// starts with a blank the other one.
[[nodiscard]] OemText ListLabelOf(const CardRecord& card, const LabelStyles& styles);

// The key field by which a list sorts and tests a card: the other one when the active one is empty
// or starts with a blank.
[[nodiscard]] int ListedKeyField(const CardRecord& card, int key_field);

}  // namespace carnetel
