#include "link/viafax_file.h"

#include "link/chooser_extract.h"
#include "tests/link/hand_off_testing.h"
#include "tests/support/same_bytes.h"

namespace carnetel {
namespace {

constexpr std::string_view kHeader =
    "NOM CLIENT\r\n"
    "\r\n"
    "ADMIN BL=12,PW=\"\",REL=\"\"\r\n"
    "\r\n"
    "PW=\"/\"\r\n";
constexpr std::string_view kEnd = "NNNN\r\n";

// Of a card with company and number alone.
std::string Block(const std::string& company, const std::string& number) {
  return "PM=\"N\",\r\n"
         "PMID=\"\",\r\n"
         "SUBJ=\"\",\r\n"
         "UREF=\"\",\r\n"
         "CC=\"\",\r\n"
         "FROM=\"\",\r\n"
         "TO=\"" +
         company +
         "\",\r\n"
         "RE=\"\",\r\n"
         "ADR02=\"\",\r\n"
         "ADR08=\"" +
         company +
         "\",\r\n"
         "ADR01=" +
         number + ",TYPE=FAXG3,PRI=2\r\n";
}

std::string Blocks(int count) {
  std::string blocks;
  for (int i = 0; i < count; ++i) blocks += Block("SA", "01");
  return blocks;
}

class ViafaxFileTest : public HandOffTest {
 protected:
  ViafaxFileTest() {
    request_.file = "/t/VIAF0012.TXT";
    request_.viafax = true;
  }

  ExtractOutcome Extract(ExtractScope scope, const ChooserRows& rows) {
    return ChooserExtract(*directory_, request_, scope, rows);
  }
  // The first card of the directory, `count` times over.
  ExtractOutcome ExtractMany(int count) {
    ChooserRows rows;
    rows.items.assign(static_cast<size_t>(count), -768);
    return Extract(ExtractScope::kGroup, rows);
  }
  void ExpectFile(const std::string& expected) {
    EXPECT_TRUE(SameBytes(AsBytes(expected), files_.Contents(request_.file)));
  }
  // A line of the block of one card, without its end.
  static std::string Line(const CardRecord& card, const std::string& key,
                          const ViafaxSettings& settings = {}) {
    ViafaxText text(settings, true);
    text.Add(card);
    const size_t start = text.text().find("\r\n" + key + "=") + 2;
    return text.text().substr(start, text.text().find("\r\n", start) - start);
  }

