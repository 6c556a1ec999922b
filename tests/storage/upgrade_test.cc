// Older main files and what an opening makes of them, byte for byte. Both sides are written down by
// offsets; in a card only what lies behind byte 276 changes its place.
#include "storage/upgrade.h"

#include <gmock/gmock.h>

#include "tests/storage/older_file.h"

namespace carnetel {
namespace {

using ::testing::UnorderedElementsAre;

// Notes in which every byte tells its place: "00 01 02 ", cut at `size`.
std::string Notes(size_t size) {
  std::string notes;
  for (int number = 0; notes.size() < size; ++number) {
    notes += std::to_string(100 + number).substr(1) + ' ';
  }
  return notes.substr(0, size);
}

std::string PartOfNotes(size_t from, size_t to) {
  return Notes(128).substr(from, to - from);
}

FileBytes Upgraded(const FileBytes& old_card) {
  CardRecord old;
  std::ranges::copy(old_card, old.bytes().begin());
  const CardRecord card = UpgradeCard(old);
  return {card.bytes().begin(), card.bytes().end()};
}

TEST(UpgradeCardTest, FieldsOfTheirFullSize) {
  FileBytes old = BytesWith(
      768,
      {{0, std::string(32, 'a')},   {32, std::string(32, 'b')},  {64, std::string(32, 'c')},
       {96, std::string(32, 'd')},  {128, std::string(32, 'e')}, {160, "59000"},
       {165, std::string(32, 'g')}, {197, std::string(32, 'h')}, {229, std::string(24, 'i')},
       {253, std::string(24, 'j')}, {277, std::string(24, 'k')}, {301, "0123456789ABCDEFlost too"},
       {325, std::string(24, 'm')}, {349, std::string(24, 'n')}, {373, std::string(24, 'o')},
       {397, std::string(24, 'p')}, {421, std::string(24, 'q')}, {445, std::string(24, 'r')},
       {469, std::string(24, 's')}, {493, std::string(24, 't')}, {517, std::string(21, 'u')},
       {538, std::string(4, 'v')},  {542, std::string(21, 'w')}, {563, std::string(12, 'x')},
       {575, std::string(21, 'y')}, {596, "ABCDEFGHIJKLMN"},     {610, Notes(128)},
       {738, std::string(12, 'B')}, {750, std::string(18, 'C')}});
  FileBytes expected = BytesWith(
      768, {{0, std::string(32, 'a')},   {32, std::string(32, 'b')},  {64, std::string(32, 'c')},
            {96, std::string(32, 'd')},  {128, std::string(32, 'e')}, {160, "59000"},
            {165, std::string(32, 'g')}, {197, std::string(32, 'h')}, {229, std::string(24, 'i')},
            {253, std::string(24, 'j')}, {277, std::string(24, 'k')}, {309, "0123456789ABCDEF"},
            {325, std::string(24, 'm')}, {349, std::string(24, 'n')}, {373, std::string(24, 'o')},
            {397, std::string(24, 'p')}, {421, std::string(24, 'q')}, {445, std::string(24, 'r')},
            {469, std::string(24, 's')}, {493, std::string(24, 't')}, {517, std::string(21, 'u')},
            {538, std::string(4, 'v')},  {542, std::string(21, 'w')}, {563, std::string(12, 'x')},
            {575, std::string(21, 'y')}, {596, "59000FGHIJKLMN"},     {610, PartOfNotes(0, 64)},
            {674, std::string(12, 'B')}, {686, PartOfNotes(76, 85)},  {695, std::string(18, 'C')},
            {713, PartOfNotes(103, 128)}});
  EXPECT_TRUE(SameBytes(expected, Upgraded(old)));
}

TEST(UpgradeCardTest, BytesBehindTheEndOfATextStayBehind) {
  const std::string dirty("AB\0rest", 7);
  const FileBytes old = BytesWith(768, {{0, dirty}, {277, dirty}, {301, dirty}, {610, dirty}});
  EXPECT_TRUE(
      SameBytes(BytesWith(768, {{0, "AB"}, {277, "AB"}, {309, "AB"}, {610, "AB"}}), Upgraded(old)));
}

TEST(UpgradeCardTest, NotesThatFitStayWhole) {
  EXPECT_TRUE(SameBytes(BytesWith(768, {{610, Notes(64)}}), Upgraded(OldCard({{26, Notes(64)}}))));
}

// The 65th character runs into the next field and is cut by it, be it empty.
TEST(UpgradeCardTest, NotesOf65CharactersLoseTheLast) {
  EXPECT_TRUE(SameBytes(BytesWith(768, {{610, Notes(64)}}), Upgraded(OldCard({{26, Notes(65)}}))));
}

// What the fields behind do not reach of longer notes stays, without a warning.
TEST(UpgradeCardTest, LongNotesLeaveBytesBehind) {
  EXPECT_TRUE(SameBytes(BytesWith(768, {{610, PartOfNotes(0, 64)},
                                        {686, PartOfNotes(76, 85)},
                                        {713, PartOfNotes(103, 128)}}),
                        Upgraded(OldCard({{26, Notes(128)}}))));
  EXPECT_TRUE(SameBytes(BytesWith(768, {{610, PartOfNotes(0, 64)}, {686, PartOfNotes(76, 80)}}),
                        Upgraded(OldCard({{26, Notes(80)}}))));
}

TEST(UpgradeCardTest, TheFieldsBehindTheNotes) {
  EXPECT_TRUE(SameBytes(BytesWith(768, {{610, PartOfNotes(0, 64)},
                                        {674, "FR1"},
                                        {686, PartOfNotes(76, 85)},
                                        {695, "Lille"},
                                        {713, PartOfNotes(103, 128)}}),
                        Upgraded(OldCard({{26, Notes(128)}, {27, "FR1"}, {28, "Lille"}}))));
}

// The larger old field spills over the one behind, which is filled afterwards.
TEST(UpgradeCardTest, TheSparePersonFieldIsCutAt16) {
  const std::string spare = "0123456789ABCDEFGHIJKLMN";
  EXPECT_TRUE(
      SameBytes(BytesWith(768, {{309, "0123456789ABCDEF"}}), Upgraded(OldCard({{11, spare}}))));
  EXPECT_TRUE(SameBytes(BytesWith(768, {{309, "0123456789ABCDEF"}, {325, "ref"}}),
                        Upgraded(OldCard({{11, spare}, {12, "ref"}}))));
}

TEST(UpgradeCardTest, TheShortPostalCodeStartsTheLongOne) {
  EXPECT_TRUE(SameBytes(BytesWith(768, {{160, "59000"}, {596, "59000"}}),
                        Upgraded(OldCard({{5, "59000"}}))));
  EXPECT_TRUE(
      SameBytes(BytesWith(768, {{160, "75"}, {596, "75"}}), Upgraded(OldCard({{5, "75"}}))));
}

// All five bytes are copied, the zeros of a short code too.
TEST(UpgradeCardTest, TheShortPostalCodeReplacesFiveBytes) {
  EXPECT_TRUE(SameBytes(BytesWith(768, {{160, "75"}, {596, "75"}, {601, "FGHIJ"}}),
                        Upgraded(OldCard({{5, "75"}, {25, "ABCDEFGHIJ"}}))));
  EXPECT_TRUE(SameBytes(BytesWith(768, {{601, "FGHIJ"}}), Upgraded(OldCard({{25, "ABCDEFGHIJ"}}))));
}

TEST(UpgradeCardTest, ANameInTheTitleFieldMoves) {
  const FileBytes expected = BytesWith(768, {{253, "Jean"}, {277, "MARTIN"}});
  EXPECT_TRUE(SameBytes(expected, Upgraded(OldCard({{8, "MARTIN"}, {9, "Jean"}}))));
  for (const size_t blanks : {1U, 5U, 24U}) {
    EXPECT_TRUE(SameBytes(
        expected, Upgraded(OldCard({{8, "MARTIN"}, {9, "Jean"}, {10, std::string(blanks, ' ')}}))))
        << blanks;
  }
  EXPECT_TRUE(SameBytes(expected, Upgraded(OldCard({{8, "MARTIN"}, {9, "Jean"}, {10, " DUPONT"}}))))
      << "a name behind a blank counts as none";
}

// A title field without room for a zero ends at its own size, not in the first name.
TEST(UpgradeCardTest, ANameThatFillsTheTitleFieldMovesAlone) {
  const std::string name = "DE LA ROCHEFOUCAULD-BIS ";
  ASSERT_EQ(name.size(), 24U);
  EXPECT_TRUE(SameBytes(BytesWith(768, {{253, "Jean"}, {277, name}}),
                        Upgraded(OldCard({{8, name}, {9, "Jean"}}))));
}

TEST(UpgradeCardTest, ATitleBesideANameStays) {
  EXPECT_TRUE(SameBytes(BytesWith(768, {{229, "Mme"}, {277, "MARTIN"}}),
                        Upgraded(OldCard({{8, "Mme"}, {10, "MARTIN"}}))));
}

TEST(UpgradeCardTest, BlanksForANameStayWithoutATitle) {
  EXPECT_TRUE(SameBytes(BytesWith(768, {{277, "   "}}), Upgraded(OldCard({{10, "   "}}))));
}

class UpgradeFileTest : public StoreFixture {
 protected:
  // Opens this main file, as every front end does.
  OpenResult OpenOld(const FileBytes& file) {
    files.SetContents(Path(".DAN"), file);
    DirectoryOptions options;
    options.path = kStem;
    Directory directory(DirectoryServices{files, clock, progress}, options);
    return OpenUpgrading(directory, &upgraded);
  }
  // The same for a file that must be refused and stay as it is, alone in its folder.
  void ExpectRefused(const FileBytes& file) {
    EXPECT_EQ(OpenOld(file), OpenResult::kNoStore);
    EXPECT_TRUE(SameBytes(file, MainFile()));
    EXPECT_THAT(files.List("/carnets"), UnorderedElementsAre("ESSAI.DAN"));
  }

