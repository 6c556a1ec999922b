// What the tests of criteria, scans and groups share: an open directory whose progress is recorded,
// whose disk can fail and whose marks are read back from the bytes of the file; rows of criteria
// written in one line.
#pragma once

#include <initializer_list>
#include <optional>
#include <string>
#include <vector>

#include "platform/fault_file_system.h"
#include "selection/criteria_set.h"
#include "tests/shell/shell_testing.h"
#include "tests/support/same_bytes.h"

namespace carnetel {

using Texts = std::vector<std::string>;

// Keeps what a progress display would get: each opening as its title, each step as its text, each
// closing as "closed". Asks for an end at one of the steps.
class LoggedProgress : public ProgressBox {
 public:
  void Open(ProgressForm form, uint32_t total) override {
    form_ = form;
    log_.push_back(ProgressCounter(form, total).Title());
  }
  [[nodiscard]] bool Step(std::string_view text = {}) override {
    log_.emplace_back(text);
    return ++steps_ == stop_at_;
  }
  void Close() override { log_.emplace_back("closed"); }

  void StopAt(int step) {
    steps_ = 0;
    stop_at_ = step;
  }
  [[nodiscard]] std::optional<ProgressForm> form() const { return form_; }
  // Gives away what was shown since the last call.
  Texts TakeLog() { return std::exchange(log_, {}); }

 private:
  std::optional<ProgressForm> form_;
  Texts log_;
  int steps_ = 0;
  int stop_at_ = 0;
};

// One row of criteria: a field number, a comparator as the lists show it, and a value, OEM.
struct Criterion {
  int field = kSte1;
  std::string comparator;
  std::string value;
};
CriteriaRows RowsOf(const std::vector<Criterion>& criteria);

// Whether a mark bit is set in an entry of an address file.
bool EntryBit(const FileBytes& address_file, size_t row, unsigned bit);

class SelectionFixture : public OpenDirectoryTest {
 protected:
  // The directory works with what this class owns.
  ~SelectionFixture() override { Close(); }

  // Opens the directory, made when missing; an open one is closed first.
  void Open(int key_field = kSte1, const std::string& path = "/d/X");
  void Close();
  // Adds one card for each company, marked nowhere.
  void AddCompanies(std::initializer_list<const char*> companies);
  uint32_t AddFields(std::initializer_list<std::pair<int, std::string>> fields);
  // Marks the cards of these companies, and no others, in what is displayed.
  void MarkOnly(const Texts& companies);
  // Goes over to another bit pair as a change of the displayed group does.
  void Display(uint8_t group_bit);

  // Companies, in the order of the file, whose entry on the disk has that bit.
  Texts CompaniesWith(unsigned bit);
  Texts Marked() { return CompaniesWith(directory_->selection_bit()); }
  [[nodiscard]] FileBytes Contents(const std::string& extension) const {
    return files_.Contents(path_ + extension);
  }
  void SetContents(const std::string& extension, const FileBytes& bytes) {
    files_.SetContents(path_ + extension, bytes);
  }

  std::string path_;
  FaultFileSystem faults_{files_};
  LoggedProgress recorded_;
};

}  // namespace carnetel
