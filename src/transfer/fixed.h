// Files of fixed records ("Fichier continu"): behind an offset one record a card, all of the card
// size in the transfer profile. Each card field has a position and a size in the record; a size of
// 0 leaves it out. Free space in a written record is zero, not blank.
//
// The default layout is that of a main file of directories in an early shape, so that such a file
// can be read as one of fixed records.
#pragma once

#include "transfer/delimited.h"
#include "transfer/transfer.h"
#include "transfer/transfer_profile.h"

namespace carnetel {

// The card fields that can have a place in a record, in the order in which they are taken. A field
// that runs over into another is cut by that when the other comes behind it here.
inline constexpr auto& kFixedFields = kDelimitedFields;

// Adds a card for every whole record, empty ones too, unmarked, without any test for duplicates.
// Opens the destination itself and has closed it when it returns.
//
// Result -1, always silent: the source or the destination could not be opened, or the card size is
// not above 0. With such a size no record has an end: nothing is touched then. A card that could
// not be added or written has a message but, by design, result 0; cards added before that stay.
[[nodiscard]] TransferOutcome ImportFixed(const DirectoryServices& services,
                                          const TransferProfile& profile,
                                          const ImportRequest& request);

// Writes a record for every card marked in the displayed group of an open directory, in the order
// of the list. A new file, and one that is replaced, begins with zeros up to the offset of the
// first card.
//
// Result -1: no card is marked or the card size is not above 0 (silent, and nothing is touched),
// the destination could not be opened (silent), a card could not be read or the file not be
// written.
[[nodiscard]] TransferOutcome ExportFixed(Directory& source, const TransferProfile& profile,
                                          const ExportRequest& request);

}  // namespace carnetel
