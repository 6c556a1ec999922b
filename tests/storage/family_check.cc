#include "tests/storage/family_check.h"

#include <set>

namespace carnetel {
namespace {

constexpr std::string_view kLetters = "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZ";

std::string TextAt(ByteView bytes, size_t offset, size_t size) {
  const std::string_view text = AsChars(bytes.subspan(offset, size));
  return std::string(text.substr(0, text.find('\0')));
}

// The company is at 0, the surname at 277; each stands in for the other.
std::string PlainKey(const CardRecord& card, int key_field) {
  std::string text = TextAt(card.bytes(), key_field == kNom ? 277 : 0, 32);
  if (text.empty()) text = TextAt(card.bytes(), key_field == kNom ? 0 : 277, 32);
  text = text.substr(0, 10);
  for (char& c : text) {
    if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 32);
  }
  const bool has_no_letter = !text.empty() && static_cast<signed char>(text[0]) < '0';
  if (has_no_letter) text[0] = '0';
  return text.empty() ? "A" : text;
}

uint8_t PlainFlags(const CardRecord& card) {
  const auto has = [&card](size_t offset) { return card.bytes()[offset] != std::byte{0}; };
  return static_cast<uint8_t>((has(469) ? 0x80 : 0) | (has(517) ? 0x40 : 0) |
                              (has(575) ? 0x20 : 0) | (has(542) ? 0x10 : 0));
}

std::string Told(std::string_view what, uint64_t where) {
  return std::string(what) + " (" + std::to_string(where) + ")";
}

// One pass over an index, page by page.
class IndexReader {
 public:
  IndexReader(const std::vector<CardRecord>& cards, int key_field, SlotOrder slot_order)
      : cards_(cards), key_field_(key_field), sorted_(slot_order == SlotOrder::kSorted) {}

  std::string TakePage(char letter, ByteView page) {
    if (page[1] != std::byte{0}) return Told("second byte of a page", pages_);
    if (pages_ > 0 && letter != letter_) {
      ended_ = false;
      before_.clear();
    }
    letter_ = letter;
    ++pages_;
    for (size_t slot = 2; slot < 506; slot += 14) {
      const std::string fault = TakeSlot(page.subspan(slot, 14));
      if (!fault.empty()) return Told(fault + " on page " + letter, slot);
    }
    return {};
  }
  [[nodiscard]] size_t seen() const { return seen_.size(); }
  std::vector<uint32_t> order;

 private:
  std::string TakeSlot(ByteView slot) {
    const std::string key = TextAt(slot, 0, 10);
    const uint32_t offset = LoadLe32(slot, 10);
    if (key.empty()) {
      ended_ = true;
      return offset == 0 ? "" : "offset without a key";
    }
    if (ended_ && sorted_) return "used slot behind an empty one";
    if (key[0] != letter_) return "key of another letter";
    if (sorted_ && !before_.empty() && CompareKey(before_, key, 10) > 0) return "keys not in order";
    before_ = key;
    if (offset % 768 != 0 || offset == 0 || offset > 768 * cards_.size())
      return "offset of no card";
    if (key != PlainKey(cards_[offset / 768 - 1], key_field_)) return "key of another card";
    if (!seen_.insert(offset).second) return "card filed twice";
    order.push_back(offset);
    return {};
  }

  const std::vector<CardRecord>& cards_;
  int key_field_;
  bool sorted_;
  char letter_ = 0;
  uint64_t pages_ = 0;
  bool ended_ = false;
  std::string before_;
  std::set<uint32_t> seen_;
};

}  // namespace

FamilyBytes ReadFamily(const MemoryFileSystem& files, std::string_view stem) {
  const std::string path(stem);
  return {files.Contents(path + ".DAN"), files.Contents(path + ".I01"),
          files.Contents(path + ".I02"), files.Contents(path + ".ADR")};
}

CardRecord Timeless(CardRecord card) {
  StoreLe32(card.bytes(), 764, 0);
  return card;
}

std::vector<CardRecord> CardsOf(ByteView main_file) {
  std::vector<CardRecord> cards;
  for (size_t at = 768; at + 768 <= main_file.size(); at += 768) {
    CardRecord& card = cards.emplace_back();
    std::ranges::copy(main_file.subspan(at, 768), card.bytes().begin());
    card = Timeless(card);
  }
  return cards;
}

std::string IndexFault(ByteView index, const std::vector<CardRecord>& cards, int key_field,
                       SlotOrder slot_order, std::vector<uint32_t>* order) {
  if (index.size() % 506 != 0) return Told("index not of whole pages", index.size());
  IndexReader reader(cards, key_field, slot_order);
  size_t chain = 0;
  for (size_t page = 0; page < index.size(); page += 506) {
    const char letter = static_cast<char>(index[page]);
    const bool follows = page > 0 && kLetters[chain - 1] == letter;
    if (!follows && (chain == kLetters.size() || kLetters[chain++] != letter)) {
      return Told("page letters", page);
    }
    const std::string fault = reader.TakePage(letter, index.subspan(page, 506));
    if (!fault.empty()) return fault;
  }
  if (chain != kLetters.size()) return Told("letters without a page", chain);
  if (reader.seen() != cards.size()) return Told("cards in the index", reader.seen());
  *order = reader.order;
  return {};
}

std::string AddressFault(ByteView address, const std::vector<CardRecord>& cards,
                         const std::vector<uint32_t>* order, bool flags) {
  if (address.size() != 320 + 16 * cards.size()) return Told("address file", address.size());
  if (LoadLe16(address, 96) != cards.size()) return Told("its count", LoadLe16(address, 96));
  std::set<uint32_t> seen;
  for (size_t row = 0; row < cards.size(); ++row) {
    const ByteView entry = address.subspan(320 + 16 * row, 16);
    const uint32_t offset = LoadLe32(entry, 0);
    if (offset % 768 != 0 || offset == 0 || offset > 768 * cards.size()) return Told("entry", row);
    if (!seen.insert(offset).second) return Told("entry of the same card", row);
    if (order != nullptr && (*order)[row] != offset) return Told("entry out of place", row);
    if ((LoadU8(entry, 4) & 1) == 0) return Told("entry without its first bit", row);
    const uint8_t expected = PlainFlags(cards[offset / 768 - 1]);
    if (flags && LoadU8(entry, 15) != expected) return Told("number flags", row);
  }
  return {};
}

std::string FamilyFault(const FamilyBytes& family, SlotOrder slot_order) {
  const std::vector<CardRecord> cards = CardsOf(family.main);
  std::vector<uint32_t> by_name;
  std::vector<uint32_t> by_company;
  std::string fault = IndexFault(family.index2, cards, kNom, slot_order, &by_name);
  if (!fault.empty()) return "second index: " + fault;
  fault = IndexFault(family.index1, cards, kSte1, slot_order, &by_company);
  if (!fault.empty()) return "first index: " + fault;
  return AddressFault(family.address, cards, &by_company, true);
}

}  // namespace carnetel
