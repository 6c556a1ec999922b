#include "selection/group_list.h"

#include <gtest/gtest.h>

#include "platform/memory_file_system.h"

namespace carnetel {
namespace {

class GroupListTest : public testing::Test {
 protected:
  // A file that announces `rows` rows, row 0 among them.
  static std::string Header(char rows) {
    std::string file(176, '\0');
    file[96] = rows;
    file[98] = 80;
    return file;
  }
  static std::string Row(const std::string& name, char slot, char mode) {
    std::string row = name;
    row.resize(80);
    row[72] = slot;
    row[77] = mode;
    return row;
  }
  std::vector<GroupRow> Read(const std::string& file) {
    files_.SetContents("/d/X.GRP", AsBytes(file));
    return ReadGroups(files_, "/d/X.GRP");
  }

  FakeClock clock_;
  MemoryFileSystem files_{clock_};
};

TEST_F(GroupListTest, ReadsTheRowsBehindTheWholeFile) {
  const auto groups = Read(Header(3) + Row("Tout le Fichier ", 0, 0) + Row("Clients", 4, 1) +
                           Row(std::string(32, 'x'), 88, 0));
  ASSERT_EQ(groups.size(), 2U);
  EXPECT_EQ(groups[0].name.bytes(), "Clients");
  EXPECT_EQ(groups[0].slot, 4);
  EXPECT_EQ(groups[0].mode, 1);
  EXPECT_EQ(groups[1].name.bytes(), std::string(32, 'x'));
  EXPECT_EQ(groups[1].slot, 88);
}

TEST_F(GroupListTest, AMissingOrShortFileHasNoGroups) {
  EXPECT_TRUE(ReadGroups(files_, "/d/X.GRP").empty());
  EXPECT_TRUE(Read("").empty());
  EXPECT_TRUE(Read(Header(4) + Row("Tout le Fichier ", 0, 0)).empty());
  EXPECT_EQ(Read(Header(4) + Row("", 0, 0) + Row("A", 2, 0) + "cut").size(), 1U);
}

TEST_F(GroupListTest, RowsWithAnImpossibleSlotAreLeftOut) {
  EXPECT_TRUE(Read(Header(5) + Row("", 0, 0) + Row("a", 0, 0) + Row("b", 3, 0) + Row("c", 90, 0) +
                   Row("d", static_cast<char>(-2), 0))
                  .empty());
}

}  // namespace
}  // namespace carnetel
