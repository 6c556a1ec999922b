#include <algorithm>
#include <random>

#include "base/code_page.h"
#include "tests/transfer/fixed_testing.h"
#include "tests/transfer/transfer_testing.h"
#include "transfer/fixed.h"

namespace carnetel {
namespace {

// The OEM bytes, from the blank on, of characters that the ANSI page holds as well.
std::string SharedCharacters() {
  std::string shared;
  for (int byte = ' '; byte <= 0xFF; ++byte) {
    const OemText text(std::string(1, static_cast<char>(byte)));
    if (Utf8FromAnsi(OemToAnsi(text)) == Utf8FromOem(text)) shared += text.bytes();
  }
  return shared;
}

// Cards such as imports can make: no text begins with a blank, keys begin with a letter or a digit
// and numbers can be dialled. Fields are empty, filled to the last byte or between.
class RandomCards {
 public:
  explicit RandomCards(unsigned seed) : random_(seed) {}

  CardRecord Next() {
    CardRecord card;
    for (const int field : kFixedFields) {
      if (field != kNom && Below(3) == 0) continue;
      card.SetField(field, OemText(Text(field)));
    }
    return card;
  }

 private:
  size_t Below(size_t limit) { return random_() % limit; }

  std::string Text(int field) {
    static constexpr std::string_view kNumbers = "0123456789:-+,@#*ABCDW ";
    const bool number = field == kTel1 || field == kTel2 || field == kFax || field == kModem;
    const std::string_view alphabet = number ? kNumbers : std::string_view(shared_);
    const size_t size = Below(4) == 0 ? kFieldTable[field].size : Below(kFieldTable[field].size);
    std::string text(1, kNumbers[Below(10)]);
    while (text.size() < size) text += alphabet[Below(alphabet.size())];
    return text;
  }

  std::mt19937 random_;
  std::string shared_ = SharedCharacters();
};

class FixedRoundTrip : public TransferTest {
 protected:
  static constexpr uint32_t kCards = 2000;

  std::vector<std::string> SortedCards() const {
    const std::vector<std::byte> main = files_.Contents(kMain);
    std::vector<std::string> cards;
    for (size_t at = kCardSize; at + kCardSize <= main.size(); at += kCardSize) {
      // Without its time of writing.
      cards.emplace_back(AsChars(ByteView(main).subspan(at, CardRecord::kWriteTimeOffset)));
    }
    std::ranges::sort(cards);
    return cards;
  }

  void Fill() {
    Directory directory(Services(), Options());
    ASSERT_EQ(directory.OpenDirectory(), OpenResult::kCreated);
    RandomCards cards(7);
    const Directory::Batch batch(directory);
    for (uint32_t i = 0; i < kCards; ++i) {
      directory.context().current = cards.Next();
      uint32_t position = 0;
      ASSERT_EQ(CardDispatch(directory).Add(true, &position), 0);
    }
  }

  // Exports all cards, imports them into an emptied directory and compares.
  void GoRoundWith(const TransferProfile& profile, CharacterSet charset) {
    Fill();
    const std::vector<std::string> before = SortedCards();
    ASSERT_EQ(before.size(), kCards);
    MarkAll();
    {
      Directory directory(Services(), Options());
      ASSERT_EQ(directory.OpenDirectory(), OpenResult::kOpened);
      ASSERT_EQ(ExportFixed(directory, profile, {kTarget, true, charset}).cards, kCards);
    }
    const ImportRequest request{kTarget, Options(), /*replace=*/true, charset};
    ASSERT_EQ(ImportFixed(Services(), profile, request).cards, kCards);
    EXPECT_TRUE(SortedCards() == before);
  }

  // All fields one behind the other, backwards, behind an odd offset.
  static TransferProfile Packed() {
    TransferProfile profile = FixedLayout(13, 0, {});
    int16_t position = 0;
    for (size_t i = kFixedFields.size(); i-- > 0;) {
      const auto size = static_cast<int16_t>(kFieldTable[kFixedFields[i]].size);
      profile.set_place(kFixedFields[i], {position, size});
      position = static_cast<int16_t>(position + size);
    }
    profile.set_card_size(position);
    return profile;
  }
};

TEST_F(FixedRoundTrip, BothCodePagesShareTheAccents) {
  const std::string shared = SharedCharacters();
  EXPECT_GT(shared.size(), 180u);
  for (const char accent : std::string_view("\x82\x8A\x85\x87\x93\x96\x90\xB7")) {
    EXPECT_NE(shared.find(accent), std::string::npos) << static_cast<unsigned char>(accent);
  }
  EXPECT_EQ(shared.find('\xC4'), std::string::npos) << "a line drawn between boxes";
}

TEST_F(FixedRoundTrip, DefaultLayoutInOem) {
  GoRoundWith(TransferProfile(), CharacterSet::kOem);
}

TEST_F(FixedRoundTrip, DefaultLayoutInAnsi) {
  GoRoundWith(TransferProfile(), CharacterSet::kAnsi);
}

TEST_F(FixedRoundTrip, PackedLayoutInOem) {
  GoRoundWith(Packed(), CharacterSet::kOem);
}

TEST_F(FixedRoundTrip, PackedLayoutInAnsi) {
  GoRoundWith(Packed(), CharacterSet::kAnsi);
}

}  // namespace
}  // namespace carnetel
