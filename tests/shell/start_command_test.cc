#include "shell/start_command.h"

#include <gmock/gmock.h>

#include <filesystem>

#include "platform/memory_file_system.h"

namespace carnetel {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Words = std::vector<std::string>;

TEST(SplitCommand, BlanksPartWordsAndQuotesHoldThemTogether) {
  EXPECT_THAT(SplitCommand("/opt/fax /X"), ElementsAre("/opt/fax", "/X"));
  EXPECT_THAT(SplitCommand("  a \t b  "), ElementsAre("a", "b"));
  EXPECT_THAT(SplitCommand("\"/mes programmes/fax\" -o \"un deux\" /X"),
              ElementsAre("/mes programmes/fax", "-o", "un deux", "/X"));
  EXPECT_THAT(SplitCommand("dossier\" un\"/fax"), ElementsAre("dossier un/fax"));
  EXPECT_THAT(SplitCommand("-n \"\" \"\"\"cité\"\"\""), ElementsAre("-n", "", "\"cité\""));
  EXPECT_THAT(SplitCommand(""), IsEmpty());
  EXPECT_THAT(SplitCommand("  "), IsEmpty());
}

class StartCommandTest : public testing::Test {
 protected:
  StartCommandTest() {
    files_.MakeFolder("/mes programmes");
    files_.SetContents("/mes programmes/fax", {});
    files_.SetContents("/mes", {});
  }
  bool Start(std::string_view line) {
    return StartCommand(files_, line, [this](const Words& words, const std::string& folder) {
      words_ = words;
      folder_ = folder;
      return works_;
    });
  }

  FakeClock clock_{1'000'000'000};
  MemoryFileSystem files_{clock_};
  bool works_ = true;
  Words words_ = {"not asked"};
  std::string folder_;
};

TEST_F(StartCommandTest, BeginsInTheFolderOfTheProgram) {
  EXPECT_TRUE(Start("/opt/suite/fax /X"));
  EXPECT_THAT(words_, ElementsAre("/opt/suite/fax", "/X"));
  EXPECT_EQ(folder_, "/opt/suite/");
}

TEST_F(StartCommandTest, AProgramWithoutFolderIsTheSystemsToFind) {
  EXPECT_TRUE(Start("fax /X"));
  EXPECT_THAT(words_, ElementsAre("fax", "/X"));
  EXPECT_EQ(folder_, "");
}

TEST_F(StartCommandTest, ARelativePathCountsFromTheCurrentFolder) {
  const std::string folder = std::filesystem::current_path().string() + "/outils/";
  EXPECT_TRUE(Start("outils/fax"));
  EXPECT_THAT(words_, ElementsAre(folder + "fax"));
  EXPECT_EQ(folder_, folder);
}

TEST_F(StartCommandTest, APathWithBlanksNeedsNoQuotesWhenItsFileIsThere) {
  EXPECT_TRUE(Start("/mes programmes/fax /F"));
  // What comes first wins, as short as it is.
  EXPECT_THAT(words_, ElementsAre("/mes", "programmes/fax", "/F"));
  files_.Remove("/mes");
  EXPECT_TRUE(Start("/mes programmes/fax /F"));
  EXPECT_THAT(words_, ElementsAre("/mes programmes/fax", "/F"));
  EXPECT_EQ(folder_, "/mes programmes/");
  // A folder is no program.
  EXPECT_TRUE(Start("/mes programmes"));
  EXPECT_THAT(words_, ElementsAre("/mes", "programmes"));
}

TEST_F(StartCommandTest, WhatCannotBeStartedIsSaid) {
  works_ = false;
  EXPECT_FALSE(Start("/opt/fax"));
  words_ = {"not asked"};
  works_ = true;
  EXPECT_FALSE(Start("  "));
  EXPECT_FALSE(Start("\"\" /X"));
  EXPECT_THAT(words_, ElementsAre("not asked"));
}

}  // namespace
}  // namespace carnetel
