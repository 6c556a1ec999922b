#include "link/chooser_extract.h"

#include "tests/link/hand_off_testing.h"
#include "tests/support/same_bytes.h"

namespace carnetel {
namespace {

using Result = ExtractOutcome::Result;

constexpr uint8_t kGroupBit = 4;

class ChooserExtractTest : public HandOffTest {
 protected:
  ChooserExtractTest() { request_.file = "/t/NUM.DAT"; }

  ExtractOutcome Extract(ExtractScope scope, const ChooserRows& rows) {
    return ChooserExtract(*directory_, request_, scope, rows);
  }
  // What the chooser lists, on the row given.
  [[nodiscard]] ChooserRows Rows(int current = -1) const {
    ChooserRows rows = ListChooserRows(*directory_, request_.kind);
    rows.current = current;
    return rows;
  }
  void ExpectFile(const std::string& expected) {
    EXPECT_TRUE(SameBytes(AsBytes(expected), files_.Contents(request_.file)));
  }
  // Three cards with faxes, in the order of the list B, C, D, at 1536, 768 and 2304.
  void AddThree(bool mark_c, bool mark_d) {
    Add({{kSte1, "Coop"}, {kNom, "Cl\x82o"}, {kFax, "03 03"}}, mark_c);
    Add({{kSte1, "Bazar"}, {kNom, "Bez"}, {kFax, "02 02"}}, true);
    Add({{kSte1, "D\x82p\x93t"}, {kNom, "Dac"}, {kFax, "04 04"}}, mark_d);
  }

