// Derived files that are missing, short, foreign or old: made anew from the main file without a
// word, and at rest after two openings.
#include <gmock/gmock.h>

#include <functional>

#include "tests/storage/family_bytes.h"
#include "tests/storage/family_check.h"

namespace carnetel {
namespace {

constexpr uint32_t kTime = 1'000'000'000;

FileBytes Cut(FileBytes file, size_t size) {
  file.resize(std::min(file.size(), size));
  return file;
}

struct Damage {
  std::string name;
  std::function<FileBytes(const FileBytes&)> inflict;
};

struct HealCase {
  std::string extension;
  Damage damage;
};

void PrintTo(const HealCase& heal, std::ostream* out) {
  *out << heal.extension << " " << heal.damage.name;
}

class HealFixture : public StoreFixture {
 protected:
  void SetUp() override {
    Open();
    Add(MakeCard({{kSte1, "MIKE"}, {kNom, "Zola"}, {kTel1, "1"}}), true);
    Add(MakeCard({{kSte1, "ALPHA"}, {kNom, "Hugo"}}));
    Add(MakeCard({{kSte1, "TANGO"}, {kNom, "Camus"}, {kFax, "2"}}), true);
    Close();
    stale_ = std::make_unique<MemoryFileSystem>(files);
    Open();
    Add(MakeCard({{kSte1, "NOVEMBER"}, {kNom, "Balzac"}}));
    Close();
    whole_ = ReadFamily(files, kStem);
  }
  // The files before the last card was added.
  [[nodiscard]] FileBytes Stale(std::string_view extension) const {
    return stale_->Contents(Path(extension));
  }
  void ExpectSameCardsAndIndexes() {
    EXPECT_TRUE(SameBytes(whole_.main, MainFile()));
    EXPECT_TRUE(SameBytes(whole_.index1, IndexFile(1)));
    EXPECT_TRUE(SameBytes(whole_.index2, IndexFile(2)));
    EXPECT_EQ(FamilyFault(ReadFamily(files, kStem)), "");
  }
  // The address file of these cards without the marks they had.
  void ExpectFreshAddressFile() {
    EXPECT_TRUE(SameBytes(
        ExpectedAddressFile({{1536}, {768, 0x01, 0x80}, {3072}, {2304, 0x01, 0x10}}, kTime),
        AddressFileBytes()));
  }
  void ExpectOpeningAtRest() {
    Close();
    files.ResetCounts();
    Open();
    EXPECT_EQ(open_result, OpenResult::kOpened);
    EXPECT_EQ(files.counts().writes, 0);
    EXPECT_EQ(files.counts().truncates, 0);
  }

  FamilyBytes whole_;

