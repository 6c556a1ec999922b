// The lines of the two forms in which a user lays out a foreign file: one a card field, but for the
// six references, which share one line behind a list, and the fields that have no line at all.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "storage/card_record.h"
#include "transfer/transfer.h"

namespace carnetel {

// The one line of the references goes by the number of the first of them.
inline constexpr int kReferenceLine = kRef1;
inline constexpr int kStructureReferences = kRef6 - kRef1 + 1;

// In the order of the forms, which is that of the fields in a transfer. Notes follow in the form
// that has them.
inline constexpr std::array<int, 16> kStructureLines = {
    kSte1, kSte2, kAdr1,  kAdr2, kPostalCode,    kVille,   kPays,   kTel1,
    kTel2, kFax,  kModem, kMtel, kReferenceLine, kQualite, kPrenom, kNom};

// Calls `visit(field)` for every card field behind such lines, each reference by itself.
template <class Lines, class Visit>
void ForEachFieldOf(const Lines& lines, Visit visit) {
  for (const int line : lines) {
    const int fields = line == kReferenceLine ? kStructureReferences : 1;
    for (int field = line; field < line + fields; ++field) visit(field);
  }
}

// What stands in front of the inputs of a card field (UTF-8), as messages name it; empty for a
// field that no line is for.
[[nodiscard]] std::string_view StructureLabel(int field);

// Title of both forms.
[[nodiscard]] std::string_view StructureTitle(TransferDirection direction);

}  // namespace carnetel
