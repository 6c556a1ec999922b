#include "desktop/dialogs/help_window.h"

#include <gtest/gtest.h>

#include <QAccessible>
#include <QApplication>
#include <QLineEdit>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTest>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTimer>
#include <QVBoxLayout>
#include <QWindow>

namespace carnetel::desktop {
namespace {

// Through the window system, which holds back what a modal dialog does not let pass.
void ClickOnScreen(QWidget& widget) {
  QWidget* top = widget.window();
  QTest::mouseClick(top->windowHandle(), Qt::LeftButton, {},
                    widget.mapTo(top, widget.rect().center()));
}

class HelpTest : public testing::Test {
 protected:
  void SetUp() override {
    auto* column = new QVBoxLayout(&main_);
    column->addWidget(new QLineEdit);
    main_.show();
    ReturnToMain();
  }
  // What a window manager does when another window has gone.
  void ReturnToMain() {
    main_.activateWindow();
    AwaitActive(&main_);
  }
  // Not qWaitForWindowActive, to which the child of an active window is active, too.
  static void AwaitActive(const QWidget* window) {
    ASSERT_TRUE(QTest::qWaitFor([window] { return QApplication::activeWindow() == window; }));
  }
  void Show(int topic) {
    desk_.ShowTopic(topic);
    ASSERT_NE(desk_.window(), nullptr);
    AwaitActive(desk_.window());
  }
  QTextBrowser* Browser() {
    return desk_.window()->findChild<QTextBrowser*>(QStringLiteral("help"));
  }
  QPushButton* Button(const char* name) {
    return desk_.window()->findChild<QPushButton*>(QLatin1String(name));
  }
  QString Heading() { return Browser()->document()->firstBlock().text(); }
  // What `act` does while `dialog` runs modally, after which the dialog is closed.
  template <typename Act>
  static void During(QDialog& dialog, Act act) {
    QTimer::singleShot(0, &dialog, [&] {
      AwaitActive(&dialog);
      act();
      dialog.reject();
    });
    dialog.exec();
  }

