// From directory to directory: the foreign side of the transfer is a directory itself. Cards keep
// their bytes, no code page is converted. An export makes a sub-file of the selection.
#pragma once

#include "transfer/transfer.h"

namespace carnetel {

// Adds all cards of the directory `request.source`, whose derived files are not looked at,
// unmarked, without any test for duplicates. Opens the destination itself and has closed it when
// it returns.
//
// Result -1, with a message: the source or the destination could not be opened. A card that could
// not be added or written has a message but, by design, result 0; cards added before that stay.
[[nodiscard]] TransferOutcome ImportDirectory(const DirectoryServices& services,
                                              const ImportRequest& request);

// Puts the cards marked in the displayed group of an open directory behind those of the directory
// `request.destination`, whose extension becomes ".DAN" whatever it is. Only its main file is
// written. Its `.ADR` and `.I01` are deleted, so that the next opening makes them anew, and its
// header counts the cards of this run alone until an opening counts them all; its `.I02` stays and
// lacks the new cards until an opening finds out. A directory that holds all the cards it can takes
// no more.
//
// Result -1: no card is marked (silent, and the destination is as above, but without new cards),
// the destination could not be opened or is no directory of the current version (nothing is
// touched then), a card could not be read, written or found no room.
[[nodiscard]] TransferOutcome ExportDirectory(Directory& source, const ExportRequest& request);

}  // namespace carnetel