 private:
  std::unique_ptr<MemoryFileSystem> stale_;
};

class DirectoryHealTest : public HealFixture, public ::testing::WithParamInterface<HealCase> {};

TEST_P(DirectoryHealTest, TwoOpeningsAndAllIsAtRest) {
  const std::string path = Path(GetParam().extension);
  files.SetContents(path, GetParam().damage.inflict(files.Contents(path)));
  Open();
  EXPECT_EQ(open_result, OpenResult::kOpened);
  Open();
  ExpectSameCardsAndIndexes();
  ExpectOpeningAtRest();
}

std::vector<HealCase> HealCases() {
  const std::vector<Damage> common = {
      {"Empty", [](const FileBytes&) { return FileBytes(); }},
      {"OneByte", [](const FileBytes& file) { return Cut(file, 1); }},
      {"CutIn100", [](const FileBytes& file) { return Cut(file, 100); }},
      {"CutIn330", [](const FileBytes& file) { return Cut(file, 330); }},
      {"CutBeforeTheEnd", [](const FileBytes& file) { return Cut(file, file.size() - 1); }},
  };
  const std::vector<Damage> index_only = {
      {"WithoutItsLastPage", [](const FileBytes& file) { return Cut(file, file.size() - 506); }},
      {"OnePage", [](const FileBytes& file) { return Cut(file, 506); }},
  };
  const std::vector<Damage> address_only = {
      {"Text", [](const FileBytes& file) { return FileBytes(file.size(), std::byte{'x'}); }},
      {"Zeros", [](const FileBytes& file) { return FileBytes(file.size()); }},
      {"WithoutItsLastEntry", [](const FileBytes& file) { return Cut(file, file.size() - 16); }},
      {"OlderVersion",
       [](FileBytes file) {
         StorePadded(file, 66, 5, "04.09");
         return file;
       }},
      {"NoVersion",
       [](FileBytes file) {
         StorePadded(file, 34, 42, "");
         return file;
       }},
  };
  std::vector<HealCase> cases;
  for (const std::string extension : {".I01", ".I02", ".ADR"}) {
    for (const Damage& damage : common) cases.push_back({extension, damage});
    for (const Damage& damage : extension == ".ADR" ? address_only : index_only) {
      cases.push_back({extension, damage});
    }
  }
  return cases;
}

INSTANTIATE_TEST_SUITE_P(Files, DirectoryHealTest, ::testing::ValuesIn(HealCases()),
                         [](const auto& test) {
                           return test.param.extension.substr(1) + test.param.damage.name;
                         });

class DirectoryHealOneTest : public HealFixture {};

TEST_F(DirectoryHealOneTest, MissingIndexIsMadeAnewAndMarksStay) {
  const FileBytes address = AddressFileBytes();
  for (const std::string_view extension : {".I01", ".I02"}) {
    files.Remove(Path(extension));
    Open();
    ExpectSameCardsAndIndexes();
    EXPECT_TRUE(SameBytes(address, AddressFileBytes())) << extension;
    ExpectOpeningAtRest();
  }
}

TEST_F(DirectoryHealOneTest, MissingAddressFileIsMadeAnewWithoutMarks) {
  files.Remove(Path(".ADR"));
  Open();
  EXPECT_EQ(directory().marked_count(), 0);
  ExpectSameCardsAndIndexes();
  ExpectFreshAddressFile();
  ExpectOpeningAtRest();
}

TEST_F(DirectoryHealOneTest, EverythingDerivedIsMissing) {
  for (const std::string_view extension : {".I01", ".I02", ".ADR", ".CRT"}) {
    files.Remove(Path(extension));
  }
  Open();
  ExpectSameCardsAndIndexes();
  ExpectFreshAddressFile();
  EXPECT_TRUE(SameBytes(DefaultCriteriaBytes(), Contents(".CRT")));
  ExpectOpeningAtRest();
}

TEST_F(DirectoryHealOneTest, LaterVersionOfTheAddressFileIsTaken) {
  FileBytes address = AddressFileBytes();
  StorePadded(address, 66, 5, "04.11");
  files.SetContents(Path(".ADR"), address);
  ExpectOpeningAtRest();
  EXPECT_EQ(directory().marked_count(), 2);
}

// The count of the old address file is not the main file's: both indexes are made anew at once.
TEST_F(DirectoryHealOneTest, AddressFileThatMissesTheLastCard) {
  files.SetContents(Path(".ADR"), Stale(".ADR"));
  files.SetContents(Path(".I02"), FileBytes(18216, std::byte{'x'}));
  Open();
  ExpectSameCardsAndIndexes();
  ExpectFreshAddressFile();
  ExpectOpeningAtRest();
}

// The first opening makes an address file of the slots that are there; its count then tells the
// second one that the indexes are bad.
TEST_F(DirectoryHealOneTest, ActiveIndexThatMissesTheLastCard) {
  files.SetContents(Path(".I01"), Stale(".I01"));
  Open();
  EXPECT_EQ(LoadLe16(AddressFileBytes(), 96), 3);
  Open();
  ExpectSameCardsAndIndexes();
  ExpectFreshAddressFile();
  ExpectOpeningAtRest();
}

TEST_F(DirectoryHealOneTest, ActiveIndexThatMissesTheCardLastInOrder) {
  FileBytes index = IndexFile(1);
  std::fill_n(index.begin() + 506 * 29 + 2, 14, std::byte{0});
  files.SetContents(Path(".I01"), index);
  Open();
  Open();
  ExpectSameCardsAndIndexes();
  ExpectOpeningAtRest();
}

TEST_F(DirectoryHealOneTest, ForeignBytesInTheActiveIndex) {
  files.SetContents(Path(".I01"), FileBytes(18216, std::byte{'x'}));
  Open();
  Open();
  ExpectSameCardsAndIndexes();
  ExpectOpeningAtRest();
}

TEST_F(DirectoryHealOneTest, WholeFamilyButTheMainFileIsOld) {
  for (const std::string_view extension : {".I01", ".I02", ".ADR"}) {
    files.SetContents(Path(extension), Stale(extension));
  }
  Open();
  ExpectSameCardsAndIndexes();
  ExpectFreshAddressFile();
  ExpectOpeningAtRest();
}

TEST_F(DirectoryHealOneTest, MainFileIsOld) {
  files.SetContents(Path(".DAN"), Stale(".DAN"));
  Open();
  EXPECT_EQ(FamilyFault(ReadFamily(files, kStem)), "");
  EXPECT_EQ(AddressFileBytes().size(), 320U + 16 * 3);
  ExpectOpeningAtRest();
}

TEST_F(DirectoryHealOneTest, OffsetPastTheEndIsClearedAndLeavesAHole) {
  FileBytes index = IndexFile(2);
  const size_t slot = 506 * 12 + 2;  // Camus, the only one of C
  StoreLe32(index, slot + 10, 768 * 5);
  files.SetContents(Path(".I02"), index);
  Open();
  std::fill_n(index.begin() + slot, 14, std::byte{0});
  EXPECT_TRUE(SameBytes(index, IndexFile(2)));
  ExpectOpeningAtRest();
}

TEST_F(DirectoryHealOneTest, OffsetInTheHeaderBlockIsCleared) {
  FileBytes index = IndexFile(2);
  StoreLe32(index, 506 * 12 + 12, 767);
  files.SetContents(Path(".I02"), index);
  Open();
  EXPECT_EQ(LoadLe32(IndexFile(2), 506 * 12 + 12), 0U);
}

TEST_F(DirectoryHealOneTest, CountOfTheAddressFileFollowsItsSize) {
  FileBytes address = AddressFileBytes();
  const FileBytes extra(16, std::byte{7});
  address.insert(address.end(), extra.begin(), extra.end());
  files.SetContents(Path(".ADR"), address);
  Open();
  EXPECT_EQ(LoadLe16(AddressFileBytes(), 96), 5) << "corrected from the size";
  Open();
  ExpectSameCardsAndIndexes();
  ExpectFreshAddressFile();
  ExpectOpeningAtRest();
}

TEST_F(DirectoryHealOneTest, PartOfAnEntryAtTheEndIsNoEntry) {
  FileBytes address = AddressFileBytes();
  address.resize(address.size() + 15);
  files.SetContents(Path(".ADR"), address);
  ExpectOpeningAtRest();
  EXPECT_EQ(directory().marked_count(), 2);
}

TEST_F(DirectoryHealOneTest, EntriesInAnotherOrderMakeTheAddressFileAnew) {
  FileBytes address = AddressFileBytes();
  std::swap_ranges(address.begin() + 320, address.begin() + 336, address.begin() + 336);
  files.SetContents(Path(".ADR"), address);
  Open();
  ExpectFreshAddressFile();
  ExpectOpeningAtRest();
}

TEST_F(DirectoryHealOneTest, OtherActiveIndexMakesTheAddressFileAnewInItsOrder) {
  Open(kNom);
  EXPECT_TRUE(
      SameBytes(ExpectedAddressFile({{3072}, {2304, 0x01, 0x10}, {1536}, {768, 0x01, 0x80}}, kTime),
                AddressFileBytes()));
  EXPECT_EQ(directory().marked_count(), 0);
}

// A short address file of a directory without cards has nothing else that could tell.
TEST_F(DirectoryHealOneTest, ShortAddressFileOfAnEmptyDirectory) {
  while (Open().main().count() > 0) Delete(768);
  Close();
  const FileBytes whole = AddressFileBytes();
  for (const size_t size : {100U, 128U, 200U, 319U}) {
    files.SetContents(Path(".ADR"), Cut(whole, size));
    Open();
    Close();
    EXPECT_TRUE(SameBytes(whole, AddressFileBytes())) << size;
  }
}

}  // namespace
}  // namespace carnetel
