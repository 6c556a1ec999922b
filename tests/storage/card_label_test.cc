#include <gtest/gtest.h>

#include "storage/card_key.h"
#include "tests/storage/store_fixture.h"

namespace carnetel {
namespace {

CardRecord Person() {
  return MakeCard({{kSte1, "Alpha SA"}, {kQualite, "Mme"}, {kPrenom, "Anne"}, {kNom, "Durand"}});
}

std::string CompanyLabel(const CardRecord& card, int style, size_t limit = 100) {
  return ComposeCardLabel(card, LabelMode::kMainList, limit,
                          {.active_index = 1, .style_aff_ste = style})
      .bytes();
}

std::string PersonLabel(const CardRecord& card, int style, size_t limit = 100) {
  return ComposeCardLabel(card, LabelMode::kMainList, limit,
                          {.active_index = 2, .style_aff_list = style, .style_aff_emi = 3 - style})
      .bytes();
}

std::string EmissionLabel(const CardRecord& card, int active_index, int style) {
  return ComposeCardLabel(card, LabelMode::kEmissionList, 100,
                          {.active_index = active_index,
                           .style_aff_ste = 0,
                           .style_aff_list = 3 - style,
                           .style_aff_emi = style})
      .bytes();
}

TEST(CardLabelTest, TheCompanyIndexHasThreeStyles) {
  EXPECT_EQ(CompanyLabel(Person(), 0), "Alpha SA ");
  EXPECT_EQ(CompanyLabel(Person(), 1), "Alpha SA Durand ");
  EXPECT_EQ(CompanyLabel(Person(), 2), "Durand Alpha SA ");
}

TEST(CardLabelTest, TheNameIndexHasFourStyles) {
  EXPECT_EQ(PersonLabel(Person(), 0), "Mme Anne Durand ");
  EXPECT_EQ(PersonLabel(Person(), 1), "Anne Durand ");
  EXPECT_EQ(PersonLabel(Person(), 2), "Mme Durand Anne ");
  EXPECT_EQ(PersonLabel(Person(), 3), "Durand Anne ");
}

TEST(CardLabelTest, TheEmissionListHasItsOwnStyleUnderBothIndexes) {
  for (const int active_index : {1, 2}) {
    EXPECT_EQ(EmissionLabel(Person(), active_index, 0), "Mme Anne Durand ");
    EXPECT_EQ(EmissionLabel(Person(), active_index, 1), "Anne Durand ");
    EXPECT_EQ(EmissionLabel(Person(), active_index, 2), "Mme Durand Anne ");
    EXPECT_EQ(EmissionLabel(Person(), active_index, 3), "Durand Anne ");
  }
}

TEST(CardLabelTest, AnEmptyTitleGivesAnEmptyPart) {
  const CardRecord card = MakeCard({{kPrenom, "Anne"}, {kNom, "Durand"}});
  EXPECT_EQ(PersonLabel(card, 0), "Anne Durand ");
}

TEST(CardLabelTest, ABlankFieldGivesAnEmptyPart) {
  const CardRecord card = MakeCard({{kQualite, "   "}, {kNom, "Durand"}});
  EXPECT_EQ(PersonLabel(card, 0), "Durand ");
}

TEST(CardLabelTest, TrailingBlanksOfAFieldGoAndLeadingOnesStay) {
  const CardRecord card = MakeCard({{kPrenom, "  Anne   "}, {kNom, "Durand  "}});
  EXPECT_EQ(PersonLabel(card, 1), "  Anne Durand ");
}

TEST(CardLabelTest, APartOfOneLetterIsKept) {
  EXPECT_EQ(PersonLabel(MakeCard({{kPrenom, "A"}, {kNom, "B  "}}), 1), "A B ");
}

TEST(CardLabelTest, ACardWithoutTheseFieldsHasAnEmptyLabel) {
  EXPECT_EQ(CompanyLabel(CardRecord(), 1), "");
  EXPECT_EQ(PersonLabel(CardRecord(), 2), "");
}

TEST(CardLabelTest, ThePartThatReachesTheLimitIsKeptWhole) {
  EXPECT_EQ(PersonLabel(Person(), 0, 16), "Mme Anne Durand ");
}

TEST(CardLabelTest, ThePartThatPassesTheLimitIsCutAtIt) {
  EXPECT_EQ(PersonLabel(Person(), 0, 15), "Mme Anne Durand");
  EXPECT_EQ(PersonLabel(Person(), 0, 12), "Mme Anne Dur");
}

TEST(CardLabelTest, BehindACutPartNothingIsAdded) {
  EXPECT_EQ(PersonLabel(Person(), 0, 6), "Mme An");
  EXPECT_EQ(PersonLabel(Person(), 2, 4), "Mme ");
}

TEST(CardLabelTest, TheFirstPartAloneIsNeverCut) {
  EXPECT_EQ(CompanyLabel(MakeCard("12345678901234567890123456789012"), 0, 32),
            "12345678901234567890123456789012 ");
  EXPECT_EQ(CompanyLabel(Person(), 0, 3), "Alpha SA ");
}

TEST(CardLabelTest, AFurtherPartEndsTheLabelAtTheLimitThatTheFirstPassed) {
  EXPECT_EQ(CompanyLabel(MakeCard("12345678901234567890123456789012", "Durand"), 1, 32),
            "12345678901234567890123456789012");
}

TEST(CardLabelTest, FieldsThatFillTheirAreaAreReadToTheirEnd) {
  const CardRecord card =
      MakeCard({{kQualite, "ABCDEFGHIJKLMNOPQRSTUVWX"}, {kPrenom, "Anne"}, {kNom, "Durand"}});
  EXPECT_EQ(PersonLabel(card, 0), "ABCDEFGHIJKLMNOPQRSTUVWX Anne Durand ");
}

TEST(CardLabelTest, AListedCardIsNamedByItsLabelCutAtThirtyTwo) {
  const CardRecord card = MakeCard("1234567890123456789012345", "Durand");
  EXPECT_EQ(ListLabelOf(card, {.active_index = 1, .style_aff_ste = 1}).bytes(),
            "1234567890123456789012345 Durand");
}

TEST(CardLabelTest, AListedCardWithoutALabelIsNamedByTheOtherKeyField) {
  const CardRecord name_only = MakeCard("", "Durand");
  EXPECT_EQ(ListLabelOf(name_only, {.active_index = 1, .style_aff_ste = 0}).bytes(), "Durand");
  const CardRecord company_only = MakeCard("Alpha", "");
  EXPECT_EQ(ListLabelOf(company_only, {.active_index = 2, .style_aff_list = 1}).bytes(), "Alpha");
}

TEST(CardLabelTest, AKeyFieldThatIsEmptyOrStartsWithABlankGivesWayToTheOther) {
  EXPECT_EQ(ListedKeyField(MakeCard("Alpha", "Durand"), kSte1), kSte1);
  EXPECT_EQ(ListedKeyField(MakeCard("", "Durand"), kSte1), kNom);
  EXPECT_EQ(ListedKeyField(MakeCard(" x", "Durand"), kSte1), kNom);
  EXPECT_EQ(ListedKeyField(MakeCard("Alpha", ""), kNom), kSte1);
}

}  // namespace
}  // namespace carnetel
