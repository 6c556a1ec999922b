#include "link/append_block.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

namespace carnetel {
namespace {

// Takes bytes up to a size, as a disk does that fills up within a write.
class SmallFile : public File {
 public:
  SmallFile(std::string bytes, size_t room) : bytes_(std::move(bytes)), room_(room) {}

  size_t Read(uint64_t position, ByteSpan into) override {
    const ByteView rest = AsBytes(bytes_).subspan(static_cast<size_t>(position));
    const size_t count = std::min(rest.size(), into.size());
    std::copy_n(rest.begin(), count, into.begin());
    return count;
  }
  uint64_t Size() override { return bytes_.size(); }
  bool Write(uint64_t position, ByteView bytes) override {
    const auto start = static_cast<size_t>(position);
    const size_t count = std::min(bytes.size(), room_ - start);
    bytes_.resize(std::max(bytes_.size(), start + count));
    bytes_.replace(start, count, AsChars(bytes.first(count)));
    return Remember(count == bytes.size());
  }
  bool Truncate(uint64_t size) override {
    bytes_.resize(static_cast<size_t>(size));
    return true;
  }
  bool Sync() override { return true; }
  int64_t ModificationTime() override { return 0; }
  bool SetModificationTime(int64_t) override { return true; }

  [[nodiscard]] const std::string& bytes() const { return bytes_; }

 private:
  std::string bytes_;
  size_t room_;
};

TEST(AppendBlock, GoesOverWhatStandsFromThePositionOn) {
  SmallFile file("records", 100);
  EXPECT_TRUE(AppendBlock(file, 7, AsBytes(" and more")));
  EXPECT_EQ(file.bytes(), "records and more");
  EXPECT_TRUE(AppendBlock(file, 12, AsBytes("others")));
  EXPECT_EQ(file.bytes(), "records and others");
}

TEST(AppendBlock, AWriteThatEndsHalfWayIsTakenBack) {
  SmallFile file("a job, NNNN", 14);
  EXPECT_FALSE(AppendBlock(file, 11, AsBytes("whole record")));
  EXPECT_EQ(file.bytes(), "a job, NNNN");
  EXPECT_FALSE(AppendBlock(file, 7, AsBytes("next address, NNNN")));
  EXPECT_EQ(file.bytes(), "a job, NNNN");
}

}  // namespace
}  // namespace carnetel
