#include "link/hand_off_record.h"

#include "tests/link/hand_off_testing.h"
#include "tests/support/same_bytes.h"

namespace carnetel {
namespace {

class HandOffRecordTest : public HandOffTest {
 protected:
  // The record of a card at 768 by its fax number; empty when it counts as one without.
  std::string Record(const CardRecord& card, RecordForm form, int number_field = kFax) {
    const HandOffSource source{card, 768, number_field, path_};
    const auto record = MakeHandOffRecord(source, form, styles_);
    return record ? std::string(AsChars(*record)) : std::string();
  }

  AnsiText path_{"/D/X.DAN"};
  LabelStyles styles_;
};

const std::string kZero(1, '\0');

TEST_F(HandOffRecordTest, ShortFormByteByByte) {
  const CardRecord card =
      Card({{kSte1, "Caf\x82 SA"}, {kNom, "L\x82on"}, {kFax, "01 40 00 00 01 "}});
  std::string expected = "01 40 00 00 01 ";
  expected += std::string(15, '\0');
  expected += kZero + "\x03" + kZero + kZero;
  expected += std::string(6, '\0');
  expected += "Caf\xE9 SA" + std::string(41, '\0');
  expected += "/D/X.DAN" + std::string(52, '\0');
  expected += kZero;
  ASSERT_EQ(expected.size(), 149U);
  EXPECT_TRUE(SameBytes(AsBytes(expected), AsBytes(Record(card, RecordForm::kShort))));
}

TEST_F(HandOffRecordTest, LongFormByteByByte) {
  const CardRecord card = Card({{kSte1, "Caf\x82 SA  "},
                                {kQualite, "M."},
                                {kPrenom, "Ren\x82"},
                                {kNom, "L\x82on"},
                                {kFax, "01 40 00 00 01 "}});
  std::string expected = "01 40 00 00 01";
  expected += std::string(16, '\0');
  expected += kZero + "\x03" + kZero + kZero;
  expected += "Ren\xE9 L\xE9on" + std::string(24, '\0');
  expected += "Caf\xE9 SA" + std::string(26, '\0');
  expected += "/D/X.DAN" + std::string(52, '\0');
  expected += kZero;
  ASSERT_EQ(expected.size(), 161U);
  EXPECT_TRUE(SameBytes(AsBytes(expected), AsBytes(Record(card, RecordForm::kLong))));
}

TEST_F(HandOffRecordTest, TheLongFormAsItIsTrimsNothing) {
  const CardRecord card =
      Card({{kSte1, "Caf\x82 SA  "}, {kPrenom, "Paul"}, {kNom, "Bez"}, {kFax, "01 40 "}});
  EXPECT_TRUE(SameBytes(AsBytes(Long("01 40 ", 768, "Paul Bez ", "Caf\xE9 SA  ", "/D/X.DAN")),
                        AsBytes(Record(card, RecordForm::kLongAsItIs))));
}

TEST_F(HandOffRecordTest, EveryKindOfNumberInEveryForm) {
  const CardRecord card = Card({{kSte1, "SA"},
                                {kTel1, "18 18"},
                                {kTel2, "19 19"},
                                {kMtel, "20 20"},
                                {kFax, "22 22"},
                                {kModem, "24 24"}});
  for (const auto& [field, number] :
       std::initializer_list<std::pair<int, std::string>>{{kTel1, "18 18"},
                                                          {kTel2, "19 19"},
                                                          {kMtel, "20 20"},
                                                          {kFax, "22 22"},
                                                          {kModem, "24 24"}}) {
    EXPECT_EQ(Record(card, RecordForm::kShort, field), Short(number, 768, "SA", "/D/X.DAN"));
    EXPECT_EQ(Record(card, RecordForm::kLong, field), Long(number, 768, "", "SA", "/D/X.DAN"));
    EXPECT_EQ(Record(card, RecordForm::kLongAsItIs, field),
              Long(number, 768, "", "SA", "/D/X.DAN"));
  }
}

TEST_F(HandOffRecordTest, FieldsThatAreFullEndAtTheirSize) {
  const std::string company(32, 'S');
  const std::string name(32, 'N');
  const CardRecord card = Card({{kSte1, company},
                                {kNom, name},
                                {kFax, "012345678901234567890"},
                                {kTel1, "012345678901234567890123"}});
  styles_.style_aff_emi = 3;
  path_ = AnsiText("/D/" + std::string(70, 'P'));
  const std::string path = "/D/" + std::string(57, 'P');
  EXPECT_EQ(Record(card, RecordForm::kShort, kTel1),
            Short("012345678901234567890123", 768, company, path));
  EXPECT_EQ(Record(card, RecordForm::kLong),
            Long("012345678901234567890", 768, name, company, path));
  // The label's own blank would be its 33rd byte.
  EXPECT_EQ(Record(card, RecordForm::kLongAsItIs),
            Long("012345678901234567890", 768, name, company, path));
}

TEST_F(HandOffRecordTest, TheLabelIsThatOfEmissionLists) {
  const CardRecord card =
      Card({{kSte1, "SA"}, {kQualite, "Mme"}, {kPrenom, "Anne"}, {kNom, "Bez"}, {kFax, "01"}});
  styles_.active_index = 1;
  styles_.style_aff_ste = 1;
  styles_.style_aff_list = 3;
  const std::vector<std::string> labels = {"Mme Anne Bez", "Anne Bez", "Mme Bez Anne", "Bez Anne"};
  for (int style = 0; style < 4; ++style) {
    styles_.style_aff_emi = style;
    EXPECT_EQ(Record(card, RecordForm::kLong),
              Long("01", 768, labels[static_cast<size_t>(style)], "SA", "/D/X.DAN"));
  }
}

TEST_F(HandOffRecordTest, TheNameOfAShortRecordIsTheCompanyEvenWhenItIsEmpty) {
  const CardRecord card = Card({{kNom, "Bez"}, {kFax, "01"}});
  EXPECT_EQ(Record(card, RecordForm::kShort), Short("01", 768, "", "/D/X.DAN"));
}

TEST_F(HandOffRecordTest, ACardWithoutTheNumberGivesNone) {
  const CardRecord card = Card({{kSte1, "SA"}, {kTel1, "01"}});
  for (const RecordForm form : {RecordForm::kShort, RecordForm::kLong, RecordForm::kLongAsItIs}) {
    EXPECT_EQ(Record(card, form), "");
  }
}

TEST_F(HandOffRecordTest, OnlyTheTrimmedFormTakesBlanksAndOneCharacterForEmpty) {
  for (const char* number : {"5", "5  ", "   ", " "}) {
    const CardRecord card = Card({{kSte1, "SA"}, {kFax, number}});
    EXPECT_EQ(Record(card, RecordForm::kLong), "") << number;
    EXPECT_EQ(Record(card, RecordForm::kShort), Short(number, 768, "SA", "/D/X.DAN"));
    EXPECT_EQ(Record(card, RecordForm::kLongAsItIs), Long(number, 768, "", "SA", "/D/X.DAN"));
  }
}

TEST_F(HandOffRecordTest, OnlyTheTrimmedFormNeedsACompany) {
  for (const char* company : {"", " ", "S", "S   "}) {
    const CardRecord card = Card({{kSte1, company}, {kNom, "Bez"}, {kFax, "01 40"}});
    EXPECT_EQ(Record(card, RecordForm::kLong), "") << company;
    EXPECT_EQ(Record(card, RecordForm::kShort), Short("01 40", 768, company, "/D/X.DAN"));
    EXPECT_EQ(Record(card, RecordForm::kLongAsItIs),
              Long("01 40", 768, "Bez ", company, "/D/X.DAN"));
  }
}

TEST_F(HandOffRecordTest, ALabelOfOneCharacterIsEmptiedAndTheRecordStays) {
  const CardRecord card = Card({{kSte1, "SA"}, {kNom, "B"}, {kFax, "01"}});
  EXPECT_EQ(Record(card, RecordForm::kLong), Long("01", 768, "", "SA", "/D/X.DAN"));
}

TEST_F(HandOffRecordTest, PathsAreAnsiAndInCapitalsOrAsTheyAre) {
  EXPECT_EQ(RecordPath("/home/é/çà œ.dan").bytes(), "/HOME/\xC9/\xC7\xC0 \x8C.DAN");
  EXPECT_EQ(RecordPathAsItIs("/home/é/çà.dan").bytes(), "/home/\xE9/\xE7\xE0.dan");
  EXPECT_EQ(RecordPath("/日/x").bytes(), "/?/X");
}

TEST_F(HandOffRecordTest, TheOffsetIsLittleEndian) {
  const CardRecord card = Card({{kSte1, "SA"}, {kFax, "01"}});
  const HandOffSource source{card, 768 * 32767, kFax, path_};
  const auto record = MakeHandOffRecord(source, RecordForm::kShort, styles_);
  ASSERT_TRUE(record.has_value());
  EXPECT_EQ(Hex(ByteView(*record).subspan(30, 4)), "00 FD 7F 01");
}

}  // namespace
}  // namespace carnetel
