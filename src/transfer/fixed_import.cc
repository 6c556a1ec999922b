#include <algorithm>

#include "base/code_page.h"
#include "transfer/fixed.h"
#include "transfer/fixed_record.h"
#include "transfer/import_run.h"
#include "transfer/record_reader.h"

namespace carnetel {

TransferOutcome ImportFixed(const DirectoryServices& services, const TransferProfile& profile,
                            const ImportRequest& request) {
  FixedRecord format(profile);
  if (format.size() == 0) return TransferOutcome::SilentFailure();
  const std::unique_ptr<File> source = services.files.Open(request.source, OpenMode::kRead);
  if (source == nullptr) return TransferOutcome::SilentFailure();
  const std::unique_ptr<Directory> directory = OpenDestination(services, request);
  if (directory == nullptr) return TransferOutcome::SilentFailure();
  RecordReader records(*source, format.first(), format.size());
  const auto total = static_cast<uint32_t>(std::min<uint64_t>(records.count(), UINT32_MAX));
  TransferOutcome outcome = ImportCards(*directory, total, [&](CardRecord& card) {
    const std::string_view record = records.Next();
    if (record.empty()) return false;
    format.Read(record, card);
    if (request.charset == CharacterSet::kAnsi) CharToOemBuff(card.bytes());
    return true;
  });
  directory->CloseDirectory();
  // Callers go on after a card that could not be added; the message tells it all the same.
  outcome.result = 0;
  return outcome;
}

}  // namespace carnetel
