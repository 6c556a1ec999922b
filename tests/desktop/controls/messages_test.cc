#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include "desktop/controls/progress_window.h"
#include "desktop/controls/wait_cursor.h"
#include "desktop/controls/window_messages.h"
#include "desktop/controls/window_progress.h"
#include "tests/desktop/controls/painted_image.h"

namespace carnetel::desktop {
namespace {

QStringList Captions(const QMessageBox& box) {
  QStringList captions;
  for (const QAbstractButton* button : box.buttons()) captions += button->text();
  captions.sort();
  return captions;
}

struct Look {
  MessageStyle style;
  QStringList captions;
  QMessageBox::Icon icon;
  QString default_caption;
};

TEST(WindowMessages, BoxesLookAsTheirStyleSays) {
  const Look looks[] = {
      {MessageStyle::kError, {"OK"}, QMessageBox::Critical, "OK"},
      {MessageStyle::kInformation, {"OK"}, QMessageBox::Information, "OK"},
      {MessageStyle::kOkCancel, {"Annuler", "OK"}, QMessageBox::Warning, "OK"},
      {MessageStyle::kYesNoDefaultNo, {"Non", "Oui"}, QMessageBox::Question, "Non"},
      {MessageStyle::kYesNoCancel, {"Annuler", "Non", "Oui"}, QMessageBox::Question, "Oui"},
  };
  for (const Look& look : looks) {
    QMessageBox box;
    WindowMessages::Prepare(box, look.style, 80, "<b>Dupont</b> & fils");
    EXPECT_EQ(Captions(box), look.captions);
    EXPECT_EQ(box.icon(), look.icon);
    EXPECT_EQ(box.defaultButton()->text(), look.default_caption);
    EXPECT_EQ(box.windowTitle(), QStringLiteral("Attention"));
    EXPECT_EQ(box.text(), QStringLiteral("<b>Dupont</b> & fils"));
    EXPECT_EQ(box.textFormat(), Qt::PlainText);
    EXPECT_EQ(box.windowModality(), Qt::ApplicationModal);
  }
}

TEST(WindowMessages, AScriptAnswersInOrderAndRemembers) {
  MessageScript script{{MessageButton::kYes}, {}};
  WindowMessages messages(&script);
  EXPECT_EQ(messages.ShowMessage(MessageStyle::kYesNoDefaultNo, 80, 178), MessageButton::kYes);
  EXPECT_EQ(messages.ShowMessage(MessageStyle::kYesNoDefaultNo, 80, 178), MessageButton::kNo);
  EXPECT_EQ(messages.ShowMessage(MessageStyle::kOkCancel, 80, 41, "Nord"), MessageButton::kOk);
  ASSERT_EQ(script.shown.size(), 3u);
  EXPECT_EQ(script.shown[0].text, "Voulez vous quitter sans sauver les dernières saisies ?");
  EXPECT_EQ(script.shown[2].text, "Charger \"Nord\" en mémoire ?");
  EXPECT_EQ(script.shown[2].title_id, 80);
}

// Presses `key` in the box that Show is about to open.
MessageButton AnswerByKey(MessageStyle style, Qt::Key key) {
  QTimer::singleShot(0, [key] { QTest::keyClick(QApplication::activeModalWidget(), key); });
  return WindowMessages().Show(style, 80, "?");
}

TEST(WindowMessages, EscapeAnswersTheCautiousWay) {
  EXPECT_EQ(AnswerByKey(MessageStyle::kYesNoDefaultNo, Qt::Key_Escape), MessageButton::kNo);
  EXPECT_EQ(AnswerByKey(MessageStyle::kYesNoCancel, Qt::Key_Escape), MessageButton::kCancel);
  EXPECT_EQ(AnswerByKey(MessageStyle::kOkCancel, Qt::Key_Escape), MessageButton::kCancel);
  EXPECT_EQ(AnswerByKey(MessageStyle::kError, Qt::Key_Escape), MessageButton::kOk);
}

TEST(WindowMessages, AButtonAnswersAndTheWaitCursorPauses) {
  const WaitCursor busy;
  bool arrow = false;
  QTimer::singleShot(0, [&arrow] {
    arrow = QApplication::overrideCursor() == nullptr;
    QApplication::activeModalWidget()->findChild<QPushButton*>(QStringLiteral("6"))->click();
  });
  EXPECT_EQ(WindowMessages().Show(MessageStyle::kYesNoDefaultNo, 0, "?"), MessageButton::kYes);
  EXPECT_TRUE(arrow);
  ASSERT_NE(QApplication::overrideCursor(), nullptr);
  EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
}

TEST(WaitCursor, IsOnForItsLife) {
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
  {
    const WaitCursor outer;
    const WaitCursor inner;
    EXPECT_NE(QApplication::overrideCursor(), nullptr);
  }
  EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

class WindowProgressTest : public testing::Test {
 protected:
  QPushButton* Abandon() { return progress_.Box()->findChild<QPushButton*>(QStringLiteral("2")); }

  BusyState busy_;
  WindowProgress progress_{busy_};
};

TEST_F(WindowProgressTest, ShowsTitleLabelAndValue) {
  progress_.Open(ProgressForm::kTransfer, 3);
  ASSERT_NE(progress_.Box(), nullptr);
  EXPECT_EQ(progress_.Box()->objectName(), QStringLiteral("104"));
  EXPECT_EQ(progress_.Box()->windowTitle(), QStringLiteral("Transfert de 3 fiche(s) en cours"));
  EXPECT_EQ(QApplication::activeModalWidget(), progress_.Box());
  EXPECT_FALSE(progress_.Step());
  QStringList texts;
  for (const QLabel* label : progress_.Box()->findChildren<QLabel*>()) texts += label->text();
  EXPECT_TRUE(texts.contains(QStringLiteral("Nombre de fiches transférées :")));
  EXPECT_TRUE(texts.contains(QStringLiteral("1")));
  progress_.Close();
  EXPECT_EQ(progress_.Box(), nullptr);
}

TEST_F(WindowProgressTest, AbandonIsReadAtTheNextStepAndTheBoxStays) {
  progress_.Open(ProgressForm::kDelete, 10);
  ASSERT_NE(Abandon(), nullptr);
  EXPECT_EQ(Abandon()->text(), QStringLiteral("Abandon"));
  EXPECT_FALSE(progress_.Step("DUPONT"));
  Abandon()->click();
  EXPECT_TRUE(progress_.Step("DURAND"));
  EXPECT_TRUE(progress_.Box()->isVisible());
  progress_.Close();
  progress_.Open(ProgressForm::kDelete, 10);
  EXPECT_FALSE(progress_.Step("DUPONT"));
  progress_.Close();
}

TEST_F(WindowProgressTest, BuildingAnIndexCannotBeAborted) {
  progress_.Open(ProgressForm::kBuildIndex, 10);
  EXPECT_EQ(Abandon(), nullptr);
  QTest::keyClick(progress_.Box(), Qt::Key_Escape);
  progress_.Box()->close();
  EXPECT_FALSE(progress_.Step());
  EXPECT_TRUE(progress_.Box()->isVisible());
  progress_.Close();
}

TEST_F(WindowProgressTest, EscapeAndTheCrossAskToStop) {
  progress_.Open(ProgressForm::kSelection, 10);
  QTest::keyClick(progress_.Box(), Qt::Key_Escape);
  EXPECT_TRUE(progress_.Step("0"));
  EXPECT_TRUE(progress_.Box()->isVisible());
  progress_.Close();
}

TEST_F(WindowProgressTest, StepsDispatchWaitingEvents) {
  progress_.Open(ProgressForm::kTransfer, 2);
  bool delivered = false;
  QMetaObject::invokeMethod(
      &busy_, [&delivered] { delivered = true; }, Qt::QueuedConnection);
  EXPECT_FALSE(progress_.Step());
  EXPECT_TRUE(delivered);
  progress_.Close();
}

TEST_F(WindowProgressTest, IsBusyFromOpenToClose) {
  QSignalSpy idle(&busy_, &BusyState::becameIdle);
  EXPECT_FALSE(busy_.IsBusy());
  progress_.Open(ProgressForm::kTransfer, 1);
  EXPECT_TRUE(busy_.IsBusy());
  { const BusyScope nested(busy_); }
  EXPECT_TRUE(busy_.IsBusy());
  progress_.Close();
  EXPECT_FALSE(busy_.IsBusy());
  EXPECT_EQ(idle.count(), 1);
  progress_.Close();
  EXPECT_EQ(idle.count(), 1);
}

QImage PaintGauge(const ProgressCounter& counter) {
  ProgressGauge gauge(counter);
  gauge.resize(100, 22);
  return PaintedImage(gauge);
}

TEST(ProgressGauge, IsBlueThenGrey) {
  ProgressCounter counter(ProgressForm::kTransfer, 4);
  for (int i = 0; i < 3; ++i) counter.Step({});
  const QImage image = PaintGauge(counter);
  EXPECT_EQ(image.pixel(1, 1), qRgb(0, 0, 255));
  EXPECT_EQ(image.pixel(74, 1), qRgb(0, 0, 255));
  EXPECT_EQ(image.pixel(75, 1), qRgb(192, 192, 192));
  EXPECT_EQ(image.pixel(99, 20), qRgb(192, 192, 192));
}

// Number of pixels of one colour.
int Count(const QImage& image, QRgb colour) {
  int count = 0;
  for (int y = 0; y < image.height(); ++y) {
    for (int x = 0; x < image.width(); ++x) count += image.pixel(x, y) == colour ? 1 : 0;
  }
  return count;
}

TEST(ProgressGauge, ItsTextChangesColourAtTheEdge) {
  ProgressCounter counter(ProgressForm::kTransfer, 2);
  counter.Step({});
  const QImage image = PaintGauge(counter);
  const QImage left = image.copy(0, 0, 50, 22);
  const QImage right = image.copy(50, 0, 50, 22);
  EXPECT_GT(Count(left, qRgb(255, 255, 255)), 0);
  EXPECT_EQ(Count(left, qRgb(0, 0, 0)), 0);
  EXPECT_GT(Count(right, qRgb(0, 0, 0)), 0);
  EXPECT_EQ(Count(right, qRgb(255, 255, 255)), 0);
}

TEST(ProgressGauge, ShowsNothingWithoutATotal) {
  ProgressCounter counter(ProgressForm::kTransfer, 0);
  counter.Step({});
  const QImage image = PaintGauge(counter);
  EXPECT_EQ(Count(image, image.pixel(0, 0)), 100 * 22);
}

TEST(ProgressGauge, StopsAtAHundred) {
  ProgressCounter counter(ProgressForm::kTransfer, 1);
  counter.Step({});
  counter.Step({});
  const QImage image = PaintGauge(counter);
  EXPECT_EQ(image.pixel(99, 20), qRgb(0, 0, 255));
}

}  // namespace
}  // namespace carnetel::desktop
