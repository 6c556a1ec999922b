#include "transfer/capture.h"

#include "tests/support/same_bytes.h"
#include "tests/transfer/capture_testing.h"
#include "tests/transfer/transfer_testing.h"

namespace carnetel {
namespace {

constexpr char kCapture[] = "/capture.dat";

class CaptureTest : public testing::Test {
 protected:
  CaptureReader Reader(std::string_view bytes, const std::string& prefix = {}) {
    files_.SetContents(kCapture, AsBytes(bytes));
    return CaptureReader(files_, kCapture, prefix);
  }
  // The first card of a file.
  CardRecord First(const std::string& bytes, const std::string& prefix = {}) {
    CardRecord card;
    EXPECT_TRUE(Reader(bytes, prefix).ReadCaptureRecord(&card));
    return card;
  }
  std::string FirstText(const Captured& record, int field, const std::string& prefix = {}) {
    return First(CaptureBytes(record), prefix).FieldText(field).bytes();
  }

  FakeClock clock_{1000};
  MemoryFileSystem files_{clock_};
};

TEST_F(CaptureTest, ARecordBecomesACardOfAnsiText) {
  const Captured record = {.company = "Soci\x82t\x82 Dupont",
                           .address = "3, rue de l'\x90toile",
                           .first_number = "01.40;00",
                           .postal_code = "75017",
                           .town =
                               "Orl\x82"
                               "ans",
                           .second_number = "02 41"};
  const CardRecord expected = MakeCard({{kSte1, "SOCI\xC9T\xC9 DUPONT"},
                                        {kAdr1, "3, rue de l'\xC9toile"},
                                        {kTel1, "01:40:00"},
                                        {kShortPostalCode, "75017"},
                                        {kPostalCode, "75017"},
                                        {kVille,
                                         "Orl\xE9"
                                         "ans"},
                                        {kTel2, "02 41"}});
  EXPECT_TRUE(SameBytes(expected.bytes(), First(CaptureBytes(record)).bytes()));
}

TEST_F(CaptureTest, TheFlagMakesTheSecondNumberAFax) {
  const Captured record = {.company = "ACME", .is_fax = true, .second_number = "03"};
  EXPECT_EQ(FirstText(record, kFax), "03");
  EXPECT_EQ(FirstText(record, kTel2), "");
}

TEST_F(CaptureTest, ARecordOf156BytesIsTheSmallestFile) {
  EXPECT_FALSE(Reader(std::string(155, 'A')).is_open());
  EXPECT_TRUE(Reader(std::string(156, 'A')).is_open());
  EXPECT_FALSE(CaptureReader(files_, "/rien.dat", "").is_open());
  CardRecord card;
  EXPECT_FALSE(CaptureReader(files_, "/rien.dat", "").ReadCaptureRecord(&card));
}

TEST_F(CaptureTest, ReadsOneRecordAfterTheOther) {
  CaptureReader reader =
      Reader(CaptureBytes({.company = "UN", .town = "LILLE"}) + CaptureBytes({.company = "DEUX"}));
  CardRecord card;
  ASSERT_TRUE(reader.ReadCaptureRecord(&card));
  EXPECT_EQ(card, MakeCard({{kSte1, "UN"}, {kVille, "LILLE"}}));
  ASSERT_TRUE(reader.ReadCaptureRecord(&card));
  EXPECT_EQ(card, MakeCard({{kSte1, "DEUX"}}));
  EXPECT_FALSE(reader.ReadCaptureRecord(&card));
  EXPECT_EQ(card, MakeCard({{kSte1, "DEUX"}}));
}

// 10 bytes of a second record: all behind them is that of the first one.
TEST_F(CaptureTest, ARecordCutShortKeepsTheEndOfTheOneBefore) {
  const Captured first = {.company = "Soci\x82t\x82 Dupont et fils",
                          .first_number = "0140",
                          .town =
                              "Orl\x82"
                              "ans"};
  CaptureReader reader = Reader(CaptureBytes(first) + "Compagnie ");
  CardRecord card;
  ASSERT_TRUE(reader.ReadCaptureRecord(&card));
  ASSERT_TRUE(reader.ReadCaptureRecord(&card));
  EXPECT_EQ(card, MakeCard({{kSte1, "COMPAGNIE PONT ET FILS"},
                            {kTel1, "0140"},
                            {kVille,
                             "Orl\xE9"
                             "ans"}}));
  EXPECT_FALSE(reader.ReadCaptureRecord(&card));
}

TEST_F(CaptureTest, TextsEndAtTheNextFieldAtAZeroAndBeforeTrailingBlanks) {
  std::string full(156, 'x');
  full[0] = 'A';
  const CardRecord card = First(full);
  EXPECT_EQ(card.FieldText(kSte1).bytes(), "A" + std::string(31, 'X'));
  EXPECT_EQ(card.FieldText(kShortPostalCode).bytes(), std::string(5, 'X'));
  EXPECT_EQ(card.FieldText(kPostalCode).bytes(), std::string(14, 'X'));
  EXPECT_EQ(card.FieldText(kVille).bytes(), std::string(32, 'X'));
  std::string cut = CaptureBytes({.company = "ACME"});
  cut.replace(102, 6, std::string_view("A  \0BC", 6));
  EXPECT_EQ(First(cut).FieldText(kVille).bytes(), "A");
}

// Writers end the company with a zero; in a record that is all blanks behind it, nothing does.
TEST_F(CaptureTest, CapitalsGoUpToTheFirstZeroByteWhereverItLies) {
  std::string blank_padded = CaptureBytes({.company = "acme", .address = "rue \x85"});
  EXPECT_EQ(First(blank_padded).FieldText(kAdr1).bytes(), "rue \xE0");
  blank_padded[4] = ' ';
  EXPECT_EQ(blank_padded.find('\0'), 84U);
  EXPECT_EQ(First(blank_padded).FieldText(kSte1).bytes(), "ACME");
  EXPECT_EQ(First(blank_padded).FieldText(kAdr1).bytes(), "RUE \xC0");
}

TEST_F(CaptureTest, ACompanyThatBeginsWithADigitIsKept) {
  EXPECT_EQ(FirstText({.company = "3 suisses"}, kSte1), "3 SUISSES");
  EXPECT_EQ(FirstText({.company = "zola"}, kSte1), "ZOLA");
  EXPECT_EQ(FirstText({.company = "@tout"}, kSte1), "@TOUT");
}

TEST_F(CaptureTest, AFirstByteWithoutLetterIsReplacedByA) {
  EXPECT_EQ(FirstText({.company = "[bloc]"}, kSte1), "ABLOC]");
  EXPECT_EQ(FirstText({.company = "(bloc)"}, kSte1), "ABLOC)");
  EXPECT_EQ(FirstText({.company = " bloc"}, kSte1), "ABLOC");
  EXPECT_EQ(FirstText({.company = "\x90toile"}, kSte1), "ATOILE");
  EXPECT_EQ(FirstText({.company = ""}, kSte1), "A");
}

TEST_F(CaptureTest, NumbersKeepWhatCanBeDialled) {
  EXPECT_EQ(FirstText({.first_number = "(1) 40.41;42,43/E"}, kTel1), "1 40:41:42:43");
  EXPECT_EQ(FirstText({.second_number = "+33-1@#*ABCDWabc"}, kTel2), "+33-1@#*ABCDW");
}

TEST_F(CaptureTest, EighteenCharactersOfANumberAreLookedAt) {
  EXPECT_EQ(FirstText({.first_number = "xxxxxxxxxx12345678"}, kTel1), "12345678");
  std::string longer = CaptureBytes({.company = "ACME", .first_number = "123456789012345678"});
  longer.replace(84, 2, "99");
  EXPECT_EQ(First(longer).FieldText(kTel1).bytes(), "123456789012345678");
}

TEST_F(CaptureTest, ThePrefixGoesInFrontOfBothNumbers) {
  const Captured record = {.first_number = "01", .is_fax = true, .second_number = "02"};
  EXPECT_EQ(FirstText(record, kTel1, "0,x."), "0,01");
  EXPECT_EQ(FirstText(record, kFax, "0,x."), "0,02");
  EXPECT_EQ(FirstText({.first_number = "012345678901234567"}, kTel1, "00000000"),
            "000000000123456789012345");
}

TEST_F(CaptureTest, AQuestionMarkIsNoPrefix) {
  EXPECT_EQ(FirstText({.first_number = "01"}, kTel1, "?"), "01");
  EXPECT_EQ(FirstText({.first_number = "01"}, kTel1, "?9"), "01");
  EXPECT_EQ(FirstText({.first_number = "01"}, kTel1, "9?"), "901");
}

// By design: the number is what was composed, however little that is.
TEST_F(CaptureTest, WithoutANumberThePrefixStandsAlone) {
  EXPECT_EQ(FirstText({.company = "ACME"}, kTel1, "0"), "0");
  EXPECT_EQ(FirstText({.company = "ACME"}, kTel2, "0"), "0");
}

}  // namespace
}  // namespace carnetel
