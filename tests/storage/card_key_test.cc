#include "storage/card_key.h"

#include <gtest/gtest.h>

#include "tests/storage/store_fixture.h"

namespace carnetel {
namespace {

std::string Text(const IndexKey& key) {
  return CopyFieldText(KeyView(key), kKeySize);
}

std::string KeyOfCompany(std::string_view company) {
  return Text(IndexKeyOf(MakeCard(company), kSte1));
}

unsigned char LetterOfCompany(std::string_view company) {
  return LetterOf(MakeCard(company), kSte1);
}

TEST(CardKeyTest, AKeyIsTheFirstTenBytesInCapitals) {
  EXPECT_EQ(KeyOfCompany("Dupont et Fils"), "DUPONT ET ");
  EXPECT_EQ(KeyOfCompany("dup"), "DUP");
  EXPECT_EQ(KeyOfCompany("3 suisses"), "3 SUISSES");
}

TEST(CardKeyTest, BehindAShortKeyThereAreZeros) {
  EXPECT_EQ(Hex(AsBytes(KeyView(IndexKeyOf(MakeCard("dup"), kSte1)))),
            "44 55 50 00 00 00 00 00 00 00");
}

TEST(CardKeyTest, AnEmptyCompanyIsKeyedByTheSurnameAndTheOtherWayRound) {
  EXPECT_EQ(Text(IndexKeyOf(MakeCard("", "Durand"), kSte1)), "DURAND");
  EXPECT_EQ(Text(IndexKeyOf(MakeCard("Alpha", ""), kNom)), "ALPHA");
  EXPECT_EQ(Text(IndexKeyOf(MakeCard("Alpha", "Durand"), kSte1)), "ALPHA");
  EXPECT_EQ(Text(IndexKeyOf(MakeCard("Alpha", "Durand"), kNom)), "DURAND");
}

TEST(CardKeyTest, ACardWithoutKeyFieldsHasTheEmptyKey) {
  EXPECT_EQ(KeyOfCompany(""), "");
}

TEST(CardKeyTest, AccentsKeepTheirByteInBothForms) {
  // 82h is e acute, 90h its capital; 81h u diaeresis, 9Ah its capital.
  EXPECT_EQ(KeyOfCompany("p\x82tit"), "P\x82TIT");
  EXPECT_EQ(KeyOfCompany("P\x90TIT"), "P\x90TIT");
  EXPECT_EQ(KeyOfCompany("\x90tat"), "\x90TAT");
  EXPECT_EQ(KeyOfCompany("\x9A"
                         "ber"),
            "\x9A"
            "BER");
}

TEST(CardKeyTest, ABracketEndsTheKey) {
  EXPECT_EQ(KeyOfCompany("ab[cd"), "AB");
  EXPECT_EQ(KeyOfCompany("AB{CD"), "AB");
  EXPECT_EQ(KeyOfCompany("AB_CD"), "AB");
  EXPECT_EQ(KeyOfCompany("AB\x7F"), "AB");
}

TEST(CardKeyTest, AKeyThatBeginsWithABracketIsEmpty) {
  EXPECT_EQ(KeyOfCompany("[abc"), "");
  // The other field stands in for an empty field, not for an empty key.
  EXPECT_EQ(Text(IndexKeyOf(MakeCard("[abc", "Durand"), kSte1)), "");
}

TEST(CardKeyTest, BytesBelowZeroAndBlanksStay) {
  EXPECT_EQ(KeyOfCompany(" vide"), " VIDE");
  EXPECT_EQ(KeyOfCompany("(a) & co"), "(A) & CO");
  EXPECT_EQ(KeyOfCompany("@a"), "@A");
}

TEST(CardKeyTest, AFieldThatFillsItsAreaIsNotReadOn) {
  const CardRecord card = MakeCard({{kSte1, "12345678901234567890123456789012"}, {kSte2, "Suite"}});
  EXPECT_EQ(Text(IndexKeyOf(card, kSte1)), "1234567890");
}

TEST(CardKeyTest, TheByteBehindAnEscapeIsNeitherChangedNorCounted) {
  EXPECT_EQ(KeyOfCompany("\x1B"
                         "abcdefghijk"),
            "\x1B");
  EXPECT_EQ(KeyOfCompany("\x1B"
                         "Abcdefghijk"),
            "\x1B"
            "ABCDEFGHI");
}

TEST(CardKeyTest, TheKeyOfARebuildFoldsTheFirstByteAlone) {
  EXPECT_EQ(Text(RebuildKeyOf(MakeCard("ab[cd"), kSte1)), "AB[CD");
  EXPECT_EQ(KeyOfCompany("ab[cd"), "AB");
  EXPECT_EQ(Text(RebuildKeyOf(MakeCard("[abc"), kSte1)), "");
}

TEST(CardKeyTest, TheKeyOfARebuildIsAForACardWithoutKeyFields) {
  EXPECT_EQ(Text(RebuildKeyOf(CardRecord(), kSte1)), "A");
  EXPECT_EQ(Text(RebuildKeyOf(CardRecord(), kNom)), "A");
}

TEST(CardKeyTest, TheKeyOfARebuildTakesTheSameFields) {
  EXPECT_EQ(Text(RebuildKeyOf(MakeCard("Dupont et Fils"), kSte1)), "DUPONT ET ");
  EXPECT_EQ(Text(RebuildKeyOf(MakeCard("", "Durand"), kSte1)), "DURAND");
  EXPECT_EQ(Text(RebuildKeyOf(MakeCard("Alpha", ""), kNom)), "ALPHA");
}

TEST(CardKeyTest, ASearchKeyHasNoOtherFieldAndFoldsItsFirstByteAlone) {
  EXPECT_EQ(SearchKeyOf(MakeCard("du", "Martin"), kSte1), "DU");
  EXPECT_EQ(SearchKeyOf(MakeCard("", "Martin"), kSte1), "");
  EXPECT_EQ(SearchKeyOf(MakeCard("a[b"), kSte1), "A[B");
  EXPECT_EQ(SearchKeyOf(MakeCard("[b"), kSte1), "");
  // Ten characters become capitals, the rest of the field stays.
  EXPECT_EQ(SearchKeyOf(MakeCard("abcdefghijkl"), kSte1), "ABCDEFGHIJkl");
}

TEST(CardKeyTest, TheLetterIsTheFirstByteInCapitals) {
  EXPECT_EQ(LetterOfCompany("Dupont"), 'D');
  EXPECT_EQ(LetterOfCompany("dupont"), 'D');
  EXPECT_EQ(LetterOfCompany("zebra"), 'Z');
  EXPECT_EQ(LetterOfCompany("9"), '9');
}

TEST(CardKeyTest, TheLetterComesFromTheActiveFieldOrTheOther) {
  EXPECT_EQ(LetterOf(MakeCard("Alpha", "Durand"), kNom), 'D');
  EXPECT_EQ(LetterOf(MakeCard("", "Durand"), kSte1), 'D');
  EXPECT_EQ(LetterOf(MakeCard("Alpha", ""), kNom), 'A');
  EXPECT_EQ(LetterOf(CardRecord(), kSte1), 0);
}

TEST(CardKeyTest, BytesBetweenTheCapitalsAndTheSmallLettersLoseThirtyTwo) {
  EXPECT_EQ(LetterOfCompany("[x"), ';');
  EXPECT_EQ(LetterOfCompany("\\x"), '<');
  EXPECT_EQ(LetterOfCompany("_x"), '?');
  EXPECT_EQ(LetterOfCompany("`x"), '@');
}

TEST(CardKeyTest, BytesBehindTheSmallLettersFoldToNothing) {
  EXPECT_EQ(LetterOfCompany("{x"), 0);
  EXPECT_EQ(LetterOfCompany("~x"), 0);
  EXPECT_EQ(LetterOfCompany("\x7Fx"), 0);
}

TEST(CardKeyTest, AccentsAndBytesBelowZeroAreTheirOwnLetter) {
  EXPECT_EQ(LetterOfCompany("\x90tat"), 0x90);
  EXPECT_EQ(LetterOfCompany("\x82tat"), 0x82);
  EXPECT_EQ(LetterOfCompany(" x"), ' ');
  EXPECT_EQ(LetterOfCompany("/x"), '/');
}

TEST(CardKeyTest, AFirstByteWithoutAPlaceIsFiledUnderZero) {
  EXPECT_EQ(FiledLetter('/'), '0');
  EXPECT_EQ(FiledLetter(' '), '0');
  EXPECT_EQ(FiledLetter(0x80), '0');
  EXPECT_EQ(FiledLetter(0xFF), '0');
  EXPECT_EQ(FiledLetter('0'), '0');
  EXPECT_EQ(FiledLetter(':'), ':');
  EXPECT_EQ(FiledLetter('Z'), 'Z');
  EXPECT_EQ(FiledLetter(0), 0);
}

}  // namespace
}  // namespace carnetel
