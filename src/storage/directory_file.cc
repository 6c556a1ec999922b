#include "storage/directory_file.h"

namespace carnetel {
namespace {

constexpr size_t kStampDistance = MainHeader::kStampOffset - MainHeader::kCountOffset;
constexpr size_t kAppendBufferSize = 64 * 1024 / kCardSize * kCardSize;

// Whole cards in a file of `size` bytes, the header block left out.
uint32_t CardsIn(uint64_t size) {
  const uint64_t blocks = size / kCardSize;
  return blocks == 0 ? 0 : static_cast<uint32_t>(blocks - 1);
}

}  // namespace

bool DirectoryFile::Open(FileSystem& files, const std::string& path) {
  file_ = files.Open(path, OpenMode::kReadWrite);
  return file_ != nullptr && ReadHeader();
}

bool DirectoryFile::Create(FileSystem& files, const std::string& path, const MainHeader& image) {
  file_ = files.Open(path, OpenMode::kCreateOrOpen);
  if (file_ == nullptr) return false;
  header_ = image;
  InitFieldTable(false);
  return true;
}

void DirectoryFile::Close() {
  if (file_ != nullptr) EndBatch();
  file_.reset();
}

void DirectoryFile::InitFieldTable(bool keep_existing) {
  if (keep_existing) {
    CorrectFieldCount();
    return;
  }
  header_.BecomeEmpty();
  file_->Write(0, header_.Block().bytes());
  count_ = 0;
  stamp_on_disk_ = header_.stamp();
}

void DirectoryFile::CorrectFieldCount() {
  if (header_.field_count() == kFieldCount) return;
  header_.set_field_count(kFieldCount);
  // Not the whole image: its count may be corrected already, the one on the disk stays wrong until
  // the next add or delete.
  file_->Write(MainHeader::kFieldCountOffset,
               ByteView(header_.bytes()).subspan(MainHeader::kFieldCountOffset, 2));
  std::array<std::byte, kFieldTableSize> table;
  kFieldTable.Store(table);
  file_->Write(MainHeader::kFieldTableOffset, table);
}

bool DirectoryFile::ReadHeader() {
  header_ = MainHeader();
  if (file_->Size() > kLargestFile) return false;
  if (file_->Read(0, header_.bytes()) == 0) return false;
  stamp_on_disk_ = header_.stamp();
  count_ = CardsIn(file_->Size());
  header_.set_card_count(static_cast<uint16_t>(count_));
  return true;
}

bool DirectoryFile::WriteHeader() {
  stamp_on_disk_ = header_.stamp();
  return file_->Write(0, header_.bytes());
}

bool DirectoryFile::Describe(const OemText& description, std::optional<uint16_t> owner) {
  MainHeader on_disk;
  if (file_->Read(0, on_disk.bytes()) < MainHeader::kSize) return false;
  on_disk.set_description(description);
  if (owner) on_disk.set_owner(*owner);
  if (!file_->Write(0, on_disk.bytes())) return false;
  header_.set_description(description);
  if (owner) header_.set_owner(*owner);
  return true;
}

bool DirectoryFile::ReadCard(uint32_t offset, CardRecord& card) {
  return ReadCards(offset, std::span(&card, 1)) == 1;
}

size_t DirectoryFile::ReadCards(uint32_t offset, std::span<CardRecord> into) {
  static_assert(sizeof(CardRecord) == kCardSize);
  if (!HoldsCard(offset)) return 0;
  if (!appended_.empty()) FlushAppended();
  const size_t wanted = std::min<size_t>(into.size(), (end_offset() - offset) / kCardSize);
  return file_->Read(offset, std::as_writable_bytes(into.first(wanted))) / kCardSize;
}

bool DirectoryFile::WriteCard(uint32_t offset, const CardRecord& card) {
  changed_in_batch_ = true;
  unsynced_ = true;
  const uint32_t appended_end = appended_offset_ + static_cast<uint32_t>(appended_.size());
  const bool extends = in_batch_ && (appended_.empty() || offset == appended_end);
  if (!extends || offset < end_offset()) {
    if (!FlushAppended()) return false;
    return file_->Write(offset, card.bytes());
  }
  if (appended_.empty()) appended_offset_ = offset;
  appended_.insert(appended_.end(), card.bytes().begin(), card.bytes().end());
  return appended_.size() < kAppendBufferSize || FlushAppended();
}

bool DirectoryFile::FlushAppended() {
  if (appended_.empty()) return true;
  const bool written = file_->Write(appended_offset_, appended_);
  if (!written) count_ = std::min(count_, CardsIn(file_->Size()));
  appended_.clear();
  return written;
}

// The time has whole seconds only: two seats that change the file within one of them must not come
// to the same stamp, lest one takes the other's change for its own.
void DirectoryFile::TakeStamp() {
  if (in_batch_) return;
  const auto now = static_cast<uint32_t>(file_->ModificationTime());
  header_.set_stamp(shared_ ? std::max(now, stamp_on_disk_ + 1) : now);
}

void DirectoryFile::RenewStamp() {
  TakeStamp();
  WriteCountAndStamp();
}

uint32_t DirectoryFile::ReadStamp() {
  std::array<std::byte, MainHeader::kSize> bytes{};
  (void)file_->Read(0, bytes);
  return LoadLe32(bytes, MainHeader::kStampOffset);
}

bool DirectoryFile::IsAsKnown() {
  return ReadStamp() == stamp_on_disk_ && CardsIn(file_->Size()) == count_;
}

void DirectoryFile::Note(ChangeKind kind, uint32_t card_offset, uint32_t count) {
  if (!shared_) return;
  const bool adds = kind == ChangeKind::kAdd;
  // Added cards are counted by the size of the file: one note does for a row of them.
  if (in_batch_ && adds && noted_ == kind) return;
  // The change before must be on the disk before its note goes.
  if (in_batch_ && unsynced_) SyncCards();
  // A tail that a batch has not yet cut off would pass for what is put there.
  const bool extends = adds || kind == ChangeKind::kGuard;
  if (extends && !keeps_tail_ && file_->Size() > end_offset()) file_->Truncate(end_offset());
  WriteNote({kind, card_offset / static_cast<uint32_t>(kCardSize), count});
  // Adding harms nothing that is there; everything else has to be found by who comes later.
  if (!adds) SyncCards();
}

void DirectoryFile::WriteNote(const ChangeNote& note) {
  file_->Write(kChangeNoteOffset, StoreNote(note));
  noted_ = note.kind;
}

void DirectoryFile::ClearNote() {
  if (!noted_ || write_failed()) return;
  file_->Write(kChangeNoteOffset, ChangeNoteBytes{});
  noted_.reset();
}

std::optional<ChangeNote> DirectoryFile::NoteOnDisk() {
  ChangeNoteBytes bytes{};
  if (file_->Read(kChangeNoteOffset, bytes) != bytes.size()) return {};
  return ReadNote(bytes);
}

bool DirectoryFile::SyncCards() {
  unsynced_ = false;
  return file_->Sync();
}

// By number, from 1. Reads what lies behind the count too.
void DirectoryFile::CopyCard(uint32_t from, uint32_t to) {
  CardRecord card;
  if (from == to || file_->Read(kCardSize * from, card.bytes()) != kCardSize) return;
  file_->Write(kCardSize * to, card.bytes());
}

// Each of these may be cut short itself and is done again then.
void DirectoryFile::Settle(const ChangeNote& note) {
  noted_ = note.kind;
  const uint32_t cards = CardsIn(file_->Size());
  const bool has_copy = cards > note.count && note.card > 0 && note.card <= cards;
  uint32_t count = note.count;
  switch (note.kind) {
    case ChangeKind::kAdd:
      count = cards;
      break;
    case ChangeKind::kGuard:
      break;
    case ChangeKind::kDelete:
    case ChangeKind::kRewrite:
      if (has_copy) CopyCard(count + 1, note.card);
      break;
    case ChangeKind::kReplace:
    case ChangeKind::kReplaced:
      SettleReplacement(note);
      ++count;
      break;
  }
  count_ = std::min(count, CardsIn(file_->Size()));
  SyncCards();
  if (file_->Size() > end_offset()) file_->Truncate(end_offset());
  header_.set_card_count(static_cast<uint16_t>(count_));
}

// The last card goes into the place of the old one, then the copy into the place of the last. From
// there on the first step must not be done again, or the copy would go over the card just moved.
void DirectoryFile::SettleReplacement(const ChangeNote& note) {
  const uint32_t cards = CardsIn(file_->Size());
  if (cards <= note.count + 1) return;
  if (note.kind == ChangeKind::kReplace) {
    if (note.card > 0 && note.card <= cards) CopyCard(note.count + 1, note.card);
    SyncCards();
    WriteNote({ChangeKind::kReplaced, 0, note.count});
    SyncCards();
  }
  CopyCard(note.count + 2, note.count + 1);
}

void DirectoryFile::SetCount(uint32_t count) {
  count_ = count;
  changed_in_batch_ = true;
  header_.set_card_count(static_cast<uint16_t>(count));
  if (!in_batch_) WriteCountAndStamp();
}

// The header tells where count and stamp lie, but never outside itself: behind it are cards.
size_t DirectoryFile::CountPosition() const {
  const size_t told = header_.count_position();
  const size_t last = kCardSize - kStampDistance - sizeof(uint32_t);
  return told <= last ? told : MainHeader::kCountOffset;
}

void DirectoryFile::WriteCountAndStamp() {
  const size_t count_at = CountPosition();
  std::array<std::byte, 4> value;
  StoreLe16(value, 0, header_.card_count());
  file_->Write(count_at, std::span(value).first(2));
  StoreLe32(value, 0, header_.stamp());
  file_->Write(count_at + kStampDistance, value);
  stamp_on_disk_ = header_.stamp();
}

void DirectoryFile::Finish() {
  if (in_batch_) return;
  // The cut must not reach the disk before the card that was moved from behind it.
  if (!SyncCards() || keeps_tail_) return;
  if (file_->Size() > end_offset()) file_->Truncate(end_offset());
}

void DirectoryFile::BeginBatch() {
  in_batch_ = true;
  changed_in_batch_ = false;
}

void DirectoryFile::EndBatch() {
  if (!in_batch_) return;
  FlushAppended();
  in_batch_ = false;
  if (!changed_in_batch_) return;
  TakeStamp();
  SetCount(count_);
  Finish();
}

DirectoryFile::GuardCopy::GuardCopy(DirectoryFile& file, const CardRecord& card)
    : file_(file), written_(file.WriteCard(file.end_offset(), card) && file.SyncCards()) {
  file_.keeps_tail_ = written_;
}

DirectoryFile::GuardCopy::~GuardCopy() {
  file_.keeps_tail_ = false;
  if (!kept_) file_.Finish();
}

void DirectoryFile::SetModificationTime(int64_t seconds) {
  file_->SetModificationTime(seconds);
}

std::optional<MainHeader> ReadMainHeader(FileSystem& files, const std::string& path) {
  const std::unique_ptr<File> file = files.Open(path, OpenMode::kRead);
  if (file == nullptr) return {};
  MainHeader header;
  (void)file->Read(0, header.bytes());
  return header;
}

}  // namespace carnetel
