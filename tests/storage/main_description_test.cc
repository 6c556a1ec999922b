// The description and owner of a directory, set in its main file and read from one that nobody has
// opened.
#include <gmock/gmock.h>

#include "platform/fault_file_system.h"
#include "storage/directory_file.h"
#include "tests/storage/family_bytes.h"

namespace carnetel {
namespace {

constexpr uint32_t kStamp = 0x2F000000;

class MainDescriptionTest : public StoreFixture {
 protected:
  // A main file with one card, of seat 7, with other bytes than a new one has wherever that is
  // allowed.
  void SetUp() override {
    file_ = MainFileBytes({MakeCard("ALPHA")}, kStamp);
    StorePadded(file_, 0, 32, "AUTRE PROGRAMME VER 06.00");
    StorePadded(file_, 34, 42, "Clients");
    StoreLe16(file_, 96, 9);
    StoreLe16(file_, 106, 7);
    std::fill_n(file_.begin() + 108, 660, std::byte{0x77});
    files.SetContents(Path(".DAN"), file_);
    ASSERT_TRUE(main_.Open(files, Path(".DAN")));
  }
  [[nodiscard]] FileBytes With(std::string_view description, uint16_t owner) const {
    FileBytes file = file_;
    StorePadded(file, 34, 42, description);
    StoreLe16(file, 106, owner);
    return file;
  }

  FileBytes file_;
  DirectoryFile main_;
};

// The image has the count of the size, the file keeps what it has.
TEST_F(MainDescriptionTest, NothingElseOfTheFileChanges) {
  ASSERT_EQ(main_.header().card_count(), 1);
  EXPECT_TRUE(main_.Describe(OemText("Amis de l'ann\x82\x65"), {}));
  EXPECT_TRUE(SameBytes(With("Amis de l'ann\x82\x65", 7), MainFile()));
  EXPECT_EQ(main_.header().description().bytes(), "Amis de l'ann\x82\x65");
  EXPECT_EQ(main_.header().owner(), 7);
  EXPECT_EQ(main_.header().card_count(), 1);
  EXPECT_EQ(main_.header().stamp(), kStamp);
}

TEST_F(MainDescriptionTest, TheOwnerIsSetAndTakenAway) {
  EXPECT_TRUE(main_.Describe(OemText("Clients"), uint16_t{12}));
  EXPECT_TRUE(SameBytes(With("Clients", 12), MainFile()));
  EXPECT_EQ(main_.header().owner(), 12);
  EXPECT_TRUE(main_.Describe(OemText("Clients"), uint16_t{0}));
  EXPECT_TRUE(SameBytes(With("Clients", 0), MainFile()));
}

TEST_F(MainDescriptionTest, LongTextsAreCutAt41Characters) {
  EXPECT_TRUE(main_.Describe(OemText(std::string(60, 'x')), {}));
  EXPECT_TRUE(SameBytes(With(std::string(41, 'x'), 7), MainFile()));
}

TEST_F(MainDescriptionTest, AnEmptyTextClears) {
  EXPECT_TRUE(main_.Describe({}, {}));
  EXPECT_TRUE(SameBytes(With("", 7), MainFile()));
}

// What another seat has put into the header meanwhile stays.
TEST_F(MainDescriptionTest, TheHeaderOfTheDiskCounts) {
  FileBytes changed = file_;
  StoreLe16(changed, 96, 2);
  StoreLe32(changed, 102, kStamp + 5);
  files.SetContents(Path(".DAN"), changed);
  EXPECT_TRUE(main_.Describe(OemText("Amis"), {}));
  StorePadded(changed, 34, 42, "Amis");
  EXPECT_TRUE(SameBytes(changed, MainFile()));
}

TEST_F(MainDescriptionTest, AHeaderThatWasCutShortIsNotDescribed) {
  files.SetContents(Path(".DAN"), FileBytes(107, std::byte{'x'}));
  EXPECT_FALSE(main_.Describe(OemText("Amis"), uint16_t{3}));
  EXPECT_TRUE(SameBytes(FileBytes(107, std::byte{'x'}), MainFile()));
  EXPECT_EQ(main_.header().description().bytes(), "Clients");
}

TEST_F(MainDescriptionTest, AWriteThatFailsIsToldAndChangesNothing) {
  FaultFileSystem faulty(files);
  DirectoryFile main;
  ASSERT_TRUE(main.Open(faulty, Path(".DAN")));
  faulty.StopAfter(0);
  EXPECT_FALSE(main.Describe(OemText("Amis"), uint16_t{3}));
  EXPECT_TRUE(main.write_failed());
  EXPECT_TRUE(SameBytes(file_, MainFile()));
  EXPECT_EQ(main.header().description().bytes(), "Clients");
  EXPECT_EQ(main.header().owner(), 7);
}

TEST_F(MainDescriptionTest, TheDescriptionOutlivesChangesOfCards) {
  EXPECT_TRUE(main_.Describe(OemText("Amis"), uint16_t{0}));
  main_.Close();
  Open();
  Add("BRAVO");
  EXPECT_TRUE(directory().main().Describe(OemText("Fournisseurs"), {}));
  Add("DELTA");
  Close();
  EXPECT_EQ(Open().main().header().description().bytes(), "Fournisseurs");
  EXPECT_EQ(LoadLe16(MainFile(), 96), 3);
}

TEST_F(MainDescriptionTest, HeaderOfAFileNobodyOpened) {
  const std::optional<MainHeader> header = ReadMainHeader(files, Path(".DAN"));
  ASSERT_TRUE(header);
  EXPECT_TRUE(SameBytes(ByteView(file_).first(108), header->bytes()));
  EXPECT_EQ(header->card_count(), 9) << "as it stands there";
}

TEST_F(MainDescriptionTest, HeaderOfAShortFileEndsInZeros) {
  for (const size_t size : {0U, 1U, 40U, 107U}) {
    FileBytes cut = file_;
    cut.resize(size);
    files.SetContents(Path(".DAN"), cut);
    const std::optional<MainHeader> header = ReadMainHeader(files, Path(".DAN"));
    ASSERT_TRUE(header) << size;
    cut.resize(108);
    EXPECT_TRUE(SameBytes(cut, header->bytes())) << size;
  }
}

TEST_F(MainDescriptionTest, NoHeaderWithoutAFile) {
  EXPECT_FALSE(ReadMainHeader(files, "/carnets/AUTRE.DAN"));
  EXPECT_FALSE(ReadMainHeader(files, "/carnets/"));
  EXPECT_FALSE(files.Exists("/carnets/AUTRE.DAN"));
}

}  // namespace
}  // namespace carnetel
