// Text files of separated fields: one line a card, the place of each field in the line given by a
// rank from 1 on in the transfer profile. A line ends with the card separator; text behind the last
// one is no line. With a field separator of two bytes that begins with a double quote, fields are
// quoted.
//
// A run takes the first 10000 lines of a source, and no line that is longer than 32767 bytes.
#pragma once

#include <algorithm>
#include <array>

#include "storage/directory.h"
#include "transfer/transfer.h"
#include "transfer/transfer_profile.h"

namespace carnetel {

// The card fields that can have a place in a line. Fields that share a rank are taken in this
// order; ranks of other fields only count for the highest rank of an exported line.
inline constexpr std::array<int, 23> kDelimitedFields = {
    kSte1,     kSte2, kAdr1,    kAdr2,   kPostalCode, kVille,       kPays,     kTel1,
    kTel2,     kFax,  kModem,   kMtel,   kRef1,       kRef1 + 1,    kRef1 + 2, kRef1 + 3,
    kRef1 + 4, kRef6, kQualite, kPrenom, kNom,        kSparePerson, kNotes};

[[nodiscard]] constexpr bool IsDelimitedField(int field) {
  return std::ranges::find(kDelimitedFields, field) != kDelimitedFields.end();
}

inline constexpr uint32_t kMaxImportedLines = 10000;
inline constexpr size_t kMaxLineSize = 32767;

// Adds a card for every line of the source, unmarked, without any test for duplicates. Opens the
// destination itself and has closed it when it returns. Result -1: the source or the destination
// could not be opened, the source is empty, or a card could not be added or written; cards added
// before that stay.
[[nodiscard]] TransferOutcome ImportDelimited(const DirectoryServices& services,
                                              const TransferProfile& profile,
                                              const ImportRequest& request);

// Writes a line for every card marked in the displayed group of an open directory, in the order of
// the list. Result -1: no card is marked (silent, and nothing is touched), a card could not be read
// or the file not be written.
[[nodiscard]] TransferOutcome ExportDelimited(Directory& source, const TransferProfile& profile,
                                              const ExportRequest& request);

}  // namespace carnetel
