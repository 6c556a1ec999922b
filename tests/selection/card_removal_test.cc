#include "selection/card_removal.h"

#include "storage/family_check.h"
#include "tests/shell/shell_testing.h"

namespace carnetel {
namespace {

class CardRemovalTest : public OpenDirectoryTest {
 protected:
  void SetUp() override { OpenAt(kSte1); }

  void ExpectConsistent() {
    directory_->CloseDirectory();
    const std::vector<Finding> findings = CheckFamily(files_, directory_->paths(), kSte1);
    for (const Finding& finding : findings) ADD_FAILURE() << finding.file << ' ' << finding.text;
  }
};

using Texts = std::vector<std::string>;

TEST_F(CardRemovalTest, TargetsThatAnEarlierDeleteMovedAreStillDeleted) {
  std::vector<uint32_t> offsets;
  for (const char* company : {"A", "B", "C", "D", "E"}) offsets.push_back(AddCard(company, ""));
  // E moves into A's place, then D into E's new one.
  const CardRemoval removal = DeleteCards(*directory_, {offsets[0], offsets[4], offsets[3]});
  EXPECT_EQ(removal.deleted, 3U);
  EXPECT_FALSE(removal.failed);
  EXPECT_EQ(Companies(), (Texts{"B", "C"}));
  ExpectConsistent();
}

TEST_F(CardRemovalTest, ACardNamedTwiceIsDeletedOnce) {
  const uint32_t first = AddCard("A", "");
  AddCard("B", "");
  EXPECT_EQ(DeleteCards(*directory_, {first, first}).deleted, 1U);
  EXPECT_EQ(Companies(), Texts{"B"});
}

TEST_F(CardRemovalTest, AllCardsCanGo) {
  std::vector<uint32_t> offsets;
  for (const char* company : {"A", "B", "C"}) offsets.push_back(AddCard(company, ""));
  EXPECT_EQ(DeleteCards(*directory_, offsets).deleted, 3U);
  EXPECT_EQ(files_.Contents("/d/X.DAN").size(), 768U);
  ExpectConsistent();
}

TEST_F(CardRemovalTest, MarkedCardsGoInTheOrderOfTheRows) {
  AddCard("C", "", true);
  AddCard("A", "", true);
  AddCard("B", "");
  const CardRemoval removal = DeleteMarkedCards(*directory_);
  EXPECT_EQ(removal.deleted, 2U);
  EXPECT_EQ(directory_->marked_count(), 0);
  EXPECT_EQ(Companies(), Texts{"B"});
  ExpectConsistent();
}

TEST_F(CardRemovalTest, AnOffsetWithoutACardFails) {
  AddCard("A", "");
  const CardRemoval removal = DeleteCards(*directory_, {768 * 5});
  EXPECT_TRUE(removal.failed);
  EXPECT_EQ(removal.deleted, 0U);
}

TEST_F(CardRemovalTest, ManyMarkedCardsAcrossPagesOfOneLetterGo) {
  for (int i = 0; i < 100; ++i) AddCard("M" + std::to_string(i), "", i % 3 != 0);
  EXPECT_EQ(DeleteMarkedCards(*directory_).deleted, 66U);
  EXPECT_EQ(Companies().size(), 34U);
  EXPECT_EQ(files_.Contents("/d/X.DAN").size(), 35U * 768);
}

TEST(DeletionLabel, IsTheKeyFieldOrTheOtherOne) {
  CardRecord card;
  card.SetField(kNom, OemText("\x90lu"));
  EXPECT_EQ(DeletionLabel(card, kSte1), "Élu");
  card.SetField(kSte1, OemText("Abc"));
  EXPECT_EQ(DeletionLabel(card, kSte1), "Abc");
  EXPECT_EQ(DeletionLabel(card, kNom), "Élu");
}

}  // namespace
}  // namespace carnetel
