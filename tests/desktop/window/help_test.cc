// The help as it is asked for in the window, in its menus and in its dialogs.
#include <QMenuBar>
#include <QPushButton>

#include "tests/desktop/window/dialog_user.h"

namespace carnetel::desktop {
namespace {

class WindowHelp : public DialogWindowTest {
 protected:
  [[nodiscard]] HelpWindow* Help() { return window->dialogs().help_window(); }
  // The page of the help window, 0 without one.
  [[nodiscard]] int Topic() { return Help() == nullptr ? 0 : Help()->topic(); }
  // Asks by F1, tells the page and closes the help.
  [[nodiscard]] int TopicOfKey() {
    QWidget* asked_in = QApplication::activeWindow();
    Key(Qt::Key_F1);
    const int topic = Topic();
    window->dialogs().CloseHelp();
    asked_in->activateWindow();
    EXPECT_TRUE(QTest::qWaitFor([&] { return QApplication::activeWindow() == asked_in; }));
    return topic;
  }
  // F1 over an item of an open menu.
  [[nodiscard]] int TopicOfItem(int command) {
    for (QAction* title : window->menuBar()->actions()) {
      for (QAction* action : title->menu()->actions()) {
        if (action->objectName() != QString::number(command)) continue;
        window->menuBar()->setActiveAction(title);
        title->menu()->setActiveAction(action);
        QTest::keyClick(title->menu(), Qt::Key_F1);
        EXPECT_EQ(QApplication::activePopupWidget(), nullptr) << command;
        const int topic = Topic();
        window->dialogs().CloseHelp();
        Reactivate();
        return topic;
      }
    }
    return 0;
  }
};

// ---- in the window ----

TEST_F(WindowHelp, FollowsTheFocus) {
  BuildCompanies(3);
  Start();
  EXPECT_EQ(TopicOfKey(), 48);
  EXPECT_EQ(Focus(), 195);
  const std::pair<int, int> topics[] = {{655, 48},  {184, 48},  {1000, 54}, {1001, 53}, {1002, 63},
                                        {1003, 56}, {1012, 48}, {1008, 48}, {1007, 52}, {150, 66},
                                        {156, 66},  {164, 66},  {172, 66}};
  for (const auto& [control, topic] : topics) {
    Control(control)->setFocus(Qt::TabFocusReason);
    Settle();
    EXPECT_EQ(TopicOfKey(), topic) << control;
    EXPECT_EQ(Focus(), control);
  }
  EXPECT_EQ(Asked(), Texts{});
}

TEST_F(WindowHelp, FollowsWhatTheFormIsUsedFor) {
  BuildCompanies(3);
  Start();
  Press(1008);
  EXPECT_EQ(TopicOfKey(), 52);
  Type("NEUF");
  EXPECT_EQ(TopicOfKey(), 52);
  Key(Qt::Key_Return);
  // Entry goes on with the next new card.
  EXPECT_EQ(TopicOfKey(), 52);
  Press(1008);
  TypeInto(156, "Lyon");
  EXPECT_EQ(TopicOfKey(), 66);
  EXPECT_EQ(Text(156), "Lyon");
  EXPECT_EQ(Focus(), 156);
  EXPECT_EQ(Asked(), Texts{});
}

TEST_F(WindowHelp, ComesFromMenuAndToolbarToo) {
  BuildCompanies(3);
  Start();
  Control(1001)->setFocus(Qt::TabFocusReason);
  Choose(214);
  EXPECT_EQ(Topic(), 53);
  Reactivate();
  // The button takes the focus that it is asked about.
  Press(1013);
  EXPECT_EQ(Topic(), 48);
  // A menu that was opened by keys has given the focus back by then.
  Reactivate();
  Control(156)->setFocus(Qt::TabFocusReason);
  ChooseByKeys(Qt::Key_A, Qt::Key_A);
  EXPECT_EQ(Topic(), 66);
}

TEST_F(WindowHelp, TellsOfAMenuItemInsteadOfRunningIt) {
  BuildCompanies(3);
  SetProfile("File2", "&2 " + home + "AUTRE.DAN");
  Start();
  // With a mark, and in a field, no item is grey.
  Key(Qt::Key_Space);
  Control(156)->setFocus(Qt::TabFocusReason);
  const std::pair<int, int> topics[] = {
      {200, 49}, {201, 50}, {202, 58}, {203, 59}, {204, 51}, {205, 54}, {206, 48}, {207, 52},
      {208, 52}, {209, 52}, {210, 52}, {211, 53}, {212, 56}, {213, 56}, {214, 48}, {215, 53},
      {216, 63}, {217, 72}, {218, 56}, {219, 53}, {225, 48}, {226, 48}, {229, 48}, {230, 75}};
  for (const auto& [command, topic] : topics) EXPECT_EQ(TopicOfItem(command), topic) << command;
  EXPECT_EQ(ended, 0);
  EXPECT_EQ(session->current_path(), DefaultPath());
  EXPECT_EQ(Focus(), 156);
}

TEST_F(WindowHelp, TellsOfTheWindowOfMarkedCards) {
  BuildCompanies(3);
  Start();
  Key(Qt::Key_Space);
  Choose(219);
  auto* consultation = window->findChild<Consultation*>();
  ASSERT_TRUE(QTest::qWaitFor([&] { return QApplication::activeWindow() == consultation; }));
  EXPECT_EQ(TopicOfKey(), 53);
  QTest::mouseClick(consultation->findChild<QPushButton*>("500"), Qt::LeftButton);
  EXPECT_EQ(Topic(), 53);
}

// ---- in dialogs ----

TEST_F(WindowHelp, EveryDialogHasItsPage) {
  BuildCompanies(3);
  Start();
  struct Case {
    int command;
    int dialog;
    int button;
    int topic;
  };
  constexpr Case kCases[] = {{200, 125, 1038, 49},
                             {201, 128, 1038, 50},
                             {217, 123, 1038, 72},
                             {204, 103, 500, 51},
                             {230, 134, 500, 75}};
  for (const Case& test : kCases) {
    Expect(test.dialog, [&](QDialog& dialog) {
      EXPECT_EQ(TopicOfKey(), test.topic) << test.dialog;
      PressIn(dialog, test.button);
      EXPECT_EQ(Topic(), test.topic) << test.dialog;
      EXPECT_EQ(Help()->parentWidget(), &dialog);
      // The help takes keys above the dialog, and goes first.
      ASSERT_TRUE(QTest::qWaitFor([this] { return QApplication::activeWindow() == Help(); }));
      QTest::mouseClick(Help()->findChild<QPushButton*>("contents"), Qt::LeftButton);
      EXPECT_EQ(Topic(), HelpWindow::kContents);
      Key(Qt::Key_Escape);
      EXPECT_EQ(Help(), nullptr);
      EXPECT_TRUE(dialog.isVisible());
      dialog.activateWindow();
      Settle();
      Key(Qt::Key_Escape);
    });
    Choose(test.command);
  }
}

TEST_F(WindowHelp, OfTheWindowBecomesThatOfTheDialogAndGoesWithIt) {
  BuildCompanies(3);
  Start();
  Key(Qt::Key_F1);
  EXPECT_EQ(Topic(), 48);
  Reactivate();
  Expect(134, [this](QDialog& dialog) {
    // It stays in sight, and a second page comes to where it can be used.
    EXPECT_EQ(Topic(), 48);
    dialog.activateWindow();
    Settle();
    Key(Qt::Key_F1);
    EXPECT_EQ(Topic(), 75);
    EXPECT_EQ(Help()->parentWidget(), &dialog);
    PressIn(dialog, 2);
  });
  Choose(230);
  EXPECT_EQ(Help(), nullptr);
  Reactivate();
  Key(Qt::Key_F1);
  EXPECT_EQ(Topic(), 48);
}

TEST_F(WindowHelp, WorksInADialogOfADialog) {
  MakeText(DefaultPath() + ".DAN", "text");
  Expect(136, [this](QDialog& dialog) {
    EXPECT_EQ(TopicOfKey(), 48);
    PressIn(dialog, 689);
    Expect(123, [this](QDialog& chooser) {
      EXPECT_EQ(TopicOfKey(), 72);
      Key(Qt::Key_Escape);
      EXPECT_FALSE(chooser.isVisible());
    });
    PressIn(dialog, 1);
    Settle();
    Key(Qt::Key_Escape);
  });
  Start();
}

// ---- its end ----

TEST_F(WindowHelp, EndsWithTheWindow) {
  BuildCompanies(3);
  Start();
  Key(Qt::Key_F1);
  const QPointer<HelpWindow> help = Help();
  ASSERT_TRUE(QTest::qWaitFor([&] { return QApplication::activeWindow() == help; }));
  Choose(206);
  EXPECT_EQ(ended, 1);
  EXPECT_TRUE(help == nullptr || !help->isVisible());
  EXPECT_EQ(session->directory(), nullptr);
}

TEST_F(WindowHelp, IsBesideTheWindowThatWorksOn) {
  BuildCompanies(3);
  Start();
  Key(Qt::Key_F1);
  Reactivate();
  Key(Qt::Key_Down);
  EXPECT_EQ(Text(150), "BETA");
  EXPECT_EQ(Topic(), 48);
  Control(1001)->setFocus(Qt::TabFocusReason);
  Key(Qt::Key_F1);
  EXPECT_EQ(Topic(), 53);
}

}  // namespace
}  // namespace carnetel::desktop
