#include <gmock/gmock.h>

#include "tests/transfer/fixed_testing.h"
#include "tests/transfer/refusing_file_system.h"
#include "tests/transfer/transfer_testing.h"
#include "transfer/fixed.h"

namespace carnetel {
namespace {

using std::string_literals::operator""s;
using testing::ElementsAre;
using testing::Pair;

constexpr char kWriteMessage[] = "/out.txt\nErreur en écriture...";

class FixedExport : public TransferTest {
 protected:
  TransferOutcome ExportRecords(const TransferProfile& profile, bool replace = false,
                                CharacterSet charset = CharacterSet::kOem) {
    return ExportOn(files_, profile, replace, charset);
  }
  TransferOutcome ExportOn(FileSystem& files, const TransferProfile& profile, bool replace = false,
                           CharacterSet charset = CharacterSet::kOem) {
    Directory directory({files, clock_, progress_}, Options());
    EXPECT_EQ(directory.OpenDirectory(), OpenResult::kOpened);
    return ExportFixed(directory, profile, {kTarget, replace, charset});
  }
  // Records of four bytes behind three others: a name.
  static TransferProfile Names() { return FixedLayout(3, 4, {{kNom, {0, 4}}}); }
};

TEST_F(FixedExport, TheDefaultLayoutGivesAnEarlyMainFile) {
  AddCards({MakeCard({{kSte1, "Garage du Midi"},
                      {kSte2, "Atelier"},
                      {kAdr3, "jamais"},
                      {kPostalCode, "69002 CEDEX"},
                      {kVille, "N\x8Cmes"},
                      {kTel1, "04 78"},
                      {kMtel, "3615"},
                      {kServiceType, "x"},
                      {kFax, "04 79"},
                      {kNom, "Andr\x82"},
                      {kSparePerson, "associ\x82"},
                      {kRef1, "un"},
                      {kRef6, "six"},
                      {kNotes, std::string(64, 'n')}})},
           true);
  const TransferOutcome outcome = ExportRecords(TransferProfile());
  EXPECT_EQ(outcome.result, 0);
  EXPECT_EQ(outcome.cards, 1u);
  EXPECT_EQ(outcome.message, "");
  std::string record(768, '\0');
  const std::pair<size_t, std::string_view> texts[] = {
      {0, "Garage du Midi"}, {32, "Atelier"}, {165, "N\x8Cmes"},   {277, "Andr\x82"},
      {309, "associ\x82"},   {325, "un"},     {445, "six"},        {469, "04 78"},
      {517, "3615"},         {542, "04 79"},  {596, "69002 CEDEX"}};
  for (const auto& [position, text] : texts) record.replace(position, text.size(), text);
  record.replace(610, 64, std::string(64, 'n'));
  EXPECT_EQ(Contents(kTarget), std::string(768, '\0') + record);
}

TEST_F(FixedExport, WritesMarkedCardsInTheOrderOfTheList) {
  AddCards({MakeCard({{kNom, "Zola"}}), MakeCard({{kNom, "Blanc"}})}, true);
  AddCards({MakeCard({{kNom, "Martin"}})}, false);
  AddCards({MakeCard({{kNom, "Hu"}})}, true);
  EXPECT_EQ(ExportRecords(Names()).cards, 3u);
  EXPECT_EQ(Contents(kTarget), "\0\0\0BlanHu\0\0Zola"s);
  EXPECT_THAT(progress_.opened, ElementsAre(Pair(ProgressForm::kTransfer, 3u)));
  EXPECT_EQ(progress_.steps, 3);
  EXPECT_EQ(progress_.closed, 1);
}

TEST_F(FixedExport, AnEmptyFieldIsZeros) {
  AddCards({MakeCard({{kNom, "Zola"}})}, true);
  EXPECT_EQ(ExportRecords(FixedLayout(0, 10, {{kVille, {0, 5}}, {kNom, {5, 5}}})).cards, 1u);
  EXPECT_EQ(Contents(kTarget), "\0\0\0\0\0Zola\0"s);
}

TEST_F(FixedExport, ACardWithoutAPostalCodeExportsTheShortOne) {
  AddCards({MakeCard({{kNom, "a"}, {kShortPostalCode, "69001"}})}, true);
  EXPECT_EQ(ExportRecords(TransferProfile()).cards, 1u);
  EXPECT_EQ(Contents(kTarget).substr(768 + 596, 14), "69001\0\0\0\0\0\0\0\0\0"s);
  EXPECT_EQ(Contents(kTarget).substr(768 + 160, 5), "\0\0\0\0\0"s);
}

TEST_F(FixedExport, AnsiConvertsTheWholeRecord) {
  AddCards({MakeCard({{kNom, "Andr\x82"}, {kVille, "N\x8Cmes"}})}, true);
  const TransferProfile profile = FixedLayout(0, 14, {{kNom, {0, 7}}, {kVille, {7, 7}}});
  EXPECT_EQ(ExportRecords(profile, false, CharacterSet::kAnsi).cards, 1u);
  EXPECT_EQ(Contents(kTarget), "Andr\xE9\0\0N\xEEmes\0\0"s) << "zeros do not end it";
}

TEST_F(FixedExport, ReplaceBeginsWithZerosUpToTheFirstCard) {
  AddCards({MakeCard({{kNom, "Zola"}})}, true);
  files_.SetContents(kTarget, AsBytes("a long text that was there"));
  EXPECT_EQ(ExportRecords(Names(), /*replace=*/true).cards, 1u);
  EXPECT_EQ(Contents(kTarget), "\0\0\0Zola"s);
}

TEST_F(FixedExport, AddsBehindWhatIsThereWithoutAnOffset) {
  AddCards({MakeCard({{kNom, "Zola"}})}, true);
  files_.SetContents(kTarget, AsBytes("x"));
  EXPECT_EQ(ExportRecords(Names()).cards, 1u);
  EXPECT_EQ(Contents(kTarget), "xZola");
}

TEST_F(FixedExport, TwoRunsThatAddMakeOneFile) {
  AddCards({MakeCard({{kNom, "Zola"}})}, true);
  EXPECT_EQ(ExportRecords(Names()).cards, 1u);
  EXPECT_EQ(ExportRecords(Names()).cards, 1u);
  EXPECT_EQ(Contents(kTarget), "\0\0\0ZolaZola"s) << "a missing file begins with its offset";
}

TEST_F(FixedExport, AFileThatCannotBeRemovedIsEmptied) {
  AddCards({MakeCard({{kNom, "Zola"}})}, true);
  files_.SetContents(kTarget, AsBytes("a long text that was there"));
  class KeepingFileSystem : public RefusingFileSystem {
   public:
    explicit KeepingFileSystem(FileSystem& base) : RefusingFileSystem(base, "") {}
    bool Remove(const std::string& /*path*/) override { return false; }
  } files(files_);
  EXPECT_EQ(ExportOn(files, Names(), /*replace=*/true).cards, 1u);
  EXPECT_EQ(Contents(kTarget), "\0\0\0Zola"s);
}

TEST_F(FixedExport, NothingMarkedFailsWithoutAWordAndTouchesNothing) {
  AddCards({MakeCard({{kNom, "Zola"}})}, false);
  files_.SetContents(kTarget, AsBytes("as before"));
  const TransferOutcome outcome = ExportRecords(Names(), /*replace=*/true);
  EXPECT_EQ(outcome.result, -1);
  EXPECT_EQ(outcome.message, "");
  EXPECT_FALSE(outcome.not_opened);
  EXPECT_EQ(Contents(kTarget), "as before");
  EXPECT_TRUE(progress_.opened.empty());
}

TEST_F(FixedExport, ARecordSizeNotAboveZeroFailsWithoutAWordAndTouchesNothing) {
  AddCards({MakeCard({{kNom, "Zola"}})}, true);
  files_.SetContents(kTarget, AsBytes("as before"));
  for (const int16_t size : {int16_t{0}, int16_t{-4}}) {
    const TransferOutcome outcome =
        ExportRecords(FixedLayout(3, size, {{kNom, {0, 4}}}), /*replace=*/true);
    EXPECT_EQ(outcome.result, -1);
    EXPECT_EQ(outcome.message, "");
    EXPECT_EQ(Contents(kTarget), "as before");
  }
}

TEST_F(FixedExport, ADestinationThatCannotBeOpenedFailsWithoutAWord) {
  AddCards({MakeCard({{kNom, "Zola"}})}, true);
  ASSERT_TRUE(files_.MakeFolder(kTarget));
  for (const bool replace : {false, true}) {
    const TransferOutcome outcome = ExportRecords(Names(), replace);
    EXPECT_EQ(outcome.result, -1);
    EXPECT_EQ(outcome.message, "");
    EXPECT_TRUE(outcome.not_opened);
    EXPECT_EQ(outcome.cards, 0u);
  }
}

TEST_F(FixedExport, ADestinationThatMayNotBeWrittenStaysAsItIs) {
  AddCards({MakeCard({{kNom, "Zola"}})}, true);
  files_.SetContents(kTarget, AsBytes("as before"));
  RefusingFileSystem files(files_, kTarget);
  const TransferOutcome outcome = ExportOn(files, Names(), /*replace=*/true);
  EXPECT_EQ(outcome.result, -1);
  EXPECT_TRUE(outcome.not_opened);
  EXPECT_EQ(Contents(kTarget), "as before");
}

TEST_F(FixedExport, AnAbortKeepsTheRecordsAlreadyWritten) {
  AddCards({MakeCard({{kNom, "a"}}), MakeCard({{kNom, "b"}}), MakeCard({{kNom, "c"}})}, true);
  progress_.abort_after = 2;
  const TransferOutcome outcome = ExportRecords(FixedLayout(0, 1, {{kNom, {0, 1}}}));
  EXPECT_EQ(outcome.result, 0);
  EXPECT_TRUE(outcome.aborted);
  EXPECT_EQ(outcome.cards, 2u);
  EXPECT_EQ(Contents(kTarget), "ab");
}

TEST_F(FixedExport, ACardThatCannotBeReadIsTold) {
  AddCards({MakeCard({{kNom, "a"}}), MakeCard({{kNom, "b"}})}, true);
  Directory directory(Services(), Options());
  ASSERT_EQ(directory.OpenDirectory(), OpenResult::kOpened);
  files_.SetContents(kMain, AsBytes(Contents(kMain).substr(0, 3 * kCardSize - 1)));
  const TransferOutcome outcome =
      ExportFixed(directory, FixedLayout(0, 1, {{kNom, {0, 1}}}), {kTarget, false, {}});
  EXPECT_EQ(outcome.result, -1);
  EXPECT_EQ(outcome.message, "/dir/CLIENTS.DAN\nErreur en lecture...");
  EXPECT_EQ(outcome.title_id, 104);
  EXPECT_EQ(outcome.cards, 1u);
  EXPECT_EQ(Contents(kTarget), "a");
}

class FixedExportOnAFullDisk : public FixedExport {
 protected:
  FaultFileSystem disk_{files_};
};

TEST_F(FixedExportOnAFullDisk, TheZerosInFrontAreTold) {
  AddCards({MakeCard({{kNom, "a"}})}, true);
  Directory directory({disk_, clock_, progress_}, Options());
  ASSERT_EQ(directory.OpenDirectory(), OpenResult::kOpened);
  disk_.FillDisk();
  const TransferOutcome outcome = ExportFixed(directory, Names(), {kTarget, false, {}});
  EXPECT_EQ(outcome.result, -1);
  EXPECT_EQ(outcome.message, kWriteMessage);
  EXPECT_EQ(outcome.title_id, 104);
  EXPECT_EQ(outcome.cards, 0u);
  EXPECT_EQ(Contents(kTarget), "");
}

TEST_F(FixedExportOnAFullDisk, TheLastBlockIsTold) {
  AddCards({MakeCard({{kNom, "a"}})}, true);
  Directory directory({disk_, clock_, progress_}, Options());
  ASSERT_EQ(directory.OpenDirectory(), OpenResult::kOpened);
  disk_.FillDisk();
  const TransferOutcome outcome =
      ExportFixed(directory, FixedLayout(0, 1, {{kNom, {0, 1}}}), {kTarget, false, {}});
  EXPECT_EQ(outcome.result, -1);
  EXPECT_EQ(outcome.message, kWriteMessage);
  EXPECT_EQ(outcome.cards, 0u);
  EXPECT_EQ(progress_.closed, 1);
}

TEST_F(FixedExportOnAFullDisk, ARecordThatWasTornIsTakenBack) {
  AddCards({MakeCard({{kNom, "abcd"}}), MakeCard({{kNom, "efgh"}})}, true);
  files_.SetContents(kTarget, AsBytes("1234"));
  // Writes six bytes of the eight and reports the failure; what follows goes on.
  class TearingFile : public File {
   public:
    explicit TearingFile(std::unique_ptr<File> base) : base_(std::move(base)) {}
    size_t Read(uint64_t position, ByteSpan into) override { return base_->Read(position, into); }
    uint64_t Size() override { return base_->Size(); }
    bool Write(uint64_t position, ByteView bytes) override {
      base_->Write(position, bytes.first(6));
      return Remember(false);
    }
    bool Truncate(uint64_t size) override { return base_->Truncate(size); }
    bool Sync() override { return base_->Sync(); }
    int64_t ModificationTime() override { return base_->ModificationTime(); }
    bool SetModificationTime(int64_t seconds) override {
      return base_->SetModificationTime(seconds);
    }

   private:
    std::unique_ptr<File> base_;
  };
  class TearingFileSystem : public RefusingFileSystem {
   public:
    explicit TearingFileSystem(FileSystem& base) : RefusingFileSystem(base, "") {}
    std::unique_ptr<File> Open(const std::string& path, OpenMode mode) override {
      std::unique_ptr<File> file = RefusingFileSystem::Open(path, mode);
      if (path != kTarget) return file;
      return std::make_unique<TearingFile>(std::move(file));
    }
  } files(files_);
  const TransferOutcome outcome = ExportOn(files, Names());
  EXPECT_EQ(outcome.message, kWriteMessage);
  EXPECT_EQ(outcome.cards, 0u);
  EXPECT_EQ(Contents(kTarget), "1234");
}

}  // namespace
}  // namespace carnetel
