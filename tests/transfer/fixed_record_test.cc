#include "transfer/fixed_record.h"

#include <gtest/gtest.h>

#include "tests/transfer/fixed_testing.h"
#include "tests/transfer/transfer_testing.h"

namespace carnetel {
namespace {

using std::string_literals::operator""s;

// What a record becomes in a card that was empty.
CardRecord CardOf(std::string_view record, Places places) {
  FixedRecord format(FixedLayout(0, static_cast<int16_t>(record.size()), places));
  CardRecord card;
  format.Read(record, card);
  return card;
}

std::string RecordOf(const CardRecord& card, int16_t size, Places places) {
  std::string record;
  FixedRecord(FixedLayout(0, size, places)).Append(card, record);
  return record;
}

TEST(FixedRecordRead, TakesEachFieldFromItsPlace) {
  EXPECT_EQ(CardOf("DurandLyon..", {{kNom, {0, 6}}, {kVille, {6, 4}}}),
            MakeCard({{kNom, "Durand"}, {kVille, "Lyon"}}));
}

TEST(FixedRecordRead, AFieldEndsAtAZeroByte) {
  EXPECT_EQ(CardOf("Du\0andLyon"s, {{kNom, {0, 6}}}), MakeCard({{kNom, "Du"}}));
}

TEST(FixedRecordRead, LeadingBlanksGoAndTrailingOnesStay) {
  EXPECT_EQ(CardOf("  Durand  ", {{kNom, {0, 10}}}), MakeCard({{kNom, "Durand  "}}));
}

TEST(FixedRecordRead, CleansNumbersAndKeysAsAllImportsDo) {
  EXPECT_EQ(CardOf("-ab01.02/03;4.c", {{kSte1, {0, 3}}, {kTel1, {3, 10}}, {kMtel, {13, 2}}}),
            MakeCard({{kSte1, "Aab"}, {kTel1, "01:0203:4"}, {kMtel, ".c"}}));
}

TEST(FixedRecordRead, FieldsWithoutALineInTheTableAreNotRead) {
  EXPECT_EQ(CardOf("abcdefgh", {{kAdr3, {0, 2}},
                                {kShortPostalCode, {2, 2}},
                                {kServiceType, {4, 2}},
                                {kNinit, {6, 1}},
                                {kSpare27, {7, 1}}}),
            CardRecord());
}

TEST(FixedRecordRead, ASizeAboveThatOfTheFieldGoesOnIntoTheFieldsBehind) {
  const std::string text = "Garage" + std::string(26, '.') + "Atelier";
  EXPECT_EQ(CardOf(text, {{kSte1, {0, 39}}}),
            MakeCard({{kSte1, "Garage" + std::string(26, '.')}, {kSte2, "Atelier"}}));
}

TEST(FixedRecordRead, AFieldThatRunsOverIsCutByTheOneTakenBehindIt) {
  const std::string text = std::string(40, 'x') + "Atelier";
  EXPECT_EQ(CardOf(text, {{kSte1, {0, 40}}, {kSte2, {40, 7}}}),
            MakeCard({{kSte1, std::string(32, 'x')}, {kSte2, "Atelierx"}}))
      << "the size of the place is filled and no more";
}

TEST(FixedRecordRead, AFieldThatRunsOverCutsTheOneTakenBeforeIt) {
  // References are taken behind the telephone numbers but lie in front of them.
  EXPECT_EQ(CardOf("0102" + std::string(24, 'r') + "ab", {{kTel1, {0, 4}}, {kRef6, {4, 26}}}),
            MakeCard({{kRef6, std::string(24, 'r')}, {kTel1, "ab02"}}));
}

TEST(FixedRecordRead, ZerosFillUpToTheSizeOfThePlace) {
  FixedRecord format(FixedLayout(0, 40, {{kAdr2, {0, 40}}}));
  CardRecord card = MakeCard({{kAdr2, "rue"}, {kAdr3, "0123456789"}});
  format.Read(std::string(40, ' ').replace(0, 3, "bd "), card);
  EXPECT_EQ(card.FieldText(kAdr2).bytes(), "bd" + std::string(30, ' '));
  EXPECT_EQ(card.FieldText(kAdr3).bytes(), std::string(8, ' ') + "89");
  format.Read(std::string(40, '\0').replace(0, 3, "bd "), card);
  EXPECT_EQ(card.FieldText(kAdr2).bytes(), "bd ");
  EXPECT_EQ(AsChars(card.FieldBytes(kAdr3)).substr(0, 10), "\0\0\0\0\0\0\0\0"s + "89");
}

TEST(FixedRecordRead, NothingIsWrittenBehindTheCard) {
  const std::string text(999, 'n');
  const CardRecord card = CardOf(text, {{kNotes, {0, 999}}});
  const std::string bytes(AsChars(card.bytes()));
  EXPECT_EQ(bytes, std::string(610, '\0') + std::string(158, 'n'));
}

TEST(FixedRecordRead, APlaceOutsideTheRecordReadsAsNothing) {
  EXPECT_EQ(CardOf("Durand", {{kNom, {6, 4}}, {kVille, {-1, 4}}, {kPays, {0, -3}}}), CardRecord());
  EXPECT_EQ(CardOf("Durand", {{kNom, {4, 10}}}), MakeCard({{kNom, "nd"}}));
  EXPECT_EQ(CardOf("Durand", {{kNom, {32767, 32767}}}), CardRecord());
}

TEST(FixedRecordRead, WhatNoFieldReachesStays) {
  FixedRecord format(FixedLayout(0, 4, {{kVille, {0, 4}}}));
  CardRecord card = MakeCard({{kNom, "Durand"}, {kVille, "Marseille"}});
  format.Read("Lyon", card);
  EXPECT_EQ(card, MakeCard({{kNom, "Durand"}, {kVille, "Lyoneille"}}))
      << "of a field, too, only the size of the place is written";
}

TEST(FixedRecordAppend, PutsEachFieldAtItsPlaceAndZerosBetween) {
  const CardRecord card = MakeCard({{kNom, "Durand"}, {kVille, "Lyon"}});
  EXPECT_EQ(RecordOf(card, 15, {{kNom, {9, 6}}, {kVille, {1, 6}}}), "\0Lyon\0\0\0\0Durand"s);
}

TEST(FixedRecordAppend, CutsAtThePlaceAndAtTheField) {
  const CardRecord card =
      MakeCard({{kNom, "Durand"}, {kSte1, std::string(32, 's')}, {kSte2, "Atelier"}});
  EXPECT_EQ(RecordOf(card, 45, {{kNom, {0, 3}}, {kSte1, {4, 40}}}),
            "Dur\0"s + std::string(32, 's') + std::string(9, '\0'));
}

TEST(FixedRecordAppend, WritesNothingOutsideTheRecord) {
  const CardRecord card = MakeCard({{kNom, "Durand"}, {kVille, "Lyon"}, {kPays, "France"}});
  EXPECT_EQ(RecordOf(card, 4, {{kNom, {2, 6}}, {kVille, {4, 4}}, {kPays, {-2, 6}}}), "\0\0Du"s);
}

TEST(FixedRecordAppend, LaterFieldsOfTheTableOverwriteEarlierOnes) {
  const CardRecord card = MakeCard({{kSte1, "Garage"}, {kNom, "Durand"}});
  EXPECT_EQ(RecordOf(card, 6, {{kSte1, {0, 6}}, {kNom, {2, 3}}}), "GaDure");
}

TEST(FixedRecordAppend, AppendsBehindWhatIsThere) {
  std::string block = "before";
  FixedRecord(FixedLayout(0, 4, {{kNom, {1, 2}}})).Append(MakeCard({{kNom, "ab"}}), block);
  EXPECT_EQ(block, "before\0ab\0"s);
}

struct PostalCase {
  const char* name;
  std::string_view long_code;
  std::string_view short_code;
  FixedPlace long_place;
  FixedPlace short_place;
  std::string_view record;  // of 16 bytes, zeros as dots
};

class FixedPostalCode : public testing::TestWithParam<PostalCase> {};

TEST_P(FixedPostalCode, GoesToThePlaceThatTheLayoutHasForIt) {
  const PostalCase& postal = GetParam();
  const CardRecord card =
      MakeCard({{kPostalCode, postal.long_code}, {kShortPostalCode, postal.short_code}});
  std::string record = RecordOf(
      card, 16, {{kPostalCode, postal.long_place}, {kShortPostalCode, postal.short_place}});
  std::ranges::replace(record, '\0', '.');
  EXPECT_EQ(record, postal.record);
}

constexpr PostalCase kPostalCases[] = {
    {"LongOne", "69002 CEDEX", "69001", {0, 8}, {10, 5}, "69002 CE........"},
    {"ShortOneAtTheLongPlace", "", "69001", {0, 8}, {10, 5}, "69001..........."},
    {"ShortOneCutAtItsOwnSize", "", "69001", {0, 8}, {10, 3}, "690............."},
    {"ShortOneCutAtTheLongSize", "", "69001", {0, 2}, {10, 5}, "69.............."},
    {"ShortOneWithoutASize", "", "69001", {0, 8}, {10, 0}, "................"},
    {"ShortOneAtItsOwnPlace", "", "69001", {0, 0}, {10, 5}, "..........69001."},
    {"LongPlaceWithAPositionAlone", "", "69001", {4, 0}, {10, 5}, "................"},
    {"NeitherHasAPlace", "", "69001", {0, 0}, {0, 0}, "................"},
    {"LongOneWithoutAPlaceIsNotWritten", "69002", "", {0, 0}, {10, 5}, "................"},
    {"ShortOneWhereTheLongHasNoPlace", "69002", "13001", {0, 0}, {10, 5}, "..........13001."},
};

INSTANTIATE_TEST_SUITE_P(All, FixedPostalCode, testing::ValuesIn(kPostalCases),
                         [](const auto& test) { return test.param.name; });

}  // namespace
}  // namespace carnetel