  ExtractRequest request_;
};

TEST_F(ChooserExtractTest, TheRowsAreTheMembersWithSuchANumberNegativeWithoutMark) {
  Add({{kSte1, "A"}, {kFax, "1"}}, true);
  Add({{kSte1, "B"}, {kTel1, "1"}}, true);
  Add({{kSte1, "C"}, {kFax, "1"}});
  const ChooserRows rows = Rows();
  EXPECT_EQ(rows.items, (std::vector<int32_t>{768, -2304}));
  EXPECT_EQ(rows.current, -1);
  directory_->set_group_bit(kGroupBit);
  EXPECT_TRUE(Rows().items.empty());
  SetBit(2304, kGroupBit);
  SetBit(2304, kGroupBit + 1);
  SetBit(1536, kGroupBit);
  EXPECT_EQ(Rows().items, std::vector<int32_t>{2304});
}

TEST_F(ChooserExtractTest, WithTheSecondTelephoneTheListIsEmptyAndNothingCanBeExtracted) {
  Add({{kSte1, "SA"}, {kTel2, "01"}, {kTel1, "02"}}, true);
  request_.kind = NumberKind::kTel2;
  EXPECT_TRUE(Rows().items.empty());
  for (const auto scope : {ExtractScope::kCard, ExtractScope::kSelection, ExtractScope::kGroup}) {
    EXPECT_EQ(Extract(scope, Rows(0)).result, Result::kNoRow);
  }
  EXPECT_FALSE(files_.Exists(request_.file));
}

TEST_F(ChooserExtractTest, OneCardInTheShortFormWithItsPathInCapitals) {
  AddThree(false, false);
  const ExtractOutcome outcome = Extract(ExtractScope::kCard, Rows(2));
  EXPECT_EQ(outcome.result, Result::kDone);
  EXPECT_EQ(outcome.answer, 1);
  EXPECT_EQ(outcome.cards, 1U);
  ExpectFile(Short("04 04", 2304, "D\xE9p\xF4t"));
}

TEST_F(ChooserExtractTest, OneCardInTheLongForm) {
  AddThree(false, false);
  request_.long_records = true;
  EXPECT_EQ(Extract(ExtractScope::kCard, Rows(1)).answer, 1);
  ExpectFile(Long("03 03", 768, "Cl\xE9o", "Coop"));
}

TEST_F(ChooserExtractTest, EveryKindOfNumberInBothForms) {
  Add({{kSte1, "SA"}, {kTel1, "18"}, {kTel2, "19"}, {kMtel, "20"}, {kFax, "22"}, {kModem, "24"}});
  const std::initializer_list<std::pair<NumberKind, std::string>> kinds = {
      {NumberKind::kTel1, "18"},
      {NumberKind::kTel2, "19"},
      {NumberKind::kMinitel, "20"},
      {NumberKind::kFax, "22"},
      {NumberKind::kModem, "24"}};
  std::string expected;
  for (const auto& [kind, number] : kinds) {
    request_.kind = kind;
    for (const bool long_records : {false, true}) {
      request_.long_records = long_records;
      EXPECT_EQ(Extract(ExtractScope::kCard, {{-768}, 0}).result, Result::kDone);
      expected += long_records ? Long(number, 768, "", "SA") : Short(number, 768, "SA");
      ExpectFile(expected);
    }
  }
}

TEST_F(ChooserExtractTest, TheSelectionInTheOrderOfTheFileWithItsPathAsItIs) {
  AddThree(false, true);
  const ExtractOutcome outcome = Extract(ExtractScope::kSelection, Rows());
  EXPECT_EQ(outcome.result, Result::kDone);
  EXPECT_EQ(outcome.answer, 2);
  EXPECT_EQ(outcome.cards, 2U);
  ExpectFile(Short("02 02", 1536, "Bazar", kMainFile) +
             Short("04 04", 2304, "D\xE9p\xF4t", kMainFile));
}

TEST_F(ChooserExtractTest, TheSelectionInTheLongForm) {
  AddThree(true, false);
  request_.long_records = true;
  EXPECT_EQ(Extract(ExtractScope::kSelection, Rows()).answer, 2);
  ExpectFile(Long("02 02", 1536, "Bez", "Bazar", kMainFile) +
             Long("03 03", 768, "Cl\xE9o", "Coop", kMainFile));
}

TEST_F(ChooserExtractTest, AMarkedCardThatIsNotListedIsPassedOver) {
  Add({{kSte1, "Avant"}, {kTel1, "01"}}, true);
  Add({{kSte1, "Zut"}, {kFax, "09"}}, true);
  ASSERT_EQ(directory_->marked_count(), 2);
  EXPECT_EQ(Extract(ExtractScope::kSelection, Rows()).cards, 1U);
  ExpectFile(Short("09", 1536, "Zut", kMainFile));
}

TEST_F(ChooserExtractTest, AMarkedCardThatWasNotListedIsPassedOverEvenWithANumber) {
  AddThree(true, true);
  EXPECT_EQ(Extract(ExtractScope::kSelection, {{768}, 0}).cards, 1U);
  ExpectFile(Short("03 03", 768, "Coop", kMainFile));
}

TEST_F(ChooserExtractTest, AListedCardIsFoundWhateverMarkItsRowShows) {
  AddThree(false, false);
  // The mark of the file counts: row C shows one that the file has not, row B none that it has.
  EXPECT_EQ(Extract(ExtractScope::kSelection, {{-1536, 768, -2304}, 0}).cards, 1U);
  ExpectFile(Short("02 02", 1536, "Bazar", kMainFile));
}

TEST_F(ChooserExtractTest, TheSelectionEndsAfterAsManyAsTheRowsHaveMarks) {
  AddThree(true, true);
  EXPECT_EQ(Extract(ExtractScope::kSelection, {{1536, 768, -2304}, 0}).cards, 2U);
  ExpectFile(Short("02 02", 1536, "Bazar", kMainFile) + Short("03 03", 768, "Coop", kMainFile));
}

TEST_F(ChooserExtractTest, ACardWithoutNumberIsPassedOverAndNotCounted) {
  Add({{kSte1, "B"}, {kFax, "02"}}, true);
  Add({{kSte1, "Coop"}, {kFax, "3"}}, true);
  Add({{kSte1, "Dac"}, {kFax, "04"}}, true);
  request_.long_records = true;
  // Two marks by the rows: the company of one character and the number of one character do not
  // count, so the third is still among the two.
  const ExtractOutcome outcome = Extract(ExtractScope::kSelection, {{768, 1536, -2304}, 0});
  EXPECT_EQ(outcome.result, Result::kDone);
  EXPECT_EQ(outcome.answer, 2);
  EXPECT_EQ(outcome.cards, 1U);
  ExpectFile(Long("04", 2304, "", "Dac", kMainFile));
}

TEST_F(ChooserExtractTest, AnEmptySelectionCannotBeExtracted) {
  Add({{kSte1, "B"}, {kFax, "02"}});
  Add({{kSte1, "C"}, {kTel1, "02"}}, true);
  SetFile(request_.file, "ancien");
  EXPECT_EQ(Extract(ExtractScope::kSelection, Rows(0)).result, Result::kNoRow);
  ExpectFile("ancien");
}

TEST_F(ChooserExtractTest, TheSelectionOfAGroupIsThatOfItsOwnMarks) {
  AddThree(true, false);
  directory_->set_group_bit(kGroupBit);
  for (const uint32_t offset : {768U, 1536U, 2304U}) SetBit(offset, kGroupBit);
  SetBit(2304, kGroupBit + 1);
  EXPECT_EQ(Extract(ExtractScope::kSelection, Rows()).cards, 1U);
  ExpectFile(Short("04 04", 2304, "D\xE9p\xF4t", kMainFile));
}

TEST_F(ChooserExtractTest, TheGroupIsEveryRowInTheOrderOfTheListInCapitals) {
  AddThree(true, false);
  const ExtractOutcome outcome = Extract(ExtractScope::kGroup, {{-2304, 768, 1536}, 1});
  EXPECT_EQ(outcome.result, Result::kDone);
  EXPECT_EQ(outcome.answer, 2);
  EXPECT_EQ(outcome.cards, 3U);
  ExpectFile(Short("04 04", 2304, "D\xE9p\xF4t") + Short("03 03", 768, "Coop") +
             Short("02 02", 1536, "Bazar"));
}

TEST_F(ChooserExtractTest, TheGroupInTheLongFormWithoutACardThatHasNoNumber) {
  AddThree(true, false);
  Add({{kSte1, "Ets"}, {kFax, "  "}});
  request_.long_records = true;
  const ExtractOutcome outcome = Extract(ExtractScope::kGroup, Rows());
  EXPECT_EQ(outcome.answer, 2);
  EXPECT_EQ(outcome.cards, 3U);
  ExpectFile(Long("02 02", 1536, "Bez", "Bazar") + Long("03 03", 768, "Cl\xE9o", "Coop") +
             Long("04 04", 2304, "Dac", "D\xE9p\xF4t"));
}

TEST_F(ChooserExtractTest, AMemberWithoutSuchANumberIsReachedByNoExtraction) {
  Add({{kSte1, "Avec"}, {kFax, "01"}}, true);
  Add({{kSte1, "Sans"}, {kTel1, "02"}}, true);
  directory_->set_group_bit(kGroupBit);
  for (const uint32_t offset : {768U, 1536U}) {
    SetBit(offset, kGroupBit);
    SetBit(offset, kGroupBit + 1);
  }
  EXPECT_EQ(Extract(ExtractScope::kGroup, Rows()).cards, 1U);
  EXPECT_EQ(Extract(ExtractScope::kSelection, Rows()).cards, 1U);
  EXPECT_EQ(Extract(ExtractScope::kCard, Rows(1)).result, Result::kNoRow);
  ExpectFile(Short("01", 768, "Avec") + Short("01", 768, "Avec", kMainFile));
}

TEST_F(ChooserExtractTest, OnlyCardsWithoutNumberLeaveTheFileEmpty) {
  Add({{kSte1, "Ets"}, {kFax, "1"}}, true);
  request_.long_records = true;
  const ExtractOutcome outcome = Extract(ExtractScope::kGroup, Rows());
  EXPECT_EQ(outcome.result, Result::kDone);
  EXPECT_EQ(outcome.answer, 2);
  EXPECT_EQ(outcome.cards, 0U);
  EXPECT_TRUE(files_.Exists(request_.file));
  ExpectFile("");
}

TEST_F(ChooserExtractTest, ExtractionIntoAFileThatHoldsSomethingAppends) {
  AddThree(true, false);
  SetFile(request_.file, "reste");
  EXPECT_EQ(Extract(ExtractScope::kCard, Rows(0)).result, Result::kDone);
  EXPECT_EQ(Extract(ExtractScope::kSelection, Rows(0)).result, Result::kDone);
  request_.long_records = true;
  EXPECT_EQ(Extract(ExtractScope::kCard, Rows(0)).result, Result::kDone);
  ExpectFile("reste" + Short("02 02", 1536, "Bazar") + Short("02 02", 1536, "Bazar", kMainFile) +
             Short("03 03", 768, "Coop", kMainFile) + Long("02 02", 1536, "Bez", "Bazar"));
}

TEST_F(ChooserExtractTest, WithoutACurrentRowNothingHappens) {
  AddThree(false, false);
  for (const int row : {-1, 3, 1000}) {
    EXPECT_EQ(Extract(ExtractScope::kCard, Rows(row)).result, Result::kNoRow) << row;
  }
  // No card lies there.
  EXPECT_EQ(Extract(ExtractScope::kCard, {{-3072}, 0}).result, Result::kNoRow);
  EXPECT_FALSE(files_.Exists(request_.file));
}

TEST_F(ChooserExtractTest, TheOneCardWithoutNumberIsToldAndNothingIsWritten) {
  Add({{kSte1, "SA"}, {kFax, " "}});
  request_.long_records = true;
  const ExtractOutcome outcome = Extract(ExtractScope::kCard, Rows(0));
  EXPECT_EQ(outcome.result, Result::kNoNumber);
  EXPECT_EQ(outcome.answer, 0);
  ExpectFile("");
  SetFile(request_.file, "ancien");
  EXPECT_EQ(Extract(ExtractScope::kCard, Rows(0)).result, Result::kNoNumber);
  ExpectFile("ancien");
}

TEST_F(ChooserExtractTest, AFileThatCannotBeOpenedIsTold) {
  AddThree(true, false);
  SetFile("/t/fichier", "x");
  request_.file = "/t/fichier/NUM.DAT";
  for (const bool viafax : {false, true}) {
    request_.viafax = viafax;
    const ExtractOutcome outcome = Extract(ExtractScope::kGroup, Rows());
    EXPECT_EQ(outcome.result, Result::kNoFile);
    EXPECT_EQ(outcome.answer, 0);
  }
  EXPECT_EQ(TextOf("/t/fichier"), "x");
}

TEST_F(ChooserExtractTest, AFileOfTheDirectoryIsNeverWrittenTo) {
  AddThree(true, false);
  directory_->address().Flush();
  const std::string cards = TextOf("/d/Clients.DAN");
  const std::string order = TextOf("/d/Clients.ADR");
  for (const char* file : {"/d/Clients.DAN", "/d/../d/Clients.ADR", "/d/clients.dan"}) {
    request_.file = file;
    for (const bool viafax : {false, true}) {
      request_.viafax = viafax;
      EXPECT_EQ(Extract(ExtractScope::kGroup, Rows()).result, Result::kNoFile) << file;
    }
  }
  EXPECT_EQ(TextOf("/d/Clients.DAN"), cards);
  EXPECT_EQ(TextOf("/d/Clients.ADR"), order);
  EXPECT_FALSE(files_.Exists("/d/clients.dan"));
}

TEST_F(ChooserExtractTest, AFullDiskLeavesTheFileAsItWas) {
  AddThree(true, false);
  SetFile(request_.file, "ancien, NNNN\r\n");
  const ChooserRows rows = Rows();
  for (const bool viafax : {false, true}) {
    request_.viafax = viafax;
    disk_.FillDisk();
    const ExtractOutcome outcome = Extract(ExtractScope::kGroup, rows);
    disk_.Heal();
    EXPECT_TRUE(outcome.write_failed);
    EXPECT_EQ(outcome.result, Result::kDone);
    ExpectFile("ancien, NNNN\r\n");
  }
  request_.viafax = false;
  EXPECT_FALSE(Extract(ExtractScope::kGroup, rows).write_failed);
}

TEST_F(ChooserExtractTest, NothingOfTheDirectoryChanges) {
  AddThree(true, false);
  const FileBytes main = files_.Contents("/d/Clients.DAN");
  const FileBytes address = files_.Contents("/d/Clients.ADR");
  for (const auto scope : {ExtractScope::kCard, ExtractScope::kSelection, ExtractScope::kGroup}) {
    EXPECT_EQ(Extract(scope, Rows(0)).result, Result::kDone);
  }
  EXPECT_TRUE(SameBytes(main, files_.Contents("/d/Clients.DAN")));
  EXPECT_TRUE(SameBytes(address, files_.Contents("/d/Clients.ADR")));
}

}  // namespace
}  // namespace carnetel
