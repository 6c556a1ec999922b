// One suite for the file system of the machine, the one in memory and the view over another one:
// what the stores and the tests of the stores rely on must hold for all.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <ostream>
#include <string>
#include <vector>

#include "platform/clock.h"
#include "platform/file_system.h"
#include "platform/memory_file_system.h"
#include "platform/overlay_file_system.h"
#include "platform/posix_file_system.h"
#include "tests/support/fresh_folder.h"

namespace carnetel {
namespace {

using ::testing::IsEmpty;
using ::testing::UnorderedElementsAre;

class System {
 public:
  virtual ~System() = default;
  virtual FileSystem& files() = 0;
  virtual std::string folder() = 0;  // an existing empty folder, with its '/'
};

class PosixSystem : public System {
 public:
  FileSystem& files() override { return files_; }
  std::string folder() override { return folder_.path(); }

 private:
  PosixFileSystem files_;
  FreshFolder folder_;
};

class MemorySystem : public System {
 public:
  MemorySystem() { files_.MakeFolder("/test"); }
  FileSystem& files() override { return files_; }
  std::string folder() override { return "/test/"; }

 private:
  SystemClock clock_;
  MemoryFileSystem files_{clock_};
};

// A view of the machine's files that keeps every change to itself.
class OverlaySystem : public System {
 public:
  FileSystem& files() override { return files_; }
  std::string folder() override { return folder_.path(); }

 private:
  SystemClock clock_;
  PosixFileSystem base_;
  OverlayFileSystem files_{base_, clock_};
  FreshFolder folder_;
};

struct SystemCase {
  std::string name;
  std::function<std::unique_ptr<System>()> make;
};

// Named in lists of tests; the addresses in its bytes would differ at each run.
void PrintTo(const SystemCase& system_case, std::ostream* out) {
  *out << system_case.name;
}

class FileSystemSuite : public ::testing::TestWithParam<SystemCase> {
 protected:
  std::string Path(const std::string& name) { return system_->folder() + name; }
  std::unique_ptr<File> Open(const std::string& name, OpenMode mode) {
    return files_.Open(Path(name), mode);
  }
  void Make(const std::string& name, std::string_view text) {
    ASSERT_TRUE(Open(name, OpenMode::kCreateOrEmpty)->Write(0, AsBytes(text)));
  }
  std::string Text(const std::string& name) {
    return std::string(AsChars(ReadStart(files_, Path(name), 1000)));
  }

