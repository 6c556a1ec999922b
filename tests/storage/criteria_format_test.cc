#include "storage/criteria_format.h"

#include <gtest/gtest.h>

#include "tests/storage/store_fixture.h"

namespace carnetel {
namespace {

TEST(CriteriaFormatTest, TheFileOfANewDirectoryHasAnEmptyWorkingSet) {
  FileBytes expected(295);
  StorePadded(expected, 0, 30, "CARNETEL DROV SOFTW. VER 05.00");
  StorePadded(expected, 32, 2, "\r\n");
  StorePadded(expected, 77, 2, "\r\n");
  // Byte 79 is 0 here and 1Ah in a file that the criteria make.
  StorePadded(expected, 80, 4, "\xD6\xA9\x06\x01");
  StorePadded(expected, 84, 4, std::string_view("\x33\x00\x02\x00", 4));
  StorePadded(expected, 88, 4, std::string_view("\x60\x00\x00\x00", 4));
  StorePadded(expected, 92, 4, std::string_view("\x80\x00\x00\x00", 4));
  StorePadded(expected, 96, 2, std::string_view("\x06\x00", 2));
  StorePadded(expected, 98, 2, std::string_view("\x17\x00", 2));
  StorePadded(expected, 128, 18,
              "\x44\x65\x72\x6E\x69\x8A\x72\x65\x20\x53\x82\x6C\x65\x63\x74\x69\x6F\x6E");
  EXPECT_TRUE(SameBytes(expected, DefaultCriteriaFile()));
}

class CriteriaFileTest : public StoreFixture {};

TEST_F(CriteriaFileTest, ItComesWithANewDirectory) {
  Open();
  EXPECT_TRUE(SameBytes(DefaultCriteriaFile(), Contents(".CRT")));
}

TEST_F(CriteriaFileTest, ItIsMadeWhenItIsMissing) {
  Open();
  Close();
  files.Remove(Path(".CRT"));
  Open();
  EXPECT_TRUE(SameBytes(DefaultCriteriaFile(), Contents(".CRT")));
}

TEST_F(CriteriaFileTest, OneThatIsThereIsLeftAlone) {
  Open();
  Close();
  files.SetContents(Path(".CRT"), AsBytes("d'un autre"));
  Open();
  EXPECT_TRUE(SameBytes(AsBytes("d'un autre"), Contents(".CRT")));
}

}  // namespace
}  // namespace carnetel
