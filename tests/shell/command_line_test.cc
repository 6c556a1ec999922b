#include "shell/command_line.h"

#include <gtest/gtest.h>

#include <array>

namespace carnetel {
namespace {

TEST(CommandLine, JoinsArgumentsWithOneBlank) {
  const std::array<const char*, 4> arguments = {"carnetel", "/X", "/data/Mes fiches", "-q"};
  EXPECT_EQ(JoinArguments(4, arguments.data()), "/X /data/Mes fiches -q");
  EXPECT_EQ(JoinArguments(1, arguments.data()), "");
}

TEST(CommandLine, WithoutOptionsStartsTheMainWindow) {
  const StartupRequest request = ParseCommandLine("");
  EXPECT_FALSE(request.direct_open);
  EXPECT_EQ(request.direct_path, "");
  EXPECT_EQ(request.app_argument, "");
  EXPECT_EQ(request.exchange_file_path, "");
  EXPECT_EQ(request.launch_type, 0);
  EXPECT_EQ(request.caller_window, 0u);
  EXPECT_EQ(request.caller_argument, 0);
  EXPECT_EQ(request.appli_name, "");
  EXPECT_EQ(request.workstation_number, 0);
}

TEST(CommandLine, OptionXTakesTheRestAsPath) {
  const StartupRequest request = ParseCommandLine("/X   /data/Mes fiches/A.DAN");
  EXPECT_TRUE(request.direct_open);
  EXPECT_EQ(request.direct_path, "/data/Mes fiches/A.DAN");
}

TEST(CommandLine, OptionXSkipsTheCharacterBehindIt) {
  EXPECT_EQ(ParseCommandLine("/XABC").direct_path, "BC");
  EXPECT_EQ(ParseCommandLine("/X/data/A").direct_path, "data/A");
  EXPECT_EQ(ParseCommandLine("/X").direct_path, "");
  EXPECT_TRUE(ParseCommandLine("/X").direct_open);
}

TEST(CommandLine, OptionXCountsOnlyAtTheStartOrBehindABlank) {
  EXPECT_FALSE(ParseCommandLine("-APP a -FILE /data/Xyz/f -TYPE 2").direct_open);
  EXPECT_EQ(ParseCommandLine("-APP a -FILE /data/Xyz/f -TYPE 2").launch_type, 2);
  EXPECT_EQ(ParseCommandLine("a/Xb /X c").direct_path, "c");
  EXPECT_FALSE(ParseCommandLine("/x /data/A").direct_open);
}

TEST(CommandLine, OptionXIsTheOnlyOneThen) {
  const StartupRequest request = ParseCommandLine("-APP a -FILE f -TYPE 2 /X /data/A");
  EXPECT_TRUE(request.direct_open);
  EXPECT_EQ(request.direct_path, "/data/A");
  EXPECT_EQ(request.launch_type, 0);
  EXPECT_EQ(request.app_argument, "");
}

TEST(CommandLine, ReadsEveryOption) {
  const StartupRequest request = ParseCommandLine(
      "-APP un texte -FILE /tmp/mes fichiers/echange.dat   -TYPE 12 -HWND 4294967295 -NUM -3 "
      "-APPLI FAXDROV -NUMP 4");
  EXPECT_EQ(request.app_argument, "un texte");
  EXPECT_EQ(request.exchange_file_path, "/tmp/mes fichiers/echange.dat");
  EXPECT_EQ(request.launch_type, 12);
  EXPECT_EQ(request.caller_window, 4294967295u);
  EXPECT_EQ(request.caller_argument, -3);
  EXPECT_EQ(request.appli_name, "FAXDROV");
  EXPECT_EQ(request.workstation_number, 4);
}

TEST(CommandLine, NeedsAllThreeOptionsInOrder) {
  for (const char* line :
       {"-FILE f -TYPE 2", "-APP a -TYPE 2", "-APP a -FILE f", "-FILE f -APP a -TYPE 2",
        "-TYPE 2 -APP a -FILE f", "-app a -file f -type 2"}) {
    const StartupRequest request = ParseCommandLine(line);
    EXPECT_EQ(request.launch_type, 0) << line;
    EXPECT_EQ(request.app_argument, "") << line;
    EXPECT_EQ(request.exchange_file_path, "") << line;
  }
}

TEST(CommandLine, EmptyValuesStayEmpty) {
  const StartupRequest request = ParseCommandLine("-APP -FILE -TYPE 6");
  EXPECT_EQ(request.app_argument, "");
  EXPECT_EQ(request.exchange_file_path, "");
  EXPECT_EQ(request.launch_type, 6);
}

TEST(CommandLine, PathsMayHoldTheNamesOfOptions) {
  const StartupRequest request = ParseCommandLine("-APP a -FILE /d/x-FILE y -TYPE z/f -TYPE 6");
  EXPECT_EQ(request.exchange_file_path, "/d/x-FILE y -TYPE z/f");
  EXPECT_EQ(request.launch_type, 6);
}

struct Mismatch {
  const char* numbers;
  int32_t type;
  uint32_t window;
  int32_t number;
  const char* name;
  int32_t seat;
};

class CommandLineMismatch : public ::testing::TestWithParam<Mismatch> {};

TEST_P(CommandLineMismatch, KeepsTheDefaultsBehindIt) {
  const Mismatch& expected = GetParam();
  const StartupRequest request =
      ParseCommandLine(std::string("-APP a -FILE f ") + expected.numbers);
  EXPECT_EQ(request.launch_type, expected.type);
  EXPECT_EQ(request.caller_window, expected.window);
  EXPECT_EQ(request.caller_argument, expected.number);
  EXPECT_EQ(request.appli_name, expected.name);
  EXPECT_EQ(request.workstation_number, expected.seat);
  // The two texts in front do not depend on the numbers.
  EXPECT_EQ(request.app_argument, "a");
  EXPECT_EQ(request.exchange_file_path, "f");
}

INSTANTIATE_TEST_SUITE_P(
    All, CommandLineMismatch,
    ::testing::Values(Mismatch{"-TYPE x -HWND 5 -NUM 6 -APPLI B -NUMP 7", 0, 0, 0, "", 0},
                      Mismatch{"-TYPE", 0, 0, 0, "", 0}, Mismatch{"-TYPE 2", 2, 0, 0, "", 0},
                      Mismatch{"-TYPE 2 -hwnd 5 -NUM 6 -APPLI B -NUMP 7", 2, 0, 0, "", 0},
                      Mismatch{"-TYPE 2 -HWND - -NUM 6 -APPLI B -NUMP 7", 2, 0, 0, "", 0},
                      Mismatch{"-TYPE 2 -HWND 5 -NUMP 7", 2, 5, 0, "", 0},
                      Mismatch{"-TYPE 2 -HWND 5 -NUM x -APPLI B -NUMP 7", 2, 5, 0, "", 0},
                      Mismatch{"-TYPE 2 -HWND 5 -NUM 6 -NUMP 7", 2, 5, 6, "", 0},
                      Mismatch{"-TYPE 2 -HWND 5 -NUM 6 -APPLI", 2, 5, 6, "", 0},
                      // One word, whatever it is.
                      Mismatch{"-TYPE 2 -HWND 5 -NUM 6 -APPLI -NUMP 7", 2, 5, 6, "-NUMP", 0},
                      Mismatch{"-TYPE 2 -HWND 5 -NUM 6 -APPLI B C -NUMP 7", 2, 5, 6, "B", 0},
                      Mismatch{"-TYPE 2 -HWND 5 -NUM 6 -APPLI B -NUMP x", 2, 5, 6, "B", 0},
                      // Blanks of the pattern stand for any number of blanks, none included.
                      Mismatch{"-TYPE2-HWND5-NUM6-APPLI B   -NUMP   7", 2, 5, 6, "B", 7},
                      Mismatch{"-TYPE -7 -HWND +5 -NUM +6 -APPLI B -NUMP -1", -7, 5, 6, "B", -1}));

}  // namespace
}  // namespace carnetel
