// "Définir liste": what the twelve rows show, count and save.
#include "printing/layout_form.h"

#include "tests/printing/printing_testing.h"

namespace carnetel {
namespace {

using ::testing::Test;

class LayoutFormTest : public Test {
 protected:
  static constexpr char kPath[] = "/dir/CLIENTS.LST";

  LayoutFormTest() { (void)layout.LoadComposition(CompositionCopy::kUser); }

  // As "3:30 5:30", from the first row to the last; an empty row is "0:".
  static std::string Rows(const LayoutForm& form) {
    std::string text;
    for (size_t row = 0; row < kMaxColumns; ++row) {
      text += std::to_string(form.choice(row)) + ':' + form.width_text(row) + ' ';
    }
    return text;
  }
  static void FillRow(LayoutForm& form, size_t row, uint32_t choice, std::string_view width) {
    form.Choose(row, choice);
    form.TypeWidth(row, width);
  }
  [[nodiscard]] Composition Saved() { return layout.LoadComposition(CompositionCopy::kUser); }

  const std::string factory_rows = "3:30 5:30 7:5 12:12 0: 0: 0: 0: 0: 0: 0: 0: ";
  FakeClock clock{1'000'000'000};
  MemoryFileSystem files{clock};
  FaultFileSystem faults{files};
  LayoutFile layout{faults, kPath};
};

TEST_F(LayoutFormTest, TheListOfFieldsHasNoQualiteAndAnEmptyFirstEntry) {
  const std::vector<std::string> fields = {
      "",     "PRENOM", "NOM",   "STE1", "STE2", "ADR1", "ADR2", "CP",   "VILLE", "PAYS", "TEL1",
      "TEL2", "FAX",    "MODEM", "REF1", "REF2", "REF3", "REF4", "REF5", "REF6",  "NOTES"};
  EXPECT_EQ(LayoutForm::Choices(), fields);
}

TEST_F(LayoutFormTest, OpensWithTheUsersComposition) {
  EXPECT_TRUE(layout.SaveComposition(CompositionOf({{20, 64}, {1, 8}})));
  const LayoutForm form(layout);
  EXPECT_EQ(Rows(form), "20:64 1:8 0: 0: 0: 0: 0: 0: 0: 0: 0: 0: ");
  EXPECT_EQ(form.WidthText(), "Largeur de la liste : 73 colonnes");
}

TEST_F(LayoutFormTest, ShowsTheWidthsAndTheBlanksBetweenThem) {
  const LayoutForm form(layout);
  EXPECT_EQ(Rows(form), factory_rows);
  EXPECT_EQ(form.ColumnsWidth(), 80);
  EXPECT_EQ(form.WidthText(), "Largeur de la liste : 80 colonnes");
}

TEST_F(LayoutFormTest, TheWidthFollowsEachChange) {
  LayoutForm form(layout);
  form.TypeWidth(0, "10");
  EXPECT_EQ(form.ColumnsWidth(), 60);
  form.Choose(4, 2);
  EXPECT_EQ(form.ColumnsWidth(), 61);
  form.TypeWidth(4, "9");
  EXPECT_EQ(form.ColumnsWidth(), 70);
  form.Choose(1, 0);
  EXPECT_EQ(form.ColumnsWidth(), 39);
}

TEST_F(LayoutFormTest, AWidthWithoutAFieldDoesNotCount) {
  LayoutForm form(layout);
  form.TypeWidth(7, "99");
  EXPECT_EQ(form.ColumnsWidth(), 80);
}

TEST_F(LayoutFormTest, WithoutFieldsTheWidthIsOneBelowNothing) {
  LayoutForm form(layout);
  for (size_t row = 0; row < kMaxColumns; ++row) form.Choose(row, 0);
  EXPECT_EQ(form.WidthText(), "Largeur de la liste : -1 colonnes");
}

TEST_F(LayoutFormTest, AWidthTakesThreeDigits) {
  LayoutForm form(layout);
  form.TypeWidth(0, "1234");
  EXPECT_EQ(form.width_text(0), "123");
  form.TypeWidth(0, " 4x5-");
  EXPECT_EQ(form.width_text(0), "45");
  form.TypeWidth(0, "");
  EXPECT_EQ(form.width_text(0), "");
}

TEST_F(LayoutFormTest, TheDefaultIsShownAndNotSaved) {
  const Composition own = CompositionOf({{2, 20}});
  EXPECT_TRUE(layout.SaveComposition(own));
  LayoutForm form(layout);
  const FileBytes before = files.Contents(kPath);
  form.Default();
  EXPECT_EQ(Rows(form), factory_rows);
  EXPECT_EQ(form.ColumnsWidth(), 80);
  EXPECT_TRUE(SameBytes(before, files.Contents(kPath)));
  EXPECT_EQ(Saved(), own);
}

TEST_F(LayoutFormTest, ARowWithAFieldAndNoWidthIsDroppedOnSave) {
  LayoutForm form(layout);
  form.TypeWidth(1, "0");
  form.TypeWidth(2, "");
  EXPECT_TRUE(form.Save());
  EXPECT_EQ(Rows(form), "3:30 12:12 0: 0: 0: 0: 0: 0: 0: 0: 0: 0: ");
  EXPECT_EQ(Saved(), CompositionOf({{3, 30}, {12, 12}}));
}

TEST_F(LayoutFormTest, ARowWithAWidthAndNoFieldIsDroppedOnSave) {
  LayoutForm form(layout);
  form.Choose(0, 0);
  EXPECT_TRUE(form.Save());
  EXPECT_EQ(Rows(form), "5:30 7:5 12:12 0: 0: 0: 0: 0: 0: 0: 0: 0: ");
  EXPECT_EQ(Saved(), CompositionOf({{5, 30}, {7, 5}, {12, 12}}));
}

TEST_F(LayoutFormTest, ASaveClosesUpTheGaps) {
  LayoutForm form(layout);
  for (size_t row = 0; row < 4; ++row) form.Choose(row, 0);
  FillRow(form, 4, 2, "7");
  FillRow(form, 11, 20, "064");
  EXPECT_TRUE(form.Save());
  EXPECT_EQ(Rows(form), "2:7 20:64 0: 0: 0: 0: 0: 0: 0: 0: 0: 0: ");
  EXPECT_EQ(form.ColumnsWidth(), 72);
  EXPECT_EQ(Saved(), CompositionOf({{2, 7}, {20, 64}}));
}

TEST_F(LayoutFormTest, OfFifteenStoredColumnsTheLastThreeAreZero) {
  FileBytes bytes = files.Contents(kPath);
  std::fill(bytes.begin() + 248, bytes.end(), std::byte{1});
  files.SetContents(kPath, bytes);
  LayoutForm form(layout);
  for (uint32_t row = 0; row < kMaxColumns; ++row) FillRow(form, row, row + 1, "999");
  EXPECT_TRUE(form.Save());
  const FileBytes saved = files.Contents(kPath);
  EXPECT_EQ(Hex(ByteView(saved).subspan(248 + 11 * 8, 8)), "0C 00 00 00 E7 03 00 00");
  EXPECT_TRUE(SameBytes(FileBytes(24), ByteView(saved).subspan(248 + 12 * 8)));
}

TEST_F(LayoutFormTest, AFieldMayStandTwice) {
  LayoutForm form(layout);
  FillRow(form, 1, 3, "4");
  EXPECT_TRUE(form.Save());
  EXPECT_EQ(Saved(), CompositionOf({{3, 30}, {3, 4}, {7, 5}, {12, 12}}));
}

TEST_F(LayoutFormTest, ASaveWithoutAFileIsToldAndShowsTheRowsAllTheSame) {
  LayoutForm form(layout);
  files.Remove(kPath);
  form.Choose(0, 0);
  EXPECT_FALSE(form.Save());
  EXPECT_EQ(Rows(form), "5:30 7:5 12:12 0: 0: 0: 0: 0: 0: 0: 0: 0: ");
  EXPECT_FALSE(files.Exists(kPath));
}

TEST_F(LayoutFormTest, ARowWithoutAFieldEndsWhatIsShown) {
  EXPECT_TRUE(layout.SaveComposition(CompositionOf({{3, 30}, {0, 9}, {5, 30}})));
  EXPECT_EQ(Rows(LayoutForm(layout)), "3:30 0: 0: 0: 0: 0: 0: 0: 0: 0: 0: 0: ");
}

TEST_F(LayoutFormTest, AFieldThatThereIsNotEndsWhatIsShown) {
  EXPECT_TRUE(layout.SaveComposition(CompositionOf({{20, 30}, {21, 9}, {5, 30}})));
  EXPECT_EQ(Rows(LayoutForm(layout)), "20:30 0: 0: 0: 0: 0: 0: 0: 0: 0: 0: 0: ");
}

TEST_F(LayoutFormTest, AWidthThatNoRowTakesIsHeldAtThreeDigits) {
  EXPECT_TRUE(layout.SaveComposition(CompositionOf({{3, 0x7FFFFFFF}, {5, 0xFFFFFFFF}, {7, 1000}})));
  const LayoutForm form(layout);
  EXPECT_EQ(Rows(form), "3:999 5:999 7:999 0: 0: 0: 0: 0: 0: 0: 0: 0: ");
  EXPECT_EQ(form.ColumnsWidth(), 2999);
}

}  // namespace
}  // namespace carnetel
