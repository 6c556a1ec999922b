#include "storage/index_walk.h"

#include <gtest/gtest.h>

#include "base/format_text.h"
#include "tests/storage/store_fixture.h"

namespace carnetel {
namespace {

constexpr WalkDirection kFirst = WalkDirection::kFirst;
constexpr WalkDirection kNext = WalkDirection::kNext;
constexpr WalkDirection kPrevious = WalkDirection::kPrevious;

class IndexWalkTest : public StoreFixture {
 protected:
  // From here on the walk looks for this example by its key.
  void LookFor(const CardRecord& example, int key_field = kSte1) {
    example_ = example;
    key_field_ = key_field;
    walk_.SetSearchKey(SearchKeyOf(example, key_field));
  }
  // From here on the walk goes over everything that matches the example.
  void LookOverAllFor(const CardRecord& example, int key_field = kSte1) {
    LookFor(example, key_field);
    walk_.SetSearchKey("");
  }
  // The number of the card found, 0 when there is none.
  uint32_t Step(WalkDirection direction) {
    context_.current = example_;
    const int number = key_field_ == kSte1 ? 1 : 2;
    const int result = walk_.WalkIndex(directory().index(number), directory().main(), key_field_,
                                       context_, &offset_, direction);
    return result == 0 ? offset_ / 768 : 0;
  }
  std::vector<uint32_t> Steps(std::initializer_list<WalkDirection> directions) {
    std::vector<uint32_t> found;
    for (const WalkDirection direction : directions) found.push_back(Step(direction));
    return found;
  }
  // The first and all following hits.
  std::vector<uint32_t> AllHits() {
    std::vector<uint32_t> found;
    for (uint32_t hit = Step(kFirst); hit != 0; hit = Step(kNext)) found.push_back(hit);
    return found;
  }
  // The directory is opened with its company index replaced by this one.
  void OpenWithIndex(const FileBytes& bytes) {
    Close();
    files.SetContents(Path(".I01"), bytes);
    files.Remove(Path(".ADR"));
    Open();
  }
  [[nodiscard]] std::string CurrentCompany() const {
    return context_.current.FieldText(kSte1).bytes();
  }

  CardContext context_;
  uint32_t offset_ = 0;

