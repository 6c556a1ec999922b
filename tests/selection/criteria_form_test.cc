// The rules of the dialog in which criteria are typed.
#include "selection/criteria_form.h"

#include "tests/selection/criteria_bytes.h"
#include "tests/selection/selection_testing.h"

namespace carnetel {
namespace {

const std::string kPath = "/d/X.CRT";
// Places in the field list.
constexpr int kPlaceOfNom = 2;
constexpr int kPlaceOfSte1 = 3;
constexpr int kPlaceOfVille = 8;

class CriteriaFormTest : public testing::Test {
 protected:
  void SetUp() override { PutWorkingSet(CriteriaRowText(1, '0', "DU")); }

  void PutWorkingSet(const std::string& rows) {
    Put(CriteriaHeaderText() + CriteriaRecordText(kWorkingSetOem, rows) + saved_);
    criteria_ = std::make_unique<CriteriaFile>(files_, kPath);
  }
  void Put(const std::string& text) { files_.SetContents(kPath, BytesOf(text)); }
  void ExpectFile(const std::string& text) {
    EXPECT_TRUE(SameBytes(BytesOf(text), files_.Contents(kPath)));
  }
  CriteriaForm Form() { return {*criteria_, messages_, {}}; }

  FakeClock clock_;
  MemoryFileSystem files_{clock_};
  SilentMessages messages_;
  const std::string saved_ = CriteriaRecordText("Soci\x82t\x82s", CriteriaRowText(7, '6', "PARIS"));
  std::unique_ptr<CriteriaFile> criteria_;
};

TEST_F(CriteriaFormTest, TheFieldListIsEmptyThenTwentyFieldsInCapitals) {
  EXPECT_EQ(CriteriaForm::FieldTexts(),
            (Texts{"",     "PRENOM", "NOM",  "STE1", "STE2", "ADR1", "ADR2",
                   "CP",   "VILLE",  "PAYS", "TEL1", "TEL2", "FAX",  "MODEM",
                   "REF1", "REF2",   "REF3", "REF4", "REF5", "REF6", "NOTES"}));
}

TEST_F(CriteriaFormTest, TheComparatorListIsInTheOrderOfTheirDigits) {
  EXPECT_EQ(Texts(kComparatorTexts.begin(), kComparatorTexts.end()),
            (Texts{"=", "<>", "<=", ">=", "<", ">", "~"}));
}

TEST_F(CriteriaFormTest, AValueIsAsLongAsItsFieldSays) {
  const std::vector<int> limits = {21, 24, 24, 32, 32, 32, 32, 21, 32, 32, 24,
                                   24, 21, 21, 24, 21, 21, 21, 21, 21, 21};
  for (size_t place = 0; place < limits.size(); ++place) {
    EXPECT_EQ(CriteriaForm::LimitOf(static_cast<int>(place)), limits[place]) << place;
  }
  EXPECT_EQ(CriteriaForm::LimitOf(-1), 21);
  EXPECT_EQ(CriteriaForm::LimitOf(21), 21);
}

TEST_F(CriteriaFormTest, TwoTelephonesFaxAndModemAreNumbers) {
  for (int place = -1; place <= 21; ++place) {
    EXPECT_EQ(CriteriaForm::TakesNumber(place), place >= 10 && place <= 13) << place;
  }
}

TEST_F(CriteriaFormTest, OpeningLoadsAndShowsTheWorkingSet) {
  const CriteriaForm form = Form();
  EXPECT_EQ(form.name(), "Dernière Sélection");
  TypedCriteria expected;
  expected[0] = {kPlaceOfSte1, 0, "DU"};
  EXPECT_EQ(form.Shown(), expected);
  EXPECT_EQ(form.row_count(), 0U);
}

TEST_F(CriteriaFormTest, OpeningOnADamagedFileRepairsItAndShowsTheMemory) {
  Put("short");
  const CriteriaForm form = Form();
  EXPECT_EQ(form.Shown(), TypedCriteria());
  EXPECT_EQ(form.name(), "Dernière Sélection");
  ExpectFile(CriteriaHeaderText(0, 0x1A) + CriteriaRecordText(kWorkingSetOem, ""));
}

TEST_F(CriteriaFormTest, AFieldThatIsNotOfferedShowsTheEmptyEntry) {
  PutWorkingSet(CriteriaRowText(6, '3', "75001") + CriteriaRowText(9, '1', "M."));
  TypedCriteria expected;
  expected[0] = {0, 3, "75001"};
  expected[1] = {0, 1, "M."};
  EXPECT_EQ(Form().Shown(), expected);
}

TEST_F(CriteriaFormTest, AComparatorBelowTheDigitsShowsTheFirst) {
  PutWorkingSet(CriteriaRowText(1, '\0', "a") + CriteriaRowText(1, '/', "b") +
                CriteriaRowText(1, '6', "c"));
  const TypedCriteria shown = Form().Shown();
  EXPECT_EQ(shown[0].comparator, 0);
  EXPECT_EQ(shown[1].comparator, 0);
  EXPECT_EQ(shown[2].comparator, 6);
}

TEST_F(CriteriaFormTest, AValueOf21BytesIsShownWithoutWhatFollows) {
  const std::string value = "ABCDEFGHIJKLMNOPQRST\x82";
  PutWorkingSet(CriteriaRowText(1, '0', value) + CriteriaRowText(10, '0', "x"));
  EXPECT_EQ(Form().Shown()[0].value, "ABCDEFGHIJKLMNOPQRSTé");
}

TEST_F(CriteriaFormTest, ReadingTakesFieldComparatorAndOemValue) {
  CriteriaForm form = Form();
  TypedCriteria typed;
  typed[0] = {kPlaceOfNom, 6, "Élu"};
  typed[1] = {kPlaceOfVille, 1, ""};
  EXPECT_EQ(form.Read(typed), 2U);
  EXPECT_EQ(form.row_count(), 2U);
  EXPECT_EQ(criteria_->rows(), RowsOf({{kNom, "~", "\x90lu"}, {kVille, "<>", ""}}));
}

TEST_F(CriteriaFormTest, CharactersBeyond21AreDropped) {
  CriteriaForm form = Form();
  TypedCriteria typed;
  typed[0] = {kPlaceOfSte1, 0, "ABCDEFGHIJKLMNOPQRSTUVWXYZ"};
  typed[1] = {kPlaceOfNom, 0, std::string(100, 'y')};
  EXPECT_EQ(form.Read(typed), 2U);
  EXPECT_EQ(criteria_->rows(),
            RowsOf({{kSte1, "=", "ABCDEFGHIJKLMNOPQRSTU"}, {kNom, "=", std::string(21, 'y')}}));
}

TEST_F(CriteriaFormTest, AGapBetweenFilledRowsDisappears) {
  CriteriaForm form = Form();
  TypedCriteria typed;
  typed[0] = {kPlaceOfSte1, 0, "DU"};
  typed[1] = {kPlaceOfNom, 6, ""};
  typed[2] = {kPlaceOfVille, 6, "PARIS"};
  EXPECT_EQ(form.Read(typed), 2U);
  TypedCriteria expected;
  expected[0] = typed[0];
  expected[1] = typed[2];
  EXPECT_EQ(form.Shown(), expected);
}

TEST_F(CriteriaFormTest, APlaceThatIsNoFieldIsAnEmptyRow) {
  CriteriaForm form = Form();
  for (const int place : {-1, 0, 21, 1000}) {
    TypedCriteria typed;
    typed[0] = {place, 0, "DU"};
    EXPECT_EQ(form.Read(typed), 0U) << place;
  }
}

TEST_F(CriteriaFormTest, ReadingStoresNothing) {
  const FileBytes before = files_.Contents(kPath);
  CriteriaForm form = Form();
  TypedCriteria typed;
  typed[0] = {kPlaceOfNom, 0, "x"};
  EXPECT_EQ(form.Read(typed), 1U);
  EXPECT_TRUE(SameBytes(before, files_.Contents(kPath)));
  // Leaving the dialog loses it: the next one loads what the file has.
  EXPECT_EQ(Form().Shown()[0], (TypedCriterion{kPlaceOfSte1, 0, "DU"}));
}

TEST_F(CriteriaFormTest, WithoutAValidRowConfirmingTellsAndStoresNothing) {
  const FileBytes before = files_.Contents(kPath);
  CriteriaForm form = Form();
  TypedCriteria typed;
  typed[2] = {kPlaceOfNom, 6, ""};
  EXPECT_FALSE(form.Confirm(typed));
  ASSERT_EQ(messages_.shown().size(), 1U);
  EXPECT_EQ(messages_.shown()[0].style, MessageStyle::kInformation);
  EXPECT_EQ(messages_.shown()[0].title_id, 80);
  EXPECT_EQ(messages_.shown()[0].text, "Sélection impossible : Absence de critères valides");
  EXPECT_TRUE(SameBytes(before, files_.Contents(kPath)));
}

TEST_F(CriteriaFormTest, ConfirmingMakesTheValidRowsTheWorkingSet) {
  CriteriaForm form = Form();
  TypedCriteria typed;
  typed[3] = {kPlaceOfNom, 6, "x"};
  EXPECT_TRUE(form.Confirm(typed));
  EXPECT_TRUE(messages_.shown().empty());
  ExpectFile(CriteriaHeaderText() +
             CriteriaRecordText(kWorkingSetOem, CriteriaRowText(11, '6', "x")) + saved_);
}

TEST_F(CriteriaFormTest, ALoadedSetShowsItsNameUntilItIsConfirmed) {
  CriteriaForm form = Form();
  EXPECT_TRUE(criteria_->LoadCriteriaSet(1));
  EXPECT_EQ(form.name(), "Sociétés");
  TypedCriteria expected;
  expected[0] = {kPlaceOfVille, 6, "PARIS"};
  EXPECT_EQ(form.Shown(), expected);
  EXPECT_TRUE(form.Confirm(form.Shown()));
  EXPECT_EQ(form.name(), "Dernière Sélection");
  ExpectFile(CriteriaHeaderText() +
             CriteriaRecordText(kWorkingSetOem, CriteriaRowText(7, '6', "PARIS")) + saved_);
}

// The store of the dialog that keeps sets: position p of its list is record p + 1.
class SavedCriteriaTest : public CriteriaFormTest {
 protected:
  const std::string working_ = CriteriaRecordText(kWorkingSetOem, CriteriaRowText(1, '0', "DU"));
};

TEST_F(SavedCriteriaTest, ListsTheSavedSetsInUtf8) {
  EXPECT_EQ(SavedCriteria(*criteria_, 1).Names(), Texts{"Sociétés"});
}

TEST_F(SavedCriteriaTest, HasContentWhenThereAreValidRows) {
  EXPECT_TRUE(SavedCriteria(*criteria_, 1).HasContent());
  EXPECT_FALSE(SavedCriteria(*criteria_, 0).HasContent());
}

TEST_F(SavedCriteriaTest, AddsReplacesRenamesLoadsAndDeletesRecords) {
  SavedCriteria saved(*criteria_, 1);
  criteria_->rows() = RowsOf({{kFax, "<>", ""}});
  const std::string fax = CriteriaRowText(23, '1', "");
  EXPECT_TRUE(saved.Add("Été"));
  ExpectFile(CriteriaHeaderText() + working_ + saved_ + CriteriaRecordText("\x90t\x82", fax));
  EXPECT_TRUE(saved.Rename(0, "A"));
  ExpectFile(CriteriaHeaderText() + working_ +
             CriteriaRecordText("A", CriteriaRowText(7, '6', "PARIS")) +
             CriteriaRecordText("\x90t\x82", fax));
  EXPECT_TRUE(saved.Load(0));
  EXPECT_EQ(criteria_->rows(), RowsOf({{kVille, "~", "PARIS"}}));
  criteria_->rows() = RowsOf({{kFax, "<>", ""}});
  EXPECT_TRUE(saved.Replace(0, "B"));
  ExpectFile(CriteriaHeaderText() + working_ + CriteriaRecordText("B", fax) +
             CriteriaRecordText("\x90t\x82", fax));
  EXPECT_TRUE(saved.Delete(0));
  ExpectFile(CriteriaHeaderText() + working_ + CriteriaRecordText("\x90t\x82", fax));
}

}  // namespace
}  // namespace carnetel
