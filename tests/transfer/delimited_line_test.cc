#include "transfer/delimited_line.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/transfer/transfer_testing.h"

namespace carnetel {
namespace {

using std::string_literals::operator""s;

struct ReadCard {
  bool stored = false;
  CardRecord card;

  [[nodiscard]] std::string Text(int field) const { return card.FieldText(field).bytes(); }
};

ReadCard Read(std::string_view line, const TransferProfile& profile) {
  DelimitedLine format(profile);
  ReadCard result;
  result.stored = format.Read(line, result.card);
  return result;
}

std::string Written(const CardRecord& card, const TransferProfile& profile) {
  std::string text;
  DelimitedLine(profile).Append(card, text);
  return text;
}

TransferProfile Quoted(std::initializer_list<int> fields) {
  TransferProfile profile = Columns(fields);
  profile.set_field_separator("22h 2Ch");
  return profile;
}

TransferProfile Separated(std::initializer_list<int> fields, std::string_view separator) {
  TransferProfile profile = Columns(fields);
  profile.set_field_separator(separator);
  return profile;
}

TEST(DelimitedLineRead, GivesEachFieldItsRank) {
  const ReadCard read = Read("Durand;Lyon;Paul\r\n", Columns({kNom, kVille, kPrenom}));
  EXPECT_TRUE(read.stored);
  EXPECT_EQ(read.card, MakeCard({{kNom, "Durand"}, {kVille, "Lyon"}, {kPrenom, "Paul"}}));
}

TEST(DelimitedLineRead, FieldsThatShareARankAllReceiveIt) {
  const ReadCard read = Read("M.;Paul;Durand\r\n", TransferProfile::OfNewInstallation());
  EXPECT_EQ(
      read.card,
      MakeCard({{kQualite, "M."}, {kPrenom, "Paul"}, {kNom, "Durand"}, {kSparePerson, "Durand"}}));
}

TEST(DelimitedLineRead, ASurplusFieldIsDroppedAndAMissingOneStaysEmpty) {
  EXPECT_EQ(Read("a;b;c;d\r\n", Columns({kNom, kVille})).card,
            MakeCard({{kNom, "a"}, {kVille, "b"}}));
  EXPECT_EQ(Read("a\r\n", Columns({kNom, kVille})).card, MakeCard({{kNom, "a"}}));
}

TEST(DelimitedLineRead, AFieldIsCutAtTheSizeOfTheCardField) {
  const ReadCard read = Read(std::string(40, 'x') + ";y\r\n", Columns({kNom, kVille}));
  EXPECT_EQ(read.Text(kNom), std::string(32, 'x'));
  EXPECT_EQ(read.Text(kSparePerson), "");
  EXPECT_EQ(read.Text(kVille), "y");
}

TEST(DelimitedLineRead, TheCutComesBeforeTheCleaning) {
  EXPECT_EQ(Read("  " + std::string(40, 'x') + "\r\n", Columns({kNom})).Text(kNom),
            std::string(30, 'x'));
}

TEST(DelimitedLineRead, AZeroByteEndsAFieldsText) {
  EXPECT_EQ(Read("ab\0cd;e\r\n"s, Columns({kNom, kVille})).card,
            MakeCard({{kNom, "ab"}, {kVille, "e"}}));
}

TEST(DelimitedLineRead, FieldsAreCleaned) {
  EXPECT_EQ(Read("(Durand; 01.02 x\r\n", Columns({kNom, kTel1})).card,
            MakeCard({{kNom, "ADurand"}, {kTel1, "01:02 "}}));
}

TEST(DelimitedLineRead, AnEmptyFieldCountsAsStored) {
  const ReadCard read = Read(";;\r\n", Columns({kNom, kVille}));
  EXPECT_TRUE(read.stored);
  EXPECT_EQ(read.card, CardRecord());
}

TEST(DelimitedLineRead, ALineWhoseRanksMatchNothingStoresNothing) {
  EXPECT_FALSE(Read("a;b\r\n", Columns({-1, -1, kNom})).stored);
  EXPECT_FALSE(Read("a;b\r\n", Columns({})).stored);
}

TEST(DelimitedLineRead, AnEmptyLastFieldEndsTheLine) {
  EXPECT_FALSE(Read("a;\r\n", Columns({-1, kNom})).stored);
  EXPECT_FALSE(Read("\r\n", Columns({kNom})).stored);
}

TEST(DelimitedLineRead, FieldsThatTakeNoPartReceiveNothing) {
  for (const int field : {4, 5, 21, 23, 27, 28, 29, 30}) {
    EXPECT_FALSE(IsDelimitedField(field));
    EXPECT_FALSE(Read("a\r\n", Columns({field})).stored) << field;
  }
}

TEST(DelimitedLineRead, QuotedFieldsAreTakenWithoutTheirQuotes) {
  EXPECT_EQ(Read("\"Durand\",\"Lyon\"\r\n", Quoted({kNom, kVille})).card,
            MakeCard({{kNom, "Durand"}, {kVille, "Lyon"}}));
}

TEST(DelimitedLineRead, EmptyQuotedFieldsKeepTheirPlaces) {
  EXPECT_EQ(
      Read("\"\",\"Lyon\",\"\",\"\",\"x\"\r\n", Quoted({kNom, kVille, kPays, kAdr1, kAdr2})).card,
      MakeCard({{kVille, "Lyon"}, {kAdr2, "x"}}));
}

TEST(DelimitedLineRead, AFieldThatStartsWithAQuoteLosesItEvenWhenItIsTheOnlyOne) {
  EXPECT_EQ(Read("\"Durand\r\n", Quoted({kNom})).Text(kNom), "Durand");
  EXPECT_EQ(Read("\"\r\n", Quoted({kNom})).card, CardRecord());
  EXPECT_TRUE(Read("\"\r\n", Quoted({kNom})).stored);
}

TEST(DelimitedLineRead, OnlyTheLastFieldLosesAQuoteAtItsEnd) {
  EXPECT_EQ(Read("12\"\r\n", Quoted({kVille})).Text(kVille), "12");
  EXPECT_EQ(Read("12\"\",\"b\r\n", Quoted({kVille, kPays})).Text(kVille), "12\"");
}

TEST(DelimitedLineRead, WithoutQuoteModeQuotesAreText) {
  EXPECT_EQ(Read("\"a\";\"b\"\r\n", Columns({kVille, kPays})).card,
            MakeCard({{kVille, "\"a\""}, {kPays, "\"b\""}}));
  EXPECT_EQ(Read("\"a\"\"b\"\r\n", Separated({kVille, kPays}, "\"")).Text(kPays), "a")
      << "a lone quote as separator is no quote mode";
}

TEST(DelimitedLineRead, AnEmptyFieldSeparatorMeansOneFieldALine) {
  EXPECT_EQ(Read("a;b\r\n", Separated({kVille, kPays}, "")).card, MakeCard({{kVille, "a;b"}}));
}

TEST(DelimitedLineRead, ANulSeparatorDividesFields) {
  EXPECT_EQ(Read("a\0\0c\r\n"s, Separated({kNom, kVille, kPays}, "NUL")).card,
            MakeCard({{kNom, "a"}, {kPays, "c"}}));
}

TEST(DelimitedLineRead, AFieldSeparatorIsAlsoFoundInTheCardSeparator) {
  EXPECT_EQ(Read("a\r\n", Separated({kVille}, "LF")).Text(kVille), "a\r");
}

TEST(DelimitedLineAppend, PutsSeparatorsBetweenRanksAndTheCardSeparatorBehind) {
  const CardRecord card = MakeCard({{kNom, "Durand"}, {kVille, "Lyon"}});
  EXPECT_EQ(Written(card, Columns({kNom, kPrenom, kVille})), "Durand;;Lyon\r\n");
}

TEST(DelimitedLineAppend, AHoleInTheRanksIsAnEmptyField) {
  const CardRecord card = MakeCard({{kNom, "Durand"}, {kVille, "Lyon"}});
  EXPECT_EQ(Written(card, Columns({kNom, -1, -1, kVille})), "Durand;;;Lyon\r\n");
}

TEST(DelimitedLineAppend, AnEmptyHighestRankEndsTheLineWithASeparator) {
  TransferProfile profile = Columns({kNom, kVille});
  profile.set_rank(kSpare30, 4);  // never written, but it counts
  const CardRecord card = MakeCard({{kNom, "Durand"}, {kVille, "Lyon"}});
  EXPECT_EQ(Written(card, profile), "Durand;Lyon;;;\r\n");
  profile.set_field_separator("\" ,");
  EXPECT_EQ(Written(card, profile), "\"Durand\",\"Lyon\",\"\",\"\",\r\n");
}

TEST(DelimitedLineAppend, TheRankOfTheCompanyIsNotLookedAtForTheHighest) {
  const CardRecord card = MakeCard({{kSte1, "Martin"}, {kNom, "Durand"}});
  EXPECT_EQ(Written(card, Columns({kNom, kSte1})), "Durand\r\n");
  EXPECT_EQ(Written(card, Columns({kSte1, kNom})), "Martin;Durand\r\n");
  EXPECT_EQ(Written(card, Columns({kSte1})), "Martin\r\n") << "the highest is at least 1";
  EXPECT_EQ(Written(card, Columns({})), ";\r\n");
}

TEST(DelimitedLineAppend, FieldsThatShareARankAreAllWritten) {
  TransferProfile profile = Columns({kNom, kVille});
  profile.set_rank(kSparePerson, 1);
  profile.set_rank(kPays, 2);
  const CardRecord card =
      MakeCard({{kNom, "Durand"}, {kSparePerson, "x"}, {kVille, "Lyon"}, {kPays, "France"}});
  // In the order of the fields' own table; nothing stands between two of the highest rank.
  EXPECT_EQ(Written(card, profile), "Durand;x;LyonFrance\r\n");
}

TEST(DelimitedLineAppend, QuoteModePutsEveryFieldInQuotes) {
  const CardRecord card = MakeCard({{kNom, "Durand"}, {kVille, "Lyon"}});
  EXPECT_EQ(Written(card, Quoted({kNom, kPrenom, -1, kVille})),
            "\"Durand\",\"\",\"\",\"Lyon\"\r\n");
  TransferProfile semicolon = Quoted({kNom, kVille});
  semicolon.set_field_separator("\" ;");
  EXPECT_EQ(Written(card, semicolon), "\"Durand\";\"Lyon\"\r\n");
}

TEST(DelimitedLineAppend, ANulSeparatorIsOneZeroByteBehindEachTextTheLastToo) {
  const CardRecord card = MakeCard({{kNom, "Durand"}, {kVille, "Lyon"}});
  EXPECT_EQ(Written(card, Separated({kNom, kPrenom, -1, kVille}, "NUL")),
            "Durand\0\0\0Lyon\0\r\n"s);
  EXPECT_EQ(Written(card, Separated({kNom}, "")), "Durand\0\r\n"s);
}

TEST(DelimitedLineAppend, ANulCardSeparatorIsOneZeroByte) {
  TransferProfile profile = Columns({kNom, kVille});
  profile.set_card_separator("NUL");
  EXPECT_EQ(Written(MakeCard({{kNom, "a"}, {kVille, "b"}}), profile), "a;b\0"s);
  profile.set_field_separator("NUL");
  EXPECT_EQ(Written(MakeCard({{kNom, "a"}, {kVille, "b"}}), profile), "a\0b\0\0"s);
}

TEST(DelimitedLineAppend, AnEmptyPostalCodeIsTheShortOne) {
  const TransferProfile profile = Columns({kPostalCode, kVille});
  const Fields both = {{kShortPostalCode, "69001"}, {kPostalCode, "69000 CEDEX"}};
  EXPECT_EQ(Written(MakeCard(both), profile), "69000 CEDEX;\r\n");
  EXPECT_EQ(Written(MakeCard({{kShortPostalCode, "690011"}}), profile), "69001;\r\n");
}

TEST(DelimitedLineAppend, ATextThatFillsItsFieldStopsAtItsSize) {
  const CardRecord card = MakeCard({{kNom, std::string(32, 'x')}, {kSparePerson, "y"}});
  EXPECT_EQ(Written(card, Columns({kNom})), std::string(32, 'x') + "\r\n");
}

TEST(DelimitedLineAppend, CraftedRanksMayMakeALineLongerThanACard) {
  TransferProfile profile = Columns({kNom});
  profile.set_rank(kSpare27, 2000);
  EXPECT_EQ(Written(MakeCard({{kNom, "a"}}), profile), "a" + std::string(2000, ';') + "\r\n");
}

TEST(DelimitedLineAppend, LinesFollowEachOther) {
  const DelimitedLine format(Columns({kNom}));
  std::string text = "before";
  format.Append(MakeCard({{kNom, "a"}}), text);
  format.Append(MakeCard({{kNom, "b"}}), text);
  EXPECT_EQ(text, "beforea\r\nb\r\n");
}

}  // namespace
}  // namespace carnetel
