#include "shell/card_rows.h"

#include "tests/shell/shell_testing.h"

namespace carnetel {
namespace {

class CardRowsTest : public OpenDirectoryTest {
 protected:
  std::vector<std::string> Shown(const LetterRange& range) {
    std::vector<std::string> shown;
    hidden_ = VisitCardRows(*directory_, range, [&](const CardRow& row) {
      EXPECT_EQ(row.entry, directory_->address().Entry(row.row));
      const int field = row.card.FieldEmpty(kSte1) ? kNom : kSte1;
      shown.push_back(row.card.FieldText(field).bytes());
      return shown.size() < limit_;
    });
    return shown;
  }

  uint32_t hidden_ = 0;
  size_t limit_ = 1000;
};

using Texts = std::vector<std::string>;

TEST_F(CardRowsTest, ATabShowsTheKeysOfItsLetter) {
  OpenAt(kSte1);
  for (const char* company : {"Beta", "alpha", "9", "Zoe", "0a", "Alpha"}) AddCard(company, "");
  EXPECT_EQ(Shown(kAllLetters), (Texts{"0a", "9", "alpha", "Alpha", "Beta", "Zoe"}));
  EXPECT_EQ(Shown({'A', 'B'}), (Texts{"alpha", "Alpha"}));
  EXPECT_EQ(Shown({'9', 'A'}), Texts{"9"});
  EXPECT_EQ(Shown({'0', '1'}), Texts{"0a"});
  EXPECT_EQ(Shown({'C', 'D'}), Texts{});
  EXPECT_EQ(Shown({'Z', 0}), Texts{"Zoe"});
}

TEST_F(CardRowsTest, KeysBelowZeroAndAccentsAreInNoView) {
  OpenAt(kSte1);
  AddCard("\x90lan", "");  // É
  AddCard("(Paris)", "");
  AddCard("Abc", "");
  EXPECT_EQ(Shown(kAllLetters), Texts{"Abc"});
  EXPECT_EQ(hidden_, 2U);
  EXPECT_EQ(Shown({'0', '1'}), Texts{});
}

TEST_F(CardRowsTest, TheOtherKeyFieldCountsWhenTheActiveOneIsEmptyOrBlank) {
  OpenAt(kSte1);
  AddCard("", "abel");
  AddCard(" Zoe", "Bez");
  EXPECT_EQ(Shown({'A', 'B'}), Texts{"abel"});
  CardRecord card;
  ASSERT_TRUE(directory_->main().ReadCard(1536, card));
  EXPECT_TRUE(ShowsCard(card, kSte1, {'B', 'C'}));
  EXPECT_FALSE(ShowsCard(card, kSte1, {'Z', 0}));
}

TEST_F(CardRowsTest, TheLastTabShowsEverythingFromZUpward) {
  CardRecord card;
  card.SetField(kSte1, OemText("[x]"));
  EXPECT_TRUE(ShowsCard(card, kSte1, {'Z', 0}));
  EXPECT_TRUE(ShowsCard(card, kSte1, kAllLetters));
  card.SetField(kSte1, OemText(":x"));
  EXPECT_FALSE(ShowsCard(card, kSte1, {'Z', 0}));
  EXPECT_TRUE(ShowsCard(card, kSte1, kAllLetters));
}

TEST_F(CardRowsTest, TheNameIndexHasItsOwnOrder) {
  OpenAt(kNom);
  AddCard("A", "Zed");
  AddCard("B", "Abel");
  EXPECT_EQ(Shown({'A', 'B'}), Texts{"B"});
  EXPECT_EQ(Shown({'Z', 0}), Texts{"A"});
}

TEST_F(CardRowsTest, TheVisitEndsWhenItIsToldTo) {
  OpenAt(kSte1);
  for (const char* company : {"A", "B", "C"}) AddCard(company, "");
  limit_ = 2;
  EXPECT_EQ(Shown(kAllLetters), (Texts{"A", "B"}));
}

TEST(LetterRangeOf, KnowsDigitsAndLettersInEitherCase) {
  EXPECT_EQ(LetterRangeOf('0'), (LetterRange{'0', '1'}));
  EXPECT_EQ(LetterRangeOf('9'), (LetterRange{'9', 'A'}));
  EXPECT_EQ(LetterRangeOf('a'), (LetterRange{'A', 'B'}));
  EXPECT_EQ(LetterRangeOf('Y'), (LetterRange{'Y', 'Z'}));
  EXPECT_EQ(LetterRangeOf('z'), (LetterRange{'Z', 0}));
  for (const char letter : {'/', ':', '@', '[', '`', '{', ' ', '\0', '\x90'}) {
    EXPECT_EQ(LetterRangeOf(letter), std::nullopt);
  }
}

}  // namespace
}  // namespace carnetel
