// An open directory in memory with a few cards, for tests of the shell.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "platform/memory_file_system.h"
#include "storage/card_dispatch.h"

namespace carnetel {

class OpenDirectoryTest : public testing::Test {
 protected:
  void OpenAt(int key_field) {
    DirectoryOptions options;
    options.path = "/d/X";
    options.key_field = key_field;
    directory_ = std::make_unique<Directory>(DirectoryServices{files_, clock_, progress_}, options);
    EXPECT_EQ(directory_->OpenDirectory(), OpenResult::kCreated);
  }

  // Bytes are OEM.
  uint32_t AddCard(const std::string& company, const std::string& surname, bool marked = false) {
    CardRecord& card = directory_->context().current;
    card.Clear();
    card.SetField(kSte1, OemText(company));
    card.SetField(kNom, OemText(surname));
    uint32_t position = 0;
    EXPECT_EQ(CardDispatch(*directory_).Add(marked, &position), 0);
    return directory_->last_inserted().card_offset;
  }

  std::vector<std::string> Companies() {
    std::vector<std::string> companies;
    for (uint32_t row = 0; row < directory_->address().entry_count(); ++row) {
      CardRecord card;
      EXPECT_TRUE(directory_->main().ReadCard(directory_->address().CardOffsetAt(row), card));
      companies.push_back(card.FieldText(kSte1).bytes());
    }
    return companies;
  }

  FakeClock clock_{1'000'000'000};
  MemoryFileSystem files_{clock_};
  SilentProgress progress_;
  std::unique_ptr<Directory> directory_;
};

}  // namespace carnetel