  std::unique_ptr<System> system_ = GetParam().make();
  FileSystem& files_ = system_->files();
};

INSTANTIATE_TEST_SUITE_P(
    Systems, FileSystemSuite,
    ::testing::Values(SystemCase{"Posix", [] { return std::make_unique<PosixSystem>(); }},
                      SystemCase{"Memory", [] { return std::make_unique<MemorySystem>(); }},
                      SystemCase{"Overlay", [] { return std::make_unique<OverlaySystem>(); }}),
    [](const auto& system_case) { return system_case.param.name; });

std::string ReadText(File& file, uint64_t position, size_t size) {
  std::string text(size, '?');
  text.resize(file.Read(position, std::as_writable_bytes(std::span(text))));
  return text;
}

TEST_P(FileSystemSuite, ReadAndReadWriteNeedTheFile) {
  EXPECT_EQ(Open("a", OpenMode::kRead), nullptr);
  EXPECT_EQ(Open("a", OpenMode::kReadWrite), nullptr);
  EXPECT_FALSE(files_.Exists(Path("a")));
}

TEST_P(FileSystemSuite, CreateOrOpenKeepsWhatIsThere) {
  Make("a", "kept");
  ASSERT_NE(Open("a", OpenMode::kCreateOrOpen), nullptr);
  ASSERT_NE(Open("b", OpenMode::kCreateOrOpen), nullptr);
  EXPECT_EQ(Text("a"), "kept");
  EXPECT_TRUE(files_.Exists(Path("b")));
}

TEST_P(FileSystemSuite, CreateOrEmptyEmpties) {
  Make("a", "gone");
  EXPECT_EQ(Open("a", OpenMode::kCreateOrEmpty)->Size(), 0u);
}

TEST_P(FileSystemSuite, WriteStandsWhereItIsPutAndTheGapIsZero) {
  const auto file = Open("a", OpenMode::kCreateOrEmpty);
  EXPECT_TRUE(file->Write(3, AsBytes("xyz")));
  EXPECT_TRUE(file->Write(4, AsBytes("Q")));
  EXPECT_EQ(file->Size(), 6u);
  EXPECT_EQ(ReadText(*file, 0, 6), std::string("\0\0\0xQz", 6));
}

TEST_P(FileSystemSuite, ReadEndsAtTheEnd) {
  Make("a", "abcdef");
  const auto file = Open("a", OpenMode::kRead);
  EXPECT_EQ(ReadText(*file, 4, 10), "ef");
  EXPECT_EQ(ReadText(*file, 6, 10), "");
  EXPECT_EQ(ReadText(*file, 5000000000, 10), "");
}

TEST_P(FileSystemSuite, EmptyWriteChangesNothing) {
  const auto file = Open("a", OpenMode::kCreateOrEmpty);
  EXPECT_TRUE(file->Write(10, {}));
  EXPECT_EQ(file->Size(), 0u);
  EXPECT_FALSE(file->write_failed());
}

TEST_P(FileSystemSuite, TruncateCutsAndExtendsWithZeros) {
  Make("a", "abcdef");
  const auto file = Open("a", OpenMode::kReadWrite);
  EXPECT_TRUE(file->Truncate(2));
  EXPECT_TRUE(file->Truncate(4));
  EXPECT_EQ(ReadText(*file, 0, 10), std::string("ab\0\0", 4));
}

TEST_P(FileSystemSuite, AFileOpenForReadingRefusesAndRemembersWrites) {
  Make("a", "abc");
  const auto file = Open("a", OpenMode::kRead);
  EXPECT_FALSE(file->write_failed());
  EXPECT_FALSE(file->Write(0, AsBytes("x")));
  EXPECT_TRUE(file->write_failed());
  EXPECT_FALSE(Open("a", OpenMode::kRead)->Truncate(0));
  EXPECT_EQ(Text("a"), "abc");
}

TEST_P(FileSystemSuite, HandlesShareOneContent) {
  const auto one = Open("a", OpenMode::kCreateOrEmpty);
  const auto two = Open("a", OpenMode::kReadWrite);
  one->Write(0, AsBytes("one"));
  EXPECT_EQ(ReadText(*two, 0, 10), "one");
  two->Truncate(1);
  EXPECT_EQ(one->Size(), 1u);
}

TEST_P(FileSystemSuite, ARemovedFileStaysReadableThroughItsHandles) {
  Make("a", "old");
  const auto old = Open("a", OpenMode::kReadWrite);
  EXPECT_TRUE(files_.Remove(Path("a")));
  EXPECT_FALSE(files_.Exists(Path("a")));
  Make("a", "new");
  EXPECT_EQ(ReadText(*old, 0, 10), "old");
  EXPECT_TRUE(old->Write(0, AsBytes("OLD")));
  EXPECT_EQ(Text("a"), "new");
}

TEST_P(FileSystemSuite, RenameReplacesAndHandlesFollowTheFile) {
  Make("a", "first");
  Make("b", "second");
  const auto first = Open("a", OpenMode::kReadWrite);
  EXPECT_TRUE(files_.Rename(Path("a"), Path("b")));
  EXPECT_FALSE(files_.Exists(Path("a")));
  first->Write(0, AsBytes("F"));
  EXPECT_EQ(Text("b"), "First");
}

TEST_P(FileSystemSuite, RenameOntoItselfKeepsTheFile) {
  Make("a", "text");
  EXPECT_TRUE(files_.Rename(Path("a"), Path("a")));
  EXPECT_EQ(Text("a"), "text");
}

TEST_P(FileSystemSuite, RenameOfNothingFails) {
  Make("b", "text");
  EXPECT_FALSE(files_.Rename(Path("a"), Path("b")));
  EXPECT_EQ(Text("b"), "text");
}

TEST_P(FileSystemSuite, AFolderIsNoFile) {
  ASSERT_TRUE(files_.MakeFolder(Path("sub")));
  EXPECT_TRUE(files_.Exists(Path("sub")));
  EXPECT_TRUE(files_.IsFolder(Path("sub")));
  EXPECT_TRUE(files_.IsFolder(Path("sub/")));
  for (const OpenMode mode :
       {OpenMode::kRead, OpenMode::kReadWrite, OpenMode::kCreateOrOpen, OpenMode::kCreateOrEmpty}) {
    EXPECT_EQ(Open("sub", mode), nullptr);
    EXPECT_EQ(Open("new/", mode), nullptr);
  }
  EXPECT_FALSE(files_.Remove(Path("sub")));
  EXPECT_TRUE(files_.IsFolder(Path("sub")));
}

TEST_P(FileSystemSuite, AFileIsNoFolder) {
  Make("a", "text");
  EXPECT_FALSE(files_.IsFolder(Path("a")));
  EXPECT_EQ(Open("a/b", OpenMode::kCreateOrOpen), nullptr);
  EXPECT_FALSE(files_.MakeFolder(Path("a")));
  EXPECT_FALSE(files_.MakeFolder(Path("a/b")));
}

TEST_P(FileSystemSuite, MakeFolderMakesItsParentsAndTakesOneThatExists) {
  EXPECT_TRUE(files_.MakeFolder(Path("one/two/")));
  EXPECT_TRUE(files_.MakeFolder(Path("one/two")));
  EXPECT_TRUE(files_.IsFolder(Path("one")));
  EXPECT_TRUE(files_.IsFolder(Path("one/two")));
}

TEST_P(FileSystemSuite, ListGivesTheNamesOfFilesAndFolders) {
  Make("a.dan", "");
  ASSERT_TRUE(files_.MakeFolder(Path("sub/deeper")));
  Make("sub/b.dan", "");
  EXPECT_THAT(files_.List(system_->folder()), UnorderedElementsAre("a.dan", "sub"));
  EXPECT_THAT(files_.List(Path("sub")), UnorderedElementsAre("b.dan", "deeper"));
  EXPECT_THAT(files_.List(Path("nothing")), IsEmpty());
  EXPECT_THAT(files_.List(Path("a.dan")), IsEmpty());
}

TEST_P(FileSystemSuite, NamesTellCasesApart) {
  Make("A", "capital");
  EXPECT_FALSE(files_.Exists(Path("a")));
  Make("a", "small");
  EXPECT_EQ(Text("A"), "capital");
}

TEST_P(FileSystemSuite, TheEmptyPathIsNothing) {
  EXPECT_FALSE(files_.Exists(""));
  EXPECT_FALSE(files_.IsFolder(""));
  EXPECT_EQ(files_.Open("", OpenMode::kCreateOrOpen), nullptr);
  EXPECT_FALSE(files_.Remove(""));
  EXPECT_FALSE(files_.MakeFolder(""));
}

TEST_P(FileSystemSuite, CanonicalIsOneTextForOneFile) {
  Make("a", "");
  const std::string folder = system_->folder();
  EXPECT_EQ(files_.Canonical(folder + "./none/..//a"), files_.Canonical(Path("a")));
  EXPECT_EQ(files_.Canonical(folder + "new/../new.adr"), files_.Canonical(Path("new.adr")));
  EXPECT_EQ(files_.Canonical("x.adr").front(), '/');
}

TEST_P(FileSystemSuite, TheModificationTimeCanBeSetAndAWriteMovesIt) {
  const auto file = Open("a", OpenMode::kCreateOrEmpty);
  EXPECT_TRUE(file->SetModificationTime(1000000000));
  EXPECT_EQ(file->ModificationTime(), 1000000000);
  EXPECT_EQ(Open("a", OpenMode::kRead)->ModificationTime(), 1000000000);
  file->Write(0, AsBytes("x"));
  EXPECT_GT(file->ModificationTime(), 1000000000);
}

TEST_P(FileSystemSuite, SyncSucceeds) {
  const auto file = Open("a", OpenMode::kCreateOrEmpty);
  file->Write(0, AsBytes("x"));
  EXPECT_TRUE(file->Sync());
  EXPECT_TRUE(file->Sync());
  EXPECT_FALSE(file->write_failed());
}

TEST_P(FileSystemSuite, FindAnyCaseTakesTheExactNameFirst) {
  Make("X.I01", "");
  Make("x.i01", "");
  EXPECT_EQ(FindAnyCase(files_, Path("x.i01")), Path("x.i01"));
  EXPECT_EQ(FindAnyCase(files_, Path("X.I01")), Path("X.I01"));
}

TEST_P(FileSystemSuite, FindAnyCaseFindsANameOfOtherCase) {
  Make("Carnet.dan", "");
  EXPECT_EQ(FindAnyCase(files_, Path("CARNET.DAN")), Path("Carnet.dan"));
}

TEST_P(FileSystemSuite, FindAnyCaseTakesTheSameOfSeveralEveryTime) {
  Make("x.Dan", "");
  Make("X.dan", "");
  Make("x.dan", "");
  EXPECT_EQ(FindAnyCase(files_, Path("X.DAN")), Path("X.dan"));
}

TEST_P(FileSystemSuite, FindAnyCaseGivesBackWhatItDoesNotFind) {
  Make("x.adr", "");
  ASSERT_TRUE(files_.MakeFolder(Path("X.dan")));
  Make("\xC3\xA9.grp", "");
  EXPECT_EQ(FindAnyCase(files_, Path("X.DAN")), Path("X.DAN"));
  EXPECT_EQ(FindAnyCase(files_, Path("\xC3\x89.GRP")), Path("\xC3\x89.GRP"));
  EXPECT_EQ(FindAnyCase(files_, Path("none/X.ADR")), Path("none/X.ADR"));
  EXPECT_EQ(FindAnyCase(files_, ""), "");
  EXPECT_EQ(FindAnyCase(files_, Path("")), Path(""));
}

TEST_P(FileSystemSuite, FindAnyCaseDoesNotSearchFolders) {
  ASSERT_TRUE(files_.MakeFolder(Path("sub")));
  Make("sub/x.dan", "");
  EXPECT_EQ(FindAnyCase(files_, Path("SUB/x.dan")), Path("SUB/x.dan"));
}

TEST_P(FileSystemSuite, FileExistsTakesTheEmptyPathAsExisting) {
  EXPECT_TRUE(FileExists(files_, ""));
  EXPECT_FALSE(FileExists(files_, Path("none")));
}

TEST_P(FileSystemSuite, FileExistsDropsATrailingSeparator) {
  Make("a", "");
  EXPECT_TRUE(FileExists(files_, Path("a")));
  EXPECT_TRUE(FileExists(files_, Path("a/")));
  EXPECT_TRUE(FileExists(files_, system_->folder()));
  EXPECT_TRUE(FileExists(files_, "/"));
  EXPECT_FALSE(FileExists(files_, "?a/"));
}

TEST_P(FileSystemSuite, DeleteMatchingTakesWildcardsWithoutRegardToCase) {
  for (const char* name : {"a1.tmp", "A2.TMP", "ab12.tmp", "a1.dan", ".tmp"}) Make(name, "");
  EXPECT_EQ(DeleteMatching(files_, Path("A?.tmp")), 2);
  EXPECT_THAT(files_.List(system_->folder()), UnorderedElementsAre("ab12.tmp", "a1.dan", ".tmp"));
  EXPECT_EQ(DeleteMatching(files_, Path("*.TMP")), 2);
  EXPECT_THAT(files_.List(system_->folder()), UnorderedElementsAre("a1.dan"));
}

TEST_P(FileSystemSuite, DeleteMatchingTakesAPlainName) {
  Make("zozo.$$$", "");
  Make("zozo.$$", "");
  EXPECT_EQ(DeleteMatching(files_, Path("ZOZO.$$$")), 1);
  EXPECT_EQ(DeleteMatching(files_, Path("none")), 0);
  EXPECT_THAT(files_.List(system_->folder()), UnorderedElementsAre("zozo.$$"));
}

TEST_P(FileSystemSuite, DeleteMatchingLeavesFoldersAndTheirFiles) {
  ASSERT_TRUE(files_.MakeFolder(Path("sub")));
  Make("sub/a.tmp", "");
  EXPECT_EQ(DeleteMatching(files_, Path("*")), 0);
  EXPECT_TRUE(files_.Exists(Path("sub/a.tmp")));
}

TEST_P(FileSystemSuite, AQuestionMarkStandsForOneAccentedLetter) {
  Make("\xC3\xA9t\xC3\xA9.tmp", "");
  EXPECT_EQ(DeleteMatching(files_, Path("??.tmp")), 0);
  EXPECT_EQ(DeleteMatching(files_, Path("?t?.tmp")), 1);
}

TEST_P(FileSystemSuite, StarsGoBackUntilTheRestFits) {
  Make("aXbXc", "");
  EXPECT_EQ(DeleteMatching(files_, Path("a*Xd")), 0);
  EXPECT_EQ(DeleteMatching(files_, Path("a*Xc*")), 1);
}

TEST_P(FileSystemSuite, ReadStartStopsAtTheLimitOrTheEnd) {
  Make("a", "abcdef");
  EXPECT_EQ(AsChars(ReadStart(files_, Path("a"), 4)), "abcd");
  EXPECT_EQ(AsChars(ReadStart(files_, Path("a"), 1 << 30)), "abcdef");
  EXPECT_THAT(ReadStart(files_, Path("none"), 4), IsEmpty());
}

TEST_P(FileSystemSuite, ReadTextTakesAllOfAFileOfAnySensibleSize) {
  Make("a", "abc\ndef");
  Make("empty", "");
  Make("large", "x");
  ASSERT_TRUE(files_.Open(Path("large"), OpenMode::kReadWrite)->Truncate(kLargestText + 1));
  EXPECT_EQ(ReadText(files_, Path("a")), "abc\ndef");
  EXPECT_EQ(ReadText(files_, Path("empty")), "");
  EXPECT_EQ(ReadText(files_, Path("large")), std::nullopt);
  EXPECT_EQ(ReadText(files_, Path("none")), std::nullopt);
}

}  // namespace
}  // namespace carnetel
