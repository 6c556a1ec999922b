#include <gtest/gtest.h>
#include <pthread.h>
#include <unistd.h>

#include <atomic>
#include <sstream>
#include <thread>

#include "cli/interruptible_input.h"
#include "cli/run_cli.h"
#include "platform/directory_guard.h"
#include "platform/interrupt.h"
#include "platform/posix_file_system.h"
#include "tests/support/fresh_folder.h"

namespace carnetel {
namespace {

// The tool on the disk, with the guard that programs really share.
class PosixRun : public testing::Test {
 protected:
  int Run(std::vector<std::string> words) {
    std::istringstream in;
    std::ostringstream out;
    std::ostringstream err;
    const CliEnvironment environment{
        .files = files_,
        .clock = clock_,
        .in = in,
        .out = out,
        .err = err,
        .variables =
            [this](const std::string& name) {
              return name == "CARNETEL_HOME" ? folder_.path() + "home/sweet" : std::string();
            },
        .executable_folder = {},
        .version = {},
        .interrupted = [] { return false; },
        .take_guard = [](const std::string& path) -> std::shared_ptr<void> {
          return DirectoryGuard::Take(path, std::chrono::milliseconds(0));
        },
        .milliseconds = [] { return int64_t{0}; }};
    const int status = RunCli(words, environment);
    out_ = out.str();
    err_ = err.str();
    return status;
  }

