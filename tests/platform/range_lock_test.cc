// Locks on ranges of bytes, by which several seats keep out of each other's way: the same on the
// machine's files, in memory and through the views over both.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <csignal>
#include <functional>
#include <memory>
#include <ostream>
#include <string>

#include "platform/fault_file_system.h"
#include "platform/memory_file_system.h"
#include "platform/overlay_file_system.h"
#include "platform/posix_file_system.h"
#include "tests/support/fresh_folder.h"
#include "tests/support/gated_file_system.h"

namespace carnetel {
namespace {

using std::chrono::milliseconds;

// A file system with one file of 10 bytes, and the same files seen another way.
struct Lockable {
  virtual ~Lockable() = default;
  virtual FileSystem& files() = 0;
  virtual FileSystem& view() = 0;
  virtual std::string path() = 0;
};

struct OnTheDisk : Lockable {
  OnTheDisk() { posix.Open(path(), OpenMode::kCreateOrEmpty)->Write(0, AsBytes("0123456789")); }
  FileSystem& files() override { return posix; }
  FileSystem& view() override { return other; }
  std::string path() override { return folder.path() + "file"; }
  FreshFolder folder;
  PosixFileSystem posix;
  PosixFileSystem other;
};

struct InMemory : Lockable {
  InMemory() { memory.SetContents(path(), AsBytes("0123456789")); }
  FileSystem& files() override { return memory; }
  FileSystem& view() override { return memory; }
  std::string path() override { return "/file"; }
  FakeClock clock;
  MemoryFileSystem memory{clock};
};

struct ThroughAFault : InMemory {
  FileSystem& view() override { return fault; }
  FaultFileSystem fault{memory};
};

struct ThroughAnOverlay : InMemory {
  FileSystem& view() override { return overlay; }
  OverlayFileSystem overlay{memory, clock};
};

struct LockCase {
  std::string name;
  std::function<std::unique_ptr<Lockable>()> make;
};

void PrintTo(const LockCase& lock_case, std::ostream* out) {
  *out << lock_case.name;
}

class RangeLockTest : public ::testing::TestWithParam<LockCase> {
 protected:
  std::unique_ptr<RangeLock> Lock(uint64_t offset, uint64_t size) {
    return system_->files().LockRange(system_->path(), offset, size);
  }
  bool OthersMayLock(uint64_t offset, uint64_t size) {
    return system_->view().LockRange(system_->path(), offset, size) != nullptr;
  }

