#include "transfer/fixed_record.h"

#include <algorithm>

#include "transfer/field_text.h"

namespace carnetel {
namespace {

size_t NotBelowZero(int16_t value) {
  return value < 0 ? 0 : static_cast<size_t>(value);
}

// The bytes of a record at a place, as far as there are any.
std::string_view Cut(std::string_view record, FixedPlace place) {
  if (place.position < 0 || NotBelowZero(place.position) >= record.size()) return {};
  return record.substr(NotBelowZero(place.position), NotBelowZero(place.size));
}

// The text of a field, cut at what its place holds.
std::string_view TextOf(const CardRecord& card, int field, FixedPlace place) {
  const std::string_view area = AsChars(card.FieldBytes(field));
  return area.substr(0, area.find('\0')).substr(0, NotBelowZero(place.size));
}

}  // namespace

FixedRecord::FixedRecord(const TransferProfile& profile)
    : size_(NotBelowZero(profile.card_size())), first_(NotBelowZero(profile.first_card_offset())) {
  for (int field = 0; field < kFieldCount; ++field) {
    places_[static_cast<size_t>(field)] = profile.place(field);
  }
}

std::string_view FixedRecord::TextAt(std::string_view record, FixedPlace place) {
  const std::string_view bytes = Cut(record, place);
  return bytes.substr(0, bytes.find('\0'));
}

void FixedRecord::Read(std::string_view record, CardRecord& card) {
  ForEachField(record, [&](int field, std::string_view text) {
    work_.assign(text);
    CleanFieldText(work_, field);
    // The size of the place counts, not that of the card field: what runs over goes on into the
    // fields behind it. Layouts in use rely on it.
    const size_t offset = kFieldTable[field].offset;
    const size_t size = std::min(NotBelowZero(PlaceOf(field).size), kCardSize - offset);
    StorePadded(card.bytes(), offset, size, work_);
  });
}

FixedRecord::Output FixedRecord::OutputOf(const CardRecord& card, int field) const {
  Output output{TextOf(card, field, PlaceOf(field)), PlaceOf(field)};
  if (field == kPostalCode && output.text.empty()) {
    // The short postal code that cards had in earlier days. It has a place of its own in layouts
    // of that time, which have none for the long one.
    const FixedPlace short_place = PlaceOf(kShortPostalCode);
    output.text = TextOf(card, kShortPostalCode, short_place);
    if (output.place == FixedPlace{}) output.place = short_place;
  }
  return output;
}

void FixedRecord::Append(const CardRecord& card, std::string& text) const {
  const size_t start = text.size();
  text.append(size_, '\0');
  for (const int field : kFixedFields) {
    const Output output = OutputOf(card, field);
    const size_t room = Cut(std::string_view(text).substr(start), output.place).size();
    const std::string_view cut = output.text.substr(0, room);
    if (cut.empty()) continue;
    text.replace(start + NotBelowZero(output.place.position), cut.size(), cut);
  }
}

}  // namespace carnetel
