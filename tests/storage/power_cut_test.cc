// A power cut keeps what was brought to the disk and loses any part of what was written since, file
// by file. Whatever it keeps, the openings that follow make a family whose files agree.
#include <gtest/gtest.h>

#include <functional>

#include "tests/storage/family_check.h"

namespace carnetel {
namespace {

constexpr std::string_view kStem = "/carnets/ESSAI";
constexpr std::array<std::string_view, 4> kStores = {".DAN", ".I01", ".I02", ".ADR"};

std::string PathOf(std::string_view extension) {
  return std::string(kStem) + std::string(extension);
}

DirectoryOptions OptionsHere() {
  DirectoryOptions options;
  options.path = kStem;
  return options;
}

// What the stores hold, in the order of kStores.
using Stores = std::array<FileBytes, kStores.size()>;

Stores ReadStores(const MemoryFileSystem& files) {
  Stores stores;
  for (size_t i = 0; i < kStores.size(); ++i) stores[i] = files.Contents(PathOf(kStores[i]));
  return stores;
}

// Passes everything on, remembers what of each store has reached the disk and calls `at_change`
// behind every change.
class CutFileSystem : public FileSystem {
 public:
  CutFileSystem(MemoryFileSystem& base, std::function<void(const Stores& safe)> at_change)
      : base_(base), safe_(ReadStores(base)), at_change_(std::move(at_change)) {}

  std::unique_ptr<File> Open(const std::string& path, OpenMode mode) override {
    std::unique_ptr<File> file = base_.Open(path, mode);
    if (file == nullptr) return nullptr;
    return std::make_unique<CutFile>(*this, path, std::move(file));
  }
  bool Exists(const std::string& path) override { return base_.Exists(path); }
  bool IsFolder(const std::string& path) override { return base_.IsFolder(path); }
  bool Remove(const std::string& path) override { return base_.Remove(path); }
  bool Rename(const std::string& from, const std::string& to) override {
    return base_.Rename(from, to);
  }
  bool MakeFolder(const std::string& path) override { return base_.MakeFolder(path); }
  std::vector<std::string> List(const std::string& folder) override { return base_.List(folder); }
  std::string Canonical(const std::string& path) override { return base_.Canonical(path); }

 private:
  class CutFile : public File {
   public:
    CutFile(CutFileSystem& owner, std::string path, std::unique_ptr<File> file)
        : owner_(owner), path_(std::move(path)), file_(std::move(file)) {}
    size_t Read(uint64_t position, ByteSpan into) override { return file_->Read(position, into); }
    uint64_t Size() override { return file_->Size(); }
    bool Write(uint64_t position, ByteView bytes) override {
      return Changed(file_->Write(position, bytes));
    }
    bool Truncate(uint64_t size) override { return Changed(file_->Truncate(size)); }
    bool Sync() override {
      for (size_t i = 0; i < kStores.size(); ++i) {
        if (path_ == PathOf(kStores[i])) owner_.safe_[i] = owner_.base_.Contents(path_);
      }
      return true;
    }
    int64_t ModificationTime() override { return file_->ModificationTime(); }
    bool SetModificationTime(int64_t seconds) override {
      return file_->SetModificationTime(seconds);
    }

   private:
    bool Changed(bool done) {
      owner_.at_change_(owner_.safe_);
      return done;
    }
    CutFileSystem& owner_;
    std::string path_;
    std::unique_ptr<File> file_;
  };

  MemoryFileSystem& base_;
  Stores safe_;
  std::function<void(const Stores& safe)> at_change_;
};

class PowerCutTest : public StoreFixture {
 protected:
  void SetUp() override {
    Open();
    for (const char* ste1 : {"ALPHA", "MIKE", "DELTA", "MIKADO", "TANGO"}) {
      Add(MakeCard({{kSte1, ste1}, {kNom, std::string(1, ste1[1])}}));
    }
    Close();
  }

  // Runs an operation on the directory; a cut behind each of its changes, and behind its end, must
  // heal whatever each of the four stores keeps.
  void CutDuring(const std::function<void(Directory&)>& run) {
    CutFileSystem disk(files, [this](const Stores& safe) { CutHere(safe); });
    Directory directory({disk, clock, progress}, OptionsHere());
    ASSERT_EQ(directory.OpenDirectory(), OpenResult::kOpened);
    run(directory);
    EXPECT_GT(cuts_, 0);
  }

 private:
  void CutHere(const Stores& safe) {
    const Stores written = ReadStores(files);
    for (unsigned kept = 0; kept < 1U << kStores.size(); ++kept) {
      MemoryFileSystem after(files);
      for (size_t i = 0; i < kStores.size(); ++i) {
        after.SetContents(PathOf(kStores[i]), (kept >> i & 1) != 0 ? written[i] : safe[i]);
      }
      ExpectHeals(after, kept);
    }
    ++cuts_;
  }

  void ExpectHeals(MemoryFileSystem& after, unsigned kept) {
    for (int opening = 0; opening < 3; ++opening) {
      Directory directory({after, clock, progress}, OptionsHere());
      ASSERT_EQ(directory.OpenDirectory(), OpenResult::kOpened);
    }
    ASSERT_EQ(FamilyFault(ReadFamily(after, kStem), SlotOrder::kAny), "")
        << "cut " << cuts_ << ", stores kept " << kept;
  }

  int cuts_ = 0;
};

TEST_F(PowerCutTest, DuringAnAdd) {
  CutDuring([](Directory& directory) {
    directory.context().current = MakeCard("NOVEMBER", "KILO");
    uint32_t position = 0;
    EXPECT_EQ(CardDispatch(directory).Add(false, &position), 0);
  });
}

TEST_F(PowerCutTest, DuringADelete) {
  CutDuring([](Directory& directory) {
    uint32_t moved_from = 0;
    EXPECT_TRUE(DeleteCard(directory, CardOffset(2), &moved_from));
  });
}

TEST_F(PowerCutTest, DuringAChangeOfKey) {
  CutDuring([](Directory& directory) {
    const ChangedCard changed = ChangeCard(directory, CardOffset(2), MakeCard("ROMEO", "ZOLA"));
    EXPECT_EQ(changed.result, ChangeResult::kMoved);
  });
}

TEST_F(PowerCutTest, DuringARewrite) {
  CutDuring([](Directory& directory) {
    CardRecord card;
    ASSERT_TRUE(directory.main().ReadCard(CardOffset(2), card));
    card.SetField(kTel1, OemText("1"));
    EXPECT_EQ(ChangeCard(directory, CardOffset(2), card).result, ChangeResult::kRewritten);
  });
}

TEST_F(PowerCutTest, DuringABatch) {
  CutDuring([](Directory& directory) {
    const Directory::Batch batch(directory);
    uint32_t moved_from = 0;
    EXPECT_TRUE(DeleteCard(directory, CardOffset(1), &moved_from));
    directory.context().current = MakeCard("NOVEMBER", "KILO");
    uint32_t position = 0;
    EXPECT_EQ(CardDispatch(directory).Add(false, &position), 0);
  });
}

}  // namespace
}  // namespace carnetel
