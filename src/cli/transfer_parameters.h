// The options of a transfer put over the stored parameters of a file type. All answer false when
// the parameters that come out cannot be worked with (told).
#pragma once

#include "cli/transfer_setup.h"

namespace carnetel {

void ApplyDelimitedOptions(const TransferOptions& options, TransferProfile* profile);
[[nodiscard]] bool ApplyFixedOptions(CliSession& session, const TransferOptions& options,
                                     TransferDirection direction, TransferProfile* profile);
// Reads the table and writes the mapping that it is read with; the type follows the table.
[[nodiscard]] bool ApplyDbaseImport(CliSession& session, TransferSetup* setup);
// Writes the mapping that the table is written with.
void ApplyDbaseExport(TransferSetup* setup);

}  // namespace carnetel
