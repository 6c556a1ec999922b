#include <algorithm>
#include <random>

#include "tests/transfer/transfer_testing.h"

namespace carnetel {
namespace {

// Random cards such as imports can make: each has a name, keys begin with a letter and numbers can
// be dialled.
class RandomCards {
 public:
  explicit RandomCards(unsigned seed) : random_(seed) {}

  CardRecord Next() {
    CardRecord card;
    for (const int field : kDelimitedFields) {
      if (field != kNom && Below(3) == 0) continue;
      card.SetField(field, OemText(Text(field)));
    }
    return card;
  }

 private:
  size_t Below(size_t limit) { return random_() % limit; }

  std::string Text(int field) {
    static constexpr std::string_view kPlain =
        "ABCXYZabcxyz0123456789 ,.\"'()-\x82\x8A\x90\xA5\xE9";
    static constexpr std::string_view kNumbers = "0123456789 :-+,@#*ABCDW";
    const bool number = field == kTel1 || field == kTel2 || field == kFax || field == kModem;
    const std::string_view alphabet = number ? kNumbers : kPlain;
    std::string text(1, alphabet[Below(5)]);
    const size_t size = Below(kFieldTable[field].size);
    while (text.size() < size) text += alphabet[Below(alphabet.size())];
    return text;
  }

  std::mt19937 random_;
};

class DelimitedRoundTrip : public TransferTest {
 protected:
  static constexpr uint32_t kCards = 200;

  static std::string SortKey(const CardRecord& card) { return std::string(AsChars(card.bytes())); }
  std::vector<std::string> SortedCards() const {
    std::vector<std::string> cards;
    for (uint32_t number = 0; number < CardCount(); ++number) {
      cards.push_back(SortKey(Card(number)));
    }
    std::ranges::sort(cards);
    return cards;
  }

  void Fill(unsigned seed) {
    Directory directory(Services(), Options());
    ASSERT_EQ(directory.OpenDirectory(), OpenResult::kCreated);
    RandomCards cards(seed);
    for (uint32_t i = 0; i < kCards; ++i) {
      directory.context().current = cards.Next();
      uint32_t position = 0;
      ASSERT_EQ(CardDispatch(directory).Add(true, &position), 0);
    }
    directory.CloseDirectory();
  }

  // Exports all cards, imports them into an emptied directory and compares.
  void GoRoundWith(const TransferProfile& profile, CharacterSet charset) {
    const std::vector<std::string> before = SortedCards();
    MarkAll();
    ASSERT_EQ(Export(profile, /*replace=*/true, charset).cards, kCards);
    const ImportRequest request{kTarget, Options(), /*replace=*/true, charset};
    ASSERT_EQ(ImportDelimited(Services(), profile, request).cards, kCards);
    EXPECT_EQ(SortedCards(), before);
  }

  static TransferProfile AllColumns(std::string_view separator) {
    TransferProfile profile = Columns({});
    int16_t rank = 1;
    for (const int field : kDelimitedFields) profile.set_rank(field, rank++);
    profile.set_field_separator(separator);
    return profile;
  }
};

TEST_F(DelimitedRoundTrip, EveryFieldComesBackThroughColumns) {
  for (unsigned seed = 1; seed <= 5; ++seed) {
    Fill(seed);
    GoRoundWith(AllColumns(";"), CharacterSet::kOem);
    GoRoundWith(AllColumns("TAB"), CharacterSet::kOem);
    GoRoundWith(AllColumns("NUL"), CharacterSet::kOem);
    EXPECT_TRUE(DeleteDirectoryFiles(files_, kMain, {}));
  }
}

TEST_F(DelimitedRoundTrip, AccentsComeBackThroughAnAnsiFile) {
  AddCards({MakeCard({{kNom, "Andr\x82"}, {kVille, "N\x8Cmes \x85 c\x93t\x82"}})}, true);
  const CardRecord before = Card(0);
  const TransferProfile profile = Columns({kNom, kVille});
  ASSERT_EQ(Export(profile, true, CharacterSet::kAnsi).cards, 1u);
  const ImportRequest request{kTarget, Options(), true, CharacterSet::kAnsi};
  ASSERT_EQ(ImportDelimited(Services(), profile, request).cards, 1u);
  EXPECT_EQ(Card(0), before);
}

TEST_F(DelimitedRoundTrip, TheDefaultRanksDoNotComeBackInPlace) {
  AddCards({MakeCard({{kNom, "Durand"}, {kSte1, "Garage"}})}, true);
  const TransferProfile profile = TransferProfile::OfNewInstallation();
  ASSERT_EQ(Export(profile, true).cards, 1u);
  const ImportRequest request{kTarget, Options(), true, CharacterSet::kOem};
  ASSERT_EQ(ImportDelimited(Services(), profile, request).cards, 1u);
  // Rank 3 is written twice, so that all behind it is one column further on.
  EXPECT_EQ(Card(0), MakeCard({{kNom, "Durand"}, {kSparePerson, "Durand"}, {kSte2, "Garage"}}));
}

}  // namespace
}  // namespace carnetel
