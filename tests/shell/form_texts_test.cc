#include "shell/form_texts.h"

#include <gtest/gtest.h>

namespace carnetel {
namespace {

std::string Field(const CardRecord& card, int field) {
  return card.FieldText(field).bytes();
}

TEST(FormTexts, OfACardInUtf8) {
  CardRecord card;
  card.SetField(kSte1, OemText("CAF\x90"));
  card.SetField(kPostalCode, OemText("75001 CEDEX"));
  card.SetField(kNotes, OemText("un\r\ndeux"));
  card.SetField(kRef1, OemText("r\x82"
                               "f"));
  const FormTexts texts = TextsOfCard(card);
  EXPECT_EQ(texts.fields.at(150), "CAFÉ");
  EXPECT_EQ(texts.fields.at(155), "75001 CEDEX");
  EXPECT_EQ(texts.fields.at(174), "un\r\ndeux");
  EXPECT_EQ(texts.fields.at(158), "");
  EXPECT_EQ(texts.fields.size(), kFormFields.size());
  EXPECT_EQ(texts.references[0], "réf");
  EXPECT_EQ(texts.references[5], "");
}

TEST(FormTexts, TheShortPostalCodeStandsForAMissingLongOne) {
  CardRecord card;
  card.SetField(kShortPostalCode, OemText("69000"));
  EXPECT_EQ(TextsOfCard(card).fields.at(155), "69000");
}

TEST(FormTexts, UnchangedTextsKeepEveryByteOfTheCard) {
  CardRecord card;
  // A box drawing character, a short code without a long one, a field no form shows.
  card.SetField(kVille, OemText("\xC9\xCD LYON"));
  card.SetField(kShortPostalCode, OemText("69000"));
  card.SetField(kSparePerson, OemText("rest"));
  EXPECT_EQ(CardOfTexts(card, TextsOfCard(card)), card);
}

TEST(FormTexts, ChangedOnesAreConverted) {
  CardRecord card;
  card.SetField(kPostalCode, OemText("69000"));
  card.SetField(kShortPostalCode, OemText("69000"));
  card.SetField(kTel1, OemText("01"));
  FormTexts texts = TextsOfCard(card);
  texts.fields[150] = "Été";
  texts.fields[155] = "75116 PARIS";
  texts.fields[174] = "un\ndeux";
  texts.references[1] = "deuxième";
  const CardRecord made = CardOfTexts(card, texts);
  EXPECT_EQ(Field(made, kSte1), "\x90t\x82");
  EXPECT_EQ(Field(made, kPostalCode), "75116 PARIS");
  EXPECT_EQ(Field(made, kShortPostalCode), "75116");
  EXPECT_EQ(Field(made, kNotes), "un\r\ndeux");
  EXPECT_EQ(Field(made, kRef1 + 1), "deuxi\x8Ame");
  EXPECT_EQ(Field(made, kTel1), "01");
}

TEST(FormTexts, AnErasedPostalCodeDoesNotComeBack) {
  CardRecord card;
  card.SetField(kShortPostalCode, OemText("69000"));
  FormTexts texts = TextsOfCard(card);
  texts.fields[155].clear();
  EXPECT_EQ(TextsOfCard(CardOfTexts(card, texts)).fields.at(155), "");
}

TEST(FormTexts, CountsWhatIsFilled) {
  FormTexts texts;
  EXPECT_EQ(texts.CountFilled(), 0u);
  texts.fields[150] = "A";
  texts.fields[151] = "";
  texts.references[2] = "R";
  EXPECT_EQ(texts.CountFilled(), 2u);
}

}  // namespace
}  // namespace carnetel
