// The main file of a directory (`.DAN`): a header block and the cards behind it, dense, card n at
// 768 x n. It is the truth of the family; everything else can be made from it. Sizes are taken in
// whole cards: a partial card at the end never counts and is written over.
//
// Nothing that was there may be lost, so the count that the program works with is this object's
// own: the file may be longer than it tells while an operation runs (a moved card is on the disk
// before the place it came from is cut off). In a batch, appended cards gather in a buffer of 64 KB
// and header, sync and cut come once, at its end.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/file_system.h"
#include "storage/change_note.h"
#include "storage/main_header.h"

namespace carnetel {

class DirectoryFile {
 public:
  // Cards are named by offsets of 32 bits: a larger file is not opened, lest an offset names
  // another card than is meant.
  static constexpr uint64_t kLargestFile = UINT32_MAX;

  // Opens an existing file and takes its header and count; false when it cannot be opened.
  bool Open(FileSystem& files, const std::string& path);
  // Makes a new empty file from the header image given; false when that fails.
  bool Create(FileSystem& files, const std::string& path, const MainHeader& image);
  void Close();
  [[nodiscard]] bool is_open() const { return file_ != nullptr; }

  MainHeader& header() { return header_; }
  [[nodiscard]] const MainHeader& header() const { return header_; }
  // The stamp that the file on disk holds; the image's own may be newer after a rewrite.
  [[nodiscard]] uint32_t stamp_on_disk() const { return stamp_on_disk_; }

  // Sets the field count of a header that has another one, on disk too, and with `keep_existing`
  // false turns the file into an empty directory of the current version.
  void InitFieldTable(bool keep_existing);

  // With several seats every change is noted in the file while it is under way, and no two changes
  // have one stamp.
  void set_shared(bool shared) { shared_ = shared; }
  // Notes a change of the card at `card_offset` (0 for none), after which the file has `count`
  // cards behind its changed part. Nothing without seats.
  void Note(ChangeKind kind, uint32_t card_offset, uint32_t count);
  // The change is whole: the note goes. A change that could not be written keeps its note.
  void ClearNote();
  // What a seat has left behind that died in a change.
  [[nodiscard]] std::optional<ChangeNote> NoteOnDisk();
  // Ends or takes back such a change; the note stays. The indexes are to be made anew.
  void Settle(const ChangeNote& note);
  // Whether the file has the stamp and the size that this object knows.
  [[nodiscard]] bool IsAsKnown();
  // The stamp in the file now.
  [[nodiscard]] uint32_t ReadStamp();
  // Gives the file a new stamp, so that other seats read everything again.
  void RenewStamp();

  // Reads the 108 bytes again and corrects the count in the image from the size.
  bool ReadHeader();
  // Writes the 108-byte image.
  bool WriteHeader();
  // Sets the description, and the owner seat when one is given, in the header as the file has it:
  // nothing else of it changes. False when it could not be read or written.
  bool Describe(const OemText& description, std::optional<uint16_t> owner);

  [[nodiscard]] uint32_t count() const { return count_; }
  [[nodiscard]] uint32_t end_offset() const {
    return static_cast<uint32_t>(kCardSize * (count_ + 1));
  }
  // True for an offset at which a whole card lies.
  [[nodiscard]] bool HoldsCard(uint32_t offset) const {
    return offset >= kCardSize && offset % kCardSize == 0 && offset < end_offset();
  }

  // False when no whole card could be read there.
  bool ReadCard(uint32_t offset, CardRecord& card);
  // Cards of a block of consecutive offsets, for passes over the whole file: as many whole cards as
  // could be read, at most `into.size()`.
  size_t ReadCards(uint32_t offset, std::span<CardRecord> into);
  bool WriteCard(uint32_t offset, const CardRecord& card);

  // Takes the file's modification time into the stamp of the image.
  void TakeStamp();
  // Makes the count of cards `count` and puts count and stamp into the file.
  void SetCount(uint32_t count);
  // Puts the data on the disk, then cuts the file behind its last card. Nothing in a batch.
  void Finish();

  void BeginBatch();
  // Writes what the batch gathered, with a new stamp; nothing when it changed nothing, lest other
  // seats take it for a change.
  void EndBatch();

  // True while such a copy stands behind the last card.
  [[nodiscard]] bool has_guard() const { return keeps_tail_; }
  // A copy of a card on the disk behind the last one, outside the count, as long as the object
  // lives: a change that is cut short half-way leaves it there, and the next opening counts it.
  class GuardCopy {
   public:
    GuardCopy(DirectoryFile& file, const CardRecord& card);
    ~GuardCopy();
    GuardCopy(const GuardCopy&) = delete;
    GuardCopy& operator=(const GuardCopy&) = delete;
    [[nodiscard]] bool written() const { return written_; }
    // Leaves the copy in the file for the next opening to find.
    void Keep() { kept_ = true; }

   private:
    DirectoryFile& file_;
    bool written_;
    bool kept_ = false;
  };

  [[nodiscard]] bool write_failed() const { return file_ != nullptr && file_->write_failed(); }
  void SetModificationTime(int64_t seconds);

 private:
  void CorrectFieldCount();
  [[nodiscard]] size_t CountPosition() const;
  void WriteNote(const ChangeNote& note);
  void SettleReplacement(const ChangeNote& note);
  void CopyCard(uint32_t from, uint32_t to);
  bool SyncCards();
  bool FlushAppended();
  void WriteCountAndStamp();

  std::unique_ptr<File> file_;
  MainHeader header_;
  uint32_t count_ = 0;
  uint32_t stamp_on_disk_ = 0;
  bool in_batch_ = false;
  bool changed_in_batch_ = false;
  bool keeps_tail_ = false;
  bool shared_ = false;
  // What the note in the file is about, as long as it stands there.
  std::optional<ChangeKind> noted_;
  // Cards were written since the last Sync.
  bool unsynced_ = false;
  // Cards appended in a batch and not yet in the file, and where they go.
  std::vector<std::byte> appended_;
  uint32_t appended_offset_ = 0;
};

// The first 108 bytes of a main file that nobody has opened; zeros for what it is too short for.
// Nothing when it cannot be opened.
[[nodiscard]] std::optional<MainHeader> ReadMainHeader(FileSystem& files, const std::string& path);

}  // namespace carnetel
