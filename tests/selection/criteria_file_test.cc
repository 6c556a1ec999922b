// The criteria file of a directory, byte for byte after each operation.
#include "selection/criteria_file.h"

#include "tests/selection/criteria_bytes.h"
#include "tests/selection/selection_testing.h"

namespace carnetel {
namespace {

const std::string kPath = "/d/X.CRT";
const std::string kNameOf23 = "ABCDEFGHIJKLMNOPQRSTUVW";

class CriteriaFileTest : public testing::Test {
 protected:
  void SetUp() override { Put(CriteriaHeaderText() + EmptyWorkingSet()); }

  static std::string EmptyWorkingSet() { return CriteriaRecordText(kWorkingSetOem, ""); }
  void Put(const std::string& text) { files_.SetContents(kPath, BytesOf(text)); }
  void ExpectFile(const std::string& text) {
    EXPECT_TRUE(SameBytes(BytesOf(text), files_.Contents(kPath)));
  }
  // As a run that begins here: nothing is in memory yet.
  CriteriaFile Fresh() { return {files_, kPath}; }

  FakeClock clock_;
  MemoryFileSystem files_{clock_};
  CriteriaFile criteria_{files_, kPath};

  // Three sets, of companies, of towns and of faxes.
  const std::string a_ = CriteriaRowText(1, '0', "DU");
  const std::string b_ = CriteriaRowText(7, '6', "PARIS");
  const std::string c_ = CriteriaRowText(23, '1', "");
  void PutThreeSets() {
    Put(CriteriaHeaderText(2) + EmptyWorkingSet() + CriteriaRecordText("A", a_) +
        CriteriaRecordText(kNameOf23, b_) + CriteriaRecordText("C", c_));
  }
};

TEST_F(CriteriaFileTest, AnAddedSetStandsBehindTheOthersZeroPadded) {
  criteria_.rows() = RowsOf({{kSte1, "=", "DU"}, {kPrenom, "~", "\x82lo"}});
  EXPECT_TRUE(criteria_.AddCriteriaSet(OemText("Soci\x82t\x82s")));
  const std::string first =
      CriteriaRecordText("Soci\x82t\x82s", a_ + CriteriaRowText(10, '6', "\x82lo"));
  ExpectFile(CriteriaHeaderText() + EmptyWorkingSet() + first);
  criteria_.rows() = RowsOf({{kFax, "<>", ""}});
  EXPECT_TRUE(criteria_.AddCriteriaSet(OemText("C")));
  ExpectFile(CriteriaHeaderText() + EmptyWorkingSet() + first + CriteriaRecordText("C", c_));
}

TEST_F(CriteriaFileTest, ANameOf23CharactersHasNoTerminatorAndALongerOneIsCut) {
  criteria_.rows() = RowsOf({{kSte1, "=", "DU"}});
  EXPECT_TRUE(criteria_.AddCriteriaSet(OemText(kNameOf23 + "XYZ")));
  ExpectFile(CriteriaHeaderText() + EmptyWorkingSet() + CriteriaRecordText(kNameOf23, a_));
  EXPECT_EQ(criteria_.ListCriteriaSets(), std::vector{OemText(kNameOf23)});
}

TEST_F(CriteriaFileTest, AValueOf21BytesReachesTheNextRow) {
  const std::string value = "ABCDEFGHIJKLMNOPQRSTU";
  criteria_.rows() = RowsOf({{kSte1, "=", value}, {kPrenom, "=", "x"}});
  EXPECT_TRUE(criteria_.AddCriteriaSet(OemText("L")));
  ExpectFile(
      CriteriaHeaderText() + EmptyWorkingSet() +
      CriteriaRecordText("L", CriteriaRowText(1, '0', value) + CriteriaRowText(10, '0', "x")));
  CriteriaFile fresh = Fresh();
  EXPECT_TRUE(fresh.LoadCriteriaSet(1));
  EXPECT_EQ(fresh.rows().ValueText(0), value + "\x0A");
}

TEST_F(CriteriaFileTest, TheListHasTheSavedSetsAndOnRequestTheWorkingSet) {
  PutThreeSets();
  const std::vector<OemText> saved = {OemText("A"), OemText(kNameOf23), OemText("C")};
  EXPECT_EQ(criteria_.ListCriteriaSets(), saved);
  EXPECT_EQ(criteria_.ListCriteriaSets(true).size(), 4U);
  EXPECT_EQ(criteria_.ListCriteriaSets(true).front(), OemText(kWorkingSetOem));
}

TEST_F(CriteriaFileTest, APieceOfARecordAtTheEndIsNone) {
  Put(CriteriaHeaderText() + EmptyWorkingSet() + CriteriaRecordText("A", a_) +
      std::string(166, 'x'));
  EXPECT_EQ(criteria_.ListCriteriaSets(), std::vector{OemText("A")});
  criteria_.rows() = RowsOf({{kFax, "<>", ""}});
  EXPECT_TRUE(criteria_.AddCriteriaSet(OemText("C")));
  ExpectFile(CriteriaHeaderText() + EmptyWorkingSet() + CriteriaRecordText("A", a_) +
             CriteriaRecordText("C", c_));
}

TEST_F(CriteriaFileTest, LoadingTakesNameAndRows) {
  PutThreeSets();
  EXPECT_TRUE(criteria_.LoadCriteriaSet(2));
  EXPECT_EQ(criteria_.name(), OemText(kNameOf23));
  EXPECT_EQ(criteria_.rows(), RowsOf({{kVille, "~", "PARIS"}}));
}

TEST_F(CriteriaFileTest, LoadingASetWhoseFirstRowIsEmptyIsFalse) {
  Put(CriteriaHeaderText() + EmptyWorkingSet() +
      CriteriaRecordText("gap", CriteriaRowText(0, '0', "") + a_));
  EXPECT_FALSE(criteria_.LoadCriteriaSet(1));
  EXPECT_EQ(criteria_.name(), OemText("gap"));
  EXPECT_EQ(criteria_.rows().FieldCode(1), 1);
  EXPECT_FALSE(criteria_.LoadCriteriaSet(0));
}

TEST_F(CriteriaFileTest, ReplacingWritesNameAndRowsOverTheRecord) {
  PutThreeSets();
  criteria_.rows() = RowsOf({{kFax, "<>", ""}});
  EXPECT_TRUE(criteria_.ReplaceCriteriaSet(2, OemText("new"), false));
  ExpectFile(CriteriaHeaderText(2) + EmptyWorkingSet() + CriteriaRecordText("A", a_) +
             CriteriaRecordText("new", c_) + CriteriaRecordText("C", c_));
}

TEST_F(CriteriaFileTest, RenamingWritesTheNameAlone) {
  PutThreeSets();
  criteria_.rows() = RowsOf({{kFax, "<>", ""}});
  EXPECT_TRUE(criteria_.ReplaceCriteriaSet(1, OemText("new"), true));
  ExpectFile(CriteriaHeaderText(2) + EmptyWorkingSet() + CriteriaRecordText("new", a_) +
             CriteriaRecordText(kNameOf23, b_) + CriteriaRecordText("C", c_));
}

TEST_F(CriteriaFileTest, TwoSetsMayHaveOneName) {
  PutThreeSets();
  EXPECT_TRUE(criteria_.ReplaceCriteriaSet(1, OemText("C"), true));
  EXPECT_EQ(criteria_.ListCriteriaSets().front(), OemText("C"));
  EXPECT_EQ(criteria_.ListCriteriaSets().back(), OemText("C"));
}

TEST_F(CriteriaFileTest, DeletingMovesTheOthersDown) {
  PutThreeSets();
  EXPECT_TRUE(criteria_.DeleteCriteriaSet(1));
  const std::string rest = CriteriaRecordText(kNameOf23, b_);
  ExpectFile(CriteriaHeaderText(2) + EmptyWorkingSet() + rest + CriteriaRecordText("C", c_));
  EXPECT_TRUE(criteria_.DeleteCriteriaSet(2));
  ExpectFile(CriteriaHeaderText(2) + EmptyWorkingSet() + rest);
  EXPECT_TRUE(criteria_.DeleteCriteriaSet(1));
  ExpectFile(CriteriaHeaderText(2) + EmptyWorkingSet());
}

TEST_F(CriteriaFileTest, ConfirmedCriteriaBecomeRecordZeroUnderItsOwnName) {
  PutThreeSets();
  EXPECT_TRUE(criteria_.LoadCriteriaSet(2));
  EXPECT_TRUE(criteria_.StoreWorkingSet());
  EXPECT_EQ(criteria_.name(), OemText(kWorkingSetOem));
  ExpectFile(CriteriaHeaderText(2) + CriteriaRecordText(kWorkingSetOem, b_) +
             CriteriaRecordText("A", a_) + CriteriaRecordText(kNameOf23, b_) +
             CriteriaRecordText("C", c_));
}

TEST_F(CriteriaFileTest, TheActiveSetReachesTheFileWithTheHeader) {
  PutThreeSets();
  EXPECT_TRUE(criteria_.ReadCriteriaHeader());
  EXPECT_EQ(criteria_.active_set(), 2);
  criteria_.set_active_set(3);
  EXPECT_TRUE(criteria_.LoadCriteriaSet(3));
  EXPECT_TRUE(criteria_.WriteHeader());
  ExpectFile(CriteriaHeaderText(3) + EmptyWorkingSet() + CriteriaRecordText("A", a_) +
             CriteriaRecordText(kNameOf23, b_) + CriteriaRecordText("C", c_));
}

TEST_F(CriteriaFileTest, TheActiveSetChosenOutlastsTheUseOfTheFile) {
  PutThreeSets();
  criteria_.set_active_set(1);
  EXPECT_EQ(criteria_.ListCriteriaSets().size(), 3U);
  EXPECT_TRUE(criteria_.LoadCriteriaSet(3));
  EXPECT_TRUE(criteria_.ReplaceCriteriaSet(3, OemText("C"), true));
  EXPECT_TRUE(criteria_.DeleteCriteriaSet(3));
  EXPECT_EQ(criteria_.active_set(), 1);
  EXPECT_TRUE(criteria_.ReadCriteriaHeader());
  EXPECT_EQ(criteria_.active_set(), 2);
}

TEST_F(CriteriaFileTest, AddingWritesTheActiveSetOfTheMemory) {
  PutThreeSets();
  criteria_.set_active_set(1);
  criteria_.rows() = RowsOf({{kFax, "<>", ""}});
  EXPECT_TRUE(criteria_.AddCriteriaSet(OemText("D")));
  ExpectFile(CriteriaHeaderText(1) + EmptyWorkingSet() + CriteriaRecordText("A", a_) +
             CriteriaRecordText(kNameOf23, b_) + CriteriaRecordText("C", c_) +
             CriteriaRecordText("D", c_));
}

TEST_F(CriteriaFileTest, WithNothingChosenTheActiveSetIsThatOfTheFile) {
  PutThreeSets();
  EXPECT_EQ(criteria_.ListCriteriaSets().size(), 3U);
  EXPECT_EQ(criteria_.active_set(), 2);
  CriteriaFile fresh = Fresh();
  EXPECT_TRUE(fresh.AddCriteriaSet(OemText("D")));
  EXPECT_EQ(LoadLe16(files_.Contents(kPath), 100), 2);
}

TEST_F(CriteriaFileTest, WhatADirectoryMakesIsWhatTheseBytesSay) {
  FakeClock clock;
  SilentProgress progress;
  DirectoryOptions options;
  options.path = "/d/NEW";
  Directory directory({files_, clock, progress}, options);
  EXPECT_EQ(directory.OpenDirectory(), OpenResult::kCreated);
  EXPECT_TRUE(
      SameBytes(BytesOf(CriteriaHeaderText() + EmptyWorkingSet()), files_.Contents("/d/NEW.CRT")));
}

}  // namespace
}  // namespace carnetel
