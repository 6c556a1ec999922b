// Cards of a file that does not open as a directory, added to one that does.
#include "storage/recovery.h"

#include <gmock/gmock.h>

#include "platform/fault_file_system.h"
#include "tests/storage/family_bytes.h"
#include "tests/storage/family_check.h"
#include "tests/support/recording_progress.h"

namespace carnetel {
namespace {

using ::testing::ElementsAre;
using ::testing::Pair;

constexpr uint32_t kTime = 1'000'000'000;
constexpr uint32_t kSourceTime = 800'000'000;
const std::string kSource = "/vieux/CASSE.DAN";

class RecoveryTest : public StoreFixture {
 protected:
  static std::vector<CardRecord> ThreeCards() {
    return {MakeCard({{kSte1, "MIKE"}, {kNom, "ZOLA"}, {kTel1, "1"}}),
            MakeCard({{kSte1, "ALPHA"}, {kNom, "HUGO"}}),
            MakeCard({{kSte1, "TANGO"}, {kNom, "CAMUS"}, {kFax, "2"}})};
  }
  // A file with these cards behind a block that tells nothing.
  static FileBytes Unrecognised(const std::vector<CardRecord>& cards) {
    FileBytes file = MainFileBytes(cards, kSourceTime);
    std::fill_n(file.begin(), 768, std::byte{'?'});
    return file;
  }
  // Recovers a source of these bytes into the directory, which is open afterwards.
  Recovery Recover(const FileBytes& source, FileSystem& disk) {
    files.SetContents(kSource, source);
    DirectoryOptions options;
    options.path = kStem;
    opened_ = std::make_unique<Directory>(DirectoryServices{disk, clock, shown}, options);
    EXPECT_TRUE(IsOpen(opened_->OpenDirectory(AddressMode::kNormal, true)));
    const Recovery recovery = RecoverCards(*opened_, kSource);
    EXPECT_TRUE(SameBytes(source, files.Contents(kSource))) << "the source";
    return recovery;
  }
  Recovery Recover(const FileBytes& source) { return Recover(source, files); }
  // Closes the directory and puts one of `count` cards in its place.
  void StartWith(uint32_t count) {
    FileBytes file = MainHeaderBytes(static_cast<uint16_t>(count), kTime);
    file.resize(768 * (size_t{count} + 1));
    for (uint32_t n = 1; n <= count; ++n) {
      StoreU8(file, CardOffset(n), static_cast<uint8_t>('A' + n % 25));
    }
    files.SetContents(Path(".DAN"), file);
  }
  Directory& recovered() { return *opened_; }
  void CloseRecovered() { opened_.reset(); }

  RecordingProgress shown;

