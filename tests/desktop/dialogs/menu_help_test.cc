// F1 over open menus of a real menu bar, with a submenu, as a window has them.
#include "desktop/controls/menu_help.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLineEdit>
#include <QMainWindow>
#include <QMenuBar>
#include <QProxyStyle>
#include <QSignalSpy>
#include <QTest>

namespace carnetel::desktop {
namespace {

class MenuHelpTest : public testing::Test {
 protected:
  void SetUp() override {
    file_ = window_.menuBar()->addMenu(QStringLiteral("&Fichier"));
    Add(file_, 200);
    Add(file_, 203)->setEnabled(false);
    file_->addAction(QStringLiteral("sans numéro"));
    recent_ = file_->addMenu(QStringLiteral("Récents"));
    Add(recent_, 225);
    for (QMenu* menu : {file_, recent_}) help_.Watch(menu);
    window_.setCentralWidget(edit_ = new QLineEdit);
    window_.show();
    window_.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window_));
    edit_->setFocus();
  }
  QAction* Add(QMenu* menu, int command) {
    QAction* action = menu->addAction(QString::number(command));
    action->setObjectName(QString::number(command));
    QObject::connect(action, &QAction::triggered, action, [this, command] { run_ += command; });
    return action;
  }
  // As the window system delivers it: to whatever takes the keyboard now.
  void Press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
    QTest::keyClick(window_.windowHandle(), key, modifiers);
  }
  void OpenFileMenu() {
    Press(Qt::Key_F, Qt::AltModifier);
    ASSERT_EQ(QApplication::activePopupWidget(), file_);
  }
  void ExpectAsked(int command) {
    ASSERT_EQ(wanted_.size(), 1);
    EXPECT_EQ(wanted_[0][0].toInt(), command);
    EXPECT_TRUE(run_.isEmpty());
    EXPECT_EQ(QApplication::activePopupWidget(), nullptr);
    EXPECT_TRUE(edit_->hasFocus());
  }

  QMainWindow window_;
  QMenu* file_ = nullptr;
  QMenu* recent_ = nullptr;
  QLineEdit* edit_ = nullptr;
  MenuHelp help_;
  QSignalSpy wanted_{&help_, &MenuHelp::helpWanted};
  QList<int> run_;
};

TEST_F(MenuHelpTest, AsksAboutTheItemInsteadOfRunningIt) {
  OpenFileMenu();
  file_->setActiveAction(file_->actions()[0]);
  Press(Qt::Key_F1);
  ExpectAsked(200);
  // The keyboard is the window's again.
  Press(Qt::Key_X);
  EXPECT_EQ(edit_->text(), QStringLiteral("x"));
}

// Some desktop styles let the bar stand on an item that is off.
class GreyItemStyle : public QProxyStyle {
 public:
  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* more) const override {
    if (hint == SH_Menu_AllowActiveAndDisabled) return 1;
    return QProxyStyle::styleHint(hint, option, widget, more);
  }
};

TEST_F(MenuHelpTest, AsksAboutAGreyItem) {
  GreyItemStyle style;
  file_->setStyle(&style);
  OpenFileMenu();
  file_->setActiveAction(file_->actions()[1]);
  Press(Qt::Key_F1);
  ExpectAsked(203);
}

TEST_F(MenuHelpTest, AsksAboutNothingInParticular) {
  OpenFileMenu();
  file_->setActiveAction(nullptr);
  Press(Qt::Key_F1);
  ExpectAsked(0);
}

TEST_F(MenuHelpTest, AnItemWithoutNumberIsNothingInParticular) {
  OpenFileMenu();
  file_->setActiveAction(file_->actions()[2]);
  Press(Qt::Key_F1);
  ExpectAsked(0);
}

TEST_F(MenuHelpTest, ClosesTheWholeChain) {
  OpenFileMenu();
  file_->setActiveAction(recent_->menuAction());
  Press(Qt::Key_Return);
  ASSERT_EQ(QApplication::activePopupWidget(), recent_);
  recent_->setActiveAction(recent_->actions()[0]);
  Press(Qt::Key_F1);
  ExpectAsked(225);
  EXPECT_FALSE(file_->isVisible());
}

TEST_F(MenuHelpTest, OpensTheMenuAfterwardsAsEver) {
  OpenFileMenu();
  Press(Qt::Key_F1);
  OpenFileMenu();
  file_->setActiveAction(file_->actions()[0]);
  Press(Qt::Key_Return);
  EXPECT_EQ(run_, QList<int>{200});
  EXPECT_EQ(wanted_.size(), 1);
}

TEST_F(MenuHelpTest, OtherKeysAreTheMenus) {
  OpenFileMenu();
  Press(Qt::Key_F1, Qt::ShiftModifier);
  Press(Qt::Key_F2);
  EXPECT_TRUE(wanted_.isEmpty());
  EXPECT_EQ(QApplication::activePopupWidget(), file_);
  Press(Qt::Key_Escape);
}

}  // namespace
}  // namespace carnetel::desktop
