#include "link/number_kind.h"

#include <gtest/gtest.h>

#include "base/string_table.h"

namespace carnetel {
namespace {

TEST(NumberKind, EveryByteThatNamesNoOtherKindIsTheFax) {
  EXPECT_EQ(NumberKindOf(2), NumberKind::kModem);
  EXPECT_EQ(NumberKindOf(4), NumberKind::kMinitel);
  EXPECT_EQ(NumberKindOf(8), NumberKind::kTel1);
  EXPECT_EQ(NumberKindOf(16), NumberKind::kTel2);
  for (const int byte : {0, 1, 3, 6, 10, 32, 255}) {
    EXPECT_EQ(NumberKindOf(static_cast<uint8_t>(byte)), NumberKind::kFax) << byte;
  }
  EXPECT_EQ(static_cast<int>(NumberKind::kFax), 1);
}

TEST(NumberKind, EachHasItsFieldTitleAndFlag) {
  const auto expect = [](NumberKind kind, int field, std::string_view title, int flag) {
    const NumberKindInfo info = InfoOf(kind);
    EXPECT_EQ(info.field, field);
    EXPECT_EQ(LoadText(info.title_id), title);
    EXPECT_EQ(info.entry_flag, flag) << title;
  };
  expect(NumberKind::kFax, 22, "N° Fax", 0x10);
  expect(NumberKind::kModem, 24, "N° Modem", 0x20);
  expect(NumberKind::kMinitel, 20, "N° Minitel", 0x40);
  expect(NumberKind::kTel1, 18, "N° Téléphone 1", 0x80);
  expect(NumberKind::kTel2, 19, "N° Téléphone 2", 0);
}

}  // namespace
}  // namespace carnetel
