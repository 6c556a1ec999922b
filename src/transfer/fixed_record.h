// One record of a file of fixed records and one card: from the one to the other and back. Places
// are numbers that a user typed or a damaged file holds: whatever lies outside the record is not
// read and not written.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "storage/card_record.h"
#include "transfer/fixed.h"

namespace carnetel {

// A profile made ready for the records of one run.
class FixedRecord {
 public:
  explicit FixedRecord(const TransferProfile& profile);

  // Of a record; 0 when the profile has none above.
  [[nodiscard]] size_t size() const { return size_; }
  // Where the first record lies.
  [[nodiscard]] uint64_t first() const { return first_; }

  // Takes the fields of a record into `card`, in the code page of their file; what no field of the
  // profile reaches stays. A place larger than the card field goes on into the fields behind it.
  void Read(std::string_view record, CardRecord& card);
  // Calls `visit(field, text)` for every field that has a size, with the text at its place.
  template <class Visit>
  void ForEachField(std::string_view record, Visit visit) const {
    for (const int field : kFixedFields) {
      if (PlaceOf(field).size > 0) visit(field, TextAt(record, PlaceOf(field)));
    }
  }

  // Appends the record of a card.
  void Append(const CardRecord& card, std::string& text) const;

 private:
  struct Output {
    std::string_view text;
    FixedPlace place;
  };
  // Up to a zero byte.
  [[nodiscard]] static std::string_view TextAt(std::string_view record, FixedPlace place);
  [[nodiscard]] const FixedPlace& PlaceOf(int field) const {
    return places_[static_cast<size_t>(field)];
  }
  [[nodiscard]] Output OutputOf(const CardRecord& card, int field) const;

  size_t size_;
  uint64_t first_;
  std::array<FixedPlace, kFieldCount> places_{};
  std::string work_;
};

}  // namespace carnetel
