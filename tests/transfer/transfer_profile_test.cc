#include "transfer/transfer_profile.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "transfer/dbase_mapping.h"

namespace carnetel {
namespace {

using std::string_literals::operator""s;
using testing::ElementsAreArray;

std::vector<int> RanksOf(const TransferProfile& profile) {
  std::vector<int> ranks;
  for (int field = 0; field < kFieldCount; ++field) ranks.push_back(profile.rank(field));
  return ranks;
}

TEST(TransferProfile, StartsAsTheProgramBringsIt) {
  const TransferProfile profile;
  EXPECT_EQ(profile.name().bytes(), "Derni\x8Are Composition");
  EXPECT_EQ(profile.type(), 0);
  EXPECT_EQ(profile.field_separator(), "22h 2Ch");
  EXPECT_EQ(profile.card_separator(), "0Dh 0Ah");
  EXPECT_EQ(profile.first_card_offset(), 768);
  EXPECT_EQ(profile.card_size(), 768);
  EXPECT_THAT(RanksOf(profile),
              ElementsAreArray({4,  5,  6,  7,  7,  8,  9,  10, 1,  2, 3,  3, 16, 17, 18, 19,
                                20, 21, 11, 12, 14, 14, 13, 13, 15, 8, 23, 0, 0,  0,  0}));
}

TEST(TransferProfile, TheDefaultPlacesAreThoseOfACard) {
  const TransferProfile profile;
  for (int field = 0; field <= kPostalCode; ++field) {
    const FieldEntry& entry = kFieldTable[field];
    EXPECT_EQ(profile.place(field).position, entry.offset) << field;
    EXPECT_EQ(profile.place(field).size, entry.size) << field;
  }
  EXPECT_EQ(profile.place(kNotes), (FixedPlace{610, 128})) << "twice the field";
  for (int field = kSpare27; field <= kSpare30; ++field) {
    EXPECT_EQ(profile.place(field), FixedPlace{}) << field;
  }
}

TEST(TransferProfile, ANewInstallationHasOtherSeparators) {
  TransferProfile profile = TransferProfile::OfNewInstallation();
  EXPECT_EQ(profile.field_separator(), ";");
  EXPECT_EQ(profile.card_separator(), "CRLF");
  profile.set_field_separator("22h 2Ch");
  profile.set_card_separator("0Dh 0Ah");
  EXPECT_EQ(profile, TransferProfile());
}

TEST(TransferProfile, EverythingHasItsPlace) {
  TransferProfile profile;
  std::ranges::fill(profile.bytes(), std::byte{0});
  profile.set_name(OemText("Nom"));
  profile.set_type(TransferFileType::kDbase4);
  profile.set_field_separator_row(5);
  profile.set_field_separator("TAB");
  profile.set_card_separator_row(3);
  profile.set_card_separator("LF");
  profile.set_first_card_offset(-2);
  profile.set_card_size(258);
  profile.set_place(1, {3, 4});
  profile.set_place(30, {5, 6});
  profile.set_rank(0, 7);
  profile.set_rank(30, 513);
  std::string expected(236, '\0');
  expected.replace(0, 3, "Nom");
  expected[24] = 4;
  expected.replace(26, 4, "\x05TAB");
  expected.replace(36, 3, "\x03LF");
  expected.replace(46, 4, "\xFE\xFF\x02\x01");
  expected.replace(54, 4, "\x03\x00\x04\x00"s);
  expected.replace(170, 4, "\x05\x00\x06\x00"s);
  expected[174] = 7;
  expected.replace(234, 2, "\x01\x02");
  EXPECT_EQ(AsChars(profile.bytes()), expected);
}

TEST(TransferProfile, ANameOf23CharactersIsStoredWholeWithItsZero) {
  TransferProfile profile;
  profile.set_name(OemText("abcdefghijklmnopqrstuvwxyz"));
  EXPECT_EQ(profile.name().bytes(), "abcdefghijklmnopqrstuvw");
  EXPECT_EQ(LoadU8(profile.bytes(), 23), 0);
}

TEST(TransferProfile, ASeparatorIsCutAtEightCharacters) {
  TransferProfile profile;
  profile.set_field_separator("0Dh 0Ah 1Bh");
  EXPECT_EQ(profile.field_separator(), "0Dh 0Ah ");
  EXPECT_EQ(LoadU8(profile.bytes(), 35), 0);
}

TEST(TransferProfile, ClearedRanksLeaveNoFieldInALine) {
  TransferProfile profile;
  profile.ClearRanks();
  EXPECT_THAT(RanksOf(profile), testing::Each(0));
}

TEST(DbaseMapping, HasHeadAndRowsInOneSlot) {
  DbaseMapping mapping;
  mapping.name = OemText("IMPORT DBF");
  mapping.kind = kDbaseImportKind;
  mapping.file_name = OemText("CLIENTS.DBF");
  mapping.direction = TransferDirection::kExport;
  mapping.columns[0] = {OemText("STE1"), 32, 1, DbaseType::kCharacter, 2};
  mapping.columns[30] = {OemText("DATE_DEBUT_X"), 8, 0x01020304, DbaseType::kDate, -1};
  std::vector<std::byte> slot(kProfileSlotSize, std::byte{0xEE});
  mapping.Store(slot);
  std::string expected(628, '\0');
  expected.replace(0, 10, "IMPORT DBF");
  expected[24] = '\xFE';
  expected.replace(25, 11, "CLIENTS.DBF");
  expected[38] = 1;
  expected.replace(39, 4, "STE1");
  expected.replace(51, 7, "\x20\x01\x00\x00\x00\x00\x02"s);
  expected.replace(609, 11, "DATE_DEBUT_");  // eleven characters and a zero
  expected.replace(621, 7, "\x08\x04\x03\x02\x01\x02\xFF");
  EXPECT_EQ(AsChars(slot), expected);
}

TEST(DbaseMapping, ComesBackAsItWasStored) {
  DbaseMapping mapping;
  mapping.name = OemText("EXPORT DBF");
  mapping.kind = kDbaseExportKind;
  mapping.direction = TransferDirection::kExport;
  mapping.columns[7] = {OemText("PAYS"), 255, 0xFFFFFFFF, DbaseType::kNumber, 30};
  std::vector<std::byte> slot(kProfileSlotSize);
  mapping.Store(slot);
  EXPECT_EQ(DbaseMapping::Load(slot), mapping);
}

}  // namespace
}  // namespace carnetel