 private:
  std::unique_ptr<Directory> opened_;
};

TEST_F(RecoveryTest, EveryCardArrivesMarkedInANewDirectory) {
  const Recovery recovery = Recover(Unrecognised(ThreeCards()));
  EXPECT_TRUE(recovery.read);
  EXPECT_EQ(recovery.added, 3U);
  EXPECT_FALSE(recovery.stopped);
  EXPECT_FALSE(recovery.failed);
  EXPECT_EQ(recovered().marked_count(), 3);
  EXPECT_TRUE(SameBytes(MainFileBytes(ThreeCards(), kTime), MainFile()));
  EXPECT_TRUE(SameBytes(IndexBuilder()
                            .Page('A', {{"ALPHA", 1536}})
                            .Page('M', {{"MIKE", 768}})
                            .Page('T', {{"TANGO", 2304}})
                            .Bytes(),
                        IndexFile(1)));
  EXPECT_TRUE(SameBytes(IndexBuilder()
                            .Page('C', {{"CAMUS", 2304}})
                            .Page('H', {{"HUGO", 1536}})
                            .Page('Z', {{"ZOLA", 768}})
                            .Bytes(),
                        IndexFile(2)));
  EXPECT_TRUE(SameBytes(
      ExpectedAddressFile({{1536, 0x03}, {768, 0x03, 0x80}, {2304, 0x03, 0x10}}, kTime, 3),
      AddressFileBytes()))
      << "header and counter are on the disk while the directory is open";
}

TEST_F(RecoveryTest, TheMarksOutliveTheDirectory) {
  Recover(Unrecognised(ThreeCards()));
  CloseRecovered();
  files.ResetCounts();
  EXPECT_EQ(Open().marked_count(), 3);
  EXPECT_EQ(files.counts().writes, 0);
}

TEST_F(RecoveryTest, CardsThatWereThereStayAsTheyAre) {
  Open();
  Add(MakeCard("OSCAR", "BALZAC"), true);
  Add(MakeCard("BRAVO", "SAND"));
  Close();
  EXPECT_EQ(Recover(Unrecognised(ThreeCards())).added, 3U);
  EXPECT_EQ(recovered().marked_count(), 4);
  EXPECT_TRUE(SameBytes(
      ExpectedAddressFile(
          {{3072, 0x03}, {1536, 0x01}, {2304, 0x03, 0x80}, {768, 0x03}, {3840, 0x03, 0x10}}, kTime,
          4),
      AddressFileBytes()));
}

TEST_F(RecoveryTest, ProgressTellsTheCards) {
  Recover(Unrecognised({MakeCard("SOCI\x90T\x90"), MakeCard("", "HUGO")}));
  EXPECT_THAT(shown.opened, ElementsAre(Pair(ProgressForm::kTransfer, 2U)));
  EXPECT_THAT(shown.texts, ElementsAre("SOCIÉTÉ", ""));
  EXPECT_EQ(shown.closed, 1);
}

struct SizeCase {
  size_t size;
  uint32_t cards;
};

void PrintTo(const SizeCase& size, std::ostream* out) {
  *out << size.size << " bytes";
}

class RecoverySizeTest : public RecoveryTest, public ::testing::WithParamInterface<SizeCase> {};

// (size - 128) / 768: a partial card at the end counts from 128 bytes on.
TEST_P(RecoverySizeTest, TheSizeTellsTheNumber) {
  std::vector<CardRecord> cards = ThreeCards();
  for (CardRecord& card : cards) {
    std::ranges::fill(card.bytes().subspan(731, 33), std::byte{0x5A});
    card.set_write_time(kTime);
  }
  FileBytes source = Unrecognised(cards);
  for (size_t number = 0; number < 3; ++number) {
    StoreLe32(source, 768 * (number + 2) - 4, kTime);
  }
  source.resize(GetParam().size);
  const Recovery recovery = Recover(source);
  EXPECT_TRUE(recovery.read);
  EXPECT_FALSE(recovery.failed);
  EXPECT_EQ(recovery.added, GetParam().cards);
  EXPECT_EQ(recovered().main().count(), GetParam().cards);
  EXPECT_EQ(recovered().marked_count(), static_cast<int32_t>(GetParam().cards));
  FileBytes expected =
      MainHeaderBytes(static_cast<uint16_t>(GetParam().cards), GetParam().cards == 0 ? 0 : kTime);
  if (source.size() > 768) expected.insert(expected.end(), source.begin() + 768, source.end());
  expected.resize(768 * (size_t{GetParam().cards} + 1));
  for (uint32_t n = 1; n <= GetParam().cards; ++n) {
    StoreLe32(expected, CardOffset(n) + 764, kTime);
  }
  EXPECT_TRUE(SameBytes(expected, MainFile()));
}

INSTANTIATE_TEST_SUITE_P(Sizes, RecoverySizeTest,
                         ::testing::Values(SizeCase{0, 0}, SizeCase{1, 0}, SizeCase{127, 0},
                                           SizeCase{128, 0}, SizeCase{768, 0}, SizeCase{895, 0},
                                           SizeCase{896, 1}, SizeCase{1535, 1}, SizeCase{1536, 1},
                                           SizeCase{1663, 1}, SizeCase{1664, 2},
                                           SizeCase{768 * 3, 2}, SizeCase{768 * 3 + 400, 3},
                                           SizeCase{768 * 4, 3}),
                         [](const auto& test) { return "Of" + std::to_string(test.param.size); });

TEST_F(RecoveryTest, AnAbortKeepsWhatHasBeenAdded) {
  shown.abort_after = 2;
  const Recovery recovery = Recover(Unrecognised(ThreeCards()));
  EXPECT_TRUE(recovery.stopped);
  EXPECT_FALSE(recovery.failed);
  EXPECT_EQ(recovery.added, 2U) << "the card that was announced still comes";
  EXPECT_EQ(recovered().marked_count(), 2);
  EXPECT_EQ(shown.closed, 1);
  CloseRecovered();
  EXPECT_EQ(FamilyFault(ReadFamily(files, kStem)), "");
  EXPECT_EQ(MainFile().size(), 768U * 3);
  EXPECT_EQ(Open().marked_count(), 2);
}

TEST_F(RecoveryTest, AFullDirectoryStops) {
  StartWith(32765);
  const Recovery recovery = Recover(Unrecognised(ThreeCards()));
  EXPECT_TRUE(recovery.failed);
  EXPECT_FALSE(recovery.stopped);
  EXPECT_EQ(recovery.added, 2U);
  EXPECT_EQ(recovered().main().count(), 32767U);
  EXPECT_EQ(recovered().marked_count(), 2);
  EXPECT_EQ(MainFile().size(), 768U * 32768);
  EXPECT_EQ(shown.closed, 1);
  CloseRecovered();
  EXPECT_EQ(Open().marked_count(), 2);
}

// Cards reach the disk together at the end: none of those that did not fit counts.
TEST_F(RecoveryTest, AFullDiskIsTold) {
  Open();
  Add(MakeCard("OSCAR", "BALZAC"));
  Close();
  FaultFileSystem faulty(files);
  faulty.FillDisk();
  const Recovery recovery = Recover(Unrecognised(ThreeCards()), faulty);
  EXPECT_TRUE(recovery.read);
  EXPECT_TRUE(recovery.failed);
  EXPECT_EQ(recovery.added, 0U);
  EXPECT_EQ(MainFile().size(), 768U * 2);
  CloseRecovered();
  Open();
  Open();
  EXPECT_EQ(FamilyFault(ReadFamily(files, kStem)), "");
}

// Other seats must not take it for a change of the directory.
TEST_F(RecoveryTest, AFileWithoutCardsLeavesTheMainFileAsItIs) {
  Open();
  Add("OSCAR");
  Close();
  const FileBytes before = MainFile();
  clock.Advance(60);
  Recover(FileBytes(895, std::byte{'x'}));
  CloseRecovered();
  EXPECT_TRUE(SameBytes(before, MainFile()));
  EXPECT_EQ(files.Open(Path(".DAN"), OpenMode::kRead)->ModificationTime(), kStartTime);
}

TEST_F(RecoveryTest, AFileThatIsNotThere) {
  Open();
  Add("OSCAR");
  Close();
  DirectoryOptions options;
  options.path = kStem;
  Directory opened(DirectoryServices{files, clock, shown}, options);
  ASSERT_EQ(opened.OpenDirectory(), OpenResult::kOpened);
  files.ResetCounts();
  const Recovery recovery = RecoverCards(opened, "/vieux/RIEN.DAN");
  EXPECT_FALSE(recovery.read);
  EXPECT_EQ(recovery.added, 0U);
  EXPECT_EQ(files.counts().writes, 0);
  EXPECT_TRUE(shown.opened.empty());
}

TEST_F(RecoveryTest, ATextIsTakenForCards) {
  std::string text;
  while (text.size() < 768 * 2 + 300) text += "LISTE DES CLIENTS 1994\r\n";
  const ByteView bytes = AsBytes(text);
  const Recovery recovery = Recover(FileBytes(bytes.begin(), bytes.end()));
  EXPECT_EQ(recovery.added, 2U);
  CardRecord card;
  ASSERT_TRUE(recovered().main().ReadCard(768, card));
  EXPECT_EQ(card.FieldText(kSte1).bytes(), "LISTE DES CLIENTS 1994\r\nLISTE DE");
  CloseRecovered();
  EXPECT_EQ(FamilyFault(ReadFamily(files, kStem)), "");
}

TEST_F(RecoveryTest, TheFileTimeOfTheSourceStays) {
  files.SetContents(kSource, Unrecognised(ThreeCards()));
  const int64_t before = files.Open(kSource, OpenMode::kRead)->ModificationTime();
  clock.Advance(60);
  Open();
  RecoverCards(directory(), kSource);
  EXPECT_EQ(files.Open(kSource, OpenMode::kRead)->ModificationTime(), before);
}

TEST_F(RecoveryTest, ManyCardsInBothOrders) {
  std::vector<CardRecord> cards;
  for (int number = 0; number < 400; ++number) {
    cards.push_back(MakeCard(static_cast<char>('A' + number * 7 % 25) + std::to_string(number),
                             static_cast<char>('A' + number * 3 % 25) + std::to_string(number)));
  }
  EXPECT_EQ(Recover(Unrecognised(cards)).added, 400U);
  EXPECT_TRUE(SameBytes(MainFileBytes(cards, kTime), MainFile()));
  CloseRecovered();
  EXPECT_EQ(FamilyFault(ReadFamily(files, kStem)), "");
  EXPECT_EQ(Open().marked_count(), 400);
}

}  // namespace
}  // namespace carnetel