  ExtractRequest request_;
};

TEST_F(ViafaxFileTest, AJobOfOneAddressByteByByte) {
  Add({{kSte1, "Caf\x82 SA  "},
       {kSte2, "Siege "},
       {kQualite, "Mme"},
       {kPrenom, "Ir\x8Ane"},
       {kNom, "L\x82on"},
       {kRef1, "CLIENT"},
       {kRef6, "Nord "},
       {kFax, "01 40 00 00 01 "}});
  request_.viafax_option = 3;
  request_.user_name = "Hélène";
  const ExtractOutcome outcome = Extract(ExtractScope::kCard, {{-768}, 0});
  EXPECT_EQ(outcome.result, ExtractOutcome::Result::kDone);
  EXPECT_EQ(outcome.answer, 1);
  EXPECT_EQ(outcome.cards, 1U);
  ExpectFile(
      "NOM CLIENT\r\n"
      "\r\n"
      "ADMIN BL=12,PW=\"\",REL=\"\"\r\n"
      "\r\n"
      "PW=\"/\"\r\n"
      "PM=\"N\",\r\n"
      "PMID=\"\",\r\n"
      "SUBJ=\"\",\r\n"
      "UREF=\"\",\r\n"
      "CC=\"CLIENT<:R:>Nord\",\r\n"
      "FROM=\"H\xE9l\xE8ne\",\r\n"
      "TO=\"Caf\x82 SA\",\r\n"
      "RE=\"Siege\",\r\n"
      "ADR02=\"Siege\",\r\n"
      "ADR08=\"Mme-Ir\x8Ane-L\x82on\",\r\n"
      "ADR01=01 40 00 00 01 ,TYPE=FAXG3,PRI=2\r\n"
      "NNNN\r\n");
}

TEST_F(ViafaxFileTest, WithoutACardThereIsNoJob) {
  EXPECT_EQ(ExtractMany(0).result, ExtractOutcome::Result::kNoRow);
  EXPECT_FALSE(files_.Exists(request_.file));
  SetFile(request_.file, "NNNN\r\n");
  EXPECT_EQ(ExtractMany(0).result, ExtractOutcome::Result::kNoRow);
  ExpectFile("NNNN\r\n");
}

TEST_F(ViafaxFileTest, FourHundredAddressesAreOneJob) {
  Add({{kSte1, "SA"}, {kFax, "01"}});
  const ExtractOutcome outcome = ExtractMany(400);
  EXPECT_EQ(outcome.answer, 400);
  EXPECT_EQ(outcome.cards, 400U);
  ExpectFile(std::string(kHeader) + Blocks(400) + std::string(kEnd));
}

TEST_F(ViafaxFileTest, FourHundredAndOneAreTwoJobs) {
  Add({{kSte1, "SA"}, {kFax, "01"}});
  EXPECT_EQ(ExtractMany(401).answer, 401);
  ExpectFile(std::string(kHeader) + Blocks(400) + std::string(kEnd) + std::string(kHeader) +
             Blocks(1) + std::string(kEnd));
}

TEST_F(ViafaxFileTest, ASecondRunGoesOnWithTheJobAndCountsAnew) {
  Add({{kSte1, "SA"}, {kFax, "01"}});
  EXPECT_EQ(ExtractMany(399).answer, 399);
  EXPECT_EQ(ExtractMany(2).answer, 2);
  ExpectFile(std::string(kHeader) + Blocks(401) + std::string(kEnd));
  EXPECT_EQ(ExtractMany(401).answer, 401);
  ExpectFile(std::string(kHeader) + Blocks(801) + std::string(kEnd) + std::string(kHeader) +
             Blocks(1) + std::string(kEnd));
}

TEST_F(ViafaxFileTest, AFileShorterThanAClosingLineIsWrittenOverFromItsStart) {
  Add({{kSte1, "SA"}, {kFax, "01"}});
  SetFile(request_.file, "abc");
  EXPECT_EQ(ExtractMany(1).answer, 1);
  ExpectFile(Blocks(1) + std::string(kEnd));
  EXPECT_EQ(ViafaxStart(0), 0U);
  EXPECT_EQ(ViafaxStart(5), 0U);
  EXPECT_EQ(ViafaxStart(6), 0U);
  EXPECT_EQ(ViafaxStart(7), 1U);
}

TEST_F(ViafaxFileTest, ACardWithoutNumberIsWrittenAllTheSame) {
  Add({{kSte1, "SA"}});
  EXPECT_EQ(Extract(ExtractScope::kCard, {{-768}, 0}).answer, 1);
  ExpectFile(std::string(kHeader) + Block("SA", "") + std::string(kEnd));
}

TEST_F(ViafaxFileTest, TheSelectionAnswersTheNumberOfItsCards) {
  Add({{kSte1, "Ba"}, {kFax, "02"}}, true);
  Add({{kSte1, "Ca"}, {kFax, "03"}});
  Add({{kSte1, "Da"}, {kFax, "04"}}, true);
  Add({{kSte1, "Aa"}, {kTel1, "05"}}, true);
  const ChooserRows rows = ListChooserRows(*directory_, request_.kind);
  EXPECT_EQ(Extract(ExtractScope::kSelection, rows).answer, 2);
  ExpectFile(std::string(kHeader) + Block("Ba", "02") + Block("Da", "04") + std::string(kEnd));
}

TEST_F(ViafaxFileTest, TheAttentionTextByEveryOption) {
  const CardRecord card =
      Card({{kSte1, "Caf\x82 "}, {kQualite, "Mme "}, {kPrenom, "Ir\x8Ane "}, {kNom, "L\x82on "}});
  const std::vector<std::string> texts = {
      "Caf\x82",          "Caf\x82-L\x82on",      "L\x82on-Caf\x82", "Mme-Ir\x8Ane-L\x82on",
      "Ir\x8Ane-L\x82on", "Mme-L\x82on-Ir\x8Ane", "L\x82on-Ir\x8Ane"};
  for (int option = 0; option < 7; ++option) {
    EXPECT_EQ(ViafaxAttention(card, option).bytes(), texts[static_cast<size_t>(option)]);
  }
  for (const int option : {-1, 7, 1000})
    EXPECT_EQ(ViafaxAttention(card, option).bytes(), "Caf\x82");
}

TEST_F(ViafaxFileTest, AnEmptyFirstPartLeavesTheSecondWithoutHyphen) {
  EXPECT_EQ(ViafaxAttention(Card({{kNom, "Bez"}}), 1).bytes(), "Bez");
  EXPECT_EQ(ViafaxAttention(Card({{kSte1, "SA"}}), 1).bytes(), "SA");
  EXPECT_EQ(ViafaxAttention(Card({{kPrenom, "Anne"}, {kNom, "Bez"}}), 3).bytes(), "Anne-Bez");
  // One character counts as nothing, in front too.
  EXPECT_EQ(ViafaxAttention(Card({{kSte1, "S"}, {kNom, "Bez"}}), 1).bytes(), "Bez");
}

TEST_F(ViafaxFileTest, TitleAndNameAreJoinedByAHyphen) {
  EXPECT_EQ(ViafaxAttention(Card({{kQualite, "Mme"}, {kNom, "Bez"}}), 3).bytes(), "Mme-Bez");
  EXPECT_EQ(ViafaxAttention(Card({{kQualite, "Mme"}, {kPrenom, "Anne"}}), 5).bytes(), "Mme-Anne");
}

TEST_F(ViafaxFileTest, AThirdPartBehindNothingBeginsWithTheHyphen) {
  EXPECT_EQ(ViafaxAttention(Card({{kNom, "Bez"}}), 3).bytes(), "-Bez");
  EXPECT_EQ(ViafaxAttention(Card({{kPrenom, "Anne"}}), 5).bytes(), "-Anne");
  EXPECT_EQ(ViafaxAttention(Card({{kQualite, "M"}, {kNom, "Bez"}}), 3).bytes(), "-Bez");
}

TEST_F(ViafaxFileTest, BlankPartsLeaveTheirHyphen) {
  EXPECT_EQ(ViafaxAttention(Card({{kSte1, "SA"}, {kNom, "  "}}), 1).bytes(), "SA-");
  EXPECT_EQ(ViafaxAttention(Card({{kSte1, "  "}, {kNom, "  "}}), 1).bytes(), "");
}

TEST_F(ViafaxFileTest, ReferencesThatAreEmptyHaveNoSeparator) {
  EXPECT_EQ(Line(Card({{kRef1 + 2, "Nord"}}), "CC"), "CC=\"Nord\",");
  EXPECT_EQ(Line(Card({{kRef1 + 1, "Sud"}, {kRef1 + 2, "  "}, {kRef1 + 4, "Est  "}}), "CC"),
            "CC=\"Sud<:R:>Est\",");
  EXPECT_EQ(Line(Card({{kRef1, "A"}, {kRef1 + 1, "B  "}, {kRef6, "CD"}}), "CC"), "CC=\"CD\",");
  const std::string full(24, 'R');
  EXPECT_EQ(Line(Card({{kRef1, full}, {kRef1 + 1, "x2"}}), "CC"), "CC=\"" + full + "<:R:>x2\",");
}

TEST_F(ViafaxFileTest, LinesAreCutThenTrimmed) {
  const std::string company = std::string(29, 'S') + " XX";
  const std::string second = std::string(23, 'T') + " UVWXYZAB";
  const CardRecord card =
      Card({{kSte1, company}, {kSte2, second}, {kFax, " 12345678901234567890"}});
  EXPECT_EQ(Line(card, "TO"), "TO=\"" + std::string(29, 'S') + "\",");
  EXPECT_EQ(Line(card, "RE"), "RE=\"" + std::string(23, 'T') + "\",");
  EXPECT_EQ(Line(card, "ADR02"), "ADR02=\"" + std::string(23, 'T') + "\",");
  EXPECT_EQ(Line(card, "ADR08"), "ADR08=\"" + company + "\",");
  EXPECT_EQ(Line(card, "ADR01"), "ADR01= 1234567890123456789,TYPE=FAXG3,PRI=2");
  const CardRecord letters = Card({{kSte1, "S "}, {kSte2, "T"}});
  EXPECT_EQ(Line(letters, "TO"), "TO=\"\",");
  EXPECT_EQ(Line(letters, "RE"), "RE=\"\",");
  EXPECT_EQ(Line(letters, "ADR08"), "ADR08=\"\",");
}

TEST_F(ViafaxFileTest, TheNumberIsThatOfTheKind) {
  const CardRecord card =
      Card({{kTel1, "18"}, {kTel2, "19"}, {kMtel, "20"}, {kFax, "22"}, {kModem, "24"}});
  for (const int field : {kTel1, kTel2, kMtel, kFax, kModem}) {
    ViafaxSettings settings;
    settings.number_field = field;
    EXPECT_EQ(Line(card, "ADR01", settings),
              "ADR01=" + std::to_string(field) + ",TYPE=FAXG3,PRI=2");
  }
  Add({{kSte1, "SA"}, {kModem, "24"}});
  request_.kind = NumberKind::kModem;
  EXPECT_EQ(ExtractMany(1).answer, 1);
  ExpectFile(std::string(kHeader) + Block("SA", "24") + std::string(kEnd));
}

TEST_F(ViafaxFileTest, TheSenderIsAnsiAndCutAtThirtyCharacters) {
  ViafaxSettings settings;
  settings.user_name = std::string("é€") + std::string(40, 'x');
  EXPECT_EQ(Line(CardRecord(), "FROM", settings), "FROM=\"\xE9\x80" + std::string(28, 'x') + "\",");
  settings.user_name = "H\xE9l\xE8ne";
  EXPECT_EQ(Line(CardRecord(), "FROM", settings), "FROM=\"H\xE9l\xE8ne\",");
  settings.user_name = "Ł x";
  EXPECT_EQ(Line(CardRecord(), "FROM", settings), "FROM=\"? x\",");
  // It is not trimmed like a card's text.
  settings.user_name = "D";
  EXPECT_EQ(Line(CardRecord(), "FROM", settings), "FROM=\"D\",");
}

TEST_F(ViafaxFileTest, TheJobNumberStandsFromTheFifthCharacterOfTheNameOn) {
  EXPECT_EQ(ViafaxJobNumber("/t/VIAF0012.TXT"), 12);
  EXPECT_EQ(ViafaxJobNumber("VIAF7"), 7);
  EXPECT_EQ(ViafaxJobNumber("/9999/12345678"), 5678);
  EXPECT_EQ(ViafaxJobNumber("/t/JOB_-42x.VFX"), -42);
  EXPECT_EQ(ViafaxJobNumber("/t/été_31.TXT"), 31);
  EXPECT_EQ(ViafaxJobNumber("/t/VIAFAX12.TXT"), 0);
  EXPECT_EQ(ViafaxJobNumber("/t/VIAF.123"), 0);
  EXPECT_EQ(ViafaxJobNumber("/t/V1"), 0);
  EXPECT_EQ(ViafaxJobNumber(""), 0);
  EXPECT_EQ(ViafaxJobNumber("VIAF99999999999999999999"), 2147483647);
}

TEST_F(ViafaxFileTest, TheSenderStandsInTheSettingsOfTheCallingProgram) {
  SetFile("/home/APPLI.INI", "[General]\r\nUserName = Anne Bez \r\n");
  EXPECT_EQ(ViafaxUserName(files_, "/home/", "APPLI"), "Anne Bez");
  EXPECT_EQ(ViafaxUserName(files_, "/home/", "AUTRE"), "");
  SetFile("/home/faxer.ini", "[general]\nusername=\"P. Doe\"\n");
  EXPECT_EQ(ViafaxUserName(files_, "/home/", "FAXER"), "P. Doe");
}

}  // namespace
}  // namespace carnetel
