// The marked cards one after the other beside the main window.
#include <QApplication>
#include <QPushButton>

#include "tests/desktop/window/window_fixture.h"

namespace carnetel::desktop {
namespace {

class Consulting : public WindowTest {
 protected:
  // Marks BETA, CHARLIE and MARTIN and opens the window on them.
  void Open() {
    Build({CardWith({{kSte1, "ALPHA"}}),
           CardWith({{kSte1, "BETA"}, {kNom, "Durand"}, {kRef1, "R1"}, {kNotes, "note"}}),
           CardWith({{kSte1, "CHARLIE"}}), CardWith({{kSte1, "MARTIN"}})});
    Start();
    for (const int row : {1, 2, 3}) ClickRow(row, Qt::ControlModifier);
    ClickRow(0);
    Choose(219);
    ASSERT_NE(Box(), nullptr);
    ASSERT_TRUE(QTest::qWaitForWindowActive(Box()));
  }
  Consultation* Box() { return window->findChild<Consultation*>(QStringLiteral("126")); }
  QPushButton* Step(int id) { return Box()->findChild<QPushButton*>(QString::number(id)); }
  QString Shown(int id) { return Box()->panel().FieldText(id); }
};

TEST_F(Consulting, ShowsAllOfTheFirstMarkedCardReadOnly) {
  Open();
  EXPECT_EQ(Box()->windowTitle(), "Consultation");
  EXPECT_EQ(Shown(150), "BETA");
  EXPECT_EQ(Shown(172), "Durand");
  EXPECT_EQ(Shown(174), "note");
  EXPECT_EQ(Box()->panel().References().value(0), "R1");
  for (const int id : {150, 158, 162, 164, 170, 172, 174}) {
    QWidget* control = Box()->panel().Control(id);
    ASSERT_NE(control, nullptr) << id;
    EXPECT_TRUE(control->isVisible()) << id;
    const auto* edit = qobject_cast<QLineEdit*>(control);
    EXPECT_TRUE(edit == nullptr || edit->isReadOnly()) << id;
  }
  EXPECT_FALSE(Box()->panel().Control(174)->isEnabled());
}

TEST_F(Consulting, StepsStopAtTheEnds) {
  Open();
  EXPECT_TRUE(Step(216)->hasFocus());
  Key(Qt::Key_Return);
  EXPECT_EQ(Shown(150), "CHARLIE");
  EXPECT_EQ(Text(150), "CHARLIE");
  EXPECT_EQ(List()->CurrentRow(), 2);
  Key(Qt::Key_Return);
  Key(Qt::Key_Return);
  EXPECT_EQ(Shown(150), "MARTIN");
  Key(Qt::Key_Tab);
  EXPECT_TRUE(Step(217)->hasFocus());
  for (int i = 0; i < 4; ++i) Key(Qt::Key_Return);
  EXPECT_EQ(Shown(150), "BETA");
  Key(Qt::Key_Tab);
  EXPECT_TRUE(Step(216)->hasFocus());
  QTest::mouseClick(Step(216), Qt::LeftButton);
  EXPECT_EQ(Shown(150), "CHARLIE");
}

TEST_F(Consulting, EscapeClosesAndTheListHasTheFocus) {
  Open();
  Key(Qt::Key_Escape);
  ASSERT_TRUE(QTest::qWaitFor([this] { return Box() == nullptr; }));
  Reactivate();
  EXPECT_EQ(Focus(), 195);
  Choose(219);
  EXPECT_EQ(Shown(150), "BETA");
}

TEST_F(Consulting, OpensOnceAndFollowsTheList) {
  Open();
  Consultation* first = Box();
  Choose(219);
  EXPECT_EQ(window->findChildren<Consultation*>(), QList<Consultation*>{first});
  ClickRow(0);
  EXPECT_EQ(Shown(150), "ALPHA");
}

TEST_F(Consulting, AStepAsksBeforeItLeavesAChangedForm) {
  Open();
  Reactivate();
  // Both windows have a control of that number.
  auto* phone = window->centralWidget()->findChild<QLineEdit*>(QStringLiteral("158"));
  ASSERT_NE(phone, nullptr);
  phone->setFocus(Qt::MouseFocusReason);
  Type("01");
  ASSERT_EQ(phone->text(), "01");
  Answer(MessageButton::kNo);
  Answer(MessageButton::kYes);
  QTest::mouseClick(Step(216), Qt::LeftButton);
  EXPECT_EQ(Asked().size(), 1u);
  EXPECT_EQ(phone->text(), "01");
  EXPECT_EQ(List()->CurrentRow(), 1);
  QTest::mouseClick(Step(216), Qt::LeftButton);
  EXPECT_EQ(Asked().size(), 1u);
  EXPECT_EQ(Shown(150), "CHARLIE");
  EXPECT_EQ(phone->text(), "");
  EXPECT_EQ(Saved()[1].Field(kTel1), "");
}

TEST_F(Consulting, EndsWithTheWindow) {
  Open();
  Choose(206);
  EXPECT_EQ(ended, 1);
  Settle();
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_EQ(Box(), nullptr);
}

}  // namespace
}  // namespace carnetel::desktop
