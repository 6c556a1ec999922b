// How often a seat asks the disk, which for most seats lies behind a network. The table of
// docs/performance.md; a change here wants to be meant.
#include "base/format_text.h"
#include "tests/storage/sharing_fixture.h"

namespace carnetel {
namespace {

class RoundTrips : public SharingFixture {
 protected:
  static std::string Told(const IoCounts& counts) {
    return FormatPrintf(
        "%d opens, %d reads, %d writes, %d cuts, %d syncs, %d locks",
        {counts.opens, counts.reads, counts.writes, counts.truncates, counts.syncs, counts.locks});
  }
  template <class Work>
  std::string Of(Work work) {
    files.ResetCounts();
    work();
    return Told(files.counts());
  }
  // What a save costs: the card is known already.
  std::string OfChange(Directory& seat, uint32_t offset, int field, std::string_view text) {
    CardRecord card;
    EXPECT_TRUE(seat.main().ReadCard(offset, card));
    card.SetField(field, OemText(std::string(text)));
    return Of(
        [&] { EXPECT_NE(ChangeCard(seat, offset, card).result, ChangeResult::kNotPossible); });
  }
  std::string OfDelete(Directory& seat, uint32_t offset) {
    uint32_t moved_from = 0;
    return Of([&] { EXPECT_TRUE(DeleteCard(seat, offset, &moved_from)); });
  }
  // 500 cards that seat 1 has made, and that seat 2 has seen.
  void StartWithMany() {
    one_ = NewSeat(1);
    for (int n = 0; n < 500; ++n) {
      const char letter = static_cast<char>('A' + n % 26);
      AddTo(one(), FormatPrintf("%c%03d", {letter, n}));
    }
    two_ = NewSeat(2);
    two_->CloseDirectory();
  }
};

TEST_F(RoundTrips, OfASeat) {
  StartWithMany();
  EXPECT_EQ(Of([this] { two_ = NewSeat(2); }),
            "5 opens, 7 reads, 0 writes, 0 cuts, 0 syncs, 1 locks");
  EXPECT_EQ(Of([this] { AddTo(one(), "KILO"); }),
            "0 opens, 2 reads, 9 writes, 0 cuts, 2 syncs, 1 locks");
  EXPECT_EQ(Of([this] { RefreshIfChanged(two(), RefreshView::kWholeFile); }),
            "5 opens, 14 reads, 6 writes, 0 cuts, 0 syncs, 1 locks");
  EXPECT_EQ(Of([this] { (void)two().ChangedByOthers(); }),
            "0 opens, 1 reads, 0 writes, 0 cuts, 0 syncs, 0 locks");
  EXPECT_EQ(Of([this] { two().LockCard(768); }),
            "0 opens, 0 reads, 0 writes, 0 cuts, 0 syncs, 1 locks");
  EXPECT_EQ(OfChange(two(), 768, kFax, "1"),
            "0 opens, 3 reads, 8 writes, 1 cuts, 6 syncs, 1 locks");
  EXPECT_EQ(Of([this] { two().UnlockCard(); }),
            "0 opens, 0 reads, 0 writes, 0 cuts, 0 syncs, 0 locks");
  EXPECT_EQ(OfChange(two(), 768, kSte1, "LIMA"),
            "0 opens, 5 reads, 21 writes, 2 cuts, 12 syncs, 2 locks");
  EXPECT_EQ(OfDelete(two(), 1536), "0 opens, 4 reads, 10 writes, 2 cuts, 5 syncs, 2 locks");
  EXPECT_EQ(Of([this] {
              const Directory::Batch batch(two());
              for (int n = 0; n < 100; ++n) AddTo(two(), FormatPrintf("N%03d", {n}));
            }),
            "0 opens, 2 reads, 10 writes, 0 cuts, 3 syncs, 1 locks");
}

TEST_F(RoundTrips, WithoutSeats) {
  DirectoryOptions options;
  options.path = "/seul/ESSAI";
  const auto open = [&] {
    one_ = std::make_unique<Directory>(DirectoryServices{files, clock, progress}, options);
    EXPECT_TRUE(IsOpen(one_->OpenDirectory()));
  };
  open();
  for (int n = 0; n < 500; ++n) {
    const char letter = static_cast<char>('A' + n % 26);
    AddTo(one(), FormatPrintf("%c%03d", {letter, n}));
  }
  one_->CloseDirectory();
  EXPECT_EQ(Of(open), "5 opens, 10 reads, 0 writes, 0 cuts, 0 syncs, 0 locks");
  EXPECT_EQ(Of([this] { AddTo(one(), "KILO"); }),
            "0 opens, 0 reads, 7 writes, 0 cuts, 2 syncs, 0 locks");
  EXPECT_EQ(OfChange(one(), 768, kFax, "1"),
            "0 opens, 1 reads, 5 writes, 1 cuts, 4 syncs, 0 locks");
  EXPECT_EQ(OfChange(one(), 768, kSte1, "LIMA"),
            "0 opens, 3 reads, 17 writes, 2 cuts, 9 syncs, 0 locks");
  EXPECT_EQ(OfDelete(one(), 1536), "0 opens, 2 reads, 8 writes, 2 cuts, 4 syncs, 0 locks");
}

}  // namespace
}  // namespace carnetel
