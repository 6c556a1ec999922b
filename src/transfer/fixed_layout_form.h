// The rules of the form in which a user lays out the records of a file of fixed records: the offset
// of the first card, the card size, and for each line the position and size of its field. Inputs
// hold text as a user types it. What is confirmed becomes the last format of the parameter file;
// the places of fields that have no line stay.
//
// A size input takes two digits although stored sizes can have more: those stay until edited.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "base/messages.h"
#include "transfer/number_input.h"
#include "transfer/parameter_file.h"
#include "transfer/structure_lines.h"

namespace carnetel {

inline constexpr auto kFixedLayoutLines = [] {
  std::array<int, kStructureLines.size() + 1> lines{};
  *std::ranges::copy(kStructureLines, lines.begin()).out = kNotes;
  return lines;
}();

// The last two are there for each line.
enum class FixedInputKind { kFirstCard, kRecordSize, kPosition, kSize };

struct FixedInput {
  FixedInputKind kind;
  int line = kSte1;  // one of kFixedLayoutLines
  friend bool operator==(const FixedInput&, const FixedInput&) = default;
};

class FixedLayoutForm {
 public:
  FixedLayoutForm(ParameterFile& parameters, MessageForm& messages, TransferDirection direction);

  [[nodiscard]] TransferDirection direction() const { return direction_; }
  [[nodiscard]] std::string_view title() const { return StructureTitle(direction_); }
  // What the messages call a line; that of the references goes by the one it shows.
  [[nodiscard]] std::string_view label(int line) const { return StructureLabel(FieldOf(line)); }

  [[nodiscard]] const std::string& text(FixedInput input) const { return At(input).text(); }
  // The user changed an input to `text`; what it takes of that, text() tells. A size above the
  // stored card size is taken back.
  void Type(FixedInput input, std::string_view text);
  // The user leaves an input: an empty one becomes 0.
  void Leave(FixedInput input);

  // Which of the six references the one line shows, from 0.
  [[nodiscard]] int reference() const { return reference_; }
  void SelectReference(int reference) { reference_ = reference; }

  // Follows the last change of the card size or the size of the company: off while that is 0.
  [[nodiscard]] bool confirm_enabled() const { return confirm_enabled_; }

  // Stores and writes the layout. False, and the form stays, when the layout does not hold
  // together, which is told; a reference at fault is shown then.
  [[nodiscard]] bool Confirm();
  // Where the focus goes after a Confirm that failed; nothing when it stays.
  [[nodiscard]] std::optional<FixedInput> focus() const { return focus_; }

 private:
  // The card field behind a line, with the reference shown for that of the references.
  [[nodiscard]] int FieldOf(int line) const {
    return line == kReferenceLine ? kRef1 + reference_ : line;
  }
  [[nodiscard]] static size_t IndexOf(FixedInputKind kind, int field) {
    return static_cast<size_t>(kind) * kFieldCount + static_cast<size_t>(field);
  }
  [[nodiscard]] const NumberInput& At(FixedInput input) const {
    return inputs_[IndexOf(input.kind, FieldOf(input.line))];
  }
  NumberInput& At(FixedInput input) { return inputs_[IndexOf(input.kind, FieldOf(input.line))]; }
  [[nodiscard]] int16_t record_size() const { return At({FixedInputKind::kRecordSize}).value(); }
  // What the inputs of a card field read.
  [[nodiscard]] FixedPlace PlaceOf(int field) const {
    return {inputs_[IndexOf(FixedInputKind::kPosition, field)].value(),
            inputs_[IndexOf(FixedInputKind::kSize, field)].value()};
  }

  void Changed(FixedInput input);
  [[nodiscard]] bool EndsInRecord(int field) const;
  [[nodiscard]] bool ReferencesEndInRecord();
  [[nodiscard]] bool AllEndInRecord();
  [[nodiscard]] bool SumFits();
  [[nodiscard]] bool NoneOverlap();
  void TellOutside(int line);
  void Store();

  ParameterFile& parameters_;
  MessageForm& messages_;
  TransferDirection direction_;
  // By kind and card field; the two kinds that no line has are at the first field.
  std::array<NumberInput, size_t{4} * kFieldCount> inputs_;
  int reference_ = 0;
  bool confirm_enabled_ = true;
  std::optional<FixedInput> focus_;
};

}  // namespace carnetel
