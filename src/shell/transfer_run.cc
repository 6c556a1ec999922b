#include "shell/transfer_run.h"

#include "transfer/dbase.h"
#include "transfer/delimited.h"
#include "transfer/directory_transfer.h"
#include "transfer/fixed.h"

namespace carnetel {

TransferOutcome ImportFile(const DirectoryServices& services, ParameterFile& parameters,
                           TransferFileType type, const ImportRequest& request) {
  switch (type) {
    case TransferFileType::kDelimited:
      return ImportDelimited(services, parameters.profile(), request);
    case TransferFileType::kFixed:
      return ImportFixed(services, parameters.profile(), request);
    case TransferFileType::kDirectory:
      return ImportDirectory(services, request);
    case TransferFileType::kDbase3:
    case TransferFileType::kDbase4:
      break;
  }
  const auto direction = TransferDirection::kImport;
  return ImportDbase(services, ReadStoredMapping(parameters, type, direction), request);
}

TransferOutcome ExportFile(Directory& source, ParameterFile& parameters, TransferFileType type,
                           const ExportRequest& request) {
  switch (type) {
    case TransferFileType::kDelimited:
      return ExportDelimited(source, parameters.profile(), request);
    case TransferFileType::kFixed:
      return ExportFixed(source, parameters.profile(), request);
    case TransferFileType::kDirectory:
      return ExportDirectory(source, request);
    case TransferFileType::kDbase3:
    case TransferFileType::kDbase4:
      break;
  }
  const auto direction = TransferDirection::kExport;
  return ExportDbase(source, ReadStoredMapping(parameters, type, direction), type, request);
}

}  // namespace carnetel