  bool upgraded = false;
};

TEST_F(UpgradeFileTest, AWholeFile) {
  EXPECT_EQ(
      OpenOld(OldMainFile({OldCard({{0, "ALPHA"}, {5, "59000"}, {11, "spare"}}),
                           OldCard({{8, "MARTIN"}, {26, Notes(128)}, {27, "x"}}), OldCard({})})),
      OpenResult::kOpened);
  EXPECT_TRUE(upgraded);
  EXPECT_TRUE(SameBytes(
      Joined({UpgradedHeader(3),
              BytesWith(768, {{0, "ALPHA"}, {160, "59000"}, {309, "spare"}, {596, "59000"}}),
              BytesWith(768, {{277, "MARTIN"},
                              {610, PartOfNotes(0, 64)},
                              {674, "x"},
                              {686, PartOfNotes(76, 85)},
                              {713, PartOfNotes(103, 128)}}),
              FileBytes(768)}),
      MainFile()));
  EXPECT_FALSE(files.Exists("/carnets/CARNDAN.TMP"));
}

TEST_F(UpgradeFileTest, AFileOfCardsForSeveralBuffers) {
  std::vector<FileBytes> old_cards;
  std::vector<FileBytes> cards = {UpgradedHeader(300)};
  for (int number = 0; number < 300; ++number) {
    const std::string name = "NOM " + std::to_string(number);
    old_cards.push_back(OldCard({{10, name}, {11, name}, {26, name}}));
    cards.push_back(BytesWith(768, {{277, name}, {309, name}, {610, name}}));
  }
  EXPECT_EQ(OpenOld(OldMainFile(old_cards)), OpenResult::kOpened);
  EXPECT_TRUE(SameBytes(Joined(cards), MainFile()));
}

TEST_F(UpgradeFileTest, AFileOfOneBlockBecomesAnEmptyDirectory) {
  EXPECT_EQ(OpenOld(OldHeader(0)), OpenResult::kOpened);
  EXPECT_TRUE(SameBytes(UpgradedHeader(0), MainFile()));
  EXPECT_EQ(LoadLe16(AddressFileBytes(), 96), 0);
}

TEST_F(UpgradeFileTest, AFileThatEndsInItsHeaderBlockBecomesAnEmptyDirectory) {
  FileBytes file = OldHeader(0);
  file.resize(108);
  EXPECT_EQ(OpenOld(file), OpenResult::kOpened);
  EXPECT_TRUE(SameBytes(UpgradedHeader(0), MainFile()));
}

TEST_F(UpgradeFileTest, TheSizeTellsTheCount) {
  EXPECT_EQ(OpenOld(Joined({OldHeader(9), OldCard({{0, "ALPHA"}})})), OpenResult::kOpened);
  EXPECT_TRUE(SameBytes(Joined({UpgradedHeader(1), BytesWith(768, {{0, "ALPHA"}})}), MainFile()));
}

TEST_F(UpgradeFileTest, APartialLastCardComesAlong) {
  const FileBytes first = OldCard({{0, "ALPHA"}, {10, "HUGO"}, {26, "longues notes"}});
  const FileBytes last = OldCard({{0, "TANGO"}, {6, "Lille"}, {10, "CAMUS"}});
  const std::vector<std::pair<size_t, std::vector<Piece>>> cuts = {
      {1, {{0, "T"}}},
      {170, {{0, "TANGO"}, {165, "Lille"}}},
      {279, {{0, "TANGO"}, {165, "Lille"}, {277, "CA"}}},
      {767, {{0, "TANGO"}, {165, "Lille"}, {277, "CAMUS"}}}};
  for (const auto& [size, kept] : cuts) {
    FileBytes file = OldMainFile({first, last});
    file.resize(768 * 2 + size);
    EXPECT_EQ(OpenOld(file), OpenResult::kOpened);
    const FileBytes whole = BytesWith(768, {{0, "ALPHA"}, {277, "HUGO"}, {610, "longues notes"}});
    EXPECT_TRUE(SameBytes(Joined({UpgradedHeader(2), whole, BytesWith(768, kept)}), MainFile()))
        << size;
  }
}

TEST_F(UpgradeFileTest, TheBannerKeepsItsLength) {
  EXPECT_EQ(OpenOld(OldMainFile({}, "CARNETEL VER 04.00")), OpenResult::kOpened);
  EXPECT_TRUE(SameBytes(UpgradedHeader(0, "CARNETEL VER 05.00"), MainFile()));
}

// The new version would land behind the old one, and every opening would convert the cards again.
TEST_F(UpgradeFileTest, ABannerThatGoesOnBehindItsVersionIsRefused) {
  ExpectRefused(OldMainFile({OldCard({{10, "HUGO"}})}, "CARNETEL VER 04.10 SUITE"));
  ExpectRefused(OldMainFile({OldCard({{10, "HUGO"}})}, "CARNETEL VER 04.10B"));
}

// A banner too short for the version becomes blank, and no reader finds a version there.
TEST_F(UpgradeFileTest, ABannerTooShortForTheVersionIsRefused) {
  ExpectRefused(OldMainFile({OldCard({{10, "HUGO"}})}, "VER 04.10"));
}

TEST_F(UpgradeFileTest, ACurrentFileIsOpenedAsItIs) {
  const FileBytes file = MainFileBytes({MakeCard("ALPHA", "HUGO")}, 1'000'000'000);
  EXPECT_EQ(OpenOld(file), OpenResult::kOpened);
  EXPECT_FALSE(upgraded);
  EXPECT_TRUE(SameBytes(file, MainFile()));
}

TEST_F(UpgradeFileTest, AnUpgradedFileIsNotUpgradedAgain) {
  OpenOld(OldMainFile({OldCard({{11, "0123456789ABCDEFGHIJ"}, {26, Notes(128)}})}));
  const FileBytes once = MainFile();
  EXPECT_EQ(OpenOld(once), OpenResult::kOpened);
  EXPECT_FALSE(upgraded);
  EXPECT_TRUE(SameBytes(once, MainFile()));
}

TEST_F(UpgradeFileTest, AMissingFileIsNotUpgraded) {
  EXPECT_FALSE(UpgradeMainFile(files, Path(".DAN")));
  EXPECT_TRUE(files.List("/carnets").empty());
}

}  // namespace
}  // namespace carnetel
