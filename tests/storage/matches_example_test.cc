#include <gtest/gtest.h>

#include "storage/index_walk.h"
#include "tests/storage/store_fixture.h"

namespace carnetel {
namespace {

bool Matches(const CardRecord& example, const CardRecord& card, int key_field = kSte1,
             bool prefix_mode = true) {
  CardContext context;
  context.current = example;
  context.reference = card;
  return MatchesExample(context, key_field, prefix_mode);
}

TEST(MatchesExampleTest, AnEmptyExampleMatchesEveryCard) {
  EXPECT_TRUE(Matches(CardRecord(), MakeCard("Alpha", "Durand")));
  EXPECT_TRUE(Matches(CardRecord(), CardRecord()));
}

TEST(MatchesExampleTest, TheKeyFieldMatchesAtItsStart) {
  EXPECT_TRUE(Matches(MakeCard("Du"), MakeCard("Dupont")));
  EXPECT_TRUE(Matches(MakeCard("Dupont"), MakeCard("Dupont")));
  EXPECT_FALSE(Matches(MakeCard("pont"), MakeCard("Dupont")));
  EXPECT_FALSE(Matches(MakeCard("Dupont et Fils"), MakeCard("Dupont")));
}

TEST(MatchesExampleTest, WithoutPrefixModeTheKeyFieldMatchesWhole) {
  EXPECT_TRUE(Matches(MakeCard("dupont"), MakeCard("Dupont"), kSte1, false));
  EXPECT_FALSE(Matches(MakeCard("Du"), MakeCard("Dupont"), kSte1, false));
}

TEST(MatchesExampleTest, AnyOtherFieldMatchesAnywhere) {
  EXPECT_TRUE(Matches(MakeCard({{kVille, "yon"}}), MakeCard({{kVille, "Lyon 3"}})));
  EXPECT_TRUE(Matches(MakeCard("", "ran"), MakeCard("Alpha", "Durand")));
  EXPECT_FALSE(Matches(MakeCard("", "ran"), MakeCard("Alpha", "Durand"), kNom));
  EXPECT_FALSE(Matches(MakeCard({{kVille, "Paris"}}), MakeCard({{kVille, "Lyon 3"}})));
}

TEST(MatchesExampleTest, EveryFieldOfTheExampleMustMatch) {
  const CardRecord card = MakeCard({{kSte1, "Alpha"}, {kVille, "Lyon"}, {kSpare30, "x"}});
  EXPECT_TRUE(Matches(MakeCard({{kSte1, "a"}, {kVille, "lyon"}, {kSpare30, "X"}}), card));
  EXPECT_FALSE(Matches(MakeCard({{kSte1, "a"}, {kVille, "lyon"}, {kSpare30, "y"}}), card));
  EXPECT_FALSE(Matches(MakeCard({{kSte1, "a"}, {kVille, "lyon"}, {kPays, "F"}}), card));
}

TEST(MatchesExampleTest, TheCaseOfPlainLettersDoesNotCount) {
  EXPECT_TRUE(Matches(MakeCard("dUP", "dURAND"), MakeCard("Dupont", "Durand")));
}

TEST(MatchesExampleTest, AccentsCountExactly) {
  EXPECT_TRUE(Matches(MakeCard({{kVille, "n\x82"}}), MakeCard({{kVille, "Annecy-N\x82"}})));
  EXPECT_FALSE(Matches(MakeCard({{kVille, "n\x82"}}), MakeCard({{kVille, "N\x90"}})));
  EXPECT_FALSE(Matches(MakeCard({{kVille, "ne"}}), MakeCard({{kVille, "N\x82"}})));
  EXPECT_FALSE(Matches(MakeCard("\x90"), MakeCard("\x82tat")));
}

TEST(MatchesExampleTest, AnEmptyLongPostalCodeOfTheCardIsItsShortOne) {
  const CardRecord short_code = MakeCard({{kShortPostalCode, "69003"}});
  EXPECT_TRUE(Matches(MakeCard({{kPostalCode, "690"}}), short_code));
  EXPECT_TRUE(Matches(MakeCard({{kShortPostalCode, "690"}}), short_code));
  const CardRecord both = MakeCard({{kShortPostalCode, "69003"}, {kPostalCode, "75001"}});
  EXPECT_FALSE(Matches(MakeCard({{kPostalCode, "690"}}), both));
  EXPECT_TRUE(Matches(MakeCard({{kPostalCode, "75"}}), both));
}

TEST(MatchesExampleTest, TheShortPostalCodeHasNoStandIn) {
  EXPECT_FALSE(Matches(MakeCard({{kShortPostalCode, "69"}}), MakeCard({{kPostalCode, "69003"}})));
}

TEST(MatchesExampleTest, ACardWithoutItsKeyFieldNeverMatchesAnExampleWithOne) {
  EXPECT_FALSE(Matches(MakeCard("Durand"), MakeCard("", "Durand")));
  EXPECT_FALSE(Matches(MakeCard("", "Alpha"), MakeCard("Alpha", ""), kNom));
}

TEST(MatchesExampleTest, TextBehindAZeroDoesNotCount) {
  CardRecord card;
  StorePadded(card.bytes(), kFieldTable[kVille].offset, 32, std::string_view("Lyon\0Paris", 10));
  EXPECT_FALSE(Matches(MakeCard({{kVille, "Paris"}}), card));
}

TEST(MatchesExampleTest, AFieldThatFillsItsAreaIsComparedWhole) {
  const std::string full = "12345678901234567890123456789012";
  EXPECT_TRUE(Matches(MakeCard(full), MakeCard(full)));
  EXPECT_FALSE(Matches(MakeCard(full), MakeCard(full.substr(0, 31))));
}

}  // namespace
}  // namespace carnetel
