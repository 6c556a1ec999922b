// Headings and lines of a printed list, column by column.
#include "printing/list_layout.h"

#include "tests/printing/printing_testing.h"

namespace carnetel {
namespace {

constexpr uint32_t kChoiceNom = 2, kChoiceSte1 = 3, kChoiceCp = 7, kChoiceVille = 8;
constexpr uint32_t kChoiceNotes = 20;

ListLayout Layout(std::initializer_list<ColumnSpec> columns) {
  return ListLayout(CompositionOf(columns));
}

CardRecord Card(Fields fields) {
  CardRecord card;
  for (const auto& [field, text] : fields) card.SetField(field, OemText(std::string(text)));
  return card;
}

std::string Blanks(size_t count) {
  return std::string(count, ' ');
}

TEST(ListLayoutTest, ChoicesAreFieldsOfTheCard) {
  const int fields[] = {9, 10, 0, 1, 2, 3, 25, 6, 7, 18, 19, 22, 24, 12, 13, 14, 15, 16, 17, 26};
  for (uint32_t choice = 1; choice <= kColumnChoices; ++choice) {
    EXPECT_EQ(FieldOfChoice(choice), fields[choice - 1]) << choice;
    EXPECT_EQ(ChoiceOfField(fields[choice - 1]), choice);
  }
}

TEST(ListLayoutTest, QualiteAndTheShortCodeAreNotOffered) {
  EXPECT_EQ(ChoiceOfField(kQualite), 0U);
  EXPECT_EQ(ChoiceOfField(kShortPostalCode), 0U);
  EXPECT_EQ(ChoiceOfField(kMtel), 0U);
}

TEST(ListLayoutTest, CpIsTheLongPostalCode) {
  const CardRecord card = Card({{kPostalCode, "75002-CEDEX-08"}, {kShortPostalCode, "75001"}});
  EXPECT_EQ(Layout({{kChoiceCp, 14}}).Line(card), "75002-CEDEX-08 ");
}

TEST(ListLayoutTest, ANameIsPaddedToItsFieldNotToItsColumn) {
  EXPECT_EQ(Layout({{kChoiceSte1, 5}}).Heading(), "STE1" + Blanks(28 + 1));
  EXPECT_EQ(Layout({{kChoiceCp, 60}}).Heading(), "CP" + Blanks(12 + 1));
}

TEST(ListLayoutTest, TheNextNameOverwritesTheSurplus) {
  EXPECT_EQ(Layout({{kChoiceSte1, 10}, {kChoiceCp, 5}}).Heading(),
            "STE1" + Blanks(7) + "CP" + Blanks(12 + 1));
}

TEST(ListLayoutTest, ANameLongerThanItsColumnLosesItsEnd) {
  EXPECT_EQ(Layout({{kChoiceVille, 2}, {kChoiceNom, 2}}).Heading(), "VILNOM" + Blanks(29 + 1));
}

TEST(ListLayoutTest, AHeadingEndsWithItsLastColumn) {
  // The padding of the notes would go on to 65.
  EXPECT_EQ(Layout({{kChoiceNotes, 9}, {kChoiceCp, 9}}).Heading(),
            "NOTES" + Blanks(5) + "CP" + Blanks(12 + 1));
}

TEST(ListLayoutTest, AHeadingIsCutAt128) {
  const std::string heading = Layout({{kChoiceSte1, 100}, {kChoiceNotes, 26}}).Heading();
  EXPECT_EQ(heading, "STE1" + Blanks(97) + "NOTES" + Blanks(22));
  EXPECT_EQ(heading.size(), 128U);
}

TEST(ListLayoutTest, AColumnBehindACutNameIsStillWritten) {
  EXPECT_EQ(Layout({{kChoiceSte1, 100}, {kChoiceNotes, 5}, {kChoiceCp, 5}}).Heading(),
            "STE1" + Blanks(97) + "NOTES CP" + Blanks(12 + 1));
  EXPECT_EQ(Layout({{kChoiceSte1, 124}, {kChoiceNotes, 5}}).Heading(),
            "STE1" + Blanks(121) + "NOT");
}

TEST(ListLayoutTest, AColumnBeyondTheLineShowsNothing) {
  const ListLayout layout = Layout({{kChoiceSte1, 127}, {kChoiceNom, 5}});
  EXPECT_EQ(layout.Heading(), "STE1" + Blanks(124));
  EXPECT_EQ(layout.Line(Card({{kSte1, "ALPHA"}, {kNom, "DURAND"}})), "ALPHA" + Blanks(123));
}

TEST(ListLayoutTest, FieldsAreCutAndPaddedToTheirColumns) {
  const CardRecord card = Card({{kSte1, "ALPHA"}, {kNom, "DURAND"}});
  EXPECT_EQ(Layout({{kChoiceSte1, 3}, {kChoiceNom, 8}}).Line(card), "ALP DURAND   ");
}

TEST(ListLayoutTest, TheLastColumnIsFollowedByABlank) {
  EXPECT_EQ(Layout({{kChoiceNom, 6}}).Line(Card({{kNom, "DURAND"}})), "DURAND ");
}

TEST(ListLayoutTest, AFieldThatFillsItsAreaEndsThere) {
  const CardRecord card = Card({{kSte1, std::string(32, 'S')}, {kSte2, "next"}});
  EXPECT_EQ(Layout({{kChoiceSte1, 40}}).Line(card), std::string(32, 'S') + Blanks(8 + 1));
}

TEST(ListLayoutTest, ALineIsCutAt128) {
  const CardRecord card = Card({{kSte1, "ALPHA"}, {kNotes, std::string(64, 'n')}});
  EXPECT_EQ(Layout({{kChoiceSte1, 63}, {kChoiceNotes, 63}}).Line(card),
            "ALPHA" + Blanks(59) + std::string(63, 'n') + " ");
  EXPECT_EQ(Layout({{kChoiceSte1, 64}, {kChoiceNotes, 64}}).Line(card),
            "ALPHA" + Blanks(60) + std::string(63, 'n'));
}

TEST(ListLayoutTest, AColumnWithoutWidthIsItsBlank) {
  const CardRecord card = Card({{kSte1, "ALPHA"}, {kNom, "DURAND"}});
  EXPECT_EQ(Layout({{kChoiceSte1, 0}, {kChoiceNom, 3}}).Line(card), " DUR ");
}

TEST(ListLayoutTest, AWidthFromADamagedFileIsALineWide) {
  const CardRecord card = Card({{kSte1, "ALPHA"}, {kNom, "DURAND"}});
  const ListLayout layout = Layout({{kChoiceSte1, 0xFFFFFFFF}, {kChoiceNom, 0xFFFFFFFF}});
  EXPECT_EQ(layout.Line(card), "ALPHA" + Blanks(123));
  EXPECT_EQ(layout.Heading().size(), 128U);
}

TEST(ListLayoutTest, AnEmptyRowOrAnUnknownFieldEndsTheColumns) {
  const CardRecord card = Card({{kSte1, "ALPHA"}, {kNom, "DURAND"}});
  EXPECT_EQ(Layout({{kChoiceSte1, 5}, {0, 5}, {kChoiceNom, 5}}).Line(card), "ALPHA ");
  EXPECT_EQ(Layout({{kChoiceSte1, 5}, {21, 5}, {kChoiceNom, 5}}).Line(card), "ALPHA ");
}

TEST(ListLayoutTest, OnlyTwelveColumnsArePrinted) {
  Composition composition{};
  composition.fill({kChoiceSte1, 1});
  EXPECT_EQ(ListLayout(composition).Line(Card({{kSte1, "A"}})).size(), 24U);
}

TEST(ListLayoutTest, WithoutColumnsThereIsNothing) {
  EXPECT_EQ(Layout({}).Heading(), "");
  EXPECT_EQ(Layout({}).Line(Card({{kSte1, "ALPHA"}})), "");
  EXPECT_EQ(Layout({}).Width(), 0U);
}

TEST(ListLayoutTest, TheWidthIsThatOfTheLongerLine) {
  EXPECT_EQ(Layout({{kChoiceSte1, 5}}).Width(), 33U);
  EXPECT_EQ(Layout({{kChoiceSte1, 50}}).Width(), 51U);
  EXPECT_EQ(Layout({{kChoiceSte1, 200}}).Width(), 128U);
}

}  // namespace
}  // namespace carnetel