 private:
  IndexWalk walk_;
  CardRecord example_;
  int key_field_ = kSte1;
};

using Hits = std::vector<uint32_t>;

// Cards 1 to 5: in key order 2 ALBERT, 4 DUBOIS, 1 DUPONT, 3 DURAND, 5 EMILE.
class FiveCardsWalkTest : public IndexWalkTest {
 protected:
  FiveCardsWalkTest() {
    Open();
    Add("Dupont", "Yves");
    Add("Albert", "Anne");
    Add("Durand", "Zoe");
    Add("Dubois", "Xavier");
    Add("Emile", "");
  }
};

TEST_F(FiveCardsWalkTest, ByKeyTheMatchingCardsOfALetterComeInKeyOrder) {
  LookFor(MakeCard("du"));
  EXPECT_EQ(Steps({kFirst, kNext, kNext, kNext}), (Hits{4, 1, 3, 0}));
}

TEST_F(FiveCardsWalkTest, AHitIsInTheCurrentBufferAsItLiesOnTheDisk) {
  LookFor(MakeCard("DUP"));
  EXPECT_EQ(Step(kFirst), 1U);
  EXPECT_EQ(offset_, 768U);
  EXPECT_EQ(context_.current, CardAt(768));
  EXPECT_EQ(CurrentCompany(), "Dupont");
}

TEST_F(FiveCardsWalkTest, AtTheEndOfItsChainTheCurrentCardStays) {
  LookFor(MakeCard("du"));
  Steps({kFirst, kNext, kNext});
  EXPECT_EQ(Step(kNext), 0U);
  EXPECT_EQ(offset_, CardOffset(3));
  EXPECT_EQ(CurrentCompany(), "Durand");
}

TEST_F(FiveCardsWalkTest, WithoutAHitAndWithoutACardTheOffsetStays) {
  LookFor(MakeCard("Dz"));
  EXPECT_EQ(Step(kFirst), 0U);
  EXPECT_EQ(offset_, 0U);
}

TEST_F(FiveCardsWalkTest, WithoutAHitTheCardWhereTheUserStandsIsReadBack) {
  offset_ = CardOffset(2);
  LookFor(MakeCard("Dz"));
  EXPECT_EQ(Step(kFirst), 0U);
  EXPECT_EQ(offset_, CardOffset(2));
  EXPECT_EQ(CurrentCompany(), "Albert");
}

TEST_F(FiveCardsWalkTest, ByKeyTheSearchBeginsAtTheFirstKeyThatIsNotBelow) {
  LookFor(MakeCard("dup"));
  EXPECT_EQ(AllHits(), (Hits{1}));
  LookFor(MakeCard("dur"));
  EXPECT_EQ(AllHits(), (Hits{3}));
}

TEST_F(FiveCardsWalkTest, ByKeyALetterWithoutCardsHasNoHit) {
  LookFor(MakeCard("B"));
  EXPECT_EQ(AllHits(), Hits{});
  LookFor(MakeCard("Z"));
  EXPECT_EQ(AllHits(), Hits{});
  LookFor(MakeCard("5"));
  EXPECT_EQ(AllHits(), Hits{});
}

TEST_F(FiveCardsWalkTest, ByKeyOtherFieldsFilterAndTheWalkGoesOnToTheEndOfTheChain) {
  LookFor(MakeCard("d", "z"));
  EXPECT_EQ(AllHits(), (Hits{3}));
  LookFor(MakeCard("d", "x"));
  EXPECT_EQ(AllHits(), (Hits{4}));
}

TEST_F(FiveCardsWalkTest, ByKeyTheSecondIndexIsWalkedByItsOwnField) {
  LookFor(MakeCard("", "z"), kNom);
  EXPECT_EQ(AllHits(), (Hits{3}));
  // Card 5 has no surname and lies under its company, but never matches by one.
  LookFor(MakeCard("", "E"), kNom);
  EXPECT_EQ(AllHits(), Hits{});
}

TEST_F(FiveCardsWalkTest, ByKeyBackwardsTheCardInFrontOfTheHitComesDownToSlotZero) {
  LookFor(MakeCard("du"));
  Steps({kFirst, kNext, kNext});
  EXPECT_EQ(Steps({kPrevious, kPrevious, kPrevious}), (Hits{1, 4, 0}));
  EXPECT_EQ(CurrentCompany(), "Dubois");
}

TEST_F(FiveCardsWalkTest, ByKeyAHitIsNotReportedAgainAfterAReversal) {
  LookFor(MakeCard("du"));
  EXPECT_EQ(Steps({kFirst, kNext, kPrevious, kNext, kNext, kPrevious}), (Hits{4, 1, 4, 1, 3, 1}));
}

TEST_F(FiveCardsWalkTest, ByKeyAWalkThatRanOutForwardTurnsBackFromItsLastHit) {
  LookFor(MakeCard("du"));
  Steps({kFirst, kNext, kNext});
  EXPECT_EQ(Steps({kNext, kPrevious}), (Hits{0, 1}));
}

TEST_F(FiveCardsWalkTest, ByKeyAWalkThatRanOutBackwardTurnsForwardFromItsLastHit) {
  LookFor(MakeCard("du"));
  Steps({kFirst, kNext});
  EXPECT_EQ(Steps({kPrevious, kPrevious, kNext}), (Hits{4, 0, 1}));
}

TEST_F(FiveCardsWalkTest, AFirstStepBeginsAnew) {
  LookFor(MakeCard("du"));
  EXPECT_EQ(Steps({kFirst, kNext, kFirst, kNext}), (Hits{4, 1, 4, 1}));
}

TEST_F(FiveCardsWalkTest, BackwardsBeforeAnyHitThereIsNothing) {
  LookFor(MakeCard("du"));
  EXPECT_EQ(Step(kPrevious), 0U);
  LookFor(MakeCard("dz"));
  EXPECT_EQ(Steps({kFirst, kPrevious}), (Hits{0, 0}));
}

TEST_F(FiveCardsWalkTest, OverAllEveryCardComesInKeyOrder) {
  LookOverAllFor(CardRecord());
  EXPECT_EQ(AllHits(), (Hits{2, 4, 1, 3, 5}));
  LookOverAllFor(CardRecord(), kNom);
  EXPECT_EQ(AllHits(), (Hits{2, 5, 4, 1, 3}));
}

TEST_F(FiveCardsWalkTest, OverAllOnlyMatchingCardsAreHits) {
  LookOverAllFor(MakeCard({{kNom, "e"}}));
  EXPECT_EQ(AllHits(), (Hits{2, 4, 1, 3}));
  LookOverAllFor(MakeCard({{kNom, "yves"}}));
  EXPECT_EQ(AllHits(), (Hits{1}));
}

TEST_F(FiveCardsWalkTest, OverAllBackwardsAcrossEmptyPagesDownToTheFirstCard) {
  LookOverAllFor(CardRecord());
  AllHits();
  EXPECT_EQ(Steps({kPrevious, kPrevious, kPrevious, kPrevious, kPrevious}), (Hits{3, 1, 4, 2, 0}));
  EXPECT_EQ(CurrentCompany(), "Albert");
}

TEST_F(FiveCardsWalkTest, OverAllAReversalGoesOnBehindOrInFrontOfTheLastHit) {
  LookOverAllFor(CardRecord());
  EXPECT_EQ(Steps({kFirst, kNext, kNext, kPrevious, kNext, kNext, kPrevious}),
            (Hits{2, 4, 1, 4, 1, 3, 1}));
}

TEST_F(FiveCardsWalkTest, OverAllTheEndsAreNotPassed) {
  LookOverAllFor(CardRecord());
  EXPECT_EQ(Steps({kFirst, kPrevious, kPrevious, kNext}), (Hits{2, 0, 0, 4}));
  Steps({kNext, kNext, kNext});
  EXPECT_EQ(CurrentCompany(), "Emile");
  EXPECT_EQ(Steps({kNext, kNext, kPrevious}), (Hits{0, 0, 3}));
}

TEST_F(FiveCardsWalkTest, OverAllACardOfTheLastPageIsNotReportedTwice) {
  Add("Zorro");
  LookOverAllFor(CardRecord());
  EXPECT_EQ(AllHits(), (Hits{2, 4, 1, 3, 5, 6}));
  EXPECT_EQ(Steps({kNext, kNext, kPrevious, kNext, kNext}), (Hits{0, 0, 5, 6, 0}));
}

TEST_F(FiveCardsWalkTest, ByKeyACardAddedAtTheEndOfTheChainIsFoundByAWalkThatStoodThere) {
  LookFor(MakeCard("du"));
  AllHits();
  Add("Duval");
  EXPECT_EQ(Step(kNext), 6U);
}

class ChainWalkTest : public IndexWalkTest {
 protected:
  // Forty cards "CARTE 00001" to "CARTE 00040", so that the chain of C has two pages, and one card
  // in front and one behind.
  ChainWalkTest() {
    Build(40);
    Add("Albert");
    Add("Durand");
  }
};

TEST_F(ChainWalkTest, ByKeyTheWalkCrossesThePagesOfItsChainAndEndsWithIt) {
  LookFor(MakeCard("C"));
  const Hits hits = AllHits();
  ASSERT_EQ(hits.size(), 40U);
  for (uint32_t i = 0; i < 40; ++i) EXPECT_EQ(hits[i], i + 1);
}

TEST_F(ChainWalkTest, ByKeyASearchReachesTheSecondPageDirectly) {
  LookFor(MakeCard("Carte 00038"));
  EXPECT_EQ(AllHits(), (Hits{38}));
}

TEST_F(ChainWalkTest, ByKeyBackwardsTheWalkCrossesThePages) {
  LookFor(MakeCard("C"));
  AllHits();
  for (uint32_t number = 39; number >= 1; --number) ASSERT_EQ(Step(kPrevious), number);
  EXPECT_EQ(Step(kPrevious), 0U);
}

TEST_F(ChainWalkTest, ByKeyAReversalAtAPageBoundary) {
  LookFor(MakeCard("C"));
  Step(kFirst);
  for (int i = 2; i <= 37; ++i) Step(kNext);
  EXPECT_EQ(Steps({kPrevious, kPrevious, kNext, kNext, kNext}), (Hits{36, 35, 36, 37, 38}));
}

TEST_F(ChainWalkTest, ByKeyBackwardsAFullPageOfALowerLetterEndsTheWalk) {
  Close();
  ExpectedSlots full;
  for (uint32_t number = 1; number <= 36; ++number) {
    full.push_back({FormatPrintf("CARTE %04u", {number}), CardOffset(number)});
  }
  OpenWithIndex(IndexBuilder().Page('C', full).Page('D', {{"DURAND", CardOffset(42)}}).Bytes());
  LookFor(MakeCard("D"));
  EXPECT_EQ(Steps({kFirst, kPrevious, kNext}), (Hits{42, 0, 0}));
}

TEST_F(ChainWalkTest, OverAllBothWaysAcrossThePages) {
  LookOverAllFor(CardRecord());
  EXPECT_EQ(AllHits().size(), 42U);
  for (uint32_t number = 40; number >= 1; --number) ASSERT_EQ(Step(kPrevious), number);
  EXPECT_EQ(Steps({kPrevious, kPrevious}), (Hits{41, 0}));
}

class DamagedWalkTest : public IndexWalkTest {
 protected:
  DamagedWalkTest() {
    Open();
    Add("Dubois");
    Add("Dupont");
    Add("Durand");
    Close();
  }
};

TEST_F(DamagedWalkTest, ByKeyAHoleEndsTheWalk) {
  OpenWithIndex(IndexBuilder().Page('D', {{"DUBOIS", 768}, {"", 0}, {"DURAND", 2304}}).Bytes());
  LookFor(MakeCard("du"));
  EXPECT_EQ(Steps({kFirst, kNext, kNext}), (Hits{1, 0, 0}));
}

TEST_F(DamagedWalkTest, ByKeyACardBehindAHoleIsNotReached) {
  OpenWithIndex(IndexBuilder().Page('D', {{"DUBOIS", 768}, {"", 0}, {"DURAND", 2304}}).Bytes());
  LookFor(MakeCard("dur"));
  EXPECT_EQ(Step(kFirst), 0U);
}

TEST_F(DamagedWalkTest, ByKeyAHoleInSlotZeroHidesThePage) {
  OpenWithIndex(IndexBuilder().Page('D', {{"", 0}, {"DUPONT", 1536}, {"DURAND", 2304}}).Bytes());
  LookFor(MakeCard("du"));
  EXPECT_EQ(Step(kFirst), 0U);
}

TEST_F(DamagedWalkTest, OverAllAHoleIsSteppedOver) {
  OpenWithIndex(
      IndexBuilder().Page('D', {{"", 0}, {"DUBOIS", 768}, {"", 0}, {"DURAND", 2304}}).Bytes());
  LookOverAllFor(CardRecord());
  EXPECT_EQ(Steps({kFirst, kNext, kNext, kPrevious, kPrevious}), (Hits{1, 3, 0, 1, 0}));
}

TEST_F(DamagedWalkTest, OverAllACardThatCannotBeReadEndsTheWalk) {
  // An offset between two cards passes the check of the index and names no card.
  OpenWithIndex(
      IndexBuilder().Page('D', {{"DUBOIS", 768}, {"DUPONT", 2000}, {"DURAND", 2304}}).Bytes());
  LookOverAllFor(CardRecord());
  EXPECT_EQ(Steps({kFirst, kNext}), (Hits{1, 0}));
}

TEST_F(IndexWalkTest, AnAccentAsFirstByteIsFoundWhereItIsFiled) {
  Open();
  Add("\x90tat");
  Add("0mega");
  LookFor(MakeCard("\x90t"));
  EXPECT_EQ(AllHits(), (Hits{1}));
}

TEST_F(IndexWalkTest, AnEmptyDirectoryHasNoHits) {
  Open();
  LookOverAllFor(CardRecord());
  EXPECT_EQ(Steps({kFirst, kNext, kPrevious}), (Hits{0, 0, 0}));
}

TEST_F(IndexWalkTest, ASearchKeyOfMoreThanTenBytesComparesTheFirstTen) {
  Open();
  Add("Abcdefghij un");
  Add("Abcdefghij deux");
  LookFor(MakeCard("abcdefghij d"));
  EXPECT_EQ(AllHits(), (Hits{2}));
}

}  // namespace
}  // namespace carnetel
