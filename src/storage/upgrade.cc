#include "storage/upgrade.h"

#include "base/path.h"

namespace carnetel {
namespace {

constexpr const char* kTemporaryName = "CARNDAN.TMP";
constexpr size_t kBufferSize = 64 * 1024;

// A bounded copy: the text up to its zero byte, zeros behind it for the rest of `size`. The new
// field may be smaller than `size`: what spills over is overwritten by the fields that follow, as
// far as they reach. Old notes of more than 64 characters leave bytes behind that way; no warning.
void CopyOldField(const CardRecord& old, size_t old_offset, CardRecord& card, size_t offset,
                  size_t size) {
  const std::string text = CopyFieldText(ByteView(old.bytes()).subspan(old_offset, size), size);
  StorePadded(card.bytes(), offset, size, text);
}

void StartLongPostalCode(CardRecord& card) {
  const ByteView code = std::as_const(card).FieldBytes(kShortPostalCode);
  std::ranges::copy(code, card.bytes().begin() + kFieldTable[kPostalCode].offset);
}

// Old cards kept a surname in the title field.
void MoveNameFromTitle(CardRecord& card) {
  const OemText name = card.FieldText(kNom);
  const bool has_name = !name.bytes().empty() && name.bytes().front() != ' ';
  if (card.FieldEmpty(kQualite) || has_name) return;
  card.SetField(kNom, card.FieldText(kQualite));
  card.SetField(kQualite, {});
}

// The new file: a header block with the old banner, owner and stamp, then the cards.
bool WriteUpgraded(File& old, File& file) {
  MainHeader header;
  (void)old.Read(0, header.bytes());
  header.BecomeEmpty();
  // A banner that goes on behind its version would have the cards converted again at each opening.
  if (header.Version() != kMainVersion) return false;
  const uint64_t size = old.Size();
  // A last card that was cut short comes along, with zeros for what is missing.
  const uint64_t count = size == 0 ? 0 : (size - 1) / kCardSize;
  header.set_card_count(static_cast<uint16_t>(count));
  std::vector<std::byte> buffer;
  const auto append = [&buffer](const CardRecord& card) {
    buffer.insert(buffer.end(), card.bytes().begin(), card.bytes().end());
  };
  append(header.Block());
  uint64_t written = 0;
  for (uint64_t n = 1; n <= count; ++n) {
    CardRecord card;
    const uint64_t there = std::min<uint64_t>(kCardSize, size - kCardSize * n);
    // The old file goes: a card that the disk does not give must not become an empty one.
    if (old.Read(kCardSize * n, card.bytes()) < there) return false;
    append(UpgradeCard(card));
    if (buffer.size() < kBufferSize) continue;
    if (!file.Write(written, buffer)) return false;
    written += buffer.size();
    buffer.clear();
  }
  return file.Write(written, buffer) && file.Sync();
}

}  // namespace

CardRecord UpgradeCard(const CardRecord& old) {
  CardRecord card;
  size_t old_offset = 0;
  for (int field = 0; field < kFieldCount; ++field) {
    const size_t size = kOldFieldSizes[static_cast<size_t>(field)];
    CopyOldField(old, old_offset, card, kFieldTable[field].offset, size);
    old_offset += size;
  }
  StartLongPostalCode(card);
  MoveNameFromTitle(card);
  return card;
}

bool UpgradeMainFile(FileSystem& files, const std::string& path) {
  const std::string temporary = PathMerge(path, kTemporaryName);
  {
    const std::unique_ptr<File> old = files.Open(path, OpenMode::kRead);
    if (old == nullptr) return false;
    const std::unique_ptr<File> file = files.Open(temporary, OpenMode::kCreateOrEmpty);
    if (file == nullptr) return false;
    if (!WriteUpgraded(*old, *file)) {
      files.Remove(temporary);
      return false;
    }
  }
  if (files.Rename(temporary, path)) return true;
  files.Remove(temporary);
  return false;
}

namespace {

// One seat alone: cards that were converted already would be spoilt by a second time.
bool UpgradeOnce(Directory& directory) {
  const ChangeScope change(directory);
  if (!change) return false;
  const std::string path = directory.paths().Main();
  const std::optional<MainHeader> header = ReadMainHeader(directory.files(), path);
  const bool is_done = directory.is_shared() && header && header->Version() >= kMainVersion;
  return is_done || UpgradeMainFile(directory.files(), path);
}

}  // namespace

OpenResult OpenUpgrading(Directory& directory, bool* upgraded) {
  OpenResult result = directory.OpenDirectory();
  const bool older = result == OpenResult::kOlderVersion;
  if (upgraded != nullptr) *upgraded = older;
  if (!older) return result;
  if (!UpgradeOnce(directory)) return OpenResult::kNoStore;
  return directory.OpenDirectory();
}

}  // namespace carnetel
