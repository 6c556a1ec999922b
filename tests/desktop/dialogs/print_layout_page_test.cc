// "Définir liste", the second page of the print form, as its user meets it.
#include "tests/desktop/dialogs/print_dialog_fixture.h"

namespace carnetel::desktop {
namespace {

class PrintLayout : public PrintDialogTest {
 protected:
  void SetUp() override {
    StartWithCards(1);
    Open();
    ShowLayoutPage();
  }
  // The rows that have something, "1 STE1 30".
  QStringList Columns() {
    QStringList columns;
    for (int row = 1; row <= 12; ++row) {
      const QString field = TextOf(*dialog, QStringLiteral("field_%1").arg(row));
      const QString width = TextOf(*dialog, QStringLiteral("width_%1").arg(row));
      if (field.isEmpty() && width.isEmpty()) continue;
      columns += QStringLiteral("%1 %2 %3").arg(row).arg(field, width);
    }
    return columns;
  }
  Composition Saved() {
    return LayoutFile(files, DefaultPath() + ".LST").LoadComposition(CompositionCopy::kUser);
  }
  const QStringList standard = {"1 STE1 30", "2 ADR1 30", "3 CP 5", "4 FAX 12"};
};

TEST_F(PrintLayout, ShowsTheCompositionAndItsWidth) {
  EXPECT_EQ(Columns(), standard);
  EXPECT_EQ(Label("total"), "Largeur de la liste : 80 colonnes");
  const QStringList fields = desktop::Rows(*dialog, "field_12");
  EXPECT_EQ(fields.size(), 21);
  EXPECT_EQ(fields.first(), "");
  EXPECT_EQ(fields[7], "CP");
  EXPECT_EQ(fields.last(), "NOTES");
  ExpectNames(*dialog);
}

TEST_F(PrintLayout, TheTotalFollowsEachList) {
  Pick(*dialog, "field_7", 2);
  EXPECT_EQ(Label("total"), "Largeur de la liste : 81 colonnes");
  TypeInto(*dialog, "width_7", "9");
  EXPECT_EQ(Label("total"), "Largeur de la liste : 90 colonnes");
  Pick(*dialog, "field_1", 0);
  EXPECT_EQ(Label("total"), "Largeur de la liste : 59 colonnes");
}

TEST_F(PrintLayout, AWidthTakesThreeDigits) {
  int beeps = 0;
  Named<FilteredEdit>(*dialog, "width_4")->SetBeeper([&beeps] { ++beeps; });
  TypeInto(*dialog, "width_4", "1a234");
  EXPECT_EQ(TextOf(*dialog, "width_4"), "123");
  EXPECT_EQ(beeps, 2);
  EXPECT_EQ(Label("total"), "Largeur de la liste : 191 colonnes");
  TypeInto(*dialog, "width_4", "");
  EXPECT_EQ(Label("total"), "Largeur de la liste : 68 colonnes");
}

TEST_F(PrintLayout, SauverClosesTheGapsAndKeepsThem) {
  Pick(*dialog, "field_1", 0);
  TypeInto(*dialog, "width_3", "0");
  Pick(*dialog, "field_12", 20);
  TypeInto(*dialog, "width_12", "128");
  TypeInto(*dialog, "width_8", "5");
  PressMnemonicOf(Qt::Key_S, "save");
  EXPECT_EQ(Columns(), (QStringList{"1 ADR1 30", "2 FAX 12", "3 NOTES 128"}));
  EXPECT_EQ(Label("total"), "Largeur de la liste : 172 colonnes");
  const Composition saved = Saved();
  EXPECT_EQ(saved[0], (ColumnSpec{5, 30}));
  EXPECT_EQ(saved[1], (ColumnSpec{12, 12}));
  EXPECT_EQ(saved[2], (ColumnSpec{20, 128}));
  EXPECT_EQ(saved[3], ColumnSpec{});
  EXPECT_EQ(PreviewLines(0).first().trimmed().left(4), "ADR1");
}

TEST_F(PrintLayout, DefautShowsWithoutSaving) {
  Pick(*dialog, "field_1", 2);
  PressNamed(*dialog, "save");
  PressMnemonicOf(Qt::Key_A, "default");
  EXPECT_EQ(Columns(), standard);
  EXPECT_EQ(Saved()[0], (ColumnSpec{2, 30}));
  EXPECT_EQ(PreviewLines(0).first().trimmed().left(3), "NOM");
}

TEST_F(PrintLayout, EnterSavesAndDoesNotPrint) {
  TypeInto(*dialog, "width_1", "12");
  PressKey(Qt::Key_Return);
  EXPECT_EQ(Saved()[0].width, 12u);
  EXPECT_TRUE(dialogs.printers.jobs.empty());
  PressKey(Qt::Key_M, Qt::AltModifier);
  Spin("lines")->setFocus();
  PressKey(Qt::Key_Return);
  EXPECT_EQ(dialogs.printers.jobs.size(), 1u);
}

TEST_F(PrintLayout, TabGoesDownTheRowsOfBothColumns) {
  Named(*dialog, "field_1")->setFocus();
  QStringList expected;
  for (int row = 1; row <= 12; ++row) {
    expected << QStringLiteral("field_%1").arg(row) << QStringLiteral("width_%1").arg(row);
  }
  EXPECT_EQ(TabNames().first(24), expected);
}

TEST_F(PrintLayout, WhatWasNotSavedIsLost) {
  TypeInto(*dialog, "width_1", "12");
  PressNamed(*dialog, "2");
  EXPECT_EQ(Saved()[0].width, 30u);
}

}  // namespace
}  // namespace carnetel::desktop
