// Two directories in memory, for tests of transfers from one to the other.
#pragma once

#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "tests/transfer/refusing_file_system.h"
#include "tests/transfer/transfer_testing.h"
#include "transfer/directory_transfer.h"

namespace carnetel {

inline constexpr char kForeign[] = "/sub/EXTRAIT.DAN";

// The directory /dir/CLIENTS and a foreign one.
class DirectoryTransfer : public TransferTest {
 protected:
  static DirectoryOptions ForeignOptions(int key_field = kSte1) {
    DirectoryOptions options;
    options.path = kForeign;
    options.key_field = key_field;
    return options;
  }

  void SetUp() override { ASSERT_TRUE(files_.MakeFolder("/sub")); }

  // Cards of these surnames in the foreign directory.
  void MakeForeign(std::initializer_list<std::string_view> names) {
    Directory directory(Services(), ForeignOptions());
    ASSERT_GE(directory.OpenDirectory(), OpenResult::kOpened);
    for (const std::string_view name : names) {
      directory.context().current = MakeCard({{kNom, name}});
      uint32_t position = 0;
      ASSERT_EQ(CardDispatch(directory).Add(false, &position), 0);
    }
  }
  void AddNames(std::initializer_list<std::string_view> names, bool marked) {
    for (const std::string_view name : names) AddCards({MakeCard({{kNom, name}})}, marked);
  }

  // The surname at each row of a list that was opened anew.
  std::vector<std::string> NamesIn(const DirectoryOptions& options) {
    Directory directory(Services(), options);
    EXPECT_EQ(directory.OpenDirectory(), OpenResult::kOpened);
    std::vector<std::string> names;
    for (uint32_t row = 0; row < directory.address().entry_count(); ++row) {
      CardRecord card;
      EXPECT_TRUE(directory.main().ReadCard(directory.address().CardOffsetAt(row), card));
      names.push_back(card.FieldText(kNom).bytes());
    }
    return names;
  }
  std::vector<std::string> ForeignNames() { return NamesIn(ForeignOptions()); }
  // The count that stands in the header of the foreign main file.
  uint16_t ForeignCount() const {
    return LoadLe16(files_.Contents(kForeign), MainHeader::kCountOffset);
  }

  FaultFileSystem disk_{files_};
};

}  // namespace carnetel
