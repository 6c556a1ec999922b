#include "storage/group_format.h"

#include <gtest/gtest.h>

#include "tests/support/same_bytes.h"

namespace carnetel {
namespace {

TEST(GroupFormatTest, TheHeaderOfANewFile) {
  FileBytes expected(176);
  StorePadded(expected, 0, 32, "CARNETEL (C) DROV SOFTWARE 1992");
  StorePadded(expected, 32, 2, "\r\n");
  StorePadded(expected, 34, 43, "Fichier carnetel d'adresses ver 04.10");
  StorePadded(expected, 77, 3, "\r\n\x1A");
  StorePadded(expected, 80, 4, "\xD6\xA9\x06\x01");
  StorePadded(expected, 84, 4, std::string_view("\x00\x01\x00\x00", 4));
  StorePadded(expected, 92, 4, std::string_view("\xB0\x00\x00\x00", 4));
  StorePadded(expected, 96, 2, std::string_view("\x01\x00", 2));
  StorePadded(expected, 98, 2, std::string_view("\x50\x00", 2));
  StorePadded(expected, 100, 64, "/carnets/\x90t\x82.ADR");
  EXPECT_TRUE(SameBytes(expected, NewGroupHeader(OemText("/carnets/\x90t\x82.ADR"))));
}

TEST(GroupFormatTest, ALongPathIsCutAt64BytesAndLeavesTheRestZero) {
  const std::string path = "/" + std::string(62, 'a') + "bcdef/X.ADR";
  const auto header = NewGroupHeader(OemText(path));
  EXPECT_EQ(AsChars(ByteView(header).subspan(100, 64)), path.substr(0, 64));
  EXPECT_EQ(AsChars(ByteView(header).subspan(164)), std::string(12, '\0'));
}

TEST(GroupFormatTest, TheRowOfTheWholeFile) {
  FileBytes expected(80);
  StorePadded(expected, 0, 32, "Tout le Fichier ");
  StorePadded(expected, 32, 16, "MES.ADR");
  StorePadded(expected, 48, 24, "Sans Nom");
  EXPECT_TRUE(SameBytes(expected, WholeFileRow(OemText("MES.ADR")).bytes()));
}

TEST(GroupFormatTest, AFileNameIsCutAt16Bytes) {
  const GroupRecord row = WholeFileRow(OemText("CARNET-D-ADRESSES.ADR"));
  EXPECT_EQ(AsChars(row.bytes().subspan(32, 24)), "CARNET-D-ADRESSESans Nom");
}

GroupRecord Numbered() {
  GroupRecord row;
  for (size_t i = 0; i < 80; ++i) row.bytes()[i] = static_cast<std::byte>(0x80 + i);
  return row;
}

TEST(GroupFormatTest, EachSetterWritesItsOwnPlaceAndNothingElse) {
  GroupRecord row = Numbered();
  FileBytes expected(row.bytes().begin(), row.bytes().end());
  row.set_name(OemText("Clients \x90"));
  StorePadded(expected, 0, 32, "Clients \x90");
  EXPECT_TRUE(SameBytes(expected, row.bytes()));
  row.set_file_name(OemText("X.ADR"));
  StorePadded(expected, 32, 16, "X.ADR");
  EXPECT_TRUE(SameBytes(expected, row.bytes()));
  row.set_set_name(AnsiText("Soci\xE9t\xE9s"));
  StorePadded(expected, 48, 24, "Soci\xE9t\xE9s");
  EXPECT_TRUE(SameBytes(expected, row.bytes()));
  row.set_slot(88);
  row.set_rows(0x1234, 0xFFFE);
  row.set_mode(1);
  StorePadded(expected, 72, 6, "\x58\x34\x12\xFE\xFF\x01");
  EXPECT_TRUE(SameBytes(expected, row.bytes()));
}

TEST(GroupFormatTest, EachGetterReadsItsOwnPlace) {
  GroupRecord row = Numbered();
  StorePadded(row.bytes(), 0, 32, "Clients");
  StorePadded(row.bytes(), 48, 24, "Soci\xE9t\xE9s");
  EXPECT_EQ(row.name(), OemText("Clients"));
  EXPECT_EQ(row.set_name_shown(), AnsiText("Soci\xE9t\xE9s"));
  EXPECT_EQ(row.slot(), 0x80 + 72);
  EXPECT_EQ(row.current_row(), 0xCAC9);
  EXPECT_EQ(row.top_row(), 0xCCCB);
  EXPECT_EQ(row.mode(), 0x80 + 77);
}

TEST(GroupFormatTest, ANameThatFillsItsPlaceHasNoTerminator) {
  GroupRecord row;
  row.set_name(OemText(std::string(40, 'x')));
  row.set_set_name(AnsiText(std::string(40, 'y')));
  StorePadded(row.bytes(), 32, 1, "F");
  row.set_slot(2);
  EXPECT_EQ(row.name(), OemText(std::string(32, 'x')));
  EXPECT_EQ(row.set_name_shown(), AnsiText(std::string(24, 'y')));
  EXPECT_EQ(row.slot(), 2);
}

TEST(GroupFormatTest, SlotsAreTheEvenNumbersFrom2To88) {
  size_t slots = 0;
  for (unsigned slot = 0; slot <= 255; ++slot) {
    GroupRecord row;
    row.set_slot(static_cast<uint8_t>(slot));
    EXPECT_EQ(row.HasSlot(), slot % 2 == 0 && slot >= 2 && slot <= 88) << slot;
    if (row.HasSlot()) ++slots;
  }
  EXPECT_EQ(slots, 44U);
  EXPECT_EQ(kMostGroups, 44U);
}

}  // namespace
}  // namespace carnetel