  std::unique_ptr<Lockable> system_ = GetParam().make();
};

template <class System>
LockCase CaseOf(std::string name) {
  return {std::move(name), [] { return std::make_unique<System>(); }};
}

INSTANTIATE_TEST_SUITE_P(Systems, RangeLockTest,
                         ::testing::Values(CaseOf<OnTheDisk>("Posix"), CaseOf<InMemory>("Memory"),
                                           CaseOf<ThroughAFault>("Fault"),
                                           CaseOf<ThroughAnOverlay>("Overlay")),
                         [](const auto& test) { return test.param.name; });

TEST_P(RangeLockTest, AHeldRangeKeepsOthersOutUntilItGoes) {
  std::unique_ptr<RangeLock> lock = Lock(768, 768);
  ASSERT_NE(lock, nullptr);
  EXPECT_FALSE(OthersMayLock(768, 768));
  lock.reset();
  EXPECT_TRUE(OthersMayLock(768, 768));
}

TEST_P(RangeLockTest, RangesThatShareAByteConflictAndNeighboursDoNot) {
  const std::unique_ptr<RangeLock> lock = Lock(768, 768);
  EXPECT_FALSE(OthersMayLock(0, 769));
  EXPECT_FALSE(OthersMayLock(1535, 1));
  EXPECT_FALSE(OthersMayLock(0, 5000));
  EXPECT_TRUE(OthersMayLock(0, 768));
  EXPECT_TRUE(OthersMayLock(1536, 768));
}

TEST_P(RangeLockTest, ATryThatFailedLeavesNothingLocked) {
  std::unique_ptr<RangeLock> lock = Lock(10, 10);
  EXPECT_EQ(Lock(15, 10), nullptr);
  EXPECT_TRUE(OthersMayLock(20, 5));
  lock.reset();
  EXPECT_TRUE(OthersMayLock(10, 15));
}

TEST_P(RangeLockTest, TheRangeMayLieFarBehindTheEndOfTheFile) {
  const std::unique_ptr<RangeLock> lock = Lock(0x7FFFFF00, 1);
  ASSERT_NE(lock, nullptr);
  EXPECT_FALSE(OthersMayLock(0x7FFFFF00, 1));
  EXPECT_EQ(system_->files().Open(system_->path(), OpenMode::kRead)->Size(), 10U);
}

TEST_P(RangeLockTest, AFileThatIsNotThereCannotBeLockedAndIsNotMade) {
  EXPECT_EQ(system_->view().LockRange(system_->path() + "2", 0, 1), nullptr);
  EXPECT_FALSE(system_->files().Exists(system_->path() + "2"));
}

TEST_P(RangeLockTest, NobodysReadsAndWritesAreKeptOut) {
  const std::unique_ptr<RangeLock> lock = Lock(0, 10);
  const std::unique_ptr<File> file = system_->files().Open(system_->path(), OpenMode::kReadWrite);
  EXPECT_TRUE(file->Write(0, AsBytes("ab")));
  EXPECT_EQ(AsChars(ReadStart(system_->files(), system_->path(), 3)), "ab2");
}

// Stores open and close the file all the time.
TEST_P(RangeLockTest, ClosingOtherHandlesOfTheFileLetsNothingGo) {
  const std::unique_ptr<RangeLock> lock = Lock(0, 1);
  for (const OpenMode mode : {OpenMode::kRead, OpenMode::kReadWrite}) {
    system_->files().Open(system_->path(), mode).reset();
  }
  const std::unique_ptr<RangeLock> neighbour = Lock(1, 1);
  ASSERT_NE(neighbour, nullptr);
  EXPECT_FALSE(OthersMayLock(0, 1));
}

TEST_P(RangeLockTest, WaitingForAFreeRangeTakesItAtOnce) {
  EXPECT_NE(WaitForRange(system_->view(), system_->path(), 0, 1, milliseconds(0)), nullptr);
}

TEST_P(RangeLockTest, WaitingInVainEndsWhenTheTimeIsOver) {
  const std::unique_ptr<RangeLock> lock = Lock(0, 1);
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(WaitForRange(system_->view(), system_->path(), 0, 1, milliseconds(20)), nullptr);
  EXPECT_GE(std::chrono::steady_clock::now() - start, milliseconds(20));
  EXPECT_EQ(WaitForRange(system_->view(), system_->path(), 0, 1, milliseconds(0)), nullptr);
}

TEST(WaitForRange, TakesARangeThatIsLetGoMeanwhile) {
  FakeClock clock;
  MemoryFileSystem memory(clock);
  memory.SetContents("/file", AsBytes("x"));
  std::unique_ptr<RangeLock> lock = memory.LockRange("/file", 0, 1);
  GatedFileSystem files(memory);
  int tries = 0;
  files.may_lock = [&] {
    if (++tries == 3) lock.reset();
    return true;
  };
  EXPECT_NE(WaitForRange(files, "/file", 0, 1, std::chrono::minutes(1)), nullptr);
  EXPECT_EQ(tries, 3);
}

TEST(MemoryLocks, OutliveTheFileSystemAndStayBehindInACopy) {
  FakeClock clock;
  auto memory = std::make_unique<MemoryFileSystem>(clock);
  memory->SetContents("/file", AsBytes("x"));
  const std::unique_ptr<RangeLock> lock = memory->LockRange("/file", 0, 1);
  MemoryFileSystem copy = memory->Snapshot();
  EXPECT_NE(copy.LockRange("/file", 0, 1), nullptr);
  memory.reset();
  EXPECT_NE(lock, nullptr);
}

TEST(MemoryLocks, AnotherSpellingOfThePathIsTheSameFile) {
  FakeClock clock;
  MemoryFileSystem memory(clock);
  memory.SetContents("/folder/file", AsBytes("x"));
  const std::unique_ptr<RangeLock> lock = memory.LockRange("/folder/file", 0, 1);
  EXPECT_EQ(memory.LockRange("/folder/./other/../file", 0, 1), nullptr);
}

// A pipe by which a child tells that it has got so far, and waits to be ended.
class LockingChild {
 public:
  explicit LockingChild(const std::string& path) {
    int ends[2];
    EXPECT_EQ(::pipe(ends), 0);
    child_ = ::fork();
    if (child_ == 0) {
      PosixFileSystem files;
      const std::unique_ptr<RangeLock> lock = files.LockRange(path, 100, 50);
      const char told = lock != nullptr ? 'y' : 'n';
      if (::write(ends[1], &told, 1) != 1) ::_exit(1);
      while (true) ::pause();
    }
    EXPECT_EQ(::read(ends[0], &told_, 1), 1);
    ::close(ends[0]);
    ::close(ends[1]);
  }
  ~LockingChild() { Kill(); }
  LockingChild(const LockingChild&) = delete;
  LockingChild& operator=(const LockingChild&) = delete;

  [[nodiscard]] bool has_lock() const { return told_ == 'y'; }
  void Kill() {
    if (child_ <= 0) return;
    ::kill(child_, SIGKILL);
    ::waitpid(child_, nullptr, 0);
    child_ = 0;
  }

 private:
  pid_t child_ = 0;
  char told_ = 0;
};

TEST(PosixLocks, OfAProcessThatIsKilledAreFree) {
  OnTheDisk disk;
  LockingChild child(disk.path());
  ASSERT_TRUE(child.has_lock());
  EXPECT_EQ(disk.posix.LockRange(disk.path(), 149, 1), nullptr);
  EXPECT_NE(disk.posix.LockRange(disk.path(), 150, 1), nullptr);
  child.Kill();
  EXPECT_NE(disk.posix.LockRange(disk.path(), 149, 1), nullptr);
}

TEST(PosixLocks, KeepOutAnotherProcess) {
  OnTheDisk disk;
  const std::unique_ptr<RangeLock> lock = disk.posix.LockRange(disk.path(), 120, 1);
  EXPECT_FALSE(LockingChild(disk.path()).has_lock());
}

}  // namespace
}  // namespace carnetel
