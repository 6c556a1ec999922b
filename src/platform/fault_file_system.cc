#include "platform/fault_file_system.h"

#include <algorithm>
#include <utility>

namespace carnetel {

class FaultFileSystem::FaultFile : public File {
 public:
  FaultFile(FaultFileSystem& owner, std::unique_ptr<File> file)
      : owner_(owner), file_(std::move(file)) {}

  size_t Read(uint64_t position, ByteSpan into) override { return file_->Read(position, into); }
  uint64_t Size() override { return file_->Size(); }

  bool Write(uint64_t position, ByteView bytes) override {
    const size_t allowed = owner_.AllowWrite(bytes.size());
    if (owner_.full_ && position + bytes.size() > file_->Size()) return Remember(false);
    const bool done = allowed == 0 || file_->Write(position, bytes.first(allowed));
    return Remember(done && allowed == bytes.size());
  }

  bool Truncate(uint64_t size) override {
    if (!owner_.Allow() || (owner_.full_ && size > file_->Size())) return Remember(false);
    return Remember(file_->Truncate(size));
  }

  bool Sync() override { return Remember(!owner_.stopped() && file_->Sync()); }
  int64_t ModificationTime() override { return file_->ModificationTime(); }
  bool SetModificationTime(int64_t seconds) override {
    return Remember(owner_.Allow() && file_->SetModificationTime(seconds));
  }

 private:
  FaultFileSystem& owner_;
  std::unique_ptr<File> file_;
};

void FaultFileSystem::StopAfter(int changes) {
  Heal();
  changes_left_ = changes;
}

void FaultFileSystem::TearWrite(int nth, size_t kept_bytes) {
  Heal();
  whole_writes_left_ = nth - 1;
  kept_bytes_ = kept_bytes;
}

void FaultFileSystem::FailWrite(int nth) {
  Heal();
  writes_to_failure_ = nth;
}

void FaultFileSystem::FillDisk() {
  Heal();
  full_ = true;
}

void FaultFileSystem::Heal() {
  changes_left_.reset();
  whole_writes_left_.reset();
  writes_to_failure_ = 0;
  full_ = false;
}

std::unique_ptr<File> FaultFileSystem::Open(const std::string& path, OpenMode mode) {
  const bool changes =
      mode == OpenMode::kCreateOrEmpty || (mode == OpenMode::kCreateOrOpen && !base_.Exists(path));
  if (changes && !Allow()) return nullptr;
  std::unique_ptr<File> file = base_.Open(path, mode);
  if (file == nullptr) return nullptr;
  return std::make_unique<FaultFile>(*this, std::move(file));
}

bool FaultFileSystem::Remove(const std::string& path) {
  return Allow() && base_.Remove(path);
}

bool FaultFileSystem::Rename(const std::string& from, const std::string& to) {
  return Allow() && base_.Rename(from, to);
}

bool FaultFileSystem::MakeFolder(const std::string& path) {
  if (base_.IsFolder(path)) return true;
  return Allow() && base_.MakeFolder(path);
}

bool FaultFileSystem::Allow() {
  ++changes_;
  if (stopped()) return false;
  if (changes_left_) --*changes_left_;
  return true;
}

size_t FaultFileSystem::AllowWrite(size_t size) {
  if (!Allow()) return 0;
  if (writes_to_failure_ > 0 && --writes_to_failure_ == 0) return 0;
  if (!whole_writes_left_) return size;
  if (*whole_writes_left_ > 0) {
    --*whole_writes_left_;
    return size;
  }
  changes_left_ = 0;
  return std::min(kept_bytes_, size);
}

}  // namespace carnetel