  QWidget main_;
  HelpDesk desk_;
};

TEST_F(HelpTest, ShowsTheTopicInAModelessWindow) {
  Show(52);
  HelpWindow& window = *desk_.window();
  EXPECT_EQ(window.windowTitle(), QStringLiteral("Aide de Carnetel"));
  EXPECT_FALSE(window.isModal());
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
  EXPECT_EQ(window.parentWidget(), &main_);
  EXPECT_EQ(window.topic(), 52);
  EXPECT_EQ(Heading(), QStringLiteral("Créer, modifier et détruire des fiches"));
  EXPECT_TRUE(Browser()->hasFocus());
  EXPECT_LT(window.minimumSizeHint().width(), window.width());
  // The main window takes input all the while.
  auto* edit = main_.findChild<QLineEdit*>();
  ClickOnScreen(*edit);
  EXPECT_TRUE(QTest::qWaitForWindowActive(&main_));
  QTest::keyClick(main_.windowHandle(), 'a');
  EXPECT_EQ(edit->text(), QStringLiteral("a"));
}

TEST_F(HelpTest, AnUnknownTopicShowsTheGeneralPage) {
  Show(999);
  EXPECT_EQ(desk_.window()->topic(), 48);
  EXPECT_EQ(Heading(), QStringLiteral("Carnetel en bref"));
}

TEST_F(HelpTest, OneWindowServesEveryTopic) {
  Show(52);
  const QPointer<HelpWindow> first = desk_.window();
  first->showMinimized();
  Show(75);
  EXPECT_EQ(desk_.window(), first);
  EXPECT_EQ(first->topic(), 75);
  EXPECT_FALSE(first->isMinimized());
}

TEST_F(HelpTest, ContentsAndBackLeadThroughThePages) {
  Show(75);
  EXPECT_FALSE(Button("back")->isEnabled());
  ClickOnScreen(*Button("contents"));
  EXPECT_EQ(desk_.window()->topic(), HelpWindow::kContents);
  EXPECT_EQ(Heading(), QStringLiteral("Sommaire"));
  EXPECT_TRUE(Button("back")->isEnabled());
  desk_.ShowTopic(54);
  desk_.ShowTopic(54);
  ClickOnScreen(*Button("back"));
  EXPECT_EQ(Heading(), QStringLiteral("Sommaire"));
  ClickOnScreen(*Button("back"));
  EXPECT_EQ(desk_.window()->topic(), 75);
  EXPECT_FALSE(Button("back")->isEnabled());
  // The button that went off does not keep the keyboard.
  EXPECT_TRUE(Browser()->hasFocus());
}

TEST_F(HelpTest, BackReturnsToTheLineThatWasRead) {
  desk_.ShowTopic(58);
  desk_.window()->resize(400, 200);
  Show(58);
  QScrollBar& bar = *Browser()->verticalScrollBar();
  ASSERT_GT(bar.maximum(), 100);
  bar.setValue(100);
  desk_.ShowTopic(51);
  EXPECT_EQ(bar.value(), 0);
  QTest::keyClick(desk_.window(), Qt::Key_Left, Qt::AltModifier);
  EXPECT_EQ(desk_.window()->topic(), 58);
  EXPECT_EQ(bar.value(), 100);
}

TEST_F(HelpTest, LinksAreFollowedByKeyboard) {
  Show(48);
  desk_.window()->ShowContents();
  QTest::keyClick(Browser(), Qt::Key_Tab);
  QTest::keyClick(Browser(), Qt::Key_Tab);
  QTest::keyClick(Browser(), Qt::Key_Return);
  EXPECT_EQ(desk_.window()->topic(), 66);
}

TEST_F(HelpTest, NoLinkLeadsOutside) {
  Show(48);
  const QString shown = Browser()->toHtml();
  for (const char* link : {"http://example.org/#52", "https://example.org/", "file:///etc/passwd",
                           "#nulle-part", "autre.html#52"}) {
    Q_EMIT Browser()->anchorClicked(QUrl(QLatin1String(link)));
    EXPECT_EQ(desk_.window()->topic(), 48) << link;
    EXPECT_EQ(Browser()->toHtml(), shown) << link;
  }
  EXPECT_FALSE(Browser()->openLinks());
  EXPECT_FALSE(Browser()->openExternalLinks());
}

TEST_F(HelpTest, EscapeAndTheButtonClose) {
  Show(48);
  QTest::keyClick(desk_.window()->windowHandle(), Qt::Key_Escape);
  EXPECT_EQ(desk_.window(), nullptr);
  Show(48);
  ClickOnScreen(*Button("2"));
  EXPECT_EQ(desk_.window(), nullptr);
  Show(48);
  desk_.Close();
  EXPECT_EQ(desk_.window(), nullptr);
}

TEST_F(HelpTest, WorksAboveAModalDialog) {
  QDialog dialog(&main_);
  dialog.setWindowModality(Qt::ApplicationModal);
  bool clicked = false;
  During(dialog, [&] {
    Show(58);
    EXPECT_EQ(desk_.window()->parentWidget(), &dialog);
    ClickOnScreen(*Button("contents"));
    EXPECT_EQ(desk_.window()->topic(), HelpWindow::kContents);
    ClickOnScreen(*Button("2"));
    clicked = desk_.window() == nullptr;
    EXPECT_TRUE(dialog.isVisible());
  });
  EXPECT_TRUE(clicked);
}

TEST_F(HelpTest, IsMadeAnewForADialogThatBlocksIt) {
  Show(48);
  const QPointer<HelpWindow> first = desk_.window();
  first->resize(500, 300);
  QDialog dialog(&main_);
  During(dialog, [&] {
    // The window of the main window cannot be used now.
    ClickOnScreen(*Button("contents"));
    EXPECT_EQ(first->topic(), 48);
    Show(59);
    EXPECT_EQ(desk_.window()->parentWidget(), &dialog);
    EXPECT_EQ(desk_.window()->size(), QSize(500, 300));
    ClickOnScreen(*Button("contents"));
    EXPECT_EQ(desk_.window()->topic(), HelpWindow::kContents);
    EXPECT_TRUE(first == nullptr || !first->isVisible());
  });
}

TEST_F(HelpTest, GoesWithItsDialog) {
  // Closed, then deleted.
  auto* dialog = new QDialog(&main_);
  dialog->setAttribute(Qt::WA_DeleteOnClose);
  dialog->setModal(true);
  dialog->show();
  AwaitActive(dialog);
  Show(58);
  const QPointer<HelpWindow> help = desk_.window();
  dialog->close();
  EXPECT_EQ(desk_.window(), nullptr);
  QApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_EQ(help, nullptr);
  ReturnToMain();
  Show(48);
  EXPECT_EQ(desk_.window()->parentWidget(), &main_);

  // Closed and kept, to be opened again.
  QDialog kept(&main_);
  During(kept, [&] { Show(59); });
  EXPECT_EQ(desk_.window(), nullptr);

  // Deleted while open.
  auto open = std::make_unique<QDialog>(&main_);
  open->open();
  AwaitActive(open.get());
  Show(59);
  open.reset();
  EXPECT_EQ(desk_.window(), nullptr);
  desk_.ShowTopic(48);
  EXPECT_NE(desk_.window(), nullptr);
}

TEST_F(HelpTest, StaysWhileItsParentIsMinimised) {
  Show(48);
  main_.showMinimized();
  QApplication::processEvents();
  EXPECT_NE(desk_.window(), nullptr);
  main_.close();
  EXPECT_EQ(desk_.window(), nullptr);
}

TEST_F(HelpTest, TheDeskTakesItsWindowAlong) {
  QPointer<HelpWindow> help;
  {
    HelpDesk desk;
    desk.ShowTopic(48);
    help = desk.window();
    EXPECT_NE(help, nullptr);
  }
  EXPECT_EQ(help, nullptr);
}

TEST_F(HelpTest, EveryStopOfTheKeyboardHasAName) {
  Show(51);
  desk_.window()->ShowContents();
  QStringList names;
  for (QWidget* stop :
       {static_cast<QWidget*>(Browser()), static_cast<QWidget*>(Button("contents")),
        static_cast<QWidget*>(Button("back")), static_cast<QWidget*>(Button("2"))}) {
    names += QAccessible::queryAccessibleInterface(stop)->text(QAccessible::Name);
  }
  const QStringList expected = {QStringLiteral("Texte de l’aide"), QStringLiteral("Sommaire"),
                                QStringLiteral("Précédent"), QStringLiteral("Fermer")};
  EXPECT_EQ(names, expected);
}

class LargeFont {
 public:
  LargeFont() : usual_(QApplication::font()) {
    QFont large = usual_;
    large.setPointSizeF(usual_.pointSizeF() * 2);
    QApplication::setFont(large);
  }
  LargeFont(const LargeFont&) = delete;
  LargeFont& operator=(const LargeFont&) = delete;
  ~LargeFont() { QApplication::setFont(usual_); }

 private:
  QFont usual_;
};

// Every page at both sizes, one of them as a picture for eyes: help*.png beside the test program.
// What is checked is that no page is wider than the window, so that nothing is scrolled sideways.
TEST_F(HelpTest, EveryPageFitsTheWidthOfTheWindow) {
  for (const bool large : {false, true}) {
    std::unique_ptr<LargeFont> font;
    if (large) font = std::make_unique<LargeFont>();
    desk_.Close();
    Show(48);
    for (const int topic :
         {48, 11, 40, 49, 50, 51, 52, 53, 54, 55, 56, 57, 58, 59, 63, 66, 72, 75, 80, 81}) {
      desk_.ShowTopic(topic);
      EXPECT_EQ(Browser()->horizontalScrollBar()->maximum(), 0) << topic << large;
    }
    desk_.window()->ShowContents();
    EXPECT_EQ(Browser()->horizontalScrollBar()->maximum(), 0) << large;
    desk_.ShowTopic(48);
    EXPECT_TRUE(desk_.window()->grab().save(QLatin1String(large ? "help-large.png" : "help.png")));
    EXPECT_LE(desk_.window()->height(), desk_.window()->screen()->availableSize().height());
  }
}

}  // namespace
}  // namespace carnetel::desktop
