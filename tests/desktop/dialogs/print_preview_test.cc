// The preview beside the print form: which pages it shows, what they follow and what they cost.
#include <QImage>

#include "tests/desktop/dialogs/print_dialog_fixture.h"

namespace carnetel::desktop {
namespace {

class PrintPreviewTest : public PrintDialogTest {
 protected:
  PaperView* Paper() { return dialog->findChild<PaperView*>(); }
  QString Number() {
    QCoreApplication::processEvents();
    return Label("page_number");
  }
  // Dark dots on the sheet.
  int Ink() {
    QCoreApplication::processEvents();
    const QRect sheet = Paper()->PaperRect().toRect().adjusted(2, 2, -2, -2);
    const QImage image = Paper()->grab().toImage().copy(sheet);
    int dots = 0;
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) dots += qGray(image.pixel(x, y)) < 200 ? 1 : 0;
    }
    return dots;
  }
};

TEST_F(PrintPreviewTest, ShowsTheLinesOfTheFirstPage) {
  StartWithCards(2);
  Open();
  EXPECT_EQ(Number(), "Page 1 sur 1");
  const QStringList lines = PreviewLines(0);
  ASSERT_EQ(lines.size(), 3);
  EXPECT_EQ(lines[0].left(41).trimmed(), "STE1                           ADR1");
  EXPECT_EQ(lines[1].left(53).trimmed(), "NOM 001                        Allée des Érables");
  EXPECT_EQ(lines[2].indexOf("69001"), lines[0].indexOf("CP"));
  EXPECT_GT(Ink(), 50);
  EXPECT_FALSE(Button("previous_page")->isEnabled());
  EXPECT_FALSE(Button("next_page")->isEnabled());
}

TEST_F(PrintPreviewTest, TurnsThePagesByMouseAndKeys) {
  StartWithCards(150);
  Open();
  EXPECT_EQ(Number(), "Page 1 sur 3");
  PressNamed(*dialog, "next_page");
  EXPECT_EQ(Number(), "Page 2 sur 3");
  EXPECT_TRUE(Button("previous_page")->isEnabled());
  PressMnemonicOf(Qt::Key_V, "next_page");
  EXPECT_EQ(Number(), "Page 3 sur 3");
  EXPECT_FALSE(Button("next_page")->isEnabled());
  PressMnemonicOf(Qt::Key_P, "previous_page");
  EXPECT_EQ(Number(), "Page 2 sur 3");
  Button("previous_page")->setFocus();
  PressKey(Qt::Key_Return);
  EXPECT_EQ(Number(), "Page 1 sur 3");
  EXPECT_EQ(FocusName(), "next_page");
  EXPECT_TRUE(dialogs.printers.jobs.empty());
}

TEST_F(PrintPreviewTest, KeepsTheFirstPagesAndReadsNoMore) {
  StartWithCards(150);
  SetProfile("Lines", "10");
  Open();
  EXPECT_EQ(Number(), "Page 1");
  EXPECT_TRUE(Preview().HasMore());
  EXPECT_EQ(Preview().pages().size(), PreviewPages::kMostPages);
  for (size_t page = 0; page < PreviewPages::kMostPages; ++page) {
    // Six cards a page, under the line of the names.
    EXPECT_EQ(PreviewLines(page).size(), 1 + 6) << page;
    EXPECT_EQ(Number(), QStringLiteral("Page %1").arg(page + 1));
    if (page + 1 < PreviewPages::kMostPages) PressNamed(*dialog, "next_page");
  }
  EXPECT_FALSE(Button("next_page")->isEnabled());
}

TEST_F(PrintPreviewTest, FollowsEachSetting) {
  StartWithCards(150);
  Open();
  PressNamed(*dialog, "next_page");
  TypeSpin("lines", "100");
  PressKey(Qt::Key_Tab);
  EXPECT_EQ(Number(), "Page 2 sur 2");
  PressChoice("current");
  EXPECT_EQ(Number(), "Page 1 sur 1");
  PressChoice("cards");
  EXPECT_EQ(PreviewLines(0).size(), 24);
  PressChoice("selection");
  EXPECT_EQ(Number(), "Aucune fiche");
  EXPECT_EQ(Ink(), 0);
  EXPECT_EQ(Contents(home + "carn.prn"), "");
  EXPECT_EQ(Profile("Mode"), "(missing)");
}

TEST_F(PrintPreviewTest, CardsOnShortPagesLeaveTheFirstOneBlank) {
  StartWithCards(2);
  SetProfile("Mode", "1");
  SetProfile("Lines", "10");
  SetProfile("TopMargin", "0");
  Open();
  EXPECT_EQ(Number(), "Page 1 sur 3");
  EXPECT_EQ(Ink(), 0);
  PressNamed(*dialog, "next_page");
  EXPECT_GT(Ink(), 20);
}

TEST_F(PrintPreviewTest, TheSheetHasTheShapeOfThePaper) {
  StartWithCards(2);
  Open();
  const QRectF upright = Paper()->PaperRect();
  EXPECT_NEAR(upright.height() / upright.width(), 842.0 / 595.0, 0.02);
  EXPECT_TRUE(QRectF(Paper()->rect()).contains(upright));
  layout.setOrientation(QPageLayout::Landscape);
  PressNamed(*dialog, "configure");
  (void)Number();
  const QRectF across = Paper()->PaperRect();
  EXPECT_NEAR(across.width() / across.height(), 842.0 / 595.0, 0.02);
}

TEST_F(PrintPreviewTest, AnUnfilledMarginOfTheSheetStaysWhite) {
  StartWithCards(150);
  layout.setMargins(QMarginsF(100, 100, 100, 100));
  Open();
  QCoreApplication::processEvents();
  const QRect sheet = Paper()->PaperRect().toRect();
  const QImage image = Paper()->grab().toImage();
  const int margin = sheet.width() * 100 / 595 - 2;
  for (int x = sheet.left() + 2; x < sheet.left() + margin; ++x) {
    for (int y = sheet.top() + 2; y < sheet.bottom() - 2; ++y) {
      ASSERT_EQ(image.pixelColor(x, y), QColor(Qt::white)) << x << " " << y;
    }
  }
}

}  // namespace
}  // namespace carnetel::desktop
