// A directory, a text file and a profile in memory, for tests of imports and exports.
#pragma once

#include <gtest/gtest.h>

#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/fault_file_system.h"
#include "platform/memory_file_system.h"
#include "selection/marks.h"
#include "storage/card_dispatch.h"
#include "tests/support/recording_progress.h"
#include "transfer/delimited.h"

namespace carnetel {

using Fields = std::initializer_list<std::pair<int, std::string_view>>;

inline CardRecord MakeCard(Fields fields) {
  CardRecord card;
  for (const auto& [field, text] : fields) card.SetField(field, OemText(std::string(text)));
  return card;
}

// Ranks 1, 2, 3, … for these fields, none for -1, as with a list of columns.
inline TransferProfile Columns(std::initializer_list<int> fields) {
  TransferProfile profile = TransferProfile::OfNewInstallation();
  profile.ClearRanks();
  int16_t rank = 1;
  for (const int field : fields) {
    if (field >= 0) profile.set_rank(field, rank);
    ++rank;
  }
  return profile;
}

class TransferTest : public testing::Test {
 protected:
  static constexpr char kSource[] = "/in.txt";
  static constexpr char kTarget[] = "/out.txt";
  static constexpr char kMain[] = "/dir/CLIENTS.DAN";

  [[nodiscard]] DirectoryServices Services() { return {files_, clock_, progress_}; }
  [[nodiscard]] static DirectoryOptions Options() {
    DirectoryOptions options;
    options.path = kMain;
    return options;
  }
  [[nodiscard]] static ImportRequest Request(bool replace = false) {
    return {kSource, Options(), replace, CharacterSet::kOem};
  }

  void SetSource(std::string_view text) { files_.SetContents(kSource, AsBytes(text)); }
  TransferOutcome Import(std::string_view text, const TransferProfile& profile) {
    SetSource(text);
    return ImportDelimited(Services(), profile, Request());
  }

  [[nodiscard]] std::string Contents(const std::string& path) const {
    return std::string(AsChars(files_.Contents(path)));
  }
  [[nodiscard]] uint32_t CardCount() const {
    const size_t size = files_.Contents(kMain).size();
    return size < kCardSize ? 0 : static_cast<uint32_t>(size / kCardSize - 1);
  }
  // Card `number`, from 0 in the order of the main file, without its time of writing.
  [[nodiscard]] CardRecord Card(uint32_t number) const {
    const std::vector<std::byte> main = files_.Contents(kMain);
    CardRecord card;
    std::ranges::copy(ByteView(main).subspan(kCardSize * (number + 1), kCardSize),
                      card.bytes().begin());
    card.set_write_time(0);
    return card;
  }

  void AddCards(std::initializer_list<CardRecord> cards, bool marked) {
    Directory directory(Services(), Options());
    ASSERT_GE(directory.OpenDirectory(), OpenResult::kOpened);
    for (const CardRecord& card : cards) {
      directory.context().current = card;
      uint32_t position = 0;
      ASSERT_EQ(CardDispatch(directory).Add(marked, &position), 0);
    }
    directory.CloseDirectory();
  }
  // Opens the family anew before it marks: an address file that is rebuilt then loses its marks.
  void MarkAll() {
    Directory directory(Services(), Options());
    ASSERT_EQ(directory.OpenDirectory(), OpenResult::kOpened);
    SetAllMarks(directory, true);
    directory.CloseDirectory();
  }
  TransferOutcome Export(const TransferProfile& profile, bool replace = false,
                         CharacterSet charset = CharacterSet::kOem) {
    Directory directory(Services(), Options());
    EXPECT_EQ(directory.OpenDirectory(), OpenResult::kOpened);
    return ExportDelimited(directory, profile, {kTarget, replace, charset});
  }

  FakeClock clock_{1000};
  MemoryFileSystem files_{clock_};
  RecordingProgress progress_;
};

}  // namespace carnetel
