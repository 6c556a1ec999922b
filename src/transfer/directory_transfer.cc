#include "transfer/directory_transfer.h"

#include <algorithm>

#include "base/path.h"
#include "transfer/export_run.h"
#include "transfer/import_run.h"
#include "transfer/record_reader.h"

namespace carnetel {
namespace {

constexpr int kWriteError = 94;
constexpr int kReadError = 95;

// The number that the progress box counts to; it can be one too many.
uint32_t ShownCount(uint64_t file_size) {
  constexpr uint64_t kTakenForHeader = 128;
  return static_cast<uint32_t>((std::max(file_size, kTakenForHeader) - kTakenForHeader) /
                               kCardSize);
}

void RemoveIfThere(FileSystem& files, const std::string& path) {
  if (files.Exists(path)) files.Remove(path);
}

// A destination that cards may go behind: none yet, or one of the current layout.
bool TakesCards(FileSystem& files, const std::string& main) {
  if (!files.Exists(main)) return true;
  const std::optional<MainHeader> header = ReadMainHeader(files, main);
  return header && header->Version().value_or("") >= kMainVersion;
}

// The seat's folder for the files of the destination. A directory that has the name of the open one
// shares the seat's files with it: they are the open one's then.
std::string SeatFolderOf(const Directory& source, const std::string& destination) {
  const std::string& folder = source.paths().shared_dir();
  const FamilyPaths paths(source.files(), destination, folder);
  return paths.Of(".ADR") == source.paths().Of(".ADR") ? std::string() : folder;
}

// Deletes what must not outlive the change: all with `replace`, otherwise what the next opening
// makes anew. The second index stays by design; behind a main file that goes it would name cards
// that are not there. False when a main file that is to be replaced is still there.
bool DeleteStale(FileSystem& files, const FamilyPaths& paths, const std::string& seat_folder,
                 bool replace) {
  if (replace && !DeleteDirectoryFiles(files, paths.Main(), seat_folder)) return false;
  RemoveIfThere(files, paths.Of(".ADR"));
  RemoveIfThere(files, paths.BesideMain(".ADR"));
  RemoveIfThere(files, paths.BesideMain(".I01"));
  if (!files.Exists(paths.Main())) RemoveIfThere(files, paths.BesideMain(".I02"));
  return true;
}

// The header of the destination, made and written when the file is new.
bool TakeHeader(File& file, bool is_new, MainHeader* header) {
  if (!is_new) return file.Read(0, header->bytes()) == MainHeader::kSize;
  *header = MainHeader::Template();
  header->BecomeEmpty();
  return file.Write(0, header->Block().bytes());
}

// Behind the last whole card: one that was cut short never counts.
ExportTarget TargetIn(File& file, const std::string& path) {
  const uint64_t blocks = std::max<uint64_t>(file.Size() / kCardSize, 1);
  const uint64_t cards = std::min<uint64_t>(blocks - 1, kMaxCards);
  return {file, path, blocks * kCardSize, kMaxCards - static_cast<uint32_t>(cards)};
}

TransferOutcome AppendMarkedCards(Directory& source, File& file, const std::string& path,
                                  MainHeader& header) {
  if (source.marked_count() <= 0) return TransferOutcome::SilentFailure();
  TransferOutcome outcome = ExportMarkedCards(
      source, TargetIn(file, path),
      [](const CardRecord& card, std::string& to) { to += AsChars(card.bytes()); });
  // The cards of this run and not all: the next opening counts, and nothing reads it before.
  header.set_card_count(static_cast<uint16_t>(outcome.cards));
  if (!file.Write(0, header.bytes()) && outcome.result == 0) {
    TellFailedExport(kWriteError, path, &outcome);
  }
  return outcome;
}

}  // namespace

TransferOutcome ImportDirectory(const DirectoryServices& services, const ImportRequest& request) {
  FileSystem& files = services.files;
  const std::string path = FamilyPaths(files, request.source).Main();
  const std::unique_ptr<File> source = files.Open(path, OpenMode::kRead);
  if (source == nullptr) return FailedImport(kReadError, path);
  const std::unique_ptr<Directory> directory = OpenDestination(services, request);
  if (directory == nullptr) {
    return FailedImport(kReadError, FamilyPaths(files, request.destination.path).Main());
  }
  RecordReader cards(*source, kCardSize, kCardSize);
  TransferOutcome outcome =
      ImportCards(*directory, ShownCount(source->Size()), [&cards](CardRecord& card) {
        const std::string_view record = cards.Next();
        std::ranges::copy(AsBytes(record), card.bytes().begin());
        return !record.empty();
      });
  directory->CloseDirectory();
  // Callers go on after a card that could not be added; the message tells it all the same.
  outcome.result = 0;
  return outcome;
}

TransferOutcome ExportDirectory(Directory& source, const ExportRequest& request) {
  FileSystem& files = source.files();
  const std::string wanted = PathMerge(request.destination, ".DAN");
  const std::string seat_folder = SeatFolderOf(source, wanted);
  const FamilyPaths paths(files, wanted, seat_folder);
  const std::string main = paths.Main();
  if (!request.replace && !TakesCards(files, main)) return FailedExport(kReadError, main);
  if (!DeleteStale(files, paths, seat_folder, request.replace)) {
    return FailedExport(kReadError, main);
  }
  const bool is_new = !files.Exists(main);
  const std::unique_ptr<File> file = files.Open(main, OpenMode::kCreateOrOpen);
  if (file == nullptr) return FailedExport(kReadError, main);
  MainHeader header;
  if (!TakeHeader(*file, is_new, &header)) {
    // Without its header it is no directory, and in the way of the next attempt.
    if (is_new) files.Remove(main);
    return FailedExport(is_new ? kWriteError : kReadError, main);
  }
  return AppendMarkedCards(source, *file, main, header);
}

}  // namespace carnetel
