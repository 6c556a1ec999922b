// Which bytes of a card a save from the form changes, and which it leaves alone.
#include "tests/shell/window_fixture.h"

namespace carnetel {
namespace {

class CardFormBytes : public WindowFixture {
 protected:
  void StartWithOne() {
    Build({CardWith({{kSte1, "ALPHA"}, {kVille, "PARIS"}})});
    Start();
  }
  std::string SavedText(size_t row, int field) {
    return Saved().at(row).card.FieldText(field).bytes();
  }
  std::vector<std::byte> SavedFieldBytes(size_t row, int field) {
    const CardRecord card = Saved().at(row).card;
    const ByteView bytes = card.FieldBytes(field);
    return {bytes.begin(), bytes.end()};
  }
};

std::vector<std::byte> Padded(std::string_view text, size_t size) {
  std::vector<std::byte> bytes(size);
  std::ranges::copy(AsBytes(text), bytes.begin());
  return bytes;
}

TEST_F(CardFormBytes, UneditedFieldsKeepTheirBytes) {
  // Bytes that only the cards' code page has, and what stands behind the end of a text.
  Build({CardWith({{kSte1, "ALPHA"},
                   {kVille, "\xB3\xC4\x9F ville"},
                   {kPays, std::string_view("FR\0rest", 7)},
                   {kRef1 + 2, "\xDB"},
                   {kNotes, std::string_view("a\0\xB3", 3)}})});
  Start();
  view.Type(158, "01");
  view.Run(1);
  EXPECT_EQ(SavedFieldBytes(0, kVille), Padded("\xB3\xC4\x9F ville", 32));
  EXPECT_EQ(SavedFieldBytes(0, kPays), Padded(std::string_view("FR\0rest", 7), 32));
  EXPECT_EQ(SavedFieldBytes(0, kRef1 + 2), Padded("\xDB", 24));
  EXPECT_EQ(SavedFieldBytes(0, kNotes), Padded(std::string_view("a\0\xB3", 3), 64));
  EXPECT_EQ(SavedText(0, kTel1), "01");
}

TEST_F(CardFormBytes, TypedTextIsStoredInTheCardsCodePage) {
  StartWithOne();
  view.Type(156, "Nîmes │ élan");
  view.Run(1);
  EXPECT_EQ(SavedFieldBytes(0, kVille), Padded("N\x8Cmes \xB3 \x82lan", 32));
}

TEST_F(CardFormBytes, TextsAreCutAtTheirField) {
  StartWithOne();
  view.Type(156, std::string(40, 'v'));
  view.TypeReference(0, std::string(32, 'r'));
  view.Run(1);
  EXPECT_EQ(SavedFieldBytes(0, kVille), Padded(std::string(32, 'v'), 32));
  EXPECT_EQ(SavedFieldBytes(0, kRef1), Padded(std::string(24, 'r'), 24));
  EXPECT_EQ(SavedText(0, kRef1 + 1), "");
}

// The fields that no control shows: 4, 11, 21, 23 and 27 to 30, and the reserved bytes.
CardRecord CardWithHiddenParts() {
  CardRecord card = CardWith({{kSte1, "ALPHA"},
                              {4, "adr3"},
                              {11, "composed"},
                              {21, "type"},
                              {23, "ninit"},
                              {27, "s27"},
                              {28, "s28"},
                              {29, "s29"},
                              {30, "s30"}});
  for (size_t i = 731; i < 764; ++i) card.bytes()[i] = std::byte{0x5A};
  return card;
}

void ExpectHiddenParts(const CardRecord& card) {
  for (const auto& [field, text] :
       {std::pair{4, "adr3"}, std::pair{11, "composed"}, std::pair{21, "type"},
        std::pair{23, "ninit"}, std::pair{27, "s27"}, std::pair{28, "s28"}, std::pair{29, "s29"},
        std::pair{30, "s30"}}) {
    EXPECT_EQ(card.FieldText(field).bytes(), text) << field;
  }
  for (size_t i = 731; i < 764; ++i) {
    EXPECT_EQ(std::to_integer<int>(card.bytes()[i]), 0x5A) << i;
  }
}

TEST_F(CardFormBytes, AChangeCarriesTheHiddenFields) {
  Build({CardWithHiddenParts()});
  Start();
  view.Type(156, "LYON");
  view.Run(1);
  ExpectHiddenParts(Saved()[0].card);
  view.Type(150, "ZULU");
  view.Run(1);
  EXPECT_EQ(SavedText(0, kSte1), "ZULU");
  ExpectHiddenParts(Saved()[0].card);
}

TEST_F(CardFormBytes, ANewCardHasNothingInItsHiddenFields) {
  Build({CardWithHiddenParts()});
  Start();
  view.Run(207);
  view.Type(150, "NEUF");
  view.Run(1);
  const CardRecord card = Saved()[1].card;
  for (const int field : {4, 11, 21, 23, 27, 28, 29, 30}) EXPECT_TRUE(card.FieldEmpty(field));
}

TEST_F(CardFormBytes, ThePostalCodeFillsBothItsFields) {
  StartWithOne();
  view.Type(155, "75001 CEDEX 15");
  view.Run(1);
  EXPECT_EQ(SavedFieldBytes(0, kPostalCode), Padded("75001 CEDEX 15", 14));
  EXPECT_EQ(SavedFieldBytes(0, kShortPostalCode), Padded("75001", 5));
}

TEST_F(CardFormBytes, AnErasedPostalCodeDoesNotComeBack) {
  Build({CardWith({{kSte1, "ALPHA"}, {kShortPostalCode, "69002"}})});
  Start();
  view.Type(155, "");
  view.Run(1);
  EXPECT_EQ(view.Text(155), "");
  EXPECT_EQ(SavedText(0, kShortPostalCode), "");
  EXPECT_EQ(SavedText(0, kPostalCode), "");
}

TEST_F(CardFormBytes, AnUneditedPostalCodeStaysWhereItWas) {
  Build({CardWith({{kSte1, "ALPHA"}, {kShortPostalCode, "69002"}})});
  Start();
  view.Type(156, "LYON");
  view.Run(1);
  EXPECT_EQ(SavedText(0, kShortPostalCode), "69002");
  EXPECT_EQ(SavedText(0, kPostalCode), "");
}

TEST_F(CardFormBytes, ReferencesAreSavedRowByRow) {
  Build({CardWith({{kSte1, "ALPHA"}, {12, "un"}, {13, "deux"}, {17, "six"}})});
  Start();
  view.TypeReference(1, "DEUX");
  view.TypeReference(3, "quatre");
  view.Run(1);
  const CardRecord card = Saved()[0].card;
  const std::array<std::string, 6> expected = {"un", "DEUX", "", "quatre", "", "six"};
  for (int i = 0; i < 6; ++i) {
    EXPECT_EQ(card.FieldText(12 + i).bytes(), expected[static_cast<size_t>(i)]);
  }
}

TEST_F(CardFormBytes, LineBreaksOfNotesAreCrLf) {
  StartWithOne();
  view.Type(174, "un\ndeux\r\ntrois");
  view.Run(1);
  EXPECT_EQ(SavedText(0, kNotes), "un\r\ndeux\r\ntrois");
}

}  // namespace
}  // namespace carnetel