  PosixFileSystem files_;
  SystemClock clock_;
  FreshFolder folder_;
  std::string out_;
  std::string err_;
};

TEST_F(PosixRun, ImportsTheSampleListsAndChecksIt) {
  const std::string directory = folder_.path() + "CLIENTS";
  ASSERT_EQ(Run({"-d", directory, "create"}), 0) << err_;
  const std::string sample = CARNETEL_SOURCE_DIR "/samples/correspondants.csv";
  ASSERT_EQ(Run({"-d", directory, "import", sample, "--charset", "ansi"}), 0) << err_;
  EXPECT_EQ(out_, "2000 fiches transférées\n");
  EXPECT_EQ(Run({"-d", folder_.path() + "clients.dan", "check"}), 0) << out_ << err_;
  EXPECT_EQ(Run({"-d", directory, "find", "Notes=Préfère"}), 0) << err_;
  EXPECT_TRUE(files_.Exists(folder_.path() + "home/sweet/CARNETEL.TRS"));
}

TEST_F(PosixRun, MarksMoveCardsOutAndDeleteThem) {
  const std::string directory = folder_.path() + "CLIENTS";
  ASSERT_EQ(Run({"-d", directory, "create"}), 0) << err_;
  for (const char* name : {"Ste1=A", "Ste1=B", "Ste1=C"}) {
    ASSERT_EQ(Run({"-d", directory, "add", name, "--mark"}), 0) << err_;
  }
  ASSERT_EQ(Run({"-d", directory, "unmark", "2"}), 0) << err_;
  const std::string file = folder_.path() + "s.csv";
  ASSERT_EQ(Run({"-d", directory, "export", file, "--columns", "Ste1,Ville"}), 0) << err_;
  EXPECT_EQ(AsChars(ReadStart(files_, file, 100)), "A;\r\nC;\r\n");
  ASSERT_EQ(Run({"-d", directory, "--yes", "delete", "--marked"}), 0) << err_;
  ASSERT_EQ(Run({"-d", directory, "list"}), 0) << err_;
  EXPECT_EQ(out_, "1   B\n");
}

TEST_F(PosixRun, CreateMakesTheFoldersThatAreMissing) {
  const std::string directory = folder_.path() + "essai/2026/CLIENTS";
  ASSERT_EQ(Run({"-d", directory, "create"}), 0) << err_;
  EXPECT_EQ(Run({"-d", directory, "check"}), 0) << out_;
}

TEST_F(PosixRun, NothingButCreateMakesFolders) {
  EXPECT_EQ(Run({"-d", folder_.path() + "essai/CLIENTS", "list"}), 1);
  EXPECT_EQ(Run({"-d", folder_.path() + "essai/CLIENTS", "add", "Nom=a"}), 1);
  EXPECT_FALSE(files_.Exists(folder_.path() + "essai"));
}

// Sparse files of sizes that no family has; none of them may take the memory of the machine.
TEST_F(PosixRun, DerivedFilesThatAreFarTooLargeAreMadeAnew) {
  const std::string directory = folder_.path() + "CLIENTS";
  ASSERT_EQ(Run({"-d", directory, "create"}), 0) << err_;
  ASSERT_EQ(Run({"-d", directory, "add", "Ste1=A"}), 0) << err_;
  constexpr uint64_t kFourGigabytes = uint64_t{1} << 32;
  for (const char* extension : {".ADR", ".I01", ".I02"}) {
    const std::string path = directory + extension;
    const uint64_t size = files_.Open(path, OpenMode::kRead)->Size();
    ASSERT_TRUE(files_.Open(path, OpenMode::kReadWrite)->Truncate(kFourGigabytes));
    EXPECT_EQ(Run({"-d", directory, "check"}), 1);
    EXPECT_TRUE(out_.starts_with(std::string(extension + 1) +
                                 " : le fichier est trop grand pour un carnetel\n"))
        << out_;
    EXPECT_EQ(Run({"-d", directory, "list"}), 0) << err_;
    EXPECT_EQ(out_, "1   A\n");
    EXPECT_EQ(files_.Open(path, OpenMode::kRead)->Size(), size) << extension;
  }
  EXPECT_EQ(Run({"-d", directory, "check"}), 0) << out_;
}

// Offsets of cards have 32 bits.
TEST_F(PosixRun, AMainFileBeyondFourGigabytesIsRefusedAndLeftAsItIs) {
  const std::string directory = folder_.path() + "CLIENTS";
  ASSERT_EQ(Run({"-d", directory, "create"}), 0) << err_;
  const std::string path = directory + ".DAN";
  constexpr uint64_t kFiveGigabytes = uint64_t{5} << 30;
  ASSERT_TRUE(files_.Open(path, OpenMode::kReadWrite)->Truncate(kFiveGigabytes));
  EXPECT_EQ(Run({"-d", directory, "list"}), 1);
  EXPECT_NE(err_.find("Carnetel non valide"), std::string::npos) << err_;
  EXPECT_EQ(Run({"-d", directory, "check"}), 1);
  EXPECT_EQ(out_, "DAN : le fichier est trop grand pour un carnetel\n");
  EXPECT_EQ(files_.Open(path, OpenMode::kRead)->Size(), kFiveGigabytes);
}

TEST_F(PosixRun, AScriptOrAProfileThatIsFarTooLargeIsNotRead) {
  const std::string directory = folder_.path() + "CLIENTS";
  ASSERT_EQ(Run({"-d", directory, "create"}), 0) << err_;
  const std::string large = folder_.path() + "large";
  ASSERT_TRUE(files_.Open(large, OpenMode::kCreateOrOpen)->Truncate(uint64_t{1} << 40));
  EXPECT_EQ(Run({"-d", directory, "batch", large}), 1);
  EXPECT_EQ(err_, "Erreur : Accès au fichier " + large + " impossible\n");
  EXPECT_EQ(Run({"-d", directory, "--profile", large, "list"}), 0) << err_;
}

TEST_F(PosixRun, AHeldGuardKeepsTheToolOut) {
  const std::string directory = folder_.path() + "CLIENTS";
  ASSERT_EQ(Run({"-d", directory, "create"}), 0) << err_;
  const auto held =
      DirectoryGuard::Take(files_.Canonical(directory + ".ADR"), std::chrono::milliseconds(0));
  ASSERT_NE(held, nullptr);
  EXPECT_EQ(Run({"-d", directory, "list"}), 1);
  EXPECT_NE(err_.find("ouvert par un autre programme"), std::string::npos);
}

TEST(InterruptibleInput, GivesWhatComesAndEndsForGood) {
  std::array<int, 2> ends{};
  ASSERT_EQ(::pipe(ends.data()), 0);
  ASSERT_EQ(::write(ends[1], "un\ndeux", 7), 7);
  ::close(ends[1]);
  InterruptibleInput input(ends[0]);
  std::istream in(&input);
  std::string line;
  EXPECT_TRUE(std::getline(in, line));
  EXPECT_EQ(line, "un");
  EXPECT_TRUE(std::getline(in, line));
  EXPECT_EQ(line, "deux");
  EXPECT_FALSE(std::getline(in, line));
  ::close(ends[0]);
}

TEST(InterruptibleInput, EndsWhenASignalComesDuringTheWait) {
  std::array<int, 2> ends{};
  ASSERT_EQ(::pipe(ends.data()), 0);
  const InterruptFlag interrupt;
  InterruptibleInput input(ends[0]);
  std::istream in(&input);
  // Signals go on until one has met the wait.
  std::atomic<bool> waiting = true;
  const pthread_t reader = ::pthread_self();
  std::thread sender([&] {
    while (waiting) {
      ::pthread_kill(reader, SIGINT);
      std::this_thread::yield();
    }
  });
  std::string line;
  EXPECT_FALSE(std::getline(in, line));
  waiting = false;
  sender.join();
  EXPECT_TRUE(interrupt.requested());
  ::close(ends[0]);
  ::close(ends[1]);
}

}  // namespace
}  // namespace carnetel
