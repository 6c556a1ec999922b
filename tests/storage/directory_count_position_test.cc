// Where the count and the stamp are written: the header tells it.
#include <gtest/gtest.h>

#include "storage/card_dispatch.h"
#include "tests/storage/store_fixture.h"

namespace carnetel {
namespace {

class CountPosition : public ::testing::Test {
 protected:
  // The main file of two cards, told to keep its count at `position`, after a third card came.
  std::vector<std::byte> AddWithCountAt(uint32_t position) {
    {
      Directory directory({files_, clock_, progress_}, Options());
      EXPECT_EQ(directory.OpenDirectory(), OpenResult::kCreated);
      AddCard(directory, "Alpha");
      AddCard(directory, "Beta");
    }
    std::vector<std::byte> bytes = files_.Contents("/X.DAN");
    StoreLe32(bytes, 88, position);
    files_.SetContents("/X.DAN", bytes);
    Directory directory({files_, clock_, progress_}, Options());
    EXPECT_EQ(directory.OpenDirectory(), OpenResult::kOpened);
    AddCard(directory, "Gamma");
    directory.CloseDirectory();
    return files_.Contents("/X.DAN");
  }

  static DirectoryOptions Options() {
    DirectoryOptions options;
    options.path = "/X";
    return options;
  }

  static void AddCard(Directory& directory, const std::string& company) {
    directory.context().current.Clear();
    directory.context().current.SetField(kSte1, OemText(company));
    uint32_t position = 0;
    EXPECT_EQ(CardDispatch(directory).Add(false, &position), 0);
  }

  FakeClock clock_{1000000000};
  MemoryFileSystem files_{clock_};
  SilentProgress progress_;
};

TEST_F(CountPosition, IsTakenFromTheHeader) {
  const std::vector<std::byte> bytes = AddWithCountAt(600);
  EXPECT_EQ(LoadLe16(bytes, 96), 2);
  EXPECT_EQ(LoadLe16(bytes, 600), 3);
  EXPECT_EQ(LoadLe32(bytes, 606), 1000000000u);
}

TEST_F(CountPosition, NeverLeadsIntoACard) {
  const std::vector<std::byte> bytes = AddWithCountAt(768 + 100);
  EXPECT_EQ(LoadLe16(bytes, 96), 3);
  CardRecord first;
  std::copy_n(bytes.begin() + 768, kCardSize, first.bytes().begin());
  first.set_write_time(0);
  CardRecord expected;
  expected.SetField(kSte1, OemText("Alpha"));
  EXPECT_EQ(first, expected);
}

}  // namespace
}  // namespace carnetel
