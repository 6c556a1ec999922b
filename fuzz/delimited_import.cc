// Imports the input as a delimited text, with separators taken from its first bytes. No line may
// make more than one card, and what was imported can be exported again.
#include <cstdint>
#include <cstdlib>
#include <string>
#include <vector>

#include "platform/memory_file_system.h"
#include "selection/marks.h"
#include "transfer/delimited.h"

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
  using namespace carnetel;
  if (size < 3) return 0;
  FakeClock clock(1000000000);
  MemoryFileSystem files(clock);
  SilentProgress progress;
  constexpr const char* kSeparators[] = {";", "LF", "CRLF", "22h 2Ch", "NUL", "", "A B", "300"};
  TransferProfile profile = TransferProfile::OfNewInstallation();
  profile.set_field_separator(kSeparators[data[0] % 8]);
  profile.set_card_separator(kSeparators[data[1] % 8]);
  std::vector<std::byte> text;
  // Few different bytes, so that separators are met.
  for (size_t i = 3; i < size; ++i)
    text.push_back(std::byte{static_cast<uint8_t>(";\"\n\r,AB\0"[data[i] % 8])});
  files.SetContents("/in.txt", text);
  ImportRequest request;
  request.source = "/in.txt";
  request.destination.path = "/IN";
  request.charset = data[2] % 2 == 0 ? CharacterSet::kOem : CharacterSet::kAnsi;
  const TransferOutcome imported = ImportDelimited({files, clock, progress}, profile, request);
  if (imported.cards > text.size()) std::abort();
  Directory directory({files, clock, progress}, request.destination);
  if (directory.OpenDirectory() != OpenResult::kOpened && !text.empty()) std::abort();
  if (directory.main().count() != imported.cards) std::abort();
  SetAllMarks(directory, true);
  directory.CloseListView();
  ExportRequest out;
  out.destination = "/out.txt";
  (void)ExportDelimited(directory, profile, out);
  return 0;
}
