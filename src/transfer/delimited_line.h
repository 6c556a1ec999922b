// One line of a delimited text file and one card: from the one to the other and back.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "storage/card_record.h"
#include "transfer/delimited.h"

namespace carnetel {

// A profile made ready for the lines of one run.
class DelimitedLine {
 public:
  explicit DelimitedLine(const TransferProfile& profile);

  [[nodiscard]] const std::string& card_separator() const { return card_separator_; }

  // Takes the fields of a line, which ends in the card separator, into `card`. True when the line
  // had a field, be it empty, whose rank a card field has. The text stays in the code page of its
  // file.
  bool Read(std::string_view line, CardRecord& card);
  // Calls `visit(field, text)` for every card field that a field of the line goes into, with the
  // text as it stands in the line. The answer of Read.
  template <class Visit>
  bool ForEachField(std::string_view line, Visit visit) const {
    bool any = false;
    size_t position = 0;
    std::string_view text;
    for (int rank = 1; TakeField(line, &position, &text); ++rank) {
      for (size_t i = 0; i < ranks_.size(); ++i) {
        if (ranks_[i] != rank) continue;
        visit(kDelimitedFields[i], text);
        any = true;
      }
    }
    return any;
  }

  // Appends the line of a card.
  void Append(const CardRecord& card, std::string& text) const;

 private:
  // Takes the field at `*position` and moves that behind it; false at the end of the line.
  bool TakeField(std::string_view line, size_t* position, std::string_view* field) const;
  void Store(std::string_view text, int field, CardRecord& card);
  void AppendField(const CardRecord& card, int field, bool last, std::string& text) const;
  void AppendEmptyField(std::string& text) const;

  std::string field_separator_;
  std::string card_separator_;
  bool quoted_;
  std::array<int16_t, kDelimitedFields.size()> ranks_{};  // in the order of kDelimitedFields
  int16_t highest_rank_ = 1;
  std::string work_;
};

}  // namespace carnetel
