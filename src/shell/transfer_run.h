// The run of a transfer, whoever asked for it: which engine reads or writes a foreign file of a
// type, with the profile or the dBase mapping that the parameter file holds for it.
#pragma once

#include "transfer/parameter_file.h"
#include "transfer/transfer.h"

namespace carnetel {

// The destination is not open: the engine opens and closes it.
[[nodiscard]] TransferOutcome ImportFile(const DirectoryServices& services,
                                         ParameterFile& parameters, TransferFileType type,
                                         const ImportRequest& request);

// Takes the cards marked in the displayed group of an open directory.
[[nodiscard]] TransferOutcome ExportFile(Directory& source, ParameterFile& parameters,
                                         TransferFileType type, const ExportRequest& request);

}  // namespace carnetel
