// Several seats on one directory in one process: each a Directory with a folder of its own, all on
// the same files. Nobody waits for a lock here: what is held is refused at once.
#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "storage/address_reorder.h"
#include "tests/storage/family_check.h"

namespace carnetel {

inline constexpr std::string_view kSharedStem = "/reseau/ESSAI";
using Names = std::vector<std::string>;
using Seat = std::unique_ptr<Directory>;

// ---- what a user of a seat does; cards are named by their company ----

inline uint32_t OffsetOf(Directory& seat, std::string_view company) {
  CardRecord card;
  for (uint32_t offset = 768; seat.main().ReadCard(offset, card); offset += 768) {
    if (card.FieldText(kSte1).bytes() == company) return offset;
  }
  return 0;
}

inline bool AddTo(Directory& seat, const CardRecord& card, bool marked = false) {
  seat.context().current = card;
  uint32_t position = 0;
  return CardDispatch(seat).Add(marked, &position) == 0;
}
inline bool AddTo(Directory& seat, std::string_view company, bool marked = false) {
  return AddTo(seat, MakeCard(company), marked);
}

// The place of a card is looked for as a form does it: before the change begins.
inline bool DeleteFrom(Directory& seat, std::string_view company) {
  uint32_t moved_from = 0;
  return DeleteCard(seat, OffsetOf(seat, company), &moved_from);
}

inline ChangeResult SetIn(Directory& seat, std::string_view company, int field,
                          std::string_view text) {
  const uint32_t offset = OffsetOf(seat, company);
  CardRecord card;
  if (!seat.main().ReadCard(offset, card)) return ChangeResult::kNotPossible;
  card.SetField(field, OemText(std::string(text)));
  return ChangeCard(seat, offset, card).result;
}

// Companies in the order of the seat's list.
inline Names Listed(Directory& seat, bool marked_only = false) {
  Names names;
  for (uint32_t row = 0; row < seat.address().entry_count(); ++row) {
    CardRecord card;
    EXPECT_TRUE(seat.main().ReadCard(seat.address().CardOffsetAt(row), card));
    const bool listed = !marked_only || seat.address().Entry(row).bit(seat.selection_bit());
    if (listed) names.push_back(card.FieldText(kSte1).bytes());
  }
  return names;
}
inline Names MarkedIn(Directory& seat) {
  return Listed(seat, true);
}

class SharingFixture : public ::testing::Test {
 protected:
  static DirectoryOptions SeatOptions(int number) {
    DirectoryOptions options;
    options.path = kSharedStem;
    options.shared_dir = FolderOf(number);
    options.lock_wait = std::chrono::milliseconds(0);
    return options;
  }
  static std::string FolderOf(int number) { return "/poste" + std::to_string(number) + "/"; }
  Seat NewSeat(int number) { return NewSeat(number, files); }
  Seat NewSeat(int number, FileSystem& disk) {
    auto seat =
        std::make_unique<Directory>(DirectoryServices{disk, clock, progress}, SeatOptions(number));
    EXPECT_TRUE(IsOpen(seat->OpenDirectory()));
    return seat;
  }
  // Cards ALPHA, BRAVO, MIKE and TANGO in file order, and both seats open on them.
  void StartWithFour() {
    one_ = NewSeat(1);
    for (const char* company : {"ALPHA", "BRAVO", "MIKE", "TANGO"}) AddTo(one(), company);
    two_ = NewSeat(2);
  }
  Directory& one() { return *one_; }
  Directory& two() { return *two_; }

  static FileBytes Bytes(const MemoryFileSystem& disk, std::string_view extension) {
    return disk.Contents(std::string(kSharedStem) + std::string(extension));
  }
  [[nodiscard]] FileBytes MainFile() const { return Bytes(files, ".DAN"); }
  // What is wrong with the shared files and the address file of a seat, and with the note. Number
  // flags are left out: a card rewritten in place is no change that other seats notice.
  static std::string Fault(const MemoryFileSystem& disk, int number) {
    const FileBytes main = Bytes(disk, ".DAN");
    const bool at_rest = std::ranges::all_of(ByteView(main).subspan(108, 52),
                                             [](std::byte b) { return b == std::byte{0}; });
    if (!at_rest) return "a note is left";
    if (main.size() % 768 != 0 || LoadLe16(main, 96) != main.size() / 768 - 1) {
      return "count of the main file";
    }
    const std::vector<CardRecord> cards = CardsOf(main);
    std::vector<uint32_t> order;
    std::string fault = IndexFault(Bytes(disk, ".I02"), cards, kNom, SlotOrder::kSorted, &order);
    if (!fault.empty()) return "second index: " + fault;
    order.clear();
    fault = IndexFault(Bytes(disk, ".I01"), cards, kSte1, SlotOrder::kSorted, &order);
    if (!fault.empty()) return "first index: " + fault;
    return AddressFault(disk.Contents(FolderOf(number) + "ESSAI.ADR"), cards, &order, false);
  }
  // Both seats take over what there is and agree with the files.
  void ExpectAgreement() {
    for (const auto& [number, seat] : {std::pair{1, one_.get()}, std::pair{2, two_.get()}}) {
      { EXPECT_TRUE(ChangeScope(*seat)); }
      EXPECT_EQ(Fault(files, number), "") << number;
      EXPECT_EQ(seat->main().count(), seat->address().entry_count());
    }
    EXPECT_EQ(Listed(one()), Listed(two()));
  }

  FakeClock clock{1'000'000'000};
  MemoryFileSystem files{clock};
  SilentProgress progress;
  Seat one_;
  Seat two_;
};

}  // namespace carnetel
