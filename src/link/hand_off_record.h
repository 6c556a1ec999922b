// The record by which a card's number reaches a sibling program, in two forms; a file holds any
// number of them, one behind the other. Text is ANSI, zero padded, and ended by nothing where it
// fills its field in the card.
//
//   short  0    30  number, as the card has it
//          30   u32 offset of the card in the main file
//          34   6   zero
//          40   48  company
//          88   60  path of the main file
//          148  1   zero
//
//   long   0    30  number
//          30   u32 offset of the card
//          34   33  title and name as emission lists show them, at most 32 bytes
//          67   33  company
//          100  60  path of the main file
//          160  1   zero
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "storage/card_key.h"

namespace carnetel {

inline constexpr size_t kShortRecordSize = 149;
inline constexpr size_t kLongRecordSize = 161;

enum class RecordForm {
  kShort,
  kLong,        // number, label and company trimmed by TrimRight
  kLongAsItIs,  // nothing trimmed: what the main window hands on
};

// The path of a main file as records have it: in capitals, which receivers expect.
[[nodiscard]] AnsiText RecordPath(const std::string& main_file);
// The extraction of a selection leaves the letters as they are; receivers have to live with both.
[[nodiscard]] AnsiText RecordPathAsItIs(const std::string& main_file);

struct HandOffSource {
  const CardRecord& card;
  uint32_t card_offset = 0;
  int number_field = kFax;
  const AnsiText& path;  // cut at 60 bytes
};

// Nothing when the card counts as one without a number. In the trimmed form a number of one
// character does, and so does every number of a card whose company is empty once it is trimmed.
[[nodiscard]] std::optional<std::vector<std::byte>> MakeHandOffRecord(const HandOffSource& source,
                                                                      RecordForm form,
                                                                      const LabelStyles& styles);

}  // namespace carnetel
